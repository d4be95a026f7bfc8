#pragma once

#include "CATBaseUnknown.h"

class CATPathElement;
class CATRep;

// CATI3DGeoVisu on the late type QTBBndBox: a bounding box is drawn as a cuboid whose colour tells whether it is
// marked.
class QTBE3DGeoVisuOnBndBox : public CATBaseUnknown
{
public:
    // A new representation that the caller owns; NULL for a component that is no bounding box.
    CATRep* BuildRep();

    // NULL: nothing of its own.
    CATRep* BuildCoarseRep();
    CATRep* BuildPathRep(CATPathElement* pPathElement);
};

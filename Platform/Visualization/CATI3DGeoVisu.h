#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"

class CATPathElement;
class CATRep;

inline constexpr IID IID_CATI3DGeoVisu{"CATI3DGeoVisu"};

// What an object looks like in the 3D view. Each operation gives a new representation that the caller owns, or null.
class PLATFORM_API CATI3DGeoVisu : public CATBaseUnknown
{
    CATDeclareInterface(CATI3DGeoVisu, CATBaseUnknown)

public:
    // The object; null for one that is not to be seen.
    virtual CATRep* BuildRep() = 0;

    // A coarser form for the time in which the view moves; null when the object is drawn as always.
    virtual CATRep* BuildCoarseRep() = 0;

    // The part of the object to which a path leads; null when the object is marked as a whole.
    virtual CATRep* BuildPathRep(CATPathElement* pPathElement) = 0;
};

using CATI3DGeoVisu_var = CATInterface_var<CATI3DGeoVisu>;

#pragma once

#include "CATBaseUnknown.h"

class CATRep;

// CATISelectShow on the late type QTBBndBox: a box shows nothing besides itself while it is selected.
class QTBESelectShowOnBndBox : public CATBaseUnknown
{
public:
    HRESULT BeginShow() { return S_OK; }
    HRESULT EndShow() { return S_OK; }
    // NULL.
    CATRep* BuildSelectionRep() { return NULL; }
};

#pragma once

#include "CATBaseUnknown.h"
#include "QTBCheck.h"

class CATRep;

// CATISelectShow on the late type QTBBndBox: a box shows nothing besides itself while it is selected.
class QTBESelectShowOnBndBox : public CATBaseUnknown
{
public:
    HRESULT BeginShow()
    {
        QTB_SCOPE("QTBESelectShowOnBndBox::BeginShow");
        return S_OK;
    }
    HRESULT EndShow()
    {
        QTB_SCOPE("QTBESelectShowOnBndBox::EndShow");
        return S_OK;
    }
    // NULL.
    CATRep* BuildSelectionRep()
    {
        QTB_SCOPE("QTBESelectShowOnBndBox::BuildSelectionRep");
        return NULL;
    }
};

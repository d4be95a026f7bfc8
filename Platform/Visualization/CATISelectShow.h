#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"

class CATRep;

inline constexpr IID IID_CATISelectShow{"CATISelectShow"};

// What an object shows besides itself while it is selected.
class PLATFORM_API CATISelectShow : public CATBaseUnknown
{
    CATDeclareInterface(CATISelectShow, CATBaseUnknown)

public:
    // Called when the object becomes selected and when it is not selected any more.
    virtual HRESULT BeginShow() = 0;
    virtual HRESULT EndShow() = 0;

    // A new representation that the caller owns and draws beside the object's while it is selected; null for none.
    virtual CATRep* BuildSelectionRep() = 0;
};

using CATISelectShow_var = CATInterface_var<CATISelectShow>;

#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"
#include "CATString.h"

inline constexpr IID IID_CATIUIActivate{"CATIUIActivate"};

// What happens when an object is activated in the user interface, by a double click on it.
class PLATFORM_API CATIUIActivate : public CATBaseUnknown
{
    CATDeclareInterface(CATIUIActivate, CATBaseUnknown)

public:
    // Activates the object's workshop in the current editor and starts its command on the object. E_FAIL when there is
    // no editor, else the result of the command.
    virtual HRESULT Activate() = 0;

    // Brings back the workshop that was active before. S_FALSE when the object is not active.
    virtual HRESULT Deactivate() = 0;
    virtual unsigned char IsActive() = 0;

    // The workshop and the command header; empty for none.
    virtual CATString GetWorkshopName() = 0;
    virtual CATString GetCommandName() = 0;
};

using CATIUIActivate_var = CATInterface_var<CATIUIActivate>;

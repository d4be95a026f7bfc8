#pragma once

#include "CATBaseUnknown.h"
#include "CATString.h"

// CATIUIActivate as it comes with the application: activates nothing. Extensions of their own derive from it and name
// the workshop and the command. The operations are described in the interface.
class PLATFORM_API CATExtIUIActivate : public CATBaseUnknown
{
public:
    virtual HRESULT Activate();
    virtual HRESULT Deactivate();
    // TRUE from Activate to Deactivate, as long as the current editor shows the object's workshop.
    virtual unsigned char IsActive();
    virtual CATString GetWorkshopName();
    virtual CATString GetCommandName();

private:
    bool m_bActivated = false;
    CATString m_FormerWorkshop;
};

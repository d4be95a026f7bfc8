#pragma once

#include "CATBaseUnknown.h"
#include "CATCmdContainer.h"

// CATIContextualMenu as it comes with the application: the menu of the standard commands. Extensions of their own
// derive from it and add to the menu.
class PLATFORM_API CATExtIContextualMenu : public CATBaseUnknown
{
public:
    // Builds the menu. A standard command that the application has no header for is left out.
    CATExtIContextualMenu();
    ~CATExtIContextualMenu() override;

    // The menu belongs to the extension.
    HRESULT GetContextualMenu(CATCmdAccess*& oMenu);

protected:
    CATCmdContainer* GetMenu() { return &m_Menu; }

private:
    CATCmdContainer m_Menu;
};

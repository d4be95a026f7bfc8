#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"

class CATCmdAccess;

inline constexpr IID IID_CATIContextualSubMenu{"CATIContextualSubMenu"};

// The further menu that opens at the object's own entry of its context menu. Asked each time that menu is shown.
class PLATFORM_API CATIContextualSubMenu : public CATBaseUnknown
{
    CATDeclareInterface(CATIContextualSubMenu, CATBaseUnknown)

public:
    // Null for none; the caller hands it to CATCmdContainer::Dismiss when done with it.
    virtual CATCmdAccess* GetContextualSubMenu() = 0;
};

using CATIContextualSubMenu_var = CATInterface_var<CATIContextualSubMenu>;

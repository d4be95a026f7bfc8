#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"

class CATCmdAccess;

inline constexpr IID IID_CATIContextualMenu{"CATIContextualMenu"};

// What an object offers when the user asks for its menu.
class PLATFORM_API CATIContextualMenu : public CATBaseUnknown
{
    CATDeclareInterface(CATIContextualMenu, CATBaseUnknown)

public:
    // The menu, a container whose children are the items. Whom it belongs to is told by its persistence
    // (CATCmdContainer): whoever asked hands it to CATCmdContainer::Dismiss when done with it.
    virtual HRESULT GetContextualMenu(CATCmdAccess*& oMenu) = 0;
};

using CATIContextualMenu_var = CATInterface_var<CATIContextualMenu>;

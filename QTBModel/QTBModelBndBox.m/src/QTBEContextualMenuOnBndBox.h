#pragma once

#include "CATBaseUnknown.h"

class CATCmdAccess;

// CATIContextualMenu on the late type QTBBndBox: the commands that mark and unmark a box.
class QTBEContextualMenuOnBndBox : public CATBaseUnknown
{
public:
    // A new menu that belongs to the caller. S_OK always.
    HRESULT GetContextualMenu(CATCmdAccess*& oMenu);
};

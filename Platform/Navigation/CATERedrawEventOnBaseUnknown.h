#pragma once

#include "CATBaseUnknown.h"

// CATIRedrawEvent on the root late type, and so on every component. One object serves all of them.
class CATERedrawEventOnBaseUnknown : public CATBaseUnknown
{
public:
    void Redraw();
};

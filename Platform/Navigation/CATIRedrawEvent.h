#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"

inline constexpr IID IID_CATIRedrawEvent{"CATIRedrawEvent"};

// Tells the navigation trees that an object looks different now. Every component answers it.
class PLATFORM_API CATIRedrawEvent : public CATBaseUnknown
{
    CATDeclareInterface(CATIRedrawEvent, CATBaseUnknown)

public:
    // Has every navigation box that shows the object ask it for its label and children again.
    virtual void Redraw() = 0;
};

using CATIRedrawEvent_var = CATInterface_var<CATIRedrawEvent>;

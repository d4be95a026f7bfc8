#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"

inline constexpr IID IID_CATIVisProperties{"CATIVisProperties"};

// What the user sets for the look of an object. Setting announces the event VisPropertiesChanged when the object has
// events (CATIModelEvents) and something changed.
class PLATFORM_API CATIVisProperties : public CATBaseUnknown
{
    CATDeclareInterface(CATIVisProperties, CATBaseUnknown)

public:
    // TRUE at first.
    virtual HRESULT SetVisible(unsigned char bVisible) = 0;
    virtual unsigned char IsVisible() = 0;

    // The colour that replaces the representation's own. GetColor fails quietly, without touching its argument, while
    // none is set.
    virtual HRESULT SetColor(unsigned int color) = 0;
    virtual HRESULT GetColor(unsigned int* pColor) = 0;
    virtual HRESULT ResetColor() = 0;

    // From 0, transparent, to 255, as at first; anything above is refused with E_FAIL.
    virtual HRESULT SetOpacity(unsigned int opacity) = 0;
    virtual unsigned int GetOpacity() = 0;
};

using CATIVisProperties_var = CATInterface_var<CATIVisProperties>;

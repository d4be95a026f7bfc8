#pragma once

#include <optional>

#include "CATBaseUnknown.h"

// CATIVisProperties as it comes with the application. The operations are described in the interface.
class PLATFORM_API CATExtIVisProperties : public CATBaseUnknown
{
public:
    static constexpr unsigned int MAX_OPACITY = 255;

    HRESULT SetVisible(unsigned char bVisible);
    unsigned char IsVisible();
    HRESULT SetColor(unsigned int color);
    HRESULT GetColor(unsigned int* pColor);
    HRESULT ResetColor();
    HRESULT SetOpacity(unsigned int opacity);
    unsigned int GetOpacity();

private:
    template <class Value>
    HRESULT Set(Value& member, const Value& value);

    unsigned char m_bVisible = TRUE;
    std::optional<unsigned int> m_Color;
    unsigned int m_Opacity = MAX_OPACITY;
};

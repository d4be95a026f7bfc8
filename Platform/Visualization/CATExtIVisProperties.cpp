#include "CATExtIVisProperties.h"

#include "CATIModelEvents.h"

template <class Value>
HRESULT CATExtIVisProperties::Set(Value& member, const Value& value)
{
    if (member == value) {
        return S_OK;
    }
    member = value;
    const CATIModelEvents_var spIModelEvents(this);
    if (spIModelEvents != NULL_var) {
        spIModelEvents->Dispatch(CATModelEvent::VisPropertiesChanged);
    }
    return S_OK;
}

HRESULT CATExtIVisProperties::SetVisible(unsigned char bVisible)
{
    return Set(m_bVisible, bVisible != FALSE ? TRUE : FALSE);
}

unsigned char CATExtIVisProperties::IsVisible()
{
    return m_bVisible;
}

HRESULT CATExtIVisProperties::SetColor(unsigned int color)
{
    return Set(m_Color, std::optional(color));
}

HRESULT CATExtIVisProperties::GetColor(unsigned int* pColor)
{
    if (pColor == nullptr || !m_Color) {
        return E_FAIL;
    }
    *pColor = *m_Color;
    return S_OK;
}

HRESULT CATExtIVisProperties::ResetColor()
{
    return Set(m_Color, std::optional<unsigned int>());
}

HRESULT CATExtIVisProperties::SetOpacity(unsigned int opacity)
{
    return opacity <= MAX_OPACITY ? Set(m_Opacity, opacity) : E_FAIL;
}

unsigned int CATExtIVisProperties::GetOpacity()
{
    return m_Opacity;
}

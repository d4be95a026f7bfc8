#include "CATEGraphNodeOnNavigNode.h"

HRESULT CATEGraphNodeOnNavigNode::SetIconName(const CATUnicodeString& usIconName)
{
    m_usIconName = usIconName;
    return S_OK;
}

HRESULT CATEGraphNodeOnNavigNode::GetIconName(CATUnicodeString* pusIconName)
{
    if (pusIconName == nullptr) {
        return E_POINTER;
    }
    *pusIconName = m_usIconName;
    return S_OK;
}

HRESULT CATEGraphNodeOnNavigNode::SetIconMarking(unsigned char bOn)
{
    m_bIconMarking = bOn;
    return S_OK;
}

HRESULT CATEGraphNodeOnNavigNode::SetLabelMarking(unsigned char bOn)
{
    m_bLabelMarking = bOn;
    return S_OK;
}

unsigned char CATEGraphNodeOnNavigNode::IconIsMarked()
{
    return m_bIconMarking;
}

unsigned char CATEGraphNodeOnNavigNode::LabelIsMarked()
{
    return m_bLabelMarking;
}

HRESULT CATEGraphNodeOnNavigNode::SetStateCode(int code)
{
    m_StateCode = code;
    return S_OK;
}

int CATEGraphNodeOnNavigNode::GetStateCode()
{
    return m_StateCode;
}

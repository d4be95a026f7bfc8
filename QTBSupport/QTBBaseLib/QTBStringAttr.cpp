#include "QTBStringAttr.h"

#include "CATXMLWriter.h"

QTBStringAttr::QTBStringAttr(CATIDOMElement_var* pspIDOMElement)
{
    const CATDOMElementView element = ViewElement(pspIDOMElement);
    if (element.GetFirstChild()) {
        return;
    }
    SetNameFromElement(element);
    m_Value = element.GetText();
}

HRESULT QTBStringAttr::GetValue(CATUnicodeString* pusValue) const
{
    if (pusValue == nullptr) {
        return E_POINTER;
    }
    if (IsValid() == FALSE) {
        return E_FAIL;
    }
    *pusValue = m_Value;
    return S_OK;
}

HRESULT QTBStringAttr::SetValue(const CATUnicodeString& usValue)
{
    if (IsValid() == FALSE) {
        return E_FAIL;
    }
    m_Value = usValue;
    return S_OK;
}

CATUnicodeString QTBStringAttr::ToString()
{
    return IsValid() != FALSE ? ShortText(m_Value) : CATUnicodeString();
}

std::string_view QTBStringAttr::GetTypeName() const
{
    return std::string_view();
}

HRESULT QTBStringAttr::AppendContent(std::string* pXml) const
{
    CATXMLWriter::AppendText(m_Value.View(), pXml);
    return S_OK;
}

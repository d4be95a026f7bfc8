#include "QTBNodeAttr.h"

#include "CATXMLWriter.h"

QTBNodeAttr::~QTBNodeAttr() = default;

HRESULT QTBNodeAttr::GetName(CATUnicodeString* pusName) const
{
    if (pusName == nullptr) {
        return E_POINTER;
    }
    if (m_Name.IsEmpty()) {
        return E_FAIL;
    }
    *pusName = m_Name.GetText();
    return S_OK;
}

unsigned char QTBNodeAttr::IsValid() const
{
    return m_Name.IsEmpty() ? FALSE : TRUE;
}

HRESULT QTBNodeAttr::WriteXmlToString(CATUnicodeString* pusXmlString, unsigned char bEndLine) const
{
    if (pusXmlString == nullptr) {
        return E_POINTER;
    }
    if (IsValid() == FALSE) {
        return E_FAIL;
    }
    std::string xml("<a");
    CATXMLWriter::AppendAttribute("name", NameText().View(), &xml);
    if (const std::string_view typeName = GetTypeName(); !typeName.empty()) {
        CATXMLWriter::AppendAttribute("type", typeName, &xml);
    }
    xml.push_back('>');
    if (const HRESULT hr = AppendContent(&xml); FAILED(hr)) {
        return hr;
    }
    xml.append(bEndLine != FALSE ? "</a>\n" : "</a>");
    pusXmlString->Append(CATUnicodeString::FromValidUtf8(xml));
    return S_OK;
}

CATDOMElementView QTBNodeAttr::ViewElement(const CATIDOMElement_var* pspIDOMElement)
{
    return pspIDOMElement != nullptr && *pspIDOMElement != NULL_var ? (*pspIDOMElement)->GetView()
                                                                    : CATDOMElementView();
}

void QTBNodeAttr::SetNameFromElement(const CATDOMElementView& element)
{
    if (const CATDOMAttributeView name = element.FindAttribute("name")) {
        m_Name = QTBPooledName(name.GetValue());
    }
}

CATUnicodeString QTBNodeAttr::ShortText(const CATUnicodeString& usText)
{
    if (usText.GetLengthInChar() <= TOOLTIP_LENGTH) {
        return usText;
    }
    const CATUnicodeString usEllipsis("...");
    return usText.SubString(0, TOOLTIP_LENGTH - usEllipsis.GetLengthInChar()) + usEllipsis;
}

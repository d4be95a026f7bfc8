#include "QTBSimpleListAttr.h"

#include <utility>

#include "CATXMLWriter.h"

namespace {

// The values of the list; false when anything but values stands in it.
bool ReadValues(const CATDOMElementView& list, CATListValCATUnicodeString* pValues)
{
    int count = 0;
    for (CATDOMElementView child = list.GetFirstChild(); child; child = child.GetNextSibling()) {
        if (!child.HasTagName("v") || child.GetFirstChild()) {
            return false;
        }
        ++count;
    }
    if (list.HasNonBlankText()) {
        return false;
    }
    pValues->Reserve(count);
    for (CATDOMElementView child = list.GetFirstChild(); child; child = child.GetNextSibling()) {
        pValues->Append(child.GetText());
    }
    return true;
}

} // namespace

QTBSimpleListAttr::QTBSimpleListAttr(CATIDOMElement_var* pspIDOMElement)
{
    const CATDOMElementView element = ViewElement(pspIDOMElement);
    if (ReadValues(element, &m_Values)) {
        SetNameFromElement(element);
    }
}

HRESULT QTBSimpleListAttr::GetSize(int* pSize) const
{
    if (pSize == nullptr) {
        return E_POINTER;
    }
    if (IsValid() == FALSE) {
        return E_FAIL;
    }
    *pSize = m_Values.Size();
    return S_OK;
}

HRESULT QTBSimpleListAttr::GetValue(int index, CATUnicodeString* pusValue) const
{
    if (pusValue == nullptr) {
        return E_POINTER;
    }
    if (IsValid() == FALSE || index < 1 || index > m_Values.Size()) {
        return E_FAIL;
    }
    *pusValue = m_Values[index];
    return S_OK;
}

bool QTBSimpleListAttr::Contains(const CATUnicodeString& usValue) const
{
    if (IsValid() == FALSE) {
        return false;
    }
    if (m_Values.Size() <= VALUES_WITHOUT_INDEX) {
        return m_Values.Locate(usValue) > 0;
    }
    if (m_pIndex == nullptr) {
        auto pIndex = std::make_unique<std::unordered_set<std::string_view>>();
        for (const CATUnicodeString& usOfList : m_Values) {
            pIndex->insert(usOfList.View());
        }
        m_pIndex = std::move(pIndex);
    }
    return m_pIndex->count(usValue.View()) > 0;
}

CATUnicodeString QTBSimpleListAttr::ToString()
{
    TooltipText text;
    for (int i = 1; IsValid() != FALSE && i <= m_Values.Size() && !text.IsFull(); ++i) {
        text.Add(i > 1 ? ", " : "", m_Values[i]);
    }
    return text.Get();
}

std::string_view QTBSimpleListAttr::GetTypeName() const
{
    return "list";
}

HRESULT QTBSimpleListAttr::AppendContent(std::string* pXml) const
{
    for (const CATUnicodeString& usValue : m_Values) {
        pXml->append("<v>");
        CATXMLWriter::AppendText(usValue.View(), pXml);
        pXml->append("</v>");
    }
    return S_OK;
}

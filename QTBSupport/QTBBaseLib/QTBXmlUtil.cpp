#include "QTBXmlUtil.h"

#include "CATXMLDocumentFactory.h"
#include "QTBConstants.h"

namespace {

// As many elements as most lists hold, the attributes of a record for example.
constexpr int FIRST_CAPACITY = 16;

// The child elements of a document or an element, one after the other, without handles.
class ChildWalk
{
public:
    explicit ChildWalk(const CATBaseUnknown_var& spParent) : m_spElement(spParent)
    {
        if (m_spElement != NULL_var) {
            m_Child = m_spElement->GetView().GetFirstChild();
            m_bIsNode = true;
            return;
        }
        const CATIDOMDocument_var spDocument(spParent);
        if (spDocument == NULL_var || FAILED(spDocument->GetDocumentElement(&m_spElement))) {
            return;
        }
        m_bIsNode = true;
        if (m_spElement != NULL_var) {
            m_Child = m_spElement->GetView();
        }
    }

    // FALSE for anything that has no child elements.
    bool IsOnNode() const { return m_bIsNode; }

    const CATDOMElementView& GetChild() const { return m_Child; }
    void Next() { m_Child = m_Child.GetNextSibling(); }

    CATIDOMElement_var GetHandle() const { return m_spElement->GetElementOfView(m_Child); }

private:
    // Any element of the branch, the parent where it is one.
    CATIDOMElement_var m_spElement;
    CATDOMElementView m_Child;
    bool m_bIsNode = false;
};

bool HasAttributeValue(const CATDOMElementView& element, const CATUnicodeString& usName,
                       const CATUnicodeString& usValue)
{
    const CATDOMAttributeView attribute = element.FindAttribute(usName.ConvertToChar());
    return attribute && attribute.GetValue() == usValue.View();
}

} // namespace

HRESULT QTBXmlUtil::CreateEmptyDOMDocument(const CATUnicodeString& usRootName, CATIDOMDocument_var* pspIDOMDocument)
{
    return CATXMLDocumentFactory::CreateDocument(usRootName, pspIDOMDocument);
}

HRESULT QTBXmlUtil::GetDomDocument(const CATUnicodeString& usXmlText, CATIDOMDocument_var* pspIDOMDocument)
{
    return CATXMLDocumentFactory::ReadText(usXmlText, "XML text", pspIDOMDocument);
}

HRESULT QTBXmlUtil::GetTrustedDomDocument(std::string_view utf8XmlText, CATIDOMDocument_var* pspIDOMDocument)
{
    return CATXMLDocumentFactory::ReadTrustedText(utf8XmlText, pspIDOMDocument);
}

HRESULT QTBXmlUtil::GetDomDocumentFromFile(const CATUnicodeString& usPath, CATIDOMDocument_var* pspIDOMDocument)
{
    return CATXMLDocumentFactory::ReadFile(usPath, pspIDOMDocument);
}

HRESULT QTBXmlUtil::GetElements(const CATBaseUnknown_var& spParent, const CATUnicodeString& usTag,
                                const CATUnicodeString& usAttrName, const CATUnicodeString& usAttrValue,
                                CATListValCATBaseUnknown_var* pElements)
{
    if (pElements == nullptr) {
        return E_POINTER;
    }
    pElements->RemoveAll();
    ChildWalk walk(spParent);
    if (!walk.IsOnNode()) {
        return E_FAIL;
    }
    for (; walk.GetChild(); walk.Next()) {
        if (walk.GetChild().HasTagName(usTag.View()) &&
            (usAttrName.IsEmpty() || HasAttributeValue(walk.GetChild(), usAttrName, usAttrValue))) {
            if (pElements->Size() == 0) {
                pElements->Reserve(FIRST_CAPACITY);
            }
            pElements->Append(walk.GetHandle());
        }
    }
    return S_OK;
}

HRESULT QTBXmlUtil::GetSingleAttributeElement(const CATBaseUnknown_var& spItem, const CATUnicodeString& usAttrName,
                                              CATIDOMElement_var* pspIDOMElement)
{
    if (pspIDOMElement == nullptr) {
        return E_POINTER;
    }
    for (ChildWalk walk(spItem); walk.GetChild(); walk.Next()) {
        if (walk.GetChild().HasTagName("a") && HasAttributeValue(walk.GetChild(), "name", usAttrName)) {
            *pspIDOMElement = walk.GetHandle();
            return S_OK;
        }
    }
    return E_FAIL;
}

HRESULT QTBXmlUtil::GetCharData(const CATBaseUnknown_var& spNode, CATUnicodeString* pusText)
{
    if (pusText == nullptr) {
        return E_POINTER;
    }
    const CATIDOMNode_var spIDOMNode(spNode);
    return spIDOMNode != NULL_var ? spIDOMNode->GetCharData(pusText) : E_FAIL;
}

HRESULT QTBXmlUtil::GetRecurringElementCharData(const CATBaseUnknown_var& spParent, const CATUnicodeString& usTag,
                                                CATListValCATUnicodeString* pTexts)
{
    if (pTexts == nullptr) {
        return E_POINTER;
    }
    pTexts->RemoveAll();
    ChildWalk walk(spParent);
    if (!walk.IsOnNode()) {
        return E_FAIL;
    }
    for (; walk.GetChild(); walk.Next()) {
        if (walk.GetChild().HasTagName(usTag.View())) {
            pTexts->Append(walk.GetChild().GetText());
        }
    }
    return S_OK;
}

HRESULT QTBXmlUtil::GetNodeAttributeDataType(const CATIDOMElement_var& spIDOMElement, CATUnicodeString* pusDataType)
{
    if (pusDataType == nullptr) {
        return E_POINTER;
    }
    if (spIDOMElement == NULL_var) {
        return E_FAIL;
    }
    const CATDOMAttributeView type = spIDOMElement->GetView().FindAttribute("type");
    if (!type) {
        *pusDataType = usSTRING;
        return S_OK;
    }
    // A known type is answered with the constant itself, whose text is shared then.
    for (const CATUnicodeString* pusKnown :
         {&usSTRING, &usSIMPLE_LIST, &usNAME_VALUE_LIST, &usTABLE, &usOBJECT, &usOBJECT_LIST}) {
        if (type.GetValue() == pusKnown->View()) {
            *pusDataType = *pusKnown;
            return S_OK;
        }
    }
    *pusDataType = CATUnicodeString(type.GetValue());
    return S_OK;
}

HRESULT QTBXmlUtil::CreateChildNode(const CATUnicodeString& usTag, const CATUnicodeString& usText,
                                    CATIDOMElement_var* pspParent, CATIDOMElement_var* pspChild)
{
    if (pspParent == nullptr || pspChild == nullptr) {
        return E_POINTER;
    }
    if (*pspParent == NULL_var) {
        return E_FAIL;
    }
    CATIDOMElement_var spChild;
    HRESULT hr = (*pspParent)->CreateChildElement(usTag, &spChild);
    if (SUCCEEDED(hr)) {
        hr = spChild->SetCharData(usText);
    }
    if (SUCCEEDED(hr)) {
        *pspChild = spChild;
    }
    return hr;
}

HRESULT QTBXmlUtil::GetOutArgObjectsOfInvokeFunction(const CATBaseUnknown_var& spFunction,
                                                     CATListValCATBaseUnknown_var* pObjects)
{
    if (pObjects == nullptr) {
        return E_POINTER;
    }
    pObjects->RemoveAll();
    CATListValCATBaseUnknown_var OutArgs;
    if (const HRESULT hr = GetElements(spFunction, "outArgs", "", "", &OutArgs); FAILED(hr)) {
        return hr;
    }
    for (const CATBaseUnknown_var& spOutArgs : OutArgs) {
        CATListValCATBaseUnknown_var Args;
        GetElements(spOutArgs, "arg", "", "", &Args);
        for (const CATBaseUnknown_var& spArg : Args) {
            CATListValCATBaseUnknown_var Objects;
            GetElements(spArg, "o", "", "", &Objects);
            pObjects->Append(Objects);
        }
    }
    return S_OK;
}

#include "QTBObjectAttr.h"

#include "CATListValCATUnicodeString.h"
#include "CATXMLWriter.h"
#include "QTBINode.h"
#include "QTBINodeAttributes.h"

namespace {

// The "a" element around the element of an embedded object; empty when there is none.
CATIDOMElement_var GetAttributeElement(const CATIDOMElement_var& spObject)
{
    CATIDOMNode_var spParent;
    if (FAILED(spObject->GetParentNode(&spParent))) {
        return NULL_var;
    }
    const CATIDOMElement_var spAttribute(spParent);
    return spAttribute != NULL_var && spAttribute->GetView().HasTagName("a") ? spAttribute : NULL_var;
}

// Whether the object lies in more than that many attributes, one in the other.
bool IsNestedDeeperThan(int limit, CATIDOMElement_var spObject)
{
    for (int depth = 0; depth <= limit; ++depth) {
        const CATIDOMElement_var spAttribute =
            spObject != NULL_var ? GetAttributeElement(spObject) : CATIDOMElement_var();
        CATIDOMNode_var spOwner;
        if (spAttribute == NULL_var || FAILED(spAttribute->GetParentNode(&spOwner))) {
            return false;
        }
        spObject = spOwner;
    }
    return true;
}

// Whether a child element of a node's record is one of the node's attributes.
bool IsNodeAttribute(const CATDOMElementView& element)
{
    const CATDOMAttributeView type = element.FindAttribute("type");
    return element.HasTagName("a") && !(type && type.GetValue() == "objectlist");
}

} // namespace

QTBObjectAttr::QTBObjectAttr(CATIDOMElement_var* pspIDOMElementOnObject, CATBaseUnknown_var* pspNodeAttributes)
{
    if (pspIDOMElementOnObject == nullptr || *pspIDOMElementOnObject == NULL_var || pspNodeAttributes == nullptr) {
        return;
    }
    const QTBINodeAttributes_var spINodeAttributes(*pspNodeAttributes);
    const CATIDOMElement_var spAttribute = GetAttributeElement(*pspIDOMElementOnObject);
    if (spINodeAttributes == NULL_var || spAttribute == NULL_var ||
        IsNestedDeeperThan(MAX_NESTING, *pspIDOMElementOnObject) ||
        FAILED(spINodeAttributes->SetXmlElement(*pspIDOMElementOnObject))) {
        return;
    }
    m_spIDOMElementOnObject = *pspIDOMElementOnObject;
    m_spINodeAttributes = spINodeAttributes;
    SetNameFromElement(spAttribute->GetView());
}

QTBObjectAttr::~QTBObjectAttr() = default;

HRESULT QTBObjectAttr::GetObjectNode(CATBaseUnknown_var* pspBaseUnknownOnObjectNode) const
{
    if (pspBaseUnknownOnObjectNode == nullptr) {
        return E_POINTER;
    }
    if (IsValid() == FALSE) {
        return E_FAIL;
    }
    *pspBaseUnknownOnObjectNode = m_spINodeAttributes;
    return S_OK;
}

CATUnicodeString QTBObjectAttr::ToString()
{
    CATUnicodeString usDescription;
    const QTBINode_var spINode(m_spINodeAttributes);
    if (IsValid() == FALSE || spINode == NULL_var || FAILED(spINode->GetNodeDescriptionString(&usDescription))) {
        return CATUnicodeString();
    }
    return ShortText(usDescription);
}

std::string_view QTBObjectAttr::GetTypeName() const
{
    return "object";
}

HRESULT QTBObjectAttr::AppendContent(std::string* pXml) const
{
    CATListValCATUnicodeString AttributeNames;
    if (const HRESULT hr = m_spINodeAttributes->GetAllAttributeNames(&AttributeNames); FAILED(hr)) {
        return hr;
    }
    const CATDOMElementView object = m_spIDOMElementOnObject->GetView();
    pXml->append("<").append(object.GetTagName());
    for (CATDOMAttributeView attribute = object.GetFirstAttribute(); attribute; attribute = attribute.GetNext()) {
        CATXMLWriter::AppendAttribute(attribute.GetName(), attribute.GetValue(), pXml);
    }
    pXml->push_back('>');
    CATUnicodeString usAttributes;
    for (const CATUnicodeString& usName : AttributeNames) {
        QTBNodeAttr* pNodeAttr = nullptr;
        HRESULT hr = m_spINodeAttributes->GetAttribute(usName, &pNodeAttr);
        if (SUCCEEDED(hr)) {
            hr = pNodeAttr->WriteXmlToString(&usAttributes, FALSE);
        }
        if (FAILED(hr)) {
            return hr;
        }
    }
    pXml->append(usAttributes.View());
    for (CATDOMElementView child = object.GetFirstChild(); child; child = child.GetNextSibling()) {
        if (!IsNodeAttribute(child)) {
            CATXMLWriter::AppendElement(child, pXml);
        }
    }
    pXml->append("</").append(object.GetTagName()).append(">");
    return S_OK;
}

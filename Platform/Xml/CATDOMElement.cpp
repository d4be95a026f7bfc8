#include "CATDOMElement.h"

#include <new>

#include <pugixml.hpp>

#include "CATXMLWriter.h"

// A sanitizer can watch over memory only when each object has its own.
#if !defined(__SANITIZE_ADDRESS__)

namespace {

// Memory of handle objects that are not in use.
union FreeElement
{
    FreeElement* pNext;
    alignas(CATDOMElement) std::byte storage[sizeof(CATDOMElement)];
};

FreeElement* s_pFree = nullptr;

} // namespace

void* CATDOMElement::operator new(std::size_t)
{
    if (s_pFree == nullptr) {
        constexpr std::size_t ELEMENTS_AT_ONCE = 256;
        auto* pBlock = static_cast<FreeElement*>(::operator new(ELEMENTS_AT_ONCE * sizeof(FreeElement)));
        for (std::size_t i = 0; i < ELEMENTS_AT_ONCE; ++i) {
            pBlock[i].pNext = s_pFree;
            s_pFree = &pBlock[i];
        }
    }
    FreeElement* pElement = s_pFree;
    s_pFree = pElement->pNext;
    return pElement;
}

void CATDOMElement::operator delete(void* pMemory)
{
    auto* pElement = static_cast<FreeElement*>(pMemory);
    pElement->pNext = s_pFree;
    s_pFree = pElement;
}

#else

void* CATDOMElement::operator new(std::size_t size)
{
    return ::operator new(size);
}

void CATDOMElement::operator delete(void* pMemory)
{
    ::operator delete(pMemory);
}

#endif

unsigned int CATDOMElement::Release()
{
    const unsigned int references = --m_References;
    if (references == 0) {
        GetStore().Forget(this);
    }
    return references;
}

HRESULT CATDOMElement::GetNodeName(CATUnicodeString* pusName)
{
    return GetTagName(pusName);
}

HRESULT CATDOMElement::GetFirstChild(CATIDOMNode_var* pspChild)
{
    if (pspChild == nullptr) {
        return E_POINTER;
    }
    *pspChild = GetStore().GetElement(GetView().GetFirstChild().GetNode(), GetBranch());
    return S_OK;
}

HRESULT CATDOMElement::GetNextSibling(CATIDOMNode_var* pspSibling)
{
    if (pspSibling == nullptr) {
        return E_POINTER;
    }
    *pspSibling = GetStore().GetElement(GetView().GetNextSibling().GetNode(), GetBranch());
    return S_OK;
}

HRESULT CATDOMElement::GetCharData(CATUnicodeString* pusText)
{
    if (pusText == nullptr) {
        return E_POINTER;
    }
    *pusText = GetView().GetText();
    return S_OK;
}

HRESULT CATDOMElement::GetTagName(CATUnicodeString* pusTagName)
{
    if (pusTagName == nullptr) {
        return E_POINTER;
    }
    *pusTagName = CATUnicodeString(GetView().GetTagName());
    return S_OK;
}

HRESULT CATDOMElement::HasAttribute(const CATUnicodeString& usName, unsigned char* pbHasAttribute)
{
    if (pbHasAttribute == nullptr) {
        return E_POINTER;
    }
    *pbHasAttribute = GetView().FindAttribute(usName.ConvertToChar()) ? TRUE : FALSE;
    return S_OK;
}

HRESULT CATDOMElement::GetAttribute(const CATUnicodeString& usName, CATUnicodeString* pusValue)
{
    if (pusValue == nullptr) {
        return E_POINTER;
    }
    const CATDOMAttributeView attribute = GetView().FindAttribute(usName.ConvertToChar());
    *pusValue = attribute ? attribute.GetText() : CATUnicodeString();
    return S_OK;
}

HRESULT CATDOMElement::SetAttribute(const CATUnicodeString& usName, const CATUnicodeString& usValue)
{
    if (!CATXMLWriter::IsName(usName.View())) {
        return E_FAIL;
    }
    pugi::xml_node node(m_pNode);
    pugi::xml_attribute attribute = node.attribute(usName.ConvertToChar());
    if (!attribute) {
        attribute = node.append_attribute(usName.ConvertToChar());
    }
    const CATUnicodeString value = CATXMLWriter::MakeCarriable(usValue);
    return attribute.set_value(value.ConvertToChar()) ? S_OK : E_OUTOFMEMORY;
}

HRESULT CATDOMElement::SetCharData(const CATUnicodeString& usText)
{
    pugi::xml_node node(m_pNode);
    for (pugi::xml_node child = node.first_child(); child;) {
        const pugi::xml_node next = child.next_sibling();
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            node.remove_child(child);
        }
        child = next;
    }
    if (usText.IsEmpty() && !node.text()) {
        return S_OK;
    }
    const CATUnicodeString text = CATXMLWriter::MakeCarriable(usText);
    return node.text().set(text.ConvertToChar()) ? S_OK : E_OUTOFMEMORY;
}

HRESULT CATDOMElement::CreateChildElement(const CATUnicodeString& usTagName, CATIDOMElement_var* pspChild)
{
    if (pspChild == nullptr) {
        return E_POINTER;
    }
    if (!CATXMLWriter::IsName(usTagName.View())) {
        return E_FAIL;
    }
    *pspChild = GetStore().CreateChild(m_pNode, GetBranch(), usTagName.ConvertToChar());
    return S_OK;
}

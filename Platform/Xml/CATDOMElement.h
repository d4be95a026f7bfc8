#pragma once

#include "CATDOMNodeBase.h"

// Handle object of an element. Reading an answer makes millions of them, so their memory comes from a list of free
// ones.
class CATDOMElement final : public CATDOMNodeBase<CATIDOMElement>
{
public:
    CATDOMElement(pugi::xml_node_struct* pNode, CATDOMBranch* pBranch) : CATDOMNodeBase(pNode, pBranch) {}

    static void* operator new(std::size_t size);
    static void operator delete(void* pMemory);

    HRESULT QueryInterface(const IID& iid, void** ppv) override
    {
        return Answer<CATIDOMElement, CATIDOMNode>(iid, ppv);
    }
    unsigned int Release() override;

    HRESULT GetNodeName(CATUnicodeString* pusName) override;
    HRESULT GetFirstChild(CATIDOMNode_var* pspChild) override;
    HRESULT GetNextSibling(CATIDOMNode_var* pspSibling) override;
    HRESULT GetCharData(CATUnicodeString* pusText) override;

    HRESULT GetTagName(CATUnicodeString* pusTagName) override;
    HRESULT HasAttribute(const CATUnicodeString& usName, unsigned char* pbHasAttribute) override;
    HRESULT GetAttribute(const CATUnicodeString& usName, CATUnicodeString* pusValue) override;
    HRESULT SetAttribute(const CATUnicodeString& usName, const CATUnicodeString& usValue) override;
    HRESULT SetCharData(const CATUnicodeString& usText) override;
    HRESULT CreateChildElement(const CATUnicodeString& usTagName, CATIDOMElement_var* pspChild) override;
    CATDOMElementView GetView() const override { return CATDOMElementView(GetNode()); }
    CATIDOMElement_var GetElementOfView(const CATDOMElementView& element) const override
    {
        return GetStore().GetElement(element.GetNode(), GetBranch());
    }
};

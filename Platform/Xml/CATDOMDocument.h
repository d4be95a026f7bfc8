#pragma once

#include "CATDOMNodeBase.h"

// Handle object of a document.
class CATDOMDocument final : public CATDOMNodeBase<CATIDOMDocument>
{
public:
    CATDOMDocument(pugi::xml_node_struct* pNode, CATDOMBranch* pBranch) : CATDOMNodeBase(pNode, pBranch) {}

    HRESULT QueryInterface(const IID& iid, void** ppv) override
    {
        return Answer<CATIDOMDocument, CATIDOMNode>(iid, ppv);
    }
    unsigned int Release() override;

    HRESULT GetNodeName(CATUnicodeString* pusName) override;
    HRESULT GetFirstChild(CATIDOMNode_var* pspChild) override;
    HRESULT GetNextSibling(CATIDOMNode_var* pspSibling) override;
    HRESULT GetCharData(CATUnicodeString* pusText) override;

    HRESULT GetDocumentElement(CATIDOMElement_var* pspElement) override;
    HRESULT GetElementsByTagName(const CATUnicodeString& usTagName, CATIDOMNodeList_var* pspNodes) override;
    HRESULT CreateElement(const CATUnicodeString& usTagName, CATIDOMElement_var* pspElement) override;
};

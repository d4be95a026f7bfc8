#pragma once

#include "CATIDOMElement.h"

// An XML element whose operations fail on request. It belongs to no document and is not counted: it must outlive the
// handles on it.
class QTBFakeElement : public CATIDOMElement
{
public:
    QTBFakeElement() : CATIDOMElement(nullptr) {}

    HRESULT QueryInterface(const IID& iid, void** ppv) override
    {
        if (m_bIsElement && (iid == IID_CATIDOMElement || iid == IID_CATIDOMNode)) {
            *ppv = this;
            return S_OK;
        }
        return CATIDOMElement::QueryInterface(iid, ppv);
    }

    HRESULT GetNodeName(CATUnicodeString*) override { return E_FAIL; }
    HRESULT GetParentNode(CATIDOMNode_var* pspParent) override
    {
        *pspParent = m_spParent;
        return m_hrGetParentNode;
    }
    HRESULT GetFirstChild(CATIDOMNode_var*) override { return E_FAIL; }
    HRESULT GetNextSibling(CATIDOMNode_var*) override { return E_FAIL; }
    HRESULT AppendChild(const CATIDOMNode_var&) override { return E_FAIL; }
    HRESULT RemoveChild(const CATIDOMNode_var&) override { return E_FAIL; }
    HRESULT GetCharData(CATUnicodeString*) override { return E_FAIL; }

    HRESULT GetTagName(CATUnicodeString*) override { return E_FAIL; }
    HRESULT HasAttribute(const CATUnicodeString&, unsigned char* pbHasAttribute) override
    {
        *pbHasAttribute = TRUE;
        return m_hrHasAttribute;
    }
    HRESULT GetAttribute(const CATUnicodeString&, CATUnicodeString* pusValue) override
    {
        *pusValue = "Name";
        return m_hrGetAttribute;
    }
    HRESULT SetAttribute(const CATUnicodeString&, const CATUnicodeString&) override { return E_FAIL; }
    HRESULT SetCharData(const CATUnicodeString&) override { return S_OK; }
    HRESULT CreateChildElement(const CATUnicodeString&, CATIDOMElement_var* pspChild) override
    {
        *pspChild = m_spChild;
        return m_spChild != NULL_var ? S_OK : E_FAIL;
    }
    // Nothing is seen of it: an "a" element without name and content.
    CATDOMElementView GetView() const override { return CATDOMElementView(); }
    CATIDOMElement_var GetElementOfView(const CATDOMElementView&) const override { return NULL_var; }

    bool m_bIsElement = true;
    CATIDOMNode_var m_spParent;
    CATIDOMElement_var m_spChild;
    HRESULT m_hrGetParentNode = S_OK;
    HRESULT m_hrHasAttribute = S_OK;
    HRESULT m_hrGetAttribute = S_OK;
};

#include "CATDOMDocument.h"

#include "CATXMLWriter.h"

unsigned int CATDOMDocument::Release()
{
    const unsigned int references = --m_References;
    if (references == 0) {
        GetStore().Forget(this);
    }
    return references;
}

HRESULT CATDOMDocument::GetNodeName(CATUnicodeString* pusName)
{
    if (pusName == nullptr) {
        return E_POINTER;
    }
    *pusName = "#document";
    return S_OK;
}

HRESULT CATDOMDocument::GetFirstChild(CATIDOMNode_var* pspChild)
{
    if (pspChild == nullptr) {
        return E_POINTER;
    }
    *pspChild = GetStore().GetDocumentElement();
    return S_OK;
}

HRESULT CATDOMDocument::GetNextSibling(CATIDOMNode_var* pspSibling)
{
    if (pspSibling == nullptr) {
        return E_POINTER;
    }
    *pspSibling = NULL_var;
    return S_OK;
}

HRESULT CATDOMDocument::GetCharData(CATUnicodeString* pusText)
{
    if (pusText == nullptr) {
        return E_POINTER;
    }
    *pusText = CATUnicodeString();
    return S_OK;
}

HRESULT CATDOMDocument::GetDocumentElement(CATIDOMElement_var* pspElement)
{
    if (pspElement == nullptr) {
        return E_POINTER;
    }
    *pspElement = GetStore().GetDocumentElement();
    return S_OK;
}

HRESULT CATDOMDocument::GetElementsByTagName(const CATUnicodeString& usTagName, CATIDOMNodeList_var* pspNodes)
{
    if (pspNodes == nullptr) {
        return E_POINTER;
    }
    *pspNodes = GetStore().GetElementsByTagName(usTagName);
    return S_OK;
}

HRESULT CATDOMDocument::CreateElement(const CATUnicodeString& usTagName, CATIDOMElement_var* pspElement)
{
    if (pspElement == nullptr) {
        return E_POINTER;
    }
    if (!CATXMLWriter::IsName(usTagName.View())) {
        return E_FAIL;
    }
    *pspElement = GetStore().CreateElement(usTagName.ConvertToChar());
    return S_OK;
}

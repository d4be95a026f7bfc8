#include "CATDOMNodeList.h"

HRESULT CATDOMNodeList::QueryInterface(const IID& iid, void** ppv)
{
    if (ppv == nullptr) {
        return E_POINTER;
    }
    if (iid == IID_CATIDOMNodeList || iid == IID_CATBaseUnknown) {
        AddRef();
        *ppv = this;
        return S_OK;
    }
    *ppv = nullptr;
    return E_NOINTERFACE;
}

unsigned int CATDOMNodeList::Release()
{
    const unsigned int references = --m_References;
    if (references == 0) {
        delete this;
    }
    return references;
}

HRESULT CATDOMNodeList::GetLength(int* pLength)
{
    if (pLength == nullptr) {
        return E_POINTER;
    }
    *pLength = static_cast<int>(m_Elements.size());
    return S_OK;
}

HRESULT CATDOMNodeList::Item(int index, CATIDOMNode_var* pspNode)
{
    if (pspNode == nullptr) {
        return E_POINTER;
    }
    if (index < 0 || static_cast<std::size_t>(index) >= m_Elements.size()) {
        return E_FAIL;
    }
    *pspNode = m_Elements[static_cast<std::size_t>(index)];
    return S_OK;
}

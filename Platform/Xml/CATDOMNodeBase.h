#pragma once

#include "CATDOMStore.h"

// What the handle objects of documents and elements have in common. They are components of their own with a count of
// their own, without late type or extensions.
template <class Interface>
class CATDOMNodeBase : public Interface
{
public:
    using CATBaseUnknown::QueryInterface;

    unsigned int AddRef() final { return ++m_References; }

    HRESULT GetParentNode(CATIDOMNode_var* pspParent) override
    {
        if (pspParent == nullptr) {
            return E_POINTER;
        }
        *pspParent = GetStore().GetParent(m_pNode, GetBranch());
        return S_OK;
    }

    HRESULT AppendChild(const CATIDOMNode_var& spChild) override;
    HRESULT RemoveChild(const CATIDOMNode_var& spChild) override;

    pugi::xml_node_struct* GetNode() const { return m_pNode; }
    CATDOMBranch* GetBranch() const { return CATDOMStore::Resolve(m_pBranch); }
    CATDOMStore& GetStore() const { return *m_pBranch->pStore; }

protected:
    // With one reference, which belongs to the creator.
    CATDOMNodeBase(pugi::xml_node_struct* pNode, CATDOMBranch* pBranch)
        : Interface(static_cast<CATComponent*>(nullptr)), m_pNode(pNode), m_pBranch(pBranch)
    {
    }

    template <class... Interfaces>
    HRESULT Answer(const IID& iid, void** ppv)
    {
        if (ppv == nullptr) {
            return E_POINTER;
        }
        if (((iid == Interfaces::GetIID()) || ...) || iid == IID_CATBaseUnknown) {
            ++m_References;
            *ppv = this;
            return S_OK;
        }
        *ppv = nullptr;
        return E_NOINTERFACE;
    }

    unsigned int m_References = 1;
    pugi::xml_node_struct* m_pNode;
    CATDOMBranch* m_pBranch;

private:
    friend class CATDOMStore;
};

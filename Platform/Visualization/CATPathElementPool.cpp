#include "CATPathElementPool.h"

#include "CATPathElement.h"

std::shared_ptr<CATPathElementPool> CATPathElementPool::Create()
{
    return std::shared_ptr<CATPathElementPool>(new CATPathElementPool());
}

CATPathElement* CATPathElementPool::Find(const CATBaseUnknown* pObject) const
{
    const auto found = m_Paths.find(pObject);
    if (found == m_Paths.end()) {
        return nullptr;
    }
    found->second->AddRef();
    return found->second;
}

CATPathElement* CATPathElementPool::Get(CATPathElement* pParent, const CATBaseUnknown_var& spObject)
{
    if (!spObject) {
        return nullptr;
    }
    CATPathElement*& pKnown = m_Paths[spObject.Get()];
    if (pKnown != nullptr && pKnown->GetParent() == pParent) {
        pKnown->AddRef();
        return pKnown;
    }
    pKnown = new CATPathElement(spObject, pParent, shared_from_this());
    return pKnown;
}

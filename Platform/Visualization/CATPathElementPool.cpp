#include "CATPathElementPool.h"

#include <utility>

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

void CATPathElementPool::LoseObject(const CATBaseUnknown* pObject)
{
    const auto found = m_Paths.find(pObject);
    if (found == m_Paths.end()) {
        return;
    }
    CATPathElement* pPath = found->second;
    m_Paths.erase(found);
    // The end of the object may reach the pool.
    [[maybe_unused]] const CATBaseUnknown_var spLost = std::exchange(pPath->m_spObject, CATBaseUnknown_var());
}

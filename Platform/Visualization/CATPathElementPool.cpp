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
    const auto [known, isNew] = m_Paths.try_emplace(spObject.Get(), nullptr);
    if (!isNew && known->second->GetParent() == pParent) {
        known->second->AddRef();
        return known->second;
    }
    try {
        known->second = new CATPathElement(spObject, pParent, shared_from_this());
    } catch (...) {
        if (isNew) {
            m_Paths.erase(known);
        }
        throw;
    }
    return known->second;
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

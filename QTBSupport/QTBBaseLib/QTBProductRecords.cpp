#include "QTBProductRecords.h"

#include <algorithm>

const QTBProductRecord* QTBProductRecords::Find(const CATBaseUnknown_var& spProduct) const
{
    const auto entry = m_Entries.find(spProduct.Get());
    return entry != m_Entries.end() ? &entry->second.record : nullptr;
}

QTBProductRecord& QTBProductRecords::Make(const CATBaseUnknown_var& spProduct)
{
    if (m_Entries.size() >= m_Limit && m_Entries.count(spProduct.Get()) == 0) {
        DropUnused();
        m_Limit = std::max(FIRST_LIMIT, 2 * m_Entries.size());
    }
    Entry& entry = m_Entries[spProduct.Get()];
    entry.spProduct = spProduct;
    return entry.record;
}

void QTBProductRecords::DropUnused()
{
    std::erase_if(m_Entries, [](const auto& element) {
        CATBaseUnknown* pProduct = element.second.spProduct.Get();
        pProduct->AddRef();
        return pProduct->Release() == 1;
    });
}

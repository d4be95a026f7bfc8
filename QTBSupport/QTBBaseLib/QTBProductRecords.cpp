#include "QTBProductRecords.h"

#include <algorithm>

#include "CATProductServices.h"

namespace {

// What is recorded about an instance is said of its reference; a broken link has none.
CATBaseUnknown_var GetRecordedProduct(const CATBaseUnknown_var& spProduct)
{
    const CATIProduct_var spIProduct(spProduct);
    if (spIProduct == NULL_var) {
        return spProduct;
    }
    const CATIProduct_var spIProductOnReference = spIProduct->GetReferenceProduct();
    return spIProductOnReference != NULL_var ? CATBaseUnknown_var(spIProductOnReference) : spProduct;
}

bool IsInSession(const CATBaseUnknown_var& spProduct)
{
    const CATIProduct_var spIProduct(spProduct);
    CATDocument* pDocument = nullptr;
    return spIProduct != NULL_var && SUCCEEDED(CATProductServices::GetTreeDocument(spIProduct, &pDocument));
}

bool IsHeldByOthers(CATBaseUnknown* pProduct)
{
    pProduct->AddRef();
    return pProduct->Release() > 1;
}

} // namespace

const QTBProductRecord* QTBProductRecords::Find(const CATBaseUnknown_var& spProduct) const
{
    const auto entry = m_Entries.find(GetRecordedProduct(spProduct).Get());
    return entry != m_Entries.end() ? &entry->second.record : nullptr;
}

QTBProductRecord& QTBProductRecords::Make(const CATBaseUnknown_var& spProduct)
{
    const CATBaseUnknown_var spRecordedProduct = GetRecordedProduct(spProduct);
    if (m_Entries.size() >= m_Limit && m_Entries.count(spRecordedProduct.Get()) == 0) {
        DropUnused();
        m_Limit = std::max(FIRST_LIMIT, 2 * m_Entries.size());
    }
    Entry& entry = m_Entries[spRecordedProduct.Get()];
    entry.spProduct = spRecordedProduct;
    return entry.record;
}

void QTBProductRecords::DropUnused()
{
    // A product of an open document is made again when it is reached again, and must find its record then.
    std::erase_if(m_Entries, [](const auto& element) {
        const CATBaseUnknown_var& spProduct = element.second.spProduct;
        return !IsInSession(spProduct) && !IsHeldByOthers(spProduct.Get());
    });
}

#include "QTBHashTableUtil.h"

#include "CATError.h"

HRESULT QTBHashTableUtil::Insert(QTBHashTableAttribute* pEntry, CATHashTabQTBHashTableAttribute* pTable,
                                 const unsigned char& bTableOwnsEntry, const unsigned char& bReplaceExisting)
{
    if (pEntry == nullptr || pTable == nullptr) {
        return E_POINTER;
    }
    if (pEntry->IsOwnedByTable()) {
        return E_FAIL;
    }
    if (bReplaceExisting != FALSE) {
        Remove(pEntry->GetKey(), pTable, TRUE, TRUE);
    }
    pTable->Insert(pEntry, bTableOwnsEntry != FALSE);
    return S_OK;
}

HRESULT QTBHashTableUtil::Remove(const CATUnicodeString& usKey, CATHashTabQTBHashTableAttribute* pTable,
                                 const unsigned char& bDeleteEntry, const unsigned char& bAllEntries)
{
    if (pTable == nullptr) {
        return E_POINTER;
    }
    // The key may be that of an entry which goes.
    const CATUnicodeString usKeyToRemove(usKey);
    if (!pTable->Remove(usKeyToRemove, bDeleteEntry != FALSE)) {
        return E_FAIL;
    }
    while (bAllEntries != FALSE && pTable->Remove(usKeyToRemove, bDeleteEntry != FALSE)) {
    }
    return S_OK;
}

HRESULT QTBHashTableUtil::FindEntry(const CATUnicodeString& usKey, const CATHashTabQTBHashTableAttribute* pTable,
                                    QTBHashTableAttribute** ppEntry, const unsigned char& bAbsenceIsExpected)
{
    if (pTable == nullptr) {
        return E_POINTER;
    }
    *ppEntry = pTable->Locate(usKey);
    if (*ppEntry != nullptr) {
        return S_OK;
    }
    if (bAbsenceIsExpected != FALSE) {
        return E_FAIL;
    }
    auto* pError = CATError::Make<CATInternalError>({usKey}, "HashTableEntryNotFoundERR_1001", "QTBBaseLibErrors");
    return CATError::GetReturn(2, pError, nullptr, __FILE__, __LINE__);
}

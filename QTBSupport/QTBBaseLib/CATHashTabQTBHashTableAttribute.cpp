#include "CATHashTabQTBHashTableAttribute.h"

#include <vector>

CATHashTabQTBHashTableAttribute::CATHashTabQTBHashTableAttribute(Table::HashFunction pHash,
                                                                 Table::CompareFunction pCompare, int bucketCount)
    : m_Table(pHash, pCompare, bucketCount)
{
}

CATHashTabQTBHashTableAttribute::~CATHashTabQTBHashTableAttribute()
{
    RemoveAll();
}

void CATHashTabQTBHashTableAttribute::Insert(QTBHashTableAttribute* pEntry, bool bTableOwnsEntry)
{
    m_Table.Insert(pEntry);
    pEntry->m_bOwnedByTable = bTableOwnsEntry;
}

QTBHashTableAttribute* CATHashTabQTBHashTableAttribute::Locate(const CATUnicodeString& usKey) const
{
    const QTBHashTableAttribute key(usKey);
    return m_Table.Locate(&key);
}

bool CATHashTabQTBHashTableAttribute::Remove(const CATUnicodeString& usKey, bool bDeleteEntry)
{
    const QTBHashTableAttribute key(usKey);
    QTBHashTableAttribute* pEntry = m_Table.Remove(&key);
    if (pEntry == nullptr) {
        return false;
    }
    if (bDeleteEntry && pEntry->m_bOwnedByTable) {
        delete pEntry;
    } else {
        pEntry->m_bOwnedByTable = false;
    }
    return true;
}

void CATHashTabQTBHashTableAttribute::RemoveAll()
{
    std::vector<QTBHashTableAttribute*> owned;
    m_Table.ForEach([&owned](QTBHashTableAttribute* pEntry) {
        if (pEntry->m_bOwnedByTable) {
            owned.push_back(pEntry);
        }
    });
    // The table is empty before the first entry dies, whatever an entry's value does when it goes.
    m_Table.RemoveAll();
    for (QTBHashTableAttribute* pEntry : owned) {
        delete pEntry;
    }
}

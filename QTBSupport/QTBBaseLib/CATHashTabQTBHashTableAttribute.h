#pragma once

#include "CATHashTable.h"
#include "QTBBaseLibExport.h"
#include "QTBHashTableAttribute.h"

// Hash table of string-keyed entries, used through QTBHashTableUtil. It deletes the entries that it owns when it is
// destroyed or emptied.
class QTBBASELIB_API CATHashTabQTBHashTableAttribute
{
public:
    using Table = CATHashTable<QTBHashTableAttribute>;

    // The table grows from that number of buckets on, so that look-up takes constant time whatever the number of
    // entries.
    CATHashTabQTBHashTableAttribute(Table::HashFunction pHash, Table::CompareFunction pCompare, int bucketCount);
    ~CATHashTabQTBHashTableAttribute();

    int Size() const { return m_Table.Size(); }

    // Adds an entry. Entries with the same key may stand side by side; the last one counts.
    void Insert(QTBHashTableAttribute* pEntry, bool bTableOwnsEntry);

    // The entry of that key that was inserted last, null when there is none.
    QTBHashTableAttribute* Locate(const CATUnicodeString& usKey) const;

    // Takes that entry out, and deletes it if that is wanted and the table owns it. False when there is none.
    bool Remove(const CATUnicodeString& usKey, bool bDeleteEntry);

    void RemoveAll();

private:
    Table m_Table;
};

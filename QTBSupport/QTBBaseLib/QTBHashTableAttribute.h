#pragma once

#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"

// Entry of a hash table that is keyed by a string (see CATHashTabQTBHashTableAttribute). On its own it is a key to look
// for.
class QTBBASELIB_API QTBHashTableAttribute
{
public:
    explicit QTBHashTableAttribute(const CATUnicodeString& usKey);
    QTBHashTableAttribute(const QTBHashTableAttribute&) = delete;
    QTBHashTableAttribute& operator=(const QTBHashTableAttribute&) = delete;
    virtual ~QTBHashTableAttribute();

    const CATUnicodeString& GetKey() const { return m_Key; }
    // String hash of the key (operator%= from 0).
    unsigned int GetHashKey() const { return m_HashKey; }
    // Whether a table will delete the entry.
    bool IsOwnedByTable() const { return m_bOwnedByTable; }

    // What a table is built with: the hash of an entry's key, and 0 when two entries have the same key.
    static unsigned int Hash(const QTBHashTableAttribute* pEntry);
    static int Compare(const QTBHashTableAttribute* pLeft, const QTBHashTableAttribute* pRight);

private:
    friend class CATHashTabQTBHashTableAttribute;

    CATUnicodeString m_Key;
    unsigned int m_HashKey = 0;
    bool m_bOwnedByTable = false;
};

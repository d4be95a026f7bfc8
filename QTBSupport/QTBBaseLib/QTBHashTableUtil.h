#pragma once

#include "CATDataType.h"
#include "CATHashTabQTBHashTableAttribute.h"

// Operations on string-keyed hash tables. All of them fail with E_POINTER for a null argument.
class QTBBASELIB_API QTBHashTableUtil
{
public:
    // Adds an entry. bTableOwnsEntry TRUE: the table deletes the entry when it is removed with deletion and when the
    // table dies; the caller must not delete it. bReplaceExisting TRUE: the entries that the table has under that key
    // are removed first, and deleted if owned. FALSE: they stay, and the new one hides them until it is removed. So a
    // node that lies on a path twice is entered twice and is still on the path when it was removed once. E_FAIL for an
    // entry that a table owns already.
    static HRESULT Insert(QTBHashTableAttribute* pEntry, CATHashTabQTBHashTableAttribute* pTable,
                          const unsigned char& bTableOwnsEntry, const unsigned char& bReplaceExisting);

    // The entry inserted last under the key, in *ppEntry, which the table keeps. E_FAIL with *ppEntry null when there
    // is none: quietly when bAbsenceIsExpected is TRUE, with an error object when FALSE. Entry is the class of the
    // table's entries, or their base.
    template <class Entry>
    static HRESULT Find(const CATUnicodeString& usKey, const CATHashTabQTBHashTableAttribute* pTable, Entry** ppEntry,
                        const unsigned char& bAbsenceIsExpected)
    {
        if (ppEntry == nullptr) {
            return E_POINTER;
        }
        QTBHashTableAttribute* pFound = nullptr;
        const HRESULT hr = FindEntry(usKey, pTable, &pFound, bAbsenceIsExpected);
        *ppEntry = static_cast<Entry*>(pFound);
        return hr;
    }

    // Removes the entry inserted last under the key; E_FAIL when there is none. bDeleteEntry TRUE: the entry is deleted
    // if the table owns it; FALSE: it becomes the caller's. bAllEntries TRUE: the same for all entries of the key.
    static HRESULT Remove(const CATUnicodeString& usKey, CATHashTabQTBHashTableAttribute* pTable,
                          const unsigned char& bDeleteEntry, const unsigned char& bAllEntries);

private:
    static HRESULT FindEntry(const CATUnicodeString& usKey, const CATHashTabQTBHashTableAttribute* pTable,
                             QTBHashTableAttribute** ppEntry, const unsigned char& bAbsenceIsExpected);
};

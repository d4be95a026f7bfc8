#pragma once

#include <string_view>
#include <utility>

#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"

// Name that many records share: an attribute name or the name of a name/value entry. Every text is kept once, with its
// hash, while at least one record uses it; two names are equal when they are the same entry.
class QTBBASELIB_API QTBPooledName
{
public:
    QTBPooledName() noexcept = default;
    explicit QTBPooledName(std::string_view utf8Name);
    QTBPooledName(const QTBPooledName& other) noexcept : m_pEntry(other.m_pEntry) { Hold(); }
    QTBPooledName(QTBPooledName&& other) noexcept : m_pEntry(std::exchange(other.m_pEntry, nullptr)) {}
    ~QTBPooledName() { Drop(); }

    QTBPooledName& operator=(QTBPooledName other) noexcept
    {
        std::swap(m_pEntry, other.m_pEntry);
        return *this;
    }

    // The name if any record uses it, otherwise an empty name.
    static QTBPooledName Find(std::string_view utf8Name);

    bool IsEmpty() const { return m_pEntry == nullptr; }

    // The text, empty for the empty name, and its string hash (operator%= from 0).
    const CATUnicodeString& GetText() const;
    const unsigned int& GetHashKey() const;

    friend bool operator==(const QTBPooledName&, const QTBPooledName&) = default;

    // Names in use; tests look at it.
    static int GetPoolSize();

private:
    friend class QTBNamePool;
    struct Entry;

    explicit QTBPooledName(Entry* pEntry) noexcept : m_pEntry(pEntry) { Hold(); }
    void Hold() const noexcept;
    void Drop() noexcept;

    Entry* m_pEntry = nullptr;
};

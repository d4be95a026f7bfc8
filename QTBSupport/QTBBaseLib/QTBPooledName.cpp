#include "QTBPooledName.h"

#include <cstddef>
#include <vector>

#include "QTBStringHash.h"

struct QTBPooledName::Entry
{
    CATUnicodeString text;
    unsigned int hash;
    unsigned int references;
    // The next entry of the same bucket.
    Entry* pNext;
};

// All names in use, in chains. The number of buckets is a power of two and follows the number of names in both
// directions.
class QTBNamePool
{
public:
    // Never destroyed: names may live in objects that outlast every static one.
    static QTBNamePool& Get()
    {
        static QTBNamePool* const s_pPool = new QTBNamePool;
        return *s_pPool;
    }

    QTBPooledName::Entry* Find(std::string_view name, unsigned int hash) const
    {
        QTBPooledName::Entry* pEntry = m_Buckets[BucketOf(hash)];
        while (pEntry != nullptr && (pEntry->hash != hash || pEntry->text.View() != name)) {
            pEntry = pEntry->pNext;
        }
        return pEntry;
    }

    // The entry of that text, made when there is none; null for the empty text.
    QTBPooledName::Entry* Provide(std::string_view name)
    {
        if (name.empty()) {
            return nullptr;
        }
        const unsigned int hash = QTBHashBytes(name);
        if (QTBPooledName::Entry* pEntry = Find(name, hash)) {
            return pEntry;
        }
        const CATUnicodeString text(name);
        if (text.View() != name) [[unlikely]] {
            // Bytes that are no UTF-8 were repaired; the name is what they became.
            return Provide(text.View());
        }
        if (m_Count >= m_Buckets.size()) {
            Grow();
        }
        QTBPooledName::Entry*& pFirst = m_Buckets[BucketOf(hash)];
        pFirst = new QTBPooledName::Entry{text, hash, 0, pFirst};
        ++m_Count;
        return pFirst;
    }

    void Remove(QTBPooledName::Entry* pEntry)
    {
        QTBPooledName::Entry** ppLink = &m_Buckets[BucketOf(pEntry->hash)];
        while (*ppLink != pEntry) {
            ppLink = &(*ppLink)->pNext;
        }
        *ppLink = pEntry->pNext;
        delete pEntry;
        --m_Count;
        if (m_Buckets.size() > LEAST_BUCKETS && 8 * m_Count < m_Buckets.size()) {
            Shrink();
        }
    }

    std::size_t GetSize() const { return m_Count; }

private:
    static constexpr std::size_t LEAST_BUCKETS = 256;

    std::size_t BucketOf(unsigned int hash) const { return hash & (m_Buckets.size() - 1); }

    void Grow()
    {
        std::vector<QTBPooledName::Entry*> old(2 * m_Buckets.size());
        old.swap(m_Buckets);
        for (QTBPooledName::Entry* pFirst : old) {
            Distribute(pFirst, m_Buckets.size());
        }
    }

    // Takes no memory: names are dropped where nothing may fail.
    void Shrink()
    {
        const std::size_t bucketCount = m_Buckets.size() / 4;
        for (std::size_t i = bucketCount; i < m_Buckets.size(); ++i) {
            Distribute(m_Buckets[i], bucketCount);
        }
        m_Buckets.resize(bucketCount);
        m_Buckets.shrink_to_fit();
    }

    // Puts the entries of a chain into the first buckets of that number.
    void Distribute(QTBPooledName::Entry* pEntry, std::size_t bucketCount)
    {
        while (pEntry != nullptr) {
            QTBPooledName::Entry*& pFirst = m_Buckets[pEntry->hash & (bucketCount - 1)];
            QTBPooledName::Entry* pNext = std::exchange(pEntry->pNext, pFirst);
            pFirst = std::exchange(pEntry, pNext);
        }
    }

    std::vector<QTBPooledName::Entry*> m_Buckets = std::vector<QTBPooledName::Entry*>(LEAST_BUCKETS);
    std::size_t m_Count = 0;
};

QTBPooledName::QTBPooledName(std::string_view utf8Name) : QTBPooledName(QTBNamePool::Get().Provide(utf8Name)) {}

QTBPooledName QTBPooledName::Find(std::string_view utf8Name)
{
    return QTBPooledName(QTBNamePool::Get().Find(utf8Name, QTBHashBytes(utf8Name)));
}

const CATUnicodeString& QTBPooledName::GetText() const
{
    static const CATUnicodeString s_usEmpty;
    return m_pEntry != nullptr ? m_pEntry->text : s_usEmpty;
}

const unsigned int& QTBPooledName::GetHashKey() const
{
    static const unsigned int s_HashOfNone = QTBHashBytes(std::string_view());
    return m_pEntry != nullptr ? m_pEntry->hash : s_HashOfNone;
}

int QTBPooledName::GetPoolSize()
{
    return static_cast<int>(QTBNamePool::Get().GetSize());
}

void QTBPooledName::Hold() const noexcept
{
    if (m_pEntry != nullptr) {
        ++m_pEntry->references;
    }
}

void QTBPooledName::Drop() noexcept
{
    if (m_pEntry != nullptr && --m_pEntry->references == 0) {
        QTBNamePool::Get().Remove(m_pEntry);
    }
}

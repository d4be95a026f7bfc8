#pragma once

#include <cstddef>
#include <utility>
#include <vector>

// Hash table of records held by pointer, which the table does not own. The two functions given at construction tell how
// a record is hashed and which records are equal. Equal records may stand in the table side by side: the one that was
// inserted last is found and removed first. The table grows with its content.
template <class T>
class CATHashTable
{
public:
    using HashFunction = unsigned int (*)(const T*);
    // 0 when the two records are equal.
    using CompareFunction = int (*)(const T*, const T*);

    CATHashTable(HashFunction pHash, CompareFunction pCompare, int bucketCount)
        : m_pHash(pHash), m_pCompare(pCompare), m_Buckets(bucketCount > 0 ? static_cast<std::size_t>(bucketCount) : 1)
    {
    }
    CATHashTable(const CATHashTable&) = delete;
    CATHashTable& operator=(const CATHashTable&) = delete;
    ~CATHashTable() { RemoveAll(); }

    int Size() const { return static_cast<int>(m_Size); }

    void Insert(T* pRecord)
    {
        if (m_Size >= MAX_LOAD * m_Buckets.size()) {
            Grow();
        }
        const unsigned int hash = m_pHash(pRecord);
        Link*& pFirst = m_Buckets[hash % m_Buckets.size()];
        pFirst = new Link{pRecord, hash, pFirst};
        ++m_Size;
    }

    // The record equal to the given one that was inserted last; null when there is none.
    T* Locate(const T* pLike) const
    {
        Link* const* ppLink = FindLink(pLike);
        return ppLink != nullptr ? (*ppLink)->pRecord : nullptr;
    }

    // Takes the record equal to the given one that was inserted last out of the table and returns it; null when there
    // is none.
    T* Remove(const T* pLike)
    {
        Link** ppLink = const_cast<Link**>(FindLink(pLike));
        if (ppLink == nullptr) {
            return nullptr;
        }
        Link* pLink = *ppLink;
        T* pRecord = pLink->pRecord;
        *ppLink = pLink->pNext;
        delete pLink;
        --m_Size;
        return pRecord;
    }

    // Calls visit with every record, in no particular order; visit must not change the table.
    template <class Visit>
    void ForEach(Visit visit) const
    {
        for (const Link* pLink : m_Buckets) {
            for (; pLink != nullptr; pLink = pLink->pNext) {
                visit(pLink->pRecord);
            }
        }
    }

    void RemoveAll()
    {
        for (Link*& pFirst : m_Buckets) {
            while (pFirst != nullptr) {
                delete std::exchange(pFirst, pFirst->pNext);
            }
        }
        m_Size = 0;
    }

private:
    struct Link
    {
        T* pRecord;
        unsigned int hash;
        Link* pNext;
    };

    // Records per bucket before the table grows.
    static constexpr std::size_t MAX_LOAD = 2;

    Link* const* FindLink(const T* pLike) const
    {
        const unsigned int hash = m_pHash(pLike);
        for (Link* const* ppLink = &m_Buckets[hash % m_Buckets.size()]; *ppLink != nullptr;
             ppLink = &(*ppLink)->pNext) {
            if ((*ppLink)->hash == hash && m_pCompare((*ppLink)->pRecord, pLike) == 0) {
                return ppLink;
            }
        }
        return nullptr;
    }

    void Grow()
    {
        std::vector<Link*> buckets(2 * m_Buckets.size() + 1);
        for (Link* pFirst : m_Buckets) {
            // Turned round first, so that the order within a bucket stays.
            Link* pTurned = nullptr;
            while (pFirst != nullptr) {
                Link* pNext = std::exchange(pFirst->pNext, pTurned);
                pTurned = std::exchange(pFirst, pNext);
            }
            while (pTurned != nullptr) {
                Link*& pBucket = buckets[pTurned->hash % buckets.size()];
                Link* pNext = std::exchange(pTurned->pNext, pBucket);
                pBucket = std::exchange(pTurned, pNext);
            }
        }
        m_Buckets.swap(buckets);
    }

    HashFunction m_pHash;
    CompareFunction m_pCompare;
    std::vector<Link*> m_Buckets;
    std::size_t m_Size = 0;
};

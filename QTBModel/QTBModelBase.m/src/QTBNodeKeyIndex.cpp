#include "QTBNodeKeyIndex.h"

#include <algorithm>
#include <utility>

const QTBNodeKeyIndex::Entry* QTBNodeKeyIndex::Find(const CATUnicodeString& usKey, unsigned int hashKey) const
{
    const Entry* pFirst = NULL;
    if (m_Count == 0) {
        return pFirst;
    }
    for (std::size_t slot = HomeOf(hashKey); m_Entries[slot].pNode != NULL; slot = Next(slot)) {
        const Entry& entry = m_Entries[slot];
        if (entry.hashKey != hashKey) {
            continue;
        }
        // It is the node most likely, and the caller touches it next.
        __builtin_prefetch(entry.pNode);
        if (entry.usKey == usKey && (pFirst == NULL || entry.number < pFirst->number)) {
            pFirst = &entry;
        }
    }
    return pFirst;
}

const QTBNodeKeyIndex::Entry* QTBNodeKeyIndex::FindNode(const CATBaseUnknown* pNode, unsigned int hashKey) const
{
    if (m_Count == 0) {
        return NULL;
    }
    for (std::size_t slot = HomeOf(hashKey); m_Entries[slot].pNode != NULL; slot = Next(slot)) {
        if (m_Entries[slot].pNode == pNode && m_Entries[slot].hashKey == hashKey) {
            return &m_Entries[slot];
        }
    }
    return NULL;
}

const QTBNodeKeyIndex::Entry* QTBNodeKeyIndex::FindNode(const CATBaseUnknown* pNode) const
{
    const auto entry = std::find_if(m_Entries.begin(), m_Entries.end(),
                                    [pNode](const Entry& candidate) { return candidate.pNode == pNode; });
    return entry != m_Entries.end() ? &*entry : NULL;
}

void QTBNodeKeyIndex::MakeRoom()
{
    if (m_Count * 2 >= m_Entries.size()) {
        Grow();
    }
}

void QTBNodeKeyIndex::Insert(const Entry& entry)
{
    MakeRoom();
    std::size_t slot = HomeOf(entry.hashKey);
    while (m_Entries[slot].pNode != NULL) {
        slot = Next(slot);
    }
    m_Entries[slot] = entry;
    ++m_Count;
}

void QTBNodeKeyIndex::Remove(const Entry* pEntry)
{
    const std::size_t mask = m_Entries.size() - 1;
    std::size_t hole = static_cast<std::size_t>(pEntry - m_Entries.data());
    // Entries behind the hole that could not be found any more move into it.
    for (std::size_t slot = Next(hole); m_Entries[slot].pNode != NULL; slot = Next(slot)) {
        const std::size_t home = HomeOf(m_Entries[slot].hashKey);
        if (((slot - home) & mask) >= ((slot - hole) & mask)) {
            m_Entries[hole] = std::move(m_Entries[slot]);
            hole = slot;
        }
    }
    m_Entries[hole] = Entry();
    --m_Count;
}

void QTBNodeKeyIndex::Grow()
{
    std::vector<Entry> old(m_Entries.empty() ? FIRST_SIZE : m_Entries.size() * 2);
    old.swap(m_Entries);
    for (Entry& entry : old) {
        if (entry.pNode != NULL) {
            std::size_t slot = HomeOf(entry.hashKey);
            while (m_Entries[slot].pNode != NULL) {
                slot = Next(slot);
            }
            m_Entries[slot] = std::move(entry);
        }
    }
}

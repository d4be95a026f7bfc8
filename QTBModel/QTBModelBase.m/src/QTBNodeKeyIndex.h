#pragma once

#include <cstdint>
#include <vector>

#include "CATBaseUnknown.h"
#include "CATUnicodeString.h"

// Index of a node container's store: from a node's key to the node and its place in its bucket. Open addressing with
// linear probing; the hash is compared before any key. Several nodes may stand under one key for a moment; the one that
// was filed first is found.
class QTBNodeKeyIndex
{
public:
    struct Entry
    {
        CATBaseUnknown* pNode = NULL; // not counted: the bucket holds the reference
        std::uint64_t number = 0;     // place in the order of filing
        unsigned int hashKey = 0;
        CATUnicodeString usKey;
    };

    // Null when no node has that key.
    const Entry* Find(const CATUnicodeString& usKey, unsigned int hashKey) const;
    // The entry of that very node, filed under that hash; null when it is filed under another one.
    const Entry* FindNode(const CATBaseUnknown* pNode, unsigned int hashKey) const;
    // The same for a node that has another hash now, or does not tell it: looks through the whole index.
    const Entry* FindNode(const CATBaseUnknown* pNode) const;

    // Lets the next insertion take no memory.
    void MakeRoom();
    void Insert(const Entry& entry);
    // entry is one of Find or FindNode.
    void Remove(const Entry* pEntry);

private:
    static constexpr std::size_t FIRST_SIZE = 64;

    std::size_t HomeOf(unsigned int hashKey) const
    {
        return static_cast<std::size_t>((hashKey * std::uint64_t{0x9E3779B97F4A7C15}) >> 24U) & (m_Entries.size() - 1);
    }
    std::size_t Next(std::size_t slot) const { return (slot + 1) & (m_Entries.size() - 1); }
    void Grow();

    std::vector<Entry> m_Entries;
    std::size_t m_Count = 0;
};

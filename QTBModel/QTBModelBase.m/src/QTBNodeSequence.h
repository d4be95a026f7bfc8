#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>

#include "CATListValCATBaseUnknown_var.h"

// Ordered set of nodes, the content of a relation. Adding at either end, containment and removal take about constant
// time, however many nodes there are; reading the whole costs nothing unless a node was removed from the middle since.
//
// A short sequence is a plain list. A long one gets an index from each node to its number when it is first needed: the
// first node has the number Index::first, its neighbours count up from there. A node removed from the middle leaves a
// hole until the next reading.
class QTBNodeSequence
{
public:
    QTBNodeSequence() = default;
    QTBNodeSequence(const QTBNodeSequence& other) : m_Nodes(other.GetNodes()) {}
    QTBNodeSequence& operator=(const QTBNodeSequence&) = delete;
    ~QTBNodeSequence() = default;

    int Size() const { return m_Nodes.Size() - (m_pIndex != NULL ? m_pIndex->holes : 0); }
    bool Contains(const CATBaseUnknown_var& spNode) const;

    // Each returns whether the sequence was changed: adding refuses a node that is there already.
    bool AddFirst(const CATBaseUnknown_var& spNode);
    bool AddLast(const CATBaseUnknown_var& spNode);
    bool Remove(const CATBaseUnknown_var& spNode);

    // The nodes in order, a shared copy.
    const CATListValCATBaseUnknown_var& GetNodes() const;

private:
    struct Index
    {
        std::unordered_map<const CATBaseUnknown*, std::int64_t> numbers;
        std::int64_t first = 0;
        int holes = 0;
    };

    bool Add(const CATBaseUnknown_var& spNode, bool isFirst);
    void MakeIndexIfLong();
    void RemoveNumbered(std::unordered_map<const CATBaseUnknown*, std::int64_t>::iterator number);
    bool IsHole(int position) const;
    void CloseHoles() const;

    mutable CATListValCATBaseUnknown_var m_Nodes;
    mutable std::unique_ptr<Index> m_pIndex;
};

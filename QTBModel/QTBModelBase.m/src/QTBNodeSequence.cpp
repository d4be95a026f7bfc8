#include "QTBNodeSequence.h"

#include <utility>

namespace {

// Up to here looking through the list is as quick as an index.
constexpr int LONGEST_WITHOUT_INDEX = 32;

} // namespace

bool QTBNodeSequence::Contains(const CATBaseUnknown_var& spNode) const
{
    return m_pIndex != NULL ? m_pIndex->numbers.contains(spNode.Get()) : m_Nodes.Locate(spNode) > 0;
}

bool QTBNodeSequence::AddFirst(const CATBaseUnknown_var& spNode)
{
    return Add(spNode, true);
}

bool QTBNodeSequence::AddLast(const CATBaseUnknown_var& spNode)
{
    return Add(spNode, false);
}

bool QTBNodeSequence::Add(const CATBaseUnknown_var& spNode, bool isFirst)
{
    if (m_pIndex == NULL && m_Nodes.Locate(spNode) > 0) {
        return false;
    }
    MakeIndexIfLong();
    const int position = isFirst ? 1 : m_Nodes.Size() + 1;
    if (m_pIndex == NULL) {
        m_Nodes.InsertAt(position, spNode);
        return true;
    }
    const std::int64_t number = isFirst ? m_pIndex->first - 1 : m_pIndex->first + m_Nodes.Size();
    const auto [entered, isNew] = m_pIndex->numbers.try_emplace(spNode.Get(), number);
    if (!isNew) {
        return false;
    }
    try {
        m_Nodes.InsertAt(position, spNode);
    } catch (...) {
        m_pIndex->numbers.erase(entered);
        throw;
    }
    if (isFirst) {
        --m_pIndex->first;
    }
    return true;
}

bool QTBNodeSequence::Remove(const CATBaseUnknown_var& spNode)
{
    if (m_pIndex == NULL) {
        return m_Nodes.RemoveValue(spNode) > 0;
    }
    const auto number = m_pIndex->numbers.find(spNode.Get());
    if (number == m_pIndex->numbers.end()) {
        return false;
    }
    RemoveNumbered(number);
    return true;
}

const CATListValCATBaseUnknown_var& QTBNodeSequence::GetNodes() const
{
    if (m_pIndex != NULL && m_pIndex->holes > 0) {
        CloseHoles();
    }
    return m_Nodes;
}

void QTBNodeSequence::MakeIndexIfLong()
{
    if (m_pIndex != NULL || m_Nodes.Size() < LONGEST_WITHOUT_INDEX) {
        return;
    }
    auto pIndex = std::make_unique<Index>();
    std::int64_t number = 0;
    for (const CATBaseUnknown_var& spNode : m_Nodes) {
        pIndex->numbers.emplace(spNode.Get(), number++);
    }
    m_pIndex = std::move(pIndex);
}

void QTBNodeSequence::RemoveNumbered(std::unordered_map<const CATBaseUnknown*, std::int64_t>::iterator number)
{
    const int position = static_cast<int>(number->second - m_pIndex->first) + 1;
    if (m_pIndex->numbers.size() == 1) {
        m_pIndex.reset();
        m_Nodes.RemoveAll();
        return;
    }
    // The list comes first: while a reader shares it, writing to it takes memory.
    const bool isAtEnd = position == 1 || position == m_Nodes.Size();
    if (isAtEnd) {
        m_Nodes.RemovePosition(position);
    } else {
        m_Nodes.Replace(position, NULL_var);
    }
    m_pIndex->numbers.erase(number);
    if (!isAtEnd) {
        ++m_pIndex->holes;
        return;
    }
    if (position == 1) {
        ++m_pIndex->first;
    }
    // The ends are nodes, never holes.
    while (IsHole(1)) {
        m_Nodes.RemovePosition(1);
        ++m_pIndex->first;
        --m_pIndex->holes;
    }
    while (IsHole(m_Nodes.Size())) {
        m_Nodes.RemovePosition(m_Nodes.Size());
        --m_pIndex->holes;
    }
}

bool QTBNodeSequence::IsHole(int position) const
{
    if (m_Nodes[position] != NULL_var) {
        return false;
    }
    // An empty handle may have been added as such.
    const auto number = m_pIndex->numbers.find(NULL);
    return number == m_pIndex->numbers.end() || number->second != m_pIndex->first + position - 1;
}

void QTBNodeSequence::CloseHoles() const
{
    CATListValCATBaseUnknown_var nodes(Size());
    for (int i = 1; i <= m_Nodes.Size(); ++i) {
        if (!IsHole(i)) {
            nodes.Append(m_Nodes[i]);
        }
    }
    m_Nodes = nodes;
    m_pIndex->first = 0;
    m_pIndex->holes = 0;
    std::int64_t number = 0;
    for (const CATBaseUnknown_var& spNode : m_Nodes) {
        m_pIndex->numbers[spNode.Get()] = number++;
    }
}

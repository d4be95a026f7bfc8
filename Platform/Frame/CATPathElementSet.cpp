#include "CATPathElementSet.h"

bool CATPathElementSet::AddElement(CATPathElement* pPathElement)
{
    if (pPathElement == nullptr || Contains(pPathElement)) {
        return false;
    }
    m_Paths.emplace_back(pPathElement);
    m_Positions.emplace(pPathElement, std::prev(m_Paths.end()));
    ++m_ObjectCounts[pPathElement->GetObject().Get()];
    return true;
}

bool CATPathElementSet::RemoveElement(const CATPathElement* pPathElement)
{
    const auto found = m_Positions.find(pPathElement);
    if (found == m_Positions.end()) {
        return false;
    }
    const auto count = m_ObjectCounts.find(pPathElement->GetObject().Get());
    if (--count->second == 0) {
        m_ObjectCounts.erase(count);
    }
    const Position position = found->second;
    m_Positions.erase(found);
    m_Paths.erase(position);
    return true;
}

void CATPathElementSet::Empty()
{
    m_Positions.clear();
    m_ObjectCounts.clear();
    // The paths may hold the last references of objects whose end reaches this set again.
    std::list<CATPathElement_var> paths;
    paths.swap(m_Paths);
}

bool CATPathElementSet::Contains(const CATPathElement* pPathElement) const
{
    return m_Positions.count(pPathElement) > 0;
}

bool CATPathElementSet::ContainsObject(const CATBaseUnknown_var& spObject) const
{
    return m_ObjectCounts.count(spObject.Get()) > 0;
}

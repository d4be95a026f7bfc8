#include "CATPathElementSet.h"

#include <algorithm>

bool CATPathElementSet::AddElement(CATPathElement* pPathElement)
{
    if (pPathElement == nullptr || !pPathElement->GetObject() || Contains(pPathElement)) {
        return false;
    }
    const CATBaseUnknown* pObject = pPathElement->GetObject().Get();
    m_Paths.emplace_back(pPathElement);
    m_Places.emplace(pPathElement, Place{std::prev(m_Paths.end()), pObject});
    m_PathsToObjects.emplace(pObject, pPathElement);
    return true;
}

bool CATPathElementSet::RemoveElement(const CATPathElement* pPathElement)
{
    const auto found = m_Places.find(pPathElement);
    if (found == m_Places.end()) {
        return false;
    }
    const Place place = found->second;
    m_Places.erase(found);
    const auto [begin, end] = m_PathsToObjects.equal_range(place.pObject);
    m_PathsToObjects.erase(std::find_if(begin, end, [=](const auto& entry) { return entry.second == pPathElement; }));
    if (m_Next == place.position) {
        ++m_Next;
    }
    m_Paths.erase(place.position);
    return true;
}

void CATPathElementSet::Empty()
{
    m_Places.clear();
    m_PathsToObjects.clear();
    m_Next = m_Paths.end();
    // The paths may hold the last references of objects whose end reaches this set again.
    std::list<CATPathElement_var> paths;
    paths.swap(m_Paths);
}

bool CATPathElementSet::Contains(const CATPathElement* pPathElement) const
{
    return m_Places.count(pPathElement) > 0;
}

bool CATPathElementSet::ContainsObject(const CATBaseUnknown_var& spObject) const
{
    const auto [begin, end] = m_PathsToObjects.equal_range(spObject.Get());
    return std::any_of(begin, end,
                       [&](const auto& entry) { return entry.second->GetObject().Get() == spObject.Get(); });
}

CATPathElement* CATPathElementSet::NextElement()
{
    if (m_Next == m_Paths.end()) {
        return nullptr;
    }
    CATPathElement* pPathElement = m_Next->Get();
    ++m_Next;
    return pPathElement;
}

#pragma once

#include <list>
#include <unordered_map>

#include "CATPathElement.h"

// Ordered set of paths. Adding, removing and looking up take constant time.
class PLATFORM_API CATPathElementSet
{
public:
    CATPathElementSet() = default;
    CATPathElementSet(const CATPathElementSet&) = delete;
    CATPathElementSet& operator=(const CATPathElementSet&) = delete;

    int GetSize() const { return static_cast<int>(m_Paths.size()); }

    // Adds the path behind the others and keeps a reference of its own. False for a null pointer and for a path that
    // the set holds already.
    bool AddElement(CATPathElement* pPathElement);

    // False when the set does not hold the path.
    bool RemoveElement(const CATPathElement* pPathElement);

    void Empty();

    bool Contains(const CATPathElement* pPathElement) const;

    // Whether one of the paths leads to the object, given by any handle on it.
    bool ContainsObject(const CATBaseUnknown_var& spObject) const;

    // The paths in the order in which they were added.
    const std::list<CATPathElement_var>& GetElements() const { return m_Paths; }

private:
    using Position = std::list<CATPathElement_var>::const_iterator;

    std::list<CATPathElement_var> m_Paths;
    std::unordered_map<const CATPathElement*, Position> m_Positions;
    std::unordered_map<const CATBaseUnknown*, int> m_ObjectCounts;
};

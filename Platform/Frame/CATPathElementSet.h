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

    // Adds the path behind the others and keeps a reference of its own. False for a null pointer, for a path whose
    // object has left the model and for one that the set holds already.
    bool AddElement(CATPathElement* pPathElement);

    // False when the set does not hold the path.
    bool RemoveElement(const CATPathElement* pPathElement);

    void Empty();

    bool Contains(const CATPathElement* pPathElement) const;

    // Whether one of the paths leads to the object, given by any handle on it.
    bool ContainsObject(const CATBaseUnknown_var& spObject) const;

    // The paths in the order in which they were added. One whose object leaves the model stays.
    const std::list<CATPathElement_var>& GetElements() const { return m_Paths; }

    // The same as a walk: NextElement gives the path behind the last one that it gave, null at the end. Paths may be
    // added and removed meanwhile. No reference is added.
    void InitElementList() { m_Next = m_Paths.begin(); }
    CATPathElement* NextElement();

private:
    using Position = std::list<CATPathElement_var>::const_iterator;

    struct Place
    {
        Position position;
        // The object that the path led to when it was added.
        const CATBaseUnknown* pObject;
    };

    std::list<CATPathElement_var> m_Paths;
    std::unordered_map<const CATPathElement*, Place> m_Places;
    std::unordered_multimap<const CATBaseUnknown*, const CATPathElement*> m_PathsToObjects;
    Position m_Next = m_Paths.end();
};

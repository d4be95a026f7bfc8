#pragma once

#include <memory>
#include <unordered_map>

#include "CATInterface_var.h"

class CATPathElement;

// The paths that are alive in one editor, one for each object. Paths outlive the editor when somebody holds them, so
// the pool is shared between the editor and its paths.
class PLATFORM_API CATPathElementPool : public std::enable_shared_from_this<CATPathElementPool>
{
public:
    static std::shared_ptr<CATPathElementPool> Create();

    // The living path that leads to the object, with a reference for the caller; null when there is none.
    CATPathElement* Find(const CATBaseUnknown* pObject) const;

    // The path that leads from the end of another path (null for a root) to the object, with a reference for the
    // caller. Null for an empty handle.
    CATPathElement* Get(CATPathElement* pParent, const CATBaseUnknown_var& spObject);

    // The object has left the model: the living path that leads to it leads nowhere from now on. Paths that were hidden
    // by a later one to the same object keep it.
    void LoseObject(const CATBaseUnknown* pObject);

    // Paths alive at this moment.
    int GetSize() const { return static_cast<int>(m_Paths.size()); }

private:
    friend class CATPathElement;

    CATPathElementPool() = default;

    std::unordered_map<const CATBaseUnknown*, CATPathElement*> m_Paths;
};

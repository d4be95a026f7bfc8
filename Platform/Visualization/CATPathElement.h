#pragma once

#include <memory>

#include "CATInterface_var.h"

class CATPathElementPool;

// Path of displayed objects from a root down to one object, as the sets of an editor hold it.
//
// Paths of one editor share their beginnings: a path is its last object and the path of the object above. A path is
// counted by itself; it keeps its objects alive. Made by CATPathElementPool.
class PLATFORM_API CATPathElement : public CATBaseUnknown
{
public:
    CATPathElement(const CATPathElement&) = delete;
    CATPathElement& operator=(const CATPathElement&) = delete;

    // Name for the error of an empty handle.
    static const char* GetInterfaceName() { return "CATPathElement"; }

    // The object that the path leads to; empty when it has left the model (CATPathElementPool::LoseObject).
    const CATBaseUnknown_var& GetObject() const { return m_spObject; }

    // The path of the object above; null for a path that consists of a root only. No reference is added.
    CATPathElement* GetParent() const { return m_pParent; }

    // Number of objects on the path, at least 1.
    int GetSize() const { return m_Size; }

    unsigned int AddRef() override { return ++m_References; }
    unsigned int Release() override;

private:
    friend class CATPathElementPool;

    CATPathElement(const CATBaseUnknown_var& spObject, CATPathElement* pParent,
                   std::shared_ptr<CATPathElementPool> pPool);
    ~CATPathElement() override;

    CATBaseUnknown_var m_spObject;
    CATPathElement* m_pParent;
    std::shared_ptr<CATPathElementPool> m_pPool;
    int m_Size;
    unsigned int m_References = 1;
};

using CATPathElement_var = CATInterface_var<CATPathElement>;

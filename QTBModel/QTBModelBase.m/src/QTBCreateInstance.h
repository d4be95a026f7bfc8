#pragma once

#include <new>

#include "CATBaseUnknown.h"

// CATICreateInstance of a late type, as a code extension: CATInstantiateComponent creates components through it.
template <class Implementation>
class QTBCreateInstance : public CATBaseUnknown
{
public:
    // Stores a new implementation object, with one reference for the caller, in *ppv. E_OUTOFMEMORY, with *ppv
    // untouched, when there is no memory for it.
    HRESULT CreateInstance(void** ppv)
    {
        try {
            *ppv = static_cast<CATBaseUnknown*>(new Implementation);
        } catch (const std::bad_alloc&) {
            return E_OUTOFMEMORY;
        }
        return S_OK;
    }
};

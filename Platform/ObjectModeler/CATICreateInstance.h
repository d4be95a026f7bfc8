#pragma once

#include "CATBaseUnknown.h"
#include "CATTie.h"

inline constexpr IID IID_CATICreateInstance{"CATICreateInstance"};

// Factory of a late type; CATInstantiateComponent asks the late type for it.
class PLATFORM_API CATICreateInstance : public CATBaseUnknown
{
    CATDeclareInterface(CATICreateInstance, CATBaseUnknown)

public:
    // Stores a new component in *ppv, with one reference for the caller. S_OK, or E_OUTOFMEMORY with *ppv untouched.
    virtual HRESULT CreateInstance(void** ppv) = 0;
};

template <class Tie, class Target = CATOwnTarget>
class TIECATICreateInstance : public Tie
{
public:
    using Tie::Tie;
    HRESULT CreateInstance(void** ppv) override { return Target::Of(*this)->CreateInstance(ppv); }
};

#pragma once

#include "CATTie.h"
#include "CATInit.h"

// Interface object of CATInit; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATInit : public Tie
{
public:
    using Tie::Tie;

    void Init(unsigned char bDestroyExistingData) override
    {
        return Target::Of(*this)->Init(bDestroyExistingData);
    }

    CATBaseUnknown* GetRootContainer(const char* interfaceName) override
    {
        return Target::Of(*this)->GetRootContainer(interfaceName);
    }
};

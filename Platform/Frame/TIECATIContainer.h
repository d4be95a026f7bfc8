#pragma once

#include "CATTie.h"
#include "CATIContainer.h"

// Interface object of CATIContainer; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATIContainer : public Tie
{
public:
    using Tie::Tie;

    _SEQUENCE_CATBaseUnknown_ptr ListMembers(const char* interfaceName) override
    {
        return Target::Of(*this)->ListMembers(interfaceName);
    }

    CATBaseUnknown* FindMember(const CATUnicodeString& name) override
    {
        return Target::Of(*this)->FindMember(name);
    }
};

#pragma once

#include "CATTie.h"
#include "CATICSOFilter.h"

// Interface object of CATICSOFilter; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATICSOFilter : public Tie
{
public:
    using Tie::Tie;

    HRESULT CommandIsAvailable(const char* commandName, CATCSO* pCSO) override
    {
        return Target::Of(*this)->CommandIsAvailable(commandName, pCSO);
    }

    HRESULT AvailableElements(const char* commandName, CATCSO* pCSO, CATListValCATBaseUnknown_var** ppElements) override
    {
        return Target::Of(*this)->AvailableElements(commandName, pCSO, ppElements);
    }
};

#pragma once

#include "CATTie.h"
#include "CATIAlias.h"

// Interface object of CATIAlias; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATIAlias : public Tie
{
public:
    using Tie::Tie;

    CATUnicodeString GetAlias() override
    {
        return Target::Of(*this)->GetAlias();
    }

    HRESULT SetAlias(const CATUnicodeString& usAlias) override
    {
        return Target::Of(*this)->SetAlias(usAlias);
    }
};

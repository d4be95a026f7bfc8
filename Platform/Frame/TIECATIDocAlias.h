#pragma once

#include "CATTie.h"
#include "CATIDocAlias.h"

// Interface object of CATIDocAlias; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATIDocAlias : public Tie
{
public:
    using Tie::Tie;

    CATUnicodeString GetAlias() override
    {
        return Target::Of(*this)->GetAlias();
    }
};

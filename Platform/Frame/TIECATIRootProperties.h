#pragma once

#include "CATTie.h"
#include "CATIRootProperties.h"

// Interface object of CATIRootProperties; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATIRootProperties : public Tie
{
public:
    using Tie::Tie;

    CATListValCATString GetListOfEditors() override
    {
        return Target::Of(*this)->GetListOfEditors();
    }
};

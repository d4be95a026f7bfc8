#pragma once

#include "CATTie.h"
#include "CATINavigateObject.h"

// Interface object of CATINavigateObject; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATINavigateObject : public Tie
{
public:
    using Tie::Tie;

    CATListValCATUnicodeString* GetIdentificators() override
    {
        return Target::Of(*this)->GetIdentificators();
    }

    CATListValCATBaseUnknown_var* GetChildren() override
    {
        return Target::Of(*this)->GetChildren();
    }
};

#pragma once

#include "CATTie.h"
#include "CATIContextualMenu.h"

// Interface object of CATIContextualMenu; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATIContextualMenu : public Tie
{
public:
    using Tie::Tie;

    HRESULT GetContextualMenu(CATCmdAccess*& oMenu) override
    {
        return Target::Of(*this)->GetContextualMenu(oMenu);
    }
};

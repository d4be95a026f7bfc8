#pragma once

#include "CATTie.h"
#include "CATIContextualSubMenu.h"

// Interface object of CATIContextualSubMenu; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATIContextualSubMenu : public Tie
{
public:
    using Tie::Tie;

    CATCmdAccess* GetContextualSubMenu() override
    {
        return Target::Of(*this)->GetContextualSubMenu();
    }
};

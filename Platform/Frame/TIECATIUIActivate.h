#pragma once

#include "CATTie.h"
#include "CATIUIActivate.h"

// Interface object of CATIUIActivate; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATIUIActivate : public Tie
{
public:
    using Tie::Tie;

    HRESULT Activate() override
    {
        return Target::Of(*this)->Activate();
    }

    HRESULT Deactivate() override
    {
        return Target::Of(*this)->Deactivate();
    }

    unsigned char IsActive() override
    {
        return Target::Of(*this)->IsActive();
    }

    CATString GetWorkshopName() override
    {
        return Target::Of(*this)->GetWorkshopName();
    }

    CATString GetCommandName() override
    {
        return Target::Of(*this)->GetCommandName();
    }
};

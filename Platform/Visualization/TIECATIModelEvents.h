#pragma once

#include "CATTie.h"
#include "CATIModelEvents.h"

// Interface object of CATIModelEvents; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATIModelEvents : public Tie
{
public:
    using Tie::Tie;

    void Connect(CATModelEventListener* pListener) override
    {
        return Target::Of(*this)->Connect(pListener);
    }

    void Disconnect(CATModelEventListener* pListener) override
    {
        return Target::Of(*this)->Disconnect(pListener);
    }

    void Dispatch(CATModelEvent event) override
    {
        return Target::Of(*this)->Dispatch(event);
    }
};

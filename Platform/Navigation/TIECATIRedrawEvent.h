#pragma once

#include "CATTie.h"
#include "CATIRedrawEvent.h"

// Interface object of CATIRedrawEvent; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATIRedrawEvent : public Tie
{
public:
    using Tie::Tie;

    void Redraw() override
    {
        return Target::Of(*this)->Redraw();
    }
};

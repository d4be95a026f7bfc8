#pragma once

#include "CATTie.h"
#include "CATISelectShow.h"

// Interface object of CATISelectShow; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATISelectShow : public Tie
{
public:
    using Tie::Tie;

    HRESULT BeginShow() override
    {
        return Target::Of(*this)->BeginShow();
    }

    HRESULT EndShow() override
    {
        return Target::Of(*this)->EndShow();
    }

    CATRep* BuildSelectionRep() override
    {
        return Target::Of(*this)->BuildSelectionRep();
    }
};

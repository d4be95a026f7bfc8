#pragma once

#include "CATTie.h"
#include "CATI3DGeoVisu.h"

// Interface object of CATI3DGeoVisu; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATI3DGeoVisu : public Tie
{
public:
    using Tie::Tie;

    CATRep* BuildRep() override
    {
        return Target::Of(*this)->BuildRep();
    }

    CATRep* BuildCoarseRep() override
    {
        return Target::Of(*this)->BuildCoarseRep();
    }

    CATRep* BuildPathRep(CATPathElement* pPathElement) override
    {
        return Target::Of(*this)->BuildPathRep(pPathElement);
    }
};

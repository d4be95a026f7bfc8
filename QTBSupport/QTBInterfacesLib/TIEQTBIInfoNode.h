#pragma once

#include "CATTie.h"
#include "QTBIInfoNode.h"

// Interface object of QTBIInfoNode; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIEQTBIInfoNode : public Tie
{
public:
    using Tie::Tie;
};

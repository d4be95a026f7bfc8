#pragma once

#include "CATTie.h"
#include "QTBINode.h"

// Interface object of QTBINode; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIEQTBINode : public Tie
{
public:
    using Tie::Tie;

    HRESULT GetNodeDescriptionString(CATUnicodeString* pusNodeDescriptionString) override
    {
        return Target::Of(*this)->GetNodeDescriptionString(pusNodeDescriptionString);
    }

    HRESULT GetPdmClass(CATUnicodeString* pusPdmClass) override
    {
        return Target::Of(*this)->GetPdmClass(pusPdmClass);
    }
};

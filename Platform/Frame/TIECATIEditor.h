#pragma once

#include "CATTie.h"
#include "CATIEditor.h"

// Interface object of CATIEditor; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATIEditor : public Tie
{
public:
    using Tie::Tie;

    CATFrmEditor* GetEditor() override
    {
        return Target::Of(*this)->GetEditor();
    }
};

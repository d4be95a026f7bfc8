#pragma once

#include "CATTie.h"
#include "QTBIQtbFrmWindow.h"

// Interface object of QTBIQtbFrmWindow; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIEQTBIQtbFrmWindow : public Tie
{
public:
    using Tie::Tie;

    HRESULT GetFrmWindowPtr(CATFrmWindow** ppFrmWindow) override
    {
        return Target::Of(*this)->GetFrmWindowPtr(ppFrmWindow);
    }
};

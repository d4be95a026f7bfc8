#pragma once

#include "CATTie.h"
#include "CATINavigModify.h"

// Interface object of CATINavigModify; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATINavigModify : public Tie
{
public:
    using Tie::Tie;

    void UpdateElem(CATNavigInstance* pInstance) override
    {
        return Target::Of(*this)->UpdateElem(pInstance);
    }

    HRESULT ModifyShortHelp(CATUnicodeString& ioShortHelp) override
    {
        return Target::Of(*this)->ModifyShortHelp(ioShortHelp);
    }

    CATNavigInstance* GetAssociatedInstance() override
    {
        return Target::Of(*this)->GetAssociatedInstance();
    }

    void SetAssociatedInstance(CATNavigInstance* pInstance) override
    {
        return Target::Of(*this)->SetAssociatedInstance(pInstance);
    }

    CATNavigExpansionMode GetExpansionMode() override
    {
        return Target::Of(*this)->GetExpansionMode();
    }

    void SetExpansionMode(CATNavigExpansionMode mode) override
    {
        return Target::Of(*this)->SetExpansionMode(mode);
    }

    CATNavigBox* GetFatherContainer() override
    {
        return Target::Of(*this)->GetFatherContainer();
    }
};

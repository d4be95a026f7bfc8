#pragma once

#include "CATTie.h"
#include "CATIGraphNode.h"

// Interface object of CATIGraphNode; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATIGraphNode : public Tie
{
public:
    using Tie::Tie;

    HRESULT SetIconName(const CATUnicodeString& usIconName) override
    {
        return Target::Of(*this)->SetIconName(usIconName);
    }

    HRESULT GetIconName(CATUnicodeString* pusIconName) override
    {
        return Target::Of(*this)->GetIconName(pusIconName);
    }

    HRESULT SetIconMarking(unsigned char bOn) override
    {
        return Target::Of(*this)->SetIconMarking(bOn);
    }

    HRESULT SetLabelMarking(unsigned char bOn) override
    {
        return Target::Of(*this)->SetLabelMarking(bOn);
    }

    unsigned char IconIsMarked() override
    {
        return Target::Of(*this)->IconIsMarked();
    }

    unsigned char LabelIsMarked() override
    {
        return Target::Of(*this)->LabelIsMarked();
    }

    HRESULT SetStateCode(int code) override
    {
        return Target::Of(*this)->SetStateCode(code);
    }

    int GetStateCode() override
    {
        return Target::Of(*this)->GetStateCode();
    }
};

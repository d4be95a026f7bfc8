#pragma once

#include "CATTie.h"
#include "CATIVisProperties.h"

// Interface object of CATIVisProperties; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATIVisProperties : public Tie
{
public:
    using Tie::Tie;

    HRESULT SetVisible(unsigned char bVisible) override
    {
        return Target::Of(*this)->SetVisible(bVisible);
    }

    unsigned char IsVisible() override
    {
        return Target::Of(*this)->IsVisible();
    }

    HRESULT SetColor(unsigned int color) override
    {
        return Target::Of(*this)->SetColor(color);
    }

    HRESULT GetColor(unsigned int* pColor) override
    {
        return Target::Of(*this)->GetColor(pColor);
    }

    HRESULT ResetColor() override
    {
        return Target::Of(*this)->ResetColor();
    }

    HRESULT SetOpacity(unsigned int opacity) override
    {
        return Target::Of(*this)->SetOpacity(opacity);
    }

    unsigned int GetOpacity() override
    {
        return Target::Of(*this)->GetOpacity();
    }
};

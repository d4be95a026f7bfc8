#pragma once

#include "CATTie.h"
#include "QTBIBndBox.h"

// Interface object of QTBIBndBox; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIEQTBIBndBox : public Tie
{
public:
    using Tie::Tie;

    HRESULT SetCorner(const CATMathPoint& Corner) override
    {
        return Target::Of(*this)->SetCorner(Corner);
    }

    HRESULT SetFirstEdge(const CATMathVector& FirstEdge) override
    {
        return Target::Of(*this)->SetFirstEdge(FirstEdge);
    }

    HRESULT SetSecondEdge(const CATMathVector& SecondEdge) override
    {
        return Target::Of(*this)->SetSecondEdge(SecondEdge);
    }

    HRESULT SetThirdEdge(const CATMathVector& ThirdEdge) override
    {
        return Target::Of(*this)->SetThirdEdge(ThirdEdge);
    }

    HRESULT GetCorner(CATMathPoint& Corner) override
    {
        return Target::Of(*this)->GetCorner(Corner);
    }

    HRESULT GetFirstEdge(CATMathVector& FirstEdge) override
    {
        return Target::Of(*this)->GetFirstEdge(FirstEdge);
    }

    HRESULT GetSecondEdge(CATMathVector& SecondEdge) override
    {
        return Target::Of(*this)->GetSecondEdge(SecondEdge);
    }

    HRESULT GetThirdEdge(CATMathVector& ThirdEdge) override
    {
        return Target::Of(*this)->GetThirdEdge(ThirdEdge);
    }

    unsigned char IsMarked() override
    {
        return Target::Of(*this)->IsMarked();
    }

    HRESULT SetMarked(const unsigned char& bMarked) override
    {
        return Target::Of(*this)->SetMarked(bMarked);
    }

    CATUnicodeString GetName() override
    {
        return Target::Of(*this)->GetName();
    }

    HRESULT SetName(const CATUnicodeString& usName) override
    {
        return Target::Of(*this)->SetName(usName);
    }
};

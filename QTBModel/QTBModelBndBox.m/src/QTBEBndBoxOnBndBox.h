#pragma once

#include "CATBaseUnknown.h"
#include "CATMathPoint.h"
#include "CATMathVector.h"
#include "CATUnicodeString.h"

// QTBIBndBox on the late type QTBBndBox: the data of a bounding box. The operations are described in the interface.
class QTBEBndBoxOnBndBox : public CATBaseUnknown
{
public:
    HRESULT SetCorner(const CATMathPoint& Corner);
    HRESULT SetFirstEdge(const CATMathVector& FirstEdge);
    HRESULT SetSecondEdge(const CATMathVector& SecondEdge);
    HRESULT SetThirdEdge(const CATMathVector& ThirdEdge);
    HRESULT GetCorner(CATMathPoint& Corner);
    HRESULT GetFirstEdge(CATMathVector& FirstEdge);
    HRESULT GetSecondEdge(CATMathVector& SecondEdge);
    HRESULT GetThirdEdge(CATMathVector& ThirdEdge);

    unsigned char IsMarked();
    HRESULT SetMarked(const unsigned char& bMarked);
    CATUnicodeString GetName();
    HRESULT SetName(const CATUnicodeString& usName);

private:
    CATMathPoint m_Corner;
    CATMathVector m_FirstEdge{1, 0, 0};
    CATMathVector m_SecondEdge{0, 1, 0};
    CATMathVector m_ThirdEdge{0, 0, 1};
    unsigned char m_bMarked = FALSE;
    CATUnicodeString m_usName;
};

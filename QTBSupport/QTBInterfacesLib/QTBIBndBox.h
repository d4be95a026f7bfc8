#pragma once

#include "CATInterface_var.h"
#include "CATUnicodeString.h"
#include "QTBInterfacesLibExport.h"

class CATMathPoint;
class CATMathVector;

inline constexpr IID IID_QTBIBndBox{"QTBIBndBox"};

// The data of a bounding box that the 3D view shows: a corner, the three edges that start there (millimetres; they may
// have any length and direction), whether it is marked, and its name. A new box is the unit cube at the origin,
// unmarked and without a name. No operation fails. What is changed shows after the next redraw of the box.
class QTBINTERFACESLIB_API QTBIBndBox : public CATBaseUnknown
{
    CATDeclareInterface(QTBIBndBox, CATBaseUnknown)

public:
    virtual HRESULT SetCorner(const CATMathPoint& Corner) = 0;
    virtual HRESULT SetFirstEdge(const CATMathVector& FirstEdge) = 0;
    virtual HRESULT SetSecondEdge(const CATMathVector& SecondEdge) = 0;
    virtual HRESULT SetThirdEdge(const CATMathVector& ThirdEdge) = 0;
    virtual HRESULT GetCorner(CATMathPoint& Corner) = 0;
    virtual HRESULT GetFirstEdge(CATMathVector& FirstEdge) = 0;
    virtual HRESULT GetSecondEdge(CATMathVector& SecondEdge) = 0;
    virtual HRESULT GetThirdEdge(CATMathVector& ThirdEdge) = 0;

    virtual unsigned char IsMarked() = 0;
    virtual HRESULT SetMarked(const unsigned char& bMarked) = 0;
    virtual CATUnicodeString GetName() = 0;
    virtual HRESULT SetName(const CATUnicodeString& usName) = 0;
};

using QTBIBndBox_var = CATInterface_var<QTBIBndBox>;

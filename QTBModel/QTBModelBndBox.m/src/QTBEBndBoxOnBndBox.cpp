#include "QTBEBndBoxOnBndBox.h"

HRESULT QTBEBndBoxOnBndBox::SetCorner(const CATMathPoint& Corner)
{
    m_Corner = Corner;
    return S_OK;
}

HRESULT QTBEBndBoxOnBndBox::SetFirstEdge(const CATMathVector& FirstEdge)
{
    m_FirstEdge = FirstEdge;
    return S_OK;
}

HRESULT QTBEBndBoxOnBndBox::SetSecondEdge(const CATMathVector& SecondEdge)
{
    m_SecondEdge = SecondEdge;
    return S_OK;
}

HRESULT QTBEBndBoxOnBndBox::SetThirdEdge(const CATMathVector& ThirdEdge)
{
    m_ThirdEdge = ThirdEdge;
    return S_OK;
}

HRESULT QTBEBndBoxOnBndBox::GetCorner(CATMathPoint& Corner)
{
    Corner = m_Corner;
    return S_OK;
}

HRESULT QTBEBndBoxOnBndBox::GetFirstEdge(CATMathVector& FirstEdge)
{
    FirstEdge = m_FirstEdge;
    return S_OK;
}

HRESULT QTBEBndBoxOnBndBox::GetSecondEdge(CATMathVector& SecondEdge)
{
    SecondEdge = m_SecondEdge;
    return S_OK;
}

HRESULT QTBEBndBoxOnBndBox::GetThirdEdge(CATMathVector& ThirdEdge)
{
    ThirdEdge = m_ThirdEdge;
    return S_OK;
}

unsigned char QTBEBndBoxOnBndBox::IsMarked()
{
    return m_bMarked;
}

HRESULT QTBEBndBoxOnBndBox::SetMarked(const unsigned char& bMarked)
{
    m_bMarked = bMarked;
    return S_OK;
}

CATUnicodeString QTBEBndBoxOnBndBox::GetName()
{
    return m_usName;
}

HRESULT QTBEBndBoxOnBndBox::SetName(const CATUnicodeString& usName)
{
    m_usName = usName;
    return S_OK;
}

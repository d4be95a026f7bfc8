#include "QTBEAliasOnBndBox.h"

#include "QTBCheck.h"

CATUnicodeString QTBEAliasOnBndBox::GetAlias()
{
    QTB_SCOPE("QTBEAliasOnBndBox::GetAlias");
    return m_usAlias;
}

HRESULT QTBEAliasOnBndBox::SetAlias(const CATUnicodeString& usAlias)
{
    QTB_SCOPE("QTBEAliasOnBndBox::SetAlias");
    m_usAlias = usAlias;
    return S_OK;
}

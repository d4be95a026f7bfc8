#include "QTBEAliasOnBndBox.h"

CATUnicodeString QTBEAliasOnBndBox::GetAlias()
{
    return m_usAlias;
}

HRESULT QTBEAliasOnBndBox::SetAlias(const CATUnicodeString& usAlias)
{
    m_usAlias = usAlias;
    return S_OK;
}

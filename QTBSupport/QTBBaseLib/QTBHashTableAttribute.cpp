#include "QTBHashTableAttribute.h"

#include "QTBStringHash.h"

QTBHashTableAttribute::QTBHashTableAttribute(const CATUnicodeString& usKey) : m_Key(usKey)
{
    m_HashKey %= m_Key;
}

QTBHashTableAttribute::~QTBHashTableAttribute() = default;

unsigned int QTBHashTableAttribute::Hash(const QTBHashTableAttribute* pEntry)
{
    return pEntry->m_HashKey;
}

int QTBHashTableAttribute::Compare(const QTBHashTableAttribute* pLeft, const QTBHashTableAttribute* pRight)
{
    return pLeft->m_Key == pRight->m_Key ? 0 : 1;
}

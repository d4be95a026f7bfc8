#include "QTBNodeRelationList.h"

#include "QTBCheck.h"
#include "QTBStringHash.h"

QTBNodeRelationList::QTBNodeRelationList(const CATUnicodeString& usName, const CATBaseUnknown_var& spFirstNode)
    : m_usName(usName), m_HashKey(0)
{
    m_HashKey %= m_usName;
    m_Nodes.AddLast(spFirstNode);
}

QTBNodeRelationList::QTBNodeRelationList(const QTBNodeRelationList& other) = default;

QTBNodeRelationList::~QTBNodeRelationList() = default;

HRESULT QTBNodeRelationList::AddValueAtBeginning(const CATBaseUnknown_var& spNode)
{
    return m_Nodes.AddFirst(spNode) ? QTB_SUCCESS : E_FAIL;
}

HRESULT QTBNodeRelationList::AddValueAtEnd(const CATBaseUnknown_var& spNode)
{
    return m_Nodes.AddLast(spNode) ? QTB_SUCCESS : E_FAIL;
}

HRESULT QTBNodeRelationList::RemoveValue(const CATBaseUnknown_var& spNode)
{
    return m_Nodes.Remove(spNode) ? QTB_SUCCESS : E_FAIL;
}

unsigned char QTBNodeRelationList::ContainsValue(const CATBaseUnknown_var& spNode) const
{
    return m_Nodes.Contains(spNode) ? TRUE : FALSE;
}

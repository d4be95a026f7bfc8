#include "QTBSchemaRelation.h"

namespace {

HRESULT GetNameAt(const CATListValCATUnicodeString& Names, int index, CATUnicodeString* pusName)
{
    if (pusName == nullptr) {
        return E_POINTER;
    }
    if (index < 1 || index > Names.Size()) {
        return E_FAIL;
    }
    *pusName = Names[index];
    return S_OK;
}

} // namespace

QTBSchemaRelation::QTBSchemaRelation(const CATUnicodeString& usName, const CATUnicodeString& usNlsKey)
    : QTBSchemaNode(usName, usNlsKey)
{
}

QTBSchemaRelation::~QTBSchemaRelation() = default;

HRESULT QTBSchemaRelation::GetLeftObjectName(int index, CATUnicodeString* pusClassName) const
{
    return GetNameAt(m_LeftObjectNames, index, pusClassName);
}

HRESULT QTBSchemaRelation::GetRightObjectName(int index, CATUnicodeString* pusClassName) const
{
    return GetNameAt(m_RightObjectNames, index, pusClassName);
}

HRESULT QTBSchemaRelation::GetLeftClassName(CATUnicodeString* pusClassName) const
{
    return GetNameAt(m_LeftObjectNames, 1, pusClassName);
}

HRESULT QTBSchemaRelation::GetRightClassName(CATUnicodeString* pusClassName) const
{
    return GetNameAt(m_RightObjectNames, 1, pusClassName);
}

void QTBSchemaRelation::Inherit(const QTBSchemaRelation& parent)
{
    QTBSchemaNode::Inherit(parent);
    if (m_LeftObjectNames.Size() == 0) {
        m_LeftObjectNames = parent.m_LeftObjectNames;
    }
    if (m_RightObjectNames.Size() == 0) {
        m_RightObjectNames = parent.m_RightObjectNames;
    }
    if (m_pLeftToRightRelationship == nullptr) {
        m_pLeftToRightRelationship = parent.m_pLeftToRightRelationship;
    }
    if (m_pRightToLeftRelationship == nullptr) {
        m_pRightToLeftRelationship = parent.m_pRightToLeftRelationship;
    }
    if (m_usSingleExpand.IsEmpty()) {
        m_usSingleExpand = parent.m_usSingleExpand;
    }
    if (m_usContextCreate.IsEmpty()) {
        m_usContextCreate = parent.m_usContextCreate;
    }
}

#include "QTBSchema.h"

#include "QTBPdmTree.h"
#include "QTBSchemaElementList.h"

namespace {

template <class Index>
typename Index::mapped_type FindIn(const Index& index, const CATUnicodeString& usName)
{
    const auto found = index.find(usName);
    return found != index.end() ? found->second : nullptr;
}

template <class Index>
HRESULT GetFrom(const Index& index, const CATUnicodeString& usName, typename Index::mapped_type* ppElement)
{
    if (ppElement == nullptr) {
        return E_POINTER;
    }
    typename Index::mapped_type pElement = FindIn(index, usName);
    if (pElement == nullptr) {
        return E_FAIL;
    }
    *ppElement = pElement;
    return S_OK;
}

} // namespace

QTBSchema::QTBSchema() = default;

QTBSchema::~QTBSchema() = default;

HRESULT QTBSchema::GetObjectPtr(const CATUnicodeString& usClassName, QTBSchemaObject** ppSchemaObject) const
{
    return GetFrom(m_ObjectIndex, usClassName, ppSchemaObject);
}

HRESULT QTBSchema::GetRelationPtr(const CATUnicodeString& usClassName, QTBSchemaRelation** ppSchemaRelation) const
{
    return GetFrom(m_RelationIndex, usClassName, ppSchemaRelation);
}

HRESULT QTBSchema::GetObjectPtr(int index, QTBSchemaObject** ppSchemaObject) const
{
    return QTBGetSchemaElement(m_Objects, index, ppSchemaObject);
}

HRESULT QTBSchema::GetRelationPtr(int index, QTBSchemaRelation** ppSchemaRelation) const
{
    return QTBGetSchemaElement(m_Relations, index, ppSchemaRelation);
}

QTBSchemaNode* QTBSchema::FindClass(const CATUnicodeString& usClassName) const
{
    if (QTBSchemaObject* pObject = FindIn(m_ObjectIndex, usClassName)) {
        return pObject;
    }
    return FindIn(m_RelationIndex, usClassName);
}

const QTBSchemaObject* QTBSchema::FindObject(const CATUnicodeString& usClassName) const
{
    return FindIn(m_ObjectIndex, usClassName);
}

HRESULT QTBSchema::GetMaxExpansionLevel(int* pMaxExpansionLevel) const
{
    if (pMaxExpansionLevel == nullptr) {
        return E_POINTER;
    }
    *pMaxExpansionLevel = m_iMaxExpansionLevel;
    return S_OK;
}

QTBSchemaAttribute* QTBSchema::FindAttribute(const CATUnicodeString& usName) const
{
    return FindIn(m_AttributeIndex, usName);
}

QTBSchemaDataSource* QTBSchema::FindDataSource(const CATUnicodeString& usName) const
{
    return FindIn(m_DataSourceIndex, usName);
}

const CATUnicodeString& QTBSchema::GetSessionValue(QTBPdmSessionStringAttr attr) const
{
    static const CATUnicodeString NONE;
    const auto found = m_SessionValues.find(attr);
    return found != m_SessionValues.end() ? found->second : NONE;
}

QTBSchema::CatiaFileClassInfo* QTBSchema::FindCatiaFileClassInfo(QTBCatiaFileClass fileClass, QTBBomType bomType)
{
    const auto found = m_CatiaFileClassInfos.find({fileClass, bomType});
    return found != m_CatiaFileClassInfos.end() ? &found->second : nullptr;
}

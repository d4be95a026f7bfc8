#include "QTBPdmTreeObj.h"

#include "QTBPdmTreeRel.h"

QTBPdmTreeObj::QTBPdmTreeObj(const CATUnicodeString& usClassName) : m_usClassName(usClassName) {}

QTBPdmTreeObj::~QTBPdmTreeObj() = default;

HRESULT QTBPdmTreeObj::GetAllPdmTreeRelPtrs(CATListPtrQTBPdmTreeRel* pPdmTreeRels) const
{
    if (pPdmTreeRels == nullptr) {
        return E_POINTER;
    }
    *pPdmTreeRels = m_Rels;
    return S_OK;
}

HRESULT QTBPdmTreeObj::GetAllPdmTreeRels(CATListValQTBNodeRelationInfo* pNodeRelationInfos) const
{
    if (pNodeRelationInfos == nullptr) {
        return E_POINTER;
    }
    pNodeRelationInfos->RemoveAll();
    for (const QTBPdmTreeRel* pRel : m_Rels) {
        pNodeRelationInfos->Append(pRel->GetNodeRelationInfo());
    }
    return S_OK;
}

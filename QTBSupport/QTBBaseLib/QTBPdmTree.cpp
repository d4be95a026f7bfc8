#include "QTBPdmTree.h"

QTBPdmTree::QTBPdmTree(const CATUnicodeString& usName, const CATUnicodeString& usNlsKey)
    : QTBSchemaElementBase(usName), m_usNlsKey(usNlsKey), m_Start("")
{
}

QTBPdmTree::~QTBPdmTree() = default;

HRESULT QTBPdmTree::GetAllPdmTreeRelPtrs(CATListPtrQTBPdmTreeRel* pPdmTreeRels, const unsigned char& bWholeTree) const
{
    if (bWholeTree == FALSE) {
        return m_Start.GetAllPdmTreeRelPtrs(pPdmTreeRels);
    }
    if (pPdmTreeRels == nullptr) {
        return E_POINTER;
    }
    pPdmTreeRels->RemoveAll();
    for (const std::unique_ptr<QTBPdmTreeRel>& pRel : m_Rels) {
        pPdmTreeRels->Append(pRel.get());
    }
    return S_OK;
}

HRESULT QTBPdmTree::GetAllPdmTreeRels(CATListValQTBNodeRelationInfo* pNodeRelationInfos,
                                      const unsigned char& bWholeTree) const
{
    if (bWholeTree == FALSE) {
        return m_Start.GetAllPdmTreeRels(pNodeRelationInfos);
    }
    if (pNodeRelationInfos == nullptr) {
        return E_POINTER;
    }
    pNodeRelationInfos->RemoveAll();
    for (const std::unique_ptr<QTBPdmTreeRel>& pRel : m_Rels) {
        pNodeRelationInfos->Append(pRel->GetNodeRelationInfo());
    }
    return S_OK;
}

QTBPdmTreeRel* QTBPdmTree::AddRel(QTBPdmTreeObj* pParent, const QTBNodeRelationInfo& NodeRelationInfo)
{
    m_Rels.push_back(std::make_unique<QTBPdmTreeRel>(NodeRelationInfo));
    QTBPdmTreeRel* pRel = m_Rels.back().get();
    (pParent != nullptr ? pParent : &m_Start)->m_Rels.Append(pRel);
    return pRel;
}

QTBPdmTreeObj* QTBPdmTree::AddObj(QTBPdmTreeRel* pParent, const CATUnicodeString& usClassName)
{
    m_Objs.push_back(std::make_unique<QTBPdmTreeObj>(usClassName));
    pParent->m_Objs.Append(m_Objs.back().get());
    return m_Objs.back().get();
}

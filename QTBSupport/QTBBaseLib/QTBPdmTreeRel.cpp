#include "QTBPdmTreeRel.h"

QTBPdmTreeRel::QTBPdmTreeRel(const QTBNodeRelationInfo& NodeRelationInfo) : m_NodeRelationInfo(NodeRelationInfo) {}

QTBPdmTreeRel::~QTBPdmTreeRel() = default;

HRESULT QTBPdmTreeRel::GetAllPdmTreeObjPtrs(CATListPtrQTBPdmTreeObj* pPdmTreeObjs) const
{
    if (pPdmTreeObjs == nullptr) {
        return E_POINTER;
    }
    *pPdmTreeObjs = m_Objs;
    return S_OK;
}

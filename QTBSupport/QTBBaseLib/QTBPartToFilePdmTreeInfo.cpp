#include "QTBPartToFilePdmTreeInfo.h"

QTBPartToFilePdmTreeInfo::QTBPartToFilePdmTreeInfo(const CATListValCATBaseUnknown_var& RepNodes, QTBPdmTree* pPdmTree)
    : m_RepNodes(RepNodes), m_pPdmTree(pPdmTree)
{
}

HRESULT QTBPartToFilePdmTreeInfo::GetRepNodes(CATListValCATBaseUnknown_var* pRepNodes) const
{
    if (pRepNodes == nullptr) {
        return E_POINTER;
    }
    *pRepNodes = m_RepNodes;
    return S_OK;
}

HRESULT QTBPartToFilePdmTreeInfo::GetPdmTreePtr(QTBPdmTree** ppPdmTree) const
{
    if (ppPdmTree == nullptr) {
        return E_POINTER;
    }
    *ppPdmTree = m_pPdmTree;
    return S_OK;
}

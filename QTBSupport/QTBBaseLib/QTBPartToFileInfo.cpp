#include "QTBPartToFileInfo.h"

HRESULT QTBPartToFileInfo::GetPartToFilePdmTreeInfoList(CATListValQTBPartToFilePdmTreeInfo* pPdmTreeInfos) const
{
    if (pPdmTreeInfos == nullptr) {
        return E_POINTER;
    }
    *pPdmTreeInfos = m_PdmTreeInfos;
    return S_OK;
}

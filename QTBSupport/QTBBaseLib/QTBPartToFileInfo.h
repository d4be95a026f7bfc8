#pragma once

#include "QTBPartToFilePdmTreeInfo.h"

// How a structure of parts leads to its files: one entry for each PDM tree that the parts' classes have for it.
class QTBBASELIB_API QTBPartToFileInfo
{
public:
    QTBPartToFileInfo() = default;
    explicit QTBPartToFileInfo(const CATListValQTBPartToFilePdmTreeInfo& PdmTreeInfos) : m_PdmTreeInfos(PdmTreeInfos) {}

    // What the list held before is lost.
    HRESULT GetPartToFilePdmTreeInfoList(CATListValQTBPartToFilePdmTreeInfo* pPdmTreeInfos) const;

private:
    CATListValQTBPartToFilePdmTreeInfo m_PdmTreeInfos;
};

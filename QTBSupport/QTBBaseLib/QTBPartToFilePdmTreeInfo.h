#pragma once

#include "CATDataType.h"
#include "CATListValCATBaseUnknown_var.h"
#include "QTBBaseLibExport.h"

class QTBPdmTree;

// Rep nodes of parts and the PDM tree that leads from all of them to their files. The tree belongs to the schema.
class QTBBASELIB_API QTBPartToFilePdmTreeInfo
{
public:
    QTBPartToFilePdmTreeInfo() = default;
    QTBPartToFilePdmTreeInfo(const CATListValCATBaseUnknown_var& RepNodes, QTBPdmTree* pPdmTree);

    // What the list held before is lost.
    HRESULT GetRepNodes(CATListValCATBaseUnknown_var* pRepNodes) const;
    HRESULT GetPdmTreePtr(QTBPdmTree** ppPdmTree) const;

private:
    CATListValCATBaseUnknown_var m_RepNodes;
    QTBPdmTree* m_pPdmTree = nullptr;
};

using CATListValQTBPartToFilePdmTreeInfo = CATListVal<QTBPartToFilePdmTreeInfo>;

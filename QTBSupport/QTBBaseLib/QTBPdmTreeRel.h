#pragma once

#include "CATDataType.h"
#include "CATListPtr.h"
#include "QTBBaseLibExport.h"
#include "QTBNodeRelationInfo.h"

class QTBPdmTreeObj;
using CATListPtrQTBPdmTreeObj = CATListPtr<QTBPdmTreeObj>;

// A relation level of a PDM tree: a relation followed in one direction and the objects that are looked at there.
class QTBBASELIB_API QTBPdmTreeRel
{
public:
    explicit QTBPdmTreeRel(const QTBNodeRelationInfo& NodeRelationInfo);
    ~QTBPdmTreeRel();
    QTBPdmTreeRel(const QTBPdmTreeRel&) = delete;
    QTBPdmTreeRel& operator=(const QTBPdmTreeRel&) = delete;

    const QTBNodeRelationInfo& GetNodeRelationInfo() const { return m_NodeRelationInfo; }

    // What the list held before is lost.
    HRESULT GetAllPdmTreeObjPtrs(CATListPtrQTBPdmTreeObj* pPdmTreeObjs) const;

private:
    friend class QTBPdmTree;

    QTBNodeRelationInfo m_NodeRelationInfo;
    CATListPtrQTBPdmTreeObj m_Objs;
};

using CATListPtrQTBPdmTreeRel = CATListPtr<QTBPdmTreeRel>;

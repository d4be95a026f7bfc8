#pragma once

#include "CATDataType.h"
#include "CATListPtr.h"
#include "CATListVal.h"
#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"

class QTBNodeRelationInfo;
class QTBPdmTreeRel;
using CATListPtrQTBPdmTreeRel = CATListPtr<QTBPdmTreeRel>;
using CATListValQTBNodeRelationInfo = CATListVal<QTBNodeRelationInfo>;

// An object level of a PDM tree: objects of one class and the relations that are followed from them.
class QTBBASELIB_API QTBPdmTreeObj
{
public:
    explicit QTBPdmTreeObj(const CATUnicodeString& usClassName);
    ~QTBPdmTreeObj();
    QTBPdmTreeObj(const QTBPdmTreeObj&) = delete;
    QTBPdmTreeObj& operator=(const QTBPdmTreeObj&) = delete;

    const CATUnicodeString& GetClassName() const { return m_usClassName; }

    // The relations followed from here, as records and as name and direction; the two lists are parallel. What the
    // lists held before is lost.
    HRESULT GetAllPdmTreeRelPtrs(CATListPtrQTBPdmTreeRel* pPdmTreeRels) const;
    HRESULT GetAllPdmTreeRels(CATListValQTBNodeRelationInfo* pNodeRelationInfos) const;

private:
    friend class QTBPdmTree;

    CATUnicodeString m_usClassName;
    CATListPtrQTBPdmTreeRel m_Rels;
};

using CATListPtrQTBPdmTreeObj = CATListPtr<QTBPdmTreeObj>;

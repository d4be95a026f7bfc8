#pragma once

#include <memory>
#include <vector>

#include "QTBPdmTreeObj.h"
#include "QTBPdmTreeRel.h"
#include "QTBSchemaElementBase.h"

// A pattern of relations that is followed from an object: the relations at the object, the objects there, their
// relations and so on. The schema defines them: as custom expand trees that the user chooses from, and as the way from
// a part to its files. The tree owns its levels.
class QTBBASELIB_API QTBPdmTree : public QTBSchemaElementBase
{
public:
    // The name tells the trees of a class apart; the NLS key gives the menu text.
    explicit QTBPdmTree(const CATUnicodeString& usName = "", const CATUnicodeString& usNlsKey = "");
    ~QTBPdmTree();

    const CATUnicodeString& GetNlsKey() const { return m_usNlsKey; }

    // The relations followed from the start object or, with bWholeTree, those of all levels in document order; as
    // records and as name and direction. The two lists are parallel. What the lists held before is lost.
    HRESULT GetAllPdmTreeRelPtrs(CATListPtrQTBPdmTreeRel* pPdmTreeRels, const unsigned char& bWholeTree) const;
    HRESULT GetAllPdmTreeRels(CATListValQTBNodeRelationInfo* pNodeRelationInfos, const unsigned char& bWholeTree) const;

    // Builds the tree from its start on: a relation below an object of the tree, below the start for null, and an
    // object below a relation of the tree.
    QTBPdmTreeRel* AddRel(QTBPdmTreeObj* pParent, const QTBNodeRelationInfo& NodeRelationInfo);
    QTBPdmTreeObj* AddObj(QTBPdmTreeRel* pParent, const CATUnicodeString& usClassName);

private:
    CATUnicodeString m_usNlsKey;
    QTBPdmTreeObj m_Start;
    std::vector<std::unique_ptr<QTBPdmTreeRel>> m_Rels;
    std::vector<std::unique_ptr<QTBPdmTreeObj>> m_Objs;
};

// The part of QTBERepNodeContOnRepNodeCont that lets the trees follow the PDM graph.

#include <iostream>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "QTBCheck.h"
#include "QTBConstants.h"
#include "QTBERepNodeContOnRepNodeCont.h"
#include "QTBGlobVarsUtil.h"
#include "QTBHashTableQtbNodeAttribute.h"
#include "QTBHashTableUtil.h"
#include "QTBINodeRelations.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBIRepNode.h"
#include "QTBInfoUtil.h"
#include "QTBLimits.h"
#include "QTBMessageUtil.h"
#include "QTBPartToFileInfo.h"
#include "QTBPartToFilePdmTreeInfo.h"
#include "QTBPartToFileUtil.h"
#include "QTBPdmGraphUtil.h"
#include "QTBPdmTree.h"
#include "QTBPdmTreeObj.h"
#include "QTBPdmTreeRel.h"
#include "QTBRepTreeUtil.h"
#include "QTBReservedNames.h"
#include "QTBSchema.h"
#include "QTBSchemaUtil.h"
#include "QTBTraceUtil.h"

namespace {

constexpr int UNLIMITED = -1;
// From so many children on they are indexed by what they show.
constexpr int MANY_CHILDREN = 32;

// Keeps the trees of a bulk update from ending the action one by one, however the update ends.
class SingleActionScope
{
public:
    explicit SingleActionScope(unsigned char* pbIncActionIndexAfterUpdate)
        : m_pbIncActionIndexAfterUpdate(pbIncActionIndexAfterUpdate)
    {
        *m_pbIncActionIndexAfterUpdate = FALSE;
    }
    SingleActionScope(const SingleActionScope&) = delete;
    SingleActionScope& operator=(const SingleActionScope&) = delete;
    ~SingleActionScope() { *m_pbIncActionIndexAfterUpdate = TRUE; }

private:
    unsigned char* m_pbIncActionIndexAfterUpdate;
};

// One container is updated at a time, and what it may pass is the same for all of them.
int g_MaxExpansionLevel = UNLIMITED;
bool g_bMaxLevelReached = false;

// Counts the rep nodes that an update passes below the nodes where it starts. Parts that several places share make a
// tree larger than any memory without a circle in it.
class PassedRepNodes
{
public:
    void Begin()
    {
        if (m_bCountsTogether) {
            return;
        }
        m_Most = QTBLimits::GetMaxRepNodes();
        m_Passed = 0;
        m_bMostReached = false;
    }

    // Whether one more relation may be passed with its object: a tree does not end at a relation.
    bool PassRelation()
    {
        constexpr int NODES = 2;
        m_bMostReached = m_bMostReached || m_Passed > m_Most - NODES;
        m_Passed += m_bMostReached ? 0 : NODES;
        return !m_bMostReached;
    }

    // The updates that follow count as one.
    void CountTogether(bool together) { m_bCountsTogether = together; }

    bool IsMostReached() const { return m_bMostReached; }
    int GetMost() const { return m_Most; }

private:
    int m_Most = 0;
    int m_Passed = 0;
    bool m_bMostReached = false;
    bool m_bCountsTogether = false;
};

PassedRepNodes g_PassedRepNodes;

// Lets the many small updates along a filtered structure count as one, however they end.
class CountTogetherScope
{
public:
    CountTogetherScope()
    {
        g_PassedRepNodes.Begin();
        g_PassedRepNodes.CountTogether(true);
    }
    CountTogetherScope(const CountTogetherScope&) = delete;
    CountTogetherScope& operator=(const CountTogetherScope&) = delete;
    ~CountTogetherScope() { g_PassedRepNodes.CountTogether(false); }
};

} // namespace

struct QTBERepNodeContOnRepNodeCont::Expansion
{
    const CATListValQTBNodeRelationInfo& NodeRelationInfos;
    unsigned char bOneLevelOnly;
    unsigned char* pbWindowNeedsUpdate;
    CATListValCATBaseUnknown_var* pListOfRelRepNodes;
    CATListValCATBaseUnknown_var* pListOfObjRepNodes;
    unsigned char bCollectExistingChildren;
};

struct QTBERepNodeContOnRepNodeCont::ExpansionLevel
{
    ExpansionLevel(const QTBIRepNode_var& spParent, bool start, int number)
        : spIRepNodeOnParent(spParent), isStart(start), level(number)
    {
    }

    QTBIRepNode_var spIRepNodeOnParent;
    bool isStart;
    int level;
    CATUnicodeString usPdmKey;
    bool isOnPath = false;
    CATListValCATBaseUnknown_var PdmNodes;
    CATListValQTBNodeRelationInfo RelationInfos;
    int position = 0;
    // The children by the PDM nodes that they show, where there are many; NULL_var for a PDM node that several show.
    std::unordered_map<const CATBaseUnknown*, QTBIRepNode_var> ChildrenByPdmNode;
    bool indexIsTried = false; // the children are indexed when one of them is first looked for
    bool isIndexed = false;
};

// Takes what is left of the path off the expansion table, when an expansion ends by an exception.
class QTBERepNodeContOnRepNodeCont::PathScope
{
public:
    PathScope(QTBERepNodeContOnRepNodeCont& cont, const std::vector<ExpansionLevel>& levels)
        : m_Cont(cont), m_Levels(levels)
    {
    }
    PathScope(const PathScope&) = delete;
    PathScope& operator=(const PathScope&) = delete;
    ~PathScope()
    {
        for (const ExpansionLevel& level : m_Levels) {
            if (level.isOnPath) {
                QTBHashTableUtil::Remove(level.usPdmKey, &m_Cont.m_ExpansionTable, TRUE, FALSE);
            }
        }
    }

private:
    QTBERepNodeContOnRepNodeCont& m_Cont;
    const std::vector<ExpansionLevel>& m_Levels;
};

// A level of a filtered structure: rep nodes, the relations that each of them is expanded along, and which rep node and
// relation are at hand.
struct QTBERepNodeContOnRepNodeCont::FilteredLevel
{
    CATListValCATBaseUnknown_var RepNodes;
    CATListPtrQTBPdmTreeRel PdmTreeRels;
    CATListValQTBNodeRelationInfo NodeRelInfos;
    int repNode = 1;
    int relation = 0;
};

struct QTBERepNodeContOnRepNodeCont::LeftToRight
{
    static constexpr const char* GET_NODES = "spIPdmObjNodeOnPdmNode->GetRightNodes";
    static constexpr const char* GET_OBJECT = "spIPdmRelNodeOnPdmNode->GetRightObject";
    static constexpr const char* GET_OBJECT_OF_CHILD = "spIPdmRelNodeOnChild->GetRightObject";
    static constexpr auto GetNodes = &QTBIPdmObjNode::GetRightNodes;
    static constexpr auto GetObject = &QTBIPdmRelNode::GetRightObject;
};

struct QTBERepNodeContOnRepNodeCont::RightToLeft
{
    static constexpr const char* GET_NODES = "spIPdmObjNodeOnPdmNode->GetLeftNodes";
    static constexpr const char* GET_OBJECT = "spIPdmRelNodeOnPdmNode->GetLeftObject";
    static constexpr const char* GET_OBJECT_OF_CHILD = "spIPdmRelNodeOnChild->GetLeftObject";
    static constexpr auto GetNodes = &QTBIPdmObjNode::GetLeftNodes;
    static constexpr auto GetObject = &QTBIPdmRelNode::GetLeftObject;
};

HRESULT QTBERepNodeContOnRepNodeCont::SetPdmNodesToConsider(NodesToRetrieve* pPdmNodesToConsider)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::SetPdmNodesToConsider");
    const NodesToRetrieve PdmNodesToConsider = *pPdmNodesToConsider;
    // Parentheses belong to the text.
    QTB_ASSERT_AS("(PdmNodesToConsider == ALL_NODES) || (PdmNodesToConsider == MOST_RECENTLY_UPDATED_NODES) || "
                  "(PdmNodesToConsider == ONLY_CURRENT_NODES)",
                  PdmNodesToConsider == ALL_NODES || PdmNodesToConsider == MOST_RECENTLY_UPDATED_NODES ||
                      PdmNodesToConsider == ONLY_CURRENT_NODES);
    m_PdmNodesToConsider = PdmNodesToConsider;
    return QTB_SUCCESS;
}

HRESULT
QTBERepNodeContOnRepNodeCont::SetRepChildRelationsToUpdate(RepChildRelationsToUpdate* pRepChildRelationsToUpdate)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::SetRepChildRelationsToUpdate");
    // The text names the value by its type, and is meant so.
    QTB_ASSERT_AS("(RepChildRelationsToUpdate == ALL_RELATIONS_STORED_IN_REP_NODE) || "
                  "(RepChildRelationsToUpdate == ONLY_NEW_RELATIONS)",
                  *pRepChildRelationsToUpdate == ALL_RELATIONS_STORED_IN_REP_NODE ||
                      *pRepChildRelationsToUpdate == ONLY_NEW_RELATIONS);
    m_RepChildRelationsToUpdate = *pRepChildRelationsToUpdate;
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::UpdateAllRepTrees(unsigned char* pbWindowFlag1, unsigned char* pbWindowFlag2,
                                                        const CATListValQTBNodeRelationInfo& NodeRelationInfos,
                                                        CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                                                        CATListValCATBaseUnknown_var* pListOfObjRepNodes,
                                                        unsigned char* pbAddNewNodes)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::UpdateAllRepTrees");
    QTB_INTERFACE(m_spIPdmNodeCont);
    const SingleActionScope singleAction(&m_bIncActionIndexAfterUpdate);
    unsigned char bTrue = TRUE;
    unsigned char bFalse = FALSE;
    CATListValCATBaseUnknown_var RootNodes;
    QTB_CALL(GetRepRootNodes, &RootNodes, &bFalse, &bFalse);
    for (const CATBaseUnknown_var& spRootNode : RootNodes) {
        const QTBIRepNode_var spIRepNodeOnRootNode(spRootNode);
        QTB_INTERFACE(spIRepNodeOnRootNode);
        QTB_CALL(UpdateRepTree, spIRepNodeOnRootNode, CATListValQTBNodeRelationInfo(), &bFalse, pListOfRelRepNodes,
                 pListOfObjRepNodes, pbAddNewNodes, &bTrue, &bFalse);
    }
    CATListValCATBaseUnknown_var PdmRootNodes;
    QTB_CALL(m_spIPdmNodeCont->GetPdmRootNodes, &PdmRootNodes);
    for (const CATBaseUnknown_var& spPdmRootNode : PdmRootNodes) {
        const QTBIPdmNode_var spIPdmNodeOnPdmRoot(spPdmRootNode);
        QTB_INTERFACE(spIPdmNodeOnPdmRoot);
        QTB_CALL(UpdateRepTrees, spIPdmNodeOnPdmRoot, NodeRelationInfos, &bFalse, pListOfRelRepNodes,
                 pListOfObjRepNodes, pbAddNewNodes);
    }
    QTB_CALL(UpdateQtbWindow, pbWindowFlag1, pbWindowFlag2);
    QTB_CALL(QTBGlobVarsUtil::IncActionIndex);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::UpdateRepTrees(const QTBIPdmNode_var& spIPdmNode,
                                                     const CATListValQTBNodeRelationInfo& NodeRelationInfos,
                                                     unsigned char* pbOneLevelOnly,
                                                     CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                                                     CATListValCATBaseUnknown_var* pListOfObjRepNodes,
                                                     unsigned char* pbAddNewNodes)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::UpdateRepTrees");
    BeginUpdate();
    const QTBIRepNodeCont_var spIRepNodeContOnThis(this);
    QTB_INTERFACE(spIRepNodeContOnThis);
    // Two names for the PDM node stand in the texts; meant.
    CATListValCATBaseUnknown_var RepNodes;
    QTB_RESULT_AS("spIPdmNodeOnStartNodeOnPdmRoot->GetRepNodes",
                  spIPdmNode->GetRepNodes(&RepNodes, spIRepNodeContOnThis));
    if (RepNodes.Size() == 0) {
        unsigned char bIsDefaultRootNode = FALSE;
        QTB_CALL(QTBPdmGraphUtil::IsDefaultRootNode, spIPdmNode, &bIsDefaultRootNode);
        unsigned char bIsAffected = FALSE;
        QTB_RESULT_AS("spIPdmNodeOnStartNode->IsAffectedByCurrentAction",
                      spIPdmNode->IsAffectedByCurrentAction(&bIsAffected));
        if (bIsDefaultRootNode != FALSE || bIsAffected != FALSE || m_PdmNodesToConsider != ONLY_CURRENT_NODES) {
            QTBIRepNode_var spIRepNodeOnNewRoot;
            QTB_CALL(CreateRepNode, QTBIRepNode_var(), spIPdmNode, &spIRepNodeOnNewRoot, QTBNodeRelationInfo(),
                     pListOfRelRepNodes, pListOfObjRepNodes);
            RepNodes.Append(spIRepNodeOnNewRoot);
        }
    }

    unsigned char bWindowNeedsUpdate = FALSE;
    unsigned char bCollectExistingChildren = FALSE;
    for (const CATBaseUnknown_var& spRepNode : RepNodes) {
        const QTBIRepNode_var spIRepNode(spRepNode);
        QTB_INTERFACE(spIRepNode);
        unsigned char bIsRepDefaultNode = FALSE;
        QTB_CALL(spIRepNode->IsRepDefaultNode, &bIsRepDefaultNode);
        if (bIsRepDefaultNode == FALSE) {
            QTB_CALL(UpdateRepTreeIntern, spIRepNode, NodeRelationInfos, pbOneLevelOnly, &bWindowNeedsUpdate,
                     pListOfRelRepNodes, pListOfObjRepNodes, pbAddNewNodes, &bCollectExistingChildren);
        }
    }
    return FinishUpdate(bWindowNeedsUpdate != FALSE);
}

HRESULT QTBERepNodeContOnRepNodeCont::UpdateRepTree(const QTBIRepNode_var& spIRepNode,
                                                    const CATListValQTBNodeRelationInfo& NodeRelationInfos,
                                                    unsigned char* pbOneLevelOnly,
                                                    CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                                                    CATListValCATBaseUnknown_var* pListOfObjRepNodes,
                                                    unsigned char* pbAddNewNodes, unsigned char* pbUpdateWindow,
                                                    unsigned char* pbCollectExistingChildren)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::UpdateRepTree");
    BeginUpdate();
    unsigned char bWindowNeedsUpdate = FALSE;
    QTB_CALL(UpdateRepTreeIntern, spIRepNode, NodeRelationInfos, pbOneLevelOnly, &bWindowNeedsUpdate,
             pListOfRelRepNodes, pListOfObjRepNodes, pbAddNewNodes, pbCollectExistingChildren);
    return FinishUpdate(bWindowNeedsUpdate != FALSE && *pbUpdateWindow != FALSE);
}

// What an update that ended by an exception has left is not this one's.
void QTBERepNodeContOnRepNodeCont::BeginUpdate()
{
    g_PassedRepNodes.Begin();
    g_bMaxLevelReached = false;
}

HRESULT QTBERepNodeContOnRepNodeCont::FinishUpdate(bool windowNeedsUpdate)
{
    if (windowNeedsUpdate && m_pQtbFrmNavigGraphicWindow != NULL) {
        QTB_CALL(QTBRepTreeUtil::UpdateQtbWindow, m_pQtbFrmNavigGraphicWindow, FALSE, FALSE);
    }
    if (m_bIncActionIndexAfterUpdate != FALSE) {
        QTB_CALL(QTBGlobVarsUtil::IncActionIndex);
    }
    const bool bMaxLevelReached = std::exchange(g_bMaxLevelReached, false);
    if (g_PassedRepNodes.IsMostReached()) {
        return CATError::GetReturn(2, QTBMessageUtil::MaxRepNodesReached(g_PassedRepNodes.GetMost()), NULL, __FILE__,
                                   __LINE__);
    }
    if (bMaxLevelReached) {
        return CATError::GetReturn(2, QTBMessageUtil::MaxExpansionLevelReached(g_MaxExpansionLevel), NULL, __FILE__,
                                   __LINE__);
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::UpdateRepTreeIntern(
    const QTBIRepNode_var& spIRepNode, const CATListValQTBNodeRelationInfo& NodeRelationInfos,
    unsigned char* pbOneLevelOnly, unsigned char* pbWindowNeedsUpdate, CATListValCATBaseUnknown_var* pListOfRelRepNodes,
    CATListValCATBaseUnknown_var* pListOfObjRepNodes, unsigned char* pbAddNewNodes,
    unsigned char* pbCollectExistingChildren)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::UpdateRepTreeIntern");
    QTBSchema* pSchema = NULL;
    QTB_CALL(QTBSchemaUtil::GetCurrentSchemaPtr, &pSchema);
    QTB_CALL(pSchema->GetMaxExpansionLevel, &g_MaxExpansionLevel);
    if (*pbAddNewNodes != FALSE) {
        unsigned char bNeedsUpdate = FALSE;
        const Expansion expansion{NodeRelationInfos,  *pbOneLevelOnly,    &bNeedsUpdate,
                                  pListOfRelRepNodes, pListOfObjRepNodes, *pbCollectExistingChildren};
        QTB_CALL(RecursiveUpdateRepTreeAdd, expansion, spIRepNode);
        if (bNeedsUpdate != FALSE) {
            *pbWindowNeedsUpdate = TRUE;
            return QTB_SUCCESS;
        }
    }
    QTB_INTERFACE(spIRepNode);
    unsigned char bRecursive = FALSE;
    QTB_CALL(spIRepNode->Redraw, &bRecursive);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::RecursiveUpdateRepTreeAdd(const Expansion& expansion,
                                                                const QTBIRepNode_var& spIRepNodeOnParent)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::RecursiveUpdateRepTreeAdd");
    // The rep nodes on the path from the start node, each with the children that are still to be treated.
    std::vector<ExpansionLevel> levels;
    const PathScope pathScope(*this, levels);
    levels.emplace_back(spIRepNodeOnParent, true, 0);
    HRESULT hr = EnterLevel(expansion, &levels.back());
    while (!levels.empty()) {
        ExpansionLevel& level = levels.back();
        if (FAILED(hr) || g_PassedRepNodes.IsMostReached() || level.position >= level.PdmNodes.Size()) {
            if (level.isOnPath) {
                const HRESULT hrOfLeaving = LeavePath(level.usPdmKey);
                hr = FAILED(hr) ? hr : hrOfLeaving;
            }
            levels.pop_back();
            if (!levels.empty()) {
                hr = QTBCheck::Unwind(hr, FAILED(hr) ? 1 : 0, QTB_SITE("RecursiveUpdateRepTreeAdd"));
            }
            continue;
        }
        QTBIRepNode_var spIRepNodeOnChild;
        bool childIsRelation = false;
        hr = TreatNextChild(expansion, &level, &spIRepNodeOnChild, &childIsRelation);
        if (SUCCEEDED(hr) && spIRepNodeOnChild != NULL_var) {
            // From the start node on the expansion always reaches one level of objects.
            const bool isStart = level.isStart && childIsRelation;
            const int nextLevel = level.level + 1;
            levels.emplace_back(spIRepNodeOnChild, isStart, nextLevel);
            hr = EnterChildLevel(expansion, &levels);
        }
    }
    return hr;
}

// An error that is raised on the way into the last level is caught by the level above it.
HRESULT QTBERepNodeContOnRepNodeCont::EnterChildLevel(const Expansion& expansion, std::vector<ExpansionLevel>* pLevels)
{
    try {
        return EnterLevel(expansion, &pLevels->back());
    } catch (const CATXHException& exception) {
        pLevels->pop_back();
        return FailExpansion(exception);
    }
}

HRESULT QTBERepNodeContOnRepNodeCont::FailExpansion(const CATXHException& exception)
{
    QTB_TRACE("QTBERepNodeContOnRepNodeCont::RecursiveUpdateRepTreeAdd ->" << exception.GetError()->GetNLSMessage());
    return exception.GetResult();
}

HRESULT QTBERepNodeContOnRepNodeCont::EnterLevel(const Expansion& expansion, ExpansionLevel* pLevel)
{
    const QTBIRepNode_var* const pspIRepNodeOnParent = &pLevel->spIRepNodeOnParent;
    QTB_ASSERT(pspIRepNodeOnParent != NULL);
    QTB_INTERFACE(*pspIRepNodeOnParent);
    QTB_CALL((*pspIRepNodeOnParent)->GetPdmNodeKey, &pLevel->usPdmKey);
    QTBIPdmNode_var spIPdmNodeOnParent;
    QTB_CALL((*pspIRepNodeOnParent)->GetPdmNode, &spIPdmNodeOnParent, TRUE, NULL);

    // The table takes the entry only when it was inserted.
    auto pEntry = std::make_unique<QTBHashTableQtbNodeAttribute>(pLevel->usPdmKey, spIPdmNodeOnParent);
    QTB_CALL(QTBHashTableUtil::Insert, pEntry.get(), &m_ExpansionTable, TRUE, FALSE);
    static_cast<void>(pEntry.release());
    pLevel->isOnPath = true;
    return ExpandLevel(expansion, pLevel);
}

// The children that are to be shown below a node; none when the expansion ends here.
HRESULT QTBERepNodeContOnRepNodeCont::ExpandLevel(const Expansion& expansion, ExpansionLevel* pLevel)
{
    // Levels count objects and relations alike.
    if (g_MaxExpansionLevel != UNLIMITED && pLevel->level / 2 >= g_MaxExpansionLevel) {
        g_bMaxLevelReached = true;
        return QTB_SUCCESS;
    }
    if (!pLevel->isStart && expansion.bOneLevelOnly != FALSE) {
        return QTB_SUCCESS;
    }
    try {
        QTB_CALL(SetRelationsToDisplay, expansion.NodeRelationInfos, &pLevel->spIRepNodeOnParent);
        CATListValCATBaseUnknown_var PdmNodes;
        CATListValQTBNodeRelationInfo RelationInfos;
        QTB_CALL(GetPdmNodesToBeShownAsChildren, pLevel->spIRepNodeOnParent, expansion.NodeRelationInfos, &PdmNodes,
                 &RelationInfos);
        const int SizeOfPdmNodes = PdmNodes.Size();
        const int SizeOfRelationInfos = RelationInfos.Size();
        QTB_ASSERT(SizeOfPdmNodes == SizeOfRelationInfos);
        pLevel->PdmNodes = std::move(PdmNodes);
        pLevel->RelationInfos = std::move(RelationInfos);
    } catch (const CATXHException& exception) {
        return FailExpansion(exception);
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::TreatNextChild(const Expansion& expansion, ExpansionLevel* pLevel,
                                                     QTBIRepNode_var* pspIRepNodeOnChild, bool* pChildIsRelation)
{
    const int i = ++pLevel->position;
    const QTBNodeRelationInfo& NodeRelationInfo = pLevel->RelationInfos[i];
    try {
        const QTBIPdmNode_var spIPdmNodeOnChild(pLevel->PdmNodes[i]);
        QTB_INTERFACE(spIPdmNodeOnChild);
        *pChildIsRelation = QTBIPdmRelNode_var(spIPdmNodeOnChild) != NULL_var;
        bool closesCircle = false;
        if (const HRESULT hr = ClosesCircle(spIPdmNodeOnChild, NodeRelationInfo, pLevel->isStart, &closesCircle);
            FAILED(hr) || closesCircle) {
            return hr;
        }
        if (*pChildIsRelation && !g_PassedRepNodes.PassRelation()) {
            return QTB_SUCCESS;
        }

        QTBIRepNode_var spIRepNodeOnChild;
        if (const HRESULT hr = FindChild(pLevel, spIPdmNodeOnChild, &spIRepNodeOnChild); FAILED(hr)) {
            return hr;
        }
        if (spIRepNodeOnChild == NULL_var) {
            QTB_CALL(CreateRepNode, pLevel->spIRepNodeOnParent, spIPdmNodeOnChild, &spIRepNodeOnChild, NodeRelationInfo,
                     expansion.pListOfRelRepNodes, expansion.pListOfObjRepNodes);
            if (pLevel->isIndexed) {
                pLevel->ChildrenByPdmNode.emplace(spIPdmNodeOnChild.GetImpl(), spIRepNodeOnChild);
            }
            QTB_CALL(WindowNeedsToBeUpdated, pLevel->spIRepNodeOnParent, spIRepNodeOnChild, NodeRelationInfo,
                     expansion.pbWindowNeedsUpdate);
        } else if (expansion.bCollectExistingChildren != FALSE) {
            unsigned char bRepresentsPdmObjNode = FALSE;
            QTB_CALL(spIRepNodeOnChild->RepresentsPdmObjNode, &bRepresentsPdmObjNode);
            CATListValCATBaseUnknown_var* pList =
                bRepresentsPdmObjNode != FALSE ? expansion.pListOfObjRepNodes : expansion.pListOfRelRepNodes;
            if (pList != NULL) {
                pList->Append(spIRepNodeOnChild);
            }
        }
        *pspIRepNodeOnChild = spIRepNodeOnChild;
    } catch (const CATXHException& exception) {
        return FailExpansion(exception);
    }
    return QTB_SUCCESS;
}

// The child of the level's rep node that shows a PDM node, if any. In a tree of many places with many children each the
// search of FindCorrespondingRepNode would take as long for each child as the lesser of the two.
HRESULT QTBERepNodeContOnRepNodeCont::FindChild(ExpansionLevel* pLevel, const QTBIPdmNode_var& spIPdmNodeOnChild,
                                                QTBIRepNode_var* pspIRepNodeOnChild)
{
    if (!pLevel->indexIsTried && pLevel->PdmNodes.Size() >= MANY_CHILDREN) {
        pLevel->indexIsTried = true;
        pLevel->isIndexed = IndexChildren(pLevel);
    }
    if (pLevel->isIndexed) {
        const auto found = pLevel->ChildrenByPdmNode.find(spIPdmNodeOnChild.GetImpl());
        if (found == pLevel->ChildrenByPdmNode.end()) {
            return QTB_SUCCESS;
        }
        if (found->second != NULL_var) {
            *pspIRepNodeOnChild = found->second;
            return QTB_SUCCESS;
        }
    }
    QTB_CALL(FindCorrespondingRepNode, pLevel->spIRepNodeOnParent, spIPdmNodeOnChild, pspIRepNodeOnChild);
    return QTB_SUCCESS;
}

// False when the children cannot be read; whoever looks for one tells why.
bool QTBERepNodeContOnRepNodeCont::IndexChildren(ExpansionLevel* pLevel)
{
    CATListValCATBaseUnknown_var DirectChildren;
    if (FAILED(pLevel->spIRepNodeOnParent->GetDirectChildren(&DirectChildren))) {
        return false;
    }
    for (const CATBaseUnknown_var& spDirectChild : DirectChildren) {
        const QTBIRepNode_var spIRepNode(spDirectChild);
        const QTBINodeRelations_var spINodeRelations(spDirectChild);
        CATListValCATBaseUnknown_var PdmNodes;
        if (spIRepNode == NULL_var || spINodeRelations == NULL_var ||
            FAILED(spINodeRelations->GetLeftNodeList(QTBReservedNames::PDM_TO_REP, &PdmNodes, ALL_NODES))) {
            return false;
        }
        if (!IsContainedHere(spIRepNode)) {
            continue;
        }
        for (const CATBaseUnknown_var& spPdmNode : PdmNodes) {
            const auto [place, isNew] = pLevel->ChildrenByPdmNode.emplace(spPdmNode.Get(), spIRepNode);
            if (!isNew) {
                place->second = NULL_var;
            }
        }
    }
    return true;
}

// Below the start node circles are not looked for: its own relations are what was asked for.
HRESULT QTBERepNodeContOnRepNodeCont::ClosesCircle(const QTBIPdmNode_var& spIPdmNodeOnChild,
                                                   const QTBNodeRelationInfo& NodeRelationInfo, bool isStart,
                                                   bool* pClosesCircle)
{
    const QTBIPdmRelNode_var spIPdmRelNodeOnChild(spIPdmNodeOnChild);
    if (spIPdmRelNodeOnChild == NULL_var) {
        return QTB_SUCCESS;
    }
    QTBIPdmObjNode_var spIPdmObjNodeOnChild;
    const auto getObject = [&]<class Direction>(Direction) -> HRESULT {
        QTB_RESULT_AS(Direction::GET_OBJECT_OF_CHILD,
                      ((*spIPdmRelNodeOnChild).*Direction::GetObject)(&spIPdmObjNodeOnChild));
        return QTB_SUCCESS;
    };
    if (const HRESULT hr = NodeRelationInfo.GetRelationDirection() == usLEFT_TO_RIGHT ? getObject(LeftToRight())
                                                                                      : getObject(RightToLeft());
        FAILED(hr)) {
        return hr;
    }
    const QTBIPdmNode_var spIPdmNodeOnChildRel(spIPdmRelNodeOnChild);
    QTB_INTERFACE(spIPdmNodeOnChildRel);
    const QTBIPdmNode_var spIPdmNodeOnChildObj(spIPdmObjNodeOnChild);
    QTB_INTERFACE(spIPdmNodeOnChildObj);

    QTBHashTableQtbNodeAttribute* pEntry = NULL;
    if (FAILED(QTBHashTableUtil::Find(spIPdmNodeOnChildRel->GetPdmKey(), &m_ExpansionTable, &pEntry, TRUE))) {
        QTBHashTableUtil::Find(spIPdmNodeOnChildObj->GetPdmKey(), &m_ExpansionTable, &pEntry, TRUE);
    }
    if (pEntry == NULL || isStart) {
        return QTB_SUCCESS;
    }
    *pClosesCircle = true;
    const CATUnicodeString usNode = QTBTraceUtil::GetNodeString(pEntry->GetValue(), FALSE);
    QTB_TRACE("QTBERepNodeContOnRepNodeCont::RecursiveUpdateRepTreeAdd -> The node '"
              << usNode << "' is used recursively below itself. Expand is stopped at this node !");
    QTB_CALL(QTBGlobVarsUtil::AddMessageToInfoListDialog, QTBMessageUtil::CircleInRecursiveExpandWarning(usNode));
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::LeavePath(const CATUnicodeString& usKey)
{
    QTB_CALL(QTBHashTableUtil::Remove, usKey, &m_ExpansionTable, TRUE, FALSE);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::GetPdmNodesToBeShownAsChildren(
    const QTBIRepNode_var& spIRepNode, const CATListValQTBNodeRelationInfo& NodeRelationInfos,
    CATListValCATBaseUnknown_var* pPdmNodesToBeShown, CATListValQTBNodeRelationInfo* pPdmRelationsToBeShown)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::GetPdmNodesToBeShownAsChildren");
    QTB_INTERFACE(spIRepNode);
    QTB_ASSERT(pPdmRelationsToBeShown);
    QTB_ASSERT(pPdmNodesToBeShown);
    pPdmNodesToBeShown->RemoveAll();
    pPdmRelationsToBeShown->RemoveAll();
    unsigned char bRepresentsPdmRelNode = FALSE;
    QTB_CALL(spIRepNode->RepresentsPdmRelNode, &bRepresentsPdmRelNode, NULL);

    CATListValQTBNodeRelationInfo ListOfRelsToBeUpdated;
    if (m_RepChildRelationsToUpdate == ALL_RELATIONS_STORED_IN_REP_NODE || bRepresentsPdmRelNode != FALSE) {
        QTB_CALL(spIRepNode->GetPdmRelationsToBeDisplayed, &ListOfRelsToBeUpdated);
        if (bRepresentsPdmRelNode != FALSE) {
            QTB_ASSERT(ListOfRelsToBeUpdated.Size() == 1);
        }
    } else {
        ListOfRelsToBeUpdated = NodeRelationInfos;
    }

    QTBIPdmNode_var spIPdmNode;
    QTB_CALL(spIRepNode->GetPdmNode, &spIPdmNode, TRUE, NULL);
    if (spIPdmNode == NULL_var) {
        return QTB_SUCCESS;
    }
    const QTBINodeRelations_var spINodeRelationsOnPdmNode(spIPdmNode);
    QTB_INTERFACE(spINodeRelationsOnPdmNode);

    for (const QTBNodeRelationInfo& NodeRelationInfo : ListOfRelsToBeUpdated) {
        const CATUnicodeString usDirection = NodeRelationInfo.GetRelationDirection();
        const CATUnicodeString usRelationName = NodeRelationInfo.GetRelationName();
        const bool isLeftToRight = usDirection == usLEFT_TO_RIGHT;
        if (!isLeftToRight && !(usDirection == usRIGHT_TO_LEFT)) {
            return QTB_QUIET_FAILURE;
        }
        CATListValCATBaseUnknown_var Neighbours;
        if (const HRESULT hr = isLeftToRight ? GetNeighbours<LeftToRight>(spIPdmNode, usRelationName, &Neighbours)
                                             : GetNeighbours<RightToLeft>(spIPdmNode, usRelationName, &Neighbours);
            FAILED(hr)) {
            return hr;
        }
        for (const CATBaseUnknown_var& spNeighbour : Neighbours) {
            const QTBIPdmNode_var spIPdmNodeOnCurrentNode(spNeighbour);
            QTB_INTERFACE(spIPdmNodeOnCurrentNode);
            bool isToBeShown = true;
            if (bRepresentsPdmRelNode == FALSE) {
                if (const HRESULT hrOfTest = IsToBeShown(spIRepNode, spIPdmNodeOnCurrentNode, &isToBeShown);
                    FAILED(hrOfTest)) {
                    return hrOfTest;
                }
            }
            if (isToBeShown) {
                pPdmNodesToBeShown->Append(spNeighbour);
                pPdmRelationsToBeShown->Append(NodeRelationInfo);
            }
        }
    }

    if (QTBDebugUtil::GetDebugStatus()) {
        QTB_TRACE("QTBERepNodeContOnRepNodeCont::GetPdmNodesToBeShownAsChildren -> spIRepNode:"
                  << QTBTraceUtil::GetNodeString(spIRepNode, FALSE));
        for (int i = 1; i <= pPdmNodesToBeShown->Size(); ++i) {
            const CATUnicodeString usNode = QTBTraceUtil::GetNodeString((*pPdmNodesToBeShown)[i], FALSE);
            std::cout << "\t" << i << ".: " << usNode << " - ";
            QTBTraceUtil::PrintNodeRelationInfo((*pPdmRelationsToBeShown)[i]);
        }
    }
    QTB_ASSERT(pPdmNodesToBeShown->Size() == pPdmRelationsToBeShown->Size());
    if (bRepresentsPdmRelNode != FALSE && pPdmNodesToBeShown->Size() != 1) {
        QTB_TRACE("QTBERepNodeContOnRepNodeCont::GetPdmNodesToBeShownAsChildren -> bRepresentsPdmRelNode && "
                  "(pPdmNodesToBeShown->Size() != 1) !");
        QTB_ASSERT(pPdmNodesToBeShown->Size() == 1);
    }
    return QTB_SUCCESS;
}

template <class Direction>
HRESULT QTBERepNodeContOnRepNodeCont::GetNeighbours(const CATBaseUnknown_var& spPdmNode,
                                                    const CATUnicodeString& usRelationName,
                                                    CATListValCATBaseUnknown_var* pNeighbours)
{
    if (const QTBIPdmObjNode_var spIPdmObjNodeOnPdmNode(spPdmNode); spIPdmObjNodeOnPdmNode != NULL_var) {
        CATListValCATUnicodeString AllClasses;
        QTB_RESULT_AS(Direction::GET_NODES,
                      ((*spIPdmObjNodeOnPdmNode).*Direction::GetNodes)(usRelationName, pNeighbours, NULL,
                                                                       m_PdmNodesToConsider, TRUE, &AllClasses, FALSE));
        return QTB_SUCCESS;
    }
    const QTBIPdmRelNode_var spIPdmRelNodeOnPdmNode(spPdmNode);
    QTB_INTERFACE(spIPdmRelNodeOnPdmNode);
    QTBIPdmObjNode_var spIPdmObjNode;
    QTB_RESULT_AS(Direction::GET_OBJECT, ((*spIPdmRelNodeOnPdmNode).*Direction::GetObject)(&spIPdmObjNode));
    pNeighbours->Append(spIPdmObjNode);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::IsToBeShown(const QTBIRepNode_var& spIRepNode,
                                                  const QTBIPdmNode_var& spIPdmNodeOnCurrentNode, bool* pIsToBeShown)
{
    if (m_PdmNodesToConsider == MOST_RECENTLY_UPDATED_NODES) {
        int actionIndex = 0;
        QTB_CALL(QTBInfoUtil::GetActionIndex, spIPdmNodeOnCurrentNode, &actionIndex);
        int actionIndexOfRepNode = 0;
        QTB_CALL(spIRepNode->GetPdmNodeActionIndex, &actionIndexOfRepNode);
        *pIsToBeShown = actionIndex >= actionIndexOfRepNode;
    } else if (m_PdmNodesToConsider == ONLY_CURRENT_NODES) {
        unsigned char bIsAffected = FALSE;
        QTB_CALL(spIPdmNodeOnCurrentNode->IsAffectedByCurrentAction, &bIsAffected);
        *pIsToBeShown = bIsAffected != FALSE;
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::SetRelationsToDisplay(const CATListValQTBNodeRelationInfo& NodeRelationInfos,
                                                            const QTBIRepNode_var* pspIRepNode)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::SetRelationsToDisplay");
    QTB_ASSERT(pspIRepNode != NULL);
    QTB_INTERFACE(*pspIRepNode);
    const QTBIRepNode_var& spIRepNode = *pspIRepNode;
    QTB_INTERFACE(spIRepNode);
    unsigned char bRepresentsPdmObjNode = FALSE;
    QTB_CALL(spIRepNode->RepresentsPdmObjNode, &bRepresentsPdmObjNode);
    if (bRepresentsPdmObjNode == FALSE) {
        return QTB_SUCCESS;
    }
    for (const QTBNodeRelationInfo& NodeRelationInfo : NodeRelationInfos) {
        unsigned char bOk = FALSE;
        QTB_CALL(spIRepNode->CheckPdmRelationToBeDisplayed, NodeRelationInfo, &bOk);
        if (bOk != FALSE) {
            QTB_CALL(spIRepNode->AddPdmRelationToBeDisplayed, NodeRelationInfo);
        }
    }
    return QTB_SUCCESS;
}

// Sets the flag, never clears it: one new node in an expansion is enough.
HRESULT QTBERepNodeContOnRepNodeCont::WindowNeedsToBeUpdated(const QTBIRepNode_var& spIRepNodeOnLeftRepNode,
                                                             const QTBIRepNode_var& spIRepNodeOnNewRepNode,
                                                             const QTBNodeRelationInfo& NodeRelationInfo,
                                                             unsigned char* pbWindowNeedsUpdate)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::WindowNeedsToBeUpdated");
    QTBIPdmNode_var spIPdmNode;
    QTB_CALL(spIRepNodeOnNewRepNode->GetPdmNode, &spIPdmNode, TRUE, NULL);
    if (QTBIPdmRelNode_var(spIPdmNode) != NULL_var) {
        QTBNodeRelationInfo RelationToLeftNode;
        QTB_CALL(spIRepNodeOnLeftRepNode->GetPdmRelationToLeftNode, &RelationToLeftNode);
        if (NodeRelationInfo == RelationToLeftNode) {
            *pbWindowNeedsUpdate = TRUE;
        }
    }
    return QTB_SUCCESS;
}

HRESULT
QTBERepNodeContOnRepNodeCont::UpdateRepTreeAfterGetFilteredModels(QTBIRepNode_var* pspIRepNodeOnRootPartNode,
                                                                  CATListValCATBaseUnknown_var*,
                                                                  CATListValCATBaseUnknown_var*)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::UpdateRepTreeAfterGetFilteredModels");
    QTB_ASSERT(pspIRepNodeOnRootPartNode != NULL);
    QTB_INTERFACE(*pspIRepNodeOnRootPartNode);
    const CountTogetherScope countTogether;
    const SingleActionScope singleAction(&m_bIncActionIndexAfterUpdate);

    CATListValCATBaseUnknown_var SubStructureNodes;
    QTB_CALL(QTBRepTreeUtil::GetAllSubStructureNodes, *pspIRepNodeOnRootPartNode, NULL, &SubStructureNodes);
    SubStructureNodes.Append(*pspIRepNodeOnRootPartNode);
    QTBPartToFileInfo PartToFileInfo;
    QTB_CALL(QTBPartToFileUtil::GetPartToFileInfo, SubStructureNodes, &PartToFileInfo);
    CATListValQTBPartToFilePdmTreeInfo PdmTreeInfos;
    QTB_CALL(PartToFileInfo.GetPartToFilePdmTreeInfoList, &PdmTreeInfos);
    for (int i = 1; i <= PdmTreeInfos.Size(); ++i) {
        CATListValCATBaseUnknown_var RepNodes;
        QTB_CALL(PdmTreeInfos[i].GetRepNodes, &RepNodes);
        QTBPdmTree* pPdmTree = NULL;
        QTB_CALL(PdmTreeInfos[i].GetPdmTreePtr, &pPdmTree);
        QTB_ASSERT(pPdmTree);
        CATListPtrQTBPdmTreeRel PdmTreeRels;
        QTB_CALL(pPdmTree->GetAllPdmTreeRelPtrs, &PdmTreeRels, FALSE);
        CATListValQTBNodeRelationInfo NodeRelInfos;
        QTB_CALL(pPdmTree->GetAllPdmTreeRels, &NodeRelInfos, FALSE);
        QTB_CALL(UpdateRepNodeList, &RepNodes, PdmTreeRels, NodeRelInfos);
    }
    QTB_CALL(QTBGlobVarsUtil::IncActionIndex);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::UpdateRepNodeList(const CATListValCATBaseUnknown_var* pRepNodes,
                                                        const CATListPtrQTBPdmTreeRel& PdmTreeRels,
                                                        const CATListValQTBNodeRelationInfo& NodeRelInfos)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::UpdateRepNodeList");
    QTB_ASSERT(pRepNodes != NULL);
    std::vector<FilteredLevel> levels;
    const auto enter = [&levels](FilteredLevel&& level) -> HRESULT {
        const int SizePdmTreeRels = level.PdmTreeRels.Size();
        const int SizeNodeRelInfos = level.NodeRelInfos.Size();
        QTB_ASSERT(SizePdmTreeRels == SizeNodeRelInfos);
        levels.push_back(std::move(level));
        return QTB_SUCCESS;
    };
    if (const HRESULT hr = enter({*pRepNodes, PdmTreeRels, NodeRelInfos}); FAILED(hr)) {
        return hr;
    }
    while (!levels.empty()) {
        FilteredLevel& level = levels.back();
        if (level.repNode > level.RepNodes.Size()) {
            levels.pop_back();
            continue;
        }
        const int depth = static_cast<int>(levels.size()) - 1;
        const QTBIRepNode_var spIRepNode(level.RepNodes[level.repNode]);
        const auto checkRepNode = [&spIRepNode]() -> HRESULT {
            QTB_INTERFACE(spIRepNode);
            return QTB_SUCCESS;
        };
        QTB_UNWIND_AS("UpdateRepNodeList", depth, checkRepNode());
        if (++level.relation > level.PdmTreeRels.Size()) {
            level.relation = 0;
            ++level.repNode;
            continue;
        }
        FilteredLevel next;
        QTB_UNWIND_AS("UpdateRepNodeList", depth, ExpandFilteredLevel(level, spIRepNode, &next));
        QTB_UNWIND_AS("UpdateRepNodeList", depth + 1, enter(std::move(next)));
    }
    return QTB_SUCCESS;
}

// Expands a rep node along the relation of its level that is at hand. The next level is what came of it, with the
// relations that go on from there.
HRESULT QTBERepNodeContOnRepNodeCont::ExpandFilteredLevel(const FilteredLevel& level, const QTBIRepNode_var& spIRepNode,
                                                          FilteredLevel* pNext)
{
    CATListValQTBNodeRelationInfo SingleNodeRelInfo;
    SingleNodeRelInfo.Append(level.NodeRelInfos[level.relation]);
    unsigned char bTrue = TRUE;
    unsigned char bFalse = FALSE;
    QTB_CALL(UpdateRepTree, spIRepNode, SingleNodeRelInfo, &bTrue, NULL, &pNext->RepNodes, &bTrue, &bFalse, &bFalse);

    const QTBPdmTreeRel* pPdmTreeRel = level.PdmTreeRels[level.relation];
    QTB_ASSERT(pPdmTreeRel != NULL);
    CATListPtrQTBPdmTreeObj PdmTreeObjs;
    QTB_CALL(pPdmTreeRel->GetAllPdmTreeObjPtrs, &PdmTreeObjs);
    for (const QTBPdmTreeObj* pPdmTreeObj : PdmTreeObjs) {
        QTB_ASSERT(pPdmTreeObj != NULL);
        CATListPtrQTBPdmTreeRel RelsOfObj;
        QTB_CALL(pPdmTreeObj->GetAllPdmTreeRelPtrs, &RelsOfObj);
        pNext->PdmTreeRels.Append(RelsOfObj);
        CATListValQTBNodeRelationInfo InfosOfObj;
        QTB_CALL(pPdmTreeObj->GetAllPdmTreeRels, &InfosOfObj);
        pNext->NodeRelInfos.Append(InfosOfObj);
    }
    return QTB_SUCCESS;
}

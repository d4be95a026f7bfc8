// The part of QTBERepNodeOnRepNode on displayed relations, removal marks and the clean-up after an update.

#include <vector>

#include "CATListValQTBChildRepNodeInfo.h"
#include "QTBCheck.h"
#include "QTBConstants.h"
#include "QTBERepNodeOnRepNode.h"
#include "QTBINodeRelations.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"

HRESULT QTBERepNodeOnRepNode::AddPdmRelationToBeDisplayed(const QTBNodeRelationInfo& NodeRelationInfo)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::AddPdmRelationToBeDisplayed");
    unsigned char bOk = FALSE;
    QTB_CALL(CheckPdmRelationToBeDisplayed, NodeRelationInfo, &bOk);
    if (bOk != FALSE) {
        m_PdmRelationsToBeDisplayed.Append(NodeRelationInfo);
    } else {
        QTB_TRACE("QTBERepNodeOnRepNode::AddPdmRelationToBeDisplayed -> node relation info can not be added");
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::RemovePdmRelationToBeDisplayed(const QTBNodeRelationInfo& NodeRelationInfo)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::RemovePdmRelationToBeDisplayed");
    if (m_PdmRelationsToBeDisplayed.RemoveValue(NodeRelationInfo) == 0) {
        QTB_TRACE("QTBERepNodeOnRepNode::RemovePdmRelationToBeDisplayed -> Index == 0 !");
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::SetPdmRelationsToBeDisplayed(const CATListValQTBNodeRelationInfo& NodeRelationInfos)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::SetPdmRelationsToBeDisplayed");
    m_PdmRelationsToBeDisplayed = NodeRelationInfos;
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetPdmRelationsToBeDisplayed(CATListValQTBNodeRelationInfo* pNodeRelationInfos)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetPdmRelationsToBeDisplayed");
    *pNodeRelationInfos = m_PdmRelationsToBeDisplayed;
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::SetSinglePdmRelationToBeDisplayed(const QTBNodeRelationInfo& NodeRelationInfo)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::SetSinglePdmRelationToBeDisplayed");
    m_PdmRelationsToBeDisplayed.RemoveAll();
    m_PdmRelationsToBeDisplayed.Append(NodeRelationInfo);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetSinglePdmRelationToBeDisplayed(QTBNodeRelationInfo* pNodeRelationInfo)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetSinglePdmRelationToBeDisplayed");
    QTB_ASSERT(pNodeRelationInfo != NULL);
    QTB_ASSERT(m_PdmRelationsToBeDisplayed.Size() == 1);
    *pNodeRelationInfo = m_PdmRelationsToBeDisplayed[1];
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::SetPdmRelationToLeftNode(const QTBNodeRelationInfo& NodeRelationInfo)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::SetPdmRelationToLeftNode");
    m_PdmRelationToLeftNode = NodeRelationInfo;
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetPdmRelationToLeftNode(QTBNodeRelationInfo* pNodeRelationInfo)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetPdmRelationToLeftNode");
    *pNodeRelationInfo = m_PdmRelationToLeftNode;
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::SetMarkForRemoval(unsigned char* pbMarkForRemoval)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::SetMarkForRemoval");
    m_bMarkForRemoval = *pbMarkForRemoval;
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetMarkForRemoval(unsigned char* pbMarkForRemoval)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetMarkForRemoval");
    QTB_ASSERT(pbMarkForRemoval != NULL);
    *pbMarkForRemoval = m_bMarkForRemoval;
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::CheckPdmRelationToBeDisplayed(const QTBNodeRelationInfo& NodeRelationInfo,
                                                            unsigned char* pbOk)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::CheckPdmRelationToBeDisplayed");
    *pbOk = FALSE;
    if (m_PdmRelationsToBeDisplayed.Locate(NodeRelationInfo) > 0) {
        return QTB_SUCCESS;
    }
    QTBIPdmNode_var spIPdmNode;
    QTB_CALL(GetPdmNode, &spIPdmNode, TRUE, NULL);
    // A relation rep node shows one relation only.
    if (m_PdmRelationsToBeDisplayed.Size() > 0 && QTBIPdmRelNode_var(spIPdmNode) != NULL_var) {
        return QTB_SUCCESS;
    }
    const QTBINodeRelations_var spINodeRelationsOnPdmNode(spIPdmNode);
    QTB_INTERFACE(spINodeRelationsOnPdmNode);
    CATListValCATBaseUnknown_var FirstNodes;
    const CATUnicodeString usDirection = NodeRelationInfo.GetRelationDirection();
    if (usDirection == usLEFT_TO_RIGHT) {
        QTB_CALL(spINodeRelationsOnPdmNode->GetFirstNodeOfEachRightPdmRelation, &FirstNodes);
    } else if (usDirection == usRIGHT_TO_LEFT) {
        QTB_CALL(spINodeRelationsOnPdmNode->GetFirstNodeOfEachLeftPdmRelation, &FirstNodes);
    } else {
        return QTB_SUCCESS;
    }
    for (const CATBaseUnknown_var& spFirstNode : FirstNodes) {
        const QTBIPdmRelNode_var spIPdmRelNode(spFirstNode);
        QTB_INTERFACE(spIPdmRelNode);
        QTB_CALL(spIPdmRelNode->IsA, NodeRelationInfo.GetRelationName(), pbOk);
        if (*pbOk != FALSE) {
            break;
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetChildRepNodeInfo(const CATListValCATBaseUnknown_var& ListOfDirectChildren,
                                                  const CATListValQTBNodeRelationInfo& NodeRelationInfos,
                                                  CATListValQTBChildRepNodeInfo* pChildRepNodeInfoList)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetChildRepNodeInfo");
    QTB_ASSERT(pChildRepNodeInfoList != NULL);
    pChildRepNodeInfoList->RemoveAll();
    for (const QTBNodeRelationInfo& NodeRelationInfo : NodeRelationInfos) {
        QTBChildRepNodeInfo ChildRepNodeInfo(NodeRelationInfo);
        for (const CATBaseUnknown_var& spDirectChild : ListOfDirectChildren) {
            const QTBIRepNode_var spIRepNodeOnDirectChild(spDirectChild);
            QTB_INTERFACE(spIRepNodeOnDirectChild);
            QTBNodeRelationInfo DisplayedRelation;
            QTB_CALL(spIRepNodeOnDirectChild->GetSinglePdmRelationToBeDisplayed, &DisplayedRelation);
            if (DisplayedRelation == NodeRelationInfo) {
                QTB_CALL(ChildRepNodeInfo.AppendChildRepNode, spIRepNodeOnDirectChild);
            }
        }
        if (ChildRepNodeInfo.HasChildRepNodes() != FALSE) {
            pChildRepNodeInfoList->Append(ChildRepNodeInfo);
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetRelationChildren(const QTBIRepNode_var& spIRepNode,
                                                  const CATListValQTBNodeRelationInfo& NodeRelationInfos,
                                                  CATListValCATBaseUnknown_var* pRelationChildren)
{
    unsigned char bRepresentsPdmObjNode = FALSE;
    QTB_RESULT_AS("RepresentsPdmObjNode", spIRepNode->RepresentsPdmObjNode(&bRepresentsPdmObjNode));
    QTB_ASSERT(bRepresentsPdmObjNode);
    CATListValCATBaseUnknown_var DirectChildNodes;
    QTB_RESULT_AS("GetDirectChildren", spIRepNode->GetDirectChildren(&DirectChildNodes));
    CATListValQTBChildRepNodeInfo ChildRepNodeInfoList;
    QTB_CALL(GetChildRepNodeInfo, DirectChildNodes, NodeRelationInfos, &ChildRepNodeInfoList);
    for (int i = 1; i <= ChildRepNodeInfoList.Size(); ++i) {
        CATListValCATBaseUnknown_var ChildNodes;
        QTB_CALL(ChildRepNodeInfoList[i].GetChildRepNodes, &ChildNodes);
        pRelationChildren->Append(ChildNodes);
    }
    return QTB_SUCCESS;
}

namespace {

// The texts of the checks on a child relation that both passes walk through.
struct MarkingTexts
{
    static constexpr const char* REPRESENTS_REL_NODE = "spIRepNodeOnChild->RepresentsPdmRelNode";
    static constexpr const char* GET_DIRECT_CHILDREN = "spIRepNodeOnChild->GetDirectChildren";
};
struct CleanUpTexts
{
    static constexpr const char* REPRESENTS_REL_NODE = "spIRepNodeOnCurrentChildNode->RepresentsPdmRelNode";
    static constexpr const char* GET_DIRECT_CHILDREN = "spIRepNodeOnCurrentChildNode->GetDirectChildren";
};

// The object rep node below a relation rep node.
template <class Texts>
HRESULT GetGrandChild(const QTBIRepNode_var& spIRepNodeOnRelation, QTBIRepNode_var* pspIRepNodeOnGrandChild)
{
    unsigned char bRepresentsPdmRelNode = FALSE;
    QTB_RESULT_AS(Texts::REPRESENTS_REL_NODE, spIRepNodeOnRelation->RepresentsPdmRelNode(&bRepresentsPdmRelNode, NULL));
    QTB_ASSERT(bRepresentsPdmRelNode);
    CATListValCATBaseUnknown_var DirectChildNodes2;
    QTB_RESULT_AS(Texts::GET_DIRECT_CHILDREN, spIRepNodeOnRelation->GetDirectChildren(&DirectChildNodes2));
    QTB_ASSERT(DirectChildNodes2.Size() == 1);
    const QTBIRepNode_var spIRepNodeOnGrandChild(DirectChildNodes2[1]);
    QTB_INTERFACE(spIRepNodeOnGrandChild);
    *pspIRepNodeOnGrandChild = spIRepNodeOnGrandChild;
    return QTB_SUCCESS;
}

} // namespace

HRESULT QTBERepNodeOnRepNode::MarkChildrenForRemoval(const QTBNodeRelationInfo& NodeRelationInfo,
                                                     unsigned char* pbRecursive)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::MarkChildrenForRemoval");
    CATListValQTBNodeRelationInfo NodeRelationInfos;
    NodeRelationInfos.Append(NodeRelationInfo);
    QTB_CALL(MarkChildrenForRemoval, NodeRelationInfos, pbRecursive);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::MarkChildrenForRemoval(const CATListValQTBNodeRelationInfo& NodeRelationInfos,
                                                     unsigned char* pbRecursive)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::MarkChildrenForRemoval");
    struct Level
    {
        CATListValCATBaseUnknown_var RelationChildren;
        int position = 0;
    };
    static constexpr const char* NESTED_CALL = "spIRepNodeOnGrandChild->MarkChildrenForRemoval";

    std::vector<Level> levels(1);
    HRESULT hr = GetRelationChildren(QTBIRepNode_var(this), NodeRelationInfos, &levels.back().RelationChildren);
    while (!levels.empty()) {
        const int depth = static_cast<int>(levels.size()) - 1;
        QTB_UNWIND_AS(NESTED_CALL, depth, hr);
        Level& level = levels.back();
        if (++level.position > level.RelationChildren.Size()) {
            levels.pop_back();
            continue;
        }
        const CATBaseUnknown_var spChild = level.RelationChildren[level.position];
        QTBIRepNode_var spIRepNodeOnGrandChild;
        const auto markChild = [&]() -> HRESULT {
            const QTBIRepNode_var spIRepNodeOnChild(spChild);
            QTB_INTERFACE(spIRepNodeOnChild);
            unsigned char bMark = TRUE;
            QTB_CALL(spIRepNodeOnChild->SetMarkForRemoval, &bMark);
            return *pbRecursive != FALSE ? GetGrandChild<MarkingTexts>(spIRepNodeOnChild, &spIRepNodeOnGrandChild)
                                         : QTB_SUCCESS;
        };
        hr = markChild();
        if (SUCCEEDED(hr) && spIRepNodeOnGrandChild != NULL_var) {
            levels.emplace_back();
            hr = GetRelationChildren(spIRepNodeOnGrandChild, NodeRelationInfos, &levels.back().RelationChildren);
        }
    }
    return QTB_SUCCESS;
}

struct QTBERepNodeOnRepNode::CleanUpLevel
{
    QTBIRepNodeCont_var spIRepNodeCont;
    CATListValQTBChildRepNodeInfo ChildRepNodeInfoList;
    int group = 0;
    CATListValCATBaseUnknown_var RecentChildren;
    CATListValCATBaseUnknown_var OlderChildren;
    int position = 0;
};

HRESULT QTBERepNodeOnRepNode::OpenCleanUpLevel(const QTBIRepNode_var& spIRepNode, CleanUpLevel* pLevel)
{
    unsigned char bRepresentsPdmObjNode = FALSE;
    QTB_RESULT_AS("RepresentsPdmObjNode", spIRepNode->RepresentsPdmObjNode(&bRepresentsPdmObjNode));
    QTB_ASSERT(bRepresentsPdmObjNode);
    CATListValCATBaseUnknown_var DirectChildNodes;
    QTB_RESULT_AS("GetDirectChildren", spIRepNode->GetDirectChildren(&DirectChildNodes));
    CATListValQTBNodeRelationInfo NodeRelationInfos;
    spIRepNode->GetPdmRelationsToBeDisplayed(&NodeRelationInfos);
    QTB_CALL(GetChildRepNodeInfo, DirectChildNodes, NodeRelationInfos, &pLevel->ChildRepNodeInfoList);
    QTB_RESULT_AS("GetRepNodeContainer", spIRepNode->GetRepNodeContainer(&pLevel->spIRepNodeCont));
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::CleanUpChildren(unsigned char* pbRecursive)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::CleanUpChildren");
    static constexpr const char* NESTED_CALL = "spIRepNodeOnGrandChild->CleanUpChildren";

    std::vector<CleanUpLevel> levels(1);
    HRESULT hr = OpenCleanUpLevel(QTBIRepNode_var(this), &levels.back());
    while (!levels.empty()) {
        const int depth = static_cast<int>(levels.size()) - 1;
        QTB_UNWIND_AS(NESTED_CALL, depth, hr);
        CleanUpLevel& level = levels.back();
        QTBIRepNode_var spIRepNodeOnGrandChild;
        bool isFinished = false;
        // One step: the next recent child, else the older children of the group, else the next group.
        const auto treatNext = [&]() -> HRESULT {
            if (++level.position <= level.RecentChildren.Size()) {
                const QTBIRepNode_var spIRepNodeOnCurrentChildNode(level.RecentChildren[level.position]);
                QTB_INTERFACE(spIRepNodeOnCurrentChildNode);
                unsigned char bMark = FALSE;
                QTB_CALL(spIRepNodeOnCurrentChildNode->SetMarkForRemoval, &bMark);
                return *pbRecursive != FALSE
                           ? GetGrandChild<CleanUpTexts>(spIRepNodeOnCurrentChildNode, &spIRepNodeOnGrandChild)
                           : QTB_SUCCESS;
            }
            for (const CATBaseUnknown_var& spOlderChildNode : level.OlderChildren) {
                const QTBIRepNode_var spIRepNodeOnOlderChildNode(spOlderChildNode);
                QTB_INTERFACE(spIRepNodeOnOlderChildNode);
                unsigned char bMarkForRemoval = FALSE;
                QTB_CALL(spIRepNodeOnOlderChildNode->GetMarkForRemoval, &bMarkForRemoval);
                if (bMarkForRemoval != FALSE) {
                    const QTBIRepNodeCont_var& spIRepNodeCont = level.spIRepNodeCont;
                    unsigned char bInformUser = FALSE;
                    QTB_CALL(spIRepNodeCont->RecursiveRemoveRepTree, spIRepNodeOnOlderChildNode, &bInformUser);
                }
            }
            level.position = 0;
            level.OlderChildren.RemoveAll();
            isFinished = ++level.group > level.ChildRepNodeInfoList.Size();
            if (!isFinished) {
                const CATListValQTBChildRepNodeInfo& ChildRepNodeInfoList = level.ChildRepNodeInfoList;
                const int i = level.group;
                QTB_CALL(ChildRepNodeInfoList[i].GetChildRepNodes, &level.RecentChildren, &level.OlderChildren);
            }
            return QTB_SUCCESS;
        };
        hr = treatNext();
        if (isFinished) {
            levels.pop_back();
        } else if (SUCCEEDED(hr) && spIRepNodeOnGrandChild != NULL_var) {
            levels.emplace_back();
            hr = OpenCleanUpLevel(spIRepNodeOnGrandChild, &levels.back());
        }
    }
    return QTB_SUCCESS;
}

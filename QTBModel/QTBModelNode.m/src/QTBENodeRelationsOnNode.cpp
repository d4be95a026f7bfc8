#include "QTBENodeRelationsOnNode.h"

#include "QTBCheck.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBInfoUtil.h"
#include "QTBReservedNames.h"
#include "QTBStringHash.h"

namespace {

constexpr int AT_BEGINNING = 0;
constexpr int AT_END = 1;

} // namespace

struct QTBENodeRelationsOnNode::RightSide
{
    static constexpr const char* ADD = "AddRightNode";
    static constexpr const char* REMOVE = "RemoveRightNode";
    static constexpr const char* GET_NODES = "GetRightNodeList";
    static constexpr const char* GET_NAMES = "GetRightRelationNames";
    static constexpr const char* OTHER_EXISTS = "spINodeRelationsOnRightNode->LeftNodeExists";
    static constexpr const char* OTHER_ADD = "spINodeRelationsOnRightNode->AddLeftNode";
    static constexpr const char* OTHER_REMOVE = "spINodeRelationsOnRightNode->RemoveLeftNode";

    static constexpr auto Add = &QTBINodeRelations::AddRightNode;
    static constexpr auto OtherExists = &QTBINodeRelations::LeftNodeExists;
    static constexpr auto OtherAdd = &QTBINodeRelations::AddLeftNode;
    static constexpr auto OtherRemove = &QTBINodeRelations::RemoveLeftNode;
    static constexpr auto Lists = &QTBENodeRelationsOnNode::m_RightRelationLists;
    static constexpr auto OwnAdd = &QTBENodeRelationsOnNode::AddRightNode;
    static constexpr auto OwnRemove = &QTBENodeRelationsOnNode::RemoveRightNode;
    static constexpr auto OwnGetNodes = &QTBENodeRelationsOnNode::GetRightNodeList;
    static constexpr auto OwnGetNames = &QTBENodeRelationsOnNode::GetRightRelationNames;
};

struct QTBENodeRelationsOnNode::LeftSide
{
    static constexpr const char* ADD = "AddLeftNode";
    static constexpr const char* REMOVE = "RemoveLeftNode";
    static constexpr const char* GET_NODES = "GetLeftNodeList";
    static constexpr const char* GET_NAMES = "GetLeftRelationNames";
    static constexpr const char* OTHER_EXISTS = "spINodeRelationsOnLeftNode->RightNodeExists";
    static constexpr const char* OTHER_ADD = "spINodeRelationsOnLeftNode->AddRightNode";
    static constexpr const char* OTHER_REMOVE = "spINodeRelationsOnLeftNode->RemoveRightNode";

    static constexpr auto Add = &QTBINodeRelations::AddLeftNode;
    static constexpr auto OtherExists = &QTBINodeRelations::RightNodeExists;
    static constexpr auto OtherAdd = &QTBINodeRelations::AddRightNode;
    static constexpr auto OtherRemove = &QTBINodeRelations::RemoveRightNode;
    static constexpr auto Lists = &QTBENodeRelationsOnNode::m_LeftRelationLists;
    static constexpr auto OwnAdd = &QTBENodeRelationsOnNode::AddLeftNode;
    static constexpr auto OwnRemove = &QTBENodeRelationsOnNode::RemoveLeftNode;
    static constexpr auto OwnGetNodes = &QTBENodeRelationsOnNode::GetLeftNodeList;
    static constexpr auto OwnGetNames = &QTBENodeRelationsOnNode::GetLeftRelationNames;
};

HRESULT QTBENodeRelationsOnNode::SetRightNodeList(const CATUnicodeString& usRelationName,
                                                  const CATListValCATBaseUnknown_var& Nodes)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::SetRightNodeList");
    return SetNodeList<RightSide>(usRelationName, Nodes);
}

HRESULT QTBENodeRelationsOnNode::SetLeftNodeList(const CATUnicodeString& usRelationName,
                                                 const CATListValCATBaseUnknown_var& Nodes)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::SetLeftNodeList");
    return SetNodeList<LeftSide>(usRelationName, Nodes);
}

HRESULT QTBENodeRelationsOnNode::AddRightNode(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode,
                                              int position, const unsigned char& bReportDuplicate)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::AddRightNode");
    return AddNode<RightSide>(usRelationName, spNode, position, bReportDuplicate);
}

HRESULT QTBENodeRelationsOnNode::AddLeftNode(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode,
                                             int position, const unsigned char& bReportDuplicate)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::AddLeftNode");
    return AddNode<LeftSide>(usRelationName, spNode, position, bReportDuplicate);
}

HRESULT QTBENodeRelationsOnNode::RemoveRightNode(const CATUnicodeString& usRelationName,
                                                 const CATBaseUnknown_var& spNode)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::RemoveRightNode");
    return RemoveNode<RightSide>(usRelationName, spNode);
}

HRESULT QTBENodeRelationsOnNode::RemoveLeftNode(const CATUnicodeString& usRelationName,
                                                const CATBaseUnknown_var& spNode)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::RemoveLeftNode");
    return RemoveNode<LeftSide>(usRelationName, spNode);
}

// The two existence operations have no trace scope: every change of a link asks them.
HRESULT QTBENodeRelationsOnNode::RightNodeExists(const CATUnicodeString& usRelationName,
                                                 const CATBaseUnknown_var& spNode, unsigned char* pbExists)
{
    return NodeExists<RightSide>(usRelationName, spNode, pbExists);
}

HRESULT QTBENodeRelationsOnNode::LeftNodeExists(const CATUnicodeString& usRelationName,
                                                const CATBaseUnknown_var& spNode, unsigned char* pbExists)
{
    return NodeExists<LeftSide>(usRelationName, spNode, pbExists);
}

HRESULT QTBENodeRelationsOnNode::RemoveAllRels(QTBINodeRelations_var* pspINodeRelationsOnNodeToTransferRelationsTo)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::RemoveAllRels");
    if (pspINodeRelationsOnNodeToTransferRelationsTo != NULL) {
        QTB_INTERFACE(*pspINodeRelationsOnNodeToTransferRelationsTo);
    }
    const HRESULT hr = RemoveRelsOfSide<RightSide>(pspINodeRelationsOnNodeToTransferRelationsTo);
    return FAILED(hr) ? hr : RemoveRelsOfSide<LeftSide>(pspINodeRelationsOnNodeToTransferRelationsTo);
}

HRESULT QTBENodeRelationsOnNode::GetRightNodeList(const CATUnicodeString& usRelationName,
                                                  CATListValCATBaseUnknown_var* pNodeList, const NodesToRetrieve& mode)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::GetRightNodeList");
    return GetNodeList<RightSide>(usRelationName, pNodeList, mode);
}

HRESULT QTBENodeRelationsOnNode::GetLeftNodeList(const CATUnicodeString& usRelationName,
                                                 CATListValCATBaseUnknown_var* pNodeList, const NodesToRetrieve& mode)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::GetLeftNodeList");
    return GetNodeList<LeftSide>(usRelationName, pNodeList, mode);
}

HRESULT QTBENodeRelationsOnNode::GetRightRelationNames(CATListValCATUnicodeString* pNames,
                                                       const unsigned char& bExcludePdmToRep)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::GetRightRelationNames");
    return GetRelationNames<RightSide>(pNames, bExcludePdmToRep);
}

HRESULT QTBENodeRelationsOnNode::GetLeftRelationNames(CATListValCATUnicodeString* pNames,
                                                      const unsigned char& bExcludePdmToRep)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::GetLeftRelationNames");
    return GetRelationNames<LeftSide>(pNames, bExcludePdmToRep);
}

HRESULT QTBENodeRelationsOnNode::GetRightRelationsCount(int* pCount, const unsigned char& bOnlyPdmRelations)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::GetRightRelationsCount");
    return GetRelationsCount<RightSide>(pCount, bOnlyPdmRelations);
}

HRESULT QTBENodeRelationsOnNode::GetLeftRelationsCount(int* pCount, const unsigned char& bOnlyPdmRelations)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::GetLeftRelationsCount");
    return GetRelationsCount<LeftSide>(pCount, bOnlyPdmRelations);
}

HRESULT QTBENodeRelationsOnNode::GetAllRightRelations(CATListValCATBaseUnknown_var* pNodeList,
                                                      const unsigned char& bExcludePdmToRep,
                                                      const NodesToRetrieve& mode)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::GetAllRightRelations");
    return GetAllRelations<RightSide>(pNodeList, bExcludePdmToRep, mode);
}

HRESULT QTBENodeRelationsOnNode::GetAllLeftRelations(CATListValCATBaseUnknown_var* pNodeList,
                                                     const unsigned char& bExcludePdmToRep, const NodesToRetrieve& mode)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::GetAllLeftRelations");
    return GetAllRelations<LeftSide>(pNodeList, bExcludePdmToRep, mode);
}

HRESULT QTBENodeRelationsOnNode::GetFirstNodeOfEachRightPdmRelation(CATListValCATBaseUnknown_var* pNodeList)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::GetFirstNodeOfEachRightPdmRelation");
    return GetFirstNodeOfEachPdmRelation<RightSide>(pNodeList);
}

HRESULT QTBENodeRelationsOnNode::GetFirstNodeOfEachLeftPdmRelation(CATListValCATBaseUnknown_var* pNodeList)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::GetFirstNodeOfEachLeftPdmRelation");
    return GetFirstNodeOfEachPdmRelation<LeftSide>(pNodeList);
}

template <class Side>
HRESULT QTBENodeRelationsOnNode::SetNodeList(const CATUnicodeString& usRelationName,
                                             const CATListValCATBaseUnknown_var& Nodes)
{
    if (const QTBNodeRelationList* pRelationList = FindRelationList(this->*Side::Lists, usRelationName);
        pRelationList != NULL) {
        const CATListValCATBaseUnknown_var FormerNodes = pRelationList->GetValues();
        for (const CATBaseUnknown_var& spNode : FormerNodes) {
            QTB_RESULT_AS(Side::REMOVE, (this->*Side::OwnRemove)(usRelationName, spNode));
        }
    }
    for (const CATBaseUnknown_var& spNode : Nodes) {
        QTB_RESULT_AS(Side::ADD, (this->*Side::OwnAdd)(usRelationName, spNode, AT_END, TRUE));
    }
    return QTB_SUCCESS;
}

template <class Side>
HRESULT QTBENodeRelationsOnNode::AddNode(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode,
                                         int position, unsigned char bReportDuplicate)
{
    CATListValQTBNodeRelationList& RelationLists = this->*Side::Lists;
    if (QTBNodeRelationList* pRelationList = FindRelationList(RelationLists, usRelationName); pRelationList != NULL) {
        if (position != AT_BEGINNING && position != AT_END) {
            return E_FAIL;
        }
        const bool atBeginning = position == AT_BEGINNING;
        const HRESULT hr =
            atBeginning ? pRelationList->AddValueAtBeginning(spNode) : pRelationList->AddValueAtEnd(spNode);
        if (bReportDuplicate != FALSE) {
            QTB_RESULT_AS(atBeginning ? "pRelationList->AddValueAtBeginning" : "pRelationList->AddValueAtEnd", hr);
        }
    } else {
        RelationLists.Append(QTBNodeRelationList(usRelationName, spNode));
    }

    const QTBINodeRelations_var spINodeRelationsOnOtherNode(spNode);
    if (spINodeRelationsOnOtherNode == NULL_var) {
        return E_NOINTERFACE;
    }
    const CATBaseUnknown_var spBaseUnknownOnThis(this);
    unsigned char bExists = FALSE;
    QTB_RESULT_AS(Side::OTHER_EXISTS,
                  ((*spINodeRelationsOnOtherNode).*Side::OtherExists)(usRelationName, spBaseUnknownOnThis, &bExists));
    if (bExists == FALSE) {
        QTB_RESULT_AS(Side::OTHER_ADD, ((*spINodeRelationsOnOtherNode).*
                                        Side::OtherAdd)(usRelationName, spBaseUnknownOnThis, AT_END, TRUE));
    }
    return QTB_SUCCESS;
}

template <class Side>
HRESULT QTBENodeRelationsOnNode::RemoveNode(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode)
{
    QTBNodeRelationList* pRelationList = FindRelationList(this->*Side::Lists, usRelationName);
    QTB_ASSERT(pRelationList != NULL);
    // The caller's handle may be the one that the list gives up.
    const CATBaseUnknown_var spOtherNode(spNode);
    QTB_CALL(pRelationList->RemoveValue, spOtherNode);

    const QTBINodeRelations_var spINodeRelationsOnOtherNode(spOtherNode);
    if (spINodeRelationsOnOtherNode == NULL_var) {
        return E_NOINTERFACE;
    }
    const CATBaseUnknown_var spBaseUnknownOnThis(this);
    unsigned char bExists = FALSE;
    QTB_RESULT_AS(Side::OTHER_EXISTS,
                  ((*spINodeRelationsOnOtherNode).*Side::OtherExists)(usRelationName, spBaseUnknownOnThis, &bExists));
    if (bExists != FALSE) {
        QTB_RESULT_AS(Side::OTHER_REMOVE,
                      ((*spINodeRelationsOnOtherNode).*Side::OtherRemove)(usRelationName, spBaseUnknownOnThis));
    }
    return QTB_SUCCESS;
}

template <class Side>
HRESULT QTBENodeRelationsOnNode::NodeExists(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode,
                                            unsigned char* pbExists)
{
    const QTBNodeRelationList* pRelationList = FindRelationList(this->*Side::Lists, usRelationName);
    *pbExists = pRelationList != NULL ? pRelationList->ContainsValue(spNode) : FALSE;
    return QTB_SUCCESS;
}

template <class Side>
HRESULT QTBENodeRelationsOnNode::RemoveRelsOfSide(QTBINodeRelations_var* pspINodeRelationsOnNodeToTransferRelationsTo)
{
    CATListValCATUnicodeString RelationNames;
    QTB_RESULT_AS(Side::GET_NAMES, (this->*Side::OwnGetNames)(&RelationNames, FALSE));
    for (const CATUnicodeString& usRelationName : RelationNames) {
        CATListValCATBaseUnknown_var Nodes;
        QTB_RESULT_AS(Side::GET_NODES, (this->*Side::OwnGetNodes)(usRelationName, &Nodes, ALL_NODES));
        for (const CATBaseUnknown_var& spNode : Nodes) {
            QTB_RESULT_AS(Side::REMOVE, (this->*Side::OwnRemove)(usRelationName, spNode));
            if (pspINodeRelationsOnNodeToTransferRelationsTo != NULL) {
                // A link that the target has already is no error here.
                ((**pspINodeRelationsOnNodeToTransferRelationsTo).*Side::Add)(usRelationName, spNode, AT_END, FALSE);
            }
        }
    }
    return QTB_SUCCESS;
}

template <class Side>
HRESULT QTBENodeRelationsOnNode::GetNodeList(const CATUnicodeString& usRelationName,
                                             CATListValCATBaseUnknown_var* pNodeList, const NodesToRetrieve& mode)
{
    QTB_ASSERT(pNodeList != NULL);
    pNodeList->RemoveAll();
    const QTBNodeRelationList* pRelationList = FindRelationList(this->*Side::Lists, usRelationName);
    if (pRelationList != NULL) {
        QTB_CALL(FilterNodesIfNecessary, pRelationList->GetValues(), usRelationName, mode, pNodeList);
    }
    return QTB_SUCCESS;
}

template <class Side>
HRESULT QTBENodeRelationsOnNode::GetRelationNames(CATListValCATUnicodeString* pNames, unsigned char bExcludePdmToRep)
{
    if (pNames == NULL) {
        return E_FAIL;
    }
    pNames->RemoveAll();
    const CATListValQTBNodeRelationList& RelationLists = this->*Side::Lists;
    for (int i = 1; i <= RelationLists.Size(); ++i) {
        const CATUnicodeString usName = RelationLists[i].GetName();
        if (bExcludePdmToRep == FALSE || !(usName == QTBReservedNames::PDM_TO_REP)) {
            pNames->Append(usName);
        }
    }
    return QTB_SUCCESS;
}

// Leaves out both reserved relations where the names leave out "PdmToRep" only; meant, callers rely on either.
template <class Side>
HRESULT QTBENodeRelationsOnNode::GetRelationsCount(int* pCount, unsigned char bOnlyPdmRelations)
{
    QTB_ASSERT(pCount != NULL);
    *pCount = 0;
    const CATListValQTBNodeRelationList& RelationLists = this->*Side::Lists;
    for (int i = 1; i <= RelationLists.Size(); ++i) {
        const CATUnicodeString usName = RelationLists[i].GetName();
        if (bOnlyPdmRelations == FALSE ||
            (!(usName == QTBReservedNames::PDM_TO_REP) && !(usName == QTBReservedNames::REP_TO_REP))) {
            *pCount += RelationLists[i].GetSize();
        }
    }
    return QTB_SUCCESS;
}

template <class Side>
HRESULT QTBENodeRelationsOnNode::GetAllRelations(CATListValCATBaseUnknown_var* pNodeList,
                                                 unsigned char bExcludePdmToRep, const NodesToRetrieve& mode)
{
    QTB_ASSERT(pNodeList != NULL);
    CATListValCATUnicodeString RelationNames;
    QTB_RESULT_AS(Side::GET_NAMES, (this->*Side::OwnGetNames)(&RelationNames, bExcludePdmToRep));
    for (const CATUnicodeString& usRelationName : RelationNames) {
        CATListValCATBaseUnknown_var Nodes;
        QTB_RESULT_AS(Side::GET_NODES, (this->*Side::OwnGetNodes)(usRelationName, &Nodes, mode));
        pNodeList->Append(Nodes);
    }
    return QTB_SUCCESS;
}

template <class Side>
HRESULT QTBENodeRelationsOnNode::GetFirstNodeOfEachPdmRelation(CATListValCATBaseUnknown_var* pNodeList)
{
    QTB_ASSERT(pNodeList != NULL);
    pNodeList->RemoveAll();
    CATListValCATUnicodeString RelationNames;
    QTB_RESULT_AS(Side::GET_NAMES, (this->*Side::OwnGetNames)(&RelationNames, TRUE));
    for (const CATUnicodeString& usRelationName : RelationNames) {
        CATListValCATBaseUnknown_var Nodes;
        QTB_RESULT_AS(Side::GET_NODES, (this->*Side::OwnGetNodes)(usRelationName, &Nodes, MOST_RECENTLY_UPDATED_NODES));
        if (Nodes.Size() > 0) {
            pNodeList->Append(Nodes[1]);
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBENodeRelationsOnNode::FilterNodesIfNecessary(const CATListValCATBaseUnknown_var& Nodes,
                                                        const CATUnicodeString& usRelationName,
                                                        const NodesToRetrieve& mode,
                                                        CATListValCATBaseUnknown_var* pFilteredNodes)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::FilterNodesIfNecessary");
    QTB_ASSERT(pFilteredNodes != NULL);
    // The text names the mode by its type, and is meant so.
    QTB_ASSERT_AS("(NodesToRetrieve == ALL_NODES) || (NodesToRetrieve == MOST_RECENTLY_UPDATED_NODES) || "
                  "(NodesToRetrieve == ONLY_CURRENT_NODES)",
                  mode == ALL_NODES || mode == MOST_RECENTLY_UPDATED_NODES || mode == ONLY_CURRENT_NODES);

    if (mode == ALL_NODES || usRelationName == QTBReservedNames::REP_TO_REP ||
        usRelationName == QTBReservedNames::PDM_TO_REP || QTBIPdmRelNode_var(this) != NULL_var) {
        *pFilteredNodes = Nodes;
        return QTB_SUCCESS;
    }
    if (mode == MOST_RECENTLY_UPDATED_NODES) {
        QTB_CALL(FilterForMostRecentlyUpdatedNodes, Nodes, pFilteredNodes);
    } else {
        QTB_CALL(FilterForCurrentNodes, Nodes, pFilteredNodes);
    }
    return QTB_SUCCESS;
}

HRESULT
QTBENodeRelationsOnNode::FilterForMostRecentlyUpdatedNodes(const CATListValCATBaseUnknown_var& Nodes,
                                                           CATListValCATBaseUnknown_var* pMostRecentlyUpdatedNodes)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::FilterForMostRecentlyUpdatedNodes");
    // The missing blank in the text is meant.
    QTB_ASSERT_AS("pMostRecentlyUpdatedNodes!= NULL", pMostRecentlyUpdatedNodes != NULL);
    pMostRecentlyUpdatedNodes->RemoveAll();

    int highestActionIndex = 0;
    for (const CATBaseUnknown_var& spNode : Nodes) {
        if (const QTBIPdmNode_var spIPdmNode(spNode); spIPdmNode != NULL_var) {
            int actionIndex = 0;
            QTB_CALL(QTBInfoUtil::GetActionIndex, spIPdmNode, &actionIndex);
            highestActionIndex = std::max(highestActionIndex, actionIndex);
        }
    }
    for (const CATBaseUnknown_var& spNode : Nodes) {
        if (const QTBIPdmNode_var spIPdmNode(spNode); spIPdmNode != NULL_var) {
            int actionIndex = 0;
            QTB_CALL(QTBInfoUtil::GetActionIndex, spIPdmNode, &actionIndex);
            if (actionIndex == highestActionIndex) {
                pMostRecentlyUpdatedNodes->Append(spNode);
            }
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBENodeRelationsOnNode::FilterForCurrentNodes(const CATListValCATBaseUnknown_var& Nodes,
                                                       CATListValCATBaseUnknown_var* pCurrentNodes)
{
    QTB_SCOPE("QTBENodeRelationsOnNode::FilterForCurrentNodes");
    QTB_ASSERT(pCurrentNodes != NULL);
    pCurrentNodes->RemoveAll();
    for (const CATBaseUnknown_var& spNode : Nodes) {
        if (const QTBIPdmNode_var spIPdmNode(spNode); spIPdmNode != NULL_var) {
            unsigned char bIsAffected = FALSE;
            QTB_CALL(spIPdmNode->IsAffectedByCurrentAction, &bIsAffected);
            if (bIsAffected != FALSE) {
                pCurrentNodes->Append(spNode);
            }
        }
    }
    return QTB_SUCCESS;
}

QTBNodeRelationList* QTBENodeRelationsOnNode::FindRelationList(CATListValQTBNodeRelationList& lists,
                                                               const CATUnicodeString& usRelationName)
{
    // A node has a handful of relations, whose names share their text mostly: comparing is faster than hashing.
    for (int i = 1; i <= lists.Size(); ++i) {
        if (lists[i].HasName(usRelationName)) {
            return &lists[i];
        }
    }
    return NULL;
}

#include "QTBERepNodeOnRepNode.h"

#include <utility>
#include <vector>

#include "QTBCheck.h"
#include "QTBConstants.h"
#include "QTBGlobVarsUtil.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"
#include "QTBInfoUtil.h"
#include "QTBReservedNames.h"
#include "QTBSchemaRelation.h"
#include "QTBSchemaRelationship.h"
#include "QTBSchemaUtil.h"

namespace {

const CATUnicodeString DEFAULT_REP_KEY_START("DEFAULT_ROOT_NODE-Rep-");
constexpr int PRINTING_TRACE_LEVEL = 3;

} // namespace

HRESULT QTBERepNodeOnRepNode::IsRepRootNode(unsigned char* pbIsRepRootNode)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::IsRepRootNode");
    QTB_ASSERT(pbIsRepRootNode != NULL);
    QTBIRepNode_var spIRepNodeOnParent;
    *pbIsRepRootNode = FAILED(GetParent(&spIRepNodeOnParent)) ? TRUE : FALSE;
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::IsRepDefaultNode(unsigned char* pbIsRepDefaultNode)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::IsRepDefaultNode");
    *pbIsRepDefaultNode = FALSE;
    const QTBINodeAttributes_var spINodeAttributesOnThis(this);
    QTB_INTERFACE(spINodeAttributesOnThis);
    CATUnicodeString usKey;
    QTB_CALL(spINodeAttributesOnThis->GetKey, &usKey);
    // The start is plain ASCII, so its bytes are its characters.
    *pbIsRepDefaultNode = usKey.View().starts_with(DEFAULT_REP_KEY_START.View()) ? TRUE : FALSE;
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetParent(QTBIRepNode_var* pspIRepNode)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetParent");
    QTB_ASSERT(pspIRepNode != NULL);
    *pspIRepNode = NULL_var;
    const QTBINodeRelations_var spINodeRelationsOnThis(this);
    QTB_INTERFACE(spINodeRelationsOnThis);
    CATListValCATBaseUnknown_var LeftNodes;
    QTB_CALL(spINodeRelationsOnThis->GetLeftNodeList, QTBReservedNames::REP_TO_REP, &LeftNodes,
             MOST_RECENTLY_UPDATED_NODES);
    if (LeftNodes.Size() != 1) {
        return QTB_QUIET_FAILURE;
    }
    *pspIRepNode = LeftNodes[1];
    QTB_INTERFACE(*pspIRepNode);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetParentObject(QTBIRepNode_var* pspIRepNodeOnParentObject)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetParentObject");
    QTB_ASSERT(pspIRepNodeOnParentObject != NULL);
    *pspIRepNodeOnParentObject = NULL_var;
    QTBIRepNode_var spIRepNodeOnParent;
    if (const HRESULT hr = GetParent(&spIRepNodeOnParent); FAILED(hr)) {
        return hr;
    }
    unsigned char bRepresentsPdmObjNode = FALSE;
    QTB_CALL(spIRepNodeOnParent->RepresentsPdmObjNode, &bRepresentsPdmObjNode);
    if (bRepresentsPdmObjNode != FALSE) {
        *pspIRepNodeOnParentObject = spIRepNodeOnParent;
    } else {
        QTB_CALL(spIRepNodeOnParent->GetParent, pspIRepNodeOnParentObject);
    }
    QTB_CALL((*pspIRepNodeOnParentObject)->RepresentsPdmObjNode, &bRepresentsPdmObjNode);
    QTB_ASSERT(bRepresentsPdmObjNode);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetDirectChildren(CATListValCATBaseUnknown_var* pListOfRepNodes)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetDirectChildren");
    QTB_ASSERT(pListOfRepNodes != NULL);
    pListOfRepNodes->RemoveAll();
    const QTBINodeRelations_var spINodeRelationsOnThis(this);
    QTB_INTERFACE(spINodeRelationsOnThis);
    QTB_CALL(spINodeRelationsOnThis->GetRightNodeList, QTBReservedNames::REP_TO_REP, pListOfRepNodes,
             MOST_RECENTLY_UPDATED_NODES);
    if (pListOfRepNodes->Size() <= 1) {
        return QTB_SUCCESS;
    }
    unsigned char bRepresentsPdmRelNode = FALSE;
    QTB_CALL(RepresentsPdmRelNode, &bRepresentsPdmRelNode, NULL);
    return bRepresentsPdmRelNode != FALSE ? RemoveSurplusChildren(pListOfRepNodes) : QTB_SUCCESS;
}

// Without any action index above 0 no child is kept, which is meant: the relation is empty then.
HRESULT QTBERepNodeOnRepNode::RemoveSurplusChildren(CATListValCATBaseUnknown_var* pListOfRepNodes)
{
    int highestActionIndex = 0;
    int keptPosition = 0;
    for (int i = 1; i <= pListOfRepNodes->Size(); ++i) {
        const QTBIRepNode_var spIRepNodeOnCurrentChild((*pListOfRepNodes)[i]);
        QTB_INTERFACE(spIRepNodeOnCurrentChild);
        int actionIndex = 0;
        QTB_CALL(spIRepNodeOnCurrentChild->GetPdmNodeActionIndex, &actionIndex);
        if (actionIndex > highestActionIndex) {
            highestActionIndex = actionIndex;
            keptPosition = i;
        }
    }
    QTBIRepNodeCont_var spIRepNodeCont;
    QTB_CALL(GetRepNodeContainer, &spIRepNodeCont);
    for (int i = pListOfRepNodes->Size(); i >= 1; --i) {
        if (i == keptPosition) {
            QTB_TRACE("QTBERepNodeOnRepNode::GetDirectChildren -> not removing child node with index '" << i << "'.");
            continue;
        }
        QTB_TRACE("QTBERepNodeOnRepNode::GetDirectChildren -> removing child node with index '" << i << "'.");
        const QTBIRepNode_var spIRepNodeOnCurrentChild((*pListOfRepNodes)[i]);
        QTB_INTERFACE(spIRepNodeOnCurrentChild);
        pListOfRepNodes->RemovePosition(i);
        unsigned char bInformUser = FALSE;
        QTB_CALL(spIRepNodeCont->RecursiveRemoveRepTree, spIRepNodeOnCurrentChild, &bInformUser);
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetDirectChildren(CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                                                CATListValCATBaseUnknown_var* pListOfObjRepNodes)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetDirectChildren");
    QTB_ASSERT(pListOfRelRepNodes != NULL);
    QTB_ASSERT(pListOfObjRepNodes != NULL);
    pListOfRelRepNodes->RemoveAll();
    pListOfObjRepNodes->RemoveAll();
    unsigned char bRepresentsPdmObjNode = FALSE;
    QTB_CALL(RepresentsPdmObjNode, &bRepresentsPdmObjNode);
    QTB_ASSERT(bRepresentsPdmObjNode);
    QTB_CALL(GetDirectChildren, pListOfRelRepNodes);

    const int RelNodeSize = pListOfRelRepNodes->Size();
    for (int i = 1; i <= RelNodeSize; ++i) {
        const QTBIRepNode_var spIRepNodeOnChildRelNode((*pListOfRelRepNodes)[i]);
        QTB_INTERFACE(spIRepNodeOnChildRelNode);
        CATListValCATBaseUnknown_var ChildNodes;
        QTB_CALL(spIRepNodeOnChildRelNode->GetDirectChildren, &ChildNodes);
        QTB_ASSERT(ChildNodes.Size() == 1);
        const QTBIRepNode_var spIRepNodeOnChildObjNode(ChildNodes[1]);
        QTB_INTERFACE(spIRepNodeOnChildObjNode);
        pListOfObjRepNodes->Append(spIRepNodeOnChildObjNode);
    }
    QTB_ASSERT(pListOfObjRepNodes->Size() == RelNodeSize);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetFilteredDirectChildren(const CATUnicodeString& usClassName,
                                                        CATListValCATBaseUnknown_var* pListOfRepNodes)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetFilteredDirectChildren");
    QTB_ASSERT(pListOfRepNodes != NULL);
    pListOfRepNodes->RemoveAll();
    CATListValCATBaseUnknown_var DirectChildren;
    QTB_CALL(GetDirectChildren, &DirectChildren);
    for (const CATBaseUnknown_var& spDirectChild : DirectChildren) {
        const QTBIRepNode_var spIRepNodeOnDirectChild(spDirectChild);
        QTB_INTERFACE(spIRepNodeOnDirectChild);
        QTBIPdmNode_var spIPdmNodeOnDirectChild;
        QTB_CALL(spIRepNodeOnDirectChild->GetPdmNode, &spIPdmNodeOnDirectChild, TRUE, NULL);

        // Objects match by their exact class, relations by inheritance.
        bool matches = false;
        if (const QTBIPdmObjNode_var spIPdmObjNodeOnDirectChild(spIPdmNodeOnDirectChild);
            spIPdmObjNodeOnDirectChild != NULL_var) {
            CATUnicodeString usClassOfChild;
            QTB_CALL(spIPdmObjNodeOnDirectChild->GetClassAttr, &usClassOfChild, NULL);
            matches = usClassOfChild == usClassName;
        } else {
            const QTBIPdmRelNode_var spIPdmRelNodeOnDirectChild(spIPdmNodeOnDirectChild);
            QTB_INTERFACE(spIPdmRelNodeOnDirectChild);
            unsigned char bIsA = FALSE;
            QTB_CALL(spIPdmRelNodeOnDirectChild->IsA, usClassName, &bIsA);
            matches = bIsA != FALSE;
        }
        if (matches) {
            pListOfRepNodes->Append(spDirectChild);
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetFilteredDirectChildren(const CATUnicodeString& usAttrName,
                                                        const CATUnicodeString& usAttrValue,
                                                        CATListValCATBaseUnknown_var* pListOfRepNodes)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetFilteredDirectChildren");
    QTB_ASSERT(pListOfRepNodes);
    pListOfRepNodes->RemoveAll();
    CATListValCATBaseUnknown_var DirectChildren;
    QTB_CALL(GetDirectChildren, &DirectChildren);
    for (const CATBaseUnknown_var& spDirectChild : DirectChildren) {
        const QTBIRepNode_var spIRepNode(spDirectChild);
        QTB_INTERFACE(spIRepNode);
        CATUnicodeString usValueOfChild;
        if (SUCCEEDED(spIRepNode->GetPdmNodeAttributeValue(usAttrName, &usValueOfChild)) &&
            usValueOfChild == usAttrValue) {
            pListOfRepNodes->Append(spDirectChild);
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetAllChildren(CATListValCATBaseUnknown_var* pListOfRepNodes)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetAllChildren");
    QTB_ASSERT(pListOfRepNodes);

    // The nodes whose descendants are still to be appended, the next one last, each with its depth below this node.
    std::vector<std::pair<CATBaseUnknown_var, int>> waiting;
    waiting.emplace_back(CATBaseUnknown_var(this), 0);
    while (!waiting.empty()) {
        const auto [spNode, depth] = std::move(waiting.back());
        waiting.pop_back();
        CATListValCATBaseUnknown_var DirectChildren;
        const QTBIRepNode_var spIRepNodeOnDirectChild(spNode);
        if (spIRepNodeOnDirectChild == NULL_var) {
            const auto fail = [&]() -> HRESULT {
                QTB_INTERFACE(spIRepNodeOnDirectChild);
                return QTB_SUCCESS;
            };
            QTB_UNWIND_AS("spIRepNodeOnDirectChild->GetAllChildren", depth - 1, fail());
        }
        const auto getDirectChildren = [&]() -> HRESULT {
            QTB_RESULT_AS("GetDirectChildren", spIRepNodeOnDirectChild->GetDirectChildren(&DirectChildren));
            return QTB_SUCCESS;
        };
        QTB_UNWIND_AS("spIRepNodeOnDirectChild->GetAllChildren", depth, getDirectChildren());
        pListOfRepNodes->Append(DirectChildren);
        for (int i = DirectChildren.Size(); i >= 1; --i) {
            waiting.emplace_back(DirectChildren[i], depth + 1);
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetDisplayString(CATUnicodeString* pusDisplayString)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetDisplayString");
    QTB_ASSERT(pusDisplayString != NULL);
    *pusDisplayString = "";
    unsigned char bIsRepDefaultNode = FALSE;
    QTB_CALL(IsRepDefaultNode, &bIsRepDefaultNode);
    if (bIsRepDefaultNode != FALSE) {
        *pusDisplayString = "Default Rep Node";
        return QTB_SUCCESS;
    }

    QTBIPdmNode_var spIPdmNode;
    if (FAILED(GetPdmNode(&spIPdmNode, TRUE, NULL))) {
        QTB_TRACE("QTBERepNodeOnRepNode::GetDisplayString -> GetPdmNode not successful -> no display string");
        const QTBINodeAttributes_var spINodeAttributesOnThis(this);
        QTB_INTERFACE(spINodeAttributesOnThis);
        CATUnicodeString usKey;
        QTB_CALL(spINodeAttributesOnThis->GetKey, &usKey);
        *pusDisplayString = usKey + ": PDM node not found!";
        return QTB_SUCCESS;
    }

    unsigned char bRepresentsPdmRelNode = FALSE;
    QTB_CALL(RepresentsPdmRelNode, &bRepresentsPdmRelNode, NULL);
    CATUnicodeString usDescription;
    QTB_CALL(spIPdmNode->GetDescriptionString, &usDescription);
    if (bRepresentsPdmRelNode == FALSE) {
        *pusDisplayString = usDescription;
        return QTB_SUCCESS;
    }
    CATUnicodeString usRelationshipName;
    QTB_CALL(GetRelationshipName, QTBIRepNode_var(this), &usRelationshipName);
    *pusDisplayString = usDescription.IsEmpty() ? usRelationshipName : usRelationshipName + " (" + usDescription + ")";
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetRelationshipName(const QTBIRepNode_var& spIRepNode,
                                                  CATUnicodeString* pusRelationshipName)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetRelationshipName");
    QTB_ASSERT(pusRelationshipName != NULL);
    QTBNodeRelationInfo NodeRelationInfo;
    QTB_CALL(spIRepNode->GetSinglePdmRelationToBeDisplayed, &NodeRelationInfo);
    QTBIPdmNode_var spIPdmNode;
    QTB_CALL(spIRepNode->GetPdmNode, &spIPdmNode, TRUE, NULL);
    const QTBIPdmRelNode_var spIPdmRelNode(spIPdmNode);
    QTB_INTERFACE(spIPdmRelNode);
    QTBSchemaRelation* pSchemaRelation = NULL;
    QTB_CALL(spIPdmRelNode->GetSchemaRelationPtr, &pSchemaRelation);
    QTB_ASSERT(pSchemaRelation != NULL);

    const CATUnicodeString usDirection = NodeRelationInfo.GetRelationDirection();
    if (usDirection == usLEFT_TO_RIGHT) {
        const QTBSchemaRelationship* pLeftToRightRelationship = pSchemaRelation->GetLeftToRightRelationshipPtr();
        QTB_ASSERT(pLeftToRightRelationship != NULL);
        *pusRelationshipName = GetSchemaRelationshipDisplayName(pLeftToRightRelationship);
    } else if (usDirection == usRIGHT_TO_LEFT) {
        const QTBSchemaRelationship* pRightToLeftRelationship = pSchemaRelation->GetRightToLeftRelationshipPtr();
        QTB_ASSERT(pRightToLeftRelationship != NULL);
        *pusRelationshipName = GetSchemaRelationshipDisplayName(pRightToLeftRelationship);
    } else {
        *pusRelationshipName = "RELATIONSHIP_UNDEFINED";
    }
    return QTB_SUCCESS;
}

CATUnicodeString QTBERepNodeOnRepNode::GetSchemaRelationshipDisplayName(const QTBSchemaRelationship* pRelationship)
{
    if (pRelationship == NULL) {
        return "Error";
    }
    if (pRelationship->GetNlsKey().IsEmpty()) {
        return pRelationship->GetName();
    }
    const CATUnicodeString usNlsName = QTBSchemaUtil::GetCurrentSchemaNlsString(pRelationship->GetNlsKey());
    return usNlsName.IsEmpty() ? pRelationship->GetName() : usNlsName;
}

HRESULT QTBERepNodeOnRepNode::GetPdmNode(QTBIPdmNode_var* pspIPdmNode, unsigned char bPrintDebugInfo,
                                         unsigned char* pbPdmNodeFoundByRelation)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetPdmNode");
    // The missing blanks in the text are meant.
    QTB_ASSERT_AS("pspIPdmNode!=NULL", pspIPdmNode != NULL);
    *pspIPdmNode = NULL_var;
    const QTBINodeRelations_var spINodeRelationsOnThis(this);
    QTB_INTERFACE(spINodeRelationsOnThis);
    CATListValCATBaseUnknown_var LeftNodes;
    QTB_CALL(spINodeRelationsOnThis->GetLeftNodeList, QTBReservedNames::PDM_TO_REP, &LeftNodes,
             MOST_RECENTLY_UPDATED_NODES);
    const int Size = LeftNodes.Size();
    QTB_ASSERT(Size >= 0);
    QTB_ASSERT(Size <= 1);
    if (Size == 1) {
        if (pbPdmNodeFoundByRelation != NULL) {
            *pbPdmNodeFoundByRelation = TRUE;
        }
        *pspIPdmNode = LeftNodes[1];
        QTB_INTERFACE(*pspIPdmNode);
        return QTB_SUCCESS;
    }

    const bool prints = bPrintDebugInfo != FALSE && QTBDebugUtil::s_GlobalTraceLevel == PRINTING_TRACE_LEVEL;
    if (prints) {
        QTB_TRACE("QTBERepNodeOnRepNode::GetPdmNode -> Could not retrieve PDM Node (1)");
        QTB_CALL(PrintDebugInfo);
    }
    // FALSE also when the key leads to the node: it says how the node was found, not whether.
    if (pbPdmNodeFoundByRelation != NULL) {
        *pbPdmNodeFoundByRelation = FALSE;
    }
    unsigned char bNodeExists = FALSE;
    if (SUCCEEDED(GetPdmNodeByKey(pspIPdmNode, &bNodeExists)) && bNodeExists != FALSE) {
        QTB_INTERFACE(*pspIPdmNode);
        return QTB_SUCCESS;
    }
    unsigned char bIsRepDefaultNode = FALSE;
    QTB_CALL(IsRepDefaultNode, &bIsRepDefaultNode);
    if (bIsRepDefaultNode == FALSE && prints) {
        QTB_TRACE("QTBERepNodeOnRepNode::GetPdmNode -> Could not retrieve PDM Node (2)");
        QTB_CALL(PrintDebugInfo);
    }
    return E_FAIL;
}

HRESULT QTBERepNodeOnRepNode::GetPdmNodeByKey(QTBIPdmNode_var* pspIPdmNode, unsigned char* pbNodeExists)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetPdmNodeByKey");
    QTB_ASSERT(pspIPdmNode != NULL);
    QTB_ASSERT(pbNodeExists != NULL);
    if (m_usPdmNodeKey.IsEmpty()) {
        return QTB_QUIET_FAILURE;
    }
    QTBIPdmNodeCont_var spIPdmNodeCont;
    QTB_CALL(QTBGlobVarsUtil::GetGlobalPdmNodeContainer, &spIPdmNodeCont);
    QTB_CALL(spIPdmNodeCont->GetPdmNodeByKey, m_usPdmNodeKey, pspIPdmNode, pbNodeExists);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetRepNodeByKey(QTBIRepNode_var* pspIRepNode, unsigned char* pbNodeExists)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetRepNodeByKey");
    QTB_ASSERT(pspIRepNode != NULL);
    QTB_ASSERT(pbNodeExists != NULL);
    QTB_INTERFACE(m_spIRepNodeCont);
    const QTBINodeAttributes_var spINodeAttributesOnThis(this);
    QTB_INTERFACE(spINodeAttributesOnThis);
    CATUnicodeString usKey;
    QTB_CALL(spINodeAttributesOnThis->GetKey, &usKey);
    const QTBIRepNodeCont_var& spIRepNodeCont = m_spIRepNodeCont;
    QTB_CALL(spIRepNodeCont->GetRepNodeByKey, usKey, pspIRepNode, pbNodeExists);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetPdmNodeKey(CATUnicodeString* pusKey)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetPdmNodeKey");
    QTBIPdmNode_var spIPdmNode;
    if (FAILED(GetPdmNode(&spIPdmNode, FALSE, NULL))) {
        return QTB_QUIET_FAILURE;
    }
    const QTBINodeAttributes_var spINodeAttributesOnPdmNode(spIPdmNode);
    QTB_INTERFACE(spINodeAttributesOnPdmNode);
    QTB_CALL(spINodeAttributesOnPdmNode->GetKey, pusKey);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetPdmNodeAttributeValue(const CATUnicodeString& usAttrName, CATUnicodeString* pusValue)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetPdmNodeAttributeValue");
    QTBIPdmNode_var spIPdmNode;
    QTB_CALL(GetPdmNode, &spIPdmNode, TRUE, NULL);
    const QTBINodeAttributes_var spINodeAttributesOnPdmNode(spIPdmNode);
    QTB_INTERFACE(spINodeAttributesOnPdmNode);
    QTB_CALL(spINodeAttributesOnPdmNode->GetStringAttributeValue, usAttrName, pusValue, FALSE, TRUE);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetPdmNodeClassName(CATUnicodeString* pusClassName)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetPdmNodeClassName");
    QTBIPdmNode_var spIPdmNode;
    QTB_CALL(GetPdmNode, &spIPdmNode, TRUE, NULL);
    QTB_CALL(spIPdmNode->GetClassName, pusClassName);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::RepresentsPdmObjNode(unsigned char* pbRepresentsPdmObjNode)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::RepresentsPdmObjNode");
    QTB_ASSERT(pbRepresentsPdmObjNode != NULL);
    QTBIPdmNode_var spIPdmNode;
    if (const HRESULT hr = GetPdmNode(&spIPdmNode, FALSE, NULL); FAILED(hr)) {
        return hr;
    }
    *pbRepresentsPdmObjNode = QTBIPdmObjNode_var(spIPdmNode) != NULL_var ? TRUE : FALSE;
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::RepresentsPdmRelNode(unsigned char* pbRepresentsPdmRelNode,
                                                   unsigned char* pbIsMultiQuantityRelation)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::RepresentsPdmRelNode");
    QTB_ASSERT(pbRepresentsPdmRelNode != NULL);
    QTBIPdmNode_var spIPdmNode;
    if (const HRESULT hr = GetPdmNode(&spIPdmNode, FALSE, NULL); FAILED(hr)) {
        return hr;
    }
    *pbRepresentsPdmRelNode = QTBIPdmRelNode_var(spIPdmNode) != NULL_var ? TRUE : FALSE;
    if (pbIsMultiQuantityRelation != NULL && *pbRepresentsPdmRelNode != FALSE) {
        QTB_CALL(QTBInfoUtil::IsMultiQuantityRelation, spIPdmNode, pbIsMultiQuantityRelation, NULL, NULL, NULL);
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::SetRepNodeContainer(const QTBIRepNodeCont_var& spIRepNodeCont)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::SetRepNodeContainer");
    QTB_INTERFACE(spIRepNodeCont);
    m_spIRepNodeCont = spIRepNodeCont;
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetRepNodeContainer(QTBIRepNodeCont_var* pspIRepNodeCont)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetRepNodeContainer");
    QTB_ASSERT(pspIRepNodeCont != NULL);
    QTB_INTERFACE(m_spIRepNodeCont);
    *pspIRepNodeCont = m_spIRepNodeCont;
    QTB_INTERFACE(*pspIRepNodeCont);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetContainerId(int* pId)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetContainerId");
    QTBIRepNodeCont_var spIRepNodeCont;
    QTB_CALL(GetRepNodeContainer, &spIRepNodeCont);
    QTB_CALL(spIRepNodeCont->GetId, pId);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetPdmNodeActionIndex(int* pActionIndex)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetPdmNodeActionIndex");
    QTB_ASSERT(pActionIndex != NULL);
    QTBIPdmNode_var spIPdmNode;
    QTB_CALL(GetPdmNode, &spIPdmNode, TRUE, NULL);
    QTB_CALL(QTBInfoUtil::GetActionIndex, spIPdmNode, pActionIndex);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::PdmNodeIsIsAffectedByCurrentAction(unsigned char* pbIsAffected)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::PdmNodeIsIsAffectedByCurrentAction");
    QTBIPdmNode_var spIPdmNode;
    QTB_CALL(GetPdmNode, &spIPdmNode, TRUE, NULL);
    QTB_CALL(spIPdmNode->IsAffectedByCurrentAction, pbIsAffected);
    return QTB_SUCCESS;
}

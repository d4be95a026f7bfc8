// The part of QTBERepNodeContOnRepNodeCont that folds branches of a tree.

#include "QTBCheck.h"
#include "QTBERepNodeContOnRepNodeCont.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmObjNode.h"
#include "QTBIRepNode.h"

HRESULT QTBERepNodeContOnRepNodeCont::DeExpand(QTBIRepNode_var* pspIRepNode)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::DeExpand");
    QTB_ASSERT(pspIRepNode != NULL);
    unsigned char bIsRepRootNode = FALSE;
    QTB_CALL((*pspIRepNode)->IsRepRootNode, &bIsRepRootNode);
    if (bIsRepRootNode != FALSE) {
        QTB_CALL(DeExpandRootRepNode, pspIRepNode);
        return QTB_SUCCESS;
    }
    QTBIPdmNode_var spIPdmNode;
    QTB_CALL((*pspIRepNode)->GetPdmNode, &spIPdmNode, TRUE, NULL);
    QTB_INTERFACE(spIPdmNode);
    if (QTBIPdmObjNode_var(spIPdmNode) != NULL_var) {
        // An object is folded with the relation that it hangs below.
        QTBIRepNode_var spIRepNodeOnParent;
        QTB_CALL((*pspIRepNode)->GetParent, &spIRepNodeOnParent);
        QTB_CALL(DeExpandRelationNode, &spIRepNodeOnParent);
    } else {
        QTB_CALL(DeExpandRelationNode, pspIRepNode);
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::DeExpandRootRepNode(QTBIRepNode_var* pspIRepNode)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::DeExpandRootRepNode");
    QTB_ASSERT(pspIRepNode != NULL);
    QTB_INTERFACE(*pspIRepNode);
    unsigned char bInformUser = FALSE;
    QTB_CALL(RecursiveRemoveRepTree, *pspIRepNode, &bInformUser);
    unsigned char bFlag1 = TRUE;
    unsigned char bFlag2 = FALSE;
    QTB_CALL(UpdateQtbWindow, &bFlag1, &bFlag2);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::DeExpandRelationNode(QTBIRepNode_var* pspIRepNode)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::DeExpandRelationNode");
    QTB_ASSERT(pspIRepNode != NULL);
    QTB_INTERFACE(*pspIRepNode);
    QTBIRepNode_var spIRepNodeOnParentRepNode;
    QTB_CALL((*pspIRepNode)->GetParent, &spIRepNodeOnParentRepNode);
    const QTBIRepNode_var spIRepNodeOnRelationNode(*pspIRepNode);
    QTB_INTERFACE(spIRepNodeOnRelationNode);
    unsigned char bRepresentsPdmRelNode = FALSE;
    QTB_CALL(spIRepNodeOnRelationNode->RepresentsPdmRelNode, &bRepresentsPdmRelNode, NULL);
    QTB_ASSERT(bRepresentsPdmRelNode);
    QTBNodeRelationInfo FoldedRelation;
    QTB_CALL(spIRepNodeOnRelationNode->GetSinglePdmRelationToBeDisplayed, &FoldedRelation);
    unsigned char bFalse = FALSE;
    QTB_CALL(RecursiveRemoveRepTree, spIRepNodeOnRelationNode, &bFalse);

    unsigned char bRepresentsPdmObjNode = FALSE;
    QTB_CALL(spIRepNodeOnParentRepNode->RepresentsPdmObjNode, &bRepresentsPdmObjNode);
    QTB_ASSERT(bRepresentsPdmObjNode);
    CATListValCATBaseUnknown_var DirectChildren;
    QTB_CALL(spIRepNodeOnParentRepNode->GetDirectChildren, &DirectChildren);
    bool isStillShown = false;
    for (int i = 1; i <= DirectChildren.Size() && !isStillShown; ++i) {
        const QTBIRepNode_var spIRepNodeOnChildRelationNode(DirectChildren[i]);
        QTB_INTERFACE(spIRepNodeOnChildRelationNode);
        unsigned char bChildRepresentsPdmRelNode = FALSE;
        QTB_CALL(spIRepNodeOnChildRelationNode->RepresentsPdmRelNode, &bChildRepresentsPdmRelNode, NULL);
        QTB_ASSERT(bChildRepresentsPdmRelNode);
        QTBNodeRelationInfo RelationOfChild;
        QTB_CALL(spIRepNodeOnChildRelationNode->GetSinglePdmRelationToBeDisplayed, &RelationOfChild);
        isStillShown = RelationOfChild == FoldedRelation;
    }
    if (!isStillShown) {
        QTB_CALL(spIRepNodeOnParentRepNode->RemovePdmRelationToBeDisplayed, FoldedRelation);
    }
    QTB_CALL(spIRepNodeOnParentRepNode->Redraw, &bFalse);
    return QTB_SUCCESS;
}

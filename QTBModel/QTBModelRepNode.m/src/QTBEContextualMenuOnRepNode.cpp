#include "QTBEContextualMenuOnRepNode.h"

#include "CATAfrGetCommandHeader.h"
#include "CATCallback.h"
#include "CATCommandHeader.h"
#include "CATFrmEditor.h"
#include "QTBCheck.h"
#include "QTBConstants.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBIRepNode.h"
#include "QTBInfoUtil.h"
#include "QTBNodeRelationInfo.h"
#include "QTBNotificationAny.h"
#include "QTBPdmGraphUtil.h"

namespace {

// Null for a header that the application does not have.
CATCommandHeader* FindHeader(const char* id)
{
    CATCommandHeader* pHeader = NULL;
    return SUCCEEDED(CATAfrGetCommandHeader(id, &pHeader)) ? pHeader : NULL;
}

void SetAvailable(CATCommandHeader* pHeader, bool isAvailable)
{
    if (isAvailable) {
        pHeader->BecomeAvailable();
    } else {
        pHeader->BecomeUnavailable();
    }
}

// A command that the PDM system grants for the object, and the text of the query for the right.
struct GrantedCommand
{
    const char* headerId;
    const char* queryText;
    HRESULT (*pQuery)(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsAllowed);
};

constexpr GrantedCommand CHECK_IN{"QTBPdmWksCtxCheckInCmdHdr", "QTBInfoUtil::PdmObjectIsCheckInAllowed",
                                  &QTBInfoUtil::PdmObjectIsCheckInAllowed};
constexpr GrantedCommand CHECK_OUT{"QTBPdmWksCtxCheckOutCmdHdr", "QTBInfoUtil::PdmObjectIsCheckOutAllowed",
                                   [](const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsAllowed) {
                                       return QTBInfoUtil::PdmObjectIsCheckOutAllowed(spIPdmNode, pbIsAllowed);
                                   }};
constexpr GrantedCommand UPDATE_SUB_CMP_RELS{"QTBPdmWksCtxUpdateSubCmpRelsCmdHdr",
                                             "QTBInfoUtil::PdmObjectIsUpdateSubCmpRelsAllowed",
                                             &QTBInfoUtil::PdmObjectIsUpdateSubCmpRelsAllowed};
constexpr GrantedCommand UPDATE_ITEM{"QTBGenWksCtxUpdateItemCmdHdr", "QTBInfoUtil::PdmObjectIsEditAllowed",
                                     &QTBInfoUtil::PdmObjectIsEditAllowed};

HRESULT UpdateHeader(const GrantedCommand& command, const QTBIPdmNode_var& spIPdmNode)
{
    if (CATCommandHeader* pHeader = FindHeader(command.headerId); pHeader != NULL) {
        unsigned char bIsAllowed = FALSE;
        QTB_RESULT_AS(command.queryText, command.pQuery(spIPdmNode, &bIsAllowed));
        SetAvailable(pHeader, bIsAllowed != FALSE);
    }
    return QTB_SUCCESS;
}

} // namespace

QTBEContextualMenuOnRepNode::QTBEContextualMenuOnRepNode()
{
    QTB_SCOPE("QTBEContextualMenuOnRepNode::QTBEContextualMenuOnRepNode");
    try {
        LinkOwnItems();
    } catch (const CATXHException& exception) {
        QTB_TRACE(exception.GetError()->GetNLSMessage());
    }
}

void QTBEContextualMenuOnRepNode::LinkOwnItems()
{
    const QTBIRepNode_var spIRepNode(this);
    QTB_RAISE_INTERFACE(spIRepNode);
    CATCmdContainer OwnItems("QTBContextMenu");
    CATCmdAccess* pFirstOwnItem = NULL;
    QTB_RAISE_CALL(spIRepNode->InitContextMenuInfo, &OwnItems, &pFirstOwnItem);
    CATCmdAccess* pLastItem = GetMenu()->GetChild();
    if (pLastItem == NULL) {
        return;
    }
    while (pLastItem->GetNext() != NULL) {
        pLastItem = pLastItem->GetNext();
    }
    pLastItem->SetNext(pFirstOwnItem);
}

HRESULT QTBEContextualMenuOnRepNode::GetContextualMenu(CATCmdAccess*& oMenu)
{
    QTB_SCOPE("QTBEContextualMenuOnRepNode::GetContextualMenu");
    oMenu = GetMenu();
    CATFrmEditor* pCurrentEditor = CATFrmEditor::GetCurrentEditor();
    CATCallbackManager* pCBManagerCurrentEditor = GetDefaultCallbackManager(pCurrentEditor);
    QTB_ASSERT(pCBManagerCurrentEditor != NULL);
    pCBManagerCurrentEditor->DispatchCallbacks(QTBNotificationAny::CtxMenuSelected(), pCurrentEditor);

    const QTBIRepNode_var spIRepNodeOnThis(this);
    QTB_INTERFACE(spIRepNodeOnThis);
    QTBIPdmNode_var spIPdmNode;
    if (FAILED(spIRepNodeOnThis->GetPdmNode(&spIPdmNode, FALSE, NULL)) || spIPdmNode == NULL_var) {
        return QTB_SUCCESS;
    }
    for (const GrantedCommand& command : {CHECK_IN, CHECK_OUT, UPDATE_SUB_CMP_RELS}) {
        if (const HRESULT hr = UpdateHeader(command, spIPdmNode); FAILED(hr)) {
            return hr;
        }
    }
    if (CATCommandHeader* pHeader = FindHeader("QTBPdmWksCtxUpdateParentCmpRelCmdHdr"); pHeader != NULL) {
        SetAvailable(pHeader, ParentCmpRelMayBeUpdated(spIRepNodeOnThis));
    }
    UpdatePromoteHeader(spIPdmNode);
    // These two are left to their own commands.
    if (FindHeader("QTBPdmWksCtxDelNewestFileOfBusObjCmdHdr") != NULL) {
        QTB_TRACE("QTBEContextualMenuOnRepNode::GetContextualMenu -> pDelNewestFileOfBusObjCmdHdr != NULL");
    }
    if (FindHeader("QTBPdmWksCtxReviseCmdHdr") != NULL) {
        QTB_TRACE("QTBEContextualMenuOnRepNode::GetContextualMenu -> pReviseCmdHdr != NULL");
    }
    if (const HRESULT hr = UpdateHeader(UPDATE_ITEM, spIPdmNode); FAILED(hr)) {
        return hr;
    }
    return UpdateHighlightHeader(spIPdmNode);
}

bool QTBEContextualMenuOnRepNode::ParentCmpRelMayBeUpdated(const QTBIRepNode_var& spIRepNodeOnThis)
{
    QTBIRepNode_var spIRepNodeOnParent;
    if (FAILED(spIRepNodeOnThis->GetParent(&spIRepNodeOnParent))) {
        return false;
    }
    // That the parent is no relation is meant to do no harm; only a call that fails does.
    unsigned char bRepresentsPdmRelNode = FALSE;
    if (FAILED(spIRepNodeOnParent->RepresentsPdmRelNode(&bRepresentsPdmRelNode, NULL)) &&
        bRepresentsPdmRelNode == FALSE) {
        return false;
    }
    QTBNodeRelationInfo NodeRelationInfo;
    if (FAILED(spIRepNodeOnParent->GetSinglePdmRelationToBeDisplayed(&NodeRelationInfo)) ||
        !(NodeRelationInfo.GetRelationDirection() == usLEFT_TO_RIGHT)) {
        return false;
    }
    QTBIPdmNode_var spIPdmNodeOnParent;
    unsigned char bIsEditAllowed = FALSE;
    return SUCCEEDED(spIRepNodeOnThis->GetParent(&spIRepNodeOnParent)) &&
           SUCCEEDED(spIRepNodeOnParent->GetPdmNode(&spIPdmNodeOnParent, FALSE, NULL)) &&
           SUCCEEDED(QTBInfoUtil::PdmObjectIsEditAllowed(spIPdmNodeOnParent, &bIsEditAllowed)) &&
           bIsEditAllowed != FALSE;
}

void QTBEContextualMenuOnRepNode::UpdatePromoteHeader(const QTBIPdmNode_var& spIPdmNode)
{
    CATCommandHeader* pHeader = FindHeader("QTBPdmWksCtxPromoteCmdHdr");
    if (pHeader == NULL) {
        return;
    }
    unsigned char bIsPromoteAllowed = FALSE;
    if (FAILED(spIPdmNode->GetQtbInfoAttr("QtbIsPromoteAllowed", &bIsPromoteAllowed, FALSE, NULL, FALSE))) {
        QTB_TRACE("QTBEContextualMenuOnRepNode::GetContextualMenu -> 'QtbIsPromoteAllowed' not found");
        bIsPromoteAllowed = FALSE;
    }
    SetAvailable(pHeader, bIsPromoteAllowed != FALSE);
}

HRESULT QTBEContextualMenuOnRepNode::UpdateHighlightHeader(const QTBIPdmNode_var& spIPdmNode)
{
    CATCommandHeader* pHeader = FindHeader("QTBPdmWksCtxHighlightCmdHdr");
    if (pHeader == NULL) {
        return QTB_SUCCESS;
    }
    unsigned char bMayBeHighlighted = FALSE;
    if (const QTBIPdmObjNode_var spIPdmObjNode(spIPdmNode); spIPdmObjNode != NULL_var) {
        QTB_CALL(QTBPdmGraphUtil::IsPartNode, spIPdmObjNode, &bMayBeHighlighted, NULL, NULL);
        if (bMayBeHighlighted == FALSE) {
            QTB_CALL(QTBPdmGraphUtil::IsCatiaFileNode, spIPdmObjNode, &bMayBeHighlighted, NULL, NULL);
        }
    } else if (const QTBIPdmRelNode_var spIPdmRelNode(spIPdmNode); spIPdmRelNode != NULL_var) {
        QTB_CALL(QTBPdmGraphUtil::IsPartToPartRelationNode, spIPdmRelNode, &bMayBeHighlighted);
    } else {
        return QTB_SUCCESS;
    }
    SetAvailable(pHeader, bMayBeHighlighted != FALSE);
    return QTB_SUCCESS;
}

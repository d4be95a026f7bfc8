#include "QTBENavigModifyOnRepNode_node.h"

#include "CATIGraphNode.h"
#include "CATIProduct.h"
#include "CATNavigInstance.h"
#include "QTBArchiveUtil.h"
#include "QTBCheck.h"
#include "QTBConstants.h"
#include "QTBDocUtil.h"
#include "QTBFileUtil.h"
#include "QTBILinkToPsn.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmNode.h"
#include "QTBIRepNode.h"
#include "QTBInfoUtil.h"
#include "QTBMessageUtil.h"
#include "QTBNodeAttr.h"
#include "QTBPdmSessionUtil.h"
#include "QTBRepTreeUtil.h"
#include "QTBReservedNames.h"
#include "QTBSchemaNode.h"

namespace {

const CATUnicodeString DEFAULT_ICON("QTBCatiaV5");
const CATUnicodeString ARCHIVE_FILE_TYPE("CMIArchive");

// Codes of the marked states.
enum StateCode
{
    MODIFIED = 244,
    EDITABLE = 246,
    MODIFIED_READ_ONLY = 247,
    WITHOUT_FILE = 248,
    LOCKED = 249
};

void SwitchStateMark(const CATIGraphNode_var& spIGraphNode, unsigned char bOn)
{
    spIGraphNode->SetIconMarking(bOn);
    spIGraphNode->SetLabelMarking(bOn);
}

void MarkState(const CATIGraphNode_var& spIGraphNode, StateCode code)
{
    SwitchStateMark(spIGraphNode, TRUE);
    spIGraphNode->SetStateCode(code);
}

// An archive that cannot be read counts as unchanged.
unsigned char ArchiveIsDirty(const CATIProduct_var& spIProduct)
{
    unsigned char bIsDirty = FALSE;
    if (FAILED(QTBArchiveUtil::IsArchiveDirty(spIProduct, &bIsDirty))) {
        QTB_TRACE("QTBENavigModifyOnRepNode_node::PdmNodeIsDirtyCatiaFileNode -> QTBArchiveUtil::IsArchiveDirty !");
        return FALSE;
    }
    return bIsDirty;
}

// A file that cannot be found or read counts as changed.
unsigned char FileIsDirty(const QTBIRepNode_var& spIRepNode, const CATUnicodeString& usFilePath,
                          const CATUnicodeString& usFileType)
{
    CATUnicodeString usExMapFilePath;
    if (FAILED(QTBFileUtil::CreateExMapFilePath(usFilePath, &usExMapFilePath))) {
        return TRUE;
    }
    unsigned char bIsDesignTable = FALSE;
    unsigned char bParentInSession = FALSE;
    if (usFileType == usDESIGNTABLE) {
        bIsDesignTable = TRUE;
        QTB_REPORT_CALL(QTBRepTreeUtil::ParentCatDocObjIsInSession, spIRepNode, &bParentInSession);
    }
    unsigned char bIsDirty = FALSE;
    if (FAILED(QTBDocUtil::DocumentNeedsToBeSavedInPdm(usExMapFilePath, &bIsDirty, bIsDesignTable, bParentInSession))) {
        QTB_TRACE("QTBENavigModifyOnRepNode_node::PdmNodeIsDirtyCatiaFileNode -> "
                  "QTBDocUtil::DocumentNeedsToBeSavedInPdm !");
        return TRUE;
    }
    return bIsDirty;
}

} // namespace

void QTBENavigModifyOnRepNode_node::UpdateElem(CATNavigInstance* pInstance)
{
    QTB_SCOPE("QTBENavigModifyOnRepNode_node::UpdateElem");
    try {
        UpdateElemGuarded(pInstance);
    } catch (const CATXHException& exception) {
        QTB_TRACE(
            "QTBENavigModifyOnRepNode_node::UpdateElem -> caught exception:" << exception.GetError()->GetNLSMessage());
    }
}

void QTBENavigModifyOnRepNode_node::UpdateElemGuarded(CATNavigInstance* pInstance)
{
    QTB_RAISE_ASSERT(pInstance != NULL);
    const QTBIRepNode_var spIRepNode(pInstance->GetReference());
    QTB_RAISE_INTERFACE(spIRepNode);
    CATUnicodeString usPdmNodeKey;
    if (FAILED(spIRepNode->GetPdmNodeKey(&usPdmNodeKey))) {
        CATError* pError = QTBMessageUtil::FunctionalityNotImplemented();
        QTB_RAISE_ASSERT(pError != NULL);
        QTB_TRACE("QTBENavigModifyOnRepNode_node::UpdateElem -> " << pError->GetNLSMessage());
        pError->Release();
        return;
    }
    if (usPdmNodeKey == QTBReservedNames::DEFAULT_ROOT_NODE) {
        return;
    }
    const CATIGraphNode_var spIGraphNodeOnThis(this);
    QTB_RAISE_INTERFACE(spIGraphNodeOnThis);
    CATUnicodeString usIconName;
    QTB_RAISE_CALL(GetIconForNode, spIRepNode, &usIconName);
    spIGraphNodeOnThis->SetIconName(usIconName);
    UpdateStateMark(spIRepNode, spIGraphNodeOnThis);
    QTB_RAISE_CALL(UpdateTooltipString, spIRepNode);
}

void QTBENavigModifyOnRepNode_node::UpdateStateMark(const QTBIRepNode_var& spIRepNode,
                                                    const CATIGraphNode_var& spIGraphNodeOnThis)
{
    unsigned char bIsCatiaFile = FALSE;
    QTB_RAISE_CALL(QTBRepTreeUtil::RepresentsCatiaFileNode, spIRepNode, &bIsCatiaFile, NULL, NULL);
    unsigned char bIsPart = FALSE;
    if (QTBPdmSessionUtil::UseBomPartStructure() != FALSE) {
        QTB_RAISE_CALL(QTBRepTreeUtil::RepresentsPdmPartNode, spIRepNode, &bIsPart, NULL);
    }
    const bool bFileOrPart = bIsCatiaFile != FALSE || bIsPart != FALSE;
    unsigned char bReadOnly = FALSE;
    unsigned char bEditOrCheckOut = FALSE;
    QTB_RAISE_CALL(PdmNodeIsReadOnly, spIRepNode, &bReadOnly, bFileOrPart ? &bEditOrCheckOut : NULL);
    QTBIPdmNode_var spIPdmNode;
    QTB_RAISE_CALL(spIRepNode->GetPdmNode, &spIPdmNode, FALSE, NULL);
    unsigned char bHasFile = FALSE;
    QTB_RAISE_CALL(QTBInfoUtil::PdmDocumentHasFile, spIPdmNode, &bHasFile);

    if (bIsCatiaFile != FALSE && bHasFile == FALSE) {
        MarkState(spIGraphNodeOnThis, WITHOUT_FILE);
    } else if (bFileOrPart && bEditOrCheckOut == FALSE) {
        MarkState(spIGraphNodeOnThis, LOCKED);
    } else if (bReadOnly != FALSE) {
        SwitchStateMark(spIGraphNodeOnThis, FALSE);
    } else {
        MarkState(spIGraphNodeOnThis, EDITABLE);
    }

    unsigned char bDirty = FALSE;
    QTB_RAISE_CALL(PdmNodeIsDirtyCatiaFileNode, spIRepNode, &bDirty);
    if (bDirty != FALSE) {
        MarkState(spIGraphNodeOnThis, bReadOnly != FALSE ? MODIFIED_READ_ONLY : MODIFIED);
    }
}

HRESULT QTBENavigModifyOnRepNode_node::ModifyShortHelp(CATUnicodeString& ioShortHelp)
{
    QTB_SCOPE("QTBENavigModifyOnRepNode_node::ModifyShortHelp");
    if (!m_usTooltip.IsEmpty()) {
        QTB_TRACE("QTBENavigModifyOnRepNode_node::ModifyShortHelp -> changing tooltip string from ["
                  << ioShortHelp << "] to [" << m_usTooltip << "]");
        ioShortHelp = m_usTooltip;
    }
    return S_OK;
}

HRESULT QTBENavigModifyOnRepNode_node::GetIconForNode(const QTBIRepNode_var& spIRepNode, CATUnicodeString* pusIconName)
{
    QTB_SCOPE("QTBENavigModifyOnRepNode_node::GetIconForNode");
    QTB_ASSERT(pusIconName != NULL);
    *pusIconName = "";
    QTBIPdmNode_var spIPdmNode;
    if (SUCCEEDED(spIRepNode->GetPdmNode(&spIPdmNode, FALSE, NULL))) {
        QTB_ASSERT(spIPdmNode != NULL_var);
        QTBSchemaNode* pSchemaNode = NULL;
        QTB_CALL(spIPdmNode->GetSchemaNodePtr, &pSchemaNode);
        if (pSchemaNode != NULL) {
            *pusIconName = pSchemaNode->GetIconName();
        }
    }
    if (pusIconName->IsEmpty()) {
        *pusIconName = DEFAULT_ICON;
    }
    return QTB_SUCCESS;
}

HRESULT QTBENavigModifyOnRepNode_node::UpdateTooltipString(const QTBIRepNode_var& spIRepNode)
{
    QTB_SCOPE("QTBENavigModifyOnRepNode_node::UpdateTooltipString");
    QTB_INTERFACE(spIRepNode);
    QTBIPdmNode_var spIPdmNode;
    QTB_CALL(spIRepNode->GetPdmNode, &spIPdmNode, FALSE, NULL);
    QTBSchemaNode* pSchemaNode = NULL;
    QTB_CALL(spIPdmNode->GetSchemaNodePtr, &pSchemaNode);
    const CATUnicodeString usAttrName = pSchemaNode != NULL ? pSchemaNode->GetTooltipAttrName() : CATUnicodeString();
    if (usAttrName.IsEmpty()) {
        return QTB_SUCCESS;
    }
    // The name is spelled so in the texts of the checks.
    const QTBINodeAttributes_var spINodeAttribtes(spIPdmNode);
    QTB_INTERFACE(spINodeAttribtes);
    unsigned char bDefined = FALSE;
    QTB_CALL(spINodeAttribtes->AttributeIsDefined, usAttrName, &bDefined);
    if (bDefined == FALSE) {
        return QTB_SUCCESS;
    }
    QTBNodeAttr* pNodeAttr = NULL;
    // The text is meant to name another operation.
    QTB_RESULT_AS("spINodeAttribtes->GetAttributePtr", spINodeAttribtes->GetAttribute(usAttrName, &pNodeAttr));
    m_usTooltip = pNodeAttr->ToString();
    return QTB_SUCCESS;
}

HRESULT QTBENavigModifyOnRepNode_node::PdmNodeIsReadOnly(const QTBIRepNode_var& spIRepNode, unsigned char* pbIsReadOnly,
                                                         unsigned char* pbEditOrCheckOut)
{
    QTB_SCOPE("QTBENavigModifyOnRepNode_node::PdmNodeIsReadOnly");
    QTB_ASSERT(pbIsReadOnly != NULL);
    *pbIsReadOnly = FALSE;
    QTBIPdmNode_var spIPdmNode;
    QTB_CALL(spIRepNode->GetPdmNode, &spIPdmNode, FALSE, NULL);
    unsigned char bEditAllowed = FALSE;
    QTB_CALL(QTBInfoUtil::PdmObjectIsEditAllowed, spIPdmNode, &bEditAllowed);
    *pbIsReadOnly = bEditAllowed != FALSE ? FALSE : TRUE;
    if (pbEditOrCheckOut != NULL) {
        unsigned char bCheckOutAllowed = FALSE;
        QTB_CALL(QTBInfoUtil::PdmObjectIsCheckOutAllowed, spIPdmNode, &bCheckOutAllowed);
        *pbEditOrCheckOut = bEditAllowed != FALSE || bCheckOutAllowed != FALSE ? TRUE : FALSE;
    }
    return QTB_SUCCESS;
}

HRESULT QTBENavigModifyOnRepNode_node::PdmNodeIsDirtyCatiaFileNode(const QTBIRepNode_var& spIRepNode,
                                                                   unsigned char* pbDirtyCatiaFile)
{
    QTB_SCOPE("QTBENavigModifyOnRepNode_node::PdmNodeIsDirtyCatiaFileNode");
    QTB_ASSERT(pbDirtyCatiaFile != NULL);
    unsigned char bIsCatiaFile = FALSE;
    CATUnicodeString usFilePath;
    CATUnicodeString usFileType;
    QTB_CALL(QTBRepTreeUtil::RepresentsCatiaFileNode, spIRepNode, &bIsCatiaFile, &usFilePath, &usFileType);
    if (bIsCatiaFile == FALSE) {
        *pbDirtyCatiaFile = FALSE;
        return QTB_SUCCESS;
    }
    const QTBILinkToPsn_var spILinkToPsn(spIRepNode);
    QTB_INTERFACE(spILinkToPsn);
    if (usFileType == ARCHIVE_FILE_TYPE) {
        unsigned char bExists = FALSE;
        CATIProduct_var spIProduct;
        QTB_CALL(spILinkToPsn->CorrespondingPsnNodeExists, &bExists, &spIProduct);
        *pbDirtyCatiaFile = bExists != FALSE ? ArchiveIsDirty(spIProduct) : FALSE;
    } else {
        *pbDirtyCatiaFile = FileIsDirty(spIRepNode, usFilePath, usFileType);
    }
    return QTB_SUCCESS;
}

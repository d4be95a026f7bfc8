// The part of QTBERepNodeOnRepNode on the PDM window, highlighting and debug data.

#include "CATFrmEditor.h"
#include "CATFrmWindow.h"
#include "CATHSO.h"
#include "CATIRedrawEvent.h"
#include "CATPSO.h"
#include "CATPathElement.h"
#include "QTBCheck.h"
#include "QTBERepNodeOnRepNode.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmNode.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"
#include "QTBVisUtil.h"

HRESULT QTBERepNodeOnRepNode::SetFrmWindowPtr(CATFrmWindow* pFrmWindow)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::SetFrmWindowPtr");
    m_pFrmWindow = pFrmWindow;
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetFrmWindowPtr(CATFrmWindow** ppFrmWindow)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetFrmWindowPtr");
    QTB_ASSERT(ppFrmWindow != NULL);
    QTB_ASSERT(*ppFrmWindow == NULL);
    if (m_pFrmWindow == NULL) {
        return QTB_QUIET_FAILURE;
    }
    *ppFrmWindow = m_pFrmWindow;
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::FrmWindowPtrExists(unsigned char* pbFrmWindowPtrExists)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::FrmWindowPtrExists");
    *pbFrmWindowPtrExists = m_pFrmWindow != NULL ? TRUE : FALSE;
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetFrmEditorPtr(CATFrmEditor** ppFrmEditor)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetFrmEditorPtr");
    QTB_ASSERT(ppFrmEditor != NULL);
    QTB_ASSERT(*ppFrmEditor == NULL);
    if (m_pFrmWindow == NULL) {
        return QTB_QUIET_FAILURE;
    }
    *ppFrmEditor = m_pFrmWindow->GetEditor();
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::EmptyPSO()
{
    QTB_SCOPE("QTBERepNodeOnRepNode::EmptyPSO");
    CATFrmEditor* pFrmEditor = NULL;
    if (FAILED(GetFrmEditorPtr(&pFrmEditor)) || pFrmEditor == NULL) {
        return QTB_SUCCESS;
    }
    CATPSO* pPSO = pFrmEditor->GetPSO();
    QTB_ASSERT(pPSO != NULL);
    pPSO->Empty();
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::Preselect(unsigned char* pbEmptyPSO)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::Preselect");
    if (*pbEmptyPSO != FALSE) {
        QTB_CALL(EmptyPSO);
    }
    CATFrmEditor* pFrmEditor = NULL;
    if (FAILED(GetFrmEditorPtr(&pFrmEditor)) || pFrmEditor == NULL) {
        return QTB_SUCCESS;
    }
    // The text names the look-up of the path without the word Ptr; meant, here and below.
    CATPathElement* pPathElementOnThisNode = NULL;
    QTB_RESULT_AS("QTBVisUtil::GetPathElementFromNode",
                  QTBVisUtil::GetPathElementPtrFromNode(CATBaseUnknown_var(this), pFrmEditor, &pPathElementOnThisNode));
    QTB_ASSERT(pPathElementOnThisNode != NULL);
    const CATPathElement_var spPathElementOnThisNode = CATPathElement_var::Adopt(pPathElementOnThisNode);
    CATPSO* pPSO = pFrmEditor->GetPSO();
    QTB_ASSERT(pPSO != NULL);
    pPSO->AddElement(pPathElementOnThisNode);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::Highlight(unsigned char* pbEmptyHSO, unsigned char* pbHighlightObjectOfRelation)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::Highlight");
    QTB_CALL(EmptyPSO);
    CATBaseUnknown_var spNodeToBeHighlighted(this);
    if (*pbHighlightObjectOfRelation != FALSE) {
        unsigned char bRepresentsPdmRelNode = FALSE;
        QTB_CALL(RepresentsPdmRelNode, &bRepresentsPdmRelNode, NULL);
        if (bRepresentsPdmRelNode != FALSE) {
            CATListValCATBaseUnknown_var DirectChildren;
            QTB_CALL(GetDirectChildren, &DirectChildren);
            QTB_ASSERT(DirectChildren.Size() == 1);
            spNodeToBeHighlighted = DirectChildren[1];
        }
    }
    QTBIRepNode_var spIRepNodeToBeHighlighted(spNodeToBeHighlighted);
    QTB_INTERFACE(spIRepNodeToBeHighlighted);
    // That the node could not be marked is deliberately not passed on.
    Highlight(&spIRepNodeToBeHighlighted, pbEmptyHSO);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::Highlight(QTBIRepNode_var* pspIRepNode, unsigned char* pbEmptyHSO)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::Highlight");
    QTB_ASSERT(pspIRepNode != NULL);
    QTB_INTERFACE(*pspIRepNode);
    CATFrmEditor* pFrmEditor = NULL;
    if (FAILED((*pspIRepNode)->GetFrmEditorPtr(&pFrmEditor)) || pFrmEditor == NULL) {
        return QTB_SUCCESS;
    }
    CATPathElement* pPathElementOnRepNode = NULL;
    QTB_RESULT_AS("QTBVisUtil::GetPathElementFromNode",
                  QTBVisUtil::GetPathElementPtrFromNode(*pspIRepNode, pFrmEditor, &pPathElementOnRepNode));
    QTB_ASSERT(pPathElementOnRepNode != NULL);
    const CATPathElement_var spPathElementOnRepNode = CATPathElement_var::Adopt(pPathElementOnRepNode);
    CATHSO* pHSO = pFrmEditor->GetHSO();
    QTB_ASSERT(pHSO != NULL);
    if (*pbEmptyHSO != FALSE) {
        pHSO->Empty();
    }
    pHSO->AddElement(pPathElementOnRepNode);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::Redraw(unsigned char* pbRecursive)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::Redraw");
    const CATIRedrawEvent_var spIRedrawEventOnThis(this);
    QTB_INTERFACE(spIRedrawEventOnThis);
    spIRedrawEventOnThis->Redraw();
    if (*pbRecursive != FALSE) {
        CATListValCATBaseUnknown_var AllChildren;
        QTB_CALL(GetAllChildren, &AllChildren);
        for (const CATBaseUnknown_var& spChild : AllChildren) {
            const QTBIRepNode_var spIRepNodeOnChild(spChild);
            QTB_INTERFACE(spIRepNodeOnChild);
            unsigned char bRecursive = FALSE;
            // A failing call is reported under the handle's text too; meant.
            QTB_RESULT_AS("spIRepNodeOnChild", spIRepNodeOnChild->Redraw(&bRecursive));
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::AddDebugAttribute(const CATUnicodeString& usName, const CATUnicodeString& usValue)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::AddDebugAttribute");
    m_DebugAttrNames.Append(usName);
    m_DebugAttrValues.Append(usValue);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::AddPdmNodeKeyForDebug(const CATUnicodeString& usPdmNodeKey)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::AddPdmNodeKeyForDebug");
    m_usPdmNodeKey = usPdmNodeKey;
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::AddDebugInfoString(const CATUnicodeString& usText,
                                                 unsigned char* pbForAllRepNodesOfPdmNode)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::AddDebugInfoString");
    if (*pbForAllRepNodesOfPdmNode == FALSE) {
        m_DebugInfoStrings.Append(usText);
        return QTB_SUCCESS;
    }
    QTBIPdmNode_var spIPdmNode;
    QTB_CALL(GetPdmNode, &spIPdmNode, TRUE, NULL);
    CATListValCATBaseUnknown_var RepNodes;
    QTB_CALL(spIPdmNode->GetRepNodes, &RepNodes, NULL_var);
    for (const CATBaseUnknown_var& spRepNode : RepNodes) {
        const QTBIRepNode_var spIRepNode(spRepNode);
        QTB_INTERFACE(spIRepNode);
        unsigned char bForAllRepNodesOfPdmNode = FALSE;
        QTB_CALL(spIRepNode->AddDebugInfoString, usText, &bForAllRepNodesOfPdmNode);
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::PrintDebugInfo()
{
    QTB_SCOPE("QTBERepNodeOnRepNode::PrintDebugInfo");
    const QTBINodeAttributes_var spINodeAttributesOnThis(this);
    QTB_INTERFACE(spINodeAttributesOnThis);
    CATUnicodeString usKey;
    QTB_CALL(spINodeAttributesOnThis->GetKey, &usKey);
    QTB_TRACE("");
    QTB_TRACE("Debug Info for Rep Node:[" << usKey << "]");
    unsigned char bIsRepDefaultNode = FALSE;
    QTB_CALL(IsRepDefaultNode, &bIsRepDefaultNode);
    if (bIsRepDefaultNode != FALSE) {
        QTB_TRACE("Is default rep node");
        return QTB_SUCCESS;
    }

    QTB_ASSERT(m_DebugAttrNames.Size() == m_DebugAttrValues.Size());
    QTB_TRACE("Attributes:");
    for (int i = 1; i <= m_DebugAttrNames.Size(); ++i) {
        QTB_TRACE(i << ": \t" << m_DebugAttrNames[i] << ":" << m_DebugAttrValues[i]);
    }
    QTB_TRACE("Debug Info Strings:");
    for (int i = 1; i <= m_DebugInfoStrings.Size(); ++i) {
        QTB_TRACE(i << ": " << m_DebugInfoStrings[i]);
    }

    QTBIRepNode_var spIRepNode;
    unsigned char bRepNodeExists = FALSE;
    QTB_CALL(GetRepNodeByKey, &spIRepNode, &bRepNodeExists);
    QTB_TRACE("Searching Rep Node in Rep Container: " << (bRepNodeExists != FALSE ? "found" : "NOT found"));

    QTBIPdmNode_var spIPdmNode;
    unsigned char bPdmNodeExists = FALSE;
    QTB_CALL(GetPdmNodeByKey, &spIPdmNode, &bPdmNodeExists);
    if (bPdmNodeExists != FALSE) {
        QTB_TRACE("Searching PDM Node in PDM Container: found");
        QTB_TRACE("");
    } else {
        QTB_TRACE("Searching PDM Node in PDM Container: NOT found");
    }
    return QTB_SUCCESS;
}

// The part of QTBELinkToQtbOnASMPRODUCT that shows a product's counterparts in the PDM window.

#include "CATFrmLayout.h"
#include "CATFrmWindow.h"
#include "CATIProduct.h"
#include "QTBCheck.h"
#include "QTBConstants.h"
#include "QTBELinkToQtbOnASMPRODUCT.h"
#include "QTBIPdmNode.h"
#include "QTBIPsnNode.h"
#include "QTBIRepNode.h"
#include "QTBInfoUtil.h"
#include "QTBPdmSessionUtil.h"
#include "QTBRepTreeUtil.h"
#include "QTBVisUtil.h"

namespace {

HRESULT ActivateWindow(CATFrmWindow* pFrmWindowWhereHighlighted)
{
    if (pFrmWindowWhereHighlighted == NULL) {
        // Both operations name this one; meant.
        QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::HighlightProdStrucNode -> pFrmWindowWhereHighlighted == NULL !");
        return QTB_SUCCESS;
    }
    CATFrmLayout* pFrmLayout = CATFrmLayout::GetCurrentLayout();
    QTB_ASSERT(pFrmLayout != NULL);
    pFrmLayout->SetCurrentWindow(pFrmWindowWhereHighlighted);
    return QTB_SUCCESS;
}

} // namespace

HRESULT QTBELinkToQtbOnASMPRODUCT::GetCorrespondingProdStrucRepNodes(CATListValCATBaseUnknown_var* pProdStrucRepNodes,
                                                                     CATFrmWindow** ppFrmWindow)
{
    QTB_SCOPE("QTBELinkToQtbOnASMPRODUCT::GetCorrespondingProdStrucRepNodes");
    QTB_ASSERT(pProdStrucRepNodes != NULL);
    pProdStrucRepNodes->RemoveAll();
    const QTBIPsnNode_var spIPsnNodeOnThis(this);
    QTB_INTERFACE(spIPsnNodeOnThis);
    CATListValQTBPartInstanceInfo PathToRootPartInstanceInfoList;
    CATIProduct_var spIProductOnPdmPartMainNode;
    if (const HRESULT hr = spIPsnNodeOnThis->GetPathToRootPartInstanceInfo(&PathToRootPartInstanceInfoList,
                                                                           &spIProductOnPdmPartMainNode);
        FAILED(hr)) {
        return hr;
    }
    CATUnicodeString usRootPartNumber;
    if (PathToRootPartInstanceInfoList.Size() > 0) {
        CATUnicodeString usInstanceName;
        QTB_CALL(PathToRootPartInstanceInfoList[1].GetInstanceInfo, &usRootPartNumber, &usInstanceName);
    } else {
        QTB_INTERFACE(spIProductOnPdmPartMainNode);
        usRootPartNumber = spIProductOnPdmPartMainNode->GetPartNumber();
    }

    CATFrmWindow* pFrmWindow = NULL;
    CATListValCATBaseUnknown_var RootRepNodes;
    QTB_CALL(QTBVisUtil::GetQtbWindowForHighlight, QTB_ROOT_REP_NODE_PART, usRootPartNumber, &pFrmWindow,
             &RootRepNodes);
    for (const CATBaseUnknown_var& spRootRepNode : RootRepNodes) {
        const QTBIRepNode_var spIRepNodeOnCurrentRootNode(spRootRepNode);
        QTB_INTERFACE(spIRepNodeOnCurrentRootNode);
        QTBIRepNode_var spIRepNodeOnTarget;
        if (SUCCEEDED(GetTargetProdStrucRepNode(spIRepNodeOnCurrentRootNode, PathToRootPartInstanceInfoList,
                                                &spIRepNodeOnTarget)) &&
            spIRepNodeOnTarget != NULL_var) {
            pProdStrucRepNodes->Append(spIRepNodeOnTarget);
        }
    }
    if (ppFrmWindow != NULL && *ppFrmWindow == NULL) {
        *ppFrmWindow = pFrmWindow;
    }
    return QTB_SUCCESS;
}

HRESULT QTBELinkToQtbOnASMPRODUCT::GetTargetProdStrucRepNode(
    const QTBIRepNode_var& spIRepNodeOnRootNode, const CATListValQTBPartInstanceInfo& PathToRootPartInstanceInfoList,
    QTBIRepNode_var* pspIRepNodeOnTargetProdStrucNode)
{
    QTB_SCOPE("QTBELinkToQtbOnASMPRODUCT::GetTargetProdStrucRepNode");
    QTB_ASSERT(pspIRepNodeOnTargetProdStrucNode != NULL);
    if (PathToRootPartInstanceInfoList.Size() == 0) {
        *pspIRepNodeOnTargetProdStrucNode = spIRepNodeOnRootNode;
        return QTB_SUCCESS;
    }
    QTBIRepNode_var spIRepNodeOnCurrentPartNode = spIRepNodeOnRootNode;
    for (const QTBPartInstanceInfo& PartInstanceInfo : PathToRootPartInstanceInfoList) {
        QTBIRepNode_var spIRepNodeOnChildPart;
        if (FAILED(ExpandToChildPart(spIRepNodeOnCurrentPartNode, PartInstanceInfo, &spIRepNodeOnChildPart))) {
            return QTB_QUIET_FAILURE;
        }
        spIRepNodeOnCurrentPartNode = spIRepNodeOnChildPart;
    }
    QTB_CALL(spIRepNodeOnCurrentPartNode->GetParent, pspIRepNodeOnTargetProdStrucNode);
    return QTB_SUCCESS;
}

HRESULT QTBELinkToQtbOnASMPRODUCT::ExpandToChildPart(const QTBIRepNode_var& spIRepNodeOnPartNode,
                                                     const QTBPartInstanceInfo& PartInstanceInfo,
                                                     QTBIRepNode_var* pspIRepNodeOnChildPart)
{
    QTB_SCOPE("QTBELinkToQtbOnASMPRODUCT::ExpandToChildPart");
    QTB_ASSERT(pspIRepNodeOnChildPart != NULL);
    CATUnicodeString usParentPartNumber;
    CATUnicodeString usInstanceName;
    QTB_CALL(PartInstanceInfo.GetInstanceInfo, &usParentPartNumber, &usInstanceName);
    unsigned char bRepresentsPdmPartNode = FALSE;
    CATUnicodeString usPartNumber;
    QTB_CALL(QTBRepTreeUtil::RepresentsPdmPartNode, spIRepNodeOnPartNode, &bRepresentsPdmPartNode, &usPartNumber);
    if (bRepresentsPdmPartNode == FALSE || !(usPartNumber == usParentPartNumber)) {
        QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::ExpandToChildPart -> usPartNumber != usParentPartNumber -> returning");
        return QTB_QUIET_FAILURE;
    }

    CATListValCATBaseUnknown_var PartRelations;
    QTB_CALL(QTBRepTreeUtil::GetAllDirectSubStructureNodes, spIRepNodeOnPartNode, &PartRelations, NULL);
    CATListValCATBaseUnknown_var RelationsWithInstanceName;
    for (const CATBaseUnknown_var& spPartRelation : PartRelations) {
        const QTBIRepNode_var spIRepNodeOnPartRelation(spPartRelation);
        QTB_INTERFACE(spIRepNodeOnPartRelation);
        QTBIPdmNode_var spIPdmNodeOnPartRelation;
        QTB_CALL(spIRepNodeOnPartRelation->GetPdmNode, &spIPdmNodeOnPartRelation, TRUE, NULL);
        unsigned char bIsUsed = FALSE;
        QTB_CALL(QTBInfoUtil::CatiaInstanceNameIsUsedInRelation, spIPdmNodeOnPartRelation, usInstanceName, &bIsUsed);
        if (bIsUsed != FALSE) {
            RelationsWithInstanceName.Append(spPartRelation);
        }
    }
    if (RelationsWithInstanceName.Size() == 0) {
        QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::ExpandToChildPart -> instance name [" << usInstanceName
                                                                                    << "] not found, returning");
        return QTB_QUIET_FAILURE;
    }
    if (RelationsWithInstanceName.Size() > 1) {
        QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::ExpandToChildPart -> instance name ["
                  << usInstanceName << "] found more than once, returning");
        return QTB_QUIET_FAILURE;
    }
    const QTBIRepNode_var spIRepNodeOnPartRelation(RelationsWithInstanceName[1]);
    CATListValCATBaseUnknown_var ChildObjNodeList;
    QTB_CALL(spIRepNodeOnPartRelation->GetDirectChildren, &ChildObjNodeList);
    QTB_ASSERT(ChildObjNodeList.Size() == 1);
    *pspIRepNodeOnChildPart = ChildObjNodeList[1];
    QTB_INTERFACE(*pspIRepNodeOnChildPart);
    return QTB_SUCCESS;
}

HRESULT QTBELinkToQtbOnASMPRODUCT::HighlightProdStrucNode(unsigned char bEmptyHighlightFirst,
                                                          unsigned char bActivateWindow,
                                                          CATFrmWindow** ppFrmWindowWhereHighlighted)
{
    QTB_SCOPE("QTBELinkToQtbOnASMPRODUCT::HighlightProdStrucNode");
    CATFrmWindow* pFrmWindowWhereHighlighted = NULL;
    CATListValCATBaseUnknown_var ProdStrucRepNodes;
    QTB_CALL(GetCorrespondingProdStrucRepNodes, &ProdStrucRepNodes, &pFrmWindowWhereHighlighted);
    QTB_ASSERT(ProdStrucRepNodes.Size() > 0);
    if (bActivateWindow != FALSE) {
        if (const HRESULT hr = ActivateWindow(pFrmWindowWhereHighlighted); FAILED(hr)) {
            return hr;
        }
    }
    for (int i = 1; i <= ProdStrucRepNodes.Size(); ++i) {
        const QTBIRepNode_var spIRepNodeOnProdStrucNode(ProdStrucRepNodes[i]);
        QTB_INTERFACE(spIRepNodeOnProdStrucNode);
        unsigned char bRepresentsPdmRelNode = FALSE;
        QTB_CALL(spIRepNodeOnProdStrucNode->RepresentsPdmRelNode, &bRepresentsPdmRelNode, NULL);
        unsigned char bEmptyHSO = i == 1 ? bEmptyHighlightFirst : FALSE;
        unsigned char bHighlightObjectOfRelation = bRepresentsPdmRelNode;
        QTB_CALL(spIRepNodeOnProdStrucNode->Highlight, &bEmptyHSO, &bHighlightObjectOfRelation);
        if (ppFrmWindowWhereHighlighted != NULL) {
            *ppFrmWindowWhereHighlighted = pFrmWindowWhereHighlighted;
            if (*ppFrmWindowWhereHighlighted == NULL) {
                QTB_TRACE(
                    "QTBELinkToQtbOnASMPRODUCT::HighlightProdStrucNode -> *ppFrmWindowWhereHighlighted == NULL !");
            }
        }
        int containerId = 0;
        QTB_CALL(spIRepNodeOnProdStrucNode->GetContainerId, &containerId);
        CATUnicodeString usDisplayString;
        QTB_CALL(spIRepNodeOnProdStrucNode->GetDisplayString, &usDisplayString);
        QTB_TRACE("product structure node:[" << usDisplayString << "]: rep node container id:[" << containerId << "]");
    }
    return QTB_SUCCESS;
}

HRESULT QTBELinkToQtbOnASMPRODUCT::GetCorrespondingCatiaFileRepNodes(CATListValCATBaseUnknown_var* pCatiaFileRepNodes)
{
    QTB_SCOPE("QTBELinkToQtbOnASMPRODUCT::GetCorrespondingCatiaFileRepNodes");
    QTB_ASSERT(pCatiaFileRepNodes != NULL);
    pCatiaFileRepNodes->RemoveAll();
    const QTBIPsnNode_var spIPsnNodeOnThis(this);
    QTB_INTERFACE(spIPsnNodeOnThis);
    CATUnicodeString usPsnNodeType;
    CATUnicodeString usFileName;
    QTB_CALL(spIPsnNodeOnThis->GetPsnNodeType, &usPsnNodeType, &usFileName);
    if (usPsnNodeType == usBROKENLINK || usFileName.IsEmpty()) {
        return QTB_SUCCESS;
    }
    CATListValCATBaseUnknown_var ProdStrucRepNodes;
    if (SUCCEEDED(GetCorrespondingProdStrucRepNodes(&ProdStrucRepNodes, NULL))) {
        for (const CATBaseUnknown_var& spProdStrucRepNode : ProdStrucRepNodes) {
            CATListValCATBaseUnknown_var RelatedCatiaFileNodes;
            QTB_CALL(GetRelatedCatiaFileNodes, QTBIRepNode_var(spProdStrucRepNode), usFileName, &RelatedCatiaFileNodes);
            pCatiaFileRepNodes->Append(RelatedCatiaFileNodes);
        }
        return QTB_SUCCESS;
    }
    CATFrmWindow* pFrmWindow = NULL;
    QTB_CALL(QTBVisUtil::GetQtbWindowForHighlight, QTB_ROOT_REP_NODE_FILE, usFileName, &pFrmWindow, pCatiaFileRepNodes);
    return QTB_SUCCESS;
}

HRESULT QTBELinkToQtbOnASMPRODUCT::GetRelatedCatiaFileNodes(const QTBIRepNode_var& spIRepNodeOnProdStrucNode,
                                                            const CATUnicodeString& usFileName,
                                                            CATListValCATBaseUnknown_var* pCatiaFileRepNodes)
{
    QTB_SCOPE("QTBELinkToQtbOnASMPRODUCT::GetRelatedCatiaFileNodes");
    QTB_ASSERT(pCatiaFileRepNodes != NULL);
    pCatiaFileRepNodes->RemoveAll();
    QTB_INTERFACE(spIRepNodeOnProdStrucNode);
    QTBIRepNode_var spIRepNodeOnPartNode = spIRepNodeOnProdStrucNode;
    unsigned char bRepresentsPdmPartPartRelationNode = FALSE;
    QTB_CALL(QTBRepTreeUtil::RepresentsPdmPartPartRelationNode, spIRepNodeOnProdStrucNode,
             &bRepresentsPdmPartPartRelationNode);
    if (bRepresentsPdmPartPartRelationNode != FALSE) {
        CATListValCATBaseUnknown_var ChildObjNodeList;
        QTB_CALL(spIRepNodeOnProdStrucNode->GetDirectChildren, &ChildObjNodeList);
        QTB_ASSERT(ChildObjNodeList.Size() == 1);
        spIRepNodeOnPartNode = ChildObjNodeList[1];
    }
    QTB_INTERFACE(spIRepNodeOnPartNode);
    unsigned char bRepresentsPdmPartNode = FALSE;
    QTB_CALL(QTBRepTreeUtil::RepresentsPdmPartNode, spIRepNodeOnPartNode, &bRepresentsPdmPartNode, NULL);
    QTB_ASSERT(bRepresentsPdmPartNode);

    CATListValCATBaseUnknown_var DirectChildren;
    QTB_CALL(spIRepNodeOnPartNode->GetDirectChildren, &DirectChildren);
    for (const CATBaseUnknown_var& spDirectChild : DirectChildren) {
        const QTBIRepNode_var spIRepNodeOnDirectChild(spDirectChild);
        QTB_INTERFACE(spIRepNodeOnDirectChild);
        // Part-to-part relations lead to child parts, whose files are their own.
        QTB_CALL(QTBRepTreeUtil::RepresentsPdmPartPartRelationNode, spIRepNodeOnDirectChild,
                 &bRepresentsPdmPartPartRelationNode);
        if (bRepresentsPdmPartPartRelationNode != FALSE) {
            continue;
        }
        CATListValCATBaseUnknown_var Descendants;
        QTB_CALL(spIRepNodeOnDirectChild->GetAllChildren, &Descendants);
        for (const CATBaseUnknown_var& spDescendant : Descendants) {
            unsigned char bRepresentsCatiaFileNode = FALSE;
            CATUnicodeString usFileNameOfNode;
            QTB_CALL(QTBRepTreeUtil::RepresentsCatiaFileNode, QTBIRepNode_var(spDescendant), &bRepresentsCatiaFileNode,
                     &usFileNameOfNode, NULL);
            if (bRepresentsCatiaFileNode != FALSE && usFileNameOfNode == usFileName) {
                pCatiaFileRepNodes->Append(spDescendant);
            }
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBELinkToQtbOnASMPRODUCT::HighlightCatiaFileNode(unsigned char bEmptyHighlightFirst,
                                                          unsigned char bActivateWindow,
                                                          CATFrmWindow** ppFrmWindowWhereHighlighted)
{
    QTB_SCOPE("QTBELinkToQtbOnASMPRODUCT::HighlightCatiaFileNode");
    CATListValCATBaseUnknown_var CatiaFileRepNodes;
    if (QTBPdmSessionUtil::UseBomPartStructure() != FALSE) {
        QTB_CALL(GetCorrespondingCatiaFileRepNodes, &CatiaFileRepNodes);
    } else {
        const CATIProduct_var spIProductOnThis(this);
        QTB_INTERFACE(spIProductOnThis);
        CATListValCATUnicodeString InstanceNames;
        CATListValCATUnicodeString FileNames;
        QTBIRepNode_var spIRepNodeOnRoot;
        QTB_CALL(QTBVisUtil::GetPathToRootInstanceNames, spIProductOnThis, &InstanceNames, &FileNames,
                 &spIRepNodeOnRoot);
        QTB_CALL(QTBVisUtil::GetTargetChildFileNodes, spIRepNodeOnRoot, InstanceNames, FileNames, InstanceNames.Size(),
                 &CatiaFileRepNodes);
    }

    CATFrmWindow* pFrmWindowWhereHighlighted = NULL;
    if (CatiaFileRepNodes.Size() > 0) {
        const QTBIRepNode_var spIRepNodeOnFirstCatiaFileNode(CatiaFileRepNodes[1]);
        QTB_INTERFACE(spIRepNodeOnFirstCatiaFileNode);
        QTB_CALL(spIRepNodeOnFirstCatiaFileNode->GetFrmWindowPtr, &pFrmWindowWhereHighlighted);
    }
    if (bActivateWindow != FALSE) {
        if (const HRESULT hr = ActivateWindow(pFrmWindowWhereHighlighted); FAILED(hr)) {
            return hr;
        }
    }
    for (const CATBaseUnknown_var& spCatiaFileRepNode : CatiaFileRepNodes) {
        const QTBIRepNode_var spIRepNodeOnCatiaFileNode(spCatiaFileRepNode);
        QTB_INTERFACE(spIRepNodeOnCatiaFileNode);
        // Unlike product structure nodes, each file node empties the highlighting when the first one shall; meant.
        unsigned char bEmptyHSO = bEmptyHighlightFirst;
        unsigned char bHighlightObjectOfRelation = TRUE;
        QTB_CALL(spIRepNodeOnCatiaFileNode->Highlight, &bEmptyHSO, &bHighlightObjectOfRelation);
        if (ppFrmWindowWhereHighlighted != NULL) {
            *ppFrmWindowWhereHighlighted = pFrmWindowWhereHighlighted;
        }
        int containerId = 0;
        QTB_CALL(spIRepNodeOnCatiaFileNode->GetContainerId, &containerId);
        CATUnicodeString usDisplayString;
        QTB_CALL(spIRepNodeOnCatiaFileNode->GetDisplayString, &usDisplayString);
        QTB_TRACE("CATIA file node:[" << usDisplayString << "]: rep node container id:[" << containerId << "]");
    }
    return QTB_SUCCESS;
}

#include "QTBELinkToPsnOnRepNode.h"

#include <unordered_set>
#include <utility>
#include <vector>

#include "CATDocument.h"
#include "CATDocumentServices.h"
#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATHSO.h"
#include "CATIProduct.h"
#include "CATPathElement.h"
#include "QTBArchiveUtil.h"
#include "QTBCheck.h"
#include "QTBConstants.h"
#include "QTBDocUtil.h"
#include "QTBFileUtil.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPsnNode.h"
#include "QTBIRepNode.h"
#include "QTBInfoUtil.h"
#include "QTBPartInstanceInfo.h"
#include "QTBPdmGraphUtil.h"
#include "QTBPdmSessionUtil.h"
#include "QTBProductCount.h"
#include "QTBPsnTreeUtil.h"
#include "QTBRepTreeUtil.h"
#include "QTBTraceUtil.h"
#include "QTBVisUtil.h"

namespace {

// Up to here looking through the names is as fast as a set of them.
constexpr int FEW_NAMES = 16;

} // namespace

HRESULT QTBELinkToPsnOnRepNode::CorrespondingPsnNodeExists(unsigned char* pbExists,
                                                           CATIProduct_var* pspIProductOnCorrespondingPsnNode)
{
    QTB_SCOPE("QTBELinkToPsnOnRepNode::CorrespondingPsnNodeExists");
    QTB_ASSERT(pbExists != NULL);
    *pbExists = FALSE;
    CATListValCATBaseUnknown_var CorrespondingPsnNodes;
    QTB_CALL(CorrespondingPsnNodesExist, pbExists, &CorrespondingPsnNodes, NULL);
    if (*pbExists == FALSE) {
        return QTB_SUCCESS;
    }
    if (CorrespondingPsnNodes.Size() > 1) {
        QTB_TRACE("QTBELinkToPsnOnRepNode::CorrespondingPsnNodeExists -> " << CorrespondingPsnNodes.Size()
                                                                           << " corresponding PSN nodes exist");
    }
    if (pspIProductOnCorrespondingPsnNode != NULL) {
        *pspIProductOnCorrespondingPsnNode = CorrespondingPsnNodes[1];
        QTB_INTERFACE(*pspIProductOnCorrespondingPsnNode);
    }
    return QTB_SUCCESS;
}

HRESULT QTBELinkToPsnOnRepNode::CorrespondingPsnNodesExist(unsigned char* pbExist,
                                                           CATListValCATBaseUnknown_var* pCorrespondingPsnNodes,
                                                           CATFrmWindow** ppFrmWindow)
{
    QTB_SCOPE("QTBELinkToPsnOnRepNode::CorrespondingPsnNodesExist");
    QTB_ASSERT(pbExist != NULL);
    *pbExist = FALSE;
    if (pCorrespondingPsnNodes != NULL) {
        pCorrespondingPsnNodes->RemoveAll();
    }
    // A window that closes asks this for each of its nodes, and the way to the root is as long as the tree is deep.
    // Without a product document it leads nowhere, and only the debug output tells of it.
    const bool mayCorrespond = QTBDebugUtil::GetDebugStatus() != FALSE || QTBDocUtil::HasPsnDocumentInSession();
    CATIProduct_var spIProductOnDocRootProduct;
    CATListValCATBaseUnknown_var PsnNodes;
    if (QTBPdmSessionUtil::UseBomPartStructure() != FALSE) {
        if (!mayCorrespond || FAILED(FindByPartStructure(&spIProductOnDocRootProduct, &PsnNodes))) {
            return QTB_SUCCESS;
        }
    } else {
        // An empty handle is reported as a condition that does not hold; meant.
        const QTBIRepNode_var spIRepNodeOnThis(this);
        QTB_ASSERT_AS("spIRepNodeOnThis", spIRepNodeOnThis != NULL_var);
        if (!mayCorrespond || FAILED(FindByFileStructure(&spIProductOnDocRootProduct, &PsnNodes))) {
            return QTB_SUCCESS;
        }
    }
    if (PsnNodes.Size() == 0) {
        return QTB_SUCCESS;
    }
    *pbExist = TRUE;
    if (pCorrespondingPsnNodes != NULL) {
        *pCorrespondingPsnNodes = PsnNodes;
    }
    if (ppFrmWindow != NULL && *ppFrmWindow == NULL) {
        CATListPtrCATFrmWindow Windows;
        QTB_CALL(QTBVisUtil::GetPsnWindowsForHighlight, spIProductOnDocRootProduct->GetPartNumber(), &Windows);
        if (Windows.Size() > 0) {
            *ppFrmWindow = Windows[1];
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBELinkToPsnOnRepNode::FindByPartStructure(CATIProduct_var* pspIProductOnDocRootProduct,
                                                    CATListValCATBaseUnknown_var* pPsnNodes)
{
    CATListValQTBPartInstanceInfo PathToRootPartInstanceInfoList;
    CATUnicodeString usFileName;
    const HRESULT hr = GetMostAppropriatePsnDocumentInSession(pspIProductOnDocRootProduct,
                                                              &PathToRootPartInstanceInfoList, &usFileName);
    return FAILED(hr) ? hr
                      : GetTargetPsnNodes(*pspIProductOnDocRootProduct, &PathToRootPartInstanceInfoList, 1, pPsnNodes,
                                          usFileName);
}

HRESULT QTBELinkToPsnOnRepNode::FindByFileStructure(CATIProduct_var* pspIProductOnDocRootProduct,
                                                    CATListValCATBaseUnknown_var* pPsnNodes)
{
    CATListValCATUnicodeString InstanceNames;
    CATListValCATUnicodeString FileNames;
    const HRESULT hr = QTBVisUtil::GetPathToRootInstanceNames(QTBIRepNode_var(this), &InstanceNames, &FileNames,
                                                              pspIProductOnDocRootProduct);
    return FAILED(hr) ? hr
                      : QTBVisUtil::GetTargetChildFileNodes(*pspIProductOnDocRootProduct, InstanceNames, FileNames,
                                                            InstanceNames.Size(), pPsnNodes);
}

HRESULT QTBELinkToPsnOnRepNode::GetMostAppropriatePsnDocumentInSession(
    CATIProduct_var* pspIProductOnDocRootProduct, CATListValQTBPartInstanceInfo* pPathToRootPartInstanceInfoList,
    CATUnicodeString* pusFileName)
{
    QTB_SCOPE("QTBELinkToPsnOnRepNode::GetMostAppropriatePsnDocumentInSession");
    QTB_ASSERT(pspIProductOnDocRootProduct != NULL);
    QTB_ASSERT(pPathToRootPartInstanceInfoList != NULL);
    pPathToRootPartInstanceInfoList->RemoveAll();
    CATListValQTBPartInstanceInfo Path;
    CATUnicodeString usPartNumberAttrValue;
    CATUnicodeString usFileName;
    const bool hasPath = SUCCEEDED(GetPathToRootPartInstanceInfo(&Path, &usPartNumberAttrValue, &usFileName));
    if (pusFileName != NULL) {
        *pusFileName = usFileName;
    }
    if (hasPath) {
        for (int i = 1; i <= Path.Size(); ++i) {
            CATUnicodeString usPartNumber;
            CATUnicodeString usInstanceName;
            QTB_CALL(Path[i].GetInstanceInfo, &usPartNumber, &usInstanceName);
            if (SUCCEEDED(QTBDocUtil::GetPsnDocumentInSession(usPartNumber, pspIProductOnDocRootProduct))) {
                QTB_INTERFACE(*pspIProductOnDocRootProduct);
                for (int j = i; j <= Path.Size(); ++j) {
                    pPathToRootPartInstanceInfoList->Append(Path[j]);
                }
                return QTB_SUCCESS;
            }
        }
        if (SUCCEEDED(QTBDocUtil::GetPsnDocumentInSession(usPartNumberAttrValue, pspIProductOnDocRootProduct))) {
            QTB_INTERFACE(*pspIProductOnDocRootProduct);
            return QTB_SUCCESS;
        }
        return QTB_QUIET_FAILURE;
    }
    if (usFileName.IsEmpty()) {
        return QTB_QUIET_FAILURE;
    }
    CATUnicodeString usPath;
    QTB_CALL(QTBFileUtil::CreateExMapFilePath, usFileName, &usPath);
    CATDocument* pDocument = NULL;
    if (FAILED(CATDocumentServices::GetDocumentInSession(usPath, &pDocument)) || pDocument == NULL ||
        FAILED(QTBDocUtil::GetDocumentRootProduct(*pDocument, pspIProductOnDocRootProduct))) {
        return QTB_QUIET_FAILURE;
    }
    return QTB_SUCCESS;
}

HRESULT QTBELinkToPsnOnRepNode::GetTargetPsnNodes(const CATIProduct_var& spIProductOnCurrentPsnNode,
                                                  const CATListValQTBPartInstanceInfo* pPathToRootPartInstanceInfoList,
                                                  int InstanceInfoIndex,
                                                  CATListValCATBaseUnknown_var* pCorrespondingPsnNodes,
                                                  const CATUnicodeString& usFileName)
{
    QTB_SCOPE("QTBELinkToPsnOnRepNode::GetTargetPsnNodes");
    QTB_ASSERT(pCorrespondingPsnNodes != NULL);
    QTB_INTERFACE(spIProductOnCurrentPsnNode);

    QTBProductCount products;
    // The products whose turn is still to come, the next one last, each with the step that leads on from it.
    std::vector<std::pair<CATIProduct_var, int>> waiting;
    waiting.emplace_back(spIProductOnCurrentPsnNode, InstanceInfoIndex);
    while (!waiting.empty()) {
        const auto [spIProduct, step] = std::move(waiting.back());
        waiting.pop_back();
        QTB_UNWIND_AS("GetTargetPsnNodes", step - InstanceInfoIndex, products.Add());
        HRESULT hr = S_OK;
        if (step <= pPathToRootPartInstanceInfoList->Size()) {
            CATListValCATBaseUnknown_var Children;
            hr = GetChildrenOfStep(spIProduct, *pPathToRootPartInstanceInfoList, step, &Children);
            for (int i = Children.Size(); i >= 1; --i) {
                waiting.emplace_back(CATIProduct_var(Children[i]), step + 1);
            }
        } else {
            hr = AppendTargets(spIProduct, usFileName, pCorrespondingPsnNodes);
        }
        QTB_UNWIND_AS("GetTargetPsnNodes", step - InstanceInfoIndex, hr);
    }
    return QTB_SUCCESS;
}

HRESULT QTBELinkToPsnOnRepNode::GetChildrenOfStep(const CATIProduct_var& spIProductOnCurrentPsnNode,
                                                  const CATListValQTBPartInstanceInfo& PathToRootPartInstanceInfoList,
                                                  int InstanceInfoIndex, CATListValCATBaseUnknown_var* pChildren)
{
    CATUnicodeString usExpectedParentPartNumber;
    CATListValCATUnicodeString InstanceNames;
    QTB_CALL(PathToRootPartInstanceInfoList[InstanceInfoIndex].GetInstanceInfo, &usExpectedParentPartNumber,
             &InstanceNames);
    const CATUnicodeString usCurrentParentPartNumber = spIProductOnCurrentPsnNode->GetPartNumber();
    if (!(usCurrentParentPartNumber == usExpectedParentPartNumber)) {
        // Two blanks behind the unequal sign belong to the text.
        QTB_TRACE("QTBELinkToPsnOnRepNode::GetTargetPsnNodes -> InstanceInfoIndex:"
                  << InstanceInfoIndex << ", usCurrentParentPartNumber:[" << usCurrentParentPartNumber
                  << "] !=  usExpectedParentPartNumber:[" << usExpectedParentPartNumber
                  << "] -> returning unsuccessfully");
        return QTB_QUIET_FAILURE;
    }
    const QTBIPsnNode_var spIPsnNodeOnCurrentPsnNode(spIProductOnCurrentPsnNode);
    QTB_INTERFACE(spIPsnNodeOnCurrentPsnNode);
    CATListValCATBaseUnknown_var DirectChildren;
    QTB_CALL(spIPsnNodeOnCurrentPsnNode->GetDirectChildren, &DirectChildren, TRUE, TRUE, QTB_BOM_TYPE_ALL, FALSE);
    // Most relations place one instance, some thousands of them.
    std::unordered_set<CATUnicodeString> NamesOfMany;
    if (InstanceNames.Size() > FEW_NAMES) {
        NamesOfMany.insert(InstanceNames.begin(), InstanceNames.end());
    }
    for (const CATBaseUnknown_var& spDirectChild : DirectChildren) {
        const CATIProduct_var spIProductOnDirectChild(spDirectChild);
        QTB_INTERFACE(spIProductOnDirectChild);
        CATUnicodeString usInstanceName;
        QTB_CALL(spIProductOnDirectChild->GetPrdInstanceName, &usInstanceName);
        if (NamesOfMany.empty() ? InstanceNames.Locate(usInstanceName) > 0 : NamesOfMany.count(usInstanceName) > 0) {
            pChildren->Append(spDirectChild);
        }
    }
    if (pChildren->Size() == 0) {
        QTB_TRACE("QTBELinkToPsnOnRepNode::GetTargetPsnNodes -> no PSN child nodes found for these instance names:");
        QTBTraceUtil::PrintStringList(InstanceNames);
        return QTB_QUIET_FAILURE;
    }
    return QTB_SUCCESS;
}

HRESULT QTBELinkToPsnOnRepNode::AppendTargets(const CATIProduct_var& spIProductOnCurrentPsnNode,
                                              const CATUnicodeString& usFileName,
                                              CATListValCATBaseUnknown_var* pCorrespondingPsnNodes)
{
    if (usFileName.IsEmpty()) {
        pCorrespondingPsnNodes->Append(spIProductOnCurrentPsnNode);
        return QTB_SUCCESS;
    }
    CATUnicodeString usReferenceFileName;
    QTB_REPORT_CALL(QTBFileUtil::GetReferenceFileName, spIProductOnCurrentPsnNode, &usReferenceFileName, NULL);
    if (usReferenceFileName == usFileName) {
        pCorrespondingPsnNodes->Append(spIProductOnCurrentPsnNode);
        return QTB_SUCCESS;
    }
    const QTBIPsnNode_var spIPsnNodeOnCurrentPsnNode(spIProductOnCurrentPsnNode);
    QTB_INTERFACE(spIPsnNodeOnCurrentPsnNode);
    CATListValCATBaseUnknown_var AllChildren;
    QTB_CALL(spIPsnNodeOnCurrentPsnNode->GetAllChildren, &AllChildren, TRUE, TRUE, QTB_BOM_TYPE_ALL, FALSE, FALSE);
    for (const CATBaseUnknown_var& spChild : AllChildren) {
        try {
            const CATIProduct_var spIProductOnChild(spChild);
            QTB_RAISE_INTERFACE(spIProductOnChild);
            CATUnicodeString usFileNameOfChild;
            QTB_REPORT_CALL(QTBFileUtil::GetReferenceFileName, spIProductOnChild, &usFileNameOfChild, NULL);
            if (!usFileNameOfChild.IsEmpty() && usFileNameOfChild == usFileName) {
                pCorrespondingPsnNodes->Append(spChild);
            }
        } catch (const CATXHException& exception) {
            QTB_TRACE("QTBELinkToPsnOnRepNode::GetTargetPsnNodes -> could not process child node");
            QTB_TRACE(exception.GetError()->GetNLSMessage());
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBELinkToPsnOnRepNode::HighlightPsnNodes(unsigned char bEmptyHighlightFirst,
                                                  const unsigned char& bActivateWindow,
                                                  CATFrmWindow** ppFrmWindowWhereHighlighted)
{
    QTB_SCOPE("QTBELinkToPsnOnRepNode::HighlightPsnNodes");
    unsigned char bExist = FALSE;
    CATListValCATBaseUnknown_var CorrespondingPsnNodes;
    CATFrmWindow* pFrmWindowWhereHighlighted = NULL;
    QTB_CALL(CorrespondingPsnNodesExist, &bExist, &CorrespondingPsnNodes, &pFrmWindowWhereHighlighted);
    QTB_ASSERT(bExist);

    if (bActivateWindow != FALSE) {
        if (pFrmWindowWhereHighlighted != NULL) {
            CATFrmLayout* pFrmLayout = CATFrmLayout::GetCurrentLayout();
            QTB_ASSERT(pFrmLayout != NULL);
            try {
                pFrmLayout->SetCurrentWindow(pFrmWindowWhereHighlighted);
            } catch (const CATXHException& exception) {
                QTB_TRACE("QTBELinkToPsnOnRepNode::HighlightPsnNodes ->" << exception.GetError()->GetNLSMessage());
            }
        } else {
            QTB_TRACE("QTBELinkToPsnOnRepNode::HighlightPsnNodes -> pFrmWindowWhereHighlighted == NULL !");
        }
    }

    CATFrmEditor* pFrmEditor = NULL;
    for (int i = 1; i <= CorrespondingPsnNodes.Size(); ++i) {
        const CATIProduct_var spIProductOnPsnNode(CorrespondingPsnNodes[i]);
        QTB_INTERFACE(spIProductOnPsnNode);
        if (i == 1) {
            QTB_CALL(QTBPsnTreeUtil::GetFrmEditorPtrFromPsnNode, spIProductOnPsnNode, &pFrmEditor);
        }
        QTB_ASSERT(pFrmEditor != NULL);
        CATPathElement* pPathElementOnPsnNode = NULL;
        QTB_CALL(QTBVisUtil::GetPathElementPtrFromNode, spIProductOnPsnNode, pFrmEditor, &pPathElementOnPsnNode);
        QTB_ASSERT(pPathElementOnPsnNode != NULL);
        const CATPathElement_var spPathElementOnPsnNode = CATPathElement_var::Adopt(pPathElementOnPsnNode);
        CATHSO* pHSO = pFrmEditor->GetHSO();
        QTB_ASSERT(pHSO != NULL);
        if (i == 1 && bEmptyHighlightFirst != FALSE) {
            pHSO->Empty();
        }
        pHSO->AddElement(pPathElementOnPsnNode);
    }

    if (ppFrmWindowWhereHighlighted != NULL) {
        *ppFrmWindowWhereHighlighted = pFrmWindowWhereHighlighted;
        if (*ppFrmWindowWhereHighlighted == NULL) {
            QTB_TRACE("QTBELinkToPsnOnRepNode::HighlightPsnNodes -> *ppFrmWindowWhereHighlighted == NULL !");
        }
    }
    return QTB_SUCCESS;
}

HRESULT
QTBELinkToPsnOnRepNode::GetPathToRootPartInstanceInfo(CATListValQTBPartInstanceInfo* pPathToRootPartInstanceInfoList,
                                                      CATUnicodeString* pusPartNumberAttrValue,
                                                      CATUnicodeString* pusFileName)
{
    QTB_SCOPE("QTBELinkToPsnOnRepNode::GetPathToRootPartInstanceInfo");
    QTB_ASSERT(pPathToRootPartInstanceInfoList != NULL);
    QTBIRepNode_var spIRepNode(this);
    QTB_INTERFACE(spIRepNode);

    unsigned char bRepresentsPdmPartPartRelationNode = FALSE;
    QTB_CALL(QTBRepTreeUtil::RepresentsPdmPartPartRelationNode, spIRepNode, &bRepresentsPdmPartPartRelationNode);
    if (bRepresentsPdmPartPartRelationNode != FALSE) {
        CATListValCATBaseUnknown_var DirectChildren;
        QTB_CALL(spIRepNode->GetDirectChildren, &DirectChildren);
        if (DirectChildren.Size() != 1) {
            return QTB_QUIET_FAILURE;
        }
        spIRepNode = DirectChildren[1];
        QTB_INTERFACE(spIRepNode);
    }

    unsigned char bRepresentsPdmPartNode = FALSE;
    QTB_CALL(QTBRepTreeUtil::RepresentsPdmPartNode, spIRepNode, &bRepresentsPdmPartNode, NULL);
    if (bRepresentsPdmPartNode != FALSE) {
        return GetPathToRootPartInstanceInfo(QTBILinkToPsn_var(spIRepNode), pPathToRootPartInstanceInfoList,
                                             pusPartNumberAttrValue);
    }

    unsigned char bRepresentsCatiaFileNode = FALSE;
    QTB_CALL(QTBRepTreeUtil::RepresentsCatiaFileNode, spIRepNode, &bRepresentsCatiaFileNode, NULL, NULL);
    if (bRepresentsCatiaFileNode == FALSE) {
        return QTB_QUIET_FAILURE;
    }
    if (pusFileName != NULL) {
        QTBIPdmNode_var spIPdmNode;
        QTB_CALL(spIRepNode->GetPdmNode, &spIPdmNode, TRUE, NULL);
        const QTBIPdmObjNode_var spIPdmObjNode(spIPdmNode);
        QTB_INTERFACE(spIPdmObjNode);
        CATUnicodeString usFileType;
        QTB_CALL(QTBPdmGraphUtil::GetCatiaFileNodeInformation, spIPdmObjNode, NULL, &usFileType, NULL, NULL);
        if (usFileType == usCMIARCHIVE) {
            QTB_CALL(QTBArchiveUtil::GetRootFileName, spIPdmNode, pusFileName);
        } else {
            QTB_CALL(QTBFileUtil::GetFileName, spIRepNode, pusFileName);
        }
    }
    QTBILinkToPsn_var spILinkToPsnOnPdmPartNode;
    if (FAILED(GetCorrespondingPdmPartNode(QTBILinkToPsn_var(spIRepNode), &spILinkToPsnOnPdmPartNode))) {
        return QTB_QUIET_FAILURE;
    }
    return GetPathToRootPartInstanceInfo(spILinkToPsnOnPdmPartNode, pPathToRootPartInstanceInfoList,
                                         pusPartNumberAttrValue);
}

HRESULT
QTBELinkToPsnOnRepNode::GetPathToRootPartInstanceInfo(const QTBILinkToPsn_var& spILinkToPsnOnPartNode,
                                                      CATListValQTBPartInstanceInfo* pPathToRootPartInstanceInfoList,
                                                      CATUnicodeString* pusPartNumberAttrValue)
{
    QTB_SCOPE("QTBELinkToPsnOnRepNode::GetPathToRootPartInstanceInfo");
    QTB_ASSERT(pPathToRootPartInstanceInfoList);
    QTBIRepNode_var spIRepNodeOnCurrentPart(spILinkToPsnOnPartNode);
    QTB_INTERFACE(spIRepNodeOnCurrentPart);

    if (pusPartNumberAttrValue != NULL) {
        CATUnicodeString usAttrName;
        QTB_CALL(QTBPdmSessionUtil::GetPdmSessionStringAttrValue, QTB_PDM_SESSION_PART_NUMBER_ATTR, &usAttrName, TRUE);
        QTB_REPORT_CALL(spIRepNodeOnCurrentPart->GetPdmNodeAttributeValue, usAttrName, pusPartNumberAttrValue);
        QTB_TRACE("QTBELinkToPsnOnRepNode::GetPathToRootPartInstanceInfo -> "
                  << QTBTraceUtil::GetNodeString(spIRepNodeOnCurrentPart, FALSE) << ": part number attribute:["
                  << usAttrName << "] -> [" << *pusPartNumberAttrValue << "]");
    }

    CATListValQTBPartInstanceInfo StepsUpwards;
    for (;;) {
        QTBIRepNode_var spIRepNodeOnParentRelNode;
        if (FAILED(spIRepNodeOnCurrentPart->GetParent(&spIRepNodeOnParentRelNode))) {
            for (int i = StepsUpwards.Size(); i >= 1; --i) {
                pPathToRootPartInstanceInfoList->Append(StepsUpwards[i]);
            }
            return QTB_SUCCESS;
        }
        unsigned char bRepresentsPdmPartPartRelationNode = FALSE;
        QTB_CALL(QTBRepTreeUtil::RepresentsPdmPartPartRelationNode, spIRepNodeOnParentRelNode,
                 &bRepresentsPdmPartPartRelationNode);
        if (bRepresentsPdmPartPartRelationNode == FALSE) {
            return QTB_QUIET_FAILURE;
        }
        QTBIRepNode_var spIRepNodeOnParentPartObjNode;
        QTB_CALL(spIRepNodeOnParentRelNode->GetParent, &spIRepNodeOnParentPartObjNode);
        unsigned char bRepresentsPdmPartNode = FALSE;
        QTB_CALL(QTBRepTreeUtil::RepresentsPdmPartNode, spIRepNodeOnParentPartObjNode, &bRepresentsPdmPartNode, NULL);
        if (bRepresentsPdmPartNode == FALSE) {
            return QTB_QUIET_FAILURE;
        }

        QTBIPdmNode_var spIPdmNodeOnRelation;
        QTB_CALL(spIRepNodeOnParentRelNode->GetPdmNode, &spIPdmNodeOnRelation, TRUE, NULL);
        unsigned char bIsDefined = FALSE;
        QTB_CALL(QTBInfoUtil::CatiaInstanceNameFromPdmIsDefined, spIPdmNodeOnRelation, &bIsDefined);
        if (bIsDefined == FALSE) {
            return QTB_QUIET_FAILURE;
        }
        CATListValCATUnicodeString InstanceNames;
        QTB_CALL(QTBInfoUtil::GetCatiaInstanceNameListFromPdm, spIPdmNodeOnRelation, &InstanceNames);

        QTBIPdmNode_var spIPdmNodeOnParentPart;
        QTB_CALL(spIRepNodeOnParentPartObjNode->GetPdmNode, &spIPdmNodeOnParentPart, TRUE, NULL);
        QTB_CALL(QTBInfoUtil::CatiaPartNumberFromPdmIsDefined, spIPdmNodeOnParentPart, &bIsDefined);
        if (bIsDefined == FALSE) {
            return QTB_QUIET_FAILURE;
        }
        CATUnicodeString usPartNumber;
        QTB_CALL(QTBInfoUtil::GetCatiaPartNumberFromPdm, spIPdmNodeOnParentPart, &usPartNumber, FALSE, TRUE);

        QTBPartInstanceInfo Step;
        Step.SetInstanceInfo(usPartNumber, InstanceNames);
        StepsUpwards.Append(Step);
        spIRepNodeOnCurrentPart = spIRepNodeOnParentPartObjNode;
    }
}

HRESULT QTBELinkToPsnOnRepNode::GetCorrespondingPdmPartNode(const QTBILinkToPsn_var& spILinkToPsnOnCatiaFileNode,
                                                            QTBILinkToPsn_var* pspILinkToPsnOnPdmPartNode)
{
    QTB_SCOPE("QTBELinkToPsnOnRepNode::GetCorrespondingPdmPartNode");
    QTB_ASSERT(pspILinkToPsnOnPdmPartNode);
    QTBIRepNode_var spIRepNodeOnCurrentNode(spILinkToPsnOnCatiaFileNode);
    QTB_INTERFACE(spIRepNodeOnCurrentNode);
    for (;;) {
        QTBIRepNode_var spIRepNodeOnParent;
        if (FAILED(spIRepNodeOnCurrentNode->GetParent(&spIRepNodeOnParent))) {
            return QTB_QUIET_FAILURE;
        }
        unsigned char bRepresentsPdmPartNode = FALSE;
        QTB_CALL(QTBRepTreeUtil::RepresentsPdmPartNode, spIRepNodeOnParent, &bRepresentsPdmPartNode, NULL);
        if (bRepresentsPdmPartNode != FALSE) {
            *pspILinkToPsnOnPdmPartNode = spIRepNodeOnParent;
            return QTB_SUCCESS;
        }
        spIRepNodeOnCurrentNode = spIRepNodeOnParent;
    }
}

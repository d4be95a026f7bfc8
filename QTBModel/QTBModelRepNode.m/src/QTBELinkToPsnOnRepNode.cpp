#include "QTBELinkToPsnOnRepNode.h"

#include "CATIProduct.h"
#include "QTBArchiveUtil.h"
#include "QTBCheck.h"
#include "QTBConstants.h"
#include "QTBFileUtil.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmObjNode.h"
#include "QTBIRepNode.h"
#include "QTBInfoUtil.h"
#include "QTBPartInstanceInfo.h"
#include "QTBPdmGraphUtil.h"
#include "QTBPdmSessionUtil.h"
#include "QTBRepTreeUtil.h"
#include "QTBTraceUtil.h"

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

// The session holds no products, so none corresponds.
HRESULT QTBELinkToPsnOnRepNode::CorrespondingPsnNodesExist(unsigned char* pbExist, CATListValCATBaseUnknown_var*,
                                                           CATFrmWindow**)
{
    QTB_SCOPE("QTBELinkToPsnOnRepNode::CorrespondingPsnNodesExist");
    QTB_ASSERT(pbExist != NULL);
    *pbExist = FALSE;
    return QTB_SUCCESS;
}

HRESULT QTBELinkToPsnOnRepNode::HighlightPsnNodes(unsigned char, const unsigned char&, CATFrmWindow**)
{
    QTB_SCOPE("QTBELinkToPsnOnRepNode::HighlightPsnNodes");
    unsigned char bExist = FALSE;
    CATListValCATBaseUnknown_var CorrespondingPsnNodes;
    QTB_CALL(CorrespondingPsnNodesExist, &bExist, &CorrespondingPsnNodes, NULL);
    QTB_ASSERT(bExist);
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

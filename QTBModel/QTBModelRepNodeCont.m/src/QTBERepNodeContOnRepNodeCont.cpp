#include "QTBERepNodeContOnRepNodeCont.h"

#include <memory>
#include <unordered_set>
#include <vector>

#include "CATFrmWindow.h"
#include "CATIDOMElement.h"
#include "CATIProduct.h"
#include "CATInstantiateComponent.h"
#include "CATNavigBox.h"
#include "QTBCheck.h"
#include "QTBConstants.h"
#include "QTBGlobVarsUtil.h"
#include "QTBHashTableQtbNodeAttribute.h"
#include "QTBILinkToPsn.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBIRepNode.h"
#include "QTBMessageUtil.h"
#include "QTBPdmGraphUtil.h"
#include "QTBRepTreeUtil.h"
#include "QTBReservedNames.h"
#include "QTBTraceUtil.h"
#include "QTBXmlUtil.h"

namespace {

constexpr int EXPANSION_TABLE_BUCKETS = 100;

int g_NextContainerId = 0;
int g_RepKeyCounter = 0;

// A rep node that somebody still holds may outlive the window.
void ForgetWindow(const QTBIRepNode_var& spIRepNode)
{
    if (spIRepNode != NULL_var) {
        spIRepNode->SetFrmWindowPtr(NULL);
    }
}

} // namespace

QTBERepNodeContOnRepNodeCont::QTBERepNodeContOnRepNodeCont()
    : m_Id(g_NextContainerId), m_ExpansionTable(&QTBHashTableQtbNodeAttribute::Hash,
                                                &QTBHashTableQtbNodeAttribute::Compare, EXPANSION_TABLE_BUCKETS)
{
    if (FAILED(SetLinkToGlobalPdmNodeContainer())) {
        QTB_TRACE("QTBERepNodeContOnRepNodeCont::QTBERepNodeContOnRepNodeCont -> SetLinkToGlobalPdmNodeContainer "
                  "FAILED");
    }
    ++g_NextContainerId;
    QTB_TRACE("created rep node container [" << m_Id << "]");
}

QTBERepNodeContOnRepNodeCont::~QTBERepNodeContOnRepNodeCont()
{
    QTB_TRACE("deleted rep node container [" << m_Id << "]");
}

HRESULT QTBERepNodeContOnRepNodeCont::SetLinkToGlobalPdmNodeContainer()
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::SetLinkToGlobalPdmNodeContainer");
    QTB_CALL(QTBGlobVarsUtil::GetGlobalPdmNodeContainer, &m_spIPdmNodeCont);
    CATBaseUnknown_var spBaseUnknownOnThis(this);
    QTB_INTERFACE(spBaseUnknownOnThis);
    QTB_CALL(m_spIPdmNodeCont->AddRepNodeContainer, &spBaseUnknownOnThis);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::RemoveLinkToGlobalPdmNodeContainer()
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::RemoveLinkToGlobalPdmNodeContainer");
    CATBaseUnknown_var spBaseUnknownOnThis(this);
    QTB_INTERFACE(spBaseUnknownOnThis);
    QTB_CALL(m_spIPdmNodeCont->RemoveRepNodeContainer, &spBaseUnknownOnThis);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::GetId(int* pId)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::GetId");
    QTB_ASSERT(pId != NULL);
    *pId = m_Id;
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::SetQtbFrmWindowPtr(CATFrmWindow* pFrmNavigGraphicWindow)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::SetQtbFrmWindowPtr");
    QTB_ASSERT(pFrmNavigGraphicWindow != NULL);
    m_pQtbFrmNavigGraphicWindow = pFrmNavigGraphicWindow;
    QTB_CALL(SetFrmWindowPtrToAllContainedRepNodes);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::SetQtbFrmWindowPtrToNull()
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::SetQtbFrmWindowPtrToNull");
    m_pQtbFrmNavigGraphicWindow = NULL;
    QTB_CALL(SetFrmWindowPtrToAllContainedRepNodes);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::GetQtbFrmWindowPtr(CATFrmWindow** ppFrmNavigGraphicWindow)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::GetQtbFrmWindowPtr");
    QTB_ASSERT(ppFrmNavigGraphicWindow != NULL);
    *ppFrmNavigGraphicWindow = m_pQtbFrmNavigGraphicWindow;
    QTB_ASSERT(*ppFrmNavigGraphicWindow != NULL);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::QtbFrmWindowPtrIsSet(unsigned char* pbFrmWindowPtrIsSet)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::QtbFrmWindowPtrIsSet");
    QTB_ASSERT(pbFrmWindowPtrIsSet != NULL);
    *pbFrmWindowPtrIsSet = m_pQtbFrmNavigGraphicWindow != NULL ? TRUE : FALSE;
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::SetFrmWindowPtrToAllContainedRepNodes()
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::SetFrmWindowPtrToAllContainedRepNodes");
    for (const CATListValCATBaseUnknown_var& bucket : m_NodeBuckets) {
        for (const CATBaseUnknown_var& spNode : bucket) {
            const QTBIRepNode_var spIRepNode(spNode);
            QTB_INTERFACE(spIRepNode);
            QTB_CALL(spIRepNode->SetFrmWindowPtr, m_pQtbFrmNavigGraphicWindow);
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::UpdateQtbWindow(unsigned char* pbFlag1, unsigned char* pbFlag2)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::UpdateQtbWindow");
    if (m_pQtbFrmNavigGraphicWindow != NULL) {
        CATFrmWindow* pFrmNavigGraphicWindow = NULL;
        QTB_CALL(GetQtbFrmWindowPtr, &pFrmNavigGraphicWindow);
        QTB_CALL(QTBRepTreeUtil::UpdateQtbWindow, pFrmNavigGraphicWindow, *pbFlag1, *pbFlag2);
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::CreateRepNodeBase(const CATUnicodeString& usKey,
                                                        CATBaseUnknown_var* pspBaseUnknownOnRepNode)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::CreateRepNodeBase");
    CATBaseUnknown* pBaseUnknownOnNode = NULL;
    QTB_CALL(::CATInstantiateComponent, "QTBRepNode", CLSID_CATBaseUnknown,
             reinterpret_cast<void**>(&pBaseUnknownOnNode));
    const CATBaseUnknown_var spBaseUnknownOnNode = CATBaseUnknown_var::Adopt(pBaseUnknownOnNode);

    const QTBINodeAttributes_var spINodeAttributesOnNode(spBaseUnknownOnNode);
    QTB_INTERFACE(spINodeAttributesOnNode);
    QTB_CALL(spINodeAttributesOnNode->SetKey, usKey);

    const QTBIRepNode_var spIRepNodeOnNode(spBaseUnknownOnNode);
    QTB_INTERFACE(spIRepNodeOnNode);
    const QTBIRepNodeCont_var spIRepNodeContOnThis(this);
    QTB_INTERFACE(spIRepNodeContOnThis);
    QTB_CALL(spIRepNodeOnNode->SetRepNodeContainer, spIRepNodeContOnThis);
    QTB_CALL(spIRepNodeOnNode->SetFrmWindowPtr, m_pQtbFrmNavigGraphicWindow);

    CATIDOMElement_var spIDOMElementOnXmlDocumentRoot;
    QTB_CALL(GetXmlDocumentRootElement, &spIDOMElementOnXmlDocumentRoot);
    CATIDOMElement_var spIDOMElementOnNode;
    QTB_CALL(QTBXmlUtil::CreateChildNode, "o", "", &spIDOMElementOnXmlDocumentRoot, &spIDOMElementOnNode);
    QTB_CALL(spINodeAttributesOnNode->SetXmlElement, spIDOMElementOnNode);

    *pspBaseUnknownOnRepNode = spBaseUnknownOnNode;
    QTB_INTERFACE(*pspBaseUnknownOnRepNode);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::CreateRepNode(const QTBIRepNode_var& spIRepNodeOnLeft,
                                                    const QTBIPdmNode_var& spIPdmNode,
                                                    QTBIRepNode_var* pspIRepNodeOnNewChild,
                                                    const QTBNodeRelationInfo& NodeRelationInfo,
                                                    CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                                                    CATListValCATBaseUnknown_var* pListOfObjRepNodes)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::CreateRepNode");
    QTB_ASSERT(pspIRepNodeOnNewChild != NULL);
    const QTBINodeAttributes_var spINodeAttributesOnPdmNode(spIPdmNode);
    QTB_INTERFACE(spINodeAttributesOnPdmNode);
    CATUnicodeString usPdmKey;
    QTB_CALL(spINodeAttributesOnPdmNode->GetKey, &usPdmKey);

    ++g_RepKeyCounter;
    CATUnicodeString usCounter;
    usCounter.BuildFromNum(g_RepKeyCounter);
    const CATUnicodeString usRepKeyName = usPdmKey + "-Rep-" + usCounter;
    QTB_ASSERT(NodeExists(usRepKeyName) == FALSE);

    CATBaseUnknown_var spBaseUnknownOnNewChild;
    QTB_CALL(CreateRepNodeBase, usRepKeyName, &spBaseUnknownOnNewChild);
    FileNode(spBaseUnknownOnNewChild);

    const QTBINodeRelations_var spINodeRelationsOnPdmNode(spIPdmNode);
    QTB_INTERFACE(spINodeRelationsOnPdmNode);
    QTB_CALL(spINodeRelationsOnPdmNode->AddRightNode, QTBReservedNames::PDM_TO_REP, spBaseUnknownOnNewChild, 1, TRUE);

    const QTBIRepNode_var spIRepNodeOnNewChild(spBaseUnknownOnNewChild);
    QTB_INTERFACE(spIRepNodeOnNewChild);
    if (spIRepNodeOnLeft != NULL_var) {
        QTBPlaceToAdd placeToAdd = QTB_PLACE_TO_ADD_END;
        QTB_CALL(QTBGlobVarsUtil::GetAddNewNodeRelationsAt, &placeToAdd);
        const QTBINodeRelations_var spINodeRelationsOnLeftRepNode(spIRepNodeOnLeft);
        QTB_INTERFACE(spINodeRelationsOnLeftRepNode);
        QTB_CALL(spINodeRelationsOnLeftRepNode->AddRightNode, QTBReservedNames::REP_TO_REP, spBaseUnknownOnNewChild,
                 placeToAdd, TRUE);
        QTB_CALL(spIRepNodeOnNewChild->SetPdmRelationToLeftNode, NodeRelationInfo);
    }

    unsigned char bRepresentsPdmRelNode = FALSE;
    QTB_CALL(spIRepNodeOnNewChild->RepresentsPdmRelNode, &bRepresentsPdmRelNode, NULL);
    if (bRepresentsPdmRelNode != FALSE) {
        QTB_CALL(spIRepNodeOnNewChild->SetSinglePdmRelationToBeDisplayed, NodeRelationInfo);
    }

    *pspIRepNodeOnNewChild = spIRepNodeOnNewChild;
    if (pListOfRelRepNodes != NULL && QTBIPdmRelNode_var(spIPdmNode) != NULL_var) {
        pListOfRelRepNodes->Append(spBaseUnknownOnNewChild);
    }
    if (pListOfObjRepNodes != NULL && QTBIPdmObjNode_var(spIPdmNode) != NULL_var) {
        pListOfObjRepNodes->Append(spBaseUnknownOnNewChild);
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::RemoveRepNodeFromContainer(QTBIRepNode_var* pspIRepNode,
                                                                 unsigned char* pbInformUser)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::RemoveRepNodeFromContainer");
    QTB_ASSERT(pspIRepNode != NULL);
    QTB_INTERFACE(*pspIRepNode);
    QTBIRepNodeCont_var spIRepNodeCont;
    unsigned char bFrmWindowPtrIsSet = FALSE;
    if (SUCCEEDED((*pspIRepNode)->GetRepNodeContainer(&spIRepNodeCont)) &&
        SUCCEEDED(spIRepNodeCont->QtbFrmWindowPtrIsSet(&bFrmWindowPtrIsSet)) && bFrmWindowPtrIsSet != FALSE) {
        if (const HRESULT hr = InformAboutProductsOf(*pspIRepNode, pbInformUser); FAILED(hr)) {
            return hr;
        }
    }

    // The answer does not matter, but a node that cannot give it is not removed.
    unsigned char bIsRepDefaultNode = FALSE;
    QTB_CALL((*pspIRepNode)->IsRepDefaultNode, &bIsRepDefaultNode);
    CATBaseUnknown_var spBaseUnknownOnRepNode(*pspIRepNode);
    QTB_CALL(RemoveNodeFromContainer, &spBaseUnknownOnRepNode, NULL);
    ForgetWindow(spBaseUnknownOnRepNode);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::InformAboutProductsOf(const QTBIRepNode_var& spIRepNode,
                                                            unsigned char* pbInformUser)
{
    const QTBILinkToPsn_var spILinkToPsnOnRepNode(spIRepNode);
    QTB_INTERFACE(spILinkToPsnOnRepNode);
    unsigned char bExist = FALSE;
    CATListValCATBaseUnknown_var CorrespondingPsnNodes;
    QTB_CALL(spILinkToPsnOnRepNode->CorrespondingPsnNodesExist, &bExist, &CorrespondingPsnNodes, NULL);
    if (bExist == FALSE) {
        return QTB_SUCCESS;
    }
    CATUnicodeString usSynchronizeContext;
    QTB_CALL(QTBGlobVarsUtil::GetSynchronizeContext, &usSynchronizeContext);
    for (const CATBaseUnknown_var& spCorrespondingPsnNode : CorrespondingPsnNodes) {
        const CATIProduct_var spIProductOnCorrespondingPsnNode(spCorrespondingPsnNode);
        QTB_INTERFACE(spIProductOnCorrespondingPsnNode);
        // No context equals both texts, so the first half always holds; the message depends on *pbInformUser alone, and
        // commands rely on it.
        if ((!(usSynchronizeContext == usLOAD_STRUCTURE) || !(usSynchronizeContext == usOPEN_SELECTED_BNDBOX)) &&
            *pbInformUser != FALSE) {
            CATError* pMessage =
                QTBMessageUtil::RepNodeDeleted(QTBTraceUtil::GetNodeString(spIRepNode, FALSE),
                                               QTBTraceUtil::GetNodeString(spCorrespondingPsnNode, FALSE));
            if (FAILED(QTBGlobVarsUtil::AddMessageToInfoListDialog(pMessage))) {
                QTB_TRACE("QTBERepNodeContOnRepNodeCont::RemoveRepNodeFromContainer -> "
                          "QTBGlobVarsUtil::AddMessageToInfoListDialog !");
            }
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::RecursiveRemoveRepTree(const QTBIRepNode_var& spIRepNode,
                                                             unsigned char* pbInformUser)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::RecursiveRemoveRepTree");
    QTB_ASSERT_AS("NULL_var != *pspIRepNode", spIRepNode != NULL_var);

    // Children go before their parent.
    struct Level
    {
        QTBIRepNode_var spIRepNode;
        CATListValCATBaseUnknown_var DirectChildren;
        int position = 0;
    };
    std::vector<Level> levels;
    const auto enter = [&](const QTBIRepNode_var& spIRepNodeOnLevel) -> HRESULT {
        levels.push_back({spIRepNodeOnLevel, {}, 0});
        QTB_RESULT_AS("GetDirectChildren", spIRepNodeOnLevel->GetDirectChildren(&levels.back().DirectChildren));
        return QTB_SUCCESS;
    };
    const auto leave = [&](QTBIRepNode_var& spIRepNodeOnLevel) -> HRESULT {
        QTBIPdmNode_var spIPdmNode;
        if (SUCCEEDED(spIRepNodeOnLevel->GetPdmNode(&spIPdmNode, FALSE, NULL))) {
            QTB_CALL(RemoveRepNodeFromContainer, &spIRepNodeOnLevel, pbInformUser);
        }
        return QTB_SUCCESS;
    };

    HRESULT hr = enter(spIRepNode);
    while (!levels.empty()) {
        QTB_UNWIND_AS("RecursiveRemoveRepTree", static_cast<int>(levels.size()) - 1, hr);
        Level& level = levels.back();
        if (++level.position <= level.DirectChildren.Size()) {
            const QTBIRepNode_var spIRepNodeOnRightNode(level.DirectChildren[level.position]);
            const auto enterChild = [&]() -> HRESULT {
                QTB_INTERFACE(spIRepNodeOnRightNode);
                return enter(spIRepNodeOnRightNode);
            };
            hr = enterChild();
        } else {
            hr = leave(level.spIRepNode);
            if (SUCCEEDED(hr)) {
                levels.pop_back();
            }
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::Clear(unsigned char* pbUpdateAfterwards)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::Clear");
    CATListValCATBaseUnknown_var RootNodes;
    unsigned char bFalse = FALSE;
    QTB_CALL(GetRepRootNodes, &RootNodes, &bFalse, &bFalse);
    for (const CATBaseUnknown_var& spRootNode : RootNodes) {
        const QTBIRepNode_var spIRepNodeOnRoot(spRootNode);
        QTB_INTERFACE(spIRepNodeOnRoot);
        QTB_CALL(RecursiveRemoveRepTree, spIRepNodeOnRoot, &bFalse);
    }
    if (*pbUpdateAfterwards != FALSE) {
        unsigned char bTrue = TRUE;
        QTB_CALL(UpdateAllRepTrees, &bTrue, &bFalse, CATListValQTBNodeRelationInfo(), NULL, NULL, &bTrue);
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::Cleanup()
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::Cleanup");
    unsigned char bUpdateAfterwards = FALSE;
    QTB_CALL(Clear, &bUpdateAfterwards);
    QTB_CALL(RemoveLinkToGlobalPdmNodeContainer);
    unsigned char bFrmWindowPtrIsSet = FALSE;
    QTB_CALL(QtbFrmWindowPtrIsSet, &bFrmWindowPtrIsSet);
    if (bFrmWindowPtrIsSet != FALSE) {
        QTB_CALL(SetQtbFrmWindowPtrToNull);
    }
    // Trees that the window did not show and rep nodes that lost their PDM node are left. They refer to the container,
    // so that neither would ever end.
    CATListValCATBaseUnknown_var RemainingNodes;
    QTB_CALL(GetAllRepNodes, &RemainingNodes);
    for (const CATBaseUnknown_var& spRemainingNode : RemainingNodes) {
        CATBaseUnknown_var spBaseUnknownOnRepNode(spRemainingNode);
        QTB_CALL(RemoveNodeFromContainer, &spBaseUnknownOnRepNode, NULL);
        ForgetWindow(spBaseUnknownOnRepNode);
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::GetAllRepNodes(CATListValCATBaseUnknown_var* pListOfNodes)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::GetAllRepNodes");
    QTB_ASSERT(pListOfNodes != NULL);
    pListOfNodes->RemoveAll();
    for (const CATListValCATBaseUnknown_var& bucket : m_NodeBuckets) {
        pListOfNodes->Append(bucket);
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::GetRepNodeByKey(const CATUnicodeString& usKey, QTBIRepNode_var* pspIRepNode,
                                                      unsigned char* pbNodeExists)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::GetRepNodeByKey");
    QTB_ASSERT(pspIRepNode != NULL);
    *pspIRepNode = NULL_var;
    CATBaseUnknown_var spBaseUnknownOnNode;
    QTB_CALL(GetNodeByKey, usKey, &spBaseUnknownOnNode, pbNodeExists);
    if (*pbNodeExists != FALSE) {
        *pspIRepNode = spBaseUnknownOnNode;
        QTB_INTERFACE(*pspIRepNode);
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::GetRepRootNodes(CATListValCATBaseUnknown_var* pListOfNodes,
                                                      unsigned char* pbOnlyAffectedByCurrentAction,
                                                      unsigned char* pbIgnoreWindow)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::GetRepRootNodes");
    QTB_ASSERT(pListOfNodes != NULL);
    pListOfNodes->RemoveAll();
    unsigned char bValid = FALSE;
    QTB_CALL(QtbWindowContainsValidNodes, m_pQtbFrmNavigGraphicWindow, &bValid);

    CATListValCATBaseUnknown_var Candidates;
    if (bValid != FALSE && *pbIgnoreWindow == FALSE) {
        QTB_ASSERT(m_pQtbFrmNavigGraphicWindow);
        CATNavigBox* pNavigBox = m_pQtbFrmNavigGraphicWindow->GetNavigBox();
        QTB_ASSERT(pNavigBox != NULL);
        const std::unique_ptr<CATListValCATBaseUnknown_var> pRoots(pNavigBox->GetAllRoots());
        Candidates = *pRoots;
    } else {
        for (const CATListValCATBaseUnknown_var& bucket : m_NodeBuckets) {
            for (const CATBaseUnknown_var& spNode : bucket) {
                const QTBIRepNode_var spIRepNodeOnNode(spNode);
                QTB_ASSERT(spIRepNodeOnNode != NULL_var);
                unsigned char bIsRepRootNode = FALSE;
                QTB_CALL(spIRepNodeOnNode->IsRepRootNode, &bIsRepRootNode);
                if (bIsRepRootNode != FALSE) {
                    Candidates.Append(spNode);
                }
            }
        }
    }
    if (*pbOnlyAffectedByCurrentAction == FALSE) {
        *pListOfNodes = Candidates;
        return QTB_SUCCESS;
    }
    for (const CATBaseUnknown_var& spNode : Candidates) {
        const QTBIRepNode_var spIRepNodeOnNode(spNode);
        QTB_INTERFACE(spIRepNodeOnNode);
        unsigned char bIsAffected = FALSE;
        QTB_CALL(spIRepNodeOnNode->PdmNodeIsIsAffectedByCurrentAction, &bIsAffected);
        if (bIsAffected != FALSE) {
            pListOfNodes->Append(spNode);
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::QtbWindowContainsValidNodes(CATFrmWindow* pFrmWindow,
                                                                  unsigned char* pbContainsValidNodes)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::QtbWindowContainsValidNodes");
    QTB_ASSERT(pbContainsValidNodes != NULL);
    *pbContainsValidNodes = FALSE;
    CATNavigBox* pNavigBox = pFrmWindow != NULL ? pFrmWindow->GetNavigBox() : NULL;
    if (pNavigBox == NULL) {
        return QTB_SUCCESS;
    }
    const std::unique_ptr<CATListValCATBaseUnknown_var> pRoots(pNavigBox->GetAllRoots());
    if (pRoots->Size() == 0) {
        return QTB_SUCCESS;
    }
    if (pRoots->Size() == 1) {
        const QTBIRepNode_var spIRepNodeOnRootNode((*pRoots)[1]);
        if (spIRepNodeOnRootNode == NULL_var) {
            return QTB_SUCCESS;
        }
        unsigned char bIsRepDefaultNode = FALSE;
        QTB_CALL(spIRepNodeOnRootNode->IsRepDefaultNode, &bIsRepDefaultNode);
        if (bIsRepDefaultNode != FALSE) {
            return QTB_SUCCESS;
        }
    }
    for (const CATBaseUnknown_var& spRootNode : *pRoots) {
        const QTBIRepNode_var spIRepNodeOnRootNode(spRootNode);
        QTBIPdmNode_var spIPdmNode;
        if (spIRepNodeOnRootNode == NULL_var || FAILED(spIRepNodeOnRootNode->GetPdmNode(&spIPdmNode, FALSE, NULL))) {
            return QTB_SUCCESS;
        }
    }
    *pbContainsValidNodes = TRUE;
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::AddAsRepRootNodes(const CATListValCATBaseUnknown_var& Nodes,
                                                        unsigned char* pbClear, unsigned char* pbUsePdmNodes,
                                                        CATListValCATBaseUnknown_var* pNewRoots,
                                                        CATListValCATBaseUnknown_var* pSourceNodes)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::AddAsRepRootNodes");
    if (pNewRoots != NULL) {
        pNewRoots->RemoveAll();
    }
    if (pSourceNodes != NULL) {
        pSourceNodes->RemoveAll();
    }
    if (*pbClear != FALSE) {
        unsigned char bUpdateAfterwards = FALSE;
        QTB_CALL(Clear, &bUpdateAfterwards);
    }
    const QTBIRepNode_var spINoParent;

    if (*pbUsePdmNodes != FALSE) {
        CATListValCATBaseUnknown_var PdmObjNodes;
        CATListValCATBaseUnknown_var PdmRelNodes;
        QTB_CALL(GetPdmNodesFromRepNodeList, Nodes, &PdmObjNodes, &PdmRelNodes);
        for (const CATBaseUnknown_var& spPdmObjNode : PdmObjNodes) {
            const QTBIPdmNode_var spIPdmNode(spPdmObjNode);
            QTB_INTERFACE(spIPdmNode);
            QTBIRepNode_var spIRepNodeOnNewRoot;
            QTB_CALL(CreateRepNode, spINoParent, spIPdmNode, &spIRepNodeOnNewRoot, QTBNodeRelationInfo(), NULL, NULL);
        }
        return QTB_SUCCESS;
    }

    for (const CATBaseUnknown_var& spNode : Nodes) {
        const QTBIRepNode_var spIRepNode(spNode);
        QTB_INTERFACE(spIRepNode);
        unsigned char bRepresentsPdmObjNode = FALSE;
        QTB_CALL(spIRepNode->RepresentsPdmObjNode, &bRepresentsPdmObjNode);
        if (bRepresentsPdmObjNode == FALSE) {
            continue;
        }
        QTBIPdmNode_var spIPdmNode;
        QTB_CALL(spIRepNode->GetPdmNode, &spIPdmNode, TRUE, NULL);
        QTBIRepNode_var spIRepNodeOnNewRoot;
        QTB_CALL(CreateRepNode, spINoParent, spIPdmNode, &spIRepNodeOnNewRoot, QTBNodeRelationInfo(), NULL, NULL);
        if (pNewRoots != NULL) {
            pNewRoots->Append(spIRepNodeOnNewRoot);
        }
        if (pSourceNodes != NULL) {
            pSourceNodes->Append(spNode);
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::GetPdmNodesFromRepNodeList(const CATListValCATBaseUnknown_var& Nodes,
                                                                 CATListValCATBaseUnknown_var* pPdmObjNodes,
                                                                 CATListValCATBaseUnknown_var* pPdmRelNodes)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::GetPdmNodesFromRepNodeList");
    QTB_ASSERT(pPdmObjNodes != NULL);
    QTB_ASSERT(pPdmRelNodes != NULL);
    pPdmObjNodes->RemoveAll();
    pPdmRelNodes->RemoveAll();
    std::unordered_set<const CATBaseUnknown*> PdmNodes;
    for (const CATBaseUnknown_var& spNode : Nodes) {
        const QTBIRepNode_var spIRepNode(spNode);
        QTB_INTERFACE(spIRepNode);
        QTBIPdmNode_var spIPdmNode;
        QTB_CALL(spIRepNode->GetPdmNode, &spIPdmNode, TRUE, NULL);
        if (QTBIPdmObjNode_var(spIPdmNode) != NULL_var) {
            QTB_CALL(QTBPdmGraphUtil::SetAdd, spIPdmNode, pPdmObjNodes, &PdmNodes);
        } else if (QTBIPdmRelNode_var(spIPdmNode) != NULL_var) {
            QTB_CALL(QTBPdmGraphUtil::SetAdd, spIPdmNode, pPdmRelNodes, &PdmNodes);
        }
    }
    return QTB_SUCCESS;
}

// Keys are unique in the container, so two handles with the same key are the same rep node. A part that many places use
// has many rep nodes, an assembly many children: the search starts from the shorter list. When several children show
// the PDM node, a relation that superseded its neighbour, the one that was linked to it last is the answer.
HRESULT QTBERepNodeContOnRepNodeCont::FindCorrespondingRepNode(const QTBIRepNode_var& spIRepNodeOnParent,
                                                               const QTBIPdmNode_var& spIPdmNodeOnChild,
                                                               QTBIRepNode_var* pspIRepNode)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::FindCorrespondingRepNode");
    *pspIRepNode = NULL_var;
    // Those of all windows: asking each of them for its container would take too long for a part that many places use.
    CATListValCATBaseUnknown_var RepNodes;
    QTB_CALL(spIPdmNodeOnChild->GetRepNodes, &RepNodes, NULL_var);
    if (RepNodes.Size() == 0) {
        return QTB_SUCCESS;
    }
    CATListValCATBaseUnknown_var DirectChildren;
    QTB_CALL(spIRepNodeOnParent->GetDirectChildren, &DirectChildren);

    if (DirectChildren.Size() < RepNodes.Size()) {
        const CATBaseUnknown_var spPdmNodeOnChild(spIPdmNodeOnChild);
        int shown = 0;
        for (int i = DirectChildren.Size(); i >= 1; --i) {
            const QTBIRepNode_var spIRepNodeFromParent(DirectChildren[i]);
            QTB_INTERFACE(spIRepNodeFromParent);
            const QTBINodeAttributes_var spIAttributeFromParent(DirectChildren[i]);
            QTB_INTERFACE(spIAttributeFromParent);
            const QTBINodeRelations_var spINodeRelationsFromParent(DirectChildren[i]);
            unsigned char bShowsPdmNode = FALSE;
            spINodeRelationsFromParent->LeftNodeExists(QTBReservedNames::PDM_TO_REP, spPdmNodeOnChild, &bShowsPdmNode);
            if (bShowsPdmNode != FALSE && IsContainedHere(spIRepNodeFromParent)) {
                *pspIRepNode = spIRepNodeFromParent;
                ++shown;
            }
        }
        if (shown <= 1) {
            return QTB_SUCCESS;
        }
    }

    const QTBINodeRelations_var spINodeRelationsOnParent(spIRepNodeOnParent);
    for (int i = RepNodes.Size(); i >= 1; --i) {
        const QTBIRepNode_var spIRepNodeFromPdmNode(RepNodes[i]);
        QTB_INTERFACE(spIRepNodeFromPdmNode);
        const QTBINodeAttributes_var spIAttributeFromPdmNode(RepNodes[i]);
        QTB_INTERFACE(spIAttributeFromPdmNode);
        unsigned char bIsChild = FALSE;
        spINodeRelationsOnParent->RightNodeExists(QTBReservedNames::REP_TO_REP, RepNodes[i], &bIsChild);
        if (bIsChild != FALSE && IsContainedHere(spIRepNodeFromPdmNode)) {
            *pspIRepNode = spIRepNodeFromPdmNode;
            break;
        }
    }
    return QTB_SUCCESS;
}

bool QTBERepNodeContOnRepNodeCont::IsContainedHere(const QTBIRepNode_var& spIRepNode)
{
    QTBIRepNodeCont_var spIRepNodeCont;
    return SUCCEEDED(spIRepNode->GetRepNodeContainer(&spIRepNodeCont)) && spIRepNodeCont.GetImpl() == GetImpl();
}

HRESULT QTBERepNodeContOnRepNodeCont::CreateRelation(const CATUnicodeString& usRelationClass,
                                                     const QTBIRepNode_var& spIRepNodeOnLeftObject,
                                                     const QTBIRepNode_var& spIRepNodeOnRightObject,
                                                     const CATUnicodeString& usRelationXml)
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::CreateRelation");
    QTBIPdmNode_var spIPdmNodeOnLeftObject;
    QTB_CALL(spIRepNodeOnLeftObject->GetPdmNode, &spIPdmNodeOnLeftObject, TRUE, NULL);
    const QTBIPdmObjNode_var spIPdmObjNodeOnLeftObject(spIPdmNodeOnLeftObject);
    QTB_INTERFACE(spIPdmObjNodeOnLeftObject);
    QTBIPdmNode_var spIPdmNodeOnRightObject;
    QTB_CALL(spIRepNodeOnRightObject->GetPdmNode, &spIPdmNodeOnRightObject, TRUE, NULL);
    const QTBIPdmObjNode_var spIPdmObjNodeOnRightObject(spIPdmNodeOnRightObject);
    QTB_INTERFACE(spIPdmObjNodeOnRightObject);

    CATUnicodeString usKeyOfRightObject;
    QTB_CALL(spIRepNodeOnRightObject->GetPdmNodeKey, &usKeyOfRightObject);
    QTBIPdmNode_var spIPdmNode;
    unsigned char bPdmNodeExists = FALSE;
    QTB_CALL(m_spIPdmNodeCont->GetPdmNodeByKey, usKeyOfRightObject, &spIPdmNode, &bPdmNodeExists);
    QTB_ASSERT(bPdmNodeExists);

    QTB_CALL(m_spIPdmNodeCont->CreateRelationInPdmGraph, usRelationClass, spIPdmObjNodeOnLeftObject,
             spIPdmObjNodeOnRightObject, usRelationXml);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeContOnRepNodeCont::CreateDefaultRootNode()
{
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::CreateDefaultRootNode");
    CATListValCATBaseUnknown_var PdmRootNodes;
    QTB_CALL(m_spIPdmNodeCont->GetPdmRootNodes, &PdmRootNodes);
    for (const CATBaseUnknown_var& spPdmRootNode : PdmRootNodes) {
        const QTBINodeAttributes_var spINodeAttributesOnPdmRootNode(spPdmRootNode);
        QTB_INTERFACE(spINodeAttributesOnPdmRootNode);
        CATUnicodeString usKey;
        QTB_CALL(spINodeAttributesOnPdmRootNode->GetKey, &usKey);
        if (usKey == QTBReservedNames::DEFAULT_ROOT_NODE) {
            const QTBIPdmNode_var spIPdmNodeOnPdmRoot(spPdmRootNode);
            QTB_INTERFACE(spIPdmNodeOnPdmRoot);
            unsigned char bTrue = TRUE;
            QTB_CALL(UpdateRepTrees, spIPdmNodeOnPdmRoot, CATListValQTBNodeRelationInfo(), &bTrue, NULL, NULL, &bTrue);
        }
    }
    unsigned char bFalse = FALSE;
    QTB_CALL(UpdateQtbWindow, &bFalse, &bFalse);
    return QTB_SUCCESS;
}

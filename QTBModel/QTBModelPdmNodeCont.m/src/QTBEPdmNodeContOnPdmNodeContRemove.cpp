#include <algorithm>

#include "CATDOMBulkRelease.h"
#include "QTBCheck.h"
#include "QTBCommUtil.h"
#include "QTBEPdmNodeContOnPdmNodeCont.h"
#include "QTBICommunicationServices.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"
#include "QTBLoadManager.h"
#include "QTBNodeRelationInfo.h"
#include "QTBTraceUtil.h"

HRESULT QTBEPdmNodeContOnPdmNodeCont::RemoveNodeFromPdmGraph(QTBIPdmNode_var* pspIPdmNode,
                                                             const unsigned char& bRemoveFromPdmSystem,
                                                             const unsigned char& bKeepNodeInContainer,
                                                             const unsigned char& bInformUser,
                                                             const CATUnicodeString* pusDeleteOption)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::RemoveNodeFromPdmGraph");
    QTB_ASSERT(pspIPdmNode != NULL);
    QTB_INTERFACE(*pspIPdmNode);
    // A node that the PDM system has deleted leaves the store whatever the caller wants to keep.
    unsigned char bKeepNode = bKeepNodeInContainer;
    if (bRemoveFromPdmSystem != FALSE) {
        QTB_CALL(RemoveNodeFromPdmSystem, pspIPdmNode, pusDeleteOption);
        bKeepNode = FALSE;
    }
    QTB_REPORT_CALL(g_QTBLoadManager.RemovePdmNodeData, *pspIPdmNode);
    QTB_CALL(RemovePdmNodeFromContainer, pspIPdmNode, bKeepNode, bInformUser);
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::RemoveNodeFromPdmGraph(const CATUnicodeString& usPdmNodeKey,
                                                             const unsigned char& bRemoveFromPdmSystem,
                                                             const unsigned char& bKeepNodeInContainer,
                                                             const unsigned char& bInformUser,
                                                             const CATUnicodeString* pusDeleteOption)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::RemoveNodeFromPdmGraph");
    QTB_ASSERT(usPdmNodeKey != "");
    CATBaseUnknown_var spBaseUnknownOnPdmNode;
    unsigned char bNodeExists = FALSE;
    QTB_CALL(GetNodeByKey, usPdmNodeKey, &spBaseUnknownOnPdmNode, &bNodeExists);
    QTB_ASSERT(bNodeExists);
    QTB_INTERFACE(spBaseUnknownOnPdmNode);
    QTBIPdmNode_var spIPdmNode(spBaseUnknownOnPdmNode);
    QTB_INTERFACE(spIPdmNode);
    QTB_CALL(RemoveNodeFromPdmGraph, &spIPdmNode, bRemoveFromPdmSystem, bKeepNodeInContainer, bInformUser,
             pusDeleteOption);
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::RemoveNodeFromPdmSystem(QTBIPdmNode_var* pspIPdmNode,
                                                              const CATUnicodeString* pusDeleteOption)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::RemoveNodeFromPdmSystem");
    QTB_ASSERT_AS("NULL_var != *pspIPdmNode", pspIPdmNode != NULL && *pspIPdmNode != NULL_var);
    const QTBINodeAttributes_var spINodeAttributes(*pspIPdmNode);
    QTB_INTERFACE(spINodeAttributes);
    QTBICommunicationServices_var spICommunicationServicesOnComm;
    QTB_CALL(QTBCommUtil::GetCommComponent, &spICommunicationServicesOnComm);
    QTB_CALL(spICommunicationServicesOnComm->Delete, spINodeAttributes, pusDeleteOption);
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::RemovePdmNodeFromContainer(const CATUnicodeString& usKey,
                                                                 const unsigned char& bKeepNodeInContainer,
                                                                 const unsigned char& bInformUser)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::RemovePdmNodeFromContainer");
    CATBaseUnknown_var spBaseUnknownOnNode;
    unsigned char bNodeExists = FALSE;
    QTB_CALL(GetNodeByKey, usKey, &spBaseUnknownOnNode, &bNodeExists);
    if (bNodeExists == FALSE) {
        return QTB_QUIET_FAILURE;
    }
    QTBIPdmNode_var spIPdmNodeOnNodeToBeDeleted(spBaseUnknownOnNode);
    QTB_INTERFACE(spIPdmNodeOnNodeToBeDeleted);
    QTB_CALL(RemovePdmNodeFromContainer, &spIPdmNodeOnNodeToBeDeleted, bKeepNodeInContainer, bInformUser);
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::RemovePdmNodeFromContainer(QTBIPdmNode_var* pspIPdmNode,
                                                                 const unsigned char& bKeepNodeInContainer,
                                                                 const unsigned char& bInformUser)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::RemovePdmNodeFromContainer");
    QTB_ASSERT(pspIPdmNode);
    QTB_INTERFACE(*pspIPdmNode);
    const QTBIPdmObjNode_var spIPdmObjNode(*pspIPdmNode);
    if (spIPdmObjNode != NULL_var) {
        QTB_REPORT_CALL(spIPdmObjNode->RemoveAllAdjacentPdmRelNodes, bKeepNodeInContainer, bInformUser);
        RemoveOlderRelationsOf(spIPdmObjNode, bKeepNodeInContainer, bInformUser);
    }
    if (const HRESULT hr = RemoveRepNodesOf(pspIPdmNode, bInformUser); FAILED(hr)) {
        return hr;
    }
    if (bKeepNodeInContainer == FALSE) {
        CATBaseUnknown_var spBaseUnknownOnPdmNode(*pspIPdmNode);
        QTB_CALL(RemoveNodeFromContainer, &spBaseUnknownOnPdmNode, NULL);
        return QTB_SUCCESS;
    }
    // Adjacent relations are kept too, so the links to them have to go by themselves.
    const QTBINodeRelations_var spINodeRelationsOnPdmNode(*pspIPdmNode);
    QTB_INTERFACE(spINodeRelationsOnPdmNode);
    QTB_CALL(spINodeRelationsOnPdmNode->RemoveAllRels, NULL);
    return QTB_SUCCESS;
}

// An object gives those of its relations that the newest action has read; the others must not stay behind with one end.
void QTBEPdmNodeContOnPdmNodeCont::RemoveOlderRelationsOf(const QTBIPdmObjNode_var& spIPdmObjNode,
                                                          const unsigned char& bKeepNodeInContainer,
                                                          const unsigned char& bInformUser)
{
    const QTBINodeRelations_var spINodeRelations(spIPdmObjNode);
    if (spINodeRelations == NULL_var) {
        return;
    }
    CATListValCATBaseUnknown_var ListOfRelations;
    QTB_REPORT_CALL(spINodeRelations->GetAllLeftRelations, &ListOfRelations, TRUE, ALL_NODES);
    QTB_REPORT_CALL(spINodeRelations->GetAllRightRelations, &ListOfRelations, TRUE, ALL_NODES);
    for (const CATBaseUnknown_var& spBaseUnknownOnRelation : ListOfRelations) {
        if (QTBIPdmRelNode_var(spBaseUnknownOnRelation) != NULL_var) {
            QTBIPdmNode_var spIPdmNode(spBaseUnknownOnRelation);
            QTB_REPORT_CALL(RemoveNodeFromPdmGraph, &spIPdmNode, FALSE, bKeepNodeInContainer, bInformUser, NULL);
        }
    }
}

// Every tree window loses the branches that show the node.
HRESULT QTBEPdmNodeContOnPdmNodeCont::RemoveRepNodesOf(QTBIPdmNode_var* pspIPdmNode, const unsigned char& bInformUser)
{
    CATListValCATBaseUnknown_var ListOfRepNodes;
    QTB_CALL((*pspIPdmNode)->GetRepNodes, &ListOfRepNodes, NULL_var);
    if (ListOfRepNodes.Size() == 0) {
        return QTB_SUCCESS;
    }
    const QTBINodeAttributes_var spINodeAttributesOnPdmNode(*pspIPdmNode);
    QTB_INTERFACE(spINodeAttributesOnPdmNode);
    CATUnicodeString usKey;
    QTB_CALL(spINodeAttributesOnPdmNode->GetKey, &usKey);
    const QTBIRepNode_var spIRepNodeForDebug(ListOfRepNodes[1]);
    QTB_INTERFACE(spIRepNodeForDebug);
    unsigned char bForAllRepNodes = FALSE;
    QTB_CALL(spIRepNodeForDebug->AddDebugInfoString, "Removing PDM node with Key [" + usKey + "]", &bForAllRepNodes);

    unsigned char bInformUserOfRepNode = bInformUser;
    for (int i = ListOfRepNodes.Size(); i >= 1; --i) {
        QTB_TRACE("QTBEPdmNodeContOnPdmNodeCont::RemovePdmNodeFromContainer -> removing rep node "
                  << QTBTraceUtil::GetNodeString(ListOfRepNodes[i], FALSE));
        const QTBIRepNode_var spIRepNode(ListOfRepNodes[i]);
        QTB_INTERFACE(spIRepNode);
        QTBIRepNodeCont_var spIRepNodeCont;
        QTB_CALL(spIRepNode->GetRepNodeContainer, &spIRepNodeCont);
        QTB_CALL(spIRepNodeCont->RecursiveRemoveRepTree, spIRepNode, &bInformUserOfRepNode);
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::AddRepNodeContainer(CATBaseUnknown_var* pspBaseUnknownOnRepNodeCont)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::AddRepNodeContainer");
    QTB_ASSERT(pspBaseUnknownOnRepNodeCont != NULL);
    const CATBaseUnknown_var spBaseUnknownOnRepNodeCont(*pspBaseUnknownOnRepNodeCont);
    QTB_INTERFACE(spBaseUnknownOnRepNodeCont);
    m_RepNodeContainers.Append(spBaseUnknownOnRepNodeCont);
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::RemoveRepNodeContainer(CATBaseUnknown_var* pspBaseUnknownOnRepNodeCont)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::RemoveRepNodeContainer");
    QTB_ASSERT(pspBaseUnknownOnRepNodeCont != NULL);
    const CATBaseUnknown_var spBaseUnknownOnRepNodeCont(*pspBaseUnknownOnRepNodeCont);
    QTB_INTERFACE(spBaseUnknownOnRepNodeCont);
    m_RepNodeContainers.RemoveValue(spBaseUnknownOnRepNodeCont);
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::UpdateAllRepNodeContainers(unsigned char* pbAddNewNodes)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::UpdateAllRepNodeContainers");
    for (int i = 1; i <= m_RepNodeContainers.Size(); ++i) {
        const QTBIRepNodeCont_var spIRepNodeCont(m_RepNodeContainers[i]);
        QTB_INTERFACE(spIRepNodeCont);
        unsigned char bWindowFlag1 = TRUE;
        unsigned char bWindowFlag2 = FALSE;
        QTB_CALL(spIRepNodeCont->UpdateAllRepTrees, &bWindowFlag1, &bWindowFlag2, CATListValQTBNodeRelationInfo(), NULL,
                 NULL, pbAddNewNodes);
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::CheckRepNodeContainers()
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::CheckRepNodeContainers");
    // A container takes itself out of the registry when it is cleaned up.
    for (int i = m_RepNodeContainers.Size(); i >= 1; i = std::min(i - 1, m_RepNodeContainers.Size())) {
        CATBaseUnknown_var spBaseUnknownOnRepNodeCont(m_RepNodeContainers[i]);
        const QTBIRepNodeCont_var spIRepNodeCont(spBaseUnknownOnRepNodeCont);
        QTB_INTERFACE(spIRepNodeCont);
        unsigned char bFrmWindowPtrIsSet = FALSE;
        QTB_CALL(spIRepNodeCont->QtbFrmWindowPtrIsSet, &bFrmWindowPtrIsSet);
        QTB_TRACE("QTBEPdmNodeContOnPdmNodeCont::CheckRepNodeContainers -> i:"
                  << i << (bFrmWindowPtrIsSet != FALSE ? ", TRUE" : ", FALSE, removing"));
        if (bFrmWindowPtrIsSet == FALSE) {
            QTB_CALL(spIRepNodeCont->Cleanup);
            QTB_INTERFACE(spBaseUnknownOnRepNodeCont);
            m_RepNodeContainers.RemoveValue(spBaseUnknownOnRepNodeCont);
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::Cleanup()
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::Cleanup");
    for (int i = m_RepNodeContainers.Size(); i >= 1; i = std::min(i - 1, m_RepNodeContainers.Size())) {
        QTB_TRACE("cleaning up rep node container [" << i << "]");
        const QTBIRepNodeCont_var spIRepNodeCont(m_RepNodeContainers[i]);
        QTB_INTERFACE(spIRepNodeCont);
        QTB_CALL(spIRepNodeCont->Cleanup);
    }
    m_RepNodeContainers.RemoveAll();

    // The documents of the answers go with the last of their nodes.
    const CATDOMBulkRelease bulkRelease;
    for (int bucket = 0; bucket < BUCKET_COUNT; ++bucket) {
        const CATListValCATBaseUnknown_var& Bucket = m_NodeBuckets[static_cast<std::size_t>(bucket)];
        while (Bucket.Size() > 0) {
            const int position = Bucket.Size();
            CATBaseUnknown_var spBaseUnknownOnNode(Bucket[position]);
            const QTBIPdmNode_var spIPdmNode(spBaseUnknownOnNode);
            QTB_INTERFACE(spIPdmNode);
            RemoveNodeFromContainer(&spBaseUnknownOnNode, NULL);
            // A removal that failed must not leave the node behind.
            if (Bucket.Size() == position) {
                RemoveBucketPosition(bucket, position);
            }
        }
    }
    return QTB_SUCCESS;
}

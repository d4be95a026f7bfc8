#include <algorithm>
#include <vector>

#include "CATIDOMDocument.h"
#include "QTBCheck.h"
#include "QTBCommUtil.h"
#include "QTBEPdmNodeContOnPdmNodeCont.h"
#include "QTBICommunicationServices.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBLoadManager.h"
#include "QTBPdmGraphUtil.h"
#include "QTBTraceUtil.h"

namespace {

// Info attributes: the key of the item that a node takes the place of, and the node's own.
const CATUnicodeString SUPERSEDES("QtbSupersedes");
const CATUnicodeString OWN_KEY("QtbKey");

// The text of an info attribute, empty when there is none.
CATUnicodeString GetInfoText(const QTBIPdmNode_var& spIPdmNode, const CATUnicodeString& usAttrName)
{
    CATUnicodeString usValue;
    unsigned char bIsDefined = FALSE;
    if (FAILED(spIPdmNode->GetQtbInfoAttr(usAttrName, &usValue, FALSE, &bIsDefined, FALSE))) {
        return CATUnicodeString();
    }
    return usValue;
}

// Positions of a list that are to go. Taking them out one by one would move the rest each time.
class Rejects
{
public:
    explicit Rejects(CATListValCATBaseUnknown_var* pList)
        : m_pList(pList), m_IsRejected(static_cast<std::size_t>(pList->Size()))
    {
    }
    Rejects(const Rejects&) = delete;
    Rejects& operator=(const Rejects&) = delete;
    ~Rejects()
    {
        if (std::find(m_IsRejected.begin(), m_IsRejected.end(), true) == m_IsRejected.end()) {
            return;
        }
        CATListValCATBaseUnknown_var Rest;
        for (int i = 1; i <= m_pList->Size(); ++i) {
            if (!m_IsRejected[static_cast<std::size_t>(i - 1)]) {
                Rest.Append((*m_pList)[i]);
            }
        }
        *m_pList = Rest;
    }

    void Add(int position) { m_IsRejected[static_cast<std::size_t>(position - 1)] = true; }

private:
    CATListValCATBaseUnknown_var* m_pList;
    std::vector<bool> m_IsRejected;
};

} // namespace

HRESULT QTBEPdmNodeContOnPdmNodeCont::ReplaceNodesIfNecessary(CATListValCATBaseUnknown_var ListOfNodes)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::ReplaceNodesIfNecessary");
    Successors successors;
    for (int i = 1; i <= ListOfNodes.Size(); ++i) {
        if (const HRESULT hr = SupersedeIfNecessary(i, ListOfNodes[i], &successors); FAILED(hr)) {
            return hr;
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::SupersedeIfNecessary(int i, const CATBaseUnknown_var& spBaseUnknownOnNode,
                                                           Successors* pSuccessors)
{
    const QTBIPdmNode_var spIPdmNode(spBaseUnknownOnNode);
    QTB_INTERFACE(spIPdmNode);
    const CATUnicodeString usSupersededKey = GetInfoText(spIPdmNode, SUPERSEDES);
    if (usSupersededKey.IsEmpty()) {
        return QTB_SUCCESS;
    }
    QTB_TRACE("QTBEPdmNodeContOnPdmNodeCont::ReplaceNodesIfNecessary -> i:"
              << i << " -> checking whether superseding node is necessary:");
    const CATUnicodeString usOwnKey = GetInfoText(spIPdmNode, OWN_KEY);
    if (!usOwnKey.IsEmpty() && usOwnKey == usSupersededKey) {
        QTB_TRACE("QTBEPdmNodeContOnPdmNodeCont::ReplaceNodesIfNecessary -> i:"
                  << i << " -> keys are equal, not superseding node");
        return QTB_SUCCESS;
    }
    QTB_TRACE("QTBEPdmNodeContOnPdmNodeCont::ReplaceNodesIfNecessary -> i:" << i << " -> superseding node");

    QTBIPdmNode_var spIPdmNodeOnOldNode;
    unsigned char bNodeFound = FALSE;
    QTB_CALL(GetPdmNodeByKey, usSupersededKey, &spIPdmNodeOnOldNode, &bNodeFound);
    if (bNodeFound == FALSE) {
        QTB_TRACE("QTBEPdmNodeContOnPdmNodeCont::ReplaceNodesIfNecessary -> i:"
                  << i << ": node superseded by " << QTBTraceUtil::GetNodeString(spBaseUnknownOnNode, FALSE)
                  << " not found, continuing !");
        return QTB_SUCCESS;
    }
    // A version that the same answer superseded in turn hands what it takes on to the one in its place, whichever the
    // answer names first; what it held was handed on with it.
    CATBaseUnknown_var spBaseUnknownOnNewNode(spBaseUnknownOnNode);
    for (auto it = pSuccessors->find(spBaseUnknownOnNewNode.Get()); it != pSuccessors->end();
         it = pSuccessors->find(spBaseUnknownOnNewNode.Get())) {
        spBaseUnknownOnNewNode = it->second;
    }
    bool isInGraph = false;
    if (const HRESULT hr = IsInGraph(spBaseUnknownOnNewNode, &isInGraph); FAILED(hr)) {
        return hr;
    }
    // An item that was read twice counts once, and no node can take its own place.
    CATBaseUnknown_var spBaseUnknownOnOldNode(spIPdmNodeOnOldNode);
    if (!isInGraph || spBaseUnknownOnOldNode == spBaseUnknownOnNewNode) {
        return QTB_SUCCESS;
    }

    const QTBIPdmNode_var spIPdmNodeOnNewNode(spBaseUnknownOnNewNode);
    if (QTBDebugUtil::GetDebugStatus()) {
        if (QTBIPdmRelNode_var(spBaseUnknownOnOldNode) != NULL_var &&
            QTBIPdmRelNode_var(spBaseUnknownOnNewNode) != NULL_var) {
            QTB_TRACE("QTBEPdmNodeContOnPdmNodeCont::ReplaceNodesIfNecessary -> replacing relation ");
            QTBTraceUtil::PrintPdmNodeInfo(spIPdmNodeOnOldNode, "");
            QTB_TRACE("with");
            QTBTraceUtil::PrintPdmNodeInfo(spIPdmNodeOnNewNode, "");
        } else {
            QTB_TRACE("QTBEPdmNodeContOnPdmNodeCont::ReplaceNodesIfNecessary -> replacing object "
                      << QTBTraceUtil::GetNodeString(spBaseUnknownOnOldNode, FALSE) << " with "
                      << QTBTraceUtil::GetNodeString(spBaseUnknownOnNewNode, FALSE));
        }
    }
    QTB_CALL(g_QTBLoadManager.ReplacePdmItem, spIPdmNodeOnNewNode, usSupersededKey, NULL_var);
    QTB_CALL(RemoveNodeFromContainer, &spBaseUnknownOnOldNode, &spBaseUnknownOnNewNode);
    pSuccessors->emplace(spBaseUnknownOnOldNode.Get(), spBaseUnknownOnNewNode);
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::IsInGraph(const CATBaseUnknown_var& spBaseUnknownOnNode, bool* pIsInGraph)
{
    const QTBINodeAttributes_var spINodeAttributesOnNode(spBaseUnknownOnNode);
    QTB_INTERFACE(spINodeAttributesOnNode);
    CATUnicodeString usKey;
    QTB_CALL(spINodeAttributesOnNode->GetKey, &usKey);
    CATBaseUnknown_var spBaseUnknownOnNodeOfKey;
    unsigned char bNodeFound = FALSE;
    QTB_CALL(GetNodeByKey, usKey, &spBaseUnknownOnNodeOfKey, &bNodeFound);
    *pIsInGraph = bNodeFound != FALSE && spBaseUnknownOnNodeOfKey == spBaseUnknownOnNode;
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::UpdateNodeRelations(CATListValCATBaseUnknown_var* pListOfNodes)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::UpdateNodeRelations");
    QTB_ASSERT(pListOfNodes);
    Rejects rejects(pListOfNodes);
    for (int i = pListOfNodes->Size(); i >= 1; --i) {
        QTBIPdmRelNode_var spIPdmRelNode((*pListOfNodes)[i]);
        if (spIPdmRelNode == NULL_var) {
            continue;
        }
        // A relation that the answer holds twice is linked once: the node of the first reading is no longer in the
        // graph.
        bool isInGraph = false;
        if (const HRESULT hr = IsInGraph((*pListOfNodes)[i], &isInGraph); FAILED(hr)) {
            return hr;
        }
        if (!isInGraph) {
            rejects.Add(i);
            continue;
        }
        if (FAILED(UpdateNodeRelations(&spIPdmRelNode))) {
            QTBIPdmNode_var spIPdmNode((*pListOfNodes)[i]);
            QTB_CALL(RemovePdmNodeFromContainer, &spIPdmNode, FALSE, FALSE);
            rejects.Add(i);
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::UpdateNodeRelations(QTBIPdmRelNode_var* pspIPdmRelNodeOnNode)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::UpdateNodeRelations");
    QTB_ASSERT(pspIPdmRelNodeOnNode != NULL);
    QTB_ASSERT_AS("*pspIPdmRelNodeOnNode", *pspIPdmRelNodeOnNode != NULL_var);
    const QTBIPdmNode_var spIPdmNodeOnRelation(*pspIPdmRelNodeOnNode);
    QTB_INTERFACE(spIPdmNodeOnRelation);
    if (QTBDebugUtil::GetDebugStatus()) {
        QTBTraceUtil::PrintPdmNodeInfo(spIPdmNodeOnRelation, "QTBEPdmNodeContOnPdmNodeCont::UpdateNodeRelations ->");
    }
    QTBIPdmNode_var spIPdmNodeOnLeftObject;
    QTBIPdmNode_var spIPdmNodeOnRightObject;
    if (FAILED(QTBPdmGraphUtil::GetCorrespondingObjNodesByPdmKey(*pspIPdmRelNodeOnNode, &spIPdmNodeOnLeftObject,
                                                                 &spIPdmNodeOnRightObject))) {
        QTB_TRACE("QTBEPdmNodeContOnPdmNodeCont::UpdateNodeRelations -> "
                  "QTBPdmGraphUtil::GetCorrespondingObjNodesByPdmKey not successful, returning !");
        return QTB_QUIET_FAILURE;
    }
    QTB_CALL((*pspIPdmRelNodeOnNode)->SetLeftObject, spIPdmNodeOnLeftObject);
    QTB_CALL((*pspIPdmRelNodeOnNode)->SetRightObject, spIPdmNodeOnRightObject);
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::RefreshPdmNode(QTBIPdmNode_var* pspIPdmNodeOnOldNode,
                                                     QTBIPdmNode_var* pspIPdmNodeOnNewNode)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::RefreshPdmNode");
    QTB_ASSERT(pspIPdmNodeOnOldNode != NULL);
    QTB_ASSERT_AS("*pspIPdmNodeOnOldNode", *pspIPdmNodeOnOldNode != NULL_var);
    QTB_ASSERT(pspIPdmNodeOnNewNode != NULL);
    const QTBINodeAttributes_var spINodeAttributesOnOldPdmNode(*pspIPdmNodeOnOldNode);
    QTB_INTERFACE(spINodeAttributesOnOldPdmNode);
    CATUnicodeString usKey;
    QTB_CALL(spINodeAttributesOnOldPdmNode->GetKey, &usKey);
    QTBIPdmNode_var spIPdmNode;
    unsigned char bNodeExists = FALSE;
    QTB_CALL(GetPdmNodeByKey, usKey, &spIPdmNode, &bNodeExists);
    QTB_ASSERT(bNodeExists);
    *pspIPdmNodeOnNewNode = spIPdmNode;
    QTB_INTERFACE(*pspIPdmNodeOnNewNode);
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::CreateRelationInPdmGraph(const CATUnicodeString& usRelationClass,
                                                               const QTBIPdmObjNode_var& spLeftObject,
                                                               const QTBIPdmObjNode_var& spRightObject,
                                                               const CATUnicodeString& usRelationXml)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::CreateRelationInPdmGraph");
    QTBICommunicationServices_var spICommunicationServicesOnComm;
    QTB_CALL(QTBCommUtil::GetCommComponent, &spICommunicationServicesOnComm);
    CATIDOMDocument_var spIDOMDocumentOnAnswer;
    QTB_CALL(spICommunicationServicesOnComm->CreateRelation, usRelationClass, spLeftObject, spRightObject,
             usRelationXml, &spIDOMDocumentOnAnswer);
    CATListValCATBaseUnknown_var ObjectNodes;
    CATListValCATBaseUnknown_var RelationNodes;
    QTB_CALL(UpdatePdmGraph, spIDOMDocumentOnAnswer, &ObjectNodes, &RelationNodes);
    QTB_TRACE("QTBEPdmNodeContOnPdmNodeCont::CreateRelationInPdmGraph -> (" << RelationNodes.Size() << ") / ("
                                                                            << ObjectNodes.Size() << ")");
    return QTB_SUCCESS;
}

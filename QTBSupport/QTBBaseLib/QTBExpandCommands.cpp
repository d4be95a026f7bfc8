#include "QTBExpandCommands.h"

#include <utility>
#include <vector>

#include "CATError.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmObjNode.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"
#include "QTBLimits.h"
#include "QTBMessageUtil.h"
#include "QTBNodeRelationInfo.h"
#include "QTBPdmTree.h"
#include "QTBSchema.h"
#include "QTBSchemaUtil.h"

namespace {

// Lets the container of a rep node show everything that the graph holds. Commands leave it as they found it: looking at
// what the current action read.
class ConsideringAllNodes
{
public:
    explicit ConsideringAllNodes(const QTBIRepNodeCont_var& spIRepNodeCont) : m_spIRepNodeCont(spIRepNodeCont)
    {
        Consider(ALL_NODES);
    }
    ConsideringAllNodes(const ConsideringAllNodes&) = delete;
    ConsideringAllNodes& operator=(const ConsideringAllNodes&) = delete;
    ~ConsideringAllNodes() { Consider(ONLY_CURRENT_NODES); }

private:
    void Consider(NodesToRetrieve mode) { m_spIRepNodeCont->SetPdmNodesToConsider(&mode); }

    QTBIRepNodeCont_var m_spIRepNodeCont;
};

HRESULT GetCont(const QTBIRepNode_var& spIRepNode, QTBIRepNodeCont_var* pspIRepNodeCont)
{
    return spIRepNode != NULL_var ? spIRepNode->GetRepNodeContainer(pspIRepNodeCont) : E_FAIL;
}

QTBNodeRelationInfo GetRelationInfo(const QTBExpDlgRelExpandInfo& info)
{
    return QTBNodeRelationInfo(info.GetSchemaRelationPtr()->GetName(),
                               info.IsLeftToRight() != FALSE ? usLEFT_TO_RIGHT : usRIGHT_TO_LEFT);
}

HRESULT Update(const QTBIRepNodeCont_var& spIRepNodeCont, const QTBIRepNode_var& spIRepNode,
               const CATListValQTBNodeRelationInfo& relations, unsigned char bOneLevelOnly,
               CATListValCATBaseUnknown_var* pListOfObjRepNodes)
{
    unsigned char bAddNewNodes = TRUE;
    unsigned char bUpdateWindow = FALSE;
    unsigned char bCollectExistingChildren = TRUE;
    return spIRepNodeCont->UpdateRepTree(spIRepNode, relations, &bOneLevelOnly, nullptr, pListOfObjRepNodes,
                                         &bAddNewNodes, &bUpdateWindow, &bCollectExistingChildren);
}

// The failure of the update counts more than that of the window.
HRESULT UpdateWindow(const QTBIRepNodeCont_var& spIRepNodeCont, HRESULT hrOfUpdate)
{
    unsigned char bTakeRootsAnew = FALSE;
    unsigned char bActivateWindow = FALSE;
    const HRESULT hr = spIRepNodeCont->UpdateQtbWindow(&bTakeRootsAnew, &bActivateWindow);
    return FAILED(hrOfUpdate) ? hrOfUpdate : hr;
}

HRESULT GetSchemaNode(const QTBIRepNode_var& spIRepNode, QTBSchemaNode** ppSchemaNode, QTBIPdmNode_var* pspIPdmNode)
{
    HRESULT hr = spIRepNode != NULL_var ? spIRepNode->GetPdmNode(pspIPdmNode, TRUE, nullptr) : E_FAIL;
    if (SUCCEEDED(hr)) {
        hr = (*pspIPdmNode)->GetSchemaNodePtr(ppSchemaNode);
    }
    return FAILED(hr) || *ppSchemaNode != nullptr ? hr : E_FAIL;
}

// A level of a tree of relations that is still to be expanded.
struct Level
{
    CATBaseUnknown_var spRepNode;
    CATListPtrQTBPdmTreeRel treeRels;
};

// What is expanded below the objects found along one relation of the tree.
void CollectNextLevels(const QTBPdmTreeRel& treeRel, const CATListValCATBaseUnknown_var& repNodes,
                       std::vector<Level>* pLevels)
{
    CATListPtrQTBPdmTreeObj treeObjs;
    treeRel.GetAllPdmTreeObjPtrs(&treeObjs);
    for (const CATBaseUnknown_var& spRepNode : repNodes) {
        QTBSchemaNode* pSchemaNode = nullptr;
        QTBIPdmNode_var spIPdmNode;
        if (FAILED(GetSchemaNode(spRepNode, &pSchemaNode, &spIPdmNode))) {
            continue;
        }
        for (const QTBPdmTreeObj* pTreeObj : treeObjs) {
            if (pSchemaNode->IsKindOf(pTreeObj->GetClassName())) {
                Level level{spRepNode, {}};
                pTreeObj->GetAllPdmTreeRelPtrs(&level.treeRels);
                pLevels->push_back(std::move(level));
            }
        }
    }
}

} // namespace

HRESULT QTBExpandCommands::Expand(const QTBIRepNode_var& spIRepNode, const CATListValQTBExpDlgRelExpandInfo& relations)
{
    QTBIRepNodeCont_var spIRepNodeCont;
    if (const HRESULT hr = GetCont(spIRepNode, &spIRepNodeCont); FAILED(hr)) {
        return hr;
    }
    const ConsideringAllNodes consideringAllNodes(spIRepNodeCont);
    HRESULT hr = S_OK;
    for (const unsigned char bMultiExpand : {FALSE, TRUE}) {
        CATListValQTBNodeRelationInfo chosen;
        for (const QTBExpDlgRelExpandInfo& info : relations) {
            if (info.IsSelected() != FALSE && info.IsMultiExpand() == bMultiExpand) {
                chosen.Append(GetRelationInfo(info));
            }
        }
        if (chosen.Size() > 0 && SUCCEEDED(hr)) {
            hr = Update(spIRepNodeCont, spIRepNode, chosen, bMultiExpand == FALSE ? TRUE : FALSE, nullptr);
        }
    }
    return UpdateWindow(spIRepNodeCont, hr);
}

HRESULT QTBExpandCommands::ExpandPdmTree(const QTBIRepNode_var& spIRepNode, const QTBPdmTree& pdmTree)
{
    QTBIRepNodeCont_var spIRepNodeCont;
    if (const HRESULT hr = GetCont(spIRepNode, &spIRepNodeCont); FAILED(hr)) {
        return hr;
    }
    const ConsideringAllNodes consideringAllNodes(spIRepNodeCont);
    const int maxRepNodes = QTBLimits::GetMaxRepNodes();
    long long passed = 0;
    std::vector<Level> waiting(1);
    waiting.back().spRepNode = spIRepNode;
    HRESULT hr = pdmTree.GetAllPdmTreeRelPtrs(&waiting.back().treeRels, FALSE);
    while (SUCCEEDED(hr) && !waiting.empty()) {
        const Level level = std::move(waiting.back());
        waiting.pop_back();
        for (const QTBPdmTreeRel* pTreeRel : level.treeRels) {
            CATListValQTBNodeRelationInfo relation;
            relation.Append(pTreeRel->GetNodeRelationInfo());
            CATListValCATBaseUnknown_var objRepNodes;
            hr = Update(spIRepNodeCont, level.spRepNode, relation, TRUE, &objRepNodes);
            // Each object hangs below a relation. Each update alone keeps to the limit; all of them must.
            passed += 2LL * objRepNodes.Size();
            if (SUCCEEDED(hr) && passed > maxRepNodes) {
                hr = CATError::GetReturn(2, QTBMessageUtil::MaxRepNodesReached(maxRepNodes), nullptr, __FILE__,
                                         __LINE__);
            }
            if (FAILED(hr)) {
                break;
            }
            CollectNextLevels(*pTreeRel, objRepNodes, &waiting);
        }
    }
    return UpdateWindow(spIRepNodeCont, hr);
}

HRESULT QTBExpandCommands::ExpandPdmTree(const QTBIRepNode_var& spIRepNode, const CATUnicodeString& usTreeName)
{
    QTBIPdmNode_var spIPdmNode;
    if (const HRESULT hr = spIRepNode != NULL_var ? spIRepNode->GetPdmNode(&spIPdmNode, TRUE, nullptr) : E_FAIL;
        FAILED(hr)) {
        return hr;
    }
    const QTBIPdmObjNode_var spIPdmObjNode(spIPdmNode);
    QTBSchemaObject* pSchemaObject = nullptr;
    if (spIPdmObjNode != NULL_var && SUCCEEDED(spIPdmObjNode->GetSchemaObjectPtr(&pSchemaObject)) &&
        pSchemaObject != nullptr) {
        for (int i = 1; i <= pSchemaObject->GetCustomExpandPdmTreeCount(); ++i) {
            QTBPdmTree* pPdmTree = nullptr;
            if (SUCCEEDED(pSchemaObject->GetCustomExpandPdmTreePtr(i, &pPdmTree)) &&
                pPdmTree->GetName() == usTreeName) {
                return ExpandPdmTree(spIRepNode, *pPdmTree);
            }
        }
    }
    return CATError::GetReturn(2, QTBMessageUtil::CommandTextNotKnownError(usTreeName), nullptr, __FILE__, __LINE__);
}

HRESULT QTBExpandCommands::DeExpand(const QTBIRepNode_var& spIRepNode)
{
    QTBIRepNodeCont_var spIRepNodeCont;
    if (const HRESULT hr = GetCont(spIRepNode, &spIRepNodeCont); FAILED(hr)) {
        return hr;
    }
    QTBIRepNode_var spIRepNodeToFold = spIRepNode;
    return UpdateWindow(spIRepNodeCont, spIRepNodeCont->DeExpand(&spIRepNodeToFold));
}

HRESULT QTBExpandCommands::GetRelations(const QTBIRepNode_var& spIRepNode, const CATUnicodeString& usRelationshipName,
                                        unsigned char bMultiExpand, CATListValQTBExpDlgRelExpandInfo* pRelations)
{
    QTBIPdmNode_var spIPdmNode;
    QTBSchemaNode* pSchemaNode = nullptr;
    HRESULT hr = pRelations != nullptr ? GetSchemaNode(spIRepNode, &pSchemaNode, &spIPdmNode) : E_POINTER;
    QTBSchema* pSchema = nullptr;
    if (SUCCEEDED(hr)) {
        hr = QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema);
    }
    if (FAILED(hr)) {
        return hr;
    }
    pRelations->RemoveAll();
    if (QTBIPdmObjNode_var(spIPdmNode) == NULL_var) {
        return S_OK;
    }
    for (const unsigned char bLeftToRight : {TRUE, FALSE}) {
        for (int i = 1; i <= pSchema->GetRelationCount(); ++i) {
            QTBSchemaRelation* pRelation = nullptr;
            pSchema->GetRelationPtr(i, &pRelation);
            if (pRelation->IsExpandOffered(bLeftToRight, bMultiExpand) &&
                pRelation->StartsAtClass(bLeftToRight, pSchemaNode->GetName()) &&
                (usRelationshipName.IsEmpty() ||
                 pRelation->GetRelationshipPtr(bLeftToRight)->GetName() == usRelationshipName)) {
                pRelations->Append(QTBExpDlgRelExpandInfo(pRelation, bLeftToRight, bMultiExpand, TRUE));
            }
        }
    }
    return S_OK;
}

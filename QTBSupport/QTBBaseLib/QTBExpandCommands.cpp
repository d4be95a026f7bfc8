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
#include "QTBRequestCommands.h"
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

// The same for a node that is to be expanded, which must not have lost its PDM node.
HRESULT GetContToExpand(const QTBIRepNode_var& spIRepNode, QTBIRepNodeCont_var* pspIRepNodeCont)
{
    CATUnicodeString usKey;
    const HRESULT hr = GetCont(spIRepNode, pspIRepNodeCont);
    return SUCCEEDED(hr) && FAILED(spIRepNode->GetPdmNodeKey(&usKey)) ? E_FAIL : hr;
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
    const ConsideringAllNodes consideringAllNodes(spIRepNodeCont);
    unsigned char bAddNewNodes = TRUE;
    unsigned char bUpdateWindow = FALSE;
    unsigned char bCollectExistingChildren = TRUE;
    return spIRepNodeCont->UpdateRepTree(spIRepNode, relations, &bOneLevelOnly, nullptr, pListOfObjRepNodes,
                                         &bAddNewNodes, &bUpdateWindow, &bCollectExistingChildren);
}

// Reads what lies below the rep nodes into the graph, when the PDM system can be asked for it.
HRESULT Fetch(const CATListValCATBaseUnknown_var& repNodes, const CATListValQTBNodeRelationInfo& relations,
              unsigned char bOneLevelOnly)
{
    CATListValCATUnicodeString Keys;
    for (const CATBaseUnknown_var& spRepNode : repNodes) {
        CATUnicodeString usKey;
        if (SUCCEEDED(QTBIRepNode_var(spRepNode)->GetPdmNodeKey(&usKey))) {
            Keys.Append(usKey);
        }
    }
    return QTBRequestCommands::Fetch(Keys, relations, bOneLevelOnly != FALSE ? 1 : -1);
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

CATListValCATBaseUnknown_var MakeList(const CATBaseUnknown_var& spRepNode)
{
    CATListValCATBaseUnknown_var list;
    list.Append(spRepNode);
    return list;
}

// A level of a tree of relations that is still to be expanded, below all rep nodes that stand at it.
struct Level
{
    CATListValCATBaseUnknown_var repNodes;
    CATListPtrQTBPdmTreeRel treeRels;
};

// What is expanded below the objects found along one relation of the tree.
void CollectNextLevels(const QTBPdmTreeRel& treeRel, const CATListValCATBaseUnknown_var& repNodes,
                       std::vector<Level>* pLevels)
{
    CATListPtrQTBPdmTreeObj treeObjs;
    treeRel.GetAllPdmTreeObjPtrs(&treeObjs);
    for (const QTBPdmTreeObj* pTreeObj : treeObjs) {
        Level level;
        for (const CATBaseUnknown_var& spRepNode : repNodes) {
            QTBSchemaNode* pSchemaNode = nullptr;
            QTBIPdmNode_var spIPdmNode;
            if (SUCCEEDED(GetSchemaNode(spRepNode, &pSchemaNode, &spIPdmNode)) &&
                pSchemaNode->IsKindOf(pTreeObj->GetClassName())) {
                level.repNodes.Append(spRepNode);
            }
        }
        pTreeObj->GetAllPdmTreeRelPtrs(&level.treeRels);
        if (level.repNodes.Size() > 0 && level.treeRels.Size() > 0) {
            pLevels->push_back(std::move(level));
        }
    }
}

// Expands a level and adds those below it. Each update alone keeps to the limit of rep nodes; *pPassed counts those of
// all levels, which must too.
HRESULT ExpandLevel(const QTBIRepNodeCont_var& spIRepNodeCont, const Level& level, std::vector<Level>* pLevels,
                    long long* pPassed)
{
    const int maxRepNodes = QTBLimits::GetMaxRepNodes();
    CATListValQTBNodeRelationInfo relations;
    for (const QTBPdmTreeRel* pTreeRel : level.treeRels) {
        relations.Append(pTreeRel->GetNodeRelationInfo());
    }
    if (const HRESULT hr = Fetch(level.repNodes, relations, TRUE); FAILED(hr)) {
        return hr;
    }
    for (const QTBPdmTreeRel* pTreeRel : level.treeRels) {
        CATListValQTBNodeRelationInfo relation;
        relation.Append(pTreeRel->GetNodeRelationInfo());
        CATListValCATBaseUnknown_var found;
        for (const CATBaseUnknown_var& spRepNode : level.repNodes) {
            CATListValCATBaseUnknown_var objRepNodes;
            if (const HRESULT hr = Update(spIRepNodeCont, spRepNode, relation, TRUE, &objRepNodes); FAILED(hr)) {
                return hr;
            }
            // Each object hangs below a relation.
            *pPassed += 2LL * objRepNodes.Size();
            if (*pPassed > maxRepNodes) {
                return CATError::GetReturn(2, QTBMessageUtil::MaxRepNodesReached(maxRepNodes), nullptr, __FILE__,
                                           __LINE__);
            }
            found.Append(objRepNodes);
        }
        CollectNextLevels(*pTreeRel, found, pLevels);
    }
    return S_OK;
}

} // namespace

HRESULT QTBExpandCommands::Expand(const QTBIRepNode_var& spIRepNode, const CATListValQTBExpDlgRelExpandInfo& relations)
{
    QTBIRepNodeCont_var spIRepNodeCont;
    if (const HRESULT hr = GetContToExpand(spIRepNode, &spIRepNodeCont); FAILED(hr)) {
        return hr;
    }
    HRESULT hr = S_OK;
    for (const unsigned char bMultiExpand : {FALSE, TRUE}) {
        CATListValQTBNodeRelationInfo chosen;
        for (const QTBExpDlgRelExpandInfo& info : relations) {
            if (info.IsSelected() != FALSE && info.IsMultiExpand() == bMultiExpand) {
                chosen.Append(GetRelationInfo(info));
            }
        }
        const unsigned char bOneLevelOnly = bMultiExpand == FALSE ? TRUE : FALSE;
        if (chosen.Size() > 0 && SUCCEEDED(hr)) {
            hr = Fetch(MakeList(spIRepNode), chosen, bOneLevelOnly);
        }
        if (chosen.Size() > 0 && SUCCEEDED(hr)) {
            hr = Update(spIRepNodeCont, spIRepNode, chosen, bOneLevelOnly, nullptr);
        }
    }
    return UpdateWindow(spIRepNodeCont, hr);
}

HRESULT QTBExpandCommands::ExpandPdmTree(const QTBIRepNode_var& spIRepNode, const QTBPdmTree& pdmTree)
{
    QTBIRepNodeCont_var spIRepNodeCont;
    if (const HRESULT hr = GetContToExpand(spIRepNode, &spIRepNodeCont); FAILED(hr)) {
        return hr;
    }
    long long passed = 0;
    std::vector<Level> waiting(1);
    waiting.back().repNodes.Append(spIRepNode);
    HRESULT hr = pdmTree.GetAllPdmTreeRelPtrs(&waiting.back().treeRels, FALSE);
    while (SUCCEEDED(hr) && !waiting.empty()) {
        const Level level = std::move(waiting.back());
        waiting.pop_back();
        hr = ExpandLevel(spIRepNodeCont, level, &waiting, &passed);
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

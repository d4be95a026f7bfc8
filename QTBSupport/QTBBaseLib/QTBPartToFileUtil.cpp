#include "QTBPartToFileUtil.h"

#include <unordered_map>
#include <vector>

#include "QTBIPdmNode.h"
#include "QTBIRepNode.h"
#include "QTBPartToFileInfo.h"
#include "QTBPdmTree.h"
#include "QTBSchema.h"
#include "QTBSchemaUtil.h"

namespace {

// The tree that leads from the represented part to its files, null when there is none.
QTBPdmTree* FindPdmTree(const QTBSchema& schema, const QTBIRepNode_var& spIRepNode)
{
    CATUnicodeString usClassName;
    QTBIPdmNode_var spIPdmNode;
    if (FAILED(spIRepNode->GetPdmNode(&spIPdmNode, FALSE, nullptr)) || spIPdmNode == NULL_var ||
        FAILED(spIPdmNode->GetClassName(&usClassName))) {
        return nullptr;
    }
    const QTBSchemaObject* pObject = schema.FindObject(usClassName);
    return pObject != nullptr ? pObject->GetPartToFilePdmTreePtr() : nullptr;
}

} // namespace

HRESULT QTBPartToFileUtil::GetPartToFileInfo(const CATListValCATBaseUnknown_var& RepNodes,
                                             QTBPartToFileInfo* pPartToFileInfo)
{
    if (pPartToFileInfo == nullptr) {
        return E_POINTER;
    }
    QTBSchema* pSchema = nullptr;
    if (const HRESULT hr = QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema); FAILED(hr)) {
        return hr;
    }
    struct Start
    {
        QTBPdmTree* pPdmTree;
        CATListValCATBaseUnknown_var repNodes;
    };
    std::vector<Start> Starts;
    std::unordered_map<const QTBPdmTree*, std::size_t> PositionsOfTrees;
    for (const CATBaseUnknown_var& spRepNode : RepNodes) {
        const QTBIRepNode_var spIRepNode(spRepNode);
        if (spIRepNode == NULL_var) {
            return E_NOINTERFACE;
        }
        QTBPdmTree* pPdmTree = FindPdmTree(*pSchema, spIRepNode);
        if (pPdmTree == nullptr) {
            continue;
        }
        const auto [position, isNew] = PositionsOfTrees.try_emplace(pPdmTree, Starts.size());
        if (isNew) {
            Starts.push_back({pPdmTree, {}});
        }
        Starts[position->second].repNodes.Append(spRepNode);
    }
    CATListValQTBPartToFilePdmTreeInfo PdmTreeInfos;
    for (const Start& start : Starts) {
        PdmTreeInfos.Append(QTBPartToFilePdmTreeInfo(start.repNodes, start.pPdmTree));
    }
    *pPartToFileInfo = QTBPartToFileInfo(PdmTreeInfos);
    return S_OK;
}

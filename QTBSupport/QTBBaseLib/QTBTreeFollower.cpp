#include "QTBTreeFollower.h"

#include <algorithm>

#include "CATError.h"
#include "QTBConstants.h"
#include "QTBGlobVarsUtil.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"
#include "QTBWarning.h"

QTBTreeFollower::QTBTreeFollower()
{
    QTBGlobVarsUtil::GetCurrentActionIndex(&m_ActionIndex);
}

HRESULT QTBTreeFollower::Follow(const CATListValCATBaseUnknown_var& pdmRelations)
{
    HRESULT hr = S_OK;
    for (const CATBaseUnknown_var& spRelation : pdmRelations) {
        const QTBIPdmRelNode_var spIPdmRelNode(spRelation);
        QTBIPdmObjNode_var spILeft;
        QTBIPdmObjNode_var spIRight;
        // A relation that the graph dropped has no objects.
        if (spIPdmRelNode == NULL_var || FAILED(spIPdmRelNode->GetLeftObject(&spILeft)) ||
            FAILED(spIPdmRelNode->GetRightObject(&spIRight))) {
            continue;
        }
        for (const HRESULT hrOfEnd : {FollowFrom(spILeft, spIPdmRelNode, usLEFT_TO_RIGHT),
                                      FollowFrom(spIRight, spIPdmRelNode, usRIGHT_TO_LEFT)}) {
            hr = FAILED(hr) ? hr : hrOfEnd;
        }
    }
    return hr;
}

HRESULT QTBTreeFollower::FollowFrom(const QTBIPdmObjNode_var& spIPdmObjNode, const QTBIPdmRelNode_var& spIPdmRelNode,
                                    const CATUnicodeString& usDirection)
{
    const QTBIPdmNode_var spIPdmNode(spIPdmObjNode);
    CATListValCATBaseUnknown_var repNodes;
    if (spIPdmNode == NULL_var || FAILED(spIPdmNode->GetRepNodes(&repNodes, NULL_var))) {
        return S_OK;
    }
    HRESULT hr = S_OK;
    for (const CATBaseUnknown_var& spRepNode : repNodes) {
        const QTBIRepNode_var spIRepNode(spRepNode);
        CATListValQTBNodeRelationInfo displayed;
        if (FAILED(spIRepNode->GetPdmRelationsToBeDisplayed(&displayed))) {
            continue;
        }
        for (const QTBNodeRelationInfo& info : displayed) {
            unsigned char bIsA = FALSE;
            if (info.GetRelationDirection() == usDirection &&
                SUCCEEDED(spIPdmRelNode->IsA(info.GetRelationName(), &bIsA)) && bIsA != FALSE) {
                const HRESULT hrOfBranch = UpdateBranch(spIRepNode, info);
                hr = FAILED(hr) ? hr : hrOfBranch;
            }
        }
    }
    return hr;
}

HRESULT QTBTreeFollower::UpdateBranch(const QTBIRepNode_var& spIRepNode, const QTBNodeRelationInfo& info)
{
    std::vector<QTBNodeRelationInfo>& done = m_Done[spIRepNode.GetImpl()];
    if (std::find(done.begin(), done.end(), info) != done.end()) {
        return S_OK;
    }
    done.push_back(info);
    QTBIRepNodeCont_var spIRepNodeCont;
    if (const HRESULT hr = spIRepNode->GetRepNodeContainer(&spIRepNodeCont); FAILED(hr)) {
        return hr;
    }
    CATListValQTBNodeRelationInfo relations;
    relations.Append(info);
    unsigned char bTrue = TRUE;
    unsigned char bFalse = FALSE;
    // Each update ends the action.
    QTBGlobVarsUtil::SetCurrentActionIndex(m_ActionIndex);
    const HRESULT hr =
        spIRepNodeCont->UpdateRepTree(spIRepNode, relations, &bTrue, nullptr, nullptr, &bTrue, &bFalse, &bFalse);
    // That the maximum level was reached is told to who expands.
    return dynamic_cast<const QTBWarning*>(CATError::CATGetLastError(hr, nullptr)) != nullptr ? S_OK : hr;
}

#include <unordered_set>
#include <utility>
#include <vector>

#include "CATError.h"
#include "QTBCheck.h"
#include "QTBEPsnNodeOnASMPRODUCT.h"
#include "QTBILinkToQtb.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBInfoUtil.h"
#include "QTBLoadManager.h"
#include "QTBPartInstanceInfo.h"
#include "QTBProductCount.h"
#include "QTBPsnTreeUtil.h"

namespace {

using StringSet = std::unordered_set<CATUnicodeString>;

StringSet MakeSet(const CATListValCATUnicodeString& strings)
{
    return StringSet(strings.begin(), strings.end());
}

// Instance keys of a node's children and, when they are asked for, the children, parallel to them. A child that cannot
// be processed is left out.
HRESULT CollectChildInstances(const QTBIPsnNode_var& spIPsnNode, CATListValCATUnicodeString* pInstanceInfoStrings,
                              CATListValCATBaseUnknown_var* pNodes, const unsigned char& bOnlyBomParts)
{
    pInstanceInfoStrings->RemoveAll();
    if (pNodes != NULL) {
        pNodes->RemoveAll();
    }
    CATListValCATBaseUnknown_var ChildNodes;
    QTB_RESULT_AS("GetDirectChildren",
                  spIPsnNode->GetDirectChildren(&ChildNodes, FALSE, TRUE,
                                                bOnlyBomParts != FALSE ? QTB_BOM_TYPE_PART : QTB_BOM_TYPE_ALL, FALSE));
    for (const CATBaseUnknown_var& spChildNode : ChildNodes) {
        try {
            const CATIProduct_var spIProductOnChildNode(spChildNode);
            QTB_RAISE_INTERFACE(spIProductOnChildNode);
            CATUnicodeString usFirstAttribute;
            CATUnicodeString usSecondAttribute;
            const HRESULT hr =
                QTBPsnTreeUtil::GetInstanceAttributes(spIProductOnChildNode, &usFirstAttribute, &usSecondAttribute);
            QTB_REPORT_RESULT_AS("QTBPsnTreeUtil::GetInstanceAttributes", hr);
            if (SUCCEEDED(hr)) {
                pInstanceInfoStrings->Append(QTBLoadManager::MakeInstanceKey(usFirstAttribute, usSecondAttribute));
                if (pNodes != NULL) {
                    pNodes->Append(spChildNode);
                }
            }
        } catch (const CATXHException& exception) {
            QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::GetCurrentDirectChildInstanceInfoStrings -> "
                      "could not process child node");
            QTB_TRACE(exception.GetError()->GetNLSMessage());
        }
    }
    return QTB_SUCCESS;
}

// Saves the instance keys of one node's children. The children are those that are to save theirs next.
HRESULT SaveChildInstances(const QTBIPsnNode_var& spIPsnNode, CATListValCATBaseUnknown_var* pDirectChildNodes)
{
    CATUnicodeString usPsnNodeType;
    QTB_RESULT_AS("GetPsnNodeType", spIPsnNode->GetPsnNodeType(&usPsnNodeType, NULL));
    if (usPsnNodeType != usCATPRODUCT) {
        return QTB_SUCCESS;
    }
    CATListValCATUnicodeString InstanceInfoStrings;
    CATListValCATBaseUnknown_var DirectChildNodes;
    QTB_RESULT_AS("GetCurrentDirectChildInstanceInfoStrings",
                  CollectChildInstances(spIPsnNode, &InstanceInfoStrings, &DirectChildNodes, FALSE));
    const CATIProduct_var spIProductOnThis(spIPsnNode);
    QTB_INTERFACE(spIProductOnThis);
    const CATUnicodeString usPartNumber = spIProductOnThis->GetPartNumber();
    if (usPartNumber.IsEmpty()) {
        return QTB_SUCCESS;
    }
    unsigned char bAreProcessed = FALSE;
    QTB_CALL(g_QTBLoadManager.ChildInstanceNamesAreProcessed, usPartNumber, &bAreProcessed);
    if (bAreProcessed == FALSE) {
        QTB_CALL(g_QTBLoadManager.SetChildInstanceInfosAtLoad, usPartNumber, InstanceInfoStrings);
    }
    *pDirectChildNodes = DirectChildNodes;
    return QTB_SUCCESS;
}

} // namespace

HRESULT QTBEPsnNodeOnASMPRODUCT::GetCurrentDirectChildInstanceInfoStrings(
    CATListValCATUnicodeString* pDirectChildInstanceInfoStrings, CATListValCATBaseUnknown_var* pDirectChildNodes,
    const unsigned char& bOnlyBomParts)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::GetCurrentDirectChildInstanceInfoStrings");
    QTB_ASSERT(pDirectChildInstanceInfoStrings != NULL);
    const QTBIPsnNode_var spIPsnNodeOnThis(this);
    QTB_INTERFACE(spIPsnNodeOnThis);
    if (const HRESULT hr =
            CollectChildInstances(spIPsnNodeOnThis, pDirectChildInstanceInfoStrings, pDirectChildNodes, bOnlyBomParts);
        FAILED(hr)) {
        return hr;
    }
    if (pDirectChildNodes != NULL) {
        QTB_ASSERT(pDirectChildNodes->Size() == pDirectChildInstanceInfoStrings->Size());
    }
    return QTB_SUCCESS;
}

// Each child saves its own children in turn, and what fails there concerns nobody else. Structures are as deep as the
// data, so the walk keeps its own stack.
HRESULT QTBEPsnNodeOnASMPRODUCT::SaveCurrentChildInstanceInfoStrings()
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::SaveCurrentChildInstanceInfoStrings");
    const QTBIPsnNode_var spIPsnNodeOnThis(this);
    QTB_INTERFACE(spIPsnNodeOnThis);
    std::vector<CATBaseUnknown_var> waiting;
    const auto keepWaiting = [&waiting](const CATListValCATBaseUnknown_var& nodes) {
        for (int i = nodes.Size(); i >= 1; --i) {
            waiting.push_back(nodes[i]);
        }
    };
    CATListValCATBaseUnknown_var DirectChildNodes;
    if (const HRESULT hr = SaveChildInstances(spIPsnNodeOnThis, &DirectChildNodes); FAILED(hr)) {
        return hr;
    }
    keepWaiting(DirectChildNodes);
    QTBProductCount products;
    while (!waiting.empty()) {
        if (const HRESULT hr = products.Add(); FAILED(hr)) {
            return hr;
        }
        const CATBaseUnknown_var spDirectChildNode = std::move(waiting.back());
        waiting.pop_back();
        CATListValCATBaseUnknown_var NodesBelow;
        try {
            const QTBIPsnNode_var spIPsnNodeOnDirectChildNode(spDirectChildNode);
            QTB_RAISE_INTERFACE(spIPsnNodeOnDirectChildNode);
            QTB_RAISE_RESULT_AS("spIPsnNodeOnDirectChildNode->SaveCurrentChildInstanceInfoStrings",
                                SaveChildInstances(spIPsnNodeOnDirectChildNode, &NodesBelow));
        } catch (const CATXHException& exception) {
            QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::SaveCurrentChildInstanceInfoStrings -> could not process child node");
            QTB_TRACE(exception.GetError()->GetNLSMessage());
        }
        keepWaiting(NodesBelow);
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::CheckCurrentChildInstanceInfoLists(CATListValCATUnicodeString* pAdditionalPsnNodes,
                                                                    CATListValCATUnicodeString* pMissingPsnNodes,
                                                                    const unsigned char& bOnlyBomParts)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::CheckCurrentChildInstanceInfoLists");
    QTB_ASSERT(pAdditionalPsnNodes != NULL);
    QTB_ASSERT(pMissingPsnNodes != NULL);
    pAdditionalPsnNodes->RemoveAll();
    pMissingPsnNodes->RemoveAll();
    CATUnicodeString usPsnNodeType;
    QTB_CALL(GetPsnNodeType, &usPsnNodeType, NULL);
    const CATIProduct_var spIProductOnThis(this);
    QTB_INTERFACE(spIProductOnThis);
    const CATUnicodeString usPartNumber = spIProductOnThis->GetPartNumber();
    if (usPsnNodeType != usCATPRODUCT || usPartNumber.IsEmpty()) {
        return QTB_SUCCESS;
    }
    CATListValCATUnicodeString SavedStrings;
    if (FAILED(g_QTBLoadManager.GetChildInstanceInfosAtLoad(usPartNumber, &SavedStrings))) {
        QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::CheckCurrentChildInstanceInfoLists -> part number [" << usPartNumber
                                                                                                 << "] was not saved.");
    }
    CATListValCATUnicodeString CurrentStrings;
    CATListValCATBaseUnknown_var CurrentNodes;
    QTB_CALL(GetCurrentDirectChildInstanceInfoStrings, &CurrentStrings, &CurrentNodes, bOnlyBomParts);
    QTB_CALL(CompareChildInstanceInfoStrings, CurrentStrings, CurrentNodes, SavedStrings, pAdditionalPsnNodes,
             pMissingPsnNodes);
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::CompareChildInstanceInfoStrings(const CATListValCATUnicodeString& CurrentStrings,
                                                                 const CATListValCATBaseUnknown_var& CurrentNodes,
                                                                 const CATListValCATUnicodeString& SavedStrings,
                                                                 CATListValCATUnicodeString* pAdditionalPsnNodes,
                                                                 CATListValCATUnicodeString* pMissingPsnNodes)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::CompareChildInstanceInfoStrings");
    QTB_ASSERT(pAdditionalPsnNodes != NULL);
    QTB_ASSERT(pMissingPsnNodes != NULL);
    const StringSet Saved = MakeSet(SavedStrings);
    // A string that is no longer saved is additional once; one that is saved is looked at for each child that has it.
    StringSet Added = MakeSet(*pAdditionalPsnNodes);
    for (int i = 1; i <= CurrentStrings.Size(); ++i) {
        if (Saved.count(CurrentStrings[i]) > 0) {
            if (const HRESULT hr =
                    CompareChildInstance(CurrentStrings[i], CurrentNodes[i], pAdditionalPsnNodes, pMissingPsnNodes);
                FAILED(hr)) {
                return hr;
            }
        } else if (Added.insert(CurrentStrings[i]).second) {
            pAdditionalPsnNodes->Append(CurrentStrings[i]);
        }
    }

    const StringSet Current = MakeSet(CurrentStrings);
    StringSet Missing = MakeSet(*pMissingPsnNodes);
    for (const CATUnicodeString& usSavedString : SavedStrings) {
        if (Current.count(usSavedString) > 0 || Missing.count(usSavedString) > 0) {
            continue;
        }
        QTBIPdmRelNode_var spIPdmRelNode;
        if (SUCCEEDED(g_QTBLoadManager.GetPdmRelationForInstance(usSavedString, &spIPdmRelNode))) {
            pMissingPsnNodes->Append(usSavedString);
            Missing.insert(usSavedString);
        } else {
            QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::CompareChildInstanceInfoStrings -> <"
                      << usSavedString << "> does not have a PDM node, not adding it to pMissingPsnNodes.");
        }
    }
    return QTB_SUCCESS;
}

// A child whose key was saved is the same child unless its PDM nodes say otherwise.
HRESULT QTBEPsnNodeOnASMPRODUCT::CompareChildInstance(const CATUnicodeString& usCurrentString,
                                                      const CATBaseUnknown_var& spCurrentChildNode,
                                                      CATListValCATUnicodeString* pAdditionalPsnNodes,
                                                      CATListValCATUnicodeString* pMissingPsnNodes)
{
    const QTBILinkToQtb_var spILinkToQtbOnCurrentChildNode(spCurrentChildNode);
    QTB_INTERFACE(spILinkToQtbOnCurrentChildNode);
    unsigned char bPdmNodesExist = FALSE;
    QTBIPdmRelNode_var spIPdmRelNodeOnPartRel;
    QTBIPdmObjNode_var spIPdmObjNodeOnPartObj;
    QTB_CALL(spILinkToQtbOnCurrentChildNode->CorrespondingPdmNodesExist, &bPdmNodesExist, &spIPdmRelNodeOnPartRel,
             &spIPdmObjNodeOnPartObj, NULL);
    if (spIPdmObjNodeOnPartObj == NULL_var) {
        QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::CompareChildInstanceInfoStrings -> Instance name found, but no PDM object "
                  "node -> probably different part number -> adding to both additional and missing nodes");
    }
    if (spIPdmObjNodeOnPartObj == NULL_var || spIPdmRelNodeOnPartRel == NULL_var) {
        pAdditionalPsnNodes->Append(usCurrentString);
        pMissingPsnNodes->Append(usCurrentString);
        return QTB_SUCCESS;
    }
    unsigned char bHasEmptyInstanceName = FALSE;
    QTB_CALL(QTBInfoUtil::RelationHasEmptyInstanceName, spIPdmRelNodeOnPartRel, &bHasEmptyInstanceName);
    bool isAdditional = bHasEmptyInstanceName != FALSE;
    if (!isAdditional) {
        QTBIPdmObjNode_var spIPdmObjNodeOnRightObject;
        CATUnicodeString usPartNumber;
        CATUnicodeString usRightPartNumber;
        isAdditional =
            SUCCEEDED(QTBInfoUtil::GetCatiaPartNumberFromPdm(spIPdmObjNodeOnPartObj, &usPartNumber, FALSE, TRUE)) &&
            SUCCEEDED(spIPdmRelNodeOnPartRel->GetRightObject(&spIPdmObjNodeOnRightObject)) &&
            SUCCEEDED(
                QTBInfoUtil::GetCatiaPartNumberFromPdm(spIPdmObjNodeOnRightObject, &usRightPartNumber, FALSE, TRUE)) &&
            usPartNumber != usRightPartNumber;
    }
    if (isAdditional) {
        pAdditionalPsnNodes->Append(usCurrentString);
    }
    return QTB_SUCCESS;
}

HRESULT
QTBEPsnNodeOnASMPRODUCT::GetPathToRootPartInstanceInfo(CATListValQTBPartInstanceInfo* pPathToRootPartInstanceInfoList,
                                                       CATIProduct_var* pspIProductOnPdmPartMainNode)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::GetPathToRootPartInstanceInfo");
    QTB_ASSERT(pPathToRootPartInstanceInfoList != NULL);
    pPathToRootPartInstanceInfoList->RemoveAll();
    QTBIPsnNode_var spIPsnNodeOnCurrentNode;
    if (const HRESULT hr = GetPdmPartMainNode(&spIPsnNodeOnCurrentNode, NULL); FAILED(hr)) {
        // Without such a node the failure is a quiet one already.
        if (CATError::CATGetLastError(hr, NULL) != NULL) {
            QTB_RESULT_AS("GetPdmPartMainNode", hr);
        }
        return hr;
    }
    if (pspIProductOnPdmPartMainNode != NULL) {
        *pspIProductOnPdmPartMainNode = spIPsnNodeOnCurrentNode;
        QTB_INTERFACE(*pspIProductOnPdmPartMainNode);
    }
    std::vector<QTBPartInstanceInfo> steps;
    CATIProduct_var spIProductOnFatherNode;
    while (SUCCEEDED(spIPsnNodeOnCurrentNode->GetFatherProduct(&spIProductOnFatherNode, TRUE))) {
        const CATIProduct_var spIProductOnCurrentNode(spIPsnNodeOnCurrentNode);
        QTB_INTERFACE(spIProductOnCurrentNode);
        CATUnicodeString usInstanceName;
        QTB_CALL(spIProductOnCurrentNode->GetPrdInstanceName, &usInstanceName);
        steps.emplace_back().SetInstanceInfo(spIProductOnFatherNode->GetPartNumber(), usInstanceName);
        const QTBIPsnNode_var spIPsnNodeOnFatherNode(spIProductOnFatherNode);
        QTB_INTERFACE(spIPsnNodeOnFatherNode);
        spIPsnNodeOnCurrentNode = spIPsnNodeOnFatherNode;
    }
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        pPathToRootPartInstanceInfoList->Append(*step);
    }
    return QTB_SUCCESS;
}

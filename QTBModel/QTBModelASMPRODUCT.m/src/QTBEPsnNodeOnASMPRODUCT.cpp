#include "QTBEPsnNodeOnASMPRODUCT.h"

#include <memory>
#include <unordered_set>
#include <utility>
#include <vector>

#include "CATMsgCatalog.h"
#include "QTBCheck.h"
#include "QTBFileUtil.h"
#include "QTBGlobVarsUtil.h"
#include "QTBILinkToQtb.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBLoadManager.h"
#include "QTBMessageUtil.h"
#include "QTBPdmSessionUtil.h"
#include "QTBProductCount.h"
#include "QTBSchemaUtil.h"
#include "QTBTraceUtil.h"

namespace {

CATListValCATBaseUnknown_var GetChildrenOf(const CATIProduct_var& spIProduct)
{
    const std::unique_ptr<CATListValCATBaseUnknown_var> pChildren(spIProduct->GetChildren("CATIProduct"));
    return pChildren != NULL ? *pChildren : CATListValCATBaseUnknown_var();
}

// Whether the children of a node are not shown: it is the root of an archive, or that cannot be told.
bool HidesChildren(const QTBIPsnNode_var& spIPsnNode)
{
    unsigned char bIsCmiArchiveRoot = FALSE;
    if (FAILED(spIPsnNode->IsCmiArchiveRoot(&bIsCmiArchiveRoot, NULL))) {
        QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::GetDirectChildren -> IsCmiArchiveRoot !");
        return true;
    }
    return bIsCmiArchiveRoot != FALSE;
}

// Goes through a list from its last element to its first and takes out those that are not kept, also when the walk ends
// with a failure. keep has the form HRESULT keep(element, bool* pIsKept).
template <class Keep>
HRESULT Filter(CATListValCATBaseUnknown_var* pNodes, Keep keep)
{
    std::vector<bool> isKept(static_cast<std::size_t>(pNodes->Size()), true);
    HRESULT hr = S_OK;
    for (int i = pNodes->Size(); i >= 1 && SUCCEEDED(hr); --i) {
        bool isNodeKept = true;
        hr = keep((*pNodes)[i], &isNodeKept);
        isKept[static_cast<std::size_t>(i - 1)] = isNodeKept;
    }
    CATListValCATBaseUnknown_var KeptNodes;
    for (int i = 1; i <= pNodes->Size(); ++i) {
        if (isKept[static_cast<std::size_t>(i - 1)]) {
            KeptNodes.Append((*pNodes)[i]);
        }
    }
    *pNodes = std::move(KeptNodes);
    return hr;
}

// Walks the tree below a node as an operation does that calls itself for each child: open gives a node's children when
// the node is reached, close receives them when all below them is done. Structures are as deep as the data, so the walk
// keeps its own stack; nestedCall is the text of the call that would have been nested.
template <class Open, class Close>
HRESULT WalkBelow(const QTBIPsnNode_var& spIPsnNode, const char* nestedCall, Open open, Close close)
{
    struct Level
    {
        CATListValCATBaseUnknown_var Children;
        int position = 0;
    };
    std::vector<Level> levels;
    CATBaseUnknown_var spNode = spIPsnNode;
    QTBProductCount products;
    for (;;) {
        const int depth = static_cast<int>(levels.size());
        QTB_UNWIND_AS(nestedCall, depth, products.Add());
        const QTBIPsnNode_var spIPsnNodeOnChildNode(spNode);
        const auto checkNode = [&spIPsnNodeOnChildNode]() -> HRESULT {
            QTB_INTERFACE(spIPsnNodeOnChildNode);
            return QTB_SUCCESS;
        };
        QTB_UNWIND_AS(nestedCall, depth - 1, checkNode());
        Level level;
        QTB_UNWIND_AS(nestedCall, depth, open(spIPsnNodeOnChildNode, &level.Children));
        levels.push_back(std::move(level));
        while (levels.back().position == levels.back().Children.Size()) {
            QTB_UNWIND_AS(nestedCall, static_cast<int>(levels.size()) - 1, close(levels.back().Children));
            levels.pop_back();
            if (levels.empty()) {
                return QTB_SUCCESS;
            }
        }
        spNode = levels.back().Children[++levels.back().position];
    }
}

} // namespace

HRESULT QTBEPsnNodeOnASMPRODUCT::GetFatherProduct(CATIProduct_var* pspIProductOnFatherNode,
                                                  const unsigned char& bConsiderSpecialBehavior)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::GetFatherProduct");
    QTB_ASSERT(pspIProductOnFatherNode != NULL);
    *pspIProductOnFatherNode = NULL_var;
    const CATIProduct_var spIProductOnThis(this);
    QTB_INTERFACE(spIProductOnThis);
    CATIProduct_var spIProductOnFatherNode = spIProductOnThis->GetFatherProduct();
    while (spIProductOnFatherNode != NULL_var) {
        const QTBIPsnNode_var spIPsnNodeOnFatherNode(spIProductOnFatherNode);
        QTB_INTERFACE(spIPsnNodeOnFatherNode);
        unsigned char bFatherNodeNeedsSpecialBehavior = FALSE;
        CATUnicodeString usFatherNodeBehavior;
        QTB_CALL(spIPsnNodeOnFatherNode->NeedsSpecialBehavior, &bFatherNodeNeedsSpecialBehavior, &usFatherNodeBehavior);
        if (bFatherNodeNeedsSpecialBehavior == FALSE || bConsiderSpecialBehavior == FALSE) {
            *pspIProductOnFatherNode = spIProductOnFatherNode;
            return QTB_SUCCESS;
        }
        QTB_ASSERT((usFatherNodeBehavior == usIGNORE_NODE) || (usFatherNodeBehavior == usSKIP_NODE));
        spIProductOnFatherNode = spIProductOnFatherNode->GetFatherProduct();
    }
    return QTB_QUIET_FAILURE;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::GetDirectChildren(CATListValCATBaseUnknown_var* pDirectChildNodes,
                                                   const unsigned char& bConsiderSpecialBehavior,
                                                   const unsigned char& bStopAtCmiArchiveRoot,
                                                   const QTBBomType& WantedBomType,
                                                   const unsigned char& bIgnoreInvalidNodes)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::GetDirectChildren");
    QTB_ASSERT(pDirectChildNodes != NULL);
    QTB_ASSERT(WantedBomType != QTB_BOM_TYPE_INVALID);
    pDirectChildNodes->RemoveAll();
    const QTBIPsnNode_var spIPsnNodeOnThis(this);
    QTB_INTERFACE(spIPsnNodeOnThis);
    if (bStopAtCmiArchiveRoot != FALSE && HidesChildren(spIPsnNodeOnThis)) {
        return QTB_SUCCESS;
    }
    unsigned char bConfigurableBehaviorIsOn = FALSE;
    QTB_CALL(QTBGlobVarsUtil::GetConfigurableCatiaNodeBehaviorState, &bConfigurableBehaviorIsOn);
    const CATIProduct_var spIProductOnThis(this);
    QTB_INTERFACE(spIProductOnThis);
    if (bConfigurableBehaviorIsOn != FALSE && bConsiderSpecialBehavior != FALSE) {
        if (const HRESULT hr = AppendChildrenByBehavior(spIProductOnThis, pDirectChildNodes); FAILED(hr)) {
            return hr;
        }
    } else {
        *pDirectChildNodes = GetChildrenOf(spIProductOnThis);
    }
    if (WantedBomType != QTB_BOM_TYPE_ALL) {
        if (const HRESULT hr = KeepWantedBomType(WantedBomType, pDirectChildNodes); FAILED(hr)) {
            return hr;
        }
    }
    return bIgnoreInvalidNodes != FALSE ? RemoveInvalidNodes(pDirectChildNodes) : QTB_SUCCESS;
}

// A skipped child is asked for its own children, which may be skipped in turn, so the walk keeps its own stack.
HRESULT QTBEPsnNodeOnASMPRODUCT::AppendChildrenByBehavior(const CATIProduct_var& spIProductOnThis,
                                                          CATListValCATBaseUnknown_var* pDirectChildNodes)
{
    struct Level
    {
        CATListValCATBaseUnknown_var Children;
        int position = 0;
    };
    std::vector<Level> levels{{GetChildrenOf(spIProductOnThis), 0}};
    QTBProductCount products;
    // What a child of this node contributes is appended as a whole, so a failure further down leaves none of it.
    int sizeBeforeChild = 0;
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.position == level.Children.Size()) {
            levels.pop_back();
            continue;
        }
        if (levels.size() == 1) {
            sizeBeforeChild = pDirectChildNodes->Size();
        }
        const CATBaseUnknown_var spChildNode = level.Children[++level.position];
        Level childLevel;
        bool isSkipped = false;
        const auto treatChild = [&]() -> HRESULT {
            if (const HRESULT hr = products.Add(); FAILED(hr)) {
                return hr;
            }
            const QTBIPsnNode_var spIPsnNodeOnChildNode(spChildNode);
            QTB_INTERFACE(spIPsnNodeOnChildNode);
            unsigned char bNeedsSpecialBehavior = FALSE;
            CATUnicodeString usBehavior;
            QTB_CALL(spIPsnNodeOnChildNode->NeedsSpecialBehavior, &bNeedsSpecialBehavior, &usBehavior);
            if (bNeedsSpecialBehavior == FALSE) {
                pDirectChildNodes->Append(spChildNode);
            }
            isSkipped = bNeedsSpecialBehavior != FALSE && usBehavior == usSKIP_NODE;
            if (isSkipped && !HidesChildren(spIPsnNodeOnChildNode)) {
                const CATIProduct_var spIProductOnChildNode(spChildNode);
                QTB_INTERFACE(spIProductOnChildNode);
                childLevel.Children = GetChildrenOf(spIProductOnChildNode);
            }
            return QTB_SUCCESS;
        };
        if (const HRESULT hr = treatChild(); FAILED(hr)) {
            while (pDirectChildNodes->Size() > sizeBeforeChild) {
                pDirectChildNodes->RemovePosition(pDirectChildNodes->Size());
            }
            QTB_UNWIND_AS("spIPsnNodeOnChildNode->GetDirectChildren", static_cast<int>(levels.size()) - 1, hr);
        }
        if (isSkipped) {
            levels.push_back(std::move(childLevel));
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::KeepWantedBomType(const QTBBomType& WantedBomType,
                                                   CATListValCATBaseUnknown_var* pDirectChildNodes)
{
    return Filter(pDirectChildNodes, [&WantedBomType](const CATBaseUnknown_var& spNode, bool* pIsKept) -> HRESULT {
        const QTBIPsnNode_var spIPsnNodeOnDirectChild(spNode);
        QTB_INTERFACE(spIPsnNodeOnDirectChild);
        QTBBomType BomType = QTB_BOM_TYPE_INVALID;
        QTB_CALL(spIPsnNodeOnDirectChild->GetPdmBomInfo, &BomType);
        *pIsKept = !(WantedBomType == QTB_BOM_TYPE_PART && BomType == QTB_BOM_TYPE_AUX_FILE) &&
                   !(WantedBomType == QTB_BOM_TYPE_AUX_FILE && BomType == QTB_BOM_TYPE_PART);
        return QTB_SUCCESS;
    });
}

HRESULT QTBEPsnNodeOnASMPRODUCT::RemoveInvalidNodes(CATListValCATBaseUnknown_var* pDirectChildNodes)
{
    return Filter(pDirectChildNodes, [](const CATBaseUnknown_var& spNode, bool* pIsKept) -> HRESULT {
        const QTBIPsnNode_var spIPsnNodeOnDirectChild(spNode);
        QTB_INTERFACE(spIPsnNodeOnDirectChild);
        CATUnicodeString usPsnNodeType;
        if (SUCCEEDED(spIPsnNodeOnDirectChild->GetPsnNodeType(&usPsnNodeType, NULL)) && usPsnNodeType != usEMBCOMP &&
            usPsnNodeType != usBROKENLINK) {
            return QTB_SUCCESS;
        }
        // The types are keys of the catalog.
        const CATUnicodeString usTypeText = CATMsgCatalog::BuildMessage("QTBUserMessages", usPsnNodeType);
        CATError* pWarning =
            QTBMessageUtil::IgnoredInvalidNodeWarning(QTBTraceUtil::GetNodeString(spNode, FALSE), usTypeText);
        QTB_REPORT_CALL(QTBGlobVarsUtil::AddMessageToInfoListDialog, pWarning);
        QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::GetDirectChildren -> node type is [" << usPsnNodeType
                                                                                 << "] -> invalid -> ignoring it !");
        *pIsKept = false;
        return QTB_SUCCESS;
    });
}

HRESULT QTBEPsnNodeOnASMPRODUCT::GetAllChildren(CATListValCATBaseUnknown_var* pAllChildNodes,
                                                const unsigned char& bConsiderSpecialBehavior,
                                                const unsigned char& bStopAtCmiArchiveRoot,
                                                const QTBBomType& WantedBomType,
                                                const unsigned char& bIgnoreInvalidNodes,
                                                const unsigned char& bCheckUniqueInstanceNames)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::GetAllChildren");
    QTB_ASSERT(pAllChildNodes != NULL);
    pAllChildNodes->RemoveAll();
    const QTBIPsnNode_var spIPsnNodeOnThis(this);
    QTB_INTERFACE(spIPsnNodeOnThis);
    QTB_CALL(RecursiveGetAllChildren, spIPsnNodeOnThis, pAllChildNodes, bConsiderSpecialBehavior, bStopAtCmiArchiveRoot,
             WantedBomType, bIgnoreInvalidNodes, bCheckUniqueInstanceNames);
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::RecursiveGetAllChildren(const QTBIPsnNode_var& spIPsnNode,
                                                         CATListValCATBaseUnknown_var* pAllChildNodes,
                                                         const unsigned char& bConsiderSpecialBehavior,
                                                         const unsigned char& bStopAtCmiArchiveRoot,
                                                         const QTBBomType& WantedBomType,
                                                         const unsigned char& bIgnoreInvalidNodes,
                                                         const unsigned char& bCheckUniqueInstanceNames)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::RecursiveGetAllChildren");
    const auto open = [&](const QTBIPsnNode_var& spIPsnNodeOnNode,
                          CATListValCATBaseUnknown_var* pDirectChildNodes) -> HRESULT {
        QTB_CALL(spIPsnNodeOnNode->GetDirectChildren, pDirectChildNodes, bConsiderSpecialBehavior,
                 bStopAtCmiArchiveRoot, WantedBomType, bIgnoreInvalidNodes);
        return bCheckUniqueInstanceNames != FALSE ? CheckUniqueInstanceNames(spIPsnNodeOnNode, *pDirectChildNodes)
                                                  : QTB_SUCCESS;
    };
    const auto close = [pAllChildNodes](const CATListValCATBaseUnknown_var& DirectChildNodes) -> HRESULT {
        pAllChildNodes->Append(DirectChildNodes);
        return QTB_SUCCESS;
    };
    return WalkBelow(spIPsnNode, "RecursiveGetAllChildren", open, close);
}

HRESULT QTBEPsnNodeOnASMPRODUCT::CheckUniqueInstanceNames(const QTBIPsnNode_var& spIPsnNodeOnParent,
                                                          const CATListValCATBaseUnknown_var& DirectChildNodes)
{
    std::unordered_set<CATUnicodeString> InstanceNames;
    for (const CATBaseUnknown_var& spDirectChildNode : DirectChildNodes) {
        const CATIProduct_var spIProductOnChildNode(spDirectChildNode);
        QTB_INTERFACE(spIProductOnChildNode);
        CATUnicodeString usInstanceName;
        if (FAILED(spIProductOnChildNode->GetPrdInstanceName(&usInstanceName))) {
            QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::RecursiveGetAllChildren -> "
                      "spIProductOnChildNode->GetPrdInstanceName !");
            continue;
        }
        if (!InstanceNames.insert(usInstanceName).second) {
            CATError* pError = QTBMessageUtil::InstanceNameOccursMoreThanOnce(
                QTBTraceUtil::GetNodeString(spIPsnNodeOnParent, FALSE), usInstanceName);
            QTB_ASSERT(pError != NULL);
            const HRESULT hr = CATError::GetReturn(2, pError, NULL, __FILE__, __LINE__);
            QTB_REPORT_CALL(QTBGlobVarsUtil::AddErrorToInfoListDialog, pError->GetNLSMessage());
            return hr;
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::GetDirectReferenceChildNodes(CATListValCATBaseUnknown_var* pDirectReferenceChildNodes,
                                                              const QTBBomType& WantedBomType,
                                                              CATListValCATUnicodeString* pReferenceFileNames)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::GetDirectReferenceChildNodes");
    QTB_ASSERT(pDirectReferenceChildNodes != NULL);
    pDirectReferenceChildNodes->RemoveAll();
    if (pReferenceFileNames != NULL) {
        pReferenceFileNames->RemoveAll();
    }
    CATListValCATBaseUnknown_var DirectChildNodes;
    QTB_CALL(GetDirectChildren, &DirectChildNodes, TRUE, TRUE, WantedBomType, FALSE);
    std::unordered_set<CATUnicodeString> KnownFileNames;
    CATListValCATUnicodeString ReferenceFileNames;
    for (const CATBaseUnknown_var& spDirectChildNode : DirectChildNodes) {
        const CATIProduct_var spIProductOnCurrentChildNode(spDirectChildNode);
        QTB_INTERFACE(spIProductOnCurrentChildNode);
        CATUnicodeString usReferenceFileName;
        QTB_CALL(QTBFileUtil::GetReferenceFileName, spIProductOnCurrentChildNode, &usReferenceFileName, NULL);
        if (KnownFileNames.insert(usReferenceFileName).second) {
            ReferenceFileNames.Append(usReferenceFileName);
            pDirectReferenceChildNodes->Append(spDirectChildNode);
        }
    }
    if (pReferenceFileNames != NULL) {
        pReferenceFileNames->Append(ReferenceFileNames);
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::GetAllReferenceChildNodes(CATListValCATBaseUnknown_var* pAllReferenceChildNodes,
                                                           const QTBBomType& WantedBomType,
                                                           CATListValCATUnicodeString* pReferenceFileNames)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::GetAllReferenceChildNodes");
    QTB_ASSERT(pAllReferenceChildNodes != NULL);
    pAllReferenceChildNodes->RemoveAll();
    if (pReferenceFileNames != NULL) {
        pReferenceFileNames->RemoveAll();
    }
    const QTBIPsnNode_var spIPsnNodeOnThis(this);
    QTB_INTERFACE(spIPsnNodeOnThis);
    QTB_CALL(RecursiveGetAllReferenceChildNodes, spIPsnNodeOnThis, pAllReferenceChildNodes, WantedBomType,
             pReferenceFileNames);
    return QTB_SUCCESS;
}

// Each node empties the names when it is reached, so in the end those of the last subtree and of the direct children
// are left. That is meant: callers use the nodes.
HRESULT QTBEPsnNodeOnASMPRODUCT::RecursiveGetAllReferenceChildNodes(
    const QTBIPsnNode_var& spIPsnNode, CATListValCATBaseUnknown_var* pAllReferenceChildNodes,
    const QTBBomType& WantedBomType, CATListValCATUnicodeString* pReferenceFileNames)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::RecursiveGetAllReferenceChildNodes");
    const auto open = [&](const QTBIPsnNode_var& spIPsnNodeOnNode,
                          CATListValCATBaseUnknown_var* pDirectReferenceChildNodes) -> HRESULT {
        QTB_CALL(spIPsnNodeOnNode->GetDirectReferenceChildNodes, pDirectReferenceChildNodes, WantedBomType,
                 pReferenceFileNames);
        return QTB_SUCCESS;
    };
    const auto close = [&](const CATListValCATBaseUnknown_var& DirectReferenceChildNodes) -> HRESULT {
        pAllReferenceChildNodes->Append(DirectReferenceChildNodes);
        if (pReferenceFileNames == NULL) {
            return QTB_SUCCESS;
        }
        for (const CATBaseUnknown_var& spDirectReferenceChildNode : DirectReferenceChildNodes) {
            const CATIProduct_var spIProductOnChildNode(spDirectReferenceChildNode);
            QTB_INTERFACE(spIProductOnChildNode);
            CATUnicodeString usReferenceFileName;
            QTB_CALL(QTBFileUtil::GetReferenceFileName, spIProductOnChildNode, &usReferenceFileName, NULL);
            pReferenceFileNames->Append(usReferenceFileName);
        }
        return QTB_SUCCESS;
    };
    return WalkBelow(spIPsnNode, "RecursiveGetAllReferenceChildNodes", open, close);
}

HRESULT QTBEPsnNodeOnASMPRODUCT::GetPdmBomInfo(QTBBomType* pBomType)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::GetPdmBomInfo");
    QTB_ASSERT(pBomType != NULL);
    if (QTBPdmSessionUtil::UseBomPartStructure() == FALSE) {
        *pBomType = QTB_BOM_TYPE_AUX_FILE;
        return QTB_SUCCESS;
    }
    const QTBILinkToQtb_var spILinkToQtbOnThis(this);
    QTB_INTERFACE(spILinkToQtbOnThis);
    unsigned char bProdStrucPdmNodeExists = FALSE;
    QTB_CALL(spILinkToQtbOnThis->ProdStrucPdmNodeExists, &bProdStrucPdmNodeExists, NULL, NULL);
    if (bProdStrucPdmNodeExists != FALSE) {
        *pBomType = QTB_BOM_TYPE_PART;
        return QTB_SUCCESS;
    }
    const CATIProduct_var spIProductOnThis(this);
    QTB_INTERFACE(spIProductOnThis);
    unsigned char bIsAuxFile = FALSE;
    if (SUCCEEDED(g_QTBLoadManager.GetPsnReferenceIsAuxFile(spIProductOnThis, &bIsAuxFile))) {
        *pBomType = bIsAuxFile != FALSE ? QTB_BOM_TYPE_AUX_FILE : QTB_BOM_TYPE_PART;
        return QTB_SUCCESS;
    }
    CATUnicodeString usPdmNodeType;
    if (SUCCEEDED(GetPdmNodeType(&usPdmNodeType, NULL, NULL))) {
        CATListValCATUnicodeString PartClassNames;
        QTB_CALL(QTBSchemaUtil::GetPartClassNames, &PartClassNames, NULL, NULL);
        *pBomType = PartClassNames.Locate(usPdmNodeType) > 0 ? QTB_BOM_TYPE_PART : QTB_BOM_TYPE_AUX_FILE;
        return QTB_SUCCESS;
    }
    CATUnicodeString usPsnNodeType;
    QTB_CALL(GetPsnNodeType, &usPsnNodeType, NULL);
    *pBomType = usPsnNodeType == usCATPRODUCT ? QTB_BOM_TYPE_PART : QTB_BOM_TYPE_AUX_FILE;
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::IsCmiArchiveRoot(unsigned char* pbIsCmiArchiveRoot,
                                                  CATUnicodeString* pusArchiveFileName)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::IsCmiArchiveRoot");
    QTB_ASSERT(pbIsCmiArchiveRoot != NULL);
    const CATIProduct_var spIProductOnThis(this);
    QTB_INTERFACE(spIProductOnThis);
    CATUnicodeString usReferenceFileName;
    QTB_CALL(QTBFileUtil::GetReferenceFileName, spIProductOnThis, &usReferenceFileName, NULL);
    // Without a file the flag stays as the caller set it.
    if (usReferenceFileName.IsEmpty()) {
        return QTB_SUCCESS;
    }
    CATUnicodeString usArchiveFileName;
    QTB_CALL(g_QTBLoadManager.GetCatiaFileIsCmiArchiveRoot, spIProductOnThis, pbIsCmiArchiveRoot, &usArchiveFileName);
    if (*pbIsCmiArchiveRoot == FALSE) {
        return QTB_SUCCESS;
    }
    CATUnicodeString usCmiArchiveType;
    QTB_CALL(QTBPdmSessionUtil::GetCatiaFileClassInfo, QTB_CATIA_FILE_CLASS_CMIARCHIVE, &usCmiArchiveType, NULL, NULL,
             QTB_BOM_TYPE_AUX_FILE, NULL);
    QTB_CALL(SetPdmNodeType, usCmiArchiveType);
    if (pusArchiveFileName != NULL) {
        *pusArchiveFileName = usArchiveFileName;
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::IsUnderCmiArchiveRoot(unsigned char* pbIsUnderCmiArchiveRoot)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::IsUnderCmiArchiveRoot");
    QTB_ASSERT(pbIsUnderCmiArchiveRoot != NULL);
    *pbIsUnderCmiArchiveRoot = FALSE;
    QTBIPsnNode_var spIPsnNodeOnCurrentNode(this);
    QTB_INTERFACE(spIPsnNodeOnCurrentNode);
    CATIProduct_var spIProductOnFatherNode;
    while (SUCCEEDED(spIPsnNodeOnCurrentNode->GetFatherProduct(&spIProductOnFatherNode, TRUE))) {
        const QTBIPsnNode_var spIPsnNodeOnFatherNode(spIProductOnFatherNode);
        QTB_INTERFACE(spIPsnNodeOnFatherNode);
        unsigned char bIsCmiArchiveRoot = FALSE;
        QTB_CALL(spIPsnNodeOnFatherNode->IsCmiArchiveRoot, &bIsCmiArchiveRoot, NULL);
        if (bIsCmiArchiveRoot != FALSE) {
            *pbIsUnderCmiArchiveRoot = TRUE;
            return QTB_SUCCESS;
        }
        spIPsnNodeOnCurrentNode = spIPsnNodeOnFatherNode;
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::GetPsnNodeType(CATUnicodeString* pusPsnNodeType, CATUnicodeString* pusFileName)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::GetPsnNodeType");
    QTB_ASSERT(pusPsnNodeType != NULL);
    unsigned char bIsCmiArchiveRoot = FALSE;
    CATUnicodeString usFileName;
    QTB_CALL(IsCmiArchiveRoot, &bIsCmiArchiveRoot, &usFileName);
    if (bIsCmiArchiveRoot != FALSE) {
        *pusPsnNodeType = "CMIArchive";
    } else {
        const CATIProduct_var spIProductOnThis(this);
        QTB_INTERFACE(spIProductOnThis);
        QTB_CALL(QTBFileUtil::GetReferenceFileName, spIProductOnThis, &usFileName, pusPsnNodeType);
    }
    if (pusFileName != NULL) {
        *pusFileName = usFileName;
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::GetPdmFileObjInfo(CATUnicodeString* pusPdmFileObjInfo)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::GetPdmFileObjInfo");
    QTB_ASSERT(pusPdmFileObjInfo != NULL);
    CATUnicodeString usPsnNodeType;
    CATUnicodeString usFileName;
    QTB_CALL(GetPsnNodeType, &usPsnNodeType, &usFileName);
    CATUnicodeString usPdmClass;
    QTB_CALL(QTBPdmSessionUtil::GetCatiaFileClassInfo, CatiaFileClassStringToEnum(usPsnNodeType), &usPdmClass, NULL,
             NULL, QTB_BOM_TYPE_AUX_FILE, NULL);
    CATUnicodeString usFileNameWithoutExtension;
    QTB_CALL(QTBFileUtil::GetFileNameWithoutExtension, usFileName, &usFileNameWithoutExtension);
    *pusPdmFileObjInfo = usFileNameWithoutExtension + "/" + usPdmClass;
    QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::GetPdmFileObjInfo -> *pusPdmFileObjInfo:[" << *pusPdmFileObjInfo << "]");
    return QTB_SUCCESS;
}

QTBCatiaFileClass QTBEPsnNodeOnASMPRODUCT::CatiaFileClassStringToEnum(const CATUnicodeString& usPsnNodeType)
{
    return QTBPdmSessionUtil::GetFileClassOfDocType(usPsnNodeType);
}

HRESULT QTBEPsnNodeOnASMPRODUCT::PrintNodeInformation()
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::PrintNodeInformation");
    const CATIProduct_var spIProductOnThis(this);
    QTB_INTERFACE(spIProductOnThis);
    CATUnicodeString usPsnNodeType;
    CATUnicodeString usFileName;
    QTB_CALL(GetPsnNodeType, &usPsnNodeType, &usFileName);
    QTB_TRACE("PSN node information: " << QTBTraceUtil::GetNodeString(spIProductOnThis, FALSE) << " type:["
                                       << usPsnNodeType << "] file name:[" << usFileName << "]");
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::IsPdmPartMainNode(const CATIProduct_var& spIProduct,
                                                   unsigned char* pbIsPdmPartMainNode, QTBIPdmNode_var* pspIPdmNode)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::IsPdmPartMainNode");
    QTB_ASSERT(pbIsPdmPartMainNode != NULL);
    const QTBILinkToQtb_var spILinkToQtb(spIProduct);
    QTB_INTERFACE(spILinkToQtb);
    QTB_CALL(spILinkToQtb->ProdStrucPdmNodeExists, pbIsPdmPartMainNode, pspIPdmNode, NULL);
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::GetPdmPartMainNode(QTBIPsnNode_var* pspIPsnNodeOnPdmPartMainNode,
                                                    QTBIPdmNode_var* pspIPdmNode)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::GetPdmPartMainNode");
    QTB_ASSERT(pspIPsnNodeOnPdmPartMainNode != NULL);
    CATIProduct_var spIProductOnCurrentNode(this);
    QTB_INTERFACE(spIProductOnCurrentNode);
    for (;;) {
        unsigned char bIsPdmPartMainNode = FALSE;
        QTB_CALL(IsPdmPartMainNode, spIProductOnCurrentNode, &bIsPdmPartMainNode, pspIPdmNode);
        const QTBIPsnNode_var spIPsnNodeOnCurrentNode(spIProductOnCurrentNode);
        QTB_INTERFACE(spIPsnNodeOnCurrentNode);
        if (bIsPdmPartMainNode != FALSE) {
            *pspIPsnNodeOnPdmPartMainNode = spIPsnNodeOnCurrentNode;
            return QTB_SUCCESS;
        }
        if (FAILED(spIPsnNodeOnCurrentNode->GetFatherProduct(&spIProductOnCurrentNode, TRUE))) {
            return QTB_QUIET_FAILURE;
        }
    }
}

// The children are asked for no node in particular.
HRESULT QTBEPsnNodeOnASMPRODUCT::SubNodesHaveCorrespondingPdmNodes(unsigned char* pbHavePdmNodes)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::SubNodesHaveCorrespondingPdmNodes");
    QTB_ASSERT(pbHavePdmNodes != NULL);
    *pbHavePdmNodes = FALSE;
    CATListValCATBaseUnknown_var AllChildNodes;
    QTB_CALL(GetAllChildren, &AllChildNodes, TRUE, TRUE, QTB_BOM_TYPE_ALL, FALSE, FALSE);
    for (const CATBaseUnknown_var& spChildNode : AllChildNodes) {
        const QTBILinkToQtb_var spILinkToQtbOnChildNode(spChildNode);
        QTB_INTERFACE(spILinkToQtbOnChildNode);
        QTB_CALL(spILinkToQtbOnChildNode->CorrespondingPdmNodesExist, pbHavePdmNodes, NULL, NULL, NULL);
        if (*pbHavePdmNodes != FALSE) {
            return QTB_SUCCESS;
        }
    }
    return QTB_SUCCESS;
}

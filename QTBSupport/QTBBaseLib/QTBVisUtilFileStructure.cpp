// The part of QTBVisUtil on the products of the CAD session and on structures of files.

#include <functional>
#include <memory>

#include "CATDocument.h"
#include "CATDocumentServices.h"
#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATIProduct.h"
#include "QTBDocUtil.h"
#include "QTBFileUtil.h"
#include "QTBIPdmNode.h"
#include "QTBIRepNode.h"
#include "QTBInfoUtil.h"
#include "QTBProductCount.h"
#include "QTBRepTreeUtil.h"
#include "QTBVisUtil.h"

namespace {

void Prepend(const CATUnicodeString& usText, CATListValCATUnicodeString* pList)
{
    pList->InsertAt(1, usText);
}

CATUnicodeString GetFileNameOf(const CATIProduct_var& spIProduct)
{
    CATUnicodeString usFileName;
    return SUCCEEDED(QTBFileUtil::GetReferenceFileName(spIProduct, &usFileName, nullptr)) ? usFileName
                                                                                          : CATUnicodeString();
}

// The file name of a rep node that stands for a file; empty for any other.
CATUnicodeString GetFileNameOf(const QTBIRepNode_var& spIRepNode)
{
    unsigned char bIsFile = FALSE;
    CATUnicodeString usFileName;
    return SUCCEEDED(QTBRepTreeUtil::RepresentsCatiaFileNode(spIRepNode, &bIsFile, &usFileName, nullptr)) &&
                   bIsFile != FALSE
               ? usFileName
               : CATUnicodeString();
}

// Appends the children of a node that a step leads to.
using Step = std::function<void(const CATBaseUnknown_var& spNode, const CATUnicodeString& usInstanceName,
                                const CATUnicodeString& usFileName, CATListValCATBaseUnknown_var* pChildren)>;

HRESULT FollowSteps(const CATBaseUnknown_var& spRoot, const CATListValCATUnicodeString& InstanceNames,
                    const CATListValCATUnicodeString& FileNames, int stepCount, const Step& step,
                    CATListValCATBaseUnknown_var* pTargetNodes)
{
    if (!spRoot || pTargetNodes == nullptr || stepCount > InstanceNames.Size() || stepCount > FileNames.Size()) {
        return E_FAIL;
    }
    QTBProductCount count;
    CATListValCATBaseUnknown_var nodes;
    nodes.Append(spRoot);
    for (int i = 1; i <= stepCount; ++i) {
        CATListValCATBaseUnknown_var children;
        for (const CATBaseUnknown_var& spNode : nodes) {
            if (const HRESULT hr = count.Add(); FAILED(hr)) {
                return hr;
            }
            step(spNode, InstanceNames[i], FileNames[i], &children);
        }
        nodes = children;
    }
    *pTargetNodes = nodes;
    return nodes.Size() > 0 ? S_OK : E_FAIL;
}

void StepToRepNodes(const CATBaseUnknown_var& spNode, const CATUnicodeString& usInstanceName,
                    const CATUnicodeString& usFileName, CATListValCATBaseUnknown_var* pChildren)
{
    CATListValCATBaseUnknown_var relations;
    if (FAILED(QTBIRepNode_var(spNode)->GetDirectChildren(&relations))) {
        return;
    }
    for (const CATBaseUnknown_var& spRelation : relations) {
        const QTBIRepNode_var spIRepNodeOnRelation(spRelation);
        QTBIPdmNode_var spIPdmNodeOnRelation;
        unsigned char bIsUsed = FALSE;
        CATListValCATBaseUnknown_var objects;
        if (FAILED(spIRepNodeOnRelation->GetPdmNode(&spIPdmNodeOnRelation, FALSE, nullptr)) ||
            FAILED(QTBInfoUtil::CatiaInstanceNameIsUsedInRelation(spIPdmNodeOnRelation, usInstanceName, &bIsUsed)) ||
            bIsUsed == FALSE || FAILED(spIRepNodeOnRelation->GetDirectChildren(&objects))) {
            continue;
        }
        for (const CATBaseUnknown_var& spObject : objects) {
            if (GetFileNameOf(QTBIRepNode_var(spObject)) == usFileName) {
                pChildren->Append(spObject);
            }
        }
    }
}

void StepToProducts(const CATBaseUnknown_var& spNode, const CATUnicodeString& usInstanceName,
                    const CATUnicodeString& usFileName, CATListValCATBaseUnknown_var* pChildren)
{
    const std::unique_ptr<CATListValCATBaseUnknown_var> pProducts(CATIProduct_var(spNode)->GetChildren("CATIProduct"));
    for (const CATBaseUnknown_var& spProduct : *pProducts) {
        const CATIProduct_var spIProduct(spProduct);
        CATUnicodeString usNameOfProduct;
        if (SUCCEEDED(spIProduct->GetPrdInstanceName(&usNameOfProduct)) && usNameOfProduct == usInstanceName &&
            GetFileNameOf(spIProduct) == usFileName) {
            pChildren->Append(spProduct);
        }
    }
}

} // namespace

HRESULT QTBVisUtil::GetPsnWindowsForHighlight(const CATUnicodeString& usPartNumber, CATListPtrCATFrmWindow* pWindows)
{
    if (pWindows == nullptr) {
        return E_POINTER;
    }
    pWindows->RemoveAll();
    const CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    if (pLayout == nullptr) {
        return S_OK;
    }
    for (CATFrmWindow* pWindow : pLayout->GetWindowList()) {
        const CATFrmEditor* pEditor = pWindow->GetEditor();
        const CATDocument* pDocument = pEditor != nullptr ? pEditor->GetDocument() : nullptr;
        CATIProduct_var spIProductOnRoot;
        if (pDocument != nullptr && SUCCEEDED(QTBDocUtil::GetDocumentRootProduct(*pDocument, &spIProductOnRoot)) &&
            spIProductOnRoot != NULL_var && spIProductOnRoot->GetPartNumber() == usPartNumber) {
            pWindows->Append(pWindow);
        }
    }
    return S_OK;
}

HRESULT QTBVisUtil::GetPathToRootInstanceNames(const CATIProduct_var& spIProduct,
                                               CATListValCATUnicodeString* pInstanceNames,
                                               CATListValCATUnicodeString* pFileNames,
                                               QTBIRepNode_var* pspIRepNodeOnRoot)
{
    if (!spIProduct || pInstanceNames == nullptr || pFileNames == nullptr || pspIRepNodeOnRoot == nullptr) {
        return E_FAIL;
    }
    pInstanceNames->RemoveAll();
    pFileNames->RemoveAll();
    CATIProduct_var spICurrent = spIProduct;
    for (CATIProduct_var spIFather = spICurrent->GetFatherProduct(); spIFather != NULL_var;
         spIFather = spICurrent->GetFatherProduct()) {
        CATUnicodeString usInstanceName;
        if (const HRESULT hr = spICurrent->GetPrdInstanceName(&usInstanceName); FAILED(hr)) {
            return hr;
        }
        Prepend(usInstanceName, pInstanceNames);
        Prepend(GetFileNameOf(spICurrent), pFileNames);
        spICurrent = spIFather;
    }

    const CATUnicodeString usRootFileName = GetFileNameOf(spICurrent);
    CATFrmWindow* pFrmWindow = nullptr;
    CATListValCATBaseUnknown_var roots;
    if (usRootFileName.IsEmpty() ||
        FAILED(GetQtbWindowForHighlight(QTB_ROOT_REP_NODE_FILE, usRootFileName, &pFrmWindow, &roots)) ||
        roots.Size() == 0) {
        return E_FAIL;
    }
    *pspIRepNodeOnRoot = roots[1];
    return S_OK;
}

HRESULT QTBVisUtil::GetPathToRootInstanceNames(const QTBIRepNode_var& spIRepNode,
                                               CATListValCATUnicodeString* pInstanceNames,
                                               CATListValCATUnicodeString* pFileNames,
                                               CATIProduct_var* pspIProductOnDocRootProduct)
{
    if (!spIRepNode || pInstanceNames == nullptr || pFileNames == nullptr || pspIProductOnDocRootProduct == nullptr) {
        return E_FAIL;
    }
    pInstanceNames->RemoveAll();
    pFileNames->RemoveAll();
    QTBIRepNode_var spICurrent = spIRepNode;
    unsigned char bIsRelation = FALSE;
    if (SUCCEEDED(spIRepNode->RepresentsPdmRelNode(&bIsRelation, nullptr)) && bIsRelation != FALSE) {
        CATListValCATBaseUnknown_var objects;
        if (FAILED(spIRepNode->GetDirectChildren(&objects)) || objects.Size() != 1) {
            return E_FAIL;
        }
        spICurrent = objects[1];
    }
    CATUnicodeString usFileName = GetFileNameOf(spICurrent);
    for (QTBIRepNode_var spIRelation; !usFileName.IsEmpty() && SUCCEEDED(spICurrent->GetParent(&spIRelation));) {
        QTBIPdmNode_var spIPdmNodeOnRelation;
        CATListValCATUnicodeString names;
        if (FAILED(spIRelation->GetPdmNode(&spIPdmNodeOnRelation, FALSE, nullptr)) ||
            FAILED(QTBInfoUtil::GetCatiaInstanceNameListFromPdm(spIPdmNodeOnRelation, &names)) || names.Size() == 0 ||
            FAILED(spIRelation->GetParent(&spICurrent))) {
            return E_FAIL;
        }
        Prepend(names[1], pInstanceNames);
        Prepend(usFileName, pFileNames);
        usFileName = GetFileNameOf(spICurrent);
    }
    if (usFileName.IsEmpty()) {
        return E_FAIL;
    }

    CATUnicodeString usPath;
    CATDocument* pDocument = nullptr;
    if (const HRESULT hr = QTBFileUtil::CreateExMapFilePath(usFileName, &usPath); FAILED(hr)) {
        return hr;
    }
    if (FAILED(CATDocumentServices::GetDocumentInSession(usPath, &pDocument))) {
        return E_FAIL;
    }
    return QTBDocUtil::GetDocumentRootProduct(*pDocument, pspIProductOnDocRootProduct);
}

HRESULT QTBVisUtil::GetTargetChildFileNodes(const QTBIRepNode_var& spIRepNodeOnRoot,
                                            const CATListValCATUnicodeString& InstanceNames,
                                            const CATListValCATUnicodeString& FileNames, int stepCount,
                                            CATListValCATBaseUnknown_var* pTargetNodes)
{
    return FollowSteps(spIRepNodeOnRoot, InstanceNames, FileNames, stepCount, &StepToRepNodes, pTargetNodes);
}

HRESULT QTBVisUtil::GetTargetChildFileNodes(const CATIProduct_var& spIProductOnRoot,
                                            const CATListValCATUnicodeString& InstanceNames,
                                            const CATListValCATUnicodeString& FileNames, int stepCount,
                                            CATListValCATBaseUnknown_var* pTargetNodes)
{
    return FollowSteps(spIProductOnRoot, InstanceNames, FileNames, stepCount, &StepToProducts, pTargetNodes);
}

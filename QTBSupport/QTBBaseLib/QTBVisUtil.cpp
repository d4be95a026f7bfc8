#include "QTBVisUtil.h"

#include <vector>

#include "CATError.h"
#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATIProduct.h"
#include "CATPathElement.h"
#include "CATPathElementPool.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"
#include "QTBRepTreeUtil.h"

namespace {

// The object above in the tree that shows an object: of a rep node or product; empty for a root and for anything else.
CATBaseUnknown_var GetAbove(const CATBaseUnknown_var& spObject)
{
    const QTBIRepNode_var spIRepNode(spObject);
    if (spIRepNode != NULL_var) {
        QTBIRepNode_var spIRepNodeOnParent;
        return SUCCEEDED(spIRepNode->GetParent(&spIRepNodeOnParent)) ? spIRepNodeOnParent : QTBIRepNode_var();
    }
    const CATIProduct_var spIProduct(spObject);
    return spIProduct != NULL_var ? spIProduct->GetFatherProduct() : CATIProduct_var();
}

// The objects from the given one upwards that the editor has no path to yet, and the path that they continue, empty
// when the last one is a root. Fails for an object that hangs below itself.
HRESULT CollectPath(const CATBaseUnknown_var& spNode, const CATPathElementPool& pool,
                    std::vector<CATBaseUnknown_var>& objects, CATPathElement_var& spStart)
{
    // An object that is met a second time gives a circle away: every so often the one at hand is remembered.
    const CATBaseUnknown* pRemembered = nullptr;
    std::size_t nextToRemember = 1;
    CATBaseUnknown_var spObject = spNode;
    while (spObject != NULL_var) {
        if (spObject.Get() == pRemembered) {
            return E_FAIL;
        }
        if (objects.size() == nextToRemember) {
            pRemembered = spObject.Get();
            nextToRemember *= 2;
        }
        const CATBaseUnknown_var spAbove = GetAbove(spObject);
        spStart = CATPathElement_var::Adopt(pool.Find(spObject.Get()));
        if (spStart != NULL_var) {
            // A path that is known holds good as long as the object hangs where it hung.
            const CATPathElement* pKnownAbove = spStart->GetParent();
            if ((pKnownAbove != nullptr ? pKnownAbove->GetObject() : CATBaseUnknown_var()) == spAbove) {
                return S_OK;
            }
            spStart = NULL_var;
        }
        objects.push_back(spObject);
        spObject = spAbove;
    }
    return S_OK;
}

// The root rep nodes of a window that stand for the part number or file name.
HRESULT FindRoots(CATFrmWindow* pFrmWindow, const QTBRootRepNodeType& type, const CATUnicodeString& usKey,
                  CATListValCATBaseUnknown_var* pRootRepNodes)
{
    QTBIRepNodeCont_var spIRepNodeCont;
    if (FAILED(QTBRepTreeUtil::GetRepNodeContOfWindow(pFrmWindow, &spIRepNodeCont))) {
        return S_OK;
    }
    unsigned char bFalse = FALSE;
    CATListValCATBaseUnknown_var roots;
    if (const HRESULT hr = spIRepNodeCont->GetRepRootNodes(&roots, &bFalse, &bFalse); FAILED(hr)) {
        return hr;
    }
    for (const CATBaseUnknown_var& spRoot : roots) {
        unsigned char bRepresents = FALSE;
        CATUnicodeString usRootKey;
        const HRESULT hr = type == QTB_ROOT_REP_NODE_PART
                               ? QTBRepTreeUtil::RepresentsPdmPartNode(spRoot, &bRepresents, &usRootKey)
                               : QTBRepTreeUtil::RepresentsCatiaFileNode(spRoot, &bRepresents, &usRootKey, nullptr);
        if (FAILED(hr)) {
            return hr;
        }
        if (bRepresents != FALSE && usRootKey == usKey) {
            pRootRepNodes->Append(spRoot);
        }
    }
    return S_OK;
}

} // namespace

HRESULT QTBVisUtil::GetPathElementPtrFromNode(const CATBaseUnknown_var& spNode, CATFrmEditor* pFrmEditor,
                                              CATPathElement** ppPathElement)
{
    if (!spNode || pFrmEditor == nullptr || ppPathElement == nullptr) {
        return E_FAIL;
    }
    CATPathElementPool& pool = pFrmEditor->GetPathElements();
    std::vector<CATBaseUnknown_var> objects;
    CATPathElement_var spPath;
    const QTBIRepNode_var spIRepNode(spNode);
    CATFrmEditor* pEditorOfRepNode = nullptr;
    if (spIRepNode != NULL_var &&
        (FAILED(spIRepNode->GetFrmEditorPtr(&pEditorOfRepNode)) || pEditorOfRepNode != pFrmEditor)) {
        return E_FAIL;
    }
    if (const HRESULT hr = CollectPath(spNode, pool, objects, spPath); FAILED(hr)) {
        return hr;
    }
    for (auto it = objects.rbegin(); it != objects.rend(); ++it) {
        spPath = CATPathElement_var::Adopt(pool.Get(spPath.Get(), *it));
    }
    *ppPathElement = spPath.Get();
    (*ppPathElement)->AddRef();
    return S_OK;
}

HRESULT QTBVisUtil::GetQtbWindowForHighlight(const QTBRootRepNodeType& type, const CATUnicodeString& usKey,
                                             CATFrmWindow** ppFrmWindow, CATListValCATBaseUnknown_var* pRootRepNodes)
{
    const CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    if (ppFrmWindow == nullptr || *ppFrmWindow != nullptr || pRootRepNodes == nullptr || pLayout == nullptr ||
        usKey.IsEmpty()) {
        return E_FAIL;
    }
    pRootRepNodes->RemoveAll();
    CATListPtrCATFrmWindow candidates;
    if (pLayout->GetCurrentWindow() != nullptr) {
        candidates.Append(pLayout->GetCurrentWindow());
    }
    candidates.Append(pLayout->GetWindowList());
    for (CATFrmWindow* pFrmWindow : candidates) {
        if (const HRESULT hr = FindRoots(pFrmWindow, type, usKey, pRootRepNodes); FAILED(hr)) {
            return hr;
        }
        if (pRootRepNodes->Size() > 0) {
            *ppFrmWindow = pFrmWindow;
            return S_OK;
        }
    }
    return E_FAIL;
}

#include "QTBArchiveUtil.h"

#include <memory>
#include <unordered_set>
#include <vector>

#include "CATDocument.h"
#include "CATIPrdLink.h"
#include "CATIProduct.h"
#include "CATListValCATBaseUnknown_var.h"
#include "QTBDocUtil.h"
#include "QTBIPdmNode.h"
#include "QTBLoadManager.h"

namespace {

// Whether the document of a product has to be saved. A product without document has none to be saved.
HRESULT DocumentIsDirty(const CATIProduct_var& spIProduct, unsigned char* pbIsDirty)
{
    CATDocument* pDocument = nullptr;
    const CATIPrdLink_var spIPrdLink(spIProduct);
    if (spIPrdLink == NULL_var || FAILED(spIPrdLink->GetDocument(&pDocument))) {
        return S_OK;
    }
    if (pDocument->IsDirty()) {
        *pbIsDirty = TRUE;
        return S_OK;
    }
    const CATUnicodeString usPath = pDocument->GetStorageName();
    return usPath.IsEmpty() ? S_OK : QTBDocUtil::DocumentNeedsToBeSavedInPdm(usPath, pbIsDirty, FALSE, FALSE);
}

} // namespace

HRESULT QTBArchiveUtil::GetRootFileName(const QTBIPdmNode_var& spIPdmNode, CATUnicodeString* pusRootFileName)
{
    if (pusRootFileName == nullptr) {
        return E_POINTER;
    }
    if (spIPdmNode == NULL_var) {
        return E_FAIL;
    }
    unsigned char bIsDefined = FALSE;
    CATUnicodeString usRootFileName;
    const HRESULT hr = spIPdmNode->GetQtbInfoAttr("QtbArchiveRootFileName", &usRootFileName, FALSE, &bIsDefined, FALSE);
    if (FAILED(hr) || bIsDefined == FALSE) {
        return E_FAIL;
    }
    *pusRootFileName = usRootFileName;
    return S_OK;
}

HRESULT QTBArchiveUtil::IsArchiveDirty(const CATIProduct_var& spIProduct, unsigned char* pbIsDirty)
{
    unsigned char bIsArchiveRoot = FALSE;
    CATDocument* pRootDocument = nullptr;
    const CATIPrdLink_var spIPrdLink(spIProduct);
    if (spIPrdLink == NULL_var || pbIsDirty == nullptr ||
        FAILED(g_QTBLoadManager.GetCatiaFileIsCmiArchiveRoot(spIProduct, &bIsArchiveRoot, nullptr)) ||
        bIsArchiveRoot == FALSE || FAILED(spIPrdLink->GetDocument(&pRootDocument))) {
        return E_FAIL;
    }
    // Each reference is looked at once, however often it is used, and through its own tree: no instances are made.
    unsigned char bIsDirty = FALSE;
    std::unordered_set<const CATBaseUnknown*> known;
    std::vector<CATIProduct_var> waiting{spIProduct};
    while (!waiting.empty() && bIsDirty == FALSE) {
        const CATIProduct_var spIProductOnReference = waiting.back()->GetReferenceProduct();
        waiting.pop_back();
        if (spIProductOnReference == NULL_var || !known.insert(spIProductOnReference.GetImpl()).second) {
            continue;
        }
        if (const HRESULT hr = DocumentIsDirty(spIProductOnReference, &bIsDirty); FAILED(hr)) {
            return hr;
        }
        const std::unique_ptr<CATListValCATBaseUnknown_var> pChildren(
            spIProductOnReference->GetChildren("CATIProduct"));
        for (const CATBaseUnknown_var& spChild : *pChildren) {
            waiting.emplace_back(spChild);
        }
    }
    *pbIsDirty = bIsDirty;
    return S_OK;
}

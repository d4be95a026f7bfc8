#include "QTBPsnTreeUtil.h"

#include "CATError.h"
#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATIPrdLink.h"
#include "CATIPrdProperties.h"
#include "CATIProduct.h"
#include "CATProductServices.h"
#include "QTBMessageUtil.h"

namespace {

// The answer when there is no document: of the product's name when the user is to be told.
HRESULT ReportNone(const CATIProduct_var& spIProduct, const unsigned char& bReportIfNone)
{
    if (bReportIfNone == FALSE) {
        return E_FAIL;
    }
    CATUnicodeString usName;
    if (FAILED(spIProduct->GetPrdInstanceName(&usName))) {
        usName = spIProduct->GetPartNumber();
    }
    return CATError::GetReturn(2, QTBMessageUtil::PsnNodeRefDocNotFoundError(usName), nullptr, __FILE__, __LINE__);
}

bool IsInstance(const CATIProduct_var& spIProduct)
{
    return spIProduct != NULL_var && spIProduct->IsReference() == E_FAIL;
}

} // namespace

HRESULT QTBPsnTreeUtil::GetReferencePsnNode(const CATIProduct_var& spIProduct, CATIProduct_var* pspIProductOnReference,
                                            const unsigned char& bLoadDocument, const unsigned char& bReportIfNone)
{
    if (spIProduct == NULL_var || pspIProductOnReference == nullptr) {
        return E_FAIL;
    }
    const CATIPrdLink_var spIPrdLink(spIProduct);
    if (bLoadDocument != FALSE && (spIPrdLink == NULL_var || FAILED(spIPrdLink->LoadDocument()))) {
        return ReportNone(spIProduct, bReportIfNone);
    }
    const CATIProduct_var spIProductOnReference = spIProduct->GetReferenceProduct();
    if (spIProductOnReference == NULL_var) {
        return ReportNone(spIProduct, bReportIfNone);
    }
    *pspIProductOnReference = spIProductOnReference;
    return S_OK;
}

HRESULT QTBPsnTreeUtil::GetInstanceAttributes(const CATIProduct_var& spIProductOnInstance,
                                              CATUnicodeString* pusRelationKey, CATUnicodeString* pusInstanceName)
{
    const CATIPrdProperties_var spIPrdProperties(spIProductOnInstance);
    if (!IsInstance(spIProductOnInstance) || spIPrdProperties == NULL_var || pusRelationKey == nullptr ||
        pusInstanceName == nullptr) {
        return E_FAIL;
    }
    CATUnicodeString usRelationKey;
    CATUnicodeString usInstanceName;
    // A property that is not set leaves the text empty.
    spIPrdProperties->GetUserProperty(GetRelationKeyProperty(), &usRelationKey);
    if (FAILED(spIPrdProperties->GetUserProperty(GetInstanceNameProperty(), &usInstanceName)) &&
        FAILED(spIProductOnInstance->GetPrdInstanceName(&usInstanceName))) {
        return E_FAIL;
    }
    *pusRelationKey = usRelationKey;
    *pusInstanceName = usInstanceName;
    return S_OK;
}

HRESULT QTBPsnTreeUtil::SetInstanceAttributes(const CATIProduct_var& spIProductOnInstance,
                                              const CATUnicodeString& usRelationKey,
                                              const CATUnicodeString& usInstanceName)
{
    const CATIPrdProperties_var spIPrdProperties(spIProductOnInstance);
    if (!IsInstance(spIProductOnInstance) || spIPrdProperties == NULL_var || usRelationKey.IsEmpty() ||
        usInstanceName.IsEmpty()) {
        return E_FAIL;
    }
    const HRESULT hr = spIPrdProperties->SetUserProperty(GetRelationKeyProperty(), usRelationKey);
    return SUCCEEDED(hr) ? spIPrdProperties->SetUserProperty(GetInstanceNameProperty(), usInstanceName) : hr;
}

HRESULT QTBPsnTreeUtil::IsEmbeddedComponentNode(const CATIProduct_var& spIProduct, unsigned char* pbIsEmbeddedComponent)
{
    const CATIPrdLink_var spIPrdLink(spIProduct);
    CATPrdLinkState state = CATPrdLinkState::Broken;
    if (spIPrdLink == NULL_var || pbIsEmbeddedComponent == nullptr || FAILED(spIPrdLink->GetLinkState(&state))) {
        return E_FAIL;
    }
    *pbIsEmbeddedComponent = state == CATPrdLinkState::Embedded ? TRUE : FALSE;
    return S_OK;
}

HRESULT QTBPsnTreeUtil::GetDocumentPtrFromPsnNode(const CATIProduct_var& spIProduct, CATDocument** ppDocument,
                                                  const unsigned char& bLoadDocument,
                                                  const unsigned char& bReportIfNone)
{
    if (ppDocument == nullptr) {
        return E_FAIL;
    }
    *ppDocument = nullptr;
    const CATIPrdLink_var spIPrdLink(spIProduct);
    if (spIPrdLink == NULL_var) {
        return E_FAIL;
    }
    if ((bLoadDocument != FALSE && FAILED(spIPrdLink->LoadDocument())) || FAILED(spIPrdLink->GetDocument(ppDocument))) {
        return ReportNone(spIProduct, bReportIfNone);
    }
    return S_OK;
}

HRESULT QTBPsnTreeUtil::GetShapeRepDocumentPtrFromPsnNode(const CATIProduct_var& spIProduct, CATDocument** ppDocument,
                                                          const unsigned char& bReportIfNone)
{
    if (ppDocument == nullptr) {
        return E_FAIL;
    }
    *ppDocument = nullptr;
    const CATIPrdLink_var spIPrdLink(spIProduct);
    if (spIPrdLink == NULL_var) {
        return E_FAIL;
    }
    return SUCCEEDED(spIPrdLink->GetShapeRepDocument(ppDocument)) ? S_OK : ReportNone(spIProduct, bReportIfNone);
}

HRESULT QTBPsnTreeUtil::GetFrmEditorPtrFromPsnNode(const CATIProduct_var& spIProduct, CATFrmEditor** ppFrmEditor)
{
    if (ppFrmEditor == nullptr) {
        return E_FAIL;
    }
    *ppFrmEditor = nullptr;
    const CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    CATDocument* pDocument = nullptr;
    if (spIProduct == NULL_var || pLayout == nullptr ||
        FAILED(CATProductServices::GetTreeDocument(spIProduct, &pDocument))) {
        return E_FAIL;
    }
    for (CATFrmEditor* pFrmEditor : pLayout->GetEditorList()) {
        if (pFrmEditor->GetDocument() == pDocument) {
            *ppFrmEditor = pFrmEditor;
            return S_OK;
        }
    }
    return E_FAIL;
}

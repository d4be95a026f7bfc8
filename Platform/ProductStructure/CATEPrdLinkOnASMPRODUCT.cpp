#include "CATEPrdLinkOnASMPRODUCT.h"

#include "CATPrdDocument.h"
#include "CATPrdReference.h"

namespace {

HRESULT Give(CATDocument* pDocument, CATDocument** ppDocument)
{
    if (ppDocument == nullptr) {
        return E_POINTER;
    }
    *ppDocument = pDocument;
    return pDocument != nullptr ? S_OK : E_FAIL;
}

} // namespace

CATPrdReference* CATEPrdLinkOnASMPRODUCT::GetReference() const
{
    CATAsmProduct* pProduct = CATAsmProduct::FromComponent(this);
    return pProduct != nullptr ? &pProduct->GetReference() : nullptr;
}

HRESULT CATEPrdLinkOnASMPRODUCT::GetLinkState(CATPrdLinkState* pState)
{
    if (pState == nullptr) {
        return E_POINTER;
    }
    const CATPrdReference* pReference = GetReference();
    if (pReference == nullptr || pReference->IsClosed()) {
        return E_FAIL;
    }
    *pState = pReference->GetLinkState();
    return S_OK;
}

HRESULT CATEPrdLinkOnASMPRODUCT::GetLinkedFileName(CATUnicodeString* pusStorageName)
{
    if (pusStorageName == nullptr) {
        return E_POINTER;
    }
    const CATPrdReference* pReference = GetReference();
    if (pReference == nullptr || pReference->GetLinkState() == CATPrdLinkState::Embedded) {
        return E_FAIL;
    }
    *pusStorageName = pReference->GetLinkedFileName();
    return S_OK;
}

HRESULT CATEPrdLinkOnASMPRODUCT::GetDocument(CATDocument** ppDocument)
{
    const CATPrdReference* pReference = GetReference();
    return Give(pReference != nullptr ? pReference->GetDocument() : nullptr, ppDocument);
}

HRESULT CATEPrdLinkOnASMPRODUCT::GetShapeRepDocument(CATDocument** ppDocument)
{
    const CATPrdReference* pReference = GetReference();
    return Give(pReference != nullptr ? pReference->GetShapeDocument() : nullptr, ppDocument);
}

HRESULT CATEPrdLinkOnASMPRODUCT::LoadDocument()
{
    CATPrdReference* pReference = GetReference();
    return pReference != nullptr ? pReference->Load() : E_FAIL;
}

HRESULT CATEPrdLinkOnASMPRODUCT::GetDesignTables(CATListValCATUnicodeString* pNames,
                                                 CATListValCATUnicodeString* pStorageNames)
{
    if (pNames == nullptr) {
        return E_POINTER;
    }
    const CATPrdReference* pReference = GetReference();
    if (pReference == nullptr || !pReference->IsLoaded()) {
        return E_FAIL;
    }
    pNames->RemoveAll();
    if (pStorageNames != nullptr) {
        pStorageNames->RemoveAll();
    }
    for (const auto& [name, storageName] : pReference->GetDefinition().designTables) {
        pNames->Append(name);
        if (pStorageNames != nullptr) {
            pStorageNames->Append(storageName);
        }
    }
    return S_OK;
}

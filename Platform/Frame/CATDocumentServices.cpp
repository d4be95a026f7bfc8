#include "CATDocumentServices.h"

#include "CATDocument.h"
#include "CATDocumentRegister.h"
#include "CATFrmLayout.h"
#include "CATICreateInstance.h"
#include "CATIDocAlias.h"
#include "CATIPersistent.h"
#include "CATInit.h"
#include "CATInstantiateComponent.h"
#include "CATLateType.h"

namespace {

// A late type with a factory makes its documents itself; the documents of all others hold nothing of their own.
CATBaseUnknown_var CreateComponent(const CATUnicodeString& lateType)
{
    const CATLateType* pLateType = CATLateType::Find(lateType.ConvertToChar());
    if (pLateType == nullptr) {
        return {};
    }
    if (pLateType->Resolve(IID_CATICreateInstance) == nullptr) {
        return CATBaseUnknown_var::Adopt(new CATDocument(*pLateType));
    }
    void* pComponent = nullptr;
    const HRESULT hr = CATInstantiateComponent(lateType.ConvertToChar(), CLSID_CATBaseUnknown, &pComponent);
    const auto spComponent = CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pComponent));
    return SUCCEEDED(hr) && CATDocument::FromComponent(spComponent.Get()) != nullptr ? spComponent
                                                                                     : CATBaseUnknown_var();
}

// The component of a document of the type; a type with an alias stands for the late type that the alias names.
CATBaseUnknown_var CreateDocument(const CATUnicodeString& type)
{
    CATBaseUnknown_var spOfType = CreateComponent(type);
    const CATIDocAlias_var spIDocAlias(spOfType);
    if (spIDocAlias == NULL_var) {
        return spOfType;
    }
    const CATUnicodeString alias = spIDocAlias->GetAlias();
    return alias == type ? spOfType : CreateComponent(alias);
}

} // namespace

HRESULT CATDocumentServices::New(const CATUnicodeString& type, CATBaseUnknown_var* pspDocument)
{
    if (pspDocument == nullptr) {
        return E_POINTER;
    }
    const CATBaseUnknown_var spDocument = CreateDocument(type);
    const CATInit_var spInit(spDocument);
    if (spInit == NULL_var) {
        return E_FAIL;
    }
    CATDocumentRegister::Session().Add(*CATDocument::FromComponent(spDocument.Get()));
    spInit->Init(FALSE);
    *pspDocument = spDocument;
    return S_OK;
}

HRESULT CATDocumentServices::Open(const CATUnicodeString& type, const CATUnicodeString& storageName,
                                  unsigned char bReadOnly, CATBaseUnknown_var* pspDocument)
{
    if (pspDocument == nullptr) {
        return E_POINTER;
    }
    CATDocument* pInSession = nullptr;
    if (SUCCEEDED(GetDocumentInSession(storageName, &pInSession))) {
        *pspDocument = CATBaseUnknown_var(pInSession);
        return S_OK;
    }
    CATBaseUnknown_var spDocument;
    if (const HRESULT hr = New(type, &spDocument); FAILED(hr)) {
        return hr;
    }
    CATDocument& document = *CATDocument::FromComponent(spDocument.Get());
    const CATIPersistent_var spIPersistent(spDocument);
    if (spIPersistent == NULL_var) {
        Remove(document);
        return E_FAIL;
    }
    document.SetStorageName(storageName);
    spIPersistent->Load(storageName, bReadOnly);
    *pspDocument = spDocument;
    return S_OK;
}

HRESULT CATDocumentServices::Save(CATDocument& document)
{
    const CATIPersistent_var spIPersistent(&document);
    if (spIPersistent == NULL_var) {
        return E_FAIL;
    }
    spIPersistent->Save();
    return S_OK;
}

HRESULT CATDocumentServices::SaveAs(CATDocument& document, const CATUnicodeString& storageName)
{
    const CATIPersistent_var spIPersistent(&document);
    if (spIPersistent == NULL_var) {
        return E_FAIL;
    }
    spIPersistent->SaveAs(storageName, TRUE);
    return S_OK;
}

HRESULT CATDocumentServices::GetDocumentInSession(const CATUnicodeString& storageName, CATDocument** ppDocument)
{
    if (ppDocument == nullptr) {
        return E_POINTER;
    }
    *ppDocument = CATDocumentRegister::Session().Find(storageName);
    return *ppDocument != nullptr ? S_OK : E_FAIL;
}

bool CATDocumentServices::FileIsInSession(const CATUnicodeString& fileName)
{
    return CATDocumentRegister::Session().HasFileName(fileName);
}

const CATListValCATBaseUnknown_var& CATDocumentServices::GetDocuments()
{
    return CATDocumentRegister::Session().GetList();
}

void CATDocumentServices::Add(CATDocument& document)
{
    CATDocumentRegister::Session().Add(document);
}

void CATDocumentServices::Remove(CATDocument& document)
{
    const CATBaseUnknown_var spDocument(&document);
    if (CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout(); pLayout != nullptr) {
        const CATListPtr<CATFrmEditor> editors = pLayout->GetEditorList();
        for (CATFrmEditor* pEditor : editors) {
            // Closing an editor may have closed others.
            if (pLayout->GetEditorList().Locate(pEditor) > 0 && pEditor->GetDocument() == &document) {
                pLayout->CloseEditor(pEditor);
            }
        }
    }
    Forget(&document);
}

void CATDocumentServices::RemoveAll()
{
    const CATListValCATBaseUnknown_var documents = GetDocuments();
    for (const CATBaseUnknown_var& spDocument : documents) {
        Remove(*CATDocument::FromComponent(spDocument.Get()));
    }
}

void CATDocumentServices::Forget(CATDocument* pDocument)
{
    const CATBaseUnknown_var spDocument(pDocument);
    if (pDocument != nullptr && CATDocumentRegister::Contains(*pDocument) && pDocument->LeavesSession()) {
        CATDocumentRegister::Session().Remove(*pDocument);
    }
}

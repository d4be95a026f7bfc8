#include "CATDocumentServices.h"

#include <algorithm>
#include <string_view>

#include "CATDocument.h"
#include "CATFrmLayout.h"
#include "CATIDocAlias.h"
#include "CATIPersistent.h"
#include "CATInit.h"
#include "CATLateType.h"

namespace {

// Kept to the end of the program, because documents may outlive static objects.
CATListValCATBaseUnknown_var& Documents()
{
    static auto* const s_pDocuments = new CATListValCATBaseUnknown_var();
    return *s_pDocuments;
}

CATBaseUnknown_var CreateComponent(const CATUnicodeString& lateType)
{
    const CATLateType* pLateType = CATLateType::Find(lateType.ConvertToChar());
    return pLateType != nullptr ? CATBaseUnknown_var::Adopt(new CATDocument(*pLateType)) : CATBaseUnknown_var();
}

// The component of a document of the type; a type with an alias stands for the late type that the alias names.
CATBaseUnknown_var CreateDocument(const CATUnicodeString& type)
{
    const CATBaseUnknown_var spOfType = CreateComponent(type);
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
    Documents().Append(spDocument);
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
    *ppDocument = nullptr;
    for (const CATBaseUnknown_var& spDocument : Documents()) {
        CATDocument* pDocument = CATDocument::FromComponent(spDocument.Get());
        if (!storageName.IsEmpty() && pDocument->GetStorageName() == storageName) {
            *ppDocument = pDocument;
            return S_OK;
        }
    }
    return E_FAIL;
}

bool CATDocumentServices::FileIsInSession(const CATUnicodeString& fileName)
{
    const auto hasFileName = [&fileName](const CATBaseUnknown_var& spDocument) {
        std::string_view storageName = CATDocument::FromComponent(spDocument.Get())->GetStorageName().View();
        storageName.remove_prefix(storageName.find_last_of('/') + 1);
        return storageName == fileName.View();
    };
    return !fileName.IsEmpty() && std::any_of(Documents().begin(), Documents().end(), hasFileName);
}

const CATListValCATBaseUnknown_var& CATDocumentServices::GetDocuments()
{
    return Documents();
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

void CATDocumentServices::Forget(const CATDocument* pDocument)
{
    for (int i = Documents().Size(); i >= 1; --i) {
        if (Documents()[i].Get() == pDocument) {
            // Its destruction may reach the list, so it goes when the list is done with.
            const CATBaseUnknown_var spDocument = Documents()[i];
            Documents().RemovePosition(i);
            return;
        }
    }
}

#include "QTBDocUtil.h"

#include <algorithm>

#include "CATDocument.h"
#include "CATDocumentServices.h"
#include "CATError.h"
#include "CATFrmNavigGraphicWindow.h"
#include "CATIEditor.h"
#include "CATIPrdLink.h"
#include "CATMsgCatalog.h"
#include "CATProductServices.h"
#include "QTBExchangedFiles.h"
#include "QTBFrmWindow.h"
#include "QTBIQtbFrmWindow.h"

namespace {

constexpr const char* DOCUMENT_TYPE = "QTBDocument";
constexpr const char* DOCUMENT_LATE_TYPE = "QTBDoc";

// Windows are numbered as long as the program runs, so that a title never names two of them.
CATUnicodeString MakeWindowTitle()
{
    static int s_LastNumber = 0;
    CATUnicodeString usNumber;
    usNumber.BuildFromNum(++s_LastNumber);
    return CATMsgCatalog::BuildMessage("QTBUserMessages", "QtbWindowTitle", {usNumber});
}

HRESULT OpenWindow(const CATBaseUnknown_var& spDocument, const CATIEditor_var& spIEditor,
                   CATBaseUnknown_var* pspFrmWindow)
{
    if (spIEditor == NULL_var) {
        return E_FAIL;
    }
    try {
        CATFrmEditor* pFrmEditor = spIEditor->GetEditor();
        CATFrmWindow* pFrmWindow =
            pFrmEditor != nullptr ? CATFrmNavigGraphicWindow::Create(MakeWindowTitle(), pFrmEditor) : nullptr;
        return pFrmWindow != nullptr ? QTBFrmWindow::Create(pFrmWindow, spDocument, pspFrmWindow) : E_FAIL;
    } catch (const CATXHException& exception) {
        return exception.GetResult();
    }
}

} // namespace

HRESULT QTBDocUtil::CreateNewQtbDocument(QTBIQtbFrmWindow_var* pspIQtbFrmWindow, CATIEditor_var* pspIEditor)
{
    CATBaseUnknown_var spDocument;
    HRESULT hr = CATDocumentServices::New(DOCUMENT_TYPE, &spDocument);
    if (FAILED(hr)) {
        return hr;
    }
    const CATIEditor_var spIEditor(spDocument);
    CATBaseUnknown_var spFrmWindow;
    hr = OpenWindow(spDocument, spIEditor, &spFrmWindow);
    if (FAILED(hr)) {
        CATDocumentServices::Remove(*CATDocument::FromComponent(spDocument.Get()));
        return hr;
    }
    if (pspIQtbFrmWindow != nullptr) {
        *pspIQtbFrmWindow = spFrmWindow;
    }
    if (pspIEditor != nullptr) {
        *pspIEditor = spIEditor;
    }
    return S_OK;
}

void QTBDocUtil::CloseAllQtbDocuments()
{
    const CATListValCATBaseUnknown_var documents = CATDocumentServices::GetDocuments();
    for (int i = documents.Size(); i >= 1; --i) {
        if (documents[i]->IsAKindOf(DOCUMENT_LATE_TYPE)) {
            CATDocumentServices::Remove(*CATDocument::FromComponent(documents[i].Get()));
        }
    }
}

HRESULT QTBDocUtil::GetPsnDocumentInSession(const CATUnicodeString& usPartNumber, CATIProduct_var* pspIProductOnRoot)
{
    return pspIProductOnRoot != nullptr ? CATProductServices::FindRootProduct(usPartNumber, pspIProductOnRoot)
                                        : E_POINTER;
}

bool QTBDocUtil::HasPsnDocumentInSession()
{
    return std::ranges::any_of(CATDocumentServices::GetDocuments(), [](const CATBaseUnknown_var& spDocument) {
        CATIProduct_var spIProductOnRoot;
        return SUCCEEDED(
            CATProductServices::GetRootProduct(*CATDocument::FromComponent(spDocument.Get()), &spIProductOnRoot));
    });
}

HRESULT QTBDocUtil::GetDocumentRootProduct(const CATDocument& document, CATIProduct_var* pspIProductOnRoot)
{
    return pspIProductOnRoot != nullptr ? CATProductServices::GetRootProduct(document, pspIProductOnRoot) : E_POINTER;
}

HRESULT QTBDocUtil::CmiGetDocForProduct(const CATIProduct_var& spIProduct, const CATUnicodeString& usPartNumber,
                                        CATDocument** ppDocument)
{
    if (ppDocument == nullptr) {
        return E_POINTER;
    }
    *ppDocument = nullptr;
    CATIPrdLink_var spIPrdLink(spIProduct);
    if (spIPrdLink != NULL_var && SUCCEEDED(spIPrdLink->GetDocument(ppDocument))) {
        return S_OK;
    }
    CATIProduct_var spIProductOnRoot;
    if (spIProduct == NULL_var || usPartNumber.IsEmpty() ||
        FAILED(CATProductServices::FindRootProduct(usPartNumber, &spIProductOnRoot))) {
        return E_FAIL;
    }
    spIPrdLink = spIProductOnRoot;
    return spIPrdLink != NULL_var && SUCCEEDED(spIPrdLink->GetDocument(ppDocument)) ? S_OK : E_FAIL;
}

HRESULT QTBDocUtil::DocumentNeedsToBeSavedInPdm(const CATUnicodeString& usPath, unsigned char* pbNeedsToBeSaved,
                                                const unsigned char& bIgnoreDocuments,
                                                const unsigned char& bCompareContent)
{
    if (usPath.IsEmpty() || pbNeedsToBeSaved == nullptr) {
        return E_FAIL;
    }
    CATDocument* pDocument = nullptr;
    if (bIgnoreDocuments == FALSE && SUCCEEDED(CATDocumentServices::GetDocumentInSession(usPath, &pDocument)) &&
        pDocument->IsDirty()) {
        *pbNeedsToBeSaved = TRUE;
        return S_OK;
    }
    using State = QTBExchangedFiles::State;
    State state = State::Absent;
    if (const HRESULT hr = QTBExchangedFiles::GetState(usPath, bCompareContent != FALSE, &state); FAILED(hr)) {
        return hr;
    }
    *pbNeedsToBeSaved = state == State::Changed || state == State::NotNoted ? TRUE : FALSE;
    return S_OK;
}

HRESULT QTBDocUtil::FileWasExchanged(const CATUnicodeString& usPath)
{
    return usPath.IsEmpty() ? E_FAIL : QTBExchangedFiles::Note(usPath);
}

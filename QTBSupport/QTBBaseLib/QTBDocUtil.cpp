#include "QTBDocUtil.h"

#include "CATDocument.h"
#include "CATDocumentServices.h"
#include "CATError.h"
#include "CATFrmNavigGraphicWindow.h"
#include "CATIEditor.h"
#include "CATMsgCatalog.h"
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

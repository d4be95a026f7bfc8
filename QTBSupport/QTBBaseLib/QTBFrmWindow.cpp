#include "QTBFrmWindow.h"

#include "CATCallback.h"
#include "CATError.h"
#include "CATFrmLayout.h"
#include "CATFrmWindow.h"
#include "CATLateType.h"
#include "CATListValCATBaseUnknown_var.h"
#include "QTBCommands.h"
#include "QTBGlobVarsUtil.h"
#include "QTBIRepNodeCont.h"
#include "QTBRepTreeUtil.h"

namespace {

// The objects of the open windows. Kept to the end of the program, because windows may outlive static objects.
CATListValCATBaseUnknown_var& OpenWindows()
{
    static auto* const s_pOpenWindows = new CATListValCATBaseUnknown_var();
    return *s_pOpenWindows;
}

} // namespace

QTBFrmWindow::QTBFrmWindow(CATFrmWindow* pFrmWindow, const CATBaseUnknown_var& spDocument)
    : CATBaseUnknown(CATLateType::Declare("QTBFrmWindow")), m_pFrmWindow(pFrmWindow), m_spDocument(spDocument)
{
    AddCallback(this, CATFrmLayout::GetCurrentLayout(), CATFrmWindow::WINDOW_CLOSE_ENDED(),
                &QTBFrmWindow::OnWindowClosed);
}

QTBFrmWindow::~QTBFrmWindow()
{
    RemoveSubscriberCallbacks(this, CATFrmLayout::GetCurrentLayout());
}

HRESULT QTBFrmWindow::Create(CATFrmWindow* pFrmWindow, const CATBaseUnknown_var& spDocument,
                             CATBaseUnknown_var* pspFrmWindow)
{
    QTBIRepNodeCont_var spIRepNodeCont;
    HRESULT hr = QTBRepTreeUtil::GetRepNodeContOfDocument(spDocument, &spIRepNodeCont);
    if (SUCCEEDED(hr)) {
        hr = spIRepNodeCont->SetQtbFrmWindowPtr(pFrmWindow);
    }
    if (FAILED(hr)) {
        return hr;
    }
    *pspFrmWindow = CATBaseUnknown_var::Adopt(new QTBFrmWindow(pFrmWindow, spDocument));
    OpenWindows().Append(*pspFrmWindow);
    QTBCommands::AddHeaders();
    return QTBRepTreeUtil::UpdateQtbWindow(pFrmWindow, TRUE, FALSE);
}

void QTBFrmWindow::OnWindowClosed(CATFrmWindow* pClosedWindow)
{
    if (pClosedWindow != m_pFrmWindow) {
        return;
    }
    const CATBaseUnknown_var spKeepAlive(this);
    OpenWindows().RemoveValue(spKeepAlive);
    RemoveSubscriberCallbacks(this, CATFrmLayout::GetCurrentLayout());

    // The window is still there: the container looks at it while it removes its trees.
    QTBIRepNodeCont_var spIRepNodeCont;
    HRESULT hr = QTBRepTreeUtil::GetRepNodeContOfDocument(m_spDocument, &spIRepNodeCont);
    if (SUCCEEDED(hr)) {
        hr = spIRepNodeCont->Cleanup();
    }
    if (CATError* pError = FAILED(hr) ? CATError::CATGetLastError(hr, nullptr) : nullptr; pError != nullptr) {
        QTBGlobVarsUtil::AddMessageToInfoListDialog(pError);
    }
    if (spIRepNodeCont != NULL_var) {
        spIRepNodeCont->SetQtbFrmWindowPtrToNull();
    }
    m_pFrmWindow = nullptr;
    m_spDocument = NULL_var;
}

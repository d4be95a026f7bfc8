#include "CATFrmLayout.h"

#include <algorithm>

#include "CATApplicationFrame.h"
#include "CATDocumentServices.h"
#include "CATError.h"

CATFrmLayout* CATFrmLayout::GetCurrentLayout()
{
    return CATApplicationFrame::GetFrame()->GetLayout();
}

CATFrmLayout::CATFrmLayout() = default;

CATFrmLayout::~CATFrmLayout()
{
    CloseAll();
}

void CATFrmLayout::SetCurrentWindow(CATFrmWindow* pWindow)
{
    if (m_Windows.Locate(pWindow) == 0) {
        CATError::Throw(__FILE__, __LINE__, new CATInternalError("WindowNotInLayoutERR_1001", "CATApplicationFrame"));
    }
    if (m_pCurrentWindow != pWindow) {
        m_pCurrentWindow = pWindow;
        GetCallbackManager()->DispatchCallbacks(WINDOW_ACTIVATED(), pWindow);
    }
}

void CATFrmLayout::CloseWindow(CATFrmWindow* pWindow)
{
    if (m_Windows.RemoveValue(pWindow) == 0) {
        return;
    }
    if (m_pCurrentWindow == pWindow) {
        m_pCurrentWindow = m_Windows.Size() > 0 ? m_Windows[m_Windows.Size()] : nullptr;
    }
    CATFrmEditor* pEditor = pWindow->GetEditor();
    AnnounceEnd(CATFrmWindow::WINDOW_CLOSE_ENDED(), pWindow);
    delete pWindow;
    if (FindWindowOf(pEditor) == nullptr) {
        CloseEditor(pEditor);
    }
}

void CATFrmLayout::CloseEditor(CATFrmEditor* pEditor)
{
    if (m_Editors.Locate(pEditor) == 0) {
        return;
    }
    // A document that closes may take other documents along, with their windows.
    while (CATFrmWindow* pWindow = FindWindowOf(pEditor)) {
        CloseWindow(pWindow);
    }
    // Its last window took the editor with it.
    if (m_Editors.RemoveValue(pEditor) == 0) {
        return;
    }
    pEditor->GetCSO()->Empty();
    pEditor->GetPSO()->Empty();
    pEditor->GetHSO()->Empty();
    AnnounceEnd(CATFrmEditor::EDITOR_CLOSE_ENDED(), pEditor);
    CATDocumentServices::Forget(pEditor->GetDocument());
    delete pEditor;
}

void CATFrmLayout::CloseAll()
{
    while (m_Windows.Size() > 0) {
        CloseWindow(m_Windows[m_Windows.Size()]);
    }
    while (m_Editors.Size() > 0) {
        CloseEditor(m_Editors[m_Editors.Size()]);
    }
}

void CATFrmLayout::AddWindow(CATFrmWindow* pWindow)
{
    try {
        m_Windows.Append(pWindow);
    } catch (...) {
        delete pWindow;
        throw;
    }
    SetCurrentWindow(pWindow);
}

void CATFrmLayout::AddEditor(CATFrmEditor* pEditor)
{
    try {
        m_Editors.Append(pEditor);
    } catch (...) {
        delete pEditor;
        throw;
    }
}

void CATFrmLayout::AnnounceEnd(const char* event, CATEventSource* pSender)
{
    try {
        GetCallbackManager()->DispatchCallbacks(event, pSender);
    } catch (const CATXHException& exception) {
        CATApplicationFrame::GetFrame()->ShowError(*exception.GetError());
    }
}

CATFrmWindow* CATFrmLayout::FindWindowOf(const CATFrmEditor* pEditor) const
{
    const auto found = std::find_if(m_Windows.begin(), m_Windows.end(),
                                    [pEditor](const CATFrmWindow* pWindow) { return pWindow->GetEditor() == pEditor; });
    return found != m_Windows.end() ? *found : nullptr;
}

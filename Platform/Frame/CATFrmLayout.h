#pragma once

#include "CATFrmEditor.h"
#include "CATFrmWindow.h"

// The windows and editors of the application. Owns them, and sends the events of their life.
class PLATFORM_API CATFrmLayout : public CATEventSource
{
public:
    // Event sent when another window has become the current one; the window is the sender.
    static const char* WINDOW_ACTIVATED() { return "WINDOW_ACTIVATED"; }

    // The application's layout; null when it has none.
    static CATFrmLayout* GetCurrentLayout();

    CATFrmLayout();
    // Closes what is open.
    ~CATFrmLayout() override;

    // The open windows in the order of their opening.
    const CATListPtrCATFrmWindow& GetWindowList() const { return m_Windows; }

    // Null when no window is open.
    CATFrmWindow* GetCurrentWindow() const { return m_pCurrentWindow; }

    // Raises the error WindowNotInLayoutERR_1001 for a window that the layout does not have.
    void SetCurrentWindow(CATFrmWindow* pWindow);

    // The open editors in the order of their opening.
    const CATListPtr<CATFrmEditor>& GetEditorList() const { return m_Editors; }

    // Closes a window and, with its last window, the editor. A window that is not open is no error.
    void CloseWindow(CATFrmWindow* pWindow);

    // Closes an editor with its windows: empties its sets, sends EDITOR_CLOSE_ENDED, deletes it. Its document leaves
    // the session. An editor that is not open is no error.
    void CloseEditor(CATFrmEditor* pEditor);

    // Closes everything, the newest window first.
    void CloseAll();

    // Takes over a new window or editor; called by their Create operations.
    void AddWindow(CATFrmWindow* pWindow);
    void AddEditor(CATFrmEditor* pEditor);

private:
    // Nobody can keep a window or editor from closing: an error that a subscriber raises is shown to the user.
    void AnnounceEnd(const char* event, CATEventSource* pSender);
    // The first one; null when there is none.
    CATFrmWindow* FindWindowOf(const CATFrmEditor* pEditor) const;

    CATListPtrCATFrmWindow m_Windows;
    CATListPtr<CATFrmEditor> m_Editors;
    CATFrmWindow* m_pCurrentWindow = nullptr;
};

#pragma once

#include "CATEventSource.h"
#include "CATListPtr.h"
#include "CATUnicodeString.h"

class CATFrmEditor;
class CATFrmLayout;
class CATNavigBox;
class CATVisuScene;

// A window of the application; it shows what its editor edits. The layout owns it.
class PLATFORM_API CATFrmWindow : public CATEventSource
{
public:
    // Event that the layout sends when it closes a window; the window is the sender, no longer in the layout's list,
    // and deleted afterwards.
    static const char* WINDOW_CLOSE_ENDED() { return "WINDOW_CLOSE_ENDED"; }

    // A new window in the current layout, which makes it the current window; null when there is no layout. The editor
    // may be null.
    static CATFrmWindow* Create(const CATUnicodeString& title, CATFrmEditor* pEditor);

    const CATUnicodeString& GetTitle() const { return m_Title; }
    void SetTitle(const CATUnicodeString& title) { m_Title = title; }

    // Null for a window without editor.
    CATFrmEditor* GetEditor() const { return m_pEditor; }

    // The box with the window's navigation tree; null for a window without one.
    virtual CATNavigBox* GetNavigBox() { return nullptr; }

    // What the window's 3D view shows; null for a window without one.
    virtual CATVisuScene* GetScene() { return nullptr; }

protected:
    friend class CATFrmLayout;

    CATFrmWindow(const CATUnicodeString& title, CATFrmEditor* pEditor);
    ~CATFrmWindow() override;

private:
    CATUnicodeString m_Title;
    CATFrmEditor* m_pEditor;
};

using CATListPtrCATFrmWindow = CATListPtr<CATFrmWindow>;

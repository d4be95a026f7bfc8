#pragma once

#include <deque>
#include <functional>
#include <memory>

#include "CATDlgNotice.h"
#include "PlatformExport.h"

class CATCommandHeaderRegister;
class CATDlgDocument;
class CATError;
class CATFrmLayout;

// The application's frame: its document window, its layout, its command headers, the notices shown to the user. There
// is one, from its first use to the end of the program.
class PLATFORM_API CATApplicationFrame
{
public:
    using NoticeHandler = std::function<void(const CATDlgNotice&)>;

    // Never null.
    static CATApplicationFrame* GetFrame();

    // The parent of dialogs; never null.
    CATDlgDocument* GetApplicationDocument() const { return m_pDocumentWindow.get(); }

    // Null after CloseLayout.
    CATFrmLayout* GetLayout() const { return m_pLayout.get(); }

    // Gives the application a layout, when it has none. It starts with one.
    void OpenLayout();

    // Closes all windows, editors and documents, and the layout itself.
    void CloseLayout();

    // The headers of all commands; those of the standard commands are there from the start.
    CATCommandHeaderRegister& GetCommandHeaders() { return *m_pCommandHeaders; }

    // The text that the user has put aside to paste it elsewhere.
    void SetClipboardText(const CATUnicodeString& text) { m_ClipboardText = text; }
    const CATUnicodeString& GetClipboardText() const { return m_ClipboardText; }

    // Called for each notice when it is shown; an empty function for nobody. Set by a program that has a user.
    void SetNoticeHandler(NoticeHandler handler);

    // The last notices shown, oldest first; at most MAX_NOTICES of them are kept.
    const std::deque<CATDlgNotice>& GetNotices() const { return m_Notices; }
    void ForgetNotices() { m_Notices.clear(); }
    static constexpr std::size_t MAX_NOTICES = 1000;

    // Called by the dialogs.
    void ShowNotice(const CATDlgNotice& notice);

    // Shows an error that nobody else can handle as a notice.
    void ShowError(const CATError& error);

    // What the application does when nothing else is to be done: destroys the commands that asked for it.
    void OnIdle();

private:
    CATApplicationFrame();
    ~CATApplicationFrame();

    std::unique_ptr<CATDlgDocument> m_pDocumentWindow;
    std::unique_ptr<CATFrmLayout> m_pLayout;
    std::unique_ptr<CATCommandHeaderRegister> m_pCommandHeaders;
    CATUnicodeString m_ClipboardText;
    NoticeHandler m_NoticeHandler;
    std::deque<CATDlgNotice> m_Notices;
};

#include "CATApplicationFrame.h"

#include "CATCommandHeaderRegister.h"
#include "CATDlgDocument.h"
#include "CATError.h"
#include "CATFrmLayout.h"
#include "CATMsgCatalog.h"
#include "CATStandardCommands.h"

namespace {

constexpr const char* CATALOG = "CATApplicationFrame";
constexpr unsigned int ERROR_STYLE = 0;

} // namespace

CATApplicationFrame* CATApplicationFrame::GetFrame()
{
    // Kept to the end of the program: what is open then reaches the frame from its destructors.
    static auto* const s_pFrame = new CATApplicationFrame();
    return s_pFrame;
}

CATApplicationFrame::CATApplicationFrame()
    : m_pDocumentWindow(std::make_unique<CATDlgDocument>(nullptr, "ApplicationDocument")),
      m_pLayout(std::make_unique<CATFrmLayout>()), m_pCommandHeaders(std::make_unique<CATCommandHeaderRegister>())
{
    CATStandardCommands::AddHeaders(*m_pCommandHeaders);
}

CATApplicationFrame::~CATApplicationFrame() = default;

void CATApplicationFrame::OpenLayout()
{
    if (m_pLayout == nullptr) {
        m_pLayout = std::make_unique<CATFrmLayout>();
    }
}

void CATApplicationFrame::CloseLayout()
{
    if (m_pLayout != nullptr) {
        // While the layout is still the current one, for those who take back their subscriptions.
        m_pLayout->CloseAll();
        m_pLayout.reset();
    }
}

void CATApplicationFrame::SetNoticeHandler(NoticeHandler handler)
{
    m_NoticeHandler = std::move(handler);
}

void CATApplicationFrame::ShowNotice(const CATDlgNotice& notice)
{
    if (m_Notices.size() == MAX_NOTICES) {
        m_Notices.pop_front();
    }
    m_Notices.push_back(notice);
    if (m_NoticeHandler) {
        m_NoticeHandler(notice);
    }
}

void CATApplicationFrame::ShowError(const CATError& error)
{
    ShowNotice(CATDlgNotice{CATMsgCatalog::BuildMessage(CATALOG, "ErrorTitle"), error.GetNLSMessage(), ERROR_STYLE});
}

void CATApplicationFrame::OnIdle()
{
    CATCommand::DestroyRequested();
}

#include "CATApplicationFrame.h"

#include <gtest/gtest.h>

#include <vector>

#include "CATCommand.h"
#include "CATDlgDocument.h"
#include "CATDlgNotify.h"
#include "CATError.h"
#include "CATFrmLayout.h"

namespace {

class ApplicationFrame : public ::testing::Test
{
protected:
    ~ApplicationFrame() override
    {
        m_pFrame->SetNoticeHandler({});
        m_pFrame->ForgetNotices();
        m_pFrame->OpenLayout();
    }

    CATApplicationFrame* m_pFrame = CATApplicationFrame::GetFrame();
};

TEST_F(ApplicationFrame, IsTheSameAlwaysAndHasADocumentWindowAndALayout)
{
    EXPECT_EQ(CATApplicationFrame::GetFrame(), m_pFrame);
    EXPECT_NE(m_pFrame->GetApplicationDocument(), nullptr);
    EXPECT_NE(m_pFrame->GetLayout(), nullptr);
    EXPECT_EQ(CATFrmLayout::GetCurrentLayout(), m_pFrame->GetLayout());
}

TEST_F(ApplicationFrame, HasNoLayoutBetweenClosingAndOpeningIt)
{
    m_pFrame->CloseLayout();
    EXPECT_EQ(CATFrmLayout::GetCurrentLayout(), nullptr);
    m_pFrame->CloseLayout();
    m_pFrame->OpenLayout();
    CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    EXPECT_NE(pLayout, nullptr);
    m_pFrame->OpenLayout();
    EXPECT_EQ(CATFrmLayout::GetCurrentLayout(), pLayout);
}

TEST_F(ApplicationFrame, TakesDownTheNoticesThatAreShown)
{
    auto* pNotify = new CATDlgNotify(m_pFrame->GetApplicationDocument(), "", 0x4000200);
    EXPECT_EQ(pNotify->GetParent(), m_pFrame->GetApplicationDocument());
    EXPECT_EQ(pNotify->DisplayBlocked("the message", "the title"), CATDlgNotify::Confirmed);
    pNotify->RequestDelayedDestruction();
    m_pFrame->OnIdle();
    ASSERT_EQ(m_pFrame->GetNotices().size(), 1U);
    EXPECT_EQ(m_pFrame->GetNotices()[0].message, "the message");
    EXPECT_EQ(m_pFrame->GetNotices()[0].title, "the title");
    EXPECT_EQ(m_pFrame->GetNotices()[0].style, 0x4000200U);
}

TEST_F(ApplicationFrame, PassesNoticesToWhoeverHasAUser)
{
    std::vector<CATUnicodeString> messages;
    m_pFrame->SetNoticeHandler([&](const CATDlgNotice& notice) { messages.push_back(notice.message); });
    CATDlgNotify(nullptr, "", 0).DisplayBlocked("seen", "");
    EXPECT_EQ(messages, std::vector<CATUnicodeString>{"seen"});
}

TEST_F(ApplicationFrame, KeepsTheNewestNoticesOnly)
{
    for (std::size_t i = 0; i <= CATApplicationFrame::MAX_NOTICES; ++i) {
        CATUnicodeString number;
        number.BuildFromNum(static_cast<int>(i));
        m_pFrame->ShowNotice({"", number, 0});
    }
    EXPECT_EQ(m_pFrame->GetNotices().size(), CATApplicationFrame::MAX_NOTICES);
    EXPECT_EQ(m_pFrame->GetNotices().front().message, "1");
}

TEST_F(ApplicationFrame, ShowsAnErrorThatNobodyElseHandles)
{
    auto* pError = new CATInternalError("SomeERR_1001", "NoSuchCatalog");
    m_pFrame->ShowError(*pError);
    pError->Release();
    ASSERT_EQ(m_pFrame->GetNotices().size(), 1U);
    EXPECT_EQ(m_pFrame->GetNotices()[0].message, "SomeERR_1001");
}

} // namespace

#include "CATFrmLayout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CATApplicationFrame.h"
#include "CATCallback.h"
#include "CATError.h"
#include "CATPathElement.h"
#include "QTBTestLateType.h"

namespace {

using ::testing::ElementsAre;

class FrmLayout : public ::testing::Test
{
protected:
    FrmLayout() { m_pLayout->CloseAll(); }
    ~FrmLayout() override
    {
        CATApplicationFrame::GetFrame()->OpenLayout();
        CATFrmLayout::GetCurrentLayout()->CloseAll();
        RemoveSubscriberCallbacks(this, CATFrmLayout::GetCurrentLayout());
        CATApplicationFrame::GetFrame()->ForgetNotices();
    }

    void Watch(const char* event)
    {
        m_pLayout->GetCallbackManager()->AddCallback(this, event, [this, event](CATEventSource* pSender) {
            m_Events.push_back({event, pSender});
        });
    }

    struct Event
    {
        std::string name;
        CATEventSource* pSender;
        bool operator==(const Event&) const = default;
    };

    CATFrmLayout* m_pLayout = CATFrmLayout::GetCurrentLayout();
    std::vector<Event> m_Events;
};

TEST_F(FrmLayout, ListsItsWindowsAndMakesANewOneTheCurrentOne)
{
    EXPECT_EQ(m_pLayout->GetCurrentWindow(), nullptr);
    CATFrmEditor* pEditor = CATFrmEditor::Create();
    CATFrmWindow* pFirst = CATFrmWindow::Create("first", pEditor);
    CATFrmWindow* pSecond = CATFrmWindow::Create("second", pEditor);
    ASSERT_EQ(m_pLayout->GetWindowList().Size(), 2);
    EXPECT_EQ(m_pLayout->GetWindowList()[1], pFirst);
    EXPECT_EQ(m_pLayout->GetWindowList()[2], pSecond);
    EXPECT_EQ(m_pLayout->GetCurrentWindow(), pSecond);
    EXPECT_EQ(pFirst->GetTitle(), "first");
    EXPECT_EQ(pFirst->GetEditor(), pEditor);
    EXPECT_EQ(pFirst->GetNavigBox(), nullptr);
}

TEST_F(FrmLayout, GivesTheEditorOfTheCurrentWindow)
{
    EXPECT_EQ(CATFrmEditor::GetCurrentEditor(), nullptr);
    CATFrmEditor* pEditor = CATFrmEditor::Create();
    CATFrmWindow* pFirst = CATFrmWindow::Create("first", pEditor);
    CATFrmWindow::Create("second", nullptr);
    EXPECT_EQ(CATFrmEditor::GetCurrentEditor(), nullptr);
    m_pLayout->SetCurrentWindow(pFirst);
    EXPECT_EQ(CATFrmEditor::GetCurrentEditor(), pEditor);
}

TEST_F(FrmLayout, TellsWhenAnotherWindowBecomesTheCurrentOne)
{
    CATFrmWindow* pFirst = CATFrmWindow::Create("first", nullptr);
    CATFrmWindow* pSecond = CATFrmWindow::Create("second", nullptr);
    Watch(CATFrmLayout::WINDOW_ACTIVATED());
    m_pLayout->SetCurrentWindow(pSecond);
    m_pLayout->SetCurrentWindow(pFirst);
    EXPECT_THAT(m_Events, ElementsAre(Event{CATFrmLayout::WINDOW_ACTIVATED(), pFirst}));
}

TEST_F(FrmLayout, RaisesAnErrorForAWindowThatIsNotOpen)
{
    CATFrmWindow* pWindow = CATFrmWindow::Create("window", nullptr);
    m_pLayout->CloseWindow(pWindow);
    try {
        m_pLayout->SetCurrentWindow(pWindow);
        ADD_FAILURE() << "no error raised";
    } catch (const CATXHException& exception) {
        EXPECT_EQ(exception.GetError()->GetMsgId(), "WindowNotInLayoutERR_1001");
    }
    EXPECT_THROW(m_pLayout->SetCurrentWindow(nullptr), CATXHException);
}

TEST_F(FrmLayout, ClosesTheEditorWithItsLastWindow)
{
    CATFrmEditor* pEditor = CATFrmEditor::Create();
    CATFrmWindow* pFirst = CATFrmWindow::Create("first", pEditor);
    CATFrmWindow* pSecond = CATFrmWindow::Create("second", pEditor);
    Watch(CATFrmWindow::WINDOW_CLOSE_ENDED());
    Watch(CATFrmEditor::EDITOR_CLOSE_ENDED());
    m_pLayout->CloseWindow(pSecond);
    EXPECT_EQ(m_pLayout->GetCurrentWindow(), pFirst);
    EXPECT_EQ(m_pLayout->GetEditorList().Size(), 1);
    m_pLayout->CloseWindow(pFirst);
    m_pLayout->CloseWindow(pFirst);
    EXPECT_EQ(m_pLayout->GetCurrentWindow(), nullptr);
    EXPECT_EQ(m_pLayout->GetEditorList().Size(), 0);
    EXPECT_THAT(m_Events, ElementsAre(Event{CATFrmWindow::WINDOW_CLOSE_ENDED(), pSecond},
                                      Event{CATFrmWindow::WINDOW_CLOSE_ENDED(), pFirst},
                                      Event{CATFrmEditor::EDITOR_CLOSE_ENDED(), pEditor}));
}

TEST_F(FrmLayout, ClosesTheWindowsWithTheirEditor)
{
    CATFrmEditor* pEditor = CATFrmEditor::Create();
    CATFrmEditor* pOther = CATFrmEditor::Create();
    CATFrmWindow::Create("first", pEditor);
    CATFrmWindow* pStays = CATFrmWindow::Create("other", pOther);
    CATFrmWindow::Create("second", pEditor);
    Watch(CATFrmEditor::EDITOR_CLOSE_ENDED());
    m_pLayout->CloseEditor(pEditor);
    m_pLayout->CloseEditor(pEditor);
    m_pLayout->CloseEditor(nullptr);
    ASSERT_EQ(m_pLayout->GetWindowList().Size(), 1);
    EXPECT_EQ(m_pLayout->GetCurrentWindow(), pStays);
    EXPECT_THAT(m_Events, ElementsAre(Event{CATFrmEditor::EDITOR_CLOSE_ENDED(), pEditor}));
}

TEST_F(FrmLayout, LetsGoOfWhatAClosedEditorHighlighted)
{
    QTBTestLateType type("TestPathObject");
    const int before = CATBaseUnknown::GetLiveComponentCount();
    CATFrmEditor* pEditor = CATFrmEditor::Create();
    const auto add = [&](CATPathElementSet* pSet) {
        pSet->AddElement(CATPathElement_var::Adopt(pEditor->GetPathElements().Get(nullptr, type.Create())).Get());
    };
    add(pEditor->GetPSO());
    add(pEditor->GetHSO());
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before + 2);
    m_pLayout->CloseEditor(pEditor);
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before);
}

TEST_F(FrmLayout, KeepsTheTwoSetsOfAnEditorApart)
{
    QTBTestLateType type("TestPathObject");
    CATFrmEditor* pEditor = CATFrmEditor::Create();
    const auto spPath = CATPathElement_var::Adopt(pEditor->GetPathElements().Get(nullptr, type.Create()));
    pEditor->GetPSO()->AddElement(spPath.Get());
    EXPECT_EQ(pEditor->GetPSO()->GetSize(), 1);
    EXPECT_EQ(pEditor->GetHSO()->GetSize(), 0);
}

TEST_F(FrmLayout, ClosesOnWhateverASubscriberRaisesAndTellsTheUser)
{
    CATFrmEditor* pEditor = CATFrmEditor::Create();
    CATFrmWindow* pWindow = CATFrmWindow::Create("window", pEditor);
    const auto raise = [](CATEventSource*) {
        CATError::Throw(__FILE__, __LINE__, new CATInternalError("Refused", "NoSuchCatalog"));
    };
    m_pLayout->GetCallbackManager()->AddCallback(this, CATFrmWindow::WINDOW_CLOSE_ENDED(), raise);
    m_pLayout->CloseWindow(pWindow);
    EXPECT_EQ(m_pLayout->GetWindowList().Size(), 0);
    EXPECT_EQ(m_pLayout->GetEditorList().Size(), 0);
    ASSERT_EQ(CATApplicationFrame::GetFrame()->GetNotices().size(), 1U);
    EXPECT_EQ(CATApplicationFrame::GetFrame()->GetNotices()[0].message, "Refused");
}

TEST_F(FrmLayout, MayBeAskedToCloseMoreWhileItCloses)
{
    CATFrmEditor* pEditor = CATFrmEditor::Create();
    CATFrmWindow* pFirst = CATFrmWindow::Create("first", pEditor);
    CATFrmWindow::Create("second", pEditor);
    m_pLayout->GetCallbackManager()->AddCallback(this, CATFrmWindow::WINDOW_CLOSE_ENDED(),
                                                 [this](CATEventSource*) { m_pLayout->CloseAll(); });
    m_pLayout->CloseWindow(pFirst);
    EXPECT_EQ(m_pLayout->GetWindowList().Size(), 0);
    EXPECT_EQ(m_pLayout->GetEditorList().Size(), 0);
}

TEST_F(FrmLayout, IsNeededForEditorsAndWindows)
{
    CATApplicationFrame::GetFrame()->CloseLayout();
    EXPECT_EQ(CATFrmEditor::Create(), nullptr);
    EXPECT_EQ(CATFrmWindow::Create("window", nullptr), nullptr);
    EXPECT_EQ(CATFrmEditor::GetCurrentEditor(), nullptr);
}

} // namespace

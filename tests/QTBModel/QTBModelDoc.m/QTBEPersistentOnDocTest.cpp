#include <filesystem>

#include <gmock/gmock.h>

#include "CATApplicationFrame.h"
#include "CATCommand.h"
#include "CATDlgNotice.h"
#include "CATDocument.h"
#include "CATFrmEditor.h"
#include "CATFrmWindow.h"
#include "CATIPersistent.h"
#include "CATMsgCatalog.h"
#include "QTBMatchers.h"
#include "QTBTestFolder.h"
#include "QTBTestSession.h"
#include "QTBTestWindow.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class PersistentOnDoc : public QTBTestSession
{
protected:
    void SetUp() override
    {
        QTBTestSession::SetUp();
        m_pWindow = std::make_unique<QTBTestWindow>();
        m_spPersistent = CATBaseUnknown_var(m_pWindow->GetFrmWindow()->GetEditor()->GetDocument());
        ASSERT_TRUE(m_spPersistent != NULL_var);
        CATApplicationFrame::GetFrame()->ForgetNotices();
    }
    void TearDown() override
    {
        CATApplicationFrame::GetFrame()->OnIdle();
        CATApplicationFrame::GetFrame()->ForgetNotices();
        m_spPersistent = NULL_var;
        m_pWindow.reset();
        QTBTestSession::TearDown();
    }

    static const std::deque<CATDlgNotice>& Notices() { return CATApplicationFrame::GetFrame()->GetNotices(); }

    // Expects the notice about saving, and that it is the only one.
    static void ExpectTheNotice()
    {
        ASSERT_EQ(Notices().size(), 1U);
        EXPECT_EQ(Notices()[0].message,
                  CATMsgCatalog::BuildMessage("QTBUserPrompts", "SavingQTBDocumentsNotYetImplemented"));
        EXPECT_EQ(Notices()[0].title,
                  CATMsgCatalog::BuildMessage("QTBUserPrompts", "SavingQTBDocumentsNotYetImplementedTitle"));
        EXPECT_EQ(Notices()[0].style, 0x4000200U);
        EXPECT_FALSE(Notices()[0].message.IsEmpty());
        CATApplicationFrame::GetFrame()->ForgetNotices();
    }

    std::unique_ptr<QTBTestWindow> m_pWindow;
    CATIPersistent_var m_spPersistent;
};

TEST_F(PersistentOnDoc, ShowsOneNoticeInsteadOfSaving)
{
    m_spPersistent->Save();
    ExpectTheNotice();
    m_spPersistent->SaveAs_B(nullptr);
    ExpectTheNotice();
    for (const unsigned char bBecameCurrent : {FALSE, TRUE}) {
        const QTBTestFolder folder;
        const std::string path = folder.GetPath("saved.QTBDoc");
        m_spPersistent->SaveAs(path.c_str(), bBecameCurrent);
        ExpectTheNotice();
        EXPECT_FALSE(std::filesystem::exists(path));
    }
}

TEST_F(PersistentOnDoc, LetsTheNoticeGoWhenTheApplicationIsIdle)
{
    CATApplicationFrame::GetFrame()->OnIdle();
    const int commands = CATCommand::GetLiveCount();
    m_spPersistent->Save();
    CATApplicationFrame::GetFrame()->OnIdle();
    EXPECT_EQ(CATCommand::GetLiveCount(), commands);
}

TEST_F(PersistentOnDoc, TellsUnderWhichNameItIsAskedToSave)
{
    const DebugCapture capture;
    m_spPersistent->SaveAs("/some/name", FALSE);
    m_spPersistent->SaveAs("", TRUE);
    m_spPersistent->Save();
    EXPECT_THAT(capture.Lines(),
                ElementsAre("QTBEPersistentOnDoc::SaveAs -> iStoragePrintableName:/some/name, iBecameCurrent:[FALSE]",
                            "QTBEPersistentOnDoc::SaveAs -> iStoragePrintableName:, iBecameCurrent:[TRUE]"));
}

TEST_F(PersistentOnDoc, LoadsNothing)
{
    const std::vector<std::string> rootsBefore = m_pWindow->GetRootTexts();
    const DebugCapture capture;
    m_spPersistent->Load("/some/name", TRUE);
    m_spPersistent->Load("other", FALSE);
    m_spPersistent->Load_B(nullptr);
    EXPECT_THAT(capture.Lines(),
                ElementsAre("QTBEPersistentOnDoc::Load -> iStoragePrintableName:/some/name, iReadOnly:[TRUE]",
                            "QTBEPersistentOnDoc::Load -> iStoragePrintableName:other, iReadOnly:[FALSE]"));
    EXPECT_THAT(Notices(), IsEmpty());
    EXPECT_EQ(m_pWindow->GetRootTexts(), rootsBefore);
}

TEST_F(PersistentOnDoc, NeverAsksToBeSaved)
{
    EXPECT_EQ(m_spPersistent->Dirty(), FALSE);
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    m_pWindow->Show(FindNode("A"), {"PartPart"});
    EXPECT_EQ(m_spPersistent->Dirty(), FALSE);
    m_spPersistent->Save();
    EXPECT_EQ(m_spPersistent->Dirty(), FALSE);
}

} // namespace

#include "CATCommandHeader.h"

#include <memory>

#include <gmock/gmock.h>

#include "CATAfrGetCommandHeader.h"
#include "CATApplicationFrame.h"
#include "CATCmdStarter.h"
#include "CATCommandHeaderRegister.h"
#include "CATError.h"
#include "CATMsgCatalog.h"
#include "QTBTestLateType.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

CATUnicodeString MsgIdOf(HRESULT hr)
{
    const CATError* pError = CATError::CATGetLastError(hr, nullptr);
    return pError != nullptr ? pError->GetMsgId() : CATUnicodeString("no error");
}

class CommandHeader : public ::testing::Test
{
protected:
    void SetUp() override
    {
        CATMsgCatalog::SetSearchPath({QTB_SOURCE_DIR "/resources/msgcatalog"});
        CATMsgCatalog::SetLanguage("");
    }

    void TearDown() override
    {
        CATMsgCatalog::SetLanguage("");
        Headers().Remove("TestHdr");
        Headers().RemoveInterpreter(this);
        Headers().RemoveInterpreter(&m_Calls);
    }

    static CATCommandHeaderRegister& Headers() { return CATApplicationFrame::GetFrame()->GetCommandHeaders(); }

    std::unique_ptr<CATCommandHeader> Make(const char* id, const char* text, HRESULT result = S_OK)
    {
        return std::make_unique<CATCommandHeader>(id, "TestCmdHdr", [this, text, result](const CATBaseUnknown_var&) {
            m_Calls.emplace_back(text);
            return result;
        });
    }

    QTBTestLateType m_Type{"TestCommandObject"};
    std::vector<std::string> m_Calls;
};

TEST_F(CommandHeader, IsAvailableUntilItIsMadeUnavailable)
{
    CATCommandHeader header("TestHdr", "TestCmdHdr", nullptr);
    EXPECT_EQ(header.GetId(), "TestHdr");
    EXPECT_EQ(header.GetClass(), "TestCmdHdr");
    EXPECT_TRUE(header.IsAvailable());
    header.BecomeUnavailable();
    EXPECT_FALSE(header.IsAvailable());
    header.BecomeAvailable();
    EXPECT_TRUE(header.IsAvailable());
}

TEST_F(CommandHeader, HasTheTextsOfItsClassInTheLanguageOfTheSession)
{
    const CATCommandHeader header("CATAfrSelectHdr", "CATApplicationFrame", nullptr);
    EXPECT_EQ(header.GetTitle(), "Select");
    EXPECT_EQ(header.GetIcon(), "CATSelect");
    CATMsgCatalog::SetLanguage("German");
    EXPECT_EQ(header.GetTitle(), "Auswählen");
    const CATCommandHeader unknown("TestHdr", "CATApplicationFrame", nullptr);
    EXPECT_EQ(unknown.GetTitle(), "TestHdr");
    EXPECT_EQ(unknown.GetIcon(), "");
}

TEST_F(CommandHeader, RunsItsCommandForTheObject)
{
    CATBaseUnknown_var spGiven;
    const CATBaseUnknown_var spObject = m_Type.Create();
    const CATCommandHeader header("TestHdr", "TestCmdHdr", [&spGiven](const CATBaseUnknown_var& sp) {
        spGiven = sp;
        return S_FALSE;
    });
    EXPECT_EQ(header.StartCommand(spObject), S_FALSE);
    EXPECT_TRUE(spGiven == spObject);
    EXPECT_EQ(CATCommandHeader("TestHdr", "TestCmdHdr", nullptr).StartCommand(spObject), S_OK);
}

TEST_F(CommandHeader, DoesNotRunItsCommandWhileItIsUnavailable)
{
    const std::unique_ptr<CATCommandHeader> pHeader = Make("TestHdr", "run");
    pHeader->BecomeUnavailable();
    EXPECT_EQ(MsgIdOf(pHeader->StartCommand(NULL_var)), "CommandNotAvailableERR_1002");
    EXPECT_THAT(m_Calls, IsEmpty());
}

TEST_F(CommandHeader, IsFoundByItsId)
{
    CATCommandHeader* pFound = nullptr;
    EXPECT_EQ(CATAfrGetCommandHeader("TestHdr", &pFound), E_FAIL);
    std::unique_ptr<CATCommandHeader> pHeader = Make("TestHdr", "run");
    CATCommandHeader* const pExpected = pHeader.get();
    Headers().Add(std::move(pHeader));
    EXPECT_EQ(CATAfrGetCommandHeader("TestHdr", &pFound), S_OK);
    EXPECT_EQ(pFound, pExpected);
    EXPECT_EQ(CATAfrGetCommandHeader("TestHdr", nullptr), E_FAIL);
    Headers().Remove("TestHdr");
    Headers().Remove("TestHdr");
    EXPECT_EQ(CATAfrGetCommandHeader("TestHdr", &pFound), E_FAIL);
}

TEST_F(CommandHeader, MayNotExistYetUnderAnIdThatIsKnown)
{
    Headers().Reserve("TestHdr");
    CATCommandHeader header("Other", "TestCmdHdr", nullptr);
    CATCommandHeader* pFound = &header;
    EXPECT_EQ(CATAfrGetCommandHeader("TestHdr", &pFound), S_OK);
    EXPECT_EQ(pFound, nullptr);
    EXPECT_EQ(MsgIdOf(Headers().StartCommand("TestHdr", NULL_var)), "CommandNotFoundERR_1003");
    Headers().Add(Make("TestHdr", "run"));
    Headers().Reserve("TestHdr");
    EXPECT_EQ(Headers().StartCommand("TestHdr", NULL_var), S_OK) << "a header that there is stays";
    Headers().Add(nullptr);
}

TEST_F(CommandHeader, TakesThePlaceOfTheOneWithTheSameId)
{
    Headers().Add(Make("TestHdr", "first"));
    Headers().Add(Make("TestHdr", "second"));
    EXPECT_EQ(Headers().StartCommand("TestHdr", NULL_var), S_OK);
    EXPECT_THAT(m_Calls, ElementsAre("second"));
}

TEST_F(CommandHeader, CanBeTakenAwayByItsOwnCommand)
{
    Headers().Add(std::make_unique<CATCommandHeader>("TestHdr", "TestCmdHdr", [this](const CATBaseUnknown_var&) {
        Headers().Remove("TestHdr");
        m_Calls.emplace_back("run");
        return S_OK;
    }));
    EXPECT_EQ(Headers().StartCommand("TestHdr", NULL_var), S_OK);
    EXPECT_THAT(m_Calls, ElementsAre("run"));
    EXPECT_EQ(MsgIdOf(Headers().StartCommand("TestHdr", NULL_var)), "CommandNotFoundERR_1003");
}

TEST_F(CommandHeader, LeavesCommandTextsToThoseWhoKnowThem)
{
    Headers().AddInterpreter(this, [this](const CATUnicodeString& text, const CATBaseUnknown_var&) {
        m_Calls.push_back("first " + std::string(text.View()));
        return text == "mine" ? S_OK : S_FALSE;
    });
    Headers().AddInterpreter(&m_Calls, [this](const CATUnicodeString& text, const CATBaseUnknown_var&) {
        m_Calls.push_back("second " + std::string(text.View()));
        return text == "failing" ? E_FAIL : S_FALSE;
    });
    EXPECT_EQ(Headers().Interpret("mine", NULL_var), S_OK);
    EXPECT_THAT(m_Calls, ElementsAre("first mine"));
    m_Calls.clear();
    EXPECT_EQ(Headers().Interpret("failing", NULL_var), E_FAIL);
    EXPECT_THAT(m_Calls, ElementsAre("first failing", "second failing"));
    EXPECT_EQ(MsgIdOf(Headers().Interpret("nobody's", NULL_var)), "CommandNotFoundERR_1003");
    Headers().RemoveInterpreter(this);
    EXPECT_EQ(MsgIdOf(Headers().Interpret("mine", NULL_var)), "CommandNotFoundERR_1003");
}

TEST_F(CommandHeader, IsStartedByAMenuItem)
{
    const CATCmdStarter starter("TestStr", "TestHdr");
    EXPECT_EQ(starter.GetName(), "TestStr");
    EXPECT_EQ(starter.GetHeaderId(), "TestHdr");
    EXPECT_EQ(starter.GetCommandText(), "");
    EXPECT_TRUE(starter.IsAvailable());
    EXPECT_EQ(MsgIdOf(starter.Start(NULL_var)), "CommandNotFoundERR_1003");
    Headers().Add(Make("TestHdr", "run"));
    EXPECT_EQ(starter.Start(NULL_var), S_OK);
    EXPECT_THAT(m_Calls, ElementsAre("run"));
    CATCommandHeader* pHeader = nullptr;
    CATAfrGetCommandHeader("TestHdr", &pHeader);
    pHeader->BecomeUnavailable();
    EXPECT_FALSE(starter.IsAvailable());
    EXPECT_EQ(MsgIdOf(starter.Start(NULL_var)), "CommandNotAvailableERR_1002");
}

TEST_F(CommandHeader, IsNotAskedByAMenuItemWithACommandText)
{
    Headers().Add(Make("TestHdr", "header"));
    Headers().AddInterpreter(this, [this](const CATUnicodeString& text, const CATBaseUnknown_var&) {
        m_Calls.emplace_back(text.View());
        return S_OK;
    });
    CATCommandHeader* pHeader = nullptr;
    CATAfrGetCommandHeader("TestHdr", &pHeader);
    pHeader->BecomeUnavailable();
    const CATCmdStarter starter("TestStr", "TestHdr", "text");
    EXPECT_TRUE(starter.IsAvailable());
    EXPECT_EQ(starter.Start(NULL_var), S_OK);
    EXPECT_THAT(m_Calls, ElementsAre("text"));
}

} // namespace

#include "CATMsgCatalog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class MsgCatalog : public ::testing::Test
{
protected:
    MsgCatalog()
    {
        fs::create_directories(m_Folder / "German");
        fs::create_directories(m_Folder / "second");
        CATMsgCatalog::SetSearchPath({m_Folder.c_str()});
        CATMsgCatalog::SetLanguage("");
    }
    ~MsgCatalog() override
    {
        CATMsgCatalog::SetSearchPath({});
        CATMsgCatalog::SetLanguage("");
        fs::remove_all(m_Folder);
    }

    void Write(const char* file, const char* text) const { std::ofstream(m_Folder / file) << text; }

    static CATUnicodeString Build(const char* key, const std::vector<CATUnicodeString>& parameters = {})
    {
        return CATMsgCatalog::BuildMessage("Cat", key, parameters);
    }

    const fs::path m_Folder = fs::temp_directory_path() / ("msgcatalog-" + std::to_string(getpid()));
};

TEST_F(MsgCatalog, GivesTheTextOfAKey)
{
    Write("Cat.CATNls", "// A comment.\n\nKey = \"The text\";\n  Cat.Other.Title=\"Another\" ; // with a comment\n");
    EXPECT_EQ(Build("Key"), "The text");
    EXPECT_EQ(Build("Cat.Other.Title"), "Another");
    EXPECT_TRUE(CATMsgCatalog::MessageExists("Cat", "Key"));
    EXPECT_FALSE(CATMsgCatalog::MessageExists("Cat", "key"));
    EXPECT_THAT(CATMsgCatalog::GetReports(), IsEmpty());
}

TEST_F(MsgCatalog, PutsParametersWhereTheirNumbersStand)
{
    Write("Cat.CATNls", "Key = \"/P2 before /P1, /P1 again\";\n");
    EXPECT_EQ(Build("Key", {"one", "two"}), "two before one, one again");
}

TEST_F(MsgCatalog, LeavesNumbersWithoutParameterAlone)
{
    Write("Cat.CATNls", "Key = \"/P0 /P1 /P2 /P99999999999999999999 /P /Q1 /\";\n");
    EXPECT_EQ(Build("Key", {"one"}), "/P0 one /P2 /P99999999999999999999 /P /Q1 /");
}

TEST_F(MsgCatalog, ReadsNumbersOfSeveralDigits)
{
    Write("Cat.CATNls", "Key = \"/P10/P1\";\n");
    EXPECT_EQ(Build("Key", {"1", "2", "3", "4", "5", "6", "7", "8", "9", "ten"}), "ten1");
}

TEST_F(MsgCatalog, DoesNotLookForParametersInsideParameters)
{
    Write("Cat.CATNls", "Key = \"/P1 /P2\";\n");
    EXPECT_EQ(Build("Key", {"/P2", "/P1"}), "/P2 /P1");
}

TEST_F(MsgCatalog, ReadsEscapes)
{
    Write("Cat.CATNls", R"(Key = "a \"quoted\" \\ back\nnew\tline \x";)"
                        "\n");
    EXPECT_EQ(Build("Key"), "a \"quoted\" \\ back\nnew\tline \\x");
}

TEST_F(MsgCatalog, ReadsFilesWithByteOrderMarkAndCarriageReturns)
{
    Write("Cat.CATNls", "\xEF\xBB\xBFKey = \"Text\";\r\nOther = \"More\";\r\n");
    EXPECT_EQ(Build("Key"), "Text");
    EXPECT_EQ(Build("Other"), "More");
}

TEST_F(MsgCatalog, RepairsInvalidUtf8)
{
    Write("Cat.CATNls", "Key = \"a\xFFz\";\n");
    EXPECT_EQ(Build("Key"), "a\xEF\xBF\xBDz");
}

TEST_F(MsgCatalog, TakesTheSessionsLanguageAndEnglishForWhatItLacks)
{
    Write("Cat.CATNls", "Key = \"English\";\nOnlyEnglish = \"Here\";\n");
    Write("German/Cat.CATNls", "Key = \"Deutsch\";\n");
    CATMsgCatalog::SetLanguage("German");
    EXPECT_EQ(Build("Key"), "Deutsch");
    EXPECT_EQ(Build("OnlyEnglish"), "Here");
    CATMsgCatalog::SetLanguage("");
    EXPECT_EQ(Build("Key"), "English");
}

TEST_F(MsgCatalog, TakesEnglishForALanguageWithoutFolder)
{
    Write("Cat.CATNls", "Key = \"English\";\n");
    CATMsgCatalog::SetLanguage("Latin");
    EXPECT_EQ(Build("Key"), "English");
}

TEST_F(MsgCatalog, PrefersTheFirstDirectoryOfTheSearchPath)
{
    Write("Cat.CATNls", "Key = \"first\";\n");
    Write("second/Cat.CATNls", "Key = \"second\";\nOther = \"only second\";\n");
    CATMsgCatalog::SetSearchPath({m_Folder.c_str(), (m_Folder / "second").c_str()});
    EXPECT_EQ(Build("Key"), "first");
    EXPECT_EQ(Build("Other"), "only second");
}

TEST_F(MsgCatalog, SaysTheKeyAndTheParametersWhenThereIsNoMessage)
{
    EXPECT_EQ(Build("Missing"), "Missing");
    EXPECT_EQ(Build("Missing", {"one", "two"}), "Missing [one] [two]");
    EXPECT_EQ(CATMsgCatalog::BuildMessage("../Cat", "Missing"), "Missing");
    EXPECT_FALSE(CATMsgCatalog::MessageExists("", ""));
}

TEST_F(MsgCatalog, LeavesTheSearchPathOnlyDownwards)
{
    Write("Cat.CATNls", "Key = \"text\";\n");
    CATMsgCatalog::SetSearchPath({(m_Folder / "second").c_str()});
    EXPECT_FALSE(CATMsgCatalog::MessageExists("../Cat", "Key"));
    CATMsgCatalog::SetLanguage("..");
    EXPECT_FALSE(CATMsgCatalog::MessageExists("Cat", "Key"));
}

TEST_F(MsgCatalog, ReportsABadLineWithWhatWasExpectedAndReadsTheOthers)
{
    Write("Cat.CATNls", "First = \"1\";\n= \"no key\";\nNoEquals \"x\";\nNoQuote = x;\nOpen = \"x;\nNoEnd = \"x\"\n"
                        "Behind = \"x\"; y\nFirst = \"twice\";\nLast = \"2\";\n");
    EXPECT_EQ(Build("First"), "1");
    EXPECT_EQ(Build("Last"), "2");
    const std::string file = (m_Folder / "Cat.CATNls").string();
    std::vector<std::string> reports;
    for (const CATUnicodeString& report : CATMsgCatalog::GetReports()) {
        reports.emplace_back(report.View());
    }
    EXPECT_THAT(reports, ElementsAre(file + ":2: expected a key", file + ":3: expected = behind the key",
                                     file + ":4: expected a text in double quotes",
                                     file + ":5: expected the double quote that ends the text",
                                     file + ":6: expected ; behind the text",
                                     file + ":7: expected nothing behind the semicolon but a comment",
                                     file + ":8: expected a key that the file does not have yet"));
    CATMsgCatalog::SetSearchPath({m_Folder.c_str()});
    EXPECT_THAT(CATMsgCatalog::GetReports(), IsEmpty());
}

TEST_F(MsgCatalog, GivesUpAFileWithTooManyBadLines)
{
    std::string text;
    for (int i = 0; i < 50; ++i) {
        text += "?\n";
    }
    Write("Cat.CATNls", (text + "Key = \"too late\";\n").c_str());
    EXPECT_FALSE(CATMsgCatalog::MessageExists("Cat", "Key"));
    ASSERT_THAT(CATMsgCatalog::GetReports(), SizeIs(21));
    EXPECT_THAT(std::string(CATMsgCatalog::GetReports().back().View()), HasSubstr("too many bad lines"));
}

TEST_F(MsgCatalog, ReadsAFileOnlyOnceUntilTheSearchPathIsSetAgain)
{
    Write("Cat.CATNls", "Key = \"old\";\n");
    EXPECT_EQ(Build("Key"), "old");
    Write("Cat.CATNls", "Key = \"new\";\n");
    EXPECT_EQ(Build("Key"), "old");
    CATMsgCatalog::SetSearchPath({m_Folder.c_str()});
    EXPECT_EQ(Build("Key"), "new");
}

} // namespace

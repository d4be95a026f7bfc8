#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "HostSession.h"
#include "QTBTestEnvironment.h"
#include "QTBTestFolder.h"
#include "Shell.h"

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

class ShellLimits : public testing::Test
{
protected:
    // What the shell says to a line.
    std::string Say(const std::string& line)
    {
        m_Output.str("");
        m_Shell.Execute(line);
        return m_Output.str();
    }
    std::string Answer() const { return QTB_SOURCE_DIR "/examples/as1/structure.xml"; }

    QTBTestFolder m_Folder;
    std::ostringstream m_Output;
    HostSession m_Session{"", ""};
    Shell m_Shell{m_Session, m_Output};
};

} // namespace

TEST_F(ShellLimits, ALineOfTheGreatestLengthIsReadAndALongerOneIsNot)
{
    EXPECT_THAT(Say("#" + std::string(Shell::MAX_LINE_LENGTH - 1, 'x')), IsEmpty());
    EXPECT_EQ(m_Shell.GetFailureCount(), 0);
    EXPECT_EQ(Say("#" + std::string(Shell::MAX_LINE_LENGTH, 'x')),
              "error: the line is too long; at most 1000000 bytes are read\n");
    EXPECT_EQ(m_Shell.GetFailureCount(), 1);
    EXPECT_THAT(Say("tree"), HasSubstr("Default Rep Node")) << "the session goes on";
}

TEST_F(ShellLimits, MoreArgumentsThanAllowedAreRefusedWithTheirNumber)
{
    std::string keys;
    for (int i = 0; i < 1000; ++i) {
        keys += " k";
    }
    EXPECT_THAT(Say("get" + keys), HasSubstr("there is no PDM store")) << "a thousand are taken";
    EXPECT_EQ(Say("get" + keys + " k"), "error: at most 1000 arguments\n");
    EXPECT_EQ(Say("quit" + keys + " k"), "error: at most 1000 arguments\n");
    EXPECT_EQ(Say("get"), "error: usage: get KEY...\n");
}

TEST_F(ShellLimits, WhatIsTooLongInALineIsPassedOver)
{
    std::istringstream input(std::string(3 * Shell::MAX_LINE_LENGTH, 'x') + "\nnext\n\nlast");
    std::string line;
    ASSERT_TRUE(Shell::ReadLine(input, &line));
    EXPECT_EQ(line.size(), Shell::MAX_LINE_LENGTH + 1);
    ASSERT_TRUE(Shell::ReadLine(input, &line));
    EXPECT_EQ(line, "next");
    ASSERT_TRUE(Shell::ReadLine(input, &line));
    EXPECT_EQ(line, "");
    ASSERT_TRUE(Shell::ReadLine(input, &line));
    EXPECT_EQ(line, "last");
    EXPECT_FALSE(Shell::ReadLine(input, &line));
}

TEST_F(ShellLimits, ANameThatNoFileCanHaveFailsTheCommandOnly)
{
    EXPECT_THAT(Say("answer " + std::string(100000, 'a')), HasSubstr("File name too long"));
    EXPECT_THAT(Say("assembly " + std::string(100000, 'a')), HasSubstr("File name too long"));
    EXPECT_THAT(Say(std::string("answer a\0b", 10)), HasSubstr("error: "));
    EXPECT_THAT(Say("tree"), HasSubstr("Default Rep Node"));
}

TEST_F(ShellLimits, OnlyFilesAreRead)
{
    for (const char* path : {"/dev/zero", "/dev/null", "/"}) {
        EXPECT_THAT(Say(std::string("answer ") + path), HasSubstr("error: answer")) << path;
        EXPECT_THAT(Say(std::string("assembly ") + path), HasSubstr("error: assembly")) << path;
    }
}

TEST_F(ShellLimits, AFileLargerThanAllowedFailsTheCommandOnly)
{
    const std::string path = m_Folder.Write("large.xml", "<answer/>");
    std::filesystem::resize_file(path, 1ULL << 40U);
    EXPECT_THAT(Say("answer " + path), HasSubstr("at most 2147483648 bytes (CAT_MAX_FILE_MB)"));
    EXPECT_THAT(Say("tree"), HasSubstr("Default Rep Node"));
}

TEST_F(ShellLimits, ALanguageIsAFolderOfTheCatalogsAndNothingElse)
{
    for (const char* language : {"..", "../..", "/etc", "German/", "./German", "german"}) {
        EXPECT_THAT(Say(std::string("language ") + language), HasSubstr("there are no messages in")) << language;
    }
    EXPECT_THAT(Say("language German"), IsEmpty());
}

TEST_F(ShellLimits, NumbersThatAreTooLargeAreNoLines)
{
    Say("answer " + Answer());
    Say("tree");
    for (const char* number : {"0", "2", "-1", "18446744073709551616", "18446744073709551615", "1e0"}) {
        EXPECT_THAT(Say(std::string("expand ") + number), HasSubstr("neither a line of the tree")) << number;
        EXPECT_THAT(Say(std::string("pick ") + number), HasSubstr("has no item")) << number;
    }
    EXPECT_THAT(Say("window 4294967297"), HasSubstr("there is no window"));
    EXPECT_THAT(Say("tree 99999999999"), HasSubstr("as1"));
}

TEST_F(ShellLimits, LevelsAreNumbersAndNothingElse)
{
    Say("answer " + Answer());
    Say("assembly " QTB_SOURCE_DIR "/examples/as1/products.xml");
    for (const char* levels : {"abc", "-1", "1x", "18446744073709551616"}) {
        EXPECT_EQ(Say(std::string("links ") + levels), std::string("error: ") + levels + " is no number of levels\n");
        EXPECT_EQ(Say(std::string("tree ") + levels), std::string("error: ") + levels + " is no number of levels\n");
    }
    EXPECT_THAT(Say("links 0"), Not(HasSubstr("rod-assembly")));
    EXPECT_THAT(Say("links 4294967296"), HasSubstr("rod-assembly")) << "deeper than any assembly";
}

TEST_F(ShellLimits, ALadderOfProductsIsListedToTheLimit)
{
    std::string products = "<products>";
    for (int i = 0; i < 40; ++i) {
        const std::string number = std::to_string(i);
        const std::string below = std::to_string(i + 1);
        products += "<product id=\"" + number + "\" file=\"" + number + ".CATProduct\"><instance of=\"" + below +
                    "\" name=\"x\"/><instance of=\"" + below + "\" name=\"y\"/></product>";
    }
    const std::string path =
        m_Folder.Write("ladder.xml", products + R"(<product id="40" file="40.CATPart"/></products>)");
    const QTBTestEnvironment limit("QTB_MAX_PRODUCTS", "1000");
    EXPECT_THAT(Say("assembly " + path), IsEmpty());
    EXPECT_THAT(Say("products"), HasSubstr("error: assembly: The product structure has more than 1000 places."));
    EXPECT_THAT(Say("show /"), HasSubstr("more than 1000 places"));
}

TEST_F(ShellLimits, AMenuOutlivesNeitherItsWindowNorItsNode)
{
    Say("answer " + Answer());
    Say("tree");
    Say("menu 1");
    Say("close");
    EXPECT_THAT(Say("pick 4"), HasSubstr("has no item 4"));
    Say("open");
    Say("roots as1");
    Say("expand as1 PartPart");
    Say("tree");
    Say("menu 3");
    Say("fold 2");
    EXPECT_THAT(Say("pick 4"), HasSubstr("has no item 4"));
}

TEST_F(ShellLimits, LinesOfATreeThatWasFoldedAwayFailWithoutHarm)
{
    Say("answer " + Answer());
    Say("tree");
    Say("expandall 1 PartPart");
    Say("tree");
    Say("fold 2");
    for (const char* command :
         {"expand 3", "expandall 3", "fold 3", "menu 3", "highlight 3", "select 3", "properties 3", "show 3"}) {
        EXPECT_THAT(Say(command), HasSubstr("line 3 has left the tree")) << command;
    }
    EXPECT_THAT(Say("tree"), Not(HasSubstr("rod-assembly")));
}

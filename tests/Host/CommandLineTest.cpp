#include "CommandLine.h"

#include <algorithm>

#include <CLI/CLI.hpp>
#include <gmock/gmock.h>

#include "StoreCommand.h"

using ::testing::HasSubstr;

namespace {

// What is said of "qtbhost ARGUMENTS".
std::string Refuse(std::vector<std::string> arguments)
{
    CLI::App app("test", "qtbhost");
    app.require_subcommand(1);
    app.add_subcommand("tree", "a tree");
    StoreOptions options;
    AddStore(app, options);
    std::reverse(arguments.begin(), arguments.end());
    try {
        app.parse(arguments);
    } catch (const CLI::ParseError& error) {
        const std::string unknown = CommandLine::DescribeUnknownWord(app);
        return unknown.empty() ? error.what() : unknown;
    }
    return "not refused";
}

} // namespace

TEST(CommandLine, NamesTheWordThatIsNoCommand)
{
    EXPECT_EQ(Refuse({"tre", "answer.xml"}), "there is no command tre; commands are tree, store");
    EXPECT_THAT(Refuse({"store", "foo", "pdm.store"}),
                HasSubstr("there is no command store foo; store commands are init, import, query, "));
    EXPECT_EQ(Refuse({"--frobnicate"}), "there is no option --frobnicate; commands are tree, store");
    EXPECT_EQ(Refuse({}), "A subcommand is required");
}

TEST(CommandLine, NumbersThatAreNoneAreRefusedInShort)
{
    EXPECT_EQ(Refuse({"store", "query", "pdm.store", "--limit", "0"}),
              "--limit: a whole number from 1 to 2147483647 is needed, not 0");
    EXPECT_EQ(Refuse({"store", "expand", "pdm.store", "nut", "--level", "abc"}),
              "--level: a whole number from 0 to 2147483647 is needed, not abc");
    EXPECT_EQ(Refuse({"store", "expand", "pdm.store", "nut", "--level=-1"}),
              "--level: a whole number from 0 to 2147483647 is needed, not -1");
    EXPECT_EQ(Refuse({"store", "expand", "pdm.store", "nut", "--level", "2147483648"}),
              "--level: a whole number from 0 to 2147483647 is needed, not 2147483648");
    EXPECT_EQ(Refuse({"store", "expand", "pdm.store", "nut", "--level", "0"}), "not refused");
}

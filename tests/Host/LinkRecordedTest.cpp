#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "LinkCommand.h"

namespace fs = std::filesystem;

namespace {

const std::string FOLDER = QTB_SOURCE_DIR "/tests/Host/links/";

std::string ReadFile(const std::string& path)
{
    std::ifstream stream(path);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::vector<std::string> FindLinks()
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(FOLDER)) {
        if (entry.path().extension() == ".link") {
            names.push_back(entry.path().stem().string());
        }
    }
    return names;
}

// The arguments of the command stand in front, each in a line "> ARGUMENT"; files are relative to the sources.
std::vector<std::string> ReadArguments(const std::string& recorded)
{
    std::vector<std::string> arguments;
    std::istringstream lines(recorded);
    for (std::string line; std::getline(lines, line) && line.starts_with("> ");) {
        arguments.push_back(line.substr(2));
    }
    return arguments;
}

LinkOptions ToOptions(const std::vector<std::string>& arguments)
{
    LinkOptions options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "--highlight") {
            options.highlight = arguments.at(++i);
        } else if (arguments[i] == "--highlight-pdm") {
            options.highlightPdm = arguments.at(++i);
        } else if (options.assembly.empty()) {
            options.assembly = arguments[i];
        } else {
            options.answers.push_back(arguments[i]);
        }
    }
    return options;
}

} // namespace

// A recorded link of a real assembly: NAME.link holds the arguments and what a person read and found right.
class RecordedLink : public ::testing::TestWithParam<std::string>
{
};

TEST_P(RecordedLink, RepeatsWhatWasRecorded)
{
    fs::current_path(QTB_SOURCE_DIR);
    const std::string recorded = ReadFile(FOLDER + GetParam() + ".link");
    const std::vector<std::string> arguments = ReadArguments(recorded);
    std::string output;
    for (const std::string& argument : arguments) {
        output += "> " + argument + "\n";
    }
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(RunLink(ToOptions(arguments)), 0);
    EXPECT_EQ(output + ::testing::internal::GetCapturedStdout(), recorded);
}

INSTANTIATE_TEST_SUITE_P(Links, RecordedLink, ::testing::ValuesIn(FindLinks()), [](const auto& link) {
    std::string name = link.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

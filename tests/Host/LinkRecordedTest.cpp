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

// The options of a line "> --highlight PATH --highlight-pdm KEY ASSEMBLY ANSWER...", files relative to the sources.
LinkOptions ReadOptions(const std::string& line)
{
    LinkOptions options;
    std::istringstream words(line);
    std::string word;
    words >> word;
    while (words >> word) {
        if (word == "--highlight") {
            words >> options.highlight;
        } else if (word == "--highlight-pdm") {
            words >> options.highlightPdm;
        } else if (options.assembly.empty()) {
            options.assembly = word;
        } else {
            options.answers.push_back(word);
        }
    }
    return options;
}

} // namespace

// A recorded link of a real assembly: NAME.link holds the options and what a person read and found right.
class RecordedLink : public ::testing::TestWithParam<std::string>
{
};

TEST_P(RecordedLink, RepeatsWhatWasRecorded)
{
    fs::current_path(QTB_SOURCE_DIR);
    const std::string recorded = ReadFile(FOLDER + GetParam() + ".link");
    const std::string line = recorded.substr(0, recorded.find('\n') + 1);
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(RunLink(ReadOptions(line)), 0);
    EXPECT_EQ(line + ::testing::internal::GetCapturedStdout(), recorded);
}

INSTANTIATE_TEST_SUITE_P(Links, RecordedLink, ::testing::ValuesIn(FindLinks()), [](const auto& link) {
    std::string name = link.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

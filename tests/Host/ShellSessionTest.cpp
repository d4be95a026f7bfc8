#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "CATBaseUnknown.h"
#include "HostSession.h"
#include "Shell.h"

namespace fs = std::filesystem;

namespace {

std::string ReadFile(const fs::path& path)
{
    std::ifstream stream(path);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::vector<std::string> FindSessions()
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(QTB_SOURCE_DIR "/tests/Host/sessions")) {
        if (entry.path().extension() == ".session") {
            names.push_back(entry.path().stem().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

// A recorded session: NAME.session holds the commands, each with the output that a person read and found right.
class RecordedSession : public ::testing::TestWithParam<std::string>
{
};

TEST_P(RecordedSession, RepeatsWhatWasRecorded)
{
    const std::string recorded = ReadFile(QTB_SOURCE_DIR "/tests/Host/sessions/" + GetParam() + ".session");
    const int componentsBefore = CATBaseUnknown::GetLiveComponentCount();
    fs::current_path(QTB_SOURCE_DIR);
    std::ostringstream output;
    {
        HostSession session("", "");
        Shell shell(session, output);
        std::istringstream lines(recorded);
        for (std::string line; std::getline(lines, line);) {
            if (line.starts_with("> ")) {
                output << line << '\n';
                if (!shell.Execute(line.substr(2))) {
                    break;
                }
            }
        }
    }
    EXPECT_EQ(output.str(), recorded);
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), componentsBefore) << "components outlive the session";
}

INSTANTIATE_TEST_SUITE_P(Sessions, RecordedSession, ::testing::ValuesIn(FindSessions()),
                         [](const auto& session) { return session.param; });

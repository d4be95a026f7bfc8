#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "QTBDebugUtil.h"

// Writes down which checks of the library were seen failing, and which lines of debug output were written, in which
// test suite: one line each of file, line, kind, text and suite, separated by tabs, appended to the file that the
// environment variable QTB_WALKED_CHECKS names. Part of every test program; see tools/list-checks.

namespace {

int s_File = -1;

std::string CurrentSuite()
{
    const ::testing::TestInfo* pTest = ::testing::UnitTest::GetInstance()->current_test_info();
    return pTest != nullptr ? pTest->test_suite_name() : "";
}

void Record(const char* kind, const char* text, const char* file, int line)
{
    static std::set<std::string> s_Recorded;
    const std::string suite = CurrentSuite();
    // What happens between the tests is nobody's expectation.
    if (suite.empty()) {
        return;
    }
    const std::string record =
        std::string(file) + '\t' + std::to_string(line) + '\t' + kind + '\t' + text + '\t' + suite + '\n';
    if (s_Recorded.insert(record).second) {
        // In one piece, because processes that tests start write to the same file, and at once, because some of them
        // end without further ado.
        static_cast<void>(!::write(s_File, record.data(), record.size()));
    }
}

[[maybe_unused]] const bool s_bIsInstalled = [] {
    if (const char* path = std::getenv("QTB_WALKED_CHECKS"); path != nullptr) {
        s_File = ::open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    }
    if (s_File >= 0) {
        QTBDebugUtil::s_pObserver = &Record;
    }
    return s_File >= 0;
}();

} // namespace

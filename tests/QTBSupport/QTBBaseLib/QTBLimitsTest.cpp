#include "QTBLimits.h"

#include <fstream>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "CATApplicationFrame.h"
#include "CATEnvLimit.h"
#include "QTBGlobVarsUtil.h"
#include "QTBObjectAttr.h"
#include "QTBTestEnvironment.h"

namespace {

// The second column of the table in docs/limits.md by the first.
std::map<std::string, std::string> ReadLimits()
{
    std::map<std::string, std::string> limits;
    std::ifstream file(QTB_SOURCE_DIR "/docs/limits.md");
    for (std::string line; std::getline(file, line);) {
        const std::size_t first = line.find(" | ");
        const std::size_t second = first != std::string::npos ? line.find(" | ", first + 1) : first;
        if (line.starts_with("| ") && second != std::string::npos) {
            limits[line.substr(2, first - 2)] = line.substr(first + 3, second - first - 3);
        }
    }
    return limits;
}

} // namespace

TEST(Limits, AreThoseThatTheDocumentationSays)
{
    const std::map<std::string, std::string> limits = ReadLimits();
    ASSERT_GT(limits.size(), 20U);
    const auto expect = [&limits](const char* what, long long limit) {
        const auto found = limits.find(what);
        ASSERT_NE(found, limits.end()) << what;
        EXPECT_EQ(std::stoll(found->second), limit) << what;
    };
    expect("XML file or text, STEP file", CAT_DEFAULT_MAX_FILE_MB);
    expect("nesting of embedded objects", QTBObjectAttr::MAX_NESTING);
    expect("rep nodes that one update of trees passes", QTBLimits::DEFAULT_MAX_REP_NODES);
    expect("products that one walk through a structure passes", QTBLimits::DEFAULT_MAX_PRODUCTS);
    expect("lines of the information list", QTBGlobVarsUtil::MAX_INFO_LIST_ENTRIES);
    expect("notices", static_cast<long long>(CATApplicationFrame::MAX_NOTICES));
}

TEST(Limits, AreSetByTheEnvironment)
{
    EXPECT_EQ(QTBLimits::GetMaxRepNodes(), QTBLimits::DEFAULT_MAX_REP_NODES);
    EXPECT_EQ(QTBLimits::GetMaxProducts(), QTBLimits::DEFAULT_MAX_PRODUCTS);
    const QTBTestEnvironment repNodes("QTB_MAX_REP_NODES", "12");
    const QTBTestEnvironment products("QTB_MAX_PRODUCTS", "13");
    EXPECT_EQ(QTBLimits::GetMaxRepNodes(), 12);
    EXPECT_EQ(QTBLimits::GetMaxProducts(), 13);
}

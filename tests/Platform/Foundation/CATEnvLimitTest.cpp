#include "CATEnvLimit.h"

#include <gtest/gtest.h>

#include "QTBTestEnvironment.h"

namespace {

constexpr const char* NAME = "CAT_TEST_LIMIT";

} // namespace

TEST(EnvLimit, IsTheDefaultWhereTheEnvironmentSaysNothing)
{
    EXPECT_EQ(CATGetEnvLimit(NAME, 7, 100), 7);
}

TEST(EnvLimit, IsTheNumberThatTheEnvironmentSays)
{
    for (const char* value : {"1", "100"}) {
        const QTBTestEnvironment environment(NAME, value);
        EXPECT_EQ(CATGetEnvLimit(NAME, 7, 100), std::stoi(value));
    }
}

TEST(EnvLimit, IsTheDefaultForAnythingThatIsNoNumberInItsRange)
{
    for (const char* value : {"", "0", "-5", "101", "5 ", " 5", "5MB", "+5", "0x5", "99999999999999999999"}) {
        const QTBTestEnvironment environment(NAME, value);
        EXPECT_EQ(CATGetEnvLimit(NAME, 7, 100), 7) << value;
    }
}

TEST(EnvLimit, OfFilesIsSetInUnitsOfAMebibyte)
{
    EXPECT_EQ(CATGetMaxFileBytes(), CAT_DEFAULT_MAX_FILE_MB * 1024 * 1024);
    const QTBTestEnvironment environment("CAT_MAX_FILE_MB", "3");
    EXPECT_EQ(CATGetMaxFileBytes(), 3 * 1024 * 1024);
}

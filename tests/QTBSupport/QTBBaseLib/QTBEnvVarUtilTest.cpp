#include "QTBEnvVarUtil.h"

#include <cstdlib>

#include <gtest/gtest.h>

namespace {

constexpr const char* NAME = "QTB_ENV_VAR_UTIL_TEST";

TEST(EnvVarUtil, TheValueOfAVariableIsRead)
{
    setenv(NAME, "ON \xC3\xA4", 1);
    CATUnicodeString usValue;
    EXPECT_EQ(QTBEnvVarUtil::GetOptionalEnvVarValue(NAME, &usValue), S_OK);
    EXPECT_EQ(usValue, "ON \xC3\xA4");
    unsetenv(NAME);
}

TEST(EnvVarUtil, AVariableThatIsNotSetHasNoValue)
{
    unsetenv(NAME);
    for (const char* name : {NAME, ""}) {
        CATUnicodeString usValue("old");
        EXPECT_EQ(QTBEnvVarUtil::GetOptionalEnvVarValue(name, &usValue), S_OK);
        EXPECT_EQ(usValue, "");
    }
}

TEST(EnvVarUtil, ANullPointerIsRefused)
{
    EXPECT_EQ(QTBEnvVarUtil::GetOptionalEnvVarValue(NAME, nullptr), E_POINTER);
}

} // namespace

#include "SpecBindNativeFormat.h"

#include <gtest/gtest.h>

namespace {

TEST(NativeFormat, IsBoundOnce)
{
    EXPECT_FALSE(SpecNativeFormatIsBound("TestFormat"));
    EXPECT_EQ(SpecBindNativeFormat("TestFormat"), S_OK);
    EXPECT_TRUE(SpecNativeFormatIsBound("TestFormat"));
    EXPECT_EQ(SpecBindNativeFormat("TestFormat"), S_FALSE);
}

TEST(NativeFormat, NeedsAName)
{
    EXPECT_EQ(SpecBindNativeFormat(nullptr), E_FAIL);
    EXPECT_EQ(SpecBindNativeFormat(""), E_FAIL);
    EXPECT_FALSE(SpecNativeFormatIsBound(nullptr));
    EXPECT_FALSE(SpecNativeFormatIsBound(""));
}

} // namespace

#include "CATString.h"

#include <gtest/gtest.h>

#include <sstream>

#include "CATListValCATString.h"

namespace {

TEST(String, IsEmptyWithoutText)
{
    EXPECT_TRUE(CATString().IsEmpty());
    EXPECT_TRUE(CATString(nullptr).IsEmpty());
    EXPECT_STREQ(CATString().ConvertToChar(), "");
    EXPECT_EQ(CATString("abc").GetLength(), 3U);
}

TEST(String, IsComparedAndJoined)
{
    CATString text("Wks");
    const CATString copy = text;
    text += "2";
    EXPECT_EQ(text, "Wks2");
    EXPECT_EQ(copy, "Wks");
    EXPECT_EQ(CATString("QTB") + copy, "QTBWks");
    EXPECT_LT(copy, text);
    std::ostringstream stream;
    stream << text;
    EXPECT_EQ(stream.str(), "Wks2");
}

TEST(String, IsKeptInLists)
{
    CATListValCATString list;
    list.Append("one");
    list.Append("two");
    EXPECT_EQ(list.Locate("two"), 2);
    EXPECT_EQ(list.Locate("three"), 0);
}

} // namespace

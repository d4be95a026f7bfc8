#include "QTBStringUtil.h"

#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "QTBListValues.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<CATUnicodeString> Split(const char* text)
{
    CATListValCATUnicodeString Items;
    Items.Append("old");
    EXPECT_EQ(QTBStringUtil::ConvertQtbInfoListAttrString(text, &Items), S_OK);
    return ListValues(Items);
}

TEST(StringUtil, ItemsAreSeparatedBySemicolons)
{
    EXPECT_THAT(Split("one"), ElementsAre("one"));
    EXPECT_THAT(Split("one;two;three"), ElementsAre("one", "two", "three"));
    EXPECT_THAT(Split(" one ; \xC3\xA4 "), ElementsAre(" one ", " \xC3\xA4 "));
}

TEST(StringUtil, TheEmptyTextHasNoItems)
{
    EXPECT_THAT(Split(""), IsEmpty());
}

TEST(StringUtil, BetweenTwoSeparatorsStandsAnEmptyItem)
{
    EXPECT_THAT(Split("a;;b"), ElementsAre("a", "", "b"));
    EXPECT_THAT(Split(";"), ElementsAre("", ""));
    EXPECT_THAT(Split("a;"), ElementsAre("a", ""));
    EXPECT_THAT(Split(";a"), ElementsAre("", "a"));
}

TEST(StringUtil, BackslashesEscapeSemicolonsAndBackslashesOnly)
{
    EXPECT_THAT(Split("a\\;b;c"), ElementsAre("a;b", "c"));
    EXPECT_THAT(Split("a\\\\;b"), ElementsAre("a\\", "b"));
    EXPECT_THAT(Split("a\\\\\\;b"), ElementsAre("a\\;b"));
    EXPECT_THAT(Split("C:\\temp;x"), ElementsAre("C:\\temp", "x"));
    EXPECT_THAT(Split("a\\"), ElementsAre("a\\"));
}

TEST(StringUtil, TheListMayHoldTheTextThatIsSplit)
{
    CATListValCATUnicodeString Items;
    Items.Append("a;b");
    EXPECT_EQ(QTBStringUtil::ConvertQtbInfoListAttrString(Items[1], &Items), S_OK);
    EXPECT_THAT(ListValues(Items), ElementsAre("a", "b"));
}

TEST(StringUtil, AListOfOneEmptyItemHasNoText)
{
    CATListValCATUnicodeString Items;
    CATUnicodeString usText("untouched");
    Items.Append("");
    EXPECT_EQ(QTBStringUtil::MakeQtbInfoListAttrString(Items, &usText), E_FAIL);
    EXPECT_EQ(usText, "untouched");
    EXPECT_EQ(QTBStringUtil::MakeQtbInfoListAttrString(CATListValCATUnicodeString(), &usText), S_OK);
    EXPECT_EQ(usText, "");
}

TEST(StringUtil, TextsMadeFromListsSplitIntoTheSameItems)
{
    std::mt19937 random(1);
    const char* const pieces[] = {";", "\\", "a", "\xC3\xA4", " ", ""};
    for (int round = 0; round < 2000; ++round) {
        CATListValCATUnicodeString Items;
        for (unsigned int i = 0; i < 2 + random() % 4; ++i) {
            std::string item;
            for (unsigned int j = 0; j < random() % 6; ++j) {
                item += pieces[random() % 6];
            }
            Items.Append(item.c_str());
        }
        CATUnicodeString usText;
        ASSERT_EQ(QTBStringUtil::MakeQtbInfoListAttrString(Items, &usText), S_OK);
        CATListValCATUnicodeString Split;
        ASSERT_EQ(QTBStringUtil::ConvertQtbInfoListAttrString(usText, &Split), S_OK);
        ASSERT_TRUE(Split == Items) << usText;
    }
}

TEST(StringUtil, NullPointersAreRefused)
{
    EXPECT_EQ(QTBStringUtil::ConvertQtbInfoListAttrString("a", nullptr), E_POINTER);
    EXPECT_EQ(QTBStringUtil::MakeQtbInfoListAttrString(CATListValCATUnicodeString(), nullptr), E_POINTER);
}

} // namespace

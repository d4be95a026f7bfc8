#include "QTBStoreVersion.h"

#include <gtest/gtest.h>

TEST(StoreVersion, LettersAndDigitsAtTheEndCountOn)
{
    EXPECT_EQ(QTBStoreVersion::GetNext(""), "A");
    EXPECT_EQ(QTBStoreVersion::GetNext("A"), "B");
    EXPECT_EQ(QTBStoreVersion::GetNext("Z"), "AA");
    EXPECT_EQ(QTBStoreVersion::GetNext("AZ"), "BA");
    EXPECT_EQ(QTBStoreVersion::GetNext("ZZ"), "AAA");
    EXPECT_EQ(QTBStoreVersion::GetNext("z"), "aa");
    EXPECT_EQ(QTBStoreVersion::GetNext("1"), "2");
    EXPECT_EQ(QTBStoreVersion::GetNext("9"), "10");
    EXPECT_EQ(QTBStoreVersion::GetNext("09"), "10");
    EXPECT_EQ(QTBStoreVersion::GetNext("v3.5"), "v3.6");
    EXPECT_EQ(QTBStoreVersion::GetNext("v3.9"), "v3.10");
    EXPECT_EQ(QTBStoreVersion::GetNext("Rev. C"), "Rev. D");
    EXPECT_EQ(QTBStoreVersion::GetNext("3\xC3\xA4"), "3\xC3\xA4.1");
}

TEST(StoreVersion, TheKeyOfAVersionEndsWithIt)
{
    EXPECT_EQ(QTBStoreVersion::MakeKey("Part/4711/A", "A", "B"), "Part/4711/B");
    EXPECT_EQ(QTBStoreVersion::MakeKey("nut", "A", "B"), "nut/B");
    EXPECT_EQ(QTBStoreVersion::MakeKey("A", "A", "B"), "A/B");
    EXPECT_EQ(QTBStoreVersion::MakeKey("/A", "A", "B"), "/A/B");
    EXPECT_EQ(QTBStoreVersion::MakeKey("nut", "", "A"), "nut/A");
}

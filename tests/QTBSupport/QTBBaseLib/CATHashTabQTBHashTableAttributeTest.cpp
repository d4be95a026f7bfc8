#include "CATHashTabQTBHashTableAttribute.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "QTBHashTableAttribute.h"

namespace {

// All records in one chain.
unsigned int SameHash(const QTBHashTableAttribute*)
{
    return 7;
}

TEST(HashTabQtbHashTableAttribute, WorksWithoutAGoodHashAndWithoutBuckets)
{
    for (const int bucketCount : {-1, 0, 1, 100}) {
        CATHashTabQTBHashTableAttribute table(&SameHash, &QTBHashTableAttribute::Compare, bucketCount);
        for (int i = 0; i < 200; ++i) {
            table.Insert(new QTBHashTableAttribute(std::to_string(i % 100).c_str()), true);
        }
        EXPECT_EQ(table.Size(), 200);
        for (int i = 0; i < 100; ++i) {
            const std::string key = std::to_string(i);
            ASSERT_NE(table.Locate(key.c_str()), nullptr);
            ASSERT_EQ(table.Locate(key.c_str())->GetKey(), key.c_str());
            ASSERT_TRUE(table.Remove(key.c_str(), true));
            ASSERT_TRUE(table.Remove(key.c_str(), true));
            ASSERT_FALSE(table.Remove(key.c_str(), true));
        }
        EXPECT_EQ(table.Size(), 0);
    }
}

TEST(HashTabQtbHashTableAttribute, TheLastEntryOfAKeyCountsWhenTheTableHasGrown)
{
    CATHashTabQTBHashTableAttribute table(&QTBHashTableAttribute::Hash, &QTBHashTableAttribute::Compare, 1);
    std::vector<QTBHashTableAttribute*> entriesOfKey;
    for (int i = 0; i < 1000; ++i) {
        if (i % 100 == 0) {
            entriesOfKey.push_back(new QTBHashTableAttribute("key"));
            table.Insert(entriesOfKey.back(), true);
        }
        table.Insert(new QTBHashTableAttribute(std::to_string(i).c_str()), true);
    }
    for (; !entriesOfKey.empty(); entriesOfKey.pop_back()) {
        ASSERT_EQ(table.Locate("key"), entriesOfKey.back());
        ASSERT_TRUE(table.Remove("key", true));
    }
    EXPECT_EQ(table.Locate("key"), nullptr);
    EXPECT_EQ(table.Size(), 1000);
    table.RemoveAll();
    EXPECT_EQ(table.Size(), 0);
    EXPECT_EQ(table.Locate("1"), nullptr);
}

} // namespace

#include "QTBStringHash.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

namespace {

unsigned int HashOf(const char* text, unsigned int hash = 0)
{
    return hash %= CATUnicodeString(text);
}

// The published value of the 64-bit hash of no bytes is 2D06800538D394C2; its halves are folded.
TEST(StringHash, TheEmptyTextHasThePublishedHash)
{
    EXPECT_EQ(HashOf(""), 0x2D068005U ^ 0x38D394C2U);
}

TEST(StringHash, TheResultIsLeftInTheHash)
{
    unsigned int hash = 0;
    unsigned int& result = hash %= CATUnicodeString("Key");
    EXPECT_EQ(&result, &hash);
    EXPECT_EQ(hash, HashOf("Key"));
    EXPECT_NE(hash, 0U);
}

TEST(StringHash, ContinuesFromTheValueGiven)
{
    EXPECT_NE(HashOf("Key", 1), HashOf("Key"));
    unsigned int hash = HashOf("A");
    hash %= CATUnicodeString("B");
    EXPECT_EQ(hash, HashOf("B", HashOf("A")));
    EXPECT_NE(hash, HashOf("A", HashOf("B")));
}

TEST(StringHash, BytesHaveTheHashOfTheirText)
{
    EXPECT_EQ(QTBHashBytes("Gr\xC3\xB6\xC3\x9F\x65"), HashOf("Gr\xC3\xB6\xC3\x9F\x65"));
    EXPECT_EQ(QTBHashBytes("Key", 17), HashOf("Key", 17));
}

TEST(StringHash, SimilarKeysHardlyEverShareAHash)
{
    std::set<unsigned int> hashes;
    for (int i = 0; i < 100000; ++i) {
        hashes.insert(HashOf(("PART-" + std::to_string(i)).c_str()));
    }
    // A perfect 32-bit hash lets about one pair of these meet.
    EXPECT_GT(hashes.size(), 99990U);
}

} // namespace

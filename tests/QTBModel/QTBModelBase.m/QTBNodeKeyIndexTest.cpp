#include "QTBNodeKeyIndex.h"

#include <gtest/gtest.h>

#include "QTBTestSession.h"

namespace {

class NodeKeyIndex : public QTBTestSession
{
};

TEST_F(NodeKeyIndex, FindsANodeUnderTheHashOfItsFilingOnly)
{
    Update(Part("A") + Part("B"));
    const CATBaseUnknown_var spNode = FindNode("A");
    QTBNodeKeyIndex index;
    constexpr unsigned int HASH = 7;
    QTBNodeKeyIndex::Entry entry;
    entry.pNode = spNode.Get();
    entry.number = 1;
    entry.hashKey = HASH;
    entry.usKey = "A";
    index.Insert(entry);
    ASSERT_NE(index.FindNode(spNode.Get(), HASH), nullptr);
    // Among so many others there are some that begin to look in the same place.
    for (unsigned int other = HASH + 1; other < HASH + 1000; ++other) {
        EXPECT_EQ(index.FindNode(spNode.Get(), other), nullptr) << other;
    }
    EXPECT_NE(index.FindNode(spNode.Get()), nullptr);
    EXPECT_EQ(index.FindNode(FindNode("B").Get()), nullptr);
}

} // namespace

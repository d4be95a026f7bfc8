#include "CATListValQTBChildRepNodeInfo.h"

#include <gmock/gmock.h>

#include "CATError.h"
#include "QTBConstants.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

// Records that are told apart by the name of their relation.
QTBChildRepNodeInfo Record(const char* name)
{
    return QTBChildRepNodeInfo(QTBNodeRelationInfo(name, usLEFT_TO_RIGHT));
}

CATListValQTBChildRepNodeInfo List(std::initializer_list<const char*> names)
{
    CATListValQTBChildRepNodeInfo list;
    for (const char* name : names) {
        list.Append(Record(name));
    }
    return list;
}

// The positions of a list at which each record stands that is equal to the named one.
std::vector<int> PositionsOf(const CATListValQTBChildRepNodeInfo& list, const char* name)
{
    std::vector<int> positions;
    for (int i = list.Locate(Record(name)); i > 0; i = list.Locate(Record(name), i + 1)) {
        positions.push_back(i);
    }
    return positions;
}

TEST(ListOfChildRepNodeInfos, IsEmptyAtFirstWhateverItsCapacity)
{
    EXPECT_EQ(CATListValQTBChildRepNodeInfo().Size(), 0);
    EXPECT_EQ(CATListValQTBChildRepNodeInfo(20).Size(), 0);
    EXPECT_EQ(CATListValQTBChildRepNodeInfo(20, 5).Size(), 0);
    EXPECT_EQ(CATListValQTBChildRepNodeInfo().Locate(QTBChildRepNodeInfo()), 0);
}

TEST(ListOfChildRepNodeInfos, CountsFromOne)
{
    CATListValQTBChildRepNodeInfo list = List({"a", "b"});
    const CATListValQTBChildRepNodeInfo& constList = list;
    EXPECT_EQ(list.Size(), 2);
    EXPECT_TRUE(constList[1] == Record("a"));
    list[2] = Record("c");
    EXPECT_TRUE(constList[2] == Record("c"));
    EXPECT_THROW(list[0], CATXHException);
    EXPECT_THROW(list[3], CATXHException);
    EXPECT_THROW(constList[3], CATXHException);
}

TEST(ListOfChildRepNodeInfos, AppendsRecordsAndLists)
{
    CATListValQTBChildRepNodeInfo list = List({"a", "b"});
    list.Append(List({"c", "a"}));
    EXPECT_TRUE(list == List({"a", "b", "c", "a"}));
    list.Append(list);
    EXPECT_EQ(list.Size(), 8);
    EXPECT_TRUE(list == List({"a", "b", "c", "a", "a", "b", "c", "a"}));
}

TEST(ListOfChildRepNodeInfos, LocatesEqualRecordsFromAPositionOn)
{
    const CATListValQTBChildRepNodeInfo list = List({"a", "b", "a"});
    EXPECT_THAT(PositionsOf(list, "a"), ElementsAre(1, 3));
    EXPECT_THAT(PositionsOf(list, "b"), ElementsAre(2));
    EXPECT_THAT(PositionsOf(list, "c"), IsEmpty());
    EXPECT_EQ(list.Locate(Record("a"), 4), 0);
}

TEST(ListOfChildRepNodeInfos, RemovesTheFirstEqualRecord)
{
    CATListValQTBChildRepNodeInfo list = List({"a", "b", "a"});
    EXPECT_EQ(list.RemoveValue(Record("a")), 1);
    EXPECT_EQ(list.RemoveValue(Record("a")), 2);
    EXPECT_EQ(list.RemoveValue(Record("a")), 0);
    EXPECT_TRUE(list == List({"b"}));
}

TEST(ListOfChildRepNodeInfos, RemovesPositions)
{
    CATListValQTBChildRepNodeInfo list = List({"a", "b", "c"});
    list.RemovePosition(2);
    EXPECT_TRUE(list == List({"a", "c"}));
    EXPECT_THROW(list.RemovePosition(3), CATXHException);
    EXPECT_THROW(list.RemovePosition(0), CATXHException);
    EXPECT_EQ(list.Size(), 2);
}

TEST(ListOfChildRepNodeInfos, IsEmptiedWithOrWithoutItsMemory)
{
    for (const CATCollec::MemoryHandling handling : {CATCollec::ReleaseAllocation, CATCollec::KeepAllocation}) {
        CATListValQTBChildRepNodeInfo list = List({"a", "b"});
        list.RemoveAll(handling);
        EXPECT_EQ(list.Size(), 0);
        list.Append(Record("c"));
        EXPECT_TRUE(list == List({"c"}));
    }
}

TEST(ListOfChildRepNodeInfos, CopiesItsRecords)
{
    CATListValQTBChildRepNodeInfo original = List({"a", "b"});
    const CATListValQTBChildRepNodeInfo copy(original);
    CATListValQTBChildRepNodeInfo assigned = List({"x"});
    assigned = original;
    original[1] = Record("z");
    EXPECT_TRUE(copy == List({"a", "b"}));
    EXPECT_TRUE(assigned == List({"a", "b"}));
    const CATListValQTBChildRepNodeInfo& self = assigned;
    assigned = self;
    EXPECT_TRUE(assigned == List({"a", "b"}));
}

TEST(ListOfChildRepNodeInfos, IsEqualRecordByRecord)
{
    EXPECT_TRUE(List({"a", "b"}) == List({"a", "b"}));
    EXPECT_TRUE(List({"a", "b"}) != List({"b", "a"}));
    EXPECT_TRUE(List({"a", "b"}) != List({"a"}));
    EXPECT_FALSE(List({}) != List({}));
}

} // namespace

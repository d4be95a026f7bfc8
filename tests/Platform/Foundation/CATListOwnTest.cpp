#include "CATListOwn.h"

#include <string>

#include <gmock/gmock.h>

#include "CATError.h"

namespace {

// Equal by name only, as the records of the node model are. Counts its living objects.
struct Record
{
    Record(const char* theName, int theValue) : name(theName), value(theValue) { ++s_Count; }
    Record(const Record& other) : name(other.name), value(other.value) { ++s_Count; }
    Record& operator=(const Record&) = default;
    ~Record() { --s_Count; }
    friend bool operator==(const Record& a, const Record& b) { return a.name == b.name; }

    std::string name;
    int value;
    static int s_Count;
};
int Record::s_Count = 0;

class CATListOwnTest : public testing::Test
{
protected:
    void TearDown() override { EXPECT_EQ(Record::s_Count, 0) << "records outlive their lists"; }

    static CATListOwn<Record> List(std::initializer_list<Record> records)
    {
        CATListOwn<Record> list;
        for (const Record& record : records) {
            list.Append(record);
        }
        return list;
    }
};

} // namespace

TEST_F(CATListOwnTest, AddingARecordCopiesIt)
{
    Record record("a", 1);
    CATListOwn<Record> list(4);
    list.Append(record);
    record.value = 2;
    EXPECT_EQ(list[1].value, 1);
    EXPECT_NE(&list[1], &record);
}

TEST_F(CATListOwnTest, CopyingAListCopiesItsRecords)
{
    CATListOwn<Record> list = List({{"a", 1}, {"b", 2}});
    CATListOwn<Record> copy(list);
    CATListOwn<Record> assigned = List({{"c", 3}});
    assigned = list;
    copy[1].value = 10;
    assigned[2].value = 20;
    EXPECT_EQ(list[1].value, 1);
    EXPECT_EQ(list[2].value, 2);
    EXPECT_EQ(copy[1].value, 10);
    EXPECT_EQ(assigned[2].value, 20);
    EXPECT_EQ(assigned.Size(), 2);
}

TEST_F(CATListOwnTest, AListCanBeAssignedAndAppendedToItself)
{
    CATListOwn<Record> list = List({{"a", 1}, {"b", 2}});
    const CATListOwn<Record>& same = list;
    list = same;
    ASSERT_EQ(list.Size(), 2);
    list.Append(same);
    ASSERT_EQ(list.Size(), 4);
    EXPECT_EQ(list[3].name, "a");
    EXPECT_EQ(list[4].name, "b");
    EXPECT_NE(&list[1], &list[3]);
}

TEST_F(CATListOwnTest, ARecordStaysWhereItIsWhileTheListChanges)
{
    CATListOwn<Record> list = List({{"a", 1}, {"b", 2}});
    Record* pSecond = &list[2];
    for (int i = 0; i < 100; ++i) {
        list.Append(Record("c", i));
    }
    list.RemovePosition(1);
    EXPECT_EQ(&list[1], pSecond);
    EXPECT_EQ(pSecond->value, 2);
}

TEST_F(CATListOwnTest, RecordsAreLocatedByTheirOwnEquality)
{
    CATListOwn<Record> list = List({{"a", 1}, {"b", 2}, {"a", 3}});
    EXPECT_EQ(list.Locate(Record("a", 99)), 1);
    EXPECT_EQ(list.Locate(Record("a", 99), 2), 3);
    EXPECT_EQ(list.Locate(Record("a", 99), 4), 0);
    EXPECT_EQ(list.Locate(Record("c", 1)), 0);
    EXPECT_EQ(list.RemoveValue(Record("a", 99)), 1);
    EXPECT_EQ(list[2].value, 3);
    EXPECT_EQ(list.RemoveValue(Record("c", 1)), 0);
    EXPECT_EQ(list.Size(), 2);
}

TEST_F(CATListOwnTest, ListsAreComparedElementByElement)
{
    EXPECT_TRUE(List({{"a", 1}, {"b", 2}}) == List({{"a", 9}, {"b", 9}}));
    EXPECT_TRUE(List({{"a", 1}, {"b", 2}}) != List({{"b", 2}, {"a", 1}}));
    EXPECT_TRUE(List({{"a", 1}}) != List({{"a", 1}, {"b", 2}}));
}

TEST_F(CATListOwnTest, RemovedRecordsAreDestroyedAtOnce)
{
    CATListOwn<Record> list = List({{"a", 1}, {"b", 2}, {"c", 3}});
    EXPECT_EQ(Record::s_Count, 3);
    list.RemovePosition(2);
    EXPECT_EQ(Record::s_Count, 2);
    list.RemoveAll(CATCollec::KeepAllocation);
    EXPECT_EQ(Record::s_Count, 0);
    EXPECT_EQ(list.Size(), 0);
    list.Append(Record("d", 4));
    EXPECT_EQ(list[1].name, "d");
}

TEST_F(CATListOwnTest, AnIndexOutsideTheListRaisesAnError)
{
    CATListOwn<Record> list = List({{"a", 1}});
    EXPECT_THROW(list[0], CATXHException);
    EXPECT_THROW(list[2], CATXHException);
    EXPECT_THROW(list.RemovePosition(2), CATXHException);
    EXPECT_EQ(list.Size(), 1);
}

TEST_F(CATListOwnTest, AListCanBeMoved)
{
    CATListOwn<Record> list = List({{"a", 1}});
    const Record* pRecord = &list[1];
    CATListOwn<Record> moved(std::move(list));
    EXPECT_EQ(&moved[1], pRecord);
    CATListOwn<Record> assigned(2, 2);
    assigned = std::move(moved);
    EXPECT_EQ(&assigned[1], pRecord);
}

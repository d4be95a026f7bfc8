#include "CATHashTable.h"

#include <map>
#include <memory>
#include <random>
#include <vector>

#include <gmock/gmock.h>

namespace {

struct Record
{
    int key;
    int value;
};

unsigned int HashOf(const Record* pRecord)
{
    return static_cast<unsigned int>(pRecord->key);
}

// Every record has the same hash: only the comparison tells them apart.
unsigned int SameHash(const Record*)
{
    return 7;
}

int Compare(const Record* pA, const Record* pB)
{
    return pA->key == pB->key ? 0 : 1;
}

} // namespace

TEST(CATHashTableTest, ARecordIsFoundByAnEqualOne)
{
    CATHashTable<Record> table(&HashOf, &Compare, 100);
    Record first{1, 10};
    Record second{2, 20};
    table.Insert(&first);
    table.Insert(&second);
    const Record like{2, 0};
    const Record none{3, 0};
    EXPECT_EQ(table.Locate(&like), &second);
    EXPECT_EQ(table.Locate(&none), nullptr);
    EXPECT_EQ(table.Size(), 2);
}

TEST(CATHashTableTest, RecordsOfEqualHashAreToldApartByTheComparison)
{
    CATHashTable<Record> table(&SameHash, &Compare, 1);
    std::vector<Record> records;
    for (int i = 0; i < 50; ++i) {
        records.push_back({i, i});
    }
    for (Record& record : records) {
        table.Insert(&record);
    }
    for (Record& record : records) {
        EXPECT_EQ(table.Locate(&record), &record);
    }
    const Record none{99, 0};
    EXPECT_EQ(table.Locate(&none), nullptr);
}

TEST(CATHashTableTest, OfEqualRecordsTheOneInsertedLastIsFoundAndRemovedFirst)
{
    CATHashTable<Record> table(&HashOf, &Compare, 1);
    std::vector<Record> records(20, Record{5, 0});
    for (Record& record : records) {
        table.Insert(&record);
    }
    for (auto record = records.rbegin(); record != records.rend(); ++record) {
        EXPECT_EQ(table.Locate(&*record), &*record);
        EXPECT_EQ(table.Remove(&*record), &*record);
    }
    EXPECT_EQ(table.Size(), 0);
}

TEST(CATHashTableTest, RemovingAnAbsentRecordAnswersNull)
{
    CATHashTable<Record> table(&HashOf, &Compare, 4);
    const Record like{1, 0};
    EXPECT_EQ(table.Remove(&like), nullptr);
    EXPECT_EQ(table.Size(), 0);
}

TEST(CATHashTableTest, ATableWithoutBucketsGrowsAllTheSame)
{
    CATHashTable<Record> table(&HashOf, &Compare, 0);
    std::vector<Record> records;
    for (int i = 0; i < 1000; ++i) {
        records.push_back({i, i});
    }
    for (Record& record : records) {
        table.Insert(&record);
    }
    const Record like{999, 0};
    EXPECT_EQ(table.Locate(&like), &records[999]);
}

TEST(CATHashTableTest, EveryRecordIsVisitedOnce)
{
    CATHashTable<Record> table(&HashOf, &Compare, 3);
    std::vector<Record> records;
    for (int i = 0; i < 100; ++i) {
        records.push_back({i, 0});
    }
    for (Record& record : records) {
        table.Insert(&record);
    }
    table.ForEach([](Record* pRecord) { ++pRecord->value; });
    EXPECT_THAT(records, testing::Each(testing::Field(&Record::value, 1)));
}

TEST(CATHashTableTest, AnEmptiedTableTakesRecordsAgain)
{
    CATHashTable<Record> table(&HashOf, &Compare, 3);
    Record record{1, 1};
    table.Insert(&record);
    table.RemoveAll();
    EXPECT_EQ(table.Size(), 0);
    EXPECT_EQ(table.Locate(&record), nullptr);
    table.Insert(&record);
    EXPECT_EQ(table.Locate(&record), &record);
}

TEST(CATHashTableTest, RandomWorkAgreesWithAMapOfStacks)
{
    std::mt19937 random(11);
    CATHashTable<Record> table(&HashOf, &Compare, 2);
    std::vector<std::unique_ptr<Record>> records;
    std::map<int, std::vector<Record*>> expected;
    int size = 0;
    for (int step = 0; step < 20000; ++step) {
        Record like{static_cast<int>(random() % 300), 0};
        std::vector<Record*>& stack = expected[like.key];
        if (random() % 3 != 0) {
            records.push_back(std::make_unique<Record>(Record{like.key, step}));
            table.Insert(records.back().get());
            stack.push_back(records.back().get());
            ++size;
        } else {
            Record* pTop = stack.empty() ? nullptr : stack.back();
            ASSERT_EQ(table.Remove(&like), pTop) << "step " << step;
            if (pTop != nullptr) {
                stack.pop_back();
                --size;
            }
        }
        ASSERT_EQ(table.Locate(&like), stack.empty() ? nullptr : stack.back()) << "step " << step;
        ASSERT_EQ(table.Size(), size);
    }
}

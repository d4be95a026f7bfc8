#include "CATListVal.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <memory>
#include <random>
#include <string>

#include <gmock/gmock.h>

#include "CATError.h"
#include "CATListPtr.h"
#include "CATUnicodeString.h"
#include "QTBListValues.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

CATListVal<int> Numbers(std::initializer_list<int> values)
{
    CATListVal<int> list;
    for (const int value : values) {
        list.Append(value);
    }
    return list;
}

// The error of an index outside the list names both numbers.
void ExpectIndexError(const std::function<void()>& access, const char* index, const char* size)
{
    try {
        access();
        ADD_FAILURE() << "no error for index " << index;
    } catch (const CATXHException& exception) {
        EXPECT_EQ(exception.GetError()->GetMsgId(), "ListIndexOutOfRangeERR_1001");
        EXPECT_THAT(exception.GetError()->GetNLSParameters(),
                    ElementsAre(CATUnicodeString(index), CATUnicodeString(size)));
    }
}

} // namespace

TEST(CATListValTest, PositionsCountFromOne)
{
    const CATListVal<int> list = Numbers({10, 20, 30});
    EXPECT_EQ(list.Size(), 3);
    EXPECT_EQ(list[1], 10);
    EXPECT_EQ(list[3], 30);
}

TEST(CATListValTest, AnIndexOutsideTheListRaisesAnErrorThatNamesIndexAndSize)
{
    CATListVal<int> list = Numbers({10, 20});
    ExpectIndexError([&] { (void)list[0]; }, "0", "2");
    ExpectIndexError([&] { (void)list[3]; }, "3", "2");
    ExpectIndexError([&] { (void)list[-1]; }, "-1", "2");
    ExpectIndexError([&] { list.RemovePosition(3); }, "3", "2");
    ExpectIndexError([&] { list.Replace(3, 1); }, "3", "2");
    ExpectIndexError([&] { list.InsertAt(0, 1); }, "0", "3");
    ExpectIndexError([&] { list.InsertAt(4, 1); }, "4", "3");
    const CATListVal<int> empty;
    ExpectIndexError([&] { (void)empty[1]; }, "1", "0");
    EXPECT_THAT(ListValues(list), ElementsAre(10, 20));
}

TEST(CATListValTest, InsertingMovesWhatStandsBehind)
{
    CATListVal<int> list = Numbers({10, 20, 30});
    list.InsertAt(1, 1);
    list.InsertAt(3, 15);
    list.InsertAt(list.Size() + 1, 40);
    EXPECT_THAT(ListValues(list), ElementsAre(1, 10, 15, 20, 30, 40));
}

TEST(CATListValTest, RemovingAPositionClosesTheGap)
{
    CATListVal<int> list = Numbers({10, 20, 30, 40, 50});
    list.RemovePosition(2);
    list.RemovePosition(3);
    EXPECT_THAT(ListValues(list), ElementsAre(10, 30, 50));
    list.RemovePosition(1);
    list.RemovePosition(2);
    list.RemovePosition(1);
    EXPECT_THAT(ListValues(list), IsEmpty());
}

TEST(CATListValTest, AValueIsLocatedFromAPositionOn)
{
    const CATListVal<int> list = Numbers({10, 20, 10});
    EXPECT_EQ(list.Locate(10), 1);
    EXPECT_EQ(list.Locate(10, 2), 3);
    EXPECT_EQ(list.Locate(10, 4), 0);
    EXPECT_EQ(list.Locate(30), 0);
    EXPECT_EQ(list.Locate(10, -5), 1);
}

TEST(CATListValTest, RemovingAValueTakesTheFirstOneAndAnswersItsPosition)
{
    CATListVal<int> list = Numbers({10, 20, 10});
    EXPECT_EQ(list.RemoveValue(10), 1);
    EXPECT_EQ(list.RemoveValue(10), 2);
    EXPECT_EQ(list.RemoveValue(10), 0);
    EXPECT_THAT(ListValues(list), ElementsAre(20));
}

TEST(CATListValTest, ACopyStaysAsItIsWhenTheOriginalIsWrittenTo)
{
    CATListVal<int> list = Numbers({10, 20});
    const CATListVal<int> copy(list);
    list.Replace(1, 11);
    list.Append(30);
    list.InsertAt(1, 1);
    list.RemovePosition(2);
    EXPECT_THAT(ListValues(copy), ElementsAre(10, 20));
    EXPECT_THAT(ListValues(list), ElementsAre(1, 20, 30));
    list.RemoveAll();
    EXPECT_THAT(ListValues(copy), ElementsAre(10, 20));
}

TEST(CATListValTest, ACopySharesItsElementsUntilOneOfTheTwoIsWrittenTo)
{
    CATListVal<int> list = Numbers({10, 20});
    CATListVal<int> copy;
    copy = list;
    EXPECT_EQ(copy.begin(), list.begin());
    copy.Append(30);
    EXPECT_NE(copy.begin(), list.begin());
}

TEST(CATListValTest, AListCanBeAppendedToItself)
{
    CATListVal<int> list = Numbers({10, 20});
    list.Append(list);
    EXPECT_THAT(ListValues(list), ElementsAre(10, 20, 10, 20));
    CATListVal<int> empty;
    empty.Append(empty);
    EXPECT_EQ(empty.Size(), 0);
}

TEST(CATListValTest, AnElementOfTheListCanBeAddedToIt)
{
    CATListVal<CATUnicodeString> list;
    list.Append("first, and long enough to be on the heap");
    for (int i = 0; i < 20; ++i) {
        list.Append(list[1]);
        list.InsertAt(1, list[list.Size()]);
    }
    EXPECT_EQ(list.Size(), 41);
    for (const CATUnicodeString& usText : list) {
        EXPECT_EQ(usText, "first, and long enough to be on the heap");
    }
    EXPECT_EQ(list.RemoveValue(list[3]), 1);
}

TEST(CATListValTest, AppendingAListKeepsBothOrders)
{
    CATListVal<int> list = Numbers({1, 2});
    list.Append(Numbers({3, 4}));
    list.Append(CATListVal<int>());
    EXPECT_THAT(ListValues(list), ElementsAre(1, 2, 3, 4));
    CATListVal<int> empty;
    empty.Append(list);
    EXPECT_EQ(empty, list);
}

TEST(CATListValTest, ListsAreEqualWhenTheirElementsAreInOrder)
{
    EXPECT_TRUE(Numbers({1, 2}) == Numbers({1, 2}));
    EXPECT_TRUE(Numbers({1, 2}) != Numbers({2, 1}));
    EXPECT_TRUE(Numbers({1, 2}) != Numbers({1}));
    EXPECT_TRUE(CATListVal<int>() == CATListVal<int>(16));
}

TEST(CATListValTest, AnInitialCapacityIsNoContent)
{
    CATListVal<int> list(100);
    EXPECT_EQ(list.Size(), 0);
    list.Append(1);
    EXPECT_THAT(ListValues(list), ElementsAre(1));
}

TEST(CATListValTest, AListCanBeMoved)
{
    CATListVal<int> first = Numbers({1, 2});
    CATListVal<int> second(std::move(first));
    EXPECT_THAT(ListValues(second), ElementsAre(1, 2));
    CATListVal<int> third = Numbers({3});
    third = std::move(second);
    EXPECT_THAT(ListValues(third), ElementsAre(1, 2));
}

TEST(CATListValTest, EmptyingAListWorksWithEitherHandlingOfItsMemory)
{
    CATListVal<int> list = Numbers({1, 2});
    list.RemoveAll(CATCollec::KeepAllocation);
    EXPECT_EQ(list.Size(), 0);
    list.Append(3);
    list.RemoveAll(CATCollec::ReleaseAllocation);
    list.Append(4);
    EXPECT_THAT(ListValues(list), ElementsAre(4));
}

TEST(CATListValTest, EveryElementIsDestroyedOnce)
{
    const auto witness = std::make_shared<int>(0);
    {
        CATListVal<std::shared_ptr<int>> list;
        for (int i = 0; i < 10; ++i) {
            list.Append(witness);
            list.InsertAt(1, witness);
        }
        EXPECT_EQ(witness.use_count(), 21);
        CATListVal<std::shared_ptr<int>> copy(list);
        EXPECT_EQ(witness.use_count(), 21);
        copy.RemovePosition(10);
        EXPECT_EQ(witness.use_count(), 40);
        list.Replace(4, nullptr);
        list.RemoveAll();
        EXPECT_EQ(witness.use_count(), 20);
    }
    EXPECT_EQ(witness.use_count(), 1);
}

TEST(CATListValTest, BothEndsOfALongListAreReachedInConstantTime)
{
    CATListVal<int> list;
    constexpr int COUNT = 500000;
    for (int i = 1; i <= COUNT; ++i) {
        list.InsertAt(1, -i);
        list.Append(i);
    }
    ASSERT_EQ(list.Size(), 2 * COUNT);
    EXPECT_EQ(list[1], -COUNT);
    EXPECT_EQ(list[COUNT], -1);
    EXPECT_EQ(list[COUNT + 1], 1);
    EXPECT_EQ(list[2 * COUNT], COUNT);
    while (list.Size() > 1) {
        list.RemovePosition(1);
        list.RemovePosition(list.Size());
        if (list.Size() == 0) {
            break;
        }
    }
    EXPECT_EQ(list.Size(), 0);
}

TEST(CATListValTest, AListOfPointersDoesNotOwnThem)
{
    int first = 1;
    int second = 2;
    {
        CATListPtr<int> pointers(4);
        pointers.Append(&first);
        pointers.Append(&second);
        EXPECT_EQ(pointers.Locate(&second), 2);
        CATListPtr<int> copy;
        copy = pointers;
        pointers.RemoveAll(CATCollec::ReleaseAllocation);
        EXPECT_EQ(copy.Size(), 2);
        EXPECT_EQ(*copy[1], 1);
    }
    EXPECT_EQ(first + second, 3);
}

TEST(CATListValTest, RandomWorkOnSharedListsAgreesWithUnsharedLists)
{
    std::mt19937 random(5);
    std::vector<CATListVal<int>> lists(4);
    std::vector<std::deque<int>> expected(4);
    for (int step = 0; step < 20000; ++step) {
        const std::size_t i = random() % lists.size();
        const std::size_t j = random() % lists.size();
        const int value = static_cast<int>(random() % 30);
        const auto offset = static_cast<std::ptrdiff_t>(random() % (expected[i].size() + 1));
        const bool isInside = offset < static_cast<std::ptrdiff_t>(expected[i].size());
        const int position = static_cast<int>(offset) + 1;
        switch (random() % 8) {
        case 0:
            lists[i] = lists[j];
            expected[i] = expected[j];
            break;
        case 1:
        case 2:
            lists[i].InsertAt(position, value);
            expected[i].insert(expected[i].begin() + offset, value);
            break;
        case 3:
            lists[i].Append(value);
            expected[i].push_back(value);
            break;
        case 4:
            if (isInside) {
                lists[i].Replace(position, value);
                expected[i][static_cast<std::size_t>(offset)] = value;
            }
            break;
        case 5:
        case 6:
            if (isInside) {
                lists[i].RemovePosition(position);
                expected[i].erase(expected[i].begin() + offset);
            }
            break;
        default: {
            const auto found = std::find(expected[i].begin(), expected[i].end(), value);
            const int foundPosition =
                found != expected[i].end() ? static_cast<int>(found - expected[i].begin()) + 1 : 0;
            ASSERT_EQ(lists[i].RemoveValue(value), foundPosition) << "step " << step;
            if (found != expected[i].end()) {
                expected[i].erase(found);
            }
        }
        }
        ASSERT_THAT(ListValues(lists[i]), testing::ElementsAreArray(expected[i])) << "step " << step;
        ASSERT_EQ(lists[i] == lists[j], expected[i] == expected[j]) << "step " << step;
    }
}

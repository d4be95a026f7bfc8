#include <gmock/gmock.h>

#include "CATError.h"
#include "CATListValQTBNodeAttribute.h"
#include "CATListValQTBNodeAttributeList.h"
#include "CATListValQTBNodeRelation.h"
#include "CATListValQTBNodeRelationList.h"
#include "QTBListValues.h"
#include "QTBMatchers.h"
#include "QTBTestLateType.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

CATListValCATUnicodeString Values(std::initializer_list<const char*> texts)
{
    CATListValCATUnicodeString values;
    for (const char* text : texts) {
        values.Append(text);
    }
    return values;
}

QTBTestLateType& NodeType()
{
    static QTBTestLateType s_LateType("TestRecorded");
    return s_LateType;
}

// The four lists behave alike: what makes a record of each and what its names are.
struct AttributeLists
{
    using List = CATListValQTBNodeAttribute;
    static QTBNodeAttribute Make(const char* name) { return QTBNodeAttribute(name, "value"); }
};
struct AttributeListLists
{
    using List = CATListValQTBNodeAttributeList;
    static QTBNodeAttributeList Make(const char* name) { return QTBNodeAttributeList(name, Values({"value"})); }
};
struct RelationLists
{
    using List = CATListValQTBNodeRelation;
    static QTBNodeRelation Make(const char* name) { return QTBNodeRelation(name, NodeType().Create()); }
};
struct RelationListLists
{
    using List = CATListValQTBNodeRelationList;
    static QTBNodeRelationList Make(const char* name) { return QTBNodeRelationList(name, NodeType().Create()); }
};

template <class Kind>
class CATListValQTBNodeRecordsTest : public testing::Test
{
protected:
    using List = typename Kind::List;

    void SetUp() override { m_ComponentsBefore = CATBaseUnknown::GetLiveComponentCount(); }
    void TearDown() override
    {
        EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_ComponentsBefore) << "records outlive their lists";
    }

    static List Make(std::initializer_list<const char*> names)
    {
        List list;
        for (const char* name : names) {
            list.Append(Kind::Make(name));
        }
        return list;
    }

    static std::vector<std::string> Names(const List& list)
    {
        std::vector<std::string> names;
        for (int i = 1; i <= list.Size(); ++i) {
            names.emplace_back(list[i].GetName().View());
        }
        return names;
    }

    int m_ComponentsBefore = 0;
};

using Kinds = testing::Types<AttributeLists, AttributeListLists, RelationLists, RelationListLists>;
TYPED_TEST_SUITE(CATListValQTBNodeRecordsTest, Kinds);

} // namespace

TYPED_TEST(CATListValQTBNodeRecordsTest, AListStartsEmptyWithOrWithoutACapacity)
{
    EXPECT_EQ(typename TypeParam::List().Size(), 0);
    EXPECT_EQ(typename TypeParam::List(16).Size(), 0);
}

TYPED_TEST(CATListValQTBNodeRecordsTest, RecordsAndWholeListsAreAppendedInOrder)
{
    auto list = this->Make({"a", "b"});
    list.Append(TypeParam::Make("c"));
    list.Append(this->Make({"d", "e"}));
    list.Append(typename TypeParam::List());
    EXPECT_THAT(this->Names(list), ElementsAre("a", "b", "c", "d", "e"));
    list.Append(list);
    EXPECT_EQ(list.Size(), 10);
}

TYPED_TEST(CATListValQTBNodeRecordsTest, ARecordIsLocatedByItsNameFromAPositionOn)
{
    const auto list = this->Make({"a", "b", "a"});
    EXPECT_EQ(list.Locate(TypeParam::Make("a")), 1);
    EXPECT_EQ(list.Locate(TypeParam::Make("a"), 2), 3);
    EXPECT_EQ(list.Locate(TypeParam::Make("a"), 4), 0);
    EXPECT_EQ(list.Locate(TypeParam::Make("c")), 0);
}

TYPED_TEST(CATListValQTBNodeRecordsTest, RecordsAreRemovedByPositionAndByName)
{
    auto list = this->Make({"a", "b", "c", "b"});
    list.RemovePosition(1);
    EXPECT_EQ(list.RemoveValue(TypeParam::Make("b")), 1);
    EXPECT_EQ(list.RemoveValue(TypeParam::Make("x")), 0);
    EXPECT_THAT(this->Names(list), ElementsAre("c", "b"));
    list.RemoveAll();
    EXPECT_THAT(this->Names(list), IsEmpty());
}

TYPED_TEST(CATListValQTBNodeRecordsTest, AnAddedRecordIsACopy)
{
    auto list = this->Make({"a"});
    const auto record = TypeParam::Make("b");
    list.Append(record);
    EXPECT_NE(&list[2], &record);
    EXPECT_TRUE(list[2] == record);
}

TYPED_TEST(CATListValQTBNodeRecordsTest, CopyingAndAssigningCopyEveryRecord)
{
    auto list = this->Make({"a", "b"});
    auto copy(list);
    auto assigned = this->Make({"x"});
    assigned = list;
    EXPECT_TRUE(copy == list);
    EXPECT_TRUE(assigned == list);
    EXPECT_NE(&copy[1], &list[1]);
    EXPECT_NE(&assigned[1], &list[1]);
    copy.RemovePosition(1);
    assigned.RemoveAll();
    EXPECT_THAT(this->Names(list), ElementsAre("a", "b"));
    const auto& same = list;
    list = same;
    EXPECT_THAT(this->Names(list), ElementsAre("a", "b"));
}

TYPED_TEST(CATListValQTBNodeRecordsTest, AListCanBeMoved)
{
    auto list = this->Make({"a", "b"});
    const auto* pFirst = &list[1];
    auto moved(std::move(list));
    EXPECT_EQ(&moved[1], pFirst);
    typename TypeParam::List assigned;
    assigned = std::move(moved);
    EXPECT_EQ(&assigned[1], pFirst);
}

TYPED_TEST(CATListValQTBNodeRecordsTest, ListsAreComparedElementByElement)
{
    EXPECT_TRUE(this->Make({"a", "b"}) == this->Make({"a", "b"}));
    EXPECT_TRUE(this->Make({"a", "b"}) != this->Make({"b", "a"}));
    EXPECT_TRUE(this->Make({"a"}) != this->Make({"a", "b"}));
}

TYPED_TEST(CATListValQTBNodeRecordsTest, PositionsCountFromOneAndOthersRaiseAnError)
{
    auto list = this->Make({"a"});
    EXPECT_EQ(list[1].GetName(), "a");
    EXPECT_THROW(list[0], CATXHException);
    EXPECT_THROW(list[2], CATXHException);
    EXPECT_THROW(list.RemovePosition(2), CATXHException);
}

TEST(QTBNodeAttributeTest, RecordsOfOneNameAndDifferentValuesAreEqualAndTheFirstIsLocated)
{
    const QTBNodeAttribute first("State", "10");
    const QTBNodeAttribute second("State", "20");
    EXPECT_TRUE(first == second);
    EXPECT_FALSE(first != second);
    EXPECT_TRUE(first != QTBNodeAttribute("Status", "10"));
    CATListValQTBNodeAttribute list;
    list.Append(QTBNodeAttribute("Name", "10"));
    list.Append(first);
    list.Append(second);
    EXPECT_EQ(list.Locate(second), 2);
    EXPECT_EQ(list[2].GetValue(), "10");
    EXPECT_EQ(list[3].GetValue(), "20");
}

TEST(QTBNodeAttributeListTest, RecordsOfOneNameAreEqualWhateverTheirValues)
{
    const QTBNodeAttributeList first("InstanceName", Values({"A.1", "A.2"}));
    EXPECT_TRUE(first == QTBNodeAttributeList("InstanceName", Values({})));
    EXPECT_TRUE(first != QTBNodeAttributeList("Name", Values({"A.1", "A.2"})));
    EXPECT_THAT(ListValues(first.GetValues()), ElementsAre(CATUnicodeString("A.1"), CATUnicodeString("A.2")));
}

TEST(QTBNodeRelationTest, RecordsOfOneNameAreEqualWhateverTheirNodes)
{
    const CATBaseUnknown_var spNode = NodeType().Create();
    const QTBNodeRelation relation("PartPart", spNode);
    EXPECT_TRUE(relation == QTBNodeRelation("PartPart", NodeType().Create()));
    EXPECT_TRUE(relation != QTBNodeRelation("PartDoc", spNode));
    EXPECT_TRUE(relation.GetNode() == spNode);
}

TEST(CATListValQTBNodeRelationListTest, ACopiedListHasIndependentRecords)
{
    const CATBaseUnknown_var spNode = NodeType().Create();
    CATListValQTBNodeRelationList list;
    list.Append(QTBNodeRelationList("PartPart", spNode));
    CATListValQTBNodeRelationList copy(list);
    ASSERT_THAT(copy[1].RemoveValue(spNode), Succeeds());
    EXPECT_EQ(copy[1].GetValues().Size(), 0);
    EXPECT_THAT(ListValues(list[1].GetValues()), ElementsAre(spNode));
}

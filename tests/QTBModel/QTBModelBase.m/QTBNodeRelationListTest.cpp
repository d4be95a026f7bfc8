#include "QTBNodeRelationList.h"

#include <vector>

#include <gmock/gmock.h>

#include "CATBaseUnknown.h"
#include "QTBListValues.h"
#include "QTBMatchers.h"
#include "QTBStringHash.h"
#include "QTBTestLateType.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class QTBNodeRelationListTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_ComponentsBefore = CATBaseUnknown::GetLiveComponentCount();
        m_spA = m_LateType.Create();
        m_spB = m_LateType.Create();
        m_spC = m_LateType.Create();
    }
    void TearDown() override
    {
        m_spA = m_spB = m_spC = NULL_var;
        EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_ComponentsBefore);
    }

    int m_ComponentsBefore = 0;
    QTBTestLateType m_LateType{"TestLinked"};
    CATBaseUnknown_var m_spA;
    CATBaseUnknown_var m_spB;
    CATBaseUnknown_var m_spC;
};

unsigned int HashOf(const char* text)
{
    unsigned int hash = 0;
    hash %= CATUnicodeString(text);
    return hash;
}

} // namespace

TEST_F(QTBNodeRelationListTest, ANewListHoldsItsFirstNode)
{
    const QTBNodeRelationList list("PartPart", m_spA);
    EXPECT_EQ(list.GetName(), "PartPart");
    EXPECT_THAT(ListValues(list.GetValues()), ElementsAre(m_spA));
    EXPECT_EQ(list.ContainsValue(m_spA), TRUE);
    EXPECT_EQ(list.ContainsValue(m_spB), FALSE);
}

TEST_F(QTBNodeRelationListTest, TheHashIsThatOfTheName)
{
    EXPECT_EQ(QTBNodeRelationList("PartPart", m_spA).GetHashKey(), HashOf("PartPart"));
    EXPECT_EQ(QTBNodeRelationList("", m_spA).GetHashKey(), HashOf(""));
}

TEST_F(QTBNodeRelationListTest, NodesAreAddedAtEitherEnd)
{
    QTBNodeRelationList list("PartPart", m_spA);
    EXPECT_THAT(list.AddValueAtBeginning(m_spB), Succeeds());
    EXPECT_THAT(list.AddValueAtEnd(m_spC), Succeeds());
    EXPECT_THAT(ListValues(list.GetValues()), ElementsAre(m_spB, m_spA, m_spC));
}

TEST_F(QTBNodeRelationListTest, AddingANodeAtTheBeginningThatIsAtTheEndFailsAndLeavesTheOrder)
{
    QTBNodeRelationList list("PartPart", m_spA);
    list.AddValueAtEnd(m_spB);
    EXPECT_EQ(list.AddValueAtBeginning(m_spB), E_FAIL);
    EXPECT_THAT(ListValues(list.GetValues()), ElementsAre(m_spA, m_spB));
}

TEST_F(QTBNodeRelationListTest, AddingANodeAtTheEndThatIsThereFailsAndLeavesTheOrder)
{
    QTBNodeRelationList list("PartPart", m_spA);
    list.AddValueAtEnd(m_spB);
    EXPECT_EQ(list.AddValueAtEnd(m_spA), E_FAIL);
    EXPECT_THAT(ListValues(list.GetValues()), ElementsAre(m_spA, m_spB));
}

TEST_F(QTBNodeRelationListTest, RemovingANodeThatIsNotThereFails)
{
    QTBNodeRelationList list("PartPart", m_spA);
    EXPECT_EQ(list.RemoveValue(m_spB), E_FAIL);
    EXPECT_THAT(list.RemoveValue(m_spA), Succeeds());
    EXPECT_EQ(list.RemoveValue(m_spA), E_FAIL);
}

TEST_F(QTBNodeRelationListTest, TheChangingOperationsFailWithoutErrorAndWithoutTrace)
{
    QTBNodeRelationList list("PartPart", m_spA);
    DebugCapture capture(2);
    EXPECT_THAT(list.AddValueAtBeginning(m_spA), FailsQuietly());
    EXPECT_THAT(list.AddValueAtEnd(m_spA), FailsQuietly());
    EXPECT_THAT(list.RemoveValue(m_spB), FailsQuietly());
    EXPECT_EQ(capture.Text(), "");
}

TEST_F(QTBNodeRelationListTest, AnEmptiedListKeepsItsNameAndItsHash)
{
    QTBNodeRelationList list("PartPart", m_spA);
    ASSERT_THAT(list.RemoveValue(m_spA), Succeeds());
    EXPECT_THAT(ListValues(list.GetValues()), IsEmpty());
    EXPECT_EQ(list.GetName(), "PartPart");
    EXPECT_EQ(list.GetHashKey(), HashOf("PartPart"));
    EXPECT_THAT(list.AddValueAtEnd(m_spB), Succeeds());
    EXPECT_THAT(ListValues(list.GetValues()), ElementsAre(m_spB));
}

TEST_F(QTBNodeRelationListTest, TheAnsweredNodesAreACopy)
{
    QTBNodeRelationList list("PartPart", m_spA);
    CATListValCATBaseUnknown_var Values = list.GetValues();
    Values.Append(m_spB);
    EXPECT_THAT(ListValues(list.GetValues()), ElementsAre(m_spA));
    const CATListValCATBaseUnknown_var Before = list.GetValues();
    list.AddValueAtBeginning(m_spC);
    EXPECT_THAT(ListValues(Before), ElementsAre(m_spA));
}

TEST_F(QTBNodeRelationListTest, ListsAreEqualByNameWhateverTheirNodes)
{
    EXPECT_TRUE(QTBNodeRelationList("PartPart", m_spA) == QTBNodeRelationList("PartPart", m_spB));
    EXPECT_TRUE(QTBNodeRelationList("PartPart", m_spA) != QTBNodeRelationList("PartDoc", m_spA));
}

TEST_F(QTBNodeRelationListTest, ACopyIsIndependentOfItsOriginal)
{
    QTBNodeRelationList list("PartPart", m_spA);
    QTBNodeRelationList copy(list);
    copy.RemoveValue(m_spA);
    copy.AddValueAtEnd(m_spB);
    EXPECT_THAT(ListValues(list.GetValues()), ElementsAre(m_spA));
    EXPECT_THAT(ListValues(copy.GetValues()), ElementsAre(m_spB));
    EXPECT_EQ(copy.GetName(), "PartPart");
    EXPECT_EQ(copy.GetHashKey(), list.GetHashKey());
}

TEST_F(QTBNodeRelationListTest, ACopyOfALongListIsIndependentToo)
{
    QTBNodeRelationList list("PartPart", m_spA);
    std::vector<CATBaseUnknown_var> nodes;
    for (int i = 0; i < 100; ++i) {
        nodes.push_back(m_LateType.Create());
        list.AddValueAtEnd(nodes.back());
    }
    list.RemoveValue(nodes[50]);
    QTBNodeRelationList copy(list);
    EXPECT_EQ(copy.GetSize(), 100);
    EXPECT_THAT(copy.AddValueAtEnd(nodes[10]), FailsQuietly());
    EXPECT_THAT(copy.RemoveValue(nodes[10]), Succeeds());
    EXPECT_EQ(list.ContainsValue(nodes[10]), TRUE);
    EXPECT_EQ(list.GetValues().Size(), 100);
    EXPECT_EQ(copy.GetValues().Size(), 99);
}

TEST_F(QTBNodeRelationListTest, TheListKeepsItsNodesAlive)
{
    const int before = CATBaseUnknown::GetLiveComponentCount();
    {
        QTBNodeRelationList list("PartPart", m_LateType.Create());
        list.AddValueAtEnd(m_LateType.Create());
        EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before + 2);
        list.RemoveValue(list.GetValues()[1]);
        EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before + 1);
    }
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before);
}

TEST_F(QTBNodeRelationListTest, AMillionNodesAreAddedFoundAndRemovedInTheirOrder)
{
    constexpr std::size_t COUNT = 1000000;
    std::vector<CATBaseUnknown_var> nodes;
    nodes.reserve(COUNT);
    for (std::size_t i = 0; i < COUNT; ++i) {
        nodes.push_back(m_LateType.Create());
    }
    QTBNodeRelationList list("PartPart", nodes[0]);
    for (std::size_t i = 1; i < COUNT; ++i) {
        ASSERT_EQ(list.AddValueAtEnd(nodes[i]), S_OK);
    }
    EXPECT_EQ(list.GetValues().Size(), static_cast<int>(COUNT));
    EXPECT_TRUE(FAILED(list.AddValueAtEnd(nodes[COUNT / 2])));
    EXPECT_EQ(list.ContainsValue(nodes[COUNT - 1]), TRUE);
    EXPECT_EQ(list.ContainsValue(m_spA), FALSE);
    for (std::size_t i = 0; i < COUNT; i += 2) {
        ASSERT_EQ(list.RemoveValue(nodes[i]), S_OK);
    }
    const CATListValCATBaseUnknown_var values = list.GetValues();
    ASSERT_EQ(values.Size(), static_cast<int>(COUNT / 2));
    EXPECT_TRUE(values[1] == nodes[1]);
    EXPECT_TRUE(values[static_cast<int>(COUNT / 2)] == nodes[COUNT - 1]);
}

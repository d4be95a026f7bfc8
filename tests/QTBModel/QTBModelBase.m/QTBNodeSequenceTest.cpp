#include "QTBNodeSequence.h"

#include <algorithm>
#include <deque>
#include <random>
#include <vector>

#include <gmock/gmock.h>

#include "QTBListValues.h"
#include "QTBTestLateType.h"

namespace {

class QTBNodeSequenceTest : public testing::Test
{
protected:
    std::vector<CATBaseUnknown_var> CreateNodes(std::size_t count)
    {
        std::vector<CATBaseUnknown_var> nodes;
        for (std::size_t i = 0; i < count; ++i) {
            nodes.push_back(m_LateType.Create());
        }
        return nodes;
    }

    QTBTestLateType m_LateType{"TestSequenced"};
};

} // namespace

TEST_F(QTBNodeSequenceTest, AnEmptySequenceHoldsNothing)
{
    QTBNodeSequence sequence;
    EXPECT_EQ(sequence.Size(), 0);
    EXPECT_FALSE(sequence.Contains(m_LateType.Create()));
    EXPECT_FALSE(sequence.Remove(m_LateType.Create()));
    EXPECT_EQ(sequence.GetNodes().Size(), 0);
}

TEST_F(QTBNodeSequenceTest, ANodeRemovedFromTheMiddleIsGoneAtOnce)
{
    const auto nodes = CreateNodes(100);
    QTBNodeSequence sequence;
    for (const auto& spNode : nodes) {
        ASSERT_TRUE(sequence.AddLast(spNode));
    }
    for (std::size_t i = 1; i < 99; i += 2) {
        ASSERT_TRUE(sequence.Remove(nodes[i]));
        EXPECT_FALSE(sequence.Contains(nodes[i]));
        EXPECT_FALSE(sequence.Remove(nodes[i]));
    }
    EXPECT_EQ(sequence.Size(), 51);
    const auto rest = ListValues(sequence.GetNodes());
    ASSERT_EQ(rest.size(), 51U);
    for (std::size_t i = 0; i < 50; ++i) {
        EXPECT_TRUE(rest[i] == nodes[2 * i]);
    }
    EXPECT_TRUE(rest[50] == nodes[99]);
}

TEST_F(QTBNodeSequenceTest, ARemovedNodeReleasesItsReference)
{
    const auto nodes = CreateNodes(100);
    QTBNodeSequence sequence;
    for (const auto& spNode : nodes) {
        sequence.AddLast(spNode);
    }
    for (const std::size_t i : {0U, 50U, 99U}) {
        sequence.Remove(nodes[i]);
        nodes[i]->AddRef();
        EXPECT_EQ(nodes[i]->Release(), 1U) << i;
    }
}

TEST_F(QTBNodeSequenceTest, AnEmptyHandleIsAnElementLikeAnyOther)
{
    const auto nodes = CreateNodes(60);
    QTBNodeSequence sequence;
    for (std::size_t i = 0; i < 30; ++i) {
        sequence.AddLast(nodes[i]);
    }
    ASSERT_TRUE(sequence.AddLast(NULL_var));
    EXPECT_FALSE(sequence.AddFirst(NULL_var));
    for (std::size_t i = 30; i < 60; ++i) {
        sequence.AddLast(nodes[i]);
    }
    for (std::size_t i = 10; i < 50; ++i) {
        sequence.Remove(nodes[i]);
    }
    EXPECT_TRUE(sequence.Contains(NULL_var));
    EXPECT_EQ(sequence.Size(), 21);
    EXPECT_TRUE(sequence.GetNodes()[11] == NULL_var);
    EXPECT_EQ(sequence.GetNodes().Size(), 21);
    for (std::size_t i = 50; i < 60; ++i) {
        sequence.Remove(nodes[i]);
    }
    EXPECT_TRUE(sequence.GetNodes()[11] == NULL_var);
    EXPECT_TRUE(sequence.Remove(NULL_var));
    EXPECT_FALSE(sequence.Contains(NULL_var));
    EXPECT_EQ(sequence.Size(), 10);
}

TEST_F(QTBNodeSequenceTest, RandomWorkAgreesWithAnOrderedListWithoutDuplicates)
{
    std::mt19937 random(99);
    for (const std::size_t count : {5U, 40U, 300U}) {
        const auto nodes = CreateNodes(count);
        QTBNodeSequence sequence;
        std::deque<CATBaseUnknown_var> expected;
        for (int step = 0; step < 20000; ++step) {
            const CATBaseUnknown_var& spNode = nodes[random() % count];
            const auto found = std::find(expected.begin(), expected.end(), spNode);
            const bool isThere = found != expected.end();
            switch (random() % 8) {
            case 0:
            case 1:
                ASSERT_EQ(sequence.AddFirst(spNode), !isThere);
                if (!isThere) {
                    expected.push_front(spNode);
                }
                break;
            case 2:
            case 3:
                ASSERT_EQ(sequence.AddLast(spNode), !isThere);
                if (!isThere) {
                    expected.push_back(spNode);
                }
                break;
            case 4:
            case 5:
            case 6:
                ASSERT_EQ(sequence.Remove(spNode), isThere);
                if (isThere) {
                    expected.erase(found);
                }
                break;
            default: {
                const CATListValCATBaseUnknown_var Nodes = sequence.GetNodes();
                ASSERT_TRUE(std::equal(Nodes.begin(), Nodes.end(), expected.begin(), expected.end()))
                    << "step " << step;
            }
            }
            ASSERT_EQ(sequence.Size(), static_cast<int>(expected.size())) << "step " << step;
            ASSERT_EQ(sequence.Contains(spNode), std::find(expected.begin(), expected.end(), spNode) != expected.end())
                << "step " << step;
        }
        const QTBNodeSequence copy(sequence);
        EXPECT_TRUE(copy.GetNodes() == sequence.GetNodes());
    }
}

TEST_F(QTBNodeSequenceTest, FiftyThousandNodesAreAddedFoundAndRemovedInReasonableTime)
{
    auto nodes = CreateNodes(50000);
    QTBNodeSequence sequence;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        ASSERT_TRUE(i % 2 == 0 ? sequence.AddLast(nodes[i]) : sequence.AddFirst(nodes[i]));
        ASSERT_FALSE(sequence.AddLast(nodes[i / 2]));
    }
    EXPECT_TRUE(sequence.GetNodes()[1] == nodes[49999]);
    EXPECT_TRUE(sequence.GetNodes()[25000] == nodes[1]);
    EXPECT_TRUE(sequence.GetNodes()[25001] == nodes[0]);
    EXPECT_TRUE(sequence.GetNodes()[50000] == nodes[49998]);
    std::mt19937 random(1);
    std::shuffle(nodes.begin(), nodes.end(), random);
    for (const auto& spNode : nodes) {
        ASSERT_TRUE(sequence.Contains(spNode));
        ASSERT_TRUE(sequence.Remove(spNode));
    }
    EXPECT_EQ(sequence.Size(), 0);
}

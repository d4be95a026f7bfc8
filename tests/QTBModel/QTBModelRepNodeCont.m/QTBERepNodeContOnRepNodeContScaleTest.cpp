#include <ctime>

#include <gmock/gmock.h>

#include "QTBERepNodeContOnRepNodeCont.h"
#include "QTBILinkToPsn.h"
#include "QTBPartInstanceInfo.h"
#include "QTBRepTreeSession.h"
#include "QTBTestWindow.h"

namespace {

using Nodes = CATListValCATBaseUnknown_var;

constexpr int COUNT = 100000;

std::string Number(int number)
{
    return std::to_string(number);
}

// Parts P0, P1, ... each below the one before it.
class ChainOfParts : public QTBRepTreeSession
{
protected:
    void ReadChain(int levels)
    {
        std::string items = Part("P0", Attribute("PartNumber", "P0"));
        for (int i = 1; i <= levels; ++i) {
            const std::string key = "P" + Number(i);
            items += Part(key, Attribute("PartNumber", key)) +
                     PartPart("R" + Number(i), "P" + Number(i - 1), key, Attribute("InstanceName", key + ".1"));
        }
        Update(items);
    }

    // Seconds of the processor, so that a busy machine does not matter.
    double MeasureClosingOfWindow(int levels)
    {
        QTBGlobVarsUtil::EndSession();
        ReadChain(levels);
        QTBTestWindow window;
        window.Show(FindNode("P0"), {"PartPart"});
        EXPECT_EQ(AllRepNodesOf(window.GetCont()).Size(), 2 * levels + 2);
        const std::clock_t begin = std::clock();
        window.Close();
        return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
    }

    int CountMarked() const
    {
        int marked = 0;
        for (const CATBaseUnknown_var& spRepNode : AllRepNodesOf(m_spCont)) {
            unsigned char bMark = FALSE;
            EXPECT_THAT(QTBIRepNode_var(spRepNode)->GetMarkForRemoval(&bMark), Succeeds());
            marked += bMark;
        }
        return marked;
    }
    int CountAll() const { return AllRepNodesOf(m_spCont).Size(); }
};

TEST_F(ChainOfParts, IsExpandedWalkedMarkedCleanedUpFoldedAndRemoved)
{
    ReadChain(COUNT);
    Consider(ALL_NODES);
    unsigned char bTrue = TRUE;
    unsigned char bFalse = FALSE;
    EXPECT_THAT(ShowTrees("P0", Relations({PARTS})), Succeeds());
    ASSERT_EQ(CountAll(), 2 * COUNT + 1);
    EXPECT_EQ(Cont()->GetExpansionPathLength(), 0);
    const QTBIRepNode_var spRoot = Find("P0");
    const std::string lastKey = "P" + Number(COUNT);

    Nodes all;
    EXPECT_THAT(spRoot->GetAllChildren(&all), Succeeds());
    ASSERT_EQ(all.Size(), 2 * COUNT);
    EXPECT_EQ(KeyOf(PdmNodesOf(all[1])[1]), "R1");
    EXPECT_EQ(KeyOf(PdmNodesOf(all[2 * COUNT])[1]), lastKey);
    all.RemoveAll();

    CATListValQTBPartInstanceInfo path;
    EXPECT_THAT(QTBILinkToPsn_var(Find(lastKey.c_str()))->GetPathToRootPartInstanceInfo(&path, nullptr, nullptr),
                Succeeds());
    ASSERT_EQ(path.Size(), COUNT);
    CATUnicodeString usPartNumber;
    CATUnicodeString usInstanceName;
    EXPECT_THAT(path[COUNT].GetInstanceInfo(&usPartNumber, &usInstanceName), Succeeds());
    EXPECT_EQ(TextOf(usInstanceName), lastKey + ".1");

    EXPECT_THAT(spRoot->Redraw(&bTrue), Succeeds());
    EXPECT_THAT(spRoot->MarkChildrenForRemoval(Relations({PARTS}), &bTrue), Succeeds());
    EXPECT_EQ(CountMarked(), COUNT);
    EXPECT_THAT(spRoot->CleanUpChildren(&bTrue), Succeeds());
    EXPECT_EQ(CountMarked(), 0) << "all of the last action";
    EXPECT_EQ(CountAll(), 2 * COUNT + 1);

    EXPECT_THAT(spRoot->MarkChildrenForRemoval(Relations({PARTS}), &bFalse), Succeeds());
    AdvanceActionIndexTo(CurrentActionIndex() + 2);
    EXPECT_THAT(spRoot->CleanUpChildren(&bTrue), Succeeds());
    EXPECT_EQ(CountAll(), 1) << "the chain is older now";

    EXPECT_THAT(Expand(spRoot, Relations({PARTS})), Succeeds());
    EXPECT_EQ(CountAll(), 2 * COUNT + 1);
    QTBIRepNode_var spRelation(ChildrenOf(spRoot)[1]);
    EXPECT_THAT(m_spCont->DeExpand(&spRelation), Succeeds());
    EXPECT_EQ(CountAll(), 1);

    // The last relation loses its right object: the failure comes back through all levels.
    const QTBINodeRelations_var spLastRelation(FindNode(("R" + Number(COUNT)).c_str()));
    EXPECT_THAT(spLastRelation->RemoveRightNode("PartPart", FindNode(lastKey.c_str())), Succeeds());
    EXPECT_THAT(Expand(spRoot, Relations({PARTS})), FailsAssertion("RightNodes.Size() == 1"));
    EXPECT_EQ(CountAll(), 2 * COUNT - 1);
    EXPECT_EQ(Cont()->GetExpansionPathLength(), 0);
    EXPECT_THAT(m_spCont->Cleanup(), Succeeds());
    EXPECT_EQ(CountAll(), 0);
}

TEST_F(ChainOfParts, InAWindowThatClosesCostsNoMorePerLevel)
{
    constexpr int LEVELS = 10000;
    const double few = MeasureClosingOfWindow(LEVELS / 10);
    // Ten times the levels take about ten times as long; a hundred times would be quadratic.
    EXPECT_LT(MeasureClosingOfWindow(LEVELS), 50 * few);
}

// Places of parts in one assembly A.
class ManyPlaces : public QTBRepTreeSession
{
protected:
    struct Times
    {
        double creating;
        double finding;
        double removing;
    };

    // What expanding, refreshing and removing costs in each of two windows for an assembly of that many places, in
    // seconds. The part of place i has the key that partOfPlace gives.
    template <class PartOfPlace>
    Times Measure(int places, PartOfPlace partOfPlace)
    {
        QTBGlobVarsUtil::EndSession();
        std::string items = Part("A");
        for (int i = 0; i < places; ++i) {
            const std::string key = partOfPlace(i);
            items += Part(key) + PartPart("R" + Number(i), "A", key);
        }
        Update(items);
        Times times{};
        const std::vector<QTBIRepNodeCont_var> conts{CreateCont(), CreateCont()};
        for (const QTBIRepNodeCont_var& spCont : conts) {
            m_spCont = spCont;
            Consider(ALL_NODES);
            Measure(&times.creating, [&] { return ShowTrees("A", Relations({PARTS})); });
            EXPECT_EQ(AllRepNodesOf(m_spCont).Size(), 2 * places + 1);
            Measure(&times.finding, [&] { return ShowTrees("A", Relations({PARTS})); });
            EXPECT_EQ(AllRepNodesOf(m_spCont).Size(), 2 * places + 1) << "nothing twice";
        }
        for (const QTBIRepNodeCont_var& spCont : conts) {
            m_spCont = spCont;
            const QTBIRepNode_var spRoot = Find("A");
            Measure(&times.removing, [&] { return Remove(spRoot); });
            EXPECT_EQ(AllRepNodesOf(m_spCont).Size(), 0);
        }
        return times;
    }

    // Ten times the places take about ten times as long; a hundred times would be quadratic.
    template <class PartOfPlace>
    void ExpectLinearCost(int places, PartOfPlace partOfPlace)
    {
        const Times few = Measure(places / 10, partOfPlace);
        const Times many = Measure(places, partOfPlace);
        EXPECT_LT(many.creating, 50 * few.creating);
        EXPECT_LT(many.finding, 50 * few.finding);
        EXPECT_LT(many.removing, 50 * few.removing);
    }

private:
    template <class Operation>
    static void Measure(double* pSeconds, Operation operation)
    {
        // Time of the processor, so that a busy machine does not matter.
        const std::clock_t begin = std::clock();
        EXPECT_THAT(operation(), Succeeds());
        *pSeconds += static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
    }
};

TEST_F(ManyPlaces, OfOnePartCostNoMorePerPlace)
{
    ExpectLinearCost(COUNT, [](int) { return std::string("S"); });
}

TEST_F(ManyPlaces, OfDifferentPartsCostNoMorePerPlace)
{
    ExpectLinearCost(COUNT / 4, [](int i) { return "P" + Number(i); });
}

} // namespace

#include <gmock/gmock.h>

#include "QTBERepNodeContOnRepNodeCont.h"
#include "QTBExpandCommands.h"
#include "QTBInfoListEntry.h"
#include "QTBInvariants.h"
#include "QTBRepTreeSession.h"
#include "QTBTestEnvironment.h"

using testing::IsEmpty;

namespace {

constexpr const char* LIMIT = "QTB_MAX_REP_NODES";
constexpr const char* REACHED = "MaxRepNodesReachedWRN_2104";

std::string Number(int number)
{
    return std::to_string(number);
}

class RepTreeLimits : public QTBRepTreeSession
{
protected:
    void SetUp() override
    {
        QTBRepTreeSession::SetUp();
        Consider(ALL_NODES);
    }
    void TearDown() override
    {
        EXPECT_THAT(QTBFindBrokenInvariants({m_spCont}), IsEmpty());
        QTBRepTreeSession::TearDown();
    }

    // Parts P0 to P<levels>; each is used so many times by the one before it.
    static void UpdateLadder(int levels, int uses)
    {
        std::string items = Part("P0");
        for (int i = 1; i <= levels; ++i) {
            items += Part("P" + Number(i));
            for (int use = 1; use <= uses; ++use) {
                items += PartPart("R" + Number(i) + "." + Number(use), "P" + Number(i - 1), "P" + Number(i));
            }
        }
        Update(items);
    }

    // Parts C0 to C<length - 1>, each below the one before it and the first below the last.
    static void UpdateCircle(int length)
    {
        std::string items;
        for (int i = 0; i < length; ++i) {
            items += Part("C" + Number(i));
        }
        for (int i = 0; i < length; ++i) {
            items += PartPart("R" + Number(i), "C" + Number(i), "C" + Number((i + 1) % length));
        }
        Update(items);
    }

    // So many levels of sub-parts, as the schema writes them down in a tree.
    static std::string NestedRelations(int levels)
    {
        std::string structure;
        for (int i = 0; i < levels; ++i) {
            structure += R"(<rel name="PartPart" direction="LeftToRight"><obj class="Part">)";
        }
        for (int i = 0; i < levels; ++i) {
            structure += "</obj></rel>";
        }
        return structure;
    }

    static int CountMessages(const char* piece)
    {
        CATListValQTBInfoListEntry entries;
        QTBGlobVarsUtil::GetInfoListEntries(&entries);
        int count = 0;
        for (const QTBInfoListEntry& entry : entries) {
            count += entry.text.View().find(piece) != std::string_view::npos ? 1 : 0;
        }
        return count;
    }

    int CountAll() const { return AllRepNodesOf(m_spCont).Size(); }
};

} // namespace

TEST_F(RepTreeLimits, ALadderOfSharedPartsEndsAtTheLimit)
{
    UpdateLadder(40, 2);
    const QTBTestEnvironment limit(LIMIT, "1001");
    EXPECT_THAT(ShowTrees("P0", Relations({PARTS})), FailsWith(REACHED, "1001"));
    EXPECT_EQ(CountAll(), 1001) << "the root and 500 relations with their objects";
    EXPECT_EQ(Cont()->GetExpansionPathLength(), 0);
    for (const CATBaseUnknown_var& spRepNode : AllRepNodesOf(m_spCont)) {
        if (QTBIPdmRelNode_var(PdmNodesOf(spRepNode)[1]) != NULL_var) {
            EXPECT_EQ(ChildrenOf(spRepNode).Size(), 1) << "no tree ends at a relation";
        }
    }

    EXPECT_THAT(ShowTrees("P0", Relations({PARTS})), FailsWith(REACHED, "1001"));
    EXPECT_EQ(CountAll(), 1001) << "what is there counts, so that the tree does not grow with each update";
}

TEST_F(RepTreeLimits, ATreeThatReachedTheLimitIsFoldedAndCleanedUp)
{
    UpdateLadder(40, 2);
    {
        const QTBTestEnvironment limit(LIMIT, "1000");
        EXPECT_THAT(ShowTrees("P0", Relations({PARTS})), FailsWithMessage(REACHED));
    }
    const QTBIRepNode_var spRoot = Find("P0");
    CATListValCATBaseUnknown_var all;
    EXPECT_THAT(spRoot->GetAllChildren(&all), Succeeds());
    EXPECT_EQ(all.Size(), 1000);
    QTBIRepNode_var spRelation(ChildrenOf(spRoot)[1]);
    EXPECT_THAT(m_spCont->DeExpand(&spRelation), Succeeds());
    EXPECT_LT(CountAll(), 1001);
    EXPECT_THAT(m_spCont->Cleanup(), Succeeds());
    EXPECT_EQ(CountAll(), 0);
}

TEST_F(RepTreeLimits, ATreeOfJustTheLimitIsShownAndOneOfMoreIsNot)
{
    UpdateLadder(5, 1);
    {
        const QTBTestEnvironment limit(LIMIT, "10");
        EXPECT_THAT(ShowTrees("P0", Relations({PARTS})), Succeeds());
        EXPECT_EQ(CountAll(), 11);
    }
    unsigned char bInformUser = FALSE;
    EXPECT_THAT(m_spCont->RecursiveRemoveRepTree(Find("P0"), &bInformUser), Succeeds());
    const QTBTestEnvironment limit(LIMIT, "9");
    EXPECT_THAT(ShowTrees("P0", Relations({PARTS})), FailsWith(REACHED, "9"));
    EXPECT_EQ(CountAll(), 9);
}

TEST_F(RepTreeLimits, EachUpdateCountsAnew)
{
    UpdateLadder(4, 1);
    const QTBTestEnvironment limit(LIMIT, "8");
    EXPECT_THAT(ShowTrees("P0", Relations({PARTS})), Succeeds());
    EXPECT_THAT(ShowTrees("P1", Relations({PARTS})), Succeeds());
    EXPECT_THAT(ShowTrees("P0", Relations({PARTS})), Succeeds());
}

TEST_F(RepTreeLimits, TheUpdateOfAllTreesReportsTheLimitAndTheActionGoesOn)
{
    UpdateLadder(40, 2);
    const QTBTestEnvironment limit(LIMIT, "100");
    EXPECT_THAT(ShowTrees("P0", Relations({PARTS})), FailsWithMessage(REACHED));
    UpdateLadder(40, 2);
    unsigned char bAddNewNodes = TRUE;
    auto mode = ALL_RELATIONS_STORED_IN_REP_NODE;
    EXPECT_THAT(m_spCont->SetRepChildRelationsToUpdate(&mode), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->UpdateAllRepNodeContainers(&bAddNewNodes), FailsWith(REACHED, "100"));
    EXPECT_EQ(CountAll(), 101);
}

TEST_F(RepTreeLimits, ALimitThatIsNoNumberIsNotHeeded)
{
    UpdateLadder(3, 1);
    for (const char* value : {"", "0", "-1", "x", "2x", "99999999999999999999"}) {
        const QTBTestEnvironment limit(LIMIT, value);
        EXPECT_THAT(ShowTrees("P0", Relations({PARTS})), Succeeds()) << value;
    }
    EXPECT_EQ(CountAll(), 7);
}

TEST_F(RepTreeLimits, APartBelowItselfIsShownOnceBelowTheStart)
{
    UpdateCircle(1);
    EXPECT_THAT(ShowTrees("C0", Relations({PARTS})), Succeeds());
    EXPECT_EQ(TreeOf(Find("C0")), "C0(R0(C0))") << "below the start node circles are not looked for";
}

TEST_F(RepTreeLimits, TwoPartsBelowEachOtherAreShownUntilTheCircleCloses)
{
    UpdateCircle(2);
    EXPECT_THAT(ShowTrees("C0", Relations({PARTS})), Succeeds());
    EXPECT_EQ(TreeOf(Find("C0")), "C0(R0(C1))");
    EXPECT_EQ(CountMessages("used below itself"), 1);
}

TEST_F(RepTreeLimits, ACircleOfTenThousandPartsEndsWithOneMessage)
{
    constexpr int LENGTH = 10000;
    UpdateCircle(LENGTH);
    EXPECT_THAT(ShowTrees("C0", Relations({PARTS})), Succeeds());
    EXPECT_EQ(CountAll(), 2 * LENGTH - 1);
    EXPECT_EQ(CountMessages("used below itself"), 1);
    EXPECT_EQ(Cont()->GetExpansionPathLength(), 0);
    EXPECT_THAT(m_spCont->Cleanup(), Succeeds());
}

TEST_F(RepTreeLimits, AFilteredStructureMayBeAsDeepAsTheSchemaSays)
{
    constexpr int LEVELS = 20000;
    LoadEditedSchema({{"<partToFile>", "<partToFile>" + NestedRelations(LEVELS)}});
    UpdateLadder(LEVELS, 1);
    QTBIRepNode_var spRoot = CreateRoot("P0");
    EXPECT_THAT(m_spCont->UpdateRepTreeAfterGetFilteredModels(&spRoot, nullptr, nullptr), Succeeds());
    EXPECT_EQ(CountAll(), 2 * LEVELS + 1);
}

TEST_F(RepTreeLimits, TheManySmallUpdatesOfAFilteredStructureCountAsOne)
{
    LoadEditedSchema({{"<partToFile>", "<partToFile>" + NestedRelations(40)}});
    UpdateLadder(40, 2);
    const QTBTestEnvironment limit(LIMIT, "1000");
    QTBIRepNode_var spRoot = CreateRoot("P0");
    const HRESULT hr = m_spCont->UpdateRepTreeAfterGetFilteredModels(&spRoot, nullptr, nullptr);
    EXPECT_THAT(hr, FailsWith(REACHED, "1000"));
    EXPECT_EQ(CountAll(), 1001);
    EXPECT_THAT(ShowTrees("P39", Relations({PARTS})), Succeeds()) << "later updates count for themselves";
}

TEST_F(RepTreeLimits, ThoseOfATreeOfTheSchemaCountAsOneToo)
{
    const std::string whereUsed = R"(<rel name="PartPart" direction="RightToLeft"/>)";
    LoadEditedSchema({{whereUsed, NestedRelations(40)}});
    UpdateLadder(40, 2);
    const QTBTestEnvironment limit(LIMIT, "1000");
    EXPECT_THAT(QTBExpandCommands::ExpandPdmTree(CreateRoot("P0"), "WhereUsed"), FailsWith(REACHED, "1000"));
    EXPECT_EQ(CountAll(), 1005) << "the update that reached it ended";
}

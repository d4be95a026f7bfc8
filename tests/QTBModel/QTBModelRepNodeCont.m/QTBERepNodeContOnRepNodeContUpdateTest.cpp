#include <cstring>

#include <gmock/gmock.h>

#include "CATError.h"
#include "CATFrmWindow.h"
#include "CATNavigBox.h"
#include "QTBERepNodeContOnRepNodeCont.h"
#include "QTBPdmTree.h"
#include "QTBRepTreeSession.h"
#include "QTBTestWindow.h"
#include "QTBTraceUtil.h"

using QTBDiagnosis::Assertion;
using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosesIn;
using QTBDiagnosis::DiagnosisOf;
using QTBDiagnosis::Handle;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

using Nodes = CATListValCATBaseUnknown_var;

const QTBNodeRelationInfo UNKNOWN_DIRECTION("PartPart", "Sideways");

template <class Enumeration>
Enumeration ValueOf(int value)
{
    Enumeration result;
    static_assert(sizeof result == sizeof value);
    std::memcpy(&result, &value, sizeof result);
    return result;
}

// The graph: A with B and D, B with C, all of them parts; a file F of A. New children are put behind the others.
class RepTreeUpdate : public QTBFaultyRepTreeSession
{
protected:
    void SetUp() override
    {
        QTBFaultyRepTreeSession::SetUp();
        QTBGlobVarsUtil::SetAddNewNodeRelationsAt(QTB_PLACE_TO_ADD_END);
        Update(Graph());
    }

    void TearDown() override
    {
        EXPECT_EQ(Cont()->GetExpansionPathLength(), 0) << "the path is empty between updates";
        QTBFaultyRepTreeSession::TearDown();
    }

    // The graph links the relations of an answer from the last to the first, so A's are AB and AD.
    static std::string Graph()
    {
        return Part("A") + Part("B") + Part("C") + Part("D") + Object("CATPartFile", "F") +
               Relation("PartFile", "AF", "A", "F") + PartPart("AD", "A", "D") + PartPart("BC", "B", "C") +
               PartPart("AB", "A", "B");
    }

    void ShowAllRelations(int value) const
    {
        auto mode = ValueOf<RepChildRelationsToUpdate>(value);
        EXPECT_THAT(m_spCont->SetRepChildRelationsToUpdate(&mode), Succeeds());
    }
    HRESULT UpdateAll(const CATListValQTBNodeRelationInfo& relations, Nodes* pRels = nullptr, Nodes* pObjs = nullptr,
                      unsigned char bAdd = TRUE) const
    {
        unsigned char bFalse = FALSE;
        return m_spCont->UpdateAllRepTrees(&bFalse, &bFalse, relations, pRels, pObjs, &bAdd);
    }
    static CATListValQTBNodeRelationInfo Displayed(const QTBIRepNode_var& spIRepNode)
    {
        CATListValQTBNodeRelationInfo infos;
        EXPECT_THAT(spIRepNode->GetPdmRelationsToBeDisplayed(&infos), Succeeds());
        return infos;
    }
    std::vector<std::string> Diagnosis(const QTBIRepNode_var& spIRepNode,
                                       const CATListValQTBNodeRelationInfo& relations) const
    {
        return DiagnosisOf([&] { return Expand(spIRepNode, relations); });
    }
    // What an expansion of that tree reports when the given diagnosis ends it that many rep nodes below its start.
    static std::vector<std::string> InExpansion(std::vector<std::string> diagnosis, int depth)
    {
        diagnosis.insert(diagnosis.end(), static_cast<std::size_t>(depth + 1), Call("RecursiveUpdateRepTreeAdd"));
        diagnosis.push_back(Call("UpdateRepTreeIntern"));
        return diagnosis;
    }
};

TEST_F(RepTreeUpdate, TakesOnlyTheModesThereAre)
{
    for (const int value : {0, 1, 2}) {
        auto mode = ValueOf<NodesToRetrieve>(value);
        EXPECT_THAT(m_spCont->SetPdmNodesToConsider(&mode), Succeeds());
    }
    for (const int value : {-1, 3, 100}) {
        auto mode = ValueOf<NodesToRetrieve>(value);
        EXPECT_THAT(m_spCont->SetPdmNodesToConsider(&mode),
                    FailsAssertion("(PdmNodesToConsider == ALL_NODES) || (PdmNodesToConsider == "
                                   "MOST_RECENTLY_UPDATED_NODES) || (PdmNodesToConsider == ONLY_CURRENT_NODES)"));
    }
    for (const int value : {0, 1}) {
        auto mode = ValueOf<RepChildRelationsToUpdate>(value);
        EXPECT_THAT(m_spCont->SetRepChildRelationsToUpdate(&mode), Succeeds());
    }
    for (const int value : {-1, 2}) {
        auto mode = ValueOf<RepChildRelationsToUpdate>(value);
        EXPECT_THAT(m_spCont->SetRepChildRelationsToUpdate(&mode),
                    FailsAssertion("(RepChildRelationsToUpdate == ALL_RELATIONS_STORED_IN_REP_NODE) || "
                                   "(RepChildRelationsToUpdate == ONLY_NEW_RELATIONS)"));
    }
}

TEST_F(RepTreeUpdate, ExpandsTheWholeStructure)
{
    EXPECT_THAT(ShowTrees("A", Relations({PARTS})), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A(AB(B(BC(C))) AD(D))"));
    EXPECT_TRUE(Displayed(Find("A")) == Relations({PARTS}));
    EXPECT_TRUE(Displayed(Find("B")) == Relations({PARTS}));
    EXPECT_TRUE(Displayed(Find("C")) == Relations({})) << "what the part does not have is not displayed";
}

TEST_F(RepTreeUpdate, ExpandsAgainstTheDirectionToo)
{
    EXPECT_THAT(ShowTrees("C", Relations({USED_IN})), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("C(BC(B(AB(A))))"));
}

TEST_F(RepTreeUpdate, OfOneLevelReachesTheNextObjects)
{
    EXPECT_THAT(ShowTrees("A", Relations({PARTS}), TRUE), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A(AB(B) AD(D))"));
}

TEST_F(RepTreeUpdate, FollowsTheRelationsInTheirOrder)
{
    EXPECT_THAT(ShowTrees("A", Relations({FILES, PARTS})), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A(AF(F) AB(B(BC(C))) AD(D))"));
    EXPECT_TRUE(Displayed(Find("A")) == Relations({FILES, PARTS}));
}

TEST_F(RepTreeUpdate, PutsNewChildrenWhereTheSessionSaysAndLeavesTheOthers)
{
    EXPECT_THAT(ShowTrees("A", Relations({PARTS}), TRUE), Succeeds());
    QTBGlobVarsUtil::SetAddNewNodeRelationsAt(QTB_PLACE_TO_ADD_FRONT);
    Update(Part("E") + PartPart("AE", "A", "E") + PartPart("AB", "A", "B") + Relation("PartFile", "AF", "A", "F"));
    EXPECT_THAT(ShowTrees("A", Relations({PARTS, FILES}), TRUE), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A(AF(F) AE(E) AB(B) AD(D))"));
}

TEST_F(RepTreeUpdate, ShowsSubclassesOfARelation)
{
    Update(Object("StandardPart", "S") +
           Relation("StandardPartUsage", "AS", "A", "S", "<parentClasses><class>PartPart</class></parentClasses>"));
    Consider(ALL_NODES);
    EXPECT_THAT(ShowTrees("A", Relations({PARTS}), TRUE), Succeeds());
    EXPECT_EQ(TreesOf(m_spCont).at(0).find("A("), 0U);
    EXPECT_NE(TreesOf(m_spCont).at(0).find("AS(S)"), std::string::npos);
    EXPECT_NE(TreesOf(m_spCont).at(0).find("AB(B)"), std::string::npos);
}

TEST_F(RepTreeUpdate, FillsTheListsWithWhatItCreates)
{
    Nodes relations;
    Nodes objects;
    EXPECT_THAT(ShowTrees("A", Relations({PARTS}), TRUE, &relations, &objects), Succeeds());
    EXPECT_THAT(PdmKeysOf(relations), ElementsAre("AB", "AD"));
    EXPECT_THAT(PdmKeysOf(objects), ElementsAre("A", "B", "D"));
    Update(Graph());
    EXPECT_THAT(ShowTrees("A", Relations({PARTS}), FALSE, &relations, &objects), Succeeds());
    EXPECT_THAT(PdmKeysOf(relations), ElementsAre("AB", "AD", "BC"));
    EXPECT_THAT(PdmKeysOf(objects), ElementsAre("A", "B", "D", "C"));
}

TEST_F(RepTreeUpdate, CollectsExistingChildrenOnRequest)
{
    const QTBIRepNode_var a = CreateRoot("A");
    EXPECT_THAT(Expand(a, Relations({PARTS}), TRUE), Succeeds());
    Consider(ALL_NODES);
    Nodes relations;
    Nodes objects;
    EXPECT_THAT(Expand(a, Relations({PARTS}), FALSE, &relations, &objects, TRUE), Succeeds());
    EXPECT_THAT(PdmKeysOf(relations), ElementsAre("AB", "BC", "AD"));
    EXPECT_THAT(PdmKeysOf(objects), ElementsAre("B", "C", "D"));
    EXPECT_THAT(Expand(a, Relations({PARTS}), FALSE, nullptr, nullptr, TRUE), Succeeds()) << "also without lists";
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A(AB(B(BC(C))) AD(D))"));
}

TEST_F(RepTreeUpdate, WithoutAddingCreatesNothingBelow)
{
    EXPECT_THAT(ShowTrees("A", Relations({PARTS}), FALSE, nullptr, nullptr, FALSE), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A"));
}

TEST_F(RepTreeUpdate, MakesARootOnlyForWhatIsCurrentOrTheDefaultRoot)
{
    Update(Part("E"));
    EXPECT_THAT(ShowTrees("A", Relations({PARTS})), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), IsEmpty());
    Update(Part("E"));
    EXPECT_THAT(ShowTrees("E", Relations({PARTS})), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("E"));
    EXPECT_THAT(GetPdmNodeCont()->CreateDefaultRootNode(), Succeeds());
    EXPECT_THAT(ShowTrees("DEFAULT_ROOT_NODE", Relations({PARTS})), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("DEFAULT_ROOT_NODE", "E"));
}

TEST_F(RepTreeUpdate, MakesARootForAnythingInTheOtherModes)
{
    for (const NodesToRetrieve mode : {ALL_NODES, MOST_RECENTLY_UPDATED_NODES}) {
        Update(Part("E"));
        Consider(mode);
        EXPECT_THAT(ShowTrees(mode == ALL_NODES ? "B" : "D", Relations({})), Succeeds());
    }
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("B", "D"));
}

TEST_F(RepTreeUpdate, MakesNoSecondRoot)
{
    EXPECT_THAT(ShowTrees("A", Relations({})), Succeeds());
    Update(Graph());
    EXPECT_THAT(ShowTrees("A", Relations({})), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A"));
    CreateRoot("A");
    Consider(ALL_NODES);
    EXPECT_THAT(ShowTrees("A", Relations({FILES}), TRUE), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A(AF(F))", "A(AF(F))")) << "every tree of the node";
}

TEST_F(RepTreeUpdate, NeverExpandsTheDefaultRoot)
{
    EXPECT_THAT(GetPdmNodeCont()->CreateDefaultRootNode(), Succeeds());
    EXPECT_THAT(m_spCont->CreateDefaultRootNode(), Succeeds());
    const QTBFault fault("Redraw");
    EXPECT_THAT(ShowTrees("DEFAULT_ROOT_NODE", Relations({PARTS})), Succeeds()) << "nor redraws it";
}

TEST_F(RepTreeUpdate, ShowsOnlyWhatTheCurrentActionReadAtFirst)
{
    const QTBIRepNode_var a = CreateRoot("A");
    Update(PartPart("AD", "A", "D"));
    EXPECT_THAT(Expand(a, Relations({PARTS, FILES})), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AD(D))") << "the object of a relation that is shown may be older";
}

TEST_F(RepTreeUpdate, ShowsAllNodesOnRequest)
{
    const QTBIRepNode_var a = CreateRoot("A");
    Update(PartPart("AD", "A", "D"));
    Consider(ALL_NODES);
    EXPECT_THAT(Expand(a, Relations({PARTS}), TRUE), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B) AD(D))");
}

TEST_F(RepTreeUpdate, ShowsTheNewestRelationsThatAreNotOlderThanTheNodeOnRequest)
{
    const QTBIRepNode_var a = CreateRoot("A");
    Consider(MOST_RECENTLY_UPDATED_NODES);
    SetActionIndex("A", 3);
    SetActionIndex("AB", 4);
    SetActionIndex("AD", 5);
    EXPECT_THAT(Expand(a, Relations({PARTS}), TRUE), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AD(D))");
    SetActionIndex("A", 5);
    SetActionIndex("AB", 5);
    EXPECT_THAT(Expand(a, Relations({PARTS}), TRUE), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AD(D) AB(B))");
    SetActionIndex("A", 6);
    SetActionIndex("AF", 5);
    EXPECT_THAT(Expand(a, Relations({FILES}), TRUE), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AD(D) AB(B))") << "older than the node";
}

TEST_F(RepTreeUpdate, LooksAtTheGivenRelationsOnlyAtFirst)
{
    const QTBIRepNode_var a = CreateRoot("A");
    EXPECT_THAT(Expand(a, Relations({PARTS}), TRUE), Succeeds());
    Update(Part("E") + PartPart("AE", "A", "E") + Relation("PartFile", "AF", "A", "F"));
    EXPECT_THAT(Expand(a, Relations({FILES}), TRUE), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B) AD(D) AF(F))");
    EXPECT_TRUE(Displayed(a) == Relations({PARTS, FILES}));
}

TEST_F(RepTreeUpdate, LooksAtAllRelationsThatTheNodeDisplaysOnRequest)
{
    const QTBIRepNode_var a = CreateRoot("A");
    EXPECT_THAT(Expand(a, Relations({PARTS}), TRUE), Succeeds());
    Update(Part("E") + PartPart("AE", "A", "E") + Relation("PartFile", "AF", "A", "F"));
    ShowAllRelations(ALL_RELATIONS_STORED_IN_REP_NODE);
    EXPECT_THAT(Expand(a, Relations({FILES}), TRUE), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B) AD(D) AE(E) AF(F))");
}

TEST_F(RepTreeUpdate, EndsTheActionOnce)
{
    const int index = CurrentActionIndex();
    EXPECT_THAT(ShowTrees("A", Relations({PARTS})), Succeeds());
    EXPECT_EQ(CurrentActionIndex(), index + 1);
    EXPECT_THAT(Expand(Find("A"), Relations({PARTS})), Succeeds());
    EXPECT_EQ(CurrentActionIndex(), index + 2);
    EXPECT_THAT(UpdateAll(Relations({PARTS})), Succeeds());
    EXPECT_EQ(CurrentActionIndex(), index + 3) << "a bulk update once";
    QTBIRepNode_var a = Find("A");
    EXPECT_THAT(m_spCont->UpdateRepTreeAfterGetFilteredModels(&a, nullptr, nullptr), Succeeds());
    EXPECT_EQ(CurrentActionIndex(), index + 4);
    EXPECT_THAT(Expand(a, Relations({PARTS})), Succeeds());
    EXPECT_EQ(CurrentActionIndex(), index + 5);
}

TEST_F(RepTreeUpdate, ThatFailsInBulkLetsLaterOnesEndTheirAction)
{
    {
        const QTBFault fault("GetPdmRootNodes");
        EXPECT_THAT(UpdateAll(Relations({})), FailsCall("m_spIPdmNodeCont->GetPdmRootNodes"));
    }
    QTBIRepNode_var spEmpty;
    EXPECT_TRUE(FAILED(m_spCont->UpdateRepTreeAfterGetFilteredModels(&spEmpty, nullptr, nullptr)));
    const int index = CurrentActionIndex();
    EXPECT_THAT(ShowTrees("A", Relations({})), Succeeds());
    EXPECT_EQ(CurrentActionIndex(), index + 1);
}

// Circles.

TEST_F(RepTreeUpdate, StopsWhereANodeIsUsedBelowItself)
{
    Update(Part("P") + Part("Q") + PartPart("PQ", "P", "Q") + PartPart("QP", "Q", "P"));
    const std::string nodeOfP = TextOf(QTBTraceUtil::GetNodeString(FindNode("P"), FALSE));
    const DebugCapture capture;
    EXPECT_THAT(ShowTrees("P", Relations({PARTS})), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("P(PQ(Q))"));
    EXPECT_THAT(InfoList(), ElementsAre(nodeOfP + " is used below itself. The expansion stops there."));
    EXPECT_THAT(capture.Lines(),
                Contains("QTBERepNodeContOnRepNodeCont::RecursiveUpdateRepTreeAdd -> The node '" + nodeOfP +
                         "' is used recursively below itself. Expand is stopped at this node !")
                    .Times(1));
}

TEST_F(RepTreeUpdate, StopsAtCirclesAgainstTheDirectionToo)
{
    Update(Part("P") + Part("Q") + PartPart("PQ", "P", "Q") + PartPart("QP", "Q", "P"));
    EXPECT_THAT(ShowTrees("P", Relations({USED_IN})), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("P(QP(Q))"));
    EXPECT_EQ(InfoList().size(), 1U);
}

TEST_F(RepTreeUpdate, DoesNotLookForCirclesBelowTheStartItself)
{
    Update(Part("P") + PartPart("PP", "P", "P"));
    EXPECT_THAT(ShowTrees("P", Relations({PARTS}), TRUE), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("P(PP(P))"));
    EXPECT_THAT(InfoList(), IsEmpty());
}

TEST_F(RepTreeUpdate, ReportsNoCircleThatClosesDirectlyBelowTheStart)
{
    Update(Part("P") + Part("Q") + PartPart("PQ", "P", "Q") + PartPart("QP", "Q", "P"));
    const QTBIRepNode_var spP = CreateRoot("P");
    EXPECT_THAT(Expand(spP, Relations({PARTS}), TRUE), Succeeds());
    EXPECT_EQ(TreeOf(spP), "P(PQ(Q))");
    // P stands above Q, but the update begins at Q.
    Update(PartPart("QP", "Q", "P"));
    EXPECT_THAT(Expand(Find("Q"), Relations({PARTS}), TRUE), Succeeds());
    EXPECT_EQ(TreeOf(spP), "P(PQ(Q(QP(P))))");
    EXPECT_THAT(InfoList(), IsEmpty());
}

TEST_F(RepTreeUpdate, NamesTheRelationWhenThatIsOnThePathAlready)
{
    Update(Part("P") + PartPart("PP", "P", "P", Attribute("InstanceName", "P.1")));
    const std::string relation = TextOf(QTBTraceUtil::GetNodeString(FindNode("PP"), FALSE));
    EXPECT_THAT(ShowTrees("P", Relations({PARTS})), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("P(PP(P))"));
    EXPECT_THAT(InfoList(), ElementsAre(relation + " is used below itself. The expansion stops there."));
}

TEST_F(RepTreeUpdate, TakesAPartInTwoBranchesForNoCircle)
{
    Update(Part("P") + Part("Q") + Part("R") + Part("S") + PartPart("PR", "P", "R") + PartPart("PQ", "P", "Q") +
           PartPart("QS", "Q", "S") + PartPart("RS", "R", "S"));
    EXPECT_THAT(ShowTrees("P", Relations({PARTS})), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("P(PQ(Q(QS(S))) PR(R(RS(S))))"));
    EXPECT_THAT(InfoList(), IsEmpty());
}

TEST_F(RepTreeUpdate, FindsTheChildrenOfALargeAssemblyAgain)
{
    constexpr int COUNT = 100;
    const auto usage = [](int i, const std::string& further = "") {
        return PartPart("R" + std::to_string(i), "P", "Q", further);
    };
    std::string items = Part("P") + Part("Q");
    for (int i = 1; i <= COUNT; ++i) {
        items += usage(i);
    }
    Update(items);
    Consider(ALL_NODES);
    EXPECT_THAT(ShowTrees("P", Relations({PARTS})), Succeeds());
    const QTBIRepNode_var spRoot = Find("P");
    const auto children = ChildrenOf(spRoot);
    EXPECT_EQ(children.Size(), COUNT);
    // One more, one that stands in two places from now on, and all others again.
    Update(usage(COUNT + 1) + usage(2, Info({{"QtbKey", "R2"}, {"QtbSupersedes", "R1"}})));
    CATListValCATBaseUnknown_var rels;
    CATListValCATBaseUnknown_var objs;
    EXPECT_THAT(Expand(spRoot, Relations({PARTS}), FALSE, &rels, &objs, TRUE), Succeeds());
    EXPECT_EQ(ChildrenOf(spRoot).Size(), COUNT + 1);
    EXPECT_EQ(rels.Size(), COUNT) << "each relation once, whatever its places";
    EXPECT_EQ(objs.Size(), COUNT);
    for (const CATBaseUnknown_var& spChild : children) {
        EXPECT_GT(ChildrenOf(spRoot).Locate(spChild), 0);
    }
}

// The schema's maximum expansion level.
class LimitedRepTreeUpdate : public RepTreeUpdate
{
protected:
    static void Limit(const char* level)
    {
        LoadEditedSchema({{R"(maxExpansionLevel="-1")", std::string("maxExpansionLevel=\"") + level + "\""}});
        Update(Graph());
    }
    // The level that the failure tells the user; the failure is no error to be diagnosed.
    static std::string LevelOf(HRESULT hr)
    {
        EXPECT_THAT(hr, FailsWithMessage("MaxExpansionLevelReachedWRN_2103"));
        return SUCCEEDED(hr) ? "" : TextOf(CATError::CATGetLastError(hr, nullptr)->GetNLSParameters().at(0));
    }
};

TEST_F(LimitedRepTreeUpdate, IsNotToldByTheUpdateAfterTheOneThatReachedIt)
{
    Limit("1");
    Update(Part("P") + Part("Q") + Part("R") + PartPart("PQ", "P", "Q") + PartPart("PR", "P", "R"));
    const QTBIRepNode_var spRoot = CreateRoot("P");
    {
        // Behind the first child, where the level is reached; the relation that was read last comes first.
        const QTBFault fault("GetRightObject", FindNode("PQ"), 0, QTBFault::LacksMemory);
        EXPECT_THROW(static_cast<void>(Expand(spRoot, Relations({PARTS}))), std::bad_alloc);
    }
    EXPECT_EQ(TreeOf(spRoot), "P(PR(R))");
    EXPECT_THAT(Expand(CreateRoot("C"), Relations({PARTS})), Succeeds());
}

TEST_F(LimitedRepTreeUpdate, CreatesTheObjectsOfTheLastLevelAndFailsThen)
{
    Limit("1");
    const int index = CurrentActionIndex();
    EXPECT_EQ(LevelOf(ShowTrees("A", Relations({PARTS}))), "1");
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A(AB(B) AD(D))"));
    EXPECT_EQ(CurrentActionIndex(), index + 1) << "the work is done all the same";
}

TEST_F(LimitedRepTreeUpdate, ReachesTheLimitAtALeafToo)
{
    Limit("2");
    EXPECT_EQ(LevelOf(Expand(CreateRoot("A"), Relations({PARTS}))), "2");
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A(AB(B(BC(C))) AD(D))"));
}

TEST_F(LimitedRepTreeUpdate, OfAStructureThatEndsAboveTheLimitSucceeds)
{
    Limit("3");
    EXPECT_THAT(ShowTrees("A", Relations({PARTS})), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A(AB(B(BC(C))) AD(D))"));
}

TEST_F(LimitedRepTreeUpdate, OfOneLevelReachesALimitOfOneAllTheSame)
{
    Limit("1");
    EXPECT_EQ(LevelOf(ShowTrees("A", Relations({PARTS}), TRUE)), "1");
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A(AB(B) AD(D))"));
}

TEST_F(LimitedRepTreeUpdate, ToZeroLevelsDoesNotExpandTheStart)
{
    Limit("0");
    EXPECT_EQ(LevelOf(ShowTrees("A", Relations({PARTS}))), "0");
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A"));
    EXPECT_TRUE(Displayed(Find("A")) == Relations({}));
}

TEST_F(LimitedRepTreeUpdate, ReportsTheLimitOnce)
{
    Limit("1");
    const QTBIRepNode_var a = CreateRoot("A");
    EXPECT_EQ(LevelOf(Expand(a, Relations({PARTS}))), "1");
    Update(Graph());
    EXPECT_THAT(Expand(CreateRoot("C"), Relations({PARTS})), Succeeds());
}

TEST_F(LimitedRepTreeUpdate, IsNoDiagnosisAndEndsABulkUpdate)
{
    Limit("1");
    const int index = CurrentActionIndex();
    const DebugCapture capture;
    EXPECT_EQ(LevelOf(UpdateAll(Relations({PARTS}))), "1");
    EXPECT_THAT(DiagnosesIn(capture), IsEmpty());
    EXPECT_EQ(CurrentActionIndex(), index);
}

TEST_F(LimitedRepTreeUpdate, WithoutLimitNeverStops)
{
    std::string items = Part("P0");
    for (int i = 1; i <= 300; ++i) {
        const std::string number = std::to_string(i);
        items += Part("P" + number) + PartPart("R" + number, "P" + std::to_string(i - 1), "P" + number);
    }
    Update(items);
    EXPECT_THAT(ShowTrees("P0", Relations({PARTS})), Succeeds());
    EXPECT_EQ(AllRepNodesOf(m_spCont).Size(), 601);
}

// Bulk updates.

TEST_F(RepTreeUpdate, OfAllTreesMakesTreesForTheRootsOfTheGraph)
{
    Update(Graph() + Part("E"));
    Nodes relations;
    Nodes objects;
    EXPECT_THAT(UpdateAll(Relations({PARTS}), &relations, &objects), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A(AB(B(BC(C))) AD(D))", "E"));
    EXPECT_EQ(relations.Size(), 3);
    EXPECT_EQ(objects.Size(), 5);
}

TEST_F(RepTreeUpdate, OfAllTreesUpdatesTreesThatStartBelowTheRootsOfTheGraph)
{
    const QTBIRepNode_var b = CreateRoot("B");
    EXPECT_THAT(Expand(b, Relations({PARTS})), Succeeds());
    Update(Graph() + Part("E") + PartPart("BE", "B", "E"));
    ShowAllRelations(ALL_RELATIONS_STORED_IN_REP_NODE);
    EXPECT_THAT(UpdateAll(Relations({})), Succeeds());
    EXPECT_EQ(TreeOf(b), "B(BC(C) BE(E))");
    EXPECT_THAT(TreesOf(m_spCont), Contains("A")) << "a root without displayed relations";
}

TEST_F(RepTreeUpdate, OfAllTreesChecksItsSteps)
{
    const auto diagnosis = [&] { return DiagnosisOf([&] { return UpdateAll(Relations({PARTS})); }); };
    {
        const QTBFault fault("IsAffectedByCurrentAction", FindNode("A"));
        EXPECT_THAT(diagnosis(),
                    ElementsAre(Call("spIPdmNodeOnStartNode->IsAffectedByCurrentAction"), Call("UpdateRepTrees")));
    }
    const QTBIRepNode_var a = CreateRoot("A");
    {
        const QTBFault fault("IsRepRootNode", a);
        EXPECT_THAT(diagnosis(), ElementsAre(Call("spIRepNodeOnNode->IsRepRootNode"), Call("GetRepRootNodes")));
    }
    {
        const QTBFault fault("Redraw", a);
        EXPECT_THAT(diagnosis(),
                    ElementsAre(Call("spIRepNode->Redraw"), Call("UpdateRepTreeIntern"), Call("UpdateRepTree")));
    }
    const QTBFault fault("GetPdmRootNodes");
    EXPECT_THAT(diagnosis(), ElementsAre(Call("m_spIPdmNodeCont->GetPdmRootNodes")));
}

// The window.
class RepTreeUpdateInWindow : public RepTreeUpdate
{
protected:
    void SetUp() override
    {
        RepTreeUpdate::SetUp();
        m_pWindow = std::make_unique<QTBTestWindow>();
        m_spCont = m_pWindow->GetCont();
        Update(Graph());
        Consider(ALL_NODES);
    }
    void TearDown() override
    {
        EXPECT_EQ(Cont()->GetExpansionPathLength(), 0);
        m_spCont = CreateCont();
        m_pWindow.reset();
        RepTreeUpdate::TearDown();
    }

    // Whether the operation refreshes the window. A window that shows nothing takes the roots of the store then.
    template <class Operation>
    bool RefreshesWindow(Operation operation) const
    {
        CATNavigBox* pBox = m_pWindow->GetFrmWindow()->GetNavigBox();
        pBox->SetRoots(Nodes());
        EXPECT_THAT(operation(), Succeeds());
        return std::unique_ptr<Nodes>(pBox->GetAllRoots())->Size() > 0;
    }

    std::unique_ptr<QTBTestWindow> m_pWindow;
};

TEST_F(RepTreeUpdateInWindow, RefreshesItWhenTheStructureOfANodeContinues)
{
    const QTBIRepNode_var a = CreateRoot("A");
    EXPECT_FALSE(RefreshesWindow([&] {
        return Expand(a, Relations({PARTS}), TRUE, nullptr, nullptr, FALSE, TRUE, TRUE);
    })) << "a root hangs below nothing";
    const QTBIRepNode_var b = Find("B");
    EXPECT_TRUE(RefreshesWindow([&] {
        return Expand(b, Relations({PARTS}), TRUE, nullptr, nullptr, FALSE, TRUE, TRUE);
    })) << "B hangs below A by the same relation";
    EXPECT_FALSE(RefreshesWindow([&] {
        return Expand(b, Relations({PARTS}), TRUE, nullptr, nullptr, FALSE, TRUE, TRUE);
    })) << "nothing new";
}

TEST_F(RepTreeUpdateInWindow, RefreshesItOnlyOnRequestBelowOneNode)
{
    const QTBIRepNode_var a = CreateRoot("A");
    EXPECT_FALSE(RefreshesWindow([&] { return Expand(a, Relations({PARTS})); }));
    EXPECT_EQ(TreeOf(a), "A(AB(B(BC(C))) AD(D))");
}

TEST_F(RepTreeUpdateInWindow, RefreshesItForTheTreesOfAPdmNode)
{
    EXPECT_TRUE(RefreshesWindow([&] { return ShowTrees("A", Relations({PARTS})); }));
    EXPECT_FALSE(RefreshesWindow([&] { return ShowTrees("A", Relations({PARTS})); }));
}

TEST_F(RepTreeUpdateInWindow, RefreshesItAfterABulkUpdateInAnyCase)
{
    EXPECT_TRUE(RefreshesWindow([&] { return UpdateAll(Relations({})); }));
    const QTBFault fault("GetRepRootNodes", m_spCont);
    m_pWindow->GetFrmWindow()->GetNavigBox()->SetRoots(Nodes());
    EXPECT_THAT(DiagnosisOf([&] { return UpdateAll(Relations({})); }),
                ElementsAre(Call("QTBRepTreeUtil::UpdateQtbWindow"), Call("UpdateQtbWindow")));
}

TEST_F(RepTreeUpdateInWindow, HandsTheFlagsOfABulkUpdateOn)
{
    CATNavigBox* pBox = m_pWindow->GetFrmWindow()->GetNavigBox();
    Nodes shown;
    shown.Append(CATBaseUnknown_var(CreateRoot("D")));
    const CATBaseUnknown_var spNotShown(CreateRoot("A"));
    const auto showsA = [&](unsigned char bTakeRootsAnew) {
        pBox->SetRoots(shown);
        unsigned char bFalse = FALSE;
        EXPECT_THAT(m_spCont->UpdateAllRepTrees(&bTakeRootsAnew, &bFalse, Relations({}), nullptr, nullptr, &bFalse),
                    Succeeds());
        return std::unique_ptr<Nodes>(pBox->GetAllRoots())->Locate(spNotShown) > 0;
    };
    EXPECT_FALSE(showsA(FALSE));
    EXPECT_TRUE(showsA(TRUE));
}

TEST_F(RepTreeUpdateInWindow, ReportsThatItCannotBeRefreshed)
{
    const QTBFault fault("GetRepRootNodes", m_spCont);
    EXPECT_THAT(DiagnosisOf([&] { return ShowTrees("A", Relations({PARTS})); }),
                ElementsAre(Call("QTBRepTreeUtil::UpdateQtbWindow")));
}

TEST_F(RepTreeUpdate, RedrawsTheNodeWhenTheWindowNeedsNoRefresh)
{
    const QTBIRepNode_var a = CreateRoot("A");
    const std::vector<std::string> diagnosisOfRedraw{Call("spIRepNode->Redraw"), Call("UpdateRepTreeIntern")};
    const QTBFault fault("Redraw", a);
    EXPECT_EQ(DiagnosisOf([&] { return Expand(a, Relations({PARTS}), TRUE); }), diagnosisOfRedraw);
    EXPECT_EQ(DiagnosisOf([&] { return Expand(a, Relations({}), FALSE, nullptr, nullptr, FALSE, FALSE); }),
              diagnosisOfRedraw)
        << "also without adding";
    Update(Graph());
    EXPECT_THAT(Expand(a, Relations({PARTS})), Succeeds()) << "B's structure continues, so the window is refreshed";
}

TEST_F(RepTreeUpdate, RefreshesTheWindowForNewRelationsThatContinueTheStructure)
{
    const QTBIRepNode_var a = CreateRoot("A");
    const QTBIRepNode_var ab = Create(a, "AB", PARTS);
    const QTBIRepNode_var b = Create(ab, "B", PARTS);
    const QTBIRepNode_var bc = Create(b, "BC", PARTS);
    const auto needsUpdate = [](const QTBIRepNode_var& spLeft, const QTBIRepNode_var& spNew,
                                const QTBNodeRelationInfo& info, unsigned char bBefore) {
        unsigned char bNeedsUpdate = bBefore;
        EXPECT_THAT(QTBERepNodeContOnRepNodeCont::WindowNeedsToBeUpdated(spLeft, spNew, info, &bNeedsUpdate),
                    Succeeds());
        return bNeedsUpdate;
    };
    EXPECT_EQ(needsUpdate(b, bc, PARTS, FALSE), TRUE);
    EXPECT_EQ(needsUpdate(b, bc, USED_IN, FALSE), FALSE);
    EXPECT_EQ(needsUpdate(b, bc, FILES, FALSE), FALSE);
    EXPECT_EQ(needsUpdate(ab, b, PARTS, FALSE), FALSE) << "objects do not count";
    EXPECT_EQ(needsUpdate(ab, b, PARTS, TRUE), TRUE) << "never taken back";
    unsigned char bNeedsUpdate = FALSE;
    const auto diagnosis = [&] {
        return DiagnosisOf(
            [&] { return QTBERepNodeContOnRepNodeCont::WindowNeedsToBeUpdated(b, bc, PARTS, &bNeedsUpdate); });
    };
    {
        const QTBFault fault("GetPdmRelationToLeftNode", b);
        EXPECT_THAT(diagnosis(), ElementsAre(Call("spIRepNodeOnLeftRepNode->GetPdmRelationToLeftNode")));
    }
    const QTBFault fault("GetPdmNode", bc);
    EXPECT_THAT(diagnosis(), ElementsAre(Call("spIRepNodeOnNewRepNode->GetPdmNode")));
}

// What is to be shown below a node.
class ChildrenToBeShown : public RepTreeUpdate
{
protected:
    void SetUp() override
    {
        RepTreeUpdate::SetUp();
        a = CreateRoot("A");
        ab = Create(a, "AB");
    }
    void TearDown() override
    {
        a = ab = NULL_var;
        m_PdmNodes.RemoveAll();
        RepTreeUpdate::TearDown();
    }

    HRESULT Get(const QTBIRepNode_var& spIRepNode, const CATListValQTBNodeRelationInfo& relations)
    {
        return Cont()->GetPdmNodesToBeShownAsChildren(spIRepNode, relations, &m_PdmNodes, &m_Relations);
    }
    std::vector<std::string> DiagnosisOfGet(const QTBIRepNode_var& spIRepNode,
                                            const CATListValQTBNodeRelationInfo& relations)
    {
        return DiagnosisOf([&] { return Get(spIRepNode, relations); });
    }

    QTBIRepNode_var a, ab;
    Nodes m_PdmNodes;
    CATListValQTBNodeRelationInfo m_Relations;
};

TEST_F(ChildrenToBeShown, AreRelationsInParallelToWhatTheyAreShownFor)
{
    m_PdmNodes.Append(FindNode("C"));
    m_Relations.Append(USED_IN);
    EXPECT_THAT(Get(a, Relations({FILES, PARTS})), Succeeds());
    EXPECT_THAT(KeysOf(m_PdmNodes), ElementsAre("AF", "AB", "AD"));
    EXPECT_TRUE(m_Relations == Relations({FILES, PARTS, PARTS}));
    EXPECT_THAT(Get(a, Relations({})), Succeeds());
    EXPECT_EQ(m_PdmNodes.Size() + m_Relations.Size(), 0);
}

TEST_F(ChildrenToBeShown, BelowARelationAreItsObjectWhateverIsGiven)
{
    EXPECT_THAT(Get(ab, Relations({FILES})), Succeeds());
    EXPECT_THAT(KeysOf(m_PdmNodes), ElementsAre("B"));
    EXPECT_TRUE(m_Relations == Relations({PARTS}));
    EXPECT_THAT(Get(Create(CreateRoot("B"), "AB", USED_IN), Relations({})), Succeeds());
    EXPECT_THAT(KeysOf(m_PdmNodes), ElementsAre("A"));
    EXPECT_TRUE(m_Relations == Relations({USED_IN}));
}

TEST_F(ChildrenToBeShown, AreNoneWithoutPdmNode)
{
    const QTBFault fault("GetPdmNode", a, 0, QTBFault::DoesNothing);
    EXPECT_THAT(Get(a, Relations({PARTS})), Succeeds());
    EXPECT_EQ(m_PdmNodes.Size() + m_Relations.Size(), 0);
}

TEST_F(ChildrenToBeShown, AreToldLineByLine)
{
    const DebugCapture capture;
    EXPECT_THAT(Get(a, Relations({PARTS})), Succeeds());
    const auto text = [](const CATBaseUnknown_var& spNode) {
        return TextOf(QTBTraceUtil::GetNodeString(spNode, FALSE));
    };
    const std::string relation = [] {
        const DebugCapture ofRelation;
        QTBTraceUtil::PrintNodeRelationInfo(PARTS);
        return ofRelation.Lines().at(0);
    }();
    EXPECT_THAT(capture.Lines(),
                ElementsAre("QTBERepNodeContOnRepNodeCont::GetPdmNodesToBeShownAsChildren -> spIRepNode:" + text(a),
                            "\t1.: " + text(FindNode("AB")) + " - " + relation,
                            "\t2.: " + text(FindNode("AD")) + " - " + relation));
}

TEST_F(ChildrenToBeShown, OfAnUnknownDirectionAreMissedQuietly)
{
    EXPECT_THAT(Get(a, Relations({PARTS, UNKNOWN_DIRECTION, FILES})), FailsQuietly());
    EXPECT_TRUE(DiagnosisOfGet(a, Relations({PARTS, UNKNOWN_DIRECTION, FILES})).empty());
    EXPECT_EQ(Diagnosis(a, Relations({UNKNOWN_DIRECTION})), InExpansion({Call("GetPdmNodesToBeShownAsChildren")}, 0));
}

TEST_F(ChildrenToBeShown, CheckTheNode)
{
    EXPECT_THAT(Get(NULL_var, Relations({})), LacksInterface("spIRepNode"));
    EXPECT_THAT(Cont()->GetPdmNodesToBeShownAsChildren(a, Relations({}), &m_PdmNodes, nullptr),
                FailsAssertion("pPdmRelationsToBeShown"));
    EXPECT_THAT(Cont()->GetPdmNodesToBeShownAsChildren(a, Relations({}), nullptr, &m_Relations),
                FailsAssertion("pPdmNodesToBeShown"));
    {
        const QTBFault fault("RepresentsPdmRelNode", a);
        EXPECT_THAT(DiagnosisOfGet(a, Relations({})), ElementsAre(Call("spIRepNode->RepresentsPdmRelNode")));
    }
    {
        const QTBFault fault("GetPdmRelationsToBeDisplayed", ab);
        EXPECT_THAT(DiagnosisOfGet(ab, Relations({})), ElementsAre(Call("spIRepNode->GetPdmRelationsToBeDisplayed")));
    }
    {
        const QTBFault fault("GetPdmNode", a);
        EXPECT_THAT(DiagnosisOfGet(a, Relations({})), ElementsAre(Call("spIRepNode->GetPdmNode")));
    }
    EXPECT_THAT(ab->SetPdmRelationsToBeDisplayed(Relations({PARTS, FILES})), Succeeds());
    EXPECT_THAT(DiagnosisOfGet(ab, Relations({})), ElementsAre(Assertion("ListOfRelsToBeUpdated.Size() == 1")));
}

TEST_F(ChildrenToBeShown, CheckThePdmNode)
{
    {
        const QTBFault fault("GetRightNodes", FindNode("A"));
        EXPECT_THAT(DiagnosisOfGet(a, Relations({PARTS})), ElementsAre(Call("spIPdmObjNodeOnPdmNode->GetRightNodes")));
    }
    {
        const QTBFault fault("GetLeftNodes", FindNode("A"));
        EXPECT_THAT(DiagnosisOfGet(a, Relations({USED_IN})), ElementsAre(Call("spIPdmObjNodeOnPdmNode->GetLeftNodes")));
    }
    {
        const QTBFault fault("GetRightObject", FindNode("AB"));
        EXPECT_THAT(DiagnosisOfGet(ab, Relations({})), ElementsAre(Call("spIPdmRelNodeOnPdmNode->GetRightObject")));
    }
    {
        const QTBFault fault("GetLeftObject", FindNode("AB"));
        EXPECT_THAT(ab->SetSinglePdmRelationToBeDisplayed(USED_IN), Succeeds());
        EXPECT_THAT(DiagnosisOfGet(ab, Relations({})), ElementsAre(Call("spIPdmRelNodeOnPdmNode->GetLeftObject")));
    }
    const QTBIRepNode_var spOfNeither = CreateLooseRepNode();
    EXPECT_THAT(QTBINodeRelations_var(CreateLoose("QTBPdmNode"))->AddRightNode("PdmToRep", spOfNeither, 1, TRUE),
                Succeeds());
    EXPECT_THAT(DiagnosisOfGet(spOfNeither, Relations({PARTS})), ElementsAre(Handle("spIPdmRelNodeOnPdmNode")));
    const QTBBarePdmObjNodeType bareType;
    const QTBIRepNode_var spOfBare = CreateLooseRepNode();
    LinkToBarePdmNode(spOfBare, KeepLoose(bareType.Create()));
    EXPECT_THAT(DiagnosisOfGet(spOfBare, Relations({PARTS})), ElementsAre(Handle("spINodeRelationsOnPdmNode")));
    QTBINodeRelations_var(spOfBare)->RemoveAllRels(nullptr);
}

TEST_F(ChildrenToBeShown, CheckTheNeighbours)
{
    {
        // The first question is asked when the relations of the part are read.
        const QTBFault fault("IsAffectedByCurrentAction", FindNode("AF"), 1);
        EXPECT_THAT(DiagnosisOfGet(a, Relations({FILES})),
                    ElementsAre(Call("spIPdmNodeOnCurrentNode->IsAffectedByCurrentAction")));
    }
    Consider(MOST_RECENTLY_UPDATED_NODES);
    {
        const QTBFault fault("GetPdmNodeActionIndex", a);
        EXPECT_THAT(DiagnosisOfGet(a, Relations({FILES})), ElementsAre(Call("spIRepNode->GetPdmNodeActionIndex")));
    }
    const QTBFault fault("GetRightObject", FindNode("AB"), 0, QTBFault::DoesNothing);
    EXPECT_THAT(DiagnosisOfGet(ab, Relations({})), ElementsAre(Handle("spIPdmNodeOnCurrentNode")));
}

TEST_F(ChildrenToBeShown, AreDisplayedFromThenOnWhenThePdmNodeHasThem)
{
    const auto set = [](const CATListValQTBNodeRelationInfo& relations, const QTBIRepNode_var* pspIRepNode) {
        return QTBERepNodeContOnRepNodeCont::SetRelationsToDisplay(relations, pspIRepNode);
    };
    EXPECT_THAT(set(Relations({FILES, USED_IN, PARTS, FILES}), &a), Succeeds());
    EXPECT_TRUE(Displayed(a) == Relations({FILES, PARTS}));
    EXPECT_THAT(set(Relations({USED_IN}), &ab), Succeeds());
    EXPECT_TRUE(Displayed(ab) == Relations({PARTS})) << "a relation rep node keeps its own";
    const QTBIRepNode_var spEmpty;
    EXPECT_THAT(set(Relations({}), nullptr), FailsAssertion("pspIRepNode != NULL"));
    EXPECT_THAT(set(Relations({}), &spEmpty), LacksInterface("*pspIRepNode"));
    const QTBIRepNode_var b = CreateRoot("B");
    for (const char* operation :
         {"RepresentsPdmObjNode", "CheckPdmRelationToBeDisplayed", "AddPdmRelationToBeDisplayed"}) {
        const QTBFault fault(operation, b);
        EXPECT_THAT(DiagnosisOf([&] { return set(Relations({PARTS}), &b); }),
                    ElementsAre(Call(std::string("spIRepNode->") + operation)));
    }
}

// Failures inside an expansion.
class FailingExpansion : public RepTreeUpdate
{
protected:
    void SetUp() override
    {
        RepTreeUpdate::SetUp();
        a = CreateRoot("A");
    }
    void TearDown() override
    {
        a = NULL_var;
        RepTreeUpdate::TearDown();
    }

    QTBIRepNode_var a;
};

TEST_F(FailingExpansion, ChecksTheStart)
{
    EXPECT_EQ(Diagnosis(NULL_var, Relations({PARTS})),
              (std::vector<std::string>{Handle("*pspIRepNodeOnParent"), Call("RecursiveUpdateRepTreeAdd"),
                                        Call("UpdateRepTreeIntern")}));
    EXPECT_EQ(DiagnosisOf([&] { return Expand(NULL_var, Relations({}), FALSE, nullptr, nullptr, FALSE, FALSE); }),
              (std::vector<std::string>{Handle("spIRepNode"), Call("UpdateRepTreeIntern")}));
    {
        const QTBFault fault("GetPdmNodeKey", a);
        EXPECT_EQ(Diagnosis(a, Relations({PARTS})), InExpansion({Call("(*pspIRepNodeOnParent)->GetPdmNodeKey")}, 0));
    }
    const QTBFault fault("GetPdmNode", a);
    EXPECT_EQ(Diagnosis(a, Relations({PARTS})), InExpansion({Call("(*pspIRepNodeOnParent)->GetPdmNode")}, 0));
}

TEST_F(FailingExpansion, ChecksTheRelationsAndNodesToShow)
{
    {
        const QTBFault fault("CheckPdmRelationToBeDisplayed", a);
        EXPECT_EQ(Diagnosis(a, Relations({PARTS})),
                  InExpansion({Call("spIRepNode->CheckPdmRelationToBeDisplayed"), Call("SetRelationsToDisplay")}, 0));
    }
    const QTBFault fault("GetRightNodes", FindNode("B"));
    EXPECT_EQ(Diagnosis(a, Relations({PARTS})),
              InExpansion({Call("spIPdmObjNodeOnPdmNode->GetRightNodes"), Call("GetPdmNodesToBeShownAsChildren")}, 2));
    EXPECT_EQ(TreeOf(a), "A(AB(B))") << "what was created so far stays";
}

TEST_F(FailingExpansion, ChecksTheEndsOfRelations)
{
    {
        const QTBFault fault("GetRightObject", FindNode("AB"));
        EXPECT_EQ(Diagnosis(a, Relations({PARTS})), InExpansion({Call("spIPdmRelNodeOnChild->GetRightObject")}, 0));
    }
    {
        const QTBFault fault("GetLeftObject", FindNode("AB"));
        EXPECT_EQ(Diagnosis(CreateRoot("B"), Relations({USED_IN})),
                  InExpansion({Call("spIPdmRelNodeOnChild->GetLeftObject")}, 0));
    }
    const QTBFault fault("GetRightObject", FindNode("AB"), 0, QTBFault::DoesNothing);
    EXPECT_EQ(Diagnosis(a, Relations({PARTS})), InExpansion({Handle("spIPdmNodeOnChildObj")}, 0));
}

TEST_F(FailingExpansion, ChecksTheChildren)
{
    {
        const QTBFault fault("GetRepNodes", FindNode("B"));
        EXPECT_EQ(Diagnosis(a, Relations({PARTS})),
                  InExpansion({Call("spIPdmNodeOnChild->GetRepNodes"), Call("FindCorrespondingRepNode")}, 1));
    }
    {
        const QTBFault fault("SetRepNodeContainer");
        EXPECT_EQ(Diagnosis(a, Relations({PARTS})), InExpansion({Call("spIRepNodeOnNode->SetRepNodeContainer"),
                                                                 Call("CreateRepNodeBase"), Call("CreateRepNode")},
                                                                1));
    }
    {
        const QTBIRepNode_var spSecond = CreateRoot("A");
        const QTBFault fault("GetPdmRelationToLeftNode", spSecond);
        EXPECT_EQ(Diagnosis(spSecond, Relations({PARTS})),
                  InExpansion(
                      {Call("spIRepNodeOnLeftRepNode->GetPdmRelationToLeftNode"), Call("WindowNeedsToBeUpdated")}, 0));
    }
    const QTBFault fault("RepresentsPdmObjNode", Find("AB"));
    EXPECT_EQ(DiagnosisOf([&] { return Expand(a, Relations({PARTS}), FALSE, nullptr, nullptr, TRUE); }),
              InExpansion({Call("spIRepNodeOnChild->RepresentsPdmObjNode")}, 0));
}

TEST_F(FailingExpansion, CatchesErrorsAndTellsThem)
{
    const std::vector<std::pair<const char*, const char*>> faults{
        {"GetRightNodes", "B"}, {"GetRepNodes", "BC"}, {"GetRightObject", "BC"}};
    for (const auto& [operation, key] : faults) {
        const QTBFault fault(operation, FindNode(key), 0, QTBFault::Raises);
        const DebugCapture capture;
        const HRESULT hr = Expand(a, Relations({PARTS}));
        EXPECT_THAT(hr, FailsWithMessage("FaultERR_1"));
        EXPECT_THAT(capture.Lines(), Contains("QTBERepNodeContOnRepNodeCont::RecursiveUpdateRepTreeAdd ->" +
                                              TextOf(CATError::CATGetLastError(hr, nullptr)->GetNLSMessage())));
        EXPECT_EQ(Cont()->GetExpansionPathLength(), 0);
    }
}

TEST_F(FailingExpansion, CatchesAnErrorOnTheWayIntoAChild)
{
    Consider(ALL_NODES);
    EXPECT_THAT(Expand(a, Relations({PARTS})), Succeeds());
    ASSERT_EQ(TreeOf(a), "A(AB(B(BC(C))) AD(D))");
    const QTBFault fault("GetPdmNodeKey", Find("B"), 0, QTBFault::Raises);
    const DebugCapture capture;
    const HRESULT hr = Expand(a, Relations({PARTS}));
    ASSERT_THAT(hr, FailsWithMessage("FaultERR_1"));
    EXPECT_THAT(capture.Lines(), Contains("QTBERepNodeContOnRepNodeCont::RecursiveUpdateRepTreeAdd ->" +
                                          TextOf(CATError::CATGetLastError(hr, nullptr)->GetNLSMessage())));
    EXPECT_EQ(Cont()->GetExpansionPathLength(), 0);
}

TEST_F(FailingExpansion, LeavesNothingBehindWhenMemoryRunsOut)
{
    Consider(ALL_NODES);
    {
        const QTBFault fault("GetRightObject", FindNode("BC"), 0, QTBFault::LacksMemory);
        EXPECT_THROW(static_cast<void>(Expand(a, Relations({PARTS}))), std::bad_alloc);
    }
    EXPECT_EQ(Cont()->GetExpansionPathLength(), 0);
    EXPECT_THAT(Expand(a, Relations({PARTS})), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B(BC(C))) AD(D))");
}

TEST_F(FailingExpansion, OfTheTreesOfAPdmNodeChecksItsSteps)
{
    const auto diagnosis = [&](const char* key) {
        return DiagnosisOf([&] { return ShowTrees(key, Relations({PARTS})); });
    };
    {
        const QTBFault fault("GetRepNodes", FindNode("A"));
        EXPECT_THAT(diagnosis("A"), ElementsAre(Call("spIPdmNodeOnStartNodeOnPdmRoot->GetRepNodes")));
    }
    {
        const QTBFault fault("GetKey", FindNode("B"));
        EXPECT_THAT(diagnosis("B"), ElementsAre(Call("QTBPdmGraphUtil::IsDefaultRootNode")));
    }
    {
        const QTBFault fault("GetKey", FindNode("B"), 1);
        EXPECT_THAT(diagnosis("B"), ElementsAre(Call("spINodeAttributesOnPdmNode->GetKey"), Call("CreateRepNode")));
    }
    {
        const QTBFault fault("IsAffectedByCurrentAction", FindNode("B"));
        EXPECT_THAT(diagnosis("B"), ElementsAre(Call("spIPdmNodeOnStartNode->IsAffectedByCurrentAction")));
    }
    {
        const QTBFault fault("Redraw", a);
        EXPECT_THAT(DiagnosisOf([&] { return ShowTrees("A", Relations({})); }),
                    ElementsAre(Call("spIRepNode->Redraw"), Call("UpdateRepTreeIntern")));
    }
    const QTBFault fault("IsRepDefaultNode", a);
    EXPECT_THAT(diagnosis("A"), ElementsAre(Call("spIRepNode->IsRepDefaultNode")));
}

// Growing a tree along the filtered structure that leads from its parts to their files.
class FilteredModels : public RepTreeUpdate
{
protected:
    void SetUp() override
    {
        RepTreeUpdate::SetUp();
        Update(Object("CATProductFile", "FB") + Object("Document", "Doc") + Object("CATDrawingFile", "Dr") +
               Relation("PartFile", "BFB", "B", "FB") + Relation("PartDocument", "ADoc", "A", "Doc") +
               Relation("DocumentFile", "DocDr", "Doc", "Dr") + Part("X") + PartPart("CX", "C", "X"));
        Consider(ALL_NODES);
        a = CreateRoot("A");
        const QTBIRepNode_var ab = Create(a, "AB");
        Create(ab, "B");
    }
    void TearDown() override
    {
        a = NULL_var;
        RepTreeUpdate::TearDown();
    }
    HRESULT Grow(QTBIRepNode_var* pspRoot) const
    {
        return m_spCont->UpdateRepTreeAfterGetFilteredModels(pspRoot, nullptr, nullptr);
    }
    std::vector<std::string> DiagnosisOfGrowing()
    {
        return DiagnosisOf([&] { return Grow(&a); });
    }

    QTBIRepNode_var a;
};

TEST_F(FilteredModels, GrowTheTreeAlongTheirStructureOnly)
{
    EXPECT_THAT(Grow(&a), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B(BFB(FB))) AF(F) ADoc(Doc(DocDr(Dr))))");
    EXPECT_TRUE(Displayed(Find("Doc")) == Relations({QTBNodeRelationInfo("DocumentFile", usLEFT_TO_RIGHT)}));
    EXPECT_THAT(Grow(&a), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B(BFB(FB))) AF(F) ADoc(Doc(DocDr(Dr))))") << "nothing twice";
}

TEST_F(FilteredModels, GrowFurtherOnlyBelowTheObjectsThatAreNew)
{
    EXPECT_THAT(Grow(&a), Succeeds());
    EXPECT_THAT(Remove(Find("DocDr")), Succeeds());
    EXPECT_THAT(Grow(&a), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B(BFB(FB))) AF(F) ADoc(Doc))");
}

TEST_F(FilteredModels, OfARootThatIsNoPartGrowNothing)
{
    QTBIRepNode_var spFile = CreateRoot("F");
    EXPECT_THAT(Grow(&spFile), Succeeds());
    EXPECT_EQ(TreeOf(spFile), "F");
}

TEST_F(FilteredModels, CheckTheirRoot)
{
    QTBIRepNode_var spEmpty;
    EXPECT_THAT(Grow(nullptr), FailsAssertion("pspIRepNodeOnRootPartNode != NULL"));
    EXPECT_THAT(Grow(&spEmpty), LacksInterface("*pspIRepNodeOnRootPartNode"));
    {
        const QTBFault fault("GetDirectChildren", a);
        EXPECT_THAT(DiagnosisOfGrowing(), ElementsAre(Call("QTBRepTreeUtil::GetAllSubStructureNodes")));
    }
    {
        const QTBIRepNode_var ad = Create(a, "AD");
        LinkBelow(ad, CreateLoose("QTBNode"));
        EXPECT_THAT(DiagnosisOfGrowing(), ElementsAre(Call("QTBRepTreeUtil::GetAllSubStructureNodes")));
        QTBINodeRelations_var(ad)->RemoveAllRels(nullptr);
        TakeOut(ad);
    }
    const QTBFault fault("GetRightNodes", FindNode("Doc"));
    EXPECT_THAT(DiagnosisOfGrowing(),
                ElementsAre(Call("spIPdmObjNodeOnPdmNode->GetRightNodes"), Call("GetPdmNodesToBeShownAsChildren"),
                            Call("RecursiveUpdateRepTreeAdd"), Call("UpdateRepTreeIntern"), Call("UpdateRepTree"),
                            Call("UpdateRepNodeList"), Call("UpdateRepNodeList")));
}

TEST_F(FilteredModels, CheckTheirLists)
{
    QTBPdmTree tree;
    CATListPtrQTBPdmTreeRel treeRels;
    treeRels.Append(tree.AddRel(nullptr, FILES));
    Nodes repNodes;
    repNodes.Append(CATBaseUnknown_var(a));
    EXPECT_THAT(Cont()->UpdateRepNodeList(nullptr, treeRels, Relations({FILES})), FailsAssertion("pRepNodes != NULL"));
    EXPECT_THAT(Cont()->UpdateRepNodeList(&repNodes, treeRels, Relations({})),
                FailsAssertion("SizePdmTreeRels == SizeNodeRelInfos"));
    EXPECT_THAT(Cont()->UpdateRepNodeList(&repNodes, treeRels, Relations({FILES})), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B) AF(F))");
    CATListPtrQTBPdmTreeRel nullRels;
    nullRels.Append(nullptr);
    EXPECT_THAT(Cont()->UpdateRepNodeList(&repNodes, nullRels, Relations({PARTS})),
                FailsAssertion("pPdmTreeRel != NULL"));
    EXPECT_EQ(TreeOf(a), "A(AB(B) AF(F) AD(D))") << "expanded before the tree is looked at";
    repNodes.RemoveAll();
    repNodes.Append(CreateLoose("QTBNode"));
    EXPECT_THAT(Cont()->UpdateRepNodeList(&repNodes, treeRels, Relations({FILES})), LacksInterface("spIRepNode"));
}

} // namespace

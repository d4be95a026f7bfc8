#include <gmock/gmock.h>

#include "QTBFakeCommunication.h"
#include "QTBFakeRepTree.h"
#include "QTBINodeRelations.h"
#include "QTBLoadManager.h"
#include "QTBMatchers.h"
#include "QTBPdmNodeContAccess.h"

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

constexpr const char* PREFIX = "QTBEPdmNodeContOnPdmNodeCont::ReplaceNodesIfNecessary -> i:";

class PdmGraphLink : public QTBPdmNodeContAccess
{
protected:
    static std::string Superseding(const char* key, const char* superseded)
    {
        return Part(key, Info({{"QtbKey", key}, {"QtbSupersedes", superseded}}));
    }
};

TEST_F(PdmGraphLink, ANewVersionInheritsTheRelationsAndRepNodesOfTheOldOne)
{
    const QTBFakeRepTree tree;
    Update(Part("L") + Part("A1") + Part("R") + PartPart("LA", "L", "A1") + PartPart("AR", "A1", "R"));
    const CATBaseUnknown_var spRepNode =
        tree.CreateRepNode("A1-Rep-1", FindNode("A1"), tree.CreateContainer("window", true));
    DebugCapture capture;
    Update(Superseding("A2", "A1"));
    EXPECT_TRUE(FindNode("A1") == NULL_var);
    EXPECT_THAT(LeftKeys("A2", "PartPart"), ElementsAre("LA"));
    EXPECT_THAT(RightKeys("A2", "PartPart"), ElementsAre("AR"));
    EXPECT_THAT(RightKeys("A2", "PdmToRep"), ElementsAre("A1-Rep-1"));
    EXPECT_THAT(capture.Lines(),
                Contains(PREFIX + std::string("1 -> checking whether superseding node is necessary:")));
    EXPECT_THAT(capture.Lines(), Contains(PREFIX + std::string("1 -> superseding node")));
    EXPECT_THAT(capture.Lines(), Contains(HasSubstr("QTBEPdmNodeContOnPdmNodeCont::ReplaceNodesIfNecessary -> "
                                                    "replacing object ")));
    QTBINodeRelations_var(spRepNode)->RemoveAllRels(nullptr);
}

TEST_F(PdmGraphLink, ANodeWhoseOwnKeyIsTheSupersededOneSupersedesNothing)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    DebugCapture capture;
    Update(Part("C", Info({{"QtbKey", "A"}, {"QtbSupersedes", "A"}})));
    EXPECT_THAT(AllKeys(), ElementsAre("A", "AB", "B", "C"));
    EXPECT_THAT(RightKeys("A", "PartPart"), ElementsAre("AB"));
    EXPECT_THAT(capture.Lines(), Contains(PREFIX + std::string("1 -> keys are equal, not superseding node")));
}

TEST_F(PdmGraphLink, ANodeThatNamesItselfWithoutSayingItsKeyStaysInTheGraph)
{
    Update(Part("A", Info({{"QtbSupersedes", "A"}})) + Part("B") + PartPart("AB", "A", "B"));
    EXPECT_THAT(AllKeys(), ElementsAre("A", "AB", "B"));
    EXPECT_THAT(RightKeys("A", "PartPart"), ElementsAre("AB"));
}

TEST_F(PdmGraphLink, ASupersededKeyThatIsNotInTheGraphIsSkipped)
{
    DebugCapture capture;
    Update(Part("B") + Superseding("A2", "A1"));
    EXPECT_THAT(AllKeys(), ElementsAre("A2", "B"));
    EXPECT_THAT(capture.Lines(),
                Contains(testing::AllOf(testing::StartsWith(PREFIX + std::string("2: node superseded by ")),
                                        testing::EndsWith(" not found, continuing !"))));
}

TEST_F(PdmGraphLink, ANodeWithoutTheInfoAttributeSupersedesNothing)
{
    DebugCapture capture;
    Update(Part("A") + Part("B", Info({{"QtbKey", "B"}, {"QtbSupersedes", ""}})));
    EXPECT_THAT(AllKeys(), ElementsAre("A", "B"));
    EXPECT_THAT(capture.Lines(), Not(Contains(HasSubstr("checking whether superseding"))));
}

TEST_F(PdmGraphLink, ARelationCanSupersedeARelation)
{
    Update(Part("A") + Part("B") + PartPart("R1", "A", "B"));
    DebugCapture capture;
    Update(PartPart("R2", "A", "B", Info({{"QtbKey", "R2"}, {"QtbSupersedes", "R1"}})));
    EXPECT_THAT(AllKeys(), ElementsAre("A", "B", "R2"));
    EXPECT_THAT(RightKeys("A", "PartPart"), ElementsAre("R2"));
    EXPECT_THAT(LeftKeys("B", "PartPart"), ElementsAre("R2"));
    EXPECT_THAT(capture.Lines(), Contains("QTBEPdmNodeContOnPdmNodeCont::ReplaceNodesIfNecessary -> replacing "
                                          "relation "));
    EXPECT_THAT(capture.Lines(), Contains("with"));
}

TEST_F(PdmGraphLink, VersionsNamedNewestFirstHandEverythingOnToTheNewest)
{
    Update(Part("L") + Part("A1") + Part("R") + PartPart("LA", "L", "A1") + PartPart("AR", "A1", "R"));
    Update(Superseding("A4", "A3") + Superseding("A3", "A2") + Superseding("A2", "A1"));
    EXPECT_THAT(AllKeys(), ElementsAre("A4", "AR", "L", "LA", "R"));
    EXPECT_THAT(RightKeys("LA", "PartPart"), ElementsAre("A4"));
    EXPECT_THAT(LeftKeys("AR", "PartPart"), ElementsAre("A4"));
}

TEST_F(PdmGraphLink, RelationsNamedNewestFirstLeaveTheNewest)
{
    Update(Part("A") + Part("B") + PartPart("R1", "A", "B"));
    Update(PartPart("R3", "A", "B", Info({{"QtbKey", "R3"}, {"QtbSupersedes", "R2"}})) +
           PartPart("R2", "A", "B", Info({{"QtbKey", "R2"}, {"QtbSupersedes", "R1"}})));
    EXPECT_THAT(AllKeys(), ElementsAre("A", "B", "R3"));
    EXPECT_THAT(RightKeys("A", "PartPart"), ElementsAre("R3"));
}

TEST_F(PdmGraphLink, ARelationSupersededInTheAnswerThatHoldsItIsNotLinkedAgain)
{
    Update(Part("A") + Part("B") + PartPart("R1", "A", "B") +
           PartPart("R2", "A", "B", Info({{"QtbKey", "R2"}, {"QtbSupersedes", "R1"}})));
    EXPECT_THAT(AllKeys(), ElementsAre("A", "B", "R2"));
    EXPECT_THAT(RightKeys("A", "PartPart"), ElementsAre("R2"));
}

TEST_F(PdmGraphLink, AVersionThatTheAnswerHoldsTwiceStillTakesTheOldOnesPlace)
{
    Update(Part("A1") + Part("B") + PartPart("R", "A1", "B"));
    Update(Superseding("A2", "A1") + Superseding("A2", "A1"));
    EXPECT_THAT(AllKeys(), ElementsAre("A2", "B", "R"));
    EXPECT_THAT(RightKeys("A2", "PartPart"), ElementsAre("R"));
}

TEST_F(PdmGraphLink, WhatTheLoadManagerHoldsPassesToTheNewVersion)
{
    Update(Part("A1"));
    g_QTBLoadManager.SetCatiaAttr("A1", "Color", "red");
    Update(Superseding("A2", "A1"));
    CATUnicodeString usColor;
    EXPECT_THAT(g_QTBLoadManager.GetCatiaAttr("A2", "Color", &usColor), Succeeds());
    EXPECT_TRUE(usColor == "red");
    EXPECT_THAT(g_QTBLoadManager.GetCatiaAttr("A1", "Color", &usColor), FailsQuietly());
}

TEST_F(PdmGraphLink, ARelationWhoseObjectsAreNotInTheGraphIsDroppedByTheSameUpdate)
{
    CATListValCATBaseUnknown_var Relations;
    DebugCapture capture;
    EXPECT_THAT(
        GetPdmNodeCont()->UpdatePdmGraph(CATUnicodeString(Answer(Part("A") + Part("B") + PartPart("AX", "A", "X") +
                                                                 PartPart("AB", "A", "B") + PartPart("XB", "X", "B"))),
                                         nullptr, &Relations),
        Succeeds());
    EXPECT_THAT(AllKeys(), ElementsAre("A", "AB", "B"));
    EXPECT_THAT(KeysOf(Relations), ElementsAre("AB"));
    EXPECT_THAT(capture.Lines(), Contains("QTBEPdmNodeContOnPdmNodeCont::UpdateNodeRelations -> "
                                          "QTBPdmGraphUtil::GetCorrespondingObjNodesByPdmKey not successful, "
                                          "returning !"));
    // Once its objects have come it can be read.
    Update(Part("X"));
    EXPECT_TRUE(FindNode("AX") == NULL_var);
    Update(PartPart("AX", "A", "X"));
    EXPECT_THAT(RightKeys("A", "PartPart"), ElementsAre("AB", "AX"));
}

TEST_F(PdmGraphLink, OfARelationReadAgainWhoseObjectHasGoneTheUserIsNotInformed)
{
    const QTBFakeRepTree tree;
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    // The first takes the link between B and its relation, the second B itself.
    EXPECT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph("B", FALSE, TRUE, FALSE, nullptr), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph("B", FALSE, FALSE, FALSE, nullptr), Succeeds());
    tree.CreateRepNode("AB-Rep-1", FindNode("AB"), tree.CreateContainer("window", true));
    Update(PartPart("AB", "A", "B"));
    EXPECT_THAT(AllKeys(), ElementsAre("A"));
    EXPECT_THAT(QTBFakeRepTree::Calls(),
                ElementsAre("AB-Rep-1.AddDebugInfoString(Removing PDM node with Key [AB])",
                            "AB-Rep-1.GetRepNodeContainer()", "window.RecursiveRemoveRepTree(AB-Rep-1)"));
}

TEST_F(PdmGraphLink, ARelationMustLeadToObjects)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B") + PartPart("X", "A", "AB"));
    EXPECT_THAT(AllKeys(), ElementsAre("A", "AB", "B"));
}

TEST_F(PdmGraphLink, RelationsAreLinkedFromTheLastToTheFirst)
{
    Update(Part("A") + Part("B") + PartPart("1", "A", "B") + PartPart("2", "A", "B") + PartPart("3", "A", "B"));
    EXPECT_THAT(RightKeys("A", "PartPart"), ElementsAre("3", "2", "1"));
}

TEST_F(PdmGraphLink, ARelationReadAgainFollowsItsObjects)
{
    Update(Part("A") + Part("B") + Part("C") + PartPart("R", "A", "B"));
    Update(PartPart("R", "A", "C"));
    EXPECT_THAT(RightKeys("R", "PartPart"), ElementsAre("C"));
    EXPECT_THAT(RightKeys("A", "PartPart"), ElementsAre("R"));
    EXPECT_THAT(LeftKeys("B", "PartPart"), IsEmpty());
}

TEST_F(PdmGraphLink, LinkingChecksItsArguments)
{
    QTBIPdmRelNode_var spIPdmRelNode;
    EXPECT_THAT(Extension()->UpdateNodeRelations(static_cast<CATListValCATBaseUnknown_var*>(nullptr)),
                FailsAssertion("pListOfNodes"));
    EXPECT_THAT(Extension()->UpdateNodeRelations(static_cast<QTBIPdmRelNode_var*>(nullptr)),
                FailsAssertion("pspIPdmRelNodeOnNode != NULL"));
    EXPECT_THAT(Extension()->UpdateNodeRelations(&spIPdmRelNode), FailsAssertion("*pspIPdmRelNodeOnNode"));
}

TEST_F(PdmGraphLink, ARelationThatCannotBeLinkedFailsQuietly)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    EXPECT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph("B", FALSE, TRUE, FALSE, nullptr), Succeeds());
    QTBIPdmRelNode_var spIPdmRelNode = RelNode("AB");
    EXPECT_THAT(Extension()->UpdateNodeRelations(&spIPdmRelNode), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph("B", FALSE, FALSE, FALSE, nullptr), Succeeds());
    EXPECT_THAT(Extension()->UpdateNodeRelations(&spIPdmRelNode), FailsQuietly());
}

TEST_F(PdmGraphLink, ObjectNodesOfTheListNeedNothing)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    CATListValCATBaseUnknown_var Nodes;
    Nodes.Append(FindNode("A"));
    Nodes.Append(FindNode("AB"));
    Nodes.Append(FindNode("B"));
    EXPECT_THAT(Extension()->UpdateNodeRelations(&Nodes), Succeeds());
    EXPECT_THAT(KeysOf(Nodes), ElementsAre("A", "AB", "B"));
}

TEST_F(PdmGraphLink, RefreshingGivesTheNodeThatTheGraphHoldsNow)
{
    Update(Part("A"));
    QTBIPdmNode_var spOld = PdmNode("A");
    Update(Part("A"));
    QTBIPdmNode_var spNew;
    EXPECT_THAT(GetPdmNodeCont()->RefreshPdmNode(&spOld, &spNew), Succeeds());
    EXPECT_FALSE(spOld == spNew);
    EXPECT_TRUE(spNew == FindNode("A"));
}

TEST_F(PdmGraphLink, RefreshingANodeWhoseKeyHasLeftTheGraphFails)
{
    Update(Part("A1"));
    QTBIPdmNode_var spOld = PdmNode("A1");
    Update(Superseding("A2", "A1"));
    QTBIPdmNode_var spNew;
    EXPECT_THAT(GetPdmNodeCont()->RefreshPdmNode(&spOld, &spNew), FailsAssertion("bNodeExists"));
}

TEST_F(PdmGraphLink, RefreshingChecksItsArguments)
{
    QTBIPdmNode_var spOld;
    QTBIPdmNode_var spNew;
    EXPECT_THAT(GetPdmNodeCont()->RefreshPdmNode(nullptr, &spNew), FailsAssertion("pspIPdmNodeOnOldNode != NULL"));
    EXPECT_THAT(GetPdmNodeCont()->RefreshPdmNode(&spOld, &spNew), FailsAssertion("*pspIPdmNodeOnOldNode"));
    spOld = CreateObject("A");
    EXPECT_THAT(GetPdmNodeCont()->RefreshPdmNode(&spOld, nullptr), FailsAssertion("pspIPdmNodeOnNewNode != NULL"));
}

TEST_F(PdmGraphLink, ACreatedRelationIsReadFromThePdmSystemsAnswer)
{
    const QTBFakeCommunication communication;
    Update(Part("A") + Part("B"));
    QTBFakeCommunication::AnswerWith(Answer(Part("B") + PartPart("AB", "A", "B")));
    const int iBefore = CurrentActionIndex();
    DebugCapture capture;
    EXPECT_THAT(
        GetPdmNodeCont()->CreateRelationInPdmGraph("PartPart", ObjNode("A"), ObjNode("B"), "<a name='Quantity'>1</a>"),
        Succeeds());
    EXPECT_THAT(QTBFakeCommunication::Calls(), ElementsAre("CreateRelation(PartPart, A, B, <a name='Quantity'>1</a>)"));
    EXPECT_THAT(RightKeys("A", "PartPart"), ElementsAre("AB"));
    EXPECT_EQ(CurrentActionIndex(), iBefore + 1);
    EXPECT_THAT(capture.Lines(), Contains("QTBEPdmNodeContOnPdmNodeCont::CreateRelationInPdmGraph -> (1) / (1)"));
}

TEST_F(PdmGraphLink, CreatingARelationFailsWithItsSteps)
{
    Update(Part("A") + Part("B"));
    const auto create = [] {
        return GetPdmNodeCont()->CreateRelationInPdmGraph("PartPart", ObjNode("A"), ObjNode("B"), "");
    };
    {
        DebugCapture capture;
        EXPECT_THAT(create(), Not(Succeeds()));
        EXPECT_THAT(capture.Lines(), Contains(HasSubstr("QTBCommUtil::GetCommComponent : HRESULT FAILED")));
    }
    const QTBFakeCommunication communication;
    QTBFakeCommunication::AnswerWith("<answer/>");
    EXPECT_THAT(create(), FailsAssertion("ListOfFunctionNodes.Size() == 1"));
    QTBFakeCommunication::Refuse();
    EXPECT_THAT(create(), FailsCall("spICommunicationServicesOnComm->CreateRelation"));
}

} // namespace

#include "QTBInvariants.h"

#include <gmock/gmock.h>

#include "QTBInfoUtil.h"
#include "QTBRepTreeSession.h"
#include "QTBTestWindow.h"

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

// The inspection must see what is wrong, and nothing where all is well.
class Invariants : public QTBFaultyRepTreeSession
{
protected:
    void SetUp() override
    {
        QTBFaultyRepTreeSession::SetUp();
        Update(Part("A", Attribute("PartNumber", "N1")) + Part("B", Attribute("PartNumber", "N2")) +
               PartPart("AB", "A", "B", Attribute("InstanceName", "B.1")));
    }
};

TEST_F(Invariants, HoldInAnEmptySession)
{
    QTBGlobVarsUtil::EndSession();
    EXPECT_THAT(QTBFindBrokenInvariants(), IsEmpty());
}

TEST_F(Invariants, HoldInASessionWithAWindowAndTrees)
{
    QTBTestWindow window;
    window.Show(FindNode("A"), {"PartPart"});
    EXPECT_THAT(ShowTrees("A", Relations({PARTS})), Succeeds());
    EXPECT_THAT(QTBFindBrokenInvariants(), IsEmpty());
}

TEST_F(Invariants, HoldWhenNodesWereReplacedAndRemoved)
{
    EXPECT_THAT(ShowTrees("A", Relations({PARTS})), Succeeds());
    EXPECT_THAT(QTBFindBrokenInvariants(), IsEmpty());
    Update(Part("B2", Attribute("PartNumber", "N2") + Info({{"QtbKey", "B2"}, {"QtbSupersedes", "B"}})));
    EXPECT_THAT(QTBFindBrokenInvariants(), IsEmpty());
    RemovePdmNode("B2");
    EXPECT_THAT(QTBFindBrokenInvariants(), IsEmpty());
}

TEST_F(Invariants, HoldForARelationThatSupersededItsNeighbourAndStandsInBothPlaces)
{
    Update(PartPart("AB2", "A", "B"));
    Consider(ALL_NODES);
    EXPECT_THAT(ShowTrees("A", Relations({PARTS})), Succeeds());
    Update(PartPart("AB2", "A", "B", Info({{"QtbKey", "AB2"}, {"QtbSupersedes", "AB"}})));
    EXPECT_THAT(QTBFindBrokenInvariants(), IsEmpty());
    EXPECT_EQ(ChildrenOf(Find("A")).Size(), 2);
    // And when it no longer says so.
    Update(PartPart("AB2", "A", "B"));
    EXPECT_THAT(QTBFindBrokenInvariants(), IsEmpty());
}

TEST_F(Invariants, TellOfARelationShownTwice)
{
    const QTBIRepNode_var spRoot = CreateRoot("A");
    Create(spRoot, "AB");
    Create(spRoot, "AB");
    EXPECT_THAT(QTBFindBrokenInvariants(), ElementsAre("rep node " + KeyOf(spRoot) + " shows AB twice"));
}

TEST_F(Invariants, TellOfALinkThatOneEndDoesNotKnow)
{
    {
        const QTBFault fault("AddRightNode", FindNode("AB"));
        EXPECT_THAT(QTBINodeRelations_var(FindNode("A"))->AddLeftNode("PartPart", FindNode("AB"), 1, FALSE),
                    FailsCall("spINodeRelationsOnLeftNode->AddRightNode"));
    }
    EXPECT_THAT(QTBFindBrokenInvariants(),
                ElementsAre("link AB -PartPart-> A is known 0 times to its left node and 1 times to its right node"));
}

TEST_F(Invariants, TellOfALinkThatLeadsOutOfTheSession)
{
    const CATBaseUnknown_var spLoose = CreateLoose("QTBNode");
    EXPECT_THAT(QTBINodeRelations_var(FindNode("A"))->AddRightNode("PdmToRep", spLoose, 1, FALSE), Succeeds());
    EXPECT_THAT(QTBFindBrokenInvariants(),
                ElementsAre("PDM node A has the rep node , which belongs to no container",
                            "node A has under PdmToRep the node , which no container holds"));
}

TEST_F(Invariants, TellOfObjectsThatAreLinkedToObjects)
{
    EXPECT_THAT(QTBINodeRelations_var(FindNode("A"))->AddRightNode("Other", FindNode("B"), 1, FALSE), Succeeds());
    EXPECT_THAT(QTBFindBrokenInvariants(),
                UnorderedElementsAre("PDM node A has under Other the node B, which is of the same kind",
                                     "PDM node B has under Other the node A, which is of the same kind"));
}

TEST_F(Invariants, TellOfARelationThatLostAnObject)
{
    EXPECT_THAT(QTBINodeRelations_var(FindNode("AB"))->RemoveRightNode("PartPart", FindNode("B")), Succeeds());
    EXPECT_THAT(QTBFindBrokenInvariants(), Contains("relation AB has 1 objects on its left and 0 on its right"));
}

TEST_F(Invariants, TellOfAKeyThatWasChangedWhileTheNodeWasFiled)
{
    const QTBINodeAttributes_var spINodeAttributes(FindNode("A"));
    EXPECT_THAT(spINodeAttributes->SetKey("C"), Succeeds());
    EXPECT_THAT(QTBFindBrokenInvariants(), Contains("PDM node C is listed and not found"));
    EXPECT_THAT(spINodeAttributes->SetKey("A"), Succeeds());
}

TEST_F(Invariants, TellOfTwoNodesOfOneKey)
{
    CATBaseUnknown_var spNode;
    EXPECT_THAT(GetPdmNodeCont()->CreatePdmObjNode("A", &spNode, TRUE), Succeeds());
    EXPECT_THAT(QTBFindBrokenInvariants(), Contains("two PDM nodes have the key A"));
}

TEST_F(Invariants, TellOfACircleInATree)
{
    const QTBIRepNode_var spRoot = CreateRoot("A");
    const QTBIRepNode_var spChild = Create(spRoot, "AB");
    EXPECT_THAT(QTBFindBrokenInvariants(), IsEmpty());
    LinkBelow(spChild, spRoot);
    EXPECT_THAT(QTBFindBrokenInvariants(), UnorderedElementsAre("rep node " + KeyOf(spRoot) + " hangs below no root",
                                                                "rep node " + KeyOf(spChild) + " hangs below no root"));
    EXPECT_THAT(QTBINodeRelations_var(spChild)->RemoveRightNode("RepToRep", CATBaseUnknown_var(spRoot)), Succeeds());
}

TEST_F(Invariants, TellOfObjectsBelowObjects)
{
    const QTBIRepNode_var spRoot = CreateRoot("A");
    const QTBIRepNode_var spChild = Create(spRoot, "B");
    EXPECT_THAT(QTBFindBrokenInvariants(),
                ElementsAre("rep node " + KeyOf(spRoot) + " has the child " + KeyOf(spChild) + " of the same kind"));
}

TEST_F(Invariants, TellOfARepNodeThatNobodyFiled)
{
    const QTBIRepNode_var spLoose = CreateLooseRepNode("A");
    EXPECT_THAT(spLoose->SetRepNodeContainer(m_spCont), Succeeds());
    EXPECT_THAT(QTBFindBrokenInvariants(),
                ElementsAre("node A has under PdmToRep the node , which no container holds"));
}

} // namespace

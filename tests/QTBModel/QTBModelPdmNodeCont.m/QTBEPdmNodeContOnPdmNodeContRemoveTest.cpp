#include <gmock/gmock.h>

#include "CATError.h"
#include "CATInstantiateComponent.h"
#include "QTBFakeCommunication.h"
#include "QTBFakeRepTree.h"
#include "QTBINodeAttributes.h"
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

class PdmGraphRemoval : public QTBPdmNodeContAccess
{
protected:
    // A in the middle: on its left L by LA, on its right R by AR; beside them L and R by LR.
    void SetUp() override
    {
        QTBPdmNodeContAccess::SetUp();
        Update(Part("L") + Part("A") + Part("R") + PartPart("LA", "L", "A") + PartPart("AR", "A", "R") +
               PartPart("LR", "L", "R"));
    }

    static HRESULT Remove(const char* key, unsigned char bFromPdmSystem = FALSE, unsigned char bKeep = FALSE,
                          unsigned char bInformUser = FALSE, const CATUnicodeString* pusDeleteOption = nullptr)
    {
        QTBIPdmNode_var spIPdmNode = PdmNode(key);
        return GetPdmNodeCont()->RemoveNodeFromPdmGraph(&spIPdmNode, bFromPdmSystem, bKeep, bInformUser,
                                                        pusDeleteOption);
    }

    static CATBaseUnknown_var CreateComponent(const char* lateType)
    {
        void* pComponent = nullptr;
        EXPECT_THAT(::CATInstantiateComponent(lateType, CLSID_CATBaseUnknown, &pComponent), Succeeds());
        return CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pComponent));
    }

    // A node that is neither a PDM node nor a rep node.
    static CATBaseUnknown_var CreatePlainNode() { return CreateComponent("QTBNode"); }
};

TEST_F(PdmGraphRemoval, AnObjectGoesWithItsRelationsOnBothSides)
{
    EXPECT_THAT(Remove("A"), Succeeds());
    EXPECT_THAT(AllKeys(), ElementsAre("L", "LR", "R"));
    EXPECT_THAT(RightKeys("L", "PartPart"), ElementsAre("LR"));
    EXPECT_THAT(LeftKeys("R", "PartPart"), ElementsAre("LR"));
}

TEST_F(PdmGraphRemoval, RelationsOfEarlierActionsGoToo)
{
    Update(Part("X") + PartPart("AX", "A", "X"));
    EXPECT_THAT(Remove("A"), Succeeds());
    EXPECT_THAT(AllKeys(), ElementsAre("L", "LR", "R", "X"));
}

TEST_F(PdmGraphRemoval, AnObjectAndItsRelationsLoseTheirRepNodes)
{
    const QTBFakeRepTree tree;
    const CATBaseUnknown_var spFirst = tree.CreateContainer("first", true);
    const CATBaseUnknown_var spSecond = tree.CreateContainer("second", true);
    tree.CreateRepNode("A-Rep-1", FindNode("A"), spFirst);
    tree.CreateRepNode("A-Rep-2", FindNode("A"), spSecond);
    tree.CreateRepNode("LA-Rep-3", FindNode("LA"), spFirst);
    const CATBaseUnknown_var spOther = tree.CreateRepNode("L-Rep-4", FindNode("L"), spFirst);
    EXPECT_THAT(Remove("A"), Succeeds());
    // The last rep node goes first.
    EXPECT_THAT(QTBFakeRepTree::Calls(),
                ElementsAre("LA-Rep-3.AddDebugInfoString(Removing PDM node with Key [LA])",
                            "LA-Rep-3.GetRepNodeContainer()", "first.RecursiveRemoveRepTree(LA-Rep-3)",
                            "A-Rep-1.AddDebugInfoString(Removing PDM node with Key [A])",
                            "A-Rep-2.GetRepNodeContainer()", "second.RecursiveRemoveRepTree(A-Rep-2)",
                            "A-Rep-1.GetRepNodeContainer()", "first.RecursiveRemoveRepTree(A-Rep-1)"));
    EXPECT_THAT(RightKeys("L", "PdmToRep"), ElementsAre("L-Rep-4"));
    QTBINodeRelations_var(spOther)->RemoveAllRels(nullptr);
}

TEST_F(PdmGraphRemoval, InformingTheUserIsHandedToTheTrees)
{
    const QTBFakeRepTree tree;
    tree.CreateRepNode("A-Rep-1", FindNode("A"), tree.CreateContainer("window", true));
    EXPECT_THAT(Remove("A", FALSE, FALSE, TRUE), Succeeds());
    EXPECT_THAT(QTBFakeRepTree::Calls(), Contains("window.RecursiveRemoveRepTree(A-Rep-1, inform)"));
}

TEST_F(PdmGraphRemoval, AKeptNodeIsStillFoundButHasNoRelationsAndNoRepNodes)
{
    const QTBFakeRepTree tree;
    tree.CreateRepNode("A-Rep-1", FindNode("A"), tree.CreateContainer("window", true));
    const CATBaseUnknown_var spNode = FindNode("A");
    EXPECT_THAT(Remove("A", FALSE, TRUE), Succeeds());
    EXPECT_TRUE(FindNode("A") == spNode);
    EXPECT_THAT(RightKeys("A", "PartPart"), IsEmpty());
    EXPECT_THAT(LeftKeys("A", "PartPart"), IsEmpty());
    EXPECT_THAT(RightKeys("A", "PdmToRep"), IsEmpty());
    EXPECT_THAT(RightKeys("L", "PartPart"), ElementsAre("LR"));
    EXPECT_THAT(LeftKeys("R", "PartPart"), ElementsAre("LR"));
    EXPECT_THAT(AllKeys(), ElementsAre("A", "AR", "L", "LA", "LR", "R")) << "its relations are kept too";
    for (const char* key : {"LA", "AR"}) {
        EXPECT_THAT(LeftKeys(key, "PartPart"), IsEmpty()) << key;
        EXPECT_THAT(RightKeys(key, "PartPart"), IsEmpty()) << key;
    }
}

TEST_F(PdmGraphRemoval, ARelationGoesAlone)
{
    EXPECT_THAT(Remove("LA"), Succeeds());
    EXPECT_THAT(AllKeys(), ElementsAre("A", "AR", "L", "LR", "R"));
    EXPECT_THAT(LeftKeys("A", "PartPart"), IsEmpty());
}

TEST_F(PdmGraphRemoval, RemovingByKeyDoesTheSame)
{
    EXPECT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph("A", FALSE, FALSE, FALSE, nullptr), Succeeds());
    EXPECT_THAT(AllKeys(), ElementsAre("L", "LR", "R"));
    EXPECT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph("A", FALSE, FALSE, FALSE, nullptr),
                FailsAssertion("bNodeExists"));
    EXPECT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph("", FALSE, FALSE, FALSE, nullptr),
                FailsAssertion("usPdmNodeKey != \"\""));
}

TEST_F(PdmGraphRemoval, RemovingByKeyHandsOnWhatItIsTold)
{
    const QTBFakeRepTree tree;
    const QTBFakeCommunication communication;
    const CATBaseUnknown_var spContainer = tree.CreateContainer("window", true);
    tree.CreateRepNode("A-Rep-1", FindNode("A"), spContainer);
    tree.CreateRepNode("R-Rep-2", FindNode("R"), spContainer);
    const CATUnicodeString usOption("all versions");
    EXPECT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph("A", TRUE, FALSE, TRUE, &usOption), Succeeds());
    EXPECT_THAT(QTBFakeCommunication::Calls(), ElementsAre("Delete(A, all versions)"));
    EXPECT_THAT(QTBFakeRepTree::Calls(), Contains("window.RecursiveRemoveRepTree(A-Rep-1, inform)"));
    EXPECT_THAT(AllKeys(), ElementsAre("L", "LR", "R"));

    EXPECT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph("R", FALSE, TRUE, FALSE, &usOption), Succeeds());
    EXPECT_EQ(QTBFakeCommunication::Calls().size(), 1U) << "not deleted in the PDM system";
    EXPECT_THAT(QTBFakeRepTree::Calls(), Contains("window.RecursiveRemoveRepTree(R-Rep-2)"));
    EXPECT_THAT(AllKeys(), ElementsAre("L", "LR", "R")) << "kept";
}

TEST_F(PdmGraphRemoval, RemovingChecksItsHandle)
{
    EXPECT_THAT(
        GetPdmNodeCont()->RemoveNodeFromPdmGraph(static_cast<QTBIPdmNode_var*>(nullptr), FALSE, FALSE, FALSE, nullptr),
        FailsAssertion("pspIPdmNode != NULL"));
    QTBIPdmNode_var spIPdmNode;
    EXPECT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph(&spIPdmNode, FALSE, FALSE, FALSE, nullptr),
                LacksInterface("*pspIPdmNode"));
    EXPECT_THAT(Extension()->RemovePdmNodeFromContainer(static_cast<QTBIPdmNode_var*>(nullptr), FALSE, FALSE),
                FailsAssertion("pspIPdmNode"));
    EXPECT_THAT(Extension()->RemovePdmNodeFromContainer(&spIPdmNode, FALSE, FALSE), LacksInterface("*pspIPdmNode"));
    EXPECT_THAT(Extension()->RemoveNodeFromPdmSystem(&spIPdmNode, nullptr), FailsAssertion("NULL_var != *pspIPdmNode"));
}

TEST_F(PdmGraphRemoval, TakingAnUnknownKeyOutOfTheContainerFailsQuietly)
{
    const DebugCapture capture;
    EXPECT_THAT(Extension()->RemovePdmNodeFromContainer("unknown", FALSE, FALSE), FailsQuietly());
    EXPECT_EQ(capture.Text(), "");
    EXPECT_THAT(AllKeys(), ElementsAre("A", "AR", "L", "LA", "LR", "R"));
}

TEST_F(PdmGraphRemoval, ANodeDeletedInThePdmSystemAlwaysLeavesTheStore)
{
    const QTBFakeCommunication communication;
    const CATUnicodeString usOption("all versions");
    EXPECT_THAT(Remove("A", TRUE, TRUE, FALSE, &usOption), Succeeds());
    EXPECT_THAT(QTBFakeCommunication::Calls(), ElementsAre("Delete(A, all versions)"));
    EXPECT_THAT(AllKeys(), Not(Contains("A")));
}

TEST_F(PdmGraphRemoval, AdjacentRelationsAreNotDeletedInThePdmSystem)
{
    const QTBFakeCommunication communication;
    EXPECT_THAT(Remove("A", TRUE), Succeeds());
    EXPECT_THAT(QTBFakeCommunication::Calls(), ElementsAre("Delete(A)"));
}

TEST_F(PdmGraphRemoval, NothingIsRemovedWhenThePdmSystemRefuses)
{
    const QTBFakeCommunication communication;
    QTBFakeCommunication::Refuse();
    g_QTBLoadManager.SetCatiaAttr("A", "Color", "red");
    EXPECT_THAT(Remove("A", TRUE), FailsCall("spICommunicationServicesOnComm->Delete"));
    EXPECT_THAT(AllKeys(), ElementsAre("A", "AR", "L", "LA", "LR", "R"));
    CATUnicodeString usColor;
    EXPECT_THAT(g_QTBLoadManager.GetCatiaAttr("A", "Color", &usColor), Succeeds());
}

TEST_F(PdmGraphRemoval, WithoutConnectionNothingCanBeDeletedInThePdmSystem)
{
    DebugCapture capture;
    const HRESULT hr = Remove("A", TRUE);
    const CATError* pError = CATError::CATGetLastError(hr, nullptr);
    ASSERT_NE(pError, nullptr);
    EXPECT_TRUE(pError->GetMsgId() == "NoPdmConnectionERR_2007");
    EXPECT_THAT(capture.Lines(), Contains(HasSubstr("QTBCommUtil::GetCommComponent : HRESULT FAILED")));
    EXPECT_THAT(AllKeys(), Contains("A"));
}

TEST_F(PdmGraphRemoval, WhatTheLoadManagerHoldsGoesToo)
{
    g_QTBLoadManager.SetCatiaAttr("A", "Color", "red");
    EXPECT_THAT(Remove("A"), Succeeds());
    CATUnicodeString usColor;
    EXPECT_THAT(g_QTBLoadManager.GetCatiaAttr("A", "Color", &usColor), FailsQuietly());
}

TEST_F(PdmGraphRemoval, ALoadManagerThatKnowsNothingOfTheNodeDoesNotStopTheRemoval)
{
    // A node without key is none that the load manager could look up.
    DebugCapture capture;
    QTBIPdmNode_var spIPdmNode(CreateObject(""));
    EXPECT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph(&spIPdmNode, FALSE, FALSE, FALSE, nullptr), Succeeds());
    EXPECT_THAT(AllKeys(), Not(Contains("")));
    EXPECT_THAT(capture.Lines(), Contains(HasSubstr("g_QTBLoadManager.RemovePdmNodeData : HRESULT FAILED")));
    EXPECT_THAT(capture.Lines(), Contains(testing::AllOf(HasSubstr(" File:["), HasSubstr("], Line:["))));
}

TEST_F(PdmGraphRemoval, ARepNodeThatIsNoneEndsTheRemoval)
{
    const CATBaseUnknown_var spPlain = CreatePlainNode();
    QTBINodeRelations_var(FindNode("A"))->AddRightNode("PdmToRep", spPlain, 1, TRUE);
    EXPECT_THAT(Remove("A"), LacksInterface("spIRepNodeForDebug"));
    EXPECT_THAT(AllKeys(), Contains("A"));
}

TEST_F(PdmGraphRemoval, ALaterRepNodeThatIsNoneEndsTheRemovalToo)
{
    const QTBFakeRepTree tree;
    const CATBaseUnknown_var spRepNode =
        tree.CreateRepNode("A-Rep-1", FindNode("A"), tree.CreateContainer("window", true));
    QTBINodeRelations_var(FindNode("A"))->AddRightNode("PdmToRep", CreatePlainNode(), 1, TRUE);
    EXPECT_THAT(Remove("A"), LacksInterface("spIRepNode"));
    QTBINodeRelations_var(spRepNode)->RemoveAllRels(nullptr);
}

TEST_F(PdmGraphRemoval, ATreeThatCannotBeRemovedKeepsTheNode)
{
    const QTBFakeRepTree tree;
    const CATBaseUnknown_var spRepNode =
        tree.CreateRepNode("R-Rep-1", FindNode("R"), tree.CreateContainer("window", true));
    QTBFakeRepTree::FailAt("AddDebugInfoString");
    EXPECT_THAT(Remove("R"), FailsCall("spIRepNodeForDebug->AddDebugInfoString"));
    QTBFakeRepTree::FailAt("GetRepNodeContainer");
    EXPECT_THAT(Remove("R"), FailsCall("spIRepNode->GetRepNodeContainer"));
    QTBFakeRepTree::FailAt("RecursiveRemoveRepTree");
    EXPECT_THAT(Remove("R"), FailsCall("spIRepNodeCont->RecursiveRemoveRepTree"));
    EXPECT_THAT(RightKeys("R", "PdmToRep"), ElementsAre("R-Rep-1"));
    QTBINodeRelations_var(spRepNode)->RemoveAllRels(nullptr);
}

TEST_F(PdmGraphRemoval, RelationsThatCannotBeRemovedAreReportedAndDoNotStopTheRemoval)
{
    const QTBFakeRepTree tree;
    const CATBaseUnknown_var spRepNode =
        tree.CreateRepNode("LA-Rep-1", FindNode("LA"), tree.CreateContainer("window", true));
    QTBFakeRepTree::FailAt("RecursiveRemoveRepTree");
    DebugCapture capture;
    EXPECT_THAT(Remove("A"), Succeeds());
    EXPECT_TRUE(FindNode("A") == NULL_var);
    EXPECT_THAT(capture.Lines(), Contains(HasSubstr("spIPdmObjNode->RemoveAllAdjacentPdmRelNodes : HRESULT FAILED")));
    EXPECT_THAT(capture.Lines(), Contains(HasSubstr("], Line:[")));
    QTBINodeRelations_var(spRepNode)->RemoveAllRels(nullptr);
}

TEST_F(PdmGraphRemoval, EveryRegisteredContainerUpdatesItsTreesInOrder)
{
    const QTBFakeRepTree tree;
    CATBaseUnknown_var spFirst = tree.CreateContainer("first", true);
    CATBaseUnknown_var spSecond = tree.CreateContainer("second", true);
    unsigned char bAddNewNodes = TRUE;
    EXPECT_THAT(GetPdmNodeCont()->UpdateAllRepNodeContainers(&bAddNewNodes), Succeeds());
    EXPECT_THAT(QTBFakeRepTree::Calls(), IsEmpty());
    EXPECT_THAT(GetPdmNodeCont()->AddRepNodeContainer(&spSecond), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->AddRepNodeContainer(&spFirst), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->UpdateAllRepNodeContainers(&bAddNewNodes), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->RemoveRepNodeContainer(&spSecond), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->UpdateAllRepNodeContainers(nullptr), Succeeds());
    EXPECT_THAT(QTBFakeRepTree::Calls(), ElementsAre("second.UpdateAllRepTrees(TRUE, FALSE, no lists, add)",
                                                     "first.UpdateAllRepTrees(TRUE, FALSE, no lists, add)",
                                                     "first.UpdateAllRepTrees(TRUE, FALSE, no lists, null)"));
}

TEST_F(PdmGraphRemoval, AContainerCanBeRegisteredTwiceAndAnAbsentOneBeRemoved)
{
    const QTBFakeRepTree tree;
    CATBaseUnknown_var spContainer = tree.CreateContainer("window", true);
    EXPECT_THAT(GetPdmNodeCont()->RemoveRepNodeContainer(&spContainer), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->AddRepNodeContainer(&spContainer), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->AddRepNodeContainer(&spContainer), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->RemoveRepNodeContainer(&spContainer), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->UpdateAllRepNodeContainers(nullptr), Succeeds());
    EXPECT_EQ(QTBFakeRepTree::Calls().size(), 1U);
}

TEST_F(PdmGraphRemoval, RegisteringChecksItsHandle)
{
    EXPECT_THAT(GetPdmNodeCont()->AddRepNodeContainer(nullptr), FailsAssertion("pspBaseUnknownOnRepNodeCont != NULL"));
    EXPECT_THAT(GetPdmNodeCont()->RemoveRepNodeContainer(nullptr),
                FailsAssertion("pspBaseUnknownOnRepNodeCont != NULL"));
    CATBaseUnknown_var spNothing;
    EXPECT_THAT(GetPdmNodeCont()->AddRepNodeContainer(&spNothing), LacksInterface("spBaseUnknownOnRepNodeCont"));
    EXPECT_THAT(GetPdmNodeCont()->RemoveRepNodeContainer(&spNothing), LacksInterface("spBaseUnknownOnRepNodeCont"));
}

TEST_F(PdmGraphRemoval, ARegisteredComponentThatIsNoContainerFailsEveryRound)
{
    CATBaseUnknown_var spPlain = CreatePlainNode();
    EXPECT_THAT(GetPdmNodeCont()->AddRepNodeContainer(&spPlain), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->UpdateAllRepNodeContainers(nullptr), LacksInterface("spIRepNodeCont"));
    EXPECT_THAT(GetPdmNodeCont()->CheckRepNodeContainers(), LacksInterface("spIRepNodeCont"));
    EXPECT_THAT(GetPdmNodeCont()->Cleanup(), LacksInterface("spIRepNodeCont"));
    EXPECT_THAT(GetPdmNodeCont()->RemoveRepNodeContainer(&spPlain), Succeeds());
}

TEST_F(PdmGraphRemoval, AFailingContainerEndsTheRound)
{
    const QTBFakeRepTree tree;
    CATBaseUnknown_var spContainer = tree.CreateContainer("window", false);
    EXPECT_THAT(GetPdmNodeCont()->AddRepNodeContainer(&spContainer), Succeeds());
    QTBFakeRepTree::FailAt("UpdateAllRepTrees");
    EXPECT_THAT(GetPdmNodeCont()->UpdateAllRepNodeContainers(nullptr), FailsCall("spIRepNodeCont->UpdateAllRepTrees"));
    QTBFakeRepTree::FailAt("QtbFrmWindowPtrIsSet");
    EXPECT_THAT(GetPdmNodeCont()->CheckRepNodeContainers(), FailsCall("spIRepNodeCont->QtbFrmWindowPtrIsSet"));
    QTBFakeRepTree::FailAt("Cleanup");
    EXPECT_THAT(GetPdmNodeCont()->CheckRepNodeContainers(), FailsCall("spIRepNodeCont->Cleanup"));
    EXPECT_THAT(GetPdmNodeCont()->Cleanup(), FailsCall("spIRepNodeCont->Cleanup"));
    EXPECT_THAT(AllKeys(), Contains("A"));
}

TEST_F(PdmGraphRemoval, CheckingDropsTheContainersWithoutWindow)
{
    const QTBFakeRepTree tree;
    CATBaseUnknown_var spOpen = tree.CreateContainer("open", true);
    CATBaseUnknown_var spClosed1 = tree.CreateContainer("closed1", false);
    CATBaseUnknown_var spClosed2 = tree.CreateContainer("closed2", false);
    for (CATBaseUnknown_var* pspContainer : {&spClosed1, &spOpen, &spClosed2}) {
        EXPECT_THAT(GetPdmNodeCont()->AddRepNodeContainer(pspContainer), Succeeds());
    }
    DebugCapture capture;
    EXPECT_THAT(GetPdmNodeCont()->CheckRepNodeContainers(), Succeeds());
    EXPECT_THAT(QTBFakeRepTree::Calls(),
                ElementsAre("closed2.QtbFrmWindowPtrIsSet()", "closed2.Cleanup()", "open.QtbFrmWindowPtrIsSet()",
                            "closed1.QtbFrmWindowPtrIsSet()", "closed1.Cleanup()"));
    EXPECT_THAT(capture.Lines(), testing::IsSupersetOf(
                                     {"QTBEPdmNodeContOnPdmNodeCont::CheckRepNodeContainers -> i:3, FALSE, removing",
                                      "QTBEPdmNodeContOnPdmNodeCont::CheckRepNodeContainers -> i:2, TRUE",
                                      "QTBEPdmNodeContOnPdmNodeCont::CheckRepNodeContainers -> i:1, FALSE, removing"}));
    QTBFakeRepTree::Calls().clear();
    EXPECT_THAT(GetPdmNodeCont()->CheckRepNodeContainers(), Succeeds());
    EXPECT_THAT(QTBFakeRepTree::Calls(), ElementsAre("open.QtbFrmWindowPtrIsSet()"));
}

TEST_F(PdmGraphRemoval, CheckingWithAllWindowsClosedEmptiesTheRegistry)
{
    const QTBFakeRepTree tree;
    CATBaseUnknown_var spFirst = tree.CreateContainer("first", false);
    CATBaseUnknown_var spSecond = tree.CreateContainer("second", false);
    for (CATBaseUnknown_var* pspContainer : {&spFirst, &spSecond, &spFirst}) {
        EXPECT_THAT(GetPdmNodeCont()->AddRepNodeContainer(pspContainer), Succeeds());
    }
    EXPECT_THAT(GetPdmNodeCont()->CheckRepNodeContainers(), Succeeds());
    EXPECT_THAT(QTBFakeRepTree::Calls(), Contains("first.Cleanup()"));
    EXPECT_THAT(QTBFakeRepTree::Calls(), Contains("second.Cleanup()"));
    QTBFakeRepTree::Calls().clear();
    EXPECT_THAT(GetPdmNodeCont()->UpdateAllRepNodeContainers(nullptr), Succeeds());
    EXPECT_THAT(QTBFakeRepTree::Calls(), IsEmpty());
}

TEST_F(PdmGraphRemoval, ContainersThatUnregisterWhenTheyAreCleanedUpAreDroppedToo)
{
    // Real ones register themselves when they are created and have no window here.
    const int iBefore = CATBaseUnknown::GetLiveComponentCount();
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(QTBIRepNodeCont_var(CreateComponent("QTBRepNodeCont")) != NULL_var);
    }
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), iBefore + 3);
    EXPECT_THAT(GetPdmNodeCont()->CheckRepNodeContainers(), Succeeds());
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), iBefore);
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(QTBIRepNodeCont_var(CreateComponent("QTBRepNodeCont")) != NULL_var);
    }
    EXPECT_THAT(GetPdmNodeCont()->Cleanup(), Succeeds());
    EXPECT_THAT(AllKeys(), IsEmpty());
}

TEST_F(PdmGraphRemoval, CleaningUpEmptiesTheGraphAndTheRegistry)
{
    const QTBFakeRepTree tree;
    CATBaseUnknown_var spFirst = tree.CreateContainer("first", true);
    CATBaseUnknown_var spSecond = tree.CreateContainer("second", true);
    EXPECT_THAT(GetPdmNodeCont()->AddRepNodeContainer(&spFirst), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->AddRepNodeContainer(&spSecond), Succeeds());
    DebugCapture capture;
    EXPECT_THAT(GetPdmNodeCont()->Cleanup(), Succeeds());
    EXPECT_THAT(QTBFakeRepTree::Calls(), ElementsAre("second.Cleanup()", "first.Cleanup()"));
    EXPECT_THAT(capture.Lines(),
                testing::IsSupersetOf({"cleaning up rep node container [2]", "cleaning up rep node container [1]"}));
    EXPECT_THAT(AllKeys(), IsEmpty());
    QTBFakeRepTree::Calls().clear();
    EXPECT_THAT(GetPdmNodeCont()->CheckRepNodeContainers(), Succeeds());
    EXPECT_THAT(QTBFakeRepTree::Calls(), IsEmpty());
}

TEST_F(PdmGraphRemoval, ACleanedGraphCanBeUsedAgain)
{
    EXPECT_THAT(GetPdmNodeCont()->CreateDefaultRootNode(), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->Cleanup(), Succeeds());
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    EXPECT_THAT(AllKeys(), ElementsAre("A", "AB", "B"));
}

TEST_F(PdmGraphRemoval, CleaningUpDissolvesAllLinks)
{
    const CATBaseUnknown_var spNode = FindNode("A");
    EXPECT_THAT(GetPdmNodeCont()->Cleanup(), Succeeds());
    int iCount = -1;
    EXPECT_THAT(QTBINodeRelations_var(spNode)->GetRightRelationsCount(&iCount, FALSE), Succeeds());
    EXPECT_EQ(iCount, 0);
    EXPECT_THAT(QTBINodeRelations_var(spNode)->GetLeftRelationsCount(&iCount, FALSE), Succeeds());
    EXPECT_EQ(iCount, 0);
}

// The index of a container must not outlive the nodes in it.
TEST_F(PdmGraphRemoval, CleaningUpForgetsANodeWhoseKeyWasChangedWhileItWasFiled)
{
    EXPECT_THAT(QTBINodeAttributes_var(FindNode("A"))->SetKey("B"), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->Cleanup(), Succeeds());
    EXPECT_TRUE(FindNode("A") == NULL_var);
    EXPECT_TRUE(FindNode("B") == NULL_var);
}

} // namespace

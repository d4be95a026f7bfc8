#include <gmock/gmock.h>

#include "CATListValQTBChildRepNodeInfo.h"
#include "QTBERepNodeOnRepNode.h"
#include "QTBRepTreeSession.h"

using QTBDiagnosis::Assertion;
using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosesIn;
using QTBDiagnosis::DiagnosisOf;
using QTBDiagnosis::Handle;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

// A with the parts B and D and a file F below, C below B: A(AB(B(BC(C))) AD(D) AF(F)).
class RepNodeRelations : public QTBFaultyRepTreeSession
{
protected:
    void SetUp() override
    {
        QTBFaultyRepTreeSession::SetUp();
        QTBGlobVarsUtil::SetAddNewNodeRelationsAt(QTB_PLACE_TO_ADD_END);
        Update(Part("A") + Part("B") + Part("C") + Part("D") + Object("CATPartFile", "F") + PartPart("AB", "A", "B") +
               PartPart("BC", "B", "C") + PartPart("AD", "A", "D") + Relation("PartFile", "AF", "A", "F"));
        a = CreateRoot("A");
        ab = Create(a, "AB");
        b = Create(ab, "B");
        bc = Create(b, "BC");
        c = Create(bc, "C");
        ad = Create(a, "AD");
        d = Create(ad, "D");
        af = Create(a, "AF", FILES);
        f = Create(af, "F", FILES);
    }

    void TearDown() override
    {
        a = ab = b = bc = c = ad = d = af = f = NULL_var;
        QTBFaultyRepTreeSession::TearDown();
    }

    static CATListValQTBNodeRelationInfo Displayed(const QTBIRepNode_var& spIRepNode)
    {
        CATListValQTBNodeRelationInfo infos = Relations({USED_IN});
        EXPECT_THAT(spIRepNode->GetPdmRelationsToBeDisplayed(&infos), Succeeds());
        return infos;
    }
    static unsigned char Check(const QTBIRepNode_var& spIRepNode, const QTBNodeRelationInfo& info)
    {
        unsigned char bOk = 2;
        EXPECT_THAT(spIRepNode->CheckPdmRelationToBeDisplayed(info, &bOk), Succeeds());
        return bOk;
    }
    static unsigned char Mark(const QTBIRepNode_var& spIRepNode)
    {
        unsigned char bMark = 2;
        EXPECT_THAT(spIRepNode->GetMarkForRemoval(&bMark), Succeeds());
        return bMark;
    }
    static void SetMark(const QTBIRepNode_var& spIRepNode, unsigned char bMark)
    {
        EXPECT_THAT(spIRepNode->SetMarkForRemoval(&bMark), Succeeds());
    }
    // PDM keys of the marked ones of all rep nodes, sorted.
    std::vector<std::string> Marked() const
    {
        std::vector<std::string> keys;
        for (const CATBaseUnknown_var& spRepNode : AllRepNodesOf(m_spCont)) {
            if (Mark(QTBIRepNode_var(spRepNode)) != FALSE) {
                keys.push_back(KeyOf(PdmNodesOf(spRepNode)[1]));
            }
        }
        std::sort(keys.begin(), keys.end());
        return keys;
    }
    static HRESULT MarkChildren(const QTBIRepNode_var& spIRepNode, const CATListValQTBNodeRelationInfo& infos,
                                unsigned char bRecursive)
    {
        return spIRepNode->MarkChildrenForRemoval(infos, &bRecursive);
    }
    static HRESULT CleanUp(const QTBIRepNode_var& spIRepNode, unsigned char bRecursive)
    {
        return spIRepNode->CleanUpChildren(&bRecursive);
    }
    static std::vector<std::string> DiagnosisOfMarking(const QTBIRepNode_var& spIRepNode, unsigned char bRecursive)
    {
        return DiagnosisOf([&] { return MarkChildren(spIRepNode, Relations({PARTS}), bRecursive); });
    }
    static std::vector<std::string> DiagnosisOfCleanUp(const QTBIRepNode_var& spIRepNode, unsigned char bRecursive)
    {
        return DiagnosisOf([&] { return CleanUp(spIRepNode, bRecursive); });
    }

    QTBIRepNode_var a, ab, b, bc, c, ad, d, af, f;
};

TEST_F(RepNodeRelations, AreSetAndGivenAsAWhole)
{
    EXPECT_THAT(a->SetPdmRelationsToBeDisplayed(Relations({FILES, PARTS, FILES})), Succeeds());
    EXPECT_TRUE(Displayed(a) == Relations({FILES, PARTS, FILES}));
    EXPECT_THAT(a->SetPdmRelationsToBeDisplayed(Relations({})), Succeeds());
    EXPECT_EQ(Displayed(a).Size(), 0);
}

TEST_F(RepNodeRelations, AreReplacedByASingleOne)
{
    EXPECT_THAT(a->SetPdmRelationsToBeDisplayed(Relations({FILES, PARTS})), Succeeds());
    EXPECT_THAT(a->SetSinglePdmRelationToBeDisplayed(USED_IN), Succeeds());
    EXPECT_TRUE(Displayed(a) == Relations({USED_IN}));
    QTBNodeRelationInfo info;
    EXPECT_THAT(a->GetSinglePdmRelationToBeDisplayed(&info), Succeeds());
    EXPECT_TRUE(info == USED_IN);
}

TEST_F(RepNodeRelations, OfAnObjectWithTwoAreNoSingleOne)
{
    QTBNodeRelationInfo info;
    EXPECT_THAT(a->GetSinglePdmRelationToBeDisplayed(&info), FailsAssertion("m_PdmRelationsToBeDisplayed.Size() == 1"));
    EXPECT_THAT(a->SetPdmRelationsToBeDisplayed(Relations({FILES, PARTS})), Succeeds());
    EXPECT_THAT(a->GetSinglePdmRelationToBeDisplayed(&info), FailsAssertion("m_PdmRelationsToBeDisplayed.Size() == 1"));
    EXPECT_THAT(ab->GetSinglePdmRelationToBeDisplayed(nullptr), FailsAssertion("pNodeRelationInfo != NULL"));
}

TEST_F(RepNodeRelations, RememberTheOneToTheLeft)
{
    QTBNodeRelationInfo info;
    EXPECT_THAT(f->GetPdmRelationToLeftNode(&info), Succeeds());
    EXPECT_TRUE(info == FILES);
    EXPECT_THAT(f->SetPdmRelationToLeftNode(USED_IN), Succeeds());
    EXPECT_THAT(f->GetPdmRelationToLeftNode(&info), Succeeds());
    EXPECT_TRUE(info == USED_IN);
    EXPECT_TRUE(Displayed(f) == Relations({})) << "not displayed by that";
}

TEST_F(RepNodeRelations, AreAddedOnce)
{
    EXPECT_THAT(a->AddPdmRelationToBeDisplayed(PARTS), Succeeds());
    {
        const DebugCapture capture;
        EXPECT_THAT(a->AddPdmRelationToBeDisplayed(PARTS), Succeeds());
        EXPECT_THAT(capture.Lines(), ElementsAre("QTBERepNodeOnRepNode::AddPdmRelationToBeDisplayed -> node relation "
                                                 "info can not be added"));
    }
    const DebugCapture capture;
    EXPECT_THAT(a->AddPdmRelationToBeDisplayed(FILES), Succeeds());
    EXPECT_THAT(capture.Lines(), IsEmpty());
    EXPECT_TRUE(Displayed(a) == Relations({PARTS, FILES}));
}

TEST_F(RepNodeRelations, AreAddedOnlyWhenThePdmObjectHasThemOnThatSide)
{
    EXPECT_EQ(Check(a, PARTS), TRUE);
    EXPECT_EQ(Check(a, FILES), TRUE);
    EXPECT_EQ(Check(a, USED_IN), FALSE);
    EXPECT_EQ(Check(b, USED_IN), TRUE);
    EXPECT_EQ(Check(c, PARTS), FALSE);
    EXPECT_EQ(Check(a, QTBNodeRelationInfo("PartDocument", usLEFT_TO_RIGHT)), FALSE);
    EXPECT_THAT(a->AddPdmRelationToBeDisplayed(USED_IN), Succeeds());
    EXPECT_EQ(Displayed(a).Size(), 0);
}

TEST_F(RepNodeRelations, MatchSubclassesOfTheirRelation)
{
    Update(Part("E") + Object("StandardPart", "S") +
           Relation("StandardPartUsage", "ES", "E", "S", "<parentClasses><class>PartPart</class></parentClasses>"));
    const QTBIRepNode_var e = CreateRoot("E");
    EXPECT_EQ(Check(e, PARTS), TRUE);
    EXPECT_EQ(Check(e, QTBNodeRelationInfo("StandardPartUsage", usLEFT_TO_RIGHT)), TRUE);
    EXPECT_EQ(Check(e, QTBNodeRelationInfo("partpart", usLEFT_TO_RIGHT)), FALSE);
}

TEST_F(RepNodeRelations, OfAnUnknownDirectionAreNeverDisplayable)
{
    for (const char* direction : {"", "Sideways", "lefttoright"}) {
        EXPECT_EQ(Check(a, QTBNodeRelationInfo("PartPart", direction)), FALSE) << direction;
    }
}

TEST_F(RepNodeRelations, OfARelationRepNodeAreNeverTwo)
{
    EXPECT_TRUE(Displayed(ab) == Relations({PARTS}));
    EXPECT_EQ(Check(ab, PARTS), FALSE);
    EXPECT_EQ(Check(ab, USED_IN), FALSE);
    EXPECT_EQ(Check(ab, FILES), FALSE);
    EXPECT_THAT(ab->AddPdmRelationToBeDisplayed(USED_IN), Succeeds());
    EXPECT_TRUE(Displayed(ab) == Relations({PARTS}));
}

TEST_F(RepNodeRelations, CheckWhatTheyNeedToBeAdded)
{
    unsigned char bOk = TRUE;
    const auto diagnosis = [&](const QTBIRepNode_var& spIRepNode, const QTBNodeRelationInfo& info) {
        bOk = TRUE;
        return DiagnosisOf([&] { return spIRepNode->CheckPdmRelationToBeDisplayed(info, &bOk); });
    };
    {
        const QTBFault fault("GetFirstNodeOfEachRightPdmRelation", FindNode("A"));
        EXPECT_THAT(diagnosis(a, PARTS),
                    ElementsAre(Call("spINodeRelationsOnPdmNode->GetFirstNodeOfEachRightPdmRelation")));
        EXPECT_EQ(bOk, FALSE);
    }
    {
        const QTBFault fault("GetFirstNodeOfEachLeftPdmRelation", FindNode("B"));
        EXPECT_THAT(diagnosis(b, USED_IN),
                    ElementsAre(Call("spINodeRelationsOnPdmNode->GetFirstNodeOfEachLeftPdmRelation")));
    }
    {
        const QTBFault fault("IsA");
        EXPECT_THAT(diagnosis(a, PARTS), ElementsAre(Call("spIPdmRelNode->IsA")));
        EXPECT_THAT(DiagnosisOf([&] { return a->AddPdmRelationToBeDisplayed(PARTS); }),
                    ElementsAre(Call("spIPdmRelNode->IsA"), Call("CheckPdmRelationToBeDisplayed")));
    }
    // Objects linked without a relation node between them.
    EXPECT_THAT(QTBINodeRelations_var(FindNode("C"))->AddRightNode("PartPart", FindNode("D"), 1, TRUE), Succeeds());
    EXPECT_THAT(diagnosis(c, PARTS), ElementsAre(Handle("spIPdmRelNode")));
    Unlink(b);
    EXPECT_THAT(diagnosis(b, PARTS), ElementsAre(Call("GetPdmNode")));
    const QTBBarePdmObjNodeType bareType;
    LinkToBarePdmNode(b, KeepLoose(bareType.Create()));
    EXPECT_THAT(diagnosis(b, PARTS), ElementsAre(Handle("spINodeRelationsOnPdmNode")));
    QTBINodeRelations_var(b)->RemoveAllRels(nullptr);
}

TEST_F(RepNodeRelations, DisplayedAlreadyAreNotCheckedFurther)
{
    EXPECT_THAT(b->SetSinglePdmRelationToBeDisplayed(PARTS), Succeeds());
    Unlink(b);
    EXPECT_EQ(Check(b, PARTS), FALSE);
}

TEST_F(RepNodeRelations, AreRemovedFirstOneFirst)
{
    EXPECT_THAT(a->SetPdmRelationsToBeDisplayed(Relations({PARTS, FILES, PARTS})), Succeeds());
    EXPECT_THAT(a->RemovePdmRelationToBeDisplayed(PARTS), Succeeds());
    EXPECT_TRUE(Displayed(a) == Relations({FILES, PARTS}));
    const DebugCapture capture;
    EXPECT_THAT(a->RemovePdmRelationToBeDisplayed(USED_IN), Succeeds());
    EXPECT_THAT(capture.Lines(), ElementsAre("QTBERepNodeOnRepNode::RemovePdmRelationToBeDisplayed -> Index == 0 !"));
    EXPECT_TRUE(Displayed(a) == Relations({FILES, PARTS}));
}

TEST_F(RepNodeRelations, KeepTheMark)
{
    EXPECT_EQ(Mark(a), FALSE);
    SetMark(a, TRUE);
    EXPECT_EQ(Mark(a), TRUE);
    SetMark(a, FALSE);
    EXPECT_EQ(Mark(a), FALSE);
    EXPECT_THAT(a->GetMarkForRemoval(nullptr), FailsAssertion("pbMarkForRemoval != NULL"));
}

TEST_F(RepNodeRelations, MarkTheChildrenShownForThem)
{
    EXPECT_THAT(MarkChildren(a, Relations({PARTS}), FALSE), Succeeds());
    EXPECT_THAT(Marked(), ElementsAre("AB", "AD"));
    EXPECT_THAT(MarkChildren(a, Relations({FILES}), FALSE), Succeeds());
    EXPECT_THAT(Marked(), ElementsAre("AB", "AD", "AF"));
}

TEST_F(RepNodeRelations, MarkRelationsOnlyAndWalkThroughObjects)
{
    EXPECT_THAT(MarkChildren(a, Relations({PARTS, FILES}), TRUE), Succeeds());
    EXPECT_THAT(Marked(), ElementsAre("AB", "AD", "AF", "BC"));
}

TEST_F(RepNodeRelations, MarkNothingForRelationsThatNoChildShows)
{
    EXPECT_THAT(MarkChildren(a, Relations({}), TRUE), Succeeds());
    EXPECT_THAT(MarkChildren(a, Relations({USED_IN}), TRUE), Succeeds());
    EXPECT_THAT(MarkChildren(c, Relations({PARTS}), TRUE), Succeeds());
    EXPECT_THAT(Marked(), IsEmpty());
}

TEST_F(RepNodeRelations, MarkTheChildrenOfASingleOne)
{
    unsigned char bRecursive = TRUE;
    EXPECT_THAT(a->MarkChildrenForRemoval(PARTS, &bRecursive), Succeeds());
    EXPECT_THAT(Marked(), ElementsAre("AB", "AD", "BC"));
    EXPECT_THAT(DiagnosisOf([&] { return ab->MarkChildrenForRemoval(PARTS, &bRecursive); }),
                ElementsAre(Assertion("bRepresentsPdmObjNode"), Call("MarkChildrenForRemoval")));
}

TEST_F(RepNodeRelations, CheckWhatTheyNeedToMark)
{
    EXPECT_THAT(DiagnosisOfMarking(ab, FALSE), ElementsAre(Assertion("bRepresentsPdmObjNode")));
    {
        const QTBFault fault("GetRightNodeList", a);
        EXPECT_THAT(DiagnosisOfMarking(a, FALSE),
                    ElementsAre(Call("spINodeRelationsOnThis->GetRightNodeList"), Call("GetDirectChildren")));
    }
    {
        const QTBFault fault("GetSinglePdmRelationToBeDisplayed", ad);
        EXPECT_THAT(DiagnosisOfMarking(a, FALSE),
                    ElementsAre(Call("spIRepNodeOnDirectChild->GetSinglePdmRelationToBeDisplayed"),
                                Call("GetChildRepNodeInfo")));
    }
    {
        const QTBFault fault("SetMarkForRemoval", ad);
        EXPECT_THAT(DiagnosisOfMarking(a, FALSE), ElementsAre(Call("spIRepNodeOnChild->SetMarkForRemoval")));
        EXPECT_THAT(Marked(), ElementsAre("AB")) << "marks made so far stay";
    }
    Unlink(c);
    EXPECT_THAT(DiagnosisOfMarking(c, FALSE), ElementsAre(Call("RepresentsPdmObjNode")));
}

TEST_F(RepNodeRelations, CheckTheAlternationToMarkBelow)
{
    {
        const QTBFault fault("RepresentsPdmRelNode", ab);
        EXPECT_THAT(DiagnosisOfMarking(a, TRUE), ElementsAre(Call("spIRepNodeOnChild->RepresentsPdmRelNode")));
    }
    {
        const QTBFault fault("GetDirectChildren", ab);
        EXPECT_THAT(DiagnosisOfMarking(a, TRUE), ElementsAre(Call("spIRepNodeOnChild->GetDirectChildren")));
    }
    {
        // Marking stops two levels down.
        const QTBFault fault("SetMarkForRemoval", bc);
        EXPECT_THAT(DiagnosisOfMarking(a, TRUE), ElementsAre(Call("spIRepNodeOnChild->SetMarkForRemoval"),
                                                             Call("spIRepNodeOnGrandChild->MarkChildrenForRemoval")));
    }
    EXPECT_THAT(Remove(c), Succeeds());
    EXPECT_THAT(DiagnosisOfMarking(b, TRUE), ElementsAre(Assertion("DirectChildNodes2.Size() == 1")));
    LinkBelow(bc, CreateLoose("QTBNode"));
    EXPECT_THAT(DiagnosisOfMarking(b, TRUE), ElementsAre(Handle("spIRepNodeOnGrandChild")));
    // An object directly below an object.
    const QTBIRepNode_var spObject = Create(d, "C");
    EXPECT_THAT(spObject->SetSinglePdmRelationToBeDisplayed(PARTS), Succeeds());
    EXPECT_THAT(MarkChildren(d, Relations({PARTS}), FALSE), Succeeds());
    EXPECT_THAT(DiagnosisOfMarking(d, TRUE), ElementsAre(Assertion("bRepresentsPdmRelNode")));
}

// Clean-up. The session's action index stands at 10; nodes of action 9 and 10 are recent.
class ChildCleanUp : public RepNodeRelations
{
protected:
    void SetUp() override
    {
        RepNodeRelations::SetUp();
        AdvanceActionIndexTo(10);
        for (const QTBIRepNode_var& spObject : {a, b, d}) {
            EXPECT_THAT(spObject->SetPdmRelationsToBeDisplayed(Relations({PARTS, FILES})), Succeeds());
        }
        for (const char* key : {"AB", "BC", "AD", "AF"}) {
            SetActionIndex(key, 8);
        }
    }
};

TEST_F(ChildCleanUp, KeepsRecentChildrenAndClearsTheirMark)
{
    SetActionIndex("AB", 10);
    SetActionIndex("AD", 9);
    SetMark(ab, TRUE);
    SetMark(ad, TRUE);
    EXPECT_THAT(CleanUp(a, FALSE), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B(BC(C))) AD(D) AF(F))");
    EXPECT_THAT(Marked(), IsEmpty());
}

TEST_F(ChildCleanUp, RemovesMarkedOlderChildrenWithAllBelow)
{
    SetMark(ab, TRUE);
    SetMark(af, TRUE);
    EXPECT_THAT(CleanUp(a, FALSE), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AD(D))");
    EXPECT_EQ(AllRepNodesOf(m_spCont).Size(), 3);
}

TEST_F(ChildCleanUp, KeepsUnmarkedOlderChildren)
{
    EXPECT_THAT(CleanUp(a, FALSE), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B(BC(C))) AD(D) AF(F))");
}

TEST_F(ChildCleanUp, LooksOnlyAtRelationsThatTheNodeDisplays)
{
    EXPECT_THAT(a->SetPdmRelationsToBeDisplayed(Relations({FILES})), Succeeds());
    SetMark(ab, TRUE);
    SetMark(af, TRUE);
    EXPECT_THAT(CleanUp(a, FALSE), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B(BC(C))) AD(D))");
}

TEST_F(ChildCleanUp, GoesOnBelowRecentChildrenOnly)
{
    SetActionIndex("AB", 10);
    SetMark(ab, TRUE);
    SetMark(bc, TRUE);
    EXPECT_THAT(CleanUp(a, FALSE), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B(BC(C))) AD(D) AF(F))") << "not recursive";
    EXPECT_THAT(CleanUp(a, TRUE), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B) AD(D) AF(F))");
}

TEST_F(ChildCleanUp, DoesNotGoBelowOlderChildren)
{
    SetMark(bc, TRUE);
    EXPECT_THAT(CleanUp(a, TRUE), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B(BC(C))) AD(D) AF(F))");
}

TEST_F(ChildCleanUp, AfterMarkingKeepsWhatTheUpdateReadAgain)
{
    EXPECT_THAT(MarkChildren(a, Relations({PARTS, FILES}), TRUE), Succeeds());
    Update(PartPart("AB", "A", "B"));
    EXPECT_THAT(CleanUp(a, TRUE), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B))");
    EXPECT_THAT(Marked(), IsEmpty());
}

TEST_F(ChildCleanUp, ChecksWhatItNeeds)
{
    EXPECT_THAT(DiagnosisOfCleanUp(ab, FALSE), ElementsAre(Assertion("bRepresentsPdmObjNode")));
    {
        const QTBFault fault("GetRightNodeList", a);
        EXPECT_THAT(DiagnosisOfCleanUp(a, FALSE),
                    ElementsAre(Call("spINodeRelationsOnThis->GetRightNodeList"), Call("GetDirectChildren")));
    }
    {
        const QTBFault fault("GetSinglePdmRelationToBeDisplayed", ad);
        EXPECT_THAT(DiagnosisOfCleanUp(a, FALSE),
                    ElementsAre(Call("spIRepNodeOnDirectChild->GetSinglePdmRelationToBeDisplayed"),
                                Call("GetChildRepNodeInfo")));
    }
    {
        const QTBFault fault("GetPdmNodeActionIndex", ad);
        EXPECT_THAT(DiagnosisOfCleanUp(a, FALSE), ElementsAre(Call("spIRepNodeOnChildNode->GetPdmNodeActionIndex"),
                                                              Call("ChildRepNodeInfoList[i].GetChildRepNodes")));
    }
    {
        const QTBFault fault("GetMarkForRemoval", ad);
        EXPECT_THAT(DiagnosisOfCleanUp(a, FALSE), ElementsAre(Call("spIRepNodeOnOlderChildNode->GetMarkForRemoval")));
    }
    SetMark(ab, TRUE);
    SetMark(ad, TRUE);
    {
        const QTBFault fault("RecursiveRemoveRepTree", m_spCont, 1);
        EXPECT_THAT(DiagnosisOfCleanUp(a, FALSE), ElementsAre(Call("spIRepNodeCont->RecursiveRemoveRepTree")));
        EXPECT_EQ(TreeOf(a), "A(AD(D) AF(F))") << "what was removed so far is gone";
    }
    const QTBIRepNode_var spWithoutCont = CreateLooseRepNode("A");
    EXPECT_THAT(DiagnosisOfCleanUp(spWithoutCont, FALSE),
                ElementsAre(Handle("m_spIRepNodeCont"), Call("GetRepNodeContainer")));
    Unlink(c = CreateRoot("C"));
    EXPECT_THAT(DiagnosisOfCleanUp(c, FALSE), ElementsAre(Call("RepresentsPdmObjNode")));
}

TEST_F(ChildCleanUp, ChecksTheAlternationToGoBelow)
{
    SetActionIndex("AB", 10);
    SetActionIndex("BC", 10);
    {
        const QTBFault fault("SetMarkForRemoval", ab);
        EXPECT_THAT(DiagnosisOfCleanUp(a, FALSE), ElementsAre(Call("spIRepNodeOnCurrentChildNode->SetMarkForRemoval")));
    }
    {
        const QTBFault fault("RepresentsPdmRelNode", ab);
        EXPECT_THAT(DiagnosisOfCleanUp(a, TRUE),
                    ElementsAre(Call("spIRepNodeOnCurrentChildNode->RepresentsPdmRelNode")));
    }
    {
        const QTBFault fault("GetDirectChildren", ab);
        EXPECT_THAT(DiagnosisOfCleanUp(a, TRUE), ElementsAre(Call("spIRepNodeOnCurrentChildNode->GetDirectChildren")));
    }
    {
        const QTBFault fault("SetMarkForRemoval", bc);
        EXPECT_THAT(DiagnosisOfCleanUp(a, TRUE), ElementsAre(Call("spIRepNodeOnCurrentChildNode->SetMarkForRemoval"),
                                                             Call("spIRepNodeOnGrandChild->CleanUpChildren")));
    }
    EXPECT_THAT(Remove(c), Succeeds());
    EXPECT_THAT(DiagnosisOfCleanUp(b, TRUE), ElementsAre(Assertion("DirectChildNodes2.Size() == 1")));
    LinkBelow(bc, CreateLoose("QTBNode"));
    EXPECT_THAT(DiagnosisOfCleanUp(b, TRUE), ElementsAre(Handle("spIRepNodeOnGrandChild")));
    SetActionIndex("C", 10);
    const QTBIRepNode_var spObject = Create(d, "C");
    EXPECT_THAT(spObject->SetSinglePdmRelationToBeDisplayed(PARTS), Succeeds());
    EXPECT_THAT(DiagnosisOfCleanUp(d, TRUE), ElementsAre(Assertion("bRepresentsPdmRelNode")));
}

// The grouping of children by relation.
class ChildGroups : public RepNodeRelations
{
protected:
    // "keys of the children of each group", group by group.
    std::vector<std::string> Groups(const CATListValCATBaseUnknown_var& children,
                                    const CATListValQTBNodeRelationInfo& infos)
    {
        CATListValQTBChildRepNodeInfo groups;
        groups.Append(QTBChildRepNodeInfo(USED_IN));
        EXPECT_THAT(Extension(a)->GetChildRepNodeInfo(children, infos, &groups), Succeeds());
        std::vector<std::string> texts;
        for (int i = 1; i <= groups.Size(); ++i) {
            CATListValCATBaseUnknown_var ofGroup;
            EXPECT_THAT(groups[i].GetChildRepNodes(&ofGroup), Succeeds());
            std::string text;
            for (const std::string& key : PdmKeysOf(ofGroup)) {
                text += text.empty() ? key : " " + key;
            }
            texts.push_back(text);
        }
        return texts;
    }
};

TEST_F(ChildGroups, StandInTheOrderOfTheRelations)
{
    EXPECT_THAT(Groups(ChildrenOf(a), Relations({FILES, PARTS})), ElementsAre("AF", "AB AD"));
    EXPECT_THAT(Groups(ChildrenOf(a), Relations({PARTS, FILES})), ElementsAre("AB AD", "AF"));
}

TEST_F(ChildGroups, LeaveRelationsWithoutChildrenOut)
{
    EXPECT_THAT(Groups(ChildrenOf(a), Relations({USED_IN, FILES})), ElementsAre("AF"));
}

TEST_F(ChildGroups, OfNoRelationsAreEmptyWhateverTheChildren)
{
    EXPECT_THAT(Groups(ChildrenOf(a), Relations({})), IsEmpty());
    EXPECT_THAT(Groups(CATListValCATBaseUnknown_var(), Relations({PARTS})), IsEmpty());
}

TEST_F(ChildGroups, OfEqualRelationsHoldTheSameChildren)
{
    EXPECT_THAT(Groups(ChildrenOf(a), Relations({PARTS, PARTS})), ElementsAre("AB AD", "AB AD"));
}

TEST_F(ChildGroups, CheckWhatTheyNeed)
{
    CATListValQTBChildRepNodeInfo groups;
    EXPECT_THAT(Extension(a)->GetChildRepNodeInfo(ChildrenOf(a), Relations({PARTS}), nullptr),
                FailsAssertion("pChildRepNodeInfoList != NULL"));
    CATListValCATBaseUnknown_var children;
    children.Append(CreateLoose("QTBNode"));
    EXPECT_THAT(Extension(a)->GetChildRepNodeInfo(children, Relations({PARTS}), &groups),
                LacksInterface("spIRepNodeOnDirectChild"));
    children.RemoveAll();
    children.Append(CATBaseUnknown_var(a));
    EXPECT_THAT(DiagnosisOf([&] { return Extension(a)->GetChildRepNodeInfo(children, Relations({PARTS}), &groups); }),
                ElementsAre(Assertion("m_PdmRelationsToBeDisplayed.Size() == 1"),
                            Call("spIRepNodeOnDirectChild->GetSinglePdmRelationToBeDisplayed")));
}

} // namespace

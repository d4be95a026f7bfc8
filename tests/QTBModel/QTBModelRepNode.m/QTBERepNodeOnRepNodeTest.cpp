#include "QTBERepNodeOnRepNode.h"

#include <gmock/gmock.h>

#include "CATICreateInstance.h"
#include "QTBRepTreeSession.h"
#include "QTBSchemaRelationship.h"

using QTBDiagnosis::Assertion;
using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosisOf;
using QTBDiagnosis::Handle;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

// A with B and D below, C below B; the trees A(AB(B(BC(C))) AD(D)).
class RepNode : public QTBFaultyRepTreeSession
{
protected:
    void SetUp() override
    {
        QTBFaultyRepTreeSession::SetUp();
        QTBGlobVarsUtil::SetAddNewNodeRelationsAt(QTB_PLACE_TO_ADD_END);
        Update(Part("A") + Part("B") + Part("C") + Part("D") + PartPart("AB", "A", "B") + PartPart("BC", "B", "C") +
               PartPart("AD", "A", "D"));
        a = CreateRoot("A");
        ab = Create(a, "AB");
        b = Create(ab, "B");
        bc = Create(b, "BC");
        c = Create(bc, "C");
        ad = Create(a, "AD");
        d = Create(ad, "D");
    }

    void TearDown() override
    {
        a = ab = b = bc = c = ad = d = NULL_var;
        QTBFaultyRepTreeSession::TearDown();
    }

    static unsigned char IsRoot(const QTBIRepNode_var& spIRepNode)
    {
        unsigned char bIsRoot = 2;
        EXPECT_THAT(spIRepNode->IsRepRootNode(&bIsRoot), Succeeds());
        return bIsRoot;
    }
    static unsigned char IsDefault(const QTBIRepNode_var& spIRepNode)
    {
        unsigned char bIsDefault = 2;
        EXPECT_THAT(spIRepNode->IsRepDefaultNode(&bIsDefault), Succeeds());
        return bIsDefault;
    }
    static std::string DisplayString(const QTBIRepNode_var& spIRepNode)
    {
        CATUnicodeString usText("before");
        EXPECT_THAT(spIRepNode->GetDisplayString(&usText), Succeeds());
        return TextOf(usText);
    }
    static std::vector<std::string> DirectChildren(const QTBIRepNode_var& spIRepNode)
    {
        CATListValCATBaseUnknown_var children;
        EXPECT_THAT(spIRepNode->GetDirectChildren(&children), Succeeds());
        return PdmKeysOf(children);
    }
    static HRESULT TryDirectChildren(const QTBIRepNode_var& spIRepNode)
    {
        CATListValCATBaseUnknown_var children;
        return spIRepNode->GetDirectChildren(&children);
    }

    // A relation rep node with three object rep nodes below, for objects of those action indices.
    QTBIRepNode_var CreateRelationWithThreeObjects(int first, int second, int third)
    {
        const QTBIRepNode_var spRelation = Create(a, "AB");
        Create(Create(Create(spRelation, "B"), "BC"), "C");
        Create(spRelation, "C");
        Create(Create(Create(spRelation, "D"), "AD"), "A");
        SetActionIndex("B", first);
        SetActionIndex("C", second);
        SetActionIndex("D", third);
        return spRelation;
    }

    QTBIRepNode_var a, ab, b, bc, c, ad, d;
};

using Nodes = CATListValCATBaseUnknown_var;

TEST_F(RepNode, IsARootWithoutASingleParent)
{
    EXPECT_EQ(IsRoot(a), TRUE);
    EXPECT_EQ(IsRoot(ab), FALSE);
    EXPECT_EQ(IsRoot(c), FALSE);
    LinkBelow(ad, b);
    EXPECT_EQ(IsRoot(b), TRUE) << "two parents are not one";
    EXPECT_THAT(a->IsRepRootNode(nullptr), FailsAssertion("pbIsRepRootNode != NULL"));
}

TEST_F(RepNode, OfTheDefaultRootIsDefaultNodeAndRootAndGivesThePdmDefaultRoot)
{
    EXPECT_THAT(GetPdmNodeCont()->CreateDefaultRootNode(), Succeeds());
    EXPECT_THAT(m_spCont->CreateDefaultRootNode(), Succeeds());
    const QTBIRepNode_var spDefault = Find("DEFAULT_ROOT_NODE");
    ASSERT_TRUE(spDefault != NULL_var);
    EXPECT_EQ(IsDefault(spDefault), TRUE);
    EXPECT_EQ(IsRoot(spDefault), TRUE);
    EXPECT_EQ(DisplayString(spDefault), "Default Rep Node");
    QTBIPdmNode_var spIPdmNode;
    unsigned char bFound = FALSE;
    EXPECT_THAT(spDefault->GetPdmNode(&spIPdmNode, TRUE, &bFound), Succeeds());
    EXPECT_TRUE(spIPdmNode == FindNode("DEFAULT_ROOT_NODE"));
    EXPECT_EQ(bFound, TRUE);
}

TEST_F(RepNode, IsTheDefaultNodeByTheFirst22CharactersOfItsKey)
{
    const auto isDefault = [this](const char* key) {
        const QTBIRepNode_var spIRepNode = CreateLooseRepNode();
        QTBINodeAttributes_var(spIRepNode)->SetKey(key);
        return IsDefault(spIRepNode) != FALSE;
    };
    EXPECT_TRUE(isDefault("DEFAULT_ROOT_NODE-Rep-"));
    EXPECT_TRUE(isDefault("DEFAULT_ROOT_NODE-Rep-17"));
    EXPECT_TRUE(isDefault("DEFAULT_ROOT_NODE-Rep-x"));
    EXPECT_FALSE(isDefault("DEFAULT_ROOT_NODE-Rep"));
    EXPECT_FALSE(isDefault(""));
    EXPECT_FALSE(isDefault("Default_Root_Node-Rep-1"));
    EXPECT_FALSE(isDefault("XDEFAULT_ROOT_NODE-Rep-1"));
    EXPECT_FALSE(isDefault("DEFAULT_ROOT_NODE_Rep-1"));
    EXPECT_EQ(IsDefault(a), FALSE);
}

TEST_F(RepNode, WithoutAttributesIsNoDefaultNodeCandidate)
{
    const QTBBareRepNodeType bareType;
    const QTBIRepNode_var spBare(bareType.Create());
    unsigned char bIsDefault = TRUE;
    EXPECT_THAT(spBare->IsRepDefaultNode(&bIsDefault), LacksInterface("spINodeAttributesOnThis"));
    EXPECT_EQ(bIsDefault, FALSE);
    const QTBFault fault("GetKey", a);
    EXPECT_THAT(a->IsRepDefaultNode(&bIsDefault), FailsCall("spINodeAttributesOnThis->GetKey"));
}

TEST_F(RepNode, GivesItsParent)
{
    QTBIRepNode_var spParent;
    EXPECT_THAT(b->GetParent(&spParent), Succeeds());
    EXPECT_TRUE(spParent == ab);
}

TEST_F(RepNode, FailsQuietlyToGiveNoneOrSeveralParents)
{
    QTBIRepNode_var spParent = b;
    EXPECT_TRUE(DiagnosisOf([&] { return a->GetParent(&spParent); }).empty());
    EXPECT_TRUE(spParent == NULL_var);
    LinkBelow(ad, b);
    spParent = b;
    EXPECT_THAT(b->GetParent(&spParent), FailsQuietly());
    EXPECT_TRUE(spParent == NULL_var);
}

TEST_F(RepNode, ChecksWhatItNeedsForItsParent)
{
    EXPECT_THAT(b->GetParent(nullptr), FailsAssertion("pspIRepNode != NULL"));
    const QTBBareRepNodeType bareType;
    QTBIRepNode_var spParent;
    EXPECT_THAT(QTBIRepNode_var(bareType.Create())->GetParent(&spParent), LacksInterface("spINodeRelationsOnThis"));
    {
        const QTBFault fault("GetLeftNodeList", b);
        EXPECT_THAT(b->GetParent(&spParent), FailsCall("spINodeRelationsOnThis->GetLeftNodeList"));
    }
    const QTBIRepNode_var spLoose = CreateLooseRepNode();
    LinkBelow(CreateLoose("QTBNode"), spLoose);
    EXPECT_THAT(spLoose->GetParent(&spParent), LacksInterface("*pspIRepNode"));
}

TEST_F(RepNode, GivesTheNearestObjectAbove)
{
    QTBIRepNode_var spObject;
    EXPECT_THAT(b->GetParentObject(&spObject), Succeeds());
    EXPECT_TRUE(spObject == a);
    EXPECT_THAT(ab->GetParentObject(&spObject), Succeeds());
    EXPECT_TRUE(spObject == a);
    EXPECT_THAT(c->GetParentObject(&spObject), Succeeds());
    EXPECT_TRUE(spObject == b);
}

TEST_F(RepNode, OfARootHasNoObjectAboveQuietly)
{
    QTBIRepNode_var spObject = b;
    EXPECT_TRUE(DiagnosisOf([&] { return a->GetParentObject(&spObject); }).empty());
    EXPECT_TRUE(spObject == NULL_var);
    EXPECT_THAT(a->GetParentObject(nullptr), FailsAssertion("pspIRepNodeOnParentObject != NULL"));
}

TEST_F(RepNode, LooksOnlyTwoLevelsUpForAnObject)
{
    const QTBIRepNode_var spLower = Create(ab, "AD");
    const QTBIRepNode_var spLowest = Create(spLower, "D");
    QTBIRepNode_var spObject;
    EXPECT_THAT(spLowest->GetParentObject(&spObject), FailsAssertion("bRepresentsPdmObjNode"));
    EXPECT_THAT(spLower->GetParentObject(&spObject), Succeeds());
    EXPECT_TRUE(spObject == a);
}

TEST_F(RepNode, ChecksTheNodesAboveForAnObject)
{
    QTBIRepNode_var spObject;
    const auto diagnosis = [&] { return DiagnosisOf([&] { return b->GetParentObject(&spObject); }); };
    // A relation as root.
    const QTBIRepNode_var spRelation = CreateRoot("AB");
    const QTBIRepNode_var spBelow = Create(spRelation, "B");
    EXPECT_THAT(DiagnosisOf([&] { return spBelow->GetParentObject(&spObject); }),
                ElementsAre(Call("spIRepNodeOnParent->GetParent")));
    Unlink(a);
    // An object that lost its PDM node cannot tell its children any more, and so is not cleaned up.
    KeepLoose(a);
    EXPECT_THAT(diagnosis(), ElementsAre(Call("(*pspIRepNodeOnParentObject)->RepresentsPdmObjNode")));
    Unlink(ab);
    EXPECT_THAT(diagnosis(), ElementsAre(Call("spIRepNodeOnParent->RepresentsPdmObjNode")));
}

TEST_F(RepNode, GivesItsChildrenInTheirOrder)
{
    EXPECT_THAT(DirectChildren(a), ElementsAre("AB", "AD"));
    EXPECT_THAT(DirectChildren(ab), ElementsAre("B"));
    EXPECT_THAT(DirectChildren(c), IsEmpty());
    Nodes children;
    children.Append(CATBaseUnknown_var(a));
    EXPECT_THAT(c->GetDirectChildren(&children), Succeeds());
    EXPECT_EQ(children.Size(), 0) << "the list is emptied";
}

TEST_F(RepNode, OfARelationKeepsTheFirstChildOfTheNewestAction)
{
    const QTBIRepNode_var spRelation = CreateRelationWithThreeObjects(0, 5, 5);
    const int repNodesBefore = AllRepNodesOf(m_spCont).Size();
    EXPECT_THAT(DirectChildren(spRelation), ElementsAre("C"));
    EXPECT_EQ(TreeOf(spRelation), "AB(C)");
    EXPECT_EQ(AllRepNodesOf(m_spCont).Size(), repNodesBefore - 6) << "the surplus goes with all below";
}

TEST_F(RepNode, OfARelationWithoutAnyActionIndexLosesAllChildren)
{
    const QTBIRepNode_var spRelation = CreateRelationWithThreeObjects(0, 0, 0);
    const int repNodesBefore = AllRepNodesOf(m_spCont).Size();
    EXPECT_THAT(DirectChildren(spRelation), IsEmpty());
    EXPECT_EQ(TreeOf(spRelation), "AB");
    EXPECT_EQ(AllRepNodesOf(m_spCont).Size(), repNodesBefore - 7);
}

TEST_F(RepNode, OfARelationKeepsASingleChildWhateverItsActionIndex)
{
    SetActionIndex("B", 0);
    EXPECT_THAT(DirectChildren(ab), ElementsAre("B"));
}

TEST_F(RepNode, OfAnObjectKeepsAllChildren)
{
    SetActionIndex("AB", 1);
    SetActionIndex("AD", 7);
    EXPECT_THAT(DirectChildren(a), ElementsAre("AB", "AD"));
}

TEST_F(RepNode, TellsWhichSurplusChildrenItRemoves)
{
    const QTBIRepNode_var spRelation = CreateRelationWithThreeObjects(1, 5, 2);
    const DebugCapture capture;
    EXPECT_THAT(TryDirectChildren(spRelation), Succeeds());
    EXPECT_THAT(capture.Lines(),
                ElementsAre("QTBERepNodeOnRepNode::GetDirectChildren -> removing child node with index '3'.",
                            "QTBERepNodeOnRepNode::GetDirectChildren -> not removing child node with index '2'.",
                            "QTBERepNodeOnRepNode::GetDirectChildren -> removing child node with index '1'."));
}

TEST_F(RepNode, ChecksWhatItNeedsForItsChildren)
{
    const auto diagnosis = [](const QTBIRepNode_var& spIRepNode) {
        return DiagnosisOf([&] { return TryDirectChildren(spIRepNode); });
    };
    EXPECT_THAT(a->GetDirectChildren(nullptr), FailsAssertion("pListOfRepNodes != NULL"));
    const QTBBareRepNodeType bareType;
    EXPECT_THAT(diagnosis(QTBIRepNode_var(bareType.Create())), ElementsAre(Handle("spINodeRelationsOnThis")));
    const QTBFault fault("GetRightNodeList", a);
    EXPECT_THAT(diagnosis(a), ElementsAre(Call("spINodeRelationsOnThis->GetRightNodeList")));
}

TEST_F(RepNode, ChecksWhatItNeedsToRemoveSurplusChildren)
{
    const auto diagnosis = [](const QTBIRepNode_var& spIRepNode) {
        return DiagnosisOf([&] { return TryDirectChildren(spIRepNode); });
    };
    const QTBIRepNode_var spRelation = CreateRelationWithThreeObjects(1, 5, 2);
    const QTBIRepNode_var spThird(ChildrenOf(spRelation)[3]);
    {
        const QTBFault fault("RecursiveRemoveRepTree", m_spCont);
        EXPECT_THAT(diagnosis(spRelation), ElementsAre(Call("spIRepNodeCont->RecursiveRemoveRepTree")));
        EXPECT_EQ(TreeOf(spRelation), "AB(B(BC(C)) C D(AD(A)))");
    }
    {
        const QTBFault fault("GetPdmNodeActionIndex", spThird);
        EXPECT_THAT(diagnosis(spRelation), ElementsAre(Call("spIRepNodeOnCurrentChild->GetPdmNodeActionIndex")));
    }
    Unlink(spThird);
    EXPECT_THAT(diagnosis(spRelation),
                ElementsAre(Call("GetPdmNode"), Call("spIRepNodeOnCurrentChild->GetPdmNodeActionIndex")));
    Unlink(spRelation);
    KeepLoose(spRelation);
    EXPECT_THAT(diagnosis(spRelation), ElementsAre(Call("RepresentsPdmRelNode")));

    const QTBIRepNode_var spWithoutCont = CreateLooseRepNode("AB");
    LinkBelow(spWithoutCont, CreateLooseRepNode("B"));
    LinkBelow(spWithoutCont, CreateLooseRepNode("C"));
    EXPECT_THAT(diagnosis(spWithoutCont), ElementsAre(Handle("m_spIRepNodeCont"), Call("GetRepNodeContainer")));
    LinkBelow(spWithoutCont, CreateLoose("QTBNode"));
    EXPECT_THAT(diagnosis(spWithoutCont), ElementsAre(Handle("spIRepNodeOnCurrentChild")));
}

TEST_F(RepNode, OfAnObjectGivesRelationsAndObjectsInParallel)
{
    Nodes relations;
    Nodes objects;
    relations.Append(CATBaseUnknown_var(c));
    objects.Append(CATBaseUnknown_var(c));
    EXPECT_THAT(a->GetDirectChildren(&relations, &objects), Succeeds());
    EXPECT_THAT(PdmKeysOf(relations), ElementsAre("AB", "AD"));
    EXPECT_THAT(PdmKeysOf(objects), ElementsAre("B", "D"));
    EXPECT_THAT(c->GetDirectChildren(&relations, &objects), Succeeds());
    EXPECT_EQ(relations.Size() + objects.Size(), 0);
}

TEST_F(RepNode, ChecksWhatItNeedsForRelationsAndObjects)
{
    Nodes relations;
    Nodes objects;
    EXPECT_THAT(a->GetDirectChildren(nullptr, &objects), FailsAssertion("pListOfRelRepNodes != NULL"));
    EXPECT_THAT(a->GetDirectChildren(&relations, nullptr), FailsAssertion("pListOfObjRepNodes != NULL"));
    const auto diagnosis = [&](const QTBIRepNode_var& spIRepNode) {
        return DiagnosisOf([&] { return spIRepNode->GetDirectChildren(&relations, &objects); });
    };
    EXPECT_THAT(diagnosis(ab), ElementsAre(Assertion("bRepresentsPdmObjNode")));
    {
        const QTBFault fault("GetRightNodeList", a);
        EXPECT_THAT(diagnosis(a),
                    ElementsAre(Call("spINodeRelationsOnThis->GetRightNodeList"), Call("GetDirectChildren")));
    }
    {
        const QTBFault fault("GetDirectChildren", ad);
        EXPECT_THAT(diagnosis(a), ElementsAre(Call("spIRepNodeOnChildRelNode->GetDirectChildren")));
    }
    EXPECT_THAT(Remove(d), Succeeds());
    EXPECT_THAT(diagnosis(a), ElementsAre(Assertion("ChildNodes.Size() == 1")));
    const CATBaseUnknown_var spNoRepNode = CreateLoose("QTBNode");
    LinkBelow(ad, spNoRepNode);
    EXPECT_THAT(diagnosis(a), ElementsAre(Handle("spIRepNodeOnChildObjNode")));
    LinkBelow(c, spNoRepNode);
    EXPECT_THAT(diagnosis(c), ElementsAre(Handle("spIRepNodeOnChildRelNode")));
    Unlink(d = CreateRoot("D"));
    EXPECT_THAT(diagnosis(d), ElementsAre(Call("RepresentsPdmObjNode")));
}

class FilteredChildren : public RepNode
{
protected:
    void SetUp() override
    {
        RepNode::SetUp();
        Update(
            Part("P", Attribute("State", "10")) + Object("StandardPart", "S", Attribute("State", "20")) +
            PartPart("AP", "A", "P", Attribute("InstanceName", "first")) +
            Relation("StandardPartUsage", "AS", "A", "S",
                     Attribute("InstanceName", "second") + "<parentClasses><class>PartPart</class></parentClasses>"));
        Create(Create(a, "AP"), "P");
        Create(Create(a, "AS"), "S");
    }

    static std::vector<std::string> OfClass(const QTBIRepNode_var& spIRepNode, const char* className)
    {
        Nodes children;
        children.Append(CATBaseUnknown_var(spIRepNode));
        EXPECT_THAT(spIRepNode->GetFilteredDirectChildren(className, &children), Succeeds());
        return PdmKeysOf(children);
    }
    static std::vector<std::string> OfValue(const QTBIRepNode_var& spIRepNode, const char* name, const char* value)
    {
        Nodes children;
        children.Append(CATBaseUnknown_var(spIRepNode));
        EXPECT_THAT(spIRepNode->GetFilteredDirectChildren(name, value, &children), Succeeds());
        return PdmKeysOf(children);
    }
};

TEST_F(FilteredChildren, MatchRelationsByInheritance)
{
    EXPECT_THAT(OfClass(a, "PartPart"), ElementsAre("AB", "AD", "AP", "AS"));
    EXPECT_THAT(OfClass(a, "StandardPartUsage"), ElementsAre("AS"));
    EXPECT_THAT(OfClass(a, "PartFile"), IsEmpty());
    EXPECT_THAT(OfClass(c, "PartPart"), IsEmpty());
}

TEST_F(FilteredChildren, MatchObjectsByTheirExactClass)
{
    EXPECT_THAT(OfClass(Find("AS"), "StandardPart"), ElementsAre("S"));
    EXPECT_THAT(OfClass(Find("AS"), "Part"), IsEmpty());
    EXPECT_THAT(OfClass(Find("AP"), "Part"), ElementsAre("P"));
    EXPECT_THAT(OfClass(Find("AP"), "part"), IsEmpty());
}

TEST_F(FilteredChildren, MatchAttributeValuesInTheirDisplayForm)
{
    EXPECT_THAT(OfValue(Find("AP"), "State", "In work"), ElementsAre("P"));
    EXPECT_THAT(OfValue(Find("AP"), "State", "10"), IsEmpty());
    EXPECT_THAT(OfValue(a, "InstanceName", "second"), ElementsAre("AS"));
}

TEST_F(FilteredChildren, LeaveChildrenWithoutTheAttributeOutSilently)
{
    EXPECT_THAT(OfValue(a, "Mass", ""), IsEmpty());
    Unlink(ab);
    EXPECT_THAT(OfValue(a, "InstanceName", "first"), ElementsAre("AP"));
}

TEST_F(FilteredChildren, OfAClassCheckWhatTheyNeed)
{
    Nodes children;
    EXPECT_THAT(a->GetFilteredDirectChildren("Part", nullptr), FailsAssertion("pListOfRepNodes != NULL"));
    const auto diagnosis = [&](const QTBIRepNode_var& spIRepNode) {
        return DiagnosisOf([&] { return spIRepNode->GetFilteredDirectChildren("Part", &children); });
    };
    {
        const QTBFault fault("GetRightNodeList", a);
        EXPECT_THAT(diagnosis(a),
                    ElementsAre(Call("spINodeRelationsOnThis->GetRightNodeList"), Call("GetDirectChildren")));
    }
    {
        const QTBFault fault("GetClassAttr", FindNode("B"));
        EXPECT_THAT(diagnosis(ab), ElementsAre(Call("spIPdmObjNodeOnDirectChild->GetClassAttr")));
    }
    {
        const QTBFault fault("IsA", FindNode("AD"));
        EXPECT_THAT(diagnosis(a), ElementsAre(Call("spIPdmRelNodeOnDirectChild->IsA")));
    }
    Unlink(b);
    EXPECT_THAT(diagnosis(ab), ElementsAre(Call("spIRepNodeOnDirectChild->GetPdmNode")));
    // A PDM node that is neither object nor relation.
    EXPECT_THAT(QTBINodeRelations_var(CreateLoose("QTBPdmNode"))->AddRightNode("PdmToRep", b, 1, TRUE), Succeeds());
    EXPECT_THAT(diagnosis(ab), ElementsAre(Handle("spIPdmRelNodeOnDirectChild")));
    LinkBelow(c, CreateLoose("QTBNode"));
    EXPECT_THAT(diagnosis(c), ElementsAre(Handle("spIRepNodeOnDirectChild")));
}

TEST_F(FilteredChildren, OfAValueCheckWhatTheyNeed)
{
    Nodes children;
    EXPECT_THAT(a->GetFilteredDirectChildren("State", "10", nullptr), FailsAssertion("pListOfRepNodes"));
    const auto diagnosis = [&](const QTBIRepNode_var& spIRepNode) {
        return DiagnosisOf([&] { return spIRepNode->GetFilteredDirectChildren("State", "10", &children); });
    };
    {
        const QTBFault fault("GetRightNodeList", a);
        EXPECT_THAT(diagnosis(a),
                    ElementsAre(Call("spINodeRelationsOnThis->GetRightNodeList"), Call("GetDirectChildren")));
    }
    LinkBelow(c, CreateLoose("QTBNode"));
    EXPECT_THAT(diagnosis(c), ElementsAre(Handle("spIRepNode")));
}

TEST_F(RepNode, AppendsAllDescendantsChildrenFirstThenChildByChild)
{
    Nodes all;
    EXPECT_THAT(a->GetAllChildren(&all), Succeeds());
    EXPECT_THAT(PdmKeysOf(all), ElementsAre("AB", "AD", "B", "BC", "C", "D"));
    EXPECT_THAT(b->GetAllChildren(&all), Succeeds());
    EXPECT_THAT(PdmKeysOf(all), ElementsAre("AB", "AD", "B", "BC", "C", "D", "BC", "C"));
}

TEST_F(RepNode, OfALeafLeavesTheListOfDescendantsUnchanged)
{
    Nodes all;
    all.Append(CATBaseUnknown_var(a));
    EXPECT_THAT(c->GetAllChildren(&all), Succeeds());
    EXPECT_THAT(PdmKeysOf(all), ElementsAre("A"));
}

TEST_F(RepNode, ReportsAFailureBelowThroughEveryLevel)
{
    Nodes all;
    EXPECT_THAT(a->GetAllChildren(nullptr), FailsAssertion("pListOfRepNodes"));
    const auto diagnosis = [&] { return DiagnosisOf([&] { return a->GetAllChildren(&all); }); };
    {
        const QTBFault fault("GetRightNodeList", a);
        EXPECT_THAT(diagnosis(),
                    ElementsAre(Call("spINodeRelationsOnThis->GetRightNodeList"), Call("GetDirectChildren")));
    }
    {
        const QTBFault fault("GetRightNodeList", b);
        EXPECT_THAT(diagnosis(), ElementsAre(Call("spINodeRelationsOnThis->GetRightNodeList"),
                                             Call("GetDirectChildren"), Call("spIRepNodeOnDirectChild->GetAllChildren"),
                                             Call("spIRepNodeOnDirectChild->GetAllChildren")));
    }
    const CATBaseUnknown_var spNoRepNode = CreateLoose("QTBNode");
    LinkBelow(b, spNoRepNode);
    all.RemoveAll();
    EXPECT_THAT(diagnosis(),
                ElementsAre(Handle("spIRepNodeOnDirectChild"), Call("spIRepNodeOnDirectChild->GetAllChildren"),
                            Call("spIRepNodeOnDirectChild->GetAllChildren")));
    EXPECT_THAT(PdmKeysOf(all), ElementsAre("AB", "AD", "B", "BC", "?", "C")) << "what was found so far stays";
    QTBINodeRelations_var(b)->RemoveRightNode("RepToRep", spNoRepNode);
    LinkBelow(a, spNoRepNode);
    EXPECT_THAT(diagnosis(), ElementsAre(Handle("spIRepNodeOnDirectChild")));
}

TEST_F(RepNode, FindsItsPdmNodeByItsLink)
{
    QTBIPdmNode_var spIPdmNode;
    unsigned char bFound = FALSE;
    EXPECT_THAT(b->GetPdmNode(&spIPdmNode, FALSE, &bFound), Succeeds());
    EXPECT_TRUE(spIPdmNode == FindNode("B"));
    EXPECT_EQ(bFound, TRUE);
    spIPdmNode = NULL_var;
    EXPECT_THAT(ab->GetPdmNode(&spIPdmNode, TRUE, nullptr), Succeeds());
    EXPECT_TRUE(spIPdmNode == FindNode("AB"));
}

TEST_F(RepNode, FindsItsPdmNodeByTheKeptKeyWhenTheLinkIsGone)
{
    Unlink(b);
    EXPECT_THAT(b->AddPdmNodeKeyForDebug("B"), Succeeds());
    QTBIPdmNode_var spIPdmNode;
    unsigned char bFound = TRUE;
    EXPECT_THAT(b->GetPdmNode(&spIPdmNode, TRUE, &bFound), Succeeds());
    EXPECT_TRUE(spIPdmNode == FindNode("B"));
    EXPECT_EQ(bFound, FALSE) << "not found by its link";
    EXPECT_THAT(b->GetPdmNode(&spIPdmNode, FALSE, nullptr), Succeeds());
}

TEST_F(RepNode, FailsPlainlyWhenItsPdmNodeIsGone)
{
    Unlink(b);
    QTBIPdmNode_var spIPdmNode = PdmNode("A");
    unsigned char bFound = TRUE;
    EXPECT_EQ(b->GetPdmNode(&spIPdmNode, TRUE, &bFound), E_FAIL);
    EXPECT_TRUE(spIPdmNode == NULL_var);
    EXPECT_EQ(bFound, FALSE);
    EXPECT_THAT(b->AddPdmNodeKeyForDebug("unknown"), Succeeds());
    EXPECT_EQ(b->GetPdmNode(&spIPdmNode, FALSE, nullptr), E_FAIL);
}

TEST_F(RepNode, ChecksItsLinkToThePdmNode)
{
    QTBIPdmNode_var spIPdmNode;
    EXPECT_THAT(b->GetPdmNode(nullptr, FALSE, nullptr), FailsAssertion("pspIPdmNode!=NULL"));
    const QTBBareRepNodeType bareType;
    EXPECT_THAT(QTBIRepNode_var(bareType.Create())->GetPdmNode(&spIPdmNode, FALSE, nullptr),
                LacksInterface("spINodeRelationsOnThis"));
    {
        const QTBFault fault("GetLeftNodeList", b);
        EXPECT_THAT(b->GetPdmNode(&spIPdmNode, FALSE, nullptr), FailsCall("spINodeRelationsOnThis->GetLeftNodeList"));
    }
    EXPECT_THAT(QTBINodeRelations_var(FindNode("C"))->AddRightNode("PdmToRep", b, 1, TRUE), Succeeds());
    EXPECT_THAT(b->GetPdmNode(&spIPdmNode, FALSE, nullptr), FailsAssertion("Size <= 1"));
    const QTBIRepNode_var spLoose = CreateLooseRepNode();
    EXPECT_THAT(QTBINodeRelations_var(CreateLoose("QTBNode"))->AddRightNode("PdmToRep", spLoose, 1, TRUE), Succeeds());
    EXPECT_THAT(spLoose->GetPdmNode(&spIPdmNode, FALSE, nullptr), LacksInterface("*pspIPdmNode"));
}

TEST_F(RepNode, TellsOnlyAtTheHighestTraceLevelThatItsPdmNodeIsGone)
{
    const char* first = "QTBERepNodeOnRepNode::GetPdmNode -> Could not retrieve PDM Node (1)";
    const char* second = "QTBERepNodeOnRepNode::GetPdmNode -> Could not retrieve PDM Node (2)";
    QTBIPdmNode_var spIPdmNode;
    Unlink(b);
    EXPECT_THAT(b->AddPdmNodeKeyForDebug("unknown"), Succeeds());
    {
        const DebugCapture capture(3);
        EXPECT_EQ(b->GetPdmNode(&spIPdmNode, TRUE, nullptr), E_FAIL);
        EXPECT_THAT(capture.Lines(), Contains(first));
        EXPECT_THAT(capture.Lines(), Contains(second));
        EXPECT_THAT(capture.Lines(), Contains("Debug Info for Rep Node:[" + KeyOf(b) + "]").Times(2));
    }
    for (const int traceLevel : {0, 1, 2, 4}) {
        const DebugCapture capture(traceLevel);
        EXPECT_EQ(b->GetPdmNode(&spIPdmNode, TRUE, nullptr), E_FAIL);
        EXPECT_THAT(capture.Lines(), Not(Contains(first))) << traceLevel;
    }
    {
        const DebugCapture capture(3);
        EXPECT_EQ(b->GetPdmNode(&spIPdmNode, FALSE, nullptr), E_FAIL);
        EXPECT_THAT(capture.Lines(), Not(Contains(first)));
        EXPECT_THAT(capture.Lines(), Not(Contains(second)));
    }
    EXPECT_THAT(b->AddPdmNodeKeyForDebug("B"), Succeeds());
    {
        const DebugCapture capture(3);
        EXPECT_THAT(b->GetPdmNode(&spIPdmNode, TRUE, nullptr), Succeeds());
        EXPECT_THAT(capture.Lines(), Contains(first));
        EXPECT_THAT(capture.Lines(), Not(Contains(second)));
    }
}

TEST_F(RepNode, OfTheDefaultRootTellsItsLossOnlyOnce)
{
    const QTBIRepNode_var spDefault = CreateLooseRepNode();
    QTBINodeAttributes_var(spDefault)->SetKey("DEFAULT_ROOT_NODE-Rep-1");
    QTBIPdmNode_var spIPdmNode;
    const DebugCapture capture(3);
    EXPECT_EQ(spDefault->GetPdmNode(&spIPdmNode, TRUE, nullptr), E_FAIL);
    EXPECT_THAT(capture.Lines(), Contains("QTBERepNodeOnRepNode::GetPdmNode -> Could not retrieve PDM Node (1)"));
    EXPECT_THAT(capture.Lines(), Contains("Is default rep node").Times(1));
    EXPECT_THAT(capture.Lines(), Not(Contains("QTBERepNodeOnRepNode::GetPdmNode -> Could not retrieve PDM Node (2)")));
}

TEST_F(RepNode, FailsWithItsDebugInfoAtTheHighestTraceLevel)
{
    // Without a key the PDM node cannot be searched for, which ends the debug info and with it the look-up.
    Unlink(b);
    QTBIPdmNode_var spIPdmNode;
    const DebugCapture capture(3);
    EXPECT_THAT(b->GetPdmNode(&spIPdmNode, TRUE, nullptr), FailsCall("GetPdmNodeByKey"));
    EXPECT_THAT(QTBDiagnosis::DiagnosesIn(capture), ElementsAre(Call("GetPdmNodeByKey"), Call("PrintDebugInfo")));
}

TEST_F(RepNode, FailsWithTheDefaultNodeQuestionWhenItsKeyCannotBeRead)
{
    Unlink(b);
    QTBIPdmNode_var spIPdmNode;
    const QTBFault fault("GetKey", b);
    EXPECT_THAT(DiagnosisOf([&] { return b->GetPdmNode(&spIPdmNode, FALSE, nullptr); }),
                ElementsAre(Call("spINodeAttributesOnThis->GetKey"), Call("IsRepDefaultNode")));
}

TEST_F(RepNode, LooksForItsPdmNodeByTheKeptKey)
{
    QTBIPdmNode_var spIPdmNode;
    unsigned char bExists = FALSE;
    EXPECT_THAT(Extension(b)->GetPdmNodeByKey(&spIPdmNode, &bExists), FailsQuietly());
    EXPECT_THAT(b->AddPdmNodeKeyForDebug("C"), Succeeds());
    EXPECT_THAT(Extension(b)->GetPdmNodeByKey(&spIPdmNode, &bExists), Succeeds());
    EXPECT_EQ(bExists, TRUE);
    EXPECT_TRUE(spIPdmNode == FindNode("C"));
    EXPECT_THAT(b->AddPdmNodeKeyForDebug("unknown"), Succeeds());
    EXPECT_THAT(Extension(b)->GetPdmNodeByKey(&spIPdmNode, &bExists), Succeeds());
    EXPECT_EQ(bExists, FALSE);
    EXPECT_TRUE(spIPdmNode == NULL_var);
}

TEST_F(RepNode, ChecksWhatItNeedsToLookForItsPdmNode)
{
    QTBIPdmNode_var spIPdmNode;
    unsigned char bExists = FALSE;
    EXPECT_THAT(Extension(b)->GetPdmNodeByKey(nullptr, &bExists), FailsAssertion("pspIPdmNode != NULL"));
    EXPECT_THAT(Extension(b)->GetPdmNodeByKey(&spIPdmNode, nullptr), FailsAssertion("pbNodeExists != NULL"));
    EXPECT_THAT(b->AddPdmNodeKeyForDebug("B"), Succeeds());
    const QTBFault fault("GetPdmNodeByKey");
    EXPECT_THAT(Extension(b)->GetPdmNodeByKey(&spIPdmNode, &bExists), FailsCall("spIPdmNodeCont->GetPdmNodeByKey"));
}

TEST_F(RepNode, FailsToLookForItsPdmNodeWithoutASession)
{
    const QTBIRepNode_var spLoose = CreateLooseRepNode();
    EXPECT_THAT(spLoose->AddPdmNodeKeyForDebug("B"), Succeeds());
    QTBGlobVarsUtil::EndSession();
    const QTBReplacedExtension withoutFactory("QTBPdmNodeCont", CATICreateInstance::MetaObject(), nullptr);
    QTBIPdmNode_var spIPdmNode;
    unsigned char bExists = FALSE;
    EXPECT_THAT(Extension(spLoose)->GetPdmNodeByKey(&spIPdmNode, &bExists),
                FailsCall("QTBGlobVarsUtil::GetGlobalPdmNodeContainer"));
    EXPECT_EQ(spLoose->GetPdmNode(&spIPdmNode, FALSE, nullptr), E_FAIL);
}

TEST_F(RepNode, FindsItselfInItsContainer)
{
    QTBIRepNode_var spIRepNode;
    unsigned char bExists = FALSE;
    EXPECT_THAT(Extension(b)->GetRepNodeByKey(&spIRepNode, &bExists), Succeeds());
    EXPECT_EQ(bExists, TRUE);
    EXPECT_TRUE(spIRepNode == b);
    EXPECT_THAT(Remove(b), Succeeds());
    EXPECT_THAT(Extension(b)->GetRepNodeByKey(&spIRepNode, &bExists), Succeeds());
    EXPECT_EQ(bExists, FALSE);
}

TEST_F(RepNode, ChecksWhatItNeedsToFindItself)
{
    QTBIRepNode_var spIRepNode;
    unsigned char bExists = FALSE;
    EXPECT_THAT(Extension(b)->GetRepNodeByKey(nullptr, &bExists), FailsAssertion("pspIRepNode != NULL"));
    EXPECT_THAT(Extension(b)->GetRepNodeByKey(&spIRepNode, nullptr), FailsAssertion("pbNodeExists != NULL"));
    EXPECT_THAT(Extension(CreateLooseRepNode())->GetRepNodeByKey(&spIRepNode, &bExists),
                LacksInterface("m_spIRepNodeCont"));
    const QTBBareRepNodeType bareType;
    const QTBIRepNode_var spBare(bareType.Create());
    EXPECT_THAT(spBare->SetRepNodeContainer(m_spCont), Succeeds());
    EXPECT_THAT(Extension(spBare)->GetRepNodeByKey(&spIRepNode, &bExists), LacksInterface("spINodeAttributesOnThis"));
    {
        const QTBFault fault("GetKey", b);
        EXPECT_THAT(Extension(b)->GetRepNodeByKey(&spIRepNode, &bExists), FailsCall("spINodeAttributesOnThis->GetKey"));
    }
    const QTBFault fault("GetRepNodeByKey", m_spCont);
    EXPECT_THAT(Extension(b)->GetRepNodeByKey(&spIRepNode, &bExists), FailsCall("spIRepNodeCont->GetRepNodeByKey"));
}

TEST_F(RepNode, GivesTheKeyOfItsPdmNode)
{
    CATUnicodeString usKey;
    EXPECT_THAT(ab->GetPdmNodeKey(&usKey), Succeeds());
    EXPECT_EQ(usKey, "AB");
    Unlink(ab);
    EXPECT_TRUE(DiagnosisOf([&] { return ab->GetPdmNodeKey(&usKey); }).empty());
    {
        const QTBFault fault("GetKey", FindNode("B"));
        EXPECT_THAT(b->GetPdmNodeKey(&usKey), FailsCall("spINodeAttributesOnPdmNode->GetKey"));
    }
    const QTBBarePdmObjNodeType bareType;
    LinkToBarePdmNode(ab, KeepLoose(bareType.Create()));
    EXPECT_THAT(ab->GetPdmNodeKey(&usKey), LacksInterface("spINodeAttributesOnPdmNode"));
    QTBINodeRelations_var(ab)->RemoveAllRels(nullptr);
}

TEST_F(RepNode, GivesAttributesOfItsPdmNodeInTheirDisplayForm)
{
    Update(Part("P", Attribute("State", "30") + R"(<a name="Names" type="list"><v>x</v></a>)"));
    const QTBIRepNode_var spPart = CreateRoot("P");
    CATUnicodeString usValue;
    EXPECT_THAT(spPart->GetPdmNodeAttributeValue("State", &usValue), Succeeds());
    EXPECT_EQ(usValue, "Released");
    EXPECT_TRUE(FAILED(spPart->GetPdmNodeAttributeValue("Names", &usValue))) << "lists do not stand in for strings";
    const QTBFault fault("GetStringAttributeValue", FindNode("P"));
    EXPECT_THAT(spPart->GetPdmNodeAttributeValue("State", &usValue),
                FailsCall("spINodeAttributesOnPdmNode->GetStringAttributeValue"));
}

TEST_F(RepNode, ChecksWhatItNeedsForAttributesOfItsPdmNode)
{
    CATUnicodeString usValue;
    Unlink(b);
    EXPECT_THAT(b->GetPdmNodeAttributeValue("State", &usValue), FailsCall("GetPdmNode"));
    const QTBBarePdmObjNodeType bareType;
    LinkToBarePdmNode(b, KeepLoose(bareType.Create()));
    EXPECT_THAT(b->GetPdmNodeAttributeValue("State", &usValue), LacksInterface("spINodeAttributesOnPdmNode"));
    QTBINodeRelations_var(b)->RemoveAllRels(nullptr);
}

TEST_F(RepNode, GivesTheClassOfItsPdmNode)
{
    CATUnicodeString usClassName;
    EXPECT_THAT(b->GetPdmNodeClassName(&usClassName), Succeeds());
    EXPECT_EQ(usClassName, "Part");
    EXPECT_THAT(ab->GetPdmNodeClassName(&usClassName), Succeeds());
    EXPECT_EQ(usClassName, "PartPart");
    {
        const QTBFault fault("GetClassName", FindNode("B"));
        EXPECT_THAT(b->GetPdmNodeClassName(&usClassName), FailsCall("spIPdmNode->GetClassName"));
    }
    Unlink(b);
    EXPECT_THAT(b->GetPdmNodeClassName(&usClassName), FailsCall("GetPdmNode"));
}

TEST_F(RepNode, KnowsWhetherItRepresentsAnObjectOrARelation)
{
    unsigned char bObject = 2;
    unsigned char bRelation = 2;
    EXPECT_THAT(b->RepresentsPdmObjNode(&bObject), Succeeds());
    EXPECT_THAT(b->RepresentsPdmRelNode(&bRelation, nullptr), Succeeds());
    EXPECT_EQ(bObject, TRUE);
    EXPECT_EQ(bRelation, FALSE);
    EXPECT_THAT(ab->RepresentsPdmObjNode(&bObject), Succeeds());
    EXPECT_THAT(ab->RepresentsPdmRelNode(&bRelation, nullptr), Succeeds());
    EXPECT_EQ(bObject, FALSE);
    EXPECT_EQ(bRelation, TRUE);
    EXPECT_THAT(b->RepresentsPdmObjNode(nullptr), FailsAssertion("pbRepresentsPdmObjNode != NULL"));
    EXPECT_THAT(b->RepresentsPdmRelNode(nullptr, nullptr), FailsAssertion("pbRepresentsPdmRelNode != NULL"));
    Unlink(b);
    EXPECT_EQ(b->RepresentsPdmObjNode(&bObject), E_FAIL) << "passed on unchanged";
    EXPECT_EQ(b->RepresentsPdmRelNode(&bRelation, nullptr), E_FAIL);
}

TEST_F(RepNode, TellsRelationsOfSeveralInstancesOnlyForRelations)
{
    Update(PartPart("AC", "A", "C", R"(<a name="InstanceName" type="list"><v>C.1</v><v>C.2</v></a>)"));
    unsigned char bRelation = 2;
    unsigned char bMulti = 2;
    EXPECT_THAT(Create(a, "AC")->RepresentsPdmRelNode(&bRelation, &bMulti), Succeeds());
    EXPECT_EQ(bMulti, TRUE);
    EXPECT_THAT(ab->RepresentsPdmRelNode(&bRelation, &bMulti), Succeeds());
    EXPECT_EQ(bMulti, FALSE);
    bMulti = 2;
    EXPECT_THAT(b->RepresentsPdmRelNode(&bRelation, &bMulti), Succeeds());
    EXPECT_EQ(bMulti, 2) << "not touched for an object";
    const QTBBarePdmRelNodeType bareType;
    const QTBIRepNode_var spLoose = CreateLooseRepNode();
    LinkToBarePdmNode(spLoose, KeepLoose(bareType.Create()));
    EXPECT_THAT(spLoose->RepresentsPdmRelNode(&bRelation, &bMulti), FailsCall("QTBInfoUtil::IsMultiQuantityRelation"));
    EXPECT_THAT(spLoose->RepresentsPdmRelNode(&bRelation, nullptr), Succeeds());
}

TEST_F(RepNode, OfAnObjectShowsItsDescription)
{
    Update(Part("P", Attribute("PartNumber", "4711") + Attribute("Name", "Bolt")));
    CATUnicodeString usDescription;
    EXPECT_THAT(PdmNode("P")->GetDescriptionString(&usDescription), Succeeds());
    EXPECT_EQ(DisplayString(CreateRoot("P")), TextOf(usDescription));
    EXPECT_EQ(TextOf(usDescription).find("4711, Bolt"), 0U);
}

TEST_F(RepNode, OfARelationShowsRelationshipAndDescription)
{
    Update(PartPart("AC", "A", "C", Attribute("InstanceName", "C.1")));
    EXPECT_EQ(DisplayString(Create(a, "AC")), "Consists of (C.1)");
    EXPECT_EQ(DisplayString(Create(c, "AC", USED_IN)), "Is used in (C.1)");
    EXPECT_EQ(DisplayString(Create(a, "AC", QTBNodeRelationInfo("PartPart", "Sideways"))),
              "RELATIONSHIP_UNDEFINED (C.1)");
    const QTBFault fault("GetDescriptionString", FindNode("AC"), 0, QTBFault::DoesNothing);
    EXPECT_EQ(DisplayString(Create(a, "AC")), "Consists of") << "no brackets around an empty description";
}

TEST_F(RepNode, ShowsItsOwnKeyWhenItsPdmNodeVanished)
{
    Unlink(b);
    const DebugCapture capture;
    EXPECT_EQ(DisplayString(b), KeyOf(b) + ": PDM node not found!");
    EXPECT_THAT(
        capture.Lines(),
        ElementsAre("QTBERepNodeOnRepNode::GetDisplayString -> GetPdmNode not successful -> no display string"));
}

TEST_F(RepNode, ChecksWhatItNeedsForItsDisplayString)
{
    CATUnicodeString usText;
    const auto diagnosis = [&](const QTBIRepNode_var& spIRepNode) {
        usText = "before";
        return DiagnosisOf([&] { return spIRepNode->GetDisplayString(&usText); });
    };
    EXPECT_THAT(b->GetDisplayString(nullptr), FailsAssertion("pusDisplayString != NULL"));
    const QTBBareRepNodeType bareType;
    EXPECT_THAT(diagnosis(QTBIRepNode_var(bareType.Create())),
                ElementsAre(Handle("spINodeAttributesOnThis"), Call("IsRepDefaultNode")));
    EXPECT_EQ(usText, "") << "emptied first";
    {
        // The second look at the links is the question for a relation.
        const QTBFault fault("GetLeftNodeList", b, 1);
        EXPECT_THAT(diagnosis(b),
                    ElementsAre(Call("spINodeRelationsOnThis->GetLeftNodeList"), Call("RepresentsPdmRelNode")));
    }
    {
        const QTBFault fault("GetDescriptionString", FindNode("B"));
        EXPECT_THAT(diagnosis(b), ElementsAre(Call("spIPdmNode->GetDescriptionString")));
    }
    {
        const QTBFault fault("GetSchemaRelationPtr", FindNode("AB"));
        EXPECT_THAT(diagnosis(ab),
                    ElementsAre(Call("spIPdmRelNode->GetSchemaRelationPtr"), Call("GetRelationshipName")));
    }
    Unlink(b);
    // The key is read to know the default node, again for the PDM node, and then for the text.
    const QTBFault fault("GetKey", b, 2);
    EXPECT_THAT(diagnosis(b), ElementsAre(Call("spINodeAttributesOnThis->GetKey")));
}

class RelationshipName : public RepNode
{
protected:
    std::vector<std::string> Diagnosis(const QTBIRepNode_var& spIRepNode)
    {
        CATUnicodeString usName;
        return DiagnosisOf([&] { return Extension(a)->GetRelationshipName(spIRepNode, &usName); });
    }
};

TEST_F(RelationshipName, IsTheDisplayNameOfTheDirection)
{
    CATUnicodeString usName;
    EXPECT_THAT(Extension(a)->GetRelationshipName(ab, &usName), Succeeds());
    EXPECT_EQ(usName, "Consists of");
    EXPECT_THAT(ab->SetSinglePdmRelationToBeDisplayed(USED_IN), Succeeds());
    EXPECT_THAT(Extension(a)->GetRelationshipName(ab, &usName), Succeeds());
    EXPECT_EQ(usName, "Is used in");
    EXPECT_THAT(ab->SetSinglePdmRelationToBeDisplayed(QTBNodeRelationInfo("PartPart", "")), Succeeds());
    EXPECT_THAT(Extension(a)->GetRelationshipName(ab, &usName), Succeeds());
    EXPECT_EQ(usName, "RELATIONSHIP_UNDEFINED");
}

TEST_F(RelationshipName, ChecksWhatItNeeds)
{
    EXPECT_THAT(Extension(a)->GetRelationshipName(ab, nullptr), FailsAssertion("pusRelationshipName != NULL"));
    EXPECT_THAT(Diagnosis(b), ElementsAre(Assertion("m_PdmRelationsToBeDisplayed.Size() == 1"),
                                          Call("spIRepNode->GetSinglePdmRelationToBeDisplayed")));
    EXPECT_THAT(b->SetSinglePdmRelationToBeDisplayed(PARTS), Succeeds());
    EXPECT_THAT(Diagnosis(b), ElementsAre(Handle("spIPdmRelNode")));
    {
        const QTBFault fault("GetSchemaRelationPtr", FindNode("AB"), 0, QTBFault::DoesNothing);
        EXPECT_THAT(Diagnosis(ab), ElementsAre(Assertion("pSchemaRelation != NULL")));
    }
    Unlink(b);
    EXPECT_THAT(Diagnosis(b), ElementsAre(Call("spIRepNode->GetPdmNode")));
}

TEST_F(RelationshipName, ChecksThatTheSchemaNamesTheDirection)
{
    LoadEditedSchema({{R"(<leftToRight name="is stored in" nlsKey="Relation.PartFile.LeftToRight"/>)", ""},
                      {R"(<rightToLeft name="documents" nlsKey="Relation.PartDocument.RightToLeft"/>)", ""}});
    Update(Object("CATPartFile", "F") + Object("Document", "Doc") + Relation("PartFile", "AF", "A", "F") +
           Relation("PartDocument", "ADoc", "A", "Doc"));
    EXPECT_THAT(Diagnosis(Create(a, "AF", FILES)), ElementsAre(Assertion("pLeftToRightRelationship != NULL")));
    EXPECT_THAT(Diagnosis(Create(a, "ADoc", QTBNodeRelationInfo("PartDocument", usRIGHT_TO_LEFT))),
                ElementsAre(Assertion("pRightToLeftRelationship != NULL")));
}

TEST_F(RelationshipName, OfASchemaRecordIsItsTextOrItsName)
{
    const auto nameOf = [](const QTBSchemaRelationship* pRelationship) {
        return TextOf(QTBERepNodeOnRepNode::GetSchemaRelationshipDisplayName(pRelationship));
    };
    EXPECT_EQ(nameOf(nullptr), "Error");
    const QTBSchemaRelationship withText("name", "Relation.PartPart.LeftToRight", "");
    EXPECT_EQ(nameOf(&withText), "Consists of");
    const QTBSchemaRelationship withoutText("name", "Relation.Unknown", "");
    EXPECT_EQ(nameOf(&withoutText), "name");
    const QTBSchemaRelationship withoutKey("name", "", "");
    EXPECT_EQ(nameOf(&withoutKey), "name");
}

TEST_F(RepNode, KnowsItsContainer)
{
    QTBIRepNodeCont_var spCont;
    EXPECT_THAT(b->GetRepNodeContainer(&spCont), Succeeds());
    EXPECT_TRUE(spCont == m_spCont);
    int id = -1;
    int idOfCont = -2;
    EXPECT_THAT(b->GetContainerId(&id), Succeeds());
    EXPECT_THAT(m_spCont->GetId(&idOfCont), Succeeds());
    EXPECT_EQ(id, idOfCont);
    const QTBIRepNodeCont_var spOther = CreateCont();
    const QTBIRepNode_var spLoose = CreateLooseRepNode();
    EXPECT_THAT(spLoose->SetRepNodeContainer(spOther), Succeeds());
    EXPECT_THAT(spLoose->GetRepNodeContainer(&spCont), Succeeds());
    EXPECT_TRUE(spCont == spOther);
}

TEST_F(RepNode, ChecksItsContainer)
{
    const QTBIRepNode_var spLoose = CreateLooseRepNode();
    QTBIRepNodeCont_var spCont;
    int id = -1;
    EXPECT_THAT(b->SetRepNodeContainer(NULL_var), LacksInterface("spIRepNodeCont"));
    EXPECT_THAT(b->GetRepNodeContainer(nullptr), FailsAssertion("pspIRepNodeCont != NULL"));
    EXPECT_THAT(spLoose->GetRepNodeContainer(&spCont), LacksInterface("m_spIRepNodeCont"));
    EXPECT_THAT(DiagnosisOf([&] { return spLoose->GetContainerId(&id); }),
                ElementsAre(Handle("m_spIRepNodeCont"), Call("GetRepNodeContainer")));
    EXPECT_THAT(DiagnosisOf([&] { return b->GetContainerId(nullptr); }),
                ElementsAre(Assertion("pId != NULL"), Call("spIRepNodeCont->GetId")));
}

TEST_F(RepNode, GivesTheActionIndexOfItsPdmNode)
{
    SetActionIndex("B", 17);
    int index = -1;
    EXPECT_THAT(b->GetPdmNodeActionIndex(&index), Succeeds());
    EXPECT_EQ(index, 17);
    EXPECT_THAT(b->GetPdmNodeActionIndex(nullptr), FailsAssertion("pActionIndex != NULL"));
    Unlink(b);
    EXPECT_THAT(b->GetPdmNodeActionIndex(&index), FailsCall("GetPdmNode"));
    const QTBBarePdmObjNodeType bareType;
    LinkToBarePdmNode(b, KeepLoose(bareType.Create()));
    EXPECT_THAT(b->GetPdmNodeActionIndex(&index), FailsCall("QTBInfoUtil::GetActionIndex"));
    QTBINodeRelations_var(b)->RemoveAllRels(nullptr);
}

TEST_F(RepNode, KnowsWhetherTheCurrentActionAffectsItsPdmNode)
{
    unsigned char bIsAffected = 2;
    EXPECT_THAT(b->PdmNodeIsIsAffectedByCurrentAction(&bIsAffected), Succeeds());
    EXPECT_EQ(bIsAffected, TRUE);
    Update(Part("A"));
    EXPECT_THAT(b->PdmNodeIsIsAffectedByCurrentAction(&bIsAffected), Succeeds());
    EXPECT_EQ(bIsAffected, FALSE);
    EXPECT_THAT(DiagnosisOf([&] { return b->PdmNodeIsIsAffectedByCurrentAction(nullptr); }),
                ElementsAre(Assertion("pbIsAffected != NULL"), Call("spIPdmNode->IsAffectedByCurrentAction")));
    Unlink(b);
    EXPECT_THAT(b->PdmNodeIsIsAffectedByCurrentAction(&bIsAffected), FailsCall("GetPdmNode"));
}

TEST_F(RepNode, IsCreatedWithoutWindowRelationsAndMark)
{
    const QTBIRepNode_var spLoose = CreateLooseRepNode();
    unsigned char bFlag = TRUE;
    EXPECT_THAT(spLoose->FrmWindowPtrExists(&bFlag), Succeeds());
    EXPECT_EQ(bFlag, FALSE);
    EXPECT_THAT(spLoose->GetMarkForRemoval(&bFlag), Succeeds());
    EXPECT_EQ(bFlag, FALSE);
    CATListValQTBNodeRelationInfo infos = Relations({PARTS});
    EXPECT_THAT(spLoose->GetPdmRelationsToBeDisplayed(&infos), Succeeds());
    EXPECT_EQ(infos.Size(), 0);
    QTBNodeRelationInfo info(PARTS);
    EXPECT_THAT(spLoose->GetPdmRelationToLeftNode(&info), Succeeds());
    EXPECT_TRUE(info == QTBNodeRelationInfo());
}

} // namespace

#include <gmock/gmock.h>

#include "CATError.h"
#include "CATFrmWindow.h"
#include "CATNavigBox.h"
#include "QTBERepNodeContOnRepNodeCont.h"
#include "QTBRepTreeSession.h"
#include "QTBTestWindow.h"

using QTBDiagnosis::Assertion;
using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosisOf;
using QTBDiagnosis::Handle;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

// A(AB(B(BC(C))) AD(D) AF(F)), every object displaying the relations that it shows.
class RepTreeFolding : public QTBFaultyRepTreeSession
{
protected:
    void SetUp() override
    {
        QTBFaultyRepTreeSession::SetUp();
        QTBGlobVarsUtil::SetAddNewNodeRelationsAt(QTB_PLACE_TO_ADD_END);
        Update(Part("A", Attribute("PartNumber", "4711")) + Part("B") + Part("C") + Part("D") +
               Object("CATPartFile", "F") + Relation("PartFile", "AF", "A", "F") + PartPart("AD", "A", "D") +
               PartPart("BC", "B", "C") + PartPart("AB", "A", "B"));
        Consider(ALL_NODES);
        a = CreateRoot("A");
        EXPECT_THAT(Expand(a, Relations({PARTS, FILES})), Succeeds());
        ASSERT_EQ(TreeOf(a), "A(AB(B(BC(C))) AD(D) AF(F))");
    }
    void TearDown() override
    {
        a = NULL_var;
        QTBFaultyRepTreeSession::TearDown();
    }

    HRESULT Fold(QTBIRepNode_var spIRepNode) const { return m_spCont->DeExpand(&spIRepNode); }
    std::vector<std::string> Diagnosis(const QTBIRepNode_var& spIRepNode) const
    {
        return DiagnosisOf([&] { return Fold(spIRepNode); });
    }
    static CATListValQTBNodeRelationInfo Displayed(const QTBIRepNode_var& spIRepNode)
    {
        CATListValQTBNodeRelationInfo infos;
        EXPECT_THAT(spIRepNode->GetPdmRelationsToBeDisplayed(&infos), Succeeds());
        return infos;
    }

    QTBIRepNode_var a;
};

TEST_F(RepTreeFolding, OfARelationRemovesItWithAllBelow)
{
    EXPECT_THAT(Fold(Find("AB")), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AD(D) AF(F))");
    EXPECT_EQ(AllRepNodesOf(m_spCont).Size(), 5);
}

TEST_F(RepTreeFolding, OfAnObjectRemovesTheRelationAboveIt)
{
    EXPECT_THAT(Fold(Find("C")), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B) AD(D) AF(F))");
    EXPECT_TRUE(Displayed(Find("B")) == Relations({})) << "it was the last of its relation";
    EXPECT_THAT(Fold(Find("B")), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AD(D) AF(F))");
    EXPECT_TRUE(Displayed(a) == Relations({PARTS, FILES})) << "another child shows the relation";
}

TEST_F(RepTreeFolding, OfTheLastOfARelationEndsItsDisplay)
{
    EXPECT_THAT(Fold(Find("AB")), Succeeds());
    EXPECT_TRUE(Displayed(a) == Relations({PARTS, FILES}));
    EXPECT_THAT(Fold(Find("AD")), Succeeds());
    EXPECT_TRUE(Displayed(a) == Relations({FILES}));
    EXPECT_THAT(Fold(Find("F")), Succeeds());
    EXPECT_TRUE(Displayed(a) == Relations({}));
    EXPECT_EQ(TreeOf(a), "A");
}

TEST_F(RepTreeFolding, IsUndoneByALaterUpdateWhileTheRelationIsDisplayed)
{
    RepChildRelationsToUpdate mode = ALL_RELATIONS_STORED_IN_REP_NODE;
    EXPECT_THAT(m_spCont->SetRepChildRelationsToUpdate(&mode), Succeeds());
    EXPECT_THAT(Fold(Find("AB")), Succeeds());
    EXPECT_THAT(Fold(Find("AF")), Succeeds());
    EXPECT_THAT(Expand(a, Relations({})), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AD(D) AB(B))") << "parts are displayed still, files no longer";
}

TEST_F(RepTreeFolding, OfARootRemovesTheTree)
{
    EXPECT_THAT(Fold(a), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), IsEmpty());
}

TEST_F(RepTreeFolding, OfARootThatLostItsPdmNodeKeepsTheRoot)
{
    const QTBIRepNode_var b = CreateRoot("B");
    EXPECT_THAT(Expand(b, Relations({PARTS})), Succeeds());
    Unlink(b);
    EXPECT_THAT(Fold(b), Succeeds());
    EXPECT_EQ(TreeOf(b), "?");
    EXPECT_TRUE(AllRepNodesOf(m_spCont).Locate(CATBaseUnknown_var(b)) > 0);
}

TEST_F(RepTreeFolding, OfARelationBelowARelationFailsWhenItIsRemovedAlready)
{
    const QTBIRepNode_var bc = Find("BC");
    const QTBIRepNode_var spLower = Create(bc, "AD");
    EXPECT_THAT(Diagnosis(spLower), ElementsAre(Assertion("bRepresentsPdmObjNode"), Call("DeExpandRelationNode")));
    EXPECT_EQ(TreeOf(a), "A(AB(B(BC(C))) AD(D) AF(F))");
}

TEST_F(RepTreeFolding, ChecksItsNode)
{
    EXPECT_THAT(m_spCont->DeExpand(nullptr), FailsAssertion("pspIRepNode != NULL"));
    EXPECT_THROW(Fold(NULL_var), CATXHException);
    QTBIRepNode_var spEmpty;
    EXPECT_THAT(Cont()->DeExpandRootRepNode(nullptr), FailsAssertion("pspIRepNode != NULL"));
    EXPECT_THAT(Cont()->DeExpandRootRepNode(&spEmpty), LacksInterface("*pspIRepNode"));
    EXPECT_THAT(Cont()->DeExpandRelationNode(nullptr), FailsAssertion("pspIRepNode != NULL"));
    EXPECT_THAT(Cont()->DeExpandRelationNode(&spEmpty), LacksInterface("*pspIRepNode"));
    const QTBIRepNode_var b = Find("B");
    {
        const QTBFault fault("IsRepRootNode", b);
        EXPECT_THAT(Diagnosis(b), ElementsAre(Call("(*pspIRepNode)->IsRepRootNode")));
    }
    {
        const QTBFault fault("GetPdmNode", b);
        EXPECT_THAT(Diagnosis(b), ElementsAre(Call("(*pspIRepNode)->GetPdmNode")));
    }
    {
        const QTBFault fault("GetPdmNode", b, 0, QTBFault::DoesNothing);
        EXPECT_THAT(Diagnosis(b), ElementsAre(Handle("spIPdmNode")));
    }
    {
        const QTBFault fault("GetParent", b);
        EXPECT_THAT(Diagnosis(b), ElementsAre(Call("(*pspIRepNode)->GetParent")));
    }
    EXPECT_EQ(TreeOf(a), "A(AB(B(BC(C))) AD(D) AF(F))");
}

TEST_F(RepTreeFolding, ChecksTheRelationToFold)
{
    const QTBIRepNode_var ab = Find("AB");
    {
        const QTBFault fault("GetParent", ab);
        EXPECT_THAT(Diagnosis(ab), ElementsAre(Call("(*pspIRepNode)->GetParent"), Call("DeExpandRelationNode")));
    }
    {
        const QTBFault fault("RepresentsPdmRelNode", ab);
        EXPECT_THAT(Diagnosis(ab),
                    ElementsAre(Call("spIRepNodeOnRelationNode->RepresentsPdmRelNode"), Call("DeExpandRelationNode")));
    }
    {
        const QTBFault fault("GetSinglePdmRelationToBeDisplayed", ab);
        EXPECT_THAT(Diagnosis(ab), ElementsAre(Call("spIRepNodeOnRelationNode->GetSinglePdmRelationToBeDisplayed"),
                                               Call("DeExpandRelationNode")));
    }
    {
        const QTBFault fault("GetDirectChildren", ab);
        EXPECT_THAT(Diagnosis(ab), ElementsAre(Call("GetDirectChildren"), Call("RecursiveRemoveRepTree"),
                                               Call("DeExpandRelationNode")));
        EXPECT_THAT(Diagnosis(Find("B")), ElementsAre(Call("GetDirectChildren"), Call("RecursiveRemoveRepTree"),
                                                      Call("DeExpandRelationNode")));
    }
    const QTBIRepNode_var spObjectBelowObject = Create(Find("D"), "C");
    EXPECT_THAT(Diagnosis(Create(spObjectBelowObject, "B")),
                ElementsAre(Assertion("bRepresentsPdmRelNode"), Call("DeExpandRelationNode")));
}

TEST_F(RepTreeFolding, ChecksTheParentAndItsRemainingChildren)
{
    const auto diagnosisAfterRemoval = [&](const char* key) {
        std::vector<std::string> diagnosis = Diagnosis(Find(key));
        EXPECT_TRUE(Find(key) == NULL_var) << "removed before the parent is looked at";
        EXPECT_EQ(diagnosis.back(), Call("DeExpandRelationNode"));
        diagnosis.pop_back();
        return diagnosis;
    };
    const QTBIRepNode_var af = Find("AF");
    const auto showAgain = [&] { EXPECT_THAT(Expand(a, Relations({PARTS})), Succeeds()); };
    {
        const QTBFault fault("RepresentsPdmObjNode", a);
        EXPECT_THAT(diagnosisAfterRemoval("AB"), ElementsAre(Call("spIRepNodeOnParentRepNode->RepresentsPdmObjNode")));
    }
    showAgain();
    {
        const QTBFault fault("GetDirectChildren", a);
        EXPECT_THAT(diagnosisAfterRemoval("AB"), ElementsAre(Call("spIRepNodeOnParentRepNode->GetDirectChildren")));
    }
    showAgain();
    {
        const QTBFault fault("Redraw", a);
        EXPECT_THAT(diagnosisAfterRemoval("AB"), ElementsAre(Call("spIRepNodeOnParentRepNode->Redraw")));
    }
    {
        // AF is the remaining child now, AD goes.
        const QTBFault fault("RepresentsPdmRelNode", af);
        EXPECT_THAT(diagnosisAfterRemoval("AD"),
                    ElementsAre(Call("spIRepNodeOnChildRelationNode->RepresentsPdmRelNode")));
    }
    showAgain();
    EXPECT_THAT(Fold(Find("AD")), Succeeds());
    {
        const QTBFault fault("GetSinglePdmRelationToBeDisplayed", af);
        EXPECT_THAT(diagnosisAfterRemoval("AB"),
                    ElementsAre(Call("spIRepNodeOnChildRelationNode->GetSinglePdmRelationToBeDisplayed")));
    }
    showAgain();
    EXPECT_THAT(Fold(Find("AD")), Succeeds());
    {
        const QTBFault fault("RemovePdmRelationToBeDisplayed", a);
        EXPECT_THAT(diagnosisAfterRemoval("AB"),
                    ElementsAre(Call("spIRepNodeOnParentRepNode->RemovePdmRelationToBeDisplayed")));
    }
}

TEST_F(RepTreeFolding, ChecksThatTheRemainingChildrenAreRelations)
{
    const QTBIRepNode_var d = Find("D");
    const QTBIRepNode_var spRelation = Create(d, "BC");
    Create(d, "C");
    EXPECT_THAT(Diagnosis(spRelation),
                ElementsAre(Assertion("bChildRepresentsPdmRelNode"), Call("DeExpandRelationNode")));
    const QTBIRepNode_var c = Find("C");
    LinkBelow(c, CreateLoose("QTBNode"));
    EXPECT_THAT(Diagnosis(Create(c, "BC")),
                ElementsAre(Handle("spIRepNodeOnChildRelationNode"), Call("DeExpandRelationNode")));
}

TEST_F(RepTreeFolding, StopsLookingAtTheFirstChildOfTheRelation)
{
    const QTBIRepNode_var c = Find("C");
    const QTBIRepNode_var spFirst = Create(c, "AD");
    const QTBIRepNode_var spLast = Create(c, "BC");
    const QTBFault fault("RepresentsPdmRelNode", spLast);
    EXPECT_THAT(Fold(Create(c, "AB")), Succeeds());
}

TEST_F(RepTreeFolding, OfARootTakesTheRootsOfTheWindowAnew)
{
    const QTBTestWindow window;
    m_spCont = window.GetCont();
    Update(Part("E"));
    const QTBIRepNode_var e = CreateRoot("E");
    QTBIRepNode_var spOther = CreateRoot("A");
    CATNavigBox* pBox = window.GetFrmWindow()->GetNavigBox();
    CATListValCATBaseUnknown_var shown;
    shown.Append(CATBaseUnknown_var(spOther));
    pBox->SetRoots(shown);
    EXPECT_THAT(Fold(spOther), Succeeds());
    const auto rootsOf = [&] {
        const std::unique_ptr<CATListValCATBaseUnknown_var> pRoots(pBox->GetAllRoots());
        return PdmKeysOf(*pRoots);
    };
    EXPECT_THAT(rootsOf(), ElementsAre("E"));
    {
        const QTBFault fault("GetDirectChildren", e);
        EXPECT_THAT(Diagnosis(e), ElementsAre(Call("GetDirectChildren"), Call("RecursiveRemoveRepTree"),
                                              Call("DeExpandRootRepNode")));
    }
    const QTBFault fault("GetRepRootNodes", m_spCont);
    EXPECT_THAT(Diagnosis(CreateRoot("A")), ElementsAre(Call("QTBRepTreeUtil::UpdateQtbWindow"),
                                                        Call("UpdateQtbWindow"), Call("DeExpandRootRepNode")));
}

} // namespace

#include <memory>

#include <gmock/gmock.h>

#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATFrmWindow.h"
#include "CATHSO.h"
#include "CATPSO.h"
#include "QTBEPdmNodeOnPdmNode.h"
#include "QTBFaultyPdmSession.h"
#include "QTBIRepNodeCont.h"
#include "QTBRecordingRepNode.h"
#include "QTBTestWindow.h"
#include "TIEQTBIPdmNode.h"

using QTBDiagnosis::Assertion;
using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosisOf;
using QTBDiagnosis::Handle;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

// A is shown by the rep nodes R1, R2 and R3 in the order in which they were linked.
class PdmNodeRepNodes : public QTBFaultyPdmSession
{
protected:
    void SetUp() override
    {
        QTBFaultyPdmSession::SetUp();
        Update(Part("A") + Part("B"));
        m_spNode = PdmNode("A");
        r1 = m_RepType.Show(m_spNode, "R1");
        r2 = m_RepType.Show(m_spNode, "R2");
        r3 = m_RepType.Show(m_spNode, "R3");
    }

    void TearDown() override
    {
        r1 = r2 = r3 = NULL_var;
        m_spNode = NULL_var;
        QTBFaultyPdmSession::TearDown();
    }

    // Lets a node show A that is no rep node.
    void ShowByPlainNode()
    {
        const CATBaseUnknown_var spPlain = QTBCreateLoose("QTBNode");
        EXPECT_THAT(QTBINodeAttributes_var(spPlain)->SetKey("P"), Succeeds());
        EXPECT_THAT(QTBINodeRelations_var(m_spNode)->AddRightNode("PdmToRep", spPlain, 1, TRUE), Succeeds());
    }

    static std::vector<std::string>& Calls() { return QTBRecordingRepNode::s_Calls; }
    static const unsigned char* HandedOver() { return QTBRecordingRepNode::s_pHandedOver; }

    std::vector<std::string> RepNodes(const QTBIRepNodeCont_var& spIRepNodeCont) const
    {
        CATListValCATBaseUnknown_var nodes;
        nodes.Append(FindNode("B"));
        EXPECT_THAT(m_spNode->GetRepNodes(&nodes, spIRepNodeCont), Succeeds());
        return KeysOf(nodes);
    }

    HRESULT Redraw(unsigned char bRecursive = FALSE) const { return m_spNode->RedrawRepNodes(&bRecursive); }
    HRESULT Highlight(unsigned char bEmptyFirst, unsigned char bObject = FALSE) const
    {
        return m_spNode->HighlightRepNodes(bEmptyFirst, &bObject);
    }

    QTBRecordingRepNodeType m_RepType;
    QTBIPdmNode_var m_spNode;
    QTBIRepNode_var r1, r2, r3;
};

// A with B twice below it, C beside them, in two windows: A(AB1(B) AB2(B) AC(C)).
class PdmNodeInWindows : public QTBTestSession
{
protected:
    void SetUp() override
    {
        QTBTestSession::SetUp();
        Update(Part("A") + Part("B") + Part("C") + PartPart("AB1", "A", "B") + PartPart("AB2", "A", "B") +
               PartPart("AC", "A", "C"));
        m_pFirst = std::make_unique<QTBTestWindow>();
        m_pSecond = std::make_unique<QTBTestWindow>();
        m_pFirst->Show(FindNode("A"), {"PartPart"});
        m_pSecond->Show(FindNode("A"), {"PartPart"});
    }

    void TearDown() override
    {
        m_pFirst.reset();
        m_pSecond.reset();
        QTBTestSession::TearDown();
    }

    static CATFrmEditor* EditorOf(const std::unique_ptr<QTBTestWindow>& pWindow)
    {
        return pWindow->GetFrmWindow()->GetEditor();
    }
    static std::vector<std::string> KeysIn(const CATPathElementSet& set)
    {
        CATListValCATBaseUnknown_var repNodes;
        for (const CATPathElement_var& spPath : set.GetElements()) {
            repNodes.Append(spPath->GetObject());
        }
        return QTBTestWindow::PdmKeysOf(repNodes);
    }
    static std::vector<std::string> PreselectedIn(const std::unique_ptr<QTBTestWindow>& pWindow)
    {
        return KeysIn(*EditorOf(pWindow)->GetPSO());
    }
    static std::vector<std::string> HighlightedIn(const std::unique_ptr<QTBTestWindow>& pWindow)
    {
        return KeysIn(*EditorOf(pWindow)->GetHSO());
    }

    static void Highlight(const char* key, unsigned char bEmptyFirst, unsigned char bObject = FALSE)
    {
        EXPECT_THAT(PdmNode(key)->HighlightRepNodes(bEmptyFirst, &bObject), Succeeds());
    }

    std::unique_ptr<QTBTestWindow> m_pFirst;
    std::unique_ptr<QTBTestWindow> m_pSecond;
};

} // namespace

TEST_F(PdmNodeRepNodes, AreThoseOfAllWindowsWithoutAContainer)
{
    EXPECT_THAT(RepNodes(NULL_var), ElementsAre("R1", "R2", "R3"));
}

TEST_F(PdmNodeRepNodes, AreThoseOfOneWindowWithItsContainer)
{
    const QTBIRepNodeCont_var spFirst(QTBCreateLoose("QTBRepNodeCont"));
    const QTBIRepNodeCont_var spSecond(QTBCreateLoose("QTBRepNodeCont"));
    const QTBIRepNodeCont_var spThird(QTBCreateLoose("QTBRepNodeCont"));
    EXPECT_THAT(r1->SetRepNodeContainer(spFirst), Succeeds());
    EXPECT_THAT(r2->SetRepNodeContainer(spSecond), Succeeds());
    EXPECT_THAT(r3->SetRepNodeContainer(spFirst), Succeeds());
    EXPECT_THAT(RepNodes(spFirst), ElementsAre("R1", "R3"));
    EXPECT_THAT(RepNodes(spSecond), ElementsAre("R2"));
    EXPECT_THAT(RepNodes(spThird), IsEmpty());
    EXPECT_THAT(RepNodes(NULL_var), ElementsAre("R1", "R2", "R3"));
}

TEST_F(PdmNodeRepNodes, AreNoneForANodeThatNothingShows)
{
    CATListValCATBaseUnknown_var nodes;
    nodes.Append(m_spNode);
    EXPECT_THAT(PdmNode("B")->GetRepNodes(&nodes, NULL_var), Succeeds());
    EXPECT_EQ(nodes.Size(), 0);
    nodes.Append(m_spNode);
    EXPECT_THAT(PdmNode("B")->GetRepNodes(&nodes, QTBCreateLoose("QTBRepNodeCont")), Succeeds());
    EXPECT_EQ(nodes.Size(), 0);
    unsigned char flag = TRUE;
    EXPECT_THAT(PdmNode("B")->RedrawRepNodes(&flag), Succeeds());
    EXPECT_THAT(PdmNode("B")->PreselectRepNodes(), Succeeds());
    EXPECT_THAT(PdmNode("B")->HighlightRepNodes(TRUE, &flag), Succeeds());
    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(PdmNodeRepNodes, WhatKeepsThemFromBeingFoundIsNamed)
{
    CATListValCATBaseUnknown_var nodes;
    const QTBIRepNodeCont_var spCont(QTBCreateLoose("QTBRepNodeCont"));
    EXPECT_THAT(m_spNode->GetRepNodes(nullptr, NULL_var), FailsAssertion("pListOfRepNodes != NULL"));
    QTBTestLateType bareType("TestBarePdmNode");
    bareType.Register<TIEQTBIPdmNode, QTBIPdmNode, QTBEPdmNodeOnPdmNode>();
    nodes.Append(m_spNode);
    EXPECT_THAT(QTBIPdmNode_var(bareType.Create())->GetRepNodes(&nodes, NULL_var),
                LacksInterface("spINodeRelationsOnThis"));
    EXPECT_EQ(nodes.Size(), 0) << "emptied first";

    EXPECT_THAT(r1->SetRepNodeContainer(spCont), Succeeds());
    EXPECT_THAT(DiagnosisOf([&] { return m_spNode->GetRepNodes(&nodes, spCont); }),
                ElementsAre(Handle("m_spIRepNodeCont"), Call("spIRepNode->GetRepNodeContainer")));
    {
        const QTBFault fault("GetRightNodeList", m_spNode);
        EXPECT_THAT(DiagnosisOf([&] { return m_spNode->GetRepNodes(&nodes, NULL_var); }),
                    ElementsAre(Call("spINodeRelationsOnThis->GetRightNodeList")));
        EXPECT_THAT(DiagnosisOf([&] { return m_spNode->GetRepNodes(&nodes, spCont); }),
                    ElementsAre(Call("spINodeRelationsOnThis->GetRightNodeList")));
    }
    EXPECT_THAT(r2->SetRepNodeContainer(spCont), Succeeds());
    EXPECT_THAT(r3->SetRepNodeContainer(spCont), Succeeds());
    ShowByPlainNode();
    EXPECT_THAT(m_spNode->GetRepNodes(&nodes, spCont), LacksInterface("spIRepNode"));
    EXPECT_THAT(RepNodes(NULL_var), ElementsAre("R1", "R2", "R3", "P")) << "not asked";
}

TEST_F(PdmNodeRepNodes, AreRedrawnInOrder)
{
    unsigned char bRecursive = TRUE;
    EXPECT_THAT(m_spNode->RedrawRepNodes(&bRecursive), Succeeds());
    EXPECT_THAT(Calls(), ElementsAre("R1.Redraw(TRUE)", "R2.Redraw(TRUE)", "R3.Redraw(TRUE)"));
    EXPECT_EQ(HandedOver(), &bRecursive) << "handed on unchanged";
    Calls().clear();
    EXPECT_THAT(Redraw(FALSE), Succeeds());
    EXPECT_THAT(Calls(), ElementsAre("R1.Redraw(FALSE)", "R2.Redraw(FALSE)", "R3.Redraw(FALSE)"));
}

TEST_F(PdmNodeRepNodes, AreRedrawnUpToTheFirstThatFails)
{
    const QTBFault fault("Redraw", r2);
    EXPECT_THAT(DiagnosisOf([&] { return Redraw(); }), ElementsAre(Call("spIRepNode->Redraw")));
    EXPECT_THAT(Calls(), ElementsAre("R1.Redraw(FALSE)", "R2.Redraw(FALSE)"));
}

TEST_F(PdmNodeRepNodes, ThatAreNoRepNodesAreNotShown)
{
    ShowByPlainNode();
    EXPECT_THAT(DiagnosisOf([&] { return Redraw(); }), ElementsAre(Handle("spIRepNode")));
    EXPECT_THAT(Calls(), ElementsAre("R1.Redraw(FALSE)", "R2.Redraw(FALSE)", "R3.Redraw(FALSE)"));
    Calls().clear();
    EXPECT_THAT(DiagnosisOf([&] { return m_spNode->PreselectRepNodes(); }), ElementsAre(Handle("spIRepNode")));
    EXPECT_THAT(DiagnosisOf([&] { return Highlight(TRUE); }), ElementsAre(Handle("spIRepNode")));
    EXPECT_THAT(Calls(), IsEmpty()) << "found while the sets were emptied";
    EXPECT_THAT(DiagnosisOf([&] { return Highlight(FALSE); }), ElementsAre(Handle("spIRepNode")));
    EXPECT_THAT(Calls(), ElementsAre("R1.Highlight(FALSE)", "R2.Highlight(FALSE)", "R3.Highlight(FALSE)"));
}

TEST_F(PdmNodeRepNodes, ThatCannotBeFoundAreNotShown)
{
    const QTBFault fault("GetRightNodeList", m_spNode);
    for (const auto& diagnosis :
         {DiagnosisOf([&] { return Redraw(); }), DiagnosisOf([&] { return m_spNode->PreselectRepNodes(); }),
          DiagnosisOf([&] { return Highlight(TRUE); }), DiagnosisOf([&] { return Highlight(FALSE); })}) {
        EXPECT_THAT(diagnosis, ElementsAre(Call("spINodeRelationsOnThis->GetRightNodeList"), Call("GetRepNodes")));
    }
    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(PdmNodeRepNodes, WithoutWindowAreAskedToShowThemselvesToo)
{
    EXPECT_THAT(m_spNode->PreselectRepNodes(), Succeeds());
    EXPECT_THAT(Calls(), ElementsAre("R1.Preselect(FALSE)", "R2.Preselect(FALSE)", "R3.Preselect(FALSE)"));
    Calls().clear();
    unsigned char bObject = TRUE;
    EXPECT_THAT(m_spNode->HighlightRepNodes(TRUE, &bObject), Succeeds());
    EXPECT_THAT(Calls(), ElementsAre("R1.Highlight(FALSE)", "R2.Highlight(FALSE)", "R3.Highlight(FALSE)"));
    EXPECT_EQ(HandedOver(), &bObject) << "handed on unchanged";
}

TEST_F(PdmNodeRepNodes, ArePreselectedAndHighlightedUpToTheFirstThatFails)
{
    {
        const QTBFault fault("Preselect", r2);
        EXPECT_THAT(DiagnosisOf([&] { return m_spNode->PreselectRepNodes(); }),
                    ElementsAre(Call("spIRepNode->Preselect")));
    }
    EXPECT_THAT(Calls(), ElementsAre("R1.Preselect(FALSE)", "R2.Preselect(FALSE)"));
    Calls().clear();
    const QTBFault fault("Highlight", r2);
    EXPECT_THAT(DiagnosisOf([&] { return Highlight(FALSE); }), ElementsAre(Call("spIRepNode->Highlight")));
    EXPECT_THAT(Calls(), ElementsAre("R1.Highlight(FALSE)", "R2.Highlight(FALSE)"));
}

TEST_F(PdmNodeRepNodes, WhoseWindowCannotBeAskedKeepTheSetsFromBeingEmptied)
{
    const QTBTestWindow window;
    EXPECT_THAT(r2->SetFrmWindowPtr(window.GetFrmWindow()), Succeeds());
    for (const char* operation : {"FrmWindowPtrExists", "GetFrmEditorPtr"}) {
        const QTBFault fault(operation, r2);
        const std::string call = Call(std::string("spIRepNode->") + operation);
        EXPECT_THAT(DiagnosisOf([&] { return m_spNode->PreselectRepNodes(); }), ElementsAre(call));
        EXPECT_THAT(DiagnosisOf([&] { return Highlight(TRUE); }), ElementsAre(call));
        EXPECT_THAT(Calls(), IsEmpty());
        EXPECT_THAT(Highlight(FALSE), Succeeds()) << "nobody asks for the window";
        EXPECT_EQ(Calls().size(), 3U);
        Calls().clear();
    }
}

TEST_F(PdmNodeRepNodes, InAWindowWithoutEditorHaveNoSetsToBeEmptied)
{
    CATFrmWindow* pFrmWindow = CATFrmWindow::Create("without editor", nullptr);
    EXPECT_THAT(r3->SetFrmWindowPtr(pFrmWindow), Succeeds());
    EXPECT_THAT(DiagnosisOf([&] { return m_spNode->PreselectRepNodes(); }), ElementsAre(Assertion("pPSO != NULL")));
    EXPECT_THAT(DiagnosisOf([&] { return Highlight(TRUE); }), ElementsAre(Assertion("pHSO != NULL")));
    EXPECT_THAT(Calls(), IsEmpty());
    EXPECT_THAT(Highlight(FALSE), Succeeds());
    EXPECT_EQ(Calls().size(), 3U);
    EXPECT_THAT(r3->SetFrmWindowPtr(nullptr), Succeeds());
    CATFrmLayout::GetCurrentLayout()->CloseWindow(pFrmWindow);
}

TEST_F(PdmNodeInWindows, ARepNodeOfEachPlaceIsFoundPerWindowOrInAll)
{
    CATListValCATBaseUnknown_var nodes;
    EXPECT_THAT(PdmNode("B")->GetRepNodes(&nodes, m_pFirst->GetCont()), Succeeds());
    EXPECT_EQ(nodes.Size(), 2);
    for (const CATBaseUnknown_var& spRepNode : nodes) {
        QTBIRepNodeCont_var spCont;
        EXPECT_THAT(QTBIRepNode_var(spRepNode)->GetRepNodeContainer(&spCont), Succeeds());
        EXPECT_TRUE(spCont == m_pFirst->GetCont());
    }
    EXPECT_THAT(PdmNode("B")->GetRepNodes(&nodes, NULL_var), Succeeds());
    EXPECT_EQ(nodes.Size(), 4);
    EXPECT_THAT(PdmNode("C")->GetRepNodes(&nodes, m_pSecond->GetCont()), Succeeds());
    EXPECT_EQ(nodes.Size(), 1);
}

TEST_F(PdmNodeInWindows, AllRepNodesArePreselectedInPlaceOfOthers)
{
    EXPECT_THAT(PdmNode("C")->PreselectRepNodes(), Succeeds());
    EXPECT_THAT(PreselectedIn(m_pFirst), ElementsAre("C"));
    EXPECT_THAT(PreselectedIn(m_pSecond), ElementsAre("C"));
    EXPECT_THAT(PdmNode("B")->PreselectRepNodes(), Succeeds());
    EXPECT_THAT(PreselectedIn(m_pFirst), ElementsAre("B", "B"));
    EXPECT_THAT(PreselectedIn(m_pSecond), ElementsAre("B", "B"));
    EXPECT_THAT(HighlightedIn(m_pFirst), IsEmpty());
}

TEST_F(PdmNodeInWindows, AWindowThatDoesNotShowTheNodeKeepsWhatIsPreselectedThere)
{
    EXPECT_THAT(PdmNode("C")->PreselectRepNodes(), Succeeds());
    Update(Part("X"));
    m_pSecond->Show(FindNode("X"), {});
    EXPECT_THAT(PdmNode("X")->PreselectRepNodes(), Succeeds());
    EXPECT_THAT(PreselectedIn(m_pFirst), ElementsAre("C"));
    EXPECT_THAT(PreselectedIn(m_pSecond), ElementsAre("X"));
}

TEST_F(PdmNodeInWindows, HighlightingReplacesOthersOnRequestOnly)
{
    Highlight("C", FALSE);
    Highlight("B", FALSE);
    EXPECT_THAT(HighlightedIn(m_pFirst), ElementsAre("C", "B", "B"));
    EXPECT_THAT(HighlightedIn(m_pSecond), ElementsAre("C", "B", "B"));
    Highlight("A", TRUE);
    EXPECT_THAT(HighlightedIn(m_pFirst), ElementsAre("A"));
    EXPECT_THAT(HighlightedIn(m_pSecond), ElementsAre("A"));
    EXPECT_THAT(PreselectedIn(m_pFirst), IsEmpty());
}

TEST_F(PdmNodeInWindows, ARelationIsHighlightedItselfOrByItsObject)
{
    Highlight("AB2", TRUE, FALSE);
    EXPECT_THAT(HighlightedIn(m_pFirst), ElementsAre("AB2"));
    Highlight("AB2", TRUE, TRUE);
    EXPECT_THAT(HighlightedIn(m_pFirst), ElementsAre("B"));
    EXPECT_THAT(HighlightedIn(m_pSecond), ElementsAre("B"));
}

TEST_F(PdmNodeInWindows, HighlightingLeavesThePreselectedSetToTheRepNodes)
{
    EXPECT_THAT(PdmNode("C")->PreselectRepNodes(), Succeeds());
    Update(Part("X"));
    Highlight("X", TRUE);
    EXPECT_THAT(PreselectedIn(m_pFirst), ElementsAre("C"));
    EXPECT_THAT(HighlightedIn(m_pFirst), IsEmpty());
}

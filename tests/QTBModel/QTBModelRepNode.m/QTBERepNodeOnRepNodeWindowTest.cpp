#include <gmock/gmock.h>

#include "CATFrmLayout.h"
#include "CATFrmNavigGraphicWindow.h"
#include "CATIRedrawEvent.h"
#include "QTBERepNodeOnRepNode.h"
#include "QTBRepTreeSession.h"
#include "QTBTestWindow.h"

using QTBDiagnosis::Assertion;
using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosisOf;
using QTBDiagnosis::Handle;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

// A window that shows A(AB(B) AD(D)); the container without window of the base shows A(AB(B)).
class RepNodeWindow : public QTBFaultyRepTreeSession
{
protected:
    void SetUp() override
    {
        QTBFaultyRepTreeSession::SetUp();
        QTBGlobVarsUtil::SetAddNewNodeRelationsAt(QTB_PLACE_TO_ADD_END);
        Update(Part("A") + Part("B") + Part("D") + PartPart("AB", "A", "B") + PartPart("AD", "A", "D"));
        m_pWindow = std::make_unique<QTBTestWindow>();
        m_spWithoutWindow = m_spCont;
        rootWithoutWindow = CreateRoot("A");
        relationWithoutWindow = Create(rootWithoutWindow, "AB");
        Create(relationWithoutWindow, "B");
        m_spCont = m_pWindow->GetCont();
        a = CreateRoot("A");
        ab = Create(a, "AB");
        b = Create(ab, "B");
        ad = Create(a, "AD");
        d = Create(ad, "D");
    }

    void TearDown() override
    {
        a = ab = b = ad = d = rootWithoutWindow = relationWithoutWindow = NULL_var;
        m_spWithoutWindow = NULL_var;
        m_pWindow.reset();
        QTBFaultyRepTreeSession::TearDown();
    }

    CATFrmEditor* Editor() const { return m_pWindow->GetFrmWindow()->GetEditor(); }

    // PDM keys of the rep nodes in a set of the editor, in order.
    static std::vector<std::string> KeysIn(const CATPathElementSet& set)
    {
        CATListValCATBaseUnknown_var repNodes;
        for (const CATPathElement_var& spPath : set.GetElements()) {
            repNodes.Append(spPath->GetObject());
        }
        return PdmKeysOf(repNodes);
    }
    std::vector<std::string> Preselected() const { return KeysIn(*Editor()->GetPSO()); }
    std::vector<std::string> Highlighted() const { return KeysIn(*Editor()->GetHSO()); }

    static HRESULT Preselect(const QTBIRepNode_var& spIRepNode, unsigned char bEmptyPSO)
    {
        return spIRepNode->Preselect(&bEmptyPSO);
    }
    static HRESULT Highlight(const QTBIRepNode_var& spIRepNode, unsigned char bEmptyHSO, unsigned char bObject = FALSE)
    {
        return spIRepNode->Highlight(&bEmptyHSO, &bObject);
    }
    static HRESULT Redraw(const QTBIRepNode_var& spIRepNode, unsigned char bRecursive)
    {
        return spIRepNode->Redraw(&bRecursive);
    }
    // Lets a root hang below its own descendant, so that no path leads to the nodes any more.
    void MakeCircle() { LinkBelow(b, a); }
    void BreakCircle() { QTBINodeRelations_var(b)->RemoveRightNode("RepToRep", a); }

    std::unique_ptr<QTBTestWindow> m_pWindow;
    QTBIRepNodeCont_var m_spWithoutWindow;
    QTBIRepNode_var a, ab, b, ad, d, rootWithoutWindow, relationWithoutWindow;
};

TEST_F(RepNodeWindow, IsThatOfItsContainerWhenTheNodeIsCreated)
{
    CATFrmWindow* pFrmWindow = nullptr;
    EXPECT_THAT(b->GetFrmWindowPtr(&pFrmWindow), Succeeds());
    EXPECT_EQ(pFrmWindow, m_pWindow->GetFrmWindow());
    CATFrmEditor* pFrmEditor = nullptr;
    EXPECT_THAT(b->GetFrmEditorPtr(&pFrmEditor), Succeeds());
    EXPECT_EQ(pFrmEditor, Editor());
    unsigned char bExists = FALSE;
    EXPECT_THAT(b->FrmWindowPtrExists(&bExists), Succeeds());
    EXPECT_EQ(bExists, TRUE);
}

TEST_F(RepNodeWindow, IsMissedQuietly)
{
    CATFrmWindow* pFrmWindow = nullptr;
    EXPECT_TRUE(DiagnosisOf([&] { return rootWithoutWindow->GetFrmWindowPtr(&pFrmWindow); }).empty());
    EXPECT_EQ(pFrmWindow, nullptr);
    CATFrmEditor* pFrmEditor = nullptr;
    EXPECT_TRUE(DiagnosisOf([&] { return rootWithoutWindow->GetFrmEditorPtr(&pFrmEditor); }).empty());
    EXPECT_EQ(pFrmEditor, nullptr);
    unsigned char bExists = TRUE;
    EXPECT_THAT(rootWithoutWindow->FrmWindowPtrExists(&bExists), Succeeds());
    EXPECT_EQ(bExists, FALSE);
}

TEST_F(RepNodeWindow, CanBeTakenAway)
{
    EXPECT_THAT(b->SetFrmWindowPtr(nullptr), Succeeds());
    CATFrmWindow* pFrmWindow = nullptr;
    EXPECT_THAT(b->GetFrmWindowPtr(&pFrmWindow), FailsQuietly());
    EXPECT_THAT(b->SetFrmWindowPtr(m_pWindow->GetFrmWindow()), Succeeds());
    EXPECT_THAT(b->GetFrmWindowPtr(&pFrmWindow), Succeeds());
}

TEST_F(RepNodeWindow, GoesOnlyIntoAPointerThatIsNull)
{
    CATFrmWindow* pFrmWindow = m_pWindow->GetFrmWindow();
    EXPECT_THAT(b->GetFrmWindowPtr(&pFrmWindow), FailsAssertion("*ppFrmWindow == NULL"));
    EXPECT_THAT(b->GetFrmWindowPtr(nullptr), FailsAssertion("ppFrmWindow != NULL"));
    CATFrmEditor* pFrmEditor = Editor();
    EXPECT_THAT(b->GetFrmEditorPtr(&pFrmEditor), FailsAssertion("*ppFrmEditor == NULL"));
    EXPECT_THAT(b->GetFrmEditorPtr(nullptr), FailsAssertion("ppFrmEditor != NULL"));
}

TEST_F(RepNodeWindow, PreselectsTheNode)
{
    EXPECT_THAT(Preselect(b, FALSE), Succeeds());
    EXPECT_THAT(Preselect(ad, FALSE), Succeeds());
    EXPECT_THAT(Preselected(), ElementsAre("B", "AD"));
    EXPECT_THAT(Preselect(b, FALSE), Succeeds());
    EXPECT_THAT(Preselected(), ElementsAre("B", "AD")) << "once only";
    EXPECT_THAT(Preselect(d, TRUE), Succeeds());
    EXPECT_THAT(Preselected(), ElementsAre("D"));
    EXPECT_THAT(Highlighted(), IsEmpty());
}

TEST_F(RepNodeWindow, WithoutOnePreselectionAndHighlightSucceedAndChangeNothing)
{
    EXPECT_THAT(Preselect(b, FALSE), Succeeds());
    EXPECT_THAT(Preselect(rootWithoutWindow, TRUE), Succeeds());
    EXPECT_THAT(Highlight(rootWithoutWindow, TRUE), Succeeds());
    EXPECT_THAT(Extension(rootWithoutWindow)->EmptyPSO(), Succeeds());
    EXPECT_THAT(Preselected(), ElementsAre("B"));
    EXPECT_THAT(Highlighted(), IsEmpty());
}

TEST_F(RepNodeWindow, WithoutEditorPreselectionAndHighlightSucceedAndChangeNothing)
{
    CATFrmWindow* pWithoutEditor = CATFrmNavigGraphicWindow::Create("without editor", nullptr);
    EXPECT_THAT(b->SetFrmWindowPtr(pWithoutEditor), Succeeds());
    EXPECT_THAT(Preselect(b, TRUE), Succeeds());
    EXPECT_THAT(Highlight(b, TRUE), Succeeds());
    EXPECT_THAT(b->SetFrmWindowPtr(nullptr), Succeeds());
    CATFrmLayout::GetCurrentLayout()->CloseWindow(pWithoutEditor);
}

TEST_F(RepNodeWindow, EmptiesItsPreselection)
{
    EXPECT_THAT(Preselect(b, FALSE), Succeeds());
    EXPECT_THAT(Extension(d)->EmptyPSO(), Succeeds());
    EXPECT_THAT(Preselected(), IsEmpty());
}

TEST_F(RepNodeWindow, FailsToPreselectWhatNoPathLeadsTo)
{
    MakeCircle();
    EXPECT_THAT(DiagnosisOf([&] { return Preselect(b, FALSE); }),
                ElementsAre(Call("QTBVisUtil::GetPathElementFromNode")));
    EXPECT_THAT(Preselected(), IsEmpty());
    BreakCircle();
}

TEST_F(RepNodeWindow, HighlightsTheNodeAndClearsThePreselection)
{
    EXPECT_THAT(Preselect(d, FALSE), Succeeds());
    EXPECT_THAT(Highlight(ab, FALSE), Succeeds());
    EXPECT_THAT(Highlight(b, FALSE), Succeeds());
    EXPECT_THAT(Highlighted(), ElementsAre("AB", "B"));
    EXPECT_THAT(Preselected(), IsEmpty());
    EXPECT_THAT(Highlight(d, TRUE), Succeeds());
    EXPECT_THAT(Highlighted(), ElementsAre("D"));
}

TEST_F(RepNodeWindow, HighlightsTheObjectOfARelationOnRequest)
{
    EXPECT_THAT(Highlight(ab, TRUE, TRUE), Succeeds());
    EXPECT_THAT(Highlighted(), ElementsAre("B"));
    EXPECT_THAT(Highlight(ab, TRUE, FALSE), Succeeds());
    EXPECT_THAT(Highlighted(), ElementsAre("AB"));
    EXPECT_THAT(Highlight(a, TRUE, TRUE), Succeeds());
    EXPECT_THAT(Highlighted(), ElementsAre("A")) << "an object is highlighted itself";
}

TEST_F(RepNodeWindow, NeverTellsThatHighlightingFailed)
{
    MakeCircle();
    EXPECT_THAT(Highlight(b, FALSE), Succeeds());
    EXPECT_THAT(Highlighted(), IsEmpty());
    unsigned char bEmptyHSO = TRUE;
    EXPECT_THAT(DiagnosisOf([&] { return Extension(a)->Highlight(&b, &bEmptyHSO); }),
                ElementsAre(Call("QTBVisUtil::GetPathElementFromNode")));
    BreakCircle();
}

TEST_F(RepNodeWindow, ChecksWhatIsToBeHighlighted)
{
    const auto diagnosis = [](const QTBIRepNode_var& spIRepNode) {
        return DiagnosisOf([&] { return Highlight(spIRepNode, TRUE, TRUE); });
    };
    {
        const QTBFault fault("GetRightNodeList", ab);
        EXPECT_THAT(diagnosis(ab),
                    ElementsAre(Call("spINodeRelationsOnThis->GetRightNodeList"), Call("GetDirectChildren")));
    }
    EXPECT_THAT(Remove(d), Succeeds());
    EXPECT_THAT(diagnosis(ad), ElementsAre(Assertion("DirectChildren.Size() == 1")));
    LinkBelow(ad, CreateLoose("QTBNode"));
    EXPECT_THAT(diagnosis(ad), ElementsAre(Handle("spIRepNodeToBeHighlighted")));
    Unlink(b);
    EXPECT_THAT(diagnosis(b), ElementsAre(Call("RepresentsPdmRelNode")));
    EXPECT_THAT(Highlight(b, TRUE, FALSE), Succeeds());
    unsigned char bEmptyHSO = TRUE;
    EXPECT_THAT(Extension(a)->Highlight(static_cast<QTBIRepNode_var*>(nullptr), &bEmptyHSO),
                FailsAssertion("pspIRepNode != NULL"));
    QTBIRepNode_var spEmpty;
    EXPECT_THAT(Extension(a)->Highlight(&spEmpty, &bEmptyHSO), LacksInterface("*pspIRepNode"));
}

class RepNodeRedraw : public RepNodeWindow
{
protected:
    // How many of the nodes A, AB, B, AD, D a box would ask again after the redraw.
    int CountAskedAgain(const QTBIRepNode_var& spIRepNode, unsigned char bRecursive)
    {
        CATNavigBox box;
        for (const QTBIRepNode_var& spRoot : {a, ab, b, ad, d}) {
            box.AddRoot(spRoot);
        }
        box.Display();
        const unsigned long before = box.GetQuestionCount();
        EXPECT_THAT(Redraw(spIRepNode, bRecursive), Succeeds());
        box.Display();
        return static_cast<int>(box.GetQuestionCount() - before);
    }
};

TEST_F(RepNodeRedraw, RefreshesTheNodeAlone)
{
    EXPECT_EQ(CountAskedAgain(a, FALSE), 1);
    EXPECT_EQ(CountAskedAgain(b, FALSE), 1);
}

TEST_F(RepNodeRedraw, RefreshesAllDescendantsOnRequest)
{
    EXPECT_EQ(CountAskedAgain(a, TRUE), 5);
    EXPECT_EQ(CountAskedAgain(ab, TRUE), 2);
    EXPECT_EQ(CountAskedAgain(d, TRUE), 1);
}

TEST_F(RepNodeRedraw, ChecksWhatItNeeds)
{
    const auto diagnosis = [&] { return DiagnosisOf([&] { return Redraw(a, TRUE); }); };
    {
        const QTBFault fault("GetRightNodeList", a);
        EXPECT_THAT(diagnosis(), ElementsAre(Call("spINodeRelationsOnThis->GetRightNodeList"),
                                             Call("GetDirectChildren"), Call("GetAllChildren")));
    }
    const QTBFault fault("Redraw", d);
    EXPECT_THAT(diagnosis(), ElementsAre(Call("spIRepNodeOnChild")));
}

TEST_F(RepNodeRedraw, NeedsTheRedrawEvent)
{
    const QTBReplacedExtension withoutEvent("CATBaseUnknown", CATIRedrawEvent::MetaObject(), nullptr);
    EXPECT_THAT(DiagnosisOf([&] { return Redraw(CreateRoot("B"), FALSE); }),
                ElementsAre(Handle("spIRedrawEventOnThis")));
}

class RepNodeDebugInfo : public RepNodeWindow
{
protected:
    static HRESULT AddInfo(const QTBIRepNode_var& spIRepNode, const char* text, unsigned char bAll)
    {
        return spIRepNode->AddDebugInfoString(text, &bAll);
    }
    // The lines of the debug info of a node whose PDM key is known.
    static std::vector<std::string> Lines(const QTBIRepNode_var& spIRepNode)
    {
        const DebugCapture capture;
        EXPECT_THAT(spIRepNode->PrintDebugInfo(), Succeeds());
        return capture.Lines();
    }
    // The debug info strings alone.
    static std::vector<std::string> InfoStrings(const QTBIRepNode_var& spIRepNode)
    {
        EXPECT_THAT(spIRepNode->AddPdmNodeKeyForDebug("unknown"), Succeeds());
        std::vector<std::string> lines = Lines(spIRepNode);
        lines.erase(lines.begin(), std::find(lines.begin(), lines.end(), "Debug Info Strings:") + 1);
        lines.erase(lines.end() - 2, lines.end());
        return lines;
    }
};

TEST_F(RepNodeDebugInfo, IsPrintedLineByLine)
{
    EXPECT_THAT(b->AddDebugAttribute("first", "1"), Succeeds());
    EXPECT_THAT(b->AddDebugAttribute("second", ""), Succeeds());
    EXPECT_THAT(AddInfo(b, "some text", FALSE), Succeeds());
    EXPECT_THAT(AddInfo(b, "more text", FALSE), Succeeds());
    EXPECT_THAT(b->AddPdmNodeKeyForDebug("B"), Succeeds());
    EXPECT_THAT(Lines(b), ElementsAre("", "Debug Info for Rep Node:[" + KeyOf(b) + "]", "Attributes:", "1: \tfirst:1",
                                      "2: \tsecond:", "Debug Info Strings:", "1: some text", "2: more text",
                                      "Searching Rep Node in Rep Container: found",
                                      "Searching PDM Node in PDM Container: found", ""));
}

TEST_F(RepNodeDebugInfo, TellsWhatIsNotFound)
{
    EXPECT_THAT(Remove(b), Succeeds());
    EXPECT_THAT(b->AddPdmNodeKeyForDebug("unknown"), Succeeds());
    EXPECT_THAT(Lines(b), ElementsAre("", "Debug Info for Rep Node:[" + KeyOf(b) + "]", "Attributes:",
                                      "Debug Info Strings:", "Searching Rep Node in Rep Container: NOT found",
                                      "Searching PDM Node in PDM Container: NOT found"));
}

TEST_F(RepNodeDebugInfo, OfTheDefaultRootIsTwoLines)
{
    const QTBIRepNode_var spDefault = CreateLooseRepNode();
    QTBINodeAttributes_var(spDefault)->SetKey("DEFAULT_ROOT_NODE-Rep-5");
    // Behind the empty line that every debug info begins with.
    EXPECT_THAT(Lines(spDefault),
                ElementsAre("", "Debug Info for Rep Node:[DEFAULT_ROOT_NODE-Rep-5]", "Is default rep node"));
}

TEST_F(RepNodeDebugInfo, IsNotPrintedWithoutDebugStatus)
{
    EXPECT_THAT(b->AddPdmNodeKeyForDebug("B"), Succeeds());
    const DebugCapture capture;
    QTBDebugUtil::s_bGlobalDebugStatus = FALSE;
    EXPECT_THAT(b->PrintDebugInfo(), Succeeds());
    EXPECT_EQ(capture.Text(), "");
}

TEST_F(RepNodeDebugInfo, ChecksWhatItNeeds)
{
    const auto diagnosis = [](const QTBIRepNode_var& spIRepNode) {
        return DiagnosisOf([&] { return spIRepNode->PrintDebugInfo(); });
    };
    const QTBBareRepNodeType bareType;
    EXPECT_THAT(diagnosis(QTBIRepNode_var(bareType.Create())), ElementsAre(Handle("spINodeAttributesOnThis")));
    {
        const QTBFault fault("GetKey", b);
        EXPECT_THAT(diagnosis(b), ElementsAre(Call("spINodeAttributesOnThis->GetKey")));
    }
    {
        const QTBFault fault("GetKey", b, 1);
        EXPECT_THAT(diagnosis(b), ElementsAre(Call("spINodeAttributesOnThis->GetKey"), Call("IsRepDefaultNode")));
    }
    EXPECT_THAT(diagnosis(CreateLooseRepNode("B")), ElementsAre(Handle("m_spIRepNodeCont"), Call("GetRepNodeByKey")));
    EXPECT_THAT(diagnosis(b), ElementsAre(Call("GetPdmNodeByKey"))) << "no key to search by";
}

TEST_F(RepNodeDebugInfo, IsAddedToOneNode)
{
    EXPECT_THAT(AddInfo(b, "one", FALSE), Succeeds());
    EXPECT_THAT(InfoStrings(b), ElementsAre("1: one"));
    EXPECT_THAT(InfoStrings(d), IsEmpty());
}

TEST_F(RepNodeDebugInfo, IsAddedToAllRepNodesOfThePdmNodeInEveryWindow)
{
    EXPECT_THAT(AddInfo(a, "all", TRUE), Succeeds());
    EXPECT_THAT(InfoStrings(a), ElementsAre("1: all"));
    EXPECT_THAT(InfoStrings(rootWithoutWindow), ElementsAre("1: all"));
    EXPECT_THAT(InfoStrings(b), IsEmpty());
}

TEST_F(RepNodeDebugInfo, ChecksWhatItNeedsToBeAddedToAll)
{
    const auto diagnosis = [](const QTBIRepNode_var& spIRepNode) {
        return DiagnosisOf([&] { return AddInfo(spIRepNode, "all", TRUE); });
    };
    {
        const QTBFault fault("GetRepNodes", FindNode("A"));
        EXPECT_THAT(diagnosis(a), ElementsAre(Call("spIPdmNode->GetRepNodes")));
    }
    {
        const QTBFault fault("AddDebugInfoString", rootWithoutWindow);
        EXPECT_THAT(diagnosis(a), ElementsAre(Call("spIRepNode->AddDebugInfoString")));
    }
    EXPECT_THAT(QTBINodeRelations_var(FindNode("D"))->AddRightNode("PdmToRep", CreateLoose("QTBNode"), 1, TRUE),
                Succeeds());
    EXPECT_THAT(diagnosis(d), ElementsAre(Handle("spIRepNode")));
    Unlink(b);
    EXPECT_THAT(diagnosis(b), ElementsAre(Call("GetPdmNode")));
    EXPECT_THAT(AddInfo(b, "one", FALSE), Succeeds());
}

} // namespace

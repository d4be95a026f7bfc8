#include "QTBELinkToQtbOnASMPRODUCT.h"

#include <memory>

#include <gmock/gmock.h>

#include "CATFrmEditor.h"
#include "CATHSO.h"
#include "CATPathElement.h"
#include "QTBILinkToQtb.h"
#include "QTBIPsnNode.h"
#include "QTBListValues.h"
#include "QTBMatchers.h"
#include "QTBPartInstanceInfo.h"
#include "QTBProductSession.h"
#include "QTBTestWindow.h"
#include "QTBVisUtil.h"

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

constexpr const char* EXPAND = "QTBELinkToQtbOnASMPRODUCT::ExpandToChildPart -> ";

// The parts A (N1), B (N2) and C (N3) with the products N1/B.1/C.1, and the product X of the file FX, which is no part.
class HighlightedProduct : public QTBProductSession
{
protected:
    void SetUp() override
    {
        QTBProductSession::SetUp();
        Open(R"(
            <product id="p" file="p.CATProduct" partNumber="N1"><instance of="b" name="B.1"/></product>
            <product id="b" file="b.CATProduct" partNumber="N2"><instance of="c" name="C.1"/></product>
            <product id="c" file="c.CATPart" partNumber="N3"/>
            <product id="x" file="x.CATPart" partNumber="X"/>)");
        Update(NumberedPart("A", "N1") + NumberedPart("B", "N2") + NumberedPart("C", "N3") +
               Usage("AB", "A", "B", "B.1") + Usage("BC", "B", "C", "C.1") + File("CATPartFile", "FX", "x.CATPart"));
        m_pWindow = std::make_unique<QTBTestWindow>();
    }
    void TearDown() override
    {
        m_pWindow.reset();
        QTBProductSession::TearDown();
    }

    HRESULT Highlight(const CATIProduct_var& spProduct, unsigned char bEmptyFirst = TRUE)
    {
        m_pFrmWindow = nullptr;
        return QTBILinkToQtb_var(spProduct)->HighlightProdStrucNode(bEmptyFirst, FALSE, &m_pFrmWindow);
    }
    HRESULT HighlightFile(const CATIProduct_var& spProduct, unsigned char bEmptyFirst = TRUE)
    {
        m_pFrmWindow = nullptr;
        return QTBILinkToQtb_var(spProduct)->HighlightCatiaFileNode(bEmptyFirst, FALSE, &m_pFrmWindow);
    }

    // The rep nodes that the window highlights, in their order.
    CATListValCATBaseUnknown_var HighlightedNodes() const
    {
        CATListValCATBaseUnknown_var repNodes;
        for (const CATPathElement_var& spPath : m_pWindow->GetFrmWindow()->GetEditor()->GetHSO()->GetElements()) {
            repNodes.Append(spPath->GetObject());
        }
        return repNodes;
    }
    std::vector<std::string> Highlighted() const { return QTBTestWindow::PdmKeysOf(HighlightedNodes()); }
    void HighlightByHand(const char* key) const
    {
        unsigned char bEmptyHSO = TRUE;
        unsigned char bHighlightObjectOfRelation = FALSE;
        EXPECT_THAT(m_pWindow->Find(FindNode(key))->Highlight(&bEmptyHSO, &bHighlightObjectOfRelation), Succeeds());
    }

    // Shows the tree of a PDM node a second time beside the first.
    void ShowAgain(const char* key, const std::vector<const char*>& relationNames) const
    {
        CATListValCATBaseUnknown_var shown;
        shown.Append(m_pWindow->Find(FindNode(key)));
        unsigned char bClear = FALSE;
        unsigned char bUsePdmNodes = FALSE;
        EXPECT_THAT(m_pWindow->GetCont()->AddAsRepRootNodes(shown, &bClear, &bUsePdmNodes, nullptr, nullptr),
                    Succeeds());
        m_pWindow->Show(FindNode(key), relationNames);
        EXPECT_EQ(RepNodesOf(key).Size(), 2);
    }
    CATListValCATBaseUnknown_var RepNodesOf(const char* key) const
    {
        CATListValCATBaseUnknown_var repNodes;
        EXPECT_THAT(PdmNode(key)->GetRepNodes(&repNodes, m_pWindow->GetCont()), Succeeds());
        return repNodes;
    }

    static CATListValCATBaseUnknown_var RootsWithNumber(const char* partNumber)
    {
        CATFrmWindow* pFrmWindow = nullptr;
        CATListValCATBaseUnknown_var roots;
        EXPECT_THAT(QTBVisUtil::GetQtbWindowForHighlight(QTB_ROOT_REP_NODE_PART, partNumber, &pFrmWindow, &roots),
                    Succeeds());
        return roots;
    }
    static std::vector<CATBaseUnknown_var> RootsOf(const CATListValCATBaseUnknown_var& repNodes)
    {
        std::vector<CATBaseUnknown_var> roots;
        for (const CATBaseUnknown_var& spRepNode : repNodes) {
            QTBIRepNode_var spRoot(spRepNode);
            for (QTBIRepNode_var spParent; SUCCEEDED(spRoot->GetParent(&spParent));) {
                spRoot = spParent;
            }
            roots.emplace_back(spRoot);
        }
        return roots;
    }

    std::unique_ptr<QTBTestWindow> m_pWindow;
    CATFrmWindow* m_pFrmWindow = nullptr;
};

TEST_F(HighlightedProduct, TwoLevelsBelowTheRootIsShownByTheRelationAboveItsPart)
{
    m_pWindow->Show(FindNode("A"), {"PartPart"});
    const CATIProduct_var spProduct = At("N1", {"B.1", "C.1"});
    CATListValQTBPartInstanceInfo path;
    CATIProduct_var spMainNode;
    EXPECT_THAT(QTBIPsnNode_var(spProduct)->GetPathToRootPartInstanceInfo(&path, &spMainNode), Succeeds());
    EXPECT_EQ(path.Size(), 2);

    const QTBIRepNode_var spRelation = m_pWindow->Find(FindNode("BC"));
    CATUnicodeString usDisplayString;
    int containerId = -1;
    EXPECT_THAT(spRelation->GetDisplayString(&usDisplayString), Succeeds());
    EXPECT_THAT(m_pWindow->GetCont()->GetId(&containerId), Succeeds());
    const DebugCapture capture;
    EXPECT_THAT(Highlight(spProduct), Succeeds());
    EXPECT_THAT(capture.Lines(), Contains("product structure node:[" + ToText(usDisplayString) +
                                          "]: rep node container id:[" + std::to_string(containerId) + "]"));
    EXPECT_THAT(Highlighted(), ElementsAre("C")) << "a relation is highlighted by its object";
    EXPECT_EQ(m_pFrmWindow, m_pWindow->GetFrmWindow());
}

TEST_F(HighlightedProduct, WhoseInstanceNameTwoRelationsUseIsNotFound)
{
    Update(Usage("AB2", "A", "B", "B.1"));
    m_pWindow->Show(FindNode("A"), {"PartPart"});
    const DebugCapture capture;
    EXPECT_THAT(Highlight(At("N1", {"B.1"})), FailsAssertion("ProdStrucRepNodes.Size() > 0"));
    EXPECT_THAT(capture.Lines(), Contains(EXPAND + std::string("instance name [B.1] found more than once, returning")));
    EXPECT_THAT(Highlighted(), IsEmpty());
}

TEST_F(HighlightedProduct, WhoseRootPartIsShownTwiceIsHighlightedInBothTrees)
{
    m_pWindow->Show(FindNode("A"), {"PartPart"});
    ShowAgain("A", {"PartPart"});
    HighlightByHand("A");
    EXPECT_THAT(Highlight(At("N1", {"B.1"}), TRUE), Succeeds());
    EXPECT_THAT(Highlighted(), ElementsAre("B", "B")) << "the first empties the set, the second is added";
    EXPECT_THAT(RootsOf(HighlightedNodes()), ElementsAreArray(ListValues(RootsWithNumber("N1"))));
    HighlightByHand("A");
    EXPECT_THAT(Highlight(At("N1", {"B.1"}), FALSE), Succeeds());
    EXPECT_THAT(Highlighted(), ElementsAre("A", "B", "B"));
}

TEST_F(HighlightedProduct, WithoutPartIsHighlightedByTheRootsThatShowItsFile)
{
    const QTBTestWindow other;
    other.Show(FindNode("A"), {"PartPart"});
    m_pWindow->Show(FindNode("A"), {"PartPart"});
    m_pWindow->Show(FindNode("FX"), {});
    ShowAgain("FX", {});
    EXPECT_THAT(HighlightFile(Root("X"), FALSE), Succeeds());
    EXPECT_THAT(Highlighted(), ElementsAre("FX", "FX"));
    EXPECT_EQ(m_pFrmWindow, m_pWindow->GetFrmWindow());
    EXPECT_EQ(other.GetFrmWindow()->GetEditor()->GetHSO()->GetSize(), 0);
    EXPECT_THAT(HighlightFile(Root("X"), TRUE), Succeeds());
    EXPECT_THAT(Highlighted(), ElementsAre("FX")) << "each file node empties the set";
}

TEST_F(HighlightedProduct, WithoutCorrespondingRepNodeFails)
{
    m_pWindow->Show(FindNode("A"), {});
    const DebugCapture capture;
    EXPECT_THAT(Highlight(At("N1", {"B.1"})), FailsAssertion("ProdStrucRepNodes.Size() > 0"));
    EXPECT_THAT(capture.Lines(), Contains(EXPAND + std::string("instance name [B.1] not found, returning")));
    EXPECT_THAT(Highlighted(), IsEmpty());
    m_pWindow->Show(FindNode("A"), {"PartPart"});
    EXPECT_THAT(Highlight(At("N1", {"B.1"})), Succeeds());
}

} // namespace

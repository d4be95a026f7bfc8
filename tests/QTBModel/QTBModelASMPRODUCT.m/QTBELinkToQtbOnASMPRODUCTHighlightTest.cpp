#include "QTBELinkToQtbOnASMPRODUCT.h"

#include <memory>

#include <gmock/gmock.h>

#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATHSO.h"
#include "CATPathElement.h"
#include "QTBEditedSchema.h"
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
using ::testing::UnorderedElementsAre;

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
    HRESULT HighlightFile(const CATIProduct_var& spProduct, unsigned char bEmptyFirst = TRUE,
                          unsigned char bActivateWindow = FALSE)
    {
        m_pFrmWindow = nullptr;
        return QTBILinkToQtb_var(spProduct)->HighlightCatiaFileNode(bEmptyFirst, bActivateWindow, &m_pFrmWindow);
    }

    // A file of a part.
    static std::string FileOf(const std::string& partKey, const std::string& key, const std::string& fileName)
    {
        return File("CATProductFile", key, fileName) + Relation("PartFile", partKey + key, partKey, key);
    }
    // A file used in another under that instance name.
    static std::string FileUsage(const std::string& key, const std::string& leftKey, const std::string& rightKey,
                                 const std::string& instanceName)
    {
        return Relation("FileFile", key, leftKey, rightKey, Attribute("InstanceName", instanceName));
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

    static QTBIRepNode_var ParentOf(const CATBaseUnknown_var& spRepNode)
    {
        QTBIRepNode_var spParent;
        EXPECT_THAT(QTBIRepNode_var(spRepNode)->GetParent(&spParent), Succeeds());
        return spParent;
    }
    static void RemoveFromGraph(const char* key)
    {
        EXPECT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph(key, FALSE, FALSE, FALSE, nullptr), Succeeds());
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

TEST_F(HighlightedProduct, OfAPartIsHighlightedByTheFilesOfThatPartAndNotOfItsChildren)
{
    Update(FileOf("A", "FA", "b.CATProduct") + FileOf("B", "FB", "b.CATProduct") + FileOf("B", "FO", "other.CATPart") +
           FileOf("C", "FC", "b.CATProduct") + Object("Document", "D") + Relation("PartDocument", "BD", "B", "D") +
           File("CATProductFile", "FD", "b.CATProduct") + Relation("DocumentFile", "DF", "D", "FD"));
    m_pWindow->Show(FindNode("A"), {"PartPart", "PartFile", "PartDocument", "DocumentFile"});
    const QTBIRepNode_var spFile = m_pWindow->Find(FindNode("FB"));
    CATUnicodeString usDisplayString;
    int containerId = -1;
    EXPECT_THAT(spFile->GetDisplayString(&usDisplayString), Succeeds());
    EXPECT_THAT(m_pWindow->GetCont()->GetId(&containerId), Succeeds());
    const DebugCapture capture;
    EXPECT_THAT(HighlightFile(At("N1", {"B.1"}), FALSE), Succeeds());
    EXPECT_THAT(Highlighted(), UnorderedElementsAre("FB", "FD"));
    EXPECT_EQ(m_pFrmWindow, m_pWindow->GetFrmWindow());
    EXPECT_THAT(capture.Lines(), Contains("CATIA file node:[" + ToText(usDisplayString) + "]: rep node container id:[" +
                                          std::to_string(containerId) + "]"));
}

TEST_F(HighlightedProduct, OfARootPartIsHighlightedByTheFilesOfThatPart)
{
    Update(FileOf("A", "FA", "p.CATProduct") + FileOf("B", "FB", "p.CATProduct"));
    m_pWindow->Show(FindNode("A"), {"PartPart", "PartFile"});
    EXPECT_THAT(HighlightFile(Root("N1"), FALSE), Succeeds());
    EXPECT_THAT(Highlighted(), ElementsAre("FA"));
}

TEST_F(HighlightedProduct, OfAPartThatIsShownTwiceIsHighlightedByTheFilesOfBothInOrder)
{
    Update(FileOf("B", "FB", "b.CATProduct") + FileOf("B", "FB2", "b.CATProduct"));
    m_pWindow->Show(FindNode("A"), {"PartPart", "PartFile"});
    ShowAgain("A", {"PartPart", "PartFile"});
    EXPECT_THAT(HighlightFile(At("N1", {"B.1"}), FALSE), Succeeds());
    EXPECT_THAT(Highlighted(), UnorderedElementsAre("FB", "FB2", "FB", "FB2"));
    const CATListValCATBaseUnknown_var roots = RootsWithNumber("N1");
    ASSERT_EQ(roots.Size(), 2);
    EXPECT_THAT(RootsOf(HighlightedNodes()), ElementsAre(roots[1], roots[1], roots[2], roots[2]));
}

TEST_F(HighlightedProduct, OfAFileStructureIsHighlightedByTheFileThatItsInstanceNamesLeadTo)
{
    Update(File("CATProductFile", "FP", "p.CATProduct") + File("CATProductFile", "FB", "b.CATProduct") +
           File("CATPartFile", "FC", "c.CATPart") + File("CATPartFile", "FO", "other.CATPart") +
           FileUsage("PB", "FP", "FB", "B.1") + FileUsage("BC", "FB", "FC", "C.1") +
           FileUsage("BO", "FB", "FO", "C.1") + FileUsage("BC2", "FB", "FC", "C.2"));
    m_pWindow->Show(FindNode("FP"), {"FileFile"});
    const CATIProduct_var spProduct = At("N1", {"B.1", "C.1"});
    EXPECT_THAT(HighlightFile(spProduct), FailsCall("QTBVisUtil::GetQtbWindowForHighlight"))
        << "the part structure leads nowhere";

    QTBLoadEditedSchema({{R"(bomPartStructure="true")", R"(bomPartStructure="false")"}});
    EXPECT_THAT(HighlightFile(spProduct), Succeeds());
    EXPECT_THAT(Highlighted(), ElementsAre("FC"));
    EXPECT_TRUE(ParentOf(HighlightedNodes()[1]) == m_pWindow->Find(FindNode("BC")));
    EXPECT_EQ(m_pFrmWindow, m_pWindow->GetFrmWindow());
    EXPECT_THAT(HighlightFile(Root("N1")), Succeeds());
    EXPECT_THAT(Highlighted(), ElementsAre("FP"));

    EXPECT_THAT(HighlightFile(Root("X")), FailsCall("QTBVisUtil::GetPathToRootInstanceNames"));
    RemoveFromGraph("BC");
    EXPECT_THAT(HighlightFile(spProduct), FailsCall("QTBVisUtil::GetTargetChildFileNodes"));
}

TEST_F(HighlightedProduct, BringsItsWindowToTheFrontOnRequest)
{
    Update(FileOf("B", "FB", "b.CATProduct"));
    m_pWindow->Show(FindNode("A"), {"PartPart", "PartFile"});
    const QTBTestWindow other;
    CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    const QTBILinkToQtb_var spILinkToQtb(At("N1", {"B.1"}));
    for (const auto highlight : {&QTBILinkToQtb::HighlightProdStrucNode, &QTBILinkToQtb::HighlightCatiaFileNode}) {
        pLayout->SetCurrentWindow(other.GetFrmWindow());
        EXPECT_THAT(((*spILinkToQtb).*highlight)(TRUE, FALSE, nullptr), Succeeds());
        EXPECT_EQ(pLayout->GetCurrentWindow(), other.GetFrmWindow());
        EXPECT_THAT(((*spILinkToQtb).*highlight)(TRUE, TRUE, nullptr), Succeeds());
        EXPECT_EQ(pLayout->GetCurrentWindow(), m_pWindow->GetFrmWindow());
    }
}

TEST_F(HighlightedProduct, WithoutFileNodeBringsNoWindowToTheFront)
{
    m_pWindow->Show(FindNode("A"), {"PartPart"});
    const QTBTestWindow other;
    CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    pLayout->SetCurrentWindow(other.GetFrmWindow());
    const DebugCapture capture;
    EXPECT_THAT(HighlightFile(At("N1", {"B.1"}), TRUE, TRUE), Succeeds());
    EXPECT_EQ(pLayout->GetCurrentWindow(), other.GetFrmWindow());
    EXPECT_THAT(capture.Lines(), Contains("QTBELinkToQtbOnASMPRODUCT::HighlightProdStrucNode -> "
                                          "pFrmWindowWhereHighlighted == NULL !"));
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

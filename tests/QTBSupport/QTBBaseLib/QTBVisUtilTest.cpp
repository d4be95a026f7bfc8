#include "QTBVisUtil.h"

#include <gmock/gmock.h>

#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATPathElement.h"
#include "QTBTestLateType.h"
#include "QTBTestSession.h"
#include "QTBTestWindow.h"

namespace {

using ::testing::ElementsAre;

class VisUtil : public QTBTestSession
{
protected:
    static CATPathElement_var GetPath(const CATBaseUnknown_var& spNode, CATFrmEditor* pFrmEditor)
    {
        CATPathElement* pPathElement = nullptr;
        EXPECT_EQ(QTBVisUtil::GetPathElementPtrFromNode(spNode, pFrmEditor, &pPathElement), S_OK);
        return CATPathElement_var::Adopt(pPathElement);
    }

    // PDM keys along a path, root first.
    static std::vector<std::string> KeysAlong(const CATPathElement_var& spPath)
    {
        std::vector<CATBaseUnknown_var> objects;
        for (const CATPathElement* p = spPath.Get(); p != nullptr; p = p->GetParent()) {
            objects.push_back(p->GetObject());
        }
        CATListValCATBaseUnknown_var list;
        for (auto it = objects.rbegin(); it != objects.rend(); ++it) {
            list.Append(*it);
        }
        return QTBTestWindow::PdmKeysOf(list);
    }
};

TEST_F(VisUtil, GivesThePathFromTheRootToARepNode)
{
    const QTBTestWindow window;
    Update(Part("A") + Part("B") + Part("C") + PartPart("R1", "A", "B") + PartPart("R2", "B", "C"));
    window.Show(FindNode("A"), {"PartPart"});
    CATFrmEditor* pFrmEditor = window.GetFrmWindow()->GetEditor();
    const CATPathElement_var spPath = GetPath(window.Find(FindNode("C")), pFrmEditor);
    EXPECT_EQ(spPath->GetSize(), 5);
    EXPECT_THAT(KeysAlong(spPath), ElementsAre("A", "R1", "B", "R2", "C"));
    EXPECT_THAT(KeysAlong(GetPath(window.Find(FindNode("A")), pFrmEditor)), ElementsAre("A"));
}

TEST_F(VisUtil, GivesTheSamePathAgainAndSharesItsBeginning)
{
    const QTBTestWindow window;
    Update(Part("A") + Part("B") + Part("C") + PartPart("R1", "A", "B") + PartPart("R2", "A", "C"));
    window.Show(FindNode("A"), {"PartPart"});
    CATFrmEditor* pFrmEditor = window.GetFrmWindow()->GetEditor();
    const CATPathElement_var spToB = GetPath(window.Find(FindNode("B")), pFrmEditor);
    EXPECT_EQ(GetPath(window.Find(FindNode("B")), pFrmEditor).Get(), spToB.Get());
    const CATPathElement_var spToC = GetPath(window.Find(FindNode("C")), pFrmEditor);
    EXPECT_EQ(spToC->GetParent()->GetParent(), spToB->GetParent()->GetParent());
    EXPECT_EQ(pFrmEditor->GetPathElements().GetSize(), 5);
}

TEST_F(VisUtil, GivesAPathOfOneForAnyOtherComponent)
{
    QTBTestLateType product("TestProduct");
    const QTBTestWindow window;
    const CATBaseUnknown_var spProduct = product.Create();
    const CATPathElement_var spPath = GetPath(spProduct, window.GetFrmWindow()->GetEditor());
    EXPECT_EQ(spPath->GetSize(), 1);
    EXPECT_EQ(spPath->GetObject(), spProduct);
}

TEST_F(VisUtil, GivesNoPathInAnEditorThatDoesNotShowTheNode)
{
    const QTBTestWindow window;
    const QTBTestWindow other;
    Update(Part("A"));
    window.Show(FindNode("A"), {});
    CATPathElement* pPathElement = nullptr;
    EXPECT_EQ(QTBVisUtil::GetPathElementPtrFromNode(window.Find(FindNode("A")), other.GetFrmWindow()->GetEditor(),
                                                    &pPathElement),
              E_FAIL);
    EXPECT_EQ(pPathElement, nullptr);
}

TEST_F(VisUtil, GivesNoPathForEmptyHandlesAndNullPointers)
{
    const QTBTestWindow window;
    Update(Part("A"));
    window.Show(FindNode("A"), {});
    CATFrmEditor* pFrmEditor = window.GetFrmWindow()->GetEditor();
    const QTBIRepNode_var spIRepNode = window.Find(FindNode("A"));
    CATPathElement* pPathElement = nullptr;
    EXPECT_EQ(QTBVisUtil::GetPathElementPtrFromNode(NULL_var, pFrmEditor, &pPathElement), E_FAIL);
    EXPECT_EQ(QTBVisUtil::GetPathElementPtrFromNode(spIRepNode, nullptr, &pPathElement), E_FAIL);
    EXPECT_EQ(QTBVisUtil::GetPathElementPtrFromNode(spIRepNode, pFrmEditor, nullptr), E_FAIL);
}

TEST_F(VisUtil, GivesPathsOfThousandsOfLevels)
{
    constexpr int LEVELS = 5000;
    std::string items = Part("P0");
    for (int i = 1; i < LEVELS; ++i) {
        const std::string key = "P" + std::to_string(i);
        items += Part(key) + PartPart("R" + std::to_string(i), "P" + std::to_string(i - 1), key);
    }
    const QTBTestWindow window;
    Update(items);
    window.Show(FindNode("P0"), {"PartPart"});
    const QTBIRepNode_var spLeaf = window.Find(FindNode(("P" + std::to_string(LEVELS - 1)).c_str()));
    EXPECT_EQ(GetPath(spLeaf, window.GetFrmWindow()->GetEditor())->GetSize(), 2 * LEVELS - 1);
}

TEST_F(VisUtil, FindsTheWindowAndTheRootsOfAPartNumber)
{
    const QTBTestWindow first;
    const QTBTestWindow second;
    Update(Part("A", Attribute("PartNumber", "4711")) + Part("B", Attribute("PartNumber", "4712")));
    first.Show(FindNode("A"), {});
    first.Show(FindNode("B"), {});
    CATFrmWindow* pFrmWindow = nullptr;
    CATListValCATBaseUnknown_var roots;
    EXPECT_EQ(QTBVisUtil::GetQtbWindowForHighlight(QTB_ROOT_REP_NODE_PART, "4712", &pFrmWindow, &roots), S_OK);
    EXPECT_EQ(pFrmWindow, first.GetFrmWindow());
    EXPECT_THAT(QTBTestWindow::PdmKeysOf(roots), ElementsAre("B"));
}

TEST_F(VisUtil, PrefersTheCurrentWindow)
{
    const QTBTestWindow first;
    const QTBTestWindow second;
    const QTBTestWindow third;
    Update(Part("A", Attribute("PartNumber", "4711")));
    for (const QTBTestWindow* pWindow : {&first, &second, &third}) {
        pWindow->Show(FindNode("A"), {});
    }
    const auto find = [] {
        CATFrmWindow* pFrmWindow = nullptr;
        CATListValCATBaseUnknown_var roots;
        EXPECT_EQ(QTBVisUtil::GetQtbWindowForHighlight(QTB_ROOT_REP_NODE_PART, "4711", &pFrmWindow, &roots), S_OK);
        EXPECT_EQ(roots.Size(), 1);
        return pFrmWindow;
    };
    CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    pLayout->SetCurrentWindow(second.GetFrmWindow());
    EXPECT_EQ(find(), second.GetFrmWindow());
    CATFrmWindow* pOther = CATFrmWindow::Create("other", nullptr);
    EXPECT_EQ(find(), first.GetFrmWindow());
    pLayout->CloseWindow(pOther);
}

TEST_F(VisUtil, FindsTheWindowAndTheRootsOfAFileName)
{
    const QTBTestWindow window;
    Update(Object("CATPartFile", "F", Attribute("FileName", "a.CATPart")));
    window.Show(FindNode("F"), {});
    CATFrmWindow* pFrmWindow = nullptr;
    CATListValCATBaseUnknown_var roots;
    EXPECT_EQ(QTBVisUtil::GetQtbWindowForHighlight(QTB_ROOT_REP_NODE_FILE, "a.CATPart", &pFrmWindow, &roots), S_OK);
    EXPECT_EQ(pFrmWindow, window.GetFrmWindow());
    EXPECT_THAT(QTBTestWindow::PdmKeysOf(roots), ElementsAre("F"));
}

TEST_F(VisUtil, FindsNoWindowForWhatIsNotShown)
{
    const QTBTestWindow window;
    CATFrmWindow* pFrmWindow = nullptr;
    CATListValCATBaseUnknown_var roots;
    EXPECT_EQ(QTBVisUtil::GetQtbWindowForHighlight(QTB_ROOT_REP_NODE_PART, "4711", &pFrmWindow, &roots), E_FAIL);
    EXPECT_EQ(pFrmWindow, nullptr);
    EXPECT_EQ(QTBVisUtil::GetQtbWindowForHighlight(QTB_ROOT_REP_NODE_PART, "", &pFrmWindow, &roots), E_FAIL);
    EXPECT_EQ(QTBVisUtil::GetQtbWindowForHighlight(QTB_ROOT_REP_NODE_PART, "4711", nullptr, &roots), E_FAIL);
    EXPECT_EQ(QTBVisUtil::GetQtbWindowForHighlight(QTB_ROOT_REP_NODE_PART, "4711", &pFrmWindow, nullptr), E_FAIL);
    pFrmWindow = window.GetFrmWindow();
    EXPECT_EQ(QTBVisUtil::GetQtbWindowForHighlight(QTB_ROOT_REP_NODE_PART, "4711", &pFrmWindow, &roots), E_FAIL);
}

} // namespace

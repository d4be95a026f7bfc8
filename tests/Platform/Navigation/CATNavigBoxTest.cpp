#include "CATNavigBox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

#include "CATError.h"
#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATFrmNavigGraphicWindow.h"
#include "CATINavigateObject.h"
#include "CATIRedrawEvent.h"
#include "QTBTestLateType.h"
#include "TIECATINavigateObject.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// What the objects of a test tree show, by their identity.
struct Shown
{
    const char* label = "";
    CATListValCATBaseUnknown_var children;
    int questions = 0;
};
std::map<const CATBaseUnknown*, Shown> g_Shown;

class TestNavigateObject : public CATBaseUnknown
{
public:
    CATListValCATUnicodeString* GetIdentificators()
    {
        ++g_Shown[GetImpl()].questions;
        auto* pLabel = new CATListValCATUnicodeString();
        pLabel->Append(g_Shown[GetImpl()].label);
        return pLabel;
    }
    CATListValCATBaseUnknown_var* GetChildren()
    {
        const CATListValCATBaseUnknown_var& children = g_Shown[GetImpl()].children;
        return children.Size() > 0 ? new CATListValCATBaseUnknown_var(children) : nullptr;
    }
};

// Answers null to both questions, as an object does that cannot be shown.
class TestMuteObject : public CATBaseUnknown
{
public:
    CATListValCATUnicodeString* GetIdentificators() { return nullptr; }
    CATListValCATBaseUnknown_var* GetChildren() { return nullptr; }
};

class NavigBox : public ::testing::Test
{
protected:
    NavigBox() { m_Type.Register<TIECATINavigateObject, CATINavigateObject, TestNavigateObject>(); }
    ~NavigBox() override { g_Shown.clear(); }

    CATBaseUnknown_var Make(const char* label) const
    {
        CATBaseUnknown_var spObject = m_Type.Create();
        g_Shown[spObject.Get()].label = label;
        return spObject;
    }

    static void Hang(const CATBaseUnknown_var& spParent, const CATBaseUnknown_var& spChild)
    {
        g_Shown[spParent.Get()].children.Append(spChild);
    }

    // The displayed lines: indented, with + for folded and - for unfolded children.
    std::vector<std::string> Display()
    {
        std::vector<std::string> lines;
        for (const CATNavigLine& line : m_Box.Display()) {
            lines.push_back(std::string(static_cast<std::size_t>(line.level), ' ') +
                            (line.bHasChildren ? line.bExpanded ? "-" : "+" : "") + std::string(line.label.View()));
        }
        return lines;
    }

    QTBTestLateType m_Type{"TestNavigateObject"};
    CATNavigBox m_Box;
};

TEST_F(NavigBox, HasItsRootsInOrder)
{
    const CATBaseUnknown_var spA = Make("A");
    const CATBaseUnknown_var spB = Make("B");
    EXPECT_TRUE(m_Box.AddRoot(spA));
    EXPECT_TRUE(m_Box.AddRoot(spB));
    EXPECT_FALSE(m_Box.AddRoot(spA));
    EXPECT_FALSE(m_Box.AddRoot(NULL_var));
    const std::unique_ptr<CATListValCATBaseUnknown_var> pRoots(m_Box.GetAllRoots());
    ASSERT_EQ(pRoots->Size(), 2);
    EXPECT_EQ((*pRoots)[1], spA);
    EXPECT_EQ((*pRoots)[2], spB);
    EXPECT_TRUE(m_Box.RemoveRoot(spA));
    EXPECT_FALSE(m_Box.RemoveRoot(spA));
    EXPECT_THAT(Display(), ElementsAre("B"));
}

TEST_F(NavigBox, GivesAListEvenWithoutRoots)
{
    const std::unique_ptr<CATListValCATBaseUnknown_var> pRoots(m_Box.GetAllRoots());
    ASSERT_NE(pRoots, nullptr);
    EXPECT_EQ(pRoots->Size(), 0);
    EXPECT_THAT(Display(), IsEmpty());
}

TEST_F(NavigBox, ReplacesItsRoots)
{
    const CATBaseUnknown_var spA = Make("A");
    m_Box.AddRoot(Make("old"));
    CATListValCATBaseUnknown_var roots;
    roots.Append(spA);
    roots.Append(NULL_var);
    roots.Append(spA);
    m_Box.SetRoots(roots);
    EXPECT_THAT(Display(), ElementsAre("A"));
}

TEST_F(NavigBox, ShowsChildrenOfUnfoldedObjectsOnly)
{
    const CATBaseUnknown_var spA = Make("A");
    const CATBaseUnknown_var spB = Make("B");
    Hang(spA, spB);
    Hang(spA, Make("C"));
    Hang(spB, Make("D"));
    m_Box.AddRoot(spA);
    EXPECT_THAT(Display(), ElementsAre("+A"));
    m_Box.Expand(spA);
    m_Box.Expand(NULL_var);
    EXPECT_TRUE(m_Box.IsExpanded(spA));
    EXPECT_THAT(Display(), ElementsAre("-A", " +B", " C"));
    m_Box.Expand(spB);
    EXPECT_THAT(Display(), ElementsAre("-A", " -B", "  D", " C"));
    m_Box.Collapse(spA);
    EXPECT_FALSE(m_Box.IsExpanded(spA));
    EXPECT_THAT(Display(), ElementsAre("+A"));
}

TEST_F(NavigBox, AsksAnObjectAgainOnlyAfterItsRedrawEvent)
{
    const CATBaseUnknown_var spA = Make("A");
    const CATBaseUnknown_var spB = Make("B");
    Hang(spA, spB);
    m_Box.AddRoot(spA);
    m_Box.Expand(spA);
    Display();
    g_Shown[spA.Get()].label = "A2";
    g_Shown[spB.Get()].label = "B2";
    EXPECT_THAT(Display(), ElementsAre("-A", " B"));
    CATIRedrawEvent_var(spA)->Redraw();
    EXPECT_THAT(Display(), ElementsAre("-A2", " B"));
    m_Box.RedrawAll();
    EXPECT_THAT(Display(), ElementsAre("-A2", " B2"));
    EXPECT_EQ(g_Shown[spA.Get()].questions, 3);
    EXPECT_EQ(m_Box.GetQuestionCount(), 5U);
}

TEST_F(NavigBox, ShowsNewChildrenAfterTheParentsRedraw)
{
    const CATBaseUnknown_var spA = Make("A");
    m_Box.AddRoot(spA);
    m_Box.Expand(spA);
    EXPECT_THAT(Display(), ElementsAre("A"));
    Hang(spA, Make("B"));
    CATIRedrawEvent_var(spA)->Redraw();
    EXPECT_THAT(Display(), ElementsAre("-A", " B"));
}

TEST_F(NavigBox, IsReachedByRedrawEventsInEveryWindow)
{
    CATNavigBox other;
    const CATBaseUnknown_var spA = Make("A");
    m_Box.AddRoot(spA);
    other.AddRoot(spA);
    m_Box.Display();
    other.Display();
    g_Shown[spA.Get()].label = "A2";
    CATIRedrawEvent_var(spA)->Redraw();
    EXPECT_EQ(m_Box.Display()[0].label, "A2");
    EXPECT_EQ(other.Display()[0].label, "A2");
}

TEST_F(NavigBox, LetsGoOfObjectsThatAreNoLongerShown)
{
    const int before = CATBaseUnknown::GetLiveComponentCount();
    const CATBaseUnknown_var spA = Make("A");
    Hang(spA, Make("B"));
    m_Box.AddRoot(spA);
    m_Box.Expand(spA);
    Display();
    g_Shown[spA.Get()].children.RemoveAll();
    CATIRedrawEvent_var(spA)->Redraw();
    EXPECT_THAT(Display(), ElementsAre("A"));
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before + 2) << "the object and its navigation node";
}

TEST_F(NavigBox, ForgetsThatAnObjectWasUnfoldedWhenItIsNoLongerShown)
{
    const CATBaseUnknown_var spA = Make("A");
    Hang(spA, Make("B"));
    m_Box.AddRoot(spA);
    m_Box.Expand(spA);
    Display();
    m_Box.RemoveRoot(spA);
    EXPECT_THAT(Display(), IsEmpty());
    EXPECT_FALSE(m_Box.IsExpanded(spA));
}

TEST_F(NavigBox, ShowsAnObjectBelowItselfWithoutUnfoldingItThere)
{
    const CATBaseUnknown_var spA = Make("A");
    const CATBaseUnknown_var spB = Make("B");
    Hang(spA, spB);
    Hang(spB, spA);
    m_Box.AddRoot(spA);
    m_Box.Expand(spA);
    m_Box.Expand(spB);
    EXPECT_THAT(Display(), ElementsAre("-A", " -B", "  +A"));
    g_Shown[spB.Get()].children.RemoveAll();
    CATIRedrawEvent_var(spB)->Redraw();
    EXPECT_THAT(Display(), ElementsAre("-A", " B"));
}

TEST_F(NavigBox, ShowsAnObjectInEveryPlace)
{
    const CATBaseUnknown_var spA = Make("A");
    const CATBaseUnknown_var spB = Make("B");
    const CATBaseUnknown_var spScrew = Make("Screw");
    Hang(spA, spScrew);
    Hang(spB, spScrew);
    Hang(spScrew, Make("Thread"));
    for (const CATBaseUnknown_var& spRoot : {spA, spB}) {
        m_Box.AddRoot(spRoot);
        m_Box.Expand(spRoot);
    }
    m_Box.Expand(spScrew);
    EXPECT_THAT(Display(), ElementsAre("-A", " -Screw", "  Thread", "-B", " -Screw", "  Thread"));
}

TEST_F(NavigBox, ShowsTheLateTypeOfObjectsThatCannotBeAsked)
{
    QTBTestLateType plain("TestPlainObject");
    m_Box.AddRoot(plain.Create());
    EXPECT_THAT(Display(), ElementsAre("TestPlainObject"));
}

TEST_F(NavigBox, ShowsAnEmptyLineForAnObjectThatGivesNoAnswer)
{
    QTBTestLateType mute("TestMuteObject");
    mute.Register<TIECATINavigateObject, CATINavigateObject, TestMuteObject>();
    m_Box.AddRoot(mute.Create());
    EXPECT_THAT(Display(), ElementsAre(""));
}

TEST_F(NavigBox, ShowsTreesOfAHundredThousandLevels)
{
    constexpr int LEVELS = 100000;
    CATBaseUnknown_var spObject = Make("leaf");
    m_Box.Expand(spObject);
    for (int i = 1; i < LEVELS; ++i) {
        const CATBaseUnknown_var spParent = Make("level");
        Hang(spParent, spObject);
        m_Box.Expand(spParent);
        spObject = spParent;
    }
    m_Box.AddRoot(spObject);
    const std::vector<CATNavigLine> lines = m_Box.Display();
    ASSERT_EQ(lines.size(), static_cast<std::size_t>(LEVELS));
    EXPECT_EQ(lines.back().level, LEVELS - 1);
    EXPECT_EQ(lines.back().label, "leaf");
}

TEST(RedrawEvent, IsAnsweredByEveryComponentAndHasNoEffectWithoutABox)
{
    QTBTestLateType plain("TestPlainObject");
    const CATIRedrawEvent_var spIRedrawEvent(plain.Create());
    ASSERT_NE(spIRedrawEvent.Get(), nullptr);
    spIRedrawEvent->Redraw();
}

TEST(NavigGraphicWindow, HasANavigationBoxOfItsOwn)
{
    CATFrmEditor* pEditor = CATFrmEditor::Create();
    CATFrmNavigGraphicWindow* pFirst = CATFrmNavigGraphicWindow::Create("first", pEditor);
    CATFrmNavigGraphicWindow* pSecond = CATFrmNavigGraphicWindow::Create("second", pEditor);
    const CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    EXPECT_EQ(pLayout->GetCurrentWindow(), pSecond);
    EXPECT_EQ(pFirst->GetEditor(), pEditor);
    CATFrmWindow* pWindow = pFirst;
    ASSERT_NE(pWindow->GetNavigBox(), nullptr);
    EXPECT_NE(pWindow->GetNavigBox(), pSecond->GetNavigBox());
    CATFrmLayout::GetCurrentLayout()->CloseEditor(pEditor);
    EXPECT_EQ(pLayout->GetWindowList().Size(), 0);
}

} // namespace

#include "CATNavigNode.h"

#include <gmock/gmock.h>

#include <memory>

#include "CATIAlias.h"
#include "CATIGraphNode.h"
#include "CATINavigModify.h"
#include "CATINavigateObject.h"
#include "CATIRedrawEvent.h"
#include "CATNavigBox.h"
#include "CATNavigInstance.h"
#include "CATNodeExtension.h"
#include "QTBTestLateType.h"
#include "TIECATIAlias.h"
#include "TIECATINavigModify.h"
#include "TIECATINavigateObject.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// How the navigation nodes of a test look.
struct Look
{
    const char* icon = "TestIcon";
    unsigned char bIconMarking = TRUE;
    unsigned char bLabelMarking = TRUE;
    int stateCode = 7;
    CATNavigExpansionMode expansionMode = CATNavigExpansionMode::FoldedAtFirst;
    const char* shortHelp = nullptr;
    std::vector<const CATBaseUnknown*> updated;
};
Look g_Look;

class TestNavigModify : public CATNodeExtension
{
public:
    void UpdateElem(CATNavigInstance* pInstance) override
    {
        EXPECT_EQ(pInstance, GetAssociatedInstance());
        EXPECT_EQ(pInstance->GetNode().Get(), GetImpl());
        g_Look.updated.push_back(pInstance->GetReference().Get());
        const CATIGraphNode_var spIGraphNode(this);
        EXPECT_EQ(spIGraphNode->SetIconName(g_Look.icon), S_OK);
        EXPECT_EQ(spIGraphNode->SetIconMarking(g_Look.bIconMarking), S_OK);
        EXPECT_EQ(spIGraphNode->SetLabelMarking(g_Look.bLabelMarking), S_OK);
        EXPECT_EQ(spIGraphNode->SetStateCode(g_Look.stateCode), S_OK);
        SetExpansionMode(g_Look.expansionMode);
    }
    HRESULT ModifyShortHelp(CATUnicodeString& ioShortHelp) override
    {
        if (g_Look.shortHelp != nullptr) {
            ioShortHelp = g_Look.shortHelp;
        }
        return S_OK;
    }
};

// Has one child, an object of the same type, and the label "Object".
class TestNavigateObject : public CATBaseUnknown
{
public:
    inline static CATBaseUnknown_var s_spChild;

    CATListValCATUnicodeString* GetIdentificators()
    {
        auto* pLabel = new CATListValCATUnicodeString();
        pLabel->Append("Object");
        return pLabel;
    }
    CATListValCATBaseUnknown_var* GetChildren()
    {
        auto* pChildren = new CATListValCATBaseUnknown_var();
        if (s_spChild != NULL_var && !(s_spChild == CATBaseUnknown_var(this))) {
            pChildren->Append(s_spChild);
        }
        return pChildren;
    }
};

class TestAlias : public CATBaseUnknown
{
public:
    CATUnicodeString GetAlias() { return m_usAlias; }
    HRESULT SetAlias(const CATUnicodeString& usAlias)
    {
        m_usAlias = usAlias;
        return S_OK;
    }

private:
    CATUnicodeString m_usAlias;
};

class NavigNode : public ::testing::Test
{
protected:
    NavigNode()
    {
        m_Type.Register<TIECATINavigateObject, CATINavigateObject, TestNavigateObject>();
        m_NodeType.Register<TIECATINavigModify, CATINavigModify, TestNavigModify>();
    }
    ~NavigNode() override
    {
        TestNavigateObject::s_spChild = NULL_var;
        g_Look = Look();
    }

    CATNavigLine ShowAlone(const CATBaseUnknown_var& spObject)
    {
        CATListValCATBaseUnknown_var roots;
        roots.Append(spObject);
        m_Box.SetRoots(roots);
        return m_Box.Display().at(0);
    }

    QTBTestLateType m_Type{"TestShownObject"};
    QTBTestLateType m_DerivedType{"TestDerivedShownObject", "TestShownObject"};
    QTBTestLateType m_NodeType{"TestShownObject_node"};
    CATNavigBox m_Box;
};

TEST_F(NavigNode, HasTheLateTypeOfItsObjectAndItsBases)
{
    const CATBaseUnknown_var spNode = CATNavigNode::Create(m_DerivedType.Create());
    EXPECT_STREQ(spNode->IsA(), "TestDerivedShownObject_node");
    EXPECT_TRUE(spNode->IsAKindOf("TestShownObject_node"));
    EXPECT_TRUE(spNode->IsAKindOf(CATNavigNode::ROOT_LATE_TYPE));
    EXPECT_STREQ(CATNavigNode::Create(m_Type.Create())->IsA(), "TestShownObject_node");
}

TEST_F(NavigNode, OfAnyObjectHasTheTreesOwnLook)
{
    QTBTestLateType plain("TestPlainShownObject");
    const CATBaseUnknown_var spObject = plain.Create();
    const CATNavigLine line = ShowAlone(spObject);
    EXPECT_EQ(line.icon, "");
    EXPECT_EQ(line.stateCode, 0);
    EXPECT_EQ(m_Box.GetShortHelp(spObject), line.label);
    const CATINavigModify_var spINavigModify(m_Box.GetNode(spObject));
    ASSERT_TRUE(spINavigModify != NULL_var);
    EXPECT_EQ(spINavigModify->GetExpansionMode(), CATNavigExpansionMode::FoldedAtFirst);
    EXPECT_EQ(spINavigModify->GetFatherContainer(), &m_Box);
    EXPECT_EQ(CATIGraphNode_var(spINavigModify)->GetIconName(nullptr), E_POINTER);
}

TEST_F(NavigNode, GivesTheLookThatItsExtensionSays)
{
    const CATNavigLine line = ShowAlone(m_DerivedType.Create());
    EXPECT_EQ(line.icon, "TestIcon");
    EXPECT_EQ(line.stateCode, 7);
}

TEST_F(NavigNode, ShowsItsStateWhileOneOfTheMarksIsOn)
{
    const CATBaseUnknown_var spObject = m_Type.Create();
    g_Look.bIconMarking = FALSE;
    EXPECT_EQ(ShowAlone(spObject).stateCode, 7);
    g_Look.bLabelMarking = FALSE;
    m_Box.Redraw(spObject);
    EXPECT_EQ(ShowAlone(spObject).stateCode, 0);
    const CATIGraphNode_var spIGraphNode(m_Box.GetNode(spObject));
    EXPECT_EQ(spIGraphNode->GetStateCode(), 7) << "the node keeps the code";
    g_Look.bIconMarking = TRUE;
    m_Box.Redraw(spObject);
    EXPECT_EQ(ShowAlone(spObject).stateCode, 7);
    EXPECT_EQ(spIGraphNode->IconIsMarked(), TRUE);
    EXPECT_EQ(spIGraphNode->LabelIsMarked(), FALSE);
}

TEST_F(NavigNode, IsUpdatedWithEachRedrawOfItsObjectAndStaysTheSame)
{
    const CATBaseUnknown_var spObject = m_Type.Create();
    ShowAlone(spObject);
    const CATBaseUnknown_var spNode = m_Box.GetNode(spObject);
    m_Box.Display();
    EXPECT_THAT(g_Look.updated, ElementsAre(spObject.Get()));
    CATIRedrawEvent_var(spObject)->Redraw();
    m_Box.Display();
    EXPECT_THAT(g_Look.updated, ElementsAre(spObject.Get(), spObject.Get()));
    EXPECT_EQ(m_Box.GetNode(spObject), spNode);
}

TEST_F(NavigNode, IsAnotherOneInEachTree)
{
    const CATBaseUnknown_var spObject = m_Type.Create();
    CATNavigBox other;
    other.AddRoot(spObject);
    other.Display();
    ShowAlone(spObject);
    EXPECT_FALSE(m_Box.GetNode(spObject) == other.GetNode(spObject));
    EXPECT_EQ(CATINavigModify_var(other.GetNode(spObject))->GetFatherContainer(), &other);
}

TEST_F(NavigNode, MayChangeTheShortHelp)
{
    const CATBaseUnknown_var spObject = m_Type.Create();
    EXPECT_EQ(m_Box.GetShortHelp(spObject), "") << "not on display";
    m_Box.Expand(spObject);
    EXPECT_EQ(m_Box.GetShortHelp(spObject), "") << "not displayed yet";
    EXPECT_TRUE(m_Box.GetNode(spObject) == NULL_var);
    ShowAlone(spObject);
    EXPECT_EQ(m_Box.GetShortHelp(spObject), "Object");
    g_Look.shortHelp = "What it is";
    EXPECT_EQ(m_Box.GetShortHelp(spObject), "What it is");
    EXPECT_EQ(m_Box.GetShortHelp(NULL_var), "");
}

TEST_F(NavigNode, SaysHowFarItsObjectIsUnfoldedUntilTheUserDoes)
{
    const CATBaseUnknown_var spObject = m_Type.Create();
    TestNavigateObject::s_spChild = m_Type.Create();
    g_Look.expansionMode = CATNavigExpansionMode::UnfoldedAtFirst;
    EXPECT_TRUE(ShowAlone(spObject).bExpanded);
    EXPECT_TRUE(m_Box.IsExpanded(spObject));
    m_Box.Collapse(spObject);
    m_Box.Redraw(spObject);
    EXPECT_FALSE(m_Box.Display().at(0).bExpanded);
    const CATBaseUnknown_var spOther = m_Type.Create();
    g_Look.expansionMode = CATNavigExpansionMode::FoldedAtFirst;
    m_Box.Expand(spOther);
    EXPECT_TRUE(ShowAlone(spOther).bExpanded);
}

TEST_F(NavigNode, IsGivenUpWithItsPlaceInTheTree)
{
    const int before = CATBaseUnknown::GetLiveComponentCount();
    ShowAlone(m_Type.Create());
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before + 2);
    const std::unique_ptr<CATListValCATBaseUnknown_var> pRoots(m_Box.GetAllRoots());
    CATINavigModify_var spINavigModify(m_Box.GetNode((*pRoots)[1]));
    EXPECT_NE(spINavigModify->GetAssociatedInstance(), nullptr);
    pRoots->RemoveAll();
    m_Box.SetRoots(CATListValCATBaseUnknown_var());
    EXPECT_THAT(m_Box.Display(), IsEmpty());
    EXPECT_EQ(spINavigModify->GetAssociatedInstance(), nullptr);
    EXPECT_EQ(spINavigModify->GetFatherContainer(), nullptr);
    spINavigModify = NULL_var;
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before);
}

TEST(NavigBoxNames, AnObjectThatCannotBeAskedIsCalledByItsAliasElseByItsLateType)
{
    QTBTestLateType type("TestNamedObject");
    type.Register<TIECATIAlias, CATIAlias, TestAlias>();
    const CATBaseUnknown_var spObject = type.Create();
    CATNavigBox box;
    box.AddRoot(spObject);
    EXPECT_EQ(box.Display().at(0).label, "TestNamedObject");
    CATIAlias_var(spObject)->SetAlias("Bolt");
    box.RedrawAll();
    EXPECT_EQ(box.Display().at(0).label, "Bolt");
}

} // namespace

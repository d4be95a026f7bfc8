#include "QTBENavigateObjectOnRepNode.h"

#include <memory>
#include <optional>

#include <gmock/gmock.h>

#include "CATINavigateObject.h"
#include "CATNavigBox.h"
#include "QTBRepTreeSession.h"
#include "QTBTestWindow.h"
#include "TIECATINavigateObject.h"

using QTBDiagnosis::Assertion;
using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosesIn;
using QTBDiagnosis::Handle;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

// Rep nodes that give their children as they are linked, without leaving a relation only one.
class UnprunedRepNode : public QTBFaultyRepNode
{
public:
    using QTBFaultyRepNode::GetDirectChildren;
    HRESULT GetDirectChildren(CATListValCATBaseUnknown_var* pListOfRepNodes)
    {
        return QTBINodeRelations_var(this)->GetRightNodeList("RepToRep", pListOfRepNodes, ALL_NODES);
    }
};

// A with B and C below: the tree A(AB(B) AC(C)).
class NavigateRepNode : public QTBFaultyRepTreeSession
{
protected:
    void SetUp() override
    {
        QTBFaultyRepTreeSession::SetUp();
        QTBGlobVarsUtil::SetAddNewNodeRelationsAt(QTB_PLACE_TO_ADD_END);
        Update(Part("A", Attribute("PartNumber", "4711")) + Part("B", Attribute("PartNumber", "4712")) +
               Part("C", Attribute("PartNumber", "4713")) + PartPart("AB", "A", "B") + PartPart("AC", "A", "C"));
        CreateTree();
    }
    void TearDown() override
    {
        ForgetTree();
        QTBFaultyRepTreeSession::TearDown();
    }

    void CreateTree()
    {
        a = CreateRoot("A");
        ab = Create(a, "AB");
        b = Create(ab, "B");
        ac = Create(a, "AC");
        c = Create(ac, "C");
    }
    void ForgetTree() { a = ab = b = ac = c = NULL_var; }

    static void HideRelations() { QTBGlobVarsUtil::SetShowRelations(FALSE); }

    static std::string DisplayStringOf(const QTBIRepNode_var& spIRepNode)
    {
        CATUnicodeString usText;
        EXPECT_THAT(spIRepNode->GetDisplayString(&usText), Succeeds());
        return TextOf(usText);
    }

    // The label; nothing when none is given.
    static std::optional<std::string> LabelOf(const QTBIRepNode_var& spIRepNode)
    {
        const std::unique_ptr<CATListValCATUnicodeString> pLabel(
            CATINavigateObject_var(spIRepNode)->GetIdentificators());
        if (pLabel == nullptr) {
            return {};
        }
        EXPECT_EQ(pLabel->Size(), 1);
        return TextOf((*pLabel)[1]);
    }

    // PDM keys of the children; nothing when no list is given.
    static std::optional<std::vector<std::string>> ChildKeysOf(const QTBIRepNode_var& spIRepNode)
    {
        const std::unique_ptr<CATListValCATBaseUnknown_var> pChildren(
            CATINavigateObject_var(spIRepNode)->GetChildren());
        if (pChildren == nullptr) {
            return {};
        }
        return PdmKeysOf(*pChildren);
    }

    static std::vector<std::string> ChildrenDiagnosis(const QTBIRepNode_var& spIRepNode)
    {
        const DebugCapture capture;
        EXPECT_FALSE(ChildKeysOf(spIRepNode).has_value());
        EXPECT_THAT(capture.Lines(),
                    Contains(HasSubstr("QTBENavigateObjectOnRepNode::GetChildren -> caught exception:")));
        return DiagnosesIn(capture);
    }

    QTBIRepNode_var a, ab, b, ac, c;
};

TEST_F(NavigateRepNode, IsLabelledWithItsDisplayStringWhenRelationsAreShown)
{
    EXPECT_EQ(LabelOf(a), DisplayStringOf(a));
    EXPECT_EQ(LabelOf(ab), DisplayStringOf(ab));
    EXPECT_EQ(LabelOf(b), DisplayStringOf(b));
    EXPECT_EQ(DisplayStringOf(b).find("4712"), 0U);
}

TEST_F(NavigateRepNode, IsLabelledWithTheRelationAboveItWhenRelationsAreHidden)
{
    HideRelations();
    EXPECT_EQ(LabelOf(a), DisplayStringOf(a)) << "a root has nothing above it";
    EXPECT_EQ(LabelOf(b), DisplayStringOf(ab) + " / " + DisplayStringOf(b));
    EXPECT_EQ(LabelOf(ab), DisplayStringOf(a) + " / " + DisplayStringOf(ab));
}

TEST_F(NavigateRepNode, ShowsAQuestionMarkForADisplayStringThatCannotBeHad)
{
    const std::string textOfRelation = DisplayStringOf(ab);
    const std::string textOfObject = DisplayStringOf(b);
    {
        const QTBFault fault("GetDisplayString", b);
        EXPECT_EQ(LabelOf(b), "?");
        HideRelations();
        EXPECT_EQ(LabelOf(b), textOfRelation + " / ?");
    }
    {
        const QTBFault fault("GetDisplayString", ab);
        EXPECT_EQ(LabelOf(b), "? / " + textOfObject);
    }
    const QTBFault fault("GetDisplayString");
    EXPECT_EQ(LabelOf(b), "? / ?");
}

TEST_F(NavigateRepNode, HasNoLabelAndNoChildrenOnAComponentThatIsNoRepNode)
{
    QTBTestLateType type("TestNavigatedObject");
    type.Register<TIECATINavigateObject, CATINavigateObject, QTBENavigateObjectOnRepNode>();
    const CATINavigateObject_var spINavigateObject(type.Create());
    const DebugCapture capture;
    EXPECT_EQ(spINavigateObject->GetIdentificators(), nullptr);
    EXPECT_EQ(spINavigateObject->GetChildren(), nullptr);
    EXPECT_THAT(DiagnosesIn(capture), ElementsAre(Handle("spIRepNodeOnThis"), Handle("spIRepNodeOnThis")));
    EXPECT_THAT(capture.Lines(),
                Contains(HasSubstr("QTBENavigateObjectOnRepNode::GetIdentificators -> caught exception:")));
}

TEST_F(NavigateRepNode, HasItsDirectChildrenWhenRelationsAreShown)
{
    EXPECT_THAT(*ChildKeysOf(a), ElementsAre("AB", "AC"));
    EXPECT_THAT(*ChildKeysOf(ab), ElementsAre("B"));
    EXPECT_FALSE(ChildKeysOf(b).has_value()) << "no list for no children";
}

TEST_F(NavigateRepNode, HasTheObjectsBelowItsRelationsWhenRelationsAreHidden)
{
    HideRelations();
    EXPECT_THAT(*ChildKeysOf(a), ElementsAre("B", "C"));
    EXPECT_FALSE(ChildKeysOf(b).has_value()) << "no list for no children";
}

TEST_F(NavigateRepNode, WithRelationsHiddenARelationWithoutChildrenMakesGetChildrenReturnNull)
{
    HideRelations();
    EXPECT_THAT(Remove(c), Succeeds());
    c = NULL_var;
    EXPECT_THAT(ChildrenDiagnosis(a), ElementsAre(Assertion("TmpRepNodeList.Size() == 1")));
}

TEST_F(NavigateRepNode, WithRelationsHiddenOfTwoObjectsBelowARelationTheOneWithTheHigherActionIndexIsShown)
{
    HideRelations();
    SetActionIndex("B", 3);
    SetActionIndex("C", 5);
    LinkBelow(ab, c);
    EXPECT_THAT(*ChildKeysOf(a), ElementsAre("C", "C"));
}

class NavigateUnprunedRepNode : public NavigateRepNode
{
protected:
    void SetUp() override
    {
        NavigateRepNode::SetUp();
        // Components choose their extensions when they are created.
        EXPECT_THAT(Remove(a), Succeeds());
        ForgetTree();
        m_pUnpruned = std::make_unique<QTBReplacedExtension>(
            "QTBRepNode", QTBIRepNode::MetaObject(), QTBFactoryOf<TIEQTBIRepNode, QTBIRepNode, UnprunedRepNode>());
        CreateLooseTree();
        HideRelations();
    }
    void TearDown() override
    {
        m_pUnpruned.reset();
        NavigateRepNode::TearDown();
    }

    // The tree A(AB(B C)).
    void CreateLooseTree()
    {
        a = CreateLooseRepNode("A");
        ab = CreateLooseRepNode("AB");
        b = CreateLooseRepNode("B");
        c = CreateLooseRepNode("C");
        LinkBelow(a, ab);
        LinkBelow(ab, b);
        LinkBelow(ab, c);
        ASSERT_THAT(PdmKeysOf(ChildrenOf(ab)), ElementsAre("B", "C"));
    }

    std::unique_ptr<QTBReplacedExtension> m_pUnpruned;
};

TEST_F(NavigateUnprunedRepNode, TheObjectWithTheHigherActionIndexIsShownWhereverItStands)
{
    SetActionIndex("B", 3);
    SetActionIndex("C", 5);
    EXPECT_THAT(*ChildKeysOf(a), ElementsAre("C"));
    SetActionIndex("B", 6);
    EXPECT_THAT(*ChildKeysOf(a), ElementsAre("B"));
}

TEST_F(NavigateUnprunedRepNode, WithEqualActionIndexesTheFirstIsShown)
{
    SetActionIndex("B", 5);
    SetActionIndex("C", 5);
    EXPECT_THAT(*ChildKeysOf(a), ElementsAre("B"));
    SetActionIndex("B", 0);
    SetActionIndex("C", 0);
    EXPECT_THAT(*ChildKeysOf(a), ElementsAre("B"));
}

TEST_F(NavigateUnprunedRepNode, ChecksTheObjectsThatItComparesAndThoseBelowTheNode)
{
    {
        const QTBFault fault("GetPdmNodeActionIndex", c);
        EXPECT_THAT(ChildrenDiagnosis(a), ElementsAre(Call("spIRepNodeOnTmp->GetPdmNodeActionIndex")));
    }
    LinkBelow(ab, CreateLoose("QTBInfoNode"));
    EXPECT_THAT(ChildrenDiagnosis(a), ElementsAre(Handle("spIRepNodeOnTmp")));
    const QTBIRepNode_var spOther = CreateLooseRepNode("A");
    LinkBelow(spOther, CreateLoose("QTBInfoNode"));
    EXPECT_THAT(ChildrenDiagnosis(spOther), ElementsAre(Handle("spIRepNodeOnDirectChild")));
}

TEST_F(NavigateRepNode, ChecksWhatItNeedsForItsChildren)
{
    {
        const QTBFault fault("GetDirectChildren", a);
        EXPECT_THAT(ChildrenDiagnosis(a), ElementsAre(Call("spIRepNodeOnThis->GetDirectChildren")));
        HideRelations();
        EXPECT_THAT(ChildrenDiagnosis(a), ElementsAre(Call("spIRepNodeOnThis->GetDirectChildren")));
    }
    EXPECT_THAT(ChildrenDiagnosis(ab), ElementsAre(Assertion("bRepresentsPdmObjNode")));
    {
        const QTBFault fault("RepresentsPdmObjNode", a);
        EXPECT_THAT(ChildrenDiagnosis(a), ElementsAre(Call("spIRepNodeOnThis->RepresentsPdmObjNode")));
    }
    {
        const QTBFault fault("RepresentsPdmRelNode", ac);
        EXPECT_THAT(ChildrenDiagnosis(a), ElementsAre(Call("spIRepNodeOnDirectChild->RepresentsPdmRelNode")));
    }
    {
        const QTBFault fault("GetDirectChildren", ac);
        EXPECT_THAT(ChildrenDiagnosis(a), ElementsAre(Call("spIRepNodeOnDirectChild->GetDirectChildren")));
    }
    LinkBelow(a, CreateLooseRepNode("C"));
    EXPECT_THAT(ChildrenDiagnosis(a), ElementsAre(Assertion("bRepresentsPdmRelNode")));
}

TEST_F(NavigateRepNode, LetsErrorsOfAnotherKindThrough)
{
    struct Stranger
    {
    };
    class RaisingRepNode : public QTBFaultyRepNode
    {
    public:
        HRESULT GetDisplayString(CATUnicodeString*) { throw Stranger(); }
    };
    QTBTestLateType type("TestRaisingRepNode", "QTBRepNode");
    type.Register<TIEQTBIRepNode, QTBIRepNode, RaisingRepNode>();
    const CATINavigateObject_var spINavigateObject(type.Create());
    EXPECT_THROW(spINavigateObject->GetIdentificators(), Stranger);
}

TEST_F(NavigateRepNode, ShowsItsTreeInTheWindow)
{
    const QTBTestWindow window;
    Update(Part("Z"));
    window.Show(FindNode("A"), {"PartPart"});
    const QTBIRepNode_var spRoot = window.Find(FindNode("A"));
    CATNavigBox& box = *window.GetFrmWindow()->GetNavigBox();
    box.Expand(spRoot);
    const auto labels = [&box] {
        std::vector<std::string> texts;
        for (const CATNavigLine& line : box.Display()) {
            texts.push_back(std::string(static_cast<std::size_t>(line.level), ' ') + TextOf(line.label));
        }
        return texts;
    };
    const CATListValCATBaseUnknown_var relations = ChildrenOf(spRoot);
    ASSERT_EQ(relations.Size(), 2);
    std::vector<std::string> withRelations{DisplayStringOf(spRoot)};
    std::vector<std::string> withoutRelations{DisplayStringOf(spRoot)};
    for (const CATBaseUnknown_var& spRelation : relations) {
        const std::string textOfRelation = DisplayStringOf(spRelation);
        withRelations.push_back(" " + textOfRelation);
        withoutRelations.push_back(" " + textOfRelation + " / " + DisplayStringOf(ChildrenOf(spRelation)[1]));
    }
    EXPECT_EQ(labels(), withRelations);
    HideRelations();
    box.RedrawAll();
    EXPECT_EQ(labels(), withoutRelations);
}

} // namespace

#include "QTBENodeOnNode.h"

#include <gmock/gmock.h>

#include "CATInstantiateComponent.h"
#include "QTBENodeAttributesOnNode.h"
#include "QTBEPdmNodeOnPdmNode.h"
#include "QTBERepNodeOnRepNode.h"
#include "QTBINode.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmNode.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"
#include "QTBMatchers.h"
#include "QTBRepTreeSession.h"
#include "QTBTestLateType.h"
#include "QTBTestSession.h"
#include "TIEQTBINode.h"
#include "TIEQTBINodeAttributes.h"
#include "TIEQTBIPdmNode.h"
#include "TIEQTBIRepNode.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// What the inner call leaves in the text, and its result.
const char* s_Text = nullptr;
HRESULT s_Result = S_OK;

HRESULT Answer(CATUnicodeString* pusText)
{
    if (s_Text != nullptr) {
        *pusText = s_Text;
    }
    return s_Result;
}

class FakePdmNode : public QTBEPdmNodeOnPdmNode
{
public:
    HRESULT GetDescriptionString(CATUnicodeString* pusText) { return Answer(pusText); }
    HRESULT GetClassName(CATUnicodeString* pusText) { return Answer(pusText); }
};

class FakeRepNode : public QTBERepNodeOnRepNode
{
public:
    HRESULT GetDisplayString(CATUnicodeString* pusText) { return Answer(pusText); }
    HRESULT GetPdmNodeClassName(CATUnicodeString* pusText) { return Answer(pusText); }
};

// Extensions of which it is counted how many there are.
template <class Extension>
class Counted : public Extension
{
public:
    inline static int s_Count = 0;

    Counted() { ++s_Count; }
    ~Counted() override { --s_Count; }
};

class QTBENodeOnNodeTest : public QTBTestSession
{
protected:
    void SetUp() override
    {
        QTBTestSession::SetUp();
        s_Text = nullptr;
        s_Result = S_OK;
        m_PdmType.Register<TIEQTBIPdmNode, QTBIPdmNode, FakePdmNode>();
        m_RepType.Register<TIEQTBIRepNode, QTBIRepNode, FakeRepNode>();
    }

    static CATBaseUnknown_var Create(const char* lateType)
    {
        void* pv = nullptr;
        EXPECT_EQ(::CATInstantiateComponent(lateType, CLSID_CATBaseUnknown, &pv), S_OK);
        return CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pv));
    }

    static std::string DescriptionOf(const CATBaseUnknown_var& spNode)
    {
        CATUnicodeString usText("before");
        EXPECT_THAT(QTBINode_var(spNode)->GetNodeDescriptionString(&usText), Succeeds());
        return std::string(usText.View());
    }

    static std::string ClassOf(const CATBaseUnknown_var& spNode)
    {
        CATUnicodeString usText("before");
        EXPECT_THAT(QTBINode_var(spNode)->GetPdmClass(&usText), Succeeds());
        return std::string(usText.View());
    }

    QTBTestLateType m_PdmType{"TestDescribedPdmNode", "QTBPdmNode"};
    QTBTestLateType m_RepType{"TestDescribedRepNode", "QTBRepNode"};
};

} // namespace

TEST_F(QTBENodeOnNodeTest, BothOperationsFailForANullPointer)
{
    const QTBINode_var spINode(Create("QTBNode"));
    EXPECT_THAT(spINode->GetNodeDescriptionString(NULL), FailsAssertion("pusNodeDescriptionString != NULL"));
    EXPECT_THAT(spINode->GetPdmClass(NULL), FailsAssertion("pusPdmClass != NULL"));
}

TEST_F(QTBENodeOnNodeTest, APlainNodeYieldsAQuestionMarkForBothQuestions)
{
    const CATBaseUnknown_var spNode = Create("QTBNode");
    EXPECT_EQ(DescriptionOf(spNode), "?");
    EXPECT_EQ(ClassOf(spNode), "?");
}

TEST_F(QTBENodeOnNodeTest, AnInfoNodeIsNeitherAPdmNodeNorARepNode)
{
    const CATBaseUnknown_var spNode = Create("QTBInfoNode");
    EXPECT_EQ(DescriptionOf(spNode), "?");
    EXPECT_EQ(ClassOf(spNode), "?");
}

TEST_F(QTBENodeOnNodeTest, APdmNodeYieldsItsDescriptionAndItsClass)
{
    Update(Part("K1", Attribute("PartNumber", "PRT-1") + Attribute("Name", "Bracket")));
    const CATBaseUnknown_var spNode = FindNode("K1");
    CATUnicodeString usDescription;
    ASSERT_THAT(QTBIPdmNode_var(spNode)->GetDescriptionString(&usDescription), Succeeds());
    EXPECT_EQ(DescriptionOf(spNode), std::string(usDescription.View()));
    EXPECT_THAT(DescriptionOf(spNode), testing::HasSubstr("PRT-1"));
    EXPECT_EQ(ClassOf(spNode), "Part");
}

TEST_F(QTBENodeOnNodeTest, APdmNodesOwnInterfaceBeginsWithTheTwoOperations)
{
    Update(Part("K1", Attribute("Name", "Bracket")));
    const QTBIPdmNode_var spIPdmNode(PdmNode("K1"));
    CATUnicodeString usText;
    EXPECT_THAT(spIPdmNode->GetNodeDescriptionString(&usText), Succeeds());
    EXPECT_EQ(std::string(usText.View()), DescriptionOf(spIPdmNode));
    EXPECT_THAT(spIPdmNode->GetPdmClass(&usText), Succeeds());
    EXPECT_EQ(usText, "Part");
    EXPECT_THAT(spIPdmNode->GetPdmClass(NULL), FailsAssertion("pusPdmClass != NULL"));
    const QTBIPdmObjNode_var spIPdmObjNode(ObjNode("K1"));
    EXPECT_THAT(spIPdmObjNode->GetPdmClass(&usText), Succeeds());
    EXPECT_EQ(usText, "Part");
}

TEST_F(QTBENodeOnNodeTest, ADescriptionThatCannotBeBuiltLeavesWhateverTextThereIsAndSucceeds)
{
    const CATBaseUnknown_var spNode = m_PdmType.Create();
    s_Result = E_FAIL;
    s_Text = "partial";
    EXPECT_EQ(DescriptionOf(spNode), "partial");
    EXPECT_EQ(ClassOf(spNode), "partial");
    s_Text = nullptr;
    EXPECT_EQ(DescriptionOf(spNode), "?");
    EXPECT_EQ(ClassOf(spNode), "?");
}

TEST_F(QTBENodeOnNodeTest, AFailingPdmNodeIsTraced)
{
    const CATBaseUnknown_var spNode = m_PdmType.Create();
    s_Result = E_FAIL;
    DebugCapture capture;
    DescriptionOf(spNode);
    ClassOf(spNode);
    EXPECT_THAT(capture.Lines(),
                ElementsAre("QTBENodeOnNode::GetNodeDescriptionString -> spIPdmNodeOnThis->GetDescriptionString !",
                            "QTBENodeOnNode::GetPdmClass -> spIPdmNodeOnThis->GetClassName !"));
}

TEST_F(QTBENodeOnNodeTest, ARepNodeYieldsItsDisplayStringAndTheClassOfThePdmNodeThatItRepresents)
{
    const CATBaseUnknown_var spNode = m_RepType.Create();
    s_Text = "displayed";
    EXPECT_EQ(DescriptionOf(spNode), "displayed");
    s_Text = "Part";
    EXPECT_EQ(ClassOf(spNode), "Part");
}

TEST_F(QTBENodeOnNodeTest, AFailingRepNodeIsTracedAndLeavesWhateverTextThereIs)
{
    const CATBaseUnknown_var spNode = m_RepType.Create();
    s_Result = E_FAIL;
    s_Text = "partial";
    DebugCapture capture;
    EXPECT_EQ(DescriptionOf(spNode), "partial");
    EXPECT_EQ(ClassOf(spNode), "partial");
    EXPECT_THAT(capture.Lines(),
                ElementsAre("QTBENodeOnNode::GetNodeDescriptionString -> spIRepNodeOnThis->GetDisplayString !",
                            "QTBENodeOnNode::GetPdmClass -> spIRepNodeOnThis->GetPdmNodeClassName !"));
}

TEST_F(QTBENodeOnNodeTest, ASuccessfulAnswerIsNotTraced)
{
    const CATBaseUnknown_var spNode = m_PdmType.Create();
    s_Text = "described";
    DebugCapture capture;
    EXPECT_EQ(DescriptionOf(spNode), "described");
    EXPECT_THAT(capture.Lines(), IsEmpty());
}

TEST_F(QTBENodeOnNodeTest, TwoQueriesReachOneExtensionAndTwoNodesHaveSeparateOnes)
{
    const CATBaseUnknown_var spFirst = Create("QTBNode");
    const CATBaseUnknown_var spSecond = Create("QTBNode");
    QTBINodeAttributes_var(spFirst)->SetKey("K1");
    QTBINodeAttributes_var(spSecond)->SetKey("K2");
    EXPECT_EQ(KeyOf(spFirst), "K1");
    EXPECT_EQ(KeyOf(spSecond), "K2");
    EXPECT_EQ(QTBINode_var(spFirst).Get(), QTBINode_var(QTBINodeAttributes_var(spFirst)).Get());
    EXPECT_NE(QTBINode_var(spFirst).Get(), QTBINode_var(spSecond).Get());
}

TEST_F(QTBENodeOnNodeTest, ReleasingTheLastHandleDestroysANodeWithItsExtensions)
{
    QTBTestLateType type("TestCountedNode", "QTBPdmObjNode");
    type.Register<TIEQTBINode, QTBINode, Counted<QTBENodeOnNode>>();
    type.Register<TIEQTBINodeAttributes, QTBINodeAttributes, Counted<QTBENodeAttributesOnNode>>();
    const int before = CATBaseUnknown::GetLiveComponentCount();
    {
        CATBaseUnknown_var spNode = type.Create();
        const QTBINodeAttributes_var spINodeAttributes(spNode);
        spINodeAttributes->SetKey("K1");
        DescriptionOf(spNode);
        EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before + 1);
        EXPECT_EQ(Counted<QTBENodeOnNode>::s_Count, 1);
        EXPECT_EQ(Counted<QTBENodeAttributesOnNode>::s_Count, 1);
        spNode = NULL_var;
        EXPECT_EQ(Counted<QTBENodeOnNode>::s_Count, 1) << "another handle is left";
    }
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before);
    EXPECT_EQ(Counted<QTBENodeOnNode>::s_Count, 0);
    EXPECT_EQ(Counted<QTBENodeAttributesOnNode>::s_Count, 0);
}

TEST_F(QTBENodeOnNodeTest, AnObjectNodeAnswersTheNodeInterfaceThroughItsBaseLateType)
{
    const CATBaseUnknown_var spNode = Create("QTBPdmObjNode");
    const QTBINode_var spINode(spNode);
    ASSERT_TRUE(spINode != NULL_var);
    EXPECT_TRUE(spINode == spNode);
    auto* pTie = dynamic_cast<TIEQTBINode<CATDataTie<QTBINode, QTBENodeOnNode>>*>(spINode.Get());
    ASSERT_NE(pTie, nullptr) << "the extension of plain nodes";
    EXPECT_TRUE(CATBaseUnknown_var(pTie->Target()) == spNode) << "on this node";
    CATUnicodeString usText;
    EXPECT_THAT(spINode->GetPdmClass(&usText), Succeeds());
}

TEST_F(QTBENodeOnNodeTest, ARepNodeDoesNotAnswerThePdmNodesInterface)
{
    EXPECT_TRUE(QTBIPdmNode_var(Create("QTBRepNode")) == NULL_var);
}

namespace {

using QTBENodeOnRepNodeTest = QTBRepTreeSession;

} // namespace

TEST_F(QTBENodeOnRepNodeTest, ADisplayedNodeYieldsItsDisplayStringAndTheClassOfThePdmNodeThatItRepresents)
{
    Update(Part("K1", Attribute("PartNumber", "PRT-1") + Attribute("Name", "Bracket")));
    const QTBIRepNode_var spIRepNode = CreateRoot("K1");
    CATUnicodeString usDisplayString;
    ASSERT_THAT(spIRepNode->GetDisplayString(&usDisplayString), Succeeds());
    const QTBINode_var spINode(spIRepNode);
    CATUnicodeString usText;
    EXPECT_THAT(spINode->GetNodeDescriptionString(&usText), Succeeds());
    EXPECT_EQ(usText, usDisplayString);
    EXPECT_THAT(std::string(usText.View()), testing::HasSubstr("PRT-1"));
    EXPECT_THAT(spINode->GetPdmClass(&usText), Succeeds());
    EXPECT_EQ(usText, "Part");
}

TEST_F(QTBENodeOnRepNodeTest, ARepNodesOwnInterfaceBeginsWithTheTwoOperations)
{
    Update(Part("K1", Attribute("Name", "Bracket")));
    const QTBIRepNode_var spIRepNode = CreateRoot("K1");
    CATUnicodeString usFirst;
    CATUnicodeString usSecond;
    EXPECT_THAT(spIRepNode->GetNodeDescriptionString(&usFirst), Succeeds());
    EXPECT_THAT(QTBINode_var(spIRepNode)->GetNodeDescriptionString(&usSecond), Succeeds());
    EXPECT_EQ(usFirst, usSecond);
    EXPECT_THAT(spIRepNode->GetPdmClass(&usFirst), Succeeds());
    EXPECT_EQ(usFirst, "Part");
    EXPECT_THAT(spIRepNode->GetPdmClass(NULL), FailsAssertion("pusPdmClass != NULL"));
}

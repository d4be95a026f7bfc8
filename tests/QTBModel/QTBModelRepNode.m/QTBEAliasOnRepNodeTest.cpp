#include "QTBEAliasOnRepNode.h"

#include <gmock/gmock.h>

#include "CATIAlias.h"
#include "QTBRepTreeSession.h"
#include "QTBTestWindow.h"
#include "TIECATIAlias.h"

using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosesIn;
using QTBDiagnosis::Handle;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::StartsWith;

namespace {

class AliasOfRepNode : public QTBFaultyRepTreeSession
{
protected:
    static std::string AliasOf(const CATBaseUnknown_var& spNode) { return TextOf(CATIAlias_var(spNode)->GetAlias()); }

    static std::string DisplayStringOf(const QTBIRepNode_var& spIRepNode)
    {
        CATUnicodeString usText;
        EXPECT_THAT(spIRepNode->GetDisplayString(&usText), Succeeds());
        return TextOf(usText);
    }

    // What is written to the debug output when only the fixed alias can be given.
    static std::vector<std::string> Diagnosis(const CATBaseUnknown_var& spNode)
    {
        const DebugCapture capture;
        EXPECT_EQ(AliasOf(spNode), "Node");
        EXPECT_THAT(capture.Lines(), Contains(StartsWith("QTBEAliasOnRepNode::GetAlias -> caught exception:")));
        return DiagnosesIn(capture);
    }
};

TEST_F(AliasOfRepNode, OfTheDefaultRootIsDefaultNode)
{
    const QTBTestWindow window;
    const CATListValCATBaseUnknown_var repNodes = AllRepNodesOf(window.GetCont());
    ASSERT_EQ(repNodes.Size(), 1);
    EXPECT_EQ(AliasOf(repNodes[1]), "Default Node");
}

TEST_F(AliasOfRepNode, IsTheDisplayStringOfEachNode)
{
    Update(Part("A", Attribute("PartNumber", "4711")) + Part("B", Attribute("PartNumber", "4712")));
    const QTBIRepNode_var a = CreateRoot("A");
    const QTBIRepNode_var b = CreateRoot("B");
    // One extension serves both nodes.
    EXPECT_EQ(AliasOf(a), DisplayStringOf(a));
    EXPECT_EQ(AliasOf(b), DisplayStringOf(b));
    EXPECT_EQ(AliasOf(a), DisplayStringOf(a));
    EXPECT_NE(AliasOf(a), AliasOf(b));
}

TEST_F(AliasOfRepNode, IsNodeWhenTheDisplayStringCannotBeBuilt)
{
    Update(Part("A"));
    const QTBIRepNode_var a = CreateRoot("A");
    const QTBFault fault("GetDisplayString", a);
    EXPECT_EQ(AliasOf(a), "Node");
}

TEST_F(AliasOfRepNode, IsNodeWhenAStepFails)
{
    Update(Part("A"));
    const QTBIRepNode_var a = CreateRoot("A");
    {
        const QTBFault fault("IsRepDefaultNode", a);
        EXPECT_THAT(Diagnosis(a), ElementsAre(Call("spIRepNodeOnThis->IsRepDefaultNode")));
    }
    QTBTestLateType type("TestAliasObject");
    type.Register<TIECATIAlias, CATIAlias, QTBEAliasOnRepNode>();
    EXPECT_THAT(Diagnosis(type.Create()), ElementsAre(Handle("spIRepNodeOnThis")));
}

TEST_F(AliasOfRepNode, CannotBeSet)
{
    Update(Part("A", Attribute("PartNumber", "4711")));
    const QTBIRepNode_var a = CreateRoot("A");
    EXPECT_THAT(CATIAlias_var(a)->SetAlias("other"), FailsQuietly());
    EXPECT_EQ(AliasOf(a), DisplayStringOf(a));
}

} // namespace

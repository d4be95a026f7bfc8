#include "QTBERootPropertiesOnRepNode.h"

#include <gmock/gmock.h>

#include "CATIRootProperties.h"
#include "QTBRepTreeSession.h"
#include "QTBTestWindow.h"
#include "TIECATIRootProperties.h"

using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosesIn;
using QTBDiagnosis::Handle;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

namespace {

class EditorsOfRepNode : public QTBFaultyRepTreeSession
{
protected:
    static std::vector<std::string> EditorsOf(const CATBaseUnknown_var& spNode)
    {
        std::vector<std::string> editors;
        for (const CATString& editor : CATIRootProperties_var(spNode)->GetListOfEditors()) {
            editors.emplace_back(editor.View());
        }
        return editors;
    }
    static std::vector<std::string> Diagnosis(const CATBaseUnknown_var& spNode)
    {
        const DebugCapture capture;
        EXPECT_THAT(EditorsOf(spNode), IsEmpty());
        EXPECT_THAT(capture.Lines(),
                    Contains(StartsWith("QTBERootPropertiesOnRepNode::GetListOfEditors -> caught exception:")));
        return DiagnosesIn(capture);
    }
};

TEST_F(EditorsOfRepNode, AreThoseOfTheFormsInTheirOrder)
{
    Update(Part("A") + Object("File", "F") + Relation("PartFile", "AF", "A", "F"));
    const QTBIRepNode_var a = CreateRoot("A");
    const QTBIRepNode_var af = Create(a, "AF", FILES);
    EXPECT_THAT(EditorsOf(a), ElementsAre("QTBPropertyEditor", "QTBUpdateItemEditor"));
    EXPECT_THAT(EditorsOf(Create(af, "F", FILES)), ElementsAre("QTBPropertyEditor"));
    EXPECT_THAT(EditorsOf(af), IsEmpty()) << "a class without forms has no editors";
}

TEST_F(EditorsOfRepNode, ContainTheSecondWithoutTheFirst)
{
    LoadEditedSchema({{R"(<form name="Properties">
        <attr name="DocumentNumber"/>)",
                       R"(<form name="Other">
        <attr name="DocumentNumber"/>)"}});
    Update(Object("Document", "D"));
    EXPECT_THAT(EditorsOf(CreateRoot("D")), ElementsAre("QTBUpdateItemEditor"));
}

TEST_F(EditorsOfRepNode, AreNoneForTheDefaultRoot)
{
    const QTBTestWindow window;
    const CATListValCATBaseUnknown_var repNodes = AllRepNodesOf(window.GetCont());
    ASSERT_EQ(repNodes.Size(), 1);
    EXPECT_THAT(EditorsOf(repNodes[1]), IsEmpty());
}

TEST_F(EditorsOfRepNode, AreNoneWhenAStepFails)
{
    Update(Part("A"));
    const QTBIRepNode_var a = CreateRoot("A");
    {
        const QTBFault fault("GetSchemaNodePtr", FindNode("A"));
        EXPECT_THAT(Diagnosis(a), ElementsAre(Call("spIPdmNodeOnThis->GetSchemaNodePtr")));
    }
    Unlink(a);
    EXPECT_THAT(Diagnosis(a), ElementsAre(Call("spIRepNodeOnThis->GetPdmNode")));
    QTBTestLateType type("TestPropertiesObject");
    type.Register<TIECATIRootProperties, CATIRootProperties, QTBERootPropertiesOnRepNode>();
    EXPECT_THAT(Diagnosis(type.Create()), ElementsAre(Handle("spIRepNodeOnThis")));
}

} // namespace

#include <gmock/gmock.h>

#include "QTBEPdmNodeOnPdmNode.h"
#include "QTBFaultyPdmSession.h"
#include "QTBINodeAttributes.h"
#include "QTBTestLateType.h"
#include "TIEQTBIPdmNode.h"

using QTBDiagnosis::Assertion;
using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosisOf;
using QTBDiagnosis::Handle;
using ::testing::ElementsAre;

namespace {

// What object and relation nodes share when they are written; the operations are none of the interface.
class PdmNodeXml : public QTBTestSession
{
protected:
    static QTBEPdmNodeOnPdmNode* Extension(const QTBIPdmNode_var& spIPdmNode)
    {
        return QTBExtensionBehind<QTBEPdmNodeOnPdmNode, TIEQTBIPdmNode>(spIPdmNode);
    }

    static std::string Write(const char* key, const CATUnicodeString& inner = "", const CATUnicodeString& tagAttrs = "",
                             const CATUnicodeString& tag = "o")
    {
        CATUnicodeString usXml;
        EXPECT_THAT(Extension(PdmNode(key))->ToXml(&usXml, inner, tagAttrs, tag), Succeeds());
        return usXml.ConvertToChar();
    }

    static std::vector<std::string> IdentifyingAttributesOf(const QTBIPdmNode_var& spIPdmNode)
    {
        CATListValCATUnicodeString names;
        names.Append("before");
        EXPECT_THAT(Extension(spIPdmNode)->GetIdentifyingAttributes(&names), Succeeds());
        return TextsOf(names);
    }
};

} // namespace

TEST_F(PdmNodeXml, AnObjectIsIdentifiedByClassAndKey)
{
    Update(Part("A"));
    EXPECT_THAT(IdentifyingAttributesOf(PdmNode("A")), ElementsAre("Class", "Key"));
    EXPECT_THAT(IdentifyingAttributesOf(QTBCreateLoose("QTBPdmNode")), ElementsAre("Class", "Key"));
}

TEST_F(PdmNodeXml, ARelationIsIdentifiedByItsObjectsAndTheirClassesToo)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    EXPECT_THAT(IdentifyingAttributesOf(PdmNode("AB")),
                ElementsAre("Class", "Key", "Left", "Right", "Class1", "Class2"));
}

TEST_F(PdmNodeXml, HoldsTheIdentifyingAttributesAlone)
{
    Update(Part("A", Attribute("PartNumber", "P-1") + Attribute("Name", "Bracket")));
    EXPECT_EQ(Write("A"), R"(<o><a name="Class">Part</a><a name="Key">A</a></o>)");
}

TEST_F(PdmNodeXml, TagTagAttributesAndFurtherXmlAreTheCallers)
{
    Update(Part("A"));
    EXPECT_EQ(Write("A", "<inner>&</inner>", " mode=\"new\"", "x"),
              R"(<x mode="new"><a name="Class">Part</a><a name="Key">A</a><inner>&</inner></x>)");
}

TEST_F(PdmNodeXml, IsAppendedToWhatIsThere)
{
    Update(Part("A"));
    CATUnicodeString usXml("<list>");
    EXPECT_THAT(Extension(PdmNode("A"))->ToXml(&usXml, "", "", "o"), Succeeds());
    EXPECT_THAT(Extension(PdmNode("A"))->ToXml(&usXml, "", "", "r"), Succeeds());
    EXPECT_EQ(usXml, R"(<list><o><a name="Class">Part</a><a name="Key">A</a></o>)"
                     R"(<r><a name="Class">Part</a><a name="Key">A</a></r>)");
}

TEST_F(PdmNodeXml, VersionFlagsStandInTheTag)
{
    Update(Part("A", Info({{"QtbCreatedNewRevision", "B"}, {"QtbCreateNewVersion", "true"}})) +
           Part("B", Info({{"QtbCreatedNewRevision", "C"}})));
    EXPECT_EQ(Write("A", "", " mode=\"new\""),
              R"(<o QtbCreateNewVersion="true"  QtbCreatedNewRevision="B"  mode="new"><a name="Class">Part</a>)"
              R"(<a name="Key">A</a></o>)");
    EXPECT_EQ(Write("B"), R"(<o QtbCreatedNewRevision="C" ><a name="Class">Part</a><a name="Key">B</a></o>)");
}

TEST_F(PdmNodeXml, WithoutAnIdentifyingAttributeNothingIsWritten)
{
    Update(Part("A") + Part("B") + Relation("PartPart", "AB", "A", "B"));
    CATUnicodeString usXml("before");
    const DebugCapture capture;
    EXPECT_THAT(Extension(PdmNode("AB"))->ToXml(&usXml, "", "", "r"), FailsWithMessage("AttributeNotDefinedERR_2001"));
    EXPECT_EQ(usXml, "before");
    EXPECT_EQ(QTBDiagnosis::DiagnosesIn(capture).back(), Call("spINodeAttributesOnThis->ToXmlString"));
}

TEST_F(PdmNodeXml, WhatKeepsItFromBeingWrittenIsNamed)
{
    Update(Part("A"));
    const QTBIPdmNode_var spIPdmNode = PdmNode("A");
    EXPECT_THAT(Extension(spIPdmNode)->ToXml(nullptr, "", "", "o"), FailsAssertion("pusPdmObjectXmlString != NULL"));
    EXPECT_THAT(Extension(spIPdmNode)->GetIdentifyingAttributes(nullptr), FailsAssertion("pAttrList != NULL"));
    QTBTestLateType bareType("TestBarePdmNode");
    bareType.Register<TIEQTBIPdmNode, QTBIPdmNode, QTBEPdmNodeOnPdmNode>();
    const QTBIPdmNode_var spBare(bareType.Create());
    CATUnicodeString usXml("before");
    EXPECT_THAT(Extension(spBare)->ToXml(&usXml, "", "", "o"), LacksInterface("spINodeAttributesOnThis"));
    EXPECT_EQ(usXml, "before");
}

TEST_F(PdmNodeXml, EachOperationOpensAScopeUnderItsName)
{
    Update(Part("A"));
    QTBEPdmNodeOnPdmNode* pExtension = Extension(PdmNode("A"));
    const auto firstLineOf = [](auto operation) {
        const DebugCapture capture(2);
        operation();
        return capture.Lines().empty() ? std::string() : capture.Lines().front();
    };
    CATUnicodeString text;
    CATListValCATUnicodeString texts;
    EXPECT_EQ(firstLineOf([&] { pExtension->ToXml(&text, "", "", "o"); }), "-> QTBEPdmNodeOnPdmNode::ToXml");
    EXPECT_EQ(firstLineOf([&] { pExtension->GetIdentifyingAttributes(&texts); }),
              "-> QTBEPdmNodeOnPdmNode::GetIdentifyingAttributes");
    EXPECT_EQ(firstLineOf([&] { pExtension->PrintAttributeDoesNotExistError("N"); }),
              "-> QTBEPdmNodeOnPdmNode::PrintAttributeDoesNotExistError");
}

TEST(PdmNodeXmlDeathTest, WithoutASchemaNobodyKnowsTheIdentifyingAttributes)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        QTBExitWhenDiagnosed(
            [] {
                const QTBIPdmNode_var spIPdmNode(QTBCreateLoose("QTBPdmNode"));
                CATUnicodeString usXml;
                return QTBExtensionBehind<QTBEPdmNodeOnPdmNode, TIEQTBIPdmNode>(spIPdmNode)->ToXml(&usXml, "", "", "o");
            },
            {Call("QTBSchemaUtil::GetClassAttr"), Call("GetIdentifyingAttributes")}),
        ::testing::ExitedWithCode(0), "");
}

#include <gmock/gmock.h>

#include "QTBEPdmNodeOnPdmNode.h"
#include "QTBEditedSchema.h"
#include "QTBFaultyPdmSession.h"
#include "QTBINodeAttributes.h"
#include "QTBMessageUtil.h"
#include "QTBTestLateType.h"
#include "QTBXmlElement.h"
#include "TIEQTBIPdmNode.h"

using QTBDiagnosis::Call;
using QTBDiagnosis::Handle;
using ::testing::ElementsAre;

namespace {

// Parts are described by part number and name, documents by number, name and the full name of their owner, persons by
// their full name, usages by their instance name and files of parts by nothing.
class PdmNodeDescription : public QTBFaultyPdmSession
{
protected:
    static std::string DescriptionOf(const QTBIPdmNode_var& spIPdmNode)
    {
        CATUnicodeString usDescription("before");
        EXPECT_THAT(spIPdmNode->GetDescriptionString(&usDescription), Succeeds());
        return std::string(usDescription.View());
    }
    static std::string DescriptionOf(const char* key) { return DescriptionOf(PdmNode(key)); }

    // The description of a new part with these attributes.
    static std::string DescribePart(const std::string& further)
    {
        Update(Part("described", further));
        return DescriptionOf("described");
    }

    static std::string Numbered(const std::string& further = "")
    {
        return Attribute("PartNumber", "P-1") + Attribute("Name", "Bracket") + further;
    }

    // A schema that shows at most that many characters of a value.
    static void LimitValuesTo(const std::string& length)
    {
        QTBLoadEditedSchema({{R"(maxDescAttrLength="60")", "maxDescAttrLength=\"" + length + "\""}});
    }
    // A schema that describes parts by other attributes.
    static void DescribePartsBy(const std::string& attributes)
    {
        QTBLoadEditedSchema({{R"(<attr name="PartNumber"/>
        <attr name="Name"/>
      </description>)",
                              attributes + "</description>"}});
    }
};

} // namespace

TEST_F(PdmNodeDescription, TheDefaultRootIsDescribedByItsClassName)
{
    EXPECT_THAT(GetPdmNodeCont()->CreateDefaultRootNode(), Succeeds());
    EXPECT_EQ(DescriptionOf("DEFAULT_ROOT_NODE"), "DEFAULT_ROOT_NODE");
}

TEST_F(PdmNodeDescription, ANodeWithoutSchemaNodeIsDescribedByItsClassName)
{
    CATBaseUnknown_var spNode;
    EXPECT_THAT(GetPdmNodeCont()->CreatePdmObjNode("K1", &spNode, FALSE), Succeeds());
    const std::string record = "<o>" + Attribute("Class", "Part") + Numbered() + "</o>";
    EXPECT_THAT(QTBINodeAttributes_var(spNode)->SetXmlElement(ReadXmlElement(record)), Succeeds());
    EXPECT_EQ(DescriptionOf(spNode), "Part");
}

TEST_F(PdmNodeDescription, ANodeWithoutClassIsDescribedByItsKey)
{
    CATBaseUnknown_var spNode;
    EXPECT_THAT(GetPdmNodeCont()->CreatePdmObjNode("K1", &spNode, FALSE), Succeeds());
    EXPECT_EQ(DescriptionOf(spNode), "K1");
}

TEST_F(PdmNodeDescription, WhatKeepsTheKeyFromStandingInIsNamed)
{
    QTBTestLateType bareType("TestBarePdmNode");
    bareType.Register<TIEQTBIPdmNode, QTBIPdmNode, QTBEPdmNodeOnPdmNode>();
    const QTBIPdmNode_var spBare(bareType.Create());
    CATUnicodeString usDescription;
    EXPECT_THAT(spBare->GetDescriptionString(&usDescription), LacksInterface("spINodeAttributesOnThis"));
    EXPECT_THAT(spBare->GetDescriptionString(nullptr), FailsAssertion("pusDescriptionString != NULL"));

    const QTBIPdmNode_var spIPdmNode(QTBCreateLoose("QTBPdmObjNode"));
    const QTBFault fault("GetKey", spIPdmNode);
    EXPECT_THAT(spIPdmNode->GetDescriptionString(&usDescription), FailsCall("spINodeAttributesOnThis->GetKey"));
}

TEST_F(PdmNodeDescription, AClassWithoutDescriptionIsDescribedByItsDisplayName)
{
    Update(Part("A") + Object("CATPartFile", "F") + Relation("PartFile", "AF", "A", "F"));
    EXPECT_EQ(DescriptionOf("AF"), "File of part");
}

TEST_F(PdmNodeDescription, DescriptionAttributesAreJoinedWithCommas)
{
    EXPECT_EQ(DescribePart(Numbered()), "P-1, Bracket");
}

TEST_F(PdmNodeDescription, AnEmptyValueKeepsItsSeparator)
{
    EXPECT_EQ(DescribePart(Attribute("PartNumber", "P-1")), "P-1, ");
    EXPECT_EQ(DescribePart(Attribute("Name", "Bracket")), ", Bracket");
    EXPECT_EQ(DescribePart(Attribute("PartNumber", "") + Attribute("Name", "")), ", ");
    EXPECT_EQ(DescribePart(""), ", ");
}

TEST_F(PdmNodeDescription, WithoutAnyTextTheDisplayNameOfTheClassStandsIn)
{
    Update(Object("Person", "P") + Part("A") + Part("B") + PartPart("AB", "A", "B") +
           PartPart("BA", "B", "A", Attribute("InstanceName", "")));
    EXPECT_EQ(DescriptionOf("P"), "Person");
    EXPECT_EQ(DescriptionOf("AB"), "Part usage");
    EXPECT_EQ(DescriptionOf("BA"), "Part usage");
}

TEST_F(PdmNodeDescription, TheFirstValueOfAListStandsForTheList)
{
    Update(Part("A") + Part("B") +
           PartPart("AB", "A", "B", R"(<a name="InstanceName" type="list"><v>Screw.1</v><v>Screw.2</v></a>)"));
    EXPECT_EQ(DescriptionOf("AB"), "Screw.1");
}

TEST_F(PdmNodeDescription, AValueIsShownByTheDisplayNameOfItsDataSource)
{
    DescribePartsBy(R"(<attr name="State"/>)");
    EXPECT_EQ(DescribePart(Attribute("State", "30")), "Released");
    EXPECT_EQ(DescribePart(Attribute("State", "35")), "35");
}

TEST_F(PdmNodeDescription, AnAttributeOfAnEmbeddedObjectIsReadThere)
{
    const std::string owner =
        R"(<a name="Owner" type="object"><o><a name="Class">Person</a><a name="FullName">Jo Doe</a></o></a>)";
    Update(Object("Document", "D1", Attribute("DocumentNumber", "4711") + Attribute("Name", "Plan") + owner) +
           Object("Document", "D2", Attribute("DocumentNumber", "4712") + Attribute("FullName", "not asked for")));
    EXPECT_EQ(DescriptionOf("D1"), "4711, Plan, Jo Doe");
    EXPECT_EQ(DescriptionOf("D2"), "4712, , ") << "no owner";
}

TEST_F(PdmNodeDescription, AValueThatIsTooLongKeepsJustTheMaximumBeforeThreeDots)
{
    LimitValuesTo("5");
    EXPECT_EQ(DescribePart(Attribute("PartNumber", "12345") + Attribute("Name", "123456")), "12345, 12345...");
    EXPECT_EQ(DescribePart(Attribute("PartNumber", "1234567890") + Attribute("Name", "1")), "12345..., 1");
}

TEST_F(PdmNodeDescription, TheMaximumCountsCharactersNotBytes)
{
    LimitValuesTo("3");
    EXPECT_EQ(DescribePart(Attribute("PartNumber", "\xC3\xA4\xF0\x9F\x98\x80\xE6\x97\xA5") +
                           Attribute("Name", "\xC3\xA4\xF0\x9F\x98\x80\xE6\x97\xA5\xC3\xA4")),
              "\xC3\xA4\xF0\x9F\x98\x80\xE6\x97\xA5, \xC3\xA4\xF0\x9F\x98\x80\xE6\x97\xA5...");
}

TEST_F(PdmNodeDescription, TheMaximumHoldsForValuesOfEmbeddedObjectsToo)
{
    LimitValuesTo("2");
    Update(
        Object("Document", "D",
               R"(<a name="Owner" type="object"><o><a name="Class">Person</a><a name="FullName">Jo Doe</a></o></a>)"));
    EXPECT_EQ(DescriptionOf("D"), ", , Jo...");
}

TEST_F(PdmNodeDescription, AMaximumOfZeroOrBelowMeansNoLimit)
{
    const std::string value(1000, 'x');
    for (const char* length : {"0", "-1"}) {
        LimitValuesTo(length);
        EXPECT_EQ(DescribePart(Attribute("PartNumber", value)), value + ", ") << length;
    }
    LimitValuesTo("60");
    EXPECT_EQ(DescribePart(Attribute("PartNumber", value)), std::string(60, 'x') + "..., ");
}

TEST_F(PdmNodeDescription, ANewerVersionIsNamed)
{
    EXPECT_EQ(DescribePart(Numbered(Info({{"QtbVersion", "A"},
                                          {"QtbSubVersion", "2"},
                                          {"QtbIsNewestVersion", "false"},
                                          {"QtbNewestVersion", "C"}}))),
              "P-1, Bracket (newest version:C)");
}

TEST_F(PdmNodeDescription, TheVersionItselfIsNotShown)
{
    EXPECT_EQ(
        DescribePart(Numbered(Info({{"QtbVersion", "A"}, {"QtbSubVersion", "2"}, {"QtbIsNewestVersion", "true"}}))),
        "P-1, Bracket");
}

TEST_F(PdmNodeDescription, AnObjectThatMayNeitherBeEditedNorCheckedOutNamesTheUserWhoHasIt)
{
    EXPECT_EQ(DescribePart(Numbered(Info(
                  {{"QtbIsEditAllowed", "false"}, {"QtbIsCheckOutAllowed", "false"}, {"QtbCheckedOutBy", "Jo Doe"}}))),
              "P-1, Bracket (checked out by Jo Doe)");
    EXPECT_EQ(DescribePart(Numbered(Info({{"QtbCheckedOutBy", "Jo Doe"}}))), "P-1, Bracket (checked out by Jo Doe)")
        << "a right that was not granted";
    const HRESULT hr =
        CATError::GetReturn(2, QTBMessageUtil::ObjectIsCheckedOutByUser("Jo Doe"), nullptr, __FILE__, __LINE__);
    EXPECT_EQ(CATError::CATGetLastError(hr, nullptr)->GetNLSMessage(), "checked out by Jo Doe");
}

TEST_F(PdmNodeDescription, AnObjectThatMayBeEditedOrCheckedOutNamesNobody)
{
    EXPECT_EQ(DescribePart(Numbered(Info({{"QtbIsEditAllowed", "true"}, {"QtbCheckedOutBy", "Jo Doe"}}))),
              "P-1, Bracket");
    EXPECT_EQ(DescribePart(Numbered(Info({{"QtbIsCheckOutAllowed", "true"}, {"QtbCheckedOutBy", "Jo Doe"}}))),
              "P-1, Bracket");
    EXPECT_EQ(DescribePart(Numbered(Info({{"QtbIsCheckOutAllowed", "false"}}))), "P-1, Bracket") << "nobody has it";
}

TEST_F(PdmNodeDescription, SeveralStatesStandInOneParenthesis)
{
    EXPECT_EQ(DescribePart(Numbered(
                  Info({{"QtbIsNewestVersion", "false"}, {"QtbNewestVersion", "C"}, {"QtbCheckedOutBy", "Jo Doe"}}))),
              "P-1, Bracket (newest version:C, checked out by Jo Doe)");
}

TEST_F(PdmNodeDescription, ADocumentWithoutFileIsNotMarked)
{
    Update(Object("CATPartFile", "F", Attribute("FileName", "a.CATPart") + Info({{"QtbHasFile", "false"}})) +
           Object("Document", "D", Attribute("DocumentNumber", "4711") + Info({{"QtbHasFile", "false"}})));
    EXPECT_EQ(DescriptionOf("F"), "a.CATPart");
    EXPECT_EQ(DescriptionOf("D"), "4711, , ");
}

TEST_F(PdmNodeDescription, TheStateStandsBehindTheDisplayNameOfTheClassToo)
{
    Update(Object("Person", "P", Info({{"QtbCheckedOutBy", "Jo Doe"}})));
    EXPECT_EQ(DescriptionOf("P"), "Person (checked out by Jo Doe)");
}

TEST_F(PdmNodeDescription, ARelationHasNoState)
{
    Update(Part("A") + Part("B") +
           PartPart(
               "AB", "A", "B",
               Attribute("InstanceName", "Screw.1") +
                   Info({{"QtbIsNewestVersion", "false"}, {"QtbNewestVersion", "C"}, {"QtbCheckedOutBy", "Jo Doe"}})));
    EXPECT_EQ(DescriptionOf("AB"), "Screw.1");
}

TEST_F(PdmNodeDescription, AMissingSchemaNodeIsDiagnosedAndThenForgotten)
{
    const QTBIPdmNode_var spIPdmNode(QTBCreateLoose("QTBPdmNode"));
    EXPECT_THAT(QTBINodeAttributes_var(spIPdmNode)->SetKey("K1"), Succeeds());
    const std::string noClass =
        QTBDiagnosis::Assertion("(spIPdmObjNodeOnThis != NULL_var) || (spIPdmRelNodeOnThis != NULL_var)");
    const DebugCapture capture;
    EXPECT_EQ(DescriptionOf(spIPdmNode), "K1");
    EXPECT_THAT(QTBDiagnosis::DiagnosesIn(capture), ElementsAre(noClass, Call("GetClassName"), noClass));
}

TEST_F(PdmNodeDescription, AValueThatCannotBeReadIsEmptyWithoutAWord)
{
    Update(Part("A", Attribute("PartNumber", "P-1")));
    const DebugCapture capture;
    EXPECT_EQ(DescriptionOf("A"), "P-1, ");
    EXPECT_THAT(QTBDiagnosis::DiagnosesIn(capture), testing::IsEmpty());
}

#include "QTBEPdmRelNodeOnPdmRelNode.h"

#include <ostream>
#include <string>

#include <gmock/gmock.h>

#include "QTBEditedSchema.h"
#include "QTBFaultyPdmSession.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBSchema.h"
#include "QTBSchemaUtil.h"
#include "QTBTestLateType.h"
#include "QTBXmlElement.h"

using QTBDiagnosis::Assertion;
using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosisOf;
using QTBDiagnosis::Handle;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

// The relation R of the class PartPart from A to B; C stands beside them.
class PdmRelNode : public QTBFaultyPdmSession
{
protected:
    void SetUp() override
    {
        QTBFaultyPdmSession::SetUp();
        Update(Part("A") + Part("B") + Part("C") + PartPart("R", "A", "B"));
        m_spRelation = RelNode("R");
        m_BareType.Register<TIEQTBIPdmNode, QTBIPdmNode, QTBEPdmNodeOnPdmNode>();
        m_BareType.Register<TIEQTBIPdmRelNode, QTBIPdmRelNode, QTBEPdmRelNodeOnPdmRelNode>();
        m_BareObjType.Register<TIEQTBIPdmNode, QTBIPdmNode, QTBEPdmNodeOnPdmNode>();
        m_BareObjType.Register<TIEQTBIPdmObjNode, QTBIPdmObjNode, QTBEPdmObjNodeOnPdmObjNode>();
    }

    void TearDown() override
    {
        m_spRelation = NULL_var;
        QTBFaultyPdmSession::TearDown();
    }

    // A relation with that record which the graph does not hold.
    static QTBIPdmRelNode_var CreateRelation(const std::string& record)
    {
        CATBaseUnknown_var spNode;
        EXPECT_THAT(GetPdmNodeCont()->CreatePdmRelNode("K1", &spNode, FALSE), Succeeds());
        EXPECT_THAT(QTBINodeAttributes_var(spNode)->SetXmlElement(ReadXmlElement(record)), Succeeds());
        return spNode;
    }
    // One of the class Special with these parent classes.
    static QTBIPdmRelNode_var CreateSpecial(const std::string& parentClasses)
    {
        return CreateRelation("<r>" + Attribute("Relation", "Special") + parentClasses + "</r>");
    }

    static QTBEPdmRelNodeOnPdmRelNode* Extension(const QTBIPdmRelNode_var& spIPdmRelNode)
    {
        return QTBExtensionBehind<QTBFaultyGraphRelNode, TIEQTBIPdmRelNode>(spIPdmRelNode);
    }

    static unsigned char IsA(const QTBIPdmRelNode_var& spIPdmRelNode, const char* className)
    {
        unsigned char bIsA = 2;
        EXPECT_THAT(spIPdmRelNode->IsA(className, &bIsA), Succeeds());
        return bIsA;
    }

    static std::vector<std::string> ParentClassesOf(const QTBIPdmRelNode_var& spIPdmRelNode)
    {
        CATListValCATUnicodeString classes;
        classes.Append("before");
        EXPECT_THAT(Extension(spIPdmRelNode)->GetParentClasses(&classes), Succeeds());
        return TextsOf(classes);
    }

    std::string Left() const
    {
        QTBIPdmObjNode_var spObject;
        EXPECT_THAT(m_spRelation->GetLeftObject(&spObject), Succeeds());
        return KeyOf(spObject);
    }
    std::string Right() const
    {
        QTBIPdmObjNode_var spObject;
        EXPECT_THAT(m_spRelation->GetRightObject(&spObject), Succeeds());
        return KeyOf(spObject);
    }

    std::string Xml(unsigned char bWithLeftObject, const CATUnicodeString& leading = "",
                    const CATUnicodeString& tagAttributes = "") const
    {
        CATUnicodeString usXml;
        EXPECT_THAT(m_spRelation->ToXml(&usXml, leading, tagAttributes, bWithLeftObject), Succeeds());
        return usXml.ConvertToChar();
    }

    // R as it is written, with that XML among its identifying attributes and its node type, and behind the latter.
    static std::string WrittenR(const std::string& leading = "", const std::string& behind = "")
    {
        return "<r>" + Attribute("Class", "PartPart") + Attribute("Key", "R") + Attribute("Left", "A") +
               Attribute("Right", "B") + Attribute("Class1", "Part") + Attribute("Class2", "Part") + leading +
               Attribute("NodeType", "RELATION") + behind + "</r>";
    }

    static QTBSchemaRelation* ClassOfSchema(const char* name)
    {
        QTBSchema* pSchema = nullptr;
        EXPECT_THAT(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema), Succeeds());
        QTBSchemaRelation* pSchemaRelation = nullptr;
        EXPECT_THAT(pSchema->GetRelationPtr(name, &pSchemaRelation), Succeeds()) << name;
        return pSchemaRelation;
    }

    QTBIPdmRelNode_var m_spRelation;
    // Nodes without attributes and relations.
    QTBTestLateType m_BareType{"TestBarePdmRelNode"};
    QTBTestLateType m_BareObjType{"TestBarePdmObjNode"};
};

// The right and the left variants of the operations on one object.
struct RelationSide
{
    std::string name;
    std::string key;
    HRESULT (QTBIPdmRelNode::*setObject)(const QTBIPdmObjNode_var&);
    HRESULT (QTBIPdmRelNode::*getObject)(QTBIPdmObjNode_var*);
    HRESULT(QTBINodeRelations::*addNode)
    (const CATUnicodeString&, const CATBaseUnknown_var&, int, const unsigned char&);
    HRESULT (QTBINodeRelations::*removeNode)(const CATUnicodeString&, const CATBaseUnknown_var&);

    std::string Text(const std::string& before, const std::string& behind) const { return before + name + behind; }

    friend std::ostream& operator<<(std::ostream& stream, const RelationSide& side) { return stream << side.name; }
};

class PdmRelNodeObject : public PdmRelNode, public ::testing::WithParamInterface<RelationSide>
{
protected:
    std::string ObjectKey() const
    {
        QTBIPdmObjNode_var spObject;
        EXPECT_THAT(Get(&spObject), Succeeds());
        return KeyOf(spObject);
    }
    HRESULT Get(QTBIPdmObjNode_var* pspObject) const { return (m_spRelation.Get()->*GetParam().getObject)(pspObject); }
    HRESULT Set(const QTBIPdmObjNode_var& spObject) const
    {
        return (m_spRelation.Get()->*GetParam().setObject)(spObject);
    }
    HRESULT Link(const CATBaseUnknown_var& spNode) const
    {
        return (QTBINodeRelations_var(m_spRelation).Get()->*GetParam().addNode)("PartPart", spNode, 1, TRUE);
    }
    HRESULT Unlink(const CATBaseUnknown_var& spNode) const
    {
        return (QTBINodeRelations_var(m_spRelation).Get()->*GetParam().removeNode)("PartPart", spNode);
    }
    static std::string NodeList() { return "spINodeRelationsOnThis->" + GetParam().Text("Get", "NodeList"); }
};

INSTANTIATE_TEST_SUITE_P(
    Sides, PdmRelNodeObject,
    ::testing::Values(RelationSide{"Left", "A", &QTBIPdmRelNode::SetLeftObject, &QTBIPdmRelNode::GetLeftObject,
                                   &QTBINodeRelations::AddLeftNode, &QTBINodeRelations::RemoveLeftNode},
                      RelationSide{"Right", "B", &QTBIPdmRelNode::SetRightObject, &QTBIPdmRelNode::GetRightObject,
                                   &QTBINodeRelations::AddRightNode, &QTBINodeRelations::RemoveRightNode}),
    [](const auto& side) { return side.param.name; });

// An attribute that the schema names.
struct SchemaAttribute
{
    std::string operation;
    // What a failing look-up of the name is reported as; two of the texts have a "Get" too many, which is meant.
    std::string nameCall;
    std::string name;
    std::string value;
    HRESULT (QTBIPdmRelNode::*get)(CATUnicodeString*, CATUnicodeString*);
    // The XML attribute of the schema file that names it.
    std::string xmlName;

    // How it stands in a schema file under that name.
    std::string InSchema(const std::string& attributeName) const { return xmlName + "=\"" + attributeName + "\""; }

    friend std::ostream& operator<<(std::ostream& stream, const SchemaAttribute& attribute)
    {
        return stream << attribute.operation;
    }
};

const SchemaAttribute SCHEMA_ATTRIBUTES[] = {
    {"GetRelationAttr", "QTBSchemaUtil::GetRelationAttr", "Relation", "PartPart", &QTBIPdmRelNode::GetRelationAttr,
     "relation"},
    {"GetLeftRelationshipAttr", "QTBSchemaUtil::GetGetLeftRelationshipAttr", "Left", "A",
     &QTBIPdmRelNode::GetLeftRelationshipAttr, "left"},
    {"GetRightRelationshipAttr", "QTBSchemaUtil::GetGetRightRelationshipAttr", "Right", "B",
     &QTBIPdmRelNode::GetRightRelationshipAttr, "right"},
    {"GetLeftRelationClassAttr", "QTBSchemaUtil::GetLeftRelationClassAttribute", "Class1", "Part",
     &QTBIPdmRelNode::GetLeftRelationClassAttr, "leftClass"},
    {"GetRightRelationClassAttr", "QTBSchemaUtil::GetRightRelationClassAttribute", "Class2", "Part",
     &QTBIPdmRelNode::GetRightRelationClassAttr, "rightClass"}};

class PdmRelNodeAttribute : public PdmRelNode, public ::testing::WithParamInterface<SchemaAttribute>
{
protected:
    HRESULT Get(const QTBIPdmRelNode_var& spIPdmRelNode, CATUnicodeString* pusValue,
                CATUnicodeString* pusName = nullptr) const
    {
        return (spIPdmRelNode.Get()->*GetParam().get)(pusValue, pusName);
    }
};

INSTANTIATE_TEST_SUITE_P(Attributes, PdmRelNodeAttribute, ::testing::ValuesIn(SCHEMA_ATTRIBUTES),
                         [](const auto& attribute) { return attribute.param.operation; });

class PdmRelNodeAttributeDeathTest : public ::testing::TestWithParam<SchemaAttribute>
{
};

INSTANTIATE_TEST_SUITE_P(Attributes, PdmRelNodeAttributeDeathTest, ::testing::ValuesIn(SCHEMA_ATTRIBUTES),
                         [](const auto& attribute) { return attribute.param.operation; });

} // namespace

TEST_P(PdmRelNodeAttribute, IsGivenWithItsName)
{
    CATUnicodeString usValue;
    CATUnicodeString usName;
    EXPECT_THAT(Get(m_spRelation, &usValue, &usName), Succeeds());
    EXPECT_EQ(usValue, GetParam().value.c_str());
    EXPECT_EQ(usName, GetParam().name.c_str());
    usValue = "";
    EXPECT_THAT(Get(m_spRelation, &usValue), Succeeds());
    EXPECT_EQ(usValue, GetParam().value.c_str());
}

TEST_P(PdmRelNodeAttribute, IsReadAnewEachTime)
{
    EXPECT_THAT(QTBINodeAttributes_var(m_spRelation)->SetStringAttributeValue(GetParam().name.c_str(), "changed"),
                Succeeds());
    CATUnicodeString usValue;
    EXPECT_THAT(Get(m_spRelation, &usValue), Succeeds());
    EXPECT_EQ(usValue, "changed");

    EXPECT_THAT(QTBINodeAttributes_var(m_spRelation)->AddStringAttributeValue("Other", "other value"), Succeeds());
    QTBLoadEditedSchema({{GetParam().InSchema(GetParam().name), GetParam().InSchema("Other")}});
    CATUnicodeString usName;
    EXPECT_THAT(Get(m_spRelation, &usValue, &usName), Succeeds());
    EXPECT_EQ(usValue, "other value");
    EXPECT_EQ(usName, "Other");
}

TEST_P(PdmRelNodeAttribute, IsGivenAsADataSourceShowsItButNotAsTheFirstOfAList)
{
    QTBLoadEditedSchema({{GetParam().InSchema(GetParam().name), GetParam().InSchema("State")}});
    CATUnicodeString usValue;
    EXPECT_THAT(Get(CreateRelation("<r>" + Attribute("State", "30") + "</r>"), &usValue), Succeeds());
    EXPECT_EQ(usValue, "Released");
    EXPECT_THAT(Get(CreateRelation(R"(<r><a name="State" type="list"><v>30</v></a></r>)"), &usValue),
                FailsWithMessage("AttributeNotDefinedERR_2001"));
}

TEST_P(PdmRelNodeAttribute, FailsWhenTheRecordLacksItButIsNamedAllTheSame)
{
    const QTBIPdmRelNode_var spIPdmRelNode = CreateRelation("<r/>");
    CATUnicodeString usValue("before");
    CATUnicodeString usName;
    const DebugCapture capture;
    EXPECT_THAT(Get(spIPdmRelNode, &usValue, &usName), FailsWithMessage("AttributeNotDefinedERR_2001"));
    EXPECT_EQ(usValue, "before");
    EXPECT_EQ(usName, GetParam().name.c_str());
    EXPECT_THAT(QTBDiagnosis::DiagnosesIn(capture),
                ElementsAre(Call("spINodeAttributesOnThis->GetStringAttributeValue")));
}

TEST_P(PdmRelNodeAttribute, NeedsAPlaceAndAttributes)
{
    CATUnicodeString usValue;
    CATUnicodeString usName;
    EXPECT_THAT(Get(m_spRelation, nullptr, &usName), FailsAssertion("pusAttrValue != NULL"));
    EXPECT_TRUE(usName.IsEmpty());
    EXPECT_THAT(Get(m_BareType.Create(), &usValue, &usName), LacksInterface("spINodeAttributesOnThis"));
    EXPECT_EQ(usName, GetParam().name.c_str());
}

TEST_P(PdmRelNodeAttribute, IsTracedUnderItsOperation)
{
    CATUnicodeString usValue;
    const DebugCapture capture(2);
    EXPECT_THAT(Get(m_spRelation, &usValue), Succeeds());
    EXPECT_EQ(capture.Lines().front(), "-> QTBEPdmRelNodeOnPdmRelNode::" + GetParam().operation);
}

TEST_P(PdmRelNodeAttributeDeathTest, WithoutASchemaNobodyKnowsItsName)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(QTBExitWhenDiagnosed(
                    [] {
                        const QTBIPdmRelNode_var spIPdmRelNode(QTBCreateLoose("QTBPdmRelNode"));
                        CATUnicodeString usValue;
                        return (spIPdmRelNode.Get()->*GetParam().get)(&usValue, nullptr);
                    },
                    {Call(GetParam().nameCall)}),
                ::testing::ExitedWithCode(0), "");
}

TEST_P(PdmRelNodeObject, IsTheOneThatTheGraphLinked)
{
    EXPECT_EQ(ObjectKey(), GetParam().key);
}

TEST_P(PdmRelNodeObject, OfFormerActionsIsGivenToo)
{
    Update(Part("D"));
    EXPECT_EQ(ObjectKey(), GetParam().key);
}

TEST_P(PdmRelNodeObject, TakesThePlaceOfTheFormerOne)
{
    EXPECT_THAT(Set(ObjNode("C")), Succeeds());
    EXPECT_EQ(ObjectKey(), "C");
    EXPECT_THAT(GetParam().name == "Left" ? RightKeys(GetParam().key.c_str(), "PartPart")
                                          : LeftKeys(GetParam().key.c_str(), "PartPart"),
                IsEmpty());
    EXPECT_EQ(GetParam().name == "Left" ? Right() : Left(), GetParam().name == "Left" ? "B" : "A") << "the other side";
    EXPECT_THAT(Set(ObjNode("C")), Succeeds()) << "once more";
    EXPECT_EQ(ObjectKey(), "C");
}

TEST_P(PdmRelNodeObject, IsSetOnANewRelation)
{
    const QTBIPdmRelNode_var spNew = CreateRelation("<r>" + Attribute("Relation", "PartPart") + "</r>");
    EXPECT_THAT((spNew.Get()->*GetParam().setObject)(ObjNode("C")), Succeeds());
    QTBIPdmObjNode_var spObject;
    EXPECT_THAT((spNew.Get()->*GetParam().getObject)(&spObject), Succeeds());
    EXPECT_EQ(KeyOf(spObject), "C");
    EXPECT_THAT(QTBINodeRelations_var(spNew)->RemoveAllRels(nullptr), Succeeds());
}

TEST_P(PdmRelNodeObject, MustBeJustOne)
{
    const std::string notOne = Assertion(GetParam().Text("", "Nodes.Size() == 1"));
    QTBIPdmObjNode_var spObject = ObjNode("C");
    EXPECT_THAT(Link(FindNode("C")), Succeeds());
    EXPECT_THAT(DiagnosisOf([&] { return Get(&spObject); }), ElementsAre(notOne));
    EXPECT_THAT(Unlink(FindNode("C")), Succeeds());
    EXPECT_THAT(Unlink(FindNode(GetParam().key.c_str())), Succeeds());
    EXPECT_THAT(DiagnosisOf([&] { return Get(&spObject); }), ElementsAre(notOne));
    EXPECT_EQ(KeyOf(spObject), "C") << "untouched";
}

TEST_P(PdmRelNodeObject, MustBeAnObject)
{
    EXPECT_THAT(Unlink(FindNode(GetParam().key.c_str())), Succeeds());
    const CATBaseUnknown_var spPlain = QTBCreateLoose("QTBNode");
    EXPECT_THAT(Link(spPlain), Succeeds());
    QTBIPdmObjNode_var spObject = ObjNode("C");
    EXPECT_THAT(DiagnosisOf([&] { return Get(&spObject); }), ElementsAre(Handle("*pspIPdmObjNode")));
    EXPECT_TRUE(spObject == NULL_var);
    EXPECT_THAT(QTBINodeRelations_var(spPlain)->RemoveAllRels(nullptr), Succeeds());
}

TEST_P(PdmRelNodeObject, WhatKeepsItFromBeingGivenIsNamed)
{
    QTBIPdmObjNode_var spObject;
    EXPECT_THAT(Get(nullptr), FailsAssertion("pspIPdmObjNode != NULL"));
    const auto diagnose = [&](const char* operation) {
        const QTBFault fault(operation, m_spRelation);
        return DiagnosisOf([&] { return Get(&spObject); });
    };
    EXPECT_THAT(diagnose(GetParam().Text("Get", "NodeList").c_str()), ElementsAre(Call(NodeList())));
    EXPECT_THAT(diagnose("GetStringAttributeValue"),
                ElementsAre(Call("spINodeAttributesOnThis->GetStringAttributeValue"), Call("GetRelationAttr")));
    QTBTestLateType withoutRelations("TestRelNodeWithoutRelations");
    withoutRelations.Register<TIEQTBINodeAttributes, QTBINodeAttributes, QTBENodeAttributesOnNode>();
    withoutRelations.Register<TIEQTBIPdmRelNode, QTBIPdmRelNode, QTBEPdmRelNodeOnPdmRelNode>();
    const QTBIPdmRelNode_var spWithout(withoutRelations.Create());
    EXPECT_THAT(QTBINodeAttributes_var(spWithout)->SetXmlElement(
                    ReadXmlElement("<r>" + Attribute("Relation", "PartPart") + "</r>")),
                Succeeds());
    EXPECT_THAT((spWithout.Get()->*GetParam().getObject)(&spObject), LacksInterface("spINodeRelationsOnThis"));
    EXPECT_THAT((spWithout.Get()->*GetParam().setObject)(ObjNode("C")), LacksInterface("spINodeRelationsOnThis"));
}

TEST_P(PdmRelNodeObject, WhatKeepsItFromBeingSetIsNamed)
{
    {
        const QTBFault fault("GetStringAttributeValue", m_spRelation);
        EXPECT_THAT(DiagnosisOf([&] { return Set(ObjNode("C")); }),
                    ElementsAre(Call("spINodeAttributesOnThis->GetStringAttributeValue"), Call("GetRelationAttr")));
    }
    EXPECT_EQ(ObjectKey(), GetParam().key);
    // The setter's failure has the getter's text.
    EXPECT_THAT(DiagnosisOf([&] { return Set(NULL_var); }).back(), Call(NodeList()));
}

TEST_P(PdmRelNodeObject, IsTracedUnderTheNameOfTheSide)
{
    const auto firstLineOf = [](auto operation) {
        const DebugCapture capture(2);
        operation();
        return capture.Lines().front();
    };
    QTBIPdmObjNode_var spObject = ObjNode("C");
    EXPECT_EQ(firstLineOf([&] { Set(spObject); }),
              "-> QTBEPdmRelNodeOnPdmRelNode::" + GetParam().Text("Set", "Object"));
    EXPECT_EQ(firstLineOf([&] { Get(&spObject); }),
              "-> QTBEPdmRelNodeOnPdmRelNode::" + GetParam().Text("Get", "Object"));
}

TEST_F(PdmRelNode, GivesTheKeysOfItsObjects)
{
    CATUnicodeString usLeft;
    CATUnicodeString usRight;
    EXPECT_THAT(m_spRelation->GetObjectKeys(&usLeft, &usRight), Succeeds());
    EXPECT_EQ(usLeft, "A");
    EXPECT_EQ(usRight, "B");
}

TEST_F(PdmRelNode, GivesTheNodeKeysNotTheKeysOfItsRecord)
{
    EXPECT_THAT(m_spRelation->SetLeftObject(ObjNode("C")), Succeeds());
    CATUnicodeString usLeft;
    CATUnicodeString usRight;
    EXPECT_THAT(m_spRelation->GetObjectKeys(&usLeft, &usRight), Succeeds());
    EXPECT_EQ(usLeft, "C");
}

TEST_F(PdmRelNode, WhatKeepsTheKeysOfItsObjectsFromBeingGivenIsNamed)
{
    CATUnicodeString usLeft("before");
    CATUnicodeString usRight("before");
    EXPECT_THAT(m_spRelation->GetObjectKeys(nullptr, nullptr), FailsAssertion("pusLeftObjKey != NULL"));
    EXPECT_THAT(m_spRelation->GetObjectKeys(&usLeft, nullptr), FailsAssertion("pusRightObjKey != NULL"));
    const auto diagnose = [&](const char* operation, const char* key) {
        const QTBFault fault(operation, FindNode(key));
        return DiagnosisOf([&] { return m_spRelation->GetObjectKeys(&usLeft, &usRight); });
    };
    EXPECT_THAT(diagnose("GetKey", "A"), ElementsAre(Call("spINodeAttributesOnLeftObj")));
    EXPECT_EQ(usLeft, "before");
    EXPECT_THAT(diagnose("GetKey", "B"), ElementsAre(Call("spINodeAttributesOnRightObj")));
    EXPECT_EQ(usLeft, "A");
    EXPECT_EQ(usRight, "before");
    EXPECT_THAT(diagnose("GetLeftNodeList", "R"),
                ElementsAre(Call("spINodeRelationsOnThis->GetLeftNodeList"), Call("GetLeftObject")));
    EXPECT_THAT(diagnose("GetRightNodeList", "R"),
                ElementsAre(Call("spINodeRelationsOnThis->GetRightNodeList"), Call("GetRightObject")));
}

TEST_F(PdmRelNode, WhoseObjectHasNoAttributesHasNoKeyForIt)
{
    CATUnicodeString usLeft;
    CATUnicodeString usRight;
    const CATBaseUnknown_var spBare = m_BareObjType.Create();
    const QTBINodeRelations_var spINodeRelations(m_spRelation);
    EXPECT_THAT(spINodeRelations->RemoveLeftNode("PartPart", FindNode("A")), Succeeds());
    EXPECT_EQ(spINodeRelations->AddLeftNode("PartPart", spBare, 1, TRUE), E_NOINTERFACE);
    EXPECT_THAT(DiagnosisOf([&] { return m_spRelation->GetObjectKeys(&usLeft, &usRight); }),
                ElementsAre(Handle("spINodeAttributesOnLeftObj")));
    EXPECT_EQ(spINodeRelations->RemoveLeftNode("PartPart", spBare), E_NOINTERFACE);
    EXPECT_THAT(m_spRelation->SetLeftObject(ObjNode("A")), Succeeds());

    EXPECT_THAT(spINodeRelations->RemoveRightNode("PartPart", FindNode("B")), Succeeds());
    EXPECT_EQ(spINodeRelations->AddRightNode("PartPart", spBare, 1, TRUE), E_NOINTERFACE);
    EXPECT_THAT(DiagnosisOf([&] { return m_spRelation->GetObjectKeys(&usLeft, &usRight); }),
                ElementsAre(Handle("spINodeAttributesOnRightObj")));
    EXPECT_EQ(spINodeRelations->RemoveRightNode("PartPart", spBare), E_NOINTERFACE);
}

TEST_F(PdmRelNode, IsOfItsOwnClassWhateverItsRecordSays)
{
    EXPECT_EQ(IsA(m_spRelation, "PartPart"), TRUE);
    EXPECT_EQ(IsA(CreateSpecial("<parentClasses/><parentClasses/>"), "Special"), TRUE);
}

TEST_F(PdmRelNode, WithoutParentClassesIsOnlyOfItsOwnClass)
{
    EXPECT_EQ(IsA(m_spRelation, "PartFile"), FALSE);
    EXPECT_EQ(IsA(m_spRelation, ""), FALSE);
    EXPECT_THAT(ParentClassesOf(m_spRelation), IsEmpty());
    const QTBIPdmRelNode_var spEmpty = CreateSpecial("<parentClasses/>");
    EXPECT_EQ(IsA(spEmpty, "PartPart"), FALSE);
    EXPECT_THAT(ParentClassesOf(spEmpty), IsEmpty());
}

TEST_F(PdmRelNode, IsOfItsParentClasses)
{
    const QTBIPdmRelNode_var spIPdmRelNode =
        CreateSpecial("<parentClasses><class>Usage</class><class>PartPart</class><other>Other</other></parentClasses>");
    EXPECT_THAT(ParentClassesOf(spIPdmRelNode), ElementsAre("Usage", "PartPart")) << "nearest first";
    for (const char* name : {"Special", "Usage", "PartPart"}) {
        EXPECT_EQ(IsA(spIPdmRelNode, name), TRUE) << name;
    }
    for (const char* name : {"Other", "partpart", "PartPart ", "Part", ""}) {
        EXPECT_EQ(IsA(spIPdmRelNode, name), FALSE) << name;
    }
}

TEST_F(PdmRelNode, WithoutParentClassesElementLooksIntoItsRecordAgain)
{
    const QTBIPdmRelNode_var spIPdmRelNode = CreateSpecial("");
    EXPECT_EQ(IsA(spIPdmRelNode, "PartPart"), FALSE);
    const QTBINodeAttributes_var spINodeAttributes(spIPdmRelNode);
    EXPECT_THAT(
        spINodeAttributes->SetXmlElement(ReadXmlElement("<r>" + Attribute("Relation", "Special") +
                                                        "<parentClasses><class>PartPart</class></parentClasses></r>")),
        Succeeds());
    EXPECT_EQ(IsA(spIPdmRelNode, "PartPart"), TRUE);
}

TEST_F(PdmRelNode, KeepsTheParentClassesThatWereReadOnce)
{
    const QTBIPdmRelNode_var spIPdmRelNode = CreateSpecial("<parentClasses><class>PartPart</class></parentClasses>");
    EXPECT_THAT(ParentClassesOf(spIPdmRelNode), ElementsAre("PartPart"));
    const QTBIPdmRelNode_var spEmpty = CreateSpecial("<parentClasses/>");
    EXPECT_THAT(ParentClassesOf(spEmpty), IsEmpty());
    for (const QTBIPdmRelNode_var& spNode : {spIPdmRelNode, spEmpty}) {
        EXPECT_THAT(
            QTBINodeAttributes_var(spNode)->SetXmlElement(ReadXmlElement(
                "<r>" + Attribute("Relation", "Special") + "<parentClasses><class>Usage</class></parentClasses></r>")),
            Succeeds());
    }
    EXPECT_THAT(ParentClassesOf(spIPdmRelNode), ElementsAre("PartPart"));
    EXPECT_EQ(IsA(spIPdmRelNode, "Usage"), FALSE);
    EXPECT_THAT(ParentClassesOf(spEmpty), IsEmpty()) << "an empty element was read too";
}

TEST_F(PdmRelNode, WithTwoParentClassesElementsFailsToTellItsParentClassesAndSoWhatItIs)
{
    const QTBIPdmRelNode_var spIPdmRelNode = CreateSpecial("<parentClasses><class>PartPart</class></parentClasses>"
                                                           "<parentClasses><class>Usage</class></parentClasses>");
    unsigned char bIsA = 2;
    EXPECT_THAT(DiagnosisOf([&] { return spIPdmRelNode->IsA("PartPart", &bIsA); }),
                ElementsAre(Assertion("ChildXmlNodeSize <= 1"), Call("GetParentClasses")));
    EXPECT_EQ(bIsA, 2);
    CATListValCATUnicodeString classes;
    classes.Append("before");
    EXPECT_THAT(Extension(spIPdmRelNode)->GetParentClasses(&classes), FailsAssertion("ChildXmlNodeSize <= 1"));
    EXPECT_EQ(classes.Size(), 0) << "emptied first";
}

TEST_F(PdmRelNode, WhatKeepsItsClassesFromBeingToldIsNamed)
{
    unsigned char bIsA = 2;
    EXPECT_THAT(m_spRelation->IsA("PartPart", nullptr), FailsAssertion("pbIsA != NULL"));
    EXPECT_THAT(Extension(m_spRelation)->GetParentClasses(nullptr), FailsAssertion("pParentClasses != NULL"));
    const auto diagnose = [&](const char* operation) {
        const QTBFault fault(operation, m_spRelation);
        return DiagnosisOf([&] { return m_spRelation->IsA("Other", &bIsA); });
    };
    EXPECT_THAT(diagnose("GetStringAttributeValue"),
                ElementsAre(Call("spINodeAttributesOnThis->GetStringAttributeValue"), Call("GetRelationAttr")));
    EXPECT_THAT(diagnose("GetXmlElement"),
                ElementsAre(Call("spINodeAttributesOnThis->GetXmlElement"), Call("GetParentClasses")));

    CATListValCATUnicodeString classes;
    const QTBIPdmRelNode_var spWithoutRecord(QTBCreateLoose("QTBPdmRelNode"));
    EXPECT_THAT(Extension(spWithoutRecord)->GetParentClasses(&classes), FailsCall("QTBXmlUtil::GetElements"));
    const QTBIPdmRelNode_var spBare(m_BareType.Create());
    auto* pBare = QTBExtensionBehind<QTBEPdmRelNodeOnPdmRelNode, TIEQTBIPdmRelNode>(spBare);
    EXPECT_THAT(pBare->GetParentClasses(&classes), LacksInterface("spINodeAttributesOnThis"));
}

TEST_F(PdmRelNode, ThatWasReadHasTheSchemaRelationOfItsClass)
{
    QTBSchemaRelation* pSchemaRelation = nullptr;
    EXPECT_THAT(m_spRelation->GetSchemaRelationPtr(&pSchemaRelation), Succeeds());
    EXPECT_EQ(pSchemaRelation, ClassOfSchema("PartPart"));
    EXPECT_THAT(m_spRelation->SetSchemaRelationPtr(ClassOfSchema("PartFile")), Succeeds());
    EXPECT_THAT(m_spRelation->GetSchemaRelationPtr(&pSchemaRelation), Succeeds());
    EXPECT_EQ(pSchemaRelation, ClassOfSchema("PartFile"));
    EXPECT_THAT(m_spRelation->SetSchemaRelationPtr(nullptr), FailsAssertion("pSchemaRelation != NULL"));
    EXPECT_THAT(m_spRelation->GetSchemaRelationPtr(&pSchemaRelation), Succeeds());
    EXPECT_EQ(pSchemaRelation, ClassOfSchema("PartFile"));
}

TEST_F(PdmRelNode, ThatWasNotReadHasNoSchemaRelationWhateverItsKey)
{
    CATBaseUnknown_var spNode;
    EXPECT_THAT(GetPdmNodeCont()->CreatePdmRelNode("DEFAULT_ROOT_NODE", &spNode, FALSE), Succeeds());
    QTBSchemaRelation* pSchemaRelation = nullptr;
    EXPECT_THAT(QTBIPdmRelNode_var(spNode)->GetSchemaRelationPtr(&pSchemaRelation),
                FailsAssertion("m_pSchemaRelation != NULL"));
    EXPECT_THAT(m_spRelation->GetSchemaRelationPtr(nullptr), FailsAssertion("ppSchemaRelation != NULL"));
}

TEST_F(PdmRelNode, IsWrittenWithItsNodeTypeAndTheCallersXml)
{
    EXPECT_EQ(Xml(FALSE), WrittenR());
    EXPECT_EQ(Xml(FALSE, "<leading>&</leading>"), WrittenR("<leading>&</leading>"));
}

TEST_F(PdmRelNode, IsWrittenWithoutTheTagAttributes)
{
    EXPECT_EQ(Xml(FALSE, "", " mode=\"new\""), WrittenR());
    EXPECT_EQ(Xml(TRUE, "", " mode=\"new\"").find("mode"), std::string::npos);
}

TEST_F(PdmRelNode, IsWrittenWithItsLeftObjectAndThatWithItsRightRelationsOnRequest)
{
    EXPECT_EQ(Xml(TRUE), WrittenR("", "<leftObject><o>" + Attribute("Class", "Part") + Attribute("Key", "A") +
                                          Attribute("NodeType", "OBJECT") + "<rightRelations>" + WrittenR() +
                                          "</rightRelations></o></leftObject>"));
}

TEST_F(PdmRelNode, WhoseLeftObjectIsNoPartIsWrittenWithoutItEvenOnRequest)
{
    Update(Object("Document", "D") + Object("CATDrawingFile", "F") +
           Relation("DocumentFile", "DF", "D", "F",
                    Attribute("Class1", "Document") + Attribute("Class2", "CATDrawingFile")));
    CATUnicodeString usXml;
    EXPECT_THAT(RelNode("DF")->ToXml(&usXml, "", "", TRUE), Succeeds());
    EXPECT_EQ(usXml, ("<r>" + Attribute("Class", "DocumentFile") + Attribute("Key", "DF") + Attribute("Left", "D") +
                      Attribute("Right", "F") + Attribute("Class1", "Document") +
                      Attribute("Class2", "CATDrawingFile") + Attribute("NodeType", "RELATION") + "</r>")
                         .c_str());
}

TEST_F(PdmRelNode, IsWrittenBehindWhatIsThere)
{
    CATUnicodeString usXml("<list>");
    EXPECT_THAT(m_spRelation->ToXml(&usXml, "", "", FALSE), Succeeds());
    EXPECT_EQ(usXml, ("<list>" + WrittenR()).c_str());
}

TEST_F(PdmRelNode, WhatKeepsItFromBeingWrittenIsNamed)
{
    CATUnicodeString usXml("before");
    EXPECT_THAT(m_spRelation->ToXml(nullptr, "", "", FALSE), FailsAssertion("pusPdmObjectXmlString != NULL"));
    const auto diagnose = [&](const char* operation, const CATBaseUnknown_var& spComponent) {
        const QTBFault fault(operation, spComponent);
        return DiagnosisOf([&] { return m_spRelation->ToXml(&usXml, "", "", TRUE); });
    };
    EXPECT_THAT(diagnose("GetLeftObject", m_spRelation), ElementsAre(Call("spIPdmRelNodeOnThis->GetLeftObject")));
    EXPECT_THAT(diagnose("GetClassAttr", FindNode("A")), ElementsAre(Call("QTBPdmGraphUtil::IsPartNode")));
    EXPECT_THAT(diagnose("ToXml", FindNode("A")), ElementsAre(Call("spIPdmObjNodeOnLeftObj->ToXml")));
    EXPECT_EQ(usXml, "before");
}

TEST_F(PdmRelNode, WithoutLeftObjectCannotBeWritten)
{
    EXPECT_THAT(QTBINodeRelations_var(m_spRelation)->RemoveLeftNode("PartPart", FindNode("A")), Succeeds());
    CATUnicodeString usXml("before");
    EXPECT_THAT(DiagnosisOf([&] { return m_spRelation->ToXml(&usXml, "", "", FALSE); }),
                ElementsAre(Assertion("LeftNodes.Size() == 1"), Call("spIPdmRelNodeOnThis->GetLeftObject")));
    EXPECT_EQ(usXml, "before");
}

TEST_F(PdmRelNode, OpensAScopeForEachOperation)
{
    const auto firstLineOf = [](auto operation) {
        const DebugCapture capture(2);
        operation();
        return capture.Lines().empty() ? std::string() : capture.Lines().front();
    };
    unsigned char flag = FALSE;
    CATUnicodeString left;
    CATUnicodeString right;
    CATListValCATUnicodeString texts;
    QTBSchemaRelation* pSchemaRelation = ClassOfSchema("PartPart");
    const std::string scope = "-> QTBEPdmRelNodeOnPdmRelNode::";
    EXPECT_EQ(firstLineOf([&] { m_spRelation->GetObjectKeys(&left, &right); }), scope + "GetObjectKeys");
    EXPECT_EQ(firstLineOf([&] { m_spRelation->IsA("Other", &flag); }), scope + "IsA");
    EXPECT_EQ(firstLineOf([&] { m_spRelation->SetSchemaRelationPtr(pSchemaRelation); }),
              scope + "SetSchemaRelationPtr");
    EXPECT_EQ(firstLineOf([&] { m_spRelation->GetSchemaRelationPtr(&pSchemaRelation); }),
              scope + "GetSchemaRelationPtr");
    EXPECT_EQ(firstLineOf([&] { m_spRelation->ToXml(&left, "", "", FALSE); }), scope + "ToXml");
    EXPECT_EQ(firstLineOf([&] { Extension(m_spRelation)->GetParentClasses(&texts); }), scope + "GetParentClasses");
}

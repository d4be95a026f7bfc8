#include "QTBEPdmNodeOnPdmNode.h"

#include <gmock/gmock.h>

#include "QTBEditedSchema.h"
#include "QTBFaultyPdmSession.h"
#include "QTBGlobVarsUtil.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBSchemaNode.h"
#include "QTBSchemaObject.h"
#include "QTBSchemaRelation.h"
#include "QTBSchemaUtil.h"
#include "QTBStringHash.h"
#include "QTBTestLateType.h"
#include "QTBXmlElement.h"

using QTBDiagnosis::Assertion;
using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosisOf;
using QTBDiagnosis::Handle;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr const char* DEFAULT_ROOT = "DEFAULT_ROOT_NODE";

unsigned int HashOf(const char* text, unsigned int start = 0)
{
    start %= CATUnicodeString(text);
    return start;
}

class PdmNodeOperations : public QTBFaultyPdmSession
{
protected:
    PdmNodeOperations()
    {
        m_BareType.Register<TIEQTBIPdmNode, QTBIPdmNode, QTBEPdmNodeOnPdmNode>();
        m_BothType.Register<TIEQTBIPdmRelNode, QTBIPdmRelNode, QTBEPdmRelNodeOnPdmRelNode>();
    }

    // A node with that record which the graph does not hold. Nothing has been read from the record yet.
    static QTBIPdmNode_var CreateObject(const char* key, const std::string& record)
    {
        CATBaseUnknown_var spNode;
        EXPECT_THAT(GetPdmNodeCont()->CreatePdmObjNode(key, &spNode, FALSE), Succeeds());
        EXPECT_THAT(QTBINodeAttributes_var(spNode)->SetXmlElement(ReadXmlElement(record)), Succeeds());
        return spNode;
    }

    static QTBIPdmNode_var CreateDefaultRoot()
    {
        EXPECT_THAT(GetPdmNodeCont()->CreateDefaultRootNode(), Succeeds());
        return PdmNode(DEFAULT_ROOT);
    }

    static std::string ClassOf(const QTBIPdmNode_var& spIPdmNode)
    {
        CATUnicodeString usClassName("before");
        EXPECT_THAT(spIPdmNode->GetClassName(&usClassName), Succeeds());
        return std::string(usClassName.View());
    }

    static unsigned char IsAffected(const QTBIPdmNode_var& spIPdmNode)
    {
        unsigned char bIsAffected = 2;
        EXPECT_THAT(spIPdmNode->IsAffectedByCurrentAction(&bIsAffected), Succeeds());
        return bIsAffected;
    }

    static QTBSchemaNode* ClassOfSchema(const char* name)
    {
        unsigned char bIsDefined = FALSE;
        QTBSchemaNode* pSchemaNode = nullptr;
        EXPECT_THAT(QTBSchemaUtil::PdmClassIsDefined(name, &bIsDefined, &pSchemaNode), Succeeds());
        EXPECT_NE(pSchemaNode, nullptr) << name;
        return pSchemaNode;
    }

    // PDM nodes without attributes and relations, and ones that are object and relation at once.
    QTBTestLateType m_BareType{"TestBarePdmNode"};
    QTBTestLateType m_BothType{"TestObjectAndRelation", "QTBPdmObjNode"};
};

} // namespace

TEST_F(PdmNodeOperations, AnObjectsClassIsItsClassAttribute)
{
    Update(Part("A") + Object("Document", "D"));
    EXPECT_EQ(ClassOf(PdmNode("A")), "Part");
    EXPECT_EQ(ClassOf(PdmNode("D")), "Document");
}

TEST_F(PdmNodeOperations, ARelationsClassIsItsRelationAttribute)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    EXPECT_EQ(ClassOf(PdmNode("AB")), "PartPart");
}

TEST_F(PdmNodeOperations, TheDefaultRootsClassIsItsKey)
{
    EXPECT_EQ(ClassOf(CreateDefaultRoot()), DEFAULT_ROOT);
}

TEST_F(PdmNodeOperations, AComponentThatIsObjectAndRelationHasTheClassOfTheRelation)
{
    const CATBaseUnknown_var spNode = m_BothType.Create();
    const std::string record = "<o>" + Attribute("Class", "Part") + Attribute("Relation", "PartPart") + "</o>";
    EXPECT_THAT(QTBINodeAttributes_var(spNode)->SetXmlElement(ReadXmlElement(record)), Succeeds());
    EXPECT_EQ(ClassOf(spNode), "PartPart");
}

TEST_F(PdmNodeOperations, OfAComponentThatIsObjectAndRelationTheObjectIsAskedFirst)
{
    const QTBIPdmNode_var spIPdmNode(m_BothType.Create());
    CATUnicodeString usClassName;
    const QTBFault fault("GetClassAttr");
    EXPECT_THAT(DiagnosisOf([&] { return spIPdmNode->GetClassName(&usClassName); }),
                ElementsAre(Call("spIPdmObjNodeOnThis->GetClassAttr")));
}

TEST_F(PdmNodeOperations, ANodeThatIsNeitherObjectNorRelationHasNoClass)
{
    const QTBIPdmNode_var spIPdmNode(QTBCreateLoose("QTBPdmNode"));
    CATUnicodeString usClassName;
    EXPECT_THAT(DiagnosisOf([&] { return spIPdmNode->GetClassName(&usClassName); }),
                ElementsAre(Assertion("(spIPdmObjNodeOnThis != NULL_var) || (spIPdmRelNodeOnThis != NULL_var)")));
}

TEST_F(PdmNodeOperations, WhatKeepsAClassFromBeingReadIsNamed)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    CATUnicodeString usClassName;
    EXPECT_THAT(PdmNode("A")->GetClassName(nullptr), FailsAssertion("pusClassName != NULL"));
    EXPECT_THAT(QTBIPdmNode_var(m_BareType.Create())->GetClassName(&usClassName),
                LacksInterface("spINodeAttributesOnThis"));
    const auto getClassName = [&](const char* key, const char* operation) {
        const QTBIPdmNode_var spIPdmNode = PdmNode(key);
        const QTBFault fault(operation, spIPdmNode);
        return DiagnosisOf([&] { return spIPdmNode->GetClassName(&usClassName); });
    };
    EXPECT_THAT(getClassName("A", "GetKey"), ElementsAre(Call("spINodeAttributesOnThis->GetKey")));
    EXPECT_THAT(getClassName("A", "GetClassAttr"), ElementsAre(Call("spIPdmObjNodeOnThis->GetClassAttr")));
    EXPECT_THAT(getClassName("AB", "GetRelationAttr"), ElementsAre(Call("spIPdmRelNodeOnThis->GetRelationAttr")));
}

TEST_F(PdmNodeOperations, AnErrorTravelsFromTheAttributeToTheClassUnchanged)
{
    const QTBIPdmNode_var spIPdmNode = CreateObject("A", "<o/>");
    CATUnicodeString usClassName;
    const DebugCapture capture;
    EXPECT_THAT(spIPdmNode->GetClassName(&usClassName), FailsWithMessage("AttributeNotDefinedERR_2001"));
    EXPECT_THAT(QTBDiagnosis::DiagnosesIn(capture),
                ElementsAre(Call("spINodeAttributesOnThis->GetStringAttributeValue"),
                            Call("spIPdmObjNodeOnThis->GetClassAttr")));
}

TEST_F(PdmNodeOperations, TheDefaultRootHasNoSchemaNode)
{
    const QTBIPdmNode_var spIPdmNode = CreateDefaultRoot();
    QTBSchemaNode* pSchemaNode = ClassOfSchema("Part");
    EXPECT_THAT(spIPdmNode->GetSchemaNodePtr(&pSchemaNode), Succeeds());
    EXPECT_EQ(pSchemaNode, nullptr);
}

TEST_F(PdmNodeOperations, ADefaultRootWithASchemaNodeGivesIt)
{
    const QTBIPdmNode_var spIPdmNode = CreateDefaultRoot();
    EXPECT_THAT(spIPdmNode->SetSchemaNodePtr(ClassOfSchema("Part")), Succeeds());
    QTBSchemaNode* pSchemaNode = nullptr;
    EXPECT_THAT(spIPdmNode->GetSchemaNodePtr(&pSchemaNode), Succeeds());
    EXPECT_EQ(pSchemaNode, ClassOfSchema("Part"));
}

TEST_F(PdmNodeOperations, ANodeThatWasReadHasTheSchemaNodeOfItsClass)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    QTBSchemaNode* pSchemaNode = nullptr;
    EXPECT_THAT(PdmNode("A")->GetSchemaNodePtr(&pSchemaNode), Succeeds());
    EXPECT_EQ(pSchemaNode, ClassOfSchema("Part"));
    EXPECT_THAT(PdmNode("AB")->GetSchemaNodePtr(&pSchemaNode), Succeeds());
    EXPECT_EQ(pSchemaNode, ClassOfSchema("PartPart"));
}

TEST_F(PdmNodeOperations, AMissingSchemaNodeIsReportedWithClassAndKey)
{
    const QTBIPdmNode_var spIPdmNode = CreateObject("K1", "<o>" + Attribute("Class", "Part") + "</o>");
    QTBSchemaNode* pSchemaNode = ClassOfSchema("Document");
    const DebugCapture capture;
    EXPECT_THAT(spIPdmNode->GetSchemaNodePtr(&pSchemaNode), FailsAssertion("m_pSchemaNode != NULL"));
    EXPECT_EQ(pSchemaNode, ClassOfSchema("Document")) << "untouched";
    ASSERT_EQ(capture.Lines().size(), 2U);
    EXPECT_EQ(capture.Lines()[0],
              "QTBEPdmNodeOnPdmNode::GetSchemaNodePtr Class:[Part], Key:[K1] -> m_pSchemaNode == NULL");
}

TEST_F(PdmNodeOperations, WhatKeepsASchemaNodeFromBeingReadIsNamed)
{
    QTBSchemaNode* pSchemaNode = nullptr;
    const QTBIPdmNode_var spIPdmNode(QTBCreateLoose("QTBPdmNode"));
    EXPECT_THAT(spIPdmNode->SetSchemaNodePtr(nullptr), FailsAssertion("pSchemaNode != NULL"));
    EXPECT_THAT(spIPdmNode->GetSchemaNodePtr(nullptr), FailsAssertion("ppSchemaNode != NULL"));
    EXPECT_THAT(DiagnosisOf([&] { return spIPdmNode->GetSchemaNodePtr(&pSchemaNode); }),
                ElementsAre(Assertion("(spIPdmObjNodeOnThis != NULL_var) || (spIPdmRelNodeOnThis != NULL_var)"),
                            Call("GetClassName")));
    EXPECT_THAT(QTBIPdmNode_var(m_BareType.Create())->GetSchemaNodePtr(&pSchemaNode),
                LacksInterface("spINodeAttributesOnThis"));
    const QTBFault fault("GetKey", spIPdmNode);
    EXPECT_THAT(DiagnosisOf([&] { return spIPdmNode->GetSchemaNodePtr(&pSchemaNode); }),
                ElementsAre(Call("spINodeAttributesOnThis->GetKey")));
}

TEST_F(PdmNodeOperations, ASchemaNodeCanBeReplaced)
{
    Update(Part("A"));
    EXPECT_THAT(PdmNode("A")->SetSchemaNodePtr(ClassOfSchema("Document")), Succeeds());
    QTBSchemaNode* pSchemaNode = nullptr;
    EXPECT_THAT(PdmNode("A")->GetSchemaNodePtr(&pSchemaNode), Succeeds());
    EXPECT_EQ(pSchemaNode, ClassOfSchema("Document"));
    EXPECT_THAT(PdmNode("A")->SetSchemaNodePtr(nullptr), FailsAssertion("pSchemaNode != NULL"));
    EXPECT_THAT(PdmNode("A")->GetSchemaNodePtr(&pSchemaNode), Succeeds());
    EXPECT_EQ(pSchemaNode, ClassOfSchema("Document"));
}

TEST_F(PdmNodeOperations, ANodeKnowsTheContainerThatCreatedIt)
{
    Update(Part("A"));
    QTBIPdmNodeCont_var spIPdmNodeCont;
    EXPECT_THAT(PdmNode("A")->GetPdmNodeContainer(&spIPdmNodeCont), Succeeds());
    EXPECT_TRUE(spIPdmNodeCont == GetPdmNodeCont());
}

TEST_F(PdmNodeOperations, ANodeThatNoContainerCreatedHasNone)
{
    const QTBIPdmNode_var spIPdmNode(QTBCreateLoose("QTBPdmObjNode"));
    QTBIPdmNodeCont_var spIPdmNodeCont = GetPdmNodeCont();
    EXPECT_THAT(spIPdmNode->GetPdmNodeContainer(&spIPdmNodeCont), LacksInterface("m_spIPdmNodeCont"));
    EXPECT_TRUE(spIPdmNodeCont == GetPdmNodeCont()) << "untouched";
    EXPECT_THAT(spIPdmNode->GetPdmNodeContainer(nullptr), FailsAssertion("pspIPdmNodeCont != NULL"));
    EXPECT_THAT(spIPdmNode->SetPdmNodeContainer(NULL_var), LacksInterface("spIPdmNodeCont"));
}

TEST_F(PdmNodeOperations, ANodeKeepsItsContainerAlive)
{
    const int before = CATBaseUnknown::GetLiveComponentCount();
    {
        const QTBIPdmNode_var spIPdmNode(QTBCreateLoose("QTBPdmObjNode"));
        EXPECT_THAT(spIPdmNode->SetPdmNodeContainer(QTBCreateLoose("QTBPdmNodeCont")), Succeeds());
        EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before + 2);
        QTBIPdmNodeCont_var spIPdmNodeCont;
        EXPECT_THAT(spIPdmNode->GetPdmNodeContainer(&spIPdmNodeCont), Succeeds());
        EXPECT_TRUE(spIPdmNodeCont != NULL_var);
        EXPECT_FALSE(spIPdmNodeCont == GetPdmNodeCont());
        EXPECT_THAT(spIPdmNode->SetPdmNodeContainer(NULL_var), LacksInterface("spIPdmNodeCont"));
        EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before + 2) << "kept";
    }
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before);
}

TEST_F(PdmNodeOperations, ANodeIsAffectedByTheActionThatReadIt)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    EXPECT_EQ(IsAffected(PdmNode("A")), TRUE);
    EXPECT_EQ(IsAffected(PdmNode("AB")), TRUE);
    Update(Part("A"));
    EXPECT_EQ(IsAffected(PdmNode("A")), TRUE);
    EXPECT_EQ(IsAffected(PdmNode("B")), FALSE);
    EXPECT_EQ(IsAffected(PdmNode("AB")), FALSE);
    EXPECT_THAT(QTBGlobVarsUtil::IncActionIndex(), Succeeds());
    EXPECT_EQ(IsAffected(PdmNode("A")), FALSE);
}

TEST_F(PdmNodeOperations, WhatKeepsANodeFromKnowingItsActionIsNamed)
{
    unsigned char bIsAffected = 2;
    const QTBIPdmNode_var spIPdmNode(m_BareType.Create());
    EXPECT_THAT(spIPdmNode->IsAffectedByCurrentAction(nullptr), FailsAssertion("pbIsAffected != NULL"));
    EXPECT_THAT(DiagnosisOf([&] { return spIPdmNode->IsAffectedByCurrentAction(&bIsAffected); }),
                ElementsAre(Call("QTBInfoUtil::GetActionIndex")));
    EXPECT_EQ(bIsAffected, 2);
}

TEST_F(PdmNodeOperations, ANewNodeHasNoPdmKey)
{
    const QTBIPdmNode_var spIPdmNode = CreateObject("K1", "<o>" + Attribute("Key", "P1") + "</o>");
    EXPECT_TRUE(spIPdmNode->GetPdmKey().IsEmpty());
    EXPECT_EQ(spIPdmNode->GetPdmKeyHash(), 0U);
}

TEST_F(PdmNodeOperations, ThePdmKeyIsTheSchemasKeyAttribute)
{
    const QTBIPdmNode_var spIPdmNode =
        CreateObject("K1", "<o>" + Attribute("Key", "P1") + Attribute("Number", "47\xC3\xA4") + "</o>");
    EXPECT_THAT(spIPdmNode->SetPdmKey(), Succeeds());
    EXPECT_EQ(spIPdmNode->GetPdmKey(), "P1");
    EXPECT_EQ(spIPdmNode->GetPdmKeyHash(), HashOf("P1"));

    QTBLoadEditedSchema({{"key=\"Key\"", "key=\"Number\""}});
    const QTBIPdmNode_var spOther = CreateObject("K2", "<o>" + Attribute("Number", "47\xC3\xA4") + "</o>");
    EXPECT_THAT(spOther->SetPdmKey(), Succeeds());
    EXPECT_EQ(spOther->GetPdmKey(), "47\xC3\xA4");
    EXPECT_EQ(spOther->GetPdmKeyHash(), HashOf("47\xC3\xA4"));
}

TEST_F(PdmNodeOperations, ThePdmKeyIsWhatADataSourceShowsButNotTheFirstOfAList)
{
    QTBLoadEditedSchema({{"key=\"Key\"", "key=\"State\""}});
    const QTBIPdmNode_var spIPdmNode = CreateObject("K1", "<o>" + Attribute("State", "30") + "</o>");
    EXPECT_THAT(spIPdmNode->SetPdmKey(), Succeeds());
    EXPECT_EQ(spIPdmNode->GetPdmKey(), "Released");
    EXPECT_EQ(spIPdmNode->GetPdmKeyHash(), HashOf("Released"));
    const QTBIPdmNode_var spOther = CreateObject("K2", R"(<o><a name="State" type="list"><v>30</v></a></o>)");
    EXPECT_THAT(spOther->SetPdmKey(), FailsWithMessage("AttributeNotDefinedERR_2001"));
    EXPECT_TRUE(spOther->GetPdmKey().IsEmpty());
}

TEST_F(PdmNodeOperations, ASecondPdmKeyIsFoldedIntoTheHashOfTheFirst)
{
    const QTBIPdmNode_var spIPdmNode = CreateObject("K1", "<o>" + Attribute("Key", "P1") + "</o>");
    EXPECT_THAT(spIPdmNode->SetPdmKey(), Succeeds());
    EXPECT_THAT(QTBINodeAttributes_var(spIPdmNode)->SetStringAttributeValue("Key", "P2"), Succeeds());
    EXPECT_THAT(spIPdmNode->SetPdmKey(), Succeeds());
    EXPECT_EQ(spIPdmNode->GetPdmKey(), "P2");
    EXPECT_EQ(spIPdmNode->GetPdmKeyHash(), HashOf("P2", HashOf("P1")));
    EXPECT_NE(spIPdmNode->GetPdmKeyHash(), HashOf("P2"));
}

TEST_F(PdmNodeOperations, ARecordWithoutKeyAttributeLeavesThePdmKeyAsItIs)
{
    const QTBIPdmNode_var spIPdmNode = CreateObject("K1", "<o>" + Attribute("Key", "P1") + "</o>");
    EXPECT_THAT(spIPdmNode->SetPdmKey(), Succeeds());
    EXPECT_THAT(QTBINodeAttributes_var(spIPdmNode)->SetXmlElement(ReadXmlElement("<o/>")), Succeeds());
    const DebugCapture capture;
    EXPECT_THAT(spIPdmNode->SetPdmKey(), FailsWithMessage("AttributeNotDefinedERR_2001"));
    EXPECT_THAT(QTBDiagnosis::DiagnosesIn(capture),
                ElementsAre(Call("spINodeAttributesOnThis->GetStringAttributeValue")));
    EXPECT_EQ(spIPdmNode->GetPdmKey(), "P1");
    EXPECT_EQ(spIPdmNode->GetPdmKeyHash(), HashOf("P1"));
}

TEST_F(PdmNodeOperations, APdmKeyNeedsAttributes)
{
    EXPECT_THAT(QTBIPdmNode_var(m_BareType.Create())->SetPdmKey(), LacksInterface("spINodeAttributesOnThis"));
}

TEST(PdmNodeDeathTest, WithoutASchemaThereIsNoPdmKey)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(QTBExitWhenDiagnosed([] { return QTBIPdmNode_var(QTBCreateLoose("QTBPdmObjNode"))->SetPdmKey(); },
                                     {Call("QTBSchemaUtil::GetKeyAttr")}),
                ::testing::ExitedWithCode(0), "");
}

TEST_F(PdmNodeOperations, EachOpensAScopeUnderItsNameButTheTwoThatReadTheKey)
{
    Update(Part("A", Info({{"Flag", "true"}})));
    const QTBIPdmNode_var spIPdmNode = PdmNode("A");
    // The line with which the operation begins.
    const auto firstLineOf = [&](auto operation) {
        const DebugCapture capture(2);
        operation();
        return capture.Lines().empty() ? std::string() : capture.Lines().front();
    };
    unsigned char flag = FALSE;
    CATUnicodeString text;
    CATListValCATUnicodeString texts;
    CATListValCATBaseUnknown_var nodes;
    QTBSchemaNode* pSchemaNode = ClassOfSchema("Part");
    QTBIPdmNodeCont_var spCont = GetPdmNodeCont();
    const std::string scope = "-> QTBEPdmNodeOnPdmNode::";
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->GetRepNodes(&nodes, NULL_var); }), scope + "GetRepNodes");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->RedrawRepNodes(&flag); }), scope + "RedrawRepNodes");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->PreselectRepNodes(); }), scope + "PreselectRepNodes");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->HighlightRepNodes(TRUE, &flag); }), scope + "HighlightRepNodes");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->GetClassName(&text); }), scope + "GetClassName");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->GetDescriptionString(&text); }), scope + "GetDescriptionString");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->GetQtbAttr("N", &flag, FALSE, nullptr, FALSE); }), scope + "GetQtbAttr");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->GetQtbAttr("N", &texts, FALSE, nullptr, FALSE); }), scope + "GetQtbAttr");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->GetQtbAttr("N", &text, FALSE, nullptr, FALSE); }), scope + "GetQtbAttr");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->SetQtbInfoAttr("Flag", "false"); }), scope + "SetQtbInfoAttr");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->GetQtbInfoAttr("Flag", &flag, FALSE, nullptr, FALSE); }),
              scope + "GetQtbInfoAttr");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->GetQtbInfoAttr("Flag", &texts, FALSE, nullptr, FALSE); }),
              scope + "GetQtbInfoAttr");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->GetQtbInfoAttr("Flag", &text, FALSE, nullptr, FALSE); }),
              scope + "GetQtbInfoAttr");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->GetQtbInfoAttrXmlAttrVal("Flag", "unit", &text); }),
              scope + "GetQtbInfoAttrXmlAttrVal");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->SetSchemaNodePtr(pSchemaNode); }), scope + "SetSchemaNodePtr");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->GetSchemaNodePtr(&pSchemaNode); }), scope + "GetSchemaNodePtr");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->SetPdmNodeContainer(spCont); }), scope + "SetPdmNodeContainer");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->GetPdmNodeContainer(&spCont); }), scope + "GetPdmNodeContainer");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->IsAffectedByCurrentAction(&flag); }), scope + "IsAffectedByCurrentAction");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->SetPdmKey(); }), scope + "SetPdmKey");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->GetPdmKey(); }), "");
    EXPECT_EQ(firstLineOf([&] { spIPdmNode->GetPdmKeyHash(); }), "");
}

TEST_F(PdmNodeOperations, NothingIsWrittenWhileDebugOutputIsOff)
{
    const QTBIPdmNode_var spIPdmNode = CreateObject("K1", "<o>" + Attribute("Class", "Part") + "</o>");
    QTBSchemaNode* pSchemaNode = nullptr;
    const DebugCapture capture;
    QTBDebugUtil::s_bGlobalDebugStatus = FALSE;
    EXPECT_THAT(spIPdmNode->GetSchemaNodePtr(&pSchemaNode), FailsAssertion("m_pSchemaNode != NULL"));
    EXPECT_THAT(capture.Lines(), IsEmpty());
}

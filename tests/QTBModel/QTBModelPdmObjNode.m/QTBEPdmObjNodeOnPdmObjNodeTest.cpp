#include "QTBEPdmObjNodeOnPdmObjNode.h"

#include <string>

#include <gmock/gmock.h>

#include "QTBEditedSchema.h"
#include "QTBFakeCommunication.h"
#include "QTBFakeRepTree.h"
#include "QTBFaultyPdmSession.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
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

constexpr const char* DEFAULT_ROOT = "DEFAULT_ROOT_NODE";

class PdmObjNode : public QTBFaultyPdmSession
{
protected:
    PdmObjNode()
    {
        m_BareType.Register<TIEQTBIPdmNode, QTBIPdmNode, QTBEPdmNodeOnPdmNode>();
        m_BareType.Register<TIEQTBIPdmObjNode, QTBIPdmObjNode, QTBEPdmObjNodeOnPdmObjNode>();
    }

    // An object with that record which the graph does not hold.
    static QTBIPdmObjNode_var CreateObject(const char* key, const std::string& record)
    {
        CATBaseUnknown_var spNode;
        EXPECT_THAT(GetPdmNodeCont()->CreatePdmObjNode(key, &spNode, FALSE), Succeeds());
        EXPECT_THAT(QTBINodeAttributes_var(spNode)->SetXmlElement(ReadXmlElement(record)), Succeeds());
        return spNode;
    }

    static QTBIPdmObjNode_var CreateDefaultRoot()
    {
        EXPECT_THAT(GetPdmNodeCont()->CreateDefaultRootNode(), Succeeds());
        return ObjNode(DEFAULT_ROOT);
    }

    // A usage of a class that is derived from PartPart.
    static std::string StandardUsage(const char* key, const char* left, const char* right)
    {
        return Relation("StandardPartUsage", key, left, right,
                        Attribute("Class1", "Part") + Attribute("Class2", "StandardPart") +
                            "<parentClasses><class>PartPart</class></parentClasses>");
    }

    static unsigned char IsRoot(const QTBIPdmObjNode_var& spIPdmObjNode)
    {
        unsigned char bIsRoot = 2;
        EXPECT_THAT(spIPdmObjNode->IsPdmRootNode(&bIsRoot), Succeeds());
        return bIsRoot;
    }

    static std::string ClassOf(const QTBIPdmObjNode_var& spIPdmObjNode)
    {
        CATUnicodeString usClass("before");
        EXPECT_THAT(spIPdmObjNode->GetClassAttr(&usClass, nullptr), Succeeds());
        return usClass.ConvertToChar();
    }

    static std::vector<std::string> Adjacent(const char* key, int iDirection)
    {
        CATListValCATBaseUnknown_var nodes;
        nodes.Append(FindNode(key));
        EXPECT_THAT(ObjNode(key)->RetrieveAdjacentRelationNodes(&nodes, iDirection), Succeeds());
        return KeysOf(nodes);
    }

    static std::string Xml(const char* key, unsigned char bWithRightRelations, const CATUnicodeString& leading = "",
                           const CATUnicodeString& tagAttributes = "")
    {
        CATUnicodeString usXml;
        EXPECT_THAT(ObjNode(key)->ToXml(&usXml, leading, tagAttributes, bWithRightRelations), Succeeds());
        return usXml.ConvertToChar();
    }

    static QTBSchemaObject* ClassOfSchema(const char* name)
    {
        QTBSchema* pSchema = nullptr;
        EXPECT_THAT(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema), Succeeds());
        QTBSchemaObject* pSchemaObject = nullptr;
        EXPECT_THAT(pSchema->GetObjectPtr(name, &pSchemaObject), Succeeds()) << name;
        return pSchemaObject;
    }

    QTBTestLateType m_BareType{"TestBarePdmObjNode"};
};

} // namespace

TEST_F(PdmObjNode, WithoutLeftRelationsIsARoot)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    EXPECT_EQ(IsRoot(ObjNode("A")), TRUE);
    EXPECT_EQ(IsRoot(ObjNode("B")), FALSE);
    EXPECT_EQ(IsRoot(CreateDefaultRoot()), TRUE);
}

TEST_F(PdmObjNode, WhoseLeftRelationsAreAllOfFormerActionsIsARoot)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    Update(Part("C"));
    EXPECT_EQ(IsRoot(ObjNode("B")), TRUE);
    Update(PartPart("AB", "A", "B"));
    EXPECT_EQ(IsRoot(ObjNode("B")), FALSE);
}

TEST_F(PdmObjNode, WhoseLeftRelationsAreLinksToRepNodesIsARoot)
{
    Update(Part("A"));
    const CATBaseUnknown_var spPlain = QTBCreateLoose("QTBNode");
    EXPECT_THAT(QTBINodeRelations_var(FindNode("A"))->AddLeftNode("PdmToRep", spPlain, 1, TRUE), Succeeds());
    EXPECT_EQ(IsRoot(ObjNode("A")), TRUE);
    EXPECT_THAT(QTBINodeRelations_var(spPlain)->RemoveAllRels(nullptr), Succeeds());
}

TEST_F(PdmObjNode, ThatLostItsLastLeftRelationIsARoot)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    EXPECT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph("AB", FALSE, FALSE, FALSE, nullptr), Succeeds());
    EXPECT_EQ(IsRoot(ObjNode("B")), TRUE);
}

TEST_F(PdmObjNode, WhatKeepsARootFromBeingToldIsNamed)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    const QTBIPdmObjNode_var spB = ObjNode("B");
    unsigned char bIsRoot = TRUE;
    EXPECT_THAT(spB->IsPdmRootNode(nullptr), FailsAssertion("pbIsPdmRootNode != NULL"));
    EXPECT_THAT(QTBIPdmObjNode_var(m_BareType.Create())->IsPdmRootNode(&bIsRoot),
                LacksInterface("spINodeRelationsOnThis"));
    EXPECT_EQ(bIsRoot, FALSE);
    for (const char* operation : {"GetLeftRelationsCount", "GetAllLeftRelations"}) {
        const QTBFault fault(operation, spB);
        EXPECT_THAT(DiagnosisOf([&] { return spB->IsPdmRootNode(&bIsRoot); }),
                    ElementsAre(Call(std::string("spINodeRelationsOnThis->") + operation)));
    }
}

TEST_F(PdmObjNode, HasTheClassOfItsClassAttribute)
{
    Update(Part("A"));
    CATUnicodeString usClass;
    CATUnicodeString usName;
    EXPECT_THAT(ObjNode("A")->GetClassAttr(&usClass, &usName), Succeeds());
    EXPECT_EQ(usClass, "Part");
    EXPECT_EQ(usName, "Class");
}

TEST_F(PdmObjNode, HasTheClassThatADataSourceShowsButNotTheFirstOfAList)
{
    QTBLoadEditedSchema({{"class=\"Class\"", "class=\"State\""}});
    EXPECT_EQ(ClassOf(CreateObject("A", "<o>" + Attribute("State", "30") + "</o>")), "Released");
    CATUnicodeString usClass("before");
    EXPECT_THAT(
        CreateObject("B", R"(<o><a name="State" type="list"><v>30</v></a></o>)")->GetClassAttr(&usClass, nullptr),
        FailsWithMessage("AttributeNotDefinedERR_2001"));
    EXPECT_EQ(usClass, "before");
}

TEST_F(PdmObjNode, HasTheRelevantBaseClassBeforeItsOwn)
{
    Update(Object("SpecialPart", "A", Info({{"QtbRelevantBaseClass", "Part"}})) +
           Object("Document", "D", Info({{"QtbRelevantBaseClass", ""}})));
    EXPECT_EQ(ClassOf(ObjNode("A")), "Part");
    EXPECT_EQ(ClassOf(ObjNode("D")), "Document");
}

TEST_F(PdmObjNode, ThatIsTheDefaultRootHasItsKeyAsClassAndNoSchemaObject)
{
    const QTBIPdmObjNode_var spRoot = CreateDefaultRoot();
    CATUnicodeString usClass;
    CATUnicodeString usName;
    EXPECT_THAT(spRoot->GetClassAttr(&usClass, &usName), Succeeds());
    EXPECT_EQ(usClass, DEFAULT_ROOT);
    EXPECT_EQ(usName, "Class");
    QTBSchemaObject* pSchemaObject = ClassOfSchema("Part");
    EXPECT_THAT(spRoot->GetSchemaObjectPtr(&pSchemaObject), Succeeds());
    EXPECT_EQ(pSchemaObject, nullptr);
}

TEST_F(PdmObjNode, KeepsTheClassThatWasReadOnce)
{
    const QTBIPdmObjNode_var spIPdmObjNode =
        CreateObject("A", "<o>" + Attribute("Class", "Part") + Attribute("Kind", "Document") + "</o>");
    EXPECT_EQ(ClassOf(spIPdmObjNode), "Part");
    EXPECT_THAT(QTBINodeAttributes_var(spIPdmObjNode)->SetStringAttributeValue("Class", "Document"), Succeeds());
    EXPECT_EQ(ClassOf(spIPdmObjNode), "Part");
    QTBLoadEditedSchema({{"class=\"Class\"", "class=\"Kind\""}});
    CATUnicodeString usClass;
    CATUnicodeString usName;
    EXPECT_THAT(spIPdmObjNode->GetClassAttr(&usClass, &usName), Succeeds());
    EXPECT_EQ(usClass, "Part");
    EXPECT_EQ(usName, "Class");
}

TEST_F(PdmObjNode, ReadsAClassThatCouldNotBeReadAgain)
{
    const QTBIPdmObjNode_var spIPdmObjNode = CreateObject("A", "<o/>");
    CATUnicodeString usClass("before");
    CATUnicodeString usName("before");
    {
        const DebugCapture capture;
        EXPECT_THAT(spIPdmObjNode->GetClassAttr(&usClass, &usName), FailsWithMessage("AttributeNotDefinedERR_2001"));
        EXPECT_THAT(QTBDiagnosis::DiagnosesIn(capture),
                    ElementsAre(Call("spINodeAttributesOnThis->GetStringAttributeValue")));
    }
    EXPECT_EQ(usClass, "before");
    EXPECT_EQ(usName, "Class") << "known before the value is read";
    EXPECT_THAT(QTBINodeAttributes_var(spIPdmObjNode)->AddStringAttributeValue("Class", "Part"), Succeeds());
    EXPECT_EQ(ClassOf(spIPdmObjNode), "Part");
}

TEST_F(PdmObjNode, WhatKeepsItsClassFromBeingReadIsNamed)
{
    CATUnicodeString usClass;
    const QTBIPdmObjNode_var spIPdmObjNode = CreateObject("A", "<o>" + Attribute("Class", "Part") + "</o>");
    EXPECT_THAT(spIPdmObjNode->GetClassAttr(nullptr, nullptr), FailsAssertion("pusAttrValue != NULL"));
    EXPECT_THAT(QTBIPdmObjNode_var(m_BareType.Create())->GetClassAttr(&usClass, nullptr),
                LacksInterface("spINodeAttributesOnThis"));
    {
        const QTBFault fault("GetKey", spIPdmObjNode);
        EXPECT_THAT(DiagnosisOf([&] { return spIPdmObjNode->GetClassAttr(&usClass, nullptr); }),
                    ElementsAre(Call("spINodeAttributesOnThis->GetKey")));
    }
    QTBTestLateType noPdmNodeType("TestObjNodeWithoutPdmNode", "QTBNode");
    noPdmNodeType.Register<TIEQTBIPdmObjNode, QTBIPdmObjNode, QTBEPdmObjNodeOnPdmObjNode>();
    EXPECT_THAT(QTBIPdmObjNode_var(noPdmNodeType.Create())->GetClassAttr(&usClass, nullptr),
                LacksInterface("spIPdmNodeOnThis"));
}

TEST_F(PdmObjNode, IsTracedUnderGetClassNameWhenItsClassIsRead)
{
    Update(Part("A"));
    const DebugCapture capture(2);
    ClassOf(ObjNode("A"));
    EXPECT_THAT(capture.Lines(), Contains("-> QTBEPdmObjNodeOnPdmObjNode::GetClassName"));
}

TEST(PdmObjNodeDeathTest, WithoutASchemaHasNoClass)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(QTBExitWhenDiagnosed(
                    [] {
                        CATUnicodeString usClass;
                        return QTBIPdmObjNode_var(QTBCreateLoose("QTBPdmObjNode"))->GetClassAttr(&usClass, nullptr);
                    },
                    {Call("QTBSchemaUtil::GetClassAttr")}),
                ::testing::ExitedWithCode(0), "");
}

TEST_F(PdmObjNode, ThatWasReadHasTheSchemaObjectOfItsClass)
{
    Update(Part("A") + Object("SpecialPart", "S", Info({{"QtbRelevantBaseClass", "StandardPart"}})));
    QTBSchemaObject* pSchemaObject = nullptr;
    EXPECT_THAT(ObjNode("A")->GetSchemaObjectPtr(&pSchemaObject), Succeeds());
    EXPECT_EQ(pSchemaObject, ClassOfSchema("Part"));
    EXPECT_THAT(ObjNode("S")->GetSchemaObjectPtr(&pSchemaObject), Succeeds());
    EXPECT_EQ(pSchemaObject, ClassOfSchema("StandardPart"));
    EXPECT_THAT(ObjNode("A")->SetSchemaObjectPtr(ClassOfSchema("Document")), Succeeds());
    EXPECT_THAT(ObjNode("A")->GetSchemaObjectPtr(&pSchemaObject), Succeeds());
    EXPECT_EQ(pSchemaObject, ClassOfSchema("Document"));
}

TEST_F(PdmObjNode, WhatKeepsItsSchemaObjectFromBeingGivenIsNamed)
{
    const QTBIPdmObjNode_var spIPdmObjNode = CreateObject("A", "<o/>");
    QTBSchemaObject* pSchemaObject = ClassOfSchema("Part");
    EXPECT_THAT(spIPdmObjNode->SetSchemaObjectPtr(nullptr), FailsAssertion("pSchemaObject != NULL"));
    EXPECT_THAT(spIPdmObjNode->GetSchemaObjectPtr(nullptr), FailsAssertion("ppSchemaObject != NULL"));
    EXPECT_THAT(DiagnosisOf([&] { return spIPdmObjNode->GetSchemaObjectPtr(&pSchemaObject); }),
                ElementsAre(Assertion("m_pSchemaObject != NULL")));
    EXPECT_EQ(pSchemaObject, ClassOfSchema("Part")) << "untouched";
    EXPECT_THAT(QTBIPdmObjNode_var(m_BareType.Create())->GetSchemaObjectPtr(&pSchemaObject),
                LacksInterface("spINodeAttributesOnThis"));
    const QTBFault fault("GetKey", spIPdmObjNode);
    EXPECT_THAT(DiagnosisOf([&] { return spIPdmObjNode->GetSchemaObjectPtr(&pSchemaObject); }),
                ElementsAre(Call("spINodeAttributesOnThis->GetKey")));
}

TEST_F(PdmObjNode, GivesItsRelationNodesByDirection)
{
    UpdateInOrder(Part("X") + Part("A") + Part("B") + Object("CATPartFile", "F"),
                  {PartPart("XB", "X", "B"), PartPart("AX", "A", "X"), Relation("PartFile", "XF", "X", "F"),
                   PartPart("XA", "X", "A")});
    EXPECT_THAT(Adjacent("X", 0), ElementsAre("AX"));
    EXPECT_THAT(Adjacent("X", 1), ElementsAre("XB", "XA", "XF")) << "name by name";
    EXPECT_THAT(Adjacent("X", 2), ElementsAre("AX", "XB", "XA", "XF"));
    EXPECT_THAT(Adjacent("F", 1), IsEmpty());
}

TEST_F(PdmObjNode, GivesNoRelationNodesForAnyOtherDirection)
{
    Update(Part("X") + Part("A") + PartPart("XA", "X", "A") + PartPart("AX", "A", "X"));
    EXPECT_THAT(Adjacent("X", -1), IsEmpty());
    EXPECT_THAT(Adjacent("X", 3), IsEmpty());
}

TEST_F(PdmObjNode, GivesTheRelationNodesOfTheNewestActionOfEachName)
{
    UpdateInOrder(Part("X") + Part("A") + Object("CATPartFile", "F"),
                  {PartPart("XA", "X", "A"), Relation("PartFile", "XF", "X", "F")});
    Update(Part("B") + PartPart("XB", "X", "B"));
    EXPECT_THAT(Adjacent("X", 1), ElementsAre("XB", "XF"));
}

TEST_F(PdmObjNode, GivesARelationNodeOfASubclassForEachNameItGoesBy)
{
    UpdateInOrder(Part("X") + Part("A") + Object("StandardPart", "S"),
                  {PartPart("XA", "X", "A"), StandardUsage("XS", "X", "S")});
    EXPECT_THAT(Adjacent("X", 1), ElementsAre("XA", "XS", "XS"));
}

TEST_F(PdmObjNode, LeavesRepNodesOutOfItsRelationNodes)
{
    Update(Part("X") + Part("A") + PartPart("XA", "X", "A"));
    const QTBFakeRepTree tree;
    tree.CreateRepNode("X-Rep-1", FindNode("X"), tree.CreateContainer("window", true));
    EXPECT_THAT(Adjacent("X", 2), ElementsAre("XA"));
}

TEST_F(PdmObjNode, WhatKeepsItsRelationNodesFromBeingGivenIsNamed)
{
    Update(Part("X") + Part("A") + PartPart("XA", "X", "A") + PartPart("AX", "A", "X"));
    const QTBIPdmObjNode_var spX = ObjNode("X");
    CATListValCATBaseUnknown_var nodes;
    EXPECT_THAT(spX->RetrieveAdjacentRelationNodes(nullptr, 2), FailsAssertion("pAdjacentRelationNodes != NULL"));
    EXPECT_THAT(QTBIPdmObjNode_var(m_BareType.Create())->RetrieveAdjacentRelationNodes(&nodes, 2),
                LacksInterface("spINodeRelationsOnThis"));
    const auto diagnose = [&](const char* operation, const CATBaseUnknown_var& spComponent, int iDirection) {
        const QTBFault fault(operation, spComponent);
        return DiagnosisOf([&] { return spX->RetrieveAdjacentRelationNodes(&nodes, iDirection); });
    };
    EXPECT_THAT(diagnose("GetLeftRelationNames", spX, 2),
                ElementsAre(Call("spINodeRelationsOnThis->GetLeftRelationNames")));
    EXPECT_THAT(diagnose("GetRightRelationNames", spX, 2),
                ElementsAre(Call("spINodeRelationsOnThis->GetRightRelationNames")));
    EXPECT_THAT(diagnose("IsA", FindNode("AX"), 0), ElementsAre(Call("spIPdmRelNode->IsA"), Call("GetLeftNodes")));
    EXPECT_THAT(diagnose("IsA", FindNode("XA"), 1), ElementsAre(Call("spIPdmRelNode->IsA"), Call("GetRightNodes")));
}

TEST_F(PdmObjNode, LosesItsRelationNodesOnBothSides)
{
    Update(Part("X") + Part("A") + Part("B") + PartPart("AX", "A", "X") + PartPart("XB", "X", "B") +
           PartPart("AB", "A", "B"));
    const QTBFakeCommunication communication;
    EXPECT_THAT(ObjNode("X")->RemoveAllAdjacentPdmRelNodes(FALSE, FALSE), Succeeds());
    EXPECT_THAT(AllKeys(), ElementsAre("A", "AB", "B", "X"));
    EXPECT_THAT(Adjacent("X", 2), IsEmpty());
    EXPECT_THAT(RightKeys("A", "PartPart"), ElementsAre("AB"));
    EXPECT_THAT(LeftKeys("B", "PartPart"), ElementsAre("AB"));
    EXPECT_THAT(QTBFakeCommunication::Calls(), IsEmpty()) << "nothing is deleted in the PDM system";
}

TEST_F(PdmObjNode, LosesRelationNodesThatGoBySeveralNames)
{
    Update(Part("X") + Part("A") + Object("StandardPart", "S") + Object("CATPartFile", "F") + PartPart("XA", "X", "A") +
           StandardUsage("XS", "X", "S") + Relation("PartFile", "XF", "X", "F"));
    EXPECT_THAT(ObjNode("X")->RemoveAllAdjacentPdmRelNodes(FALSE, FALSE), Succeeds());
    EXPECT_THAT(AllKeys(), ElementsAre("A", "F", "S", "X"));
}

TEST_F(PdmObjNode, HandsBothFlagsOnWhenItLosesItsRelationNodes)
{
    for (const unsigned char bKeep : {FALSE, TRUE}) {
        for (const unsigned char bInform : {FALSE, TRUE}) {
            Update(Part("X") + Part("A") + PartPart("XA", "X", "A"));
            const QTBFakeRepTree tree;
            tree.CreateRepNode("XA-Rep-1", FindNode("XA"), tree.CreateContainer("window", true));
            EXPECT_THAT(ObjNode("X")->RemoveAllAdjacentPdmRelNodes(bKeep, bInform), Succeeds());
            EXPECT_THAT(QTBFakeRepTree::Calls(),
                        Contains(bInform != FALSE ? "window.RecursiveRemoveRepTree(XA-Rep-1, inform)"
                                                  : "window.RecursiveRemoveRepTree(XA-Rep-1)"));
            EXPECT_EQ(FindNode("XA") != NULL_var, bKeep != FALSE) << "kept in the store";
            EXPECT_THAT(Adjacent("X", 2), IsEmpty());
        }
    }
}

TEST_F(PdmObjNode, WhatKeepsItFromLosingItsRelationNodesIsNamed)
{
    UpdateInOrder(Part("X") + Part("A") + Part("B"), {PartPart("XA", "X", "A"), PartPart("XB", "X", "B")});
    const QTBIPdmObjNode_var spX = ObjNode("X");
    {
        const QTBFault fault("RemoveNodeFromPdmGraph", NULL_var, 1);
        EXPECT_THAT(DiagnosisOf([&] { return spX->RemoveAllAdjacentPdmRelNodes(FALSE, FALSE); }),
                    ElementsAre(Call("spIPdmNodeCont->RemoveNodeFromPdmGraph")));
    }
    EXPECT_THAT(AllKeys(), ElementsAre("A", "B", "X", "XB")) << "up to the first failure";
    const QTBFault fault("GetLeftRelationNames", spX);
    EXPECT_THAT(
        DiagnosisOf([&] { return spX->RemoveAllAdjacentPdmRelNodes(FALSE, FALSE); }),
        ElementsAre(Call("spINodeRelationsOnThis->GetLeftRelationNames"), Call("RetrieveAdjacentRelationNodes")));
}

TEST_F(PdmObjNode, IsWrittenWithItsNodeType)
{
    Update(Part("A", Attribute("PartNumber", "P-1")) + Object("Document", "D"));
    EXPECT_EQ(Xml("A", FALSE), R"(<o><a name="Class">Part</a><a name="Key">A</a><a name="NodeType">OBJECT</a></o>)");
    EXPECT_EQ(Xml("D", FALSE),
              R"(<o><a name="Class">Document</a><a name="Key">D</a><a name="NodeType">OBJECT</a></o>)");
}

TEST_F(PdmObjNode, IsWrittenWithTheCallersXmlAndTagAttributes)
{
    Update(Part("A"));
    EXPECT_EQ(Xml("A", FALSE, "<leading>&</leading>", " mode=\"new\""),
              R"(<o mode="new"><a name="Class">Part</a><a name="Key">A</a><leading>&</leading>)"
              R"(<a name="NodeType">OBJECT</a></o>)");
}

TEST_F(PdmObjNode, IsWrittenBehindWhatIsThere)
{
    Update(Part("A"));
    CATUnicodeString usXml("<list>");
    EXPECT_THAT(ObjNode("A")->ToXml(&usXml, "", "", FALSE), Succeeds());
    EXPECT_EQ(usXml, R"(<list><o><a name="Class">Part</a><a name="Key">A</a><a name="NodeType">OBJECT</a></o>)");
}

TEST_F(PdmObjNode, ThatIsAPartIsWrittenWithItsRightRelationsOnRequest)
{
    UpdateInOrder(
        Part("A") + Part("B") + Object("CATPartFile", "F"),
        {PartPart("AB", "A", "B"),
         Relation("PartFile", "AF", "A", "F", Attribute("Class1", "Part") + Attribute("Class2", "CATPartFile")),
         PartPart("BA", "B", "A")});
    const auto relation = [](const char* key, const char* className, const char* right, const char* rightClass) {
        return "<r>" + Attribute("Class", className) + Attribute("Key", key) + Attribute("Left", "A") +
               Attribute("Right", right) + Attribute("Class1", "Part") + Attribute("Class2", rightClass) +
               Attribute("NodeType", "RELATION") + "</r>";
    };
    EXPECT_EQ(Xml("A", TRUE, "<leading/>"),
              "<o>" + Attribute("Class", "Part") + Attribute("Key", "A") + "<leading/>" +
                  Attribute("NodeType", "OBJECT") + "<rightRelations>" + relation("AB", "PartPart", "B", "Part") +
                  relation("AF", "PartFile", "F", "CATPartFile") + "</rightRelations></o>");
}

TEST_F(PdmObjNode, ThatIsAPartWithoutRelationsIsWrittenWithAnEmptyListOfThem)
{
    Update(Part("A"));
    EXPECT_EQ(Xml("A", TRUE), R"(<o><a name="Class">Part</a><a name="Key">A</a><a name="NodeType">OBJECT</a>)"
                              R"(<rightRelations></rightRelations></o>)");
}

TEST_F(PdmObjNode, ThatIsNoPartIsWrittenWithoutRelations)
{
    Update(Object("Document", "D") + Object("CATDrawingFile", "F") + Relation("DocumentFile", "DF", "D", "F"));
    EXPECT_EQ(Xml("D", TRUE), R"(<o><a name="Class">Document</a><a name="Key">D</a><a name="NodeType">OBJECT</a></o>)");
}

TEST_F(PdmObjNode, WhatKeepsItFromBeingWrittenIsNamed)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    const QTBIPdmObjNode_var spA = ObjNode("A");
    CATUnicodeString usXml("before");
    EXPECT_THAT(spA->ToXml(nullptr, "", "", FALSE), FailsAssertion("pusPdmObjectXmlString != NULL"));
    const auto diagnose = [&](const char* operation, const CATBaseUnknown_var& spComponent) {
        const QTBFault fault(operation, spComponent);
        return DiagnosisOf([&] { return spA->ToXml(&usXml, "", "", TRUE); });
    };
    EXPECT_THAT(diagnose("GetClassAttr", spA), ElementsAre(Call("QTBPdmGraphUtil::IsPartNode")));
    EXPECT_THAT(
        diagnose("GetRightRelationNames", spA),
        ElementsAre(Call("spINodeRelationsOnThis->GetRightRelationNames"), Call("RetrieveAdjacentRelationNodes")));
    EXPECT_THAT(diagnose("ToXml", FindNode("AB")), ElementsAre(Call("spIPdmRelNodeOnRightRelation->ToXml")));
    EXPECT_EQ(usXml, "before");
}

TEST_F(PdmObjNode, WhoseNeighbourIsNoRelationCannotBeWrittenWithIt)
{
    // B stands among the relations of A, as far as its links are concerned.
    Update(Part("A") + Part("B") + Part("C") + PartPart("AB", "A", "C"));
    EXPECT_THAT(QTBINodeRelations_var(FindNode("A"))->AddRightNode("PartPart", FindNode("B"), 1, TRUE), Succeeds());
    EXPECT_THAT(QTBINodeRelations_var(FindNode("B"))->AddRightNode("PartPart", FindNode("C"), 1, TRUE), Succeeds());
    CATUnicodeString usXml("before");
    EXPECT_THAT(DiagnosisOf([&] { return ObjNode("A")->ToXml(&usXml, "", "", TRUE); }),
                ElementsAre(Handle("spIPdmRelNodeOnRightRelation")));
    EXPECT_EQ(usXml, "before");
}

TEST_F(PdmObjNode, OpensAScopeForEachOperation)
{
    Update(Part("A"));
    const QTBIPdmObjNode_var spA = ObjNode("A");
    const auto firstLineOf = [](auto operation) {
        const DebugCapture capture(2);
        operation();
        return capture.Lines().empty() ? std::string() : capture.Lines().front();
    };
    unsigned char flag = FALSE;
    CATUnicodeString text;
    CATListValCATBaseUnknown_var nodes;
    QTBSchemaObject* pSchemaObject = ClassOfSchema("Part");
    const std::string scope = "-> QTBEPdmObjNodeOnPdmObjNode::";
    EXPECT_EQ(firstLineOf([&] { spA->IsPdmRootNode(&flag); }), scope + "IsPdmRootNode");
    EXPECT_EQ(firstLineOf([&] { spA->ToXml(&text, "", "", FALSE); }), scope + "ToXml");
    EXPECT_EQ(firstLineOf([&] { spA->GetClassAttr(&text, nullptr); }), scope + "GetClassName");
    EXPECT_EQ(firstLineOf([&] { spA->SetSchemaObjectPtr(pSchemaObject); }), scope + "SetSchemaObjectPtr");
    EXPECT_EQ(firstLineOf([&] { spA->GetSchemaObjectPtr(&pSchemaObject); }), scope + "GetSchemaObjectPtr");
    EXPECT_EQ(firstLineOf([&] { spA->RetrieveAdjacentRelationNodes(&nodes, 2); }),
              scope + "RetrieveAdjacentRelationNodes");
    EXPECT_EQ(firstLineOf([&] { spA->RemoveAllAdjacentPdmRelNodes(FALSE, FALSE); }),
              scope + "RemoveAllAdjacentPdmRelNodes");
}

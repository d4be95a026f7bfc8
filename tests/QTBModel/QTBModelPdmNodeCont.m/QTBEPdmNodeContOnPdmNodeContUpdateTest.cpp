#include <gmock/gmock.h>

#include "CATError.h"
#include "QTBFakeRepTree.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBInfoUtil.h"
#include "QTBMatchers.h"
#include "QTBPdmNodeContAccess.h"
#include "QTBSchema.h"
#include "QTBSchemaUtil.h"

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;

namespace {

class PdmGraphUpdate : public QTBPdmNodeContAccess
{
protected:
    static HRESULT UpdateWith(const std::string& items, CATListValCATBaseUnknown_var* pObjects,
                              CATListValCATBaseUnknown_var* pRelations)
    {
        return GetPdmNodeCont()->UpdatePdmGraph(CATUnicodeString(Answer(items)), pObjects, pRelations);
    }

    static int ActionIndexOf(const char* key)
    {
        int iActionIndex = -1;
        EXPECT_THAT(QTBInfoUtil::GetActionIndex(PdmNode(key), &iActionIndex), Succeeds());
        return iActionIndex;
    }

    static std::string ClassOf(const char* key)
    {
        CATUnicodeString usClassName;
        EXPECT_THAT(PdmNode(key)->GetClassName(&usClassName), Succeeds());
        return std::string(usClassName.View());
    }
};

TEST_F(PdmGraphUpdate, AnAnswerBecomesLinkedNodes)
{
    CATListValCATBaseUnknown_var Objects;
    CATListValCATBaseUnknown_var Relations;
    EXPECT_THAT(
        UpdateWith(Part("A", Attribute("Name", "Engine")) + Part("B") + PartPart("AB", "A", "B"), &Objects, &Relations),
        Succeeds());
    EXPECT_THAT(KeysOf(Objects), ElementsAre("A", "B"));
    EXPECT_THAT(KeysOf(Relations), ElementsAre("AB"));
    EXPECT_EQ(AttributeOf(FindNode("A"), "Name"), "Engine");
    EXPECT_THAT(RightKeys("A", "PartPart"), ElementsAre("AB"));
    EXPECT_THAT(LeftKeys("B", "PartPart"), ElementsAre("AB"));
    EXPECT_THAT(LeftKeys("AB", "PartPart"), ElementsAre("A"));
    EXPECT_THAT(RightKeys("AB", "PartPart"), ElementsAre("B"));
}

TEST_F(PdmGraphUpdate, TheListsReceiveTheNodesInDocumentOrder)
{
    CATListValCATBaseUnknown_var Objects;
    CATListValCATBaseUnknown_var Relations;
    Objects.Append(CreateObject("stale", FALSE));
    EXPECT_THAT(UpdateWith(Part("C") + Part("A") + Part("B") + PartPart("2", "C", "B") + PartPart("1", "C", "A"),
                           &Objects, &Relations),
                Succeeds());
    EXPECT_THAT(KeysOf(Objects), ElementsAre("C", "A", "B"));
    EXPECT_THAT(KeysOf(Relations), ElementsAre("2", "1"));
    EXPECT_THAT(UpdateWith(Part("D"), nullptr, nullptr), Succeeds());
}

TEST_F(PdmGraphUpdate, RelationsAreReadWhereverTheyStand)
{
    const std::string answer = "<answer><function name='f'>" + Part("A") + "<group>" + PartPart("AB", "A", "B") +
                               "</group>" + Part("B") + "</function><further>" + PartPart("BA", "B", "A") +
                               "</further></answer>";
    EXPECT_THAT(TryUpdate(answer), Succeeds());
    EXPECT_THAT(AllKeys(), ElementsAre("A", "AB", "B", "BA"));
}

TEST_F(PdmGraphUpdate, ObjectsAreReadDirectlyBelowTheFunctionOnly)
{
    EXPECT_THAT(TryUpdate("<answer><function name='f'><group>" + Part("A") + "</group>" + Part("B") + "</function>" +
                          Part("C") + "</answer>"),
                Succeeds());
    EXPECT_THAT(AllKeys(), ElementsAre("B"));
}

TEST_F(PdmGraphUpdate, TheObjectsOfAnInvokedFunctionAreItsOutputArguments)
{
    EXPECT_THAT(TryUpdate("<answer><function name='dynamicInvoke'>" + Part("ignored") + "<outArgs><arg name='x'>" +
                          Part("A") + "</arg><arg name='y'>" + Part("B") + "</arg></outArgs></function></answer>"),
                Succeeds());
    EXPECT_THAT(AllKeys(), ElementsAre("A", "B"));
}

TEST_F(PdmGraphUpdate, AnEmptyTextStartsAnActionAndRemovesTheDefaultRoot)
{
    EXPECT_THAT(GetPdmNodeCont()->CreateDefaultRootNode(), Succeeds());
    const int iBefore = CurrentActionIndex();
    CATListValCATBaseUnknown_var Objects;
    Objects.Append(CreateObject("mine", FALSE));
    EXPECT_THAT(GetPdmNodeCont()->UpdatePdmGraph("", &Objects, nullptr), Succeeds());
    EXPECT_EQ(CurrentActionIndex(), iBefore + 1);
    EXPECT_THAT(AllKeys(), IsEmpty());
    EXPECT_THAT(KeysOf(Objects), ElementsAre("mine"));
}

TEST_F(PdmGraphUpdate, ANullDocumentStartsAnActionAndRemovesTheDefaultRoot)
{
    EXPECT_THAT(GetPdmNodeCont()->CreateDefaultRootNode(), Succeeds());
    const int iBefore = CurrentActionIndex();
    EXPECT_THAT(GetPdmNodeCont()->UpdatePdmGraph(CATIDOMDocument_var(), nullptr, nullptr), Succeeds());
    EXPECT_EQ(CurrentActionIndex(), iBefore + 1);
    EXPECT_THAT(AllKeys(), IsEmpty());
}

TEST_F(PdmGraphUpdate, EveryNodeReadIsStampedWithTheAction)
{
    Update(Part("A") + Part("B", Info({{"QtbKey", "B"}})) + PartPart("AB", "A", "B"));
    const int iFirst = CurrentActionIndex();
    Update(Part("B"));
    EXPECT_EQ(CurrentActionIndex(), iFirst + 1);
    EXPECT_EQ(ActionIndexOf("A"), iFirst);
    EXPECT_EQ(ActionIndexOf("AB"), iFirst);
    EXPECT_EQ(ActionIndexOf("B"), iFirst + 1);
    unsigned char bIsAffected = TRUE;
    EXPECT_THAT(PdmNode("A")->IsAffectedByCurrentAction(&bIsAffected), Succeeds());
    EXPECT_EQ(bIsAffected, FALSE);
    EXPECT_THAT(PdmNode("B")->IsAffectedByCurrentAction(&bIsAffected), Succeeds());
    EXPECT_EQ(bIsAffected, TRUE);
}

TEST_F(PdmGraphUpdate, ANodeThatCannotBeStampedIsReadAllTheSame)
{
    // The name is taken by an attribute that is no name/value list.
    DebugCapture capture;
    Update(Part("A") + Part("B", Attribute("QtbInfo", "text")));
    EXPECT_THAT(AllKeys(), ElementsAre("A", "B"));
    EXPECT_THAT(capture.Lines(),
                Contains("QTBEPdmNodeContOnPdmNodeCont::UpdatePdmGraph -> i:2: QTBInfoUtil::SetActionIndex !"));
}

TEST_F(PdmGraphUpdate, ReadNodesKnowTheirKeyTheirClassAndTheirContainer)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    EXPECT_TRUE(PdmNode("A")->GetPdmKey() == "A");
    QTBSchema* pSchema = nullptr;
    QTBSchemaObject* pSchemaObject = nullptr;
    QTBSchemaRelation* pSchemaRelation = nullptr;
    ASSERT_THAT(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema), Succeeds());
    EXPECT_THAT(ObjNode("A")->GetSchemaObjectPtr(&pSchemaObject), Succeeds());
    EXPECT_THAT(RelNode("AB")->GetSchemaRelationPtr(&pSchemaRelation), Succeeds());
    QTBSchemaObject* pExpectedObject = nullptr;
    QTBSchemaRelation* pExpectedRelation = nullptr;
    pSchema->GetObjectPtr("Part", &pExpectedObject);
    pSchema->GetRelationPtr("PartPart", &pExpectedRelation);
    EXPECT_EQ(pSchemaObject, pExpectedObject);
    EXPECT_EQ(pSchemaRelation, pExpectedRelation);
    QTBSchemaNode* pSchemaNode = nullptr;
    EXPECT_THAT(PdmNode("AB")->GetSchemaNodePtr(&pSchemaNode), Succeeds());
    EXPECT_EQ(pSchemaNode, pExpectedRelation);
}

TEST_F(PdmGraphUpdate, ANewAnswerReplacesTheNodeOfItsKey)
{
    Update(Part("A", Attribute("Name", "old") + Attribute("Mass", "1")) + Part("B") + PartPart("AB", "A", "B"));
    const CATBaseUnknown_var spOld = FindNode("A");
    DebugCapture capture;
    Update(Part("A", Attribute("Name", "new")));
    const CATBaseUnknown_var spNew = FindNode("A");
    EXPECT_FALSE(spOld == spNew);
    EXPECT_EQ(AttributeOf(spNew, "Name"), "new");
    EXPECT_EQ(AttributeOf(spNew, "Mass"), "not defined");
    EXPECT_THAT(AllKeys(), ElementsAre("A", "AB", "B"));
    EXPECT_THAT(RightKeys("A", "PartPart"), ElementsAre("AB"));
    EXPECT_THAT(LeftKeys("AB", "PartPart"), ElementsAre("A"));
    EXPECT_THAT(capture.Lines(), Contains(HasSubstr("QTBEPdmNodeContOnPdmNodeCont::ReadPdmNodesOfType(o) -> i:1 -> "
                                                    "replacing PDM node [")));
    EXPECT_THAT(capture.Lines(), Contains(HasSubstr("QTBEPdmNodeContOnPdmNodeCont::ReadPdmNodesOfType(o) -> i:1 -> "
                                                    "created PDM node ")));
}

TEST_F(PdmGraphUpdate, AReplacedNodeHandsItsRepNodesOn)
{
    const QTBFakeRepTree tree;
    Update(Part("A"));
    const CATBaseUnknown_var spContainer = tree.CreateContainer("window", true);
    const CATBaseUnknown_var spRepNode = tree.CreateRepNode("A-Rep-1", FindNode("A"), spContainer);
    Update(Part("A"));
    EXPECT_THAT(RightKeys("A", "PdmToRep"), ElementsAre("A-Rep-1"));
    QTBINodeRelations_var(spRepNode)->RemoveAllRels(nullptr);
}

TEST_F(PdmGraphUpdate, AKeyReadTwiceInOneAnswerReplacesTheNodeCreatedAMomentBefore)
{
    CATListValCATBaseUnknown_var Objects;
    EXPECT_THAT(UpdateWith(Part("A", Attribute("Name", "first")) + Part("B") + Part("A", Attribute("Name", "second")),
                           &Objects, nullptr),
                Succeeds());
    EXPECT_THAT(AllKeys(), ElementsAre("A", "B"));
    EXPECT_EQ(AttributeOf(FindNode("A"), "Name"), "second");
    EXPECT_THAT(KeysOf(Objects), ElementsAre("A", "B", "A"));
    EXPECT_TRUE(Objects[3] == FindNode("A"));
    EXPECT_FALSE(Objects[1] == Objects[3]) << "a new node each time";
}

TEST_F(PdmGraphUpdate, ARelationReadTwiceInOneAnswerIsLinkedOnce)
{
    CATListValCATBaseUnknown_var Relations;
    EXPECT_THAT(
        UpdateWith(Part("A") + Part("B") + PartPart("AB", "A", "B") + PartPart("AB", "A", "B"), nullptr, &Relations),
        Succeeds());
    EXPECT_THAT(RightKeys("A", "PartPart"), ElementsAre("AB"));
    EXPECT_THAT(LeftKeys("B", "PartPart"), ElementsAre("AB"));
    EXPECT_THAT(KeysOf(Relations), ElementsAre("AB"));
    EXPECT_TRUE(Relations[1] == FindNode("AB"));
}

TEST_F(PdmGraphUpdate, ElementsOfAnUnknownClassAreIgnored)
{
    DebugCapture capture;
    Update(Part("A") + Object("Spaceship", "S") + Relation("Docking", "D", "A", "S"));
    EXPECT_THAT(AllKeys(), ElementsAre("A"));
    EXPECT_THAT(capture.Lines(), Contains("QTBEPdmNodeContOnPdmNodeCont::ReadPdmNodesOfType(o) i:2 -> class "
                                          "[Spaceship] is not defined in QTBSchema, ignoring node."));
    EXPECT_THAT(capture.Lines(), Contains("QTBEPdmNodeContOnPdmNodeCont::ReadPdmNodesOfType(r) i:1 -> class "
                                          "[Docking] is not defined in QTBSchema, ignoring node."));
}

TEST_F(PdmGraphUpdate, AnUnknownClassWithAKnownBaseClassIsReadAndDescribedByThat)
{
    DebugCapture capture;
    Update(Object("SpecialPart", "S",
                  Attribute("PartNumber", "P-1") + Attribute("Name", "Bracket") +
                      Info({{"QtbRelevantBaseClass", "Part"}})));
    EXPECT_EQ(ClassOf("S"), "Part");
    CATUnicodeString usDescription;
    EXPECT_THAT(PdmNode("S")->GetDescriptionString(&usDescription), Succeeds());
    EXPECT_EQ(usDescription, "P-1, Bracket") << "as parts are described";
    QTBSchemaObject* pSchemaObject = nullptr;
    EXPECT_THAT(ObjNode("S")->GetSchemaObjectPtr(&pSchemaObject), Succeeds());
    ASSERT_NE(pSchemaObject, nullptr);
    EXPECT_TRUE(pSchemaObject->GetName() == "Part");
    EXPECT_THAT(capture.Lines(), Contains("QTBEPdmNodeContOnPdmNodeCont::ReadPdmNodesOfType -> using relevant base "
                                          "class [Part] instead of actual class [SpecialPart]"));
}

TEST_F(PdmGraphUpdate, AnUnknownBaseClassDoesNotHelp)
{
    Update(Object("SpecialPart", "S", Info({{"QtbRelevantBaseClass", "AlsoUnknown"}})) +
           Object("SpecialPart", "T", Info({{"QtbKey", "T"}})));
    EXPECT_THAT(AllKeys(), IsEmpty());
}

TEST_F(PdmGraphUpdate, AnUnknownClassWithAnUnreadableQtbInfoEndsTheUpdate)
{
    EXPECT_THAT(TryUpdate(Answer(Object("SpecialPart", "S", "<a name='QtbInfo' type='nvlist'>text</a>"))),
                FailsCall("QtbInfoAttr.NvValueIsDefined"));
}

TEST_F(PdmGraphUpdate, AnEmptyClassEndsTheUpdate)
{
    EXPECT_THAT(TryUpdate(Answer(Object("", "S"))), FailsAssertion("usQtbNodeClass != \"\""));
}

TEST_F(PdmGraphUpdate, ElementsWithoutOrWithSeveralKeysAreSkipped)
{
    DebugCapture capture;
    Update("<o>" + Attribute("Class", "Part") + "</o>" + Part("B", Attribute("Key", "C")) + Part("A"));
    EXPECT_THAT(AllKeys(), ElementsAre("A"));
    EXPECT_THAT(capture.Lines(), Contains("WARNING: QTBXmlUtil::GetElements returned no attribute"));
    EXPECT_THAT(capture.Lines(), Contains("WARNING: QTBXmlUtil::GetElements returned more than one attribute"));
    EXPECT_THAT(capture.Lines(), Contains("         with name Key"));
}

TEST_F(PdmGraphUpdate, AnEmptyKeyEndsTheUpdate)
{
    EXPECT_THAT(TryUpdate(Answer(Part(""))), FailsAssertion("usQtbNodeKey != \"\""));
}

TEST_F(PdmGraphUpdate, AnElementWithoutClassIsNotCheckedButNeedsAClassAfterwards)
{
    DebugCapture capture;
    EXPECT_THAT(TryUpdate(Answer("<o>" + Attribute("Key", "A") + "</o>")), Not(Succeeds()));
    EXPECT_THAT(capture.Lines(), Contains(HasSubstr("spIPdmObjNode->GetClassAttr : HRESULT FAILED")));
    // Read as far as that, and not taken back.
    EXPECT_THAT(AllKeys(), ElementsAre("A"));
}

TEST_F(PdmGraphUpdate, AnObjectOfARelationClassEndsTheUpdate)
{
    EXPECT_THAT(TryUpdate(Answer(Object("PartPart", "A"))), FailsCall("m_pSchema->GetObjectPtr"));
}

TEST_F(PdmGraphUpdate, ARelationNeedsItsRelationClass)
{
    const auto relation = [](const std::string& relationAttribute) {
        return "<r>" + Attribute("Class", "PartPart") + Attribute("Key", "R") + relationAttribute + "</r>";
    };
    EXPECT_THAT(TryUpdate(Answer(relation(Attribute("Relation", "")))), FailsAssertion("usClassName != \"\""));
    EXPECT_THAT(TryUpdate(Answer(relation(Attribute("Relation", "Part")))), FailsCall("m_pSchema->GetRelationPtr"));
    DebugCapture capture;
    EXPECT_THAT(TryUpdate(Answer(relation(""))), Not(Succeeds()));
    EXPECT_THAT(capture.Lines(),
                Contains(HasSubstr("spINodeAttributesOnQtbNode->GetStringAttributeValue : HRESULT FAILED")));
}

TEST_F(PdmGraphUpdate, ExactlyOneFunctionElementIsExpected)
{
    EXPECT_THAT(TryUpdate("<answer/>"), FailsAssertion("ListOfFunctionNodes.Size() == 1"));
    EXPECT_THAT(TryUpdate("<answer><function name='a'/><function name='b'/></answer>"),
                FailsAssertion("ListOfFunctionNodes.Size() == 1"));
}

TEST_F(PdmGraphUpdate, MalformedTextIsRefusedWithTheReadersError)
{
    const int iBefore = CurrentActionIndex();
    DebugCapture capture;
    const HRESULT hr = TryUpdate("<answer><function>");
    EXPECT_THAT(hr, Not(Succeeds()));
    const CATError* pError = CATError::CATGetLastError(hr, nullptr);
    ASSERT_NE(pError, nullptr);
    EXPECT_TRUE(pError->IsAKindOf("CATXMLError"));
    EXPECT_THAT(capture.Lines(), Contains(HasSubstr("GetDomDocument : HRESULT FAILED")));
    EXPECT_EQ(CurrentActionIndex(), iBefore);
}

TEST_F(PdmGraphUpdate, AFailureKeepsWhatWasReadBeforeAndFillsNoList)
{
    CATListValCATBaseUnknown_var Objects;
    Objects.Append(CreateObject("mine", FALSE));
    EXPECT_THAT(UpdateWith(Part("A") + Part("B", Attribute("Name", "1") + Attribute("Name", "2")) + Part("C"), &Objects,
                           nullptr),
                FailsAssertion("bAttributeIsAlreadyDefined == FALSE"));
    EXPECT_THAT(AllKeys(), ElementsAre("A", "B"));
    EXPECT_THAT(KeysOf(Objects), ElementsAre("mine"));
}

TEST_F(PdmGraphUpdate, ListedItemsAreRemoved)
{
    Update(Part("A") + Part("B") + Part("C") + PartPart("AB", "A", "B") + PartPart("AC", "A", "C"));
    DebugCapture capture;
    Update("<objectToDelete>unknown</objectToDelete><objectToDelete>B</objectToDelete>"
           "<relationToDelete>AC</relationToDelete><relationToDelete>AB</relationToDelete>");
    // AB went with B.
    EXPECT_THAT(AllKeys(), ElementsAre("A", "C"));
    EXPECT_THAT(RightKeys("A", "PartPart"), IsEmpty());
    EXPECT_THAT(capture.Lines(), Contains("QTBEPdmNodeContOnPdmNodeCont::RemoveNodesToBeDeleted -> i:0: PDM node to be "
                                          "deleted with key [unknown] was not found, ignoring it"));
    EXPECT_THAT(capture.Lines(), Contains(HasSubstr("QTBEPdmNodeContOnPdmNodeCont::RemoveNodesToBeDeleted -> i:1: "
                                                    "removing PDM node [")));
    EXPECT_THAT(capture.Lines(), Contains("QTBEPdmNodeContOnPdmNodeCont::RemoveNodesToBeDeleted -> i:1: PDM node to be "
                                          "deleted with key [AB] was not found, ignoring it"));
}

TEST_F(PdmGraphUpdate, OfListedItemsTheUserIsInformed)
{
    const QTBFakeRepTree tree;
    Update(Part("A") + Part("B") + Part("C") + PartPart("AB", "A", "B") + PartPart("BC", "B", "C"));
    const CATBaseUnknown_var spContainer = tree.CreateContainer("window", true);
    tree.CreateRepNode("A-Rep-1", FindNode("A"), spContainer);
    tree.CreateRepNode("AB-Rep-2", FindNode("AB"), spContainer);
    tree.CreateRepNode("BC-Rep-3", FindNode("BC"), spContainer);
    Update("<objectToDelete>A</objectToDelete>");
    EXPECT_THAT(AllKeys(), ElementsAre("B", "BC", "C"));
    EXPECT_THAT(QTBFakeRepTree::Calls(), IsSupersetOf({"window.RecursiveRemoveRepTree(A-Rep-1, inform)",
                                                       "window.RecursiveRemoveRepTree(AB-Rep-2, inform)"}))
        << "and of the relations that go with an object";
    Update("<relationToDelete>BC</relationToDelete>");
    EXPECT_THAT(AllKeys(), ElementsAre("B", "C"));
    EXPECT_THAT(QTBFakeRepTree::Calls(), Contains("window.RecursiveRemoveRepTree(BC-Rep-3, inform)"));
}

TEST_F(PdmGraphUpdate, ADeletionWithoutKeyEndsTheUpdate)
{
    EXPECT_THAT(TryUpdate(Answer("<objectToDelete/>")), FailsAssertion("usKeyOfObjectToDelete != \"\""));
    EXPECT_THAT(TryUpdate(Answer("<relationToDelete></relationToDelete>")),
                FailsAssertion("usKeyOfRelationToDelete != \"\""));
}

TEST_F(PdmGraphUpdate, ADeletionThatFailsDoesNotEndTheUpdate)
{
    const QTBFakeRepTree tree;
    Update(Part("A") + Part("B"));
    const CATBaseUnknown_var spContainer = tree.CreateContainer("window", true);
    const CATBaseUnknown_var spRepNode = tree.CreateRepNode("A-Rep-1", FindNode("A"), spContainer);
    QTBFakeRepTree::FailAt("RecursiveRemoveRepTree");
    DebugCapture capture;
    Update("<objectToDelete>A</objectToDelete><objectToDelete>B</objectToDelete>");
    EXPECT_THAT(AllKeys(), ElementsAre("A"));
    EXPECT_THAT(capture.Lines(), Contains(testing::AllOf(HasSubstr("RemoveNodesToBeDeleted -> i:0: "),
                                                         testing::EndsWith(": RemovePdmNodeFromContainer !"))));
    QTBINodeRelations_var(spRepNode)->RemoveAllRels(nullptr);
}

TEST_F(PdmGraphUpdate, TheReadingStepsCheckTheirArguments)
{
    const CATIDOMDocument_var spIDOMDocument = Parse(Answer(Part("A")));
    CATListValCATBaseUnknown_var Nodes;
    EXPECT_THAT(Extension()->ReadPdmNodes(spIDOMDocument, nullptr, &Nodes), FailsAssertion("pReadObjectNodes"));
    EXPECT_THAT(Extension()->ReadPdmNodes(spIDOMDocument, &Nodes, nullptr), FailsAssertion("pReadRelationNodes"));
    EXPECT_THAT(Extension()->ReadPdmNodesOfType("o", spIDOMDocument, TRUE, nullptr),
                FailsAssertion("pListOfNodes != NULL"));
    EXPECT_THAT(Extension()->ReadPdmNodesOfType("o", CATIDOMDocument_var(), TRUE, &Nodes),
                LacksInterface("spIDOMDocument"));
    EXPECT_THAT(Extension()->RemoveNodesToBeDeleted(CATIDOMDocument_var()), LacksInterface("spIDOMDocument"));
}

TEST_F(PdmGraphUpdate, OnlyObjectsAndRelationsAreReadAsNodes)
{
    const CATIDOMDocument_var spIDOMDocument =
        Parse("<answer><function name='f'><x>" + Attribute("Key", "A") + "</x></function></answer>");
    CATListValCATBaseUnknown_var Nodes;
    DebugCapture capture;
    EXPECT_THAT(Extension()->ReadPdmNodesOfType("x", spIDOMDocument, TRUE, &Nodes),
                FailsAssertion("(usXmlType == \"o\") || (usXmlType == \"r\")"));
    EXPECT_THAT(capture.Lines(), Contains("ERROR: Wrong xml node type: \"x\""));
}

TEST_F(PdmGraphUpdate, ReplacingChecksItsArguments)
{
    QTBIPdmNode_var spOld;
    QTBIPdmNode_var spNew;
    EXPECT_THAT(Extension()->ReplacePdmNode(nullptr, &spNew), FailsAssertion("pspIPdmNodeOnOldNode != NULL"));
    EXPECT_THAT(Extension()->ReplacePdmNode(&spOld, &spNew), FailsAssertion("*pspIPdmNodeOnOldNode"));
    spOld = CreateObject("A");
    EXPECT_THAT(Extension()->ReplacePdmNode(&spOld, nullptr), FailsAssertion("pspIPdmNodeOnNewNode != NULL"));
}

TEST_F(PdmGraphUpdate, AReplacementIsAFreshNodeOfTheSameKind)
{
    QTBIPdmNode_var spOldObject(CreateObject("O"));
    QTBIPdmNode_var spOldRelation(CreateRelation("R"));
    QTBIPdmNode_var spNewObject;
    QTBIPdmNode_var spNewRelation;
    EXPECT_THAT(Extension()->ReplacePdmNode(&spOldObject, &spNewObject), Succeeds());
    EXPECT_THAT(Extension()->ReplacePdmNode(&spOldRelation, &spNewRelation), Succeeds());
    EXPECT_TRUE(QTBIPdmObjNode_var(spNewObject) != NULL_var);
    EXPECT_TRUE(QTBIPdmRelNode_var(spNewRelation) != NULL_var);
    EXPECT_FALSE(spOldObject == spNewObject);
    EXPECT_TRUE(FindNode("O") == spNewObject);
    EXPECT_TRUE(FindNode("R") == spNewRelation);
    EXPECT_THAT(AllKeys(), ElementsAre("O", "R"));
}

TEST_F(PdmGraphUpdate, TheSchemaClassIsSetFromTheSchemaInForce)
{
    Update(Part("A"));
    EXPECT_THAT(Extension()->UpdateNodeSchemaPtr(FindNode("A")), Succeeds());
    EXPECT_THAT(Extension()->UpdateNodeSchemaPtr(CATBaseUnknown_var()), LacksInterface("spIPdmNode"));
}

TEST_F(PdmGraphUpdate, ANewSchemaCountsFromTheNextAnswerOn)
{
    Update(Part("A") + Part("B"));
    QTBSchemaObject* pOld = nullptr;
    EXPECT_THAT(ObjNode("A")->GetSchemaObjectPtr(&pOld), Succeeds());
    ASSERT_THAT(QTBSchemaUtil::LoadSchema(QTB_SOURCE_DIR "/resources/schema/QTBSchema.xml"), Succeeds());
    Update(Part("A"));
    QTBSchemaObject* pNew = nullptr;
    EXPECT_THAT(ObjNode("A")->GetSchemaObjectPtr(&pNew), Succeeds());
    EXPECT_NE(pNew, pOld);
    EXPECT_THAT(ObjNode("B")->GetSchemaObjectPtr(&pNew), Succeeds());
    EXPECT_EQ(pNew, pOld);
}

TEST_F(PdmGraphUpdate, AChainOfAHundredThousandNodesIsReadAndRemoved)
{
    constexpr int PARTS = 50000;
    std::string items = Part("0");
    for (int i = 1; i < PARTS; ++i) {
        const std::string key = std::to_string(i);
        items += Part(key) + PartPart("r" + key, std::to_string(i - 1), key);
    }
    Update(items);
    CATListValCATBaseUnknown_var Roots;
    EXPECT_THAT(GetPdmNodeCont()->GetPdmRootNodes(&Roots), Succeeds());
    EXPECT_THAT(KeysOf(Roots), ElementsAre("0"));
    EXPECT_THAT(GetPdmNodeCont()->Cleanup(), Succeeds());
    EXPECT_THAT(AllKeys(), IsEmpty());
}

} // namespace

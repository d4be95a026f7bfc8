#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>

#include "CATInstantiateComponent.h"
#include "QTBINode.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBMatchers.h"
#include "QTBPdmNodeContAccess.h"
#include "QTBSchemaUtil.h"
#include "QTBStringHash.h"
#include "QTBTestFolder.h"

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

namespace {

class PdmNodeContStore : public QTBPdmNodeContAccess
{
protected:
    // Puts the project's schema in force, but for one piece of its text.
    static void LoadSchemaWithout(const std::string& piece)
    {
        std::ifstream file(QTB_SOURCE_DIR "/resources/schema/QTBSchema.xml");
        std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        const std::size_t position = text.find(piece);
        ASSERT_NE(position, std::string::npos) << piece;
        text.erase(position, piece.size());
        const QTBTestFolder folder;
        EXPECT_THAT(QTBSchemaUtil::LoadSchema(folder.Write("schema.xml", text).c_str()), Succeeds());
    }

    static std::string ReadPart(const char* key, const char* name) { return Part(key, Attribute("Name", name)); }
};

TEST_F(PdmNodeContStore, ACreatedNodeHasItsKeyAndItsContainer)
{
    const CATBaseUnknown_var spNode = CreateObject("K1");
    EXPECT_EQ(KeyOf(spNode), "K1");
    unsigned int hash = 0;
    hash %= CATUnicodeString("K1");
    EXPECT_EQ(*QTBINodeAttributes_var(spNode)->GetHashKey(), hash);
    QTBIPdmNodeCont_var spIPdmNodeCont;
    EXPECT_THAT(QTBIPdmNode_var(spNode)->GetPdmNodeContainer(&spIPdmNodeCont), Succeeds());
    EXPECT_TRUE(spIPdmNodeCont == GetPdmNodeCont());
}

TEST_F(PdmNodeContStore, ObjectAndRelationNodesAreOfTheirLateTypes)
{
    const CATBaseUnknown_var spObject = CreateObject("O");
    EXPECT_TRUE(spObject->IsAKindOf("QTBPdmObjNode"));
    EXPECT_TRUE(QTBIPdmObjNode_var(spObject) != NULL_var);
    EXPECT_TRUE(QTBIPdmRelNode_var(spObject) == NULL_var);
    const CATBaseUnknown_var spRelation = CreateRelation("R");
    EXPECT_TRUE(spRelation->IsAKindOf("QTBPdmRelNode"));
    EXPECT_TRUE(QTBIPdmRelNode_var(spRelation) != NULL_var);
    EXPECT_TRUE(QTBIPdmObjNode_var(spRelation) == NULL_var);
}

TEST_F(PdmNodeContStore, ACreatedNodeHasNoRecordYet)
{
    const CATBaseUnknown_var spNode = CreateObject("K1");
    CATBaseUnknown_var spXmlElement;
    EXPECT_THAT(QTBINodeAttributes_var(spNode)->GetXmlElement(&spXmlElement), Succeeds());
    EXPECT_TRUE(spXmlElement == NULL_var);
    EXPECT_TRUE(QTBIPdmNode_var(spNode)->GetPdmKey().IsEmpty());
}

TEST_F(PdmNodeContStore, ANodeCreatedWithoutAddingItIsNotFoundByItsKey)
{
    const CATBaseUnknown_var spNode = CreateObject("K1", FALSE);
    const CATBaseUnknown_var spRelation = CreateRelation("K2", FALSE);
    EXPECT_EQ(KeyOf(spNode), "K1");
    EXPECT_TRUE(FindNode("K1") == NULL_var);
    EXPECT_TRUE(FindNode("K2") == NULL_var);
    EXPECT_THAT(AllKeys(), IsEmpty());
}

TEST_F(PdmNodeContStore, CreatingDoesNotLookForANodeOfTheSameKey)
{
    const CATBaseUnknown_var spFirst = CreateObject("K1");
    CreateObject("K1");
    EXPECT_THAT(AllKeys(), ElementsAre("K1", "K1"));
    EXPECT_TRUE(FindNode("K1") == spFirst);
}

TEST_F(PdmNodeContStore, CreatingNeedsAPointerForTheNode)
{
    EXPECT_THAT(GetPdmNodeCont()->CreatePdmObjNode("K", nullptr, TRUE),
                FailsAssertion("pspBaseUnknownOnNewNode != NULL"));
    EXPECT_THAT(GetPdmNodeCont()->CreatePdmRelNode("K", nullptr, TRUE),
                FailsAssertion("pspBaseUnknownOnNewNode != NULL"));
}

TEST_F(PdmNodeContStore, LookingUpAnUnknownKeySucceedsAndSaysSo)
{
    CreateObject("K1");
    QTBIPdmNode_var spIPdmNode(CreateObject("K2"));
    unsigned char bNodeFound = TRUE;
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNodeByKey("K3", &spIPdmNode, &bNodeFound), Succeeds());
    EXPECT_EQ(bNodeFound, FALSE);
    EXPECT_TRUE(spIPdmNode == NULL_var);
}

TEST_F(PdmNodeContStore, LookingUpByKeyChecksItsPointers)
{
    QTBIPdmNode_var spIPdmNode;
    unsigned char bNodeFound = FALSE;
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNodeByKey("K", nullptr, &bNodeFound), FailsAssertion("pspIPdmNode != NULL"));
    // Found by the store below; its error arrives unchanged.
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNodeByKey("K", &spIPdmNode, nullptr), FailsAssertion("pbNodeFound != NULL"));
}

TEST_F(PdmNodeContStore, TheDefaultRootNodeIsARootUntilItIsRemoved)
{
    EXPECT_THAT(GetPdmNodeCont()->CreateDefaultRootNode(), Succeeds());
    CATListValCATBaseUnknown_var Roots;
    EXPECT_THAT(GetPdmNodeCont()->GetPdmRootNodes(&Roots), Succeeds());
    EXPECT_THAT(KeysOf(Roots), ElementsAre("DEFAULT_ROOT_NODE"));
    EXPECT_THAT(GetPdmNodeCont()->RemoveDefaultRootNode(), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->GetPdmRootNodes(&Roots), Succeeds());
    EXPECT_THAT(KeysOf(Roots), IsEmpty());
}

TEST_F(PdmNodeContStore, RemovingADefaultRootNodeThatIsNotThereFails)
{
    EXPECT_THAT(GetPdmNodeCont()->RemoveDefaultRootNode(), FailsCall("RemovePdmNodeFromContainer"));
}

TEST_F(PdmNodeContStore, DefaultRootNodesOfSeveralDocumentsGoTogether)
{
    EXPECT_THAT(GetPdmNodeCont()->CreateDefaultRootNode(), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->CreateDefaultRootNode(), Succeeds());
    Update(Part("A"));
    EXPECT_THAT(AllKeys(), ElementsAre("A"));
}

TEST_F(PdmNodeContStore, RootsAreTheObjectsWithoutCurrentLeftRelations)
{
    Update(Part("A") + Part("B") + Part("C") + PartPart("AB", "A", "B") + PartPart("BC", "B", "C"));
    CATListValCATBaseUnknown_var Roots;
    Roots.Append(FindNode("B"));
    EXPECT_THAT(GetPdmNodeCont()->GetPdmRootNodes(&Roots), Succeeds());
    EXPECT_THAT(KeysOf(Roots), ElementsAre("A"));
}

TEST_F(PdmNodeContStore, ListsOfNodesAreEmptiedFirstAndNeedAPointer)
{
    CreateObject("K1");
    CATListValCATBaseUnknown_var Nodes;
    Nodes.Append(CreateObject("K2", FALSE));
    EXPECT_THAT(GetPdmNodeCont()->GetAllPdmNodes(&Nodes), Succeeds());
    EXPECT_THAT(KeysOf(Nodes), ElementsAre("K1"));
    EXPECT_THAT(GetPdmNodeCont()->GetAllPdmNodes(nullptr), FailsAssertion("pListOfNodes != NULL"));
    EXPECT_THAT(GetPdmNodeCont()->GetPdmRootNodes(nullptr), FailsAssertion("pListOfNodes != NULL"));
}

TEST_F(PdmNodeContStore, GetAllPdmNodesTracesUnderTheNameOfTheRepNodeContainersOperation)
{
    DebugCapture capture(2);
    CATListValCATBaseUnknown_var Nodes;
    GetPdmNodeCont()->GetAllPdmNodes(&Nodes);
    EXPECT_THAT(capture.Lines(), Contains(HasSubstr("QTBERepNodeContOnRepNodeCont::GetAllPdmNodes")));
}

TEST_F(PdmNodeContStore, AllNodesComeInBucketOrder)
{
    std::string items;
    for (int i = 0; i < 300; ++i) {
        items += Part("P" + std::to_string(i));
    }
    Update(items);
    CATListValCATBaseUnknown_var Nodes;
    EXPECT_THAT(GetPdmNodeCont()->GetAllPdmNodes(&Nodes), Succeeds());
    ASSERT_EQ(Nodes.Size(), 300);
    unsigned int lastBucket = 0;
    for (const CATBaseUnknown_var& spNode : Nodes) {
        const unsigned int bucket = *QTBINodeAttributes_var(spNode)->GetHashKey() & 0xFFU;
        EXPECT_GE(bucket, lastBucket);
        lastBucket = bucket;
    }
}

TEST_F(PdmNodeContStore, WithoutAttributesEveryNodeOfTheClassesIsFound)
{
    Update(Part("A") + Part("B") + Object("Document", "D") + Object("Person", "P") + PartPart("R", "A", "B"));
    CATListValCATUnicodeString ClassNames;
    ClassNames.Append("Part");
    ClassNames.Append("Document");
    ClassNames.Append("PartPart");
    CATListValCATBaseUnknown_var Nodes;
    Nodes.Append(FindNode("P"));
    const CATListValCATUnicodeString Nothing;
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNodes(&ClassNames, Nothing, Nothing, &Nodes), Succeeds());
    EXPECT_THAT(KeysOf(Nodes), UnorderedElementsAre("A", "B", "D", "R"));
}

TEST_F(PdmNodeContStore, NodesAreFoundByAllTheirAttributeValues)
{
    const auto part = [](const char* key, const char* name, const char* material) {
        return Part(key, Attribute("Name", name) + Attribute("Material", material));
    };
    Update(part("A", "Bolt", "Steel") + part("B", "Bolt", "Brass") + part("C", "bolt", "Steel") +
           Part("D", Attribute("Material", "Steel")));
    CATListValCATUnicodeString ClassNames;
    ClassNames.Append("Part");
    CATListValCATUnicodeString Names;
    Names.Append("Name");
    CATListValCATUnicodeString Values;
    Values.Append("Bolt");
    CATListValCATBaseUnknown_var Nodes;
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNodes(&ClassNames, Names, Values, &Nodes), Succeeds());
    EXPECT_THAT(KeysOf(Nodes), UnorderedElementsAre("A", "B"));
    Names.Append("Material");
    Values.Append("Steel");
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNodes(&ClassNames, Names, Values, &Nodes), Succeeds());
    EXPECT_THAT(KeysOf(Nodes), ElementsAre("A"));
}

TEST_F(PdmNodeContStore, NamesAndValuesMustBeAsMany)
{
    CATListValCATUnicodeString ClassNames;
    CATListValCATUnicodeString Names;
    Names.Append("Name");
    CATListValCATBaseUnknown_var Nodes;
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNodes(&ClassNames, Names, CATListValCATUnicodeString(), &Nodes),
                FailsAssertion("PdmAttributeNames.Size() == PdmAttributeValues.Size()"));
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNodes(&ClassNames, Names, Names, nullptr), FailsAssertion("pPdmNodes != NULL"));
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNodes("Part", "Name", "X", nullptr), FailsAssertion("pPdmNodes != NULL"));
}

TEST_F(PdmNodeContStore, ANodeWithoutRecordFailsTheSearchByClass)
{
    CreateObject("K1");
    CATListValCATBaseUnknown_var Nodes;
    DebugCapture capture;
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNodes("Part", "", "", &Nodes), Not(Succeeds()));
    EXPECT_THAT(capture.Lines(), Contains(HasSubstr("spIPdmNode->GetClassName : HRESULT FAILED")));
    EXPECT_THAT(capture.Lines(), Contains(HasSubstr("GetPdmNodes : HRESULT FAILED")));
}

TEST_F(PdmNodeContStore, TheSearchByOneClassTakesAnEmptyAttributeNameForNoAttribute)
{
    Update(ReadPart("A", "Bolt") + ReadPart("B", "Nut") + Object("Document", "D"));
    CATListValCATBaseUnknown_var Nodes;
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNodes("Part", "", "ignored", &Nodes), Succeeds());
    EXPECT_THAT(KeysOf(Nodes), UnorderedElementsAre("A", "B"));
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNodes("Part", "Name", "Nut", &Nodes), Succeeds());
    EXPECT_THAT(KeysOf(Nodes), ElementsAre("B"));
}

TEST_F(PdmNodeContStore, OneNodeIsFoundByClassAndAttribute)
{
    Update(ReadPart("A", "Bolt") + ReadPart("B", "Nut"));
    QTBIPdmNode_var spIPdmNode;
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNode("Part", "Name", "Nut", &spIPdmNode), Succeeds());
    EXPECT_EQ(KeyOf(spIPdmNode), "B");
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNode("Part", "Name", "Screw", &spIPdmNode), FailsQuietly());
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNode("Part", "Name", "Nut", nullptr), FailsAssertion("pspIPdmNode != NULL"));
}

TEST_F(PdmNodeContStore, OfTwoNodesWithTheSameValueTheOneOfTheNewestActionIsTaken)
{
    // Whichever of the two comes first in bucket order.
    Update(ReadPart("A", "Bolt"));
    Update(ReadPart("B", "Bolt"));
    QTBIPdmNode_var spIPdmNode;
    DebugCapture capture;
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNode("Part", "Name", "Bolt", &spIPdmNode), Succeeds());
    EXPECT_EQ(KeyOf(spIPdmNode), "B");
    Update(ReadPart("A", "Bolt"));
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNode("Part", "Name", "Bolt", &spIPdmNode), Succeeds());
    EXPECT_EQ(KeyOf(spIPdmNode), "A");
    EXPECT_THAT(capture.Lines(), Not(Contains(HasSubstr("WARNING: QTBEPdmNodeContOnPdmNodeCont::GetPdmNode"))));
}

TEST_F(PdmNodeContStore, OfSeveralNodesOfOneActionTheFirstInBucketOrderIsTakenWithAWarning)
{
    Update(ReadPart("Old", "Bolt"));
    Update(ReadPart("A", "Bolt") + ReadPart("B", "Bolt"));
    CATListValCATBaseUnknown_var Nodes;
    EXPECT_THAT(GetPdmNodeCont()->GetAllPdmNodes(&Nodes), Succeeds());
    std::vector<std::string> expected = KeysOf(Nodes);
    std::erase(expected, "Old");
    QTBIPdmNode_var spIPdmNode;
    DebugCapture capture;
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNode("Part", "Name", "Bolt", &spIPdmNode), Succeeds());
    EXPECT_EQ(KeyOf(spIPdmNode), expected.front());
    // The number is the one before filtering.
    EXPECT_THAT(capture.Lines(), Contains("WARNING: QTBEPdmNodeContOnPdmNodeCont::GetPdmNode -> GetPdmNodes returned 3 "
                                          "nodes (after filtering)"));
}

TEST_F(PdmNodeContStore, FilteringNeedsAList)
{
    EXPECT_THAT(Extension()->FilterPdmNodes(nullptr), FailsAssertion("pPdmNodes != NULL"));
}

TEST_F(PdmNodeContStore, FilteringKeepsTheNewestActionInItsOrder)
{
    Update(Part("A"));
    Update(Part("B") + Part("C"));
    CATListValCATBaseUnknown_var Nodes;
    Nodes.Append(FindNode("C"));
    Nodes.Append(FindNode("A"));
    Nodes.Append(FindNode("B"));
    EXPECT_THAT(Extension()->FilterPdmNodes(&Nodes), Succeeds());
    EXPECT_THAT(KeysOf(Nodes), ElementsAre("C", "B"));
}

TEST_F(PdmNodeContStore, APartIsFoundByItsNumber)
{
    Update(Part("A", Attribute("PartNumber", "100")) + Part("B", Attribute("PartNumber", "200")) +
           Object("Document", "D", Attribute("PartNumber", "300")));
    QTBIPdmNode_var spIPdmNode;
    EXPECT_THAT(GetPdmNodeCont()->GetPdmPartByPartNumber("200", &spIPdmNode), Succeeds());
    EXPECT_EQ(KeyOf(spIPdmNode), "B");
    // Not of the part class.
    EXPECT_THAT(GetPdmNodeCont()->GetPdmPartByPartNumber("300", &spIPdmNode), FailsCall("GetPdmNode"));
}

TEST_F(PdmNodeContStore, FindingPartsNeedsTheSessionsSettings)
{
    QTBIPdmNode_var spIPdmNode;
    for (const char* setting : {" partClass=\"Part\"", " partNumberAttr=\"PartNumber\""}) {
        LoadSchemaWithout(setting);
        DebugCapture capture;
        EXPECT_THAT(GetPdmNodeCont()->GetPdmPartByPartNumber("100", &spIPdmNode), Not(Succeeds()));
        EXPECT_THAT(capture.Lines(),
                    Contains(HasSubstr("QTBPdmSessionUtil::GetPdmSessionStringAttrValue : HRESULT FAILED")));
    }
}

TEST_F(PdmNodeContStore, AnUnknownPartNumberIsAnError)
{
    QTBIPdmNode_var spIPdmNode;
    EXPECT_THAT(GetPdmNodeCont()->GetPdmPartByPartNumber("100", &spIPdmNode), FailsCall("GetPdmNode"));
    EXPECT_THAT(GetPdmNodeCont()->GetPdmPartByPartNumber("", &spIPdmNode), FailsAssertion("usPartNumber != \"\""));
    EXPECT_THAT(GetPdmNodeCont()->GetPdmPartByPartNumber("100", nullptr), FailsAssertion("pspIPdmNodeOnPart != NULL"));
}

// Runs in a process of its own, which has loaded no schema.
TEST(PdmNodeContDeathTest, WithoutASchemaTheContainerSaysSo)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto createWithoutSchema = [] {
        const DebugCapture capture;
        void* pCont = nullptr;
        ::CATInstantiateComponent("QTBPdmNodeCont", IID_QTBIPdmNodeCont, &pCont);
        const std::vector<std::string> lines = capture.Lines();
        const bool isTold =
            std::find(lines.begin(), lines.end(), "QTBSchemaUtil::GetCurrentSchemaPtr FAILED") != lines.end();
        std::_Exit(pCont != nullptr && isTold ? 0 : 1);
    };
    EXPECT_EXIT(createWithoutSchema(), ::testing::ExitedWithCode(0), "");
}

} // namespace

#include <ostream>
#include <string>

#include <gmock/gmock.h>

#include "QTBEPdmObjNodeOnPdmObjNode.h"
#include "QTBFaultyPdmSession.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBTestLateType.h"
#include "TIEQTBIPdmNode.h"
#include "TIEQTBIPdmObjNode.h"
#include "TIEQTBIPdmRelNode.h"

using QTBDiagnosis::Assertion;
using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosisOf;
using QTBDiagnosis::Handle;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

// The right and the left variants of an operation, which differ in the side they look at and in their texts.
struct Side
{
    std::string name;
    HRESULT(QTBIPdmObjNode::*getNodes)
    (const CATUnicodeString&, CATListValCATBaseUnknown_var*, CATListValCATBaseUnknown_var*, const NodesToRetrieve&,
     const unsigned char&, CATListValCATUnicodeString*, const unsigned char&);
    HRESULT(QTBEPdmObjNodeOnPdmObjNode::*getNodesWithoutParentClasses)
    (const CATUnicodeString&, CATListValCATBaseUnknown_var*, CATListValCATBaseUnknown_var*, const NodesToRetrieve&,
     CATListValCATUnicodeString*, const unsigned char&);
    HRESULT(QTBINodeRelations::*addNode)
    (const CATUnicodeString&, const CATBaseUnknown_var&, int, const unsigned char&);
    HRESULT (QTBINodeRelations::*removeNode)(const CATUnicodeString&, const CATBaseUnknown_var&);

    std::string Text(const std::string& before, const std::string& behind) const { return before + name + behind; }

    friend std::ostream& operator<<(std::ostream& stream, const Side& side) { return stream << side.name; }
};

const Side RIGHT{"Right", &QTBIPdmObjNode::GetRightNodes,
                 &QTBEPdmObjNodeOnPdmObjNode::GetRightNodesWithoutParentClasses, &QTBINodeRelations::AddRightNode,
                 &QTBINodeRelations::RemoveRightNode};
const Side LEFT{"Left", &QTBIPdmObjNode::GetLeftNodes, &QTBEPdmObjNodeOnPdmObjNode::GetLeftNodesWithoutParentClasses,
                &QTBINodeRelations::AddLeftNode, &QTBINodeRelations::RemoveLeftNode};

// What a test asks for, at first everything of the class PartPart alone.
struct Query
{
    const char* relationName = "PartPart";
    NodesToRetrieve mode = ALL_NODES;
    unsigned char bSubclasses = FALSE;
    std::vector<const char*> objectClasses{};
    unsigned char bNewestOnly = FALSE;
    bool withObjects = true;
};

// An object X in the middle with relations to objects on one side of it, written as if they were on its right.
class PdmObjNodeNeighbours : public QTBFaultyPdmSession, public ::testing::WithParamInterface<Side>
{
protected:
    void TearDown() override
    {
        for (const CATBaseUnknown_var& spNode : m_Loose) {
            QTBINodeRelations_var(spNode)->RemoveAllRels(nullptr);
        }
        m_Loose.clear();
        QTBFaultyPdmSession::TearDown();
    }

    // A relation of X to that object.
    static std::string Usage(const char* key, const char* objectKey, const std::string& further = "",
                             const char* className = "PartPart")
    {
        return GetParam().name == "Right" ? Relation(className, key, "X", objectKey, further)
                                          : Relation(className, key, objectKey, "X", further);
    }
    // One of a class that is derived from PartPart.
    static std::string StandardUsage(const char* key, const char* objectKey)
    {
        return Usage(key, objectKey, "<parentClasses><class>PartPart</class></parentClasses>", "StandardPartUsage");
    }

    static QTBIPdmObjNode_var X() { return ObjNode("X"); }

    // What is found, "relation>object" in order, or the relations alone.
    struct Found
    {
        HRESULT hr = E_FAIL;
        CATListValCATBaseUnknown_var rels;
        CATListValCATBaseUnknown_var objs;
    };

    static Found Ask(const Query& query)
    {
        Found found;
        CATListValCATUnicodeString classes;
        for (const char* name : query.objectClasses) {
            classes.Append(name);
        }
        found.hr = (X().Get()->*GetParam().getNodes)(query.relationName, &found.rels,
                                                     query.withObjects ? &found.objs : nullptr, query.mode,
                                                     query.bSubclasses, &classes, query.bNewestOnly);
        return found;
    }

    static std::vector<std::string> Find(const Query& query = {})
    {
        const Found found = Ask(query);
        EXPECT_THAT(found.hr, Succeeds());
        const std::vector<std::string> relKeys = KeysOf(found.rels);
        if (!query.withObjects) {
            EXPECT_EQ(found.objs.Size(), 0);
            return relKeys;
        }
        const std::vector<std::string> objKeys = KeysOf(found.objs);
        EXPECT_EQ(relKeys.size(), objKeys.size());
        std::vector<std::string> pairs;
        for (std::size_t i = 0; i < relKeys.size() && i < objKeys.size(); ++i) {
            pairs.push_back(relKeys[i] + ">" + objKeys[i]);
        }
        return pairs;
    }

    static QTBEPdmObjNodeOnPdmObjNode* ExtensionOfX()
    {
        return QTBExtensionBehind<QTBFaultyGraphObjNode, TIEQTBIPdmObjNode>(X());
    }

    // Links a node beside X, or beside another node, on the side of the test.
    static HRESULT Link(const char* relationName, const CATBaseUnknown_var& spNode, const CATBaseUnknown_var& spBeside)
    {
        return (QTBINodeRelations_var(spBeside).Get()->*GetParam().addNode)(relationName, spNode, 1, TRUE);
    }
    CATBaseUnknown_var KeepLoose(const CATBaseUnknown_var& spNode)
    {
        m_Loose.push_back(spNode);
        return spNode;
    }

    static std::string This(const std::string& behind)
    {
        return "spINodeRelationsOnThis->" + GetParam().Text("Get", behind);
    }
    static std::string Operation(const std::string& behind) { return GetParam().Text("Get", behind); }

private:
    std::vector<CATBaseUnknown_var> m_Loose;
};

INSTANTIATE_TEST_SUITE_P(Sides, PdmObjNodeNeighbours, ::testing::Values(RIGHT, LEFT),
                         [](const auto& side) { return side.param.name; });

// Relation nodes without the interfaces of a node.
class BarePdmRelNodeType : public QTBTestLateType
{
public:
    BarePdmRelNodeType() : QTBTestLateType("TestBarePdmRelNode")
    {
        Register<TIEQTBIPdmNode, QTBIPdmNode, QTBEPdmNodeOnPdmNode>();
        Register<TIEQTBIPdmRelNode, QTBIPdmRelNode, QTBEPdmRelNodeOnPdmRelNode>();
    }
};

} // namespace

TEST_P(PdmObjNodeNeighbours, AreTheRelationsOfThatNameWithTheObjectsAtTheirOtherEnds)
{
    UpdateInOrder(Part("X") + Part("A") + Part("B") + Object("CATPartFile", "F"),
                  {Usage("r1", "B"), Usage("r2", "A"), Usage("r3", "B"), Usage("f", "F", "", "PartFile")});
    EXPECT_THAT(Find(), ElementsAre("r1>B", "r2>A", "r3>B"));
    EXPECT_THAT(Find({.relationName = "PartFile"}), ElementsAre("f>F"));
    EXPECT_THAT(Find({.relationName = "PartDocument"}), IsEmpty());
    EXPECT_THAT(Find({.relationName = ""}), IsEmpty());
}

TEST_P(PdmObjNodeNeighbours, OnTheOtherSideAreNotFound)
{
    Update(Part("X") + Part("A") + Usage("r", "A"));
    CATListValCATBaseUnknown_var rels;
    CATListValCATBaseUnknown_var objs;
    const Side& other = GetParam().name == "Right" ? LEFT : RIGHT;
    for (const unsigned char bSubclasses : {FALSE, TRUE}) {
        EXPECT_THAT((X().Get()->*other.getNodes)("PartPart", &rels, &objs, ALL_NODES, bSubclasses, nullptr, FALSE),
                    Succeeds());
        EXPECT_EQ(rels.Size(), 0);
        EXPECT_EQ(objs.Size(), 0);
    }
}

TEST_P(PdmObjNodeNeighbours, AreGivenWithoutObjectsWhenNobodyAsksForThem)
{
    UpdateInOrder(Part("X") + Part("A") + Part("B"), {Usage("r1", "A"), StandardUsage("s1", "B")});
    EXPECT_THAT(Find({.withObjects = false}), ElementsAre("r1"));
    EXPECT_THAT(Find({.bSubclasses = TRUE, .withObjects = false}), ElementsAre("r1", "s1"));
}

TEST_P(PdmObjNodeNeighbours, ReplaceWhatTheListsHeld)
{
    Update(Part("X") + Part("A") + Usage("r1", "A"));
    CATListValCATBaseUnknown_var rels;
    CATListValCATBaseUnknown_var objs;
    for (const unsigned char bSubclasses : {FALSE, TRUE}) {
        rels.Append(X());
        objs.Append(X());
        EXPECT_THAT((X().Get()->*GetParam().getNodes)("PartPart", &rels, &objs, ALL_NODES, bSubclasses, nullptr, FALSE),
                    Succeeds());
        EXPECT_THAT(KeysOf(rels), ElementsAre("r1"));
        EXPECT_THAT(KeysOf(objs), ElementsAre("A"));
    }
    EXPECT_THAT((X().Get()->*GetParam().getNodes)("Other", &rels, &objs, ALL_NODES, FALSE, nullptr, FALSE), Succeeds());
    EXPECT_EQ(rels.Size(), 0);
    EXPECT_EQ(objs.Size(), 0);
}

TEST_P(PdmObjNodeNeighbours, OfSubclassesAreFoundOnRequestOnly)
{
    UpdateInOrder(Part("X") + Part("A") + Object("StandardPart", "S") + Object("CATPartFile", "F"),
                  {Usage("f", "F", "", "PartFile"), StandardUsage("s1", "S"), Usage("r1", "A"),
                   StandardUsage("s2", "A"), Usage("r2", "S")});
    EXPECT_THAT(Find(), ElementsAre("r1>A", "r2>S"));
    EXPECT_THAT(Find({.relationName = "StandardPartUsage"}), ElementsAre("s1>S", "s2>A"));
    EXPECT_THAT(Find({.bSubclasses = TRUE}), ElementsAre("s1>S", "s2>A", "r1>A", "r2>S"))
        << "class by class in the order of first use";
    EXPECT_THAT(Find({.relationName = "StandardPartUsage", .bSubclasses = TRUE}), ElementsAre("s1>S", "s2>A"));
    EXPECT_THAT(Find({.relationName = "partpart", .bSubclasses = TRUE}), IsEmpty());
}

TEST_P(PdmObjNodeNeighbours, OfFormerActionsAreLeftOutByTheModesThatAskForNewOnes)
{
    Update(Part("X") + Part("A") + Usage("r1", "A"));
    Update(Part("B") + Usage("r2", "B"));
    EXPECT_THAT(Find(), ElementsAre("r1>A", "r2>B"));
    EXPECT_THAT(Find({.mode = MOST_RECENTLY_UPDATED_NODES}), ElementsAre("r2>B"));
    EXPECT_THAT(Find({.mode = ONLY_CURRENT_NODES}), ElementsAre("r2>B"));
    Update(Part("C"));
    EXPECT_THAT(Find({.mode = MOST_RECENTLY_UPDATED_NODES}), ElementsAre("r2>B"));
    EXPECT_THAT(Find({.mode = ONLY_CURRENT_NODES}), IsEmpty());
    EXPECT_THAT(Find({.mode = MOST_RECENTLY_UPDATED_NODES, .bSubclasses = TRUE}), ElementsAre("r2>B"));
}

TEST_P(PdmObjNodeNeighbours, OfTheWantedClassesStayPaired)
{
    UpdateInOrder(Part("X") + Part("A") + Object("StandardPart", "S") + Part("B") + Object("Document", "D"),
                  {Usage("r1", "S"), Usage("r2", "A"), Usage("r3", "D"), Usage("r4", "B"), Usage("r5", "S"),
                   StandardUsage("s1", "S"), StandardUsage("s2", "A")});
    EXPECT_THAT(Find({.objectClasses = {"Part"}}), ElementsAre("r2>A", "r4>B"));
    EXPECT_THAT(Find({.objectClasses = {"StandardPart"}}), ElementsAre("r1>S", "r5>S"));
    EXPECT_THAT(Find({.objectClasses = {"Document", "StandardPart"}}), ElementsAre("r1>S", "r3>D", "r5>S"));
    EXPECT_THAT(Find({.objectClasses = {"Part", "StandardPart", "Document"}}),
                ElementsAre("r1>S", "r2>A", "r3>D", "r4>B", "r5>S"));
    EXPECT_THAT(Find({.objectClasses = {"part"}}), IsEmpty());
    EXPECT_THAT(Find({.bSubclasses = TRUE, .objectClasses = {"StandardPart"}}), ElementsAre("r1>S", "r5>S", "s1>S"));
}

TEST_P(PdmObjNodeNeighbours, OfAllClassesAreTakenForAnEmptyListAndForNone)
{
    UpdateInOrder(Part("X") + Part("A") + Object("Document", "D"), {Usage("r1", "A"), Usage("r2", "D")});
    EXPECT_THAT(Find({.objectClasses = {}}), ElementsAre("r1>A", "r2>D"));
    CATListValCATBaseUnknown_var rels;
    CATListValCATBaseUnknown_var objs;
    EXPECT_THAT((X().Get()->*GetParam().getNodes)("PartPart", &rels, &objs, ALL_NODES, FALSE, nullptr, FALSE),
                Succeeds());
    EXPECT_THAT(KeysOf(objs), ElementsAre("A", "D"));
}

TEST_P(PdmObjNodeNeighbours, WithoutObjectsAreNotFilteredByClass)
{
    Update(Part("X") + Object("Document", "D") + Usage("r1", "D"));
    EXPECT_THAT(Find({.objectClasses = {"Part"}, .withObjects = false}), ElementsAre("r1"));
}

TEST_P(PdmObjNodeNeighbours, AreReducedToTheNewestVersionsOnRequest)
{
    const auto version = [](const char* key, const char* name) {
        return Part(key, Attribute("PartNumber", "100") + Info({{"QtbVersion", name}}));
    };
    UpdateInOrder(Part("X") + version("A1", "1") + version("A2", "2") + Part("B", Attribute("PartNumber", "200")),
                  {Usage("r1", "A1"), Usage("r2", "B"), Usage("r3", "A2")});
    EXPECT_THAT(Find(), ElementsAre("r1>A1", "r2>B", "r3>A2"));
    EXPECT_THAT(Find({.bNewestOnly = TRUE}), ElementsAre("r2>B", "r3>A2"));
    EXPECT_THAT(Find({.bSubclasses = TRUE, .bNewestOnly = TRUE}), ElementsAre("r2>B", "r3>A2"));
}

TEST_P(PdmObjNodeNeighbours, WhoseVersionsCannotBeToldAreAllGivenWithALineInTheDebugOutput)
{
    Update(Part("X") + Part("A") + Usage("r1", "A"));
    const DebugCapture capture;
    EXPECT_THAT(Find({.bNewestOnly = TRUE, .withObjects = false}), ElementsAre("r1"));
    EXPECT_THAT(capture.Lines(), ElementsAre("QTBEPdmObjNodeOnPdmObjNode::" + Operation("NodesWithoutParentClasses") +
                                             " -> QTBPdmGraphUtil::FilterForNewestQtbVersion !"));
}

TEST_P(PdmObjNodeNeighbours, WithoutObjectMakeTheCallFail)
{
    Update(Part("X") + Part("A") + Usage("r1", "A") + StandardUsage("s1", "A"));
    const CATBaseUnknown_var spRelation = FindNode("r1");
    EXPECT_THAT((QTBINodeRelations_var(spRelation).Get()->*GetParam().removeNode)("PartPart", FindNode("A")),
                Succeeds());
    const std::string line = "QTBEPdmObjNodeOnPdmObjNode::" + Operation("NodesWithoutParentClasses") +
                             " -> usRelationName:[PartPart], ListOfPdmObjs.Size():0";
    for (const unsigned char bSubclasses : {FALSE, TRUE}) {
        const DebugCapture capture;
        EXPECT_THAT(Ask({.bSubclasses = bSubclasses}).hr, FailsCall(Operation("NodesWithoutParentClasses").c_str()));
        ASSERT_EQ(capture.Lines().size(), 2U);
        EXPECT_EQ(capture.Lines().front(), line);
        EXPECT_THAT(QTBDiagnosis::DiagnosesIn(capture), ElementsAre(Call(Operation("NodesWithoutParentClasses"))));
    }
    EXPECT_THAT(Find({.withObjects = false}), ElementsAre("r1")) << "not looked at";
    EXPECT_THAT(Find({.relationName = "StandardPartUsage"}), ElementsAre("s1>A"));
}

TEST_P(PdmObjNodeNeighbours, WithTwoObjectsMakeTheCallFailAndTheWantedClassesAreWritten)
{
    Update(Part("X") + Part("A") + Part("B") + Usage("r1", "A"));
    EXPECT_THAT(Link("PartPart", FindNode("B"), FindNode("r1")), Succeeds());
    const DebugCapture capture;
    EXPECT_TRUE(FAILED(Ask({.objectClasses = {"Part", "Document"}}).hr));
    ASSERT_GE(capture.Lines().size(), 3U);
    EXPECT_EQ(capture.Lines()[0], "QTBEPdmObjNodeOnPdmObjNode::" + Operation("NodesWithoutParentClasses") +
                                      " -> usRelationName:[PartPart], ListOfPdmObjs.Size():2");
    EXPECT_THAT(capture.Lines()[1], HasSubstr("Part"));
    EXPECT_THAT(capture.Lines()[2], HasSubstr("Document"));
}

TEST_P(PdmObjNodeNeighbours, OfOneClassAloneFailQuietlyWithoutTheirObject)
{
    Update(Part("X") + Part("A") + Usage("r1", "A"));
    EXPECT_THAT((QTBINodeRelations_var(FindNode("r1")).Get()->*GetParam().removeNode)("PartPart", FindNode("A")),
                Succeeds());
    CATListValCATBaseUnknown_var rels;
    CATListValCATBaseUnknown_var objs;
    EXPECT_THAT(
        (ExtensionOfX()->*GetParam().getNodesWithoutParentClasses)("PartPart", &rels, &objs, ALL_NODES, nullptr, FALSE),
        FailsQuietly());
}

TEST_P(PdmObjNodeNeighbours, OfOneClassAloneNeedAListAndAnEmptyListOfObjects)
{
    Update(Part("X") + Part("A") + Usage("r1", "A"));
    CATListValCATBaseUnknown_var rels;
    CATListValCATBaseUnknown_var objs;
    const auto ask = [&](CATListValCATBaseUnknown_var* pRels) {
        return (ExtensionOfX()->*GetParam().getNodesWithoutParentClasses)("PartPart", pRels, &objs, ALL_NODES, nullptr,
                                                                          FALSE);
    };
    EXPECT_THAT(ask(nullptr), FailsAssertion("pPdmRels != NULL"));
    EXPECT_THAT(ask(&rels), Succeeds());
    EXPECT_THAT(KeysOf(rels), ElementsAre("r1"));
    EXPECT_THAT(KeysOf(objs), ElementsAre("A"));
    EXPECT_THAT(ask(&rels), FailsAssertion("pPdmObjs->Size() == pPdmRels->Size()"));
}

TEST_P(PdmObjNodeNeighbours, NeedAList)
{
    Update(Part("X"));
    CATListValCATBaseUnknown_var objs;
    for (const unsigned char bSubclasses : {FALSE, TRUE}) {
        EXPECT_THAT(
            (X().Get()->*GetParam().getNodes)("PartPart", nullptr, &objs, ALL_NODES, bSubclasses, nullptr, FALSE),
            FailsAssertion("pPdmRels != NULL"));
    }
}

TEST_P(PdmObjNodeNeighbours, NeedRelations)
{
    QTBTestLateType bareType("TestBarePdmObjNode");
    bareType.Register<TIEQTBIPdmNode, QTBIPdmNode, QTBEPdmNodeOnPdmNode>();
    bareType.Register<TIEQTBIPdmObjNode, QTBIPdmObjNode, QTBEPdmObjNodeOnPdmObjNode>();
    const QTBIPdmObjNode_var spBare(bareType.Create());
    CATListValCATBaseUnknown_var rels;
    CATListValCATBaseUnknown_var objs;
    const auto ask = [&](unsigned char bSubclasses) {
        rels.Append(spBare);
        objs.Append(spBare);
        return DiagnosisOf([&] {
            return (spBare.Get()->*GetParam().getNodes)("PartPart", &rels, &objs, ALL_NODES, bSubclasses, nullptr,
                                                        FALSE);
        });
    };
    EXPECT_THAT(ask(FALSE),
                ElementsAre(Handle("spINodeRelationsOnThis"), Call(Operation("NodesWithoutParentClasses"))));
    EXPECT_EQ(rels.Size() + objs.Size(), 0) << "emptied first";
    EXPECT_THAT(ask(TRUE), ElementsAre(Handle("spINodeRelationsOnThis")));
    EXPECT_EQ(rels.Size() + objs.Size(), 0);
}

TEST_P(PdmObjNodeNeighbours, ThatAreNoRelationsAreRefusedWhereTheirClassIsAskedFor)
{
    Update(Part("X") + Part("A"));
    EXPECT_THAT(Link("Other", FindNode("A"), X()), Succeeds());
    EXPECT_THAT(DiagnosisOf([&] { return Ask({.bSubclasses = TRUE}).hr; }), ElementsAre(Handle("spIPdmRelNode")));
    EXPECT_THAT(Find(), IsEmpty());
}

TEST_P(PdmObjNodeNeighbours, WithoutRelationsOfTheirOwnHaveNoObject)
{
    Update(Part("X"));
    const BarePdmRelNodeType bareType;
    const CATBaseUnknown_var spBare = bareType.Create();
    EXPECT_EQ(Link("PartPart", spBare, X()), E_NOINTERFACE);
    EXPECT_THAT(DiagnosisOf([&] { return Ask({}).hr; }),
                ElementsAre(Handle("spINodeRelationsOnRel"), Call(Operation("NodesWithoutParentClasses"))));
    EXPECT_EQ((QTBINodeRelations_var(X()).Get()->*GetParam().removeNode)("PartPart", spBare), E_NOINTERFACE);
}

TEST_P(PdmObjNodeNeighbours, ThatLeadToNoObjectHaveNoClass)
{
    Update(Part("X") + Part("A") + Usage("r1", "A"));
    EXPECT_THAT((QTBINodeRelations_var(FindNode("r1")).Get()->*GetParam().removeNode)("PartPart", FindNode("A")),
                Succeeds());
    const CATBaseUnknown_var spPlain = KeepLoose(QTBCreateLoose("QTBNode"));
    EXPECT_THAT(Link("PartPart", spPlain, FindNode("r1")), Succeeds());
    EXPECT_EQ(Ask({}).objs.Size(), 1) << "any node";
    EXPECT_THAT(DiagnosisOf([&] { return Ask({.objectClasses = {"Part"}}).hr; }),
                ElementsAre(Handle("spIPdmObjNode"), Call(Operation("NodesWithoutParentClasses"))));
}

TEST_P(PdmObjNodeNeighbours, WhatKeepsThemFromBeingFoundIsNamed)
{
    Update(Part("X") + Part("A") + Usage("r1", "A"));
    const auto diagnose = [&](const char* operation, const CATBaseUnknown_var& spComponent, const Query& query) {
        const QTBFault fault(operation, spComponent);
        return DiagnosisOf([&] { return Ask(query).hr; });
    };
    const std::string outer = Call(Operation("NodesWithoutParentClasses"));
    const std::string getNodeList = GetParam().Text("Get", "NodeList");
    const std::string getFirst = GetParam().Text("GetFirstNodeOfEach", "PdmRelation");
    EXPECT_THAT(diagnose(getNodeList.c_str(), X(), {}), ElementsAre(Call(This("NodeList")), outer));
    EXPECT_THAT(diagnose(getNodeList.c_str(), FindNode("r1"), {}),
                ElementsAre(Call("spINodeRelationsOnRel->" + getNodeList), outer));
    EXPECT_THAT(diagnose("GetClassAttr", FindNode("A"), {.objectClasses = {"Part"}}),
                ElementsAre(Call("spIPdmObjNode->GetClassAttr"), outer));
    EXPECT_THAT(diagnose(getFirst.c_str(), X(), {.bSubclasses = TRUE}),
                ElementsAre(Call("spINodeRelationsOnThis->" + getFirst)));
    EXPECT_THAT(diagnose("IsA", FindNode("r1"), {.bSubclasses = TRUE}), ElementsAre(Call("spIPdmRelNode->IsA")));
    EXPECT_THAT(diagnose("GetRelationAttr", FindNode("r1"), {.bSubclasses = TRUE}),
                ElementsAre(Call("spIPdmRelNode->GetRelationAttr")));
}

TEST_P(PdmObjNodeNeighbours, AreTracedUnderTheNameOfTheSide)
{
    Update(Part("X") + Part("A") + Usage("r1", "A"));
    const QTBIPdmObjNode_var spX = X();
    CATListValCATBaseUnknown_var rels;
    CATListValCATBaseUnknown_var objs;
    const DebugCapture capture(2);
    EXPECT_THAT((spX.Get()->*GetParam().getNodes)("PartPart", &rels, &objs, ALL_NODES, FALSE, nullptr, FALSE),
                Succeeds());
    EXPECT_EQ(capture.Lines().front(), "-> QTBEPdmObjNodeOnPdmObjNode::" + Operation("Nodes"));
    EXPECT_EQ(capture.Lines()[1], " -> QTBEPdmObjNodeOnPdmObjNode::" + Operation("NodesWithoutParentClasses"));
}

TEST_P(PdmObjNodeNeighbours, OfAThousandPlacesAreFilteredAtOnce)
{
    std::vector<std::string> relations;
    for (int i = 0; i < 1000; ++i) {
        const std::string key = "r" + std::to_string(i);
        relations.push_back(Usage(key.c_str(), i % 2 == 0 ? "A" : "D"));
    }
    UpdateInOrder(Part("X") + Part("A") + Object("Document", "D"), relations);
    const std::vector<std::string> pairs = Find({.objectClasses = {"Part"}});
    ASSERT_EQ(pairs.size(), 500U);
    EXPECT_EQ(pairs.front(), "r0>A");
    EXPECT_EQ(pairs.back(), "r998>A");
}

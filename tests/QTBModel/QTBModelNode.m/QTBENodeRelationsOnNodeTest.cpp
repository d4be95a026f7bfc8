#include "QTBENodeRelationsOnNode.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "CATInstantiateComponent.h"
#include "QTBEPdmNodeOnPdmNode.h"
#include "QTBFailingNode.h"
#include "QTBFault.h"
#include "QTBGlobVarsUtil.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBListValues.h"
#include "QTBMatchers.h"
#include "QTBTestSession.h"
#include "QTBXmlElement.h"
#include "TIEQTBIPdmNode.h"

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

// The operations of one side and the texts that they report under; every test below runs for both.
struct RightSide
{
    static constexpr auto SetNodeList = &QTBINodeRelations::SetRightNodeList;
    static constexpr auto AddNode = &QTBINodeRelations::AddRightNode;
    static constexpr auto RemoveNode = &QTBINodeRelations::RemoveRightNode;
    static constexpr auto NodeExists = &QTBINodeRelations::RightNodeExists;
    static constexpr auto GetNodeList = &QTBINodeRelations::GetRightNodeList;
    static constexpr auto GetRelationNames = &QTBINodeRelations::GetRightRelationNames;
    static constexpr auto GetRelationsCount = &QTBINodeRelations::GetRightRelationsCount;
    static constexpr auto GetAllRelations = &QTBINodeRelations::GetAllRightRelations;
    static constexpr auto GetFirstNodes = &QTBINodeRelations::GetFirstNodeOfEachRightPdmRelation;

    static constexpr auto SET_NODE_LIST = "SetRightNodeList";
    static constexpr auto ADD_NODE = "AddRightNode";
    static constexpr auto REMOVE_NODE = "RemoveRightNode";
    static constexpr auto NODE_EXISTS = "RightNodeExists";
    static constexpr auto GET_NODE_LIST = "GetRightNodeList";
    static constexpr auto OTHER_EXISTS = "LeftNodeExists";
    static constexpr auto OTHER_ADD = "AddLeftNode";
    static constexpr auto OTHER_REMOVE = "RemoveLeftNode";
    static constexpr auto ON_OTHER_EXISTS = "spINodeRelationsOnRightNode->LeftNodeExists";
    static constexpr auto ON_OTHER_ADD = "spINodeRelationsOnRightNode->AddLeftNode";
    static constexpr auto ON_OTHER_REMOVE = "spINodeRelationsOnRightNode->RemoveLeftNode";
};

struct LeftSide
{
    static constexpr auto SetNodeList = &QTBINodeRelations::SetLeftNodeList;
    static constexpr auto AddNode = &QTBINodeRelations::AddLeftNode;
    static constexpr auto RemoveNode = &QTBINodeRelations::RemoveLeftNode;
    static constexpr auto NodeExists = &QTBINodeRelations::LeftNodeExists;
    static constexpr auto GetNodeList = &QTBINodeRelations::GetLeftNodeList;
    static constexpr auto GetRelationNames = &QTBINodeRelations::GetLeftRelationNames;
    static constexpr auto GetRelationsCount = &QTBINodeRelations::GetLeftRelationsCount;
    static constexpr auto GetAllRelations = &QTBINodeRelations::GetAllLeftRelations;
    static constexpr auto GetFirstNodes = &QTBINodeRelations::GetFirstNodeOfEachLeftPdmRelation;

    static constexpr auto SET_NODE_LIST = "SetLeftNodeList";
    static constexpr auto ADD_NODE = "AddLeftNode";
    static constexpr auto REMOVE_NODE = "RemoveLeftNode";
    static constexpr auto NODE_EXISTS = "LeftNodeExists";
    static constexpr auto GET_NODE_LIST = "GetLeftNodeList";
    static constexpr auto OTHER_EXISTS = "RightNodeExists";
    static constexpr auto OTHER_ADD = "AddRightNode";
    static constexpr auto OTHER_REMOVE = "RemoveRightNode";
    static constexpr auto ON_OTHER_EXISTS = "spINodeRelationsOnLeftNode->RightNodeExists";
    static constexpr auto ON_OTHER_ADD = "spINodeRelationsOnLeftNode->AddRightNode";
    static constexpr auto ON_OTHER_REMOVE = "spINodeRelationsOnLeftNode->RemoveRightNode";
};

using Nodes = std::vector<CATBaseUnknown_var>;

CATListValCATBaseUnknown_var AsList(const Nodes& nodes)
{
    CATListValCATBaseUnknown_var List;
    for (const CATBaseUnknown_var& spNode : nodes) {
        List.Append(spNode);
    }
    return List;
}

class NodeRelationsTest : public QTBTestSession
{
protected:
    void SetUp() override
    {
        QTBTestSession::SetUp();
        m_spA = CreateNode("A");
        m_spB = CreateNode("B");
        m_spC = CreateNode("C");
        m_spD = CreateNode("D");
    }

    void TearDown() override
    {
        for (const CATBaseUnknown_var& spNode : m_Created) {
            if (const QTBINodeRelations_var spINodeRelations(spNode); spINodeRelations != NULL_var) {
                // Links to components without relations stay, whatever is tried.
                spINodeRelations->RemoveAllRels(NULL);
            }
        }
        m_Created.clear();
        m_spA = m_spB = m_spC = m_spD = NULL_var;
        QTBTestSession::TearDown();
    }

    CATBaseUnknown_var Keep(const CATBaseUnknown_var& spNode)
    {
        m_Created.push_back(spNode);
        return spNode;
    }

    CATBaseUnknown_var Create(const char* lateType, const std::string& key)
    {
        void* pv = nullptr;
        EXPECT_EQ(::CATInstantiateComponent(lateType, CLSID_CATBaseUnknown, &pv), S_OK);
        const auto spNode = CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pv));
        QTBINodeAttributes_var(spNode)->SetKey(CATUnicodeString(key));
        return Keep(spNode);
    }

    CATBaseUnknown_var CreateNode(const std::string& key) { return Create("QTBNode", key); }

    // A PDM object node stamped with that action index.
    CATBaseUnknown_var CreatePdmNode(const std::string& key, int actionIndex)
    {
        const CATBaseUnknown_var spNode = Create("QTBPdmObjNode", key);
        const CATIDOMElement_var spElement =
            ReadXmlElement("<o><a name=\"QtbInfo\" type=\"nvlist\"><nv name=\"QtbActionIndex\">" +
                           std::to_string(actionIndex) + "</nv></a></o>");
        EXPECT_THAT(QTBINodeAttributes_var(spNode)->SetXmlElement(spElement), Succeeds());
        return spNode;
    }

    // A PDM node whose action index cannot be had.
    CATBaseUnknown_var CreateUnreadablePdmNode()
    {
        static QTBTestLateType s_LateType("TestUnreadablePdmNode");
        static const QTBTestLateType& s_Registered =
            s_LateType.Register<TIEQTBINodeRelations, QTBINodeRelations, QTBENodeRelationsOnNode>()
                .Register<TIEQTBIPdmNode, QTBIPdmNode, QTBEPdmNodeOnPdmNode>();
        return Keep(s_Registered.Create());
    }

    CATBaseUnknown_var m_spA;
    CATBaseUnknown_var m_spB;
    CATBaseUnknown_var m_spC;
    CATBaseUnknown_var m_spD;
    Nodes m_Created;
};

// One operation of one side, in the form that tests read well.
template <class Side>
class NodeRelationsOfSideTest : public NodeRelationsTest
{
protected:
    static HRESULT Add(const CATBaseUnknown_var& spNode, const char* name, const CATBaseUnknown_var& spOther,
                       int position = 1, unsigned char bReportDuplicate = TRUE)
    {
        return ((*QTBINodeRelations_var(spNode)).*Side::AddNode)(name, spOther, position, bReportDuplicate);
    }
    static HRESULT Remove(const CATBaseUnknown_var& spNode, const char* name, const CATBaseUnknown_var& spOther)
    {
        return ((*QTBINodeRelations_var(spNode)).*Side::RemoveNode)(name, spOther);
    }
    static HRESULT Set(const CATBaseUnknown_var& spNode, const char* name, const Nodes& nodes)
    {
        return ((*QTBINodeRelations_var(spNode)).*Side::SetNodeList)(name, AsList(nodes));
    }
    static bool Exists(const CATBaseUnknown_var& spNode, const char* name, const CATBaseUnknown_var& spOther)
    {
        unsigned char bExists = 2;
        EXPECT_THAT(((*QTBINodeRelations_var(spNode)).*Side::NodeExists)(name, spOther, &bExists), Succeeds());
        EXPECT_THAT(bExists, testing::AnyOf(TRUE, FALSE));
        return bExists != FALSE;
    }
    static Nodes Get(const CATBaseUnknown_var& spNode, const char* name, NodesToRetrieve mode = ALL_NODES)
    {
        CATListValCATBaseUnknown_var List;
        List.Append(spNode);
        EXPECT_THAT(((*QTBINodeRelations_var(spNode)).*Side::GetNodeList)(name, &List, mode), Succeeds());
        return ListValues(List);
    }
    static HRESULT GetResult(const CATBaseUnknown_var& spNode, const char* name, CATListValCATBaseUnknown_var* pList,
                             NodesToRetrieve mode)
    {
        return ((*QTBINodeRelations_var(spNode)).*Side::GetNodeList)(name, pList, mode);
    }
    // The nodes of the other side.
    static Nodes GetMirror(const CATBaseUnknown_var& spNode, const char* name)
    {
        CATListValCATBaseUnknown_var List;
        QTBINodeRelations& relations = *QTBINodeRelations_var(spNode);
        if constexpr (std::is_same_v<Side, RightSide>) {
            relations.GetLeftNodeList(name, &List, ALL_NODES);
        } else {
            relations.GetRightNodeList(name, &List, ALL_NODES);
        }
        return ListValues(List);
    }
    static std::vector<std::string> Names(const CATBaseUnknown_var& spNode, unsigned char bExcludePdmToRep = FALSE)
    {
        CATListValCATUnicodeString List;
        List.Append("before");
        EXPECT_THAT(((*QTBINodeRelations_var(spNode)).*Side::GetRelationNames)(&List, bExcludePdmToRep), Succeeds());
        return QTBTestSession::TextsOf(List);
    }
    static int Count(const CATBaseUnknown_var& spNode, unsigned char bOnlyPdmRelations = FALSE)
    {
        int count = -1;
        EXPECT_THAT(((*QTBINodeRelations_var(spNode)).*Side::GetRelationsCount)(&count, bOnlyPdmRelations), Succeeds());
        return count;
    }
    static std::string Scope(const char* operation) { return std::string("-> QTBENodeRelationsOnNode::") + operation; }
};

using Sides = testing::Types<RightSide, LeftSide>;
TYPED_TEST_SUITE(NodeRelationsOfSideTest, Sides);

} // namespace

TYPED_TEST(NodeRelationsOfSideTest, AnAddedLinkStandsOnBothSides)
{
    EXPECT_THAT(this->Add(this->m_spA, "N", this->m_spB), Succeeds());
    EXPECT_THAT(this->Get(this->m_spA, "N"), ElementsAre(this->m_spB));
    EXPECT_THAT(this->GetMirror(this->m_spB, "N"), ElementsAre(this->m_spA));
    EXPECT_TRUE(this->Exists(this->m_spA, "N", this->m_spB));
    EXPECT_THAT(this->GetMirror(this->m_spA, "N"), IsEmpty());
    EXPECT_THAT(this->Get(this->m_spB, "N"), IsEmpty());
}

TYPED_TEST(NodeRelationsOfSideTest, AddingAnExistingLinkChangesNothingAndIsReportedOnlyOnRequest)
{
    this->Add(this->m_spA, "N", this->m_spB);
    this->Add(this->m_spA, "N", this->m_spC);
    DebugCapture capture;
    EXPECT_THAT(this->Add(this->m_spA, "N", this->m_spB, 1, FALSE), Succeeds());
    EXPECT_THAT(this->Add(this->m_spA, "N", this->m_spC, 0, FALSE), Succeeds());
    EXPECT_EQ(capture.Text(), "");
    EXPECT_THAT(this->Add(this->m_spA, "N", this->m_spB, 1, TRUE), FailsCall("pRelationList->AddValueAtEnd"));
    EXPECT_THAT(this->Add(this->m_spA, "N", this->m_spC, 0, TRUE), FailsCall("pRelationList->AddValueAtBeginning"));
    EXPECT_THAT(this->Get(this->m_spA, "N"), ElementsAre(this->m_spB, this->m_spC));
    EXPECT_THAT(this->GetMirror(this->m_spB, "N"), ElementsAre(this->m_spA));
}

TYPED_TEST(NodeRelationsOfSideTest, PositionZeroPutsANodeFirstIntoAnExistingListAndOneLast)
{
    this->Add(this->m_spA, "N", this->m_spB, 1);
    EXPECT_THAT(this->Add(this->m_spA, "N", this->m_spC, 0), Succeeds());
    EXPECT_THAT(this->Add(this->m_spA, "N", this->m_spD, 1), Succeeds());
    EXPECT_THAT(this->Get(this->m_spA, "N"), ElementsAre(this->m_spC, this->m_spB, this->m_spD));
}

TYPED_TEST(NodeRelationsOfSideTest, InANewListTheNodeIsTheOnlyOneWhateverThePosition)
{
    EXPECT_THAT(this->Add(this->m_spA, "N0", this->m_spB, 0), Succeeds());
    EXPECT_THAT(this->Add(this->m_spA, "N1", this->m_spB, 1), Succeeds());
    EXPECT_THAT(this->Add(this->m_spA, "N7", this->m_spB, 7), Succeeds());
    EXPECT_THAT(this->Add(this->m_spA, "N-1", this->m_spB, -1), Succeeds());
    for (const char* name : {"N0", "N1", "N7", "N-1"}) {
        EXPECT_THAT(this->Get(this->m_spA, name), ElementsAre(this->m_spB));
        EXPECT_THAT(this->GetMirror(this->m_spB, name), ElementsAre(this->m_spA));
    }
}

TYPED_TEST(NodeRelationsOfSideTest, AnotherPositionInAnExistingListFailsQuietlyAndChangesNeitherSide)
{
    this->Add(this->m_spA, "N", this->m_spB);
    DebugCapture capture;
    EXPECT_EQ(this->Add(this->m_spA, "N", this->m_spC, 2), E_FAIL);
    EXPECT_EQ(this->Add(this->m_spA, "N", this->m_spC, -1), E_FAIL);
    EXPECT_EQ(this->Add(this->m_spA, "N", this->m_spB, 2, FALSE), E_FAIL);
    EXPECT_EQ(capture.Text(), "");
    EXPECT_THAT(this->Get(this->m_spA, "N"), ElementsAre(this->m_spB));
    EXPECT_THAT(this->GetMirror(this->m_spC, "N"), IsEmpty());
}

TYPED_TEST(NodeRelationsOfSideTest, APositionDoesNotMatterInAnEmptiedListThatStillExists)
{
    this->Add(this->m_spA, "N", this->m_spB);
    this->Remove(this->m_spA, "N", this->m_spB);
    EXPECT_EQ(this->Add(this->m_spA, "N", this->m_spB, 2), E_FAIL) << "the list exists, empty or not";
    EXPECT_THAT(this->Add(this->m_spA, "N", this->m_spB, 0), Succeeds());
}

TYPED_TEST(NodeRelationsOfSideTest, TheMirrorAppendsAtTheEndOfTheOtherNodesList)
{
    this->Add(this->m_spA, "N", this->m_spD, 0);
    this->Add(this->m_spB, "N", this->m_spD, 0);
    this->Add(this->m_spC, "N", this->m_spD, 0);
    EXPECT_THAT(this->GetMirror(this->m_spD, "N"), ElementsAre(this->m_spA, this->m_spB, this->m_spC));
}

TYPED_TEST(NodeRelationsOfSideTest, RelationsOfDifferentNamesAreKeptApart)
{
    this->Add(this->m_spA, "N1", this->m_spB);
    this->Add(this->m_spA, "N2", this->m_spC);
    this->Add(this->m_spA, "n1", this->m_spD);
    EXPECT_THAT(this->Get(this->m_spA, "N1"), ElementsAre(this->m_spB));
    EXPECT_THAT(this->Get(this->m_spA, "N2"), ElementsAre(this->m_spC));
    EXPECT_THAT(this->Get(this->m_spA, "n1"), ElementsAre(this->m_spD));
    EXPECT_FALSE(this->Exists(this->m_spA, "N1", this->m_spC));
    EXPECT_THAT(this->Names(this->m_spA), ElementsAre("N1", "N2", "n1"));
}

TYPED_TEST(NodeRelationsOfSideTest, ANodeCanBeLinkedToItself)
{
    EXPECT_THAT(this->Add(this->m_spA, "N", this->m_spA), Succeeds());
    EXPECT_THAT(this->Get(this->m_spA, "N"), ElementsAre(this->m_spA));
    EXPECT_THAT(this->GetMirror(this->m_spA, "N"), ElementsAre(this->m_spA));
    EXPECT_THAT(this->Remove(this->m_spA, "N", this->m_spA), Succeeds());
    EXPECT_THAT(this->Get(this->m_spA, "N"), IsEmpty());
    EXPECT_THAT(this->GetMirror(this->m_spA, "N"), IsEmpty());
}

TYPED_TEST(NodeRelationsOfSideTest, ANodeIsKnownByItsComponentWhicheverInterfaceAHandleHolds)
{
    EXPECT_THAT(this->Add(this->m_spA, "N", CATBaseUnknown_var(QTBINodeAttributes_var(this->m_spB))), Succeeds());
    EXPECT_TRUE(this->Exists(this->m_spA, "N", CATBaseUnknown_var(QTBINodeRelations_var(this->m_spB))));
    EXPECT_THAT(this->Remove(this->m_spA, "N", this->m_spB), Succeeds());
}

TYPED_TEST(NodeRelationsOfSideTest, AComponentWithoutRelationsIsLinkedOnTheOwnSideOnly)
{
    const CATBaseUnknown_var spOther = CreateNodeWithoutRelations();
    DebugCapture capture;
    EXPECT_EQ(this->Add(this->m_spA, "N", spOther), E_NOINTERFACE);
    EXPECT_EQ(capture.Text(), "");
    EXPECT_THAT(this->Get(this->m_spA, "N"), ElementsAre(spOther));
    EXPECT_EQ(this->Remove(this->m_spA, "N", spOther), E_NOINTERFACE);
    EXPECT_EQ(capture.Text(), "");
    EXPECT_THAT(this->Get(this->m_spA, "N"), IsEmpty());
}

TYPED_TEST(NodeRelationsOfSideTest, AnEmptyHandleIsLinkedOnTheOwnSideOnly)
{
    EXPECT_EQ(this->Add(this->m_spA, "N", NULL_var), E_NOINTERFACE);
    EXPECT_TRUE(this->Exists(this->m_spA, "N", NULL_var));
    EXPECT_EQ(this->Remove(this->m_spA, "N", NULL_var), E_NOINTERFACE);
    EXPECT_FALSE(this->Exists(this->m_spA, "N", NULL_var));
}

TYPED_TEST(NodeRelationsOfSideTest, AFailingMirrorFailsTheAddAfterTheOwnSideWasChanged)
{
    const CATBaseUnknown_var spOther = this->Keep(CreateFailingNode());
    {
        const QTBFault fault(TypeParam::OTHER_EXISTS);
        EXPECT_THAT(this->Add(this->m_spA, "N", spOther), FailsCall(TypeParam::ON_OTHER_EXISTS));
        EXPECT_THAT(this->Get(this->m_spA, "N"), ElementsAre(spOther));
    }
    {
        const QTBFault fault(TypeParam::OTHER_ADD);
        EXPECT_THAT(this->Add(this->m_spB, "N", spOther), FailsCall(TypeParam::ON_OTHER_ADD));
        EXPECT_THAT(this->Get(this->m_spB, "N"), ElementsAre(spOther));
    }
    EXPECT_THAT(this->GetMirror(spOther, "N"), IsEmpty());
    // A later add that minds no duplicate sets the mirror right.
    EXPECT_THAT(this->Add(this->m_spA, "N", spOther, 1, FALSE), Succeeds());
    EXPECT_THAT(this->GetMirror(spOther, "N"), ElementsAre(this->m_spA));
}

TYPED_TEST(NodeRelationsOfSideTest, ARemovedLinkIsGoneOnBothSides)
{
    this->Add(this->m_spA, "N", this->m_spB);
    this->Add(this->m_spA, "N", this->m_spC);
    EXPECT_THAT(this->Remove(this->m_spA, "N", this->m_spB), Succeeds());
    EXPECT_THAT(this->Get(this->m_spA, "N"), ElementsAre(this->m_spC));
    EXPECT_THAT(this->GetMirror(this->m_spB, "N"), IsEmpty());
    EXPECT_FALSE(this->Exists(this->m_spA, "N", this->m_spB));
}

TYPED_TEST(NodeRelationsOfSideTest, RemovingFromAnUnknownRelationOrANodeThatIsNotLinkedFails)
{
    EXPECT_THAT(this->Remove(this->m_spA, "N", this->m_spB), FailsAssertion("pRelationList != NULL"));
    this->Add(this->m_spA, "N", this->m_spB);
    EXPECT_THAT(this->Remove(this->m_spA, "N", this->m_spC), FailsCall("pRelationList->RemoveValue"));
    EXPECT_THAT(this->Get(this->m_spA, "N"), ElementsAre(this->m_spB));
}

TYPED_TEST(NodeRelationsOfSideTest, RemovingTheLastNodeOfARelationKeepsItsNameAndACountOfZero)
{
    this->Add(this->m_spA, "N", this->m_spB);
    this->Remove(this->m_spA, "N", this->m_spB);
    EXPECT_THAT(this->Names(this->m_spA), ElementsAre("N"));
    EXPECT_EQ(this->Count(this->m_spA), 0);
    EXPECT_THAT(this->Get(this->m_spA, "N"), IsEmpty());
    EXPECT_THAT(this->Remove(this->m_spA, "N", this->m_spB), FailsCall("pRelationList->RemoveValue"));
}

TYPED_TEST(NodeRelationsOfSideTest, AFailingMirrorFailsTheRemovalAfterTheOwnSideWasChanged)
{
    const CATBaseUnknown_var spOther = this->Keep(CreateFailingNode());
    this->Add(this->m_spA, "N", spOther);
    this->Add(this->m_spB, "N", spOther);
    {
        const QTBFault fault(TypeParam::OTHER_EXISTS);
        EXPECT_THAT(this->Remove(this->m_spA, "N", spOther), FailsCall(TypeParam::ON_OTHER_EXISTS));
    }
    {
        const QTBFault fault(TypeParam::OTHER_REMOVE);
        EXPECT_THAT(this->Remove(this->m_spB, "N", spOther), FailsCall(TypeParam::ON_OTHER_REMOVE));
    }
    EXPECT_THAT(this->Get(this->m_spA, "N"), IsEmpty());
    EXPECT_THAT(this->Get(this->m_spB, "N"), IsEmpty());
    EXPECT_THAT(this->GetMirror(spOther, "N"), ElementsAre(this->m_spA, this->m_spB));
}

TYPED_TEST(NodeRelationsOfSideTest, AskingForALinkOpensNoScopeAndNeverFails)
{
    this->Add(this->m_spA, "N", this->m_spB);
    DebugCapture capture(2);
    EXPECT_FALSE(this->Exists(this->m_spA, "Unknown", this->m_spB));
    EXPECT_TRUE(this->Exists(this->m_spA, "N", this->m_spB));
    EXPECT_FALSE(this->Exists(this->m_spA, "N", this->m_spC));
    EXPECT_EQ(capture.Text(), "");
}

TYPED_TEST(NodeRelationsOfSideTest, ASetListReplacesTheFormerNodesInTheGivenOrder)
{
    this->Add(this->m_spA, "N", this->m_spB);
    EXPECT_THAT(this->Set(this->m_spA, "N", {this->m_spC, this->m_spB}), Succeeds());
    EXPECT_THAT(this->Get(this->m_spA, "N"), ElementsAre(this->m_spC, this->m_spB));
    EXPECT_THAT(this->GetMirror(this->m_spB, "N"), ElementsAre(this->m_spA));
    EXPECT_THAT(this->GetMirror(this->m_spC, "N"), ElementsAre(this->m_spA));
}

TYPED_TEST(NodeRelationsOfSideTest, SettingAListDissolvesTheOtherLinksOnBothSides)
{
    this->Add(this->m_spA, "N", this->m_spB);
    this->Add(this->m_spA, "N", this->m_spC);
    this->Add(this->m_spD, "N", this->m_spB);
    EXPECT_THAT(this->Set(this->m_spA, "N", {this->m_spD}), Succeeds());
    EXPECT_THAT(this->Get(this->m_spA, "N"), ElementsAre(this->m_spD));
    EXPECT_THAT(this->GetMirror(this->m_spB, "N"), ElementsAre(this->m_spD));
    EXPECT_THAT(this->GetMirror(this->m_spC, "N"), IsEmpty());
}

TYPED_TEST(NodeRelationsOfSideTest, ANodeThatStaysInASetListGoesToTheEndOfItsMirrorList)
{
    this->Add(this->m_spA, "N", this->m_spB);
    this->Add(this->m_spD, "N", this->m_spB);
    EXPECT_THAT(this->GetMirror(this->m_spB, "N"), ElementsAre(this->m_spA, this->m_spD));
    this->Set(this->m_spA, "N", {this->m_spB});
    EXPECT_THAT(this->GetMirror(this->m_spB, "N"), ElementsAre(this->m_spD, this->m_spA));
}

TYPED_TEST(NodeRelationsOfSideTest, SettingAnEmptyListKeepsTheNameAndAnEmptyListForAnUnknownNameMakesNone)
{
    this->Add(this->m_spA, "N", this->m_spB);
    EXPECT_THAT(this->Set(this->m_spA, "N", {}), Succeeds());
    EXPECT_THAT(this->Set(this->m_spA, "Unknown", {}), Succeeds());
    EXPECT_THAT(this->Names(this->m_spA), ElementsAre("N"));
    EXPECT_EQ(this->Count(this->m_spA), 0);
}

TYPED_TEST(NodeRelationsOfSideTest, AListCanBeSetToTheListThatItAlreadyIs)
{
    this->Set(this->m_spA, "N", {this->m_spB, this->m_spC, this->m_spD});
    CATListValCATBaseUnknown_var List;
    this->GetResult(this->m_spA, "N", &List, ALL_NODES);
    EXPECT_THAT(((*QTBINodeRelations_var(this->m_spA)).*TypeParam::SetNodeList)("N", List), Succeeds());
    EXPECT_THAT(this->Get(this->m_spA, "N"), ElementsAre(this->m_spB, this->m_spC, this->m_spD));
}

TYPED_TEST(NodeRelationsOfSideTest, ADuplicateInASetListEndsTheCallAndLeavesTheLinksMadeSoFar)
{
    DebugCapture capture;
    EXPECT_THAT(this->Set(this->m_spA, "N", {this->m_spB, this->m_spB, this->m_spC}),
                FailsCall("pRelationList->AddValueAtEnd"));
    EXPECT_THAT(capture.Lines(), ElementsAre(StartsWith("pRelationList->AddValueAtEnd : HRESULT FAILED"),
                                             StartsWith(std::string(TypeParam::ADD_NODE) + " : HRESULT FAILED")));
    EXPECT_THAT(this->Get(this->m_spA, "N"), ElementsAre(this->m_spB));
}

TYPED_TEST(NodeRelationsOfSideTest, AFailingRemovalEndsTheSettingOfAList)
{
    const CATBaseUnknown_var spFailing = this->Keep(CreateFailingNode());
    this->Set(this->m_spA, "N", {this->m_spB, spFailing, this->m_spC});
    const QTBFault fault(TypeParam::OTHER_REMOVE);
    DebugCapture capture;
    EXPECT_THAT(this->Set(this->m_spA, "N", {this->m_spD}), FailsCall(TypeParam::ON_OTHER_REMOVE));
    EXPECT_THAT(capture.Lines(), Contains(StartsWith(std::string(TypeParam::REMOVE_NODE) + " : HRESULT FAILED")));
    EXPECT_THAT(this->Get(this->m_spA, "N"), ElementsAre(this->m_spC)) << "the links changed so far stay changed";
}

TYPED_TEST(NodeRelationsOfSideTest, AComponentWithoutRelationsEndsTheSettingOfAList)
{
    const CATBaseUnknown_var spOther = CreateNodeWithoutRelations();
    EXPECT_THAT(this->Set(this->m_spA, "N", {this->m_spB, spOther, this->m_spC}), FailsCall(TypeParam::ADD_NODE));
    EXPECT_THAT(this->Get(this->m_spA, "N"), ElementsAre(this->m_spB, spOther));
    EXPECT_THAT(this->Set(this->m_spA, "N", {}), FailsCall(TypeParam::REMOVE_NODE));
    EXPECT_THAT(this->Get(this->m_spA, "N"), IsEmpty());
}

TYPED_TEST(NodeRelationsOfSideTest, SettingAListEntersTheOperationsThatItConsistsOf)
{
    this->Add(this->m_spA, "N", this->m_spB);
    DebugCapture capture(2);
    this->Set(this->m_spA, "N", {this->m_spC});
    std::vector<std::string> entered;
    for (const std::string& line : capture.Lines()) {
        if (const std::size_t arrow = line.find("-> "); arrow != std::string::npos) {
            entered.push_back(line.substr(arrow));
        }
    }
    EXPECT_THAT(entered, ElementsAre(this->Scope(TypeParam::SET_NODE_LIST), this->Scope(TypeParam::REMOVE_NODE),
                                     this->Scope(TypeParam::OTHER_REMOVE), this->Scope(TypeParam::ADD_NODE),
                                     this->Scope(TypeParam::OTHER_ADD)));
}

TYPED_TEST(NodeRelationsOfSideTest, ReadingAnUnknownRelationYieldsAnEmptyList)
{
    EXPECT_THAT(this->Get(this->m_spA, "Unknown"), IsEmpty());
    EXPECT_THAT(this->Get(this->m_spA, "Unknown", MOST_RECENTLY_UPDATED_NODES), IsEmpty());
    EXPECT_THAT(this->Names(this->m_spA), IsEmpty()) << "reading makes no relation";
}

TYPED_TEST(NodeRelationsOfSideTest, ReadingNeedsAList)
{
    this->Add(this->m_spA, "N", this->m_spB);
    EXPECT_THAT(this->GetResult(this->m_spA, "N", NULL, ALL_NODES), FailsAssertion("pNodeList != NULL"));
}

TYPED_TEST(NodeRelationsOfSideTest, AnUnknownModeFails)
{
    this->Add(this->m_spA, "N", this->m_spB);
    CATListValCATBaseUnknown_var List;
    DebugCapture capture;
    EXPECT_THAT(this->GetResult(this->m_spA, "N", &List, static_cast<NodesToRetrieve>(3)),
                FailsAssertion("(NodesToRetrieve == ALL_NODES) || (NodesToRetrieve == MOST_RECENTLY_UPDATED_NODES) || "
                               "(NodesToRetrieve == ONLY_CURRENT_NODES)"));
    EXPECT_THAT(capture.Lines(), Contains(StartsWith("FilterNodesIfNecessary : HRESULT FAILED")));
    EXPECT_THAT(this->GetResult(this->m_spA, "Unknown", &List, static_cast<NodesToRetrieve>(3)), Succeeds());
}

TYPED_TEST(NodeRelationsOfSideTest, TheMostRecentlyUpdatedNodesAreThoseOfTheHighestActionIndexInOrder)
{
    const CATBaseUnknown_var spObject = this->CreatePdmNode("O", 9);
    const CATBaseUnknown_var spFirst = this->CreatePdmNode("P1", 5);
    const CATBaseUnknown_var spSecond = this->CreatePdmNode("P2", 4);
    const CATBaseUnknown_var spThird = this->CreatePdmNode("P3", 5);
    this->Set(spObject, "N", {this->m_spA, spSecond, spThird, spFirst});
    EXPECT_THAT(this->Get(spObject, "N", MOST_RECENTLY_UPDATED_NODES), ElementsAre(spThird, spFirst));
    EXPECT_THAT(this->Get(spObject, "N", ALL_NODES), ElementsAre(this->m_spA, spSecond, spThird, spFirst));
}

TYPED_TEST(NodeRelationsOfSideTest, WithAllActionIndexesZeroEveryPdmNodeIsMostRecentlyUpdated)
{
    const CATBaseUnknown_var spObject = this->CreatePdmNode("O", 0);
    const CATBaseUnknown_var spFirst = this->CreatePdmNode("P1", 0);
    const CATBaseUnknown_var spWithoutRecord = this->Create("QTBPdmObjNode", "P2");
    this->Set(spObject, "N", {spFirst, this->m_spA, spWithoutRecord});
    EXPECT_THAT(this->Get(spObject, "N", MOST_RECENTLY_UPDATED_NODES), ElementsAre(spFirst, spWithoutRecord));
}

TYPED_TEST(NodeRelationsOfSideTest, NegativeActionIndexesAreNeverMostRecentlyUpdated)
{
    const CATBaseUnknown_var spObject = this->CreatePdmNode("O", 1);
    const CATBaseUnknown_var spNegative = this->CreatePdmNode("P1", -1);
    const CATBaseUnknown_var spZero = this->CreatePdmNode("P2", 0);
    this->Set(spObject, "N", {spNegative});
    EXPECT_THAT(this->Get(spObject, "N", MOST_RECENTLY_UPDATED_NODES), IsEmpty());
    EXPECT_THAT(this->Get(spObject, "N", ALL_NODES), ElementsAre(spNegative));
    this->Set(spObject, "N", {spNegative, spZero});
    EXPECT_THAT(this->Get(spObject, "N", MOST_RECENTLY_UPDATED_NODES), ElementsAre(spZero));
}

TYPED_TEST(NodeRelationsOfSideTest, PlainNodesAreNeverMostRecentlyUpdated)
{
    const CATBaseUnknown_var spObject = this->CreatePdmNode("O", 1);
    this->Set(spObject, "N", {this->m_spA, this->m_spB});
    EXPECT_THAT(this->Get(spObject, "N", MOST_RECENTLY_UPDATED_NODES), IsEmpty());
}

TYPED_TEST(NodeRelationsOfSideTest, OnlyNodesOfTheCurrentActionAreCurrent)
{
    int currentIndex = 0;
    QTBGlobVarsUtil::IncActionIndex();
    QTBGlobVarsUtil::IncActionIndex();
    ASSERT_THAT(QTBGlobVarsUtil::GetCurrentActionIndex(&currentIndex), Succeeds());
    const CATBaseUnknown_var spObject = this->CreatePdmNode("O", 0);
    const CATBaseUnknown_var spOld = this->CreatePdmNode("P1", currentIndex - 1);
    const CATBaseUnknown_var spNow = this->CreatePdmNode("P2", currentIndex);
    const CATBaseUnknown_var spLater = this->CreatePdmNode("P3", currentIndex + 1);
    this->Set(spObject, "N", {spOld, spNow, this->m_spA, spLater});
    EXPECT_THAT(this->Get(spObject, "N", ONLY_CURRENT_NODES), ElementsAre(spNow));
    QTBGlobVarsUtil::IncActionIndex();
    EXPECT_THAT(this->Get(spObject, "N", ONLY_CURRENT_NODES), ElementsAre(spLater));
}

TYPED_TEST(NodeRelationsOfSideTest, OnARelationNodeEveryModeReturnsAllNodesUnfiltered)
{
    const CATBaseUnknown_var spRelation = this->Create("QTBPdmRelNode", "R");
    const CATBaseUnknown_var spOld = this->CreatePdmNode("P1", 1);
    const CATBaseUnknown_var spNew = this->CreatePdmNode("P2", 2);
    this->Set(spRelation, "N", {spOld, this->m_spA, spNew});
    EXPECT_THAT(this->Get(spRelation, "N", MOST_RECENTLY_UPDATED_NODES), ElementsAre(spOld, this->m_spA, spNew));
    EXPECT_THAT(this->Get(spRelation, "N", ONLY_CURRENT_NODES), ElementsAre(spOld, this->m_spA, spNew));
}

TYPED_TEST(NodeRelationsOfSideTest, TheTwoReservedRelationsAreNeverFiltered)
{
    const CATBaseUnknown_var spOld = this->CreatePdmNode("P1", 1);
    const CATBaseUnknown_var spNew = this->CreatePdmNode("P2", 2);
    for (const char* name : {"PdmToRep", "RepToRep"}) {
        this->Set(this->m_spA, name, {spOld, this->m_spB, spNew});
        for (const NodesToRetrieve mode : {ALL_NODES, MOST_RECENTLY_UPDATED_NODES, ONLY_CURRENT_NODES}) {
            EXPECT_THAT(this->Get(this->m_spA, name, mode), ElementsAre(spOld, this->m_spB, spNew)) << name << mode;
        }
    }
}

TYPED_TEST(NodeRelationsOfSideTest, AFailingFilterFailsTheReading)
{
    const CATBaseUnknown_var spUnreadable = this->CreateUnreadablePdmNode();
    this->Add(this->m_spA, "N", spUnreadable);
    CATListValCATBaseUnknown_var List;
    {
        DebugCapture capture;
        EXPECT_THAT(this->GetResult(this->m_spA, "N", &List, MOST_RECENTLY_UPDATED_NODES),
                    FailsCall("QTBInfoUtil::GetActionIndex"));
        EXPECT_THAT(capture.Lines(), ElementsAre(StartsWith("QTBInfoUtil::GetActionIndex : HRESULT FAILED"),
                                                 StartsWith("FilterForMostRecentlyUpdatedNodes : HRESULT FAILED"),
                                                 StartsWith("FilterNodesIfNecessary : HRESULT FAILED")));
    }
    {
        DebugCapture capture;
        EXPECT_TRUE(FAILED(this->GetResult(this->m_spA, "N", &List, ONLY_CURRENT_NODES)));
        EXPECT_THAT(capture.Lines(), ElementsAre(StartsWith("QTBInfoUtil::GetActionIndex : HRESULT FAILED"),
                                                 StartsWith("spIPdmNode->IsAffectedByCurrentAction : HRESULT FAILED"),
                                                 StartsWith("FilterForCurrentNodes : HRESULT FAILED"),
                                                 StartsWith("FilterNodesIfNecessary : HRESULT FAILED")));
    }
    EXPECT_THAT(this->GetResult(this->m_spA, "N", &List, ALL_NODES), Succeeds());
}

TYPED_TEST(NodeRelationsOfSideTest, NamesStandInOrderOfFirstUseAndOnlyPdmToRepIsLeftOutOnRequest)
{
    this->Add(this->m_spA, "N2", this->m_spB);
    this->Add(this->m_spA, "PdmToRep", this->m_spB);
    this->Add(this->m_spA, "RepToRep", this->m_spB);
    this->Add(this->m_spA, "N1", this->m_spB);
    EXPECT_THAT(this->Names(this->m_spA, FALSE), ElementsAre("N2", "PdmToRep", "RepToRep", "N1"));
    EXPECT_THAT(this->Names(this->m_spA, TRUE), ElementsAre("N2", "RepToRep", "N1"));
    EXPECT_THAT(this->Names(this->m_spC), IsEmpty());
}

TYPED_TEST(NodeRelationsOfSideTest, NamesWithoutAListToFillFailQuietly)
{
    DebugCapture capture;
    EXPECT_EQ(((*QTBINodeRelations_var(this->m_spA)).*TypeParam::GetRelationNames)(NULL, FALSE), E_FAIL);
    EXPECT_EQ(capture.Text(), "");
}

TYPED_TEST(NodeRelationsOfSideTest, TheCountLeavesOutBothReservedRelationsOnRequest)
{
    this->Set(this->m_spA, "N", {this->m_spB, this->m_spC});
    this->Set(this->m_spA, "PdmToRep", {this->m_spB, this->m_spC, this->m_spD});
    this->Set(this->m_spA, "RepToRep", {this->m_spB});
    this->Set(this->m_spA, "M", {this->m_spD});
    EXPECT_EQ(this->Count(this->m_spA, FALSE), 7);
    EXPECT_EQ(this->Count(this->m_spA, TRUE), 3);
    EXPECT_EQ(this->Count(this->m_spC, FALSE), 0);
    EXPECT_THAT(((*QTBINodeRelations_var(this->m_spA)).*TypeParam::GetRelationsCount)(NULL, FALSE),
                FailsAssertion("pCount != NULL"));
}

TYPED_TEST(NodeRelationsOfSideTest, AllRelationsAreAppendedBehindWhatTheListHolds)
{
    this->Set(this->m_spA, "N", {this->m_spC, this->m_spB});
    this->Set(this->m_spA, "PdmToRep", {this->m_spD});
    this->Set(this->m_spA, "M", {this->m_spB});
    QTBINodeRelations& relations = *QTBINodeRelations_var(this->m_spA);
    CATListValCATBaseUnknown_var List;
    List.Append(this->m_spA);
    EXPECT_THAT((relations.*TypeParam::GetAllRelations)(&List, FALSE, ALL_NODES), Succeeds());
    EXPECT_THAT(ListValues(List), ElementsAre(this->m_spA, this->m_spC, this->m_spB, this->m_spD, this->m_spB));
    EXPECT_THAT((relations.*TypeParam::GetAllRelations)(&List, TRUE, ALL_NODES), Succeeds());
    EXPECT_EQ(List.Size(), 8);
    EXPECT_TRUE(List[8] == this->m_spB);
}

TYPED_TEST(NodeRelationsOfSideTest, AllRelationsAreReadInTheGivenMode)
{
    const CATBaseUnknown_var spOld = this->CreatePdmNode("P1", 1);
    const CATBaseUnknown_var spNew = this->CreatePdmNode("P2", 2);
    this->Set(this->m_spA, "N", {spOld, spNew});
    this->Set(this->m_spA, "M", {spOld});
    this->Set(this->m_spA, "RepToRep", {spOld, spNew});
    QTBINodeRelations& relations = *QTBINodeRelations_var(this->m_spA);
    CATListValCATBaseUnknown_var List;
    EXPECT_THAT((relations.*TypeParam::GetAllRelations)(&List, FALSE, MOST_RECENTLY_UPDATED_NODES), Succeeds());
    EXPECT_THAT(ListValues(List), ElementsAre(spNew, spOld, spOld, spNew)) << "the newest of each relation";
}

TYPED_TEST(NodeRelationsOfSideTest, AllRelationsNeedAListAndAKnownMode)
{
    this->Add(this->m_spA, "N", this->m_spB);
    QTBINodeRelations& relations = *QTBINodeRelations_var(this->m_spA);
    EXPECT_THAT((relations.*TypeParam::GetAllRelations)(NULL, FALSE, ALL_NODES), FailsAssertion("pNodeList != NULL"));
    CATListValCATBaseUnknown_var List;
    DebugCapture capture;
    EXPECT_TRUE(FAILED((relations.*TypeParam::GetAllRelations)(&List, FALSE, static_cast<NodesToRetrieve>(3))));
    EXPECT_THAT(capture.Lines(), Contains(StartsWith(std::string(TypeParam::GET_NODE_LIST) + " : HRESULT FAILED")));
}

TYPED_TEST(NodeRelationsOfSideTest, TheFirstNodeOfEachRelationIsTheFirstOfTheMostRecentlyUpdated)
{
    const CATBaseUnknown_var spOld = this->CreatePdmNode("P1", 1);
    const CATBaseUnknown_var spNew = this->CreatePdmNode("P2", 2);
    const CATBaseUnknown_var spAlsoNew = this->CreatePdmNode("P3", 2);
    this->Set(this->m_spA, "N", {spOld, spNew, spAlsoNew});
    this->Set(this->m_spA, "PdmToRep", {this->m_spD});
    this->Set(this->m_spA, "Plain", {this->m_spB});
    this->Set(this->m_spA, "RepToRep", {this->m_spC, this->m_spB});
    this->Set(this->m_spA, "M", {spOld});
    this->Set(this->m_spA, "Emptied", {spOld});
    this->Set(this->m_spA, "Emptied", {});
    QTBINodeRelations& relations = *QTBINodeRelations_var(this->m_spA);
    CATListValCATBaseUnknown_var List;
    List.Append(this->m_spA);
    EXPECT_THAT((relations.*TypeParam::GetFirstNodes)(&List), Succeeds());
    EXPECT_THAT(ListValues(List), ElementsAre(spNew, this->m_spC, spOld));
    EXPECT_THAT((relations.*TypeParam::GetFirstNodes)(NULL), FailsAssertion("pNodeList != NULL"));
}

TYPED_TEST(NodeRelationsOfSideTest, RemovingAllRelationsReportsTheRemovalThatFails)
{
    const CATBaseUnknown_var spFailing = this->Keep(CreateFailingNode());
    this->Set(this->m_spA, "N", {this->m_spB, spFailing, this->m_spC});
    const QTBFault fault(TypeParam::OTHER_REMOVE);
    DebugCapture capture;
    EXPECT_THAT(QTBINodeRelations_var(this->m_spA)->RemoveAllRels(NULL), FailsCall(TypeParam::ON_OTHER_REMOVE));
    EXPECT_THAT(capture.Lines(), Contains(StartsWith(std::string(TypeParam::REMOVE_NODE) + " : HRESULT FAILED")));
    EXPECT_THAT(this->Get(this->m_spA, "N"), ElementsAre(this->m_spC)) << "the links changed so far stay changed";
}

TYPED_TEST(NodeRelationsOfSideTest, FiftyThousandLinksOfOneNodeAreMadeReadAndDissolvedInReasonableTime)
{
    constexpr std::size_t COUNT = 50000;
    Nodes others;
    for (std::size_t i = 0; i < COUNT; ++i) {
        void* pv = nullptr;
        ASSERT_EQ(::CATInstantiateComponent("QTBNode", CLSID_CATBaseUnknown, &pv), S_OK);
        others.push_back(CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pv)));
        ASSERT_THAT(this->Add(this->m_spA, "N", others.back(), i % 2 == 0 ? 1 : 0), Succeeds());
    }
    EXPECT_EQ(this->Count(this->m_spA), static_cast<int>(COUNT));
    Nodes expected;
    for (std::size_t i = COUNT; i-- > 0;) {
        if (i % 2 == 1) {
            expected.push_back(others[i]);
        }
    }
    for (std::size_t i = 0; i < COUNT; i += 2) {
        expected.push_back(others[i]);
    }
    EXPECT_TRUE(this->Get(this->m_spA, "N") == expected);

    std::mt19937 random(17);
    std::shuffle(expected.begin(), expected.end(), random);
    EXPECT_THAT(this->Set(this->m_spA, "N", expected), Succeeds());
    EXPECT_TRUE(this->Get(this->m_spA, "N") == expected);

    for (std::size_t i = 0; i < COUNT / 2; ++i) {
        ASSERT_TRUE(this->Exists(this->m_spA, "N", others[i]));
        ASSERT_THAT(this->Remove(this->m_spA, "N", others[i]), Succeeds());
    }
    EXPECT_EQ(this->Count(this->m_spA), static_cast<int>(COUNT / 2));

    QTBINodeRelations_var spTarget(this->m_spB);
    EXPECT_THAT(QTBINodeRelations_var(this->m_spA)->RemoveAllRels(&spTarget), Succeeds());
    EXPECT_EQ(this->Count(this->m_spA), 0);
    EXPECT_EQ(this->Count(this->m_spB), static_cast<int>(COUNT / 2));
    EXPECT_THAT(QTBINodeRelations_var(this->m_spB)->RemoveAllRels(NULL), Succeeds());
}

namespace {

class NodeRelationsRemoveAllTest : public NodeRelationsTest
{
protected:
    static QTBINodeRelations_var Of(const CATBaseUnknown_var& spNode) { return spNode; }
    static void Link(const CATBaseUnknown_var& spLeft, const char* name, const CATBaseUnknown_var& spRight)
    {
        EXPECT_THAT(Of(spLeft)->AddRightNode(name, spRight, 1, TRUE), Succeeds());
    }
    static Nodes Right(const CATBaseUnknown_var& spNode, const char* name)
    {
        CATListValCATBaseUnknown_var List;
        EXPECT_THAT(Of(spNode)->GetRightNodeList(name, &List, ALL_NODES), Succeeds());
        return ListValues(List);
    }
    static Nodes Left(const CATBaseUnknown_var& spNode, const char* name)
    {
        CATListValCATBaseUnknown_var List;
        EXPECT_THAT(Of(spNode)->GetLeftNodeList(name, &List, ALL_NODES), Succeeds());
        return ListValues(List);
    }
    static int CountAll(const CATBaseUnknown_var& spNode)
    {
        int right = 0;
        int left = 0;
        Of(spNode)->GetRightRelationsCount(&right, FALSE);
        Of(spNode)->GetLeftRelationsCount(&left, FALSE);
        return right + left;
    }
};

} // namespace

TEST_F(NodeRelationsRemoveAllTest, AllLinksOfBothSidesAreDissolved)
{
    Link(m_spA, "N", m_spB);
    Link(m_spA, "PdmToRep", m_spC);
    Link(m_spD, "RepToRep", m_spA);
    Link(m_spD, "N", m_spB);
    EXPECT_THAT(Of(m_spA)->RemoveAllRels(NULL), Succeeds());
    EXPECT_EQ(CountAll(m_spA), 0);
    EXPECT_THAT(Left(m_spB, "N"), ElementsAre(m_spD));
    EXPECT_THAT(Left(m_spC, "PdmToRep"), IsEmpty());
    EXPECT_THAT(Right(m_spD, "RepToRep"), IsEmpty());
    CATListValCATUnicodeString Names;
    Of(m_spA)->GetRightRelationNames(&Names, FALSE);
    EXPECT_THAT(TextsOf(Names), ElementsAre("N", "PdmToRep")) << "the empty relations stay";
}

TEST_F(NodeRelationsRemoveAllTest, ANodeWithoutLinksHasNothingToRemove)
{
    EXPECT_THAT(Of(m_spA)->RemoveAllRels(NULL), Succeeds());
    QTBINodeRelations_var spTarget(m_spB);
    EXPECT_THAT(Of(m_spA)->RemoveAllRels(&spTarget), Succeeds());
    EXPECT_EQ(CountAll(m_spB), 0);
}

TEST_F(NodeRelationsRemoveAllTest, ATransferMovesTheLinksOfBothSidesToTheTarget)
{
    Link(m_spA, "N", m_spC);
    Link(m_spD, "M", m_spA);
    Link(m_spB, "N", m_spD);
    QTBINodeRelations_var spTarget(m_spB);
    EXPECT_THAT(Of(m_spA)->RemoveAllRels(&spTarget), Succeeds());
    EXPECT_EQ(CountAll(m_spA), 0);
    EXPECT_THAT(Right(m_spB, "N"), ElementsAre(m_spD, m_spC)) << "appended at the end of the target's list";
    EXPECT_THAT(Left(m_spB, "M"), ElementsAre(m_spD));
    EXPECT_THAT(Left(m_spC, "N"), ElementsAre(m_spB));
    EXPECT_THAT(Right(m_spD, "M"), ElementsAre(m_spB));
}

TEST_F(NodeRelationsRemoveAllTest, ALinkThatTheTargetHasAlreadyIsNoError)
{
    Link(m_spA, "N", m_spC);
    Link(m_spA, "N", m_spD);
    Link(m_spB, "N", m_spC);
    QTBINodeRelations_var spTarget(m_spB);
    EXPECT_THAT(Of(m_spA)->RemoveAllRels(&spTarget), Succeeds());
    EXPECT_THAT(Right(m_spB, "N"), ElementsAre(m_spC, m_spD));
    EXPECT_THAT(Left(m_spC, "N"), ElementsAre(m_spB));
}

TEST_F(NodeRelationsRemoveAllTest, AFailingTransferIsIgnored)
{
    const CATBaseUnknown_var spFailing = Keep(CreateFailingNode());
    Link(m_spA, "N", m_spC);
    Link(m_spD, "N", m_spA);
    const QTBFault fault("AddRightNode");
    QTBINodeRelations_var spTarget(spFailing);
    EXPECT_THAT(Of(m_spA)->RemoveAllRels(&spTarget), Succeeds());
    EXPECT_EQ(CountAll(m_spA), 0);
    EXPECT_THAT(Right(spFailing, "N"), IsEmpty());
    EXPECT_THAT(Left(spFailing, "N"), ElementsAre(m_spD));
}

TEST_F(NodeRelationsRemoveAllTest, AnEmptyTargetFailsAndLeavesTheLinks)
{
    Link(m_spA, "N", m_spB);
    QTBINodeRelations_var spTarget;
    EXPECT_THAT(Of(m_spA)->RemoveAllRels(&spTarget), LacksInterface("*pspINodeRelationsOnNodeToTransferRelationsTo"));
    EXPECT_THAT(Right(m_spA, "N"), ElementsAre(m_spB));
}

TEST_F(NodeRelationsRemoveAllTest, ATransferBetweenNeighboursLinksTheTargetToItself)
{
    Link(m_spA, "N", m_spB);
    QTBINodeRelations_var spTarget(m_spB);
    EXPECT_THAT(Of(m_spA)->RemoveAllRels(&spTarget), Succeeds());
    EXPECT_EQ(CountAll(m_spA), 0);
    EXPECT_THAT(Right(m_spB, "N"), ElementsAre(m_spB));
    EXPECT_THAT(Left(m_spB, "N"), ElementsAre(m_spB));
}

TEST_F(NodeRelationsRemoveAllTest, ASelfLinkIsDissolvedToo)
{
    Link(m_spA, "N", m_spA);
    EXPECT_THAT(Of(m_spA)->RemoveAllRels(NULL), Succeeds());
    EXPECT_EQ(CountAll(m_spA), 0);
}

TEST_F(NodeRelationsRemoveAllTest, ATransferToTheNodeItselfKeepsItsLinks)
{
    Link(m_spA, "N", m_spB);
    Link(m_spA, "N", m_spC);
    Link(m_spD, "M", m_spA);
    QTBINodeRelations_var spTarget(m_spA);
    EXPECT_THAT(Of(m_spA)->RemoveAllRels(&spTarget), Succeeds());
    EXPECT_THAT(Right(m_spA, "N"), ElementsAre(m_spB, m_spC));
    EXPECT_THAT(Left(m_spA, "M"), ElementsAre(m_spD));
}

namespace {

// What the relations of some nodes are to be: per node and side the relation lists in order of first use.
class RelationsModel
{
public:
    using List = std::pair<std::string, std::vector<std::size_t>>;
    struct Node
    {
        std::vector<List> sides[2];
    };

    explicit RelationsModel(std::size_t count) : m_Nodes(count) {}

    List* Find(std::size_t node, std::size_t side, const std::string& name)
    {
        for (List& list : m_Nodes[node].sides[side]) {
            if (list.first == name) {
                return &list;
            }
        }
        return nullptr;
    }

    bool Add(std::size_t node, std::size_t side, const std::string& name, std::size_t other, int position, bool report)
    {
        if (List* pList = Find(node, side, name); pList != nullptr) {
            if (position != 0 && position != 1) {
                return false;
            }
            auto& nodes = pList->second;
            if (std::find(nodes.begin(), nodes.end(), other) == nodes.end()) {
                nodes.insert(position == 0 ? nodes.begin() : nodes.end(), other);
            } else if (report) {
                return false;
            }
        } else {
            m_Nodes[node].sides[side].push_back({name, {other}});
        }
        const List* pMirror = Find(other, 1 - side, name);
        if (pMirror == nullptr ||
            std::find(pMirror->second.begin(), pMirror->second.end(), node) == pMirror->second.end()) {
            return Add(other, 1 - side, name, node, 1, true);
        }
        return true;
    }

    bool Remove(std::size_t node, std::size_t side, const std::string& name, std::size_t other)
    {
        List* pList = Find(node, side, name);
        if (pList == nullptr || std::erase(pList->second, other) == 0) {
            return false;
        }
        if (List* pMirror = Find(other, 1 - side, name); pMirror != nullptr) {
            std::erase(pMirror->second, node);
        }
        return true;
    }

    bool Set(std::size_t node, std::size_t side, const std::string& name, const std::vector<std::size_t>& nodes)
    {
        if (const List* pList = Find(node, side, name); pList != nullptr) {
            for (const std::size_t former : std::vector<std::size_t>(pList->second)) {
                Remove(node, side, name, former);
            }
        }
        for (const std::size_t other : nodes) {
            if (!Add(node, side, name, other, 1, true)) {
                return false;
            }
        }
        return true;
    }

    void RemoveAll(std::size_t node, const std::size_t* pTarget)
    {
        for (std::size_t side = 0; side < 2; ++side) {
            const std::vector<List> names = m_Nodes[node].sides[side];
            for (const List& list : names) {
                for (const std::size_t other : std::vector<std::size_t>(Find(node, side, list.first)->second)) {
                    Remove(node, side, list.first, other);
                    if (pTarget != nullptr) {
                        Add(*pTarget, side, list.first, other, 1, false);
                    }
                }
            }
        }
    }

    const Node& operator[](std::size_t node) const { return m_Nodes[node]; }

private:
    std::vector<Node> m_Nodes;
};

class NodeRelationsRandomTest : public NodeRelationsTest, public testing::WithParamInterface<unsigned int>
{
};

} // namespace

TEST_P(NodeRelationsRandomTest, AnySequenceOfOperationsKeepsBothSidesInStepAndTheOrders)
{
    constexpr std::size_t COUNT = 7;
    const std::string names[] = {"PartPart", "PartDoc", "PdmToRep", "RepToRep"};
    Nodes nodes;
    std::vector<QTBINodeRelations_var> relations;
    for (std::size_t i = 0; i < COUNT; ++i) {
        nodes.push_back(CreateNode("R" + std::to_string(i)));
        relations.emplace_back(nodes.back());
    }
    RelationsModel model(COUNT);
    std::mt19937 random(GetParam());
    for (int step = 0; step < 1500; ++step) {
        const std::size_t node = random() % COUNT;
        const std::size_t other = random() % COUNT;
        const std::size_t side = random() % 2;
        const std::string& name = names[random() % 4];
        const CATUnicodeString usName(name);
        QTBINodeRelations& target = *relations[node];
        bool isExpectedToSucceed = true;
        HRESULT hr = S_OK;
        switch (random() % 8) {
        case 0:
        case 1:
        case 2: {
            const int position = static_cast<int>(random() % 5 == 0 ? 2 : random() % 2);
            const unsigned char bReport = random() % 2 == 0 ? TRUE : FALSE;
            hr = side == 0 ? target.AddRightNode(usName, nodes[other], position, bReport)
                           : target.AddLeftNode(usName, nodes[other], position, bReport);
            isExpectedToSucceed = model.Add(node, side, name, other, position, bReport != FALSE);
            break;
        }
        case 3:
        case 4:
        case 5:
            hr = side == 0 ? target.RemoveRightNode(usName, nodes[other]) : target.RemoveLeftNode(usName, nodes[other]);
            isExpectedToSucceed = model.Remove(node, side, name, other);
            break;
        case 6: {
            std::vector<std::size_t> list;
            Nodes listed;
            for (std::size_t i = random() % 5; i > 0; --i) {
                list.push_back(random() % COUNT);
                listed.push_back(nodes[list.back()]);
            }
            hr = side == 0 ? target.SetRightNodeList(usName, AsList(listed))
                           : target.SetLeftNodeList(usName, AsList(listed));
            isExpectedToSucceed = model.Set(node, side, name, list);
            break;
        }
        default:
            if (random() % 4 == 0) {
                const bool transfers = random() % 2 == 0;
                QTBINodeRelations_var spTarget = relations[other];
                hr = target.RemoveAllRels(transfers ? &spTarget : NULL);
                model.RemoveAll(node, transfers ? &other : nullptr);
            }
        }
        ASSERT_EQ(SUCCEEDED(hr), isExpectedToSucceed) << "step " << step;

        for (std::size_t i = 0; i < COUNT; ++i) {
            for (std::size_t s = 0; s < 2; ++s) {
                CATListValCATUnicodeString Names;
                s == 0 ? relations[i]->GetRightRelationNames(&Names, FALSE)
                       : relations[i]->GetLeftRelationNames(&Names, FALSE);
                const auto& lists = model[i].sides[s];
                ASSERT_EQ(Names.Size(), static_cast<int>(lists.size())) << "step " << step;
                for (std::size_t k = 0; k < lists.size(); ++k) {
                    ASSERT_EQ(Names[static_cast<int>(k) + 1], lists[k].first.c_str()) << "step " << step;
                    CATListValCATBaseUnknown_var List;
                    s == 0 ? relations[i]->GetRightNodeList(Names[static_cast<int>(k) + 1], &List, ALL_NODES)
                           : relations[i]->GetLeftNodeList(Names[static_cast<int>(k) + 1], &List, ALL_NODES);
                    ASSERT_EQ(List.Size(), static_cast<int>(lists[k].second.size())) << "step " << step;
                    for (int position = 1; position <= List.Size(); ++position) {
                        const std::size_t neighbour = lists[k].second[static_cast<std::size_t>(position) - 1];
                        ASSERT_TRUE(List[position] == nodes[neighbour]) << "step " << step;
                        unsigned char bMirrorExists = FALSE;
                        s == 0 ? relations[neighbour]->LeftNodeExists(Names[static_cast<int>(k) + 1], nodes[i],
                                                                      &bMirrorExists)
                               : relations[neighbour]->RightNodeExists(Names[static_cast<int>(k) + 1], nodes[i],
                                                                       &bMirrorExists);
                        ASSERT_EQ(bMirrorExists, TRUE) << "step " << step;
                    }
                }
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, NodeRelationsRandomTest, testing::Range(1U, 9U));

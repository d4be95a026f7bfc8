#include "QTBNodeContainer.h"

#include <algorithm>
#include <map>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

#include <gmock/gmock.h>

#include "CATError.h"
#include "CATIDOMDocument.h"
#include "CATIDOMElement.h"
#include "CATInstantiateComponent.h"
#include "QTBFailingNode.h"
#include "QTBFakeElement.h"
#include "QTBFault.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBListValues.h"
#include "QTBMatchers.h"
#include "QTBStringHash.h"
#include "QTBXmlUtil.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

unsigned int HashOf(const std::string& key)
{
    unsigned int hash = 0;
    hash %= CATUnicodeString(key);
    return hash;
}

// A container that files what it is given.
class Container : public QTBNodeContainer
{
public:
    using QTBNodeContainer::FileNode;
    using QTBNodeContainer::RemoveBucketPosition;

    HRESULT GetNodeByKey(const CATUnicodeString& usKey, CATBaseUnknown_var* pspNode, unsigned char* pbFound) override
    {
        if (m_bThrowForeignError) {
            throw std::runtime_error("foreign");
        }
        return QTBNodeContainer::GetNodeByKey(usKey, pspNode, pbFound);
    }

    const CATListValCATBaseUnknown_var& GetBucket(unsigned int hash) const { return m_NodeBuckets[hash & 0xFFU]; }
    int CountNodes() const
    {
        int count = 0;
        for (const CATListValCATBaseUnknown_var& Bucket : m_NodeBuckets) {
            count += Bucket.Size();
        }
        return count;
    }

    // Linked nodes hold each other.
    void DissolveRelations()
    {
        for (const CATListValCATBaseUnknown_var& Bucket : m_NodeBuckets) {
            for (const CATBaseUnknown_var& spNode : Bucket) {
                if (const QTBINodeRelations_var spINodeRelations(spNode); spINodeRelations != NULL_var) {
                    spINodeRelations->RemoveAllRels(NULL);
                }
            }
        }
    }

    bool m_bThrowForeignError = false;
};

class QTBNodeContainerTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_ComponentsBefore = CATBaseUnknown::GetLiveComponentCount();
        m_pContainer = std::make_unique<Container>();
    }
    void TearDown() override
    {
        if (m_pContainer != nullptr) {
            m_pContainer->DissolveRelations();
        }
        m_pContainer.reset();
        EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_ComponentsBefore) << "components outlive the container";
    }

    static CATBaseUnknown_var CreateNode(const std::string& key)
    {
        void* pNode = nullptr;
        EXPECT_EQ(::CATInstantiateComponent("QTBNode", CLSID_CATBaseUnknown, &pNode), S_OK);
        const auto spNode = CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pNode));
        QTBINodeAttributes_var(spNode)->SetKey(CATUnicodeString(key));
        return spNode;
    }

    CATBaseUnknown_var File(const std::string& key)
    {
        const CATBaseUnknown_var spNode = CreateNode(key);
        m_pContainer->FileNode(spNode);
        return spNode;
    }

    // The node found under a key, empty when there is none.
    CATBaseUnknown_var Find(const std::string& key)
    {
        CATBaseUnknown_var spNode;
        unsigned char bFound = FALSE;
        EXPECT_THAT(m_pContainer->GetNodeByKey(CATUnicodeString(key), &spNode, &bFound), Succeeds());
        EXPECT_EQ(bFound != FALSE, spNode != NULL_var);
        return spNode;
    }

    HRESULT Remove(const CATBaseUnknown_var& spNode)
    {
        CATBaseUnknown_var spCopy(spNode);
        return m_pContainer->RemoveNodeFromContainer(&spCopy, NULL);
    }

    static std::vector<CATBaseUnknown_var> RightNodes(const CATBaseUnknown_var& spNode, const char* name)
    {
        CATListValCATBaseUnknown_var Nodes;
        EXPECT_THAT(QTBINodeRelations_var(spNode)->GetRightNodeList(name, &Nodes, ALL_NODES), Succeeds());
        return ListValues(Nodes);
    }
    static std::vector<CATBaseUnknown_var> LeftNodes(const CATBaseUnknown_var& spNode, const char* name)
    {
        CATListValCATBaseUnknown_var Nodes;
        EXPECT_THAT(QTBINodeRelations_var(spNode)->GetLeftNodeList(name, &Nodes, ALL_NODES), Succeeds());
        return ListValues(Nodes);
    }
    static void Link(const CATBaseUnknown_var& spLeft, const char* name, const CATBaseUnknown_var& spRight)
    {
        EXPECT_THAT(QTBINodeRelations_var(spLeft)->AddRightNode(name, spRight, 1, TRUE), Succeeds());
    }

    // Keys whose hashes have that lowest byte.
    static std::vector<std::string> KeysOfBucket(unsigned int bucket, std::size_t count)
    {
        std::vector<std::string> keys;
        for (int i = 0; keys.size() < count; ++i) {
            const std::string key = "K" + std::to_string(i);
            if ((HashOf(key) & 0xFFU) == bucket) {
                keys.push_back(key);
            }
        }
        return keys;
    }

    int m_ComponentsBefore = 0;
    std::unique_ptr<Container> m_pContainer;
};

} // namespace

TEST_F(QTBNodeContainerTest, ALookUpFailsForNullPointersTheNodesFirst)
{
    CATBaseUnknown_var spNode;
    unsigned char bFound = FALSE;
    EXPECT_THAT(m_pContainer->GetNodeByKey("K1", NULL, NULL), FailsAssertion("pspBaseUnknownOnNode != NULL"));
    EXPECT_THAT(m_pContainer->GetNodeByKey("K1", NULL, &bFound), FailsAssertion("pspBaseUnknownOnNode != NULL"));
    EXPECT_THAT(m_pContainer->GetNodeByKey("K1", &spNode, NULL), FailsAssertion("pbNodeFound != NULL"));
}

TEST_F(QTBNodeContainerTest, AnAbsentKeyIsNoFailureAndNotFound)
{
    File("K1");
    CATBaseUnknown_var spNode;
    unsigned char bFound = TRUE;
    DebugCapture capture;
    EXPECT_THAT(m_pContainer->GetNodeByKey("K2", &spNode, &bFound), Succeeds());
    EXPECT_EQ(bFound, FALSE);
    EXPECT_TRUE(spNode == NULL_var);
    EXPECT_EQ(m_pContainer->NodeExists("K2"), FALSE);
    EXPECT_EQ(capture.Text(), "");
}

TEST_F(QTBNodeContainerTest, AFiledNodeIsFoundByItsKey)
{
    const CATBaseUnknown_var spNode = File("K1");
    EXPECT_TRUE(Find("K1") == spNode);
    EXPECT_EQ(m_pContainer->NodeExists("K1"), TRUE);
    EXPECT_EQ(m_pContainer->NodeExists("K"), FALSE);
    EXPECT_EQ(m_pContainer->NodeExists("k1"), FALSE);
    EXPECT_EQ(m_pContainer->NodeExists(""), FALSE);
}

TEST_F(QTBNodeContainerTest, ANodeIsFiledInTheBucketOfItsHashesLowestByteInOrder)
{
    const std::vector<std::string> keys = KeysOfBucket(0xA7, 3);
    std::vector<CATBaseUnknown_var> nodes;
    for (const std::string& key : keys) {
        nodes.push_back(File(key));
    }
    EXPECT_THAT(ListValues(m_pContainer->GetBucket(0xA7)), testing::ElementsAreArray(nodes));
    EXPECT_EQ(m_pContainer->CountNodes(), 3);
}

TEST_F(QTBNodeContainerTest, TwoKeysThatShareTheLowByteLiveInOneBucketAndAreBothFound)
{
    const std::vector<std::string> keys = KeysOfBucket(0x12, 2);
    ASSERT_NE(HashOf(keys[0]), HashOf(keys[1]));
    const CATBaseUnknown_var spFirst = File(keys[0]);
    const CATBaseUnknown_var spSecond = File(keys[1]);
    EXPECT_EQ(m_pContainer->GetBucket(0x12).Size(), 2);
    EXPECT_TRUE(Find(keys[0]) == spFirst);
    EXPECT_TRUE(Find(keys[1]) == spSecond);
}

TEST_F(QTBNodeContainerTest, TwoKeysWithEqualHashesAreToldApartByTheirText)
{
    std::unordered_map<unsigned int, std::string> keysByHash;
    std::string first;
    std::string second;
    for (int i = 0; second.empty() && i < 2000000; ++i) {
        const std::string key = "K" + std::to_string(i);
        const auto [found, isNew] = keysByHash.try_emplace(HashOf(key), key);
        if (!isNew) {
            first = found->second;
            second = key;
        }
    }
    ASSERT_FALSE(second.empty());
    ASSERT_EQ(HashOf(first), HashOf(second));
    const CATBaseUnknown_var spFirst = File(first);
    EXPECT_TRUE(Find(second) == NULL_var);
    const CATBaseUnknown_var spSecond = File(second);
    EXPECT_TRUE(Find(first) == spFirst);
    EXPECT_TRUE(Find(second) == spSecond);
    EXPECT_THAT(m_pContainer->RemoveNodeFromContainer(CATUnicodeString(first)), Succeeds());
    EXPECT_TRUE(Find(first) == NULL_var);
    EXPECT_TRUE(Find(second) == spSecond);
}

TEST_F(QTBNodeContainerTest, OfTwoNodesUnderOneKeyTheOneFiledFirstIsFound)
{
    const CATBaseUnknown_var spFirst = File("K1");
    const CATBaseUnknown_var spSecond = File("K1");
    EXPECT_TRUE(Find("K1") == spFirst);
    ASSERT_THAT(Remove(spFirst), Succeeds());
    EXPECT_TRUE(Find("K1") == spSecond);
    ASSERT_THAT(Remove(spSecond), Succeeds());
    EXPECT_TRUE(Find("K1") == NULL_var);
}

TEST_F(QTBNodeContainerTest, ANodeWithoutKeyIsFoundUnderTheEmptyKey)
{
    const CATBaseUnknown_var spNode = File("");
    EXPECT_TRUE(Find("") == spNode);
    EXPECT_THAT(m_pContainer->RemoveNodeFromContainer(""), Succeeds());
    EXPECT_TRUE(Find("") == NULL_var);
}

TEST_F(QTBNodeContainerTest, AnElementThatIsNoNodeFailsTheLookUpsThatComeByIt)
{
    m_pContainer->FileNode(CreateNoNode());
    const std::string inItsBucket = KeysOfBucket(0, 1)[0];
    const std::string elsewhere = KeysOfBucket(1, 1)[0];
    const CATBaseUnknown_var spElsewhere = File(elsewhere);
    CATBaseUnknown_var spNode;
    unsigned char bFound = FALSE;
    EXPECT_THAT(m_pContainer->GetNodeByKey(CATUnicodeString(inItsBucket), &spNode, &bFound),
                LacksInterface("spINodeAttributesOnCurrentNode"));
    EXPECT_TRUE(Find(elsewhere) == spElsewhere);
    m_pContainer->RemoveBucketPosition(0, 1);
    EXPECT_TRUE(Find(inItsBucket) == NULL_var);
}

TEST_F(QTBNodeContainerTest, ANodeInFrontOfAnElementThatIsNoNodeIsFound)
{
    const std::vector<std::string> keys = KeysOfBucket(0, 2);
    const CATBaseUnknown_var spInFront = File(keys[0]);
    m_pContainer->FileNode(CreateNoNode());
    File(keys[1]);
    EXPECT_TRUE(Find(keys[0]) == spInFront);
    CATBaseUnknown_var spNode;
    unsigned char bFound = FALSE;
    EXPECT_THAT(m_pContainer->GetNodeByKey(CATUnicodeString(keys[1]), &spNode, &bFound),
                LacksInterface("spINodeAttributesOnCurrentNode"));
}

TEST_F(QTBNodeContainerTest, ANodeThatCannotTellItsKeyFailsTheLookUpForItsHash)
{
    const CATBaseUnknown_var spNode = CreateFailingNode();
    QTBINodeAttributes_var(spNode)->SetKey("K1");
    const QTBFault fault("GetKey");
    m_pContainer->FileNode(spNode);
    EXPECT_THAT(ListValues(m_pContainer->GetBucket(HashOf("K1"))), ElementsAre(spNode));
    CATBaseUnknown_var spFound;
    unsigned char bFound = FALSE;
    EXPECT_THAT(m_pContainer->GetNodeByKey("K1", &spFound, &bFound),
                FailsCall("spINodeAttributesOnCurrentNode->GetKey"));
    // Another hash of the same bucket is told apart before the key is asked for.
    const std::string other = KeysOfBucket(HashOf("K1") & 0xFFU, 2)[1];
    ASSERT_NE(HashOf(other), HashOf("K1"));
    EXPECT_TRUE(Find(other) == NULL_var);
}

TEST_F(QTBNodeContainerTest, RemovingByAnUnknownKeyFailsQuietly)
{
    File("K1");
    DebugCapture capture;
    EXPECT_EQ(m_pContainer->RemoveNodeFromContainer("K2"), E_FAIL);
    EXPECT_EQ(capture.Text(), "");
    EXPECT_EQ(m_pContainer->CountNodes(), 1);
}

TEST_F(QTBNodeContainerTest, RemovingByKeyTakesTheNodeAndItsRelationsAway)
{
    const CATBaseUnknown_var spFirst = File("K1");
    const CATBaseUnknown_var spSecond = File("K2");
    Link(spFirst, "PartPart", spSecond);
    EXPECT_THAT(m_pContainer->RemoveNodeFromContainer("K1"), Succeeds());
    EXPECT_TRUE(Find("K1") == NULL_var);
    EXPECT_TRUE(Find("K2") == spSecond);
    EXPECT_THAT(LeftNodes(spSecond, "PartPart"), IsEmpty());
    EXPECT_THAT(RightNodes(spFirst, "PartPart"), IsEmpty());
}

TEST_F(QTBNodeContainerTest, AFailingLookUpIsReportedByTheRemovalByKey)
{
    m_pContainer->FileNode(CreateNoNode());
    DebugCapture capture;
    EXPECT_THAT(m_pContainer->RemoveNodeFromContainer(CATUnicodeString(KeysOfBucket(0, 1)[0])),
                LacksInterface("spINodeAttributesOnCurrentNode"));
    EXPECT_THAT(capture.Lines(), ElementsAre(StartsWith("spINodeAttributesOnCurrentNode == NULL_var"),
                                             StartsWith("GetNodeByKey : HRESULT FAILED")));
}

TEST_F(QTBNodeContainerTest, AFailingRemovalIsReportedByTheRemovalByKey)
{
    const CATBaseUnknown_var spNode = CreateFailingNode();
    QTBINodeAttributes_var(spNode)->SetKey("K1");
    m_pContainer->FileNode(spNode);
    const QTBFault fault("RemoveAllRels");
    DebugCapture capture;
    EXPECT_THAT(m_pContainer->RemoveNodeFromContainer("K1"), FailsCall("QTBINodeRelations::RemoveAllRels"));
    EXPECT_THAT(capture.Lines(), ElementsAre(StartsWith("QTBINodeRelations::RemoveAllRels : HRESULT FAILED"),
                                             StartsWith("RemoveNodeFromContainer : HRESULT FAILED")));
    EXPECT_TRUE(Find("K1") == spNode);
}

TEST_F(QTBNodeContainerTest, RemovingNeedsANodeWithRelationsAndAttributes)
{
    CATBaseUnknown_var spNode;
    EXPECT_THAT(m_pContainer->RemoveNodeFromContainer(NULL, NULL), FailsAssertion("pspBaseUnknownOnNode != NULL"));
    EXPECT_THAT(m_pContainer->RemoveNodeFromContainer(&spNode, NULL), LacksInterface("*pspBaseUnknownOnNode"));
    spNode = CreateNodeWithoutRelations();
    EXPECT_THAT(m_pContainer->RemoveNodeFromContainer(&spNode, NULL), LacksInterface("spINodeRelationsOnNode"));
}

TEST_F(QTBNodeContainerTest, ANodeWithoutAttributesHasLostItsRelationsWhenItsRemovalFails)
{
    CATBaseUnknown_var spNode = CreateNodeWithoutAttributes();
    const CATBaseUnknown_var spNeighbour = File("K1");
    Link(spNode, "PartPart", spNeighbour);
    EXPECT_THAT(m_pContainer->RemoveNodeFromContainer(&spNode, NULL), LacksInterface("spINodeAttributesOnNode"));
    EXPECT_THAT(LeftNodes(spNeighbour, "PartPart"), IsEmpty());
}

TEST_F(QTBNodeContainerTest, RemovingANodeThatIsNotFiledHereStillRemovesAllOfItsRelations)
{
    const CATBaseUnknown_var spFiled = File("K1");
    const CATBaseUnknown_var spStranger = CreateNode("K2");
    Link(spFiled, "PartPart", spStranger);
    Link(spStranger, "PartDoc", spFiled);
    EXPECT_THAT(Remove(spStranger), Succeeds());
    EXPECT_THAT(RightNodes(spFiled, "PartPart"), IsEmpty());
    EXPECT_THAT(LeftNodes(spFiled, "PartDoc"), IsEmpty());
    EXPECT_THAT(RightNodes(spStranger, "PartDoc"), IsEmpty());
    EXPECT_EQ(m_pContainer->CountNodes(), 1);
}

TEST_F(QTBNodeContainerTest, ANodeIsRemovedByIdentityNotByKey)
{
    const CATBaseUnknown_var spFiled = File("K1");
    const CATBaseUnknown_var spNamesake = CreateNode("K1");
    EXPECT_THAT(Remove(spNamesake), Succeeds());
    EXPECT_TRUE(Find("K1") == spFiled);
    const CATBaseUnknown_var spSecond = File("K1");
    EXPECT_THAT(Remove(spSecond), Succeeds());
    EXPECT_TRUE(Find("K1") == spFiled);
    EXPECT_EQ(m_pContainer->CountNodes(), 1);
}

TEST_F(QTBNodeContainerTest, ANodeIsRemovedThroughAnyHandleOnItsComponent)
{
    CATBaseUnknown_var spHandle = QTBINodeRelations_var(File("K1"));
    EXPECT_THAT(m_pContainer->RemoveNodeFromContainer(&spHandle, NULL), Succeeds());
    EXPECT_EQ(m_pContainer->CountNodes(), 0);
}

TEST_F(QTBNodeContainerTest, RemovingANodeKeepsTheOrderOfTheOthersInItsBucket)
{
    const std::vector<std::string> keys = KeysOfBucket(0x33, 5);
    std::vector<CATBaseUnknown_var> nodes;
    for (const std::string& key : keys) {
        nodes.push_back(File(key));
    }
    Remove(nodes[1]);
    Remove(nodes[4]);
    EXPECT_THAT(ListValues(m_pContainer->GetBucket(0x33)), ElementsAre(nodes[0], nodes[2], nodes[3]));
}

TEST_F(QTBNodeContainerTest, RemovingANodeDetachesItsXmlElement)
{
    CATIDOMElement_var spRoot;
    ASSERT_THAT(m_pContainer->GetXmlDocumentRootElement(&spRoot), Succeeds());
    CATIDOMElement_var spElement;
    CATIDOMElement_var spOtherElement;
    ASSERT_EQ(QTBXmlUtil::CreateChildNode("o", "", &spRoot, &spElement), S_OK);
    ASSERT_EQ(QTBXmlUtil::CreateChildNode("o", "", &spRoot, &spOtherElement), S_OK);
    const CATBaseUnknown_var spNode = File("K1");
    ASSERT_THAT(QTBINodeAttributes_var(spNode)->SetXmlElement(spElement), Succeeds());
    EXPECT_THAT(Remove(spNode), Succeeds());
    CATListValCATBaseUnknown_var Elements;
    ASSERT_EQ(QTBXmlUtil::GetElements(spRoot, "o", "", "", &Elements), S_OK);
    EXPECT_THAT(ListValues(Elements), ElementsAre(CATBaseUnknown_var(spOtherElement)));
    EXPECT_EQ(m_pContainer->CountNodes(), 0);
}

TEST_F(QTBNodeContainerTest, ANodeWhoseElementHasNoParentIsRemovedWithoutTouchingADocument)
{
    CATIDOMElement_var spRoot;
    ASSERT_THAT(m_pContainer->GetXmlDocumentRootElement(&spRoot), Succeeds());
    CATIDOMElement_var spElement;
    ASSERT_EQ(QTBXmlUtil::CreateChildNode("o", "text", &spRoot, &spElement), S_OK);
    CATIDOMNode_var spRootNode(spRoot);
    ASSERT_EQ(spRootNode->RemoveChild(spElement), S_OK);
    CATIDOMElement_var spKept;
    ASSERT_EQ(QTBXmlUtil::CreateChildNode("kept", "", &spRoot, &spKept), S_OK);
    const CATBaseUnknown_var spNode = File("K1");
    QTBINodeAttributes_var(spNode)->SetXmlElement(spElement);
    EXPECT_THAT(Remove(spNode), Succeeds());
    EXPECT_TRUE(Find("K1") == NULL_var);
    CATUnicodeString usText;
    EXPECT_EQ(QTBXmlUtil::GetCharData(spElement, &usText), S_OK);
    EXPECT_EQ(usText, "text");
    CATListValCATBaseUnknown_var Elements;
    ASSERT_EQ(QTBXmlUtil::GetElements(spRoot, "kept", "", "", &Elements), S_OK);
    EXPECT_EQ(Elements.Size(), 1);
}

TEST_F(QTBNodeContainerTest, ANodeWithoutElementIsSimplyRemoved)
{
    const CATBaseUnknown_var spNode = File("K1");
    EXPECT_THAT(Remove(spNode), Succeeds());
    EXPECT_EQ(m_pContainer->CountNodes(), 0);
}

TEST_F(QTBNodeContainerTest, ANodeWhoseElementCannotBeHadStaysFiled)
{
    const CATBaseUnknown_var spNode = CreateFailingNode();
    QTBINodeAttributes_var(spNode)->SetKey("K1");
    m_pContainer->FileNode(spNode);
    const QTBFault fault("GetXmlElement");
    EXPECT_THAT(Remove(spNode), FailsCall("spINodeAttributesOnNode->GetXmlElement"));
    EXPECT_TRUE(Find("K1") == spNode);
}

TEST_F(QTBNodeContainerTest, EveryStepOfDetachingAnElementIsChecked)
{
    QTBFakeElement element;
    QTBFakeElement parent;
    const CATBaseUnknown_var spNode = File("K1");
    QTBINodeAttributes_var(spNode)->SetXmlElement(CATBaseUnknown_var(&element));

    element.m_bIsElement = false;
    EXPECT_THAT(Remove(spNode), LacksInterface("spIDOMNode"));
    element.m_bIsElement = true;
    element.m_hrGetParentNode = E_FAIL;
    EXPECT_THAT(Remove(spNode), FailsCall("spIDOMNode->GetParentNode"));
    element.m_hrGetParentNode = S_OK;
    element.m_spParent = CATIDOMNode_var(&parent);
    EXPECT_THAT(Remove(spNode), FailsCall("spIDOMNodeOnParent->RemoveChild"));
    EXPECT_TRUE(Find("K1") == spNode) << "whatever fails leaves the node in the store";
    element.m_spParent = NULL_var;
    EXPECT_THAT(Remove(spNode), Succeeds());
    EXPECT_TRUE(Find("K1") == NULL_var);
}

TEST_F(QTBNodeContainerTest, RelationsAreTransferredToTheGivenNode)
{
    CATBaseUnknown_var spOld = File("Old");
    CATBaseUnknown_var spNew = File("New");
    const CATBaseUnknown_var spParent = File("Parent");
    const CATBaseUnknown_var spChild = File("Child");
    Link(spParent, "PartPart", spOld);
    Link(spOld, "PartPart", spChild);
    EXPECT_THAT(m_pContainer->RemoveNodeFromContainer(&spOld, &spNew), Succeeds());
    EXPECT_TRUE(Find("Old") == NULL_var);
    EXPECT_THAT(RightNodes(spParent, "PartPart"), ElementsAre(spNew));
    EXPECT_THAT(LeftNodes(spChild, "PartPart"), ElementsAre(spNew));
    EXPECT_THAT(RightNodes(spNew, "PartPart"), ElementsAre(spChild));
    EXPECT_THAT(LeftNodes(spNew, "PartPart"), ElementsAre(spParent));
}

TEST_F(QTBNodeContainerTest, ATransferToAnEmptyHandleFailsAndLeavesTheRelationsUntouched)
{
    CATBaseUnknown_var spNode = File("K1");
    const CATBaseUnknown_var spChild = File("K2");
    Link(spNode, "PartPart", spChild);
    CATBaseUnknown_var spNothing;
    EXPECT_THAT(m_pContainer->RemoveNodeFromContainer(&spNode, &spNothing),
                LacksInterface("*pspBaseUnknownOnNodeToTransferRelationsTo"));
    EXPECT_THAT(RightNodes(spNode, "PartPart"), ElementsAre(spChild));
    EXPECT_THAT(LeftNodes(spChild, "PartPart"), ElementsAre(spNode));
    EXPECT_TRUE(Find("K1") == spNode);
}

TEST_F(QTBNodeContainerTest, ATransferToAComponentWithoutRelationsFailsAndLeavesTheRelationsUntouched)
{
    CATBaseUnknown_var spNode = File("K1");
    const CATBaseUnknown_var spChild = File("K2");
    Link(spNode, "PartPart", spChild);
    CATBaseUnknown_var spNoNode = CreateNoNode();
    EXPECT_THAT(m_pContainer->RemoveNodeFromContainer(&spNode, &spNoNode),
                LacksInterface("spINodeRelationsOnNodeToTransferRelationsTo"));
    EXPECT_THAT(RightNodes(spNode, "PartPart"), ElementsAre(spChild));
    EXPECT_TRUE(Find("K1") == spNode);
}

TEST_F(QTBNodeContainerTest, AFailingTransferIsReported)
{
    CATBaseUnknown_var spNode = CreateFailingNode();
    CATBaseUnknown_var spTarget = File("K1");
    const QTBFault fault("RemoveAllRels");
    EXPECT_THAT(m_pContainer->RemoveNodeFromContainer(&spNode, &spTarget),
                FailsCall("QTBINodeRelations::RemoveAllRels"));
}

TEST_F(QTBNodeContainerTest, PrintingWritesTheRelationsOfEveryNodeBucketByBucket)
{
    const std::string later = KeysOfBucket(0xF0, 1)[0];
    const std::string earlier = KeysOfBucket(0x0F, 1)[0];
    const CATBaseUnknown_var spLater = File(later);
    const CATBaseUnknown_var spEarlier = File(earlier);
    Link(spLater, "PartPart", spEarlier);
    DebugCapture capture;
    EXPECT_THAT(m_pContainer->PrintNodeRelations(), Succeeds());
    const std::string text = capture.Text();
    const std::size_t atEarlier = text.find("[" + earlier + "]:");
    const std::size_t atLater = text.find("[" + later + "]:");
    ASSERT_NE(atEarlier, std::string::npos) << text;
    ASSERT_NE(atLater, std::string::npos) << text;
    EXPECT_LT(atEarlier, atLater);
}

TEST_F(QTBNodeContainerTest, PrintingAnEmptyContainerSucceeds)
{
    DebugCapture capture;
    EXPECT_THAT(m_pContainer->PrintNodeRelations(), Succeeds());
    EXPECT_EQ(capture.Text(), "");
}

TEST_F(QTBNodeContainerTest, PrintingFailsAtAnEmptyHandleAndAtAComponentWithoutRelations)
{
    m_pContainer->FileNode(NULL_var);
    EXPECT_THAT(m_pContainer->PrintNodeRelations(), LacksInterface("spBaseUnknownOnNode"));
    m_pContainer->RemoveBucketPosition(0, 1);
    m_pContainer->FileNode(CreateNoNode());
    EXPECT_THAT(m_pContainer->PrintNodeRelations(), FailsCall("QTBTraceUtil::PrintQtbRelations"));
}

TEST_F(QTBNodeContainerTest, AFailingLookUpMeansThatANodeDoesNotExist)
{
    m_pContainer->FileNode(CreateNoNode());
    const CATUnicodeString usKey(KeysOfBucket(0, 1)[0]);
    CATBaseUnknown_var spNode;
    unsigned char bNodeFound = FALSE;
    const HRESULT hr = m_pContainer->GetNodeByKey(usKey, &spNode, &bNodeFound);
    const CATError* pError = CATError::CATGetLastError(hr, nullptr);
    ASSERT_NE(pError, nullptr);
    const std::string message(pError->GetNLSMessage().View());
    EXPECT_NE(message, "");
    DebugCapture capture;
    EXPECT_EQ(m_pContainer->NodeExists(usKey), FALSE);
    const std::vector<std::string> lines = capture.Lines();
    ASSERT_GE(lines.size(), 3U);
    EXPECT_THAT(lines[0], StartsWith("spINodeAttributesOnCurrentNode == NULL_var"));
    EXPECT_THAT(lines[1], StartsWith("GetNodeByKey : HRESULT FAILED"));
    EXPECT_EQ(capture.Text(), lines[0] + "\n" + lines[1] + "\n" + message + "\n");
}

TEST_F(QTBNodeContainerTest, TheMessageOfAFailingLookUpIsWrittenOnlyWithTheDebugStatusOn)
{
    m_pContainer->FileNode(CreateNoNode());
    std::ostringstream output;
    std::streambuf* pFormerBuffer = std::cout.rdbuf(output.rdbuf());
    const unsigned char bExists = m_pContainer->NodeExists(CATUnicodeString(KeysOfBucket(0, 1)[0]));
    std::cout.rdbuf(pFormerBuffer);
    EXPECT_EQ(bExists, FALSE);
    EXPECT_EQ(output.str(), "");
}

TEST_F(QTBNodeContainerTest, AnErrorOfAnotherClassIsPassedOn)
{
    m_pContainer->m_bThrowForeignError = true;
    EXPECT_THROW(m_pContainer->NodeExists("K1"), std::runtime_error);
}

TEST_F(QTBNodeContainerTest, TheDocumentRootIsTheSameElementOnEveryCallAndNamedRoot)
{
    CATIDOMElement_var spFirst;
    CATIDOMElement_var spSecond;
    ASSERT_THAT(m_pContainer->GetXmlDocumentRootElement(&spFirst), Succeeds());
    ASSERT_THAT(m_pContainer->GetXmlDocumentRootElement(&spSecond), Succeeds());
    EXPECT_TRUE(spFirst == spSecond);
    CATUnicodeString usTagName;
    ASSERT_EQ(spFirst->GetTagName(&usTagName), S_OK);
    EXPECT_EQ(usTagName, "root");
    CATIDOMNode_var spParent;
    ASSERT_EQ(spFirst->GetParentNode(&spParent), S_OK);
    const CATIDOMDocument_var spDocument(spParent);
    ASSERT_TRUE(spDocument != NULL_var);
    CATIDOMElement_var spDocumentElement;
    ASSERT_EQ(spDocument->GetDocumentElement(&spDocumentElement), S_OK);
    EXPECT_TRUE(spDocumentElement == spFirst);
}

TEST_F(QTBNodeContainerTest, EveryContainerHasADocumentOfItsOwn)
{
    Container other;
    CATIDOMElement_var spRoot;
    CATIDOMElement_var spOtherRoot;
    ASSERT_THAT(m_pContainer->GetXmlDocumentRootElement(&spRoot), Succeeds());
    ASSERT_THAT(other.GetXmlDocumentRootElement(&spOtherRoot), Succeeds());
    EXPECT_TRUE(spRoot != spOtherRoot);
}

TEST_F(QTBNodeContainerTest, ADestroyedContainerReleasesItsNodesAndLeavesTheirRelations)
{
    const CATBaseUnknown_var spKept = File("K1");
    File("K2");
    Link(spKept, "PartPart", Find("K2"));
    m_pContainer.reset();
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_ComponentsBefore + 2);
    EXPECT_EQ(RightNodes(spKept, "PartPart").size(), 1U);
    QTBINodeRelations_var(spKept)->RemoveAllRels(NULL);
}

TEST_F(QTBNodeContainerTest, AStoreHoldsOneReferencePerNodeAndReleasesItWithTheNode)
{
    const CATBaseUnknown_var spNode = File("K1");
    spNode->AddRef();
    EXPECT_EQ(spNode->Release(), 2U);
    Remove(spNode);
    spNode->AddRef();
    EXPECT_EQ(spNode->Release(), 1U);
}

TEST_F(QTBNodeContainerTest, TheStoreFindsExactlyWhatItHolds)
{
    std::mt19937 random(3);
    std::map<std::string, std::vector<CATBaseUnknown_var>> expected;
    int count = 0;
    for (int step = 0; step < 20000; ++step) {
        const std::string key = "K" + std::to_string(random() % 400);
        std::vector<CATBaseUnknown_var>& nodes = expected[key];
        switch (random() % 4) {
        case 0:
        case 1:
            if (nodes.size() < 3) {
                nodes.push_back(File(key));
                ++count;
            }
            break;
        case 2:
            ASSERT_EQ(m_pContainer->RemoveNodeFromContainer(CATUnicodeString(key)), nodes.empty() ? E_FAIL : S_OK);
            if (!nodes.empty()) {
                nodes.erase(nodes.begin());
                --count;
            }
            break;
        default:
            if (!nodes.empty()) {
                const std::size_t i = random() % nodes.size();
                ASSERT_THAT(Remove(nodes[i]), Succeeds());
                nodes.erase(nodes.begin() + static_cast<std::ptrdiff_t>(i));
                --count;
            }
        }
        ASSERT_TRUE(Find(key) == (nodes.empty() ? CATBaseUnknown_var() : nodes.front())) << "step " << step;
        ASSERT_EQ(m_pContainer->NodeExists(CATUnicodeString(key)) != FALSE, !nodes.empty());
        ASSERT_EQ(m_pContainer->CountNodes(), count);
    }
}

TEST_F(QTBNodeContainerTest, FiftyThousandNodesAreFiledFoundAndRemovedInReasonableTime)
{
    constexpr int COUNT = 50000;
    std::vector<std::string> keys;
    for (int i = 0; i < COUNT; ++i) {
        keys.push_back("PRT-" + std::to_string(i));
        File(keys.back());
    }
    std::mt19937 random(8);
    std::shuffle(keys.begin(), keys.end(), random);
    for (int round = 0; round < 4; ++round) {
        for (const std::string& key : keys) {
            ASSERT_EQ(m_pContainer->NodeExists(CATUnicodeString(key)), TRUE);
        }
    }
    for (const std::string& key : keys) {
        ASSERT_THAT(m_pContainer->RemoveNodeFromContainer(CATUnicodeString(key)), Succeeds());
    }
    EXPECT_EQ(m_pContainer->CountNodes(), 0);
}

#include <ostream>
#include <string>

#include <gmock/gmock.h>

#include "QTBEPdmNodeOnPdmNode.h"
#include "QTBFaultyPdmSession.h"
#include "QTBGlobVarsUtil.h"
#include "QTBINodeAttributes.h"
#include "QTBRecordingRepNode.h"
#include "QTBSchemaNode.h"
#include "QTBSchemaUtil.h"
#include "QTBStringHash.h"
#include "QTBXmlElement.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

struct KindOfNode
{
    const char* key;
    const char* className;
    const char* description;

    friend std::ostream& operator<<(std::ostream& stream, const KindOfNode& kind) { return stream << kind.className; }
};

// An object and a relation with the same info attributes. Each test reaches the node by its own QTBIPdmNode and by the
// interface that extends it, whose first 24 operations are those of QTBIPdmNode: what is set by one is there for the
// other.
class PdmNodeSharedState : public QTBTestSession, public ::testing::WithParamInterface<KindOfNode>
{
protected:
    void SetUp() override
    {
        QTBTestSession::SetUp();
        const std::string info = R"(<a name="QtbInfo" type="nvlist"><nv name="Mass" unit="kg">1.5</nv></a>)";
        Update(Part("A", Attribute("PartNumber", "P-1") + Attribute("Name", "Bracket") + info) + Part("B") +
               PartPart("AB", "A", "B", Attribute("InstanceName", "Screw.1") + info));
        Take(PdmNode(GetParam().key));
    }

    void TearDown() override
    {
        m_pOwn = m_pExtending = nullptr;
        m_spNode = NULL_var;
        m_spExtending = NULL_var;
        QTBTestSession::TearDown();
    }

    void Take(const CATBaseUnknown_var& spNode)
    {
        m_spNode = spNode;
        m_pOwn = m_spNode.Get();
        const QTBIPdmObjNode_var spIPdmObjNode(spNode);
        const QTBIPdmRelNode_var spIPdmRelNode(spNode);
        ASSERT_TRUE((spIPdmObjNode != NULL_var) != (spIPdmRelNode != NULL_var));
        m_pExtending = spIPdmObjNode != NULL_var ? static_cast<QTBIPdmNode*>(spIPdmObjNode.Get())
                                                 : static_cast<QTBIPdmNode*>(spIPdmRelNode.Get());
        m_spExtending = spNode;
        ASSERT_NE(m_pOwn, m_pExtending);
    }

    // Calls the check with each of the two as the one that sets and the other as the one that reads.
    template <class Check>
    void BothWays(Check check)
    {
        {
            SCOPED_TRACE("set by QTBIPdmNode");
            check(m_pOwn, m_pExtending);
        }
        SCOPED_TRACE("read by QTBIPdmNode");
        check(m_pExtending, m_pOwn);
    }

    static QTBSchemaNode* ClassOfSchema(const char* name)
    {
        unsigned char bIsDefined = FALSE;
        QTBSchemaNode* pSchemaNode = nullptr;
        EXPECT_THAT(QTBSchemaUtil::PdmClassIsDefined(name, &bIsDefined, &pSchemaNode), Succeeds());
        return pSchemaNode;
    }

    static std::string TextOf(QTBIPdmNode* pNode, HRESULT (QTBIPdmNode::*getText)(CATUnicodeString*))
    {
        CATUnicodeString usText("before");
        EXPECT_THAT((pNode->*getText)(&usText), Succeeds());
        return std::string(usText.View());
    }

    QTBIPdmNode_var m_spNode;
    CATBaseUnknown_var m_spExtending;
    QTBIPdmNode* m_pOwn = nullptr;
    QTBIPdmNode* m_pExtending = nullptr;
};

INSTANTIATE_TEST_SUITE_P(Kinds, PdmNodeSharedState,
                         ::testing::Values(KindOfNode{"A", "Part", "P-1, Bracket"},
                                           KindOfNode{"AB", "PartPart", "Screw.1"}),
                         [](const auto& kind) { return kind.param.className; });

} // namespace

TEST_P(PdmNodeSharedState, IdentityClassAndDescriptionAreTheSame)
{
    for (QTBIPdmNode* pNode : {m_pOwn, m_pExtending}) {
        EXPECT_EQ(TextOf(pNode, &QTBINode::GetNodeDescriptionString), GetParam().description);
        EXPECT_EQ(TextOf(pNode, &QTBINode::GetPdmClass), GetParam().className);
        EXPECT_EQ(TextOf(pNode, &QTBIPdmNode::GetClassName), GetParam().className);
        EXPECT_EQ(TextOf(pNode, &QTBIPdmNode::GetDescriptionString), GetParam().description);
        EXPECT_THAT(pNode->GetNodeDescriptionString(nullptr), FailsAssertion("pusNodeDescriptionString != NULL"));
        EXPECT_THAT(pNode->GetPdmClass(nullptr), FailsAssertion("pusPdmClass != NULL"));
        EXPECT_THAT(pNode->GetClassName(nullptr), FailsAssertion("pusClassName != NULL"));
        EXPECT_THAT(pNode->GetDescriptionString(nullptr), FailsAssertion("pusDescriptionString != NULL"));
    }
}

TEST_P(PdmNodeSharedState, InfoAttributesAreReadInAllForms)
{
    BothWays([](QTBIPdmNode* pSetter, QTBIPdmNode* pReader) {
        EXPECT_THAT(pSetter->SetQtbInfoAttr("Flag", "true"), Succeeds());
        unsigned char flag = 2;
        CATUnicodeString text;
        CATListValCATUnicodeString texts;
        unsigned char bIsDefined = FALSE;
        EXPECT_THAT(pReader->GetQtbInfoAttr("Flag", &flag, FALSE, nullptr, FALSE), Succeeds());
        EXPECT_EQ(flag, TRUE);
        EXPECT_THAT(pReader->GetQtbInfoAttr("Flag", &text, FALSE, &bIsDefined, FALSE), Succeeds());
        EXPECT_EQ(text, "true");
        EXPECT_EQ(bIsDefined, TRUE);
        EXPECT_THAT(pReader->GetQtbInfoAttr("Flag", &texts, FALSE, nullptr, FALSE), Succeeds());
        EXPECT_THAT(TextsOf(texts), ElementsAre("true"));
        EXPECT_THAT(pSetter->SetQtbInfoAttr("Flag", "false"), Succeeds());
        EXPECT_THAT(pReader->GetQtbInfoAttr("Flag", &flag, FALSE, nullptr, FALSE), Succeeds());
        EXPECT_EQ(flag, FALSE);
        EXPECT_THAT(pSetter->SetQtbInfoAttr("Flag", ""), Succeeds());
        EXPECT_THAT(pReader->GetQtbInfoAttr("Flag", &text, FALSE, nullptr, FALSE), FailsQuietly());
        EXPECT_THAT(pReader->GetQtbInfoAttr("Flag", &text, FALSE, nullptr, TRUE), Succeeds());
        EXPECT_THAT(pReader->GetQtbInfoAttrXmlAttrVal("Mass", "unit", &text), Succeeds());
        EXPECT_EQ(text, "kg");
    });
}

TEST_P(PdmNodeSharedState, TheGeneralGettersAreRefused)
{
    for (QTBIPdmNode* pNode : {m_pOwn, m_pExtending}) {
        unsigned char flag = 2;
        CATUnicodeString text;
        CATListValCATUnicodeString texts;
        EXPECT_THAT(pNode->GetQtbAttr("Mass", &flag, FALSE, nullptr, FALSE), FailsQuietly());
        EXPECT_THAT(pNode->GetQtbAttr("Mass", &texts, FALSE, nullptr, FALSE), FailsQuietly());
        EXPECT_THAT(pNode->GetQtbAttr("Mass", &text, FALSE, nullptr, FALSE), FailsQuietly());
        EXPECT_THAT(pNode->GetQtbAttr("Mass", static_cast<unsigned char*>(nullptr), FALSE, nullptr, FALSE),
                    FailsAssertion("pbAttrValue != NULL"));
        EXPECT_THAT(pNode->GetQtbAttr("Mass", static_cast<CATListValCATUnicodeString*>(nullptr), FALSE, nullptr, FALSE),
                    FailsAssertion("pAttrValues != NULL"));
        EXPECT_THAT(pNode->GetQtbAttr("Mass", static_cast<CATUnicodeString*>(nullptr), FALSE, nullptr, FALSE),
                    FailsAssertion("pusAttrValue != NULL"));
    }
}

TEST_P(PdmNodeSharedState, TheSchemaNodeIsOne)
{
    const char* name = "Document";
    BothWays([&name](QTBIPdmNode* pSetter, QTBIPdmNode* pReader) {
        QTBSchemaNode* pSchemaNode = nullptr;
        EXPECT_THAT(pSetter->SetSchemaNodePtr(ClassOfSchema(name)), Succeeds());
        EXPECT_THAT(pReader->GetSchemaNodePtr(&pSchemaNode), Succeeds());
        EXPECT_EQ(pSchemaNode, ClassOfSchema(name));
        name = "Person";
    });
}

TEST_P(PdmNodeSharedState, TheContainerIsOne)
{
    BothWays([](QTBIPdmNode* pSetter, QTBIPdmNode* pReader) {
        const QTBIPdmNodeCont_var spOther(QTBCreateLoose("QTBPdmNodeCont"));
        QTBIPdmNodeCont_var spIPdmNodeCont;
        EXPECT_THAT(pSetter->SetPdmNodeContainer(spOther), Succeeds());
        EXPECT_THAT(pReader->GetPdmNodeContainer(&spIPdmNodeCont), Succeeds());
        EXPECT_TRUE(spIPdmNodeCont == spOther);
    });
}

TEST_P(PdmNodeSharedState, ThePdmKeyAndItsHashAreOne)
{
    const QTBINodeAttributes_var spINodeAttributes(m_spNode);
    unsigned int hash = 0;
    hash %= CATUnicodeString(GetParam().key);
    EXPECT_EQ(m_pOwn->GetPdmKeyHash(), hash);
    const char* key = "first";
    BothWays([&](QTBIPdmNode* pSetter, QTBIPdmNode* pReader) {
        EXPECT_THAT(spINodeAttributes->SetStringAttributeValue("Key", key), Succeeds());
        EXPECT_THAT(pSetter->SetPdmKey(), Succeeds());
        hash %= CATUnicodeString(key);
        EXPECT_EQ(pReader->GetPdmKey(), key);
        EXPECT_EQ(&pReader->GetPdmKey(), &pSetter->GetPdmKey());
        EXPECT_EQ(pReader->GetPdmKeyHash(), hash);
        EXPECT_EQ(pSetter->GetPdmKeyHash(), hash);
        key = "second";
    });
}

TEST_P(PdmNodeSharedState, TheActionIsOne)
{
    unsigned char bIsAffected = 2;
    for (QTBIPdmNode* pNode : {m_pOwn, m_pExtending}) {
        EXPECT_THAT(pNode->IsAffectedByCurrentAction(&bIsAffected), Succeeds());
        EXPECT_EQ(bIsAffected, TRUE);
        EXPECT_THAT(pNode->IsAffectedByCurrentAction(nullptr), FailsAssertion("pbIsAffected != NULL"));
    }
    EXPECT_THAT(QTBGlobVarsUtil::IncActionIndex(), Succeeds());
    for (QTBIPdmNode* pNode : {m_pOwn, m_pExtending}) {
        EXPECT_THAT(pNode->IsAffectedByCurrentAction(&bIsAffected), Succeeds());
        EXPECT_EQ(bIsAffected, FALSE);
    }
}

TEST_P(PdmNodeSharedState, TheRepNodesAreTheSame)
{
    const QTBRecordingRepNodeType repType;
    repType.Show(m_spNode, "R");
    for (QTBIPdmNode* pNode : {m_pOwn, m_pExtending}) {
        CATListValCATBaseUnknown_var nodes;
        EXPECT_THAT(pNode->GetRepNodes(&nodes, NULL_var), Succeeds());
        EXPECT_THAT(KeysOf(nodes), ElementsAre("R"));
        unsigned char flag = TRUE;
        EXPECT_THAT(pNode->RedrawRepNodes(&flag), Succeeds());
        EXPECT_EQ(QTBRecordingRepNode::s_pHandedOver, &flag);
        EXPECT_THAT(pNode->PreselectRepNodes(), Succeeds());
        unsigned char object = FALSE;
        EXPECT_THAT(pNode->HighlightRepNodes(TRUE, &object), Succeeds());
        EXPECT_EQ(QTBRecordingRepNode::s_pHandedOver, &object);
        EXPECT_THAT(QTBRecordingRepNode::s_Calls,
                    ElementsAre("R.Redraw(TRUE)", "R.Preselect(FALSE)", "R.Highlight(FALSE)"));
        QTBRecordingRepNode::s_Calls.clear();
    }
}

TEST_P(PdmNodeSharedState, TheExtendingInterfaceMayBeTheFirstOneAsked)
{
    const CATBaseUnknown_var spNode(
        QTBCreateLoose(GetParam().className == std::string("Part") ? "QTBPdmObjNode" : "QTBPdmRelNode"));
    const QTBIPdmObjNode_var spIPdmObjNode(spNode);
    const QTBIPdmRelNode_var spIPdmRelNode(spNode);
    QTBIPdmNode* pExtending = spIPdmObjNode != NULL_var ? static_cast<QTBIPdmNode*>(spIPdmObjNode.Get())
                                                        : static_cast<QTBIPdmNode*>(spIPdmRelNode.Get());
    EXPECT_THAT(pExtending->SetPdmNodeContainer(GetPdmNodeCont()), Succeeds());
    QTBIPdmNodeCont_var spIPdmNodeCont;
    EXPECT_THAT(QTBIPdmNode_var(spNode)->GetPdmNodeContainer(&spIPdmNodeCont), Succeeds());
    EXPECT_TRUE(spIPdmNodeCont == GetPdmNodeCont());
}

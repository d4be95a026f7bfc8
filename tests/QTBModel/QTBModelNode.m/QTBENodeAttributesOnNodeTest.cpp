#include "QTBENodeAttributesOnNode.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "CATInstantiateComponent.h"
#include "CATMsgCatalog.h"
#include "QTBConstants.h"
#include "QTBEPdmNodeContOnPdmNodeCont.h"
#include "QTBFailingNode.h"
#include "QTBFakeElement.h"
#include "QTBFault.h"
#include "QTBINode.h"
#include "QTBINodeAttributes.h"
#include "QTBListValues.h"
#include "QTBMatchers.h"
#include "QTBReplacedExtension.h"
#include "QTBSchemaUtil.h"
#include "QTBStringHash.h"
#include "QTBTestFolder.h"
#include "QTBTestSession.h"
#include "QTBXmlElement.h"
#include "QTBXmlUtil.h"
#include "TIEQTBIPdmNodeCont.h"

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

// One attribute of each type, some twice.
constexpr const char* RECORD = "<o>"
                               "<a name=\"Name\">Bracket</a>"
                               "<a name=\"Names\" type=\"list\"><v>A.1</v><v>A.2</v></a>"
                               "<a name=\"Info\" type=\"nvlist\"><nv name=\"Rev\">B</nv></a>"
                               "<a name=\"Table\" type=\"table\"><row><cell>1</cell></row></a>"
                               "<a name=\"Others\" type=\"objectlist\"><o/><o/></a>"
                               "<a name=\"Owner\" type=\"object\"><o><a name=\"Name\">Smith</a></o></a>"
                               "<a name=\"Material\" type=\"string\">Steel</a>"
                               "<a name=\"Empty\" type=\"list\"/>"
                               "<b name=\"Ignored\">no attribute</b>"
                               "</o>";

class NodeAttributesTest : public QTBTestSession
{
protected:
    static CATBaseUnknown_var Create(const char* lateType, const char* key = "K1")
    {
        void* pv = nullptr;
        EXPECT_EQ(::CATInstantiateComponent(lateType, CLSID_CATBaseUnknown, &pv), S_OK);
        const auto spNode = CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pv));
        EXPECT_THAT(QTBINodeAttributes_var(spNode)->SetKey(key), Succeeds());
        return spNode;
    }

    static QTBINodeAttributes_var CreateNode(const char* key = "K1") { return Create("QTBNode", key); }

    // A node with that record.
    static QTBINodeAttributes_var Read(const char* record, const char* key = "K1")
    {
        const QTBINodeAttributes_var spNode = CreateNode(key);
        EXPECT_THAT(spNode->SetXmlElement(ReadXmlElement(record)), Succeeds());
        return spNode;
    }

    static HRESULT TryRead(const QTBINodeAttributes_var& spNode, const char* record)
    {
        return spNode->SetXmlElement(ReadXmlElement(record));
    }

    static std::vector<std::string> Names(const QTBINodeAttributes_var& spNode)
    {
        CATListValCATUnicodeString List;
        List.Append("before");
        EXPECT_THAT(spNode->GetAllAttributeNames(&List), Succeeds());
        return TextsOf(List);
    }

    template <class Operation>
    static std::vector<std::string> NamesOf(const QTBINodeAttributes_var& spNode, Operation operation)
    {
        CATListValCATUnicodeString List;
        List.Append("before");
        EXPECT_THAT(((*spNode).*operation)(&List), Succeeds());
        return TextsOf(List);
    }

    static bool IsDefined(const QTBINodeAttributes_var& spNode, const char* name)
    {
        unsigned char bIsDefined = 2;
        EXPECT_THAT(spNode->AttributeIsDefined(name, &bIsDefined), Succeeds());
        return bIsDefined == TRUE;
    }

    static std::string ValueOf(const QTBINodeAttributes_var& spNode, const char* name)
    {
        CATUnicodeString usValue;
        EXPECT_THAT(spNode->GetStringAttributeValue(name, &usValue, FALSE, FALSE), Succeeds()) << name;
        return std::string(usValue.View());
    }

    static std::string TypeOf(const QTBINodeAttributes_var& spNode, const char* name)
    {
        CATUnicodeString usType;
        EXPECT_THAT(spNode->GetAttributeDataType(name, &usType), Succeeds()) << name;
        return std::string(usType.View());
    }

    // The failure that tells the user that a node lacks an attribute.
    static testing::Matcher<HRESULT> IsNotDefined(const char* nodeText)
    {
        return FailsWith("AttributeNotDefinedERR_2001", nodeText);
    }
};

// The look-ups of one type of attributes; the tests below run for all five.
template <class Attr>
struct TypeOperations
{
    using Attribute = Attr;
    using List = CATListPtr<Attr>;
};
struct StringOperations : TypeOperations<QTBStringAttr>
{
    static constexpr auto GetNames = &QTBINodeAttributes::GetStringAttributeNames;
    static constexpr auto GetPtr = &QTBINodeAttributes::GetStringAttributePtr;
    static constexpr auto GetAll = &QTBINodeAttributes::GetStringAttributes;
    static constexpr auto POINTER = "*ppStringAttr == NULL";
    static constexpr auto LIST = "pStringAttrs != NULL";
    static constexpr auto NODE_TEXT = "K1";
    static std::vector<std::string> Names() { return {"Name", "Material"}; }
};
struct SimpleListOperations : TypeOperations<QTBSimpleListAttr>
{
    static constexpr auto GetNames = &QTBINodeAttributes::GetSimpleListAttributeNames;
    static constexpr auto GetPtr = &QTBINodeAttributes::GetSimpleListAttributePtr;
    static constexpr auto GetAll = &QTBINodeAttributes::GetSimpleListAttributes;
    static constexpr auto POINTER = "*ppSimpleListAttr == NULL";
    static constexpr auto LIST = "pSimpleListAttrs != NULL";
    static constexpr auto NODE_TEXT = "?";
    static std::vector<std::string> Names() { return {"Names", "Empty"}; }
};
struct NameValueListOperations : TypeOperations<QTBNameValueListAttr>
{
    static constexpr auto GetNames = &QTBINodeAttributes::GetNameValueListAttributeNames;
    static constexpr auto GetPtr = &QTBINodeAttributes::GetNameValueListAttributePtr;
    static constexpr auto GetAll = &QTBINodeAttributes::GetNameValueListAttributes;
    static constexpr auto POINTER = "*ppNameValueListAttr == NULL";
    static constexpr auto LIST = "pNameValueListAttrs != NULL";
    static constexpr auto NODE_TEXT = "Key:<K1>";
    static std::vector<std::string> Names() { return {"Info"}; }
};
struct TableOperations : TypeOperations<QTBTableAttr>
{
    static constexpr auto GetNames = &QTBINodeAttributes::GetTableAttributeNames;
    static constexpr auto GetPtr = &QTBINodeAttributes::GetTableAttributePtr;
    static constexpr auto GetAll = &QTBINodeAttributes::GetTableAttributes;
    static constexpr auto POINTER = "*ppTableAttr == NULL";
    static constexpr auto LIST = "pTableAttrs != NULL";
    static constexpr auto NODE_TEXT = "?";
    static std::vector<std::string> Names() { return {"Table"}; }
};
struct ObjectOperations : TypeOperations<QTBObjectAttr>
{
    static constexpr auto GetNames = &QTBINodeAttributes::GetObjectAttributeNames;
    static constexpr auto GetPtr = &QTBINodeAttributes::GetObjectAttributePtr;
    static constexpr auto GetAll = &QTBINodeAttributes::GetObjectAttributes;
    static constexpr auto POINTER = "*ppObjectAttr == NULL";
    static constexpr auto LIST = "pObjectAttrs != NULL";
    static constexpr auto NODE_TEXT = "K1";
    static std::vector<std::string> Names() { return {"Owner"}; }
};

template <class Operations>
class NodeAttributesOfTypeTest : public NodeAttributesTest
{
};

using AttributeTypes =
    testing::Types<StringOperations, SimpleListOperations, NameValueListOperations, TableOperations, ObjectOperations>;
TYPED_TEST_SUITE(NodeAttributesOfTypeTest, AttributeTypes);

} // namespace

TEST_F(NodeAttributesTest, ANodeWithoutKeyHasAnEmptyKeyAndTheHashZero)
{
    void* pv = nullptr;
    ASSERT_EQ(::CATInstantiateComponent("QTBNode", CLSID_CATBaseUnknown, &pv), S_OK);
    const QTBINodeAttributes_var spNode = CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pv));
    CATUnicodeString usKey("before");
    EXPECT_THAT(spNode->GetKey(&usKey), Succeeds());
    EXPECT_EQ(usKey, "");
    EXPECT_EQ(*spNode->GetHashKey(), 0U);
    CATBaseUnknown_var spElement;
    EXPECT_THAT(spNode->GetXmlElement(&spElement), Succeeds());
    EXPECT_TRUE(spElement == NULL_var);
    EXPECT_THAT(Names(spNode), IsEmpty());
}

TEST_F(NodeAttributesTest, AKeyIsKeptWithItsHashStartedFromZero)
{
    const QTBINodeAttributes_var spNode = CreateNode("K1");
    unsigned int* pHashKey = spNode->GetHashKey();
    for (const char* key : {"K2", "K2", "", "another key"}) {
        EXPECT_THAT(spNode->SetKey(key), Succeeds());
        CATUnicodeString usKey;
        EXPECT_THAT(spNode->GetKey(&usKey), Succeeds());
        EXPECT_EQ(usKey, key);
        unsigned int hash = 0;
        hash %= CATUnicodeString(key);
        EXPECT_EQ(*spNode->GetHashKey(), hash);
        EXPECT_EQ(spNode->GetHashKey(), pHashKey) << "the address is that of the member";
    }
}

TEST_F(NodeAttributesTest, TheOperationsOfTheKeyAreNotTraced)
{
    const QTBINodeAttributes_var spNode = CreateNode();
    CATUnicodeString usKey;
    DebugCapture capture(2);
    spNode->SetKey("K2");
    spNode->GetKey(&usKey);
    spNode->GetHashKey();
    EXPECT_EQ(capture.Text(), "");
}

TEST_F(NodeAttributesTest, TheOtherOperationsAreTracedUnderTheirNames)
{
    const QTBINodeAttributes_var spNode = CreateNode();
    CATBaseUnknown_var spElement;
    CATListValCATUnicodeString Names;
    unsigned char bIsDefined = FALSE;
    DebugCapture capture(2);
    spNode->GetXmlElement(&spElement);
    spNode->GetAllAttributeNames(&Names);
    spNode->AttributeIsDefined("Name", &bIsDefined);
    spNode->SetXmlElement(NULL_var);
    EXPECT_THAT(capture.Lines(),
                testing::IsSupersetOf(
                    {"-> QTBENodeAttributesOnNode::GetXmlElement", "-> QTBENodeAttributesOnNode::GetAllAttributeNames",
                     "-> QTBENodeAttributesOnNode::AttributeIsDefined", "-> QTBENodeAttributesOnNode::SetXmlElement"}));
}

TEST_F(NodeAttributesTest, AnElementWithoutAttributesGivesANodeWithoutAttributes)
{
    const QTBINodeAttributes_var spNode = Read("<o><b name=\"Name\">no attribute</b>text</o>");
    EXPECT_THAT(Names(spNode), IsEmpty());
    EXPECT_THAT(NamesOf(spNode, &QTBINodeAttributes::GetStringAttributeNames), IsEmpty());
    EXPECT_THAT(NamesOf(spNode, &QTBINodeAttributes::GetSimpleListAttributeNames), IsEmpty());
    EXPECT_THAT(NamesOf(spNode, &QTBINodeAttributes::GetNameValueListAttributeNames), IsEmpty());
    EXPECT_THAT(NamesOf(spNode, &QTBINodeAttributes::GetTableAttributeNames), IsEmpty());
    EXPECT_THAT(NamesOf(spNode, &QTBINodeAttributes::GetObjectAttributeNames), IsEmpty());
    EXPECT_THAT(NamesOf(spNode, &QTBINodeAttributes::GetStringAttributeValues), IsEmpty());
}

TEST_F(NodeAttributesTest, ARecordsAttributesStandInDocumentOrderWithTheirTypes)
{
    const QTBINodeAttributes_var spNode = Read(RECORD);
    EXPECT_THAT(Names(spNode), ElementsAre("Name", "Names", "Info", "Table", "Owner", "Material", "Empty"));
    EXPECT_EQ(TypeOf(spNode, "Name"), usSTRING.View());
    EXPECT_EQ(TypeOf(spNode, "Material"), usSTRING.View());
    EXPECT_EQ(TypeOf(spNode, "Names"), usSIMPLE_LIST.View());
    EXPECT_EQ(TypeOf(spNode, "Info"), usNAME_VALUE_LIST.View());
    EXPECT_EQ(TypeOf(spNode, "Table"), usTABLE.View());
    EXPECT_EQ(TypeOf(spNode, "Owner"), usOBJECT.View());
}

TEST_F(NodeAttributesTest, AnObjectListIsSkippedSilently)
{
    DebugCapture capture;
    const QTBINodeAttributes_var spNode = Read("<o><a name=\"Others\" type=\"objectlist\"><o/></a><a name=\"N\"/></o>");
    EXPECT_FALSE(IsDefined(spNode, "Others"));
    EXPECT_THAT(Names(spNode), ElementsAre("N"));
    CATUnicodeString usType("before");
    EXPECT_THAT(spNode->GetAttributeDataType("Others", &usType), FailsQuietly());
    EXPECT_EQ(capture.Text(), "");
}

TEST_F(NodeAttributesTest, TwoObjectListsOfOneNameAreSkippedBoth)
{
    EXPECT_THAT(
        Names(Read("<o><a name=\"L\" type=\"objectlist\"/><a name=\"L\" type=\"objectlist\"/><a name=\"L\"/></o>")),
        ElementsAre("L"));
}

TEST_F(NodeAttributesTest, TheElementIsKeptAndAnsweredAgain)
{
    const QTBINodeAttributes_var spNode = CreateNode();
    const CATIDOMElement_var spElement = ReadXmlElement(RECORD);
    ASSERT_THAT(spNode->SetXmlElement(spElement), Succeeds());
    CATBaseUnknown_var spAnswer;
    EXPECT_THAT(spNode->GetXmlElement(&spAnswer), Succeeds());
    EXPECT_TRUE(spAnswer == spElement);
}

TEST_F(NodeAttributesTest, ALaterElementReplacesTheRecordCompletely)
{
    const QTBINodeAttributes_var spNode = Read(RECORD);
    ASSERT_THAT(TryRead(spNode, "<o><a name=\"Other\">1</a><a name=\"Name\" type=\"list\"><v>x</v></a></o>"),
                Succeeds());
    EXPECT_THAT(Names(spNode), ElementsAre("Other", "Name"));
    EXPECT_THAT(NamesOf(spNode, &QTBINodeAttributes::GetStringAttributeNames), ElementsAre("Other"));
    EXPECT_THAT(NamesOf(spNode, &QTBINodeAttributes::GetTableAttributeNames), IsEmpty());
    EXPECT_EQ(TypeOf(spNode, "Name"), usSIMPLE_LIST.View());
    EXPECT_FALSE(IsDefined(spNode, "Material"));
}

TEST_F(NodeAttributesTest, TheElementThatANodeHasCanBeReadAnew)
{
    const QTBINodeAttributes_var spNode = Read("<o><a name=\"Name\">Bracket</a></o>");
    spNode->SetStringAttributeValue("Name", "changed");
    CATBaseUnknown_var spElement;
    spNode->GetXmlElement(&spElement);
    EXPECT_THAT(spNode->SetXmlElement(spElement), Succeeds());
    EXPECT_EQ(ValueOf(spNode, "Name"), "Bracket");
}

TEST_F(NodeAttributesTest, SomethingThatIsNoElementFailsAndLeavesTheRecordEmpty)
{
    const QTBINodeAttributes_var spNode = Read(RECORD);
    EXPECT_THAT(spNode->SetXmlElement(NULL_var), FailsCall("QTBXmlUtil::GetElements"));
    EXPECT_THAT(Names(spNode), IsEmpty());
    EXPECT_THAT(spNode->SetXmlElement(CreateNode()), FailsCall("QTBXmlUtil::GetElements"));
}

TEST_F(NodeAttributesTest, TwoAttributesOfOneNameFailAtTheSecondAndTheFirstStays)
{
    const QTBINodeAttributes_var spNode = CreateNode();
    DebugCapture capture;
    EXPECT_THAT(TryRead(spNode, "<o><a name=\"Name\">first</a><a name=\"Name\">second</a><a name=\"Third\"/></o>"),
                FailsAssertion("bAttributeIsAlreadyDefined == FALSE"));
    EXPECT_THAT(capture.Lines(), ElementsAre(StartsWith("bAttributeIsAlreadyDefined == FALSE : assertion FAILED"),
                                             StartsWith("SetAttributeAsXmlNode : HRESULT FAILED")));
    EXPECT_THAT(Names(spNode), ElementsAre("Name"));
    EXPECT_EQ(ValueOf(spNode, "Name"), "first");
}

TEST_F(NodeAttributesTest, TwoAttributesOfOneNameFailWhateverTheirTypes)
{
    EXPECT_THAT(TryRead(CreateNode(), "<o><a name=\"N\" type=\"list\"/><a name=\"N\"/></o>"),
                FailsAssertion("bAttributeIsAlreadyDefined == FALSE"));
    EXPECT_THAT(TryRead(CreateNode(), "<o><a name=\"N\"/><a name=\"N\" type=\"objectlist\"/></o>"),
                FailsAssertion("bAttributeIsAlreadyDefined == FALSE"));
}

TEST_F(NodeAttributesTest, AnAttributeWithoutNameFails)
{
    EXPECT_THAT(TryRead(CreateNode(), "<o><a>text</a></o>"), FailsAssertion("bHasNameAttribute"));
    EXPECT_THAT(TryRead(CreateNode(), "<o><a name=\"\">text</a></o>"), FailsAssertion("pNewStringAttr->IsValid()"));
}

TEST_F(NodeAttributesTest, AnUnknownTypeFails)
{
    EXPECT_THAT(TryRead(CreateNode(), "<o><a name=\"Date\" type=\"date\">1</a></o>"), FailsAssertion("FALSE"));
    EXPECT_THAT(TryRead(CreateNode(), "<o><a name=\"Date\" type=\"\">1</a></o>"), FailsAssertion("FALSE"));
}

TEST_F(NodeAttributesTest, AnAttributeThatCannotBeReadFailsUnderTheTextOfItsType)
{
    const QTBINodeAttributes_var spNode = CreateNode();
    EXPECT_THAT(TryRead(spNode, "<o><a name=\"S\"><b/></a></o>"), FailsAssertion("pNewStringAttr->IsValid()"));
    EXPECT_THAT(TryRead(spNode, "<o><a name=\"L\" type=\"list\"><b/></a></o>"),
                FailsAssertion("pNewSimpleListAttr->IsValid()"));
    EXPECT_THAT(TryRead(spNode, "<o><a name=\"N\" type=\"nvlist\"><b/></a></o>"),
                FailsAssertion("pNewNameValueListAttr->IsValid()"));
    EXPECT_THAT(TryRead(spNode, "<o><a name=\"T\" type=\"table\"><b/></a></o>"),
                FailsAssertion("pNewTableAttr->IsValid()"));
    EXPECT_THAT(TryRead(spNode, "<o><a name=\"O\" type=\"object\"><o><a/></o></a></o>"),
                FailsAssertion("pNewObjectAttr->IsValid()"));
    EXPECT_THAT(Names(spNode), IsEmpty());
    EXPECT_FALSE(IsDefined(spNode, "O"));
}

TEST_F(NodeAttributesTest, TheFirstBadAttributeEndsTheReadingAndThoseBeforeItStay)
{
    const QTBINodeAttributes_var spNode = CreateNode();
    EXPECT_TRUE(FAILED(TryRead(spNode, "<o><a name=\"A\">1</a><a name=\"B\" type=\"list\"/><a/><a name=\"C\"/></o>")));
    EXPECT_THAT(Names(spNode), ElementsAre("A", "B"));
    EXPECT_EQ(TypeOf(spNode, "B"), usSIMPLE_LIST.View());
    EXPECT_EQ(ValueOf(spNode, "A"), "1");
    CATBaseUnknown_var spElement;
    spNode->GetXmlElement(&spElement);
    EXPECT_TRUE(spElement != NULL_var) << "the element is kept all the same";
}

TEST_F(NodeAttributesTest, AnAttributeElementIsCheckedStepByStep)
{
    const QTBINodeAttributes_var spNode = CreateNode();
    EXPECT_THAT(spNode->SetAttributeAsXmlNode(NULL_var), FailsWithMessage("NoInterfaceERR_1002"));
    EXPECT_THAT(spNode->SetAttributeAsXmlNode(CreateNode()), FailsWithMessage("NoInterfaceERR_1002"));
    QTBFakeElement element;
    const CATBaseUnknown_var spElement(&element);
    element.m_hrHasAttribute = E_FAIL;
    EXPECT_THAT(spNode->SetAttributeAsXmlNode(spElement), FailsCall("spIDOMElement->HasAttribute"));
    element.m_hrHasAttribute = S_OK;
    element.m_hrGetAttribute = E_FAIL;
    EXPECT_THAT(spNode->SetAttributeAsXmlNode(spElement), FailsCall("spIDOMElement->GetAttribute"));
    EXPECT_THAT(Names(spNode), IsEmpty());
}

TEST_F(NodeAttributesTest, AnAttributeElementCanBeAddedToARecordByItself)
{
    const QTBINodeAttributes_var spNode = Read("<o><a name=\"A\">1</a></o>");
    EXPECT_THAT(spNode->SetAttributeAsXmlNode(ReadXmlElement("<a name=\"B\" type=\"list\"><v>x</v></a>")), Succeeds());
    EXPECT_THAT(Names(spNode), ElementsAre("A", "B"));
    EXPECT_THAT(spNode->SetAttributeAsXmlNode(ReadXmlElement("<a name=\"A\">2</a>")),
                FailsAssertion("bAttributeIsAlreadyDefined == FALSE"));
}

TEST_F(NodeAttributesTest, AnObjectAttributeCreatesThePdmObjectNodeInTheGlobalContainer)
{
    const QTBINodeAttributes_var spNode =
        Read("<o><a name=\"Owner\" type=\"object\"><o><a name=\"Name\">Smith</a></o></a></o>", "K1");
    const CATBaseUnknown_var spOwner = FindNode("K1.Owner");
    ASSERT_TRUE(spOwner != NULL_var);
    EXPECT_TRUE(QTBIPdmObjNode_var(spOwner) != NULL_var);
    EXPECT_EQ(AttributeOf(spOwner, "Name"), "Smith");
    QTBObjectAttr* pObjectAttr = NULL;
    ASSERT_THAT(spNode->GetObjectAttributePtr("Owner", &pObjectAttr), Succeeds());
    CATBaseUnknown_var spObjectNode;
    EXPECT_EQ(pObjectAttr->GetObjectNode(&spObjectNode), S_OK);
    EXPECT_TRUE(spObjectNode == spOwner);
}

TEST_F(NodeAttributesTest, AnObjectInsideAnObjectIsKeyedByItsOwner)
{
    Read("<o><a name=\"Owner\" type=\"object\"><o>"
         "<a name=\"Group\" type=\"object\"><embedded><a name=\"Name\">Design</a></embedded></a></o></a></o>",
         "K1");
    EXPECT_EQ(AttributeOf(FindNode("K1.Owner.Group"), "Name"), "Design");
}

TEST_F(NodeAttributesTest, AnObjectAttributeWithBothFormsUsesTheObject)
{
    Read("<o><a name=\"Owner\" type=\"object\"><embedded><a name=\"Name\">embedded</a></embedded>"
         "<o><a name=\"Name\">object</a></o></a></o>");
    EXPECT_EQ(AttributeOf(FindNode("K1.Owner"), "Name"), "object");
}

TEST_F(NodeAttributesTest, AnObjectAttributeNeedsExactlyOneObject)
{
    const QTBINodeAttributes_var spNode = CreateNode();
    EXPECT_THAT(TryRead(spNode, "<o><a name=\"Owner\" type=\"object\"><o/><o/></a></o>"),
                FailsAssertion("ChildXmlNodes.Size() <= 1"));
    EXPECT_THAT(TryRead(spNode, "<o><a name=\"Owner\" type=\"object\"><embedded/><o/><o/></a></o>"),
                FailsAssertion("ChildXmlNodes.Size() <= 1"));
    EXPECT_THAT(TryRead(spNode, "<o><a name=\"Owner\" type=\"object\"/></o>"),
                FailsAssertion("ChildXmlNodes.Size() == 1"));
    EXPECT_THAT(TryRead(spNode, "<o><a name=\"Owner\" type=\"object\"><embedded/><embedded/></a></o>"),
                FailsAssertion("ChildXmlNodes.Size() == 1"));
    EXPECT_FALSE(IsDefined(spNode, "Owner"));
}

namespace {

class FaultyPdmNodeCont : public QTBEPdmNodeContOnPdmNodeCont
{
public:
    QTB_FAULTY_OPERATION(QTBEPdmNodeContOnPdmNodeCont, CreatePdmObjNode)
};

// The session's container fails to create object nodes on demand.
class NodeAttributesOfFaultyContainerTest : public NodeAttributesTest
{
protected:
    QTBReplacedExtension m_Replaced{"QTBPdmNodeCont", QTBIPdmNodeCont::MetaObject(),
                                    QTBFactoryOf<TIEQTBIPdmNodeCont, QTBIPdmNodeCont, FaultyPdmNodeCont>()};
};

} // namespace

TEST_F(NodeAttributesOfFaultyContainerTest, AnObjectNodeThatCannotBeCreatedFailsTheReading)
{
    const QTBINodeAttributes_var spNode = CreateNode();
    const char* record = "<o><a name=\"Owner\" type=\"object\"><o/></a></o>";
    {
        const QTBFault fault("CreatePdmObjNode");
        EXPECT_THAT(TryRead(spNode, record), FailsCall("spIPdmNodeCont->CreatePdmObjNode"));
    }
    {
        const QTBFault fault("CreatePdmObjNode", NULL_var, 0, QTBFault::DoesNothing);
        EXPECT_THAT(TryRead(spNode, record), LacksInterface("spINodeAttributesOnNewPdmObjNode"));
    }
    EXPECT_THAT(Names(spNode), IsEmpty());
    EXPECT_THAT(TryRead(spNode, record), Succeeds());
}

TEST_F(NodeAttributesTest, AnUndefinedNameHasNoDataTypeAndFailsQuietly)
{
    const QTBINodeAttributes_var spNode = Read(RECORD);
    CATUnicodeString usType("before");
    DebugCapture capture;
    EXPECT_THAT(spNode->GetAttributeDataType("Unknown", &usType), FailsQuietly());
    EXPECT_THAT(spNode->GetAttributeDataType("name", &usType), FailsQuietly());
    EXPECT_EQ(usType, "before");
    EXPECT_EQ(capture.Text(), "");
}

TEST_F(NodeAttributesTest, DefinedNamesAreThoseOfTheRecordExactly)
{
    const QTBINodeAttributes_var spNode = Read(RECORD);
    EXPECT_TRUE(IsDefined(spNode, "Name"));
    EXPECT_TRUE(IsDefined(spNode, "Owner"));
    EXPECT_FALSE(IsDefined(spNode, "name"));
    EXPECT_FALSE(IsDefined(spNode, "Ignored"));
    EXPECT_FALSE(IsDefined(spNode, ""));
}

TEST_F(NodeAttributesTest, AnAttributeIsFoundByItsNameWhateverItsType)
{
    const QTBINodeAttributes_var spNode = Read(RECORD);
    for (const char* name : {"Name", "Names", "Info", "Table", "Owner", "Material", "Empty"}) {
        QTBNodeAttr* pNodeAttr = NULL;
        ASSERT_THAT(spNode->GetAttribute(name, &pNodeAttr), Succeeds()) << name;
        CATUnicodeString usName;
        EXPECT_EQ(pNodeAttr->GetName(&usName), S_OK);
        EXPECT_EQ(usName, name);
    }
    QTBNodeAttr* pNodeAttr = NULL;
    QTBStringAttr* pStringAttr = NULL;
    spNode->GetAttribute("Material", &pNodeAttr);
    spNode->GetStringAttributePtr("Material", &pStringAttr);
    EXPECT_EQ(pNodeAttr, pStringAttr) << "the typed lists are views on the same objects";
}

TEST_F(NodeAttributesTest, AnAttributeNeedsAnEmptyPointerToGoTo)
{
    const QTBINodeAttributes_var spNode = Read(RECORD);
    EXPECT_THAT(spNode->GetAttribute("Name", NULL), FailsAssertion("ppNodeAttr != NULL"));
    QTBNodeAttr* pNodeAttr = NULL;
    ASSERT_THAT(spNode->GetAttribute("Name", &pNodeAttr), Succeeds());
    QTBNodeAttr* const pFormer = pNodeAttr;
    EXPECT_THAT(spNode->GetAttribute("Material", &pNodeAttr), FailsAssertion("*ppNodeAttr == NULL"));
    EXPECT_THAT(spNode->GetAttribute("Unknown", &pNodeAttr), FailsAssertion("*ppNodeAttr == NULL"));
    EXPECT_EQ(pNodeAttr, pFormer);
}

TEST_F(NodeAttributesTest, AnUndefinedAttributeIsReportedWithTheNodesDescription)
{
    QTBNodeAttr* pNodeAttr = NULL;
    EXPECT_THAT(Read(RECORD)->GetAttribute("Unknown", &pNodeAttr), IsNotDefined("?"));
    EXPECT_EQ(pNodeAttr, nullptr);
    const CATBaseUnknown_var spNode = Create("QTBPdmObjNode", "DEFAULT_ROOT_NODE");
    CATUnicodeString usDescription;
    ASSERT_THAT(QTBINode_var(spNode)->GetNodeDescriptionString(&usDescription), Succeeds());
    EXPECT_THAT(QTBINodeAttributes_var(spNode)->GetAttribute("Unknown", &pNodeAttr),
                IsNotDefined(usDescription.ConvertToChar()));
}

TEST_F(NodeAttributesTest, TheMessageAboutAnUndefinedAttributeNamesNodeAndAttribute)
{
    QTBStringAttr* pStringAttr = NULL;
    const HRESULT hr = CreateNode("K1")->GetStringAttributePtr("Colour", &pStringAttr);
    const CATError* pError = CATError::CATGetLastError(hr, NULL);
    ASSERT_NE(pError, nullptr);
    EXPECT_THAT(pError->GetNLSParameters(), ElementsAre(CATUnicodeString("K1"), CATUnicodeString("Colour")));
    EXPECT_THAT(std::string(pError->GetNLSMessage().View()), HasSubstr("Colour"));
}

TEST_F(NodeAttributesTest, AComponentWithoutIdentityCannotSayWhatLacksAnAttribute)
{
    const QTBINodeAttributes_var spNode(CreateNodeWithoutRelations());
    QTBNodeAttr* pNodeAttr = NULL;
    QTBSimpleListAttr* pSimpleListAttr = NULL;
    QTBTableAttr* pTableAttr = NULL;
    EXPECT_THAT(spNode->GetAttribute("Unknown", &pNodeAttr), LacksInterface("spINodeOnThis"));
    EXPECT_THAT(spNode->GetSimpleListAttributePtr("Unknown", &pSimpleListAttr), LacksInterface("spINodeOnThis"));
    EXPECT_THAT(spNode->GetTableAttributePtr("Unknown", &pTableAttr), LacksInterface("spINodeOnThis"));
}

TEST_F(NodeAttributesTest, AFailingIdentityIsReportedInsteadOfTheMissingAttribute)
{
    const QTBINodeAttributes_var spNode(CreateFailingNode());
    QTBNodeAttr* pNodeAttr = NULL;
    QTBSimpleListAttr* pSimpleListAttr = NULL;
    QTBNameValueListAttr* pNameValueListAttr = NULL;
    QTBTableAttr* pTableAttr = NULL;
    {
        const QTBFault fault("GetNodeDescriptionString");
        EXPECT_THAT(spNode->GetAttribute("Unknown", &pNodeAttr), FailsCall("spINodeOnThis->GetNodeDescriptionString"));
        EXPECT_THAT(spNode->GetTableAttributePtr("Unknown", &pTableAttr),
                    FailsCall("spINodeOnThis->GetNodeDescriptionString"));
    }
    {
        const QTBFault fault("GetPdmClass");
        EXPECT_THAT(spNode->GetSimpleListAttributePtr("Unknown", &pSimpleListAttr),
                    FailsCall("spINodeOnThis->GetPdmClass"));
    }
    {
        const QTBFault fault("GetKey");
        EXPECT_THAT(spNode->GetNameValueListAttributePtr("Unknown", &pNameValueListAttr),
                    FailsCall("spINodeAttributesOnThis->GetKey"));
    }
}

TEST_F(NodeAttributesTest, APdmNodesClassIsNamedWhenItLacksAList)
{
    Update(Part("P1"));
    const QTBINodeAttributes_var spNode(FindNode("P1"));
    QTBSimpleListAttr* pSimpleListAttr = NULL;
    EXPECT_THAT(spNode->GetSimpleListAttributePtr("Unknown", &pSimpleListAttr), IsNotDefined("Part"));
}

TYPED_TEST(NodeAttributesOfTypeTest, TheNamesOfATypeStandInDocumentOrder)
{
    const QTBINodeAttributes_var spNode = this->Read(RECORD);
    EXPECT_EQ(this->NamesOf(spNode, TypeParam::GetNames), TypeParam::Names());
    EXPECT_THAT(((*spNode).*TypeParam::GetNames)(NULL), FailsAssertion("pNames != NULL"));
}

TYPED_TEST(NodeAttributesOfTypeTest, TheAttributesOfATypeAreGivenAsTheyStand)
{
    const QTBINodeAttributes_var spNode = this->Read(RECORD);
    typename TypeParam::List Attributes;
    ASSERT_THAT(((*spNode).*TypeParam::GetAll)(&Attributes), Succeeds());
    std::vector<std::string> names;
    for (const auto* pAttribute : Attributes) {
        CATUnicodeString usName;
        EXPECT_EQ(pAttribute->GetName(&usName), S_OK);
        names.emplace_back(usName.View());
    }
    EXPECT_EQ(names, TypeParam::Names());
    EXPECT_THAT(((*spNode).*TypeParam::GetAll)(NULL), FailsAssertion(TypeParam::LIST));
}

TYPED_TEST(NodeAttributesOfTypeTest, ALaterRecordTakesTheAttributesOfATypeAway)
{
    const QTBINodeAttributes_var spNode = this->Read(RECORD);
    ASSERT_THAT(this->TryRead(spNode, "<o/>"), Succeeds());
    typename TypeParam::List Attributes;
    ASSERT_THAT(((*spNode).*TypeParam::GetAll)(&Attributes), Succeeds());
    EXPECT_EQ(Attributes.Size(), 0);
}

TYPED_TEST(NodeAttributesOfTypeTest, AnAttributeIsFoundByItsNameWithinItsType)
{
    const QTBINodeAttributes_var spNode = this->Read(RECORD);
    typename TypeParam::List Attributes;
    ((*spNode).*TypeParam::GetAll)(&Attributes);
    for (int i = 1; i <= Attributes.Size(); ++i) {
        typename TypeParam::Attribute* pAttribute = NULL;
        const std::string name = TypeParam::Names()[static_cast<std::size_t>(i) - 1];
        EXPECT_THAT(((*spNode).*TypeParam::GetPtr)(CATUnicodeString(name), &pAttribute), Succeeds());
        EXPECT_EQ(pAttribute, Attributes[i]);
    }
}

TYPED_TEST(NodeAttributesOfTypeTest, AnAttributeOfAnotherTypeIsNotFound)
{
    const QTBINodeAttributes_var spNode = this->Read(RECORD);
    for (const char* name : {"Name", "Names", "Info", "Table", "Owner"}) {
        const std::vector<std::string> own = TypeParam::Names();
        typename TypeParam::Attribute* pAttribute = NULL;
        const HRESULT hr = ((*spNode).*TypeParam::GetPtr)(name, &pAttribute);
        if (std::find(own.begin(), own.end(), name) == own.end()) {
            EXPECT_THAT(hr, this->IsNotDefined(TypeParam::NODE_TEXT)) << name;
            EXPECT_EQ(pAttribute, nullptr);
        } else {
            EXPECT_THAT(hr, Succeeds()) << name;
        }
    }
}

TYPED_TEST(NodeAttributesOfTypeTest, APointerThatIsNotEmptyFailsBeforeAnySearch)
{
    const QTBINodeAttributes_var spNode = this->Read(RECORD);
    typename TypeParam::Attribute* pAttribute = NULL;
    const CATUnicodeString usName(TypeParam::Names()[0]);
    ASSERT_THAT(((*spNode).*TypeParam::GetPtr)(usName, &pAttribute), Succeeds());
    typename TypeParam::Attribute* const pFormer = pAttribute;
    EXPECT_THAT(((*spNode).*TypeParam::GetPtr)(usName, &pAttribute), FailsAssertion(TypeParam::POINTER));
    EXPECT_THAT(((*spNode).*TypeParam::GetPtr)("Unknown", &pAttribute), FailsAssertion(TypeParam::POINTER));
    EXPECT_EQ(pAttribute, pFormer);
}

TEST_F(NodeAttributesTest, ANodeThatIsDestroyedTakesItsAttributesAlong)
{
    CATBaseUnknown_var spOwner;
    {
        const QTBINodeAttributes_var spNode = Read(RECORD);
        spOwner = FindNode("K1.Owner");
        spOwner->AddRef();
        EXPECT_GT(spOwner->Release(), 2U) << "the object attribute holds its node";
    }
    spOwner->AddRef();
    EXPECT_EQ(spOwner->Release(), 2U) << "the test and the container";
}

TEST_F(NodeAttributesTest, StringValuesAreReadAndChangedByName)
{
    const QTBINodeAttributes_var spNode = Read(RECORD);
    EXPECT_THAT(NamesOf(spNode, &QTBINodeAttributes::GetStringAttributeValues), ElementsAre("Bracket", "Steel"));
    EXPECT_THAT(spNode->SetStringAttributeValue("Material", "Aluminium"), Succeeds());
    EXPECT_EQ(ValueOf(spNode, "Material"), "Aluminium");
    EXPECT_THAT(NamesOf(spNode, &QTBINodeAttributes::GetStringAttributeValues), ElementsAre("Bracket", "Aluminium"));
    EXPECT_THAT(spNode->GetStringAttributeValues(NULL), FailsAssertion("pValues"));
}

TEST_F(NodeAttributesTest, AChangedValueDoesNotTouchTheElement)
{
    const QTBINodeAttributes_var spNode = Read("<o><a name=\"Name\">Bracket</a></o>");
    spNode->SetStringAttributeValue("Name", "Plate");
    CATBaseUnknown_var spElement;
    spNode->GetXmlElement(&spElement);
    CATIDOMElement_var spAttribute;
    ASSERT_EQ(QTBXmlUtil::GetSingleAttributeElement(spElement, "Name", &spAttribute), S_OK);
    CATUnicodeString usText;
    ASSERT_EQ(QTBXmlUtil::GetCharData(spAttribute, &usText), S_OK);
    EXPECT_EQ(usText, "Bracket");
}

TEST_F(NodeAttributesTest, ChangingAnUndefinedValueFails)
{
    const QTBINodeAttributes_var spNode = Read(RECORD);
    DebugCapture capture;
    EXPECT_THAT(spNode->SetStringAttributeValue("Unknown", "1"), IsNotDefined("K1"));
    EXPECT_THAT(capture.Lines(), ElementsAre(StartsWith("GetStringAttributePtr : HRESULT FAILED")));
    EXPECT_THAT(spNode->SetStringAttributeValue("Names", "1"), IsNotDefined("K1"));
}

TEST_F(NodeAttributesTest, AValueOfASimpleListIsItsFirstWhenListsAreTriedToo)
{
    const QTBINodeAttributes_var spNode = Read(RECORD);
    CATUnicodeString usValue("before");
    EXPECT_THAT(spNode->GetStringAttributeValue("Names", &usValue, TRUE, FALSE), Succeeds());
    EXPECT_EQ(usValue, "A.1");
    usValue = "before";
    EXPECT_THAT(spNode->GetStringAttributeValue("Names", &usValue, FALSE, FALSE), IsNotDefined("K1"));
    EXPECT_EQ(usValue, "before");
    EXPECT_THAT(spNode->GetStringAttributeValue("Name", &usValue, TRUE, FALSE), Succeeds());
    EXPECT_EQ(usValue, "Bracket");
}

TEST_F(NodeAttributesTest, AnEmptyListLeavesTheValueUntouchedAndSucceeds)
{
    CATUnicodeString usValue("before");
    EXPECT_THAT(Read(RECORD)->GetStringAttributeValue("Empty", &usValue, TRUE, FALSE), Succeeds());
    EXPECT_EQ(usValue, "before");
}

TEST_F(NodeAttributesTest, AValueThatIsNeitherAStringNorAListIsReportedByTheLookUpThatWasTriedLast)
{
    const QTBINodeAttributes_var spNode = Read(RECORD);
    CATUnicodeString usValue;
    DebugCapture capture;
    EXPECT_THAT(spNode->GetStringAttributeValue("Info", &usValue, FALSE, FALSE), IsNotDefined("K1"));
    EXPECT_THAT(spNode->GetStringAttributeValue("Info", &usValue, TRUE, FALSE), IsNotDefined("?"));
    EXPECT_THAT(spNode->GetStringAttributeValue("Unknown", &usValue, TRUE, TRUE), IsNotDefined("?"));
    EXPECT_EQ(capture.Text(), "") << "the look-up's own result is passed on, not reported again";
}

TEST_F(NodeAttributesTest, AValueNeedsSomewhereToGo)
{
    const QTBINodeAttributes_var spNode = Read(RECORD);
    EXPECT_THAT(spNode->GetStringAttributeValue("Name", NULL, FALSE, FALSE), FailsCall("pStringAttr->GetValue"));
    EXPECT_THAT(spNode->GetStringAttributeValue("Names", NULL, TRUE, FALSE), FailsCall("pSimpleListAttr->GetValue"));
}

TEST_F(NodeAttributesTest, AValueOfADataSourceIsShownByItsDisplayNameOnRequest)
{
    const QTBINodeAttributes_var spNode = Read("<o><a name=\"State\">20</a><a name=\"Name\">20</a></o>");
    CATUnicodeString usValue;
    EXPECT_THAT(spNode->GetStringAttributeValue("State", &usValue, FALSE, FALSE), Succeeds());
    EXPECT_EQ(usValue, "20");
    EXPECT_THAT(spNode->GetStringAttributeValue("State", &usValue, FALSE, TRUE), Succeeds());
    EXPECT_EQ(usValue, "In review");
    EXPECT_THAT(spNode->GetStringAttributeValue("Name", &usValue, FALSE, TRUE), Succeeds());
    EXPECT_EQ(usValue, "20") << "an attribute without data source";
}

TEST_F(NodeAttributesTest, AValueThatTheDataSourceDoesNotKnowIsShownAsItStands)
{
    CATUnicodeString usValue;
    DebugCapture capture;
    EXPECT_THAT(Read("<o><a name=\"State\">99</a></o>")->GetStringAttributeValue("State", &usValue, FALSE, TRUE),
                Succeeds());
    EXPECT_EQ(usValue, "99");
    EXPECT_EQ(capture.Text(), "");
}

TEST_F(NodeAttributesTest, AChangeToADisplayNameIsTraced)
{
    const QTBINodeAttributes_var spNode = Read("<o><a name=\"State\">10</a></o>");
    CATUnicodeString usValue;
    DebugCapture capture;
    EXPECT_THAT(spNode->GetStringAttributeValue("State", &usValue, FALSE, TRUE), Succeeds());
    EXPECT_THAT(capture.Lines(), ElementsAre("QTBENodeAttributesOnNode::GetStringAttributeValue -> changing attribute "
                                             "value from '10' to 'In work'."));
}

namespace {

// A schema and a catalog of the test's own.
class NodeAttributesOfSchemaTest : public NodeAttributesTest
{
protected:
    void SetUp() override
    {
        NodeAttributesTest::SetUp();
        m_Folder.Write("TestDisplayNames.CATNls", "First = \"2\";\nSecond = \"two\";\nThird = \"3\";\n");
        CATMsgCatalog::SetSearchPath({CATUnicodeString(m_Folder.GetPath()), QTB_SOURCE_DIR "/resources/msgcatalog"});
    }
    void TearDown() override
    {
        CATMsgCatalog::SetSearchPath({QTB_SOURCE_DIR "/resources/msgcatalog"});
        EXPECT_EQ(QTBSchemaUtil::LoadSchema(QTB_SOURCE_DIR "/resources/schema/QTBSchema.xml"), S_OK);
        NodeAttributesTest::TearDown();
    }

    void Load(const std::string& values, const char* showNames = "true")
    {
        const std::string file = m_Folder.Write(
            "schema.xml", std::string("<qtbSchema system=\"ENOVIA_MATRIX\" catalog=\"TestDisplayNames\" "
                                      "showDataSourceNlsValues=\"") +
                              showNames +
                              "\"><attributeNames class=\"C\" key=\"K\" relation=\"R\" left=\"L\" right=\"T\" "
                              "leftClass=\"LC\" rightClass=\"RC\"/><dataSources><dataSource name=\"Source\">" +
                              values +
                              "</dataSource></dataSources><attributes><attribute name=\"State\" nlsKey=\"State\" "
                              "dataSource=\"Source\"/></attributes><objects><object name=\"Part\" "
                              "nlsKey=\"Part\"/></objects><relations/></qtbSchema>");
        const HRESULT hr = QTBSchemaUtil::LoadSchema(CATUnicodeString(file));
        ASSERT_EQ(hr, S_OK) << CATError::CATGetLastError(hr, NULL)->GetNLSMessage();
    }

    static std::string Display(const char* value)
    {
        const QTBINodeAttributes_var spNode = Read((std::string("<o><a name=\"State\">") + value + "</a></o>").c_str());
        CATUnicodeString usValue;
        EXPECT_THAT(spNode->GetStringAttributeValue("State", &usValue, FALSE, TRUE), Succeeds());
        return std::string(usValue.View());
    }

    QTBTestFolder m_Folder;
};

} // namespace

TEST_F(NodeAttributesOfSchemaTest, TheWalkThroughADataSourceGoesOnBehindAMatch)
{
    Load("<value name=\"1\" displayName=\"First\"/><value name=\"2\" displayName=\"Second\"/>");
    EXPECT_EQ(Display("1"), "two") << "the display name is a stored name again";
    EXPECT_EQ(Display("2"), "two");
    Load("<value name=\"2\" displayName=\"Second\"/><value name=\"1\" displayName=\"First\"/>");
    EXPECT_EQ(Display("1"), "2") << "what stands before the match is not looked at again";
}

TEST_F(NodeAttributesOfSchemaTest, AValueWithoutDisplayNameIsShownAsItStands)
{
    Load("<value name=\"1\"/><value name=\"2\" displayName=\"Second\"/>");
    EXPECT_EQ(Display("1"), "1");
}

TEST_F(NodeAttributesOfSchemaTest, DisplayNamesAreShownOnlyWhenTheSchemaSaysSo)
{
    Load("<value name=\"1\" displayName=\"First\"/>", "false");
    EXPECT_EQ(Display("1"), "1");
}

TEST_F(NodeAttributesTest, AnAddedValueStandsInAllListsAndInTheElement)
{
    const QTBINodeAttributes_var spNode = Read("<o><a name=\"Name\">Bracket</a></o>");
    EXPECT_THAT(spNode->AddStringAttributeValue("Material", "Steel"), Succeeds());
    EXPECT_THAT(Names(spNode), ElementsAre("Name", "Material"));
    EXPECT_EQ(TypeOf(spNode, "Material"), usSTRING.View());
    EXPECT_THAT(NamesOf(spNode, &QTBINodeAttributes::GetStringAttributeNames), ElementsAre("Name", "Material"));
    EXPECT_EQ(ValueOf(spNode, "Material"), "Steel");
    CATBaseUnknown_var spElement;
    spNode->GetXmlElement(&spElement);
    CATIDOMElement_var spAttribute;
    ASSERT_EQ(QTBXmlUtil::GetSingleAttributeElement(spElement, "Material", &spAttribute), S_OK);
    CATUnicodeString usText;
    EXPECT_EQ(QTBXmlUtil::GetCharData(spAttribute, &usText), S_OK);
    EXPECT_EQ(usText, "Steel");
}

TEST_F(NodeAttributesTest, AnAddedValueMayHaveAnyText)
{
    const QTBINodeAttributes_var spNode = Read("<o/>");
    for (const char* text : {"", " ", "<a name=\"x\">&amp;</a>", "\xC3\xA4\xE2\x82\xAC", " \n\t "}) {
        const std::string name = std::string("N") + std::to_string(Names(spNode).size());
        EXPECT_THAT(spNode->AddStringAttributeValue(CATUnicodeString(name), text), Succeeds()) << text;
        EXPECT_EQ(ValueOf(spNode, name.c_str()), text);
    }
    CATBaseUnknown_var spElement;
    spNode->GetXmlElement(&spElement);
    EXPECT_THAT(spNode->SetXmlElement(spElement), Succeeds()) << "the record can be read again";
    EXPECT_EQ(Names(spNode).size(), 5U);
}

TEST_F(NodeAttributesTest, AddingAnExistingNameFailsAndChangesNothing)
{
    const QTBINodeAttributes_var spNode = Read(RECORD);
    CATBaseUnknown_var spElement;
    spNode->GetXmlElement(&spElement);
    CATListValCATBaseUnknown_var Before;
    QTBXmlUtil::GetElements(spElement, "a", "", "", &Before);
    const std::vector<std::string> names = Names(spNode);
    EXPECT_THAT(spNode->AddStringAttributeValue("Name", "other"), FailsAssertion("bAttributeIsDefined == FALSE"));
    EXPECT_THAT(spNode->AddStringAttributeValue("Info", "other"), FailsAssertion("bAttributeIsDefined == FALSE"));
    EXPECT_EQ(Names(spNode), names);
    EXPECT_EQ(ValueOf(spNode, "Name"), "Bracket");
    CATListValCATBaseUnknown_var After;
    QTBXmlUtil::GetElements(spElement, "a", "", "", &After);
    EXPECT_TRUE(After == Before);
}

TEST_F(NodeAttributesTest, AddingNeedsAnElementThatTakesANamedChild)
{
    const QTBINodeAttributes_var spNode = CreateNode();
    EXPECT_THAT(spNode->AddStringAttributeValue("Name", "1"), FailsCall("QTBXmlUtil::CreateChildNode"));
    QTBFakeElement child;
    QTBFakeElement parent;
    parent.m_spChild = CATIDOMElement_var(&child);
    EXPECT_THAT(spNode->SetXmlElement(CATBaseUnknown_var(&parent)), Succeeds());
    EXPECT_THAT(spNode->AddStringAttributeValue("Name", "1"),
                FailsCall("spIDOMElementOnNewAttributeXmlNode->SetAttribute"));
    EXPECT_FALSE(IsDefined(spNode, "Name"));
    spNode->SetXmlElement(NULL_var);
}

TEST_F(NodeAttributesTest, AddingAValueWithoutNameFailsWhereItIsRead)
{
    const QTBINodeAttributes_var spNode = Read("<o/>");
    DebugCapture capture;
    EXPECT_THAT(spNode->AddStringAttributeValue("", "1"), FailsAssertion("pNewStringAttr->IsValid()"));
    EXPECT_THAT(capture.Lines(), Contains(StartsWith("SetAttributeAsXmlNode : HRESULT FAILED")));
    // Nothing is left behind that would keep the record from being read again.
    CATBaseUnknown_var spElement;
    EXPECT_THAT(spNode->GetXmlElement(&spElement), Succeeds());
    EXPECT_THAT(spNode->SetXmlElement(spElement), Succeeds());
}

TEST_F(NodeAttributesTest, AnAddedValueThatIsShownByAnotherNameFailsTheCheckAfterItWasAdded)
{
    const QTBINodeAttributes_var spNode = Read("<o/>");
    EXPECT_THAT(spNode->AddStringAttributeValue("State", "10"), FailsAssertion("usValueForCheck == usValue"));
    EXPECT_EQ(ValueOf(spNode, "State"), "10");
}

TEST_F(NodeAttributesTest, ARecordOfManyAttributesIsReadSearchedAndExtendedLikeAnyOther)
{
    constexpr int COUNT = 5000;
    std::string record = "<o>";
    for (int i = 0; i < COUNT; ++i) {
        record += "<a name=\"N" + std::to_string(i) + "\"" + (i % 3 == 0 ? " type=\"list\"><v>" : ">") +
                  std::to_string(i) + (i % 3 == 0 ? "</v></a>" : "</a>");
    }
    const QTBINodeAttributes_var spNode = Read((record + "</o>").c_str());
    EXPECT_EQ(Names(spNode).size(), static_cast<std::size_t>(COUNT));
    for (int i = 0; i < COUNT; ++i) {
        const CATUnicodeString usName("N" + std::to_string(i));
        QTBNodeAttr* pNodeAttr = NULL;
        ASSERT_THAT(spNode->GetAttribute(usName, &pNodeAttr), Succeeds());
        CATUnicodeString usFound;
        pNodeAttr->GetName(&usFound);
        ASSERT_EQ(usFound, usName);
        ASSERT_EQ(TypeOf(spNode, usName.ConvertToChar()), (i % 3 == 0 ? usSIMPLE_LIST : usSTRING).View());
    }
    EXPECT_FALSE(IsDefined(spNode, "N5000"));
    EXPECT_THAT(spNode->AddStringAttributeValue("N5000", "new"), Succeeds());
    EXPECT_TRUE(IsDefined(spNode, "N5000"));
    EXPECT_THAT(spNode->AddStringAttributeValue("N17", "new"), FailsAssertion("bAttributeIsDefined == FALSE"));
    EXPECT_THAT(TryRead(spNode, (record + "<a name=\"N4999\"/></o>").c_str()),
                FailsAssertion("bAttributeIsAlreadyDefined == FALSE"));
    EXPECT_THAT(TryRead(spNode, "<o><a name=\"N1\">x</a></o>"), Succeeds());
    EXPECT_FALSE(IsDefined(spNode, "N2")) << "nothing of the former record is remembered";
}

#include "CATIDOMElement.h"

#include <malloc.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "CATDOMBulkRelease.h"
#include "CATIDOMNodeList.h"
#include "CATXMLDocumentFactory.h"
#include "CATXMLWriter.h"

namespace {

// A document whose life ends with the test.
class DomElement : public testing::Test
{
protected:
    ~DomElement() override
    {
        m_spRoot = NULL_var;
        m_spDocument = NULL_var;
        EXPECT_EQ(CATXMLDocumentFactory::GetLiveDocumentCount(), m_LiveBefore);
    }

    void Read(const std::string& xml)
    {
        ASSERT_EQ(CATXMLDocumentFactory::ReadText(CATUnicodeString(std::string_view(xml)), "text", &m_spDocument),
                  S_OK);
        ASSERT_EQ(m_spDocument->GetDocumentElement(&m_spRoot), S_OK);
    }

    // The element of that tag name, which the document has once.
    CATIDOMElement_var Find(const char* tagName) const
    {
        CATIDOMNodeList_var spNodes;
        CATIDOMNode_var spNode;
        EXPECT_EQ(m_spDocument->GetElementsByTagName(tagName, &spNodes), S_OK);
        spNodes->Item(0, &spNode);
        return spNode;
    }

    CATIDOMElement_var Create(const char* tagName) const
    {
        CATIDOMElement_var spElement;
        EXPECT_EQ(m_spDocument->CreateElement(tagName, &spElement), S_OK);
        return spElement;
    }

    static CATIDOMNode_var FirstChild(const CATIDOMNode_var& spNode)
    {
        CATIDOMNode_var spChild;
        EXPECT_EQ(spNode->GetFirstChild(&spChild), S_OK);
        return spChild;
    }

    static CATIDOMNode_var NextSibling(const CATIDOMNode_var& spNode)
    {
        CATIDOMNode_var spSibling;
        EXPECT_EQ(spNode->GetNextSibling(&spSibling), S_OK);
        return spSibling;
    }

    static CATIDOMNode_var Parent(const CATIDOMNode_var& spNode)
    {
        CATIDOMNode_var spParent;
        EXPECT_EQ(spNode->GetParentNode(&spParent), S_OK);
        return spParent;
    }

    static CATUnicodeString Text(const CATIDOMNode_var& spNode)
    {
        CATUnicodeString usText;
        EXPECT_EQ(spNode->GetCharData(&usText), S_OK);
        return usText;
    }

    static std::string Xml(const CATIDOMElement_var& spElement)
    {
        std::string xml;
        CATXMLWriter::AppendElement(spElement->GetView(), &xml);
        return xml;
    }

    const int m_LiveBefore = CATXMLDocumentFactory::GetLiveDocumentCount();
    CATIDOMDocument_var m_spDocument;
    CATIDOMElement_var m_spRoot;
};

TEST_F(DomElement, ChildElementsAreWalkedInDocumentOrder)
{
    Read("<r>text<a/><!-- c -->more<b/></r>");
    const CATIDOMNode_var spFirst = FirstChild(m_spRoot);
    EXPECT_TRUE(spFirst == Find("a"));
    const CATIDOMNode_var spSecond = NextSibling(spFirst);
    EXPECT_TRUE(spSecond == Find("b"));
    EXPECT_TRUE(NextSibling(spSecond) == NULL_var);
    EXPECT_TRUE(Parent(spSecond) == m_spRoot);
    EXPECT_TRUE(Parent(m_spRoot) == m_spDocument);
    EXPECT_TRUE(Parent(m_spDocument) == NULL_var);
    EXPECT_TRUE(FirstChild(m_spDocument) == m_spRoot);
}

TEST_F(DomElement, TwoHandlesOnTheSameNodeAreEqual)
{
    Read("<r><a/><a/></r>");
    const CATIDOMNode_var spFirst = FirstChild(m_spRoot);
    EXPECT_TRUE(spFirst == FirstChild(m_spRoot));
    EXPECT_TRUE(CATBaseUnknown_var(spFirst) == CATIDOMElement_var(spFirst));
    EXPECT_FALSE(spFirst == NextSibling(spFirst));
}

TEST_F(DomElement, HandlesAnswerTheirInterfaces)
{
    Read("<r/>");
    const CATBaseUnknown_var spElement(m_spRoot);
    const CATBaseUnknown_var spDocument(m_spDocument);
    EXPECT_TRUE(CATIDOMNode_var(spElement) == m_spRoot);
    EXPECT_TRUE(CATIDOMElement_var(spElement) == m_spRoot);
    EXPECT_TRUE(CATIDOMDocument_var(spElement) == NULL_var);
    EXPECT_TRUE(CATIDOMNode_var(spDocument) == m_spDocument);
    EXPECT_TRUE(CATIDOMDocument_var(spDocument) == m_spDocument);
    EXPECT_TRUE(CATIDOMElement_var(spDocument) == NULL_var);
}

TEST_F(DomElement, NamesTextAndAttributesAreRead)
{
    Read("<r><a x=\"1\" y=\"\">text</a></r>");
    const CATIDOMElement_var spElement = Find("a");
    CATUnicodeString usText;
    unsigned char bHasAttribute = FALSE;
    EXPECT_EQ(spElement->GetTagName(&usText), S_OK);
    EXPECT_EQ(usText, "a");
    EXPECT_EQ(spElement->GetNodeName(&usText), S_OK);
    EXPECT_EQ(usText, "a");
    EXPECT_EQ(m_spDocument->GetNodeName(&usText), S_OK);
    EXPECT_EQ(usText, "#document");
    EXPECT_EQ(spElement->GetAttribute("x", &usText), S_OK);
    EXPECT_EQ(usText, "1");
    EXPECT_EQ(spElement->HasAttribute("y", &bHasAttribute), S_OK);
    EXPECT_EQ(bHasAttribute, TRUE);
    EXPECT_EQ(spElement->HasAttribute("z", &bHasAttribute), S_OK);
    EXPECT_EQ(bHasAttribute, FALSE);
    usText = "old";
    EXPECT_EQ(spElement->GetAttribute("z", &usText), S_OK);
    EXPECT_EQ(usText, "");
    EXPECT_EQ(Text(spElement), "text");
    EXPECT_EQ(Text(m_spDocument), "");
}

TEST_F(DomElement, AttributesAreAddedAndChanged)
{
    Read("<r x=\"1\"/>");
    EXPECT_EQ(m_spRoot->SetAttribute("x", "2"), S_OK);
    EXPECT_EQ(m_spRoot->SetAttribute("y", "<\"&\n"), S_OK);
    EXPECT_EQ(Xml(m_spRoot), "<r x=\"2\" y=\"&lt;&quot;&amp;&#10;\"></r>");
    EXPECT_EQ(m_spRoot->SetAttribute("1", "x"), E_FAIL);
    EXPECT_EQ(m_spRoot->SetAttribute("", "x"), E_FAIL);
}

TEST_F(DomElement, TextIsReplacedAndChildElementsStay)
{
    Read("<r>one<a/>two<![CDATA[three]]><!-- c -->four</r>");
    EXPECT_EQ(m_spRoot->SetCharData("new & <text>"), S_OK);
    EXPECT_EQ(Text(m_spRoot), "new & <text>");
    EXPECT_TRUE(FirstChild(m_spRoot) == Find("a"));
    EXPECT_EQ(m_spRoot->SetCharData(""), S_OK);
    EXPECT_EQ(Text(m_spRoot), "");
    EXPECT_EQ(Xml(m_spRoot), "<r><a></a></r>");
    EXPECT_EQ(m_spRoot->SetCharData("again"), S_OK);
    EXPECT_EQ(Text(m_spRoot), "again");
}

TEST_F(DomElement, CharactersThatXmlCannotCarryAreReplaced)
{
    Read("<r/>");
    EXPECT_EQ(m_spRoot->SetCharData("a\x01"
                                    "b\xEF\xBF\xBE\t\n\r"),
              S_OK);
    EXPECT_EQ(Text(m_spRoot), "a\xEF\xBF\xBD"
                              "b\xEF\xBF\xBD\t\n\r");
    EXPECT_EQ(m_spRoot->SetAttribute("x", "\x1F"), S_OK);
    CATUnicodeString usValue;
    EXPECT_EQ(m_spRoot->GetAttribute("x", &usValue), S_OK);
    EXPECT_EQ(usValue, "\xEF\xBF\xBD");
}

TEST_F(DomElement, ElementsAreFoundByTagNameAtAnyDepth)
{
    Read("<a n=\"1\"><b><a n=\"2\"/></b><a n=\"3\"><a n=\"4\"/></a></a>");
    CATIDOMNodeList_var spNodes;
    ASSERT_EQ(m_spDocument->GetElementsByTagName("a", &spNodes), S_OK);
    int length = 0;
    EXPECT_EQ(spNodes->GetLength(&length), S_OK);
    ASSERT_EQ(length, 4);
    for (int i = 0; i < length; ++i) {
        CATIDOMNode_var spNode;
        CATUnicodeString usNumber;
        CATUnicodeString usExpected;
        EXPECT_EQ(spNodes->Item(i, &spNode), S_OK);
        CATIDOMElement_var(spNode)->GetAttribute("n", &usNumber);
        usExpected.BuildFromNum(i + 1);
        EXPECT_EQ(usNumber, usExpected);
    }
    CATIDOMNode_var spNode;
    EXPECT_EQ(spNodes->Item(-1, &spNode), E_FAIL);
    EXPECT_EQ(spNodes->Item(4, &spNode), E_FAIL);
    EXPECT_EQ(spNodes->Item(0, nullptr), E_POINTER);
    EXPECT_EQ(spNodes->GetLength(nullptr), E_POINTER);

    ASSERT_EQ(m_spDocument->GetElementsByTagName("none", &spNodes), S_OK);
    EXPECT_EQ(spNodes->GetLength(&length), S_OK);
    EXPECT_EQ(length, 0);
}

TEST_F(DomElement, ANewElementIsAppendedWithEverythingInIt)
{
    Read("<r><a/></r>");
    const CATIDOMElement_var spNew = Create("n");
    EXPECT_TRUE(Parent(spNew) == NULL_var);
    EXPECT_TRUE(NextSibling(spNew) == NULL_var);
    EXPECT_EQ(spNew->SetCharData("text"), S_OK);
    CATIDOMElement_var spChild;
    EXPECT_EQ(spNew->CreateChildElement("c", &spChild), S_OK);
    EXPECT_EQ(m_spRoot->AppendChild(spNew), S_OK);
    EXPECT_TRUE(Parent(spNew) == m_spRoot);
    EXPECT_TRUE(Parent(spChild) == spNew);
    EXPECT_EQ(Xml(m_spRoot), "<r><a></a><n>text<c></c></n></r>");
}

TEST_F(DomElement, ALeafIsAppendedUnderTheHandleThatItHas)
{
    Read("<r/>");
    const CATIDOMElement_var spNew = Create("n");
    EXPECT_EQ(spNew->SetAttribute("x", "1"), S_OK);
    EXPECT_EQ(spNew->SetCharData("text"), S_OK);
    EXPECT_EQ(m_spRoot->AppendChild(spNew), S_OK);
    EXPECT_TRUE(FirstChild(m_spRoot) == spNew);
    EXPECT_EQ(Xml(spNew), "<n x=\"1\">text</n>");
    EXPECT_EQ(spNew->SetCharData("changed"), S_OK);
    EXPECT_EQ(Xml(m_spRoot), "<r><n x=\"1\">changed</n></r>");
}

TEST_F(DomElement, AnElementMovesWithinTheDocument)
{
    Read("<r><a><b><c/></b></a><d/></r>");
    EXPECT_EQ(Find("d")->AppendChild(Find("b")), S_OK);
    EXPECT_EQ(Xml(m_spRoot), "<r><a></a><d><b><c></c></b></d></r>");
    EXPECT_EQ(m_spRoot->AppendChild(Find("a")), S_OK);
    EXPECT_EQ(Xml(m_spRoot), "<r><d><b><c></c></b></d><a></a></r>");
}

TEST_F(DomElement, AppendingIsRefusedWhereItMakesNoTree)
{
    Read("<r><a><b/></a></r>");
    EXPECT_EQ(Find("b")->AppendChild(Find("a")), E_FAIL);
    EXPECT_EQ(Find("b")->AppendChild(m_spRoot), E_FAIL);
    EXPECT_EQ(Find("b")->AppendChild(Find("b")), E_FAIL);
    EXPECT_EQ(Find("a")->AppendChild(Find("a")), E_FAIL);
    EXPECT_EQ(Find("a")->AppendChild(m_spDocument), E_FAIL);
    EXPECT_EQ(Find("a")->AppendChild(NULL_var), E_FAIL);
    EXPECT_EQ(m_spDocument->AppendChild(Create("second")), E_FAIL);
    EXPECT_EQ(Xml(m_spRoot), "<r><a><b></b></a></r>");

    CATIDOMDocument_var spOther;
    CATIDOMElement_var spOtherRoot;
    ASSERT_EQ(CATXMLDocumentFactory::CreateDocument("other", &spOther), S_OK);
    spOther->GetDocumentElement(&spOtherRoot);
    EXPECT_EQ(m_spRoot->AppendChild(spOtherRoot), E_FAIL);
    EXPECT_EQ(spOtherRoot->AppendChild(Find("b")), E_FAIL);
    EXPECT_EQ(spOtherRoot->RemoveChild(Find("a")), E_FAIL);
}

TEST_F(DomElement, ARemovedElementStaysReadable)
{
    Read("<r><a/><b x=\"1\">text<c/></b><d/></r>");
    const CATIDOMElement_var spRemoved = Find("b");
    EXPECT_EQ(m_spRoot->RemoveChild(spRemoved), S_OK);
    EXPECT_EQ(Xml(m_spRoot), "<r><a></a><d></d></r>");
    EXPECT_EQ(Xml(spRemoved), "<b x=\"1\">text<c></c></b>");
    EXPECT_TRUE(Parent(spRemoved) == NULL_var);
    EXPECT_TRUE(NextSibling(spRemoved) == NULL_var);
    EXPECT_TRUE(Find("c") == NULL_var);
    EXPECT_EQ(m_spRoot->RemoveChild(spRemoved), E_FAIL);
}

TEST_F(DomElement, AHandleBelowARemovedElementKeepsTheWholeBranch)
{
    Read("<r><a><b>text<c/></b><d/></a></r>");
    CATIDOMNode_var spBelow = Find("c");
    EXPECT_EQ(m_spRoot->RemoveChild(Find("a")), S_OK);
    EXPECT_EQ(Text(Parent(spBelow)), "text");
    const CATIDOMElement_var spTop(Parent(Parent(spBelow)));
    spBelow = NULL_var;
    EXPECT_EQ(Xml(spTop), "<a><b>text<c></c></b><d></d></a>");
    EXPECT_TRUE(Parent(spTop) == NULL_var);
}

TEST_F(DomElement, TwoRemovedElementsAreNoSiblings)
{
    Read("<r><a/><b/><c/></r>");
    const CATIDOMElement_var spA = Find("a");
    const CATIDOMElement_var spB = Find("b");
    EXPECT_EQ(m_spRoot->RemoveChild(spA), S_OK);
    EXPECT_EQ(m_spRoot->RemoveChild(spB), S_OK);
    EXPECT_TRUE(NextSibling(spA) == NULL_var);
    EXPECT_TRUE(NextSibling(spB) == NULL_var);
    EXPECT_TRUE(NextSibling(m_spRoot) == NULL_var);
    EXPECT_TRUE(FirstChild(m_spDocument) == m_spRoot);
}

TEST_F(DomElement, TheHandleOfARemovedElementIsNotUsedAgain)
{
    Read("<r><old>text</old></r>");
    const CATIDOMElement_var spOld = Find("old");
    EXPECT_EQ(m_spRoot->RemoveChild(spOld), S_OK);
    for (int i = 0; i < 1000; ++i) {
        CATIDOMElement_var spNew;
        ASSERT_EQ(m_spRoot->CreateChildElement("new", &spNew), S_OK);
        ASSERT_EQ(spNew->SetCharData("other"), S_OK);
        ASSERT_FALSE(spNew == spOld);
    }
    EXPECT_EQ(Xml(spOld), "<old>text</old>");
}

TEST_F(DomElement, ARemovedElementCanBeAppendedAgain)
{
    Read("<r><a><b>x</b></a><c/></r>");
    const CATIDOMElement_var spA = Find("a");
    const CATIDOMElement_var spB = Find("b");
    EXPECT_EQ(m_spRoot->RemoveChild(spA), S_OK);
    EXPECT_EQ(Find("c")->AppendChild(spA), S_OK);
    EXPECT_EQ(Xml(m_spRoot), "<r><c><a><b>x</b></a></c></r>");
    EXPECT_TRUE(Parent(spB) == spA);
}

TEST_F(DomElement, ADocumentElementIsReplaced)
{
    Read("<r><a/></r>");
    EXPECT_EQ(m_spDocument->RemoveChild(m_spRoot), S_OK);
    CATIDOMElement_var spRoot;
    EXPECT_EQ(m_spDocument->GetDocumentElement(&spRoot), S_OK);
    EXPECT_TRUE(spRoot == NULL_var);
    EXPECT_TRUE(FirstChild(m_spDocument) == NULL_var);
    CATIDOMNodeList_var spNodes;
    int length = -1;
    EXPECT_EQ(m_spDocument->GetElementsByTagName("a", &spNodes), S_OK);
    EXPECT_EQ(spNodes->GetLength(&length), S_OK);
    EXPECT_EQ(length, 0);

    EXPECT_EQ(m_spDocument->AppendChild(Create("n")), S_OK);
    EXPECT_EQ(m_spDocument->GetDocumentElement(&spRoot), S_OK);
    EXPECT_EQ(Xml(spRoot), "<n></n>");
    EXPECT_EQ(Xml(m_spRoot), "<r><a></a></r>");
    EXPECT_EQ(m_spDocument->AppendChild(m_spRoot), E_FAIL);
}

TEST_F(DomElement, AMillionNestedElementsAreReadAndRemovedWithoutStack)
{
    constexpr int DEPTH = 1000000;
    std::string xml("<r>");
    for (int i = 0; i < DEPTH; ++i) {
        xml += "<a>";
    }
    for (int i = 0; i < DEPTH; ++i) {
        xml += "</a>";
    }
    Read(xml + "</r>");
    CATIDOMNodeList_var spNodes;
    int length = 0;
    {
        ASSERT_EQ(m_spDocument->GetElementsByTagName("a", &spNodes), S_OK);
        EXPECT_EQ(spNodes->GetLength(&length), S_OK);
        EXPECT_EQ(length, DEPTH);
        spNodes = NULL_var;
    }
    EXPECT_EQ(Xml(m_spRoot).size(), xml.size() + 4);
    EXPECT_EQ(m_spRoot->RemoveChild(FirstChild(m_spRoot)), S_OK);
    EXPECT_EQ(Xml(m_spRoot), "<r></r>");
}

TEST_F(DomElement, AMillionNestedElementsAreBuiltInLinearTime)
{
    constexpr int DEPTH = 1000000;
    Read("<r/>");
    CATIDOMElement_var spDeepest = m_spRoot;
    for (int i = 0; i < DEPTH; ++i) {
        const CATIDOMElement_var spNext = Create("a");
        ASSERT_EQ(spDeepest->AppendChild(spNext), S_OK);
        spDeepest = spNext;
    }
    const CATIDOMNode_var spTop = FirstChild(m_spRoot);
    EXPECT_EQ(m_spRoot->RemoveChild(spTop), S_OK);
    EXPECT_EQ(Xml(m_spRoot), "<r></r>");
    EXPECT_EQ(Xml(spDeepest), "<a></a>");
}

TEST_F(DomElement, ManyRemovalsFromALargeDocumentTakeLinearTime)
{
    constexpr int COUNT = 100000;
    Read("<r/>");
    std::vector<CATIDOMElement_var> elements;
    for (int i = 0; i < COUNT; ++i) {
        CATIDOMElement_var spElement;
        ASSERT_EQ(m_spRoot->CreateChildElement("a", &spElement), S_OK);
        elements.push_back(spElement);
    }
    for (const CATIDOMElement_var& spElement : elements) {
        ASSERT_EQ(m_spRoot->RemoveChild(spElement), S_OK);
    }
    EXPECT_EQ(Xml(m_spRoot), "<r></r>");
}

TEST_F(DomElement, RemovedElementsThatNobodyHoldsGiveTheirMemoryBack)
{
    Read("<r/>");
    const auto addAndRemove = [this] {
        CATIDOMElement_var spBranch;
        ASSERT_EQ(m_spRoot->CreateChildElement("branch", &spBranch), S_OK);
        for (int i = 0; i < 1000; ++i) {
            CATIDOMElement_var spElement;
            ASSERT_EQ(spBranch->CreateChildElement("element", &spElement), S_OK);
            ASSERT_EQ(spElement->SetCharData("a text that is too long to be kept for nothing"), S_OK);
        }
        ASSERT_EQ(m_spRoot->RemoveChild(spBranch), S_OK);
    };
    addAndRemove();
    const std::size_t before = mallinfo2().uordblks;
    for (int i = 0; i < 100; ++i) {
        addAndRemove();
    }
    EXPECT_LT(mallinfo2().uordblks, before + 1000000);
    {
        const CATDOMBulkRelease outer;
        const CATDOMBulkRelease bulkRelease;
        for (int i = 0; i < 100; ++i) {
            addAndRemove();
        }
    }
    EXPECT_LT(mallinfo2().uordblks, before + 1000000) << "let go of together";
}

TEST_F(DomElement, ElementsLetGoOfTogetherTakeNothingAlongThatIsHeld)
{
    Read("<r><a><b/></a><c><d/></c><e/></r>");
    const CATIDOMElement_var spB = Find("b");
    CATIDOMElement_var spD = Find("d");
    {
        const CATDOMBulkRelease bulkRelease;
        EXPECT_EQ(m_spRoot->RemoveChild(Find("a")), S_OK);
        EXPECT_EQ(m_spRoot->RemoveChild(Find("c")), S_OK);
        EXPECT_EQ(Find("e")->AppendChild(spD), S_OK);
        EXPECT_EQ(Xml(m_spRoot), "<r><e><d></d></e></r>");
        spD = NULL_var;
        EXPECT_EQ(m_spRoot->RemoveChild(Find("e")), S_OK);
        m_spRoot = NULL_var;
        m_spDocument = NULL_var;
    }
    EXPECT_EQ(Xml(Parent(spB)), "<a><b></b></a>");
    EXPECT_TRUE(Parent(Parent(spB)) == NULL_var);
    EXPECT_TRUE(NextSibling(Parent(spB)) == NULL_var);
}

TEST_F(DomElement, ADocumentLetGoOfElementByElementGoesBeforeTheOthersDo)
{
    Read("<r><a/><b/></r>");
    const CATDOMBulkRelease bulkRelease;
    EXPECT_EQ(m_spRoot->RemoveChild(Find("a")), S_OK);
    EXPECT_EQ(m_spRoot->RemoveChild(Find("b")), S_OK);
    m_spRoot = NULL_var;
    m_spDocument = NULL_var;
    EXPECT_EQ(CATXMLDocumentFactory::GetLiveDocumentCount(), m_LiveBefore);
}

TEST_F(DomElement, AViewLeadsBackToHandles)
{
    Read("<r><a><b/></a></r>");
    const CATDOMElementView view = m_spRoot->GetView().GetFirstChild().GetFirstChild();
    const CATIDOMElement_var spB = m_spRoot->GetElementOfView(view);
    EXPECT_TRUE(spB == Find("b"));
    EXPECT_TRUE(spB->GetElementOfView(m_spRoot->GetView()) == m_spRoot);
    EXPECT_TRUE(m_spRoot->GetElementOfView(CATDOMElementView()) == NULL_var);
}

TEST_F(DomElement, NullPointersAreRefused)
{
    Read("<r/>");
    EXPECT_EQ(m_spRoot->GetNodeName(nullptr), E_POINTER);
    EXPECT_EQ(m_spRoot->GetParentNode(nullptr), E_POINTER);
    EXPECT_EQ(m_spRoot->GetFirstChild(nullptr), E_POINTER);
    EXPECT_EQ(m_spRoot->GetNextSibling(nullptr), E_POINTER);
    EXPECT_EQ(m_spRoot->GetCharData(nullptr), E_POINTER);
    EXPECT_EQ(m_spRoot->GetTagName(nullptr), E_POINTER);
    EXPECT_EQ(m_spRoot->HasAttribute("a", nullptr), E_POINTER);
    EXPECT_EQ(m_spRoot->GetAttribute("a", nullptr), E_POINTER);
    EXPECT_EQ(m_spRoot->CreateChildElement("a", nullptr), E_POINTER);
    EXPECT_EQ(m_spDocument->GetNodeName(nullptr), E_POINTER);
    EXPECT_EQ(m_spDocument->GetFirstChild(nullptr), E_POINTER);
    EXPECT_EQ(m_spDocument->GetNextSibling(nullptr), E_POINTER);
    EXPECT_EQ(m_spDocument->GetCharData(nullptr), E_POINTER);
    EXPECT_EQ(m_spDocument->GetDocumentElement(nullptr), E_POINTER);
    EXPECT_EQ(m_spDocument->GetElementsByTagName("a", nullptr), E_POINTER);
    EXPECT_EQ(m_spDocument->CreateElement("a", nullptr), E_POINTER);
}

TEST_F(DomElement, NamesThatXmlDoesNotAllowAreRefused)
{
    Read("<r/>");
    CATIDOMElement_var spElement;
    EXPECT_EQ(m_spRoot->CreateChildElement("a b", &spElement), E_FAIL);
    EXPECT_EQ(m_spDocument->CreateElement("#removed", &spElement), E_FAIL);
    EXPECT_TRUE(spElement == NULL_var);
    EXPECT_EQ(Xml(m_spRoot), "<r></r>");
}

} // namespace

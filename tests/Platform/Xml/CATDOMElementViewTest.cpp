#include "CATDOMElementView.h"

#include <string>

#include <gtest/gtest.h>

#include "CATIDOMElement.h"
#include "CATXMLDocumentFactory.h"

namespace {

class DomElementView : public testing::Test
{
protected:
    CATDOMElementView Read(const char* xml)
    {
        EXPECT_EQ(CATXMLDocumentFactory::ReadText(xml, "text", &m_spDocument), S_OK);
        EXPECT_EQ(m_spDocument->GetDocumentElement(&m_spRoot), S_OK);
        return m_spRoot->GetView();
    }

    CATIDOMDocument_var m_spDocument;
    CATIDOMElement_var m_spRoot;
};

TEST_F(DomElementView, WalksChildElements)
{
    const CATDOMElementView root = Read("<r>text<a/>text<!-- c --><b/><![CDATA[x]]></r>");
    EXPECT_EQ(root.GetTagName(), "r");
    const CATDOMElementView first = root.GetFirstChild();
    EXPECT_EQ(first.GetTagName(), "a");
    const CATDOMElementView second = first.GetNextSibling();
    EXPECT_EQ(second.GetTagName(), "b");
    EXPECT_FALSE(second.GetNextSibling());
    EXPECT_FALSE(second.GetFirstChild());
    EXPECT_FALSE(root.GetNextSibling());
}

TEST_F(DomElementView, ComparesTagNamesWhole)
{
    const CATDOMElementView root = Read("<abc/>");
    EXPECT_TRUE(root.HasTagName("abc"));
    EXPECT_FALSE(root.HasTagName("ab"));
    EXPECT_FALSE(root.HasTagName("abcd"));
    EXPECT_FALSE(root.HasTagName(std::string_view("abc\0d", 5)));
    EXPECT_FALSE(root.HasTagName(""));
}

TEST_F(DomElementView, WalksEverythingBelowAnElement)
{
    const CATDOMElementView root = Read("<r><a><b><c/></b><d/></a><e/></r>");
    std::string names;
    for (CATDOMElementView element = root; element; element = element.GetNextBelow(root)) {
        names += element.GetTagName();
    }
    EXPECT_EQ(names, "rabcde");
    names.clear();
    const CATDOMElementView branch = root.GetFirstChild();
    for (CATDOMElementView element = branch; element; element = element.GetNextBelow(branch)) {
        names += element.GetTagName();
    }
    EXPECT_EQ(names, "abcd");
}

TEST_F(DomElementView, ReadsAttributesInOrder)
{
    const CATDOMElementView root = Read("<r x=\"1\" y=\"&lt;\" z=\"\"/>");
    std::string attributes;
    for (CATDOMAttributeView attribute = root.GetFirstAttribute(); attribute; attribute = attribute.GetNext()) {
        attributes.append(attribute.GetName()).append("=").append(attribute.GetValue()).append(";");
    }
    EXPECT_EQ(attributes, "x=1;y=<;z=;");
    EXPECT_EQ(root.FindAttribute("y").GetValue(), "<");
    EXPECT_TRUE(root.FindAttribute("z"));
    EXPECT_FALSE(root.FindAttribute("w"));
}

TEST_F(DomElementView, LineEndsAndTabsInAttributesAreBlanks)
{
    EXPECT_EQ(Read("<r x=\"1\n2\t3\r\n4\"/>").FindAttribute("x").GetValue(), "1 2 3 4");
}

TEST_F(DomElementView, TellsTextFromLayout)
{
    EXPECT_FALSE(Read("<r>\n <a/>\n <!-- c -->\n</r>").HasNonBlankText());
    EXPECT_FALSE(Read("<r/>").HasNonBlankText());
    EXPECT_FALSE(Read("<r> </r>").HasNonBlankText());
    EXPECT_FALSE(Read("<r><a>text</a></r>").HasNonBlankText());
    EXPECT_TRUE(Read("<r>x<a/></r>").HasNonBlankText());
    EXPECT_TRUE(Read("<r><a/>x</r>").HasNonBlankText());
    EXPECT_TRUE(Read("<r><a/> <![CDATA[x]]><a/></r>").HasNonBlankText());
}

TEST_F(DomElementView, AnEmptyViewIsEmptyInEverything)
{
    const CATDOMElementView none;
    EXPECT_FALSE(none);
    EXPECT_EQ(none.GetTagName(), "");
    EXPECT_FALSE(none.GetFirstChild());
    EXPECT_FALSE(none.GetNextSibling());
    EXPECT_FALSE(none.GetFirstAttribute());
    EXPECT_FALSE(none.FindAttribute("x"));
    EXPECT_EQ(none.GetText(), "");
    EXPECT_FALSE(none.HasNonBlankText());
    EXPECT_FALSE(CATDOMAttributeView());
    EXPECT_EQ(CATDOMAttributeView().GetValue(), "");
}

} // namespace

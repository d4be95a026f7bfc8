#include "CATXMLWriter.h"

#include <gtest/gtest.h>

#include "CATIDOMElement.h"
#include "CATXMLDocumentFactory.h"

namespace {

std::string TextOf(std::string_view text)
{
    std::string xml;
    CATXMLWriter::AppendText(text, &xml);
    return xml;
}

std::string AttributeOf(std::string_view value)
{
    std::string xml;
    CATXMLWriter::AppendAttribute("n", value, &xml);
    return xml;
}

CATIDOMElement_var Read(const std::string& xml)
{
    CATIDOMDocument_var spDocument;
    CATIDOMElement_var spRoot;
    EXPECT_EQ(CATXMLDocumentFactory::ReadText(CATUnicodeString(std::string_view(xml)), "text", &spDocument), S_OK);
    if (spDocument != NULL_var) {
        spDocument->GetDocumentElement(&spRoot);
    }
    return spRoot;
}

std::string Rewrite(const std::string& xml)
{
    const CATIDOMElement_var spRoot = Read(xml);
    std::string written;
    CATXMLWriter::AppendElement(spRoot->GetView(), &written);
    return written;
}

TEST(XmlWriter, MarkupInTextIsWrittenAsReferences)
{
    EXPECT_EQ(TextOf("a & b < c > d \"e\" 'f'"), "a &amp; b &lt; c &gt; d \"e\" 'f'");
    EXPECT_EQ(TextOf("1\n2\t3\r4"), "1\n2\t3&#13;4");
    EXPECT_EQ(TextOf("]]>"), "]]&gt;");
    EXPECT_EQ(TextOf(""), "");
}

TEST(XmlWriter, WhiteSpaceInAttributesIsWrittenAsReferences)
{
    EXPECT_EQ(AttributeOf("<a> & \"b\" 'c'"), " n=\"&lt;a&gt; &amp; &quot;b&quot; 'c'\"");
    EXPECT_EQ(AttributeOf("1\n2\t3\r4"), " n=\"1&#10;2&#9;3&#13;4\"");
    EXPECT_EQ(AttributeOf(""), " n=\"\"");
}

TEST(XmlWriter, CharactersThatXmlCannotCarryAreReplaced)
{
    using namespace std::string_view_literals;
    EXPECT_EQ(TextOf("a\0b\x1F"sv), "a\xEF\xBF\xBD"
                                    "b\xEF\xBF\xBD");
    EXPECT_EQ(TextOf("\xEF\xBF\xBE\xEF\xBF\xBF\xEF\xBF\xBC"), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBC");
    EXPECT_EQ(CATXMLWriter::MakeCarriable("a\x02"
                                          "b"),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(CATXMLWriter::MakeCarriable("\xEF\xBF\xBF"
                                          "b"),
              "\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(CATXMLWriter::MakeCarriable("a\tb\nc\rd"), "a\tb\nc\rd");
}

TEST(XmlWriter, WhatIsWrittenReadsBack)
{
    const std::string text = " \t\r\n<a> & \"b\" 'c' ]]> \xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80 \r\n ";
    std::string xml("<r");
    CATXMLWriter::AppendAttribute("x", text, &xml);
    xml += ">";
    CATXMLWriter::AppendText(text, &xml);
    xml += "</r>";
    const CATIDOMElement_var spRoot = Read(xml);
    CATUnicodeString usValue;
    EXPECT_EQ(spRoot->GetCharData(&usValue), S_OK);
    EXPECT_EQ(usValue.View(), text);
    EXPECT_EQ(spRoot->GetAttribute("x", &usValue), S_OK);
    EXPECT_EQ(usValue.View(), text);
}

TEST(XmlWriter, AnElementIsWrittenWithEverythingInIt)
{
    const std::string xml = "<r x=\"1\">one<a>two<b></b></a>three<c y=\"&amp;\"></c></r>";
    EXPECT_EQ(Rewrite(xml), xml);
    EXPECT_EQ(Rewrite("<r>a<!-- c --><![CDATA[<b>]]></r>"), "<r>a&lt;b&gt;</r>");
}

TEST(XmlWriter, OnlyTheGivenElementIsWritten)
{
    const CATIDOMElement_var spRoot = Read("<r><a><b/></a><c/></r>");
    std::string xml("+");
    CATXMLWriter::AppendElement(spRoot->GetView().GetFirstChild(), &xml);
    EXPECT_EQ(xml, "+<a><b></b></a>");
    CATXMLWriter::AppendElement(CATDOMElementView(), &xml);
    EXPECT_EQ(xml, "+<a><b></b></a>");
}

TEST(XmlWriter, NamesAreToldApart)
{
    for (const char* name : {"a", "_a", "a1", "a-b.c", "p:a", "Gr\xC3\xB6\xC3\x9F\x65"}) {
        EXPECT_TRUE(CATXMLWriter::IsName(name)) << name;
    }
    for (const char* name : {"", "1", "-a", ".a", "a b", "a>", "a/", "a=\"1\"", "#a", "\xC3\x97"}) {
        EXPECT_FALSE(CATXMLWriter::IsName(name)) << name;
    }
}

} // namespace

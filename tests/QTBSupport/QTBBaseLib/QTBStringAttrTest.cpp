#include "QTBStringAttr.h"

#include <gtest/gtest.h>

#include "QTBStringHash.h"
#include "QTBXmlElement.h"

namespace {

CATUnicodeString ValueOf(const QTBStringAttr& attribute)
{
    CATUnicodeString usValue("unread");
    EXPECT_EQ(attribute.GetValue(&usValue), S_OK);
    return usValue;
}

TEST(StringAttr, NameAndValueAreRead)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"Owner\">Meyer &amp; Co</a>");
    const QTBStringAttr attribute(&spElement);
    CATUnicodeString usName;
    EXPECT_EQ(attribute.IsValid(), TRUE);
    EXPECT_EQ(attribute.GetName(&usName), S_OK);
    EXPECT_EQ(usName, "Owner");
    EXPECT_EQ(ValueOf(attribute), "Meyer & Co");
}

TEST(StringAttr, TheHashKeyIsTheStringHashOfTheName)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"Owner\"/>");
    unsigned int hash = 0;
    hash %= CATUnicodeString("Owner");
    EXPECT_EQ(QTBStringAttr(&spElement).GetHashKey(), hash);
}

TEST(StringAttr, BlanksOfTheValueCount)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"N\">  two  </a>");
    EXPECT_EQ(ValueOf(QTBStringAttr(&spElement)), "  two  ");
    spElement = ReadXmlElement("<a name=\"N\"> </a>");
    EXPECT_EQ(ValueOf(QTBStringAttr(&spElement)), " ");
    spElement = ReadXmlElement("<a name=\"N\"/>");
    EXPECT_EQ(ValueOf(QTBStringAttr(&spElement)), "");
}

TEST(StringAttr, AValueSplitByCommentsAndCDataIsWhole)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"N\">one<!-- c --> two<![CDATA[<three>]]></a>");
    EXPECT_EQ(ValueOf(QTBStringAttr(&spElement)), "one two<three>");
}

TEST(StringAttr, AChangedValueLeavesTheElementAsItIs)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"N\">old</a>");
    QTBStringAttr attribute(&spElement);
    EXPECT_EQ(attribute.SetValue("new"), S_OK);
    EXPECT_EQ(ValueOf(attribute), "new");
    EXPECT_EQ(WriteAttribute(attribute), "<a name=\"N\">new</a>");
    CATUnicodeString usText;
    EXPECT_EQ(spElement->GetCharData(&usText), S_OK);
    EXPECT_EQ(usText, "old");
}

TEST(StringAttr, TheElementIsNotNeededAfterReading)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"N\">text</a>");
    const QTBStringAttr attribute(&spElement);
    spElement = NULL_var;
    EXPECT_EQ(ValueOf(attribute), "text");
}

TEST(StringAttr, WhatIsWrittenReadsBack)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"&lt;&amp;&quot;&#10;\xD0\x96\">x</a>");
    QTBStringAttr attribute(&spElement);
    ASSERT_EQ(attribute.SetValue(AWKWARD_TEXT), S_OK);
    CATIDOMElement_var spWritten = ReadXmlElement(WriteAttribute(attribute));
    const QTBStringAttr reread(&spWritten);
    EXPECT_EQ(ValueOf(reread), AWKWARD_TEXT);
    CATUnicodeString usName;
    EXPECT_EQ(reread.GetName(&usName), S_OK);
    EXPECT_EQ(usName, "<&\"\n\xD0\x96");
    EXPECT_EQ(reread.GetHashKey(), attribute.GetHashKey());
}

TEST(StringAttr, IsAppendedToTheTextWithALineFeedOnRequest)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"N\">x</a>");
    const QTBStringAttr attribute(&spElement);
    CATUnicodeString usXml("<o>");
    EXPECT_EQ(attribute.WriteXmlToString(&usXml, FALSE), S_OK);
    EXPECT_EQ(attribute.WriteXmlToString(&usXml, TRUE), S_OK);
    EXPECT_EQ(usXml, "<o><a name=\"N\">x</a><a name=\"N\">x</a>\n");
}

TEST(StringAttr, TheTooltipIsTheValueCutToItsLength)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"N\">x</a>");
    QTBStringAttr attribute(&spElement);
    EXPECT_EQ(attribute.ToString(), "x");
    std::string text;
    for (int i = 0; i < QTBNodeAttr::TOOLTIP_LENGTH; ++i) {
        text += "\xC3\xA4";
    }
    attribute.SetValue(text.c_str());
    EXPECT_EQ(attribute.ToString(), text.c_str());
    text += "x";
    attribute.SetValue(text.c_str());
    EXPECT_EQ(attribute.ToString().GetLengthInChar(), QTBNodeAttr::TOOLTIP_LENGTH);
    EXPECT_EQ(attribute.ToString().SubString(0, 100), CATUnicodeString(text.c_str()).SubString(0, 100));
}

class InvalidStringAttr : public testing::TestWithParam<const char*>
{
};

TEST_P(InvalidStringAttr, HasNoNameAndNoValueAndFailsInEverything)
{
    CATIDOMElement_var spElement = ReadXmlElement(GetParam());
    QTBStringAttr attribute(&spElement);
    CATUnicodeString usText("untouched");
    EXPECT_EQ(attribute.IsValid(), FALSE);
    EXPECT_EQ(attribute.GetName(&usText), E_FAIL);
    EXPECT_EQ(attribute.GetValue(&usText), E_FAIL);
    EXPECT_EQ(attribute.SetValue("x"), E_FAIL);
    EXPECT_EQ(attribute.WriteXmlToString(&usText, FALSE), E_FAIL);
    EXPECT_EQ(usText, "untouched");
    EXPECT_EQ(attribute.ToString(), "");
}

INSTANTIATE_TEST_SUITE_P(Elements, InvalidStringAttr,
                         testing::Values("<a>x</a>", "<a name=\"\">x</a>", "<a name=\"N\"><b/></a>",
                                         "<a name=\"N\">x<v>y</v></a>"));

TEST(StringAttr, WithoutAnElementIsNotValid)
{
    CATIDOMElement_var spNone;
    EXPECT_EQ(QTBStringAttr(&spNone).IsValid(), FALSE);
    EXPECT_EQ(QTBStringAttr(nullptr).IsValid(), FALSE);
}

TEST(StringAttr, NullPointersAreRefused)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"N\">x</a>");
    const QTBStringAttr attribute(&spElement);
    EXPECT_EQ(attribute.GetName(nullptr), E_POINTER);
    EXPECT_EQ(attribute.GetValue(nullptr), E_POINTER);
    EXPECT_EQ(attribute.WriteXmlToString(nullptr, FALSE), E_POINTER);
}

} // namespace

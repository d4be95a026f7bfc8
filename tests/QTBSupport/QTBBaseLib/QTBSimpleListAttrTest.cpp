#include "QTBSimpleListAttr.h"

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "QTBXmlElement.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<CATUnicodeString> ValuesOf(const QTBSimpleListAttr& attribute)
{
    int iSize = -1;
    EXPECT_EQ(attribute.GetSize(&iSize), S_OK);
    std::vector<CATUnicodeString> values;
    for (int i = 1; i <= iSize; ++i) {
        CATUnicodeString usValue;
        EXPECT_EQ(attribute.GetValue(i, &usValue), S_OK);
        values.push_back(usValue);
    }
    return values;
}

TEST(SimpleListAttr, ValuesAreReadInOrder)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"N\" type=\"list\">\n <v>one</v>\n <v/><v> three </v></a>");
    const QTBSimpleListAttr attribute(&spElement);
    CATUnicodeString usName;
    EXPECT_EQ(attribute.GetName(&usName), S_OK);
    EXPECT_EQ(usName, "N");
    EXPECT_THAT(ValuesOf(attribute), ElementsAre("one", "", " three "));
}

TEST(SimpleListAttr, AListMayBeEmpty)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"N\" type=\"list\"/>");
    EXPECT_THAT(ValuesOf(QTBSimpleListAttr(&spElement)), IsEmpty());
}

TEST(SimpleListAttr, PositionsOutsideTheListFail)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"N\" type=\"list\"><v>one</v></a>");
    const QTBSimpleListAttr attribute(&spElement);
    CATUnicodeString usValue("untouched");
    EXPECT_EQ(attribute.GetValue(0, &usValue), E_FAIL);
    EXPECT_EQ(attribute.GetValue(2, &usValue), E_FAIL);
    EXPECT_EQ(attribute.GetValue(-1, &usValue), E_FAIL);
    EXPECT_EQ(usValue, "untouched");
    EXPECT_EQ(attribute.GetValue(1, nullptr), E_POINTER);
    EXPECT_EQ(attribute.GetSize(nullptr), E_POINTER);
}

TEST(SimpleListAttr, WhatIsWrittenReadsBack)
{
    const CATIDOMElement_var spRecord = ReadXmlElement("<o><a name=\"N\" type=\"list\"/></o>");
    CATIDOMElement_var spElement;
    ASSERT_EQ(QTBXmlUtil::GetSingleAttributeElement(spRecord, "N", &spElement), S_OK);
    CATIDOMElement_var spValue;
    for (const char* value : {AWKWARD_TEXT, "", "last"}) {
        ASSERT_EQ(QTBXmlUtil::CreateChildNode("v", value, &spElement, &spValue), S_OK);
    }
    CATIDOMElement_var spWritten = ReadXmlElement(WriteAttribute(QTBSimpleListAttr(&spElement)));
    EXPECT_THAT(ValuesOf(QTBSimpleListAttr(&spWritten)), ElementsAre(AWKWARD_TEXT, "", "last"));
    CATUnicodeString usDataType;
    EXPECT_EQ(QTBXmlUtil::GetNodeAttributeDataType(spWritten, &usDataType), S_OK);
    EXPECT_EQ(usDataType, "list");
}

TEST(SimpleListAttr, TheTooltipJoinsTheValues)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"N\" type=\"list\"><v>one</v><v>two</v><v>three</v></a>");
    EXPECT_EQ(QTBSimpleListAttr(&spElement).ToString(), "one, two, three");
}

TEST(SimpleListAttr, TheTooltipOfALongListIsShort)
{
    std::string xml("<a name=\"N\" type=\"list\">");
    for (int i = 0; i < 100000; ++i) {
        xml += "<v>value</v>";
    }
    CATIDOMElement_var spElement = ReadXmlElement(xml + "</a>");
    EXPECT_EQ(QTBSimpleListAttr(&spElement).ToString().GetLengthInChar(), QTBNodeAttr::TOOLTIP_LENGTH);
}

class InvalidSimpleListAttr : public testing::TestWithParam<const char*>
{
};

TEST_P(InvalidSimpleListAttr, FailsInEverything)
{
    CATIDOMElement_var spElement = ReadXmlElement(GetParam());
    QTBSimpleListAttr attribute(&spElement);
    CATUnicodeString usText("untouched");
    int iSize = -1;
    EXPECT_EQ(attribute.IsValid(), FALSE);
    EXPECT_EQ(attribute.GetName(&usText), E_FAIL);
    EXPECT_EQ(attribute.GetSize(&iSize), E_FAIL);
    EXPECT_EQ(attribute.GetValue(1, &usText), E_FAIL);
    EXPECT_EQ(attribute.WriteXmlToString(&usText, FALSE), E_FAIL);
    EXPECT_EQ(usText, "untouched");
    EXPECT_EQ(attribute.ToString(), "");
}

INSTANTIATE_TEST_SUITE_P(Elements, InvalidSimpleListAttr,
                         testing::Values("<a type=\"list\"><v>x</v></a>", "<a name=\"\" type=\"list\"><v>x</v></a>",
                                         "<a name=\"N\" type=\"list\"><v>x</v><w>y</w></a>",
                                         "<a name=\"N\" type=\"list\">text<v>x</v></a>",
                                         "<a name=\"N\" type=\"list\"><v>x</v>text</a>",
                                         "<a name=\"N\" type=\"list\">text</a>",
                                         "<a name=\"N\" type=\"list\"><v>x<v>y</v></v></a>"));

TEST(SimpleListAttr, WithoutAnElementIsNotValid)
{
    EXPECT_EQ(QTBSimpleListAttr(nullptr).IsValid(), FALSE);
}

} // namespace

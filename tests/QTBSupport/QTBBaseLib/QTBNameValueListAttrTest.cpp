#include "QTBNameValueListAttr.h"

#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "QTBXmlElement.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

std::vector<std::pair<CATUnicodeString, CATUnicodeString>> EntriesOf(const QTBNameValueListAttr& attribute)
{
    int iSize = -1;
    EXPECT_EQ(attribute.GetSize(&iSize), S_OK);
    std::vector<std::pair<CATUnicodeString, CATUnicodeString>> entries;
    for (int i = 1; i <= iSize; ++i) {
        CATUnicodeString usName;
        CATUnicodeString usValue;
        EXPECT_EQ(attribute.GetEntry(i, &usName, &usValue), S_OK);
        entries.emplace_back(usName, usValue);
    }
    return entries;
}

CATUnicodeString ValueOf(const QTBNameValueListAttr& attribute, const char* name)
{
    CATUnicodeString usValue("unread");
    EXPECT_EQ(attribute.GetNvValue(name, &usValue), S_OK) << name;
    return usValue;
}

unsigned char IsDefined(const QTBNameValueListAttr& attribute, const char* name)
{
    unsigned char bIsDefined = 17;
    EXPECT_EQ(attribute.NvValueIsDefined(name, &bIsDefined), S_OK);
    return bIsDefined;
}

constexpr const char* MASSES = "<a name=\"Info\" type=\"nvlist\">\n"
                               "  <nv name=\"Mass\" unit=\"kg\" source=\"CAD\">1.5</nv>\n"
                               "  <nv name=\"State\">released</nv>\n"
                               "  <nv empty=\"\" name=\"Note\"/>\n</a>";

TEST(NameValueListAttr, EntriesAreReadInOrder)
{
    CATIDOMElement_var spElement = ReadXmlElement(MASSES);
    const QTBNameValueListAttr attribute(&spElement);
    CATUnicodeString usName;
    EXPECT_EQ(attribute.GetName(&usName), S_OK);
    EXPECT_EQ(usName, "Info");
    EXPECT_THAT(EntriesOf(attribute), ElementsAre(Pair("Mass", "1.5"), Pair("State", "released"), Pair("Note", "")));
}

TEST(NameValueListAttr, ValuesAreFoundByName)
{
    CATIDOMElement_var spElement = ReadXmlElement(MASSES);
    const QTBNameValueListAttr attribute(&spElement);
    EXPECT_EQ(ValueOf(attribute, "Mass"), "1.5");
    EXPECT_EQ(ValueOf(attribute, "Note"), "");
    EXPECT_EQ(IsDefined(attribute, "State"), TRUE);
    CATUnicodeString usValue("untouched");
    for (const char* name : {"mass", "Nothing", "", "Info"}) {
        EXPECT_EQ(IsDefined(attribute, name), FALSE);
        EXPECT_EQ(attribute.GetNvValue(name, &usValue), E_FAIL);
    }
    EXPECT_EQ(usValue, "untouched");
}

TEST(NameValueListAttr, FurtherXmlAttributesOfAnEntryAreRead)
{
    CATIDOMElement_var spElement = ReadXmlElement(MASSES);
    const QTBNameValueListAttr attribute(&spElement);
    CATUnicodeString usValue;
    EXPECT_EQ(attribute.GetNvEntryXmlAttrVal("Mass", "unit", &usValue), S_OK);
    EXPECT_EQ(usValue, "kg");
    EXPECT_EQ(attribute.GetNvEntryXmlAttrVal("Mass", "source", &usValue), S_OK);
    EXPECT_EQ(usValue, "CAD");
    EXPECT_EQ(attribute.GetNvEntryXmlAttrVal("Note", "empty", &usValue), S_OK);
    EXPECT_EQ(usValue, "");
    usValue = "untouched";
    EXPECT_EQ(attribute.GetNvEntryXmlAttrVal("State", "unit", &usValue), E_FAIL);
    EXPECT_EQ(attribute.GetNvEntryXmlAttrVal("Mass", "empty", &usValue), E_FAIL);
    EXPECT_EQ(attribute.GetNvEntryXmlAttrVal("Nothing", "unit", &usValue), E_FAIL);
    EXPECT_EQ(usValue, "untouched");
}

TEST(NameValueListAttr, AnEntryWithoutFurtherXmlAttributesHasNone)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"Info\" type=\"nvlist\"><nv name=\"A\">1</nv></a>");
    CATUnicodeString usValue;
    EXPECT_EQ(QTBNameValueListAttr(&spElement).GetNvEntryXmlAttrVal("A", "unit", &usValue), E_FAIL);
}

TEST(NameValueListAttr, AChangedEntryKeepsItsPlaceAndItsXmlAttributes)
{
    CATIDOMElement_var spElement = ReadXmlElement(MASSES);
    QTBNameValueListAttr attribute(&spElement);
    EXPECT_EQ(attribute.SetNvValue("Mass", "2.5"), S_OK);
    EXPECT_EQ(WriteAttribute(attribute), "<a name=\"Info\" type=\"nvlist\">"
                                         "<nv name=\"Mass\" unit=\"kg\" source=\"CAD\">2.5</nv>"
                                         "<nv name=\"State\">released</nv><nv name=\"Note\" empty=\"\"></nv></a>");
}

TEST(NameValueListAttr, ANewEntryStandsAtTheEnd)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"Info\" type=\"nvlist\"/>");
    QTBNameValueListAttr attribute(&spElement);
    EXPECT_THAT(EntriesOf(attribute), IsEmpty());
    EXPECT_EQ(attribute.SetNvValue("A", "1"), S_OK);
    EXPECT_EQ(attribute.SetNvValue("B", "2"), S_OK);
    EXPECT_EQ(attribute.SetNvValue("A", "3"), S_OK);
    EXPECT_THAT(EntriesOf(attribute), ElementsAre(Pair("A", "3"), Pair("B", "2")));
    EXPECT_EQ(attribute.SetNvValue("", "4"), E_FAIL);
    EXPECT_EQ(WriteAttribute(attribute),
              "<a name=\"Info\" type=\"nvlist\"><nv name=\"A\">3</nv><nv name=\"B\">2</nv></a>");
}

TEST(NameValueListAttr, WhatIsWrittenReadsBack)
{
    CATIDOMElement_var spElement = ReadXmlElement(
        "<a name=\"&lt;N&gt;\" type=\"nvlist\"><nv name=\"&quot;&amp;\" unit=\"&lt;&#10;\xC2\xB5m\">x</nv></a>");
    QTBNameValueListAttr attribute(&spElement);
    ASSERT_EQ(attribute.SetNvValue("\"&", AWKWARD_TEXT), S_OK);
    ASSERT_EQ(attribute.SetNvValue(AWKWARD_TEXT, "\xE6\x97\xA5\xE6\x9C\xAC"), S_OK);
    CATIDOMElement_var spWritten = ReadXmlElement(WriteAttribute(attribute));
    const QTBNameValueListAttr reread(&spWritten);
    EXPECT_THAT(EntriesOf(reread),
                ElementsAre(Pair("\"&", AWKWARD_TEXT), Pair(AWKWARD_TEXT, "\xE6\x97\xA5\xE6\x9C\xAC")));
    CATUnicodeString usValue;
    EXPECT_EQ(reread.GetNvEntryXmlAttrVal("\"&", "unit", &usValue), S_OK);
    EXPECT_EQ(usValue, "<\n\xC2\xB5m");
    EXPECT_EQ(reread.GetName(&usValue), S_OK);
    EXPECT_EQ(usValue, "<N>");
}

TEST(NameValueListAttr, ALongListIsReadAndSearchedInLinearTime)
{
    constexpr int COUNT = 200000;
    std::string xml("<a name=\"Info\" type=\"nvlist\">");
    for (int i = 0; i < COUNT; ++i) {
        xml += "<nv name=\"n" + std::to_string(i) + "\" unit=\"u" + std::to_string(i) + "\">" + std::to_string(i) +
               "</nv>";
    }
    CATIDOMElement_var spElement = ReadXmlElement(xml + "</a>");
    QTBNameValueListAttr attribute(&spElement);
    for (int i = 0; i < COUNT; ++i) {
        CATUnicodeString usValue;
        const std::string number = std::to_string(i);
        ASSERT_EQ(attribute.GetNvValue(("n" + number).c_str(), &usValue), S_OK);
        ASSERT_EQ(usValue, number.c_str());
        ASSERT_EQ(attribute.GetNvEntryXmlAttrVal(("n" + number).c_str(), "unit", &usValue), S_OK);
        ASSERT_EQ(usValue, ("u" + number).c_str());
    }
    EXPECT_EQ(attribute.SetNvValue("n7", "changed"), S_OK);
    EXPECT_EQ(attribute.SetNvValue("new", "added"), S_OK);
    EXPECT_EQ(ValueOf(attribute, "n7"), "changed");
    EXPECT_EQ(ValueOf(attribute, "new"), "added");
    int iSize = 0;
    EXPECT_EQ(attribute.GetSize(&iSize), S_OK);
    EXPECT_EQ(iSize, COUNT + 1);
}

TEST(NameValueListAttr, AListGrowsEntryByEntry)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"Info\" type=\"nvlist\"/>");
    QTBNameValueListAttr attribute(&spElement);
    for (int i = 0; i < 100; ++i) {
        CATUnicodeString usNumber;
        usNumber.BuildFromNum(i);
        ASSERT_EQ(attribute.SetNvValue(usNumber, usNumber), S_OK);
        ASSERT_EQ(attribute.SetNvValue("0", "0"), S_OK);
        for (int j = 0; j <= i; ++j) {
            usNumber.BuildFromNum(j);
            ASSERT_EQ(ValueOf(attribute, usNumber.ConvertToChar()), usNumber);
        }
        usNumber.BuildFromNum(i + 1);
        ASSERT_EQ(IsDefined(attribute, usNumber.ConvertToChar()), FALSE);
    }
}

TEST(NameValueListAttr, ANameTwiceInALongListIsNotValid)
{
    std::string xml("<a name=\"Info\" type=\"nvlist\">");
    for (int i = 0; i < 100; ++i) {
        xml += "<nv name=\"n" + std::to_string(i) + "\"/>";
    }
    CATIDOMElement_var spElement = ReadXmlElement(xml + "<nv name=\"n50\"/></a>");
    EXPECT_EQ(QTBNameValueListAttr(&spElement).IsValid(), FALSE);
}

TEST(NameValueListAttr, TheTooltipJoinsNamesAndValues)
{
    CATIDOMElement_var spElement = ReadXmlElement(MASSES);
    EXPECT_EQ(QTBNameValueListAttr(&spElement).ToString(), "Mass=1.5, State=released, Note=");
}

TEST(NameValueListAttr, PositionsOutsideTheListFail)
{
    CATIDOMElement_var spElement = ReadXmlElement(MASSES);
    const QTBNameValueListAttr attribute(&spElement);
    CATUnicodeString usName("untouched");
    CATUnicodeString usValue;
    EXPECT_EQ(attribute.GetEntry(0, &usName, &usValue), E_FAIL);
    EXPECT_EQ(attribute.GetEntry(4, &usName, &usValue), E_FAIL);
    EXPECT_EQ(usName, "untouched");
}

TEST(NameValueListAttr, NullPointersAreRefused)
{
    CATIDOMElement_var spElement = ReadXmlElement(MASSES);
    const QTBNameValueListAttr attribute(&spElement);
    CATUnicodeString usText;
    EXPECT_EQ(attribute.NvValueIsDefined("Mass", nullptr), E_POINTER);
    EXPECT_EQ(attribute.GetNvValue("Mass", nullptr), E_POINTER);
    EXPECT_EQ(attribute.GetNvEntryXmlAttrVal("Mass", "unit", nullptr), E_POINTER);
    EXPECT_EQ(attribute.GetSize(nullptr), E_POINTER);
    EXPECT_EQ(attribute.GetEntry(1, nullptr, &usText), E_POINTER);
    EXPECT_EQ(attribute.GetEntry(1, &usText, nullptr), E_POINTER);
}

class InvalidNameValueListAttr : public testing::TestWithParam<const char*>
{
};

TEST_P(InvalidNameValueListAttr, FailsInEverything)
{
    CATIDOMElement_var spElement = ReadXmlElement(GetParam());
    QTBNameValueListAttr attribute(&spElement);
    CATUnicodeString usText("untouched");
    unsigned char bIsDefined = FALSE;
    int iSize = -1;
    EXPECT_EQ(attribute.IsValid(), FALSE);
    EXPECT_EQ(attribute.GetName(&usText), E_FAIL);
    EXPECT_EQ(attribute.NvValueIsDefined("A", &bIsDefined), E_FAIL);
    EXPECT_EQ(attribute.GetNvValue("A", &usText), E_FAIL);
    EXPECT_EQ(attribute.SetNvValue("A", "x"), E_FAIL);
    EXPECT_EQ(attribute.GetNvEntryXmlAttrVal("A", "unit", &usText), E_FAIL);
    EXPECT_EQ(attribute.GetSize(&iSize), E_FAIL);
    EXPECT_EQ(attribute.GetEntry(1, &usText, &usText), E_FAIL);
    EXPECT_EQ(attribute.WriteXmlToString(&usText, FALSE), E_FAIL);
    EXPECT_EQ(usText, "untouched");
    EXPECT_EQ(attribute.ToString(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Elements, InvalidNameValueListAttr,
    testing::Values("<a type=\"nvlist\"><nv name=\"A\" unit=\"x\">1</nv></a>",
                    "<a name=\"\" type=\"nvlist\"><nv name=\"A\">1</nv></a>",
                    "<a name=\"N\" type=\"nvlist\"><nv name=\"A\">1</nv><v/></a>",
                    "<a name=\"N\" type=\"nvlist\"><nv name=\"A\">1</nv>text</a>",
                    "<a name=\"N\" type=\"nvlist\">text</a>",
                    "<a name=\"N\" type=\"nvlist\"><nv name=\"A\">1</nv><nv>2</nv></a>",
                    "<a name=\"N\" type=\"nvlist\"><nv name=\"A\">1</nv><nv name=\"\">2</nv></a>",
                    "<a name=\"N\" type=\"nvlist\"><nv name=\"A\" unit=\"x\">1<b/></nv></a>",
                    "<a name=\"N\" type=\"nvlist\"><nv name=\"A\">1</nv><nv name=\"A\">1</nv></a>"));

} // namespace

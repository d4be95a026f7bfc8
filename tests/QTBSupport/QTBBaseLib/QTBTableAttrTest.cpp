#include "QTBTableAttr.h"

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "QTBXmlElement.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<std::vector<CATUnicodeString>> CellsOf(const QTBTableAttr& attribute)
{
    int iRowCount = -1;
    EXPECT_EQ(attribute.GetRowCount(&iRowCount), S_OK);
    std::vector<std::vector<CATUnicodeString>> rows;
    for (int row = 1; row <= iRowCount; ++row) {
        int iCellCount = -1;
        EXPECT_EQ(attribute.GetCellCount(row, &iCellCount), S_OK);
        rows.emplace_back();
        for (int cell = 1; cell <= iCellCount; ++cell) {
            CATUnicodeString usCell;
            EXPECT_EQ(attribute.GetCell(row, cell, &usCell), S_OK);
            rows.back().push_back(usCell);
        }
    }
    return rows;
}

constexpr const char* TABLE = "<a name=\"N\" type=\"table\">\n <row>\n <cell>1.1</cell> <cell/> </row>\n <row/>\n"
                              " <row><cell> 3.1 </cell></row>\n</a>";

TEST(TableAttr, RowsMayDifferInLength)
{
    CATIDOMElement_var spElement = ReadXmlElement(TABLE);
    const QTBTableAttr attribute(&spElement);
    EXPECT_THAT(CellsOf(attribute), ElementsAre(ElementsAre("1.1", ""), IsEmpty(), ElementsAre(" 3.1 ")));
    CATUnicodeString usName;
    EXPECT_EQ(attribute.GetName(&usName), S_OK);
    EXPECT_EQ(usName, "N");
}

TEST(TableAttr, ATableMayBeEmpty)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"N\" type=\"table\"/>");
    EXPECT_THAT(CellsOf(QTBTableAttr(&spElement)), IsEmpty());
}

TEST(TableAttr, PositionsOutsideTheTableFail)
{
    CATIDOMElement_var spElement = ReadXmlElement(TABLE);
    const QTBTableAttr attribute(&spElement);
    CATUnicodeString usCell("untouched");
    int iCount = 17;
    for (const int row : {0, -1, 4}) {
        EXPECT_EQ(attribute.GetCellCount(row, &iCount), E_FAIL);
        EXPECT_EQ(attribute.GetCell(row, 1, &usCell), E_FAIL);
    }
    EXPECT_EQ(attribute.GetCell(1, 0, &usCell), E_FAIL);
    EXPECT_EQ(attribute.GetCell(1, 3, &usCell), E_FAIL);
    EXPECT_EQ(attribute.GetCell(2, 1, &usCell), E_FAIL);
    EXPECT_EQ(iCount, 17);
    EXPECT_EQ(usCell, "untouched");
    EXPECT_EQ(attribute.GetRowCount(nullptr), E_POINTER);
    EXPECT_EQ(attribute.GetCellCount(1, nullptr), E_POINTER);
    EXPECT_EQ(attribute.GetCell(1, 1, nullptr), E_POINTER);
}

TEST(TableAttr, WhatIsWrittenReadsBack)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"N\" type=\"table\"><row/></a>");
    CATIDOMElement_var spRow;
    CATIDOMElement_var spCell;
    ASSERT_EQ(QTBXmlUtil::CreateChildNode("row", "", &spElement, &spRow), S_OK);
    ASSERT_EQ(QTBXmlUtil::CreateChildNode("cell", AWKWARD_TEXT, &spRow, &spCell), S_OK);
    ASSERT_EQ(QTBXmlUtil::CreateChildNode("cell", "", &spRow, &spCell), S_OK);
    const std::string written = WriteAttribute(QTBTableAttr(&spElement));
    CATIDOMElement_var spWritten = ReadXmlElement(written);
    EXPECT_THAT(CellsOf(QTBTableAttr(&spWritten)), ElementsAre(IsEmpty(), ElementsAre(AWKWARD_TEXT, "")));
    EXPECT_EQ(WriteAttribute(QTBTableAttr(&spWritten)), written);
}

TEST(TableAttr, TheTooltipJoinsCellsAndRows)
{
    CATIDOMElement_var spElement = ReadXmlElement("<a name=\"N\" type=\"table\"><row><cell>1</cell><cell>2</cell></row>"
                                                  "<row><cell>3</cell></row></a>");
    EXPECT_EQ(QTBTableAttr(&spElement).ToString(), "1, 2; 3");
}

class InvalidTableAttr : public testing::TestWithParam<const char*>
{
};

TEST_P(InvalidTableAttr, FailsInEverything)
{
    CATIDOMElement_var spElement = ReadXmlElement(GetParam());
    QTBTableAttr attribute(&spElement);
    CATUnicodeString usText("untouched");
    int iCount = -1;
    EXPECT_EQ(attribute.IsValid(), FALSE);
    EXPECT_EQ(attribute.GetName(&usText), E_FAIL);
    EXPECT_EQ(attribute.GetRowCount(&iCount), E_FAIL);
    EXPECT_EQ(attribute.GetCellCount(1, &iCount), E_FAIL);
    EXPECT_EQ(attribute.GetCell(1, 1, &usText), E_FAIL);
    EXPECT_EQ(attribute.WriteXmlToString(&usText, FALSE), E_FAIL);
    EXPECT_EQ(usText, "untouched");
    EXPECT_EQ(attribute.ToString(), "");
}

INSTANTIATE_TEST_SUITE_P(Elements, InvalidTableAttr,
                         testing::Values("<a type=\"table\"><row><cell>1</cell></row></a>",
                                         "<a name=\"N\" type=\"table\"><row><cell>1</cell></row><v/></a>",
                                         "<a name=\"N\" type=\"table\"><cell>1</cell></a>",
                                         "<a name=\"N\" type=\"table\"><row><cell>1</cell></row>text</a>",
                                         "<a name=\"N\" type=\"table\"><row><cell>1</cell>text</row></a>",
                                         "<a name=\"N\" type=\"table\"><row><cell>1</cell><v/></row></a>",
                                         "<a name=\"N\" type=\"table\"><row><cell>1<b/></cell></row></a>"));

} // namespace

// The examples of docs/formats.md say what the program really reads.

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include <gmock/gmock.h>

#include "CATError.h"
#include "QTBINodeAttributes.h"
#include "QTBInfoUtil.h"
#include "QTBNameValueListAttr.h"
#include "QTBSchema.h"
#include "QTBSchemaUtil.h"
#include "QTBSimpleListAttr.h"
#include "QTBTableAttr.h"
#include "QTBTestFolder.h"
#include "QTBTestSession.h"

using ::testing::ElementsAre;

namespace {

std::string ReadFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// The XML block behind the marker `<!-- example: NAME -->`.
std::string Example(const std::string& name)
{
    const std::string text = ReadFile(QTB_SOURCE_DIR "/docs/formats.md");
    const std::string begin = "<!-- example: " + name + " -->\n```xml\n";
    const std::size_t from = text.find(begin);
    EXPECT_NE(from, std::string::npos) << name;
    const std::size_t to = text.find("```", from + begin.size());
    return from == std::string::npos ? std::string() : text.substr(from + begin.size(), to - from - begin.size());
}

class Formats : public QTBTestSession
{
protected:
    static HRESULT LoadSchemaText(const std::string& text)
    {
        const QTBTestFolder folder;
        return QTBSchemaUtil::LoadSchema(folder.Write("schema.xml", text).c_str());
    }

    static std::string TypeOf(const char* key, const char* attribute)
    {
        const QTBINodeAttributes_var spINodeAttributes(FindNode(key));
        CATUnicodeString usType;
        EXPECT_EQ(spINodeAttributes->GetAttributeDataType(attribute, &usType), S_OK) << attribute;
        return std::string(usType.View());
    }
};

} // namespace

TEST_F(Formats, TheExampleAnswerIsRead)
{
    ASSERT_EQ(TryUpdate(Example("answer")), S_OK);
    EXPECT_THAT(AllKeys(), ElementsAre("File/4711.CATPart", "Part/0815/A", "Part/4711/B", "Part/4711/B.Owner",
                                       "PartFile/1", "Usage/1"));
    EXPECT_THAT(RightKeys("Part/4711/B", "StandardPartUsage"), ElementsAre("Usage/1"));
    EXPECT_THAT(LeftKeys("File/4711.CATPart", "PartFile"), ElementsAre("PartFile/1"));
    EXPECT_EQ(AttributeOf(FindNode("Part/4711/B"), "Name"), "Bracket");
    EXPECT_EQ(InfoOf(FindNode("Part/4711/B"), "QtbVersion"), "B");
}

TEST_F(Formats, TheExampleHasAnAttributeOfEachType)
{
    ASSERT_EQ(TryUpdate(Example("answer")), S_OK);
    const char* key = "Part/4711/B";
    EXPECT_EQ(TypeOf(key, "Name"), "string");
    EXPECT_EQ(TypeOf(key, "Colors"), "list");
    EXPECT_EQ(TypeOf(key, "Measures"), "nvlist");
    EXPECT_EQ(TypeOf(key, "Tolerances"), "table");
    EXPECT_EQ(TypeOf(key, "Owner"), "object");

    const QTBINodeAttributes_var spINodeAttributes(FindNode(key));
    QTBSimpleListAttr* pColors = nullptr;
    ASSERT_EQ(spINodeAttributes->GetSimpleListAttributePtr("Colors", &pColors), S_OK);
    CATUnicodeString text;
    ASSERT_EQ(pColors->GetValue(2, &text), S_OK);
    EXPECT_EQ(text, "blue");
    QTBNameValueListAttr* pMeasures = nullptr;
    ASSERT_EQ(spINodeAttributes->GetNameValueListAttributePtr("Measures", &pMeasures), S_OK);
    ASSERT_EQ(pMeasures->GetNvEntryXmlAttrVal("Mass", "unit", &text), S_OK);
    EXPECT_EQ(text, "kg");
    QTBTableAttr* pTolerances = nullptr;
    ASSERT_EQ(spINodeAttributes->GetTableAttributePtr("Tolerances", &pTolerances), S_OK);
    ASSERT_EQ(pTolerances->GetCell(2, 2, &text), S_OK);
    EXPECT_EQ(text, "g6");
    EXPECT_EQ(AttributeOf(FindNode("Part/4711/B.Owner"), "FullName"), "Jo Doe");
}

TEST_F(Formats, ValuesOfTheExampleAreShownByTheirDisplayNames)
{
    ASSERT_EQ(TryUpdate(Example("answer")), S_OK);
    const QTBINodeAttributes_var spINodeAttributes(FindNode("Part/4711/B"));
    CATUnicodeString value;
    ASSERT_EQ(spINodeAttributes->GetStringAttributeValue("State", &value, FALSE, TRUE), S_OK);
    EXPECT_EQ(value, "Released");
    ASSERT_EQ(spINodeAttributes->GetStringAttributeValue("State", &value, FALSE, FALSE), S_OK);
    EXPECT_EQ(value, "30");
}

TEST_F(Formats, ARelationOfTheExampleIsOfItsParentClassToo)
{
    ASSERT_EQ(TryUpdate(Example("answer")), S_OK);
    unsigned char bIsA = FALSE;
    ASSERT_EQ(RelNode("Usage/1")->IsA("PartPart", &bIsA), S_OK);
    EXPECT_EQ(bIsA, TRUE);
    CATListValCATUnicodeString instanceNames;
    ASSERT_EQ(QTBInfoUtil::GetCatiaInstanceNameListFromPdm(PdmNode("Usage/1"), &instanceNames), S_OK);
    EXPECT_THAT(TextsOf(instanceNames), ElementsAre("Screw.1", "Screw.2"));
}

TEST_F(Formats, TheExampleSchemaIsReadAndFitsTheAnswer)
{
    const HRESULT hr = LoadSchemaText(Example("schema"));
    ASSERT_EQ(hr, S_OK) << CATError::CATGetLastError(hr, nullptr)->GetNLSMessage();
    ASSERT_EQ(TryUpdate(Example("answer")), S_OK);
    // The schema does not know files.
    EXPECT_THAT(AllKeys(), ElementsAre("Part/0815/A", "Part/4711/B", "Part/4711/B.Owner", "Usage/1"));
    CATUnicodeString description;
    ASSERT_EQ(PdmNode("Part/4711/B")->GetDescriptionString(&description), S_OK);
    EXPECT_EQ(description, "4711, Jo Doe");
}

TEST_F(Formats, TheGrammarAcceptsTheExampleSchema)
{
    if (std::system("command -v xmllint > /dev/null") != 0) {
        GTEST_SKIP() << "xmllint is not installed";
    }
    const QTBTestFolder folder;
    const std::string path = folder.Write("schema.xml", Example("schema"));
    const std::string command = "xmllint --noout --schema " QTB_SOURCE_DIR "/resources/schema/QTBSchema.xsd " + path;
    EXPECT_EQ(std::system((command + " 2> /dev/null").c_str()), 0);
}

TEST_F(Formats, TheExamplesOfTheProjectFitItsSchema)
{
    for (const char* folder : {"as1", "odrive"}) {
        for (const char* file : {"structure.xml", "files.xml"}) {
            const std::string path = std::string(QTB_SOURCE_DIR "/examples/") + folder + "/" + file;
            ASSERT_EQ(TryUpdate(ReadFile(path)), S_OK) << path;
        }
    }
    EXPECT_THAT(RightKeys("nut", "PartFile"), ElementsAre("PartFile/nut"));
    EXPECT_THAT(LeftKeys("PartFile/nut", "PartFile"), ElementsAre("nut"));
}

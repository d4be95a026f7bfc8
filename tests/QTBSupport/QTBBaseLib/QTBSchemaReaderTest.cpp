#include "QTBSchemaReader.h"

#include <cstdlib>
#include <iterator>
#include <sstream>

#include <gmock/gmock.h>

#include "QTBPdmTree.h"
#include "QTBSchemaFixture.h"

using ::testing::HasSubstr;

namespace {

class SchemaReader : public QTBSchemaFixture
{
protected:
    // Loads what is wrong and expects the line, the problem and what was expected instead; the schema stays.
    void ExpectRefusal(std::string_view text, int line, const std::string& problem, const std::string& expected)
    {
        const QTBSchema* pBefore = &Current();
        const HRESULT hr = Load(text);
        EXPECT_LT(hr, 0);
        EXPECT_EQ(&Current(), pBefore);
        const auto* pError = dynamic_cast<const CATXMLError*>(CATError::CATGetLastError(hr, nullptr));
        ASSERT_NE(pError, nullptr);
        EXPECT_EQ(pError->GetSourceName(), m_File.c_str());
        EXPECT_EQ(pError->GetLine(), line);
        EXPECT_EQ(std::string(pError->GetProblem().View()), problem);
        EXPECT_EQ(std::string(pError->GetExpected().View()), expected);
    }
};

constexpr const char* PART = R"(<object name="Part"><part subParts="true"/></object>)";

} // namespace

TEST_F(SchemaReader, ReadsTheProjectSchema)
{
    EXPECT_EQ(Current().GetObjectCount(), 12);
    EXPECT_EQ(Current().GetRelationCount(), 6);
}

TEST_F(SchemaReader, TheGrammarAcceptsTheProjectSchema)
{
    if (std::system("command -v xmllint > /dev/null") != 0) {
        GTEST_SKIP() << "xmllint is not installed";
    }
    EXPECT_EQ(std::system("xmllint --noout --schema " QTB_SOURCE_DIR "/resources/schema/QTBSchema.xsd " QTB_SOURCE_DIR
                          "/resources/schema/QTBSchema.xml 2> /dev/null"),
              0);
}

TEST_F(SchemaReader, AFileThatIsNotThereIsNamed)
{
    const HRESULT hr = QTBSchemaUtil::LoadSchema("/nowhere/QTBSchema.xml");
    const CATError* pError = CATError::CATGetLastError(hr, nullptr);
    ASSERT_NE(pError, nullptr);
    EXPECT_THAT(std::string(pError->GetNLSMessage().View()), HasSubstr("/nowhere/QTBSchema.xml"));
    EXPECT_EQ(Current().GetObjectCount(), 12);
}

TEST_F(SchemaReader, MalformedXmlIsRefusedWithItsLine)
{
    const HRESULT hr = Load("<qtbSchema>\n<objects>\n</qtbSchema>");
    const auto* pError = dynamic_cast<const CATXMLError*>(CATError::CATGetLastError(hr, nullptr));
    ASSERT_NE(pError, nullptr);
    EXPECT_EQ(pError->GetLine(), 3);
    EXPECT_EQ(Current().GetObjectCount(), 12);
}

TEST_F(SchemaReader, TheMessageNamesFileLineProblemAndExpectation)
{
    const HRESULT hr = Load(Schema(PART, "", "<wrong/>"));
    const std::string message(CATError::CATGetLastError(hr, nullptr)->GetNLSMessage().View());
    EXPECT_THAT(message, HasSubstr(m_File));
    EXPECT_THAT(message, HasSubstr("line 9"));
    EXPECT_THAT(message, HasSubstr(R"(the element "wrong" in the element "qtbSchema")"));
    EXPECT_THAT(message, HasSubstr("<objects>"));
}

TEST_F(SchemaReader, AnotherDocumentElementIsRefused)
{
    ExpectRefusal("<schema/>", 1, R"(the element "schema")", "<qtbSchema>");
}

TEST_F(SchemaReader, NeedsSystemAndCatalog)
{
    ExpectRefusal(R"(<qtbSchema catalog="X"/>)", 1, R"(the element "qtbSchema" has no attribute "system")",
                  "system=\"...\"");
    ExpectRefusal(R"(<qtbSchema system="other" catalog="X"/>)", 1, R"(the value "other" of the attribute "system")",
                  R"("ARAS_INNOVATOR" or "ENOVIA_MATRIX")");
    ExpectRefusal("<qtbSchema system=\"ENOVIA_MATRIX\"\n catalog=\"\"/>", 2,
                  R"(the value "" of the attribute "catalog")", "a text that is not empty");
}

TEST_F(SchemaReader, NeedsTheNamesOfTheAttributes)
{
    ExpectRefusal(R"(<qtbSchema system="ENOVIA_MATRIX" catalog="X"/>)", 1,
                  R"(the element "qtbSchema" has no element "attributeNames")", "<attributeNames>");
    ExpectRefusal("<qtbSchema system=\"ENOVIA_MATRIX\" catalog=\"X\">\n<attributeNames key=\"K\"/></qtbSchema>", 2,
                  R"(the element "attributeNames" has no attribute "class")", "class=\"...\"");
    ExpectRefusal(
        "<qtbSchema system=\"ENOVIA_MATRIX\" catalog=\"X\">\n<attributeNames class=\"C\" key=\"\"/></qtbSchema>", 2,
        R"(the value "" of the attribute "key")", "a text that is not empty");
}

TEST_F(SchemaReader, NeedsObjects)
{
    ExpectRefusal(Schema(""), 3, R"(the element "objects" has no element)", "<object>");
}

TEST_F(SchemaReader, RefusesAttributesElementsAndTextThatAreNotKnown)
{
    ExpectRefusal(Schema("<object\n colour=\"red\" name=\"Part\"/>"), 5,
                  R"(the attribute "colour" of the element "object")",
                  R"("name", "parent", "nlsKey", "icon" or "tooltipAttr")");
    ExpectRefusal(Schema("<object name=\"Part\">\n\n<left class=\"Part\"/></object>"), 6,
                  R"(the element "left" in the element "object")",
                  "<description>, <form>, <contextAction>, <part>, <catiaFile>, <partToFile> or <pdmTree>");
    ExpectRefusal(Schema(R"(<object name="Part">text</object>)"), 4, R"(text in the element "object")",
                  "attributes and elements only");
    ExpectRefusal(Schema(R"(<object name="Part"><part><part/></part></object>)"), 4,
                  R"(the element "part" in the element "part")", "no element");
}

TEST_F(SchemaReader, SectionsStandOnceAndInAnyOrder)
{
    ExpectRefusal(Schema(PART, "", "<session/>\n<session/>"), 10, R"(a second element "session")", "one at most");
    EXPECT_EQ(Load("<qtbSchema system=\"ARAS_INNOVATOR\" catalog=\"X\"><relations><relation name=\"PartPart\">"
                   "<left class=\"Part\"/><right class=\"Part\"/></relation></relations><objects>" +
                   std::string(PART) + "</objects>" + std::string(ATTRIBUTE_NAMES) + "</qtbSchema>"),
              S_OK);
    EXPECT_EQ(Current().GetRelationCount(), 1);
}

TEST_F(SchemaReader, RefusesFlagsAndNumbersThatAreNone)
{
    ExpectRefusal(Schema(R"(<object name="Part"><part subParts="yes"/></object>)"), 4,
                  R"(the value "yes" of the attribute "subParts")", R"("true" or "false")");
    for (const char* number : {"", "x", "1.5", "-2", "1000001", "99999999999", " 1"}) {
        ExpectRefusal(Schema(PART, "", "", "maxExpansionLevel=\"" + std::string(number) + "\""), 1,
                      "the value \"" + std::string(number) + "\" of the attribute \"maxExpansionLevel\"",
                      "a whole number from -1 to 1000000");
    }
}

TEST_F(SchemaReader, ClassNamesAreUniqueAcrossObjectsAndRelations)
{
    ExpectRefusal(Schema("<object name=\"Part\"/>\n<object name=\"Part\"/>"), 5,
                  R"(the value "Part" of the attribute "name")", "a name that no other class has");
    ExpectRefusal(Schema(PART, R"(<relation name="Part"/>)"), 7, R"(the value "Part" of the attribute "name")",
                  "a name that no other class has");
}

TEST_F(SchemaReader, AParentStandsBeforeItsSubclass)
{
    const std::string expected = "a class of the same kind that stands before its subclass";
    ExpectRefusal(Schema("<object name=\"Screw\" parent=\"Part\"/>\n" + std::string(PART)), 4,
                  R"(the value "Part" of the attribute "parent")", expected);
    ExpectRefusal(Schema(R"(<object name="Part" parent="Part"/>)"), 4, R"(the value "Part" of the attribute "parent")",
                  expected);
    ExpectRefusal(Schema(PART, R"(<relation name="PartPart" parent="Part"/>)"), 7,
                  R"(the value "Part" of the attribute "parent")", expected);
}

TEST_F(SchemaReader, LinesOfDescentAreLimited)
{
    std::ostringstream objects;
    objects << "<object name=\"C1\"/>\n";
    for (int i = 2; i <= QTBSchemaReader::MAX_CLASS_LEVEL; ++i) {
        objects << "<object name=\"C" << i << "\" parent=\"C" << i - 1 << "\"/>\n";
    }
    ASSERT_EQ(Load(Schema(objects.str())), S_OK);
    EXPECT_TRUE(Object("C32").IsKindOf("C1"));
    ExpectRefusal(Schema(objects.str() + "<object name=\"C33\" parent=\"C32\"/>"), 36,
                  R"(the value "C32" of the attribute "parent")",
                  "at most 32 classes from the topmost to the last subclass");
}

TEST_F(SchemaReader, TheNumberOfClassesIsLimited)
{
    std::string objects;
    for (int i = 1; i <= QTBSchemaReader::MAX_CLASS_COUNT; ++i) {
        objects += "<object name=\"C" + std::to_string(i) + "\"/>\n";
    }
    ASSERT_EQ(Load(Schema(objects)), S_OK);
    ExpectRefusal(Schema(objects + "<object name=\"C5001\"/>"), 5004, "a class too many", "at most 5000 classes");
}

TEST_F(SchemaReader, PartsOfAClassStandOnce)
{
    for (const std::string part : {"<description/>", "<part/>", "<catiaFile type=\"CGR\"/>", "<partToFile/>"}) {
        const std::string tag = part.substr(1, part.find_first_of(" /") - 1);
        ExpectRefusal(Schema("<object name=\"Part\">" + part + "\n" + part + "</object>"), 5,
                      "a second element \"" + tag + "\"", "one at most");
    }
    ExpectRefusal(Schema("<object name=\"Part\"><form name=\"Properties\"/>\n<form name=\"Properties\"/></object>"), 5,
                  R"(the value "Properties" of the attribute "name")", "a name that no other <form> here has");
    ExpectRefusal(Schema("<object name=\"Part\"><pdmTree name=\"T\"/>\n<pdmTree name=\"T\"/></object>"), 5,
                  R"(the value "T" of the attribute "name")", "a name that no other <pdmTree> here has");
    ExpectRefusal(
        Schema("<object name=\"Part\"><contextAction name=\"Open\"/>\n<contextAction name=\"Open\"/></object>"), 5,
        R"(the value "Open" of the attribute "name")", "a name that no other <contextAction> here has");
    ExpectRefusal(Schema(PART, "<relation name=\"R\"><leftToRight name=\"a\"/>\n<leftToRight name=\"b\"/></relation>"),
                  8, R"(a second element "leftToRight")", "one at most");
}

TEST_F(SchemaReader, AttributesOfEmbeddedObjectsAreUniqueInADescription)
{
    ExpectRefusal(Schema("<object name=\"Part\"><description><attr name=\"N\" embeddedObject=\"A\"/>\n"
                         "<attr name=\"N\" embeddedObject=\"B\"/></description></object>"),
                  5, R"(the value "N" of the attribute "name")",
                  "a name that no other attribute of an embedded object here has");
    EXPECT_EQ(Load(Schema("<object name=\"Part\"><description><attr name=\"N\" embeddedObject=\"A\"/>"
                          "<attr name=\"N\"/></description></object>")),
              S_OK);
}

TEST_F(SchemaReader, RefusesUnknownPlacesDocumentTypesAndDirections)
{
    ExpectRefusal(Schema(R"(<object name="Part"><contextAction name="Open" in="Window"/></object>)"), 4,
                  R"(the value "Window" of the attribute "in")",
                  R"("PdmWindow", "QueryDialog", "PdmWindow QueryDialog" or "")");
    ExpectRefusal(Schema(R"(<object name="File"><catiaFile type="Part"/></object>)"), 4,
                  R"(the value "Part" of the attribute "type")",
                  R"(the type of a CAD document, for example "CATPart")");
    ExpectRefusal(
        Schema(R"(<object name="Part"><partToFile><rel name="PartFile" direction="right"/></partToFile></object>)"), 4,
        R"(the value "right" of the attribute "direction")", R"("LeftToRight" or "RightToLeft")");
}

TEST_F(SchemaReader, RelationsNeedBothEndsAndKnownClasses)
{
    ExpectRefusal(Schema(PART, R"(<relation name="PartPart"><right class="Part"/></relation>)"), 7,
                  R"(the relation "PartPart" has no left end)", "<left class=\"...\"/>");
    ExpectRefusal(Schema(PART, R"(<relation name="PartPart"><left class="Part"/></relation>)"), 7,
                  R"(the relation "PartPart" has no right end)", "<right class=\"...\"/>");
    ExpectRefusal(Schema(PART, R"(<relation name="PartFile"><left class="Part"/><right class="File"/></relation>)"), 7,
                  R"(the value "File" of the attribute "class")", "a class of the section <objects>");
    ExpectRefusal(Schema(PART, R"(<relation name="PartPart"><left class="Part"/><left class="Part"/></relation>)"), 7,
                  R"(the value "Part" of the attribute "class")",
                  "a class that does not stand here already, itself or by a class above it");
}

TEST_F(SchemaReader, ClassesHaveNoneOfTheNamesThatLinkRepNodes)
{
    for (const char* name : {"PdmToRep", "RepToRep"}) {
        ExpectRefusal(Schema(PART, "<relation name=\"" + std::string(name) +
                                       R"("><left class="Part"/><right class="Part"/></relation>)"),
                      7, "the value \"" + std::string(name) + "\" of the attribute \"name\"",
                      "a name that the session does not use itself");
    }
}

TEST_F(SchemaReader, TreesNameKnownClassesOnly)
{
    const std::string relation = R"(<relation name="PartPart"><left class="Part"/><right class="Part"/></relation>)";
    ExpectRefusal(Schema("<object name=\"Part\"><partToFile>\n<rel name=\"PartFile\" "
                         "direction=\"LeftToRight\"/></partToFile></object>",
                         relation),
                  5, R"(the value "PartFile" of the attribute "name")", "a class of the section <relations>");
    ExpectRefusal(Schema("<object name=\"Part\"><pdmTree name=\"T\"><rel name=\"PartPart\" direction=\"LeftToRight\">\n"
                         "<obj class=\"File\"/></rel></pdmTree></object>",
                         relation),
                  5, R"(the value "File" of the attribute "class")", "a class of the section <objects>");
}

TEST_F(SchemaReader, DeeplyNestedTreesAreRead)
{
    constexpr int LEVELS = 20000;
    std::string tree;
    std::string end;
    for (int i = 0; i < LEVELS; ++i) {
        tree += R"(<rel name="PartPart" direction="LeftToRight"><obj class="Part">)";
        end += "</obj></rel>";
    }
    ASSERT_EQ(Load(Schema("<object name=\"Part\"><pdmTree name=\"Deep\">" + tree + end + "</pdmTree></object>",
                          R"(<relation name="PartPart"><left class="Part"/><right class="Part"/></relation>)")),
              S_OK);
    QTBPdmTree* pPdmTree = nullptr;
    ASSERT_EQ(Object("Part").GetCustomExpandPdmTreePtr(1, &pPdmTree), S_OK);
    CATListPtrQTBPdmTreeRel rels;
    pPdmTree->GetAllPdmTreeRelPtrs(&rels, TRUE);
    EXPECT_EQ(rels.Size(), LEVELS);
}

TEST_F(SchemaReader, AttributesNameKnownDataSources)
{
    ExpectRefusal(Schema(PART, "", R"(<attributes><attribute name="State" dataSource="States"/></attributes>)"), 9,
                  R"(the value "States" of the attribute "dataSource")", "a name of the section <dataSources>");
    ExpectRefusal(Schema(PART, "", "<dataSources><dataSource name=\"S\"/>\n<dataSource name=\"S\"/></dataSources>"), 10,
                  R"(the value "S" of the attribute "name")", "a name that no other <dataSource> here has");
    ExpectRefusal(Schema(PART, "", "<attributes><attribute name=\"A\"/>\n<attribute name=\"A\"/></attributes>"), 10,
                  R"(the value "A" of the attribute "name")", "a name that no other <attribute> here has");
}

TEST_F(SchemaReader, TheSessionNeedsPartsToBuildABomStructureOf)
{
    ExpectRefusal(Schema(R"(<object name="Part"/>)", "", R"(<session partClass="Part"/>)"), 9,
                  R"(the value "Part" of the attribute "partClass")", "a class of objects with the element <part>");
    ExpectRefusal(Schema(R"(<object name="Part"><part/></object>)", "", R"(<session bomPartStructure="true"/>)"), 9,
                  R"(the value "true" of the attribute "bomPartStructure")",
                  R"("false", or a class of objects with <part subParts="true">)");
}

TEST_F(SchemaReader, LinesAreCountedInFilesOfOtherEncodingsToo)
{
    std::string text = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n";
    text += Schema("<object name=\"Stra\xDF"
                   "e\"/>\n<object nam=\"x\"/>");
    ExpectRefusal(text, 6, R"(the attribute "nam" of the element "object")",
                  R"("name", "parent", "nlsKey", "icon" or "tooltipAttr")");
}

TEST_F(SchemaReader, LongValuesAreCutInMessages)
{
    const std::string name(1000, 'x');
    ExpectRefusal(Schema(PART, "", "", "maxExpansionLevel=\"" + name + "\""), 1,
                  "the value \"" + name.substr(0, 60) + "...\" of the attribute \"maxExpansionLevel\"",
                  "a whole number from -1 to 1000000");
}

TEST_F(SchemaReader, ATruncatedFileIsNeverReadInPart)
{
    std::ifstream file(PROJECT_SCHEMA, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const QTBSchema* pBefore = &Current();
    // The last character of the document element counts, the line end behind it does not.
    for (std::size_t length = text.rfind('>'); length > 101; length -= 101) {
        EXPECT_LT(Load(text.substr(0, length)), 0) << length;
    }
    EXPECT_EQ(&Current(), pBefore);
}

TEST_F(SchemaReader, AnySingleLineThatIsMissingIsReadOrRefusedWithItsPlace)
{
    std::ifstream file(PROJECT_SCHEMA);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line + "\n");
    }
    int refusals = 0;
    for (std::size_t missing = 0; missing < lines.size(); ++missing) {
        std::string text;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            text += i == missing ? "" : lines[i];
        }
        const HRESULT hr = Load(text);
        if (hr < 0) {
            const auto* pError = dynamic_cast<const CATXMLError*>(CATError::CATGetLastError(hr, nullptr));
            ASSERT_NE(pError, nullptr) << missing;
            EXPECT_GT(pError->GetLine(), 0) << missing;
            ++refusals;
        }
    }
    EXPECT_GT(refusals, 0);
}

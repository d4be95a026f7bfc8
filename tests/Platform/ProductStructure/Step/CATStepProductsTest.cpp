#include "CATStepProducts.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CATProductTestSession.h"
#include "CATStepAssembly.h"
#include "CATStepText.h"
#include "QTBTestEnvironment.h"
#include "QTBTestFolder.h"

using testing::HasSubstr;

namespace {

// Files of a test, and where the real assemblies lie.
class StepProducts : public CATProductTestSession
{
protected:
    std::string Write(const std::string& name, const std::string& content) const
    {
        return m_Folder.Write(name, content);
    }

    static HRESULT TryOpenFile(const std::string& path)
    {
        return CATStepProducts::OpenFile(CATUnicodeString(std::string_view(path)), nullptr);
    }
    static void OpenFile(const std::string& path)
    {
        const HRESULT hr = TryOpenFile(path);
        ASSERT_EQ(hr, S_OK) << MessageOf(hr);
    }

    // The text of an error, which has one parameter.
    static std::string MessageOf(HRESULT hr)
    {
        const CATError* pError = CATError::CATGetLastError(hr, nullptr);
        return pError != nullptr && !pError->GetNLSParameters().empty() ? pError->GetNLSParameters()[0].ConvertToChar()
                                                                        : "(no error)";
    }

    // The path of a real assembly in the folder that QTB_ASSEMBLIES names; empty when it is not there.
    static std::string FindAssembly(const std::string& name)
    {
        const char* folder = std::getenv("QTB_ASSEMBLIES");
        const std::filesystem::path path = std::filesystem::path(folder != nullptr ? folder : "") / name;
        return folder != nullptr && std::filesystem::exists(path) ? path.string() : std::string();
    }
    static constexpr const char* NO_ASSEMBLY = "QTB_ASSEMBLIES names no folder with this assembly (docs/limits.md)";

    static CATIProduct_var OpenRoot(const std::string& path)
    {
        CATListValCATBaseUnknown_var documents;
        const HRESULT hr = CATStepProducts::OpenFile(CATUnicodeString(std::string_view(path)), &documents);
        EXPECT_EQ(hr, S_OK) << MessageOf(hr);
        CATIProduct_var spRoot;
        if (documents.Size() > 0) {
            CATProductServices::GetRootProduct(*CATDocument::FromComponent(documents[1].Get()), &spRoot);
        }
        return spRoot;
    }

    static std::string UserProperty(const CATIProduct_var& spProduct, const char* name)
    {
        CATUnicodeString usValue;
        return SUCCEEDED(CATIPrdProperties_var(spProduct)->GetUserProperty(name, &usValue)) ? usValue.ConvertToChar()
                                                                                            : "(none)";
    }

    // What a tree consists of.
    struct Census
    {
        int instances = 0;
        int depth = 0;
        int brokenLinks = 0;
        int derivedNames = 0;
        int designators = 0;
        std::unordered_map<const CATBaseUnknown*, int> references;
    };
    static Census Count(const CATIProduct_var& spRoot)
    {
        Census census;
        std::vector<std::pair<CATIProduct_var, int>> open{{spRoot, 0}};
        while (!open.empty()) {
            const auto [spProduct, level] = open.back();
            open.pop_back();
            census.depth = std::max(census.depth, level);
            ++census.references[CATBaseUnknown_var(spProduct->GetReferenceProduct()).Get()];
            for (const CATBaseUnknown_var& spChild : Children(spProduct)) {
                const CATIProduct_var spInstance(spChild);
                ++census.instances;
                census.brokenLinks += spInstance->GetReferenceProduct() == NULL_var ? 1 : 0;
                const std::string origin = UserProperty(spInstance, CATStepProducts::NAME_ORIGIN);
                census.derivedNames += origin == "derived" ? 1 : 0;
                census.designators += origin == "designator" ? 1 : 0;
                EXPECT_NE(Name(spInstance), "");
                open.emplace_back(spInstance, level + 1);
            }
        }
        return census;
    }

    const QTBTestFolder m_Folder;
    const std::filesystem::path m_Directory = m_Folder.GetPath();
};

TEST_F(StepProducts, ProductsUsagesAndPropertiesAreThoseOfTheFile)
{
    CATStepText text;
    const int top = text.AddProduct("T-1", "top", "A");
    const int part = text.AddProduct("P-1", "part", "B");
    text.AddUsage(top, part, "first");
    text.AddUsage(top, part, "second");
    const std::string path = Write("box.stp", text.ToString());
    OpenFile(path);
    const CATIProduct_var spRoot = Root("T-1");
    EXPECT_EQ(ChildNames(spRoot), "first second ");
    EXPECT_EQ(DocumentOf(spRoot)->GetType(), "CATProduct");
    EXPECT_EQ(FileOf(spRoot), (m_Directory / "box" / "T-1.CATProduct").string());
    const CATIProduct_var spPart = Child(spRoot, 1);
    EXPECT_EQ(spPart->GetPartNumber(), "P-1");
    EXPECT_EQ(DocumentOf(spPart)->GetType(), "CATPart");
    CATUnicodeString usValue;
    EXPECT_EQ(spPart->GetNomenclature(&usValue), S_OK);
    EXPECT_EQ(usValue, "part");
    EXPECT_EQ(spPart->GetDescriptionRef(&usValue), S_OK);
    EXPECT_EQ(usValue, "description of P-1");
    EXPECT_EQ(spPart->GetRevision(&usValue), S_OK);
    EXPECT_EQ(usValue, "B");
    EXPECT_EQ(UserProperty(spPart->GetReferenceProduct(), CATStepProducts::SOURCE_FILE), "box.stp");
    EXPECT_EQ(UserProperty(spPart, CATStepProducts::NAME_ORIGIN), "(none)");
}

TEST_F(StepProducts, EmptyInstanceNamesAreFilledAndRepeatedOnesStay)
{
    CATStepText text;
    const int top = text.AddProduct("T", "top");
    const int part = text.AddProduct("P", "part");
    text.AddUsage(top, part, "same");
    text.AddUsage(top, part, "same");
    text.AddUsage(top, part, "", "R17");
    text.AddUsage(top, part, "part.1");
    text.AddUsage(top, part, " ");
    text.AddUsage(top, part, "");
    OpenFile(Write("a.stp", text.ToString()));
    EXPECT_EQ(ChildNames(Root("T")), "same same R17 part.1 part.2 part.3 ");
    EXPECT_EQ(UserProperty(Child(Root("T"), 3), CATStepProducts::NAME_ORIGIN), "designator");
    EXPECT_EQ(UserProperty(Child(Root("T"), 4), CATStepProducts::NAME_ORIGIN), "(none)");
    EXPECT_EQ(UserProperty(Child(Root("T"), 5), CATStepProducts::NAME_ORIGIN), "derived");
}

TEST_F(StepProducts, ProductsWithOneIdHaveOnePartNumberAndFilesOfTheirOwn)
{
    CATStepText text;
    const int top = text.AddProduct("T", "top");
    text.AddUsage(top, text.AddProduct("P/1", "one"), "a");
    text.AddUsage(top, text.AddProduct("P/1", "two"), "b");
    text.AddUsage(top, text.AddProduct("", "three"), "c");
    text.AddUsage(top, text.AddProduct("", ""), "d");
    OpenFile(Write("a.stp", text.ToString()));
    const CATIProduct_var spRoot = Root("T");
    EXPECT_EQ(Child(spRoot, 1)->GetPartNumber(), "P/1");
    EXPECT_EQ(Child(spRoot, 2)->GetPartNumber(), "P/1");
    EXPECT_FALSE(Child(spRoot, 1)->GetReferenceProduct() == Child(spRoot, 2)->GetReferenceProduct());
    EXPECT_TRUE(Root("P/1") == Child(spRoot, 1)->GetReferenceProduct());
    EXPECT_EQ(FileOf(Child(spRoot, 1)), (m_Directory / "a" / "P_1.CATPart").string());
    EXPECT_EQ(FileOf(Child(spRoot, 2)), (m_Directory / "a" / "P_1~2.CATPart").string());
    EXPECT_EQ(Child(spRoot, 3)->GetPartNumber(), "three");
    EXPECT_EQ(Child(spRoot, 4)->GetPartNumber(), "Product5");
}

TEST_F(StepProducts, NamesInOtherScriptsAreKeptAndInvalidBytesRepaired)
{
    CATStepText text;
    const int top = text.AddProduct("\xE9\xBD\xBF\xE8\xBD\xAE", "top");
    text.AddUsage(top, text.AddProduct("P\xFFQ", "part"), "\xCE\xA9");
    OpenFile(Write("a.stp", text.ToString()));
    const CATIProduct_var spRoot = Root("\xE9\xBD\xBF\xE8\xBD\xAE");
    EXPECT_EQ(ChildNames(spRoot), "\xCE\xA9 ");
    EXPECT_EQ(Child(spRoot, 1)->GetPartNumber(), "P\xEF\xBF\xBDQ");
}

TEST_F(StepProducts, ProductsThatReferToOneFileAreOneProduct)
{
    CATStepText inner;
    const int body = inner.AddProduct("BODY", "body", "7");
    inner.AddUsage(body, inner.AddProduct("BOLT", "bolt"), "bolt.1");
    Write("body.stp", inner.ToString());

    CATStepText text;
    const int top = text.AddProduct("T", "top");
    const int first = text.AddProduct("B1", "left body");
    const int second = text.AddProduct("B2", "right body");
    const int lost = text.AddProduct("L", "lost");
    text.AddUsage(top, first, "left");
    text.AddUsage(top, second, "right");
    text.AddUsage(top, lost, "lost");
    text.AddFile(first, "body.stp");
    text.AddFile(second, "body.stp");
    text.AddFile(lost, "lost.stp");
    OpenFile(Write("top.stp", text.ToString()));
    const CATIProduct_var spRoot = Root("T");
    EXPECT_EQ(ChildNames(spRoot), "left right lost ");
    EXPECT_TRUE(Child(spRoot, 1)->GetReferenceProduct() == Child(spRoot, 2)->GetReferenceProduct());
    EXPECT_EQ(Child(spRoot, 2)->GetPartNumber(), "B1");
    EXPECT_EQ(ChildNames(Child(spRoot, 2)), "bolt.1 ");
    CATUnicodeString usRevision;
    EXPECT_EQ(Child(spRoot, 1)->GetRevision(&usRevision), S_OK);
    EXPECT_EQ(usRevision, "7");
    EXPECT_TRUE(Child(spRoot, 3)->GetReferenceProduct() == NULL_var);
    EXPECT_EQ(FileOf(Child(spRoot, 3)), (m_Directory / "lost.stp").string());
}

TEST_F(StepProducts, LoopsInAFileAndBetweenFilesAreRefused)
{
    CATStepText loop;
    const int top = loop.AddProduct("T", "top");
    const int a = loop.AddProduct("A", "a");
    const int b = loop.AddProduct("B", "b");
    loop.AddUsage(top, a, "a");
    loop.AddUsage(a, b, "b");
    loop.AddUsage(b, a, "a");
    const std::string path = Write("loop.stp", loop.ToString());
    EXPECT_THAT(MessageOf(TryOpenFile(path)), testing::AnyOf(path + ": the product \"a\" contains itself",
                                                             path + ": the product \"b\" contains itself"));

    for (const auto& [name, other] : {std::pair("one.stp", "two.stp"), std::pair("two.stp", "one.stp")}) {
        CATStepText text;
        const int root = text.AddProduct(name, name);
        const int child = text.AddProduct(other, other);
        text.AddUsage(root, child, "child");
        text.AddFile(child, other);
        Write(name, text.ToString());
    }
    EXPECT_THAT(MessageOf(TryOpenFile((m_Directory / "one.stp").string())), HasSubstr("contains itself"));
    EXPECT_EQ(SessionFiles(), "");
}

TEST_F(StepProducts, AFileThatIsCutOffIsRefusedWithItsLineAndLeavesTheSessionUsable)
{
    CATStepText text;
    const int top = text.AddProduct("T", "it''s (the) \"top\"; /* no comment */");
    text.AddUsage(top, text.AddProduct("P", "part"), "p");
    std::string content = text.ToString();
    content.insert(content.find("DATA;"), "/* a ; comment ' */\n");
    Open("<product id='x' file='/x.CATPart' partNumber='X'/>");
    for (std::size_t length = 1; length < content.rfind(';'); ++length) {
        const std::string message = MessageOf(TryOpenFile(Write("cut.stp", content.substr(0, length))));
        ASSERT_THAT(message, HasSubstr("cut.stp, line ")) << length;
        ASSERT_THAT(message, HasSubstr("; expected was ")) << length;
    }
    EXPECT_EQ(SessionFiles(), "/x.CATPart ");
    OpenFile(Write("whole.stp", content));
    EXPECT_EQ(ChildNames(Root("T")), "p ");
}

TEST_F(StepProducts, WhatIsNoStepFileIsRefusedWithItsLine)
{
    const std::string head = "ISO-10303-21;\nHEADER;\nENDSEC;\n";
    const std::string end = "ENDSEC;\nEND-ISO-10303-21;\n";
    const std::pair<std::string, std::string> cases[] = {
        {"<?xml version=\"1.0\"?>\n<products/>", "line 1: the text begins with \"<?xml version=\"1.0\"?>\"; expected"},
        {std::string("\x7F"
                     "ELF\x02\x00",
                     6),
         "line 1: the text begins with"},
        {"\n\n%PDF-1.4", "line 3: the text begins with \"%PDF-1.4\""},
        {"/* no end", "line 1: the text begins with"},
        {"ISO-10303-21;\nDATA;\n", "line 2: the statement \"DATA\"; expected was HEADER;"},
        {"ISO-10303-21;\nHEADER;\nnonsense;\n",
         "line 3: the statement \"nonsense\"; expected was an entity of the header"},
        {head + "DATA;\n#1=A();\nhello;\n" + end, "line 6: the statement \"hello\"; expected was an entity"},
        {head + "DATA;\n#1=A((1,2);\n#2=B();\n" + end, "line 5: the parentheses"},
        {head + "DATA;\n#1=A(1));\n" + end, "line 5: the parentheses"},
        {head + "DATA;\n#1=A('open);\n" + end, "line 5: the text ends in the middle of the statement"},
        {head + "DATA;\n#1=A(/* open);\n" + end, "line 5: a comment begins here that does not end"},
        {head + "DATA;\n;\n" + end, "line 5: the statement \";\""},
        {head + "END-ISO-10303-21;\n", "line 4: the statement \"END-ISO-10303-21\"; expected was DATA;"},
        {head + "DATA;\n" + end.substr(0, 8), "line 6: the text ends here; expected was END-ISO-10303-21;"},
        {head + std::string("DATA;\n#1=A(\0);\n", 15) + end, "line 5: a NUL character"},
    };
    for (const auto& [content, message] : cases) {
        SCOPED_TRACE(content);
        EXPECT_THAT(MessageOf(TryOpenFile(Write("x.stp", content))), HasSubstr("x.stp, " + message));
    }
    EXPECT_THAT(MessageOf(TryOpenFile(Write("x.stp", ""))), HasSubstr("x.stp: the file is empty"));
    EXPECT_THAT(MessageOf(TryOpenFile((m_Directory / "not here.stp").string())), HasSubstr("cannot be read"));
    EXPECT_THAT(MessageOf(TryOpenFile(m_Directory.string())), HasSubstr("cannot be read"));
    EXPECT_THAT(MessageOf(TryOpenFile(Write("x.stp", head + "DATA;\n#1=PERSON('','','',$,$,$);\n" + end))),
                HasSubstr("the file holds no product"));
    EXPECT_EQ(SessionFiles(), "");
}

TEST_F(StepProducts, APipeIsNoFileAndNotWaitedFor)
{
    const std::string path = (m_Directory / "pipe.step").string();
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_THAT(MessageOf(TryOpenFile(path)), HasSubstr("the file cannot be read"));
}

TEST_F(StepProducts, AFileOfTheLargestSizeIsReadAndOneOfAByteMoreIsNot)
{
    CATStepText text;
    text.AddProduct("A", "a");
    std::string content = text.ToString();
    const QTBTestEnvironment limit("CAT_MAX_FILE_MB", "1");
    content.insert(content.find("DATA;"), std::string((1 << 20) - content.size(), ' '));
    EXPECT_EQ(TryOpenFile(Write("largest.step", content)), S_OK);
    EXPECT_THAT(MessageOf(TryOpenFile(Write("larger.step", content + "\n"))),
                HasSubstr("1048577 bytes; expected were at most 1048576 bytes (CAT_MAX_FILE_MB)"));
}

TEST_F(StepProducts, OccurrencesAreCountedWithoutVisitingThem)
{
    CATStepAssembly assembly;
    constexpr std::size_t LEVELS = 70;
    assembly.products.resize(LEVELS);
    assembly.roots = {0};
    for (std::size_t i = 0; i + 1 < LEVELS; ++i) {
        for (int n = 0; n < 2; ++n) {
            assembly.usages.push_back({i, i + 1, "n", CATStepNameOrigin::File});
        }
    }
    EXPECT_EQ(assembly.GetDepth(), LEVELS - 1);
    EXPECT_EQ(assembly.CountOccurrences(), static_cast<std::size_t>(-1));
    assembly.usages.resize(6);
    EXPECT_EQ(assembly.CountOccurrences(), 2U + 4U + 8U);
    EXPECT_EQ(assembly.GetDepth(), 3U);
}

// The real assemblies: figures of their own documentation, counted there with another reader.
TEST_F(StepProducts, TheBracketAssemblyHasItsTwentySevenInstances)
{
    const std::string path = FindAssembly("as1-oc-214.stp");
    if (path.empty()) {
        GTEST_SKIP() << NO_ASSEMBLY;
    }
    const CATIProduct_var spRoot = OpenRoot(path);
    ASSERT_TRUE(spRoot != NULL_var);
    const Census census = Count(spRoot);
    EXPECT_EQ(census.instances, 27);
    EXPECT_EQ(census.depth, 3);
    EXPECT_EQ(census.references.size(), 9U);
    EXPECT_EQ(census.derivedNames, 0);
    EXPECT_EQ(CATDocumentServices::GetDocuments().Size(), 9);
}

// The dimensions of its drawings: a nut of 20 by 15 by 3, a rod of 10 by 200, a plate of 180 by 150 by 20,
// a bracket 50 deep, 60 high and 100 wide.
TEST_F(StepProducts, BoxesAndPlacementsComeFromTheShapesWhenTheyAreAskedFor)
{
    const std::string path = FindAssembly("as1-oc-214.stp");
    if (path.empty()) {
        GTEST_SKIP() << NO_ASSEMBLY;
    }
    const CATStepAssembly bare = CATReadStepAssembly(path);
    for (const CATStepProduct& product : bare.products) {
        EXPECT_FALSE(product.box.has_value());
    }
    const CATStepAssembly assembly = CATReadStepAssembly(path, CATStepContent::StructureAndBoxes);
    const CATPrdStructure structure = CATStepProducts::ToStructure(assembly, "as1");
    std::map<std::string, std::string> boxes;
    for (const CATPrdReferenceData& reference : structure.references) {
        const auto found = reference.definition.userProperties.find(CAT_PRD_BOUNDING_BOX);
        if (found != reference.definition.userProperties.end()) {
            boxes[std::string(reference.definition.partNumber.View())] = found->second.View();
        }
    }
    const std::map<std::string, std::string> expected = {{"bolt", "-7.5 -7.5 0 7.5 7.5 37"},
                                                         {"l-bracket", "0 0 0 50 60 100"},
                                                         {"nut", "0 0 0 20 15 3"},
                                                         {"plate", "0 0 0 180 150 20"},
                                                         {"rod", "-5 -5 0 5 5 200"}};
    EXPECT_EQ(boxes, expected);
    for (const CATPrdUsageData& usage : structure.usages) {
        ASSERT_EQ(usage.userProperties.count(CAT_PRD_PLACEMENT), 1U) << usage.instanceName.View();
        if (usage.instanceName == "rod-assembly_1") {
            // Lies along x.
            EXPECT_EQ(usage.userProperties.at(CAT_PRD_PLACEMENT), "0 0 -1 0 1 0 1 0 0 -10 75 60");
        }
    }
}

TEST_F(StepProducts, TheBracketAssemblyOfAnotherSystemIsNamedByItsDesignators)
{
    const std::string path = FindAssembly("as1-tu-203.stp");
    if (path.empty()) {
        GTEST_SKIP() << NO_ASSEMBLY;
    }
    const CATIProduct_var spRoot = OpenRoot(path);
    ASSERT_TRUE(spRoot != NULL_var);
    const Census census = Count(spRoot);
    EXPECT_EQ(census.instances, 27);
    EXPECT_EQ(census.depth, 3);
    EXPECT_EQ(census.references.size(), 9U);
    EXPECT_EQ(census.designators, 27);
    CATUnicodeString usRevision;
    EXPECT_EQ(spRoot->GetRevision(&usRevision), S_OK);
    EXPECT_FALSE(usRevision.IsEmpty());
}

TEST_F(StepProducts, TheAircraftIsPutTogetherFromItsFilesAndAMissingOneIsABrokenLink)
{
    const std::string root = FindAssembly("s1-c5-214/s1-c5-214.stp");
    if (root.empty()) {
        GTEST_SKIP() << NO_ASSEMBLY;
    }
    const Census whole = Count(OpenRoot(root));
    EXPECT_EQ(whole.brokenLinks, 0);
    EXPECT_GE(whole.instances, 5 + 8);
    CloseAll();

    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(root).parent_path())) {
        if (entry.path().filename() != "FOOT.stp") {
            std::filesystem::create_symlink(entry.path(), m_Directory / entry.path().filename());
        }
    }
    const Census broken = Count(OpenRoot((m_Directory / "s1-c5-214.stp").string()));
    EXPECT_GE(broken.brokenLinks, 1);
    EXPECT_LT(broken.instances, whole.instances);
}

TEST_F(StepProducts, TheTrailerCarHasTwoProductsWithOnePartNumber)
{
    const std::string path = FindAssembly("trailer-car-ebom.step");
    if (path.empty()) {
        GTEST_SKIP() << NO_ASSEMBLY;
    }
    const CATIProduct_var spRoot = OpenRoot(path);
    ASSERT_TRUE(spRoot != NULL_var);
    const Census census = Count(spRoot);
    EXPECT_EQ(census.instances, 36);
    EXPECT_EQ(census.references.size(), 21U);
    EXPECT_EQ(census.depth, 4);
    std::unordered_map<std::string, int> numbers;
    for (const CATBaseUnknown_var& spDocument : CATDocumentServices::GetDocuments()) {
        CATIProduct_var spProduct;
        CATProductServices::GetRootProduct(*CATDocument::FromComponent(spDocument.Get()), &spProduct);
        ++numbers[spProduct->GetPartNumber().ConvertToChar()];
    }
    EXPECT_EQ(numbers.size(), 20U);
}

TEST_F(StepProducts, TheShredderHasNoTextThatIsNotUtf8)
{
    const std::string path = FindAssembly("shredder-unit.step");
    if (path.empty()) {
        GTEST_SKIP() << NO_ASSEMBLY;
    }
    const CATIProduct_var spRoot = OpenRoot(path);
    ASSERT_TRUE(spRoot != NULL_var);
    const Census census = Count(spRoot);
    EXPECT_EQ(census.instances, 107);
    EXPECT_EQ(census.references.size(), 44U);
    EXPECT_EQ(census.depth, 3);
    CATUnicodeString usRevision;
    EXPECT_EQ(spRoot->GetRevision(&usRevision), S_OK);
    EXPECT_EQ(usRevision, CATUnicodeString(std::string_view(usRevision.View())));
}

TEST_F(StepProducts, TheControllerBoardHasANameForEachOfItsInstances)
{
    const std::string path = FindAssembly("odrive-v3.5.step");
    if (path.empty()) {
        GTEST_SKIP() << NO_ASSEMBLY;
    }
    const CATIProduct_var spRoot = OpenRoot(path);
    ASSERT_TRUE(spRoot != NULL_var);
    const Census census = Count(spRoot);
    EXPECT_EQ(census.instances, 1413);
    EXPECT_EQ(census.references.size(), 254U);
    EXPECT_EQ(census.depth, 5);
    EXPECT_GT(census.derivedNames + census.designators, 0);
}

} // namespace

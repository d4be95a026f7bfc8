#include <gmock/gmock.h>

#include <fstream>
#include <iostream>
#include <set>
#include <sstream>

#include <nlohmann/json.hpp>

#include "ConsideringNodes.h"
#include "HostSession.h"
#include "LinkCommand.h"
#include "ProductCommands.h"
#include "QTBIPdmNode.h"
#include "QTBIRepNode.h"
#include "QTBNodeRelationInfo.h"
#include "QTBTestEnvironment.h"
#include "QTBTestFolder.h"
#include "StoreInput.h"
#include "TreeCommand.h"

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::HasSubstr;

namespace {

// A file of a test's own that goes with it.
class TemporaryFile
{
public:
    TemporaryFile(const std::string& name, const std::string& content) : m_Path(m_Folder.Write(name, content)) {}

    std::string Path() const { return m_Path; }

private:
    QTBTestFolder m_Folder;
    std::string m_Path;
};

// What a command says when it fails, and its exit code.
template <class Run>
std::pair<ExitCode, std::string> FailureOf(Run run)
{
    try {
        run();
    } catch (const HostError& error) {
        return {error.GetExitCode(), error.what()};
    }
    return {ExitCode::Success, ""};
}

const std::string EXAMPLES = QTB_SOURCE_DIR "/examples/";

TEST(HostErrors, SayThatMemoryRanOut)
{
    EXPECT_EQ(HostSession::Describe(E_OUTOFMEMORY), "there is not enough memory for this");
    EXPECT_EQ(HostSession::Describe(E_FAIL), "not possible");
}

} // namespace

TEST(HostSession, MissingAnswerIsBadInputThatNamesTheFile)
{
    HostSession session("", "");
    const auto [exitCode, message] = FailureOf([&] { session.ReadAnswer("/nowhere/answer.xml"); });
    EXPECT_EQ(exitCode, ExitCode::BadInput);
    EXPECT_NE(message.find("/nowhere/answer.xml"), std::string::npos) << message;
}

TEST(HostSession, MalformedAnswerNamesFileAndLineAndLeavesTheGraph)
{
    const TemporaryFile file("malformed-answer.xml", "<answer>\n<function name='x'>\n<o></answer>");
    HostSession session("", "");
    session.ReadAnswer(EXAMPLES + "as1/structure.xml");
    const auto [exitCode, message] = FailureOf([&] { session.ReadAnswer(file.Path()); });
    EXPECT_EQ(exitCode, ExitCode::BadInput);
    EXPECT_NE(message.find("malformed-answer.xml"), std::string::npos) << message;
    EXPECT_NE(message.find('3'), std::string::npos) << message;
    QTBIPdmNode_var spIPdmNode;
    unsigned char bFound = FALSE;
    session.GetPdmNodeCont()->GetPdmNodeByKey("as1", &spIPdmNode, &bFound);
    EXPECT_EQ(bFound, TRUE);
}

TEST(HostSession, AFileThatIsNoAnswerIsRefusedWithFileLineAndWhatWasExpected)
{
    HostSession session("", "");
    const auto refusal = [&session](const std::string& path) {
        const auto [exitCode, message] = FailureOf([&] { session.ReadAnswer(path); });
        EXPECT_EQ(exitCode, ExitCode::BadInput) << message;
        EXPECT_THAT(message, AllOf(HasSubstr(path), HasSubstr("a PDM answer: a document element with one element "
                                                              "\"function\" in it")));
        return message;
    };
    EXPECT_THAT(refusal(EXAMPLES + "as1/products.xml"),
                AllOf(HasSubstr("line 2"), HasSubstr("the file is a product structure")));
    EXPECT_THAT(refusal(QTB_SOURCE_DIR "/resources/schema/QTBSchema.xml"), HasSubstr("the file is a PDM schema"));
    const TemporaryFile none("no-function.xml", "<answer>\n<o/></answer>");
    EXPECT_THAT(refusal(none.Path()),
                AllOf(HasSubstr("line 1"), HasSubstr("there is no element \"function\" in \"answer\"")));
    const TemporaryFile two("two-functions.xml", "<answer>\n<function/>\n<function/></answer>");
    EXPECT_THAT(refusal(two.Path()), AllOf(HasSubstr("line 3"), HasSubstr("there is a second element \"function\"")));
    session.ReadAnswer(EXAMPLES + "as1/structure.xml");
}

TEST(HostSession, WhatTheGraphLeavesOutOfAnAnswerIsSaid)
{
    HostSession session("", "");
    EXPECT_EQ(session.ReadAnswer(EXAMPLES + "as1/files.xml"),
              EXAMPLES +
                  "as1/files.xml: 9 items left out: an object of the relation is missing (PartFile/rod-assembly, "
                  "PartFile/nut, PartFile/rod, PartFile/as1, PartFile/nut-bolt-assembly and 4 more)");
    EXPECT_EQ(session.ReadAnswer(EXAMPLES + "as1/structure.xml"), "");
    EXPECT_EQ(session.ReadAnswer(EXAMPLES + "as1/files.xml"), "") << "now the parts are there";
    const TemporaryFile file(
        "left-out.xml",
        "<answer><function name='dynamicInvoke'><outArgs><arg><o><a name='Class'>Spaceship</a><a name='Key'>S/1</a></o>"
        "<o><a name='Class'>Part</a></o><o><a name='Class'>Mine</a><a name='Key'>M/1</a><a name='QtbInfo' "
        "type='nvlist'><nv name='QtbRelevantBaseClass'>Part</nv></a></o></arg></outArgs>"
        "<r><a name='Class'>PartPart</a><a name='Key'>R/1</a><a name='Relation'>PartPart</a><a name='Left'>M/1</a>"
        "<a name='Right'>rod</a></r>"
        "<r><a name='Class'>PartPart</a><a name='Key'>R/1</a><a name='Relation'>PartPart</a><a name='Left'>M/1</a>"
        "<a name='Right'>nut</a></r><relationToDelete>R/1</relationToDelete></function></answer>");
    EXPECT_EQ(session.ReadAnswer(file.Path()),
              file.Path() + ": 2 items left out: no key (1); the schema does not know the class (S/1)");
}

TEST(HostSession, DocumentTypeDeclarationIsRefused)
{
    const TemporaryFile file("doctype-answer.xml",
                             "<!DOCTYPE a [<!ENTITY b \"c\">]>\n<answer><function name=\"x\">&b;</function></answer>");
    HostSession session("", "");
    EXPECT_EQ(FailureOf([&] { session.ReadAnswer(file.Path()); }).first, ExitCode::BadInput);
}

TEST(HostSession, UnknownLanguageIsAUsageErrorThatNamesTheLanguages)
{
    const auto [exitCode, message] = FailureOf([] { const HostSession session("", "Klingon"); });
    EXPECT_EQ(exitCode, ExitCode::Usage);
    EXPECT_NE(message.find("German"), std::string::npos) << message;
}

TEST(HostSession, BrokenSchemaIsBadInput)
{
    const TemporaryFile file("broken-schema.xml", "<qtbSchema/>");
    const auto [exitCode, message] = FailureOf([&] { const HostSession session(file.Path(), ""); });
    EXPECT_EQ(exitCode, ExitCode::BadInput);
    EXPECT_NE(message.find("broken-schema.xml"), std::string::npos) << message;
}

TEST(HostSession, AssemblyThatIsNoProductStructureIsBadInputAndTheSessionGoesOn)
{
    const TemporaryFile file("no-products.xml", "<nothing/>");
    HostSession session("", "");
    EXPECT_EQ(FailureOf([&] { session.OpenAssembly(file.Path()); }).first, ExitCode::BadInput);
    EXPECT_EQ(session.OpenAssembly(EXAMPLES + "as1/products.xml").Size(), 1);
}

TEST(HostSession, ContainerConsidersTheCurrentActionAgainWhenAnExpansionWasGivenUp)
{
    HostSession session("", "");
    session.ReadAnswer(EXAMPLES + "as1/structure.xml");
    const QTBIRepNodeCont_var& spIRepNodeCont = session.GetRepNodeCont();
    QTBIPdmNode_var spIPdmNode;
    unsigned char bFound = FALSE;
    session.GetPdmNodeCont()->GetPdmNodeByKey("as1", &spIPdmNode, &bFound);
    ASSERT_EQ(bFound, TRUE);
    const auto isShown = [&] {
        CATListValCATBaseUnknown_var nodes;
        EXPECT_EQ(spIPdmNode->GetRepNodes(&nodes, spIRepNodeCont), S_OK);
        return nodes.Size() > 0;
    };
    const auto update = [&] {
        unsigned char bTrue = TRUE;
        unsigned char bFalse = FALSE;
        EXPECT_EQ(spIRepNodeCont->UpdateRepTrees(spIPdmNode, CATListValQTBNodeRelationInfo(), &bTrue, nullptr, nullptr,
                                                 &bFalse),
                  S_OK);
    };
    HostSession::ReplaceRoots(spIRepNodeCont, {});
    EXPECT_FALSE(isShown());
    const auto [exitCode, message] = FailureOf([&] {
        const ConsideringNodes considering(spIRepNodeCont, ALL_NODES);
        throw HostError(ExitCode::Failure, "given up");
    });
    EXPECT_EQ(exitCode, ExitCode::Failure);
    update();
    EXPECT_FALSE(isShown()) << "the answer belongs to an action before the current one";
    {
        const ConsideringNodes considering(spIRepNodeCont, ALL_NODES);
        update();
    }
    EXPECT_TRUE(isShown());
}

TEST(HostSession, ReplacedRootsAreTheOnlyOnesAndAddedOnesStandBesideThem)
{
    HostSession session("", "");
    session.ReadAnswer(EXAMPLES + "as1/structure.xml");
    const auto get = [&](const char* key) {
        QTBIPdmNode_var spIPdmNode;
        unsigned char bFound = FALSE;
        session.GetPdmNodeCont()->GetPdmNodeByKey(key, &spIPdmNode, &bFound);
        return CATBaseUnknown_var(spIPdmNode);
    };
    const auto rootKeys = [&] {
        std::multiset<std::string> keys;
        for (const CATBaseUnknown_var& spRoot : session.GetRoots()) {
            CATUnicodeString usKey;
            EXPECT_EQ(QTBIRepNode_var(spRoot)->GetPdmNodeKey(&usKey), S_OK);
            keys.emplace(usKey.View());
        }
        return keys;
    };
    CATListValCATBaseUnknown_var objects;
    objects.Append(get("nut"));
    objects.Append(get("rod"));
    HostSession::ReplaceRoots(session.GetRepNodeCont(), objects);
    EXPECT_EQ(rootKeys(), (std::multiset<std::string>{"nut", "rod"}));
    objects.Append(get("plate"));
    HostSession::AddRoots(session.GetRepNodeCont(), objects);
    EXPECT_EQ(rootKeys(), (std::multiset<std::string>{"nut", "plate", "rod"}));
    objects.RemoveAll();
    objects.Append(get("as1"));
    HostSession::ReplaceRoots(session.GetRepNodeCont(), objects);
    EXPECT_EQ(rootKeys(), (std::multiset<std::string>{"as1"}));
}

#ifndef QTB_WITH_STEP
TEST(HostSession, StepFileWithoutTheReaderIsBadInputThatNamesTheRemedy)
{
    const TemporaryFile file("no-reader.step", "ISO-10303-21;");
    HostSession session("", "");
    const auto [exitCode, message] = FailureOf([&] { session.OpenAssembly(file.Path()); });
    EXPECT_EQ(exitCode, ExitCode::BadInput);
    EXPECT_NE(message.find("./run convert"), std::string::npos) << message;
    const auto [importCode, importMessage] = FailureOf([&] { StoreInput::ReadAnswers(file.Path()); });
    EXPECT_EQ(importCode, ExitCode::BadInput);
    EXPECT_NE(importMessage.find("./run convert"), std::string::npos) << importMessage;
}
#endif

TEST(TreeCommand, UnknownRootIsAUsageError)
{
    TreeOptions options;
    options.answers = {EXAMPLES + "as1/structure.xml"};
    options.roots = {"no such part"};
    EXPECT_EQ(FailureOf([&] { RunTree(options); }).first, ExitCode::Usage);
}

TEST(TreeCommand, UnknownRelationIsAUsageErrorThatNamesTheRelations)
{
    TreeOptions options;
    options.answers = {EXAMPLES + "as1/structure.xml"};
    options.relations = {"NoSuchRelation"};
    const auto [exitCode, message] = FailureOf([&] { RunTree(options); });
    EXPECT_EQ(exitCode, ExitCode::Usage);
    EXPECT_NE(message.find("PartPart"), std::string::npos) << message;
}

TEST(TreeCommand, PrintsTheCountsOfARealAssembly)
{
    TreeOptions options;
    options.answers = {EXAMPLES + "as1/structure.xml", EXAMPLES + "as1/files.xml"};
    options.relations = {"PartPart", "PartFile"};
    options.asJson = true;
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(RunTree(options), 0);
    const std::string output = ::testing::internal::GetCapturedStdout();
    // 9 parts with a file each; 13 usages and 9 part-to-file relations; 28 places of parts, each with its file.
    EXPECT_NE(output.find(R"("pdmObjects":18,"pdmRelations":22,"roots":1,"shownObjects":56,"shownRelations":55)"),
              std::string::npos)
        << output.substr(output.size() > 300 ? output.size() - 300 : 0);
}

TEST(TreeCommand, SaysWhatIsLeftOutOfAnAnswer)
{
    TreeOptions options;
    options.answers = {EXAMPLES + "as1/files.xml"};
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(RunTree(options), 0);
    EXPECT_THAT(::testing::internal::GetCapturedStdout(),
                HasSubstr("\nMessages:\n  warning: " + EXAMPLES + "as1/files.xml: 9 items left out: "));
    options.asJson = true;
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(RunTree(options), 0);
    EXPECT_THAT(::testing::internal::GetCapturedStdout(), HasSubstr("\"messages\": [{\"kind\":\"warning\",\"text\":\"" +
                                                                    EXAMPLES + "as1/files.xml: 9 items left out"));
}

TEST(TreeCommand, HintsAtARootWhenTheStructureIsACircle)
{
    const TemporaryFile file("circle-answer.xml",
                             "<answer><function name='get'><o><a name='Class'>Part</a><a name='Key'>a</a></o>"
                             "<o><a name='Class'>Part</a><a name='Key'>b</a></o>"
                             "<r><a name='Class'>PartPart</a><a name='Key'>r/1</a><a name='Relation'>PartPart</a>"
                             "<a name='Left'>a</a><a name='Right'>b</a></r>"
                             "<r><a name='Class'>PartPart</a><a name='Key'>r/2</a><a name='Relation'>PartPart</a>"
                             "<a name='Left'>b</a><a name='Right'>a</a></r></function></answer>");
    TreeOptions options;
    options.answers = {file.Path()};
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(RunTree(options), 0);
    EXPECT_THAT(::testing::internal::GetCapturedStdout(),
                HasSubstr("warning: No object is a root: each stands below another one. --root KEY shows one.\n"));
    options.roots = {"a"};
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(RunTree(options), 0);
    EXPECT_EQ(::testing::internal::GetCapturedStdout().find("No object is a root"), std::string::npos);
}

TEST(TreeCommand, ATreeThatIsCutIsAmongTheMessagesOfTheJson)
{
    const QTBTestEnvironment limit("QTB_MAX_REP_NODES", "10");
    TreeOptions options;
    options.answers = {EXAMPLES + "as1/structure.xml"};
    options.asJson = true;
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(RunTree(options), 1);
    EXPECT_THAT(::testing::internal::GetCapturedStderr(), HasSubstr("more than 10 nodes"));
    const auto json = nlohmann::json::parse(::testing::internal::GetCapturedStdout());
    ASSERT_EQ(json["messages"].size(), 1U);
    EXPECT_EQ(json["messages"][0]["kind"], "error");
    EXPECT_THAT(json["messages"][0]["text"].get<std::string>(), HasSubstr("more than 10 nodes"));
}

TEST(TreeCommand, TakesAnAnswerFromTheStandardInput)
{
    const auto run = [](const std::string& text) {
        std::istringstream input(text);
        std::streambuf* const pBefore = std::cin.rdbuf(input.rdbuf());
        TreeOptions options;
        options.answers = {"-"};
        std::string output;
        ::testing::internal::CaptureStdout();
        const auto [exitCode, message] = FailureOf([&options] { EXPECT_EQ(RunTree(options), 0); });
        output = ::testing::internal::GetCapturedStdout();
        std::cin.clear();
        std::cin.rdbuf(pBefore);
        EXPECT_EQ(exitCode, message.empty() ? ExitCode::Success : ExitCode::BadInput);
        return message.empty() ? output : message;
    };
    std::ifstream file(EXAMPLES + "as1/structure.xml");
    std::ostringstream text;
    text << file.rdbuf();
    EXPECT_THAT(run(text.str()), HasSubstr("\nPDM graph: 9 objects, 13 relations\n"));
    EXPECT_THAT(run("<answer>\n<function>\n</answer>"), AllOf(HasSubstr("standard input"), HasSubstr("line 3")));
    EXPECT_THAT(run("<!DOCTYPE a []><answer><function/></answer>"), HasSubstr("standard input"));
    EXPECT_THAT(run("\n<products/>"), AllOf(HasSubstr("standard input, line 2"), HasSubstr("a product structure")));
    EXPECT_THAT(run(""), HasSubstr("standard input"));
}

TEST(LinkCommand, EveryProductOfTheAssemblyIsLinkedByInstance)
{
    LinkOptions options;
    options.assembly = EXAMPLES + "as1/products.xml";
    options.answers = {EXAMPLES + "as1/structure.xml", EXAMPLES + "as1/files.xml"};
    options.asJson = true;
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(RunLink(options), 0);
    const std::string output = ::testing::internal::GetCapturedStdout();
    // 27 occurrences by their relations, the top by its part number.
    EXPECT_NE(output.find("\"products\": 28"), std::string::npos);
    EXPECT_NE(output.find("\"byInstance\": 27"), std::string::npos);
    EXPECT_NE(output.find("\"byPartNumber\": 1"), std::string::npos);
    EXPECT_NE(output.find("\"onlyInPdm\": []"), std::string::npos);
}

TEST(LinkCommand, SaysWhatIsLeftOutOfAnAnswer)
{
    LinkOptions options;
    options.assembly = EXAMPLES + "as1/products.xml";
    options.answers = {EXAMPLES + "as1/files.xml", EXAMPLES + "as1/structure.xml"};
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(RunLink(options), 0);
    EXPECT_THAT(::testing::internal::GetCapturedStdout(),
                HasSubstr("\nMessages:\n  warning: " + EXAMPLES + "as1/files.xml: 9 items left out: "));
    options.asJson = true;
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(RunLink(options), 0);
    EXPECT_THAT(::testing::internal::GetCapturedStdout(),
                HasSubstr("\"text\": \"" + EXAMPLES + "as1/files.xml: 9 items left out: "));
}

TEST(LinkCommand, TheHighlightInThePdmWindowIsInTheJson)
{
    LinkOptions options;
    options.assembly = EXAMPLES + "as1/products.xml";
    options.answers = {EXAMPLES + "as1/structure.xml"};
    options.asJson = true;
    const auto run = [&options] {
        ::testing::internal::CaptureStdout();
        EXPECT_EQ(RunLink(options), 0);
        return nlohmann::json::parse(::testing::internal::GetCapturedStdout());
    };
    EXPECT_TRUE(run()["highlightedInPdm"].empty());
    options.highlight = "rod-assembly_1/nut_2";
    const auto json = run();
    ASSERT_EQ(json["highlightedInPdm"].size(), 1U);
    EXPECT_EQ(json["highlightedInPdm"][0]["key"], "nut");
    EXPECT_EQ(json["highlightedInPdm"][0]["below"], "PartPart/2/rod-assembly");
}

TEST(LinkCommand, ProductThatIsNotThereCannotBeHighlighted)
{
    LinkOptions options;
    options.assembly = EXAMPLES + "as1/products.xml";
    options.answers = {EXAMPLES + "as1/structure.xml"};
    options.highlight = "no/such/product";
    EXPECT_EQ(FailureOf([&] { RunLink(options); }).first, ExitCode::Usage);
}

TEST(ProductCommands, DifferenceOfAnAssemblyToItselfIsNone)
{
    ProductOptions options;
    options.oldAssembly = options.assembly = EXAMPLES + "as1/products.xml";
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(RunDiff(options), 0);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "0 instances added, 0 missing\n");
}

TEST(ProductCommands, RenamedInstanceIsAddedAndMissing)
{
    std::ifstream stream(EXAMPLES + "as1/products.xml");
    std::string xml((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    xml.replace(xml.find("rod_1"), 5, "rod_9");
    const TemporaryFile file("as1-renamed.xml", xml);
    ProductOptions options;
    options.oldAssembly = EXAMPLES + "as1/products.xml";
    options.assembly = file.Path();
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(RunDiff(options), 0);
    const std::string output = ::testing::internal::GetCapturedStdout();
    EXPECT_NE(output.find("rod-assembly\n"), std::string::npos) << output;
    EXPECT_NE(output.find("1 instance added, 1 missing\n"), std::string::npos) << output;
}

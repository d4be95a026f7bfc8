#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

#include "CATBaseUnknown.h"
#include "HostSession.h"
#include "QTBTestFolder.h"
#include "Shell.h"
#include "ShellCommand.h"

namespace fs = std::filesystem;

namespace {

std::string ReadFile(const fs::path& path)
{
    std::ifstream stream(path);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::vector<std::string> FindSessions()
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(QTB_SOURCE_DIR "/tests/Host/sessions")) {
        if (entry.path().extension() == ".session") {
            names.push_back(entry.path().stem().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

// A folder of its own in which a session works: the examples, and the files of as1 as its CAD system would store them.
class WorkFolder
{
public:
    WorkFolder() : m_Before(fs::current_path())
    {
        fs::create_directory_symlink(QTB_SOURCE_DIR "/examples", m_Folder.GetPath("examples"));
        fs::create_directory(m_Folder.GetPath("files"));
        for (const auto& [name, content] : {std::pair("files/rod.CATPart", "a rod"),
                                            {"files/nut.CATPart", "a nut"},
                                            {"files/rod-assembly.CATProduct", "an assembly"},
                                            {"long-rod.CATPart", "a longer rod"}}) {
            m_Folder.Write(name, content);
        }
        fs::current_path(m_Folder.GetPath());
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    ~WorkFolder() { fs::current_path(m_Before); }

private:
    fs::path m_Before;
    QTBTestFolder m_Folder;
};

// A session and what its shell says.
class ShellOfTest : public ::testing::Test
{
protected:
    std::string Run(const std::string& line)
    {
        m_Output.str("");
        m_Shell.Execute(line);
        return m_Output.str();
    }

    WorkFolder m_Folder;
    HostSession m_Session{"", ""};
    std::ostringstream m_Output;
    Shell m_Shell{m_Session, m_Output};
};

} // namespace

// A recorded session: NAME.session holds the commands, each with the output that a person read and found right.
class RecordedSession : public ::testing::TestWithParam<std::string>
{
};

TEST_P(RecordedSession, RepeatsWhatWasRecorded)
{
    const std::string recorded = ReadFile(QTB_SOURCE_DIR "/tests/Host/sessions/" + GetParam() + ".session");
    const int componentsBefore = CATBaseUnknown::GetLiveComponentCount();
    const WorkFolder folder;
    std::ostringstream output;
    {
        HostSession session("", "");
        Shell shell(session, output);
        std::istringstream lines(recorded);
        for (std::string line; std::getline(lines, line);) {
            if (line.starts_with("> ")) {
                output << line << '\n';
                if (!shell.Execute(line.substr(2))) {
                    break;
                }
            }
        }
    }
    const fs::path heard = fs::path(::testing::TempDir()) / (GetParam() + ".session");
    if (output.str() != recorded) {
        std::ofstream(heard) << output.str();
    }
    EXPECT_EQ(output.str(), recorded) << "the session as it is now: " << heard;
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), componentsBefore) << "components outlive the session";
}

INSTANTIATE_TEST_SUITE_P(Sessions, RecordedSession, ::testing::ValuesIn(FindSessions()),
                         [](const auto& session) { return session.param; });

TEST_F(ShellOfTest, ErrorsOfAScriptNameTheLine)
{
    std::istringstream script("# comment\n\nopen\nnonsense\nwindow 9\nquit\nopen\n");
    m_Shell.RunScript(script);
    EXPECT_EQ(m_Output.str(), "> # comment\n> \n> open\n> nonsense\n"
                              "error in line 4: there is no command nonsense; help lists them\n> window 9\n"
                              "error in line 5: there is no window 9; windows lists them\n> quit\n");
    EXPECT_EQ(m_Shell.GetFailureCount(), 2);
}

TEST_F(ShellOfTest, HelpHasEveryCommandOnceAndTellsHowOneIsUsed)
{
    const std::string all = Run("help");
    for (const std::string& name : m_Shell.Complete("")) {
        const std::size_t first = all.find("\n  " + name + " ");
        EXPECT_NE(first, std::string::npos) << name;
        EXPECT_EQ(all.find("\n  " + name + " ", first + 1), std::string::npos) << name;
        EXPECT_NE(Run("help " + name).find(name), std::string::npos);
    }
    EXPECT_EQ(Run("help window"), "window NUMBER\n  make a window the current one\n");
}

TEST_F(ShellOfTest, CompletesCommandsAndWhatTheyTake)
{
    Run("answer examples/as1/structure.xml");
    EXPECT_EQ(m_Shell.Complete("ex"), (std::vector<std::string>{"expand", "expandall"}));
    EXPECT_EQ(m_Shell.Complete("menu pl"), (std::vector<std::string>{"plate"}));
    EXPECT_EQ(m_Shell.Complete("expand plate PartF"), (std::vector<std::string>{"PartFile"}));
    EXPECT_EQ(m_Shell.Complete("help noti"), (std::vector<std::string>{"notices"}));
    EXPECT_TRUE(m_Shell.Complete("answer ex").empty()) << "a file";
    EXPECT_TRUE(m_Shell.Complete("nonsense x").empty());
}

TEST_F(ShellOfTest, TreeIsPlainUnlessTheTerminalHasColours)
{
    Run("answer examples/as1/structure.xml");
    EXPECT_EQ(Run("tree"), "[1] as1, as1  Part  QTBPart  249 locked\n");
    m_Shell.SetColors(true);
    EXPECT_EQ(Run("tree"), "[1] as1, as1  Part  \033[2mQTBPart\033[0m  \033[31m249 locked\033[0m\n");
}

TEST_F(ShellOfTest, DialogAsksThePersonAtTheTerminal)
{
    Run("newstore pdm.store kim");
    Run("import examples/as1/structure.xml");
    Run("query Part PartNumber=plate");
    Run("menu plate");
    std::vector<std::string> prompts;
    m_Shell.SetPrompt([&prompts](const std::string& prompt) {
        prompts.push_back(prompt);
        return prompts.size() == 3 ? std::optional<std::string>("steel") : std::string();
    });
    EXPECT_EQ(Run("pick 26"), "Edit Item: done\n");
    EXPECT_EQ(prompts, (std::vector<std::string>{"Part: Name [plate]: ", "Part: Description: ", "Part: Material: "}));
    EXPECT_NE(Run("properties plate").find("steel"), std::string::npos);
    m_Shell.SetPrompt([](const std::string&) { return std::nullopt; });
    EXPECT_EQ(Run("pick 26"), "") << "given up";
}

TEST_F(ShellOfTest, ARefusalOfTheStoreLeavesGraphAndTrees)
{
    Run("newstore pdm.store kim");
    Run("import examples/as1/structure.xml");
    Run("query Part PartNumber=rod-assembly");
    Run("expand rod-assembly");
    Run("store pdm.store lee");
    Run("checkout rod-assembly");
    Run("checkin rod-assembly");
    Run("checkout rod");
    Run("store pdm.store kim");
    const std::string before = Run("tree") + Run("properties rod") + Run("properties rod-assembly");
    for (const char* line :
         {"checkout rod", "checkin rod", "promote nut rod", "revise nut rod", "update rod Name=x",
          "relate PartPart rod nut", "delete nut rod", "create Part Key=rod", "get nut no-such-key"}) {
        EXPECT_EQ(Run(line).substr(0, 17), "error: PDM store:") << line;
    }
    EXPECT_EQ(Run("tree") + Run("properties rod") + Run("properties rod-assembly"), before);
}

TEST_F(ShellOfTest, WindowsAreListedInTheOrderOfTheirOpeningWithTheCurrentOneMarked)
{
    Run("answer examples/as1/structure.xml");
    Run("assembly examples/as1/products.xml");
    Run("open");
    const std::string windows = Run("windows");
    EXPECT_EQ(windows.substr(0, 8), "  1 PDM ") << windows;
    EXPECT_NE(windows.find("\n  2 examples/as1/as1-oc-214/as1.CATProduct\n* 3 PDM "), std::string::npos) << windows;
    Run("window 2");
    EXPECT_EQ(Run("tree"), "error: the current window is no PDM window\n");
    EXPECT_EQ(Run("close"), "");
    EXPECT_EQ(Run("products"), "0 products\n") << "the assembly was closed with its window";
    EXPECT_EQ(Run("window 2"), "");
    EXPECT_EQ(Run("tree"), "[1] Default Rep Node  DEFAULT_ROOT_NODE\n");
}

// The keys of this system are numbers.
TEST_F(ShellOfTest, ANumberThatIsALineAndAKeyIsRefusedUntilItIsSaidWhich)
{
    std::string items;
    for (const char* key : {"3", "2", "1"}) {
        items += std::string("<o><a name=\"Class\">Part</a><a name=\"Key\">") + key + "</a><a name=\"PartNumber\">p" +
                 key + "</a></o>";
    }
    std::ofstream("numbers.xml") << "<answer><function name=\"get\">" << items << "</function></answer>";
    Run("newstore pdm.store kim");
    Run("import numbers.xml");
    Run("open 1");
    ASSERT_EQ(Run("tree").substr(0, 7), "[1] p1,");
    EXPECT_EQ(Run("properties 1").substr(0, 6), "Class ") << "line and key are the same item";
    Run("open 2");
    ASSERT_EQ(Run("tree").substr(0, 7), "[1] p2,");
    const std::string refusal =
        "error: 1 is a line of the tree printed last and the key of another item; #1 is the line, key:1 the item\n";
    EXPECT_EQ(Run("delete 1"), refusal);
    EXPECT_EQ(Run("properties 1"), refusal);
    EXPECT_NE(Run("properties #1").find("p2"), std::string::npos);
    EXPECT_EQ(Run("properties #9"), "error: the tree printed last has no line 9\n");
    EXPECT_NE(Run("tree all key:2").find("p2"), std::string::npos);
    EXPECT_EQ(Run("delete key:3"), "3: deleted\n") << "an item that only the store has";
    EXPECT_EQ(Run("delete key:1"), "1: deleted\n");
    EXPECT_EQ(Run("delete 1"), "2: deleted\n") << "nothing else has that key any more";
}

TEST_F(ShellOfTest, AnAssemblyIsOpenOnce)
{
    EXPECT_EQ(Run("assembly examples/as1/products.xml"), "");
    const std::string products = Run("products");
    const std::string windows = Run("windows");
    EXPECT_EQ(Run("assembly examples/as1/products.xml"), "error: assembly examples/as1/products.xml is open already\n");
    EXPECT_EQ(Run("products"), products);
    EXPECT_EQ(Run("windows"), windows);
    EXPECT_NE(Run("links").find("\n28 products,"), std::string::npos);
    Run("window 2");
    Run("close");
    EXPECT_EQ(Run("assembly examples/as1/products.xml"), "") << "it was closed";
    EXPECT_EQ(Run("products"), products);
}

TEST_F(ShellOfTest, CommandsHaveTheNamesThatOthersGiveThem)
{
    EXPECT_EQ(Run("?"), Run("help"));
    EXPECT_EQ(Run("help exit"), Run("help quit"));
    EXPECT_FALSE(m_Shell.Execute("exit"));
}

TEST_F(ShellOfTest, AScriptMayBeginWithAByteOrderMark)
{
    std::istringstream script("\xEF\xBB\xBFwindows\nwindow 9\n");
    m_Shell.RunScript(script);
    EXPECT_EQ(m_Output.str().substr(0, 10), "> windows\n");
    EXPECT_EQ(m_Shell.GetFailureCount(), 1) << m_Output.str();
}

TEST_F(ShellOfTest, NothingFoundIsSaid)
{
    Run("newstore pdm.store kim");
    EXPECT_EQ(Run("query Part"), "0 found\n");
    EXPECT_EQ(Run("checkedout"), "0 found\n");
    EXPECT_EQ(Run("products"), "0 products\n");
    EXPECT_EQ(Run("boxes"), "0 boxes\n");
    EXPECT_EQ(Run("picture empty.png"),
              "error: there is nothing to draw: no product of an open assembly has a bounding box\n");
    EXPECT_FALSE(fs::exists("empty.png"));
}

TEST(Shell, AFolderIsNoScript)
{
    ShellOptions options;
    options.script = ::testing::TempDir();
    try {
        RunShell(options);
        FAIL() << "not refused";
    } catch (const HostError& error) {
        EXPECT_EQ(error.GetExitCode(), ExitCode::BadInput);
        EXPECT_EQ(std::string(error.what()), "script " + options.script + " is a folder, not a file");
    }
}

// What the schema offers is the administrator's to write.
TEST(Shell, UnknownActionsAndRelationsWithoutNamesAreLeftOutOfMenus)
{
    const WorkFolder folder;
    std::string schema = ReadFile(QTB_SOURCE_DIR "/resources/schema/QTBSchema.xml");
    const auto replace = [&schema](const std::string& old, const std::string& by) {
        const std::size_t position = schema.find(old);
        ASSERT_NE(position, std::string::npos) << old;
        schema.replace(position, old.size(), by);
    };
    replace(
        R"(<contextAction name="Expand" in="PdmWindow QueryDialog"/>)",
        R"(<contextAction name="Expand" in="PdmWindow QueryDialog"/><contextAction name="Frobnicate" in="PdmWindow"/>)");
    replace(R"(<leftToRight name="is documented in" nlsKey="Relation.PartDocument.LeftToRight"/>)", "");
    replace(R"(<leftToRight name="is stored in" nlsKey="Relation.PartFile.LeftToRight"/>)",
            R"(<leftToRight name="is stored in"/>)");
    std::ofstream("schema.xml") << schema;
    HostSession session("schema.xml", "");
    std::ostringstream output;
    Shell shell(session, output);
    shell.Execute("answer examples/as1/structure.xml examples/as1/files.xml");
    shell.Execute("menu as1");
    EXPECT_EQ(output.str().find("Frobnicate"), std::string::npos);
    EXPECT_NE(output.str().find("[4] Expand\n  [5] Consists of\n  [6] Uses standard part\n  [7] is stored in\n  ----\n"
                                "  [8] Is used in\n[9] Expand All Levels\n"),
              std::string::npos)
        << output.str();
    output.str("");
    shell.Execute("pick 7");
    shell.Execute("tree");
    EXPECT_EQ(output.str(), "is stored in: done\n"
                            "[1] as1, as1                        Part            QTBPart        249 locked\n"
                            "└─ [2] is stored in (File of part)  PartFile        QTBPartFile\n"
                            "   └─ [3] as1.CATProduct            CATProductFile  QTBCATProduct  249 locked\n");
}

// The CAD session renamed an instance, added one and one of a part that the PDM system does not know.
TEST_F(ShellOfTest, RelationsFollowTheStructureOfTheProducts)
{
    std::string products = ReadFile("examples/as1/products.xml");
    const auto replace = [&products](const std::string& old, const std::string& by) {
        const std::size_t position = products.find(old);
        ASSERT_NE(position, std::string::npos) << old;
        products.replace(position, old.size(), by);
    };
    replace("<instance of=\"p3\" name=\"rod_1\">", "<instance of=\"p9\" name=\"plate_5\"/><instance of=\"new\" "
                                                   "name=\"new_1\"/><instance of=\"p3\" name=\"rod_9\">");
    replace("</products>", "<product id=\"new\" file=\"new.CATPart\" partNumber=\"new\"/></products>");
    std::ofstream("products.xml") << products;
    Run("newstore pdm.store kim");
    Run("import examples/as1/structure.xml");
    Run("query Part PartNumber=as1");
    Run("expand as1 PartPart");
    Run("expand rod-assembly PartPart");
    EXPECT_EQ(Run("do rod-assembly \"Update Relations to Components\""),
              "error: Update Relations to Components: Part 'rod-assembly, rod-assembly' has no product in the CAD "
              "session.\n");
    Run("assembly products.xml");
    EXPECT_EQ(Run("do rod-assembly \"Update Relations to Components\""), "Update Relations to Components: done\n");
    EXPECT_EQ(Run("messages"), "warning: The instance \"new_1\" is left out: the PDM system has no part \"new\".\n");
    const std::string tree = Run("tree all rod-assembly");
    for (const char* name : {"(nut_1)", "(nut_2)", "(rod_9)", "(plate_5)"}) {
        EXPECT_NE(tree.find(name), std::string::npos) << name << '\n' << tree;
    }
    EXPECT_EQ(tree.find("(rod_1)"), std::string::npos) << tree;
    EXPECT_EQ(std::count(tree.begin(), tree.end(), '\n'), 9) << tree;
    EXPECT_NE(Run("properties PartPart/1/rod-assembly").find("1 0 0 0 1 0 0 0 1 -10 -7.5 185"), std::string::npos);
    const std::string again = Run("tree");
    EXPECT_EQ(Run("do rod-assembly \"Update Relations to Components\""), "Update Relations to Components: done\n");
    EXPECT_EQ(Run("tree"), again) << "nothing is left to do";
    // One usage alone; and a refusal.
    Run("update PartPart/1/rod-assembly Position=elsewhere");
    EXPECT_EQ(Run("do PartPart/1/rod-assembly \"Update Relation to Parent\""), "Update Relation to Parent: done\n");
    EXPECT_NE(Run("properties PartPart/1/rod-assembly").find("1 0 0 0 1 0 0 0 1 -10 -7.5 185"), std::string::npos);
    Run("update PartPart/1/rod-assembly Position=elsewhere");
    Run("user lee");
    Run("checkout rod-assembly");
    Run("user kim");
    EXPECT_EQ(Run("do rod-assembly \"Update Relations to Components\""),
              "error: Update Relations to Components: \"rod-assembly\" is checked out by lee.\n");
}

// What ./run plays. Its one refusal is meant.
TEST_F(ShellOfTest, CircleOfTheExamplesPlays)
{
    Run("newstore as1.store kim");
    Run("import examples/as1/structure.xml examples/as1/files.xml");
    m_Output.str("");
    std::ifstream script("examples/circle.txt");
    m_Shell.RunScript(script);
    EXPECT_EQ(m_Shell.GetFailureCount(), 1) << m_Output.str();
    EXPECT_NE(m_Output.str().find("\"rod\" is checked out by lee."), std::string::npos);
    EXPECT_NE(m_Output.str().find(
                  "rod, rod                           Part      B  QTBPart      246 editable  <== highlighted"),
              std::string::npos);
}

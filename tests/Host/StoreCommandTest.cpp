// qtbhost store, as it is called from a command line.

#include "StoreCommand.h"

#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <CLI/CLI.hpp>
#include <gmock/gmock.h>

#include "CATBaseUnknown.h"
#include "HostError.h"
#include "QTBTestFolder.h"
#include "StoreInput.h"

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

class StoreCommand : public ::testing::Test
{
protected:
    // Runs "qtbhost store" with these arguments; what it prints.
    static std::string Run(const std::vector<std::string>& arguments, int expectedResult = 0)
    {
        CLI::App app("test", "qtbhost");
        StoreOptions options;
        AddStore(app, options);
        std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
        reversed.push_back("store");
        app.parse(reversed);
        const int componentsBefore = CATBaseUnknown::GetLiveComponentCount();
        ::testing::internal::CaptureStdout();
        try {
            EXPECT_EQ(RunStore(app, options), expectedResult);
        } catch (...) {
            std::fflush(stdout);
            ::testing::internal::GetCapturedStdout();
            throw;
        }
        std::fflush(stdout);
        EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), componentsBefore);
        return ::testing::internal::GetCapturedStdout();
    }
    // The message of a refusal.
    static std::string Refusal(const std::vector<std::string>& arguments, ExitCode exitCode)
    {
        try {
            Run(arguments);
        } catch (const HostError& error) {
            EXPECT_EQ(static_cast<int>(error.GetExitCode()), static_cast<int>(exitCode)) << error.what();
            return error.what();
        }
        return "not refused";
    }

    std::string Write(const std::string& name, const std::string& content) const
    {
        std::ofstream(m_Folder.GetPath(name)) << content;
        return m_Folder.GetPath(name);
    }
    static std::string Read(const std::string& path)
    {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    void MakeExample() const
    {
        Run({"init", m_Store});
        Run({"import", m_Store, QTB_SOURCE_DIR "/examples/as1/structure.xml",
             QTB_SOURCE_DIR "/examples/as1/files.xml"});
    }

    QTBTestFolder m_Folder;
    std::string m_Store = m_Folder.GetPath("pdm.store");
};

TEST_F(StoreCommand, AStoreIsMadeAndFilled)
{
    EXPECT_EQ(Run({"init", m_Store}), m_Store + "\n");
    const std::string structure = QTB_SOURCE_DIR "/examples/as1/structure.xml";
    EXPECT_EQ(Run({"import", m_Store, structure}),
              structure + ": 9 objects and 13 relations added, 0 and 0 changed, 0 items unchanged, 0 deleted, "
                          "0 files taken in, 0 left out\n");
    EXPECT_EQ(Run({"check", m_Store}), "no faults\n");
}

TEST_F(StoreCommand, AnswersAreWrittenToTheOutputOrAFile)
{
    MakeExample();
    const std::string answer = Run({"expand", m_Store, "rod-assembly", "--relation", "PartPart", "--level", "1"});
    EXPECT_THAT(answer, AllOf(HasSubstr("<function name=\"expand\">"), HasSubstr("<a name=\"Key\">rod</a>"),
                              Not(HasSubstr("CATPartFile"))));
    const std::string path = m_Folder.GetPath("answer.xml");
    EXPECT_EQ(Run({"expand", m_Store, "rod-assembly", "--relation", "PartPart", "--level", "1", "-o", path}), "");
    std::ifstream file(path);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()), answer);
    EXPECT_THAT(Run({"expand", m_Store, "nut", "--relation", "PartPart:left"}), HasSubstr("<a name=\"Key\">as1</a>"));
    EXPECT_THAT(Run({"query", m_Store, "--class", "Part", "PartNumber=nut*"}),
                AllOf(HasSubstr("<a name=\"Key\">nut</a>"), HasSubstr("<a name=\"Key\">nut-bolt-assembly</a>"),
                      Not(HasSubstr("<a name=\"Key\">rod</a>"))));
    EXPECT_THAT(Run({"export", m_Store}), HasSubstr("<function name=\"export\">"));
}

TEST_F(StoreCommand, ChangesSayWhatBecameOfTheItems)
{
    MakeExample();
    EXPECT_EQ(Run({"checkout", m_Store, "--user", "kim", "nut"}), "nut: nut, nut, version A, In work\n");
    EXPECT_EQ(Refusal({"checkout", m_Store, "--user", "lee", "nut"}, ExitCode::Failure),
              "store: \"nut\" is checked out by kim.");
    EXPECT_THAT(Run({"revise", m_Store, "--user", "kim", "nut"}),
                AllOf(HasSubstr("nut/B: nut, nut, version B, In work\n"),
                      HasSubstr("PartPart/1/rod-assembly: rod-assembly -> nut/B\n")));
    EXPECT_THAT(Run({"checkin", m_Store, "--user", "kim", "nut/B"}), HasSubstr("nut/B: "));
    EXPECT_THAT(Run({"update", m_Store, "nut/B", "Material=steel"}), HasSubstr("nut/B: "));
    EXPECT_THAT(Run({"query", m_Store, "Material=steel"}), HasSubstr("<a name=\"Key\">nut/B</a>"));
    EXPECT_THAT(Run({"relate", m_Store, "PartPart", "plate", "nut/B", "InstanceName=nut_9"}),
                HasSubstr(": plate -> nut/B\n"));
    EXPECT_EQ(Run({"promote", m_Store, "rod"}),
              "rod: rod, rod, version A, In review\nPartFile/rod: rod -> CATPartFile/rod\n");
    EXPECT_EQ(Run({"delete", m_Store, "PartFile/bolt"}), "PartFile/bolt: deleted\n");
    EXPECT_EQ(Run({"check", m_Store}), "no faults\n");
}

TEST_F(StoreCommand, FilesGoInAndOut)
{
    MakeExample();
    const std::string path = m_Folder.GetPath("new.CATPart");
    std::ofstream(path) << "a rod";
    Run({"checkout", m_Store, "CATPartFile/rod"});
    Run({"checkin", m_Store, "CATPartFile/rod", "--file", path});
    EXPECT_THAT(Run({"checkout", m_Store, "CATPartFile/rod", "--to", m_Folder.GetPath()}),
                HasSubstr(m_Folder.GetPath("rod.CATPart")));
    std::ifstream file(m_Folder.GetPath("rod.CATPart"));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()), "a rod");
}

TEST_F(StoreCommand, ACheckOutThatCannotBringItsFilesIsNone)
{
    MakeExample();
    const std::string rod = Write("rod", "a rod");
    Run({"checkout", m_Store, "CATPartFile/rod", "CATPartFile/nut"});
    Run({"checkin", m_Store, "CATPartFile/rod", "CATPartFile/nut", "--file", rod, "--file", Write("nut", "a nut")});
    const std::string folder = m_Folder.GetPath("work");
    fs::create_directory(folder);
    const auto expectRefusal = [&](const std::vector<std::string>& keys, const std::string& message) {
        std::vector<std::string> arguments = {"checkout", m_Store, "--to", folder};
        arguments.insert(arguments.end(), keys.begin(), keys.end());
        EXPECT_EQ(Refusal(arguments, ExitCode::Failure), message);
        EXPECT_THAT(Run({"expand", m_Store, "CATPartFile/rod", "CATPartFile/nut"}), Not(HasSubstr("QtbCheckedOutBy")));
    };
    // Somebody's work is there.
    Write("work/nut.CATPart", "another nut");
    expectRefusal({"CATPartFile/rod", "CATPartFile/nut"},
                  folder + "/nut.CATPart is there already and is not what the store has of CATPartFile/nut; move it "
                           "away or choose another folder");
    EXPECT_FALSE(fs::exists(folder + "/rod.CATPart"));
    EXPECT_EQ(Read(folder + "/nut.CATPart"), "another nut");
    // Two of one name.
    Run({"checkout", m_Store, "CATPartFile/nut"});
    Run({"update", m_Store, "CATPartFile/nut", "FileName=rod.CATPart"});
    Run({"checkin", m_Store, "CATPartFile/nut"});
    expectRefusal(
        {"CATPartFile/rod", "CATPartFile/nut"},
        "CATPartFile/rod and CATPartFile/nut have the same file name rod.CATPart; check them out into different "
        "folders");
    expectRefusal({"CATPartFile/bolt"}, "store: The PDM system has no file of \"CATPartFile/bolt\".");
    expectRefusal({"plate"}, "plate has no file name");
    // The second file was damaged, which is found when it is fetched.
    Run({"checkout", m_Store, "CATPartFile/nut"});
    Run({"update", m_Store, "CATPartFile/nut", "FileName=nut2.CATPart"});
    Run({"checkin", m_Store, "CATPartFile/nut"});
    for (const auto& entry : fs::recursive_directory_iterator(m_Store + ".files")) {
        if (entry.is_regular_file() && Read(entry.path()) == "a nut") {
            std::ofstream(entry.path()) << "A NUT";
        }
    }
    EXPECT_THAT(Refusal({"checkout", m_Store, "--to", folder, "CATPartFile/rod", "CATPartFile/nut"}, ExitCode::Failure),
                HasSubstr("is damaged"));
    EXPECT_THAT(Run({"expand", m_Store, "CATPartFile/rod", "CATPartFile/nut"}), Not(HasSubstr("QtbCheckedOutBy")));
    EXPECT_FALSE(fs::exists(folder + "/rod.CATPart"));
}

TEST_F(StoreCommand, AFileThatIsThereAsTheStoreHasItIsNoObstacle)
{
    MakeExample();
    const std::string rod = Write("rod.CATPart", "a rod");
    Run({"checkout", m_Store, "CATPartFile/rod"});
    Run({"checkin", m_Store, "CATPartFile/rod", "--file", rod});
    EXPECT_THAT(Run({"checkout", m_Store, "--to", m_Folder.GetPath(), "CATPartFile/rod", "CATPartFile/rod"}),
                EndsWith("In work\n" + rod + "\n"));
    EXPECT_EQ(Read(rod), "a rod");
}

TEST_F(StoreCommand, WhatIsWrongIsSaidWithItsExitCode)
{
    MakeExample();
    EXPECT_THAT(Refusal({"init", m_Store}, ExitCode::BadInput), HasSubstr("there is a file of that name"));
    EXPECT_THAT(Refusal({"query", m_Folder.GetPath("missing")}, ExitCode::BadInput),
                HasSubstr("There is no PDM store"));
    EXPECT_THAT(Refusal({"expand", m_Store, "nobody"}, ExitCode::Failure), HasSubstr("has no item \"nobody\""));
    EXPECT_THAT(Refusal({"query", m_Store, "PartNumber"}, ExitCode::Usage), HasSubstr("NAME=VALUE"));
    EXPECT_THAT(Refusal({"expand", m_Store, "nut", "--relation", "PartPart:up"}, ExitCode::Usage),
                HasSubstr("left or right"));
    EXPECT_THAT(Refusal({"import", m_Store, m_Folder.GetPath("missing.xml")}, ExitCode::BadInput),
                HasSubstr("does not exist"));
    std::ofstream(m_Folder.GetPath("bad.xml")) << "<answer>";
    EXPECT_THAT(Refusal({"import", m_Store, m_Folder.GetPath("bad.xml")}, ExitCode::BadInput), HasSubstr("bad.xml"));
    // An answer that cannot be had leaves no file.
    Refusal({"expand", m_Store, "nobody", "-o", m_Folder.GetPath("answer.xml")}, ExitCode::Failure);
    EXPECT_FALSE(fs::exists(m_Folder.GetPath("answer.xml")));
    EXPECT_FALSE(fs::exists(m_Folder.GetPath("answer.xml.new")));
}

TEST_F(StoreCommand, AnAnswerIsNotWrittenOverTheStoreItself)
{
    MakeExample();
    Run({"checkout", m_Store, "CATPartFile/rod"});
    Run({"checkin", m_Store, "CATPartFile/rod", "--file", QTB_SOURCE_DIR "/README.md"});
    fs::create_symlink(m_Store, m_Folder.GetPath("link"));
    fs::create_hard_link(m_Store, m_Folder.GetPath("second name"));
    for (const std::string& path :
         {m_Store, m_Store + "-wal", m_Store + "-shm", m_Store + "-journal", m_Store + ".files/answer",
          m_Folder.GetPath("./pdm.store"), m_Folder.GetPath("link"), m_Folder.GetPath("second name")}) {
        EXPECT_THAT(Refusal({"export", m_Store, "-o", path}, ExitCode::Usage),
                    path + " belongs to the store itself; choose another file");
    }
    EXPECT_EQ(Run({"check", m_Store}), "no faults\n");
    Run({"export", m_Store, "-o", m_Store + ".files.xml"});
    EXPECT_TRUE(fs::exists(m_Store + ".files.xml"));
}

TEST_F(StoreCommand, TextThatTheStoreCannotKeepIsRefused)
{
    MakeExample();
    Run({"checkout", m_Store, "nut"});
    const std::string before = Run({"export", m_Store});
    for (const char* text : {"Name=\xFF", "Name=a\x01", "Name=a\x1B[1m", "\xC3=a"}) {
        EXPECT_THAT(Refusal({"update", m_Store, "nut", text}, ExitCode::Usage), HasSubstr("is no UTF-8 text")) << text;
    }
    EXPECT_THAT(Refusal({"promote", m_Store, "--user", "k\xFFm", "rod"}, ExitCode::Usage),
                HasSubstr("is no UTF-8 text"));
    EXPECT_EQ(Run({"export", m_Store}), before);
    Run({"update", m_Store, "nut", "Name=two\nlines \xC3\xBC"});
    EXPECT_THAT(Run({"export", m_Store}), HasSubstr("two\nlines \xC3\xBC"));
}

TEST_F(StoreCommand, PathsAreOpenedAsTheyAreGiven)
{
    m_Store = m_Folder.GetPath("pdm\xFF.store");
    MakeExample();
    EXPECT_TRUE(fs::exists(m_Store));
    const std::string path = Write("f\xFE", "a rod");
    Run({"checkout", m_Store, "CATPartFile/rod"});
    Run({"checkin", m_Store, "CATPartFile/rod", "--file", path});
    const std::string folder = m_Folder.GetPath("work\xFF");
    fs::create_directory(folder);
    Run({"checkout", m_Store, "CATPartFile/rod", "--to", folder});
    EXPECT_EQ(Read(folder + "/rod.CATPart"), "a rod");
    Run({"export", m_Store, "-o", folder + "/answer\xFF"});
    EXPECT_TRUE(fs::exists(folder + "/answer\xFF"));
    fs::create_symlink(m_Store, m_Folder.GetPath("link\xFF"));
    EXPECT_THAT(Refusal({"export", m_Store, "-o", m_Folder.GetPath("link\xFF")}, ExitCode::Usage),
                HasSubstr("belongs to the store"));
    EXPECT_EQ(Run({"check", m_Store}), "no faults\n");
}

TEST_F(StoreCommand, AUserThatTheMachineDoesNotKnowIsNamedByTheEnvironment)
{
    if (geteuid() != 0) {
        GTEST_SKIP() << "only the administrator can become somebody unknown";
    }
    const pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        constexpr uid_t UNKNOWN = 54321;
        setenv("USER", "kim", 1);
        setenv("LOGNAME", "lee", 1);
        bool isWell = seteuid(UNKNOWN) == 0 && getpwuid(UNKNOWN) == nullptr && StoreInput::GetUser("pat") == "pat" &&
                      StoreInput::GetUser("") == "kim";
        setenv("USER", "", 1);
        isWell = isWell && StoreInput::GetUser("") == "lee";
        unsetenv("LOGNAME");
        try {
            StoreInput::GetUser("");
        } catch (const HostError& error) {
            _exit(isWell && error.what() == std::string("the name of the user is not known; give it with --user") ? 0
                                                                                                                  : 1);
        }
        _exit(2);
    }
    int status = 0;
    ASSERT_EQ(waitpid(pid, &status, 0), pid);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
}

TEST_F(StoreCommand, ACheckThatFindsFaultsFails)
{
    MakeExample();
    Run({"checkout", m_Store, "CATPartFile/rod"});
    Run({"checkin", m_Store, "CATPartFile/rod", "--file", QTB_SOURCE_DIR "/README.md"});
    fs::remove_all(m_Store + ".files");
    EXPECT_THAT(Run({"check", m_Store}, 1), HasSubstr("cannot be read"));
}

} // namespace

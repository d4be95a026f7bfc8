// Files that commands write: whole or not at all, and nothing else is touched.

#include "HostOutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include <gmock/gmock.h>

#include "HostError.h"
#include "QTBTestFolder.h"

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

namespace {

class OutputFile : public ::testing::Test
{
protected:
    static std::string Read(const std::string& path)
    {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    static void Write(const std::string& path, const std::string& content)
    {
        HostOutputFile file(path);
        file.Write(content);
        file.Complete();
    }
    // Why the file cannot be written.
    static std::string Refusal(const std::string& path)
    {
        try {
            Write(path, "new");
        } catch (const HostError& error) {
            return error.what();
        }
        return "written";
    }
    // The names in the folder.
    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(m_Folder.GetPath())) {
            names.push_back(entry.path().filename());
        }
        return names;
    }

    const QTBTestFolder m_Folder;
};

TEST_F(OutputFile, AFileIsThereOnlyWhenItIsWhole)
{
    const std::string path = m_Folder.GetPath("answer");
    const std::string content(200000, 'x');
    {
        HostOutputFile file(path);
        file.Write(content);
        EXPECT_FALSE(fs::exists(path));
        file.Complete();
    }
    EXPECT_EQ(Read(path), content);
    {
        HostOutputFile file(path);
        file.Write(content + content);
    }
    EXPECT_EQ(Read(path), content);
    EXPECT_THAT(Names(), ElementsAre("answer"));
}

TEST_F(OutputFile, NothingRemainsOfAProgramThatIsKilled)
{
    const std::string path = m_Folder.Write("answer", "old");
    const pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        HostOutputFile file(path);
        file.Write(std::string(200000, 'x'));
        kill(getpid(), SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(pid, &status, 0), pid);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(Read(path), "old");
    EXPECT_THAT(Names(), ElementsAre("answer"));
}

TEST_F(OutputFile, OtherFilesStayAsTheyAre)
{
    m_Folder.Write("answer.new", "precious");
    Write(m_Folder.GetPath("answer"), "new");
    EXPECT_EQ(Read(m_Folder.GetPath("answer.new")), "precious");
    EXPECT_THAT(Names(), UnorderedElementsAre("answer", "answer.new"));
}

TEST_F(OutputFile, AFileThatIsReplacedKeepsItsPermissions)
{
    const std::string path = m_Folder.Write("answer", "old");
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    Write(path, "new");
    EXPECT_EQ(Read(path), "new");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(OutputFile, ASymbolicLinkStaysAndLeadsToTheNewContent)
{
    const std::string target = m_Folder.Write("target", "old");
    fs::create_symlink("target", m_Folder.GetPath("link"));
    fs::create_symlink(m_Folder.GetPath("link"), m_Folder.GetPath("link of link"));
    Write(m_Folder.GetPath("link of link"), "new");
    EXPECT_TRUE(fs::is_symlink(m_Folder.GetPath("link")));
    EXPECT_TRUE(fs::is_symlink(m_Folder.GetPath("link of link")));
    EXPECT_EQ(Read(target), "new");
    // Also one to a file that is not there yet.
    fs::create_symlink("later", m_Folder.GetPath("link to nothing"));
    Write(m_Folder.GetPath("link to nothing"), "new");
    EXPECT_TRUE(fs::is_symlink(m_Folder.GetPath("link to nothing")));
    EXPECT_EQ(Read(m_Folder.GetPath("later")), "new");
    fs::create_symlink("circle", m_Folder.GetPath("circle"));
    EXPECT_THAT(Refusal(m_Folder.GetPath("circle")), HasSubstr("circle cannot be written to: "));
}

TEST_F(OutputFile, APipeAndADeviceAreWrittenToAndStay)
{
    const std::string path = m_Folder.GetPath("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::string read;
    std::thread reader([&read, &path] { read = Read(path); });
    Write(path, "new");
    reader.join();
    EXPECT_EQ(read, "new");
    EXPECT_TRUE(fs::is_fifo(path));
    Write("/dev/null", "new");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_THAT(Refusal("/dev/full"), StartsWith("/dev/full cannot be written to: "));
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
    EXPECT_THAT(Names(), ElementsAre("pipe"));
}

TEST_F(OutputFile, TheStandardOutputIsContinuedWhateverFileItIs)
{
    const std::string path = m_Folder.Write("output", "before ");
    const int descriptor = open(path.c_str(), O_WRONLY | O_APPEND);
    ASSERT_GE(descriptor, 0);
    Write("/proc/self/fd/" + std::to_string(descriptor), "new");
    close(descriptor);
    EXPECT_EQ(Read(path), "before new");
}

TEST_F(OutputFile, WhatCannotBeWrittenIsNamedWithTheReason)
{
    EXPECT_EQ(Refusal(m_Folder.GetPath()), m_Folder.GetPath() + " is a folder, not a file");
    EXPECT_EQ(Refusal(m_Folder.GetPath("no/file")),
              m_Folder.GetPath("no/file") + " cannot be written to: No such file or directory");
    EXPECT_EQ(Refusal(m_Folder.GetPath("nothing/")), m_Folder.GetPath("nothing/") + " is a folder, not a file");
    EXPECT_THAT(Names(), IsEmpty());
}

} // namespace

// qtbhost shell, as a person at a terminal uses it.

#include "ShellCommand.h"

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>

#include <gmock/gmock.h>

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

// A shell at a terminal of its own.
class ShellTerminal : public ::testing::Test
{
protected:
    void SetUp() override
    {
        winsize size{50, 500, 0, 0};
        m_Child = forkpty(&m_Terminal, nullptr, nullptr, &size);
        ASSERT_GE(m_Child, 0);
        if (m_Child == 0) {
            // What a system without any settings gives a program.
            unsetenv("LC_CTYPE");
            unsetenv("LANG");
            setenv("LC_ALL", "C", 1);
            setenv("TERM", "dumb", 1);
            _exit(RunShell(ShellOptions()));
        }
    }
    void TearDown() override
    {
        if (m_Child > 0 && m_Status == -1) {
            kill(m_Child, SIGKILL);
            waitpid(m_Child, nullptr, 0);
        }
        close(m_Terminal);
    }

    void Type(const std::string& keys) const
    {
        EXPECT_EQ(write(m_Terminal, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
    }
    // What stands on the screen until a text does that was not there before, or until the end.
    std::string ReadUntil(const std::string& text)
    {
        std::string heard;
        pollfd input{m_Terminal, POLLIN, 0};
        while (heard.find(text) == std::string::npos && poll(&input, 1, 20000) > 0) {
            char buffer[4096];
            const ssize_t count = read(m_Terminal, buffer, sizeof buffer);
            if (count <= 0) {
                break;
            }
            heard.append(buffer, static_cast<std::size_t>(count));
        }
        return heard;
    }
    // The result of the program, -1 when it was ended by a signal.
    int Wait()
    {
        waitpid(m_Child, &m_Status, 0);
        return WIFEXITED(m_Status) ? WEXITSTATUS(m_Status) : -1;
    }

    pid_t m_Child = -1;
    int m_Terminal = -1;
    int m_Status = -1;
};

} // namespace

TEST_F(ShellTerminal, CharactersOfAllLanguagesAreTyped)
{
    EXPECT_THAT(ReadUntil("qtb> "), HasSubstr("help lists the commands"));
    Type("windows_\xC3\xA4\xE2\x82\xAC\r");
    EXPECT_THAT(ReadUntil("lists them"), HasSubstr("there is no command windows_\xC3\xA4\xE2\x82\xAC; help"));
    Type("quit\r");
    ReadUntil("nothing more");
    EXPECT_EQ(Wait(), 1) << "a line failed";
}

TEST_F(ShellTerminal, CtrlCClearsTheLineThatIsTyped)
{
    ReadUntil("qtb> ");
    Type("nonsense \x03");
    Type("windows\r");
    EXPECT_THAT(ReadUntil("PDM "), Not(HasSubstr("there is no command"))) << "the line was windows alone";
    Type("exit\r");
    ReadUntil("nothing more");
    EXPECT_EQ(Wait(), 0) << "it went on to the end";
}

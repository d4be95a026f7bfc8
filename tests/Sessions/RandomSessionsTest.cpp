#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "QTBTestEnvironment.h"
#include "QTBTestFolder.h"
#include "SessionMaker.h"
#include "SessionPlayer.h"
#include "SessionShrinker.h"

namespace fs = std::filesystem;

namespace {

constexpr unsigned int STALLED_AFTER_SECONDS = 120;

unsigned int GetNumber(const char* name, unsigned int byDefault)
{
    const char* value = std::getenv(name);
    return value != nullptr ? static_cast<unsigned int>(std::strtoul(value, nullptr, 10)) : byDefault;
}

// Runs a function in a process of its own and hands its text over; a process that dies of it is told instead.
template <class Function>
std::string RunApart(Function function)
{
    int ends[2];
    if (pipe(ends) != 0) {
        return "no pipe can be made";
    }
    std::cout.flush();
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        alarm(STALLED_AFTER_SECONDS);
        const std::string text = function();
        const ssize_t ignored = write(ends[1], text.data(), text.size());
        static_cast<void>(ignored);
        // Nothing of the test is to run a second time here.
        _exit(0);
    }
    close(ends[1]);
    std::string text;
    char buffer[4096];
    for (ssize_t count = 0; (count = read(ends[0], buffer, sizeof buffer)) != 0;) {
        if (count < 0 && errno != EINTR) {
            break;
        }
        text.append(buffer, static_cast<std::size_t>(count > 0 ? count : 0));
    }
    close(ends[0]);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFSIGNALED(status)) {
        return WTERMSIG(status) == SIGALRM ? std::string("the session stalls")
                                           : "the session dies of signal " + std::to_string(WTERMSIG(status));
    }
    return WEXITSTATUS(status) != 0 ? "the session dies with status " + std::to_string(WEXITSTATUS(status)) : text;
}

// The session as a script for the shell, files and all.
std::string WriteScript(const SessionSteps& steps, const fs::path& folder)
{
    fs::create_directories(folder);
    std::string script;
    std::string files;
    for (const SessionStep& step : steps) {
        script += SessionPlayer::IsShellLine(step.line) ? step.line : "# no command of the shell: " + step.line;
        script += '\n';
        if (!step.fileName.empty()) {
            std::ofstream(folder / step.fileName) << step.content;
            files += step.fileName + ":\n" + step.content;
        }
    }
    std::ofstream(folder / "session.txt") << script;
    return script + "\n" + files + "\nin " + folder.string() + ": qtbhost shell session.txt\n";
}

// Sessions name their files alike; one after the other they get the name of their session in front.
void AppendSession(SessionSteps& steps, const SessionSteps& session, const std::string& name)
{
    for (SessionStep step : session) {
        if (!step.fileName.empty()) {
            step.line.insert(step.line.size() - step.fileName.size(), name + "-");
            step.fileName.insert(0, name + "-");
        }
        steps.push_back(std::move(step));
    }
    steps.push_back(SessionPlayer::NextSession());
}

class RandomSessions : public testing::Test
{
protected:
    std::string PlayApart(const SessionSteps& steps) const
    {
        return RunApart([&] { return SessionPlayer::PlayAll(steps, m_Folder.GetPath()); });
    }

    // Shrinks what failed, a session or several one after the other, and reports it.
    void Report(const std::string& name, const SessionSteps& steps, const std::string& broken) const
    {
        const SessionSteps small =
            ShrinkSession(steps, [&](const SessionSteps& fewer) { return !PlayApart(fewer).empty(); });
        const std::string brokenInSmall = PlayApart(small);
        ADD_FAILURE() << "session " << name << ": " << broken << "\nits shortest form: " << brokenInSmall << "\n\n"
                      << WriteScript(small, fs::temp_directory_path() / ("QTBSession-" + name));
    }

    // Trees of sessions stay small; those of ladders end at the limit, which has to be right too.
    QTBTestEnvironment m_MaxRepNodes{"QTB_MAX_REP_NODES", "300"};
    QTBTestEnvironment m_MaxProducts{"QTB_MAX_PRODUCTS", "300"};
    // Stores would wait for the disk.
    QTBTestFolder m_Folder{QTBTestFolder::GetFastParent()};
};

} // namespace

// QTB_SESSIONS sessions (150) from number QTB_SESSIONS_SEED (1) on, each of QTB_SESSIONS_STEPS steps (40). Behind each
// step everything that has to hold in a session must hold, and behind each session nothing may be left.
TEST_F(RandomSessions, NeverBreakWhatHasToHold)
{
    constexpr unsigned int TOGETHER = 25;
    constexpr int MOST_FAILURES = 3;
    const unsigned int first = GetNumber("QTB_SESSIONS_SEED", 1);
    const unsigned int end = first + GetNumber("QTB_SESSIONS", 150);
    const std::size_t stepCount = GetNumber("QTB_SESSIONS_STEPS", 40);
    int failures = 0;
    for (unsigned int begin = first; begin < end && failures < MOST_FAILURES; begin += TOGETHER) {
        const unsigned int last = std::min(begin + TOGETHER, end);
        // Several to a process, because starting one takes long; one that fails is looked at alone.
        SessionSteps ofAll;
        std::vector<SessionSteps> sessions;
        for (unsigned int seed = begin; seed < last; ++seed) {
            sessions.push_back(SessionMaker(seed).Make(stepCount));
            AppendSession(ofAll, sessions.back(), std::to_string(seed));
        }
        const std::string brokenInAll = PlayApart(ofAll);
        if (brokenInAll.empty()) {
            continue;
        }
        const int failuresBefore = failures;
        for (unsigned int seed = begin; seed < last && failures < MOST_FAILURES; ++seed) {
            const SessionSteps& steps = sessions[seed - begin];
            if (const std::string broken = PlayApart(steps); !broken.empty()) {
                Report(std::to_string(seed), steps, broken);
                ++failures;
            }
        }
        if (failures == failuresBefore) {
            Report(std::to_string(begin) + "-" + std::to_string(last - 1), ofAll, brokenInAll);
            ++failures;
        }
    }
}

TEST_F(RandomSessions, OfOneNumberAreTheSame)
{
    const SessionSteps once = SessionMaker(7).Make(60);
    const SessionSteps again = SessionMaker(7).Make(60);
    ASSERT_EQ(once.size(), 60U);
    ASSERT_EQ(again.size(), 60U);
    for (std::size_t i = 0; i < once.size(); ++i) {
        EXPECT_EQ(once[i].line, again[i].line);
        EXPECT_EQ(once[i].content, again[i].content);
    }
    EXPECT_NE(SessionMaker(8).Make(60)[0].content, once[0].content);
}

TEST_F(RandomSessions, ThatFailShrinkToWhatMakesThemFail)
{
    const SessionSteps steps = {{"tree", "", ""},    {"answer a.xml", "a.xml", "1\n2\n3\n"}, {"fold 1", "", ""},
                                {"windows", "", ""}, {"answer b.xml", "b.xml", "4\n"},       {"quit", "", ""}};
    const SessionSteps small = ShrinkSession(steps, [](const SessionSteps& fewer) {
        bool hasTwo = false;
        bool hasFold = false;
        for (const SessionStep& step : fewer) {
            hasTwo = hasTwo || step.content.find('2') != std::string::npos;
            hasFold = hasFold || step.line == "fold 1";
        }
        return hasTwo && hasFold;
    });
    ASSERT_EQ(small.size(), 2U);
    EXPECT_EQ(small[0].content, "2\n");
    EXPECT_EQ(small[1].line, "fold 1");
}

TEST_F(RandomSessions, PlayOneAfterTheOtherInOneProcess)
{
    SessionSteps steps;
    const std::string answer = "<answer><function name=\"f\"><o><a name=\"Class\">Part</a><a name=\"Key\">P</a></o>"
                               "</function></answer>";
    AppendSession(steps, {{"answer a.xml", "a.xml", answer}, {"tree", "", ""}}, "1");
    AppendSession(steps, {{"answer a.xml", "a.xml", answer}, {"no such command", "", ""}}, "2");
    ASSERT_EQ(steps.size(), 6U);
    EXPECT_EQ(steps[3].line, "answer 2-a.xml");
    EXPECT_EQ(PlayApart(steps), "");
}

TEST_F(RandomSessions, ThatDieAreToldApart)
{
    EXPECT_EQ(RunApart([] { return std::string("said"); }), "said");
    EXPECT_EQ(RunApart([]() -> std::string { _exit(3); }), "the session dies with status 3");
    EXPECT_EQ(RunApart([]() -> std::string {
                  signal(SIGKILL, SIG_DFL);
                  raise(SIGKILL);
                  return "not reached";
              }),
              "the session dies of signal 9");
}

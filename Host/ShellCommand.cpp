#include "ShellCommand.h"

#include <editline/readline.h>
#include <langinfo.h>
#include <termios.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>

#include "QTBDebugUtil.h"
#include "Shell.h"

namespace {

// The line editor calls back without any argument of ours.
const Shell* g_pShell = nullptr;
std::vector<std::string> g_Candidates;

char* GiveCandidate(const char*, int state)
{
    static std::size_t s_Next = 0;
    if (state == 0) {
        s_Next = 0;
    }
    return s_Next < g_Candidates.size() ? strdup(g_Candidates[s_Next++].c_str()) : nullptr;
}

// Commands, nodes and relations where they may stand; without any, the editor completes names of files.
char** Complete(const char*, int, int end)
{
    g_Candidates = g_pShell->Complete(std::string(rl_line_buffer).substr(0, static_cast<std::size_t>(end)));
    return g_Candidates.empty() ? nullptr : rl_completion_matches("", &GiveCandidate);
}

// While a line is typed Ctrl-C is a key like others, which clears the line. While a command runs it ends the program,
// as everywhere.
class CtrlCIsAKey
{
public:
    CtrlCIsAKey() : m_IsTerminal(tcgetattr(STDIN_FILENO, &m_Before) == 0)
    {
        termios settings = m_Before;
        settings.c_cc[VINTR] = _POSIX_VDISABLE;
        Set(settings);
    }
    CtrlCIsAKey(const CtrlCIsAKey&) = delete;
    CtrlCIsAKey& operator=(const CtrlCIsAKey&) = delete;
    ~CtrlCIsAKey() { Set(m_Before); }

private:
    void Set(const termios& settings) const
    {
        if (m_IsTerminal) {
            tcsetattr(STDIN_FILENO, TCSADRAIN, &settings);
        }
    }

    termios m_Before{};
    bool m_IsTerminal;
};

// Nothing at the end of the input.
std::optional<std::string> ReadLine(const std::string& prompt)
{
    const CtrlCIsAKey ctrlC;
    const std::unique_ptr<char, decltype(&std::free)> pLine(readline(prompt.c_str()), &std::free);
    return pLine != nullptr ? std::optional<std::string>(pLine.get()) : std::nullopt;
}

// The line editor takes the characters that the locale knows and drops others. The session's texts are UTF-8, so it has
// to be a locale of that; numbers and all else stay as they are everywhere.
void UseCharactersOfTheTerminal()
{
    if (std::setlocale(LC_CTYPE, "") == nullptr || std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) {
        std::setlocale(LC_CTYPE, "C.UTF-8");
    }
}

void RunInteractively(Shell& shell)
{
    UseCharactersOfTheTerminal();
    rl_initialize();
    rl_parse_and_bind("bind ^C ed-start-over");
    g_pShell = &shell;
    rl_attempted_completion_function = &Complete;
    using_history();
    shell.SetPrompt(&ReadLine);
    std::cout << "help lists the commands, quit ends the session.\n";
    for (bool goesOn = true; goesOn;) {
        const std::optional<std::string> line = ReadLine("qtb> ");
        if (!line) {
            std::cout << '\n';
            return;
        }
        if (!line->empty()) {
            add_history(line->c_str());
        }
        goesOn = shell.Execute(*line);
    }
}

// Where the output goes to somebody who sees colours and wants them.
bool HasColors()
{
    const char* noColor = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    return isatty(STDOUT_FILENO) != 0 && (noColor == nullptr || *noColor == '\0') && terminal != nullptr &&
           std::strcmp(terminal, "dumb") != 0;
}

} // namespace

int RunShell(const ShellOptions& options)
{
    QTBDebugUtil::s_bGlobalDebugStatus = options.debug ? TRUE : FALSE;
    HostSession session(options.schema, options.language);
    if (!options.store.empty()) {
        session.ConnectStore(options.store, options.user);
    }
    Shell shell(session, std::cout);
    shell.SetColors(HasColors());
    if (!options.script.empty()) {
        HostSession::RequireFile(options.script, "script");
        std::ifstream script(options.script);
        if (!script) {
            throw HostError(ExitCode::BadInput, "script " + options.script + " cannot be read");
        }
        shell.RunScript(script);
    } else if (isatty(STDIN_FILENO) != 0) {
        RunInteractively(shell);
    } else {
        shell.RunScript(std::cin);
    }
    return static_cast<int>(shell.GetFailureCount() > 0 ? ExitCode::Failure : ExitCode::Success);
}

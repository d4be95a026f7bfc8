#include "ShellCommand.h"

#include <editline/readline.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>

#include "QTBDebugUtil.h"
#include "Shell.h"

namespace {

// The line editor calls back without any argument of ours.
std::vector<std::string> g_CommandNames;

char* CompleteName(const char* start, int state)
{
    static std::size_t s_Next = 0;
    if (state == 0) {
        s_Next = 0;
    }
    while (s_Next < g_CommandNames.size()) {
        const std::string& name = g_CommandNames[s_Next++];
        if (name.starts_with(start)) {
            return strdup(name.c_str());
        }
    }
    return nullptr;
}

// Names of commands at the beginning of a line, files elsewhere.
char** Complete(const char* text, int start, int)
{
    return start == 0 ? rl_completion_matches(text, &CompleteName) : nullptr;
}

void RunInteractively(Shell& shell)
{
    g_CommandNames = shell.GetCommandNames();
    rl_attempted_completion_function = &Complete;
    using_history();
    std::cout << "help lists the commands, quit ends the session.\n";
    for (bool goesOn = true; goesOn;) {
        const std::unique_ptr<char, decltype(&std::free)> pLine(readline("qtb> "), &std::free);
        if (pLine == nullptr) {
            std::cout << '\n';
            return;
        }
        if (*pLine != '\0') {
            add_history(pLine.get());
        }
        goesOn = shell.Execute(pLine.get());
    }
}

void RunScript(Shell& shell, std::istream& input)
{
    for (std::string line; Shell::ReadLine(input, &line);) {
        std::cout << "> " << line << '\n';
        if (!shell.Execute(line)) {
            return;
        }
    }
}

} // namespace

int RunShell(const ShellOptions& options)
{
    QTBDebugUtil::s_bGlobalDebugStatus = options.debug ? TRUE : FALSE;
    HostSession session(options.schema, options.language);
    Shell shell(session, std::cout);
    if (!options.script.empty()) {
        std::ifstream script(options.script);
        if (!script) {
            throw HostError(ExitCode::BadInput, "script " + options.script + " cannot be read");
        }
        RunScript(shell, script);
    } else if (isatty(STDIN_FILENO) != 0) {
        RunInteractively(shell);
    } else {
        RunScript(shell, std::cin);
    }
    return static_cast<int>(shell.GetFailureCount() > 0 ? ExitCode::Failure : ExitCode::Success);
}

#pragma once

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "HostSession.h"
#include "ShellBoxCommands.h"
#include "ShellContext.h"
#include "ShellProductCommands.h"
#include "ShellStoreCommands.h"
#include "ShellTreeCommands.h"
#include "ShellWindowCommands.h"

// The commands of an interactive session. A command that fails says why and leaves the session as it is.
class Shell
{
public:
    // Writes everything it has to say to the stream.
    Shell(HostSession& session, std::ostream& out);
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;
    ~Shell();

    // For a terminal: whether it has colours, and how its user is asked.
    void SetColors(bool hasColors) { m_Context.hasColors = hasColors; }
    void SetPrompt(std::function<std::optional<std::string>(const std::string&)> ask)
    {
        m_Context.ask = std::move(ask);
    }

    // Runs one line: a command with its arguments, an empty line or a comment that begins with #. A line of more than
    // MAX_LINE_LENGTH bytes fails. False when the session is to end. An error names the place, the line of a script for
    // example, unless it is empty.
    bool Execute(const std::string& line, const std::string& place = "");
    static constexpr std::size_t MAX_LINE_LENGTH = 1000000;

    // The next line of a stream, as far as one byte more than Execute takes: the rest of a longer one is passed over.
    // False at the end of the stream.
    static bool ReadLine(std::istream& input, std::string* pLine);

    // Runs the lines of a script, each repeated in the output in front of what it says. Errors name the line.
    void RunScript(std::istream& script);

    // Lines that failed so far.
    int GetFailureCount() const { return m_FailureCount; }

    // What the last word of a line can be completed to; empty where it is a file.
    std::vector<std::string> Complete(const std::string& line) const;

private:
    // By name or by another name that it has; null for an unknown one.
    const ShellEntry* Find(const std::string& word) const;
    void Run(ShellArguments words);
    void ReportFailure(const std::string& place, const char* text);
    void Help(const ShellArguments& arguments);

    ShellContext m_Context;
    ShellWindowCommands m_WindowCommands;
    ShellTreeCommands m_TreeCommands;
    ShellStoreCommands m_StoreCommands;
    ShellProductCommands m_ProductCommands;
    ShellBoxCommands m_BoxCommands;
    std::vector<ShellGroup> m_Groups;
    int m_FailureCount = 0;
    bool m_IsOver = false;
};

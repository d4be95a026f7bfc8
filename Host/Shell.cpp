#include "Shell.h"

#include <algorithm>
#include <exception>
#include <istream>
#include <new>
#include <ostream>

#include <fmt/format.h>
#include <fmt/ostream.h>

#include "CATApplicationFrame.h"
#include "CATDlgNotice.h"
#include "HostRelations.h"
#include "QTBIRepNodeCont.h"

namespace {

// What some editors put in front of UTF-8 text.
constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

// Words of a line; double quotes keep blanks together.
ShellArguments Split(const std::string& line)
{
    ShellArguments words;
    std::string word;
    bool isInQuotes = false;
    bool hasWord = false;
    for (const char c : line) {
        if (c == '"') {
            isInQuotes = !isInQuotes;
            hasWord = true;
        } else if (!isInQuotes && (c == ' ' || c == '\t' || c == '\r')) {
            if (hasWord) {
                words.push_back(word);
            }
            word.clear();
            hasWord = false;
        } else {
            word += c;
            hasWord = true;
        }
    }
    if (isInQuotes) {
        throw HostError(ExitCode::Usage, "the double quotes are not closed");
    }
    if (hasWord) {
        words.push_back(word);
    }
    return words;
}

std::string GetUsage(const ShellEntry& entry)
{
    return entry.name + (entry.arguments.empty() ? "" : " " + entry.arguments);
}

} // namespace

Shell::Shell(HostSession& session, std::ostream& out)
    : m_Context(session, out), m_WindowCommands(m_Context), m_TreeCommands(m_Context), m_StoreCommands(m_Context),
      m_ProductCommands(m_Context), m_BoxCommands(m_Context)
{
    m_Groups = {m_WindowCommands.GetWindowGroup(), m_TreeCommands.GetTreeGroup(),       m_TreeCommands.GetMenuGroup(),
                m_StoreCommands.GetStoreGroup(),   m_ProductCommands.GetProductGroup(), m_BoxCommands.GetBoxGroup(),
                m_WindowCommands.GetSessionGroup()};
    m_Groups.back().entries.push_back(
        {"help", "[COMMAND]", "say what the commands do; ? does too", 0, 1, ShellRun(this, &Shell::Help)});
    m_Groups.back().entries.push_back(
        {"quit", "", "end the session; exit does too", 0, 0, [this](const ShellArguments&) { m_IsOver = true; }});
    CATApplicationFrame::GetFrame()->SetNoticeHandler([&out](const CATDlgNotice& notice) {
        fmt::print(out, "{}\n{}{}", notice.title.View(), notice.message.View(),
                   notice.message.View().ends_with('\n') ? "" : "\n");
    });
}

Shell::~Shell()
{
    CATApplicationFrame::GetFrame()->SetNoticeHandler(nullptr);
}

const ShellEntry* Shell::Find(const std::string& word) const
{
    const std::string name = word == "exit" ? "quit" : word == "?" ? "help" : word;
    for (const ShellGroup& group : m_Groups) {
        for (const ShellEntry& entry : group.entries) {
            if (entry.name == name) {
                return &entry;
            }
        }
    }
    return nullptr;
}

void Shell::Run(ShellArguments words)
{
    if (words.empty() || words[0].starts_with('#')) {
        return;
    }
    const ShellEntry* pEntry = Find(words[0]);
    if (pEntry == nullptr) {
        throw HostError(ExitCode::Usage, "there is no command " + words[0] + "; help lists them");
    }
    words.erase(words.begin());
    if (words.size() > MAX_ARGUMENTS) {
        throw HostError(ExitCode::Usage, fmt::format("at most {} arguments", MAX_ARGUMENTS));
    }
    if (words.size() < pEntry->fewest || words.size() > pEntry->most) {
        throw HostError(ExitCode::Usage, "usage: " + GetUsage(*pEntry));
    }
    pEntry->run(words);
}

void Shell::ReportFailure(const std::string& place, const char* text)
{
    ++m_FailureCount;
    fmt::print(m_Context.out, "error{}: {}\n", place.empty() ? "" : " in " + place, text);
}

bool Shell::Execute(const std::string& line, const std::string& place)
{
    try {
        if (line.size() > MAX_LINE_LENGTH) {
            throw HostError(ExitCode::Usage,
                            fmt::format("the line is too long; at most {} bytes are read", MAX_LINE_LENGTH));
        }
        // A comment may have anything in it.
        const std::size_t first = line.find_first_not_of(" \t");
        Run(first != std::string::npos && line[first] == '#' ? ShellArguments() : Split(line));
    } catch (const std::bad_alloc&) {
        ReportFailure(place, NO_MEMORY);
    } catch (const std::exception& error) {
        // Most are HostError. Whatever else goes wrong, a full disk for example, the session goes on with what it has.
        ReportFailure(place, error.what());
    }
    CATApplicationFrame::GetFrame()->OnIdle();
    return !m_IsOver;
}

bool Shell::ReadLine(std::istream& input, std::string* pLine)
{
    pLine->clear();
    std::istream::int_type c = input.get();
    if (c == std::istream::traits_type::eof()) {
        return false;
    }
    for (; c != '\n' && c != std::istream::traits_type::eof(); c = input.get()) {
        if (pLine->size() <= MAX_LINE_LENGTH) {
            *pLine += static_cast<char>(c);
        }
    }
    return true;
}

void Shell::RunScript(std::istream& script)
{
    int number = 0;
    for (std::string line; ReadLine(script, &line);) {
        if (number == 0 && line.starts_with(BYTE_ORDER_MARK)) {
            line.erase(0, BYTE_ORDER_MARK.size());
        }
        m_Context.out << "> " << line << '\n';
        if (!Execute(line, fmt::format("line {}", ++number))) {
            return;
        }
    }
}

std::vector<std::string> Shell::Complete(const std::string& line) const
{
    const std::size_t blank = line.find_last_of(" \t");
    const std::string start = blank == std::string::npos ? line : line.substr(blank + 1);
    std::vector<std::string> candidates;
    if (blank == std::string::npos) {
        for (const ShellGroup& group : m_Groups) {
            for (const ShellEntry& entry : group.entries) {
                candidates.push_back(entry.name);
            }
        }
    } else {
        const ShellEntry* pEntry = Find(line.substr(0, line.find_first_of(" \t")));
        const std::string arguments = pEntry != nullptr ? pEntry->arguments : "";
        if (arguments.find("RELATION") != std::string::npos) {
            for (const CATUnicodeString& usName : HostRelations::GetNames()) {
                candidates.emplace_back(usName.View());
            }
        }
        CATListValCATBaseUnknown_var pdmNodes;
        if (arguments.find("NODE") != std::string::npos || arguments.find("KEY") != std::string::npos) {
            m_Context.session.GetPdmNodeCont()->GetAllPdmNodes(&pdmNodes);
        }
        for (const CATBaseUnknown_var& spPdmNode : pdmNodes) {
            candidates.emplace_back(QTBIPdmNode_var(spPdmNode)->GetPdmKey().View());
        }
        if (arguments == "[COMMAND]") {
            return Complete(start);
        }
    }
    std::erase_if(candidates, [&start](const std::string& candidate) { return !candidate.starts_with(start); });
    std::sort(candidates.begin(), candidates.end());
    return candidates;
}

void Shell::Help(const ShellArguments& arguments)
{
    if (!arguments.empty()) {
        const ShellEntry* pEntry = Find(arguments[0]);
        if (pEntry == nullptr) {
            throw HostError(ExitCode::Usage, "there is no command " + arguments[0]);
        }
        fmt::print(m_Context.out, "{}\n  {}\n", GetUsage(*pEntry), pEntry->help);
        return;
    }
    for (const ShellGroup& group : m_Groups) {
        fmt::print(m_Context.out, "{}\n", group.title);
        for (const ShellEntry& entry : group.entries) {
            fmt::print(m_Context.out, "  {:<38} {}\n", GetUsage(entry), entry.help);
        }
    }
    m_Context.out
        << "\nNODE is a line number of the tree printed last, or a PDM key; where a number is both, #3 is the "
           "line\nand key:3 the key. ITEM is the number of a menu item or its title, Expand/Consists of for "
           "one in\na submenu. PATH are instance names from the top of an assembly down, joined with /. "
           "Double quotes\nkeep blanks together.\n";
}

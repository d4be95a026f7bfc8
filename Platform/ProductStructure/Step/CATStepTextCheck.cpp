#include "CATStepTextCheck.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::string_view FIRST = "ISO-10303-21";
constexpr std::string_view LAST = "END-ISO-10303-21";
constexpr std::string_view END_OF_SECTION = "ENDSEC";
constexpr std::string_view BLANKS = " \t\r\n\f\v";

using Refusal = CATStepTextCheck::Refusal;

bool IsNameCharacter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
}

std::string Quoted(std::string_view text)
{
    constexpr std::size_t MAX_LENGTH = 40;
    std::string quoted = "\"";
    for (const char c : text.substr(0, MAX_LENGTH)) {
        quoted += c >= ' ' && c <= '~' ? c : '?';
    }
    return quoted + (text.size() > MAX_LENGTH ? "...\"" : "\"");
}

class Scanner
{
public:
    explicit Scanner(std::string_view text) : m_Text(text) {}

    std::optional<Refusal> Run()
    {
        // Text in another format need not have a single semicolon, so what it begins with tells first.
        SkipBlanks();
        if (m_Text.substr(m_Position, FIRST.size()) != FIRST) {
            return Refuse(m_Position, "the text begins with " + Quoted(FirstLine()), "a STEP file (ISO 10303-21)");
        }
        if (const std::size_t nul = m_Text.find('\0'); nul != std::string_view::npos) {
            return Refuse(nul, "a NUL character", "text");
        }
        for (const std::string_view statement : {FIRST, std::string_view("HEADER")}) {
            if (!ReadStatement()) {
                return m_Refusal;
            }
            if (m_Statement != statement) {
                return RefuseStatement(std::string(statement) + ";");
            }
        }
        if (!ReadSection(&Scanner::IsHeaderEntity, "an entity of the header or ENDSEC;")) {
            return m_Refusal;
        }
        while (ReadStatement()) {
            const std::string_view name = FirstName();
            if (m_Statement == LAST) {
                return m_HasData ? std::optional<Refusal>() : RefuseStatement("DATA;");
            }
            const bool isData = name == "DATA";
            if (!isData && name != "ANCHOR" && name != "REFERENCE") {
                return RefuseStatement(m_HasData ? "DATA; or END-ISO-10303-21;" : "DATA;");
            }
            m_HasData = m_HasData || isData;
            if (isData ? !ReadSection(&Scanner::IsInstance, "an entity (#1=NAME(...);) or ENDSEC;")
                       : !ReadSection(&Scanner::IsAnything, "ENDSEC;")) {
                break;
            }
        }
        return m_Refusal;
    }

private:
    using Test = bool (Scanner::*)() const;

    // Up to the end of a section.
    bool ReadSection(Test isAllowed, const char* expected)
    {
        while (ReadStatement()) {
            if (m_Statement == END_OF_SECTION) {
                return true;
            }
            if (!(this->*isAllowed)()) {
                RefuseStatement(expected);
                return false;
            }
        }
        return false;
    }

    bool IsHeaderEntity() const
    {
        const std::string_view rest = m_Statement.substr(FirstName().size());
        const std::size_t open = rest.find_first_not_of(BLANKS);
        return !FirstName().empty() && open != std::string_view::npos && rest[open] == '(';
    }
    bool IsInstance() const
    {
        // The end of a scope stands where instances do.
        return m_Statement.front() == '#' ? m_Statement.find('=') != std::string_view::npos : FirstName() == "ENDSCOPE";
    }
    bool IsAnything() const { return true; }

    std::string_view FirstName() const
    {
        const auto end = std::find_if_not(m_Statement.begin(), m_Statement.end(), IsNameCharacter);
        return m_Statement.substr(0, static_cast<std::size_t>(end - m_Statement.begin()));
    }

    std::string_view FirstLine() const
    {
        const std::string_view rest = m_Text.substr(m_Position);
        return rest.substr(0, rest.find_first_of("\r\n"));
    }

    // Blanks and comments.
    bool SkipBlanks()
    {
        while (true) {
            m_Position = std::min(m_Text.find_first_not_of(BLANKS, m_Position), m_Text.size());
            if (m_Text.substr(m_Position, 2) != "/*") {
                return true;
            }
            const std::size_t end = m_Text.find("*/", m_Position + 2);
            if (end == std::string_view::npos) {
                Refuse(m_Position, "a comment begins here that does not end", "*/");
                return false;
            }
            m_Position = end + 2;
        }
    }

    // The next statement without its semicolon and the blanks around it. False, with the refusal made, when there is
    // none or when it is not closed.
    bool ReadStatement()
    {
        if (!SkipBlanks()) {
            return false;
        }
        const std::size_t begin = m_Position;
        if (begin == m_Text.size()) {
            Refuse(begin, "the text ends here", std::string(LAST) + ";");
            return false;
        }
        std::size_t depth = 0;
        while ((m_Position = m_Text.find_first_of("'\"();/", m_Position)) != std::string_view::npos) {
            const char c = m_Text[m_Position];
            if (c == '\'' || c == '"') {
                // A quote inside a string is written twice, so it reads as two strings.
                m_Position = m_Text.find(c, m_Position + 1);
                if (m_Position == std::string_view::npos) {
                    break;
                }
            } else if (c == '/') {
                if (m_Text.substr(m_Position, 2) == "/*") {
                    if (!SkipBlanks()) {
                        return false;
                    }
                    continue;
                }
            } else if (c == '(') {
                ++depth;
            } else if (c == ')') {
                if (depth == 0) {
                    return RefuseParenthesis(begin);
                }
                --depth;
            } else if (depth > 0) {
                return RefuseParenthesis(begin);
            } else {
                SetStatement(begin);
                return true;
            }
            ++m_Position;
        }
        Refuse(begin, "the text ends in the middle of the statement that begins here", "; at its end");
        return false;
    }

    void SetStatement(std::size_t begin)
    {
        const std::string_view whole = m_Text.substr(begin, m_Position - begin);
        m_Statement = whole.substr(0, whole.find_last_not_of(BLANKS) + 1);
        m_StatementBegin = begin;
        ++m_Position;
        if (m_Statement.empty()) {
            m_Statement = ";";
        }
    }

    bool RefuseParenthesis(std::size_t begin)
    {
        Refuse(begin, "the parentheses of the statement that begins here do not match", "a ) for each (");
        return false;
    }

    std::optional<Refusal> RefuseStatement(const std::string& expected)
    {
        return Refuse(m_StatementBegin, "the statement " + Quoted(m_Statement), expected);
    }

    std::optional<Refusal> Refuse(std::size_t position, std::string problem, std::string expected)
    {
        const auto begin = m_Text.begin();
        const auto line = std::count(begin, begin + static_cast<std::ptrdiff_t>(position), '\n') + 1;
        m_Refusal = Refusal{static_cast<std::size_t>(line), std::move(problem), std::move(expected)};
        return m_Refusal;
    }

    std::string_view m_Text;
    std::size_t m_Position = 0;
    std::string_view m_Statement;
    std::size_t m_StatementBegin = 0;
    bool m_HasData = false;
    std::optional<Refusal> m_Refusal;
};

} // namespace

std::optional<CATStepTextCheck::Refusal> CATStepTextCheck::Check(std::string_view text)
{
    return Scanner(text).Run();
}

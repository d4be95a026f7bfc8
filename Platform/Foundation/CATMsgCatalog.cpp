#include "CATMsgCatalog.h"

#include <fstream>
#include <iostream>
#include <string>
#include <unordered_map>

namespace {

using Messages = std::unordered_map<CATUnicodeString, CATUnicodeString>;

// A file with more bad lines than this is no catalog.
constexpr int MAX_REPORTS_PER_FILE = 20;
constexpr std::size_t MAX_REPORTS = 1000;

struct Catalogs
{
    std::vector<CATUnicodeString> directories;
    CATUnicodeString language;
    // The messages of each catalog that was asked for, English ones replaced by those of the language.
    std::unordered_map<CATUnicodeString, Messages> read;
    std::vector<CATUnicodeString> reports;
};

// Kept to the end of the program, because errors may be reported by destructors of static objects.
Catalogs& TheCatalogs()
{
    static auto* const s_pCatalogs = new Catalogs();
    return *s_pCatalogs;
}

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

bool IsKeyCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '.' ||
           c == '-';
}

// One line of a catalog file.
class LineReader
{
public:
    explicit LineReader(std::string_view line) : m_Rest(line) {}

    // Whether the line holds no message: it is empty or a comment.
    bool IsEmpty()
    {
        SkipBlanks();
        return m_Rest.empty() || m_Rest.substr(0, 2) == "//";
    }

    // What the line lacks to be a message; null when it is one.
    const char* Read(std::string& key, std::string& text)
    {
        SkipBlanks();
        std::size_t length = 0;
        while (length < m_Rest.size() && IsKeyCharacter(m_Rest[length])) {
            ++length;
        }
        if (length == 0) {
            return "a key";
        }
        key = m_Rest.substr(0, length);
        m_Rest.remove_prefix(length);
        if (!Take('=')) {
            return "= behind the key";
        }
        if (!Take('"')) {
            return "a text in double quotes";
        }
        if (!ReadQuoted(text)) {
            return "the double quote that ends the text";
        }
        if (!Take(';')) {
            return "; behind the text";
        }
        return IsEmpty() ? nullptr : "nothing behind the semicolon but a comment";
    }

private:
    void SkipBlanks()
    {
        while (!m_Rest.empty() && IsBlank(m_Rest.front())) {
            m_Rest.remove_prefix(1);
        }
    }

    bool Take(char c)
    {
        SkipBlanks();
        if (m_Rest.empty() || m_Rest.front() != c) {
            return false;
        }
        m_Rest.remove_prefix(1);
        return true;
    }

    // The text up to the closing quote; \" \\ \n and \t stand for what they do everywhere.
    bool ReadQuoted(std::string& text)
    {
        text.clear();
        while (!m_Rest.empty()) {
            char c = m_Rest.front();
            m_Rest.remove_prefix(1);
            if (c == '"') {
                return true;
            }
            if (c == '\\' && !m_Rest.empty()) {
                const char escaped = m_Rest.front();
                m_Rest.remove_prefix(1);
                if (escaped != '"' && escaped != '\\' && escaped != 'n' && escaped != 't') {
                    text += c;
                }
                c = escaped == 'n' ? '\n' : escaped == 't' ? '\t' : escaped;
            }
            text += c;
        }
        return false;
    }

    std::string_view m_Rest;
};

void Report(const CATUnicodeString& report)
{
    std::cerr << report << std::endl;
    if (TheCatalogs().reports.size() < MAX_REPORTS) {
        TheCatalogs().reports.push_back(report);
    }
}

// Whether there is another line. What cannot be read ends the file; a lack of memory is no end, and is raised.
bool ReadLine(std::ifstream& file, std::string& line)
{
    try {
        return static_cast<bool>(std::getline(file, line));
    } catch (const std::ios_base::failure&) {
        return false;
    }
}

// Adds the messages of a file to those of the catalog, in whose place they come. No file is no failure.
void ReadFile(const std::string& path, Messages& messages)
{
    std::ifstream file(path);
    file.exceptions(std::ios_base::badbit);
    std::string line;
    std::string key;
    std::string text;
    Messages own;
    int reports = 0;
    for (int number = 1; ReadLine(file, line); ++number) {
        std::string_view view(line);
        if (number == 1 && view.substr(0, 3) == "\xEF\xBB\xBF") {
            view.remove_prefix(3);
        }
        LineReader reader(view);
        if (reader.IsEmpty()) {
            continue;
        }
        const char* missing = reader.Read(key, text);
        if (missing == nullptr && !own.try_emplace(CATUnicodeString(key), std::string_view(text)).second) {
            missing = "a key that the file does not have yet";
        }
        if (missing != nullptr) {
            if (++reports > MAX_REPORTS_PER_FILE) {
                Report(CATUnicodeString(path) + ": too many bad lines, the rest of the file is left out");
                break;
            }
            Report(CATUnicodeString(path + ":" + std::to_string(number) + ": expected " + missing));
        }
    }
    for (auto& [ownKey, ownText] : own) {
        messages.insert_or_assign(ownKey, std::move(ownText));
    }
}

bool IsFileName(const CATUnicodeString& name)
{
    return !name.IsEmpty() && name != ".." && name.View().find('/') == std::string_view::npos;
}

const Messages& GetMessages(const CATUnicodeString& catalog)
{
    Catalogs& catalogs = TheCatalogs();
    if (const auto found = catalogs.read.find(catalog); found != catalogs.read.end()) {
        return found->second;
    }
    Messages messages;
    if (IsFileName(catalog)) {
        const auto readFrom = [&](const std::string& subdirectory) {
            // The first directory wins, so it is read last.
            for (auto it = catalogs.directories.rbegin(); it != catalogs.directories.rend(); ++it) {
                ReadFile(std::string(it->View()) + subdirectory + "/" + std::string(catalog.View()) + ".CATNls",
                         messages);
            }
        };
        readFrom("");
        if (IsFileName(catalogs.language)) {
            readFrom("/" + std::string(catalogs.language.View()));
        }
    }
    return catalogs.read.emplace(catalog, std::move(messages)).first->second;
}

const CATUnicodeString* FindMessage(const CATUnicodeString& catalog, const CATUnicodeString& key)
{
    const Messages& messages = GetMessages(catalog);
    const auto found = messages.find(key);
    return found != messages.end() ? &found->second : nullptr;
}

// The message with /P1, /P2, ... replaced. What a parameter holds is not looked at; a number without parameter stays.
CATUnicodeString FillIn(std::string_view text, const std::vector<CATUnicodeString>& parameters)
{
    std::string filled;
    std::size_t position = 0;
    while (position < text.size()) {
        std::size_t end = position;
        if (text.substr(position, 2) == "/P") {
            end += 2;
        }
        std::size_t number = 0;
        while (end > position && end < text.size() && text[end] >= '0' && text[end] <= '9' &&
               number <= parameters.size()) {
            number = 10 * number + static_cast<std::size_t>(text[end] - '0');
            ++end;
        }
        if (number >= 1 && number <= parameters.size()) {
            filled += parameters[number - 1].View();
            position = end;
        } else {
            filled += text[position++];
        }
    }
    return CATUnicodeString::FromValidUtf8(filled);
}

} // namespace

CATUnicodeString CATMsgCatalog::BuildMessage(const CATUnicodeString& catalog, const CATUnicodeString& key,
                                             const std::vector<CATUnicodeString>& parameters)
{
    if (const CATUnicodeString* pText = FindMessage(catalog, key); pText != nullptr) {
        return FillIn(pText->View(), parameters);
    }
    CATUnicodeString text = key;
    for (const CATUnicodeString& parameter : parameters) {
        text += " [";
        text += parameter;
        text += "]";
    }
    return text;
}

bool CATMsgCatalog::MessageExists(const CATUnicodeString& catalog, const CATUnicodeString& key)
{
    return FindMessage(catalog, key) != nullptr;
}

void CATMsgCatalog::SetSearchPath(const std::vector<CATUnicodeString>& directories)
{
    TheCatalogs().directories = directories;
    TheCatalogs().read.clear();
    TheCatalogs().reports.clear();
}

void CATMsgCatalog::SetLanguage(const CATUnicodeString& language)
{
    TheCatalogs().language = language;
    TheCatalogs().read.clear();
}

const std::vector<CATUnicodeString>& CATMsgCatalog::GetReports()
{
    return TheCatalogs().reports;
}

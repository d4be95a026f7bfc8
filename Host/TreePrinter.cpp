#include "TreePrinter.h"

#include <algorithm>
#include <ostream>

#include <fmt/format.h>
#include <fmt/ostream.h>
#include <nlohmann/json.hpp>

#include "CATPathElementSet.h"
#include "CATUnicodeString.h"
#include "QTBIRepNode.h"

namespace {

using TreePrinter::Line;

// Trees are as deep as the data, so they are walked with a stack of their own and not by recursion.
class Collector
{
public:
    Collector(int maxLevel, const CATPathElementSet* pHighlighted) : m_MaxLevel(maxLevel), m_pHighlighted(pHighlighted)
    {
    }

    std::vector<Line> Collect(const CATListValCATBaseUnknown_var& roots)
    {
        PushChildren(roots, 0);
        while (!m_Open.empty()) {
            const Open open = m_Open.back();
            m_Open.pop_back();
            Visit(open);
        }
        return std::move(m_Lines);
    }

private:
    struct Open
    {
        QTBIRepNode_var spIRepNode;
        int level;
        bool isLast;
    };

    void PushChildren(const CATListValCATBaseUnknown_var& nodes, int level)
    {
        for (int i = nodes.Size(); i >= 1; --i) {
            m_Open.push_back({nodes[i], level, i == nodes.Size()});
        }
    }

    void Visit(const Open& open)
    {
        if (open.spIRepNode == NULL_var) {
            return;
        }
        if (m_MaxLevel >= 0 && open.level > m_MaxLevel) {
            ++m_Lines[m_LastShown].hiddenBelow;
        } else {
            m_LastShown = m_Lines.size();
            m_Lines.push_back(Describe(open));
        }
        CATListValCATBaseUnknown_var children;
        if (SUCCEEDED(open.spIRepNode->GetDirectChildren(&children))) {
            PushChildren(children, open.level + 1);
        }
    }

    Line Describe(const Open& open) const
    {
        CATUnicodeString usText;
        open.spIRepNode->GetDisplayString(&usText);
        CATUnicodeString usKey;
        open.spIRepNode->GetPdmNodeKey(&usKey);
        CATUnicodeString usClass;
        open.spIRepNode->GetPdmNodeClassName(&usClass);
        unsigned char bIsRelation = FALSE;
        open.spIRepNode->RepresentsPdmRelNode(&bIsRelation, nullptr);
        return {std::string(usText.View()),
                std::string(usClass.View()),
                std::string(usKey.View()),
                open.level,
                bIsRelation != FALSE,
                open.isLast,
                0,
                m_pHighlighted != nullptr && m_pHighlighted->ContainsObject(open.spIRepNode),
                open.spIRepNode};
    }

    const int m_MaxLevel;
    const CATPathElementSet* const m_pHighlighted;
    std::vector<Open> m_Open;
    std::vector<Line> m_Lines;
    std::size_t m_LastShown = 0;
};

std::size_t CountCharacters(std::string_view text)
{
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

// Levels below this one are not indented further: a line says its level instead.
constexpr int DEEPEST_INDENT = 60;

// The branches drawn in front of each line.
std::vector<std::string> DrawBranches(const std::vector<Line>& lines)
{
    std::vector<std::string> drawn;
    drawn.reserve(lines.size());
    std::string prefix;                   // what the ancestors draw, one piece a level
    std::vector<std::size_t> prefixSizes; // its length before each level
    for (const Line& line : lines) {
        if (line.level > DEEPEST_INDENT) {
            drawn.push_back(prefix + fmt::format("[{}] ", line.level));
            continue;
        }
        const auto level = static_cast<std::size_t>(line.level);
        if (level < prefixSizes.size()) {
            prefix.resize(prefixSizes[level]);
            prefixSizes.resize(level);
        }
        drawn.push_back(prefix + (level == 0 ? "" : line.isLast ? "└─ " : "├─ "));
        prefixSizes.push_back(prefix.size());
        prefix += level == 0 ? "" : line.isLast ? "   " : "│  ";
    }
    return drawn;
}

} // namespace

std::vector<Line> TreePrinter::Collect(const CATListValCATBaseUnknown_var& roots, int maxLevel,
                                       const CATPathElementSet* pHighlighted)
{
    return Collector(maxLevel, pHighlighted).Collect(roots);
}

void TreePrinter::PrintText(std::ostream& stream, const std::vector<Line>& lines)
{
    // Beyond this the class follows the text; a single long name does not push the column out of sight.
    constexpr std::size_t WIDEST_COLUMN = 96;
    const std::vector<std::string> branches = DrawBranches(lines);
    std::size_t width = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        width = std::max(width, std::min(WIDEST_COLUMN, CountCharacters(branches[i]) + CountCharacters(lines[i].text)));
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Line& line = lines[i];
        const std::size_t used = CountCharacters(branches[i]) + CountCharacters(line.text);
        fmt::print(stream, "{}{}", branches[i], line.text);
        if (!line.pdmClass.empty()) {
            fmt::print(stream, "{:{}}  {}", "", width > used ? width - used : 0, line.pdmClass);
        }
        if (line.hiddenBelow > 0) {
            fmt::print(stream, "  (+ {} below)", line.hiddenBelow);
        }
        stream << (line.isHighlighted ? "  <== highlighted\n" : "\n");
    }
}

void TreePrinter::PrintJson(std::ostream& stream, const std::vector<Line>& lines, int indent)
{
    const auto quoted = [](const std::string& text) { return nlohmann::json(text).dump(); };
    const auto margin = [&](int level) {
        return std::string(static_cast<std::size_t>(indent + 2 * std::min(level, DEEPEST_INDENT)), ' ');
    };

    stream << "[";
    int level = 0; // of the line before
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Line& line = lines[i];
        if (i > 0 && line.level <= level) {
            stream << "}";
            for (; level > line.level; --level) {
                stream << "]}";
            }
            stream << ",";
        } else if (i > 0) {
            stream << ", \"children\": [";
        }
        level = line.level;
        fmt::print(stream, "\n{}{{\"display\": {}, \"kind\": \"{}\", \"class\": {}, \"key\": {}", margin(level + 1),
                   quoted(line.text), line.isRelation ? "relation" : "object", quoted(line.pdmClass), quoted(line.key));
        if (line.hiddenBelow > 0) {
            fmt::print(stream, ", \"hiddenBelow\": {}", line.hiddenBelow);
        }
    }
    if (!lines.empty()) {
        stream << "}";
        for (; level > 0; --level) {
            stream << "]}";
        }
    }
    stream << "]";
}

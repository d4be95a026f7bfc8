#include "TreePrinter.h"

#include <algorithm>
#include <ostream>

#include <fmt/format.h>
#include <fmt/ostream.h>
#include <nlohmann/json.hpp>

#include "CATFrmEditor.h"
#include "CATFrmWindow.h"
#include "CATNavigBox.h"
#include "CATPathElementSet.h"
#include "CATUnicodeString.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"
#include "QTBInfoUtil.h"
#include "QTBRepTreeUtil.h"

namespace {

using TreePrinter::Line;

// What a rep node shows; one that lost its PDM node still has a text.
Line DescribeNode(const QTBIRepNode_var& spIRepNode, int level)
{
    CATUnicodeString usText;
    spIRepNode->GetDisplayString(&usText);
    CATUnicodeString usKey;
    spIRepNode->GetPdmNodeKey(&usKey);
    CATUnicodeString usClass;
    spIRepNode->GetPdmNodeClassName(&usClass);
    unsigned char bIsRelation = FALSE;
    spIRepNode->RepresentsPdmRelNode(&bIsRelation, nullptr);
    Line line{std::string(usText.View()),
              std::string(usClass.View()),
              std::string(usKey.View()),
              level,
              bIsRelation != FALSE,
              false,
              0};
    line.spNode = spIRepNode;
    return line;
}

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
        Line line = DescribeNode(open.spIRepNode, open.level);
        line.isLast = open.isLast;
        line.isHighlighted = m_pHighlighted != nullptr && m_pHighlighted->ContainsObject(open.spIRepNode);
        return line;
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

// Version of the PDM object behind a rep node and who has it checked out; nothing where the PDM system does not say.
void AddVersion(const QTBIRepNode_var& spIRepNode, Line* pLine)
{
    QTBIPdmNode_var spIPdmNode;
    if (pLine->isRelation || pLine->key.empty() || FAILED(spIRepNode->GetPdmNode(&spIPdmNode, FALSE, nullptr))) {
        return;
    }
    CATUnicodeString usText;
    if (SUCCEEDED(QTBInfoUtil::GetQtbVersion(spIPdmNode, &usText))) {
        pLine->version = usText.View();
    }
    unsigned char bIsAllowed = FALSE;
    if (SUCCEEDED(QTBInfoUtil::PdmObjectIsCheckOutAllowed(spIPdmNode, &bIsAllowed, &usText))) {
        pLine->checkedOutBy = usText.View();
    }
}

// A tree widget shows the same at every level; who stands last is seen from behind.
void MarkLastChildren(std::vector<Line>* pLines)
{
    std::vector<bool> hasBrotherBelow; // by level
    for (auto line = pLines->rbegin(); line != pLines->rend(); ++line) {
        const auto level = static_cast<std::size_t>(line->level);
        line->isLast = level >= hasBrotherBelow.size() || !hasBrotherBelow[level];
        hasBrotherBelow.resize(level + 1, false);
        hasBrotherBelow[level] = true;
    }
}

// Puts texts in colour with the control sequences of terminals.
class Paint
{
public:
    static constexpr const char* HIGHLIGHTED = "1;7";
    static constexpr const char* PRESELECTED = "4";
    static constexpr const char* ICON = "2";

    explicit Paint(bool isOn) : m_IsOn(isOn) {}

    static const char* GetStateColor(int stateCode)
    {
        switch (stateCode) {
        case 246:
            return "32";
        case 249:
            return "31";
        case 248:
            return "36";
        default:
            return "33";
        }
    }

    void Apply(const char* color, std::string* pText) const
    {
        if (m_IsOn && *color != '\0') {
            *pText = fmt::format("\033[{}m{}\033[0m", color, *pText);
        }
    }

private:
    bool m_IsOn;
};

} // namespace

std::vector<Line> TreePrinter::Collect(const CATListValCATBaseUnknown_var& roots, int maxLevel,
                                       const CATPathElementSet* pHighlighted)
{
    return Collector(maxLevel, pHighlighted).Collect(roots);
}

std::vector<Line> TreePrinter::CollectWindow(CATFrmWindow& window, int maxLevel, const CATBaseUnknown_var& spBranch)
{
    QTBIRepNodeCont_var spIRepNodeCont;
    CATNavigBox* pNavigBox = window.GetNavigBox();
    CATListValCATBaseUnknown_var nodes;
    if (pNavigBox == nullptr || FAILED(QTBRepTreeUtil::GetRepNodeContOfWindow(&window, &spIRepNodeCont)) ||
        FAILED(spIRepNodeCont->GetAllRepNodes(&nodes))) {
        return {};
    }
    for (const CATBaseUnknown_var& spNode : nodes) {
        pNavigBox->Expand(spNode);
    }
    const CATPathElementSet* pHighlighted = window.GetEditor()->GetHSO();
    const CATPathElementSet* pPreselected = window.GetEditor()->GetPSO();
    std::vector<Line> lines;
    // Level of the branch; -1 as long as it was not reached.
    int first = spBranch == NULL_var ? 0 : -1;
    for (const CATNavigLine& shown : pNavigBox->Display()) {
        if (first < 0 && shown.spObject == spBranch) {
            first = shown.level;
        } else if (first < 0) {
            continue;
        } else if (spBranch != NULL_var && shown.level <= first) {
            break;
        }
        if (maxLevel >= 0 && shown.level - first > maxLevel) {
            lines.back().hiddenBelow += 1;
            continue;
        }
        Line line = DescribeNode(shown.spObject, shown.level - first);
        line.text = shown.label.View();
        line.icon = shown.icon.View();
        line.stateCode = shown.stateCode;
        AddVersion(shown.spObject, &line);
        line.isHighlighted = pHighlighted->ContainsObject(shown.spObject);
        line.isPreselected = pPreselected->ContainsObject(shown.spObject);
        lines.push_back(std::move(line));
    }
    MarkLastChildren(&lines);
    return lines;
}

std::string TreePrinter::DescribeState(int stateCode)
{
    switch (stateCode) {
    case 0:
        return "";
    case 244:
        return "modified";
    case 246:
        return "editable";
    case 247:
        return "modified, read-only";
    case 248:
        return "no file";
    case 249:
        return "locked";
    default:
        return "unknown";
    }
}

void TreePrinter::PrintText(std::ostream& stream, const std::vector<Line>& lines, bool hasColors)
{
    // Beyond this the class follows the text; a single long name does not push the column out of sight.
    constexpr std::size_t WIDEST_COLUMN = 96;
    const std::vector<std::string> branches = DrawBranches(lines);
    std::size_t textWidth = 0;
    std::size_t classWidth = 0;
    std::size_t versionWidth = 0;
    std::size_t iconWidth = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        textWidth =
            std::max(textWidth, std::min(WIDEST_COLUMN, CountCharacters(branches[i]) + CountCharacters(lines[i].text)));
        classWidth = std::max(classWidth, CountCharacters(lines[i].pdmClass));
        versionWidth = std::max(versionWidth, CountCharacters(lines[i].version));
        iconWidth = std::max(iconWidth, CountCharacters(lines[i].icon));
    }
    const Paint paint(hasColors);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Line& line = lines[i];
        std::string text = line.text;
        paint.Apply(line.isHighlighted ? Paint::HIGHLIGHTED : line.isPreselected ? Paint::PRESELECTED : "", &text);
        // Columns that are empty to the end of the line are not filled up.
        std::string rest;
        std::size_t gap = textWidth - std::min(textWidth, CountCharacters(branches[i]) + CountCharacters(line.text));
        const auto addColumn = [&](const std::string& content, std::size_t width, const char* color) {
            if (!content.empty()) {
                rest += std::string(gap + 2, ' ');
                gap = width - std::min(width, CountCharacters(content));
                std::string painted = content;
                paint.Apply(color, &painted);
                rest += painted;
            } else if (width > 0) {
                gap += width + 2;
            }
        };
        addColumn(line.pdmClass, classWidth, "");
        addColumn(line.version, versionWidth, "");
        addColumn(line.icon, iconWidth, Paint::ICON);
        if (line.stateCode != 0) {
            addColumn(fmt::format("{} {}", line.stateCode, DescribeState(line.stateCode)), 0,
                      Paint::GetStateColor(line.stateCode));
        }
        fmt::print(stream, "{}{}{}", branches[i], text, rest);
        if (!line.checkedOutBy.empty()) {
            fmt::print(stream, "  checked out by {}", line.checkedOutBy);
        }
        if (line.hiddenBelow > 0) {
            fmt::print(stream, "  (+ {} below)", line.hiddenBelow);
        }
        stream << (line.isHighlighted ? "  <== highlighted" : "") << (line.isPreselected ? "  <== selected\n" : "\n");
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

#include "TreeCommand.h"

#include <iostream>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "ConsideringNodes.h"
#include "HostRelations.h"
#include "HostSession.h"
#include "HostText.h"
#include "Progress.h"
#include "QTBConstants.h"
#include "QTBDebugUtil.h"
#include "QTBGlobVarsUtil.h"
#include "QTBIPdmObjNode.h"
#include "QTBIRepNode.h"
#include "QTBNodeRelationInfo.h"
#include "TreePrinter.h"

using HostText::ToText;

namespace {

// Numbers of what the session holds and shows.
struct Counts
{
    int objects = 0;
    int relations = 0;
    int roots = 0;
    int shownObjects = 0;
    int shownRelations = 0;
};

NodesToRetrieve ParseConsider(const std::string& text)
{
    if (text == "recent") {
        return MOST_RECENTLY_UPDATED_NODES;
    }
    return text == "current" ? ONLY_CURRENT_NODES : ALL_NODES;
}

class TreeRun
{
public:
    explicit TreeRun(const TreeOptions& options) : m_Options(options), m_Session(options.schema, options.language) {}

    int Run()
    {
        const CATListValQTBNodeRelationInfo relations = HostRelations::GetToExpand(m_Options.relations);
        ReadAnswers();
        if (!m_Options.roots.empty()) {
            ReplaceRoots();
        }
        if (m_Options.roots.empty() && m_Session.GetRoots().Size() == 0 && Count().objects > 0) {
            Warn("No object is a root: each stands below another one. --root KEY shows one.");
        }
        Expand(relations);
        m_Progress.Clear();
        Print();
        return static_cast<int>(m_StoppedShort ? ExitCode::Failure : ExitCode::Success);
    }

private:
    void ReadAnswers()
    {
        int number = 0;
        for (const std::string& answer : m_Options.answers) {
            m_Progress.Show(fmt::format("reading answer {} of {}: {}", ++number, m_Options.answers.size(), answer));
            Warn(m_Session.ReadAnswerArgument(answer));
        }
    }

    void Warn(const std::string& text)
    {
        if (!text.empty()) {
            m_Messages.Append(QTBInfoListEntry{QTBInfoListEntry::Warning, CATUnicodeString(std::string_view(text))});
        }
    }

    // Empties the window and gives it the roots asked for.
    void ReplaceRoots()
    {
        CATListValCATBaseUnknown_var pdmObjects;
        for (const std::string& key : m_Options.roots) {
            QTBIPdmNode_var spIPdmNode;
            unsigned char bFound = FALSE;
            HostSession::Require(m_Session.GetPdmNodeCont()->GetPdmNodeByKey(key.c_str(), &spIPdmNode, &bFound),
                                 ExitCode::Failure, "PDM graph");
            if (bFound == FALSE) {
                throw HostError(ExitCode::Usage, fmt::format("--root {}: the answers have no item with that key", key));
            }
            if (QTBIPdmObjNode_var(spIPdmNode) == NULL_var) {
                throw HostError(ExitCode::Usage,
                                fmt::format("--root {}: that is the key of a relation, not of an object", key));
            }
            pdmObjects.Append(spIPdmNode);
        }
        HostSession::ReplaceRoots(m_Session.GetRepNodeCont(), pdmObjects, ParseConsider(m_Options.consider));
    }

    void Expand(const CATListValQTBNodeRelationInfo& relations)
    {
        const ConsideringNodes considering(m_Session.GetRepNodeCont(), ParseConsider(m_Options.consider));
        if (m_Options.level < 0) {
            ExpandNodes(m_Session.GetRoots(), relations, FALSE, nullptr);
            return;
        }
        CATListValCATBaseUnknown_var nodes = m_Session.GetRoots();
        for (int level = 0; level < m_Options.level && nodes.Size() > 0; ++level) {
            CATListValCATBaseUnknown_var children;
            ExpandNodes(nodes, relations, TRUE, &children);
            nodes = children;
        }
    }

    void ExpandNodes(const CATListValCATBaseUnknown_var& nodes, const CATListValQTBNodeRelationInfo& relations,
                     unsigned char bOneLevelOnly, CATListValCATBaseUnknown_var* pObjectsBelow)
    {
        unsigned char bTrue = TRUE;
        unsigned char bFalse = FALSE;
        for (int i = 1; i <= nodes.Size(); ++i) {
            m_Progress.Show(fmt::format("expanding node {} of {}", i, nodes.Size()));
            const QTBIRepNode_var spIRepNode(nodes[i]);
            unsigned char bIsDefaultNode = FALSE;
            if (FAILED(spIRepNode->IsRepDefaultNode(&bIsDefaultNode)) || bIsDefaultNode != FALSE) {
                continue;
            }
            const HRESULT hr = m_Session.GetRepNodeCont()->UpdateRepTree(spIRepNode, relations, &bOneLevelOnly, nullptr,
                                                                         pObjectsBelow, &bTrue, &bFalse, &bTrue);
            if (FAILED(hr)) {
                m_Progress.Clear();
                const std::string failure = HostSession::Describe(hr);
                std::cerr << "qtbhost: " << failure << '\n';
                // Beside a text it stands on the terminal; a program looks for it in the result.
                if (m_Options.asJson) {
                    m_Messages.Append(
                        QTBInfoListEntry{QTBInfoListEntry::Error, CATUnicodeString(std::string_view(failure))});
                }
                m_StoppedShort = true;
            }
        }
    }

    Counts Count() const
    {
        Counts counts;
        CATListValCATBaseUnknown_var nodes;
        HostSession::Require(m_Session.GetPdmNodeCont()->GetAllPdmNodes(&nodes), ExitCode::Failure, "PDM graph");
        for (const CATBaseUnknown_var& spNode : nodes) {
            ++(QTBIPdmObjNode_var(spNode) != NULL_var ? counts.objects : counts.relations);
        }
        counts.roots = m_Session.GetRoots().Size();
        HostSession::Require(m_Session.GetRepNodeCont()->GetAllRepNodes(&nodes), ExitCode::Failure, "window");
        for (const CATBaseUnknown_var& spNode : nodes) {
            unsigned char bIsRelation = FALSE;
            QTBIRepNode_var(spNode)->RepresentsPdmRelNode(&bIsRelation, nullptr);
            ++(bIsRelation != FALSE ? counts.shownRelations : counts.shownObjects);
        }
        return counts;
    }

    void Print() const
    {
        const std::vector<TreePrinter::Line> lines = TreePrinter::Collect(m_Session.GetRoots(), m_Options.showLevel);
        const Counts counts = Count();
        CATListValQTBInfoListEntry messages = m_Messages;
        CATListValQTBInfoListEntry entries;
        QTBGlobVarsUtil::GetInfoListEntries(&entries);
        messages.Append(entries);
        m_Options.asJson ? PrintJson(lines, counts, messages) : PrintText(lines, counts, messages);
    }

    static void PrintText(const std::vector<TreePrinter::Line>& lines, const Counts& counts,
                          const CATListValQTBInfoListEntry& messages)
    {
        TreePrinter::PrintText(std::cout, lines);
        std::cout << fmt::format("\nPDM graph: {} objects, {} relations\n", counts.objects, counts.relations)
                  << fmt::format("Window: {} root{}, {} objects and {} relations shown\n", counts.roots,
                                 counts.roots == 1 ? "" : "s", counts.shownObjects, counts.shownRelations);
        if (messages.Size() > 0) {
            std::cout << "\nMessages:\n";
            for (const QTBInfoListEntry& message : messages) {
                std::cout << fmt::format("  {}: {}\n", ToText(message.kind), message.text.View());
            }
        }
    }

    static void PrintJson(const std::vector<TreePrinter::Line>& lines, const Counts& counts,
                          const CATListValQTBInfoListEntry& messages)
    {
        const nlohmann::ordered_json jsonCounts = {{"pdmObjects", counts.objects},
                                                   {"pdmRelations", counts.relations},
                                                   {"roots", counts.roots},
                                                   {"shownObjects", counts.shownObjects},
                                                   {"shownRelations", counts.shownRelations}};
        nlohmann::ordered_json jsonMessages = nlohmann::ordered_json::array();
        for (const QTBInfoListEntry& message : messages) {
            jsonMessages.push_back({{"kind", ToText(message.kind)}, {"text", ToText(message.text)}});
        }
        // The trees are written node by node: a document of them would be as deep as the data.
        std::cout << "{\n  \"trees\": ";
        TreePrinter::PrintJson(std::cout, lines, 2);
        std::cout << ",\n  \"counts\": " << jsonCounts.dump() << ",\n  \"messages\": " << jsonMessages.dump()
                  << "\n}\n";
    }

    const TreeOptions& m_Options;
    HostSession m_Session;
    Progress m_Progress;
    CATListValQTBInfoListEntry m_Messages;
    bool m_StoppedShort = false;
};

} // namespace

int RunTree(const TreeOptions& options)
{
    QTBDebugUtil::s_bGlobalDebugStatus = options.debug ? TRUE : FALSE;
    QTBDebugUtil::s_GlobalTraceLevel = options.traceLevel;
    return TreeRun(options).Run();
}

#include "LinkCommand.h"

#include <algorithm>
#include <iostream>

#include <fmt/format.h>
#include <fmt/ostream.h>
#include <nlohmann/json.hpp>

#include "CATFrmEditor.h"
#include "CATFrmWindow.h"
#include "HostSession.h"
#include "HostText.h"
#include "ProductLinks.h"
#include "ProductTree.h"
#include "Progress.h"
#include "QTBDebugUtil.h"
#include "QTBILinkToPsn.h"
#include "QTBILinkToQtb.h"
#include "QTBIPdmNode.h"
#include "QTBIRepNode.h"
#include "QTBPsnTreeUtil.h"
#include "QTBRepTreeUtil.h"
#include "TreePrinter.h"

using HostText::ToText;

namespace {

class LinkRun
{
public:
    explicit LinkRun(const LinkOptions& options) : m_Options(options), m_Session(options.schema, options.language) {}

    int Run()
    {
        for (const std::string& answer : m_Options.answers) {
            m_Progress.Show("reading " + answer);
            if (const std::string leftOut = m_Session.ReadAnswerArgument(answer); !leftOut.empty()) {
                m_Warnings.push_back(leftOut);
            }
        }
        m_Progress.Show("expanding the PDM window");
        m_Session.ExpandEverything();
        m_Progress.Show("opening " + m_Options.assembly);
        m_Documents = m_Session.OpenAssembly(m_Options.assembly);
        m_Places = ProductTree::Collect(m_Documents);
        for (const ProductTree::Place& place : m_Places) {
            m_Correspondences.push_back(ProductLinks::Find(m_Places, place));
        }
        FindMissingProducts();
        HighlightInPdmWindow();
        HighlightInAssembly();
        m_Progress.Clear();
        m_Options.asJson ? PrintJson() : PrintText();
        return static_cast<int>(ExitCode::Success);
    }

private:
    // The relations shown in the PDM window that no product corresponds to.
    void FindMissingProducts()
    {
        CATListValCATBaseUnknown_var nodes;
        HostSession::Require(m_Session.GetRepNodeCont()->GetAllRepNodes(&nodes), ExitCode::Failure, "PDM window");
        for (const CATBaseUnknown_var& spNode : nodes) {
            const QTBIRepNode_var spIRepNode(spNode);
            unsigned char bIsPartToPart = FALSE;
            unsigned char bExists = FALSE;
            if (FAILED(QTBRepTreeUtil::RepresentsPdmPartPartRelationNode(spIRepNode, &bIsPartToPart)) ||
                bIsPartToPart == FALSE) {
                continue;
            }
            ++m_ShownRelations;
            if (SUCCEEDED(QTBILinkToPsn_var(spNode)->CorrespondingPsnNodeExists(&bExists, nullptr)) &&
                bExists == FALSE) {
                CATUnicodeString usKey;
                spIRepNode->GetPdmNodeKey(&usKey);
                CATUnicodeString usText;
                spIRepNode->GetDisplayString(&usText);
                m_OnlyInPdm.push_back({ToText(usKey), ToText(usText)});
            }
        }
        std::sort(m_OnlyInPdm.begin(), m_OnlyInPdm.end());
    }

    void HighlightInPdmWindow()
    {
        if (m_Options.highlight.empty()) {
            return;
        }
        const std::string path = m_Options.highlight == "/" ? "" : m_Options.highlight;
        const auto found = std::find_if(m_Places.begin(), m_Places.end(),
                                        [&](const ProductTree::Place& place) { return place.path == path; });
        if (found == m_Places.end()) {
            throw HostError(ExitCode::Usage, fmt::format("--highlight {}: the assembly has no such product", path));
        }
        HostSession::Require(QTBILinkToQtb_var(found->spIProduct)->HighlightProdStrucNode(TRUE, TRUE, &m_pPdmWindow),
                             ExitCode::Failure, "--highlight " + m_Options.highlight);
    }

    void HighlightInAssembly()
    {
        if (m_Options.highlightPdm.empty()) {
            return;
        }
        QTBIPdmNode_var spIPdmNode;
        unsigned char bFound = FALSE;
        HostSession::Require(
            m_Session.GetPdmNodeCont()->GetPdmNodeByKey(m_Options.highlightPdm.c_str(), &spIPdmNode, &bFound),
            ExitCode::Failure, "PDM graph");
        if (bFound == FALSE) {
            throw HostError(ExitCode::Usage, fmt::format("--highlight-pdm {}: the answers have no item with that key",
                                                         m_Options.highlightPdm));
        }
        CATListValCATBaseUnknown_var repNodes;
        HostSession::Require(spIPdmNode->GetRepNodes(&repNodes, m_Session.GetRepNodeCont()), ExitCode::Failure,
                             "PDM window");
        unsigned char bEmptyFirst = TRUE;
        for (const CATBaseUnknown_var& spRepNode : repNodes) {
            const QTBILinkToPsn_var spILinkToPsn(spRepNode);
            unsigned char bExists = FALSE;
            if (FAILED(spILinkToPsn->CorrespondingPsnNodesExist(&bExists, nullptr, nullptr)) || bExists == FALSE) {
                continue;
            }
            CATFrmWindow* pWindow = nullptr;
            HostSession::Require(spILinkToPsn->HighlightPsnNodes(bEmptyFirst, TRUE, &pWindow), ExitCode::Failure,
                                 "--highlight-pdm " + m_Options.highlightPdm);
            bEmptyFirst = FALSE;
        }
        if (bEmptyFirst != FALSE) {
            throw HostError(ExitCode::Failure, fmt::format("--highlight-pdm {}: no product of the assembly corresponds",
                                                           m_Options.highlightPdm));
        }
    }

    bool IsHighlighted(const ProductTree::Place& place) const
    {
        CATFrmEditor* pEditor = nullptr;
        return SUCCEEDED(QTBPsnTreeUtil::GetFrmEditorPtrFromPsnNode(place.spIProduct, &pEditor)) &&
               pEditor != nullptr && pEditor->GetHSO()->ContainsObject(place.spIProduct);
    }

    int Count(const char* reason) const
    {
        return static_cast<int>(
            std::count_if(m_Correspondences.begin(), m_Correspondences.end(),
                          [&](const ProductLinks::Correspondence& found) { return found.reason == reason; }));
    }

    int CountFiles() const
    {
        return static_cast<int>(
            std::count_if(m_Correspondences.begin(), m_Correspondences.end(),
                          [](const ProductLinks::Correspondence& found) { return !found.file.empty(); }));
    }

    // The tree of the PDM window in which a product was highlighted; empty when none was.
    std::vector<TreePrinter::Line> CollectPdmTree() const
    {
        return m_pPdmWindow == nullptr
                   ? std::vector<TreePrinter::Line>()
                   : TreePrinter::Collect(m_Session.GetRoots(), -1, m_pPdmWindow->GetEditor()->GetHSO());
    }

    void PrintText() const
    {
        std::vector<TreePrinter::Line> lines;
        for (std::size_t i = 0; i < m_Places.size(); ++i) {
            const ProductTree::Place& place = m_Places[i];
            lines.push_back({ProductTree::GetLabel(place.spIProduct), ProductLinks::Describe(m_Correspondences[i]),
                             place.path, place.level, false, place.isLast, 0, IsHighlighted(place)});
        }
        std::cout << "Assembly and what corresponds to it in the PDM system:\n\n";
        TreePrinter::PrintText(std::cout, lines);
        if (m_pPdmWindow != nullptr) {
            std::cout << "\nPDM window:\n\n";
            TreePrinter::PrintText(std::cout, CollectPdmTree());
        }
        fmt::print(std::cout,
                   "\n{} products: {} linked by instance, {} by part number, {} not in PDM, {} broken links; {} have a "
                   "file\n",
                   m_Places.size(), Count(ProductLinks::BY_INSTANCE), Count(ProductLinks::BY_PART_NUMBER),
                   Count(ProductLinks::NOT_IN_PDM), Count(ProductLinks::BROKEN_LINK), CountFiles());
        fmt::print(std::cout, "{} part-to-part relations shown, {} of them without a product in the assembly\n",
                   m_ShownRelations, m_OnlyInPdm.size());
        // Sorted, so that the places of one relation stand together.
        for (auto first = m_OnlyInPdm.begin(); first != m_OnlyInPdm.end();) {
            const auto last = std::upper_bound(first, m_OnlyInPdm.end(), *first);
            const auto places = last - first;
            fmt::print(std::cout, "  only in PDM: {}  {}{}\n", first->first, first->second,
                       places > 1 ? fmt::format(", {} places", places) : "");
            first = last;
        }
        if (!m_Warnings.empty()) {
            std::cout << "\nMessages:\n";
            for (const std::string& warning : m_Warnings) {
                fmt::print(std::cout, "  warning: {}\n", warning);
            }
        }
    }

    void PrintJson() const
    {
        nlohmann::ordered_json products = nlohmann::ordered_json::array();
        for (std::size_t i = 0; i < m_Places.size(); ++i) {
            const ProductTree::Place& place = m_Places[i];
            const ProductLinks::Correspondence& found = m_Correspondences[i];
            products.push_back({{"path", place.path},
                                {"partNumber", ToText(place.spIProduct->GetPartNumber())},
                                {"reason", found.reason},
                                {"relation", found.relation},
                                {"part", found.part},
                                {"file", found.file},
                                {"note", found.note},
                                {"highlighted", IsHighlighted(place)}});
        }
        nlohmann::ordered_json onlyInPdm = nlohmann::ordered_json::array();
        for (const auto& [key, text] : m_OnlyInPdm) {
            onlyInPdm.push_back({{"key", key}, {"display", text}});
        }
        // An item may stand at several places; what it stands below says at which.
        nlohmann::ordered_json highlightedInPdm = nlohmann::ordered_json::array();
        std::vector<std::string> keysAbove;
        for (const TreePrinter::Line& line : CollectPdmTree()) {
            keysAbove.resize(static_cast<std::size_t>(line.level));
            if (line.isHighlighted) {
                highlightedInPdm.push_back({{"key", line.key},
                                            {"class", line.pdmClass},
                                            {"display", line.text},
                                            {"below", keysAbove.empty() ? "" : keysAbove.back()}});
            }
            keysAbove.push_back(line.key);
        }
        nlohmann::ordered_json messages = nlohmann::ordered_json::array();
        for (const std::string& warning : m_Warnings) {
            messages.push_back({{"kind", "warning"}, {"text", warning}});
        }
        const nlohmann::ordered_json result = {{"products", products},
                                               {"highlightedInPdm", highlightedInPdm},
                                               {"onlyInPdm", onlyInPdm},
                                               {"counts",
                                                {{"products", m_Places.size()},
                                                 {"byInstance", Count(ProductLinks::BY_INSTANCE)},
                                                 {"byPartNumber", Count(ProductLinks::BY_PART_NUMBER)},
                                                 {"notInPdm", Count(ProductLinks::NOT_IN_PDM)},
                                                 {"brokenLinks", Count(ProductLinks::BROKEN_LINK)},
                                                 {"withFile", CountFiles()},
                                                 {"relationsShown", m_ShownRelations}}},
                                               {"messages", messages}};
        std::cout << result.dump(2) << '\n';
    }

    const LinkOptions& m_Options;
    HostSession m_Session;
    Progress m_Progress;
    CATListValCATBaseUnknown_var m_Documents;
    std::vector<ProductTree::Place> m_Places;
    std::vector<ProductLinks::Correspondence> m_Correspondences;
    std::vector<std::pair<std::string, std::string>> m_OnlyInPdm;
    std::vector<std::string> m_Warnings;
    int m_ShownRelations = 0;
    CATFrmWindow* m_pPdmWindow = nullptr;
};

} // namespace

int RunLink(const LinkOptions& options)
{
    QTBDebugUtil::s_bGlobalDebugStatus = options.debug ? TRUE : FALSE;
    return LinkRun(options).Run();
}

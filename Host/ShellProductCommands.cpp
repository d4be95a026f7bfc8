#include "ShellProductCommands.h"

#include <algorithm>
#include <map>
#include <ostream>

#include <fmt/format.h>
#include <fmt/ostream.h>

#include "CATDocument.h"
#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATProductServices.h"
#include "ProductLinks.h"
#include "ProductTree.h"
#include "QTBILinkToPsn.h"
#include "QTBILinkToQtb.h"
#include "TreePrinter.h"

ShellGroup ShellProductCommands::GetProductGroup()
{
    return {"Products",
            {
                {"assembly", "FILE [boxes]",
                 "open a CAD assembly, with the boxes of a STEP file's shapes, which take longer", 1, 2,
                 ShellRun(this, &ShellProductCommands::Open)},
                {"products", "", "print the products of the open assemblies", 0, 0,
                 ShellRun(this, &ShellProductCommands::Print)},
                {"links", "[LEVELS]", "print what corresponds to the products in the PDM system, and why", 0, 1,
                 ShellRun(this, &ShellProductCommands::PrintLinks)},
                {"show", "PATH|NODE", "show a product in the PDM window, or a node in the assembly", 1, 1,
                 ShellRun(this, &ShellProductCommands::Show)},
            }};
}

void ShellProductCommands::Open(const ShellArguments& arguments)
{
    if (arguments.size() > 1 && arguments[1] != "boxes") {
        throw HostError(ExitCode::Usage, "usage: assembly FILE [boxes]");
    }
    const CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    CATFrmWindow* pWindow = pLayout->GetCurrentWindow();
    // One that was closed and that others kept in session comes again.
    for (const CATBaseUnknown_var& spDocument : m_Context.session.OpenAssembly(arguments[0], arguments.size() > 1)) {
        if (m_Context.assemblies.Locate(spDocument) == 0) {
            m_Context.assemblies.Append(spDocument);
        }
    }
    // The PDM window stays in front.
    if (pWindow != nullptr) {
        CATFrmLayout::GetCurrentLayout()->SetCurrentWindow(pWindow);
    }
}

void ShellProductCommands::Print(const ShellArguments&)
{
    std::vector<TreePrinter::Line> lines;
    for (const ProductTree::Place& place : ProductTree::Collect(m_Context.assemblies)) {
        CATDocument* pDocument = nullptr;
        const bool hasDocument = SUCCEEDED(CATProductServices::GetTreeDocument(place.spIProduct, &pDocument));
        bool isHighlighted = false;
        for (CATFrmEditor* pEditor : CATFrmLayout::GetCurrentLayout()->GetEditorList()) {
            isHighlighted = isHighlighted || (hasDocument && pEditor->GetDocument() == pDocument &&
                                              pEditor->GetHSO()->ContainsObject(place.spIProduct));
        }
        lines.push_back({ProductTree::GetLabel(place.spIProduct), place.path, "", place.level, false, place.isLast, 0,
                         isHighlighted, place.spIProduct});
    }
    TreePrinter::PrintText(m_Context.out, lines, m_Context.hasColors);
    if (lines.empty()) {
        m_Context.out << "0 products\n";
    }
}

void ShellProductCommands::PrintLinks(const ShellArguments& arguments)
{
    const int levels = arguments.empty() ? -1 : ShellContext::ToLevels(arguments[0]);
    const std::vector<ProductTree::Place> places = ProductTree::Collect(m_Context.assemblies);
    std::vector<TreePrinter::Line> lines;
    std::map<std::string, int> counts;
    for (const ProductTree::Place& place : places) {
        const ProductLinks::Correspondence found = ProductLinks::Find(places, place);
        ++counts[found.reason];
        if (levels >= 0 && place.level > levels) {
            ++lines.back().hiddenBelow;
            continue;
        }
        lines.push_back({ProductTree::GetLabel(place.spIProduct), ProductLinks::Describe(found), place.path,
                         place.level, false, place.isLast, 0});
    }
    TreePrinter::PrintText(m_Context.out, lines, m_Context.hasColors);
    std::string summary;
    for (const auto& [reason, count] : counts) {
        summary += fmt::format(", {} {}", count, reason);
    }
    fmt::print(m_Context.out, "{} products{}\n", places.size(), summary);
}

void ShellProductCommands::Show(const ShellArguments& arguments)
{
    const std::vector<ProductTree::Place> places = ProductTree::Collect(m_Context.assemblies);
    const auto found = std::find_if(places.begin(), places.end(), [&](const ProductTree::Place& place) {
        return place.path == arguments[0] || (place.level == 0 && arguments[0] == "/");
    });
    CATFrmWindow* pWindow = nullptr;
    if (found != places.end()) {
        const QTBILinkToQtb_var spILinkToQtb(found->spIProduct);
        if (spILinkToQtb == NULL_var || FAILED(spILinkToQtb->HighlightProdStrucNode(TRUE, TRUE, &pWindow))) {
            throw HostError(ExitCode::Failure, "no PDM window shows what corresponds to " + arguments[0]);
        }
        return;
    }
    CATFrmWindow* pPdmWindow = m_Context.GetWindow();
    const QTBILinkToPsn_var spILinkToPsn(m_Context.GetNode(arguments[0]));
    if (spILinkToPsn == NULL_var || FAILED(spILinkToPsn->HighlightPsnNodes(TRUE, FALSE, &pWindow))) {
        throw HostError(ExitCode::Failure, "no product of an open assembly corresponds to " + arguments[0]);
    }
    CATFrmLayout::GetCurrentLayout()->SetCurrentWindow(pPdmWindow);
}

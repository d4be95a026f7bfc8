#include "ShellTreeCommands.h"

#include <ostream>

#include <fmt/format.h>
#include <fmt/ostream.h>

#include "CATCmdStarter.h"
#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATIGraphNode.h"
#include "CATNavigBox.h"
#include "ConsideringNodes.h"
#include "HostRelations.h"
#include "QTBGlobVarsUtil.h"
#include "QTBINodeAttributes.h"
#include "QTBIRepNodeCont.h"
#include "QTBNodeAttr.h"
#include "QTBNodeRelationInfo.h"
#include "QTBRequestCommands.h"
#include "ShellItemDialog.h"
#include "TreePrinter.h"

ShellGroup ShellTreeCommands::GetTreeGroup()
{
    return {"Tree",
            {
                {"tree", "[LEVELS|all [NODE]]",
                 "print the current window's tree, or what is below a node, with icons and states", 0, 2,
                 ShellRun(this, &ShellTreeCommands::Print)},
                {"expand", "NODE [RELATION[:left]...]", "expand a node one level, along all relations if none is named",
                 1, MAX_ARGUMENTS, ShellRun(this, &ShellTreeCommands::Expand)},
                {"expandall", "NODE [RELATION[:left]...]", "expand a node all the way down", 1, MAX_ARGUMENTS,
                 ShellRun(this, &ShellTreeCommands::ExpandAll)},
                {"fold", "NODE", "fold a node's branch", 1, 1, ShellRun(this, &ShellTreeCommands::Fold)},
                {"highlight", "NODE", "highlight a node in its window, for a relation its object", 1, 1,
                 ShellRun(this, &ShellTreeCommands::Highlight)},
                {"select", "NODE...", "preselect nodes in their window", 1, MAX_ARGUMENTS,
                 ShellRun(this, &ShellTreeCommands::Select)},
                {"properties", "NODE", "print the attributes of a node's PDM item", 1, 1,
                 ShellRun(this, &ShellTreeCommands::PrintProperties)},
                {"state", "NODE", "print how a node is shown: icon, state and tooltip", 1, 1,
                 ShellRun(this, &ShellTreeCommands::PrintState)},
                {"consider", "all|recent|current", "which PDM nodes expanding shows", 1, 1,
                 ShellRun(this, &ShellTreeCommands::Consider)},
                {"relations", "on|off", "whether trees show relations as nodes of their own", 1, 1,
                 ShellRun(this, &ShellTreeCommands::ShowRelations)},
            }};
}

ShellGroup ShellTreeCommands::GetMenuGroup()
{
    return {"Context menus",
            {
                {"menu", "NODE", "print a node's context menu, its items numbered", 1, 1,
                 ShellRun(this, &ShellTreeCommands::OpenMenu)},
                {"pick", "ITEM [NAME=VALUE...]", "start an item of the open menu, with what its dialog asks for", 1,
                 MAX_ARGUMENTS, ShellRun(this, &ShellTreeCommands::Pick)},
                {"do", "NODE ITEM [NAME=VALUE...]", "open a node's menu and start an item", 2, MAX_ARGUMENTS,
                 ShellRun(this, &ShellTreeCommands::Do)},
            }};
}

void ShellTreeCommands::Print(const ShellArguments& arguments)
{
    m_Context.GetContainer();
    const int levels = arguments.empty() || arguments[0] == "all" ? -1 : ShellContext::ToLevels(arguments[0]);
    const QTBIRepNode_var spIBranch = arguments.size() > 1 ? m_Context.GetNode(arguments[1]) : QTBIRepNode_var();
    std::vector<TreePrinter::Line> lines = TreePrinter::CollectWindow(*m_Context.GetWindow(), levels, spIBranch);
    if (lines.empty() && spIBranch != NULL_var) {
        throw HostError(ExitCode::Failure, arguments[1] + " is not shown in the current window");
    }
    m_Context.treeNodes.clear();
    for (TreePrinter::Line& line : lines) {
        m_Context.treeNodes.push_back(line.spNode);
        line.text = fmt::format("[{}] {}", m_Context.treeNodes.size(), line.text);
    }
    TreePrinter::PrintText(m_Context.out, lines, m_Context.hasColors);
}

void ShellTreeCommands::ExpandNode(const ShellArguments& arguments, unsigned char bOneLevelOnly)
{
    const QTBIRepNode_var spIRepNode = m_Context.GetNode(arguments[0]);
    const CATListValQTBNodeRelationInfo relations =
        HostRelations::GetToExpand(ShellArguments(arguments.begin() + 1, arguments.end()));
    QTBIRepNodeCont_var spIRepNodeCont;
    HostSession::Require(spIRepNode->GetRepNodeContainer(&spIRepNodeCont), ExitCode::Failure, "window");
    CATUnicodeString usKey;
    HostSession::Require(spIRepNode->GetPdmNodeKey(&usKey), ExitCode::Failure, arguments[0] + " lost its PDM item");
    CATListValCATUnicodeString Keys;
    Keys.Append(usKey);
    HostSession::Require(QTBRequestCommands::Fetch(Keys, relations, bOneLevelOnly != FALSE ? 1 : -1), ExitCode::Failure,
                         arguments[0]);
    unsigned char bTrue = TRUE;
    unsigned char bFalse = FALSE;
    const ConsideringNodes considering(spIRepNodeCont, m_Consider);
    HostSession::Require(
        spIRepNodeCont->UpdateRepTree(spIRepNode, relations, &bOneLevelOnly, nullptr, nullptr, &bTrue, &bTrue, &bFalse),
        ExitCode::Failure, arguments[0]);
}

void ShellTreeCommands::Expand(const ShellArguments& arguments)
{
    ExpandNode(arguments, TRUE);
}

void ShellTreeCommands::ExpandAll(const ShellArguments& arguments)
{
    ExpandNode(arguments, FALSE);
}

void ShellTreeCommands::Fold(const ShellArguments& arguments)
{
    QTBIRepNode_var spIRepNode = m_Context.GetNode(arguments[0]);
    QTBIRepNodeCont_var spIRepNodeCont;
    HostSession::Require(spIRepNode->GetRepNodeContainer(&spIRepNodeCont), ExitCode::Failure, "window");
    // Its node may be among those that go.
    m_Context.menu.Close();
    HostSession::Require(spIRepNodeCont->DeExpand(&spIRepNode), ExitCode::Failure, arguments[0]);
    // The box asks anew what it shows.
    unsigned char bFalse = FALSE;
    HostSession::Require(spIRepNodeCont->UpdateQtbWindow(&bFalse, &bFalse), ExitCode::Failure, "window");
}

void ShellTreeCommands::Highlight(const ShellArguments& arguments)
{
    unsigned char bTrue = TRUE;
    HostSession::Require(m_Context.GetNode(arguments[0])->Highlight(&bTrue, &bTrue), ExitCode::Failure, arguments[0]);
}

void ShellTreeCommands::Select(const ShellArguments& arguments)
{
    unsigned char bEmptyFirst = TRUE;
    for (const std::string& name : arguments) {
        HostSession::Require(m_Context.GetNode(name)->Preselect(&bEmptyFirst), ExitCode::Failure, name);
        bEmptyFirst = FALSE;
    }
    fmt::print(m_Context.out, "{} preselected\n", m_Context.GetWindow()->GetEditor()->GetPSO()->GetSize());
}

void ShellTreeCommands::PrintProperties(const ShellArguments& arguments)
{
    const QTBINodeAttributes_var spINodeAttributes(m_Context.GetPdmNode(arguments[0]));
    CATListValCATUnicodeString names;
    spINodeAttributes->GetAllAttributeNames(&names);
    for (const CATUnicodeString& usName : names) {
        QTBNodeAttr* pNodeAttr = nullptr;
        if (SUCCEEDED(spINodeAttributes->GetAttribute(usName, &pNodeAttr))) {
            fmt::print(m_Context.out, "{:<24} {}\n", usName.View(), pNodeAttr->ToString().View());
        }
    }
}

void ShellTreeCommands::PrintState(const ShellArguments& arguments)
{
    const QTBIRepNode_var spIRepNode = m_Context.GetNode(arguments[0]);
    CATFrmWindow* pWindow = nullptr;
    HostSession::Require(spIRepNode->GetFrmWindowPtr(&pWindow), ExitCode::Failure, arguments[0]);
    for (const TreePrinter::Line& line : TreePrinter::CollectWindow(*pWindow, -1)) {
        if (line.spNode == spIRepNode) {
            const CATIGraphNode_var spIGraphNode(pWindow->GetNavigBox()->GetNode(spIRepNode));
            fmt::print(m_Context.out, "{:<12}{}\n{:<12}{}\n{:<12}{}\n{:<12}{}\n{:<12}icon {}, label {}\n", "label",
                       line.text, "icon", line.icon.empty() ? "the tree's own" : line.icon, "state",
                       line.stateCode != 0
                           ? fmt::format("{} {}", line.stateCode, TreePrinter::DescribeState(line.stateCode))
                           : "not marked",
                       "tooltip", pWindow->GetNavigBox()->GetShortHelp(spIRepNode).View(), "marking",
                       spIGraphNode->IconIsMarked() != FALSE ? "on" : "off",
                       spIGraphNode->LabelIsMarked() != FALSE ? "on" : "off");
            return;
        }
    }
    throw HostError(ExitCode::Failure, arguments[0] + " is not shown");
}

void ShellTreeCommands::Consider(const ShellArguments& arguments)
{
    if (arguments[0] == "all") {
        m_Consider = ALL_NODES;
    } else if (arguments[0] == "recent") {
        m_Consider = MOST_RECENTLY_UPDATED_NODES;
    } else if (arguments[0] == "current") {
        m_Consider = ONLY_CURRENT_NODES;
    } else {
        throw HostError(ExitCode::Usage, "usage: consider all|recent|current");
    }
}

void ShellTreeCommands::ShowRelations(const ShellArguments& arguments)
{
    if (arguments[0] != "on" && arguments[0] != "off") {
        throw HostError(ExitCode::Usage, "usage: relations on|off");
    }
    QTBGlobVarsUtil::SetShowRelations(arguments[0] == "on" ? TRUE : FALSE);
    for (CATFrmWindow* pWindow : CATFrmLayout::GetCurrentLayout()->GetWindowList()) {
        if (CATNavigBox* pNavigBox = pWindow->GetNavigBox(); pNavigBox != nullptr) {
            pNavigBox->RedrawAll();
        }
    }
}

void ShellTreeCommands::OpenMenu(const ShellArguments& arguments)
{
    m_Context.menu.Open(m_Context.GetNode(arguments[0]));
    m_Context.menu.Print(m_Context.out);
}

void ShellTreeCommands::Pick(const ShellArguments& arguments)
{
    StartItem(arguments[0], ShellArguments(arguments.begin() + 1, arguments.end()));
}

void ShellTreeCommands::Do(const ShellArguments& arguments)
{
    m_Context.menu.Open(m_Context.GetNode(arguments[0]));
    StartItem(arguments[1], ShellArguments(arguments.begin() + 2, arguments.end()));
}

void ShellTreeCommands::StartItem(const std::string& name, const ShellArguments& values)
{
    const CATCmdAccess* pItem = m_Context.menu.FindItem(name);
    if (pItem == nullptr) {
        throw HostError(ExitCode::Usage, "the open menu has no item " + name);
    }
    const auto* pStarter = dynamic_cast<const CATCmdStarter*>(pItem);
    if (pStarter == nullptr) {
        throw HostError(ExitCode::Usage, "item " + name + " opens a menu and starts nothing");
    }
    const std::string title(pStarter->GetTitle().View());
    // The command may close the menu.
    const CATBaseUnknown_var spObject = m_Context.menu.GetObject();
    if (const QTBIRepNode_var spIRepNode(spObject); spIRepNode != NULL_var && !ShellContext::IsInTree(spIRepNode)) {
        throw HostError(ExitCode::Failure, "the node of this menu has left the tree");
    }
    ShellItemDialog dialog(m_Context, values);
    HostSession::Require(pStarter->Start(spObject), ExitCode::Failure, title);
    dialog.RequireAllUsed(title);
    if (!dialog.IsGivenUp()) {
        fmt::print(m_Context.out, "{}: done\n", title);
    }
}

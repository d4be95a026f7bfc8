#include "Shell.h"

#include <algorithm>
#include <charconv>
#include <exception>
#include <istream>
#include <ostream>

#include <fmt/format.h>
#include <fmt/ostream.h>

#include "CATApplicationFrame.h"
#include "CATCmdContainer.h"
#include "CATCmdSeparator.h"
#include "CATCmdStarter.h"
#include "CATDlgNotice.h"
#include "CATDocument.h"
#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATIContextualMenu.h"
#include "CATProductServices.h"
#include "ProductTree.h"
#include "QTBConstants.h"
#include "QTBDocUtil.h"
#include "QTBGlobVarsUtil.h"
#include "QTBILinkToPsn.h"
#include "QTBILinkToQtb.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmObjNode.h"
#include "QTBNodeAttr.h"
#include "QTBRepTreeUtil.h"
#include "QTBSchema.h"
#include "QTBSchemaRelation.h"
#include "QTBSchemaUtil.h"
#include "TreePrinter.h"

namespace {

// Words of a line; double quotes keep blanks together.
std::vector<std::string> Split(const std::string& line)
{
    std::vector<std::string> words;
    std::string word;
    bool isInQuotes = false;
    bool hasWord = false;
    for (const char c : line) {
        if (c == '"') {
            isInQuotes = !isInQuotes;
            hasWord = true;
        } else if (!isInQuotes && (c == ' ' || c == '\t')) {
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
    if (hasWord) {
        words.push_back(word);
    }
    return words;
}

// The number that a text is, 0 for any other text.
std::size_t ToNumber(const std::string& text)
{
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : 0;
}

const char* ToText(QTBInfoListEntry::Kind kind)
{
    switch (kind) {
    case QTBInfoListEntry::Information:
        return "information";
    case QTBInfoListEntry::Warning:
        return "warning";
    default:
        return "error";
    }
}

} // namespace

Shell::Shell(HostSession& session, std::ostream& out) : m_Session(session), m_Out(out)
{
    constexpr std::size_t ANY = 1000;
    m_Commands = {
        {"help", {"[COMMAND]", "say what the commands do", 0, 1, &Shell::Help}},
        {"answer", {"FILE...", "read PDM answers and let the windows follow", 1, ANY, &Shell::Answer}},
        {"assembly", {"FILE", "open a CAD assembly", 1, 1, &Shell::Assembly}},
        {"open", {"", "open another PDM window", 0, 0, &Shell::Open}},
        {"windows", {"", "list the windows; the current one is marked", 0, 0, &Shell::Windows}},
        {"window", {"NUMBER", "make a window the current one", 1, 1, &Shell::Window}},
        {"close", {"", "close the current window", 0, 0, &Shell::Close}},
        {"roots", {"KEY...", "make PDM objects the roots of the current window", 1, ANY, &Shell::Roots}},
        {"tree", {"[LEVELS]", "print the current window's tree; its lines are numbered", 0, 1, &Shell::Tree}},
        {"expand",
         {"NODE [RELATION[:left]...]", "expand a node one level, along all relations if none is named", 1, ANY,
          &Shell::Expand}},
        {"expandall", {"NODE [RELATION[:left]...]", "expand a node all the way down", 1, ANY, &Shell::ExpandAll}},
        {"fold", {"NODE", "fold a node's branch", 1, 1, &Shell::Fold}},
        {"menu", {"NODE", "print a node's context menu; its items are numbered", 1, 1, &Shell::Menu}},
        {"pick", {"ITEM", "start an item of the menu printed last", 1, 1, &Shell::Pick}},
        {"highlight", {"NODE", "highlight a node in its window, for a relation its object", 1, 1, &Shell::Highlight}},
        {"select", {"NODE...", "preselect nodes in their window", 1, ANY, &Shell::Select}},
        {"properties", {"NODE", "print the attributes of a node's PDM item", 1, 1, &Shell::Properties}},
        {"products", {"", "print the products of the open assemblies", 0, 0, &Shell::Products}},
        {"show", {"PATH|NODE", "show a product in the PDM window, or a node in the assembly", 1, 1, &Shell::Show}},
        {"consider", {"all|recent|current", "which PDM nodes expanding shows", 1, 1, &Shell::Consider}},
        {"messages", {"", "print the information list and empty it", 0, 0, &Shell::Messages}},
        {"notices", {"", "print the notices that were shown", 0, 0, &Shell::Notices}},
        {"language", {"NAME", "language of messages and display names", 1, 1, &Shell::Language}},
        {"quit", {"", "end the session", 0, 0, &Shell::Quit}},
    };
}

Shell::~Shell()
{
    DropMenu();
}

bool Shell::Execute(const std::string& line)
{
    if (line.size() > MAX_LINE_LENGTH) {
        ++m_FailureCount;
        fmt::print(m_Out, "error: the line is too long; at most {} bytes are read\n", MAX_LINE_LENGTH);
        return !m_IsOver;
    }
    Arguments words = Split(line);
    if (words.empty() || words[0].starts_with('#')) {
        return !m_IsOver;
    }
    const auto found = m_Commands.find(words[0]);
    words.erase(words.begin());
    try {
        if (found == m_Commands.end()) {
            throw HostError(ExitCode::Usage, "there is no such command; help lists them");
        }
        const Command& command = found->second;
        if (words.size() < command.fewest || words.size() > command.most) {
            throw HostError(ExitCode::Usage, fmt::format("usage: {} {}", found->first, command.arguments));
        }
        (this->*command.pRun)(words);
    } catch (const std::exception& error) {
        // Most are HostError. Whatever else goes wrong, no memory or a full disk, the session goes on with what it has.
        ++m_FailureCount;
        fmt::print(m_Out, "error: {}\n", error.what());
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

std::vector<std::string> Shell::GetCommandNames() const
{
    std::vector<std::string> names;
    for (const auto& [name, command] : m_Commands) {
        names.push_back(name);
    }
    return names;
}

void Shell::Help(const Arguments& arguments)
{
    for (const auto& [name, command] : m_Commands) {
        if (arguments.empty() || arguments[0] == name) {
            fmt::print(m_Out, "{:<40} {}\n", name + " " + command.arguments, command.help);
        }
    }
    if (arguments.empty()) {
        m_Out
            << "\nNODE is a line number of the tree printed last, or a PDM key. Double quotes keep blanks together.\n";
    }
}

void Shell::Answer(const Arguments& arguments)
{
    for (const std::string& file : arguments) {
        m_Session.ReadAnswer(file);
    }
}

void Shell::Assembly(const Arguments& arguments)
{
    CATFrmWindow* pWindow = GetWindow();
    m_Documents.Append(m_Session.OpenAssembly(arguments[0]));
    CATFrmLayout::GetCurrentLayout()->SetCurrentWindow(pWindow);
}

void Shell::Open(const Arguments&)
{
    HostSession::Require(QTBDocUtil::CreateNewQtbDocument(nullptr, nullptr), ExitCode::Failure, "PDM window");
}

void Shell::Windows(const Arguments&)
{
    const CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    int number = 0;
    for (const CATFrmWindow* pWindow : pLayout->GetWindowList()) {
        fmt::print(m_Out, "{} {} {}\n", pWindow == pLayout->GetCurrentWindow() ? '*' : ' ', ++number,
                   pWindow->GetTitle().View());
    }
}

void Shell::Window(const Arguments& arguments)
{
    CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    const std::size_t number = ToNumber(arguments[0]);
    if (number == 0 || number > static_cast<std::size_t>(pLayout->GetWindowList().Size())) {
        throw HostError(ExitCode::Usage, "there is no window " + arguments[0] + "; windows lists them");
    }
    pLayout->SetCurrentWindow(pLayout->GetWindowList()[static_cast<int>(number)]);
}

void Shell::Close(const Arguments&)
{
    DropMenu();
    m_TreeNodes.clear();
    CATFrmLayout::GetCurrentLayout()->CloseWindow(GetWindow());
}

CATFrmWindow* Shell::GetWindow() const
{
    const CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    CATFrmWindow* pWindow = pLayout != nullptr ? pLayout->GetCurrentWindow() : nullptr;
    if (pWindow == nullptr) {
        throw HostError(ExitCode::Usage, "no window is open");
    }
    return pWindow;
}

QTBIRepNodeCont_var Shell::GetContainer() const
{
    QTBIRepNodeCont_var spIRepNodeCont;
    if (FAILED(QTBRepTreeUtil::GetRepNodeContOfWindow(GetWindow(), &spIRepNodeCont))) {
        throw HostError(ExitCode::Usage, "the current window is no PDM window");
    }
    return spIRepNodeCont;
}

QTBIRepNode_var Shell::GetNode(const std::string& name) const
{
    if (const std::size_t number = ToNumber(name); number > 0 && number <= m_TreeNodes.size()) {
        return m_TreeNodes[number - 1];
    }
    QTBIPdmNode_var spIPdmNode;
    unsigned char bFound = FALSE;
    m_Session.GetPdmNodeCont()->GetPdmNodeByKey(name.c_str(), &spIPdmNode, &bFound);
    CATListValCATBaseUnknown_var nodes;
    if (bFound != FALSE && SUCCEEDED(spIPdmNode->GetRepNodes(&nodes, GetContainer())) && nodes.Size() > 0) {
        return nodes[1];
    }
    throw HostError(ExitCode::Usage, name + " is neither a line of the tree printed last nor the key of an item that "
                                            "the current window shows");
}

void Shell::Roots(const Arguments& arguments)
{
    const QTBIRepNodeCont_var spIRepNodeCont = GetContainer();
    CATListValCATBaseUnknown_var pdmNodes;
    for (const std::string& key : arguments) {
        QTBIPdmNode_var spIPdmNode;
        unsigned char bFound = FALSE;
        m_Session.GetPdmNodeCont()->GetPdmNodeByKey(key.c_str(), &spIPdmNode, &bFound);
        if (bFound == FALSE || QTBIPdmObjNode_var(spIPdmNode) == NULL_var) {
            throw HostError(ExitCode::Usage, "there is no PDM object with the key " + key);
        }
        pdmNodes.Append(spIPdmNode);
    }
    unsigned char bTrue = TRUE;
    unsigned char bFalse = FALSE;
    NodesToRetrieve nodes = ALL_NODES;
    HostSession::Require(
        spIRepNodeCont->AddAsRepRootNodes(CATListValCATBaseUnknown_var(), &bTrue, &bFalse, nullptr, nullptr),
        ExitCode::Failure, "window");
    spIRepNodeCont->SetPdmNodesToConsider(&nodes);
    for (const CATBaseUnknown_var& spPdmNode : pdmNodes) {
        HostSession::Require(spIRepNodeCont->UpdateRepTrees(spPdmNode, CATListValQTBNodeRelationInfo(), &bTrue, nullptr,
                                                            nullptr, &bFalse),
                             ExitCode::Failure, "root");
    }
    nodes = ONLY_CURRENT_NODES;
    spIRepNodeCont->SetPdmNodesToConsider(&nodes);
    HostSession::Require(spIRepNodeCont->UpdateQtbWindow(&bTrue, &bFalse), ExitCode::Failure, "window");
}

void Shell::Tree(const Arguments& arguments)
{
    CATListValCATBaseUnknown_var roots;
    unsigned char bFalse = FALSE;
    HostSession::Require(GetContainer()->GetRepRootNodes(&roots, &bFalse, &bFalse), ExitCode::Failure, "window");
    const int levels = arguments.empty() ? -1 : static_cast<int>(ToNumber(arguments[0]));
    std::vector<TreePrinter::Line> lines = TreePrinter::Collect(roots, levels, GetWindow()->GetEditor()->GetHSO());
    m_TreeNodes.clear();
    for (TreePrinter::Line& line : lines) {
        m_TreeNodes.push_back(line.spNode);
        line.text = fmt::format("[{}] {}", m_TreeNodes.size(), line.text);
    }
    TreePrinter::PrintText(m_Out, lines);
}

CATListValQTBNodeRelationInfo Shell::GetRelations(const Arguments& arguments, std::size_t first) const
{
    QTBSchema* pSchema = nullptr;
    HostSession::Require(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema), ExitCode::Failure, "schema");
    CATListValQTBNodeRelationInfo relations;
    if (first >= arguments.size()) {
        for (int i = pSchema->GetRelationCount(); i >= 1; --i) {
            QTBSchemaRelation* pRelation = nullptr;
            HostSession::Require(pSchema->GetRelationPtr(i, &pRelation), ExitCode::Failure, "schema");
            relations.Append(QTBNodeRelationInfo(pRelation->GetName(), usLEFT_TO_RIGHT));
        }
    }
    for (std::size_t i = arguments.size(); i > first; --i) {
        std::string name = arguments[i - 1];
        const bool toTheLeft = name.ends_with(":left");
        name.resize(name.size() - (toTheLeft ? std::string_view(":left").size() : 0));
        QTBSchemaRelation* pRelation = nullptr;
        if (FAILED(pSchema->GetRelationPtr(name.c_str(), &pRelation))) {
            throw HostError(ExitCode::Usage, "the schema has no relation " + name);
        }
        relations.Append(QTBNodeRelationInfo(name.c_str(), toTheLeft ? usRIGHT_TO_LEFT : usLEFT_TO_RIGHT));
    }
    return relations;
}

void Shell::ExpandNode(const Arguments& arguments, unsigned char bOneLevelOnly)
{
    const QTBIRepNode_var spIRepNode = GetNode(arguments[0]);
    const CATListValQTBNodeRelationInfo relations = GetRelations(arguments, 1);
    QTBIRepNodeCont_var spIRepNodeCont;
    HostSession::Require(spIRepNode->GetRepNodeContainer(&spIRepNodeCont), ExitCode::Failure, "window");
    unsigned char bTrue = TRUE;
    unsigned char bFalse = FALSE;
    NodesToRetrieve nodes = m_Consider;
    spIRepNodeCont->SetPdmNodesToConsider(&nodes);
    const HRESULT hr =
        spIRepNodeCont->UpdateRepTree(spIRepNode, relations, &bOneLevelOnly, nullptr, nullptr, &bTrue, &bTrue, &bFalse);
    nodes = ONLY_CURRENT_NODES;
    spIRepNodeCont->SetPdmNodesToConsider(&nodes);
    HostSession::Require(hr, ExitCode::Failure, arguments[0]);
}

void Shell::Expand(const Arguments& arguments)
{
    ExpandNode(arguments, TRUE);
}

void Shell::ExpandAll(const Arguments& arguments)
{
    ExpandNode(arguments, FALSE);
}

void Shell::Fold(const Arguments& arguments)
{
    QTBIRepNode_var spIRepNode = GetNode(arguments[0]);
    QTBIRepNodeCont_var spIRepNodeCont;
    HostSession::Require(spIRepNode->GetRepNodeContainer(&spIRepNodeCont), ExitCode::Failure, "window");
    DropMenu();
    HostSession::Require(spIRepNodeCont->DeExpand(&spIRepNode), ExitCode::Failure, arguments[0]);
}

void Shell::DropMenu()
{
    CATCmdContainer::Dismiss(m_pMenu);
    m_pMenu = nullptr;
    m_MenuItems.clear();
    m_spMenuNode = NULL_var;
}

void Shell::Menu(const Arguments& arguments)
{
    const QTBIRepNode_var spIRepNode = GetNode(arguments[0]);
    const CATIContextualMenu_var spIContextualMenu(spIRepNode);
    if (spIContextualMenu == NULL_var) {
        throw HostError(ExitCode::Failure, "the node has no context menu");
    }
    DropMenu();
    HostSession::Require(spIContextualMenu->GetContextualMenu(m_pMenu), ExitCode::Failure, arguments[0]);
    m_spMenuNode = spIRepNode;
    if (m_pMenu != nullptr) {
        PrintMenu(m_pMenu->GetChild());
    }
}

void Shell::PrintMenu(CATCmdAccess* pFirstItem)
{
    // Items whose turn is still to come, the next one last, each with its depth.
    std::vector<std::pair<CATCmdAccess*, int>> waiting = {{pFirstItem, 0}};
    while (!waiting.empty()) {
        const auto [pItem, depth] = waiting.back();
        waiting.pop_back();
        if (pItem == nullptr) {
            continue;
        }
        const std::string margin(static_cast<std::size_t>(2 * depth), ' ');
        if (dynamic_cast<CATCmdSeparator*>(pItem) != nullptr) {
            fmt::print(m_Out, "{}----\n", margin);
        } else {
            m_MenuItems.push_back(pItem);
            const auto* pStarter = dynamic_cast<CATCmdStarter*>(pItem);
            fmt::print(m_Out, "{}[{}] {}{}\n", margin, m_MenuItems.size(), pItem->GetTitle().View(),
                       pStarter != nullptr && !pStarter->IsAvailable() ? " (not available)" : "");
        }
        waiting.emplace_back(pItem->GetNext(), depth);
        waiting.emplace_back(pItem->GetChild(), depth + 1);
    }
}

void Shell::Pick(const Arguments& arguments)
{
    const std::size_t number = ToNumber(arguments[0]);
    if (number == 0 || number > m_MenuItems.size()) {
        throw HostError(ExitCode::Usage, "the menu printed last has no item " + arguments[0]);
    }
    const auto* pStarter = dynamic_cast<const CATCmdStarter*>(m_MenuItems[number - 1]);
    if (pStarter == nullptr) {
        throw HostError(ExitCode::Usage, "item " + arguments[0] + " opens a menu and starts nothing");
    }
    HostSession::Require(pStarter->Start(m_spMenuNode), ExitCode::Failure, std::string(pStarter->GetTitle().View()));
}

void Shell::Highlight(const Arguments& arguments)
{
    unsigned char bTrue = TRUE;
    HostSession::Require(GetNode(arguments[0])->Highlight(&bTrue, &bTrue), ExitCode::Failure, arguments[0]);
}

void Shell::Select(const Arguments& arguments)
{
    unsigned char bEmptyFirst = TRUE;
    for (const std::string& name : arguments) {
        HostSession::Require(GetNode(name)->Preselect(&bEmptyFirst), ExitCode::Failure, name);
        bEmptyFirst = FALSE;
    }
    fmt::print(m_Out, "{} preselected\n", GetWindow()->GetEditor()->GetPSO()->GetSize());
}

void Shell::Properties(const Arguments& arguments)
{
    QTBIPdmNode_var spIPdmNode;
    HostSession::Require(GetNode(arguments[0])->GetPdmNode(&spIPdmNode, FALSE, nullptr), ExitCode::Failure,
                         arguments[0] + " lost its PDM item");
    const QTBINodeAttributes_var spINodeAttributes(spIPdmNode);
    CATListValCATUnicodeString names;
    spINodeAttributes->GetAllAttributeNames(&names);
    for (const CATUnicodeString& usName : names) {
        QTBNodeAttr* pNodeAttr = nullptr;
        if (SUCCEEDED(spINodeAttributes->GetAttribute(usName, &pNodeAttr))) {
            fmt::print(m_Out, "{:<24} {}\n", usName.View(), pNodeAttr->ToString().View());
        }
    }
}

void Shell::Products(const Arguments&)
{
    std::vector<TreePrinter::Line> lines;
    for (const ProductTree::Place& place : ProductTree::Collect(m_Documents)) {
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
    TreePrinter::PrintText(m_Out, lines);
}

void Shell::Show(const Arguments& arguments)
{
    const std::vector<ProductTree::Place> places = ProductTree::Collect(m_Documents);
    const auto found = std::find_if(places.begin(), places.end(), [&](const ProductTree::Place& place) {
        return place.path == arguments[0] || (place.level == 0 && arguments[0] == "/");
    });
    CATFrmWindow* pWindow = nullptr;
    if (found != places.end()) {
        HostSession::Require(QTBILinkToQtb_var(found->spIProduct)->HighlightProdStrucNode(TRUE, TRUE, &pWindow),
                             ExitCode::Failure, arguments[0]);
        return;
    }
    CATFrmWindow* pPdmWindow = GetWindow();
    HostSession::Require(QTBILinkToPsn_var(GetNode(arguments[0]))->HighlightPsnNodes(TRUE, FALSE, &pWindow),
                         ExitCode::Failure, arguments[0]);
    CATFrmLayout::GetCurrentLayout()->SetCurrentWindow(pPdmWindow);
}

void Shell::Consider(const Arguments& arguments)
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

void Shell::Messages(const Arguments&)
{
    CATListValQTBInfoListEntry entries;
    QTBGlobVarsUtil::GetInfoListEntries(&entries);
    for (const QTBInfoListEntry& entry : entries) {
        fmt::print(m_Out, "{}: {}\n", ToText(entry.kind), entry.text.View());
    }
    QTBGlobVarsUtil::ClearInfoList();
}

void Shell::Notices(const Arguments&)
{
    for (const CATDlgNotice& notice : CATApplicationFrame::GetFrame()->GetNotices()) {
        fmt::print(m_Out, "{}: {}\n", notice.title.View(), notice.message.View());
    }
    CATApplicationFrame::GetFrame()->ForgetNotices();
}

void Shell::Language(const Arguments& arguments)
{
    m_Session.SetLanguage(arguments[0]);
}

void Shell::Quit(const Arguments&)
{
    m_IsOver = true;
}

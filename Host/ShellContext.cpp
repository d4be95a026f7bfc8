#include "ShellContext.h"

#include <algorithm>
#include <charconv>

#include <fmt/format.h>

#include "CATFrmLayout.h"
#include "QTBINodeAttributes.h"
#include "QTBIRepNodeCont.h"
#include "QTBPdmStore.h"
#include "QTBRepTreeUtil.h"

CATFrmWindow* ShellContext::GetWindow() const
{
    const CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    CATFrmWindow* pWindow = pLayout != nullptr ? pLayout->GetCurrentWindow() : nullptr;
    if (pWindow == nullptr) {
        throw HostError(ExitCode::Usage, "no window is open");
    }
    return pWindow;
}

QTBIRepNodeCont_var ShellContext::GetContainer() const
{
    QTBIRepNodeCont_var spIRepNodeCont;
    if (FAILED(QTBRepTreeUtil::GetRepNodeContOfWindow(GetWindow(), &spIRepNodeCont))) {
        throw HostError(ExitCode::Usage, "the current window is no PDM window");
    }
    return spIRepNodeCont;
}

bool ShellContext::IsInTree(const QTBIRepNode_var& spIRepNode)
{
    QTBIRepNodeCont_var spIRepNodeCont;
    QTBIRepNode_var spIFound;
    CATUnicodeString usKey;
    unsigned char bFound = FALSE;
    return SUCCEEDED(spIRepNode->GetRepNodeContainer(&spIRepNodeCont)) &&
           SUCCEEDED(QTBINodeAttributes_var(spIRepNode)->GetKey(&usKey)) &&
           SUCCEEDED(spIRepNodeCont->GetRepNodeByKey(usKey, &spIFound, &bFound)) && bFound != FALSE;
}

bool ShellContext::IsKeyOfAnotherItem(const std::string& key, std::size_t line) const
{
    CATUnicodeString usKeyOfLine;
    if (SUCCEEDED(QTBIRepNode_var(treeNodes[line - 1])->GetPdmNodeKey(&usKeyOfLine)) && usKeyOfLine == key.c_str()) {
        return false;
    }
    QTBIPdmNode_var spIPdmNode;
    unsigned char bFound = FALSE;
    session.GetPdmNodeCont()->GetPdmNodeByKey(key.c_str(), &spIPdmNode, &bFound);
    return bFound != FALSE || (session.GetStore() != nullptr &&
                               SUCCEEDED(session.GetStore()->GetItems({key.c_str()}, [](std::string_view) {})));
}

ShellContext::NodeName ShellContext::ReadName(const std::string& name) const
{
    constexpr std::string_view KEY = "key:";
    if (name.starts_with(KEY)) {
        return {0, name.substr(KEY.size())};
    }
    const bool isLine = name.starts_with('#') && ToNumber(name.substr(1)) > 0;
    const std::size_t number = ToNumber(isLine ? name.substr(1) : name);
    const bool hasLine = number > 0 && number <= treeNodes.size();
    if (isLine && !hasLine) {
        throw HostError(ExitCode::Usage, "the tree printed last has no line " + name.substr(1));
    }
    if (isLine || !hasLine) {
        return {isLine ? number : 0, name};
    }
    if (IsKeyOfAnotherItem(name, number)) {
        throw HostError(ExitCode::Usage,
                        fmt::format("{0} is a line of the tree printed last and the key of another item; "
                                    "#{0} is the line, key:{0} the item",
                                    name));
    }
    return {number, name};
}

QTBIRepNode_var ShellContext::GetNode(const std::string& name) const
{
    const NodeName node = ReadName(name);
    if (node.line > 0) {
        QTBIRepNode_var spIRepNode(treeNodes[node.line - 1]);
        if (!IsInTree(spIRepNode)) {
            throw HostError(ExitCode::Usage, fmt::format("line {} has left the tree; tree prints it anew", node.line));
        }
        return spIRepNode;
    }
    QTBIPdmNode_var spIPdmNode;
    unsigned char bFound = FALSE;
    session.GetPdmNodeCont()->GetPdmNodeByKey(node.key.c_str(), &spIPdmNode, &bFound);
    CATListValCATBaseUnknown_var nodes;
    if (bFound != FALSE && SUCCEEDED(spIPdmNode->GetRepNodes(&nodes, GetContainer())) && nodes.Size() > 0) {
        return nodes[1];
    }
    throw HostError(ExitCode::Usage, name + " is neither a line of the tree printed last nor the key of an item that "
                                            "the current window shows");
}

QTBIPdmNode_var ShellContext::GetPdmNode(const std::string& name) const
{
    QTBIPdmNode_var spIPdmNode;
    if (FAILED(GetNode(name)->GetPdmNode(&spIPdmNode, FALSE, nullptr)) || spIPdmNode == NULL_var) {
        throw HostError(ExitCode::Failure, name + " lost its PDM item");
    }
    return spIPdmNode;
}

CATListValCATUnicodeString ShellContext::GetKeys(const ShellArguments& names) const
{
    CATListValCATUnicodeString Keys;
    for (const std::string& name : names) {
        const NodeName node = ReadName(name);
        Keys.Append(node.line > 0 ? GetPdmNode(name)->GetPdmKey() : CATUnicodeString(node.key.c_str()));
    }
    return Keys;
}

void ShellContext::ForgetNodes()
{
    menu.Close();
    treeNodes.clear();
}

std::size_t ShellContext::ToNumber(const std::string& text)
{
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : 0;
}

int ShellContext::ToLevels(const std::string& text)
{
    // Deeper than any tree.
    constexpr std::size_t MAX_LEVELS = 1000000;
    const std::size_t levels = ToNumber(text);
    if (levels == 0 && text != "0") {
        throw HostError(ExitCode::Usage, text + " is no number of levels");
    }
    return static_cast<int>(std::min(levels, MAX_LEVELS));
}

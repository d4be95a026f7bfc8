#include "ShellContext.h"

#include <algorithm>
#include <charconv>

#include "CATFrmLayout.h"
#include "QTBINodeAttributes.h"
#include "QTBIRepNodeCont.h"
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

QTBIRepNode_var ShellContext::GetNode(const std::string& name) const
{
    if (const std::size_t number = ToNumber(name); number > 0 && number <= treeNodes.size()) {
        QTBIRepNode_var spIRepNode(treeNodes[number - 1]);
        if (!IsInTree(spIRepNode)) {
            throw HostError(ExitCode::Usage, "line " + name + " has left the tree; tree prints it anew");
        }
        return spIRepNode;
    }
    QTBIPdmNode_var spIPdmNode;
    unsigned char bFound = FALSE;
    session.GetPdmNodeCont()->GetPdmNodeByKey(name.c_str(), &spIPdmNode, &bFound);
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
        const std::size_t number = ToNumber(name);
        Keys.Append(number > 0 && number <= treeNodes.size() ? GetPdmNode(name)->GetPdmKey()
                                                             : CATUnicodeString(name.c_str()));
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

#pragma once

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "CATListValCATBaseUnknown_var.h"
#include "HostSession.h"
#include "QTBIPdmNode.h"
#include "QTBIRepNode.h"
#include "ShellMenu.h"
#include "ShellTable.h"

class CATFrmWindow;

// What the commands of a shell share. Operations raise HostError.
class ShellContext
{
public:
    ShellContext(HostSession& session_, std::ostream& out_) : session(session_), out(out_) {}

    HostSession& session;
    std::ostream& out;
    bool hasColors = false;
    // Asks the person at the terminal, who may give up; empty when there is nobody.
    std::function<std::optional<std::string>(const std::string& prompt)> ask;

    ShellMenu menu;
    // The rep nodes of the tree printed last, by line.
    std::vector<CATBaseUnknown_var> treeNodes;
    CATListValCATBaseUnknown_var assemblies;

    // The current window.
    CATFrmWindow* GetWindow() const;
    // Its rep node container; refused when it is no PDM window.
    QTBIRepNodeCont_var GetContainer() const;

    // Whether a rep node still belongs to a window.
    static bool IsInTree(const QTBIRepNode_var& spIRepNode);
    // The rep node of a line of the tree printed last, or of a PDM key in the current window. One that has left its
    // window meanwhile is refused, and so is a number that is both a line and the key of another item of the graph or
    // the store: #N is the line, key:N the key.
    QTBIRepNode_var GetNode(const std::string& name) const;
    // Its PDM item; refused for a node that lost it.
    QTBIPdmNode_var GetPdmNode(const std::string& name) const;
    // PDM keys, given as such or by lines of the tree.
    CATListValCATUnicodeString GetKeys(const ShellArguments& names) const;

    // Lets go of what is remembered of nodes: before a window goes, and when nodes left it.
    void ForgetNodes();

    // The number that a text is, 0 for any other text.
    static std::size_t ToNumber(const std::string& text);
    // The number of levels that a text is; any other text is refused.
    static int ToLevels(const std::string& text);

private:
    // What the name of a node says: a line of the tree printed last, or a key.
    struct NodeName
    {
        std::size_t line; // 0 for a key
        std::string key;
    };
    NodeName ReadName(const std::string& name) const;
    bool IsKeyOfAnotherItem(const std::string& key, std::size_t line) const;
};

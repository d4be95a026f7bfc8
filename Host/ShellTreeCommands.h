#pragma once

#include "QTBConstants.h"
#include "ShellContext.h"

// Commands of the shell on the tree of the current PDM window and its nodes.
class ShellTreeCommands
{
public:
    explicit ShellTreeCommands(ShellContext& context) : m_Context(context) {}
    ShellGroup GetTreeGroup();
    ShellGroup GetMenuGroup();

private:
    void Print(const ShellArguments& arguments);
    void Expand(const ShellArguments& arguments);
    void ExpandAll(const ShellArguments& arguments);
    void Fold(const ShellArguments& arguments);
    void Highlight(const ShellArguments& arguments);
    void Select(const ShellArguments& arguments);
    void PrintProperties(const ShellArguments& arguments);
    void PrintState(const ShellArguments& arguments);
    void Consider(const ShellArguments& arguments);
    void ShowRelations(const ShellArguments& arguments);
    void OpenMenu(const ShellArguments& arguments);
    void Pick(const ShellArguments& arguments);
    void Do(const ShellArguments& arguments);

    // Starts an item of the open menu, by number or title, with values for its dialog.
    void StartItem(const std::string& name, const ShellArguments& values);

    void ExpandNode(const ShellArguments& arguments, unsigned char bOneLevelOnly);

    ShellContext& m_Context;
    NodesToRetrieve m_Consider = ALL_NODES;
};

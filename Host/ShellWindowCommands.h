#pragma once

#include "ShellContext.h"

// Commands of the shell on windows, on what the session reads and on what it says.
class ShellWindowCommands
{
public:
    explicit ShellWindowCommands(ShellContext& context) : m_Context(context) {}
    ShellGroup GetWindowGroup();
    ShellGroup GetSessionGroup();

private:
    void Open(const ShellArguments& arguments);
    void List(const ShellArguments& arguments);
    void Activate(const ShellArguments& arguments);
    void Close(const ShellArguments& arguments);
    void SetRoots(const ShellArguments& arguments);
    void ReadAnswers(const ShellArguments& arguments);
    void PrintMessages(const ShellArguments& arguments);
    void PrintNotices(const ShellArguments& arguments);

    // The PDM object of that key; read from the PDM system when the graph does not hold it.
    QTBIPdmNode_var GetObject(const std::string& key);

    ShellContext& m_Context;
};

#pragma once

#include "ShellContext.h"

// Commands of the shell on the CAD assemblies that are open beside the PDM windows.
class ShellProductCommands
{
public:
    explicit ShellProductCommands(ShellContext& context) : m_Context(context) {}
    ShellGroup GetProductGroup();

private:
    void Open(const ShellArguments& arguments);
    void Print(const ShellArguments& arguments);
    void PrintLinks(const ShellArguments& arguments);
    void Show(const ShellArguments& arguments);

    ShellContext& m_Context;
};

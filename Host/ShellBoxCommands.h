#pragma once

#include "ProductBoxes.h"
#include "ShellContext.h"

// Commands of the shell on the bounding boxes of the open assemblies.
class ShellBoxCommands
{
public:
    explicit ShellBoxCommands(ShellContext& context) : m_Context(context) {}
    ShellGroup GetBoxGroup();

private:
    void Print(const ShellArguments& arguments);
    void Mark(const ShellArguments& arguments);
    void Unmark(const ShellArguments& arguments);
    void OpenMenu(const ShellArguments& arguments);
    void Draw(const ShellArguments& arguments);

    // The box of that number in the list, or with that name.
    static ProductBoxes::Shown Find(const std::string& name);

    ShellContext& m_Context;
};

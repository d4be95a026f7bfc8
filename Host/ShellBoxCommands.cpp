#include "ShellBoxCommands.h"

#include <ostream>

ShellGroup ShellBoxCommands::GetBoxGroup()
{
    return {
        "Bounding boxes",
        {
            {"boxes", "", "list the bounding boxes of the open assemblies, with corner and opposite corner", 0, 0,
             ShellRun(this, &ShellBoxCommands::Print)},
            {"mark", "BOX...", "mark bounding boxes", 1, MAX_ARGUMENTS, ShellRun(this, &ShellBoxCommands::Mark)},
            {"unmark", "BOX...", "take the marks away", 1, MAX_ARGUMENTS, ShellRun(this, &ShellBoxCommands::Unmark)},
            {"boxmenu", "BOX", "print a bounding box's context menu; pick starts its items", 1, 1,
             ShellRun(this, &ShellBoxCommands::OpenMenu)},
            {"picture", "FILE", "draw the bounding boxes into a PNG file", 1, 1,
             ShellRun(this, &ShellBoxCommands::Draw)},
        }};
}

ProductBoxes::Shown ShellBoxCommands::Find(const std::string& name)
{
    const std::vector<ProductBoxes::Shown> boxes = ProductBoxes::Collect();
    if (const std::size_t number = ShellContext::ToNumber(name); number > 0 && number <= boxes.size()) {
        return boxes[number - 1];
    }
    for (const ProductBoxes::Shown& box : boxes) {
        if (box.name == name) {
            return box;
        }
    }
    throw HostError(ExitCode::Usage, "there is no bounding box " + name + "; boxes lists them");
}

void ShellBoxCommands::Print(const ShellArguments&)
{
    ProductBoxes::Show(m_Context.assemblies);
    const std::vector<ProductBoxes::Shown> boxes = ProductBoxes::Collect();
    m_Context.out << (boxes.empty() ? "0 boxes\n" : ProductBoxes::Describe(boxes));
}

void ShellBoxCommands::Mark(const ShellArguments& arguments)
{
    ProductBoxes::Show(m_Context.assemblies);
    for (const std::string& name : arguments) {
        ProductBoxes::SetMarked(Find(name).spIBndBox, true);
    }
}

void ShellBoxCommands::Unmark(const ShellArguments& arguments)
{
    ProductBoxes::Show(m_Context.assemblies);
    for (const std::string& name : arguments) {
        ProductBoxes::SetMarked(Find(name).spIBndBox, false);
    }
}

void ShellBoxCommands::OpenMenu(const ShellArguments& arguments)
{
    ProductBoxes::Show(m_Context.assemblies);
    m_Context.menu.Open(Find(arguments[0]).spIBndBox);
    m_Context.menu.Print(m_Context.out);
}

void ShellBoxCommands::Draw(const ShellArguments& arguments)
{
    constexpr int SIZE = 1000;
    ProductBoxes::Show(m_Context.assemblies);
    if (ProductBoxes::Collect().empty()) {
        throw HostError(ExitCode::Usage, "there is nothing to draw: no product of an open assembly has a bounding box");
    }
    ProductBoxes::WritePicture(arguments[0], SIZE);
}

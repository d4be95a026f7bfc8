#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

using ShellArguments = std::vector<std::string>;

// A command of the shell.
struct ShellEntry
{
    std::string name;
    std::string arguments; // as the help shows them; their words say what completion offers
    std::string help;
    std::size_t fewest; // arguments
    std::size_t most;
    std::function<void(const ShellArguments&)> run;
};

// Commands that belong together.
struct ShellGroup
{
    std::string title;
    std::vector<ShellEntry> entries;
};

// No command takes more; what commands have that take any number of arguments.
inline constexpr std::size_t MAX_ARGUMENTS = 1000;

// Runs a command of a group's object.
template <class Commands>
std::function<void(const ShellArguments&)> ShellRun(Commands* pCommands, void (Commands::*pRun)(const ShellArguments&))
{
    return [pCommands, pRun](const ShellArguments& arguments) { (pCommands->*pRun)(arguments); };
}

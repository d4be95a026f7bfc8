#include "CommandLine.h"

#include <charconv>
#include <limits>

#include <fmt/format.h>

namespace {

// The innermost command that the line has, with its name as it is called.
const CLI::App& FindCommand(const CLI::App& app, std::string* pPrefix)
{
    const CLI::App* pCommand = &app;
    while (!pCommand->get_subcommands().empty()) {
        pCommand = pCommand->get_subcommands().front();
        *pPrefix += pCommand->get_name() + " ";
    }
    return *pCommand;
}

} // namespace

CLI::Validator CommandLine::NumberFrom(int least)
{
    // Without a description: that of the option has what is to be said.
    return CLI::Validator(
        [least](std::string& text) {
            int number = 0;
            const char* const end = text.data() + text.size();
            const auto [stop, error] = std::from_chars(text.data(), end, number);
            return error == std::errc() && stop == end && number >= least
                       ? std::string()
                       : fmt::format("a whole number from {} to {} is needed, not {}", least,
                                     std::numeric_limits<int>::max(), text.empty() ? "an empty text" : text);
        },
        "");
}

std::string CommandLine::DescribeUnknownWord(const CLI::App& app)
{
    std::string prefix;
    const CLI::App& command = FindCommand(app, &prefix);
    const std::vector<const CLI::App*> known = command.get_subcommands([](const CLI::App*) { return true; });
    const std::vector<std::string> words = command.remaining();
    if (known.empty() || words.empty()) {
        return std::string();
    }
    std::string names;
    for (const CLI::App* pCommand : known) {
        names += (names.empty() ? "" : ", ") + pCommand->get_name();
    }
    return fmt::format("there is no {} {}{}; {}commands are {}", words.front().starts_with('-') ? "option" : "command",
                       prefix, words.front(), prefix, names);
}

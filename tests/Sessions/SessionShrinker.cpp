#include "SessionShrinker.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace {

// Leaves out what the list can do without: delta debugging with complements.
template <class Item, class Fails>
std::vector<Item> Shrink(std::vector<Item> items, Fails fails)
{
    for (std::size_t piece = std::max<std::size_t>(items.size() / 2, 1); !items.empty();) {
        bool isSmaller = false;
        for (std::size_t from = 0; from < items.size();) {
            std::vector<Item> rest(items.begin(), items.begin() + static_cast<std::ptrdiff_t>(from));
            const std::size_t to = std::min(from + piece, items.size());
            rest.insert(rest.end(), items.begin() + static_cast<std::ptrdiff_t>(to), items.end());
            if (fails(rest)) {
                items = std::move(rest);
                isSmaller = true;
            } else {
                from = to;
            }
        }
        if (piece == 1 && !isSmaller) {
            break;
        }
        piece = std::max<std::size_t>(piece / 2, 1);
    }
    return items;
}

std::vector<std::string> SplitLines(const std::string& text)
{
    std::vector<std::string> lines;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = std::min(text.find('\n', from), text.size() - 1) + 1;
        lines.push_back(text.substr(from, end - from));
        from = end;
    }
    return lines;
}

std::string Join(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines) {
        text += line;
    }
    return text;
}

} // namespace

SessionSteps ShrinkSession(SessionSteps steps, const std::function<bool(const SessionSteps&)>& fails)
{
    steps = Shrink(std::move(steps), fails);
    for (SessionStep& step : steps) {
        if (!step.fileName.empty()) {
            const std::string whole = step.content;
            step.content = Join(Shrink(SplitLines(whole), [&](const std::vector<std::string>& lines) {
                step.content = Join(lines);
                return fails(steps);
            }));
        }
    }
    return steps;
}

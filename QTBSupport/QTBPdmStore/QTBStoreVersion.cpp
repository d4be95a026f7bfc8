#include "QTBStoreVersion.h"

#include <algorithm>

namespace {

bool IsIn(char c, char first, char last)
{
    return c >= first && c <= last;
}

// Counts the characters from a position on as a number whose digits go from first to last. One that has no place for
// the carry becomes longer by the given digit.
std::string CountOn(std::string_view text, std::size_t from, char first, char last, char carry)
{
    std::string next(text);
    for (std::size_t i = next.size(); i > from; --i) {
        if (next[i - 1] != last) {
            ++next[i - 1];
            return next;
        }
        next[i - 1] = first;
    }
    next.insert(from, 1, carry);
    return next;
}

std::size_t FindRun(std::string_view text, char first, char last)
{
    std::size_t from = text.size();
    while (from > 0 && IsIn(text[from - 1], first, last)) {
        --from;
    }
    return from;
}

} // namespace

std::string QTBStoreVersion::GetNext(std::string_view version)
{
    if (version.empty()) {
        return std::string(FIRST);
    }
    const char end = version.back();
    if (IsIn(end, '0', '9')) {
        return CountOn(version, FindRun(version, '0', '9'), '0', '9', '1');
    }
    if (IsIn(end, 'A', 'Z')) {
        return CountOn(version, FindRun(version, 'A', 'Z'), 'A', 'Z', 'A');
    }
    if (IsIn(end, 'a', 'z')) {
        return CountOn(version, FindRun(version, 'a', 'z'), 'a', 'z', 'a');
    }
    return std::string(version) + ".1";
}

std::string QTBStoreVersion::MakeKey(std::string_view key, std::string_view version, std::string_view nextVersion)
{
    const std::string end = "/" + std::string(version);
    if (!version.empty() && key.size() > end.size() && key.substr(key.size() - end.size()) == end) {
        key.remove_suffix(end.size());
    }
    return std::string(key) + "/" + std::string(nextVersion);
}

#include "CATEnvLimit.h"

#include <charconv>
#include <cstdlib>
#include <string_view>
#include <system_error>

std::int64_t CATGetEnvLimit(const char* variable, std::int64_t byDefault, std::int64_t most)
{
    const char* value = std::getenv(variable);
    if (value == nullptr) {
        return byDefault;
    }
    const std::string_view text(value);
    std::int64_t limit = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), limit);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber && limit >= 1 && limit <= most ? limit : byDefault;
}

std::int64_t CATGetMaxFileBytes()
{
    constexpr std::int64_t MB = 1 << 20;
    constexpr std::int64_t MOST = 1 << 20;
    return MB * CATGetEnvLimit("CAT_MAX_FILE_MB", CAT_DEFAULT_MAX_FILE_MB, MOST);
}

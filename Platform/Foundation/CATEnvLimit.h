#pragma once

#include <cstdint>

#include "PlatformExport.h"

// A ceiling that the environment of the process can set: the value of the variable, a decimal number from 1 to most.
// Where the variable is not set or says anything else, byDefault holds. Asked for anew by each operation that obeys it.
PLATFORM_API std::int64_t CATGetEnvLimit(const char* variable, std::int64_t byDefault, std::int64_t most);

// Bytes that a file or a text may have which is read as a whole. Variable CAT_MAX_FILE_MB, in units of 1,048,576.
PLATFORM_API std::int64_t CATGetMaxFileBytes();
inline constexpr std::int64_t CAT_DEFAULT_MAX_FILE_MB = 2048;

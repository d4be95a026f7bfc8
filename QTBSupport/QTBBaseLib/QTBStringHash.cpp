#include "QTBStringHash.h"

#include <cstdint>

#define XXH_INLINE_ALL
#include <xxhash.h>

unsigned int QTBHashBytes(std::string_view utf8Text, unsigned int hash)
{
    const std::uint64_t wide = XXH3_64bits_withSeed(utf8Text.data(), utf8Text.size(), hash);
    return static_cast<unsigned int>(wide ^ (wide >> 32U));
}

unsigned int& operator%=(unsigned int& hash, const CATUnicodeString& usText)
{
    hash = QTBHashBytes(usText.View(), hash);
    return hash;
}

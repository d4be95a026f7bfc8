#include "QTBStoreChecksum.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

void QTBStoreChecksum::Add(std::string_view text)
{
    // The sum so far is the seed, so that the same texts divided in another way give another sum.
    m_Value = XXH3_64bits_withSeed(text.data(), text.size(), m_Value + 1);
}

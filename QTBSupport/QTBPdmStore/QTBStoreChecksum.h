#pragma once

#include <cstdint>
#include <string_view>

// Checksum of the texts of an item, kept beside them, so that a store that was damaged is noticed before its contents
// reach a session.
class QTBStoreChecksum
{
public:
    void Add(std::string_view text);
    std::int64_t Get() const { return static_cast<std::int64_t>(m_Value); }

private:
    std::uint64_t m_Value = 0;
};

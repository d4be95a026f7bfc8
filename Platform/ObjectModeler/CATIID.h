#pragma once

#include <cstdint>
#include <string_view>

// Identifier of an interface, made from the interface's name.
class IID
{
public:
    constexpr explicit IID(std::string_view interfaceName) : m_Value(Hash(interfaceName)) {}

    constexpr std::uint64_t GetValue() const { return m_Value; }
    friend constexpr bool operator==(const IID&, const IID&) = default;

private:
    // FNV-1a; the dictionary refuses two interfaces with the same value.
    static constexpr std::uint64_t Hash(std::string_view text)
    {
        std::uint64_t hash = 0xCBF29CE484222325U;
        for (const char c : text) {
            hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
        }
        return hash;
    }

    std::uint64_t m_Value;
};

#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

// Text of a name that programs give each other: of commands, workshops, editors, formats. Plain characters; what a user
// reads is a CATUnicodeString.
class CATString
{
public:
    CATString() = default;
    // A null pointer gives the empty string.
    CATString(const char* text) : m_Text(text != nullptr ? text : "") {}

    // NUL-terminated, valid until the string is written to or destroyed.
    const char* ConvertToChar() const { return m_Text.c_str(); }
    std::string_view View() const { return m_Text; }
    std::size_t GetLength() const { return m_Text.size(); }
    bool IsEmpty() const { return m_Text.empty(); }

    CATString& operator+=(const CATString& tail)
    {
        m_Text += tail.m_Text;
        return *this;
    }
    friend CATString operator+(CATString a, const CATString& b) { return a += b; }

    friend bool operator==(const CATString&, const CATString&) = default;
    friend auto operator<=>(const CATString&, const CATString&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const CATString& text) { return stream << text.m_Text; }

private:
    std::string m_Text;
};

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

#include "PlatformExport.h"

// Text, UTF-8 inside, implicitly shared: a copy is O(1) and the first write detaches it.
// Every length and position of the interface counts characters (code points), never bytes.
// Text that comes in through a char pointer or a view is repaired: each invalid sequence becomes
// U+FFFD, so that a string always holds valid UTF-8.
class PLATFORM_API CATUnicodeString
{
public:
    CATUnicodeString() noexcept = default;
    // A null pointer gives the empty string.
    CATUnicodeString(const char* text);
    explicit CATUnicodeString(std::string_view text);
    CATUnicodeString(const CATUnicodeString& other) noexcept : m_pRep(other.m_pRep)
    {
        if (m_pRep != nullptr) {
            ++m_pRep->references;
        }
    }
    CATUnicodeString(CATUnicodeString&& other) noexcept : m_pRep(std::exchange(other.m_pRep, nullptr)) {}
    ~CATUnicodeString()
    {
        if (m_pRep != nullptr && --m_pRep->references == 0) {
            Free(m_pRep);
        }
    }

    CATUnicodeString& operator=(CATUnicodeString other) noexcept
    {
        std::swap(m_pRep, other.m_pRep);
        return *this;
    }

    // Takes text that is known to be valid UTF-8 (it came through a border that checked it).
    static CATUnicodeString FromValidUtf8(std::string_view text);

    // Replaces the text by the decimal form of the number.
    void BuildFromNum(int number);

    int GetLengthInChar() const;
    std::size_t GetLengthInByte() const { return View().size(); }
    bool IsEmpty() const { return m_pRep == nullptr; }

    // NUL-terminated UTF-8, valid until the string is written to or destroyed.
    const char* ConvertToChar() const;
    std::string_view View() const
    {
        return m_pRep != nullptr ? std::string_view(m_pRep->Text(), m_pRep->bytes) : std::string_view("");
    }

    // Position of the first occurrence of sub at or behind startPos, -1 when there is none.
    int SearchSubString(const CATUnicodeString& sub, int startPos = 0) const;

    // length characters from position startPos on; what lies outside the text is left out.
    CATUnicodeString SubString(int startPos, int length) const;

    void Append(const CATUnicodeString& tail);
    CATUnicodeString& operator+=(const CATUnicodeString& tail);
    CATUnicodeString& operator+=(const char* tail);

    // Makes room for a text of that many bytes, so that appending up to it does not allocate.
    void Reserve(std::size_t bytes);

    friend bool operator==(const CATUnicodeString& a, const CATUnicodeString& b)
    {
        return a.m_pRep == b.m_pRep || a.View() == b.View();
    }
    friend bool operator==(const CATUnicodeString& a, const char* b) { return a.View() == std::string_view(b); }
    friend auto operator<=>(const CATUnicodeString& a, const CATUnicodeString& b) { return a.View() <=> b.View(); }

    friend CATUnicodeString operator+(CATUnicodeString a, const CATUnicodeString& b)
    {
        a += b;
        return a;
    }
    friend CATUnicodeString operator+(CATUnicodeString a, const char* b)
    {
        a += b;
        return a;
    }
    friend CATUnicodeString operator+(const char* a, const CATUnicodeString& b) { return CATUnicodeString(a) + b; }

private:
    // What copies share; the text follows it in memory, with a NUL behind it.
    struct Rep
    {
        std::uint32_t references;
        std::uint32_t bytes;
        std::uint32_t capacity;
        mutable int characters;

        char* Text() { return reinterpret_cast<char*>(this + 1); }
        const char* Text() const { return reinterpret_cast<const char*>(this + 1); }
        void SetSize(std::size_t size);

        static Rep* Create(std::size_t capacity);
        static Rep* Create(std::string_view text, std::size_t capacity);
    };

    static void Free(Rep* pRep) noexcept;
    explicit CATUnicodeString(Rep* pRep) noexcept : m_pRep(pRep) {}
    void AppendValidBytes(std::string_view bytes);

    Rep* m_pRep = nullptr;
};

PLATFORM_API std::ostream& operator<<(std::ostream& stream, const CATUnicodeString& text);

template <>
struct std::hash<CATUnicodeString>
{
    std::size_t operator()(const CATUnicodeString& text) const noexcept
    {
        return std::hash<std::string_view>()(text.View());
    }
};

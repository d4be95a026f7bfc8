#include "CATUnicodeString.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <iterator>
#include <limits>
#include <new>
#include <ostream>
#include <stdexcept>

#include <utf8.h>

namespace {

constexpr int UNKNOWN_LENGTH = -1;

bool IsContinuationByte(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

int CountCharacters(std::string_view text)
{
    return static_cast<int>(
        std::count_if(text.begin(), text.end(), [](char byte) { return !IsContinuationByte(byte); }));
}

// Byte offset of the character at that position, the size of the text when it is behind the end.
std::size_t OffsetOfCharacter(std::string_view text, int position)
{
    std::size_t offset = 0;
    while (position > 0 && offset < text.size()) {
        ++offset;
        while (offset < text.size() && IsContinuationByte(text[offset])) {
            ++offset;
        }
        --position;
    }
    return offset;
}

} // namespace

CATUnicodeString::Rep* CATUnicodeString::Rep::Create(std::size_t capacity)
{
    if (capacity >= std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("CATUnicodeString: a text is limited to 4 GiB");
    }
    void* pMemory = ::operator new(sizeof(Rep) + capacity + 1);
    return ::new (pMemory) Rep{1, 0, static_cast<std::uint32_t>(capacity), UNKNOWN_LENGTH};
}

CATUnicodeString::Rep* CATUnicodeString::Rep::Create(std::string_view text, std::size_t capacity)
{
    Rep* pRep = Create(capacity);
    std::memcpy(pRep->Text(), text.data(), text.size());
    pRep->SetSize(text.size());
    return pRep;
}

void CATUnicodeString::Rep::SetSize(std::size_t size)
{
    bytes = static_cast<std::uint32_t>(size);
    characters = UNKNOWN_LENGTH;
    Text()[size] = '\0';
}

void CATUnicodeString::Free(Rep* pRep) noexcept
{
    ::operator delete(pRep);
}

CATUnicodeString::CATUnicodeString(const char* text) : CATUnicodeString(std::string_view(text != nullptr ? text : ""))
{
}

CATUnicodeString::CATUnicodeString(std::string_view text)
{
    if (utf8::is_valid(text.begin(), text.end())) {
        AppendValidBytes(text);
        return;
    }
    std::string repaired;
    repaired.reserve(text.size());
    utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(repaired));
    AppendValidBytes(repaired);
}

CATUnicodeString CATUnicodeString::FromValidUtf8(std::string_view text)
{
    return text.empty() ? CATUnicodeString() : CATUnicodeString(Rep::Create(text, text.size()));
}

void CATUnicodeString::BuildFromNum(int number)
{
    char digits[std::numeric_limits<int>::digits10 + 3];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    *this = FromValidUtf8(std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

const char* CATUnicodeString::ConvertToChar() const
{
    return View().data();
}

int CATUnicodeString::GetLengthInChar() const
{
    if (m_pRep == nullptr) {
        return 0;
    }
    if (m_pRep->characters == UNKNOWN_LENGTH) {
        m_pRep->characters = CountCharacters(View());
    }
    return m_pRep->characters;
}

int CATUnicodeString::SearchSubString(const CATUnicodeString& sub, int startPos) const
{
    const std::string_view text = View();
    if (startPos < 0 || startPos > GetLengthInChar()) {
        return -1;
    }
    const std::size_t found = text.find(sub.View(), OffsetOfCharacter(text, startPos));
    return found == std::string_view::npos ? -1 : CountCharacters(text.substr(0, found));
}

CATUnicodeString CATUnicodeString::SubString(int startPos, int length) const
{
    if (length <= 0 || startPos < 0) {
        return CATUnicodeString();
    }
    const std::string_view tail = View().substr(OffsetOfCharacter(View(), startPos));
    return FromValidUtf8(tail.substr(0, OffsetOfCharacter(tail, length)));
}

void CATUnicodeString::Append(const CATUnicodeString& tail)
{
    *this += tail;
}

CATUnicodeString& CATUnicodeString::operator+=(const CATUnicodeString& tail)
{
    if (m_pRep == nullptr) {
        return *this = tail;
    }
    AppendValidBytes(tail.View());
    return *this;
}

CATUnicodeString& CATUnicodeString::operator+=(const char* tail)
{
    const std::string_view bytes(tail != nullptr ? tail : "");
    if (utf8::is_valid(bytes.begin(), bytes.end())) {
        AppendValidBytes(bytes);
        return *this;
    }
    return *this += CATUnicodeString(bytes);
}

void CATUnicodeString::Reserve(std::size_t bytes)
{
    // An empty string is the null representation; it gets its room with the first text.
    if (m_pRep == nullptr || (m_pRep->references == 1 && m_pRep->capacity >= bytes)) {
        return;
    }
    Rep* pLarger = Rep::Create(View(), std::max(bytes, GetLengthInByte()));
    *this = CATUnicodeString(pLarger);
}

void CATUnicodeString::AppendValidBytes(std::string_view bytes)
{
    if (bytes.empty()) {
        return;
    }
    const std::size_t oldSize = GetLengthInByte();
    const std::size_t newSize = oldSize + bytes.size();
    if (m_pRep == nullptr) {
        m_pRep = Rep::Create(bytes, newSize);
        return;
    }
    if (m_pRep->references == 1 && m_pRep->capacity >= newSize) {
        std::memmove(m_pRep->Text() + oldSize, bytes.data(), bytes.size());
        m_pRep->SetSize(newSize);
        return;
    }
    Rep* pLarger = Rep::Create(View(), std::max(newSize, oldSize + oldSize / 2));
    std::memcpy(pLarger->Text() + oldSize, bytes.data(), bytes.size());
    pLarger->SetSize(newSize);
    *this = CATUnicodeString(pLarger);
}

std::ostream& operator<<(std::ostream& stream, const CATUnicodeString& text)
{
    return stream << text.View();
}

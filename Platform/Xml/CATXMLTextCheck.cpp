#include "CATXMLTextCheck.h"

#include <algorithm>
#include <array>
#include <climits>
#include <iterator>
#include <memory>
#include <type_traits>
#include <vector>

#include <expat.h>
#include <utf8.h>

#include "CATXMLError.h"

namespace {

using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)>;

// What is wrong with a text, and where.
struct Finding
{
    std::size_t offset;
    CATUnicodeString problem;
    CATUnicodeString expected;
};

constexpr std::string_view NAME_OF_ENCODING = "encoding";
constexpr std::string_view WHITE_SPACE = " \t\r\n";
constexpr std::string_view UTF8_MARK = "\xEF\xBB\xBF";

// What the parser's callbacks work on.
struct Run
{
    Parser parser{nullptr, &XML_ParserFree};
    std::vector<std::string> openElements;
    bool hasRoot = false;
};

void XMLCALL RefuseDoctype(void* pRun, const XML_Char*, const XML_Char*, const XML_Char*, int)
{
    XML_StopParser(static_cast<Run*>(pRun)->parser.get(), XML_FALSE);
}

void XMLCALL EnterElement(void* pRun, const XML_Char* name, const XML_Char**)
{
    static_cast<Run*>(pRun)->openElements.emplace_back(name);
    static_cast<Run*>(pRun)->hasRoot = true;
}

void XMLCALL LeaveElement(void* pRun, const XML_Char*)
{
    static_cast<Run*>(pRun)->openElements.pop_back();
}

// Prepares a parser for text whose encoding is settled. External entities are never read: nobody tells it how.
bool Prepare(Run* pRun)
{
    pRun->parser.reset(XML_ParserCreate("UTF-8"));
    if (pRun->parser == nullptr) {
        return false;
    }
    XML_SetUserData(pRun->parser.get(), pRun);
    XML_SetStartDoctypeDeclHandler(pRun->parser.get(), &RefuseDoctype);
    return true;
}

bool Parse(XML_Parser parser, std::string_view text)
{
    constexpr std::size_t PIECE = INT_MAX / 2;
    do {
        const std::string_view piece = text.substr(0, PIECE);
        text.remove_prefix(piece.size());
        if (XML_Parse(parser, piece.data(), static_cast<int>(piece.size()), text.empty()) != XML_STATUS_OK) {
            return false;
        }
    } while (!text.empty());
    return true;
}

// Where in the document the text goes wrong.
struct Place
{
    // The innermost element that is open there; empty outside all elements.
    std::string openElement;
    // Whether that is in front of the root element or in its first tag.
    bool isBeforeRoot;
};

Place FindPlace(std::string_view text)
{
    Run run;
    if (Prepare(&run)) {
        XML_SetElementHandler(run.parser.get(), &EnterElement, &LeaveElement);
        Parse(run.parser.get(), text);
    }
    return {run.openElements.empty() ? std::string() : run.openElements.back(), !run.hasRoot};
}

// A short piece of the text from offset on, for messages: up to and with the first byte of ends, or in front of it.
CATUnicodeString Quote(std::string_view text, std::size_t offset, std::string_view ends, bool withEnd)
{
    constexpr std::size_t LONGEST = 40;
    const std::string_view tail = text.substr(std::min(offset, text.size()));
    const std::size_t end = tail.find_first_of(ends, 1);
    const std::size_t length = end == std::string_view::npos ? tail.size() : end + (withEnd ? 1 : 0);
    CATUnicodeString quote(tail.substr(0, std::min(length, LONGEST)));
    if (length > LONGEST) {
        quote += "...";
    }
    return quote;
}

CATUnicodeString Hexadecimal(unsigned int value, int digits)
{
    constexpr const char* DIGITS = "0123456789ABCDEF";
    std::string text;
    for (int i = digits - 1; i >= 0; --i) {
        text.push_back(DIGITS[(value >> (4U * static_cast<unsigned int>(i))) & 0xFU]);
    }
    return CATUnicodeString(std::string_view(text));
}

constexpr const char* TEXT_BEHIND_ROOT = "text behind the root element";
constexpr const char* END_OF_DOCUMENT = "the end of the document";

// Whether the offset lies behind a '<' that no '>' closes.
bool IsInTag(std::string_view text, std::size_t offset)
{
    const std::size_t mark = text.substr(0, offset).find_last_of("<>");
    return mark != std::string_view::npos && text[mark] == '<';
}

std::size_t StartOfWord(std::string_view text, std::size_t offset)
{
    const std::size_t end = text.substr(0, offset).find_last_of(" \t\r\n>");
    return end != std::string_view::npos ? end + 1 : 0;
}

// The '&' of a reference that is broken off at the offset; npos when there is none.
std::size_t FindBrokenReference(std::string_view text, std::size_t offset)
{
    const std::size_t start = text.rfind('&', offset);
    const std::size_t end = start != std::string_view::npos ? text.find_first_of(" \t\r\n<>;\"'", start) : start;
    return end != std::string_view::npos && end < offset ? std::string_view::npos : start;
}

bool IsBehindDashes(std::string_view text, std::size_t offset)
{
    constexpr std::string_view START = "<!--";
    const std::size_t dashes = text.substr(0, offset).rfind("--");
    const std::size_t start = text.substr(0, offset).rfind(START);
    return dashes != std::string_view::npos && dashes + 2 == offset && start != std::string_view::npos &&
           start + START.size() <= dashes && text.substr(start, offset - start).find("-->") == std::string_view::npos;
}

Finding ExplainTextInFront(std::string_view text, std::size_t offset)
{
    return {offset, "\"" + Quote(text, offset, " \t\r\n<>", false) + "\" in front of the root element",
            "the root element"};
}

// The reference that no XML text knows without a declaration. In an attribute the parser only tells the tag.
std::size_t FindUnknownReference(std::string_view text, std::size_t offset)
{
    for (std::size_t at = text.find('&', offset); at != std::string_view::npos; at = text.find('&', at + 1)) {
        const std::string_view name = text.substr(at + 1, std::min(text.find(';', at), text.size()) - at - 1);
        const bool isKnown = name.substr(0, 1) == "#" || name == "amp" || name == "lt" || name == "gt" ||
                             name == "quot" || name == "apos";
        if (!isKnown) {
            return at;
        }
    }
    return offset;
}

// What is wrong where no token of XML can be read.
Finding ExplainInvalidToken(std::string_view text, std::size_t offset)
{
    if (offset >= text.size()) {
        return {text.size(), "the text ends here", "the rest of a document"};
    }
    const auto byte = static_cast<unsigned char>(text[offset]);
    if (byte == 0) {
        return {offset, "a NUL character", "text without characters that XML cannot carry"};
    }
    if (byte < 0x20 && WHITE_SPACE.find(text[offset]) == std::string_view::npos) {
        return {offset, "the control character U+" + Hexadecimal(byte, 4),
                "text without characters that XML cannot carry"};
    }
    if (byte >= 0x80) {
        auto next = text.begin() + static_cast<std::ptrdiff_t>(offset);
        try {
            const auto character = static_cast<unsigned int>(utf8::next(next, text.end()));
            if (character == 0xFFFE || character == 0xFFFF) {
                return {offset, "the character U+" + Hexadecimal(character, 4),
                        "text without characters that XML cannot carry"};
            }
        } catch (const utf8::exception&) {
            return {offset, "the byte 0x" + Hexadecimal(byte, 2) + ", which is no UTF-8 here", "text in UTF-8"};
        }
    }
    const Place place = FindPlace(text);
    const bool isTag = IsInTag(text, offset);
    if (place.isBeforeRoot && !isTag) {
        return ExplainTextInFront(text, StartOfWord(text, offset));
    }
    if (text.substr(0, offset + 1).substr(offset > 0 ? offset - 1 : 0) == "</") {
        return {offset - 1, "the tag \"" + Quote(text, offset - 1, ">", true) + "\" closes no element",
                "the end of the document"};
    }
    if (place.openElement.empty() && !place.isBeforeRoot && !isTag) {
        return {offset, TEXT_BEHIND_ROOT, END_OF_DOCUMENT};
    }
    if (const std::size_t start = FindBrokenReference(text, offset); start != std::string_view::npos) {
        return {start, "an '&' that begins no reference", "\"&amp;\" for the character '&'"};
    }
    if (byte == '<' || (offset > 0 && text[offset - 1] == '<')) {
        return {byte == '<' ? offset : offset - 1, "a '<' that begins no tag here", "\"&lt;\" for the character '<'"};
    }
    if (IsBehindDashes(text, offset)) {
        return {offset - 2, "\"--\" inside a comment", "a comment without \"--\""};
    }
    const std::size_t from = offset >= 2 ? offset - 2 : 0;
    if (const std::size_t end = text.substr(from, 5).find("]]>"); end != std::string_view::npos) {
        return {from + end, "\"]]>\" outside of a CDATA section", "\"]]&gt;\""};
    }
    return {offset,
            "the character '" + CATUnicodeString(text.substr(offset, 4)).SubString(0, 1) + "' may not stand here",
            "well-formed markup"};
}

Finding Explain(XML_Error code, std::string_view text, std::size_t offset)
{
    switch (code) {
    case XML_ERROR_ABORTED:
        return {std::min(text.rfind("<!DOCTYPE", offset), offset), "a document type declaration",
                "a document without one"};
    case XML_ERROR_INVALID_TOKEN:
        return ExplainInvalidToken(text, offset);
    case XML_ERROR_NO_ELEMENTS: {
        const CATUnicodeString usOpen{std::string_view(FindPlace(text).openElement)};
        if (usOpen.IsEmpty()) {
            return {offset, "the text ends without an element", "one root element"};
        }
        return {offset, "the text ends inside the element \"" + usOpen + "\"", "\"</" + usOpen + ">\""};
    }
    case XML_ERROR_TAG_MISMATCH: {
        // The parser tells the name in the tag.
        const std::size_t tag = text.rfind("</", offset);
        const CATUnicodeString usOpen{std::string_view(FindPlace(text).openElement)};
        return {tag, "the tag \"" + Quote(text, tag, ">", true) + "\" does not close the element \"" + usOpen + "\"",
                "\"</" + usOpen + ">\""};
    }
    case XML_ERROR_DUPLICATE_ATTRIBUTE:
        return {offset, "the attribute \"" + Quote(text, offset, " \t\r\n=", false) + "\" stands twice in one tag",
                "each attribute once"};
    case XML_ERROR_JUNK_AFTER_DOC_ELEMENT:
        return {offset, text.substr(offset, 1) == "<" ? "a second root element" : TEXT_BEHIND_ROOT, END_OF_DOCUMENT};
    case XML_ERROR_SYNTAX:
        return ExplainTextInFront(text, offset);
    case XML_ERROR_UNDEFINED_ENTITY: {
        const std::size_t reference = FindUnknownReference(text, offset);
        return {reference, "the unknown reference \"" + Quote(text, reference, ";", true) + "\"",
                "\"&amp;\", \"&lt;\", \"&gt;\", \"&quot;\", \"&apos;\" or the number of a character"};
    }
    case XML_ERROR_BAD_CHAR_REF:
        return {offset, "the reference \"" + Quote(text, offset, ";", true) + "\" to a character that XML cannot carry",
                "the number of a character that XML can carry"};
    case XML_ERROR_MISPLACED_XML_PI:
        return {offset, "an XML declaration that is not at the very beginning", "one at the very beginning or none"};
    case XML_ERROR_XML_DECL:
        return {offset, "a malformed XML declaration", R"(<?xml version="1.0" encoding="UTF-8"?>)"};
    case XML_ERROR_UNCLOSED_TOKEN:
        return {offset, "markup that has no end", "the end of the tag, comment or instruction that begins here"};
    case XML_ERROR_UNCLOSED_CDATA_SECTION:
        return {offset, "a CDATA section that has no end", "\"]]>\""};
    case XML_ERROR_PARTIAL_CHAR:
        return {offset, "the text ends inside a character", "text in UTF-8"};
    default:
        return {offset, XML_ErrorString(code), "well-formed XML"};
    }
}

struct Position
{
    int line;
    int column;
};

Position PositionOf(std::string_view text, std::size_t offset)
{
    Position position{1, 1};
    const std::size_t start = text.substr(0, UTF8_MARK.size()) == UTF8_MARK ? UTF8_MARK.size() : 0;
    for (std::size_t i = start; i < std::min(offset, text.size()); ++i) {
        const bool isLineEnd = text[i] == '\n' || (text[i] == '\r' && text.substr(i + 1, 1) != "\n");
        if (isLineEnd) {
            ++position.line;
            position.column = 1;
        } else if ((static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U) {
            ++position.column;
        }
    }
    return position;
}

// The encoding that the text's declaration names, in lower case; empty when it names none. *pOffset is where the name
// stands.
std::string FindDeclaredEncoding(std::string_view text, std::size_t* pOffset)
{
    const std::size_t end = text.substr(0, 5) == "<?xml" ? text.find("?>") : std::string_view::npos;
    if (end == std::string_view::npos) {
        return std::string();
    }
    const std::string_view declaration = text.substr(0, end);
    std::size_t at = declaration.find(NAME_OF_ENCODING);
    if (at == std::string_view::npos) {
        return std::string();
    }
    at = declaration.find_first_of("\"'", at);
    const std::size_t close = at != std::string_view::npos ? declaration.find(declaration[at], at + 1) : at;
    if (close == std::string_view::npos) {
        return std::string();
    }
    *pOffset = at + 1;
    std::string name(declaration.substr(at + 1, close - at - 1));
    std::transform(name.begin(), name.end(), name.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    });
    return name;
}

bool IsOneOf(const std::string& name, std::initializer_list<std::string_view> names)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

// Appends the text of 16-bit units; the offset of the first unit that is none in *pOffset and false otherwise.
bool AppendUtf16(std::string_view bytes, bool isLittleEndian, std::string* pText)
{
    const auto unitAt = [bytes, isLittleEndian](std::size_t i) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        return static_cast<std::uint32_t>(isLittleEndian ? second * 256U + first : first * 256U + second);
    };
    pText->reserve(bytes.size() / 2 + bytes.size() / 4);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        std::uint32_t character = unitAt(i);
        if (character >= 0xD800 && character < 0xE000) {
            const bool hasLow = character < 0xDC00 && i + 3 < bytes.size() && (unitAt(i + 2) & 0xFC00U) == 0xDC00U;
            if (!hasLow) {
                return false;
            }
            i += 2;
            character = 0x10000U + ((character - 0xD800U) << 10U) + (unitAt(i) - 0xDC00U);
        }
        utf8::unchecked::append(character, std::back_inserter(*pText));
    }
    return bytes.size() % 2 == 0;
}

std::string FromLatin1(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes) {
        utf8::unchecked::append(static_cast<unsigned char>(byte), std::back_inserter(text));
    }
    return text;
}

bool StartsWith(std::string_view bytes, std::string_view start)
{
    return bytes.substr(0, start.size()) == start;
}

} // namespace

HRESULT CATXMLTextCheck::CheckText(std::string_view utf8Xml, const CATUnicodeString& usSourceName)
{
    Run run;
    if (!Prepare(&run)) {
        return E_OUTOFMEMORY;
    }
    if (Parse(run.parser.get(), utf8Xml)) {
        return S_OK;
    }
    const XML_Error code = XML_GetErrorCode(run.parser.get());
    if (code == XML_ERROR_NO_MEMORY) {
        return E_OUTOFMEMORY;
    }
    const XML_Index index = XML_GetCurrentByteIndex(run.parser.get());
    const std::size_t offset = std::min(static_cast<std::size_t>(std::max<XML_Index>(index, 0)), utf8Xml.size());
    const Finding finding = Explain(code, utf8Xml, offset);
    return Refuse(utf8Xml, finding.offset, usSourceName, finding.problem, finding.expected);
}

HRESULT CATXMLTextCheck::DecodeBytes(const CATUnicodeString& usSourceName, std::string* pBytes)
{
    using namespace std::string_view_literals;
    constexpr const char* KNOWN = "UTF-8, UTF-16 or ISO-8859-1";
    const std::string_view bytes(*pBytes);
    if (StartsWith(bytes, "\xFF\xFE\0\0"sv) || StartsWith(bytes, "\0\0"sv) || StartsWith(bytes, "<\0\0\0"sv)) {
        return Refuse(bytes, 0, usSourceName, "text in UTF-32", KNOWN);
    }
    const bool isLittleEndian = StartsWith(bytes, "\xFF\xFE"sv) || StartsWith(bytes, "<\0"sv);
    const bool isUtf16 = isLittleEndian || StartsWith(bytes, "\xFE\xFF"sv) || StartsWith(bytes, "\0<"sv);
    const bool hasUtf8Mark = StartsWith(bytes, UTF8_MARK);
    if (isUtf16) {
        std::string text;
        const bool isValid =
            AppendUtf16(bytes.substr(bytes[0] == '<' || bytes[0] == '\0' ? 0 : 2), isLittleEndian, &text);
        if (!isValid) {
            return Refuse(text, text.size(), usSourceName, "bytes that are no UTF-16", "text in UTF-16");
        }
        pBytes->swap(text);
    } else if (hasUtf8Mark) {
        pBytes->erase(0, UTF8_MARK.size());
    }

    std::size_t offset = 0;
    const std::string declared = FindDeclaredEncoding(*pBytes, &offset);
    const bool isDeclaredUtf16 = IsOneOf(declared, {"utf-16", "utf-16le", "utf-16be"});
    const bool isLatin1 = IsOneOf(declared, {"iso-8859-1", "latin1"});
    const bool isAscii = IsOneOf(declared, {"us-ascii", "ascii"});
    const bool isKnown =
        declared.empty() || isDeclaredUtf16 || isLatin1 || isAscii || IsOneOf(declared, {"utf-8", "utf8"});
    if (!isKnown) {
        return Refuse(*pBytes, offset, usSourceName,
                      "the unknown encoding \"" + CATUnicodeString(std::string_view(declared)) + "\"", KNOWN);
    }
    const bool contradicts =
        isUtf16 ? !declared.empty() && !isDeclaredUtf16 : isDeclaredUtf16 || (hasUtf8Mark && isLatin1);
    if (contradicts) {
        return Refuse(*pBytes, offset, usSourceName,
                      "the encoding \"" + CATUnicodeString(std::string_view(declared)) + "\" in text that is " +
                          (isUtf16 ? "UTF-16" : "not"),
                      "the encoding that the text has");
    }
    if (isLatin1) {
        *pBytes = FromLatin1(*pBytes);
    }
    if (isAscii) {
        const auto isNoAscii = [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; };
        const auto at = std::find_if(pBytes->begin(), pBytes->end(), isNoAscii);
        if (at != pBytes->end()) {
            return Refuse(*pBytes, static_cast<std::size_t>(at - pBytes->begin()), usSourceName,
                          "the byte 0x" + Hexadecimal(static_cast<unsigned char>(*at), 2) + ", which is no US-ASCII",
                          "text in US-ASCII");
        }
    }
    return S_OK;
}

HRESULT CATXMLTextCheck::Refuse(std::string_view utf8Xml, std::size_t offset, const CATUnicodeString& usSourceName,
                                const CATUnicodeString& usProblem, const CATUnicodeString& usExpected)
{
    const Position position = PositionOf(utf8Xml, offset);
    auto* pError = new CATXMLError(usSourceName, position.line, position.column, usProblem, usExpected);
    return CATError::GetReturn(2, pError, nullptr, __FILE__, __LINE__);
}

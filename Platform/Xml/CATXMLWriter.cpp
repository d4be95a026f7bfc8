#include "CATXMLWriter.h"

#include <algorithm>
#include <array>

#include <pugixml.hpp>

#include "CATXMLTextCheck.h"

namespace {

constexpr std::string_view REPLACEMENT = "\xEF\xBF\xBD";

// What a byte of a text means to the writer.
enum class ByteKind : unsigned char
{
    Plain,
    // Written as a reference everywhere, and in attribute values, where white space would not survive reading.
    Reference,
    ReferenceInValue,
    // Never carried by XML, and the lead byte of characters of which two are not.
    Control,
    PerhapsNoCharacter
};

constexpr std::array<ByteKind, 256> MakeByteKinds()
{
    std::array<ByteKind, 256> kinds{};
    for (std::size_t byte = 0; byte < 0x20; ++byte) {
        kinds[byte] = ByteKind::Control;
    }
    for (const char byte : {'&', '<', '>', '\r'}) {
        kinds[static_cast<unsigned char>(byte)] = ByteKind::Reference;
    }
    for (const char byte : {'"', '\t', '\n'}) {
        kinds[static_cast<unsigned char>(byte)] = ByteKind::ReferenceInValue;
    }
    kinds[0xEF] = ByteKind::PerhapsNoCharacter;
    return kinds;
}

constexpr std::array<ByteKind, 256> BYTE_KINDS = MakeByteKinds();

ByteKind KindOf(char byte)
{
    return BYTE_KINDS[static_cast<unsigned char>(byte)];
}

std::string_view ReferenceTo(char byte)
{
    switch (byte) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\t':
        return "&#9;";
    case '\n':
        return "&#10;";
    default:
        return "&#13;";
    }
}

// U+FFFE or U+FFFF.
bool IsNoCharacter(std::string_view text)
{
    return text.substr(0, 3) == "\xEF\xBF\xBE" || text.substr(0, 3) == "\xEF\xBF\xBF";
}

void Append(std::string_view text, bool isValue, std::string* pXml)
{
    std::size_t plainFrom = 0;
    const auto appendPlainUpTo = [&](std::size_t end, std::size_t next) {
        pXml->append(text.substr(plainFrom, end - plainFrom));
        plainFrom = next;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        switch (KindOf(text[i])) {
        case ByteKind::Plain:
            break;
        case ByteKind::ReferenceInValue:
            if (!isValue) {
                break;
            }
            [[fallthrough]];
        case ByteKind::Reference:
            appendPlainUpTo(i, i + 1);
            pXml->append(ReferenceTo(text[i]));
            break;
        case ByteKind::Control:
            appendPlainUpTo(i, i + 1);
            pXml->append(REPLACEMENT);
            break;
        case ByteKind::PerhapsNoCharacter:
            if (IsNoCharacter(text.substr(i))) {
                appendPlainUpTo(i, i + 3);
                pXml->append(REPLACEMENT);
                i += 2;
            }
            break;
        }
    }
    appendPlainUpTo(text.size(), text.size());
}

void AppendStartTag(const pugi::xml_node& element, std::string* pXml)
{
    pXml->push_back('<');
    pXml->append(element.name());
    for (const pugi::xml_attribute attribute : element.attributes()) {
        CATXMLWriter::AppendAttribute(attribute.name(), attribute.value(), pXml);
    }
    pXml->push_back('>');
    CATXMLWriter::AppendText(element.value(), pXml);
}

void AppendEndTag(const pugi::xml_node& element, std::string* pXml)
{
    pXml->append("</").append(element.name()).push_back('>');
}

bool IsNameStart(char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_' || byte == ':' ||
           static_cast<unsigned char>(byte) >= 0x80;
}

bool IsNamePart(char byte)
{
    return IsNameStart(byte) || (byte >= '0' && byte <= '9') || byte == '-' || byte == '.';
}

} // namespace

void CATXMLWriter::AppendText(std::string_view text, std::string* pXml)
{
    Append(text, false, pXml);
}

void CATXMLWriter::AppendAttribute(std::string_view name, std::string_view value, std::string* pXml)
{
    pXml->push_back(' ');
    pXml->append(name).append("=\"");
    Append(value, true, pXml);
    pXml->push_back('"');
}

void CATXMLWriter::AppendElement(const CATDOMElementView& element, std::string* pXml)
{
    const pugi::xml_node root(element.GetNode());
    if (!root) {
        return;
    }
    AppendStartTag(root, pXml);
    pugi::xml_node node = root;
    for (;;) {
        if (const pugi::xml_node child = node.first_child()) {
            node = child;
        } else {
            // Up to the next node that follows, closing elements on the way.
            for (;;) {
                if (node.type() == pugi::node_element) {
                    AppendEndTag(node, pXml);
                }
                if (node == root) {
                    return;
                }
                if (const pugi::xml_node next = node.next_sibling()) {
                    node = next;
                    break;
                }
                node = node.parent();
            }
        }
        if (node.type() == pugi::node_element) {
            AppendStartTag(node, pXml);
        } else {
            AppendText(node.value(), pXml);
        }
    }
}

bool CATXMLWriter::IsName(std::string_view name)
{
    if (name.empty() || !IsNameStart(name.front()) || !std::all_of(name.begin(), name.end(), IsNamePart)) {
        return false;
    }
    const bool isAscii =
        std::none_of(name.begin(), name.end(), [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
    // Which other characters are letters, the reader decides.
    return isAscii || SUCCEEDED(CATXMLTextCheck::CheckText("<" + std::string(name) + "/>", "XML name"));
}

CATUnicodeString CATXMLWriter::MakeCarriable(const CATUnicodeString& usText)
{
    const std::string_view text = usText.View();
    std::string carriable;
    std::size_t plainFrom = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const ByteKind kind = KindOf(text[i]);
        const bool isNoCharacter = kind == ByteKind::PerhapsNoCharacter && IsNoCharacter(text.substr(i));
        if (kind == ByteKind::Control || isNoCharacter) {
            carriable.append(text.substr(plainFrom, i - plainFrom)).append(REPLACEMENT);
            plainFrom = i + (isNoCharacter ? 3 : 1);
            i = plainFrom - 1;
        }
    }
    if (plainFrom == 0) {
        return usText;
    }
    return CATUnicodeString::FromValidUtf8(carriable.append(text.substr(plainFrom)));
}

#include "CATXMLStrictElement.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <system_error>

#include <pugixml.hpp>

namespace {

using Names = std::initializer_list<std::string_view>;

bool IsAmong(Names names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

// "a", "b" or "c", each between open and close.
CATUnicodeString OneOf(Names names, const char* open, const char* close, const char* none)
{
    std::string text;
    std::size_t left = names.size();
    for (const std::string_view name : names) {
        text.append(open).append(name).append(close);
        --left;
        text.append(left > 1 ? ", " : left == 1 ? " or " : "");
    }
    return names.size() == 0 ? CATUnicodeString(none) : CATUnicodeString(std::string_view(text));
}

} // namespace

void CATXMLStrictElement::CheckForm(Names attributes, Names children, bool isTextAllowed) const
{
    for (CATDOMAttributeView attribute = m_View.GetFirstAttribute(); attribute; attribute = attribute.GetNext()) {
        if (!IsAmong(attributes, attribute.GetName())) {
            throw CATXMLRefusal{GetOffset(attribute),
                                "the attribute " + Quote(attribute.GetName()) + " of the element " +
                                    Quote(GetTagName()),
                                OneOf(attributes, "\"", "\"", "no attribute")};
        }
    }
    for (CATXMLStrictElement child = GetFirstChild(); child; child = child.GetNextSibling()) {
        if (!IsAmong(children, child.GetTagName())) {
            child.Refuse("the element " + Quote(child.GetTagName()) + " in the element " + Quote(GetTagName()),
                         OneOf(children, "<", ">", "no element"));
        }
    }
    if (!isTextAllowed && m_View.HasNonBlankText()) {
        Refuse("text in the element " + Quote(GetTagName()), "attributes and elements only");
    }
}

CATUnicodeString CATXMLStrictElement::GetText(const char* attribute) const
{
    return CATUnicodeString::FromValidUtf8(m_View.FindAttribute(attribute).GetValue());
}

CATUnicodeString CATXMLStrictElement::GetName(const char* attribute) const
{
    CATUnicodeString name = GetText(attribute);
    if (!Has(attribute)) {
        Refuse("the element " + Quote(GetTagName()) + " has no attribute " + Quote(attribute),
               CATUnicodeString(attribute) + "=\"...\"");
    }
    if (name.IsEmpty()) {
        RefuseValue(attribute, "a text that is not empty");
    }
    return name;
}

bool CATXMLStrictElement::GetFlag(const char* attribute, bool ifMissing) const
{
    const CATDOMAttributeView view = m_View.FindAttribute(attribute);
    if (!view) {
        return ifMissing;
    }
    const bool isTrue = view.GetValue() == "true";
    if (!isTrue && view.GetValue() != "false") {
        RefuseValue(attribute, R"("true" or "false")");
    }
    return isTrue;
}

int CATXMLStrictElement::GetInteger(const char* attribute, int ifMissing, int least, int greatest) const
{
    const CATDOMAttributeView view = m_View.FindAttribute(attribute);
    if (!view) {
        return ifMissing;
    }
    const std::string_view text = view.GetValue();
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < least || number > greatest) {
        CATUnicodeString usLeast;
        CATUnicodeString usGreatest;
        usLeast.BuildFromNum(least);
        usGreatest.BuildFromNum(greatest);
        RefuseValue(attribute, "a whole number from " + usLeast + " to " + usGreatest);
    }
    return number;
}

CATUnicodeString CATXMLStrictElement::Quote(std::string_view text)
{
    constexpr int LONGEST = 60;
    const CATUnicodeString usText = CATUnicodeString::FromValidUtf8(text);
    const bool isLong = usText.GetLengthInChar() > LONGEST;
    return "\"" + (isLong ? usText.SubString(0, LONGEST) + "..." : usText) + "\"";
}

void CATXMLStrictElement::Refuse(const CATUnicodeString& problem, const CATUnicodeString& expected) const
{
    throw CATXMLRefusal{GetOffset(), problem, expected};
}

void CATXMLStrictElement::RefuseValue(const char* attribute, const CATUnicodeString& expected) const
{
    const CATDOMAttributeView view = m_View.FindAttribute(attribute);
    throw CATXMLRefusal{GetOffset(view),
                        "the value " + Quote(view.GetValue()) + " of the attribute " + Quote(attribute), expected};
}

void CATXMLStrictElement::RefuseSecond(bool isSecond) const
{
    if (isSecond) {
        Refuse("a second element " + Quote(GetTagName()), "one at most");
    }
}

void CATXMLStrictElement::RefuseSecondName(bool isSecond) const
{
    if (isSecond) {
        RefuseValue("name", "a name that no other <" + CATUnicodeString::FromValidUtf8(GetTagName()) + "> here has");
    }
}

std::size_t CATXMLStrictElement::GetOffset() const
{
    // The parser knows where a tag's name begins, one byte behind the tag.
    const std::ptrdiff_t offset = pugi::xml_node(m_View.GetNode()).offset_debug();
    return offset > 0 ? static_cast<std::size_t>(offset) - 1 : 0;
}

std::size_t CATXMLStrictElement::GetOffset(const CATDOMAttributeView& attribute) const
{
    // The names of a tag stay in the parser's copy of the text where they were.
    const std::ptrdiff_t distance = attribute ? attribute.GetName().data() - GetTagName().data() : -1;
    return GetOffset() + static_cast<std::size_t>(distance + 1);
}

#include "CATXMLStrictElement.h"

#include <algorithm>
#include <string>

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

CATUnicodeString Quoted(std::string_view text)
{
    return "\"" + CATUnicodeString::FromValidUtf8(text) + "\"";
}

} // namespace

void CATXMLStrictElement::CheckForm(Names attributes, Names children, bool isTextAllowed) const
{
    for (CATDOMAttributeView attribute = m_View.GetFirstAttribute(); attribute; attribute = attribute.GetNext()) {
        if (!IsAmong(attributes, attribute.GetName())) {
            throw CATXMLRefusal{GetOffset(attribute),
                                "the attribute " + Quoted(attribute.GetName()) + " of the element " +
                                    Quoted(GetTagName()),
                                OneOf(attributes, "\"", "\"", "no attribute")};
        }
    }
    for (CATXMLStrictElement child = GetFirstChild(); child; child = child.GetNextSibling()) {
        if (!IsAmong(children, child.GetTagName())) {
            child.Refuse("the element " + Quoted(child.GetTagName()) + " in the element " + Quoted(GetTagName()),
                         OneOf(children, "<", ">", "no element"));
        }
    }
    if (!isTextAllowed && m_View.HasNonBlankText()) {
        Refuse("text in the element " + Quoted(GetTagName()), "attributes and elements only");
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
        Refuse("the element " + Quoted(GetTagName()) + " has no attribute " + Quoted(attribute),
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

void CATXMLStrictElement::Refuse(const CATUnicodeString& problem, const CATUnicodeString& expected) const
{
    throw CATXMLRefusal{GetOffset(), problem, expected};
}

void CATXMLStrictElement::RefuseValue(const char* attribute, const CATUnicodeString& expected) const
{
    const CATDOMAttributeView view = m_View.FindAttribute(attribute);
    throw CATXMLRefusal{GetOffset(view),
                        "the value " + Quoted(view.GetValue()) + " of the attribute " + Quoted(attribute), expected};
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

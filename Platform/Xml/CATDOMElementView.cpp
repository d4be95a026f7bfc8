#include "CATDOMElementView.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include <pugixml.hpp>

namespace {

bool IsAscii(std::string_view text)
{
    std::uint64_t bits = 0;
    std::size_t i = 0;
    for (; i + sizeof(bits) <= text.size(); i += sizeof(bits)) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + i, sizeof(word));
        bits |= word;
    }
    for (; i < text.size(); ++i) {
        bits |= static_cast<std::uint64_t>(static_cast<unsigned char>(text[i]) & 0x80U);
    }
    return (bits & 0x8080808080808080U) == 0;
}

// Text that was not checked may hold invalid UTF-8, which is repaired like all text that comes in.
CATUnicodeString MakeString(std::string_view text)
{
    return IsAscii(text) ? CATUnicodeString::FromValidUtf8(text) : CATUnicodeString(text);
}

bool IsBlank(std::string_view text)
{
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

pugi::xml_node ToElement(pugi::xml_node node)
{
    while (node && node.type() != pugi::node_element) {
        node = node.next_sibling();
    }
    return node;
}

// Calls visit with each run of text between the tags of the element: its own start and end tag and its child elements.
// A run without comments and CDATA sections in it is visited without a copy.
template <class Visit>
void ForEachRun(const pugi::xml_node& element, Visit visit)
{
    std::string_view run = element.value();
    std::string joined;
    for (pugi::xml_node child = element.first_child(); child; child = child.next_sibling()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            if (run.empty()) {
                run = child.value();
            } else {
                if (run.data() != joined.data()) {
                    joined.assign(run);
                }
                joined.append(child.value());
                run = joined;
            }
        } else if (child.type() == pugi::node_element) {
            visit(run);
            run = std::string_view();
        }
    }
    visit(run);
}

} // namespace

std::string_view CATDOMAttributeView::GetName() const
{
    return pugi::xml_attribute(m_pAttribute).name();
}

std::string_view CATDOMAttributeView::GetValue() const
{
    return pugi::xml_attribute(m_pAttribute).value();
}

CATDOMAttributeView CATDOMAttributeView::GetNext() const
{
    return CATDOMAttributeView(pugi::xml_attribute(m_pAttribute).next_attribute().internal_object());
}

std::string_view CATDOMElementView::GetTagName() const
{
    return pugi::xml_node(m_pNode).name();
}

bool CATDOMElementView::HasTagName(std::string_view tagName) const
{
    return tagName == pugi::xml_node(m_pNode).name();
}

CATDOMElementView CATDOMElementView::GetFirstChild() const
{
    return CATDOMElementView(ToElement(pugi::xml_node(m_pNode).first_child()).internal_object());
}

CATDOMElementView CATDOMElementView::GetNextSibling() const
{
    const pugi::xml_node next = ToElement(pugi::xml_node(m_pNode).next_sibling());
    // What hangs next to a removed element is not its sibling, and the holder of what was removed, whose name is no XML
    // name, is none of the document element.
    if (next && (*next.parent().name() == '#' || *next.name() == '#')) {
        return CATDOMElementView();
    }
    return CATDOMElementView(next.internal_object());
}

CATDOMElementView CATDOMElementView::GetNextBelow(const CATDOMElementView& root) const
{
    pugi::xml_node node(m_pNode);
    if (const pugi::xml_node child = ToElement(node.first_child())) {
        return CATDOMElementView(child.internal_object());
    }
    while (node.internal_object() != root.m_pNode) {
        if (const pugi::xml_node next = ToElement(node.next_sibling())) {
            return CATDOMElementView(next.internal_object());
        }
        node = node.parent();
    }
    return CATDOMElementView();
}

CATDOMAttributeView CATDOMElementView::GetFirstAttribute() const
{
    return CATDOMAttributeView(pugi::xml_node(m_pNode).first_attribute().internal_object());
}

CATDOMAttributeView CATDOMElementView::FindAttribute(const char* name) const
{
    return CATDOMAttributeView(pugi::xml_node(m_pNode).attribute(name).internal_object());
}

CATUnicodeString CATDOMElementView::GetText() const
{
    const pugi::xml_node node(m_pNode);
    if (!node.first_child()) {
        return MakeString(node.value());
    }
    const bool hasElements = static_cast<bool>(GetFirstChild());
    std::string text;
    ForEachRun(node, [&text, hasElements](std::string_view run) {
        if (!hasElements || !IsBlank(run)) {
            text.append(run);
        }
    });
    return MakeString(text);
}

bool CATDOMElementView::HasNonBlankText() const
{
    bool hasText = false;
    ForEachRun(pugi::xml_node(m_pNode), [&hasText](std::string_view run) { hasText = hasText || !IsBlank(run); });
    return hasText;
}

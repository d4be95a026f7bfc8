#include "CATDOMElementView.h"

#include <bit>
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

// A node of the parser is a pointer to its record, both ways without the call of a function that the parser makes of
// it.
static_assert(sizeof(pugi::xml_node) == sizeof(pugi::xml_node_struct*));

pugi::xml_node ToNode(pugi::xml_node_struct* pNode)
{
    return std::bit_cast<pugi::xml_node>(pNode);
}

pugi::xml_node_struct* ToRecord(const pugi::xml_node& node)
{
    return std::bit_cast<pugi::xml_node_struct*>(node);
}

pugi::xml_attribute ToAttribute(pugi::xml_attribute_struct* pAttribute)
{
    return std::bit_cast<pugi::xml_attribute>(pAttribute);
}

pugi::xml_attribute_struct* ToRecord(const pugi::xml_attribute& attribute)
{
    return std::bit_cast<pugi::xml_attribute_struct*>(attribute);
}

// The first element among the node and its next siblings. What hangs behind a comment is none of them (see
// CATDOMStore): no comment is read from a text.
pugi::xml_node_struct* ToElement(pugi::xml_node node)
{
    while (ToRecord(node) != nullptr) {
        const pugi::xml_node_type type = node.type();
        if (type == pugi::node_element) {
            return ToRecord(node);
        }
        if (type == pugi::node_comment) {
            return nullptr;
        }
        node = node.next_sibling();
    }
    return nullptr;
}

// Calls visit with each run of text between the tags of the element: its own start and end tag and its child elements.
// A run without comments and CDATA sections in it is visited without a copy.
template <class Visit>
void ForEachRun(const pugi::xml_node& element, Visit visit)
{
    std::string_view run = element.value();
    std::string joined;
    for (pugi::xml_node child = element.first_child(); ToRecord(child) != nullptr; child = child.next_sibling()) {
        const pugi::xml_node_type type = child.type();
        if (type == pugi::node_pcdata || type == pugi::node_cdata) {
            if (run.empty()) {
                run = child.value();
            } else {
                if (run.data() != joined.data()) {
                    joined.assign(run);
                }
                joined.append(child.value());
                run = joined;
            }
        } else if (type == pugi::node_element) {
            visit(run);
            run = std::string_view();
        }
    }
    visit(run);
}

} // namespace

std::string_view CATDOMAttributeView::GetName() const
{
    return ToAttribute(m_pAttribute).name();
}

std::string_view CATDOMAttributeView::GetValue() const
{
    return ToAttribute(m_pAttribute).value();
}

CATUnicodeString CATDOMAttributeView::GetText() const
{
    return MakeString(GetValue());
}

CATDOMAttributeView CATDOMAttributeView::GetNext() const
{
    return CATDOMAttributeView(ToRecord(ToAttribute(m_pAttribute).next_attribute()));
}

std::string_view CATDOMElementView::GetTagName() const
{
    return ToNode(m_pNode).name();
}

bool CATDOMElementView::HasTagName(std::string_view tagName) const
{
    // Most tags differ in their first character: the name's length is not asked for.
    const char* pName = ToNode(m_pNode).name();
    for (const char character : tagName) {
        if (*pName == '\0' || *pName != character) {
            return false;
        }
        ++pName;
    }
    return *pName == '\0';
}

CATDOMElementView CATDOMElementView::GetFirstChild() const
{
    return CATDOMElementView(ToElement(ToNode(m_pNode).first_child()));
}

CATDOMElementView CATDOMElementView::GetNextSibling() const
{
    return CATDOMElementView(ToElement(ToNode(m_pNode).next_sibling()));
}

CATDOMElementView CATDOMElementView::GetNextBelow(const CATDOMElementView& root) const
{
    pugi::xml_node node = ToNode(m_pNode);
    if (pugi::xml_node_struct* pChild = ToElement(node.first_child())) {
        return CATDOMElementView(pChild);
    }
    while (ToRecord(node) != root.m_pNode) {
        if (pugi::xml_node_struct* pNext = ToElement(node.next_sibling())) {
            return CATDOMElementView(pNext);
        }
        node = node.parent();
    }
    return CATDOMElementView();
}

CATDOMAttributeView CATDOMElementView::GetFirstAttribute() const
{
    return CATDOMAttributeView(ToRecord(ToNode(m_pNode).first_attribute()));
}

CATDOMAttributeView CATDOMElementView::FindAttribute(const char* name) const
{
    return CATDOMAttributeView(ToRecord(ToNode(m_pNode).attribute(name)));
}

CATUnicodeString CATDOMElementView::GetText() const
{
    const pugi::xml_node node = ToNode(m_pNode);
    if (ToRecord(node.first_child()) == nullptr) {
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
    ForEachRun(ToNode(m_pNode), [&hasText](std::string_view run) { hasText = hasText || !IsBlank(run); });
    return hasText;
}

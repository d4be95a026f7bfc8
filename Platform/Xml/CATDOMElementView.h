#pragma once

#include <string_view>

#include "CATUnicodeString.h"
#include "PlatformExport.h"

namespace pugi {
struct xml_attribute_struct;
struct xml_node_struct;
} // namespace pugi

// One XML attribute of an element that is being read (see CATDOMElementView).
class PLATFORM_API CATDOMAttributeView
{
public:
    CATDOMAttributeView() = default;

    explicit operator bool() const { return m_pAttribute != nullptr; }
    std::string_view GetName() const;
    std::string_view GetValue() const;
    // The value as a string of its own.
    CATUnicodeString GetText() const;
    CATDOMAttributeView GetNext() const;

private:
    friend class CATDOMElementView;
    explicit CATDOMAttributeView(pugi::xml_attribute_struct* pAttribute) : m_pAttribute(pAttribute) {}

    pugi::xml_attribute_struct* m_pAttribute = nullptr;
};

// Read-only view on an element and what is below it, for code that reads many elements once: no handle is made and
// nothing is counted. It is good while the caller holds a handle on the element that it started from
// (CATIDOMElement::GetView) and nobody changes the tree.
class PLATFORM_API CATDOMElementView
{
public:
    CATDOMElementView() = default;
    explicit CATDOMElementView(pugi::xml_node_struct* pNode) : m_pNode(pNode) {}

    explicit operator bool() const { return m_pNode != nullptr; }
    pugi::xml_node_struct* GetNode() const { return m_pNode; }

    std::string_view GetTagName() const;
    bool HasTagName(std::string_view tagName) const;

    // Child elements in document order; an empty view behind the last.
    CATDOMElementView GetFirstChild() const;
    CATDOMElementView GetNextSibling() const;
    // The next element in document order that lies below root, whatever its depth.
    CATDOMElementView GetNextBelow(const CATDOMElementView& root) const;

    CATDOMAttributeView GetFirstAttribute() const;
    CATDOMAttributeView FindAttribute(const char* name) const;

    // The element's own text, whole: comments and CDATA sections do not split it. In an element that has child
    // elements, runs of white space alone are layout and left out; elsewhere every blank counts.
    CATUnicodeString GetText() const;

    // Whether the element has text of its own other than white space.
    bool HasNonBlankText() const;

private:
    pugi::xml_node_struct* m_pNode = nullptr;
};

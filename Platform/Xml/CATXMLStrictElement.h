#pragma once

#include <cstddef>
#include <initializer_list>
#include <string_view>

#include "CATDOMElementView.h"
#include "CATUnicodeString.h"
#include "PlatformExport.h"

// What is wrong in an XML file whose form is checked while it is read, and where: a byte of its text. Raised inside a
// reader, which makes an error of it (CATXMLTextCheck::Refuse), never beyond.
struct CATXMLRefusal
{
    std::size_t offset;
    CATUnicodeString problem;
    CATUnicodeString expected;
};

// An element of an XML file, read strictly: what is missing, superfluous or not of its form raises a CATXMLRefusal.
class PLATFORM_API CATXMLStrictElement
{
public:
    CATXMLStrictElement() = default;
    explicit CATXMLStrictElement(const CATDOMElementView& view) : m_View(view) {}

    explicit operator bool() const { return static_cast<bool>(m_View); }
    bool Is(std::string_view tagName) const { return m_View.HasTagName(tagName); }
    std::string_view GetTagName() const { return m_View.GetTagName(); }
    CATXMLStrictElement GetFirstChild() const { return CATXMLStrictElement(m_View.GetFirstChild()); }
    CATXMLStrictElement GetNextSibling() const { return CATXMLStrictElement(m_View.GetNextSibling()); }

    template <class Visit>
    void ForEachChild(Visit visit) const
    {
        for (CATXMLStrictElement child = GetFirstChild(); child; child = child.GetNextSibling()) {
            visit(child);
        }
    }

    CATUnicodeString GetContent() const { return m_View.GetText(); }
    bool Has(const char* attribute) const { return static_cast<bool>(m_View.FindAttribute(attribute)); }

    // Refuses other attributes and child elements than these, and text unless it is allowed.
    void CheckForm(std::initializer_list<std::string_view> attributes, std::initializer_list<std::string_view> children,
                   bool isTextAllowed = false) const;

    // The value of an attribute. GetText gives the empty text for one that is missing, GetFlag and GetInteger their
    // default; GetName refuses one that is missing or empty.
    CATUnicodeString GetText(const char* attribute) const;
    CATUnicodeString GetName(const char* attribute) const;
    bool GetFlag(const char* attribute, bool ifMissing) const;
    int GetInteger(const char* attribute, int ifMissing, int least, int greatest) const;

    // A text in quotes for messages; a long one is cut.
    static CATUnicodeString Quote(std::string_view text);

    // Refuses the element, or the value of one of its attributes, which it has.
    [[noreturn]] void Refuse(const CATUnicodeString& problem, const CATUnicodeString& expected) const;
    [[noreturn]] void RefuseValue(const char* attribute, const CATUnicodeString& expected) const;
    // Refuses an element that may stand once, or whose name may be given once, when it is the second.
    void RefuseSecond(bool isSecond) const;
    void RefuseSecondName(bool isSecond) const;

    // The byte of the text at which the element begins.
    std::size_t GetOffset() const;

private:
    std::size_t GetOffset(const CATDOMAttributeView& attribute) const;

    CATDOMElementView m_View;
};

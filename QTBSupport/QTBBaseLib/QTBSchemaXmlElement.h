#pragma once

#include <cstddef>
#include <initializer_list>
#include <string_view>

#include "CATDOMElementView.h"
#include "CATUnicodeString.h"

// What is wrong in a schema file, and where: a byte of its text. Raised while the file is read, never beyond.
struct QTBSchemaRefusal
{
    std::size_t offset;
    CATUnicodeString problem;
    CATUnicodeString expected;
};

// An element of a schema file, read strictly: what is missing, superfluous or not of its form raises a
// QTBSchemaRefusal.
class QTBSchemaXmlElement
{
public:
    QTBSchemaXmlElement() = default;
    explicit QTBSchemaXmlElement(const CATDOMElementView& view) : m_View(view) {}

    explicit operator bool() const { return static_cast<bool>(m_View); }
    bool Is(std::string_view tagName) const { return m_View.HasTagName(tagName); }
    std::string_view GetTagName() const { return m_View.GetTagName(); }
    QTBSchemaXmlElement GetFirstChild() const { return QTBSchemaXmlElement(m_View.GetFirstChild()); }
    QTBSchemaXmlElement GetNextSibling() const { return QTBSchemaXmlElement(m_View.GetNextSibling()); }

    template <class Visit>
    void ForEachChild(Visit visit) const
    {
        for (QTBSchemaXmlElement child = GetFirstChild(); child; child = child.GetNextSibling()) {
            visit(child);
        }
    }

    // Refuses other attributes and child elements than these, and text.
    void CheckForm(std::initializer_list<std::string_view> attributes,
                   std::initializer_list<std::string_view> children) const;

    // The value of an attribute. GetText gives the empty text for one that is missing, and the others their default;
    // GetName refuses one that is missing or empty.
    CATUnicodeString GetText(const char* attribute) const;
    CATUnicodeString GetName(const char* attribute) const;
    bool GetFlag(const char* attribute, bool ifMissing) const;
    int GetInteger(const char* attribute, int ifMissing, int least, int greatest) const;

    // A text in quotes for messages; a long one is cut.
    static CATUnicodeString Quote(std::string_view text);

    // Refuses the element, or the value of one of its attributes.
    [[noreturn]] void Refuse(const CATUnicodeString& usProblem, const CATUnicodeString& usExpected) const;
    [[noreturn]] void RefuseValue(const char* attribute, const CATUnicodeString& usExpected) const;
    // Refuses an element that may stand once, or whose name may be given once, when it is the second.
    void RefuseSecond(bool isSecond) const;
    void RefuseSecondName(bool isSecond) const;

private:
    std::size_t GetOffset() const;
    std::size_t GetOffset(const CATDOMAttributeView& attribute) const;

    CATDOMElementView m_View;
};

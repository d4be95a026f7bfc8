#pragma once

#include <string>
#include <string_view>

#include "CATDOMElementView.h"
#include "CATDataType.h"
#include "CATIDOMElement.h"
#include "CATListPtr.h"
#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"
#include "QTBPooledName.h"

// Base of the attribute values of a node. An attribute object reads its "a" element when it is constructed and does not
// refer to it afterwards, but an embedded object's, which is written as it stands; a value that was changed is written
// out by WriteXmlToString only.
//
// Reading is strict: an "a" element without a non-empty "name", or whose content is not of the form of the attribute's
// class (see there), gives an object that is not valid. Such an object has no name and no value and all its operations
// fail.
class QTBBASELIB_API QTBNodeAttr
{
public:
    QTBNodeAttr(const QTBNodeAttr&) = delete;
    QTBNodeAttr& operator=(const QTBNodeAttr&) = delete;
    virtual ~QTBNodeAttr();

    // The attribute's name. Fails for an attribute that is not valid.
    HRESULT GetName(CATUnicodeString* pusName) const;

    // FALSE when the element could not be read.
    virtual unsigned char IsValid() const;

    // String hash of the name (operator%= from 0).
    const unsigned int& GetHashKey() const { return m_Name.GetHashKey(); }

    // Appends the attribute as an "a" element in the layout that the constructor reads; reading it again gives the same
    // value. bEndLine TRUE ends it with a line feed. Used to write a node's record for the PDM system.
    HRESULT WriteXmlToString(CATUnicodeString* pusXmlString, unsigned char bEndLine) const;

    // Short text of the value for tooltips, never longer than TOOLTIP_LENGTH characters.
    virtual CATUnicodeString ToString() = 0;

    static constexpr int TOOLTIP_LENGTH = 120;

protected:
    QTBNodeAttr() = default;

    // The element for reading, an empty view when there is none. An empty view has no name, so that the attribute stays
    // invalid.
    static CATDOMElementView ViewElement(const CATIDOMElement_var* pspIDOMElement);

    // Takes the attribute over from its element; an attribute without name stays invalid.
    void SetNameFromElement(const CATDOMElementView& element);
    const CATUnicodeString& NameText() const { return m_Name.GetText(); }

    // The name of the type in the "a" element; empty for the type that needs none.
    virtual std::string_view GetTypeName() const = 0;
    // Appends what stands between the tags of the "a" element.
    virtual HRESULT AppendContent(std::string* pXml) const = 0;

    // Cuts a text to the length of a tooltip.
    static CATUnicodeString ShortText(const CATUnicodeString& usText);

    // Puts the tooltip of a value with many parts together; a long value is not walked to its end.
    class TooltipText
    {
    public:
        void Add(const char* separator, const CATUnicodeString& usPart)
        {
            m_Text += separator;
            m_Text += ShortText(usPart);
        }
        bool IsFull() const { return m_Text.GetLengthInChar() > TOOLTIP_LENGTH; }
        CATUnicodeString Get() const { return ShortText(m_Text); }

    private:
        CATUnicodeString m_Text;
    };

private:
    QTBPooledName m_Name;
};

using CATListPtrQTBNodeAttr = CATListPtr<QTBNodeAttr>;

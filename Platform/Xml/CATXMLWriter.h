#pragma once

#include <string>
#include <string_view>

#include "CATDOMElementView.h"
#include "CATUnicodeString.h"
#include "PlatformExport.h"

// Writes XML text that reads back as what was written: blanks, line feeds, carriage returns and tabs included, in text
// as in attribute values. Characters that XML cannot carry (control characters, U+FFFE, U+FFFF) become U+FFFD.
class PLATFORM_API CATXMLWriter
{
public:
    // Appends a text between tags.
    static void AppendText(std::string_view text, std::string* pXml);

    // Appends a blank, the name, an equals sign and the value in double quotes.
    static void AppendAttribute(std::string_view name, std::string_view value, std::string* pXml);

    // Appends the element with everything in it, without adding white space. Takes no stack per level.
    static void AppendElement(const CATDOMElementView& element, std::string* pXml);

    // Whether XML allows the name for elements and attributes.
    static bool IsName(std::string_view name);

    // The text with every character that XML cannot carry replaced by U+FFFD.
    static CATUnicodeString MakeCarriable(const CATUnicodeString& usText);
};

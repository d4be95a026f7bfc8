#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "CATDataType.h"
#include "CATUnicodeString.h"
#include "PlatformExport.h"

// The border that XML from outside has to pass. The parser behind it is made for speed and reads much that is
// malformed; what is refused here never reaches it.
class PLATFORM_API CATXMLTextCheck
{
public:
    // Whether the text is a well-formed document in UTF-8, whatever its declaration says, without a document type
    // declaration (so that no entity is ever expanded and nothing outside is referred to). Fails with a CATXMLError
    // that names the source, line and column, what is wrong there and what was expected. Takes time linear in the text
    // and no memory beyond its nesting.
    static HRESULT CheckText(std::string_view utf8Xml, const CATUnicodeString& usSourceName);

    // Turns the bytes of a file into UTF-8 without byte order mark: UTF-8 (also US-ASCII), UTF-16 of either byte order
    // or ISO-8859-1, as byte order mark and declaration say. Fails with a CATXMLError for another encoding, a
    // declaration that contradicts the bytes, and bytes that are not what they claim to be.
    static HRESULT DecodeBytes(const CATUnicodeString& usSourceName, std::string* pBytes);

    // The failure that says what is wrong at a byte of a text; line and column are counted here.
    static HRESULT Refuse(std::string_view utf8Xml, std::size_t offset, const CATUnicodeString& usSourceName,
                          const CATUnicodeString& usProblem, const CATUnicodeString& usExpected);
};

#pragma once

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

    // Turns the bytes of a file into UTF-8: UTF-8 (also US-ASCII), UTF-16 of either byte order or ISO-8859-1, as byte
    // order mark and declaration say. *pbDecoded tells whether *pText holds the result or the bytes are UTF-8 as they
    // stand, behind the first *pSkip bytes. Fails with a CATXMLError for another encoding, one that contradicts itself
    // and bytes that are not what they claim to be.
    static HRESULT DecodeBytes(std::string_view bytes, const CATUnicodeString& usSourceName, std::string* pText,
                               bool* pbDecoded, std::size_t* pSkip);
};

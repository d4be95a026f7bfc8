#pragma once

#include <string_view>

#include "CATIDOMDocument.h"

// Makes XML documents. Files and texts of more than CATGetMaxFileBytes are refused with a CATXMLError.
class PLATFORM_API CATXMLDocumentFactory
{
public:
    // A document whose document element has that tag name and nothing in it. Fails for a name that XML does not allow.
    static HRESULT CreateDocument(const CATUnicodeString& usRootName, CATIDOMDocument_var* pspDocument);

    // Reads a document from text that comes from outside. The text is UTF-8, whatever its declaration says. Fails with
    // a CATXMLError for text that CATXMLTextCheck refuses; usSourceName names the text in the error's message.
    static HRESULT ReadText(const CATUnicodeString& usXml, const CATUnicodeString& usSourceName,
                            CATIDOMDocument_var* pspDocument);

    // Reads a document from UTF-8 text that this process wrote itself and that is therefore not checked. Never for text
    // from outside: much that is malformed is read without complaint. Fails with a CATXMLError where reading has to
    // stop.
    static HRESULT ReadTrustedText(std::string_view utf8Xml, CATIDOMDocument_var* pspDocument);

    // Reads a document from a file, whose bytes are UTF-8, UTF-16 or ISO-8859-1 as byte order mark and declaration say.
    // Fails with a CATXMLError that names the file when it cannot be read or is refused by CATXMLTextCheck.
    static HRESULT ReadFile(const CATUnicodeString& usPath, CATIDOMDocument_var* pspDocument);

    // Documents that are alive because somebody holds a handle on them or on one of their elements; tests look at it.
    static int GetLiveDocumentCount();
};

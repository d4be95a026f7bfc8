#pragma once

#include <string_view>

#include "CATIDOMDocument.h"
#include "CATListValCATBaseUnknown_var.h"
#include "CATListValCATUnicodeString.h"
#include "QTBBaseLibExport.h"

// Reading and making XML documents: PDM answers, node records, the schema file. Nodes are given by any handle on them.
// Operations fail with E_POINTER for a null argument and E_FAIL for an empty handle or one that is no XML node.
class QTBBASELIB_API QTBXmlUtil
{
public:
    // A new document whose document element has that name.
    static HRESULT CreateEmptyDOMDocument(const CATUnicodeString& usRootName, CATIDOMDocument_var* pspIDOMDocument);

    // Reads text from outside. Fails for malformed text with an error that names line, column, what is wrong and what
    // was expected (CATXMLError); *pspIDOMDocument stays as it was then, here and below.
    static HRESULT GetDomDocument(const CATUnicodeString& usXmlText, CATIDOMDocument_var* pspIDOMDocument);

    // Reads UTF-8 text that this process made itself and that is therefore not checked. Never for text from outside.
    static HRESULT GetTrustedDomDocument(std::string_view utf8XmlText, CATIDOMDocument_var* pspIDOMDocument);

    // Reads a file: UTF-8, UTF-16 or ISO-8859-1. The error of a malformed file names the file too.
    static HRESULT GetDomDocumentFromFile(const CATUnicodeString& usPath, CATIDOMDocument_var* pspIDOMDocument);

    // The child elements with that tag, in document order; with a non-empty attribute name only those whose XML
    // attribute has that value. Direct children only. An empty list is no failure.
    static HRESULT GetElements(const CATBaseUnknown_var& spParent, const CATUnicodeString& usTag,
                               const CATUnicodeString& usAttrName, const CATUnicodeString& usAttrValue,
                               CATListValCATBaseUnknown_var* pElements);

    // The "a" child element of that name, the first if there are several. E_FAIL when there is none.
    static HRESULT GetSingleAttributeElement(const CATBaseUnknown_var& spItem, const CATUnicodeString& usAttrName,
                                             CATIDOMElement_var* pspIDOMElement);

    // The element's text, whole, blanks included.
    static HRESULT GetCharData(const CATBaseUnknown_var& spNode, CATUnicodeString* pusText);

    // The texts of all child elements with that tag, in document order.
    static HRESULT GetRecurringElementCharData(const CATBaseUnknown_var& spParent, const CATUnicodeString& usTag,
                                               CATListValCATUnicodeString* pTexts);

    // The data type of an "a" element from its XML attribute "type": "string" or none gives usSTRING, "list"
    // usSIMPLE_LIST, "nvlist" usNAME_VALUE_LIST, "table" usTABLE, "object" usOBJECT, "objectlist" usOBJECT_LIST. Any
    // other text is returned as it stands, for the caller to refuse.
    static HRESULT GetNodeAttributeDataType(const CATIDOMElement_var& spIDOMElement, CATUnicodeString* pusDataType);

    // Appends a child element with that text to the parent.
    static HRESULT CreateChildNode(const CATUnicodeString& usTag, const CATUnicodeString& usText,
                                   CATIDOMElement_var* pspParent, CATIDOMElement_var* pspChild);

    // The objects of a "dynamicInvoke" answer: every "o" element of every "arg" of the function's "outArgs", in
    // document order.
    static HRESULT GetOutArgObjectsOfInvokeFunction(const CATBaseUnknown_var& spFunction,
                                                    CATListValCATBaseUnknown_var* pObjects);
};

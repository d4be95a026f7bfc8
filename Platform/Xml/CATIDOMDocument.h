#pragma once

#include "CATIDOMElement.h"
#include "CATIDOMNodeList.h"

class CATIDOMDocument;
using CATIDOMDocument_var = CATInterface_var<CATIDOMDocument>;

inline constexpr IID IID_CATIDOMDocument{"CATIDOMDocument"};

// XML document. Made by CATXMLDocumentFactory.
class PLATFORM_API CATIDOMDocument : public CATIDOMNode
{
    CATDeclareInterface(CATIDOMDocument, CATIDOMNode)

public:
    // The one element that holds all others; S_OK with NULL_var after it was removed.
    virtual HRESULT GetDocumentElement(CATIDOMElement_var* pspElement) = 0;

    // All elements of the document with that tag name, whatever their depth, in document order.
    virtual HRESULT GetElementsByTagName(const CATUnicodeString& usTagName, CATIDOMNodeList_var* pspNodes) = 0;

    // Creates an element that AppendChild then puts into its place.
    virtual HRESULT CreateElement(const CATUnicodeString& usTagName, CATIDOMElement_var* pspElement) = 0;
};

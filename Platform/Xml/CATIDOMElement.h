#pragma once

#include "CATDOMElementView.h"
#include "CATIDOMNode.h"

class CATIDOMElement;
using CATIDOMElement_var = CATInterface_var<CATIDOMElement>;

inline constexpr IID IID_CATIDOMElement{"CATIDOMElement"};

// Element of an XML document.
//
// Names that XML does not allow are refused with E_FAIL; characters that XML cannot carry become U+FFFD in values and
// text.
class PLATFORM_API CATIDOMElement : public CATIDOMNode
{
    CATDeclareInterface(CATIDOMElement, CATIDOMNode)

public:
    virtual HRESULT GetTagName(CATUnicodeString* pusTagName) = 0;

    virtual HRESULT HasAttribute(const CATUnicodeString& usName, unsigned char* pbHasAttribute) = 0;

    // The value of the attribute; S_OK with the empty text when the element has no such attribute.
    virtual HRESULT GetAttribute(const CATUnicodeString& usName, CATUnicodeString* pusValue) = 0;

    // Adds the attribute or changes its value.
    virtual HRESULT SetAttribute(const CATUnicodeString& usName, const CATUnicodeString& usValue) = 0;

    // Replaces the element's text; child elements stay.
    virtual HRESULT SetCharData(const CATUnicodeString& usText) = 0;

    // Creates an element as the last child of this one.
    virtual HRESULT CreateChildElement(const CATUnicodeString& usTagName, CATIDOMElement_var* pspChild) = 0;

    // The element for reading, without handles.
    virtual CATDOMElementView GetView() const = 0;

    // The handle on an element that a view on this one, its parents or what is below them led to; empty for an empty
    // view.
    virtual CATIDOMElement_var GetElementOfView(const CATDOMElementView& element) const = 0;
};

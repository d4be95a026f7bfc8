#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"
#include "CATUnicodeString.h"

class CATIDOMNode;
using CATIDOMNode_var = CATInterface_var<CATIDOMNode>;

inline constexpr IID IID_CATIDOMNode{"CATIDOMNode"};

// Node of an XML document: the document itself or an element. Text is no node of its own here, it is read from and
// written to its element.
//
// Two handles on the same node are equal. A handle keeps its document alive, and an element that was removed from the
// document stays readable as long as anybody holds a handle on it or on an element of the same removed branch.
// Operations fail with E_POINTER for a null argument and E_FAIL otherwise.
class PLATFORM_API CATIDOMNode : public CATBaseUnknown
{
    CATDeclareInterface(CATIDOMNode, CATBaseUnknown)

public:
    // The tag name of an element, "#document" for the document.
    virtual HRESULT GetNodeName(CATUnicodeString* pusName) = 0;

    // The node that holds this one. S_OK with NULL_var for the document and for an element that was removed or not yet
    // appended.
    virtual HRESULT GetParentNode(CATIDOMNode_var* pspParent) = 0;

    // The first child element, and the next element of the same parent; S_OK with NULL_var when there is none. A
    // removed element has no siblings.
    virtual HRESULT GetFirstChild(CATIDOMNode_var* pspChild) = 0;
    virtual HRESULT GetNextSibling(CATIDOMNode_var* pspSibling) = 0;

    // Makes the element the last child of this node; an element that hangs elsewhere in the document moves. Fails for
    // an empty handle, an element of another document, this node itself or one that holds it, and for a second document
    // element.
    virtual HRESULT AppendChild(const CATIDOMNode_var& spChild) = 0;

    // Takes the element, with everything below it, out of the document. Fails when it is not a child of this node.
    virtual HRESULT RemoveChild(const CATIDOMNode_var& spChild) = 0;

    // The text of an element, whole, as CATDOMElementView::GetText describes it; empty for the document.
    virtual HRESULT GetCharData(CATUnicodeString* pusText) = 0;
};

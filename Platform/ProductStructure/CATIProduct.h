#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"
#include "CATListValCATBaseUnknown_var.h"
#include "CATUnicodeString.h"

class CATIProduct;
using CATIProduct_var = CATInterface_var<CATIProduct>;

inline constexpr IID IID_CATIProduct{"CATIProduct"};

// A product of the CAD session, a component of late type ASMPRODUCT. It is either a reference or an instance.
//
// A reference is defined by a document: it has a part number and properties, and its children in order. It stands at
// the top of a tree of its own. An instance is one place in such a tree, a use of a reference below another product.
// A reference that is used at several places has one instance component per place and, where its document was opened,
// its own tree besides. Components are made when they are first reached and remembered, so that handles on the same
// place are equal as long as the document is in session.
//
// A product whose document was closed, or that was removed, keeps its texts as long as somebody holds it; it has no
// father and no children any more.
class PLATFORM_API CATIProduct : public CATBaseUnknown
{
    CATDeclareInterface(CATIProduct, CATBaseUnknown)

public:
    // The product above; empty for a reference, which stands at the top.
    virtual CATIProduct_var GetFatherProduct() = 0;

    // The children that answer the interface of that name ("CATIProduct" for all), in order. The list is never null;
    // the caller deletes it.
    virtual CATListValCATBaseUnknown_var* GetChildren(const char* interfaceName) = 0;

    // The reference test: E_FAIL for an instance, S_OK for a reference.
    virtual HRESULT IsReference() = 0;

    // The reference of an instance, a reference itself; empty when the document that defines it was not found (broken
    // link). Nothing is loaded: see CATIPrdLink::LoadDocument.
    virtual CATIProduct_var GetReferenceProduct() = 0;

    // Name of an instance below its father; names of brothers may be equal. A reference has none: E_FAIL. Setting also
    // fails for the empty name; it renames the instance at every place of its father and makes the father's document
    // dirty.
    virtual HRESULT GetPrdInstanceName(CATUnicodeString* pusInstanceName) = 0;
    virtual HRESULT SetPrdInstanceName(const CATUnicodeString& usInstanceName) = 0;

    // Part number of the reference; empty in visualization mode and for a broken link.
    virtual CATUnicodeString GetPartNumber() = 0;
    // Writes the part number of the reference and makes its document dirty. E_FAIL, with nothing written, for the empty
    // number, in visualization mode and for a broken link.
    virtual HRESULT SetPartNumber(const CATUnicodeString& usPartNumber) = 0;

    // Properties of the reference as CATIPrdProperties gives them. E_FAIL in visualization mode and for a broken link.
    virtual HRESULT GetNomenclature(CATUnicodeString* pusNomenclature) = 0;
    virtual HRESULT GetDescriptionRef(CATUnicodeString* pusDescription) = 0;
    virtual HRESULT GetDefinition(CATUnicodeString* pusDefinition) = 0;
    virtual HRESULT GetRevision(CATUnicodeString* pusRevision) = 0;

    // Adds an instance of a reference (given by itself or by one of its instances) behind the last child, at every
    // place of this product's reference, and makes its document dirty. *pspChild, which may be null, receives the child
    // of this product. Fails quietly for an empty name, when this product is in visualization mode or one of the two
    // has no document (broken link, closed), and for an embedded component of another document; fails with an error
    // (catalog "CATProductStructure") when the product would contain itself.
    virtual HRESULT AddChild(const CATIProduct_var& spProduct, const CATUnicodeString& usInstanceName,
                             CATIProduct_var* pspChild) = 0;

    // Removes a child, at every place of this product's reference, and makes its document dirty. E_FAIL for a product
    // that is no child of this one.
    virtual HRESULT RemoveChild(const CATIProduct_var& spChild) = 0;
};

#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"
#include "CATListValCATUnicodeString.h"
#include "CATUnicodeString.h"

class CATDocument;

// How a product stands to the document that defines it.
enum class CATPrdLinkState
{
    Loaded,        // the document is in session
    Visualization, // only the shape of the part is in session; its part number and properties are not known yet
    Embedded,      // an embedded component: defined in the document of the product above it, without a file of its own
    Broken         // the document was not found
};

inline constexpr IID IID_CATIPrdLink{"CATIPrdLink"};

// The link of a product to the document that defines its reference. An instance answers for its reference.
class PLATFORM_API CATIPrdLink : public CATBaseUnknown
{
    CATDeclareInterface(CATIPrdLink, CATBaseUnknown)

public:
    // E_FAIL for a product whose document was closed.
    virtual HRESULT GetLinkState(CATPrdLinkState* pState) = 0;

    // Path of the file that defines the reference, in visualization mode and for a broken link too, whatever document
    // is in session. E_FAIL for an embedded component; the path is empty for a document that was never saved.
    virtual HRESULT GetLinkedFileName(CATUnicodeString* pusStorageName) = 0;

    // The document that holds the reference: its own, for an embedded component that of the product above it, in
    // visualization mode that of its shape. E_FAIL with *ppDocument null for a broken link and a closed document. No
    // reference is added.
    virtual HRESULT GetDocument(CATDocument** ppDocument) = 0;

    // The document that holds nothing but the shape of the product: in visualization mode the one in session, for an
    // embedded component the one that it was given. E_FAIL with *ppDocument null when there is none. No reference is
    // added.
    virtual HRESULT GetShapeRepDocument(CATDocument** ppDocument) = 0;

    // Loads the document of a product in visualization mode: it takes the place of the shape's document in the session,
    // and part number and properties are known from then on. S_OK when it is loaded already and for an embedded
    // component; E_FAIL for a broken link.
    virtual HRESULT LoadDocument() = 0;

    // Names of the reference's design tables and, parallel to them, paths of the files that hold them, empty for a
    // table that is kept in the document. The second pointer may be null. E_FAIL in visualization mode and for a
    // broken link.
    virtual HRESULT GetDesignTables(CATListValCATUnicodeString* pNames, CATListValCATUnicodeString* pStorageNames) = 0;
};

using CATIPrdLink_var = CATInterface_var<CATIPrdLink>;

#pragma once

#include "CATIProduct.h"
#include "CATListValCATBaseUnknown_var.h"
#include "CATUnicodeString.h"

class CATDocument;
struct CATPrdStructure;

// Product documents of the session and the products in them. Documents are closed with CATDocumentServices::Remove: a
// document that products of others use stays in session until the last of these is gone.
class PLATFORM_API CATProductServices
{
public:
    // Opens the documents of a structure. A document that is in session already under the same path is taken as it is
    // there, and what the structure says about it is not looked at, except that a part in visualization mode is loaded
    // when the structure has it loaded. *pDocuments, which may be null, receives the documents opened for themselves.
    // Fails with an error (catalog "CATProductStructure"), with nothing opened, when a product contains itself, when
    // the structure is not as CATPrdStructure says, and for a file that is in session as a document of another kind.
    static HRESULT Open(const CATPrdStructure& structure, CATListValCATBaseUnknown_var* pDocuments);

    // Opens the documents that a product structure file describes (docs/formats.md). Fails as Open does, and with a
    // CATXMLError that names file, line and column for a file that is refused.
    static HRESULT OpenFile(const CATUnicodeString& usPath, CATListValCATBaseUnknown_var* pDocuments);

    // The product at the top of a document. E_FAIL for a document without product.
    static HRESULT GetRootProduct(const CATDocument& document, CATIProduct_var* pspIProductOnRoot);

    // The product at the top of a document in session with that part number; of several that of the document that was
    // opened first. E_FAIL when there is none; products in visualization mode have no part number. Takes the time of a
    // hash look-up.
    static HRESULT FindRootProduct(const CATUnicodeString& usPartNumber, CATIProduct_var* pspIProductOnRoot);

    // The document in whose tree the product stands, that of the reference at its top. E_FAIL, with *ppDocument null,
    // when that was closed. No reference is added.
    static HRESULT GetTreeDocument(const CATIProduct_var& spIProduct, CATDocument** ppDocument);
};

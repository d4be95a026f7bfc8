#pragma once

#include "CATBaseUnknown.h"
#include "CATIPrdLink.h"

class CATPrdReference;

// CATIPrdLink on the late type ASMPRODUCT; one extension serves all products.
class CATEPrdLinkOnASMPRODUCT : public CATBaseUnknown
{
public:
    HRESULT GetLinkState(CATPrdLinkState* pState);
    HRESULT GetLinkedFileName(CATUnicodeString* pusStorageName);
    HRESULT GetDocument(CATDocument** ppDocument);
    HRESULT GetShapeRepDocument(CATDocument** ppDocument);
    HRESULT LoadDocument();
    HRESULT GetDesignTables(CATListValCATUnicodeString* pNames, CATListValCATUnicodeString* pStorageNames);

private:
    // The product's reference; null for a component that is no product.
    CATPrdReference* GetReference() const;
};

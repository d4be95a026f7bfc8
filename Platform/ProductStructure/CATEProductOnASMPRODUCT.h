#pragma once

#include "CATIProduct.h"

class CATAsmProduct;

// CATIProduct on the late type ASMPRODUCT. The implementation object holds the state, so one extension serves all
// products.
class CATEProductOnASMPRODUCT : public CATBaseUnknown
{
public:
    CATIProduct_var GetFatherProduct();
    CATListValCATBaseUnknown_var* GetChildren(const char* interfaceName);
    HRESULT IsReference();
    CATIProduct_var GetReferenceProduct();
    HRESULT GetPrdInstanceName(CATUnicodeString* pusInstanceName);
    HRESULT SetPrdInstanceName(const CATUnicodeString& usInstanceName);
    CATUnicodeString GetPartNumber();
    HRESULT SetPartNumber(const CATUnicodeString& usPartNumber);
    HRESULT GetNomenclature(CATUnicodeString* pusNomenclature);
    HRESULT GetDescriptionRef(CATUnicodeString* pusDescription);
    HRESULT GetDefinition(CATUnicodeString* pusDefinition);
    HRESULT GetRevision(CATUnicodeString* pusRevision);
    HRESULT AddChild(const CATIProduct_var& spProduct, const CATUnicodeString& usInstanceName,
                     CATIProduct_var* pspChild);
    HRESULT RemoveChild(const CATIProduct_var& spChild);

private:
    // Null for a component that takes the late type as its base but is no product.
    CATAsmProduct* GetProduct() const;
};

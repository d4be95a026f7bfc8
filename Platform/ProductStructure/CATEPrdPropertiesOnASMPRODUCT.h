#pragma once

#include "CATBaseUnknown.h"
#include "CATPrdStructure.h"
#include "CATUnicodeString.h"

class CATAsmProduct;

// CATIPrdProperties on the late type ASMPRODUCT; one extension serves all products.
class CATEPrdPropertiesOnASMPRODUCT : public CATBaseUnknown
{
public:
    HRESULT GetNomenclature(CATUnicodeString* pusNomenclature);
    HRESULT SetNomenclature(const CATUnicodeString& usNomenclature);
    HRESULT GetDescriptionRef(CATUnicodeString* pusDescription);
    HRESULT SetDescriptionRef(const CATUnicodeString& usDescription);
    HRESULT GetDefinition(CATUnicodeString* pusDefinition);
    HRESULT SetDefinition(const CATUnicodeString& usDefinition);
    HRESULT GetRevision(CATUnicodeString* pusRevision);
    HRESULT SetRevision(const CATUnicodeString& usRevision);
    HRESULT GetDescriptionInst(CATUnicodeString* pusDescription);
    HRESULT SetDescriptionInst(const CATUnicodeString& usDescription);
    HRESULT GetUserProperty(const CATUnicodeString& usName, CATUnicodeString* pusValue);
    HRESULT SetUserProperty(const CATUnicodeString& usName, const CATUnicodeString& usValue);

private:
    using Property = CATUnicodeString CATPrdDefinition::*;

    CATAsmProduct* GetProduct() const;
    // What the reference's document says; null while that is not known.
    CATPrdDefinition* GetDefinitionOfReference() const;
    HRESULT Get(Property property, CATUnicodeString* pusValue) const;
    HRESULT Set(Property property, const CATUnicodeString& usValue) const;
    // Where the product's own user properties are kept; null while those of a reference are not known.
    CATPrdUserProperties* GetUserProperties() const;
};

#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"
#include "CATUnicodeString.h"

inline constexpr IID IID_CATIPrdProperties{"CATIPrdProperties"};

// Properties of a product. Those of the reference are reached through the reference and through each of its instances.
//
// Writing a property does not make the document dirty: the caller knows whether the change is one to be saved
// (CATDocument::SetDirty). Reading and writing fail quietly in visualization mode and for a broken link, except for
// what belongs to the instance.
class PLATFORM_API CATIPrdProperties : public CATBaseUnknown
{
    CATDeclareInterface(CATIPrdProperties, CATBaseUnknown)

public:
    virtual HRESULT GetNomenclature(CATUnicodeString* pusNomenclature) = 0;
    virtual HRESULT SetNomenclature(const CATUnicodeString& usNomenclature) = 0;
    virtual HRESULT GetDescriptionRef(CATUnicodeString* pusDescription) = 0;
    virtual HRESULT SetDescriptionRef(const CATUnicodeString& usDescription) = 0;
    virtual HRESULT GetDefinition(CATUnicodeString* pusDefinition) = 0;
    virtual HRESULT SetDefinition(const CATUnicodeString& usDefinition) = 0;
    virtual HRESULT GetRevision(CATUnicodeString* pusRevision) = 0;
    virtual HRESULT SetRevision(const CATUnicodeString& usRevision) = 0;

    // Description of an instance, the same at every place of its father. E_FAIL for a reference.
    virtual HRESULT GetDescriptionInst(CATUnicodeString* pusDescription) = 0;
    virtual HRESULT SetDescriptionInst(const CATUnicodeString& usDescription) = 0;

    // Properties of any other name, which other programs put on a product: on an instance those of the instance, the
    // same at every place of its father, on a reference those of the reference. Get fails quietly for a name that was
    // not set, Set for the empty name. An empty value is a value.
    virtual HRESULT GetUserProperty(const CATUnicodeString& usName, CATUnicodeString* pusValue) = 0;
    virtual HRESULT SetUserProperty(const CATUnicodeString& usName, const CATUnicodeString& usValue) = 0;
};

using CATIPrdProperties_var = CATInterface_var<CATIPrdProperties>;

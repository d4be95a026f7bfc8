#pragma once

#include "CATTie.h"
#include "CATIProduct.h"

// Interface object of CATIProduct; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATIProduct : public Tie
{
public:
    using Tie::Tie;

    CATIProduct_var GetFatherProduct() override
    {
        return Target::Of(*this)->GetFatherProduct();
    }

    CATListValCATBaseUnknown_var* GetChildren(const char* interfaceName) override
    {
        return Target::Of(*this)->GetChildren(interfaceName);
    }

    HRESULT IsReference() override
    {
        return Target::Of(*this)->IsReference();
    }

    CATIProduct_var GetReferenceProduct() override
    {
        return Target::Of(*this)->GetReferenceProduct();
    }

    HRESULT GetPrdInstanceName(CATUnicodeString* pusInstanceName) override
    {
        return Target::Of(*this)->GetPrdInstanceName(pusInstanceName);
    }

    HRESULT SetPrdInstanceName(const CATUnicodeString& usInstanceName) override
    {
        return Target::Of(*this)->SetPrdInstanceName(usInstanceName);
    }

    CATUnicodeString GetPartNumber() override
    {
        return Target::Of(*this)->GetPartNumber();
    }

    HRESULT SetPartNumber(const CATUnicodeString& usPartNumber) override
    {
        return Target::Of(*this)->SetPartNumber(usPartNumber);
    }

    HRESULT GetNomenclature(CATUnicodeString* pusNomenclature) override
    {
        return Target::Of(*this)->GetNomenclature(pusNomenclature);
    }

    HRESULT GetDescriptionRef(CATUnicodeString* pusDescription) override
    {
        return Target::Of(*this)->GetDescriptionRef(pusDescription);
    }

    HRESULT GetDefinition(CATUnicodeString* pusDefinition) override
    {
        return Target::Of(*this)->GetDefinition(pusDefinition);
    }

    HRESULT GetRevision(CATUnicodeString* pusRevision) override
    {
        return Target::Of(*this)->GetRevision(pusRevision);
    }

    HRESULT AddChild(const CATIProduct_var& spProduct, const CATUnicodeString& usInstanceName, CATIProduct_var* pspChild) override
    {
        return Target::Of(*this)->AddChild(spProduct, usInstanceName, pspChild);
    }

    HRESULT RemoveChild(const CATIProduct_var& spChild) override
    {
        return Target::Of(*this)->RemoveChild(spChild);
    }
};

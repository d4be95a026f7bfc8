#pragma once

#include "CATTie.h"
#include "CATIPrdProperties.h"

// Interface object of CATIPrdProperties; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATIPrdProperties : public Tie
{
public:
    using Tie::Tie;

    HRESULT GetNomenclature(CATUnicodeString* pusNomenclature) override
    {
        return Target::Of(*this)->GetNomenclature(pusNomenclature);
    }

    HRESULT SetNomenclature(const CATUnicodeString& usNomenclature) override
    {
        return Target::Of(*this)->SetNomenclature(usNomenclature);
    }

    HRESULT GetDescriptionRef(CATUnicodeString* pusDescription) override
    {
        return Target::Of(*this)->GetDescriptionRef(pusDescription);
    }

    HRESULT SetDescriptionRef(const CATUnicodeString& usDescription) override
    {
        return Target::Of(*this)->SetDescriptionRef(usDescription);
    }

    HRESULT GetDefinition(CATUnicodeString* pusDefinition) override
    {
        return Target::Of(*this)->GetDefinition(pusDefinition);
    }

    HRESULT SetDefinition(const CATUnicodeString& usDefinition) override
    {
        return Target::Of(*this)->SetDefinition(usDefinition);
    }

    HRESULT GetRevision(CATUnicodeString* pusRevision) override
    {
        return Target::Of(*this)->GetRevision(pusRevision);
    }

    HRESULT SetRevision(const CATUnicodeString& usRevision) override
    {
        return Target::Of(*this)->SetRevision(usRevision);
    }

    HRESULT GetDescriptionInst(CATUnicodeString* pusDescription) override
    {
        return Target::Of(*this)->GetDescriptionInst(pusDescription);
    }

    HRESULT SetDescriptionInst(const CATUnicodeString& usDescription) override
    {
        return Target::Of(*this)->SetDescriptionInst(usDescription);
    }

    HRESULT GetUserProperty(const CATUnicodeString& usName, CATUnicodeString* pusValue) override
    {
        return Target::Of(*this)->GetUserProperty(usName, pusValue);
    }

    HRESULT SetUserProperty(const CATUnicodeString& usName, const CATUnicodeString& usValue) override
    {
        return Target::Of(*this)->SetUserProperty(usName, usValue);
    }
};

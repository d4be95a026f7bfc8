#pragma once

#include "CATTie.h"
#include "QTBIPdmRequests.h"

// Interface object of QTBIPdmRequests; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIEQTBIPdmRequests : public Tie
{
public:
    using Tie::Tie;

    HRESULT GetItems(const CATListValCATUnicodeString& Keys, CATIDOMDocument_var* pspAnswer) override
    {
        return Target::Of(*this)->GetItems(Keys, pspAnswer);
    }

    HRESULT Query(const CATUnicodeString& usClassName, const CATListValCATUnicodeString& AttrNames, const CATListValCATUnicodeString& AttrValues, const unsigned char& bNewestVersionsOnly, CATIDOMDocument_var* pspAnswer) override
    {
        return Target::Of(*this)->Query(usClassName, AttrNames, AttrValues, bNewestVersionsOnly, pspAnswer);
    }

    HRESULT Expand(const CATListValCATUnicodeString& Keys, const CATListValQTBNodeRelationInfo& Relations, const int& iLevels, CATIDOMDocument_var* pspAnswer) override
    {
        return Target::Of(*this)->Expand(Keys, Relations, iLevels, pspAnswer);
    }

    HRESULT CheckOut(const CATListValCATUnicodeString& Keys, CATIDOMDocument_var* pspAnswer) override
    {
        return Target::Of(*this)->CheckOut(Keys, pspAnswer);
    }

    HRESULT CheckIn(const CATListValCATUnicodeString& Keys, const CATListValCATUnicodeString& FilePaths, CATIDOMDocument_var* pspAnswer) override
    {
        return Target::Of(*this)->CheckIn(Keys, FilePaths, pspAnswer);
    }

    HRESULT Promote(const CATListValCATUnicodeString& Keys, CATIDOMDocument_var* pspAnswer) override
    {
        return Target::Of(*this)->Promote(Keys, pspAnswer);
    }

    HRESULT Revise(const CATListValCATUnicodeString& Keys, CATIDOMDocument_var* pspAnswer) override
    {
        return Target::Of(*this)->Revise(Keys, pspAnswer);
    }

    HRESULT UpdateAttributes(const CATUnicodeString& usKey, const CATUnicodeString& usAttributesXml, CATIDOMDocument_var* pspAnswer) override
    {
        return Target::Of(*this)->UpdateAttributes(usKey, usAttributesXml, pspAnswer);
    }

    HRESULT CreateObject(const CATUnicodeString& usClassName, const CATUnicodeString& usKey, const CATUnicodeString& usAttributesXml, CATIDOMDocument_var* pspAnswer) override
    {
        return Target::Of(*this)->CreateObject(usClassName, usKey, usAttributesXml, pspAnswer);
    }

    HRESULT DeleteItems(const CATListValCATUnicodeString& Keys, const CATUnicodeString* pusDeleteOption, CATIDOMDocument_var* pspAnswer) override
    {
        return Target::Of(*this)->DeleteItems(Keys, pusDeleteOption, pspAnswer);
    }

    HRESULT InvokeFunction(const CATUnicodeString& usFunctionName, const CATListValCATUnicodeString& ArgNames, const CATListValCATUnicodeString& ArgValues, CATIDOMDocument_var* pspAnswer) override
    {
        return Target::Of(*this)->InvokeFunction(usFunctionName, ArgNames, ArgValues, pspAnswer);
    }

    HRESULT FetchFile(const CATUnicodeString& usKey, const CATUnicodeString& usPath) override
    {
        return Target::Of(*this)->FetchFile(usKey, usPath);
    }
};

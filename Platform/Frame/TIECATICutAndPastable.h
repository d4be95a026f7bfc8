#pragma once

#include "CATTie.h"
#include "CATICutAndPastable.h"

// Interface object of CATICutAndPastable; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATICutAndPastable : public Tie
{
public:
    using Tie::Tie;

    CATListPtrCATFormat* ListExtractFormats() override
    {
        return Target::Of(*this)->ListExtractFormats();
    }

    int BoundaryExtract(CATListValCATBaseUnknown_var& ioObjects, const CATFormat* pFormat) override
    {
        return Target::Of(*this)->BoundaryExtract(ioObjects, pFormat);
    }

    CATBaseUnknown_var Extract(const CATFormat* pFormat) override
    {
        return Target::Of(*this)->Extract(pFormat);
    }

    CATListPtrCATFormat* ListPasteFormats() override
    {
        return Target::Of(*this)->ListPasteFormats();
    }

    CATListValCATBaseUnknown_var Paste(const CATListValCATBaseUnknown_var& objects, const CATFormat* pFormat) override
    {
        return Target::Of(*this)->Paste(objects, pFormat);
    }

    int Create(const CATBaseUnknown_var& spContent, const CATFormat* pFormat) override
    {
        return Target::Of(*this)->Create(spContent, pFormat);
    }

    int Update(const CATBaseUnknown_var& spContent, const CATFormat* pFormat) override
    {
        return Target::Of(*this)->Update(spContent, pFormat);
    }

    CATListPtrCATFormat* ListLinkFormats() override
    {
        return Target::Of(*this)->ListLinkFormats();
    }

    CATListValCATBaseUnknown_var Link(const CATListValCATBaseUnknown_var& objects, const CATFormat* pFormat) override
    {
        return Target::Of(*this)->Link(objects, pFormat);
    }

    CATListPtrCATFormat* ListRemoveFormats() override
    {
        return Target::Of(*this)->ListRemoveFormats();
    }

    int BoundaryRemove(CATListValCATBaseUnknown_var& ioObjects, const CATFormat* pFormat) override
    {
        return Target::Of(*this)->BoundaryRemove(ioObjects, pFormat);
    }

    int Remove(const CATFormat* pFormat) override
    {
        return Target::Of(*this)->Remove(pFormat);
    }
};

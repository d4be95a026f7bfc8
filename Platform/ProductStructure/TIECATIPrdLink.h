#pragma once

#include "CATTie.h"
#include "CATIPrdLink.h"

// Interface object of CATIPrdLink; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIECATIPrdLink : public Tie
{
public:
    using Tie::Tie;

    HRESULT GetLinkState(CATPrdLinkState* pState) override
    {
        return Target::Of(*this)->GetLinkState(pState);
    }

    HRESULT GetLinkedFileName(CATUnicodeString* pusStorageName) override
    {
        return Target::Of(*this)->GetLinkedFileName(pusStorageName);
    }

    HRESULT GetDocument(CATDocument** ppDocument) override
    {
        return Target::Of(*this)->GetDocument(ppDocument);
    }

    HRESULT GetShapeRepDocument(CATDocument** ppDocument) override
    {
        return Target::Of(*this)->GetShapeRepDocument(ppDocument);
    }

    HRESULT LoadDocument() override
    {
        return Target::Of(*this)->LoadDocument();
    }

    HRESULT GetDesignTables(CATListValCATUnicodeString* pNames, CATListValCATUnicodeString* pStorageNames) override
    {
        return Target::Of(*this)->GetDesignTables(pNames, pStorageNames);
    }
};

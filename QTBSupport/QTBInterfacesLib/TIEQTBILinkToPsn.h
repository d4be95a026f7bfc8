#pragma once

#include "CATTie.h"
#include "QTBILinkToPsn.h"

// Interface object of QTBILinkToPsn; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIEQTBILinkToPsn : public Tie
{
public:
    using Tie::Tie;

    HRESULT CorrespondingPsnNodeExists(unsigned char* pbExists, CATIProduct_var* pspIProductOnCorrespondingPsnNode) override
    {
        return Target::Of(*this)->CorrespondingPsnNodeExists(pbExists, pspIProductOnCorrespondingPsnNode);
    }

    HRESULT CorrespondingPsnNodesExist(unsigned char* pbExist, CATListValCATBaseUnknown_var* pCorrespondingPsnNodes, CATFrmWindow** ppFrmWindow) override
    {
        return Target::Of(*this)->CorrespondingPsnNodesExist(pbExist, pCorrespondingPsnNodes, ppFrmWindow);
    }

    HRESULT GetPathToRootPartInstanceInfo(CATListValQTBPartInstanceInfo* pPathToRootPartInstanceInfoList, CATUnicodeString* pusPartNumberAttrValue, CATUnicodeString* pusFileName) override
    {
        return Target::Of(*this)->GetPathToRootPartInstanceInfo(pPathToRootPartInstanceInfoList, pusPartNumberAttrValue, pusFileName);
    }

    HRESULT HighlightPsnNodes(unsigned char bEmptyHighlightFirst, const unsigned char& bActivateWindow, CATFrmWindow** ppFrmWindowWhereHighlighted) override
    {
        return Target::Of(*this)->HighlightPsnNodes(bEmptyHighlightFirst, bActivateWindow, ppFrmWindowWhereHighlighted);
    }
};

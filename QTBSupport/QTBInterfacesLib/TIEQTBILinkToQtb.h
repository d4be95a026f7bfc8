#pragma once

#include "CATTie.h"
#include "QTBILinkToQtb.h"

// Interface object of QTBILinkToQtb; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIEQTBILinkToQtb : public Tie
{
public:
    using Tie::Tie;

    HRESULT ProdStrucPdmNodeExists(unsigned char* pbExists, QTBIPdmNode_var* pspIPdmNode, QTBIPdmObjNode_var* pspIPdmObjNodeOnPart) override
    {
        return Target::Of(*this)->ProdStrucPdmNodeExists(pbExists, pspIPdmNode, pspIPdmObjNodeOnPart);
    }

    HRESULT HighlightProdStrucNode(unsigned char bEmptyHighlightFirst, unsigned char bActivateWindow, CATFrmWindow** ppFrmWindowWhereHighlighted) override
    {
        return Target::Of(*this)->HighlightProdStrucNode(bEmptyHighlightFirst, bActivateWindow, ppFrmWindowWhereHighlighted);
    }

    HRESULT CatiaFilePdmNodeExists(unsigned char* pbExists, QTBIPdmNode_var* pspIPdmNode) override
    {
        return Target::Of(*this)->CatiaFilePdmNodeExists(pbExists, pspIPdmNode);
    }

    HRESULT HighlightCatiaFileNode(unsigned char bEmptyHighlightFirst, unsigned char bActivateWindow, CATFrmWindow** ppFrmWindowWhereHighlighted) override
    {
        return Target::Of(*this)->HighlightCatiaFileNode(bEmptyHighlightFirst, bActivateWindow, ppFrmWindowWhereHighlighted);
    }

    HRESULT FileStrucPdmNodeExists(unsigned char* pbExists, QTBIPdmNode_var* pspIPdmNode, unsigned char* pbNameOrVersionDiffers) override
    {
        return Target::Of(*this)->FileStrucPdmNodeExists(pbExists, pspIPdmNode, pbNameOrVersionDiffers);
    }

    HRESULT CorrespondingPdmNodesExist(unsigned char* pbExist, QTBIPdmRelNode_var* pspIPdmRelNodeOnPartRel, QTBIPdmObjNode_var* pspIPdmObjNodeOnPartObj, QTBIPdmObjNode_var* pspIPdmObjNodeOnFileObj) override
    {
        return Target::Of(*this)->CorrespondingPdmNodesExist(pbExist, pspIPdmRelNodeOnPartRel, pspIPdmObjNodeOnPartObj, pspIPdmObjNodeOnFileObj);
    }

    HRESULT SetCatiaPartNumberForLink(const CATUnicodeString& usCatiaPartNumber) override
    {
        return Target::Of(*this)->SetCatiaPartNumberForLink(usCatiaPartNumber);
    }

    HRESULT GetCatiaPartNumberForLink(CATUnicodeString* pusCatiaPartNumber, const unsigned char& bLoadDocument) override
    {
        return Target::Of(*this)->GetCatiaPartNumberForLink(pusCatiaPartNumber, bLoadDocument);
    }
};

#pragma once

#include "CATTie.h"
#include "QTBIPsnNode.h"

// Interface object of QTBIPsnNode; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIEQTBIPsnNode : public Tie
{
public:
    using Tie::Tie;

    HRESULT GetFatherProduct(CATIProduct_var* pspIProductOnFatherNode, const unsigned char& bConsiderSpecialBehavior) override
    {
        return Target::Of(*this)->GetFatherProduct(pspIProductOnFatherNode, bConsiderSpecialBehavior);
    }

    HRESULT GetDirectChildren(CATListValCATBaseUnknown_var* pDirectChildNodes, const unsigned char& bConsiderSpecialBehavior, const unsigned char& bStopAtCmiArchiveRoot, const QTBBomType& WantedBomType, const unsigned char& bIgnoreInvalidNodes) override
    {
        return Target::Of(*this)->GetDirectChildren(pDirectChildNodes, bConsiderSpecialBehavior, bStopAtCmiArchiveRoot, WantedBomType, bIgnoreInvalidNodes);
    }

    HRESULT GetAllChildren(CATListValCATBaseUnknown_var* pAllChildNodes, const unsigned char& bConsiderSpecialBehavior, const unsigned char& bStopAtCmiArchiveRoot, const QTBBomType& WantedBomType, const unsigned char& bIgnoreInvalidNodes, const unsigned char& bCheckUniqueInstanceNames) override
    {
        return Target::Of(*this)->GetAllChildren(pAllChildNodes, bConsiderSpecialBehavior, bStopAtCmiArchiveRoot, WantedBomType, bIgnoreInvalidNodes, bCheckUniqueInstanceNames);
    }

    HRESULT GetDirectReferenceChildNodes(CATListValCATBaseUnknown_var* pDirectReferenceChildNodes, const QTBBomType& WantedBomType, CATListValCATUnicodeString* pReferenceFileNames) override
    {
        return Target::Of(*this)->GetDirectReferenceChildNodes(pDirectReferenceChildNodes, WantedBomType, pReferenceFileNames);
    }

    HRESULT GetAllReferenceChildNodes(CATListValCATBaseUnknown_var* pAllReferenceChildNodes, const QTBBomType& WantedBomType, CATListValCATUnicodeString* pReferenceFileNames) override
    {
        return Target::Of(*this)->GetAllReferenceChildNodes(pAllReferenceChildNodes, WantedBomType, pReferenceFileNames);
    }

    HRESULT GetPdmBomInfo(QTBBomType* pBomType) override
    {
        return Target::Of(*this)->GetPdmBomInfo(pBomType);
    }

    HRESULT IsCmiArchiveRoot(unsigned char* pbIsCmiArchiveRoot, CATUnicodeString* pusArchiveFileName) override
    {
        return Target::Of(*this)->IsCmiArchiveRoot(pbIsCmiArchiveRoot, pusArchiveFileName);
    }

    HRESULT SaveCurrentChildInstanceInfoStrings() override
    {
        return Target::Of(*this)->SaveCurrentChildInstanceInfoStrings();
    }

    HRESULT CheckCurrentChildInstanceInfoLists(CATListValCATUnicodeString* pAdditionalPsnNodes, CATListValCATUnicodeString* pMissingPsnNodes, const unsigned char& bOnlyBomParts) override
    {
        return Target::Of(*this)->CheckCurrentChildInstanceInfoLists(pAdditionalPsnNodes, pMissingPsnNodes, bOnlyBomParts);
    }

    HRESULT GetPdmFileObjInfo(CATUnicodeString* pusPdmFileObjInfo) override
    {
        return Target::Of(*this)->GetPdmFileObjInfo(pusPdmFileObjInfo);
    }

    HRESULT GetPsnNodeType(CATUnicodeString* pusPsnNodeType, CATUnicodeString* pusFileName) override
    {
        return Target::Of(*this)->GetPsnNodeType(pusPsnNodeType, pusFileName);
    }

    HRESULT SetPdmNodeType(const CATUnicodeString& usPdmNodeType) override
    {
        return Target::Of(*this)->SetPdmNodeType(usPdmNodeType);
    }

    HRESULT GetPdmNodeType(CATUnicodeString* pusPdmNodeType, CATUnicodeString* pusPdmNodeTypeNls, unsigned char* pbPdmNodeTypeIsDerived) override
    {
        return Target::Of(*this)->GetPdmNodeType(pusPdmNodeType, pusPdmNodeTypeNls, pbPdmNodeTypeIsDerived);
    }

    HRESULT GetPdmNodeTypeCommandHeaderIds(CATListValCATUnicodeString* pCommandHeaderIdList) override
    {
        return Target::Of(*this)->GetPdmNodeTypeCommandHeaderIds(pCommandHeaderIdList);
    }

    HRESULT GetPathToRootPartInstanceInfo(CATListValQTBPartInstanceInfo* pPathToRootPartInstanceInfoList, CATIProduct_var* pspIProductOnPdmPartMainNode) override
    {
        return Target::Of(*this)->GetPathToRootPartInstanceInfo(pPathToRootPartInstanceInfoList, pspIProductOnPdmPartMainNode);
    }

    HRESULT SetStdCatiaAttribute(const QTBPsnAttrType& PsnAttrType, const CATUnicodeString& usValue, unsigned char* pbAttrChanged, const unsigned char& bLoadDocument) override
    {
        return Target::Of(*this)->SetStdCatiaAttribute(PsnAttrType, usValue, pbAttrChanged, bLoadDocument);
    }

    HRESULT DocumentIsDirty(unsigned char* pbIsDirty, unsigned char* pbHasDesignTables) override
    {
        return Target::Of(*this)->DocumentIsDirty(pbIsDirty, pbHasDesignTables);
    }

    HRESULT GetReferenceDocumentPtr(CATDocument** ppDocument, unsigned char bTraceDocument) override
    {
        return Target::Of(*this)->GetReferenceDocumentPtr(ppDocument, bTraceDocument);
    }

    HRESULT NeedsSpecialBehavior(unsigned char* pbNeedsSpecialBehavior, CATUnicodeString* pusBehavior) override
    {
        return Target::Of(*this)->NeedsSpecialBehavior(pbNeedsSpecialBehavior, pusBehavior);
    }

    HRESULT PrintNodeInformation() override
    {
        return Target::Of(*this)->PrintNodeInformation();
    }

    HRESULT SetReferenceCatiaAttrsChecked(unsigned char bChecked) override
    {
        return Target::Of(*this)->SetReferenceCatiaAttrsChecked(bChecked);
    }

    HRESULT GetReferenceCatiaAttrsChecked(unsigned char* pbChecked) override
    {
        return Target::Of(*this)->GetReferenceCatiaAttrsChecked(pbChecked);
    }

    HRESULT AddMessagesFromPdm(const CATListValQTBPdmMessage& Messages) override
    {
        return Target::Of(*this)->AddMessagesFromPdm(Messages);
    }

    HRESULT GetMessagesFromPdm(CATListValQTBPdmMessage* pMessagesFromPdm) override
    {
        return Target::Of(*this)->GetMessagesFromPdm(pMessagesFromPdm);
    }

    HRESULT DeleteMessagesFromPdm() override
    {
        return Target::Of(*this)->DeleteMessagesFromPdm();
    }
};

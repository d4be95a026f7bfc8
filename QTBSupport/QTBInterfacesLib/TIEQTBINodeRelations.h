#pragma once

#include "CATTie.h"
#include "QTBINodeRelations.h"

// Interface object of QTBINodeRelations; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIEQTBINodeRelations : public Tie
{
public:
    using Tie::Tie;

    HRESULT SetRightNodeList(const CATUnicodeString& usRelationName, const CATListValCATBaseUnknown_var& Nodes) override
    {
        return Target::Of(*this)->SetRightNodeList(usRelationName, Nodes);
    }

    HRESULT AddRightNode(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode, int position, const unsigned char& bReportDuplicate) override
    {
        return Target::Of(*this)->AddRightNode(usRelationName, spNode, position, bReportDuplicate);
    }

    HRESULT RemoveRightNode(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode) override
    {
        return Target::Of(*this)->RemoveRightNode(usRelationName, spNode);
    }

    HRESULT RightNodeExists(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode, unsigned char* pbExists) override
    {
        return Target::Of(*this)->RightNodeExists(usRelationName, spNode, pbExists);
    }

    HRESULT SetLeftNodeList(const CATUnicodeString& usRelationName, const CATListValCATBaseUnknown_var& Nodes) override
    {
        return Target::Of(*this)->SetLeftNodeList(usRelationName, Nodes);
    }

    HRESULT AddLeftNode(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode, int position, const unsigned char& bReportDuplicate) override
    {
        return Target::Of(*this)->AddLeftNode(usRelationName, spNode, position, bReportDuplicate);
    }

    HRESULT RemoveLeftNode(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode) override
    {
        return Target::Of(*this)->RemoveLeftNode(usRelationName, spNode);
    }

    HRESULT LeftNodeExists(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode, unsigned char* pbExists) override
    {
        return Target::Of(*this)->LeftNodeExists(usRelationName, spNode, pbExists);
    }

    HRESULT RemoveAllRels(QTBINodeRelations_var* pspINodeRelationsOnNodeToTransferRelationsTo) override
    {
        return Target::Of(*this)->RemoveAllRels(pspINodeRelationsOnNodeToTransferRelationsTo);
    }

    HRESULT GetRightNodeList(const CATUnicodeString& usRelationName, CATListValCATBaseUnknown_var* pNodeList, const NodesToRetrieve& mode) override
    {
        return Target::Of(*this)->GetRightNodeList(usRelationName, pNodeList, mode);
    }

    HRESULT GetLeftNodeList(const CATUnicodeString& usRelationName, CATListValCATBaseUnknown_var* pNodeList, const NodesToRetrieve& mode) override
    {
        return Target::Of(*this)->GetLeftNodeList(usRelationName, pNodeList, mode);
    }

    HRESULT GetRightRelationNames(CATListValCATUnicodeString* pNames, const unsigned char& bExcludePdmToRep) override
    {
        return Target::Of(*this)->GetRightRelationNames(pNames, bExcludePdmToRep);
    }

    HRESULT GetLeftRelationNames(CATListValCATUnicodeString* pNames, const unsigned char& bExcludePdmToRep) override
    {
        return Target::Of(*this)->GetLeftRelationNames(pNames, bExcludePdmToRep);
    }

    HRESULT GetRightRelationsCount(int* pCount, const unsigned char& bOnlyPdmRelations) override
    {
        return Target::Of(*this)->GetRightRelationsCount(pCount, bOnlyPdmRelations);
    }

    HRESULT GetLeftRelationsCount(int* pCount, const unsigned char& bOnlyPdmRelations) override
    {
        return Target::Of(*this)->GetLeftRelationsCount(pCount, bOnlyPdmRelations);
    }

    HRESULT GetAllRightRelations(CATListValCATBaseUnknown_var* pNodeList, const unsigned char& bExcludePdmToRep, const NodesToRetrieve& mode) override
    {
        return Target::Of(*this)->GetAllRightRelations(pNodeList, bExcludePdmToRep, mode);
    }

    HRESULT GetAllLeftRelations(CATListValCATBaseUnknown_var* pNodeList, const unsigned char& bExcludePdmToRep, const NodesToRetrieve& mode) override
    {
        return Target::Of(*this)->GetAllLeftRelations(pNodeList, bExcludePdmToRep, mode);
    }

    HRESULT GetFirstNodeOfEachRightPdmRelation(CATListValCATBaseUnknown_var* pNodeList) override
    {
        return Target::Of(*this)->GetFirstNodeOfEachRightPdmRelation(pNodeList);
    }

    HRESULT GetFirstNodeOfEachLeftPdmRelation(CATListValCATBaseUnknown_var* pNodeList) override
    {
        return Target::Of(*this)->GetFirstNodeOfEachLeftPdmRelation(pNodeList);
    }
};

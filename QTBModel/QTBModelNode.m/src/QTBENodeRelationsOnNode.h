#pragma once

#include "CATListValCATBaseUnknown_var.h"
#include "CATListValCATUnicodeString.h"
#include "CATListValQTBNodeRelationList.h"
#include "QTBINodeRelations.h"

// QTBINodeRelations on the late type QTBNode: the named links of one node, one list of nodes per relation name and
// side, in order of first use. Lists are made on first use and stay when they become empty. Changing one side changes
// the other node's side too.
class QTBENodeRelationsOnNode : public CATBaseUnknown
{
public:
    HRESULT SetRightNodeList(const CATUnicodeString& usRelationName, const CATListValCATBaseUnknown_var& Nodes);
    HRESULT AddRightNode(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode, int position,
                         const unsigned char& bReportDuplicate);
    HRESULT RemoveRightNode(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode);
    HRESULT RightNodeExists(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode,
                            unsigned char* pbExists);

    HRESULT SetLeftNodeList(const CATUnicodeString& usRelationName, const CATListValCATBaseUnknown_var& Nodes);
    HRESULT AddLeftNode(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode, int position,
                        const unsigned char& bReportDuplicate);
    HRESULT RemoveLeftNode(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode);
    HRESULT LeftNodeExists(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode,
                           unsigned char* pbExists);

    HRESULT RemoveAllRels(QTBINodeRelations_var* pspINodeRelationsOnNodeToTransferRelationsTo);

    HRESULT GetRightNodeList(const CATUnicodeString& usRelationName, CATListValCATBaseUnknown_var* pNodeList,
                             const NodesToRetrieve& mode);
    HRESULT GetLeftNodeList(const CATUnicodeString& usRelationName, CATListValCATBaseUnknown_var* pNodeList,
                            const NodesToRetrieve& mode);
    HRESULT GetRightRelationNames(CATListValCATUnicodeString* pNames, const unsigned char& bExcludePdmToRep);
    HRESULT GetLeftRelationNames(CATListValCATUnicodeString* pNames, const unsigned char& bExcludePdmToRep);
    HRESULT GetRightRelationsCount(int* pCount, const unsigned char& bOnlyPdmRelations);
    HRESULT GetLeftRelationsCount(int* pCount, const unsigned char& bOnlyPdmRelations);
    HRESULT GetAllRightRelations(CATListValCATBaseUnknown_var* pNodeList, const unsigned char& bExcludePdmToRep,
                                 const NodesToRetrieve& mode);
    HRESULT GetAllLeftRelations(CATListValCATBaseUnknown_var* pNodeList, const unsigned char& bExcludePdmToRep,
                                const NodesToRetrieve& mode);
    HRESULT GetFirstNodeOfEachRightPdmRelation(CATListValCATBaseUnknown_var* pNodeList);
    HRESULT GetFirstNodeOfEachLeftPdmRelation(CATListValCATBaseUnknown_var* pNodeList);

private:
    // The two sides: each owns its list, its operations and the texts of its checks.
    struct RightSide;
    struct LeftSide;

    template <class Side>
    HRESULT SetNodeList(const CATUnicodeString& usRelationName, const CATListValCATBaseUnknown_var& Nodes);
    template <class Side>
    HRESULT AddNode(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode, int position,
                    unsigned char bReportDuplicate);
    template <class Side>
    HRESULT RemoveNode(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode);
    template <class Side>
    HRESULT NodeExists(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode,
                       unsigned char* pbExists);
    template <class Side>
    HRESULT RemoveRelsOfSide(QTBINodeRelations_var* pspINodeRelationsOnNodeToTransferRelationsTo);
    template <class Side>
    HRESULT GetNodeList(const CATUnicodeString& usRelationName, CATListValCATBaseUnknown_var* pNodeList,
                        const NodesToRetrieve& mode);
    template <class Side>
    HRESULT GetRelationNames(CATListValCATUnicodeString* pNames, unsigned char bExcludePdmToRep);
    template <class Side>
    HRESULT GetRelationsCount(int* pCount, unsigned char bOnlyPdmRelations);
    template <class Side>
    HRESULT GetAllRelations(CATListValCATBaseUnknown_var* pNodeList, unsigned char bExcludePdmToRep,
                            const NodesToRetrieve& mode);
    template <class Side>
    HRESULT GetFirstNodeOfEachPdmRelation(CATListValCATBaseUnknown_var* pNodeList);

    // Reduces the nodes of a relation to those that the mode asks for; the relations of PDM relation nodes and the two
    // reserved relations are left as they are.
    HRESULT FilterNodesIfNecessary(const CATListValCATBaseUnknown_var& Nodes, const CATUnicodeString& usRelationName,
                                   const NodesToRetrieve& mode, CATListValCATBaseUnknown_var* pFilteredNodes);
    static HRESULT FilterForMostRecentlyUpdatedNodes(const CATListValCATBaseUnknown_var& Nodes,
                                                     CATListValCATBaseUnknown_var* pMostRecentlyUpdatedNodes);
    static HRESULT FilterForCurrentNodes(const CATListValCATBaseUnknown_var& Nodes,
                                         CATListValCATBaseUnknown_var* pCurrentNodes);

    static QTBNodeRelationList* FindRelationList(CATListValQTBNodeRelationList& lists,
                                                 const CATUnicodeString& usRelationName);

    CATListValQTBNodeRelationList m_RightRelationLists;
    CATListValQTBNodeRelationList m_LeftRelationLists;
};

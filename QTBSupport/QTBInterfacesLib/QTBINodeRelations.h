#pragma once

#include "CATListValCATBaseUnknown_var.h"
#include "CATListValCATUnicodeString.h"
#include "QTBInterfacesLibExport.h"

class QTBINodeRelations;
using QTBINodeRelations_var = CATInterface_var<QTBINodeRelations>;

// Which nodes of a relation are wanted. The filter leaves "RepToRep" and "PdmToRep" and the relations of PDM relation
// nodes alone.
enum NodesToRetrieve : int
{
    ALL_NODES = 0,
    // PDM nodes with the highest action index among the relation's nodes.
    MOST_RECENTLY_UPDATED_NODES = 1,
    // PDM nodes that the current action affects.
    ONLY_CURRENT_NODES = 2
};

inline constexpr IID IID_QTBINodeRelations{"QTBINodeRelations"};

// Named links of a node: to the nodes on its right, which it points to, and on its left, which point to it. The other
// node's side of a link is kept in step. position is 0 for the beginning of a relation and 1 for its end.
class QTBINTERFACESLIB_API QTBINodeRelations : public CATBaseUnknown
{
    CATDeclareInterface(QTBINodeRelations, CATBaseUnknown)

public:
    // Makes the given nodes, in their order, the nodes of the relation.
    virtual HRESULT SetRightNodeList(const CATUnicodeString& usRelationName,
                                     const CATListValCATBaseUnknown_var& Nodes) = 0;
    // A link that exists is an error only with bReportDuplicate. A node without relations of its own gives
    // E_NOINTERFACE after this side was changed.
    virtual HRESULT AddRightNode(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode, int position,
                                 const unsigned char& bReportDuplicate) = 0;
    virtual HRESULT RemoveRightNode(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode) = 0;
    virtual HRESULT RightNodeExists(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode,
                                    unsigned char* pbExists) = 0;

    virtual HRESULT SetLeftNodeList(const CATUnicodeString& usRelationName,
                                    const CATListValCATBaseUnknown_var& Nodes) = 0;
    virtual HRESULT AddLeftNode(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode, int position,
                                const unsigned char& bReportDuplicate) = 0;
    virtual HRESULT RemoveLeftNode(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode) = 0;
    virtual HRESULT LeftNodeExists(const CATUnicodeString& usRelationName, const CATBaseUnknown_var& spNode,
                                   unsigned char* pbExists) = 0;

    // Dissolves all links, both sides; with a target (may be null) each is made on the target instead.
    virtual HRESULT RemoveAllRels(QTBINodeRelations_var* pspINodeRelationsOnNodeToTransferRelationsTo) = 0;

    // Empty for a relation that does not exist.
    virtual HRESULT GetRightNodeList(const CATUnicodeString& usRelationName, CATListValCATBaseUnknown_var* pNodeList,
                                     const NodesToRetrieve& mode) = 0;
    virtual HRESULT GetLeftNodeList(const CATUnicodeString& usRelationName, CATListValCATBaseUnknown_var* pNodeList,
                                    const NodesToRetrieve& mode) = 0;

    // Names in order of first use, those of emptied relations included.
    virtual HRESULT GetRightRelationNames(CATListValCATUnicodeString* pNames,
                                          const unsigned char& bExcludePdmToRep) = 0;
    virtual HRESULT GetLeftRelationNames(CATListValCATUnicodeString* pNames, const unsigned char& bExcludePdmToRep) = 0;

    // Number of links; with bOnlyPdmRelations those of "PdmToRep" and "RepToRep" are left out.
    virtual HRESULT GetRightRelationsCount(int* pCount, const unsigned char& bOnlyPdmRelations) = 0;
    virtual HRESULT GetLeftRelationsCount(int* pCount, const unsigned char& bOnlyPdmRelations) = 0;

    // Appends the nodes of all relations to what the list holds.
    virtual HRESULT GetAllRightRelations(CATListValCATBaseUnknown_var* pNodeList, const unsigned char& bExcludePdmToRep,
                                         const NodesToRetrieve& mode) = 0;
    virtual HRESULT GetAllLeftRelations(CATListValCATBaseUnknown_var* pNodeList, const unsigned char& bExcludePdmToRep,
                                        const NodesToRetrieve& mode) = 0;

    // The first of the most recently updated nodes of each relation but "PdmToRep".
    virtual HRESULT GetFirstNodeOfEachRightPdmRelation(CATListValCATBaseUnknown_var* pNodeList) = 0;
    virtual HRESULT GetFirstNodeOfEachLeftPdmRelation(CATListValCATBaseUnknown_var* pNodeList) = 0;
};

#pragma once

#include "CATInterface_var.h"
#include "CATListValCATBaseUnknown_var.h"
#include "QTBModelLibExport.h"
#include "QTBNodeRelationInfo.h"

class QTBIRepNode;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;

// The child rep nodes that an object rep node shows for one relation.
class QTBMODELLIB_API QTBChildRepNodeInfo
{
public:
    QTBChildRepNodeInfo();
    explicit QTBChildRepNodeInfo(const QTBNodeRelationInfo& NodeRelationInfo);
    QTBChildRepNodeInfo(const QTBChildRepNodeInfo& other);
    QTBChildRepNodeInfo& operator=(const QTBChildRepNodeInfo& other);
    virtual ~QTBChildRepNodeInfo();

    HRESULT SetNodeRelationInfo(const QTBNodeRelationInfo& NodeRelationInfo);

    // Appends the node whatever it is; the same one may be appended again.
    HRESULT AppendChildRepNode(const QTBIRepNode_var& spIRepNode);

    unsigned char HasChildRepNodes() const;

    // The children in the order in which they were appended. Fails for a null pointer.
    HRESULT GetChildRepNodes(CATListValCATBaseUnknown_var* pChildNodes) const;

    // The children that the current action or the one before it read, and the others, each in order. Fails for a null
    // pointer and for a child that does not know its PDM node. Used when children are cleaned up after an update.
    HRESULT GetChildRepNodes(CATListValCATBaseUnknown_var* pMostRecentlyUpdatedChildNodes,
                             CATListValCATBaseUnknown_var* pOlderChildNodes) const;

    // Equal when the relations are equal and the lists hold the same nodes in the same order.
    int operator==(const QTBChildRepNodeInfo& other) const;
    int operator!=(const QTBChildRepNodeInfo& other) const;

private:
    QTBNodeRelationInfo m_NodeRelationInfo;
    CATListValCATBaseUnknown_var m_ChildRepNodes;
};

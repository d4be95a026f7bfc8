#pragma once

#include <unordered_map>
#include <vector>

#include "CATListValCATBaseUnknown_var.h"
#include "QTBNodeRelationInfo.h"

class QTBIPdmObjNode;
class QTBIPdmRelNode;
class QTBIRepNode;
using QTBIPdmObjNode_var = CATInterface_var<QTBIPdmObjNode>;
using QTBIPdmRelNode_var = CATInterface_var<QTBIPdmRelNode>;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;

// Lets the trees of all windows follow the current action, where it reaches them: each branch that displays relations
// of a class gets those of them that the action read. For one use.
class QTBTreeFollower
{
public:
    QTBTreeFollower();

    // The relation nodes that the action read. Goes on after a failure; the first one is the result.
    HRESULT Follow(const CATListValCATBaseUnknown_var& pdmRelations);

private:
    // The places where the relation is displayed below that object, which stands at its end.
    HRESULT FollowFrom(const QTBIPdmObjNode_var& spIPdmObjNode, const QTBIPdmRelNode_var& spIPdmRelNode,
                       const CATUnicodeString& usDirection);
    // Does a branch once, however many of its relations were read.
    HRESULT UpdateBranch(const QTBIRepNode_var& spIRepNode, const QTBNodeRelationInfo& info);

    int m_ActionIndex = 0;
    std::unordered_map<const CATBaseUnknown*, std::vector<QTBNodeRelationInfo>> m_Done;
};

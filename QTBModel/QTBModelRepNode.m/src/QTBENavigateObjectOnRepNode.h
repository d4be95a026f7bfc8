#pragma once

#include "CATListValCATBaseUnknown_var.h"
#include "CATListValCATUnicodeString.h"

class QTBIRepNode;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;

// CATINavigateObject on the late type QTBRepNode: the label and the children of a rep node in the tree of its window.
// The session decides whether the tree shows the nodes of relations (QTBGlobVarsUtil::GetShowRelations); without them
// an object hangs below an object, and its label names the relation too.
class QTBENavigateObjectOnRepNode : public CATBaseUnknown
{
public:
    // The label: the node's display string; with relations hidden, below a parent, that of the parent, " / " and the
    // node's own. "?" stands for a display string that cannot be had. A new list with that one text, which the caller
    // owns; NULL on failure.
    CATListValCATUnicodeString* GetIdentificators();

    // The direct children; with relations hidden, below each child the object that the newest action read. A new list
    // that the caller owns; NULL for none and on failure.
    CATListValCATBaseUnknown_var* GetChildren();

private:
    CATUnicodeString GetLabel();
    void CollectChildren(CATListValCATBaseUnknown_var* pChildren);
    static void CollectObjectsBelowRelations(const QTBIRepNode_var& spIRepNodeOnThis,
                                             CATListValCATBaseUnknown_var* pChildren);
};

#pragma once

#include "CATInterface_var.h"
#include "QTBBaseLibExport.h"
#include "QTBExpDlgRelExpandInfo.h"

class CATUnicodeString;
class QTBIRepNode;
class QTBPdmTree;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;

// The commands that grow the tree below a rep node, and the one that folds it. What they show is read from the PDM
// system first when the connection answers requests (QTBIPdmRequests); otherwise it is what the PDM graph holds. They
// fail as the rep node container does: an expansion that the schema's maximum level ended fails, when its work is done,
// with the message that says so.
class QTBBASELIB_API QTBExpandCommands
{
public:
    // Expands along the relations chosen, one level, or all levels along those that say so. The window follows.
    static HRESULT Expand(const QTBIRepNode_var& spIRepNode, const CATListValQTBExpDlgRelExpandInfo& relations);

    // Expands along a tree of relations; below it only the objects of the tree's classes and their subclasses are
    // expanded further.
    static HRESULT ExpandPdmTree(const QTBIRepNode_var& spIRepNode, const QTBPdmTree& pdmTree);
    // The same for the tree of that name of the object's class. Fails with a message when the class has none.
    static HRESULT ExpandPdmTree(const QTBIRepNode_var& spIRepNode, const CATUnicodeString& usTreeName);

    static HRESULT DeExpand(const QTBIRepNode_var& spIRepNode);

    // The relations that the schema offers an object for expansion, those followed from left to right first: all of
    // them, or those that are called by the name of a relationship in that direction. None for a relation.
    static HRESULT GetRelations(const QTBIRepNode_var& spIRepNode, const CATUnicodeString& usRelationshipName,
                                unsigned char bMultiExpand, CATListValQTBExpDlgRelExpandInfo* pRelations);
};

#pragma once

#include "CATInterface_var.h"
#include "CATListValCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"

class QTBIPdmNode;
class QTBNodeRelationInfo;
using QTBIPdmNode_var = CATInterface_var<QTBIPdmNode>;

// Texts of nodes for messages and traces. The Print operations write to the debug output, each line only when the debug
// status is on; they fail, quietly, for an empty handle and for a component that lacks what is to be printed.
class QTBBASELIB_API QTBTraceUtil
{
public:
    // What a person needs to recognise a node: its PDM class and description, for a product its instance name and
    // its part number in parentheses, for anything else its late type; with bWithKey the node's key in brackets behind
    // it. "NULL_var" for an empty handle. Never fails.
    static CATUnicodeString GetNodeString(const CATBaseUnknown_var& spNode, const unsigned char& bWithKey);

    // The node's string attributes and the names and types of the others, one a line, indented by iDepth tabs.
    static HRESULT PrintQtbAttributes(const CATBaseUnknown_var& spNode, int iDepth);

    // The node and, relation by relation, its right and left nodes.
    static HRESULT PrintQtbRelations(const CATBaseUnknown_var& spNode);

    // Name and direction, and the end of the line.
    static HRESULT PrintNodeRelationInfo(const QTBNodeRelationInfo& NodeRelationInfo);

    // The title, the node's text, key and action index, and for a relation the keys of its objects.
    static HRESULT PrintPdmNodeInfo(const QTBIPdmNode_var& spIPdmNode, const CATUnicodeString& usTitle);

    // One item a line with its position.
    static HRESULT PrintStringList(const CATListValCATUnicodeString& list);
};

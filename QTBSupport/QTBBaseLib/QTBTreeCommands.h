#pragma once

#include "CATInterface_var.h"
#include "QTBBaseLibExport.h"

class QTBIRepNode;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;

// Commands of the PDM window on one of its rep nodes.
class QTBBASELIB_API QTBTreeCommands
{
public:
    // Shows the node's object as the root of a new PDM window. Fails for a relation.
    static HRESULT OpenInNewWindow(const QTBIRepNode_var& spIRepNode);

    // Highlights the products that correspond to the node, in their window, which becomes the current one. Fails when
    // there are none.
    static HRESULT Highlight(const QTBIRepNode_var& spIRepNode);
};

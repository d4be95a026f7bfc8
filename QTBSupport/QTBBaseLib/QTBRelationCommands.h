#pragma once

#include "CATInterface_var.h"
#include "QTBBaseLibExport.h"

class QTBIRepNode;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;

// Commands that bring the structure of the CAD session's products into the PDM system: one request for each relation
// that differs (QTBIPdmRequests); the first that is refused ends the command. Without a connection that answers
// requests they fail with the message that names the service, for a node without corresponding product with one that
// says so.
class QTBBASELIB_API QTBRelationCommands
{
public:
    // Makes the usages below a part those of its product: creates what is missing, where the PDM system knows a part
    // with the instance's part number, writes where instances stand, and deletes what has no instance any more. The
    // information list names the instances of unknown parts.
    static HRESULT UpdateBelow(const QTBIRepNode_var& spIRepNode);

    // Writes where the instance of a usage stands.
    static HRESULT UpdateParent(const QTBIRepNode_var& spIRepNode);
};

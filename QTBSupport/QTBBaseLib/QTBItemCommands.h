#pragma once

#include "CATInterface_var.h"
#include "QTBBaseLibExport.h"

class CATUnicodeString;
class QTBIRepNode;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;

// Commands on the PDM item that a rep node stands for.
class QTBBASELIB_API QTBItemCommands
{
public:
    // Puts the item's string attributes aside as text: a line each, display name, tab, display value.
    static HRESULT CopyAttributes(const QTBIRepNode_var& spIRepNode);

    // Shows the attributes of the class's form "Properties" in a notice. Fails with a message when the class has none.
    static HRESULT ShowProperties(const QTBIRepNode_var& spIRepNode);

    // Deletes the item in the PDM system and takes it out of the graph and out of all windows; an earlier version that
    // the PDM system answers with takes its place. Nothing is changed when the PDM system refuses.
    static HRESULT Delete(const QTBIRepNode_var& spIRepNode);

    // What every command that needs a service of the PDM system ends with that the connection does not offer: fails
    // with the message that names the service.
    static HRESULT FailWithoutService(const CATUnicodeString& usServiceName);
};

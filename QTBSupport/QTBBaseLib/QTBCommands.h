#pragma once

#include "CATInterface_var.h"
#include "QTBBaseLibExport.h"

class CATUnicodeString;
class QTBContextMenuInfo;
class QTBIRepNode;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;

// The commands of the PDM integration that work on a rep node or a bounding box, by the names under which menus know
// them: the id of a command header, a command name of the query dialog, or a text made for one menu item
// (QTBCommandText). What the session can do itself is done; a command that needs a service of the PDM system which the
// connection does not offer fails with a message that names the service.
class QTBBASELIB_API QTBCommands
{
public:
    // Adds the command headers that the application does not have yet, and has it run the texts of menu items. Called
    // when a PDM window is opened.
    static void AddHeaders();
    // Takes all of that back. Called at the end of the session.
    static void RemoveHeaders();

    // Runs the command of a header id or of the query dialog on a rep node. E_FAIL for an unknown name and for an empty
    // handle.
    static HRESULT Start(const CATUnicodeString& usCommandName, const QTBIRepNode_var& spIRepNode);

    // Runs an entry of the query dialog's menu: an entry for a relationship expands along the relations that are called
    // so. A separator does nothing. Fails, quietly, for an entry that is not enabled.
    static HRESULT Start(const QTBContextMenuInfo& entry, const QTBIRepNode_var& spIRepNode);

    // Runs the text of a menu item; S_FALSE for a text of somebody else's.
    static HRESULT Interpret(const CATUnicodeString& usCommandText, const QTBIRepNode_var& spIRepNode);
};

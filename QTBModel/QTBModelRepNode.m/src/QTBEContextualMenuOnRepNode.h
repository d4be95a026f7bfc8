#pragma once

#include "CATExtIContextualMenu.h"
#include "CATInterface_var.h"

class QTBIPdmNode;
class QTBIRepNode;
using QTBIPdmNode_var = CATInterface_var<QTBIPdmNode>;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;

// CATIContextualMenu on the late type QTBRepNode: the standard menu with the node's own items behind it. The menu is
// built once per node; which commands are available is found out each time it is opened, since all nodes share the
// command headers.
class QTBEContextualMenuOnRepNode : public CATExtIContextualMenu
{
public:
    // A node whose own items cannot be built has the standard menu.
    QTBEContextualMenuOnRepNode();

    // Tells the current editor's listeners that a menu is opened and makes the commands available that the PDM object
    // behind the node allows. oMenu is given in any case; on failure the commands behind the one that could not be
    // decided are as they were.
    HRESULT GetContextualMenu(CATCmdAccess*& oMenu);

private:
    void LinkOwnItems();

    // Steps of an opening; a header that the application lacks is left out.
    static void UpdatePromoteHeader(const QTBIPdmNode_var& spIPdmNode);
    static HRESULT UpdateHighlightHeader(const QTBIPdmNode_var& spIPdmNode);

    // Whether the relation to the parent may be updated. What cannot be found out is not allowed.
    static bool ParentCmpRelMayBeUpdated(const QTBIRepNode_var& spIRepNodeOnThis);
};

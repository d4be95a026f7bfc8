#pragma once

#include "CATInterface_var.h"
#include "CATUnicodeString.h"

// One line of a displayed navigation tree.
struct CATNavigLine
{
    CATBaseUnknown_var spObject;
    CATUnicodeString label;
    // Name of the icon, empty for the tree's own.
    CATUnicodeString icon;
    // The state marked on the line, 0 for none.
    int stateCode;
    // 0 for a root.
    int level;
    bool bHasChildren;
    // Whether the children follow.
    bool bExpanded;
};

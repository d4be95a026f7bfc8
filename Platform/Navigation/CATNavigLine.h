#pragma once

#include "CATInterface_var.h"
#include "CATUnicodeString.h"

// One line of a displayed navigation tree.
struct CATNavigLine
{
    CATBaseUnknown_var spObject;
    CATUnicodeString label;
    // 0 for a root.
    int level;
    bool bHasChildren;
    // Whether the children follow.
    bool bExpanded;
};

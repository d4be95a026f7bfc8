#pragma once

#include <cstdint>

#include "CATInterface_var.h"
#include "CATPrdStructure.h"
#include "CATUnicodeString.h"

class CATPrdReference;

// One use of a reference in another: what is the same at every place where the parent stands. The parent holds it, and
// so do the instances.
struct CATPrdUsage
{
    // Null when the use was removed or the parent's document closed.
    CATPrdReference* pParent = nullptr;
    CATPrdReference* pChild = nullptr;
    // Keeps the child.
    CATBaseUnknown_var spChild;
    // Greater than that of the uses in front of it.
    std::uint32_t number = 0;
    CATUnicodeString instanceName;
    CATUnicodeString description;
    CATPrdUserProperties userProperties;
};

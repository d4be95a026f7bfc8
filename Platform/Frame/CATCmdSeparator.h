#pragma once

#include "CATCmdAccess.h"

// A line between two groups of items.
class PLATFORM_API CATCmdSeparator : public CATCmdAccess
{
public:
    using CATCmdAccess::CATCmdAccess;
};

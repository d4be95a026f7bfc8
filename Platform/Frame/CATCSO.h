#pragma once

#include "CATPathElementSet.h"

// The selected objects of an editor: what the edit commands work on.
class PLATFORM_API CATCSO : public CATPathElementSet
{
};

#pragma once

#include "CATPathElementSet.h"

// The preselected objects of an editor: what the pointer is over.
class PLATFORM_API CATPSO : public CATPathElementSet
{
};

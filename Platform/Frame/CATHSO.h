#pragma once

#include "CATPathElementSet.h"

// The highlighted objects of an editor; the tree and the 3D view mark them.
class PLATFORM_API CATHSO : public CATPathElementSet
{
};

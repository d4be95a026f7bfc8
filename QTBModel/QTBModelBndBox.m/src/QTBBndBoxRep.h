#pragma once

#include "CAT3DCuboidRep.h"

// The representation of a bounding box, a type of its own so that views can tell it from other cuboids.
class QTBBndBoxRep : public CAT3DCuboidRep
{
public:
    using CAT3DCuboidRep::CAT3DCuboidRep;
};

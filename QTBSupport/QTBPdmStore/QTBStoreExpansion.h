#pragma once

#include <vector>

#include "CATUnicodeString.h"

// What an expansion follows.
struct QTBStoreExpansion
{
    struct Relation
    {
        // Class of relations, subclasses included.
        CATUnicodeString name;
        // From the left object to the right one, or back.
        bool isLeftToRight = true;
    };

    // Objects to begin with.
    std::vector<CATUnicodeString> keys;
    // In this order at each object.
    std::vector<Relation> relations;
    // Objects that are up to so many relations away; -1 for any.
    int levels = -1;
};

#pragma once

#include <vector>

#include "CATUnicodeString.h"

// What a query looks for.
struct QTBStoreQuery
{
    // An attribute and its value; a star in the value stands for any text.
    struct Condition
    {
        CATUnicodeString name;
        CATUnicodeString value;
    };

    // Class of objects, subclasses included; empty for any.
    CATUnicodeString className;
    // All must hold. String attributes, the key attribute and "State" can be asked for.
    std::vector<Condition> conditions;
    bool newestVersionsOnly = true;
    // Further objects are left out of the answer; 0 for no limit.
    int maxCount = 0;
};

#pragma once

#include "CATListValCATUnicodeString.h"

// What an import did.
struct QTBStoreImportReport
{
    int objectsAdded = 0;
    int objectsChanged = 0;
    int relationsAdded = 0;
    int relationsChanged = 0;
    // Items that were there already as the answer has them.
    int itemsUnchanged = 0;
    int itemsDeleted = 0;
    int filesAdded = 0;

    // Items that were left out, as the PDM graph leaves them out: without a key, of a class that the schema does not
    // know, relations without their objects. The first of them are named.
    int itemsLeftOut = 0;
    static constexpr int MAX_NAMED = 100;
    CATListValCATUnicodeString leftOut;
};

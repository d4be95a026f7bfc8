#pragma once

#include "QTBBaseLibExport.h"

// Ceilings of what one operation makes of data whose size is not that of what it became: a part that is used twice,
// forty levels deep, is forty records and more tree nodes than any memory holds. docs/limits.md lists all limits.
class QTBBASELIB_API QTBLimits
{
public:
    // Rep nodes that one update of trees passes below those where it starts, new ones and those that were there.
    // Variable QTB_MAX_REP_NODES.
    static int GetMaxRepNodes();
    static constexpr int DEFAULT_MAX_REP_NODES = 5000000;

    // Products that one walk through a product structure passes, the one where it starts included. Variable
    // QTB_MAX_PRODUCTS.
    static int GetMaxProducts();
    static constexpr int DEFAULT_MAX_PRODUCTS = 5000000;
};

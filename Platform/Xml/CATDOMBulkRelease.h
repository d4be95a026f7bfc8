#pragma once

#include "PlatformExport.h"

// While one exists, elements that no handle reaches any more are kept, to be freed at its end. A document that loses
// its last handle meanwhile goes as a whole, which needs no walk through its elements. For operations that let go of a
// graph node by node; may be nested.
class PLATFORM_API CATDOMBulkRelease
{
public:
    CATDOMBulkRelease();
    CATDOMBulkRelease(const CATDOMBulkRelease&) = delete;
    CATDOMBulkRelease& operator=(const CATDOMBulkRelease&) = delete;
    ~CATDOMBulkRelease();
};

#pragma once

#include "QTBImplementation.h"

// The container of the rep nodes of one PDM window.
class QTBRepNodeCont : public QTBImplementation<QTBRepNodeCont>
{
public:
    static constexpr const char* LATE_TYPE = "QTBRepNodeCont";
    static constexpr const char* LATE_TYPE_BASE = NULL;
};

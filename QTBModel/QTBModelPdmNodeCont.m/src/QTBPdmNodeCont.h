#pragma once

#include "QTBImplementation.h"

// The session's container of PDM nodes.
class QTBPdmNodeCont : public QTBImplementation<QTBPdmNodeCont>
{
public:
    static constexpr const char* LATE_TYPE = "QTBPdmNodeCont";
    static constexpr const char* LATE_TYPE_BASE = NULL;
};

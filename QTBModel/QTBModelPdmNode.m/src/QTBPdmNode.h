#pragma once

#include "QTBImplementation.h"

// A node of the PDM graph.
class QTBPdmNode : public QTBImplementation<QTBPdmNode>
{
public:
    static constexpr const char* LATE_TYPE = "QTBPdmNode";
    static constexpr const char* LATE_TYPE_BASE = "QTBNode";
};

#pragma once

#include "QTBImplementation.h"

// A relation between two objects of the PDM graph.
class QTBPdmRelNode : public QTBImplementation<QTBPdmRelNode>
{
public:
    static constexpr const char* LATE_TYPE = "QTBPdmRelNode";
    static constexpr const char* LATE_TYPE_BASE = "QTBPdmNode";
};

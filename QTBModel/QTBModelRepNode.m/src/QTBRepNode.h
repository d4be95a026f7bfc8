#pragma once

#include "QTBImplementation.h"

// A node of the tree in a PDM window.
class QTBRepNode : public QTBImplementation<QTBRepNode>
{
public:
    static constexpr const char* LATE_TYPE = "QTBRepNode";
    static constexpr const char* LATE_TYPE_BASE = "QTBNode";
};

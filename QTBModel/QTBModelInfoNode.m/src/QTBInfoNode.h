#pragma once

#include "QTBImplementation.h"

// An information node of a tree; it stands for no PDM data.
class QTBInfoNode : public QTBImplementation<QTBInfoNode>
{
public:
    static constexpr const char* LATE_TYPE = "QTBInfoNode";
    static constexpr const char* LATE_TYPE_BASE = "QTBNode";
};

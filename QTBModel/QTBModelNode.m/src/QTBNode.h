#pragma once

#include "QTBImplementation.h"

// A node of the model: key, attributes and relations. Base of all late types of nodes.
class QTBNode : public QTBImplementation<QTBNode>
{
public:
    static constexpr const char* LATE_TYPE = "QTBNode";
    static constexpr const char* LATE_TYPE_BASE = NULL;
};

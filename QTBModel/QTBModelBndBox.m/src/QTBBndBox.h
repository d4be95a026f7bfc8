#pragma once

#include "QTBImplementation.h"

// A bounding box shown in the viewer.
class QTBBndBox : public QTBImplementation<QTBBndBox>
{
public:
    static constexpr const char* LATE_TYPE = "QTBBndBox";
    static constexpr const char* LATE_TYPE_BASE = NULL;
};

#pragma once

#include "QTBImplementation.h"

// An object of the PDM graph: a part, a document or a file.
class QTBPdmObjNode : public QTBImplementation<QTBPdmObjNode>
{
public:
    static constexpr const char* LATE_TYPE = "QTBPdmObjNode";
    static constexpr const char* LATE_TYPE_BASE = "QTBPdmNode";
};

#pragma once

#include "QTBPdmObjNode.h"
#include "QTBCreateInstance.h"

// Factory of the late type QTBPdmObjNode.
class QTBECreateInstanceOnPdmObjNode : public QTBCreateInstance<QTBPdmObjNode>
{
};

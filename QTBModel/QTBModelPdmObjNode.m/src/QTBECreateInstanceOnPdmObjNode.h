#pragma once

#include "QTBCreateInstance.h"
#include "QTBPdmObjNode.h"

// Factory of the late type QTBPdmObjNode.
class QTBECreateInstanceOnPdmObjNode : public QTBCreateInstance<QTBPdmObjNode>
{
};

#pragma once

#include "QTBPdmNode.h"
#include "QTBCreateInstance.h"

// Factory of the late type QTBPdmNode.
class QTBECreateInstanceOnPdmNode : public QTBCreateInstance<QTBPdmNode>
{
};

#pragma once

#include "QTBCreateInstance.h"
#include "QTBPdmNode.h"

// Factory of the late type QTBPdmNode.
class QTBECreateInstanceOnPdmNode : public QTBCreateInstance<QTBPdmNode>
{
};

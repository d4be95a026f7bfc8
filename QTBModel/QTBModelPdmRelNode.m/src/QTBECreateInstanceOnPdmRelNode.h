#pragma once

#include "QTBCreateInstance.h"
#include "QTBPdmRelNode.h"

// Factory of the late type QTBPdmRelNode.
class QTBECreateInstanceOnPdmRelNode : public QTBCreateInstance<QTBPdmRelNode>
{
};

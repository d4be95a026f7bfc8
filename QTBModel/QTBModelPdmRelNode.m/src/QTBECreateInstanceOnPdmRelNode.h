#pragma once

#include "QTBPdmRelNode.h"
#include "QTBCreateInstance.h"

// Factory of the late type QTBPdmRelNode.
class QTBECreateInstanceOnPdmRelNode : public QTBCreateInstance<QTBPdmRelNode>
{
};

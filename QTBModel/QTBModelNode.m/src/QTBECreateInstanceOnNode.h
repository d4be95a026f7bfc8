#pragma once

#include "QTBNode.h"
#include "QTBCreateInstance.h"

// Factory of the late type QTBNode.
class QTBECreateInstanceOnNode : public QTBCreateInstance<QTBNode>
{
};

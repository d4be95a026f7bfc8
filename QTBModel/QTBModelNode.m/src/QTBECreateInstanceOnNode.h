#pragma once

#include "QTBCreateInstance.h"
#include "QTBNode.h"

// Factory of the late type QTBNode.
class QTBECreateInstanceOnNode : public QTBCreateInstance<QTBNode>
{
};

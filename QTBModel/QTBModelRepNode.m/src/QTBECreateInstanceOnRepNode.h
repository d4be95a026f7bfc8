#pragma once

#include "QTBCreateInstance.h"
#include "QTBRepNode.h"

// Factory of the late type QTBRepNode.
class QTBECreateInstanceOnRepNode : public QTBCreateInstance<QTBRepNode>
{
};

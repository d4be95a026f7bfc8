#pragma once

#include "QTBCreateInstance.h"
#include "QTBInfoNode.h"

// Factory of the late type QTBInfoNode.
class QTBECreateInstanceOnInfoNode : public QTBCreateInstance<QTBInfoNode>
{
};

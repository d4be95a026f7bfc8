#pragma once

#include "QTBInfoNode.h"
#include "QTBCreateInstance.h"

// Factory of the late type QTBInfoNode.
class QTBECreateInstanceOnInfoNode : public QTBCreateInstance<QTBInfoNode>
{
};

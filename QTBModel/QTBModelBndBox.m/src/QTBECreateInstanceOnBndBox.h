#pragma once

#include "QTBBndBox.h"
#include "QTBCreateInstance.h"

// Factory of the late type QTBBndBox.
class QTBECreateInstanceOnBndBox : public QTBCreateInstance<QTBBndBox>
{
};

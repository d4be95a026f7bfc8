#pragma once

#include "QTBCreateInstance.h"
#include "QTBRepNodeCont.h"

// Factory of the late type QTBRepNodeCont.
class QTBECreateInstanceOnRepNodeCont : public QTBCreateInstance<QTBRepNodeCont>
{
};

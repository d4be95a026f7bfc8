#pragma once

#include "QTBCreateInstance.h"
#include "QTBPdmNodeCont.h"

// Factory of the late type QTBPdmNodeCont.
class QTBECreateInstanceOnPdmNodeCont : public QTBCreateInstance<QTBPdmNodeCont>
{
};

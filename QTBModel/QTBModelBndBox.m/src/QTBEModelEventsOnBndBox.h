#pragma once

#include "CATExtIModelEvents.h"

// CATIModelEvents on the late type QTBBndBox, as the application has it.
class QTBEModelEventsOnBndBox : public CATExtIModelEvents
{
};

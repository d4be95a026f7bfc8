#pragma once

#include "CATExtIVisProperties.h"

// CATIVisProperties on the late type QTBBndBox, as the application has it.
class QTBEVisPropertiesOnBndBox : public CATExtIVisProperties
{
};

#pragma once

#include "CATBaseUnknown.h"

// QTBIInfoNode on the late type QTBInfoNode. The interface has no operations: answering it is what it says.
class QTBEInfoNodeOnInfoNode : public CATBaseUnknown
{
};

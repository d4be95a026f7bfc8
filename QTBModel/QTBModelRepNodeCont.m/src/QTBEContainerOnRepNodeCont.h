#pragma once

#include "CATIContainer.h"

// CATIContainer on the late type QTBRepNodeCont, so that the object modeler takes the component for a container. Its
// rep nodes are deliberately not shown through this interface: both operations answer with nothing.
class QTBEContainerOnRepNodeCont : public CATBaseUnknown
{
public:
    _SEQUENCE_CATBaseUnknown_ptr ListMembers(const char* interfaceName);
    CATBaseUnknown* FindMember(const CATUnicodeString& name);
};

#pragma once

#include "CATBaseUnknown.h"

class CATCmdAccess;

// CATIContextualSubMenu on the late type QTBRepNode. There is no sub-menu; that it is asked for is taken as the moment
// at which the object lights up in every PDM window.
class QTBEContextualSubMenuOnRepNode : public CATBaseUnknown
{
public:
    // Preselects all rep nodes of the PDM node behind this one. Always null.
    CATCmdAccess* GetContextualSubMenu();

private:
    void PreselectRepNodes();
};

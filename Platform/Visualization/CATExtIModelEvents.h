#pragma once

#include <vector>

#include "CATBaseUnknown.h"
#include "CATModelEventListener.h"

// CATIModelEvents as it comes with the application. The operations are described in the interface.
class PLATFORM_API CATExtIModelEvents : public CATBaseUnknown
{
public:
    void Connect(CATModelEventListener* pListener);
    void Disconnect(CATModelEventListener* pListener);
    void Dispatch(CATModelEvent event);

private:
    std::vector<CATModelEventListener*> m_Listeners;
};

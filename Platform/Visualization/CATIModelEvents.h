#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"
#include "CATModelEventListener.h"

inline constexpr IID IID_CATIModelEvents{"CATIModelEvents"};

// The events of an object: commands that change it dispatch them, views that show it listen.
class PLATFORM_API CATIModelEvents : public CATBaseUnknown
{
    CATDeclareInterface(CATIModelEvents, CATBaseUnknown)

public:
    // A listener that is connected already, or not at all, is no error; a null one is left out. Whoever connects
    // disconnects before the listener dies.
    virtual void Connect(CATModelEventListener* pListener) = 0;
    virtual void Disconnect(CATModelEventListener* pListener) = 0;

    // Tells the listeners, in the order in which they were connected. One that is disconnected meanwhile is not told
    // any more, one that is connected meanwhile is not told yet.
    virtual void Dispatch(CATModelEvent event) = 0;
};

using CATIModelEvents_var = CATInterface_var<CATIModelEvents>;

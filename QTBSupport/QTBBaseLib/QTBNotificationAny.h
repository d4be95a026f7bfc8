#pragma once

#include "QTBBaseLibExport.h"

// Names of the events by which the parts of the PDM integration inform each other.
class QTBBASELIB_API QTBNotificationAny
{
public:
    // A rep node's context menu was opened; dispatched by the current editor.
    static const char* CtxMenuSelected();
};

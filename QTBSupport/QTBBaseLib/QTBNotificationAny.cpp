#include "QTBNotificationAny.h"

const char* QTBNotificationAny::CtxMenuSelected()
{
    return "QTBCtxMenuSelected";
}

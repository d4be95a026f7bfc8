#include "QTBNotificationAny.h"

#include <gtest/gtest.h>

#include "CATCallbackManager.h"

namespace {

TEST(NotificationAny, NamesAnEventThatCanBeDispatched)
{
    CATCallbackManager manager;
    int calls = 0;
    manager.AddCallback(&calls, QTBNotificationAny::CtxMenuSelected(), [&calls](CATEventSource*) { ++calls; });
    manager.DispatchCallbacks(QTBNotificationAny::CtxMenuSelected(), nullptr);
    EXPECT_EQ(calls, 1);
}

} // namespace

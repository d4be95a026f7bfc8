#pragma once

#include "CATEventSource.h"

// Subscribing by method. A null source has no events: nothing is added to it or removed from it.

// The callback manager of a source, null for a null source.
inline CATCallbackManager* GetDefaultCallbackManager(CATEventSource* pSource)
{
    return pSource != nullptr ? pSource->GetCallbackManager() : nullptr;
}

// Has the method called with the object that the event is about, when it is a Sender. The subscriber removes its
// subscriptions before it dies. 0 when there is no source.
template <class Subscriber, class Sender>
CATCallbackId AddCallback(Subscriber* pSubscriber, CATEventSource* pSource, const char* event,
                          void (Subscriber::*pMethod)(Sender*))
{
    if (pSource == nullptr) {
        return 0;
    }
    return pSource->GetCallbackManager()->AddCallback(pSubscriber, event, [=](CATEventSource* pSender) {
        if (auto* pTyped = dynamic_cast<Sender*>(pSender); pTyped != nullptr) {
            (pSubscriber->*pMethod)(pTyped);
        }
    });
}

inline void RemoveCallback(CATEventSource* pSource, CATCallbackId id)
{
    if (pSource != nullptr) {
        pSource->GetCallbackManager()->RemoveCallback(id);
    }
}

inline void RemoveSubscriberCallbacks(const void* pSubscriber, CATEventSource* pSource)
{
    if (pSource != nullptr) {
        pSource->GetCallbackManager()->RemoveSubscriberCallbacks(pSubscriber);
    }
}

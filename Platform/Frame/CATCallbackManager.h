#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "PlatformExport.h"

class CATEventSource;

// Identifies one subscription at its callback manager; 0 is none.
using CATCallbackId = unsigned long;

// The subscriptions to the events of one source. Events are told apart by name.
class PLATFORM_API CATCallbackManager
{
public:
    // Receives the object that the event is about.
    using Function = std::function<void(CATEventSource* pSender)>;

    CATCallbackManager();
    CATCallbackManager(const CATCallbackManager&) = delete;
    CATCallbackManager& operator=(const CATCallbackManager&) = delete;
    ~CATCallbackManager();

    // Subscribes to an event; pSubscriber only identifies the subscriber for RemoveSubscriberCallbacks.
    CATCallbackId AddCallback(const void* pSubscriber, const char* event, Function function);

    // An unknown id is no error.
    void RemoveCallback(CATCallbackId id);
    void RemoveSubscriberCallbacks(const void* pSubscriber);

    // Calls the subscribers of the event in the order of their subscriptions. One that is removed meanwhile is not
    // called any more, one that is added meanwhile is not called yet; the manager itself may be destroyed meanwhile.
    // An error that a subscriber raises does not keep the event from the others; the first one is raised again at the
    // end.
    void DispatchCallbacks(const char* event, CATEventSource* pSender);

    int GetCallbackCount() const { return static_cast<int>(m_pSubscriptions->size()); }

private:
    struct Subscription
    {
        const void* pSubscriber;
        std::string event;
        Function function;
    };
    using Subscriptions = std::map<CATCallbackId, Subscription>;

    std::shared_ptr<Subscriptions> m_pSubscriptions;
    CATCallbackId m_LastId = 0;
};

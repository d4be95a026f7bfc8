#include "CATCallbackManager.h"

#include <exception>
#include <utility>
#include <vector>

CATCallbackManager::CATCallbackManager() : m_pSubscriptions(std::make_shared<Subscriptions>()) {}

CATCallbackManager::~CATCallbackManager()
{
    // An event that is being dispatched keeps the table; it finds nobody any more.
    m_pSubscriptions->clear();
}

CATCallbackId CATCallbackManager::AddCallback(const void* pSubscriber, const char* event, Function function)
{
    m_pSubscriptions->emplace(++m_LastId, Subscription{pSubscriber, event, std::move(function)});
    return m_LastId;
}

void CATCallbackManager::RemoveCallback(CATCallbackId id)
{
    m_pSubscriptions->erase(id);
}

void CATCallbackManager::RemoveSubscriberCallbacks(const void* pSubscriber)
{
    std::erase_if(*m_pSubscriptions,
                  [pSubscriber](const auto& entry) { return entry.second.pSubscriber == pSubscriber; });
}

void CATCallbackManager::DispatchCallbacks(const char* event, CATEventSource* pSender)
{
    const std::shared_ptr<Subscriptions> pSubscriptions = m_pSubscriptions;
    std::vector<CATCallbackId> ids;
    for (const auto& [id, subscription] : *pSubscriptions) {
        if (subscription.event == event) {
            ids.push_back(id);
        }
    }
    std::exception_ptr firstError;
    for (const CATCallbackId id : ids) {
        const auto found = pSubscriptions->find(id);
        if (found == pSubscriptions->end()) {
            continue;
        }
        const Function function = found->second.function;
        try {
            function(pSender);
        } catch (...) {
            if (firstError == nullptr) {
                firstError = std::current_exception();
            }
        }
    }
    if (firstError != nullptr) {
        std::rethrow_exception(firstError);
    }
}

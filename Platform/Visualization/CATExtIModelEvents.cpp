#include "CATExtIModelEvents.h"

#include <algorithm>

void CATExtIModelEvents::Connect(CATModelEventListener* pListener)
{
    if (pListener != nullptr && std::find(m_Listeners.begin(), m_Listeners.end(), pListener) == m_Listeners.end()) {
        m_Listeners.push_back(pListener);
    }
}

void CATExtIModelEvents::Disconnect(CATModelEventListener* pListener)
{
    std::erase(m_Listeners, pListener);
}

void CATExtIModelEvents::Dispatch(CATModelEvent event)
{
    // A listener may let go of the object.
    const CATBaseUnknown_var spThis(this);
    const std::vector<CATModelEventListener*> listeners = m_Listeners;
    for (CATModelEventListener* pListener : listeners) {
        if (std::find(m_Listeners.begin(), m_Listeners.end(), pListener) != m_Listeners.end()) {
            pListener->OnModelEvent(spThis, event);
        }
    }
}

#pragma once

#include "CATCallbackManager.h"

// Something whose events can be subscribed to: layouts, windows, editors, commands.
class PLATFORM_API CATEventSource
{
public:
    CATEventSource(const CATEventSource&) = delete;
    CATEventSource& operator=(const CATEventSource&) = delete;
    virtual ~CATEventSource();

    CATCallbackManager* GetCallbackManager() { return &m_CallbackManager; }

protected:
    CATEventSource() = default;

private:
    CATCallbackManager m_CallbackManager;
};

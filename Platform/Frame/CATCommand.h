#pragma once

#include "CATEventSource.h"
#include "CATUnicodeString.h"

// A command or dialog of the application. Commands form a tree; destroying a command destroys those below it.
class PLATFORM_API CATCommand : public CATEventSource
{
public:
    // pParent may be null.
    CATCommand(CATCommand* pParent, const CATUnicodeString& name);
    ~CATCommand() override;

    const CATUnicodeString& GetName() const { return m_Name; }
    CATCommand* GetParent() const { return m_pParent; }

    // Has the command destroyed when nothing of it runs any more: with the next request, or when the application is
    // idle. For commands made with new.
    void RequestDelayedDestruction();

    // Destroys the commands that asked for it. Called by the frame when the application is idle.
    static void DestroyRequested();

    // Commands alive at this moment; tests look at it.
    static int GetLiveCount();

private:
    void AddChild(CATCommand* pChild);
    void RemoveChild(CATCommand* pChild);

    CATUnicodeString m_Name;
    CATCommand* m_pParent;
    CATCommand* m_pFirstChild = nullptr;
    CATCommand* m_pNextSibling = nullptr;
    CATCommand* m_pPreviousSibling = nullptr;
    bool m_bDestructionRequested = false;
};

#pragma once

#include "CATCmdAccess.h"

// A menu, or an item at which one opens.
class PLATFORM_API CATCmdContainer : public CATCmdAccess
{
public:
    // How long a menu lives that is handed out: as long as its maker keeps it, or until whoever received it is done
    // with it.
    enum Persistence
    {
        KeptByMaker = 0,
        GivenAway = 1
    };

    explicit CATCmdContainer(const CATUnicodeString& name, int persistence = KeptByMaker);
    ~CATCmdContainer() override;

    int GetPersistence() const { return m_Persistence; }

    CATCmdAccess* GetChild() const override { return m_pChild.get(); }

    // Adds an item, with what follows it, behind the last one.
    void AddChild(CATCmdAccess* pItem);

    // For whoever received a menu and is done with it: deletes one that was given away. Null is no error.
    static void Dismiss(CATCmdAccess* pMenu);

private:
    Link m_pChild;
    int m_Persistence;
};

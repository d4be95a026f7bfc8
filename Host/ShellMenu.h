#pragma once

#include <iosfwd>
#include <vector>

#include "CATInterface_var.h"

class CATCmdAccess;
class CATCmdStarter;

// The context menu that the shell printed last.
class ShellMenu
{
public:
    ShellMenu() = default;
    ShellMenu(const ShellMenu&) = delete;
    ShellMenu& operator=(const ShellMenu&) = delete;
    ~ShellMenu();

    // Opens the menu of an object, a rep node or a bounding box, in the place of the one before.
    void Open(const CATBaseUnknown_var& spObject);
    void Close();

    // Numbers and prints the items.
    void Print(std::ostream& out);

    // The object that the menu belongs to.
    const CATBaseUnknown_var& GetObject() const { return m_spObject; }

    // The item of that number, counted from 1; null when there is none.
    const CATCmdAccess* FindItem(std::size_t number) const;

private:
    CATCmdAccess* m_pMenu = nullptr;
    std::vector<CATCmdAccess*> m_Items;
    CATBaseUnknown_var m_spObject;
};

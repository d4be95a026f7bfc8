#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "CATInterface_var.h"

class CATCmdAccess;

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

    // Prints the items with their numbers.
    void Print(std::ostream& out) const;

    // The object that the menu belongs to.
    const CATBaseUnknown_var& GetObject() const { return m_spObject; }

    // The item of that number, counted from 1, or with that title, for items of a menu in the menu behind its title and
    // a slash ("Expand/Consists of"); null when there is none.
    const CATCmdAccess* FindItem(const std::string& name) const;

private:
    struct Item
    {
        CATCmdAccess* pAccess;
        int depth;
        std::string title;  // with those of the menus around it
        std::size_t number; // 0 for a separator
    };

    void ListItems();

    CATCmdAccess* m_pMenu = nullptr;
    std::vector<Item> m_Items;
    CATBaseUnknown_var m_spObject;
};

#pragma once

#include <memory>

#include "CATUnicodeString.h"
#include "PlatformExport.h"

// An item of a menu. Items are made with new and linked to each other: GetNext leads through the items of one menu,
// GetChild into the menu that opens at an item. What an item is linked to belongs to it and is deleted with it; an item
// stands in one place, linking it elsewhere takes it, with what follows it, out of where it stood.
class PLATFORM_API CATCmdAccess
{
public:
    explicit CATCmdAccess(const CATUnicodeString& name);
    CATCmdAccess(const CATCmdAccess&) = delete;
    CATCmdAccess& operator=(const CATCmdAccess&) = delete;
    virtual ~CATCmdAccess();

    const CATUnicodeString& GetName() const { return m_Name; }

    // The text that the menu shows; the item's name as long as none is set.
    const CATUnicodeString& GetTitle() const { return m_Title.IsEmpty() ? m_Name : m_Title; }
    void SetTitle(const CATUnicodeString& title) { m_Title = title; }

    // Null for the last item of a menu.
    CATCmdAccess* GetNext() const { return m_pNext.get(); }

    // Has the item, with what follows it, stand behind this one; null for nothing. What stood there before is deleted.
    // Nothing happens when this item is one of those, since a menu does not end in itself. An item with a menu of its
    // own stays the caller's when memory runs out.
    void SetNext(CATCmdAccess* pNext);

    // First item of the menu that opens here; null for an item that opens none.
    virtual CATCmdAccess* GetChild() const { return nullptr; }

protected:
    using Link = std::unique_ptr<CATCmdAccess>;

    // Has an item with what follows it hang on the link, which is this item's.
    void Hang(Link& link, CATCmdAccess* pItem);

private:
    bool IsReachedFrom(const CATCmdAccess* pItem) const;

    CATUnicodeString m_Name;
    CATUnicodeString m_Title;
    Link m_pNext;
    // The link that the item hangs on, null for none.
    Link* m_pLink = nullptr;
};

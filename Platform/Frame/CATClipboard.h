#pragma once

#include "CATFormat.h"
#include "CATListValCATBaseUnknown_var.h"

class CATCSO;
struct CATClipboardSide;

// The clipboard for objects and the edit commands that use it. The first object of a selection is asked whether a
// command may run on it (CATICSOFilter; without one it may), and which objects it works on; the objects themselves say
// in which formats and what becomes of them (CATICutAndPastable).
//
// A command works on all of its objects or on none. It answers S_FALSE, and nothing happens, when it may not run, when
// there is no object to work on, or when the objects have no format in common. Null selections are empty ones.
class PLATFORM_API CATClipboard
{
public:
    // The application's clipboard; never null.
    static CATClipboard* GetClipboard();

    CATClipboard(const CATClipboard&) = delete;
    CATClipboard& operator=(const CATClipboard&) = delete;

    // Puts what the selected objects give on the clipboard, in place of what it held.
    HRESULT Copy(CATCSO* pCSO);
    // Has the selected objects removed.
    HRESULT Delete(CATCSO* pCSO);
    // Both. E_FAIL when an object refuses to be removed; what is on the clipboard then stays there.
    HRESULT Cut(CATCSO* pCSO);

    // Has the first selected object take over what the clipboard holds, as a copy or as a link. pNewObjects, which may
    // be null, receives what came to be.
    HRESULT Paste(CATCSO* pCSO, CATListValCATBaseUnknown_var* pNewObjects);
    HRESULT Link(CATCSO* pCSO, CATListValCATBaseUnknown_var* pNewObjects);

    // The format of what the clipboard holds; null while it holds nothing. There may be a format and no content: the
    // objects were copied in name only.
    const CATFormat* GetFormat() const { return m_pFormat; }
    const CATListValCATBaseUnknown_var& GetContent() const { return m_Content; }

    void Empty();

private:
    CATClipboard() = default;
    ~CATClipboard() = default;

    HRESULT Insert(const CATClipboardSide& side, CATCSO* pCSO, CATListValCATBaseUnknown_var* pNewObjects) const;

    const CATFormat* m_pFormat = nullptr;
    CATListValCATBaseUnknown_var m_Content;
};

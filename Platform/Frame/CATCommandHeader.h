#pragma once

#include <functional>

#include "CATInterface_var.h"
#include "CATUnicodeString.h"

// What the application knows of a command without running it: its id, its texts and whether it is available at this
// moment. Menus and toolbars name commands by the ids of their headers.
class PLATFORM_API CATCommandHeader
{
public:
    // Runs the command for an object, which may be empty.
    using Action = std::function<HRESULT(const CATBaseUnknown_var& spObject)>;

    // headerClass names the message catalog with the header's texts: the messages <class>.<id>.Title and
    // <class>.<id>.Icon. A new header is available.
    CATCommandHeader(const CATUnicodeString& id, const CATUnicodeString& headerClass, Action action);
    CATCommandHeader(const CATCommandHeader&) = delete;
    CATCommandHeader& operator=(const CATCommandHeader&) = delete;
    ~CATCommandHeader();

    const CATUnicodeString& GetId() const { return m_Id; }
    const CATUnicodeString& GetClass() const { return m_Class; }

    // In the session's language; the id when the catalog has no title.
    CATUnicodeString GetTitle() const;
    // Name of the icon, empty when the catalog has none.
    CATUnicodeString GetIcon() const;

    void BecomeAvailable() { m_bAvailable = true; }
    void BecomeUnavailable() { m_bAvailable = false; }
    bool IsAvailable() const { return m_bAvailable; }

    // Runs the command. Fails with the error CommandNotAvailableERR_1002 while it is not available, else as it does.
    HRESULT StartCommand(const CATBaseUnknown_var& spObject) const;

private:
    CATUnicodeString m_Id;
    CATUnicodeString m_Class;
    Action m_Action;
    bool m_bAvailable = true;
};

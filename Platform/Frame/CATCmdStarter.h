#pragma once

#include "CATBaseUnknown.h"
#include "CATCmdAccess.h"
#include "CATInterface_var.h"

class CATCommandHeader;

// An item that starts a command. The command is that of a command header, given by its id; an item that is made for one
// occasion carries a command text of its own instead and names no header that exists.
class PLATFORM_API CATCmdStarter : public CATCmdAccess
{
public:
    CATCmdStarter(const CATUnicodeString& name, const CATUnicodeString& headerId,
                  const CATUnicodeString& commandText = "");

    const CATUnicodeString& GetHeaderId() const { return m_HeaderId; }
    const CATUnicodeString& GetCommandText() const { return m_CommandText; }

    // False while the header is not available; an item without header always is.
    bool IsAvailable() const;

    // Starts the command for the object that the menu was opened on, which may be empty. Fails when the command is not
    // available, with the command's own failure, and when neither header nor text leads to a command.
    HRESULT Start(const CATBaseUnknown_var& spObject) const;

private:
    // Null when the application does not have it.
    CATCommandHeader* FindHeader() const;

    CATUnicodeString m_HeaderId;
    CATUnicodeString m_CommandText;
};

#include "CATCmdStarter.h"

#include "CATAfrGetCommandHeader.h"
#include "CATApplicationFrame.h"
#include "CATCommandHeader.h"
#include "CATCommandHeaderRegister.h"

CATCmdStarter::CATCmdStarter(const CATUnicodeString& name, const CATUnicodeString& headerId,
                             const CATUnicodeString& commandText)
    : CATCmdAccess(name), m_HeaderId(headerId), m_CommandText(commandText)
{
}

CATCommandHeader* CATCmdStarter::FindHeader() const
{
    CATCommandHeader* pHeader = nullptr;
    return SUCCEEDED(CATAfrGetCommandHeader(m_HeaderId, &pHeader)) ? pHeader : nullptr;
}

bool CATCmdStarter::IsAvailable() const
{
    const CATCommandHeader* pHeader = m_CommandText.IsEmpty() ? FindHeader() : nullptr;
    return pHeader == nullptr || pHeader->IsAvailable();
}

HRESULT CATCmdStarter::Start(const CATBaseUnknown_var& spObject) const
{
    CATCommandHeaderRegister& headers = CATApplicationFrame::GetFrame()->GetCommandHeaders();
    return m_CommandText.IsEmpty() ? headers.StartCommand(m_HeaderId, spObject)
                                   : headers.Interpret(m_CommandText, spObject);
}

#include "CATCommandHeader.h"

#include <utility>

#include "CATError.h"
#include "CATMsgCatalog.h"

CATCommandHeader::CATCommandHeader(const CATUnicodeString& id, const CATUnicodeString& headerClass, Action action)
    : m_Id(id), m_Class(headerClass), m_Action(std::move(action))
{
}

CATCommandHeader::~CATCommandHeader() = default;

CATUnicodeString CATCommandHeader::GetTitle() const
{
    const CATUnicodeString key = m_Class + "." + m_Id + ".Title";
    return CATMsgCatalog::MessageExists(m_Class, key) ? CATMsgCatalog::BuildMessage(m_Class, key) : m_Id;
}

CATUnicodeString CATCommandHeader::GetIcon() const
{
    const CATUnicodeString key = m_Class + "." + m_Id + ".Icon";
    return CATMsgCatalog::MessageExists(m_Class, key) ? CATMsgCatalog::BuildMessage(m_Class, key) : CATUnicodeString();
}

HRESULT CATCommandHeader::StartCommand(const CATBaseUnknown_var& spObject) const
{
    if (!m_bAvailable) {
        auto* pError =
            CATError::Make<CATInternalError>({GetTitle()}, "CommandNotAvailableERR_1002", "CATApplicationFrame");
        return CATError::GetReturn(2, pError, nullptr, __FILE__, __LINE__);
    }
    // A command may take its own header away.
    const Action action = m_Action;
    return action ? action(spObject) : S_OK;
}

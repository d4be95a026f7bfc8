#pragma once

#include "CATDataType.h"
#include "CATListVal.h"
#include "CATUnicodeString.h"

// Kind of a context menu entry.
enum QTBCtxMnuInfoType : int
{
    QTB_CTX_MNU_INFO_COMMAND = 0,
    // Expands along one relation, which the action names.
    QTB_CTX_MNU_INFO_RELATION = 1,
    QTB_CTX_MNU_INFO_SEPARATOR = 2
};

// One entry of a rep node's context menu as the query dialog shows it.
class QTBContextMenuInfo
{
public:
    QTBContextMenuInfo() = default;
    QTBContextMenuInfo(QTBCtxMnuInfoType type, const CATUnicodeString& usActionName, const CATUnicodeString& usTitle,
                       const CATUnicodeString& usCommandName, unsigned char bEnabled)
        : m_usActionName(usActionName), m_usTitle(usTitle), m_usCommandName(usCommandName), m_Type(type),
          m_bEnabled(bEnabled)
    {
    }

    QTBCtxMnuInfoType GetType() const { return m_Type; }
    const CATUnicodeString& GetActionName() const { return m_usActionName; }
    const CATUnicodeString& GetTitle() const { return m_usTitle; }
    const CATUnicodeString& GetCommandName() const { return m_usCommandName; }

    unsigned char IsEnabled() const { return m_bEnabled; }
    void SetEnabled(unsigned char bEnabled) { m_bEnabled = bEnabled; }

    friend bool operator==(const QTBContextMenuInfo&, const QTBContextMenuInfo&) = default;

private:
    CATUnicodeString m_usActionName;
    CATUnicodeString m_usTitle;
    CATUnicodeString m_usCommandName;
    QTBCtxMnuInfoType m_Type = QTB_CTX_MNU_INFO_COMMAND;
    unsigned char m_bEnabled = FALSE;
};

using CATListValQTBContextMenuInfo = CATListVal<QTBContextMenuInfo>;

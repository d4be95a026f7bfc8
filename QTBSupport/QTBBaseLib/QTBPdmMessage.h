#pragma once

#include "CATListVal.h"
#include "CATUnicodeString.h"

// Weight of a message from the PDM system.
enum QTBPdmMessageType : int
{
    QTB_PDM_MESSAGE_INFORMATION = 0,
    QTB_PDM_MESSAGE_WARNING = 1,
    QTB_PDM_MESSAGE_ERROR = 2
};

// A message that the PDM system sent for an item: its weight, its text in the user's language, and the PDM key of the
// item, empty when the message is about none. Kept per product until the user has seen it.
class QTBPdmMessage
{
public:
    QTBPdmMessage() = default;
    QTBPdmMessage(QTBPdmMessageType type, const CATUnicodeString& usText, const CATUnicodeString& usPdmKey)
        : m_usText(usText), m_usPdmKey(usPdmKey), m_Type(type)
    {
    }

    QTBPdmMessageType GetType() const { return m_Type; }
    const CATUnicodeString& GetText() const { return m_usText; }
    const CATUnicodeString& GetPdmKey() const { return m_usPdmKey; }

    friend bool operator==(const QTBPdmMessage&, const QTBPdmMessage&) = default;

private:
    CATUnicodeString m_usText;
    CATUnicodeString m_usPdmKey;
    QTBPdmMessageType m_Type = QTB_PDM_MESSAGE_INFORMATION;
};

using CATListValQTBPdmMessage = CATListVal<QTBPdmMessage>;

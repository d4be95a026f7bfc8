#pragma once

#include <exception>
#include <utility>
#include <vector>

#include "CATDataType.h"
#include "CATUnicodeString.h"

// Why the store refuses a request: a message of the catalog "QTBPdmStoreErrors" with its parameters. Raised inside the
// store, never beyond: QTBPdmStore makes a result of it.
class QTBStoreFailure : public std::exception
{
public:
    template <class... Text>
    explicit QTBStoreFailure(const char* msgId, const Text&... texts)
        : m_MsgId(msgId), m_Parameters{CATUnicodeString(texts)...}
    {
    }

    const char* GetMsgId() const { return m_MsgId; }
    const char* what() const noexcept override { return m_MsgId; }

    // A failure that carries the message for the user.
    HRESULT ToResult() const;

private:
    const char* m_MsgId;
    std::vector<CATUnicodeString> m_Parameters;
};

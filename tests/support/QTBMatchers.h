#pragma once

#include <iostream>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "CATError.h"
#include "QTBDebugUtil.h"

// Matchers on results of operations:
//
//     EXPECT_THAT(spNode->GetKey(&usKey), Succeeds());
//     EXPECT_THAT(spNode->GetParent(NULL), FailsWith("AssertionFailedERR_1003", "pspIRepNode != NULL"));
//     EXPECT_THAT(spNode->GetParent(&spParent), FailsQuietly());

// What a result is, for messages of failing expectations.
inline std::string QTBDescribeResult(HRESULT hr)
{
    if (SUCCEEDED(hr)) {
        return hr == S_OK ? "S_OK" : "success " + std::to_string(hr);
    }
    const CATError* pError = CATError::CATGetLastError(hr, nullptr);
    if (pError == nullptr) {
        return hr == E_NOINTERFACE ? "E_NOINTERFACE without error" : "a failure without error";
    }
    std::string text = "a failure with " + std::string(pError->GetMsgId().View());
    for (const CATUnicodeString& parameter : pError->GetNLSParameters()) {
        text += " [" + std::string(parameter.View()) + "]";
    }
    return text;
}

MATCHER(Succeeds, "succeeds")
{
    *result_listener << "which is " << QTBDescribeResult(arg);
    return arg == S_OK;
}

// A failure without error object: something expected is absent.
MATCHER(FailsQuietly, "fails without error")
{
    *result_listener << "which is " << QTBDescribeResult(arg);
    return FAILED(arg) && CATError::CATGetLastError(arg, nullptr) == nullptr;
}

// A failure whose error has that message id and that text as its first parameter.
MATCHER_P2(FailsWith, msgId, text, std::string("fails with ") + msgId + " [" + text + "]")
{
    *result_listener << "which is " << QTBDescribeResult(arg);
    const CATError* pError = FAILED(arg) ? CATError::CATGetLastError(arg, nullptr) : nullptr;
    return pError != nullptr && pError->GetMsgId() == msgId && !pError->GetNLSParameters().empty() &&
           pError->GetNLSParameters()[0] == text;
}

// A failure with an error of that message id, whatever its parameters.
MATCHER_P(FailsWithMessage, msgId, std::string("fails with ") + msgId)
{
    *result_listener << "which is " << QTBDescribeResult(arg);
    const CATError* pError = FAILED(arg) ? CATError::CATGetLastError(arg, nullptr) : nullptr;
    return pError != nullptr && pError->GetMsgId() == msgId;
}

// The three checks of the library.
inline auto FailsAssertion(const char* text)
{
    return FailsWith("AssertionFailedERR_1003", text);
}
inline auto LacksInterface(const char* text)
{
    return FailsWith("NoInterfaceERR_1002", text);
}
inline auto FailsCall(const char* text)
{
    return FailsWith("HResultFailedERR_1001", text);
}

// Turns the debug output on and takes it down from construction to destruction:
//
//     DebugCapture capture;
//     ...
//     EXPECT_THAT(capture.Lines(), Contains("Is default rep node"));
class DebugCapture
{
public:
    explicit DebugCapture(int traceLevel = 0)
        : m_FormerStatus(QTBDebugUtil::s_bGlobalDebugStatus), m_FormerTraceLevel(QTBDebugUtil::s_GlobalTraceLevel),
          m_pFormerBuffer(std::cout.rdbuf(m_Buffer.rdbuf()))
    {
        QTBDebugUtil::s_bGlobalDebugStatus = TRUE;
        QTBDebugUtil::s_GlobalTraceLevel = traceLevel;
    }
    DebugCapture(const DebugCapture&) = delete;
    DebugCapture& operator=(const DebugCapture&) = delete;
    ~DebugCapture()
    {
        std::cout.rdbuf(m_pFormerBuffer);
        QTBDebugUtil::s_GlobalTraceLevel = m_FormerTraceLevel;
        QTBDebugUtil::s_bGlobalDebugStatus = m_FormerStatus;
    }

    std::string Text() const { return m_Buffer.str(); }

    std::vector<std::string> Lines() const
    {
        std::vector<std::string> lines;
        std::istringstream stream(m_Buffer.str());
        for (std::string line; std::getline(stream, line);) {
            lines.push_back(line);
        }
        return lines;
    }

private:
    unsigned char m_FormerStatus;
    int m_FormerTraceLevel;
    std::ostringstream m_Buffer;
    std::streambuf* m_pFormerBuffer;
};

#pragma once

#include <sstream>
#include <string>

#include "CATError.h"
#include "QTBDebugUtil.h"

// The checks that every operation of the library is built from.
//
// A failed check makes an error object of the catalog "QTBDebugErrors" (or passes on the callee's own), writes one line
// to the debug output and ends the operation: the returning form returns a failure that carries the error, the raising
// form (for guarded callbacks and operations without a result) throws it.
//
// The text of a check is the code of the check itself. Where it has to be another text, the form with _AS takes it as
// its first argument.
//
//   QTB_SCOPE("Class::Operation");               trace scope of an operation
//   QTB_ASSERT(pList != NULL);                   a stated condition
//   QTB_INTERFACE(spINodeOnThis);                a handle that must not be empty
//   QTB_CALL(spNode->GetKey, &usKey);            a call whose result must be a success
//   QTB_RESULT_AS("GetKey", hr);                 a result that somebody else has at hand
//   QTB_RAISE_ASSERT / _INTERFACE / _CALL        the raising forms
//   QTB_REPORT_CALL(function, args...)           reports a failing call on the debug output and goes on
//   QTB_UNWIND_AS("Function", levels, hr);       a failure that comes out of that many nested calls of an operation
//   QTB_TRACE("text" << value);                  one line of debug output
//   return QTB_SUCCESS;  return QTB_QUIET_FAILURE;

#define QTB_SCOPE(name) const QTBDebugUtil qtbScope(name, FALSE)

#define QTB_SUCCESS CATError::GetReturn(1, NULL, NULL, __FILE__, __LINE__)
#define QTB_QUIET_FAILURE CATError::GetReturn(0, NULL, NULL, __FILE__, __LINE__)

// Texts are stringified here, in the outermost macro: one layer deeper NULL would read __null.
#define QTB_ASSERT(...) QTB_ASSERT_AS(#__VA_ARGS__, __VA_ARGS__)
#define QTB_INTERFACE(handle) QTB_INTERFACE_AS(#handle, handle)
#define QTB_CALL(function, ...) QTB_RESULT_AS(#function, function(__VA_ARGS__))

#define QTB_RAISE_ASSERT(...) QTB_RAISE_ASSERT_AS(#__VA_ARGS__, __VA_ARGS__)
#define QTB_RAISE_INTERFACE(handle) QTB_RAISE_INTERFACE_AS(#handle, handle)
#define QTB_RAISE_CALL(function, ...) QTB_RAISE_RESULT_AS(#function, function(__VA_ARGS__))

#define QTB_REPORT_CALL(function, ...) QTB_REPORT_RESULT_AS(#function, function(__VA_ARGS__))

#define QTB_ASSERT_AS(text, ...)                                                                                       \
    do {                                                                                                               \
        if (!(__VA_ARGS__)) [[unlikely]] {                                                                             \
            return QTBCheck::Return(QTBCheck::AssertionFailed(QTB_SITE(text)), QTB_SITE(text));                        \
        }                                                                                                              \
    } while (false)

#define QTB_INTERFACE_AS(text, handle)                                                                                 \
    do {                                                                                                               \
        if ((handle) == NULL_var) [[unlikely]] {                                                                       \
            return QTBCheck::Return(QTBCheck::NoInterface(QTB_SITE(text)), QTB_SITE(text));                            \
        }                                                                                                              \
    } while (false)

#define QTB_RESULT_AS(text, ...)                                                                                       \
    do {                                                                                                               \
        if (const HRESULT qtbResult = (__VA_ARGS__); FAILED(qtbResult)) [[unlikely]] {                                 \
            return QTBCheck::Return(QTBCheck::ResultFailed(qtbResult, QTB_SITE(text)), QTB_SITE(text));                \
        }                                                                                                              \
    } while (false)

#define QTB_RAISE_ASSERT_AS(text, ...)                                                                                 \
    do {                                                                                                               \
        if (!(__VA_ARGS__)) [[unlikely]] {                                                                             \
            QTBCheck::Raise(QTBCheck::AssertionFailed(QTB_SITE(text)), QTB_SITE(text));                                \
        }                                                                                                              \
    } while (false)

#define QTB_RAISE_INTERFACE_AS(text, handle)                                                                           \
    do {                                                                                                               \
        if ((handle) == NULL_var) [[unlikely]] {                                                                       \
            QTBCheck::Raise(QTBCheck::NoInterface(QTB_SITE(text)), QTB_SITE(text));                                    \
        }                                                                                                              \
    } while (false)

#define QTB_RAISE_RESULT_AS(text, ...)                                                                                 \
    do {                                                                                                               \
        if (const HRESULT qtbResult = (__VA_ARGS__); FAILED(qtbResult)) [[unlikely]] {                                 \
            QTBCheck::Raise(QTBCheck::ResultFailed(qtbResult, QTB_SITE(text)), QTB_SITE(text));                        \
        }                                                                                                              \
    } while (false)

#define QTB_REPORT_RESULT_AS(text, ...)                                                                                \
    do {                                                                                                               \
        if (const HRESULT qtbResult = (__VA_ARGS__); FAILED(qtbResult)) [[unlikely]] {                                 \
            QTBCheck::Report(QTBCheck::ResultFailed(qtbResult, QTB_SITE(text)), QTB_SITE(text));                       \
        }                                                                                                              \
    } while (false)

// Walks that are as deep as the data keep their own stack. What fails inside ends the operation as it would come out of
// that many nested calls, each of which reports it.
#define QTB_UNWIND_AS(text, levels, ...)                                                                               \
    do {                                                                                                               \
        if (const HRESULT qtbResult = (__VA_ARGS__); FAILED(qtbResult)) [[unlikely]] {                                 \
            return QTBCheck::Unwind(qtbResult, levels, QTB_SITE(text));                                                \
        }                                                                                                              \
    } while (false)

#define QTB_TRACE(...)                                                                                                 \
    do {                                                                                                               \
        if (QTBDebugUtil::GetDebugStatus()) [[unlikely]] {                                                             \
            std::ostringstream qtbLine;                                                                                \
            qtbLine << __VA_ARGS__;                                                                                    \
            QTBCheck::WriteLine(qtbLine.str());                                                                        \
            QTBDebugUtil::Observe(QTBDebugUtil::OBSERVED_TRACE, "", __FILE__, __LINE__);                               \
        }                                                                                                              \
    } while (false)

#define QTB_SITE(text)                                                                                                 \
    QTBCheck::Site                                                                                                     \
    {                                                                                                                  \
        text, __FILE__, __LINE__                                                                                       \
    }

namespace QTBCheck {

// Where a check stands, and its text.
struct Site
{
    const char* text;
    const char* file;
    int line;
};

// Each makes the error of a failed check and writes its line to the debug output. The error is in the hands of the
// caller, who passes it to Return, Raise or Report.
CATError* AssertionFailed(const Site& site);
CATError* NoInterface(const Site& site);
// The error that the failed result carries, a new one when it carries none. Informational errors write no line.
CATError* ResultFailed(HRESULT hr, const Site& site);

HRESULT Return(CATError* pError, const Site& site);
HRESULT Unwind(HRESULT hr, int levels, const Site& site);
[[noreturn]] void Raise(CATError* pError, const Site& site);
// Writes a line to the debug output.
void WriteLine(const std::string& line);
// Writes the error's message with file and line to the debug output; the failure has no further effect.
void Report(CATError* pError, const Site& site);

} // namespace QTBCheck

#include "QTBCheck.h"

#include <iostream>

namespace {

constexpr const char* CATALOG = "QTBDebugErrors";

// The module's own error class, so that the library owns its destructor.
class QTBModelError : public CATInternalError
{
    CATDeclareErrorClass(QTBModelError, CATInternalError)

public:
    using CATInternalError::CATInternalError;

protected:
    ~QTBModelError() override = default;
};

CATError* CreateError(const char* msgId, const QTBCheck::Site& site)
{
    CATUnicodeString usLine;
    usLine.BuildFromNum(site.line);
    auto* pError = CATError::Make<QTBModelError>({site.text, usLine, site.file}, msgId, CATALOG);
    return pError;
}

void WriteDiagnosis(const char* diagnosis, const QTBCheck::Site& site)
{
    QTB_TRACE(site.text << diagnosis << " -> ERROR ( " << site.file << " : line " << site.line << " )");
}

} // namespace

namespace QTBCheck {

void WriteLine(const std::string& line)
{
    std::cout << line << std::endl;
}

CATError* AssertionFailed(const Site& site)
{
    QTBDebugUtil::Observe(QTBDebugUtil::OBSERVED_ASSERTION, site.text, site.file, site.line);
    WriteDiagnosis(" : assertion FAILED", site);
    return CreateError("AssertionFailedERR_1003", site);
}

CATError* NoInterface(const Site& site)
{
    QTBDebugUtil::Observe(QTBDebugUtil::OBSERVED_INTERFACE, site.text, site.file, site.line);
    WriteDiagnosis(" == NULL_var", site);
    return CreateError("NoInterfaceERR_1002", site);
}

CATError* ResultFailed(HRESULT hr, const Site& site)
{
    QTBDebugUtil::Observe(QTBDebugUtil::OBSERVED_RESULT, site.text, site.file, site.line);
    CATError* pError = CATError::CATGetLastError(hr, NULL);
    if (pError == NULL) {
        pError = CreateError("HResultFailedERR_1001", site);
    }
    if (!pError->IsAKindOf("QTBInformation") && !pError->IsAKindOf("QTBWarning")) {
        WriteDiagnosis(" : HRESULT FAILED", site);
    }
    return pError;
}

HRESULT Return(CATError* pError, const Site& site)
{
    return CATError::GetReturn(2, pError, NULL, site.file, site.line);
}

HRESULT Unwind(HRESULT hr, int levels, const Site& site)
{
    HRESULT result = hr;
    for (int level = 0; level < levels; ++level) {
        result = Return(ResultFailed(result, site), site);
    }
    return result;
}

void Raise(CATError* pError, const Site& site)
{
    CATError::Throw(site.file, site.line, pError);
}

void Report(CATError* pError, const Site& site)
{
    QTB_TRACE(pError->GetNLSMessage() << " File:[" << site.file << "], Line:[" << site.line << "]");
    // Hands the error over to its owner; the result is not needed.
    CATError::GetReturn(2, pError, NULL, site.file, site.line);
}

} // namespace QTBCheck

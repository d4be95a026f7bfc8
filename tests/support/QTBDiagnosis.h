#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "QTBMatchers.h"

// What a failing operation writes to the debug output, check by check from the innermost outwards:
//
//     EXPECT_THAT(DiagnosisOf([&] { return spNode->GetParent(&spParent); }),
//                 ElementsAre(Call("spINodeRelationsOnThis->GetLeftNodeList")));
namespace QTBDiagnosis {

// The forms that the three checks take there.
inline std::string Call(std::string_view text)
{
    return std::string(text) + " : HRESULT FAILED";
}
inline std::string Assertion(std::string_view text)
{
    return std::string(text) + " : assertion FAILED";
}
inline std::string Handle(std::string_view text)
{
    return std::string(text) + " == NULL_var";
}

// The diagnoses among the lines of a capture, without file and line.
inline std::vector<std::string> DiagnosesIn(const DebugCapture& capture)
{
    std::vector<std::string> diagnoses;
    for (const std::string& line : capture.Lines()) {
        const std::size_t end = line.find(" -> ERROR ( ");
        if (end != std::string::npos) {
            diagnoses.push_back(line.substr(0, end));
        }
    }
    return diagnoses;
}

// Runs the operation, which must fail with the error of its first diagnosis: what fails innermost travels outwards
// unchanged. A failure without diagnosis is a quiet one.
template <class Operation>
std::vector<std::string> DiagnosisOf(Operation operation)
{
    const DebugCapture capture;
    const HRESULT hr = operation();
    EXPECT_TRUE(FAILED(hr));
    const std::vector<std::string> diagnoses = DiagnosesIn(capture);
    const CATError* pError = CATError::CATGetLastError(hr, nullptr);
    EXPECT_EQ(pError == nullptr, diagnoses.empty()) << QTBDescribeResult(hr);
    if (pError != nullptr && pError->GetMsgCatalog() == "QTBDebugErrors" && !diagnoses.empty()) {
        EXPECT_EQ(diagnoses.front().rfind(pError->GetNLSParameters().at(0).View(), 0), 0U) << QTBDescribeResult(hr);
    }
    return diagnoses;
}

} // namespace QTBDiagnosis

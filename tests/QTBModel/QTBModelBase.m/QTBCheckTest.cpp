#include "QTBCheck.h"

#include <algorithm>
#include <iostream>
#include <sstream>
#include <string>

#include <gmock/gmock.h>

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"
#include "QTBInformation.h"
#include "QTBMatchers.h"
#include "QTBUserError.h"
#include "QTBWarning.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

// Line of the check in the operation that was called last.
int s_Line = 0;
bool s_bWasPassed = false;

template <class Message>
HRESULT FailWithMessage()
{
    return CATError::GetReturn(2, new Message("SomethingMSG_1"), NULL, __FILE__, __LINE__);
}

HRESULT Succeed()
{
    return S_OK;
}

HRESULT GiveBack(HRESULT hr)
{
    return hr;
}

HRESULT CheckAssertion(const CATUnicodeString& usName)
{
    s_Line = __LINE__ + 1;
    QTB_ASSERT(usName != "");
    s_bWasPassed = true;
    return QTB_SUCCESS;
}

HRESULT CheckAssertionWithCommas(int first, int second)
{
    QTB_ASSERT(std::max(first, second) == 2);
    return QTB_SUCCESS;
}

HRESULT CheckPointer(const int* pValue)
{
    QTB_ASSERT(pValue != NULL);
    return QTB_SUCCESS;
}

HRESULT CheckAssertionUnderAnotherText(bool condition)
{
    QTB_ASSERT_AS("pList!= NULL", condition);
    return QTB_SUCCESS;
}

HRESULT CheckInterface(const CATBaseUnknown_var& spINodeOnThis)
{
    s_Line = __LINE__ + 1;
    QTB_INTERFACE(spINodeOnThis);
    s_bWasPassed = true;
    return QTB_SUCCESS;
}

HRESULT CheckCall(HRESULT hr)
{
    s_Line = __LINE__ + 1;
    QTB_CALL(GiveBack, hr);
    s_bWasPassed = true;
    return QTB_SUCCESS;
}

HRESULT CheckCallOfCall(HRESULT hr)
{
    QTB_CALL(CheckCall, hr);
    return QTB_SUCCESS;
}

HRESULT CheckResultUnderAnotherText(HRESULT hr)
{
    QTB_RESULT_AS("spINode->GetKey", hr);
    return QTB_SUCCESS;
}

void RaiseAssertion(bool bCondition)
{
    s_Line = __LINE__ + 1;
    QTB_RAISE_ASSERT(bCondition);
}

void RaiseInterface(const CATBaseUnknown_var& spHandle)
{
    QTB_RAISE_INTERFACE(spHandle);
}

void RaiseCall(HRESULT hr)
{
    QTB_RAISE_CALL(GiveBack, hr);
}

// The line that a failed check writes.
std::string Diagnosis(const std::string& text, const std::string& verdict)
{
    return text + verdict + " -> ERROR ( tests/QTBModel/QTBModelBase.m/QTBCheckTest.cpp : line " +
           std::to_string(s_Line) + " )";
}

class QTBCheckTest : public testing::Test
{
protected:
    void SetUp() override { s_bWasPassed = false; }

    static CATError* ErrorOf(HRESULT hr) { return CATError::CATGetLastError(hr, NULL); }
};

} // namespace

TEST_F(QTBCheckTest, SuccessIsSOk)
{
    EXPECT_EQ(CheckAssertion("name"), S_OK);
    EXPECT_TRUE(s_bWasPassed);
}

TEST_F(QTBCheckTest, AFailedAssertionEndsTheOperationWithItsOwnCodeAsText)
{
    EXPECT_THAT(CheckAssertion(""), FailsWith("AssertionFailedERR_1003", "usName != \"\""));
    EXPECT_FALSE(s_bWasPassed);
    EXPECT_THAT(CheckAssertionWithCommas(1, 1), FailsAssertion("std::max(first, second) == 2"));
    EXPECT_THAT(CheckAssertionWithCommas(1, 2), Succeeds());
    EXPECT_THAT(CheckPointer(NULL), FailsAssertion("pValue != NULL"));
}

TEST_F(QTBCheckTest, AFailedCheckOfAHandleEndsTheOperation)
{
    EXPECT_THAT(CheckInterface(NULL_var), FailsWith("NoInterfaceERR_1002", "spINodeOnThis"));
    EXPECT_FALSE(s_bWasPassed);
}

TEST_F(QTBCheckTest, AFailedCallEndsTheOperation)
{
    EXPECT_THAT(CheckCall(E_FAIL), FailsWith("HResultFailedERR_1001", "GiveBack"));
    EXPECT_FALSE(s_bWasPassed);
    EXPECT_THAT(CheckCall(S_FALSE), Succeeds());
    EXPECT_TRUE(s_bWasPassed);
    EXPECT_THAT(CheckCall(Succeed()), Succeeds());
}

TEST_F(QTBCheckTest, AnErrorHasTextLineAndFileAsItsThreeParameters)
{
    CATError* pError = ErrorOf(CheckAssertion(""));
    ASSERT_NE(pError, nullptr);
    EXPECT_EQ(pError->GetMsgCatalog(), "QTBDebugErrors");
    EXPECT_THAT(pError->GetNLSParameters(),
                ElementsAre(CATUnicodeString("usName != \"\""), CATUnicodeString(std::to_string(s_Line)),
                            CATUnicodeString("tests/QTBModel/QTBModelBase.m/QTBCheckTest.cpp")));
    EXPECT_EQ(ErrorOf(CheckInterface(NULL_var))->GetNLSParameters().size(), 3U);
    EXPECT_EQ(ErrorOf(CheckCall(E_FAIL))->GetNLSParameters().size(), 3U);
}

TEST_F(QTBCheckTest, AnErrorIsOfAClassOfTheLibrarysOwnBelowTheInternalErrors)
{
    const CATError* pError = ErrorOf(CheckAssertion(""));
    EXPECT_TRUE(pError->IsAKindOf("CATInternalError"));
    EXPECT_STRNE(pError->IsA(), "CATInternalError");
    EXPECT_FALSE(pError->IsAKindOf("QTBWarning"));
    EXPECT_FALSE(pError->IsAKindOf("QTBInformation"));
}

TEST_F(QTBCheckTest, TheThreeKindsOfChecksWriteTheThreeDiagnoses)
{
    DebugCapture assertion;
    CheckAssertion("");
    EXPECT_THAT(assertion.Lines(), ElementsAre(Diagnosis("usName != \"\"", " : assertion FAILED")));
    DebugCapture handle;
    CheckInterface(NULL_var);
    EXPECT_THAT(handle.Lines(), ElementsAre(Diagnosis("spINodeOnThis", " == NULL_var")));
    DebugCapture call;
    CheckCall(E_FAIL);
    EXPECT_THAT(call.Lines(), ElementsAre(Diagnosis("GiveBack", " : HRESULT FAILED")));
}

TEST_F(QTBCheckTest, APassedCheckWritesNothing)
{
    DebugCapture capture;
    CheckAssertion("name");
    CheckCall(S_OK);
    CheckCall(S_FALSE);
    EXPECT_EQ(capture.Text(), "");
}

TEST_F(QTBCheckTest, WithTheDebugStatusOffThereIsNoOutputAndTheResultsAreTheSame)
{
    std::ostringstream output;
    std::streambuf* pFormerBuffer = std::cout.rdbuf(output.rdbuf());
    ASSERT_EQ(QTBDebugUtil::GetDebugStatus(), FALSE);
    const HRESULT hrAssertion = CheckAssertion("");
    const HRESULT hrInterface = CheckInterface(NULL_var);
    const HRESULT hrCall = CheckCall(E_FAIL);
    QTB_TRACE("a decision");
    std::cout.rdbuf(pFormerBuffer);
    EXPECT_EQ(output.str(), "");
    EXPECT_THAT(hrAssertion, FailsAssertion("usName != \"\""));
    EXPECT_THAT(hrInterface, LacksInterface("spINodeOnThis"));
    EXPECT_THAT(hrCall, FailsCall("GiveBack"));
}

TEST_F(QTBCheckTest, TheCalleesOwnErrorIsHandedUpwardsUnchanged)
{
    const HRESULT hr = FailWithMessage<QTBUserError>();
    DebugCapture capture;
    const HRESULT hrOfCaller = CheckCallOfCall(hr);
    EXPECT_EQ(ErrorOf(hrOfCaller), ErrorOf(hr));
    EXPECT_EQ(ErrorOf(hrOfCaller)->GetMsgId(), "SomethingMSG_1");
    EXPECT_THAT(capture.Lines(), ElementsAre(StartsWith("GiveBack : HRESULT FAILED -> ERROR ( "),
                                             StartsWith("CheckCall : HRESULT FAILED -> ERROR ( ")));
}

TEST_F(QTBCheckTest, TheInnermostErrorTravelsToTheOutermostCaller)
{
    EXPECT_THAT(CheckCallOfCall(CheckAssertion("")), FailsAssertion("usName != \"\""));
    EXPECT_THAT(CheckCallOfCall(E_FAIL), FailsCall("GiveBack"));
}

TEST_F(QTBCheckTest, AnErrorOfKindWarningFailsWithoutADiagnosis)
{
    DebugCapture capture;
    const HRESULT hr = FailWithMessage<QTBWarning>();
    EXPECT_EQ(ErrorOf(CheckCallOfCall(hr)), ErrorOf(hr));
    EXPECT_THAT(capture.Lines(), IsEmpty());
}

TEST_F(QTBCheckTest, AnErrorOfKindInformationFailsWithoutADiagnosis)
{
    DebugCapture capture;
    const HRESULT hr = FailWithMessage<QTBInformation>();
    EXPECT_EQ(ErrorOf(CheckCallOfCall(hr)), ErrorOf(hr));
    EXPECT_THAT(capture.Lines(), IsEmpty());
}

TEST_F(QTBCheckTest, AQuietFailureHasNoErrorObjectAndNoLine)
{
    DebugCapture capture;
    EXPECT_THAT(QTB_QUIET_FAILURE, FailsQuietly());
    EXPECT_EQ(capture.Text(), "");
    EXPECT_THAT(CheckCall(QTB_QUIET_FAILURE), FailsCall("GiveBack")) << "a caller that minds makes an error of it";
}

TEST_F(QTBCheckTest, ATextCanBeGivenWhereItIsNotTheCode)
{
    EXPECT_THAT(CheckAssertionUnderAnotherText(false), FailsAssertion("pList!= NULL"));
    EXPECT_THAT(CheckAssertionUnderAnotherText(true), Succeeds());
    EXPECT_THAT(CheckResultUnderAnotherText(E_NOINTERFACE), FailsCall("spINode->GetKey"));
    EXPECT_THAT(CheckResultUnderAnotherText(S_OK), Succeeds());
}

TEST_F(QTBCheckTest, TheRaisingFormsThrowTheErrorThatTheReturningFormsReturn)
{
    DebugCapture capture;
    try {
        RaiseAssertion(false);
        ADD_FAILURE() << "nothing was raised";
    } catch (const CATXHException& exception) {
        EXPECT_EQ(exception.GetError()->GetMsgId(), "AssertionFailedERR_1003");
        EXPECT_THAT(exception.GetError()->GetNLSParameters(),
                    ElementsAre(CATUnicodeString("bCondition"), CATUnicodeString(std::to_string(s_Line)),
                                CATUnicodeString("tests/QTBModel/QTBModelBase.m/QTBCheckTest.cpp")));
    }
    EXPECT_THAT(capture.Lines(), ElementsAre(Diagnosis("bCondition", " : assertion FAILED")));
    try {
        RaiseInterface(NULL_var);
        ADD_FAILURE() << "nothing was raised";
    } catch (const CATXHException& exception) {
        EXPECT_THAT(exception.GetResult(), LacksInterface("spHandle"));
    }
    try {
        RaiseCall(E_FAIL);
        ADD_FAILURE() << "nothing was raised";
    } catch (const CATXHException& exception) {
        EXPECT_THAT(exception.GetResult(), FailsCall("GiveBack"));
    }
    EXPECT_NO_THROW(RaiseAssertion(true));
    EXPECT_NO_THROW(RaiseCall(S_FALSE));
}

TEST_F(QTBCheckTest, ARaisedFailureIsTheCalleesOwnError)
{
    const HRESULT hr = FailWithMessage<QTBWarning>();
    DebugCapture capture;
    try {
        RaiseCall(hr);
        ADD_FAILURE() << "nothing was raised";
    } catch (const CATXHException& exception) {
        EXPECT_EQ(exception.GetError(), ErrorOf(hr));
    }
    EXPECT_EQ(capture.Text(), "");
}

TEST_F(QTBCheckTest, AReportedCallWritesItsMessageWithFileAndLineAndGoesOn)
{
    const HRESULT hr = FailWithMessage<QTBUserError>();
    const std::string message(ErrorOf(hr)->GetNLSMessage().View());
    DebugCapture capture;
    const auto report = [](HRESULT hrOfCall) {
        s_Line = __LINE__ + 1;
        QTB_REPORT_CALL(GiveBack, hrOfCall);
        return QTB_SUCCESS;
    };
    EXPECT_THAT(report(hr), Succeeds());
    EXPECT_THAT(capture.Lines(), testing::Contains(message +
                                                   " File:[tests/QTBModel/QTBModelBase.m/QTBCheckTest.cpp], "
                                                   "Line:[" +
                                                   std::to_string(s_Line) + "]"));
    EXPECT_THAT(report(S_OK), Succeeds());
}

TEST_F(QTBCheckTest, AReportedCallLeavesNoErrorBehind)
{
    CATError::ForgetResults();
    const int before = CATError::GetLiveCount();
    QTB_REPORT_CALL(GiveBack, E_FAIL);
    CATError::ForgetResults();
    EXPECT_EQ(CATError::GetLiveCount(), before);
}

TEST_F(QTBCheckTest, AFailureOutOfNestedCallsIsReportedByEachOfThem)
{
    const auto unwind = [](HRESULT hr, int levels) -> HRESULT {
        QTB_UNWIND_AS("Expand", levels, hr);
        return QTB_SUCCESS;
    };
    const HRESULT hr = FailWithMessage<QTBUserError>();
    DebugCapture capture;
    EXPECT_EQ(unwind(hr, 3), hr);
    EXPECT_EQ(capture.Lines().size(), 3U);
    EXPECT_THAT(capture.Lines(), testing::Each(StartsWith("Expand : HRESULT FAILED -> ERROR ( ")));
    EXPECT_EQ(unwind(S_OK, 3), S_OK);
}

TEST_F(QTBCheckTest, ADecisionMessageIsWrittenOnlyWhenTheDebugStatusIsOn)
{
    int evaluations = 0;
    const auto value = [&evaluations] { return ++evaluations; };
    QTB_TRACE("value [" << value() << "]");
    EXPECT_EQ(evaluations, 0) << "the text of a message that nobody sees is not built";
    DebugCapture capture;
    QTB_TRACE("value [" << value() << "]");
    EXPECT_THAT(capture.Lines(), ElementsAre("value [1]"));
}

TEST_F(QTBCheckTest, AScopeIsNamedAfterItsOperationAndPrintedFromTraceLevelTwoOn)
{
    const auto operation = [] { QTB_SCOPE("QTBClass::Operation"); };
    DebugCapture low(1);
    operation();
    EXPECT_EQ(low.Text(), "");
    DebugCapture high(2);
    operation();
    EXPECT_THAT(high.Lines(),
                ElementsAre(testing::HasSubstr("QTBClass::Operation"), testing::HasSubstr("QTBClass::Operation")));
}

TEST_F(QTBCheckTest, ManyFailuresTakeBoundedMemory)
{
    CATError::ForgetResults();
    const int before = CATError::GetLiveCount();
    for (int i = 0; i < 50000; ++i) {
        CheckAssertion("");
    }
    EXPECT_LT(CATError::GetLiveCount() - before, 20000);
}

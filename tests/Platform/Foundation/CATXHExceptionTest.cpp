#include "CATError.h"

#include <optional>

#include <gmock/gmock.h>

#include "CATInterface_var.h"
#include "QTBMatchers.h"

namespace {

class CATXHExceptionTest : public testing::Test
{
protected:
    void SetUp() override
    {
        CATError::ForgetResults();
        m_ErrorsBefore = CATError::GetLiveCount();
    }

    void TearDown() override
    {
        CATError::ForgetResults();
        EXPECT_EQ(CATError::GetLiveCount(), m_ErrorsBefore) << "errors outlive their exceptions";
    }

    static CATInternalError* NewError()
    {
        auto* pError = new CATInternalError("SomethingERR_1", "Catalog");
        pError->SetNLSParameters(1, "expression");
        return pError;
    }

    int m_ErrorsBefore = 0;
};

} // namespace

TEST_F(CATXHExceptionTest, ARaisedErrorArrivesWithTheException)
{
    CATError* pError = NewError();
    try {
        CATError::Throw(__FILE__, __LINE__, pError);
    } catch (const CATXHException& exception) {
        EXPECT_EQ(exception.GetError(), pError);
        EXPECT_STREQ(exception.what(), "SomethingERR_1");
    }
    EXPECT_EQ(CATError::GetLiveCount(), m_ErrorsBefore) << "the error dies with its last exception";
}

TEST_F(CATXHExceptionTest, AnErrorThatAResultCarriesCanBeRaised)
{
    const HRESULT hr = CATError::GetReturn(2, NewError(), nullptr, __FILE__, __LINE__);
    CATError* pError = CATError::CATGetLastError(hr, nullptr);
    try {
        CATError::Throw(__FILE__, __LINE__, pError);
    } catch (const CATXHException& exception) {
        EXPECT_EQ(exception.GetError(), pError);
        EXPECT_EQ(exception.GetResult(), hr);
    }
    EXPECT_EQ(CATError::CATGetLastError(hr, nullptr), pError);
}

TEST_F(CATXHExceptionTest, AGuardCanEndWithAResultThatCarriesTheError)
{
    HRESULT hr = S_OK;
    try {
        CATError::Throw(__FILE__, __LINE__, NewError());
    } catch (const CATXHException& exception) {
        hr = exception.GetResult();
        EXPECT_EQ(exception.GetResult(), hr) << "asked twice";
    }
    EXPECT_THAT(hr, FailsWith("SomethingERR_1", "expression"));
}

TEST_F(CATXHExceptionTest, CopiesOfAnExceptionShareTheError)
{
    std::optional<CATXHException> copy;
    CATError* pError = NewError();
    try {
        CATError::Throw(__FILE__, __LINE__, pError);
    } catch (const CATXHException& exception) {
        copy.emplace(exception);
    }
    EXPECT_EQ(copy->GetError(), pError);
    EXPECT_EQ(pError->GetMsgId(), "SomethingERR_1");
    copy.reset();
    EXPECT_EQ(CATError::GetLiveCount(), m_ErrorsBefore);
}

TEST_F(CATXHExceptionTest, ARethrownExceptionReachesTheOuterGuard)
{
    try {
        try {
            CATError::Throw(__FILE__, __LINE__, NewError());
        } catch (const CATXHException&) {
            throw;
        }
    } catch (const std::exception& exception) {
        EXPECT_STREQ(exception.what(), "SomethingERR_1");
    }
}

TEST_F(CATXHExceptionTest, DereferencingAnEmptyHandleRaisesAnError)
{
    const CATBaseUnknown_var spNothing;
    EXPECT_THROW(spNothing->IsA(), CATXHException);
    EXPECT_THROW((*spNothing).IsA(), CATXHException);
    try {
        CATBaseUnknown_var::ThrowErrorNullVar();
    } catch (const CATXHException& exception) {
        EXPECT_TRUE(exception.GetError()->IsAKindOf(CATError::ClassName()));
        EXPECT_EQ(exception.GetError()->GetMsgId(), "NullHandleERR_1001");
        EXPECT_EQ(exception.GetError()->GetNLSParameters()[0], "CATBaseUnknown");
    }
}

#include "CATError.h"

#include <vector>

#include <gmock/gmock.h>

#include "QTBMatchers.h"

using testing::ElementsAre;

namespace {

class SpecialError : public CATInternalError
{
    CATDeclareErrorClass(SpecialError, CATInternalError)

public:
    using CATInternalError::CATInternalError;
};

class CATErrorTest : public testing::Test
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
        EXPECT_EQ(CATError::GetLiveCount(), m_ErrorsBefore) << "errors outlive their results";
    }

    static HRESULT Fail(CATError* pError) { return CATError::GetReturn(2, pError, nullptr, __FILE__, __LINE__); }
    static CATError* ErrorOf(HRESULT hr) { return CATError::CATGetLastError(hr, nullptr); }

    int m_ErrorsBefore = 0;
};

} // namespace

TEST_F(CATErrorTest, SeverityOneIsSuccess)
{
    const HRESULT hr = CATError::GetReturn(1, nullptr, nullptr, __FILE__, __LINE__);
    EXPECT_EQ(hr, S_OK);
    EXPECT_EQ(ErrorOf(hr), nullptr);
}

TEST_F(CATErrorTest, SeverityZeroIsAFailureWithoutError)
{
    const HRESULT hr = CATError::GetReturn(0, nullptr, nullptr, __FILE__, __LINE__);
    EXPECT_TRUE(FAILED(hr));
    EXPECT_THAT(hr, FailsQuietly());
}

TEST_F(CATErrorTest, SeverityTwoIsAFailureThatCarriesTheError)
{
    auto* pError = new CATInternalError("SomethingERR_1", "Catalog");
    const HRESULT hr = Fail(pError);
    EXPECT_TRUE(FAILED(hr));
    EXPECT_EQ(ErrorOf(hr), pError);
    EXPECT_EQ(pError->GetMsgId(), "SomethingERR_1");
    EXPECT_EQ(pError->GetMsgCatalog(), "Catalog");
}

TEST_F(CATErrorTest, EachFailureCarriesItsOwnError)
{
    std::vector<HRESULT> results;
    std::vector<CATError*> errors;
    for (int i = 0; i < 100; ++i) {
        errors.push_back(new CATInternalError("SomethingERR_1", "Catalog"));
        results.push_back(Fail(errors.back()));
        // A quiet failure in between takes nothing away.
        CATError::GetReturn(0, nullptr, nullptr, __FILE__, __LINE__);
    }
    for (std::size_t i = 0; i < results.size(); ++i) {
        EXPECT_EQ(ErrorOf(results[i]), errors[i]);
    }
}

TEST_F(CATErrorTest, AnErrorThatIsPassedOnKeepsItsResult)
{
    auto* pError = new CATInternalError("SomethingERR_1", "Catalog");
    const HRESULT hr = Fail(pError);
    HRESULT passedOn = hr;
    for (int i = 0; i < 100; ++i) {
        passedOn = Fail(ErrorOf(passedOn));
    }
    EXPECT_EQ(passedOn, hr);
    EXPECT_EQ(ErrorOf(passedOn), pError);
    EXPECT_EQ(CATError::GetLiveCount(), m_ErrorsBefore + 1);
}

TEST_F(CATErrorTest, PlainFailuresCarryNoError)
{
    for (const HRESULT hr :
         {S_OK, S_FALSE, E_FAIL, E_NOINTERFACE, E_POINTER, E_OUTOFMEMORY, HRESULT{-1}, HRESULT{1000}}) {
        EXPECT_EQ(ErrorOf(hr), nullptr) << hr;
    }
}

TEST_F(CATErrorTest, TheErrorsOfManyFailuresTakeBoundedMemory)
{
    std::vector<HRESULT> results;
    for (int i = 0; i < 100000; ++i) {
        results.push_back(Fail(new CATInternalError("SomethingERR_1", "Catalog")));
    }
    EXPECT_LT(CATError::GetLiveCount() - m_ErrorsBefore, 20000);
    EXPECT_NE(ErrorOf(results.back()), nullptr);
    EXPECT_NE(ErrorOf(results[results.size() - 4000]), nullptr);
}

TEST_F(CATErrorTest, AnOldResultNeverAnswersAnotherFailuresError)
{
    std::vector<HRESULT> results;
    for (int i = 0; i < 30000; ++i) {
        CATUnicodeString usNumber;
        usNumber.BuildFromNum(i);
        auto* pError = new CATInternalError("SomethingERR_1", "Catalog");
        pError->SetNLSParameters(1, usNumber);
        results.push_back(Fail(pError));
    }
    int forgotten = 0;
    for (std::size_t i = 0; i < results.size(); ++i) {
        EXPECT_TRUE(FAILED(results[i]));
        if (const CATError* pError = ErrorOf(results[i]); pError != nullptr) {
            CATUnicodeString usNumber;
            usNumber.BuildFromNum(static_cast<int>(i));
            ASSERT_EQ(pError->GetNLSParameters()[0], usNumber);
        } else {
            ++forgotten;
        }
    }
    EXPECT_GT(forgotten, 0);
}

TEST_F(CATErrorTest, AnErrorOfAForgottenResultGetsANewOne)
{
    auto* pError = new CATInternalError("SomethingERR_1", "Catalog");
    pError->AddRef();
    const HRESULT hrOld = Fail(pError);
    CATError::ForgetResults();
    EXPECT_EQ(ErrorOf(hrOld), nullptr);
    const HRESULT hrNew = Fail(pError);
    EXPECT_EQ(ErrorOf(hrNew), pError);
    EXPECT_EQ(ErrorOf(hrOld), nullptr);
}

TEST_F(CATErrorTest, AKeptReferenceOutlivesTheResult)
{
    auto* pError = new CATInternalError("SomethingERR_1", "Catalog");
    Fail(pError);
    pError->AddRef();
    CATError::ForgetResults();
    EXPECT_EQ(CATError::GetLiveCount(), m_ErrorsBefore + 1);
    EXPECT_EQ(pError->GetMsgId(), "SomethingERR_1");
    pError->Release();
    EXPECT_EQ(CATError::GetLiveCount(), m_ErrorsBefore);
}

TEST_F(CATErrorTest, ParametersAreKeptInOrder)
{
    auto* pError = new CATInternalError("SomethingERR_1", "Catalog");
    pError->SetNLSParameters(3, "expression", CATUnicodeString("42"), "file");
    Fail(pError);
    EXPECT_THAT(pError->GetNLSParameters(),
                ElementsAre(CATUnicodeString("expression"), CATUnicodeString("42"), CATUnicodeString("file")));
}

TEST_F(CATErrorTest, AMessageWithoutCatalogNamesItsIdAndItsParameters)
{
    auto* pError = new CATInternalError("SomethingERR_1", "NoSuchCatalog");
    pError->SetNLSParameters(2, "first", "second");
    Fail(pError);
    const std::string message(pError->GetNLSMessage().View());
    EXPECT_THAT(message, testing::HasSubstr("SomethingERR_1"));
    EXPECT_THAT(message, testing::HasSubstr("first"));
    EXPECT_THAT(message, testing::HasSubstr("second"));
}

TEST_F(CATErrorTest, AnErrorIsAKindOfItsClassAndEveryBase)
{
    auto* pError = new SpecialError("SomethingERR_1", "Catalog");
    Fail(pError);
    EXPECT_STREQ(pError->IsA(), "SpecialError");
    EXPECT_TRUE(pError->IsAKindOf("SpecialError"));
    EXPECT_TRUE(pError->IsAKindOf("CATInternalError"));
    EXPECT_TRUE(pError->IsAKindOf(CATError::ClassName()));
    EXPECT_FALSE(pError->IsAKindOf("QTBWarning"));
    auto* pBase = new CATInternalError("SomethingERR_1", "Catalog");
    Fail(pBase);
    EXPECT_FALSE(pBase->IsAKindOf("SpecialError"));
}

#include "CATInterface_var.h"

#include <utility>

#include <gtest/gtest.h>

#include "CATError.h"
#include "CATListVal.h"
#include "CATTestComponents.h"

namespace {

class CATInterface_varTest : public testing::Test
{
protected:
    void SetUp() override { m_ComponentsBefore = CATBaseUnknown::GetLiveComponentCount(); }
    void TearDown() override { EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_ComponentsBefore); }

    static CATBaseUnknown_var Create() { return CreateTestComponent("TestHandled"); }

    // References that a component has, the handle's own included.
    static unsigned int ReferencesOf(const CATBaseUnknown_var& spComponent)
    {
        spComponent->AddRef();
        return spComponent->Release();
    }

    int m_ComponentsBefore = 0;
    TestRegistration m_Counter{"TestHandled", "TestCounterOnHandled", CATClassKind::DataExtension,
                               ITestCounter::MetaObject(), &CreateTestCounterTie<TestCounter>};
};

} // namespace

TEST_F(CATInterface_varTest, AHandleIsEmptyUntilItGetsAComponent)
{
    CATBaseUnknown_var spHandle;
    EXPECT_TRUE(spHandle == NULL_var);
    EXPECT_FALSE(spHandle != NULL_var);
    EXPECT_TRUE(!spHandle);
    EXPECT_EQ(spHandle.Get(), nullptr);
    spHandle = Create();
    EXPECT_TRUE(spHandle != NULL_var);
    EXPECT_TRUE(NULL_var != spHandle);
    EXPECT_TRUE(static_cast<bool>(spHandle));
    spHandle = NULL_var;
    EXPECT_TRUE(spHandle == NULL_var);
}

TEST_F(CATInterface_varTest, NullMakesAnEmptyHandleOfEveryType)
{
    const CATBaseUnknown_var spFromNull(nullptr);
    const ITestCounter_var spFromNullVar = NULL_var;
    const ITestCounter_var spFromEmptyHandle(spFromNull);
    const CATBaseUnknown* pNothing = nullptr;
    const CATBaseUnknown_var spFromPointer(const_cast<CATBaseUnknown*>(pNothing));
    EXPECT_TRUE(spFromNull == NULL_var);
    EXPECT_TRUE(spFromNullVar == NULL_var);
    EXPECT_TRUE(spFromEmptyHandle == NULL_var);
    EXPECT_TRUE(spFromPointer == NULL_var);
    EXPECT_TRUE(spFromNullVar == spFromNull) << "two empty handles are equal";
}

TEST_F(CATInterface_varTest, CopiesAddAReferenceEachAndReleaseIt)
{
    CATBaseUnknown_var spFirst = Create();
    EXPECT_EQ(ReferencesOf(spFirst), 1U);
    {
        const CATBaseUnknown_var spSecond(spFirst);
        CATBaseUnknown_var spThird;
        spThird = spSecond;
        EXPECT_EQ(ReferencesOf(spFirst), 3U);
    }
    EXPECT_EQ(ReferencesOf(spFirst), 1U);
    const CATBaseUnknown_var& spSame = spFirst;
    spFirst = spSame;
    EXPECT_EQ(ReferencesOf(spFirst), 1U);
}

TEST_F(CATInterface_varTest, MovingAHandlePassesItsReferenceOn)
{
    CATBaseUnknown_var spFirst = Create();
    CATBaseUnknown_var spSecond(std::move(spFirst));
    EXPECT_TRUE(spFirst == NULL_var);
    EXPECT_EQ(ReferencesOf(spSecond), 1U);
    CATBaseUnknown_var spThird = Create();
    spThird = std::move(spSecond);
    EXPECT_EQ(ReferencesOf(spThird), 1U);
}

TEST_F(CATInterface_varTest, AHandleFromAPointerAddsItsOwnReference)
{
    auto* pImpl = new TestImplementation("TestHandled");
    {
        const CATBaseUnknown_var spHandle(pImpl);
        EXPECT_EQ(ReferencesOf(spHandle), 2U);
    }
    const CATBaseUnknown_var spAdopted = CATBaseUnknown_var::Adopt(pImpl);
    EXPECT_EQ(ReferencesOf(spAdopted), 1U);
}

TEST_F(CATInterface_varTest, ATypedHandleQueriesItsInterface)
{
    const CATBaseUnknown_var spComponent = Create();
    const ITestCounter_var spCounter(spComponent);
    ASSERT_TRUE(spCounter != NULL_var);
    EXPECT_EQ(spCounter->Increment(), 1);
    EXPECT_EQ(ReferencesOf(spComponent), 2U);
    const ITestName_var spName(spComponent);
    EXPECT_TRUE(spName == NULL_var);
    EXPECT_TRUE(ITestName_var(spCounter) == NULL_var);
    EXPECT_TRUE(ITestCounter_var(spComponent.Get()) == spCounter);
}

TEST_F(CATInterface_varTest, HandlesAreEqualWhenTheyBelongToTheSameComponent)
{
    const CATBaseUnknown_var spComponent = Create();
    const ITestCounter_var spCounter(spComponent);
    const CATBaseUnknown_var spBack(spCounter);
    EXPECT_TRUE(spComponent == spCounter);
    EXPECT_TRUE(spCounter == spComponent);
    EXPECT_TRUE(spBack == spComponent);
    EXPECT_EQ(spBack.Get(), spComponent.Get()) << "the base handle holds the implementation object";

    const CATBaseUnknown_var spOther = Create();
    EXPECT_TRUE(spOther != spComponent);
    EXPECT_TRUE(ITestCounter_var(spOther) != spCounter);
    EXPECT_TRUE(spOther != spCounter);
    EXPECT_TRUE(spCounter != CATBaseUnknown_var());
}

TEST_F(CATInterface_varTest, AHandleOnAnInterfaceKeepsTheComponentAlive)
{
    ITestCounter_var spCounter;
    {
        const CATBaseUnknown_var spComponent = Create();
        spCounter = spComponent;
    }
    EXPECT_EQ(spCounter->Increment(), 1);
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_ComponentsBefore + 1);
}

TEST_F(CATInterface_varTest, AListOfHandlesFindsAComponentByIdentity)
{
    const CATBaseUnknown_var spFirst = Create();
    const CATBaseUnknown_var spSecond = Create();
    CATListVal<CATBaseUnknown_var> list;
    list.Append(spFirst);
    list.Append(ITestCounter_var(spSecond));
    EXPECT_EQ(list.Locate(spSecond), 2);
    EXPECT_EQ(list.Locate(ITestCounter_var(spFirst)), 1);
    EXPECT_EQ(list.Locate(NULL_var), 0);
    EXPECT_EQ(ReferencesOf(spFirst), 2U);
    list.RemoveAll();
    EXPECT_EQ(ReferencesOf(spFirst), 1U);
}

TEST_F(CATInterface_varTest, AnEmptyTypedHandleNamesItsInterfaceWhenItIsDereferenced)
{
    const ITestCounter_var spCounter;
    try {
        spCounter->Increment();
        ADD_FAILURE() << "no error";
    } catch (const CATXHException& exception) {
        EXPECT_EQ(exception.GetError()->GetNLSParameters()[0], "ITestCounter");
    }
}

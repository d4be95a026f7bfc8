#include "CATTie.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "CATTestComponents.h"

namespace {

class CATTieTest : public testing::Test
{
protected:
    void SetUp() override { m_ComponentsBefore = CATBaseUnknown::GetLiveComponentCount(); }
    void TearDown() override { EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_ComponentsBefore); }

    int m_ComponentsBefore = 0;
};

// Reads another extension of its component, its own interface and its late type while it is constructed.
class TestCuriousCounter : public CATBaseUnknown
{
public:
    TestCuriousCounter()
    {
        const ITestName_var spNameOnThis(this);
        m_Name = spNameOnThis != NULL_var ? spNameOnThis->GetName() : "none";
        const ITestCounter_var spCounterOnThis(this);
        m_pSeen = spCounterOnThis.Get();
        m_bIsItself = spCounterOnThis->GetExtension() == this;
    }
    int Increment() { return m_bIsItself ? 1 : 0; }
    const void* GetExtension() { return this; }

    const char* m_Name = nullptr;
    const ITestCounter* m_pSeen = nullptr;
    bool m_bIsItself = false;
};

// Two extensions that ask for each other while they are constructed.
class TestPairedCounter : public TestCounter
{
public:
    TestPairedCounter() { m_bSawOther = ITestName_var(this) != NULL_var; }
    bool m_bSawOther = false;
};

class TestPairedName : public CATBaseUnknown
{
public:
    TestPairedName() { m_bSawOther = ITestCounter_var(this) != NULL_var; }
    const char* GetName() { return m_bSawOther ? "paired" : "alone"; }
    bool m_bSawOther = false;
};

// Fails to be constructed as long as it is told to, after it used its component.
class TestFailingCounter : public TestCounter
{
public:
    TestFailingCounter()
    {
        const CATBaseUnknown_var spThis(this);
        const ITestName_var spNameOnThis(this);
        if (s_bFail) {
            throw std::runtime_error("construction failed");
        }
    }
    inline static bool s_bFail = true;
};

// Has a member that is an object of its own and no part of the component.
class TestCompositeCounter : public TestCounter
{
public:
    const void* GetExtension() { return &m_Part; }
    TestCounter m_Part;
};

// Counts for all components together; lives until the program ends.
class TestSharedCounter : public CATBaseUnknown
{
public:
    int Increment() { return ++m_Count; }
    const void* GetExtension() { return this; }

private:
    int m_Count = 0;
};

CATBaseUnknown* CreateCodeCounterTie(CATComponent* pComponent)
{
    return CATCreateTie<TIEITestCounter<CATCodeTie<ITestCounter, TestSharedCounter>>>(pComponent);
}

CATBaseUnknown* CreateCodeNameTie(CATComponent* pComponent)
{
    return CATCreateTie<TIEITestName<CATCodeTie<ITestName, TestName>>>(pComponent);
}

} // namespace

TEST_F(CATTieTest, ADataExtensionHoldsTheDataOfItsComponent)
{
    const TestRegistration registration("TestData", "TestCounterOnData", CATClassKind::DataExtension,
                                        ITestCounter::MetaObject(), &CreateTestCounterTie<TestCounter>);
    const CATBaseUnknown_var spFirst = CreateTestComponent("TestData");
    const CATBaseUnknown_var spSecond = CreateTestComponent("TestData");
    EXPECT_EQ(ITestCounter_var(spFirst)->Increment(), 1);
    EXPECT_EQ(ITestCounter_var(spFirst)->Increment(), 2);
    EXPECT_EQ(ITestCounter_var(spSecond)->Increment(), 1);
    EXPECT_NE(ITestCounter_var(spFirst)->GetExtension(), ITestCounter_var(spSecond)->GetExtension());
}

TEST_F(CATTieTest, ACodeExtensionIsSharedByAllComponents)
{
    const TestRegistration registration("TestCode", "TestCounterOnCode", CATClassKind::CodeExtension,
                                        ITestCounter::MetaObject(), &CreateCodeCounterTie);
    const CATBaseUnknown_var spFirst = CreateTestComponent("TestCode");
    const CATBaseUnknown_var spSecond = CreateTestComponent("TestCode");
    EXPECT_EQ(ITestCounter_var(spFirst)->GetExtension(), ITestCounter_var(spSecond)->GetExtension());
    const int count = ITestCounter_var(spFirst)->Increment();
    EXPECT_EQ(ITestCounter_var(spSecond)->Increment(), count + 1);
    EXPECT_TRUE(ITestCounter_var(spFirst) != ITestCounter_var(spSecond)) << "the interface objects are not shared";
}

TEST_F(CATTieTest, ACodeExtensionActsForTheComponentThatIsCalled)
{
    CATLateType::Declare("TestCodeChild", "TestCodeNamed");
    const TestRegistration registration("TestCodeNamed", "TestNameOnCodeNamed", CATClassKind::CodeExtension,
                                        ITestName::MetaObject(), &CreateCodeNameTie);
    const ITestName_var spParent(CreateTestComponent("TestCodeNamed"));
    const ITestName_var spChild(CreateTestComponent("TestCodeChild"));
    EXPECT_STREQ(spParent->GetName(), "TestCodeNamed");
    EXPECT_STREQ(spChild->GetName(), "TestCodeChild");
    EXPECT_STREQ(spParent->GetName(), "TestCodeNamed");
}

TEST_F(CATTieTest, AConstructorMayUseItsComponent)
{
    const TestRegistration name("TestCurious", "TestNameOnCurious", CATClassKind::DataExtension,
                                ITestName::MetaObject(), &CreateTestNameTie<TestName>);
    const TestRegistration counter("TestCurious", "TestCuriousCounterOnCurious", CATClassKind::DataExtension,
                                   ITestCounter::MetaObject(), &CreateTestCounterTie<TestCuriousCounter>);
    const CATBaseUnknown_var spComponent = CreateTestComponent("TestCurious");
    const ITestCounter_var spCounter(spComponent);
    const auto* pExtension = static_cast<const TestCuriousCounter*>(spCounter->GetExtension());
    EXPECT_STREQ(pExtension->m_Name, "TestCurious");
}

TEST_F(CATTieTest, AQueryInAConstructorReachesTheObjectUnderConstruction)
{
    const TestRegistration counter("TestCuriousAlone", "TestCuriousCounterOnAlone", CATClassKind::DataExtension,
                                   ITestCounter::MetaObject(), &CreateTestCounterTie<TestCuriousCounter>);
    const CATBaseUnknown_var spComponent = CreateTestComponent("TestCuriousAlone");
    const ITestCounter_var spCounter(spComponent);
    const auto* pExtension = static_cast<const TestCuriousCounter*>(spCounter->GetExtension());
    EXPECT_EQ(pExtension->m_pSeen, spCounter.Get());
    EXPECT_EQ(spCounter->Increment(), 1) << "the interface object forwards to the extension already";
}

TEST_F(CATTieTest, ExtensionsMayAskForEachOtherWhileTheyAreConstructed)
{
    const TestRegistration counter("TestPaired", "TestPairedCounterOnPaired", CATClassKind::DataExtension,
                                   ITestCounter::MetaObject(), &CreateTestCounterTie<TestPairedCounter>);
    const TestRegistration name("TestPaired", "TestPairedNameOnPaired", CATClassKind::DataExtension,
                                ITestName::MetaObject(), &CreateTestNameTie<TestPairedName>);
    {
        const ITestName_var spName(CreateTestComponent("TestPaired"));
        EXPECT_STREQ(spName->GetName(), "paired");
        EXPECT_EQ(TestCounter::s_LiveCount, 1);
    }
    {
        const ITestCounter_var spCounter(CreateTestComponent("TestPaired"));
        EXPECT_TRUE(static_cast<const TestPairedCounter*>(spCounter->GetExtension())->m_bSawOther);
        EXPECT_STREQ(ITestName_var(spCounter)->GetName(), "paired");
        EXPECT_EQ(TestCounter::s_LiveCount, 1);
    }
    EXPECT_EQ(TestCounter::s_LiveCount, 0);
}

TEST_F(CATTieTest, AConstructorThatThrowsLeavesTheComponentAsItWas)
{
    const TestRegistration counter("TestFailing", "TestFailingCounterOnFailing", CATClassKind::DataExtension,
                                   ITestCounter::MetaObject(), &CreateTestCounterTie<TestFailingCounter>);
    const TestRegistration name("TestFailing", "TestNameOnFailing", CATClassKind::DataExtension,
                                ITestName::MetaObject(), &CreateTestNameTie<TestName>);
    const CATBaseUnknown_var spComponent = CreateTestComponent("TestFailing");
    TestFailingCounter::s_bFail = true;
    for (int i = 0; i < 3; ++i) {
        EXPECT_THROW(ITestCounter_var{spComponent}, std::runtime_error);
        EXPECT_EQ(TestCounter::s_LiveCount, 0);
        spComponent->AddRef();
        EXPECT_EQ(spComponent->Release(), 1U) << "a reference was lost";
    }
    EXPECT_STREQ(ITestName_var(spComponent)->GetName(), "TestFailing");
    TestFailingCounter::s_bFail = false;
    const ITestCounter_var spCounter(spComponent);
    ASSERT_TRUE(spCounter != NULL_var) << "a later query tries again";
    EXPECT_EQ(spCounter->Increment(), 1);
}

TEST_F(CATTieTest, OnlyTheExtensionItselfBecomesPartOfTheComponent)
{
    const TestRegistration counter("TestComposite", "TestCompositeOnComposite", CATClassKind::DataExtension,
                                   ITestCounter::MetaObject(), &CreateTestCounterTie<TestCompositeCounter>);
    const CATBaseUnknown_var spComponent = CreateTestComponent("TestComposite");
    const ITestCounter_var spCounter(spComponent);
    const auto* pPart = static_cast<const TestCounter*>(spCounter->GetExtension());
    EXPECT_EQ(pPart->GetImpl(), pPart);
}

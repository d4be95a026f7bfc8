#include "CATBaseUnknown.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "CATTestComponents.h"

namespace {

// Late type "TestCounting" with a counter.
class CATBaseUnknownTest : public testing::Test
{
protected:
    void SetUp() override { m_ComponentsBefore = CATBaseUnknown::GetLiveComponentCount(); }
    void TearDown() override
    {
        EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_ComponentsBefore);
        EXPECT_EQ(TestCounter::s_LiveCount, 0);
    }

    int m_ComponentsBefore = 0;
    TestRegistration m_Counter{"TestCounting", "TestCounterOnCounting", CATClassKind::DataExtension,
                               ITestCounter::MetaObject(), &CreateTestCounterTie<TestCounter>};
};

// Holds handles on other components until it is destroyed.
class TestHolder : public CATBaseUnknown
{
public:
    int Increment()
    {
        m_Handles.push_back(s_spNext);
        return static_cast<int>(m_Handles.size());
    }
    const void* GetExtension() { return this; }

    inline static CATBaseUnknown_var s_spNext;

private:
    std::vector<CATBaseUnknown_var> m_Handles;
};

// Asks its component for its own and for a new interface when it is destroyed.
class TestLastWords : public CATBaseUnknown
{
public:
    ~TestLastWords() override
    {
        const CATBaseUnknown_var spThis(this);
        s_bReachedComponent = spThis != NULL_var;
        s_bGrewExtension = ITestName_var(spThis) != NULL_var;
    }
    int Increment() { return 0; }
    const void* GetExtension() { return this; }

    inline static bool s_bReachedComponent = false;
    inline static bool s_bGrewExtension = false;
};

} // namespace

TEST_F(CATBaseUnknownTest, AComponentStartsWithOneReferenceOfItsCreator)
{
    auto* pImpl = new TestImplementation("TestCounting");
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_ComponentsBefore + 1);
    EXPECT_EQ(pImpl->AddRef(), 2U);
    EXPECT_EQ(pImpl->Release(), 1U);
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_ComponentsBefore + 1);
    EXPECT_EQ(pImpl->Release(), 0U);
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_ComponentsBefore);
}

TEST_F(CATBaseUnknownTest, AllObjectsOfAComponentShareOneReferenceCount)
{
    auto* pImpl = new TestImplementation("TestCounting");
    void* pInterface = nullptr;
    ASSERT_EQ(pImpl->QueryInterface(IID_ITestCounter, &pInterface), S_OK);
    auto* pCounter = static_cast<ITestCounter*>(pInterface);
    EXPECT_EQ(pCounter->AddRef(), 3U);
    EXPECT_EQ(pImpl->Release(), 2U);
    EXPECT_EQ(pImpl->Release(), 1U);
    EXPECT_EQ(pCounter->Increment(), 1) << "the interface object keeps the component alive";
    EXPECT_EQ(pCounter->Release(), 0U);
}

TEST_F(CATBaseUnknownTest, TheLastReferenceTakesTheExtensionsAlong)
{
    {
        const ITestCounter_var spCounter(CreateTestComponent("TestCounting"));
        spCounter->Increment();
        EXPECT_EQ(TestCounter::s_LiveCount, 1);
    }
    EXPECT_EQ(TestCounter::s_LiveCount, 0);
}

TEST_F(CATBaseUnknownTest, AQueryAddsAReferenceAndAnswersTheSameObjectAgain)
{
    const CATBaseUnknown_var spComponent = CreateTestComponent("TestCounting");
    void* pFirst = nullptr;
    void* pSecond = nullptr;
    ASSERT_EQ(spComponent->QueryInterface(IID_ITestCounter, &pFirst), S_OK);
    ASSERT_EQ(spComponent->QueryInterface(IID_ITestCounter, &pSecond), S_OK);
    EXPECT_EQ(pFirst, pSecond);
    EXPECT_EQ(spComponent->AddRef(), 4U);
    spComponent->Release();
    static_cast<CATBaseUnknown*>(pFirst)->Release();
    EXPECT_EQ(static_cast<CATBaseUnknown*>(pSecond)->Release(), 1U);
}

TEST_F(CATBaseUnknownTest, AnUnansweredQueryGivesNoInterfaceAndNull)
{
    const CATBaseUnknown_var spComponent = CreateTestComponent("TestCounting");
    int something = 0;
    void* pInterface = &something;
    EXPECT_EQ(spComponent->QueryInterface(IID_ITestName, &pInterface), E_NOINTERFACE);
    EXPECT_EQ(pInterface, nullptr);
    EXPECT_EQ(spComponent->QueryInterface(IID_ITestName, nullptr), E_POINTER);
}

TEST_F(CATBaseUnknownTest, AnExtensionIsCreatedByTheFirstQueryForIt)
{
    const CATBaseUnknown_var spComponent = CreateTestComponent("TestCounting");
    EXPECT_EQ(TestCounter::s_LiveCount, 0);
    EXPECT_TRUE(ITestCounter_var(spComponent) != NULL_var);
    EXPECT_EQ(TestCounter::s_LiveCount, 1);
    EXPECT_TRUE(ITestCounter_var(spComponent) != NULL_var);
    EXPECT_EQ(TestCounter::s_LiveCount, 1);
}

TEST_F(CATBaseUnknownTest, AnInterfaceIsFoundByItsName)
{
    const CATBaseUnknown_var spComponent = CreateTestComponent("TestCounting");
    CATBaseUnknown* pByName = spComponent->QueryInterface("ITestCounter");
    ASSERT_NE(pByName, nullptr);
    EXPECT_EQ(pByName, static_cast<CATBaseUnknown*>(ITestCounter_var(spComponent).Get()));
    EXPECT_EQ(pByName->Release(), 1U) << "the query had added a reference";
    CATBaseUnknown* pItself = spComponent->QueryInterface("CATBaseUnknown");
    EXPECT_EQ(pItself, spComponent.Get());
    pItself->Release();
}

TEST_F(CATBaseUnknownTest, AnUnknownNameFindsNothing)
{
    const CATBaseUnknown_var spComponent = CreateTestComponent("TestCounting");
    EXPECT_EQ(spComponent->QueryInterface("ITestName"), nullptr);
    EXPECT_EQ(spComponent->QueryInterface(""), nullptr);
    const char* pNoName = nullptr;
    EXPECT_EQ(spComponent->QueryInterface(pNoName), nullptr);
}

TEST_F(CATBaseUnknownTest, EveryObjectOfAComponentNamesTheImplementationObject)
{
    const CATBaseUnknown_var spComponent = CreateTestComponent("TestCounting");
    const ITestCounter_var spCounter(spComponent);
    EXPECT_EQ(spCounter->GetImpl(), spComponent.Get());
    EXPECT_EQ(spComponent->GetImpl(), spComponent.Get());
    EXPECT_NE(static_cast<const void*>(spCounter.Get()), static_cast<const void*>(spComponent.Get()));
}

TEST_F(CATBaseUnknownTest, EveryObjectOfAComponentKnowsTheLateType)
{
    CATLateType::Declare("TestCountingChild", "TestCounting");
    const CATBaseUnknown_var spComponent = CreateTestComponent("TestCountingChild");
    const ITestCounter_var spCounter(spComponent);
    EXPECT_STREQ(spCounter->IsA(), "TestCountingChild");
    EXPECT_TRUE(spCounter->IsAKindOf("TestCountingChild"));
    EXPECT_TRUE(spCounter->IsAKindOf("TestCounting"));
    EXPECT_TRUE(spCounter->IsAKindOf("CATBaseUnknown"));
    EXPECT_FALSE(spCounter->IsAKindOf("TestOther"));
}

TEST_F(CATBaseUnknownTest, AnObjectOutsideAComponentStandsForItself)
{
    TestCounter alone;
    EXPECT_EQ(alone.GetImpl(), &alone);
    EXPECT_STREQ(alone.IsA(), "CATBaseUnknown");
    EXPECT_FALSE(alone.IsAKindOf("TestCounting"));
    void* pInterface = nullptr;
    EXPECT_EQ(alone.QueryInterface(IID_ITestCounter, &pInterface), E_NOINTERFACE);
    EXPECT_EQ(pInterface, nullptr);
    EXPECT_EQ(alone.QueryInterface(IID_CATBaseUnknown, &pInterface), S_OK);
    EXPECT_EQ(pInterface, &alone);
}

TEST_F(CATBaseUnknownTest, ManyInterfacesOfOneComponentAreKeptApart)
{
    // More than are kept at hand.
    constexpr int COUNT = 12;
    std::vector<std::string> names;
    std::vector<CATMetaClass*> interfaces;
    std::vector<std::unique_ptr<TestRegistration>> registrations;
    static std::vector<IID> s_Wanted;
    s_Wanted.clear();
    for (int i = 0; i < COUNT; ++i) {
        names.push_back("ITestMany" + std::to_string(i));
        s_Wanted.emplace_back(names.back());
    }
    static int s_Next;
    for (s_Next = 0; s_Next < COUNT; ++s_Next) {
        CATMetaClass* pInterface =
            CATRetrieveInterface(names[static_cast<std::size_t>(s_Next)].c_str(),
                                 s_Wanted[static_cast<std::size_t>(s_Next)], CATBaseUnknown::MetaObject());
        registrations.push_back(std::make_unique<TestRegistration>(
            "TestMany", ("TestManyExtension" + std::to_string(s_Next)).c_str(), CATClassKind::DataExtension, pInterface,
            [](CATComponent* pComponent) -> CATBaseUnknown* {
                auto* pTie = new TIEITestCounter<CATDataTie<ITestCounter, TestCounter>>(pComponent);
                pComponent->Attach(s_Wanted[static_cast<std::size_t>(s_Next)], pTie);
                pTie->ConstructExtension();
                return pTie;
            }));
    }
    const CATBaseUnknown_var spComponent = CreateTestComponent("TestMany");
    std::vector<void*> objects(COUNT);
    for (s_Next = 0; s_Next < COUNT; ++s_Next) {
        ASSERT_EQ(spComponent->QueryInterface(s_Wanted[static_cast<std::size_t>(s_Next)],
                                              &objects[static_cast<std::size_t>(s_Next)]),
                  S_OK);
        spComponent->Release();
    }
    for (std::size_t i = 0; i < COUNT; ++i) {
        void* pAgain = nullptr;
        ASSERT_EQ(spComponent->QueryInterface(s_Wanted[i], &pAgain), S_OK);
        spComponent->Release();
        EXPECT_EQ(pAgain, objects[i]);
        EXPECT_EQ(static_cast<ITestCounter*>(pAgain)->Increment(), 1);
    }
}

TEST_F(CATBaseUnknownTest, AChainOfComponentsThatHoldEachOtherIsTakenDownWithoutRecursion)
{
    const TestRegistration registration("TestHolding", "TestHolderOnHolding", CATClassKind::DataExtension,
                                        ITestCounter::MetaObject(), &CreateTestCounterTie<TestHolder>);
    constexpr int LENGTH = 100000;
    CATBaseUnknown_var spLast = CreateTestComponent("TestHolding");
    for (int i = 1; i < LENGTH; ++i) {
        const CATBaseUnknown_var spNext = CreateTestComponent("TestHolding");
        TestHolder::s_spNext = spLast;
        ITestCounter_var(spNext)->Increment();
        spLast = spNext;
    }
    TestHolder::s_spNext = NULL_var;
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_ComponentsBefore + LENGTH);
    spLast = NULL_var;
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_ComponentsBefore);
}

TEST_F(CATBaseUnknownTest, ADestructorMayUseHandlesOnItsDyingComponentButGrowsNoExtension)
{
    const TestRegistration words("TestDying", "TestLastWordsOnDying", CATClassKind::DataExtension,
                                 ITestCounter::MetaObject(), &CreateTestCounterTie<TestLastWords>);
    const TestRegistration name("TestDying", "TestNameOnDying", CATClassKind::DataExtension, ITestName::MetaObject(),
                                &CreateTestNameTie<TestName>);
    {
        const ITestCounter_var spCounter(CreateTestComponent("TestDying"));
        spCounter->Increment();
    }
    EXPECT_TRUE(TestLastWords::s_bReachedComponent);
    EXPECT_FALSE(TestLastWords::s_bGrewExtension);
}

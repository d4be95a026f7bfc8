#include "CATInstantiateComponent.h"

#include <gtest/gtest.h>

#include "CATICreateInstance.h"
#include "CATTestComponents.h"

namespace {

// Factories of the late types of the tests.
template <const char* const& LATE_TYPE>
class TestFactory : public CATBaseUnknown
{
public:
    HRESULT CreateInstance(void** ppv)
    {
        *ppv = static_cast<CATBaseUnknown*>(new TestImplementation(LATE_TYPE));
        return S_OK;
    }
};

constexpr const char* MADE = "TestMade";
constexpr const char* MADE_ELSEWHERE = "TestMadeElsewhere";

class TestFailingFactory : public CATBaseUnknown
{
public:
    HRESULT CreateInstance(void**) { return s_Result; }
    inline static HRESULT s_Result = E_OUTOFMEMORY;
};

template <class Factory>
CATBaseUnknown* CreateFactoryTie(CATComponent* pComponent)
{
    return CATCreateTie<TIECATICreateInstance<CATCodeTie<CATICreateInstance, Factory>>>(pComponent);
}

template <class Factory>
TestRegistration RegisterFactory(const char* lateType, const char* extension)
{
    return TestRegistration(lateType, extension, CATClassKind::CodeExtension, CATICreateInstance::MetaObject(),
                            &CreateFactoryTie<Factory>);
}

class CATInstantiateComponentTest : public testing::Test
{
protected:
    void SetUp() override { m_ComponentsBefore = CATBaseUnknown::GetLiveComponentCount(); }
    void TearDown() override { EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_ComponentsBefore); }

    // The component as a handle; empty when the creation fails, which must leave null.
    static CATBaseUnknown_var Instantiate(const char* lateType, HRESULT expected)
    {
        int something = 0;
        void* pv = &something;
        EXPECT_EQ(::CATInstantiateComponent(lateType, CLSID_CATBaseUnknown, &pv), expected);
        if (FAILED(expected)) {
            EXPECT_EQ(pv, nullptr);
            return NULL_var;
        }
        return CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pv));
    }

    int m_ComponentsBefore = 0;
};

} // namespace

TEST_F(CATInstantiateComponentTest, AComponentIsCreatedByTheFactoryOfItsLateType)
{
    const TestRegistration factory = RegisterFactory<TestFactory<MADE>>("TestMade", "TestFactoryOnMade");
    const CATBaseUnknown_var spFirst = Instantiate("TestMade", S_OK);
    const CATBaseUnknown_var spSecond = Instantiate("TestMade", S_OK);
    EXPECT_STREQ(spFirst->IsA(), "TestMade");
    EXPECT_TRUE(spFirst != spSecond);
    spFirst->AddRef();
    EXPECT_EQ(spFirst->Release(), 1U) << "one reference, the caller's";
}

TEST_F(CATInstantiateComponentTest, AnInterfaceCanBeAskedForAtOnce)
{
    const TestRegistration factory = RegisterFactory<TestFactory<MADE>>("TestMade", "TestFactoryOnMade");
    const TestRegistration name("TestMade", "TestNameOnMade", CATClassKind::DataExtension, ITestName::MetaObject(),
                                &CreateTestNameTie<TestName>);
    void* pv = nullptr;
    ASSERT_EQ(::CATInstantiateComponent("TestMade", IID_ITestName, &pv), S_OK);
    const ITestName_var spName = ITestName_var::Adopt(static_cast<ITestName*>(pv));
    EXPECT_STREQ(spName->GetName(), "TestMade");
    pv = this;
    EXPECT_EQ(::CATInstantiateComponent("TestMade", IID_ITestCounter, &pv), E_NOINTERFACE);
    EXPECT_EQ(pv, nullptr);
}

TEST_F(CATInstantiateComponentTest, AnUnknownLateTypeFails)
{
    Instantiate("TestNeverDeclared", E_FAIL);
    EXPECT_EQ(CATLateType::Find("TestNeverDeclared"), nullptr);
}

TEST_F(CATInstantiateComponentTest, ALateTypeWithoutFactoryFails)
{
    CATLateType::Declare("TestNotMade");
    Instantiate("TestNotMade", E_FAIL);
}

TEST_F(CATInstantiateComponentTest, NullArgumentsAreRefused)
{
    void* pv = nullptr;
    EXPECT_TRUE(FAILED(::CATInstantiateComponent(nullptr, CLSID_CATBaseUnknown, &pv)));
    EXPECT_TRUE(FAILED(::CATInstantiateComponent("TestMade", CLSID_CATBaseUnknown, nullptr)));
}

TEST_F(CATInstantiateComponentTest, TheResultOfAFailingFactoryIsPassedOn)
{
    const TestRegistration factory = RegisterFactory<TestFailingFactory>("TestUnmakable", "TestFactoryOnUnmakable");
    TestFailingFactory::s_Result = E_OUTOFMEMORY;
    Instantiate("TestUnmakable", E_OUTOFMEMORY);
    TestFailingFactory::s_Result = S_OK;
    Instantiate("TestUnmakable", E_FAIL);
}

TEST_F(CATInstantiateComponentTest, AFactoryThatIsTakenBackIsNotUsedAgain)
{
    {
        const TestRegistration factory = RegisterFactory<TestFactory<MADE>>("TestMade", "TestFactoryOnMade");
        Instantiate("TestMade", S_OK);
    }
    Instantiate("TestMade", E_FAIL);
}

TEST_F(CATInstantiateComponentTest, AnInheritedFactoryThatIsTakenBackIsNotUsedAgain)
{
    CATLateType::Declare("TestMadeChild", "TestMade");
    {
        const TestRegistration factory = RegisterFactory<TestFactory<MADE>>("TestMade", "TestFactoryOnMade");
        EXPECT_STREQ(Instantiate("TestMadeChild", S_OK)->IsA(), "TestMade");
    }
    Instantiate("TestMadeChild", E_FAIL);
}

TEST_F(CATInstantiateComponentTest, AFactoryOfItsOwnTakesTheInheritedOnesPlace)
{
    CATLateType::Declare("TestMadeElsewhere", "TestMade");
    const TestRegistration inherited = RegisterFactory<TestFactory<MADE>>("TestMade", "TestFactoryOnMade");
    EXPECT_STREQ(Instantiate("TestMadeElsewhere", S_OK)->IsA(), "TestMade");
    const TestRegistration own =
        RegisterFactory<TestFactory<MADE_ELSEWHERE>>("TestMadeElsewhere", "TestFactoryOnMadeElsewhere");
    EXPECT_STREQ(Instantiate("TestMadeElsewhere", S_OK)->IsA(), "TestMadeElsewhere");
}

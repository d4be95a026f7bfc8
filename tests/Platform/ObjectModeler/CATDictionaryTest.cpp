#include "CATDictionary.h"

#include <gmock/gmock.h>

#include "CATTestComponents.h"

using testing::IsEmpty;
using testing::SizeIs;

TEST(CATDictionaryTest, AnEntryIsKeptWithItsThreeParts)
{
    const TestRegistration registration("TestEntered", "TestNameOnEntered", CATClassKind::DataExtension,
                                        ITestName::MetaObject(), &CreateTestNameTie<TestName>);
    ASSERT_EQ(registration.GetResult(), S_OK);
    const auto own = CATLateType::Find("TestEntered")->GetOwnRegistrations();
    ASSERT_THAT(own, SizeIs(1));
    EXPECT_EQ(own[0]->pExtension, registration.GetExtension());
    EXPECT_EQ(own[0]->pInterface, ITestName::MetaObject());
    EXPECT_EQ(own[0]->factory, &CreateTestNameTie<TestName>);
    EXPECT_EQ(own[0]->iid, IID_ITestName);
}

TEST(CATDictionaryTest, ASecondExtensionForTheSameInterfaceIsRefused)
{
    const TestRegistration first("TestTwice", "TestNameOnTwice", CATClassKind::DataExtension, ITestName::MetaObject(),
                                 &CreateTestNameTie<TestName>);
    const TestRegistration second("TestTwice", "OtherTestNameOnTwice", CATClassKind::DataExtension,
                                  ITestName::MetaObject(), &CreateTestNameTie<OtherTestName>);
    const TestRegistration again("TestTwice", "TestNameOnTwice", CATClassKind::DataExtension, ITestName::MetaObject(),
                                 &CreateTestNameTie<TestName>);
    EXPECT_EQ(first.GetResult(), S_OK);
    EXPECT_EQ(second.GetResult(), E_FAIL);
    EXPECT_EQ(again.GetResult(), E_FAIL);
    EXPECT_STREQ(ITestName_var(CreateTestComponent("TestTwice"))->GetName(), "TestTwice");
}

TEST(CATDictionaryTest, AnotherInterfaceWithTheSameIdentifierIsRefused)
{
    const TestRegistration first("TestSameIdentifier", "TestNameOnSameIdentifier", CATClassKind::DataExtension,
                                 ITestName::MetaObject(), &CreateTestNameTie<TestName>);
    CATMetaClass* pImpostor = CATRetrieveInterface("ITestImpostor", IID_ITestName, CATBaseUnknown::MetaObject());
    const TestRegistration second("TestImpostor", "TestNameOnImpostor", CATClassKind::DataExtension, pImpostor,
                                  &CreateTestNameTie<OtherTestName>);
    EXPECT_EQ(first.GetResult(), S_OK);
    EXPECT_EQ(second.GetResult(), E_FAIL);
    EXPECT_TRUE(ITestName_var(CreateTestComponent("TestImpostor")) == NULL_var);
}

TEST(CATDictionaryTest, AnEntryThatIsTakenBackIsNoLongerAnswered)
{
    TestRegistration registration("TestTakenBack", "TestNameOnTakenBack", CATClassKind::DataExtension,
                                  ITestName::MetaObject(), &CreateTestNameTie<TestName>);
    CATLateType::Declare("TestTakenBackChild", "TestTakenBack");
    EXPECT_TRUE(ITestName_var(CreateTestComponent("TestTakenBackChild")) != NULL_var);
    registration.TakeBack();
    EXPECT_TRUE(ITestName_var(CreateTestComponent("TestTakenBack")) == NULL_var);
    EXPECT_TRUE(ITestName_var(CreateTestComponent("TestTakenBackChild")) == NULL_var);
    EXPECT_THAT(CATLateType::Find("TestTakenBack")->GetOwnRegistrations(), IsEmpty());
    const TestRegistration other("TestTakenBack", "OtherTestNameOnTakenBack", CATClassKind::DataExtension,
                                 ITestName::MetaObject(), &CreateTestNameTie<OtherTestName>);
    EXPECT_EQ(other.GetResult(), S_OK) << "the place is free again";
    EXPECT_STREQ(ITestName_var(CreateTestComponent("TestTakenBackChild"))->GetName(), "other");
}

TEST(CATDictionaryTest, TakingBackAnAbsentEntryChangesNothing)
{
    const TestRegistration registration("TestKept", "TestNameOnKept", CATClassKind::DataExtension,
                                        ITestName::MetaObject(), &CreateTestNameTie<TestName>);
    CATMetaClass* pOther =
        fct_RetrieveMetaObject("OtherTestNameOnKept", 2, CATBaseUnknown::MetaObject(), "TestKept", "External", 0);
    CATMetaClass* pNowhere =
        fct_RetrieveMetaObject("TestNameOnNowhere", 2, CATBaseUnknown::MetaObject(), "TestNowhere", "External", 0);
    CATRemoveFromDictionary(pOther, ITestName::MetaObject());
    CATRemoveFromDictionary(registration.GetExtension(), ITestCounter::MetaObject());
    CATRemoveFromDictionary(pNowhere, ITestName::MetaObject());
    EXPECT_TRUE(ITestName_var(CreateTestComponent("TestKept")) != NULL_var);
}

TEST(CATDictionaryTest, ARegistrationCreatesNoComponent)
{
    const int before = CATBaseUnknown::GetLiveComponentCount();
    const TestRegistration registration("TestSilent", "TestCounterOnSilent", CATClassKind::DataExtension,
                                        ITestCounter::MetaObject(), &CreateTestCounterTie<TestCounter>);
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before);
    EXPECT_EQ(TestCounter::s_LiveCount, 0);
}

TEST(CATDictionaryTest, AClassRecordIsMadeOnce)
{
    CATMetaClass* pRecord =
        fct_RetrieveMetaObject("TestRecorded", 2, CATBaseUnknown::MetaObject(), "TestRecordedType", "External", 0);
    EXPECT_EQ(pRecord->GetName(), "TestRecorded");
    EXPECT_EQ(pRecord->GetKind(), CATClassKind::DataExtension);
    EXPECT_EQ(pRecord->GetBase(), CATBaseUnknown::MetaObject());
    EXPECT_EQ(pRecord->GetLateType(), "TestRecordedType");
    EXPECT_EQ(
        fct_RetrieveMetaObject("TestRecorded", 2, CATBaseUnknown::MetaObject(), "TestRecordedType", "External", 0),
        pRecord);
    CATMetaClass* pCode =
        fct_RetrieveMetaObject("TestRecordedCode", 3, CATBaseUnknown::MetaObject(), "TestRecordedType", "External", 0);
    EXPECT_EQ(pCode->GetKind(), CATClassKind::CodeExtension);
}

TEST(CATDictionaryTest, AnInterfaceRecordNamesTheInterfaceAndItsBase)
{
    EXPECT_EQ(ITestName::MetaObject()->GetName(), "ITestName");
    EXPECT_EQ(ITestName::MetaObject()->GetKind(), CATClassKind::Interface);
    EXPECT_EQ(ITestName::MetaObject()->GetIID(), IID_ITestName);
    EXPECT_EQ(ITestName::MetaObject()->GetBase(), CATBaseUnknown::MetaObject());
    EXPECT_EQ(ITestName::MetaObject(), ITestName::MetaObject());
    EXPECT_NE(IID_ITestName, IID_ITestCounter);
    EXPECT_EQ(IID("ITestName"), IID_ITestName);
}

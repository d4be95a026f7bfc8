#include "CATLateType.h"

#include <string>

#include <gmock/gmock.h>

#include "CATTestComponents.h"

using testing::Contains;
using testing::Not;

TEST(CATLateTypeTest, ALateTypeIsMadeOnceAndFoundByItsName)
{
    EXPECT_EQ(CATLateType::Find("TestLateOnce"), nullptr);
    CATLateType& lateType = CATLateType::Declare("TestLateOnce");
    EXPECT_EQ(&CATLateType::Declare("TestLateOnce"), &lateType);
    EXPECT_EQ(CATLateType::Find("TestLateOnce"), &lateType);
    EXPECT_EQ(lateType.GetName(), "TestLateOnce");
    EXPECT_THAT(CATLateType::GetNames(), Contains("TestLateOnce"));
    EXPECT_THAT(CATLateType::GetNames(), Not(Contains("TestLateNever")));
}

TEST(CATLateTypeTest, EveryChainEndsAtTheRootLateType)
{
    const CATLateType& lateType = CATLateType::Declare("TestLateChild", "TestLateParent");
    EXPECT_EQ(lateType.GetBase(), CATLateType::Find("TestLateParent"));
    ASSERT_NE(lateType.GetBase(), nullptr);
    EXPECT_EQ(lateType.GetBase()->GetBase(), CATLateType::Find("CATBaseUnknown"));
    EXPECT_EQ(lateType.GetBase()->GetBase()->GetBase(), nullptr);
    EXPECT_TRUE(lateType.IsAKindOf("TestLateChild"));
    EXPECT_TRUE(lateType.IsAKindOf("TestLateParent"));
    EXPECT_TRUE(lateType.IsAKindOf("CATBaseUnknown"));
    EXPECT_FALSE(lateType.GetBase()->IsAKindOf("TestLateChild"));
}

TEST(CATLateTypeTest, NamingABaseLaterSettlesIt)
{
    const CATLateType& lateType = CATLateType::Declare("TestLateSettled");
    EXPECT_FALSE(lateType.IsAKindOf("TestLateSettledBase"));
    CATLateType::Declare("TestLateSettled", "TestLateSettledBase");
    EXPECT_TRUE(lateType.IsAKindOf("TestLateSettledBase"));
    CATLateType::Declare("TestLateSettled");
    EXPECT_TRUE(lateType.IsAKindOf("TestLateSettledBase")) << "a call without base leaves it";
}

TEST(CATLateTypeTest, AComponentAnswersWhatItsBasesAnswer)
{
    const TestRegistration registration("TestLateGrandparent", "TestCounterOnGrandparent", CATClassKind::DataExtension,
                                        ITestCounter::MetaObject(), &CreateTestCounterTie<TestCounter>);
    CATLateType::Declare("TestLateMiddle", "TestLateGrandparent");
    CATLateType::Declare("TestLateGrandchild", "TestLateMiddle");
    const ITestCounter_var spCounter(CreateTestComponent("TestLateGrandchild"));
    ASSERT_TRUE(spCounter != NULL_var);
    EXPECT_EQ(spCounter->Increment(), 1);
}

TEST(CATLateTypeTest, ABaseDoesNotAnswerWhatIsRegisteredOnADerivedLateType)
{
    const TestRegistration registration("TestLateDerived", "TestCounterOnDerived", CATClassKind::DataExtension,
                                        ITestCounter::MetaObject(), &CreateTestCounterTie<TestCounter>);
    CATLateType::Declare("TestLateDerived", "TestLateBase");
    CATLateType::Declare("TestLateSibling", "TestLateBase");
    EXPECT_TRUE(ITestCounter_var(CreateTestComponent("TestLateDerived")) != NULL_var);
    EXPECT_TRUE(ITestCounter_var(CreateTestComponent("TestLateBase")) == NULL_var);
    EXPECT_TRUE(ITestCounter_var(CreateTestComponent("TestLateSibling")) == NULL_var);
}

TEST(CATLateTypeTest, TheNearestRegistrationInTheChainAnswers)
{
    CATLateType::Declare("TestLateNear", "TestLateFar");
    CATLateType::Declare("TestLateNearest", "TestLateNear");
    const TestRegistration far("TestLateFar", "TestNameOnFar", CATClassKind::DataExtension, ITestName::MetaObject(),
                               &CreateTestNameTie<OtherTestName>);
    const TestRegistration near("TestLateNear", "TestNameOnNear", CATClassKind::DataExtension, ITestName::MetaObject(),
                                &CreateTestNameTie<TestName>);
    EXPECT_STREQ(ITestName_var(CreateTestComponent("TestLateNearest"))->GetName(), "TestLateNearest");
    EXPECT_STREQ(ITestName_var(CreateTestComponent("TestLateFar"))->GetName(), "other");
}

TEST(CATLateTypeTest, AnEarlierAnswerDoesNotHideALaterRegistration)
{
    CATLateType::Declare("TestLateLater", "TestLateLaterBase");
    const CATBaseUnknown_var spComponent = CreateTestComponent("TestLateLater");
    EXPECT_TRUE(ITestName_var(spComponent) == NULL_var);
    const TestRegistration base("TestLateLaterBase", "TestNameOnLaterBase", CATClassKind::DataExtension,
                                ITestName::MetaObject(), &CreateTestNameTie<OtherTestName>);
    EXPECT_STREQ(ITestName_var(CreateTestComponent("TestLateLater"))->GetName(), "other");
    EXPECT_STREQ(ITestName_var(spComponent)->GetName(), "other");
    const TestRegistration own("TestLateLater", "TestNameOnLater", CATClassKind::DataExtension, ITestName::MetaObject(),
                               &CreateTestNameTie<TestName>);
    EXPECT_STREQ(ITestName_var(CreateTestComponent("TestLateLater"))->GetName(), "TestLateLater");
}

TEST(CATLateTypeTest, ABaseThatIsSettledLaterIsAskedToo)
{
    const TestRegistration registration("TestLateNewBase", "TestNameOnNewBase", CATClassKind::DataExtension,
                                        ITestName::MetaObject(), &CreateTestNameTie<TestName>);
    EXPECT_TRUE(ITestName_var(CreateTestComponent("TestLateRebased")) == NULL_var);
    CATLateType::Declare("TestLateRebased", "TestLateNewBase");
    EXPECT_TRUE(ITestName_var(CreateTestComponent("TestLateRebased")) != NULL_var);
}

TEST(CATLateTypeTest, ManyDifferentQueriesAreAllAnsweredRightly)
{
    const TestRegistration registration("TestLateAsked", "TestNameOnAsked", CATClassKind::DataExtension,
                                        ITestName::MetaObject(), &CreateTestNameTie<TestName>);
    const CATLateType& lateType = *CATLateType::Find("TestLateAsked");
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 1000; ++i) {
            ASSERT_EQ(lateType.Resolve(IID("ITestUnknown" + std::to_string(i))), nullptr);
        }
        const CATLateType::Registration* pRegistration = lateType.Resolve(IID_ITestName);
        ASSERT_NE(pRegistration, nullptr);
        EXPECT_EQ(pRegistration->pInterface, ITestName::MetaObject());
    }
}

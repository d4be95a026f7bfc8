#include "CATCommand.h"

#include <gtest/gtest.h>

#include "CATApplicationFrame.h"

namespace {

class Command : public ::testing::Test
{
protected:
    void SetUp() override
    {
        CATCommand::DestroyRequested();
        m_Before = CATCommand::GetLiveCount();
    }

    int CountNew() const { return CATCommand::GetLiveCount() - m_Before; }

    int m_Before = 0;
};

TEST_F(Command, KnowsItsNameAndParent)
{
    CATCommand parent(nullptr, "parent");
    const CATCommand child(&parent, "child");
    EXPECT_EQ(child.GetName(), "child");
    EXPECT_EQ(child.GetParent(), &parent);
    EXPECT_EQ(parent.GetParent(), nullptr);
}

TEST_F(Command, TakesThoseBelowItWithIt)
{
    auto* pParent = new CATCommand(nullptr, "parent");
    new CATCommand(pParent, "first");
    auto* pSecond = new CATCommand(pParent, "second");
    new CATCommand(pParent, "third");
    new CATCommand(pSecond, "below");
    EXPECT_EQ(CountNew(), 5);
    delete pSecond;
    EXPECT_EQ(CountNew(), 3);
    delete pParent;
    EXPECT_EQ(CountNew(), 0);
}

TEST_F(Command, IsDestroyedOnRequestWhenTheApplicationIsIdle)
{
    auto* pCommand = new CATCommand(nullptr, "command");
    pCommand->RequestDelayedDestruction();
    pCommand->RequestDelayedDestruction();
    EXPECT_EQ(CountNew(), 1);
    CATApplicationFrame::GetFrame()->OnIdle();
    EXPECT_EQ(CountNew(), 0);
}

TEST_F(Command, IsDestroyedWithTheNextRequestAtTheLatest)
{
    for (int i = 0; i < 100; ++i) {
        (new CATCommand(nullptr, "command"))->RequestDelayedDestruction();
        EXPECT_EQ(CountNew(), 1);
    }
    CATCommand::DestroyRequested();
    EXPECT_EQ(CountNew(), 0);
}

TEST_F(Command, MayGoBeforeItsRequestIsServed)
{
    auto* pParent = new CATCommand(nullptr, "parent");
    (new CATCommand(pParent, "child"))->RequestDelayedDestruction();
    delete pParent;
    CATCommand::DestroyRequested();
    EXPECT_EQ(CountNew(), 0);
}

} // namespace

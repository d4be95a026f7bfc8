#include "CATCallbackManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "CATCallback.h"
#include "CATError.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Source : public CATEventSource
{
};

class OtherSource : public CATEventSource
{
};

class CallbackManager : public ::testing::Test
{
protected:
    CATCallbackManager::Function Note(const char* text)
    {
        return [this, text](CATEventSource*) { m_Calls.emplace_back(text); };
    }

    CATCallbackManager m_Manager;
    std::vector<std::string> m_Calls;
};

TEST_F(CallbackManager, CallsTheSubscribersOfTheEventInOrder)
{
    m_Manager.AddCallback(this, "A", Note("1"));
    m_Manager.AddCallback(this, "B", Note("2"));
    m_Manager.AddCallback(this, "A", Note("3"));
    m_Manager.DispatchCallbacks("A", nullptr);
    EXPECT_THAT(m_Calls, ElementsAre("1", "3"));
}

TEST_F(CallbackManager, PassesTheSenderOn)
{
    Source source;
    CATEventSource* pReceived = nullptr;
    m_Manager.AddCallback(this, "A", [&](CATEventSource* pSender) { pReceived = pSender; });
    m_Manager.DispatchCallbacks("A", &source);
    EXPECT_EQ(pReceived, &source);
}

TEST_F(CallbackManager, RemovesOneSubscriptionOrAllOfASubscriber)
{
    const int other = 0;
    const CATCallbackId id = m_Manager.AddCallback(this, "A", Note("1"));
    m_Manager.AddCallback(this, "A", Note("2"));
    m_Manager.AddCallback(&other, "A", Note("3"));
    m_Manager.RemoveCallback(id);
    m_Manager.RemoveCallback(id);
    EXPECT_EQ(m_Manager.GetCallbackCount(), 2);
    m_Manager.RemoveSubscriberCallbacks(this);
    m_Manager.DispatchCallbacks("A", nullptr);
    EXPECT_THAT(m_Calls, ElementsAre("3"));
}

TEST_F(CallbackManager, DoesNotCallASubscriberRemovedMeanwhile)
{
    m_Manager.AddCallback(this, "A", [this](CATEventSource*) { m_Manager.RemoveSubscriberCallbacks(this); });
    m_Manager.AddCallback(this, "A", Note("never"));
    m_Manager.DispatchCallbacks("A", nullptr);
    EXPECT_THAT(m_Calls, IsEmpty());
}

TEST_F(CallbackManager, CallsASubscriberAddedMeanwhileOnlyNextTime)
{
    m_Manager.AddCallback(this, "A", [this](CATEventSource*) { m_Manager.AddCallback(this, "A", Note("new")); });
    m_Manager.DispatchCallbacks("A", nullptr);
    EXPECT_THAT(m_Calls, IsEmpty());
    m_Manager.DispatchCallbacks("A", nullptr);
    EXPECT_THAT(m_Calls, ElementsAre("new"));
}

TEST_F(CallbackManager, MayBeDestroyedByASubscriber)
{
    std::optional<CATCallbackManager> manager(std::in_place);
    manager->AddCallback(this, "A", [&](CATEventSource*) { manager.reset(); });
    manager->AddCallback(this, "A", Note("never"));
    manager->DispatchCallbacks("A", nullptr);
    EXPECT_THAT(m_Calls, IsEmpty());
}

TEST_F(CallbackManager, TellsAllSubscribersBeforeItRaisesTheFirstError)
{
    const auto raise = [](const char* id) {
        return [id](CATEventSource*) { CATError::Throw(__FILE__, __LINE__, new CATInternalError(id, "None")); };
    };
    m_Manager.AddCallback(this, "A", raise("First"));
    m_Manager.AddCallback(this, "A", raise("Second"));
    m_Manager.AddCallback(this, "A", Note("told"));
    try {
        m_Manager.DispatchCallbacks("A", nullptr);
        ADD_FAILURE() << "no error raised";
    } catch (const CATXHException& exception) {
        EXPECT_EQ(exception.GetError()->GetMsgId(), "First");
    }
    EXPECT_THAT(m_Calls, ElementsAre("told"));
}

struct Subscriber
{
    void OnSource(Source* pSender) { pLast = pSender; }

    Source* pLast = nullptr;
};

TEST(Callback, CallsAMethodForSendersOfItsType)
{
    Source source;
    OtherSource other;
    Subscriber subscriber;
    const CATCallbackId id = AddCallback(&subscriber, &source, "A", &Subscriber::OnSource);
    EXPECT_NE(id, 0U);
    GetDefaultCallbackManager(&source)->DispatchCallbacks("A", &other);
    EXPECT_EQ(subscriber.pLast, nullptr);
    GetDefaultCallbackManager(&source)->DispatchCallbacks("A", &source);
    EXPECT_EQ(subscriber.pLast, &source);
    subscriber.pLast = nullptr;
    RemoveCallback(&source, id);
    GetDefaultCallbackManager(&source)->DispatchCallbacks("A", &source);
    EXPECT_EQ(subscriber.pLast, nullptr);
}

TEST(Callback, TakesBackAllSubscriptionsOfASubscriber)
{
    Source source;
    Subscriber subscriber;
    AddCallback(&subscriber, &source, "A", &Subscriber::OnSource);
    AddCallback(&subscriber, &source, "B", &Subscriber::OnSource);
    RemoveSubscriberCallbacks(&subscriber, &source);
    EXPECT_EQ(source.GetCallbackManager()->GetCallbackCount(), 0);
}

TEST(Callback, HasNothingToDoWithoutASource)
{
    Subscriber subscriber;
    EXPECT_EQ(AddCallback(&subscriber, nullptr, "A", &Subscriber::OnSource), 0U);
    RemoveCallback(nullptr, 1);
    RemoveSubscriberCallbacks(&subscriber, nullptr);
    EXPECT_EQ(GetDefaultCallbackManager(nullptr), nullptr);
}

} // namespace

#include "CATCmdAccess.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "CATCmdContainer.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// An item that tells when it dies.
class Item : public CATCmdAccess
{
public:
    explicit Item(const char* name, std::vector<std::string>* pDead = nullptr) : CATCmdAccess(name), m_pDead(pDead) {}
    ~Item() override
    {
        if (m_pDead != nullptr) {
            m_pDead->emplace_back(GetName().View());
        }
    }

private:
    std::vector<std::string>* m_pDead;
};

std::vector<std::string> NamesFrom(const CATCmdAccess* pItem)
{
    std::vector<std::string> names;
    for (; pItem != nullptr; pItem = pItem->GetNext()) {
        names.emplace_back(pItem->GetName().View());
    }
    return names;
}

TEST(CmdAccess, ShowsItsNameUntilItHasATitle)
{
    Item item("name");
    EXPECT_EQ(item.GetTitle(), "name");
    item.SetTitle("title");
    EXPECT_EQ(item.GetTitle(), "title");
    EXPECT_EQ(item.GetName(), "name");
    EXPECT_EQ(item.GetNext(), nullptr);
    EXPECT_EQ(item.GetChild(), nullptr);
}

TEST(CmdAccess, TakesWhatItIsLinkedToWithIt)
{
    std::vector<std::string> dead;
    {
        Item first("first");
        auto* pSecond = new Item("second", &dead);
        first.SetNext(pSecond);
        pSecond->SetNext(new Item("third", &dead));
        EXPECT_THAT(NamesFrom(&first), ElementsAre("first", "second", "third"));
        EXPECT_THAT(dead, IsEmpty());
    }
    EXPECT_THAT(dead, ElementsAre("second", "third"));
}

TEST(CmdAccess, LosesWhatStoodBehindItToWhatIsLinkedThere)
{
    std::vector<std::string> dead;
    Item first("first");
    first.SetNext(new Item("second", &dead));
    first.SetNext(new Item("other", &dead));
    EXPECT_THAT(dead, ElementsAre("second"));
    EXPECT_THAT(NamesFrom(&first), ElementsAre("first", "other"));
    first.SetNext(nullptr);
    EXPECT_THAT(dead, ElementsAre("second", "other"));
    EXPECT_EQ(first.GetNext(), nullptr);
}

TEST(CmdAccess, IsTakenOutOfWhereItStoodWithWhatFollowsIt)
{
    std::vector<std::string> dead;
    Item first("first");
    Item other("other");
    auto* pSecond = new Item("second", &dead);
    auto* pThird = new Item("third", &dead);
    first.SetNext(pSecond);
    pSecond->SetNext(pThird);
    other.SetNext(pThird);
    EXPECT_THAT(NamesFrom(&first), ElementsAre("first", "second"));
    EXPECT_THAT(NamesFrom(&other), ElementsAre("other", "third"));
    first.SetNext(pThird);
    EXPECT_THAT(NamesFrom(&first), ElementsAre("first", "third"));
    EXPECT_THAT(NamesFrom(&other), ElementsAre("other"));
    EXPECT_THAT(dead, ElementsAre("second"));
}

TEST(CmdAccess, CanBeLinkedPastItsOwnSuccessor)
{
    std::vector<std::string> dead;
    Item first("first");
    auto* pSecond = new Item("second", &dead);
    auto* pThird = new Item("third", &dead);
    first.SetNext(pSecond);
    pSecond->SetNext(pThird);
    first.SetNext(pThird);
    EXPECT_THAT(NamesFrom(&first), ElementsAre("first", "third"));
    EXPECT_THAT(dead, ElementsAre("second"));
}

TEST(CmdAccess, DoesNotEndInItself)
{
    Item first("first");
    auto* pSecond = new Item("second");
    first.SetNext(pSecond);
    pSecond->SetNext(&first);
    first.SetNext(&first);
    EXPECT_THAT(NamesFrom(&first), ElementsAre("first", "second"));
    CATCmdContainer menu("menu");
    auto* pInner = new CATCmdContainer("inner");
    menu.AddChild(pInner);
    pInner->AddChild(&menu);
    EXPECT_EQ(pInner->GetChild(), nullptr);
}

TEST(CmdAccess, StandsNowhereAfterItWasDeleted)
{
    Item first("first");
    auto* pSecond = new Item("second");
    first.SetNext(pSecond);
    delete pSecond;
    EXPECT_EQ(first.GetNext(), nullptr);
}

TEST(CmdAccess, MayHaveAnyNumberOfFollowers)
{
    std::vector<std::string> dead;
    {
        Item first("first");
        CATCmdAccess* pLast = &first;
        for (int i = 0; i < 100000; ++i) {
            auto* pNext = new Item("next", &dead);
            pLast->SetNext(pNext);
            pLast = pNext;
        }
    }
    EXPECT_EQ(dead.size(), 100000U);
}

TEST(CmdContainer, AddsItemsBehindTheLast)
{
    CATCmdContainer menu("menu", CATCmdContainer::GivenAway);
    EXPECT_EQ(menu.GetPersistence(), 1);
    EXPECT_EQ(menu.GetChild(), nullptr);
    auto* pSecond = new Item("second");
    pSecond->SetNext(new Item("third"));
    menu.AddChild(new Item("first"));
    menu.AddChild(pSecond);
    menu.AddChild(new Item("fourth"));
    EXPECT_THAT(NamesFrom(menu.GetChild()), ElementsAre("first", "second", "third", "fourth"));
    EXPECT_EQ(menu.GetNext(), nullptr);
}

TEST(CmdContainer, GivesItsItemsToAnotherMenu)
{
    CATCmdContainer menu("menu");
    {
        CATCmdContainer other("other");
        other.AddChild(new Item("first"));
        other.AddChild(new Item("second"));
        menu.AddChild(other.GetChild());
        EXPECT_EQ(other.GetChild(), nullptr);
    }
    EXPECT_THAT(NamesFrom(menu.GetChild()), ElementsAre("first", "second"));
}

TEST(CmdContainer, IsDeletedByWhoeverReceivedItWhenItWasGivenAway)
{
    std::vector<std::string> dead;
    auto* pGivenAway = new CATCmdContainer("menu", 1);
    pGivenAway->AddChild(new Item("item", &dead));
    CATCmdContainer kept("menu");
    kept.AddChild(new Item("kept", &dead));
    CATCmdContainer::Dismiss(pGivenAway);
    CATCmdContainer::Dismiss(&kept);
    CATCmdContainer::Dismiss(nullptr);
    EXPECT_THAT(dead, ElementsAre("item"));
}

} // namespace

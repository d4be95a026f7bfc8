#include "CATPathElementSet.h"

#include <gtest/gtest.h>

#include <vector>

#include "CATPathElementPool.h"
#include "QTBTestLateType.h"

namespace {

class PathElementSet : public ::testing::Test
{
protected:
    CATPathElement_var MakePath() const { return CATPathElement_var::Adopt(m_pPool->Get(nullptr, m_Type.Create())); }

    std::vector<const CATPathElement*> GetOrder() const
    {
        std::vector<const CATPathElement*> order;
        for (const CATPathElement_var& spPath : m_Set.GetElements()) {
            order.push_back(spPath.Get());
        }
        return order;
    }

    QTBTestLateType m_Type{"TestPathObject"};
    std::shared_ptr<CATPathElementPool> m_pPool = CATPathElementPool::Create();
    CATPathElementSet m_Set;
};

TEST_F(PathElementSet, HoldsPathsInTheOrderOfTheirAdding)
{
    const CATPathElement_var spA = MakePath();
    const CATPathElement_var spB = MakePath();
    EXPECT_TRUE(m_Set.AddElement(spA.Get()));
    EXPECT_TRUE(m_Set.AddElement(spB.Get()));
    EXPECT_EQ(m_Set.GetSize(), 2);
    EXPECT_EQ(GetOrder(), (std::vector<const CATPathElement*>{spA.Get(), spB.Get()}));
    EXPECT_TRUE(m_Set.Contains(spA.Get()));
    EXPECT_TRUE(m_Set.ContainsObject(spB->GetObject()));
}

TEST_F(PathElementSet, HoldsAPathOnce)
{
    const CATPathElement_var spPath = MakePath();
    EXPECT_TRUE(m_Set.AddElement(spPath.Get()));
    EXPECT_FALSE(m_Set.AddElement(spPath.Get()));
    EXPECT_FALSE(m_Set.AddElement(nullptr));
    EXPECT_EQ(m_Set.GetSize(), 1);
}

TEST_F(PathElementSet, RemovesWhatItHolds)
{
    const CATPathElement_var spA = MakePath();
    const CATPathElement_var spB = MakePath();
    m_Set.AddElement(spA.Get());
    m_Set.AddElement(spB.Get());
    EXPECT_TRUE(m_Set.RemoveElement(spA.Get()));
    EXPECT_FALSE(m_Set.RemoveElement(spA.Get()));
    EXPECT_FALSE(m_Set.RemoveElement(nullptr));
    EXPECT_EQ(GetOrder(), std::vector<const CATPathElement*>{spB.Get()});
    EXPECT_FALSE(m_Set.ContainsObject(spA->GetObject()));
}

TEST_F(PathElementSet, LetsGoOfEverythingWhenItIsEmptied)
{
    const int before = CATBaseUnknown::GetLiveComponentCount();
    m_Set.AddElement(MakePath().Get());
    m_Set.AddElement(MakePath().Get());
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before + 2);
    m_Set.Empty();
    EXPECT_EQ(m_Set.GetSize(), 0);
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before);
}

TEST_F(PathElementSet, KnowsAnObjectAsLongAsOnePathLeadsToIt)
{
    const CATBaseUnknown_var spObject = m_Type.Create();
    const CATPathElement_var spAbove = MakePath();
    const CATPathElement_var spA = CATPathElement_var::Adopt(m_pPool->Get(nullptr, spObject));
    const CATPathElement_var spB = CATPathElement_var::Adopt(m_pPool->Get(spAbove.Get(), spObject));
    m_Set.AddElement(spA.Get());
    m_Set.AddElement(spB.Get());
    m_Set.RemoveElement(spA.Get());
    EXPECT_TRUE(m_Set.ContainsObject(spObject));
    m_Set.RemoveElement(spB.Get());
    EXPECT_FALSE(m_Set.ContainsObject(spObject));
    EXPECT_FALSE(m_Set.ContainsObject(NULL_var));
}

TEST_F(PathElementSet, IsWalkedInOrderFromTheStartAsOftenAsWanted)
{
    EXPECT_EQ(m_Set.NextElement(), nullptr);
    m_Set.InitElementList();
    EXPECT_EQ(m_Set.NextElement(), nullptr);
    const CATPathElement_var spA = MakePath();
    const CATPathElement_var spB = MakePath();
    m_Set.AddElement(spA.Get());
    m_Set.AddElement(spB.Get());
    for (int i = 0; i < 2; ++i) {
        m_Set.InitElementList();
        EXPECT_EQ(m_Set.NextElement(), spA.Get());
        EXPECT_EQ(m_Set.NextElement(), spB.Get());
        EXPECT_EQ(m_Set.NextElement(), nullptr);
    }
}

TEST_F(PathElementSet, MayBeChangedDuringAWalk)
{
    const std::vector<CATPathElement_var> paths{MakePath(), MakePath(), MakePath()};
    m_Set.AddElement(paths[0].Get());
    m_Set.AddElement(paths[1].Get());
    m_Set.InitElementList();
    EXPECT_EQ(m_Set.NextElement(), paths[0].Get());
    EXPECT_TRUE(m_Set.RemoveElement(paths[0].Get()));
    EXPECT_TRUE(m_Set.RemoveElement(paths[1].Get())) << "the next one";
    EXPECT_TRUE(m_Set.AddElement(paths[2].Get()));
    m_Set.InitElementList();
    EXPECT_EQ(m_Set.NextElement(), paths[2].Get());
    m_Set.InitElementList();
    m_Set.Empty();
    EXPECT_EQ(m_Set.NextElement(), nullptr);
}

TEST_F(PathElementSet, KeepsAPathWhoseObjectLeavesTheModelButKnowsTheObjectNoMore)
{
    const CATBaseUnknown_var spObject = m_Type.Create();
    const CATPathElement_var spPath = CATPathElement_var::Adopt(m_pPool->Get(nullptr, spObject));
    m_Set.AddElement(spPath.Get());
    m_pPool->LoseObject(spObject.Get());
    EXPECT_FALSE(m_Set.ContainsObject(spObject));
    EXPECT_TRUE(m_Set.Contains(spPath.Get()));
    EXPECT_TRUE(m_Set.RemoveElement(spPath.Get()));
    EXPECT_FALSE(m_Set.AddElement(spPath.Get())) << "it leads nowhere";
}

} // namespace

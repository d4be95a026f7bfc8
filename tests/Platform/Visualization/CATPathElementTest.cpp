#include "CATPathElement.h"

#include <gtest/gtest.h>

#include "CATPathElementPool.h"
#include "QTBTestLateType.h"

namespace {

class PathElement : public ::testing::Test
{
protected:
    CATPathElement_var Get(const CATPathElement_var& spParent, const CATBaseUnknown_var& spObject) const
    {
        return CATPathElement_var::Adopt(m_pPool->Get(spParent.Get(), spObject));
    }

    QTBTestLateType m_Type{"TestPathObject"};
    std::shared_ptr<CATPathElementPool> m_pPool = CATPathElementPool::Create();
};

TEST_F(PathElement, LeadsFromTheRootToTheObject)
{
    const CATBaseUnknown_var spRoot = m_Type.Create();
    const CATBaseUnknown_var spChild = m_Type.Create();
    const CATPathElement_var spRootPath = Get(NULL_var, spRoot);
    const CATPathElement_var spPath = Get(spRootPath, spChild);
    EXPECT_EQ(spPath->GetObject(), spChild);
    EXPECT_EQ(spPath->GetSize(), 2);
    EXPECT_EQ(spPath->GetParent(), spRootPath.Get());
    EXPECT_EQ(spRootPath->GetSize(), 1);
    EXPECT_EQ(spRootPath->GetParent(), nullptr);
}

TEST_F(PathElement, IsTheSameForTheSameObjectBelowTheSamePath)
{
    const CATBaseUnknown_var spRoot = m_Type.Create();
    const CATPathElement_var spPath = Get(NULL_var, spRoot);
    EXPECT_EQ(Get(NULL_var, spRoot).Get(), spPath.Get());
    EXPECT_EQ(CATPathElement_var::Adopt(m_pPool->Find(spRoot.Get())).Get(), spPath.Get());
    EXPECT_EQ(m_pPool->GetSize(), 1);
}

TEST_F(PathElement, IsAnotherOneWhenTheObjectHangsElsewhere)
{
    const CATBaseUnknown_var spObject = m_Type.Create();
    const CATPathElement_var spOld = Get(NULL_var, spObject);
    const CATPathElement_var spParent = Get(NULL_var, m_Type.Create());
    CATPathElement_var spNew = Get(spParent, spObject);
    EXPECT_NE(spNew.Get(), spOld.Get());
    EXPECT_EQ(CATPathElement_var::Adopt(m_pPool->Find(spObject.Get())).Get(), spNew.Get());
    spNew = NULL_var;
    EXPECT_EQ(m_pPool->Find(spObject.Get()), nullptr);
}

TEST_F(PathElement, KeepsItsObjectsAliveAndLetsThemGo)
{
    const int before = CATBaseUnknown::GetLiveComponentCount();
    CATPathElement_var spPath = Get(Get(NULL_var, m_Type.Create()), m_Type.Create());
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before + 2);
    EXPECT_EQ(m_pPool->GetSize(), 2);
    spPath = NULL_var;
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before);
    EXPECT_EQ(m_pPool->GetSize(), 0);
}

TEST_F(PathElement, OutlivesThePool)
{
    const CATBaseUnknown_var spObject = m_Type.Create();
    const CATPathElement_var spPath = Get(NULL_var, spObject);
    m_pPool.reset();
    EXPECT_EQ(spPath->GetObject(), spObject);
}

TEST_F(PathElement, DoesNotExistForAnEmptyHandle)
{
    EXPECT_EQ(m_pPool->Get(nullptr, NULL_var), nullptr);
    EXPECT_EQ(m_pPool->Find(nullptr), nullptr);
    EXPECT_EQ(m_pPool->GetSize(), 0);
}

TEST_F(PathElement, MayBeAHundredThousandLevelsLong)
{
    constexpr int LEVELS = 100000;
    CATPathElement_var spPath;
    for (int i = 0; i < LEVELS; ++i) {
        spPath = Get(spPath, m_Type.Create());
    }
    EXPECT_EQ(spPath->GetSize(), LEVELS);
    spPath = NULL_var;
    EXPECT_EQ(m_pPool->GetSize(), 0);
}

TEST_F(PathElement, LosesAnObjectThatLeavesTheModel)
{
    const int before = CATBaseUnknown::GetLiveComponentCount();
    CATBaseUnknown_var spObject = m_Type.Create();
    const CATPathElement_var spPath = Get(Get(NULL_var, m_Type.Create()), spObject);
    m_pPool->LoseObject(spObject.Get());
    EXPECT_TRUE(spPath->GetObject() == NULL_var);
    EXPECT_EQ(spPath->GetSize(), 2);
    EXPECT_EQ(m_pPool->Find(spObject.Get()), nullptr);
    m_pPool->LoseObject(spObject.Get());
    spObject = NULL_var;
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before + 1);
}

} // namespace

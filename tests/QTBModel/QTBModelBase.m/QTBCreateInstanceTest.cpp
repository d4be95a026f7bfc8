#include "QTBCreateInstance.h"

#include <new>

#include <gtest/gtest.h>

#include "QTBECreateInstanceOnNode.h"
#include "QTBMatchers.h"

namespace {

// An implementation object for which there is no memory.
class Unmakable : public CATBaseUnknown
{
public:
    Unmakable() { throw std::bad_alloc(); }
};

// One whose allocation fails already.
class Unallocatable : public CATBaseUnknown
{
public:
    static void* operator new(std::size_t) { throw std::bad_alloc(); }
    static void operator delete(void*) {}
};

} // namespace

TEST(QTBCreateInstanceTest, ANewObjectHasOneReferenceForTheCaller)
{
    QTBECreateInstanceOnNode factory;
    void* pv = nullptr;
    ASSERT_THAT(factory.CreateInstance(&pv), Succeeds());
    auto* pNode = static_cast<CATBaseUnknown*>(pv);
    EXPECT_STREQ(pNode->IsA(), "QTBNode");
    EXPECT_EQ(pNode->Release(), 0U);
}

TEST(QTBCreateInstanceTest, WithoutMemoryItFailsAtOnceAndLeavesThePointerUntouched)
{
    int something = 0;
    void* pv = &something;
    DebugCapture capture(2);
    EXPECT_EQ(QTBCreateInstance<Unmakable>().CreateInstance(&pv), E_OUTOFMEMORY);
    EXPECT_EQ(QTBCreateInstance<Unallocatable>().CreateInstance(&pv), E_OUTOFMEMORY);
    EXPECT_EQ(pv, &something);
    EXPECT_EQ(CATError::CATGetLastError(E_OUTOFMEMORY, NULL), nullptr);
    EXPECT_EQ(capture.Text(), "");
}

TEST(QTBCreateInstanceTest, NoTraceScopeIsOpened)
{
    QTBECreateInstanceOnNode factory;
    void* pv = nullptr;
    DebugCapture capture(2);
    ASSERT_THAT(factory.CreateInstance(&pv), Succeeds());
    static_cast<CATBaseUnknown*>(pv)->Release();
    EXPECT_EQ(capture.Text(), "");
}

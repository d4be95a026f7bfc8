#include "QTBPooledName.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "QTBStringHash.h"

namespace {

TEST(PooledName, EqualTextsAreTheSameEntry)
{
    const int before = QTBPooledName::GetPoolSize();
    const QTBPooledName first("PooledNameTest.A");
    const QTBPooledName same("PooledNameTest.A");
    const QTBPooledName other("PooledNameTest.B");
    EXPECT_TRUE(first == same);
    EXPECT_FALSE(first == other);
    EXPECT_EQ(&first.GetText(), &same.GetText());
    EXPECT_EQ(first.GetText(), "PooledNameTest.A");
    EXPECT_EQ(QTBPooledName::GetPoolSize(), before + 2);
}

TEST(PooledName, TheHashIsThatOfTheText)
{
    unsigned int hash = 0;
    hash %= CATUnicodeString("PooledNameTest");
    EXPECT_EQ(QTBPooledName("PooledNameTest").GetHashKey(), hash);
}

TEST(PooledName, AnEntryGoesWithItsLastUser)
{
    const int before = QTBPooledName::GetPoolSize();
    {
        QTBPooledName first("PooledNameTest");
        QTBPooledName copy(first);
        QTBPooledName moved(std::move(first));
        EXPECT_TRUE(moved == copy);
        EXPECT_EQ(QTBPooledName::GetPoolSize(), before + 1);
        copy = QTBPooledName("PooledNameTest.Other");
        EXPECT_EQ(QTBPooledName::GetPoolSize(), before + 2);
        copy = moved;
        EXPECT_EQ(QTBPooledName::GetPoolSize(), before + 1);
    }
    EXPECT_EQ(QTBPooledName::GetPoolSize(), before);
}

TEST(PooledName, FindKnowsOnlyNamesInUse)
{
    const int before = QTBPooledName::GetPoolSize();
    EXPECT_TRUE(QTBPooledName::Find("PooledNameTest").IsEmpty());
    EXPECT_EQ(QTBPooledName::GetPoolSize(), before);
    const QTBPooledName name("PooledNameTest");
    EXPECT_TRUE(QTBPooledName::Find("PooledNameTest") == name);
    EXPECT_TRUE(QTBPooledName::Find("").IsEmpty());
}

TEST(PooledName, TheEmptyNameHasNoEntry)
{
    const int before = QTBPooledName::GetPoolSize();
    const QTBPooledName none;
    const QTBPooledName empty("");
    EXPECT_TRUE(none.IsEmpty());
    EXPECT_TRUE(none == empty);
    EXPECT_EQ(none.GetText(), "");
    EXPECT_EQ(none.GetHashKey(), QTBHashBytes(""));
    EXPECT_EQ(QTBPooledName::GetPoolSize(), before);
}

TEST(PooledName, BytesThatAreNoUtf8AreRepaired)
{
    const int before = QTBPooledName::GetPoolSize();
    const QTBPooledName broken("x\xFF");
    const QTBPooledName repaired("x\xEF\xBF\xBD");
    EXPECT_TRUE(broken == repaired);
    EXPECT_EQ(QTBPooledName::GetPoolSize(), before + 1);
}

TEST(PooledName, ThePoolGrowsAndShrinksWithItsNames)
{
    const int before = QTBPooledName::GetPoolSize();
    {
        std::vector<QTBPooledName> names;
        for (int i = 0; i < 100000; ++i) {
            names.emplace_back("PooledNameTest." + std::to_string(i));
        }
        EXPECT_EQ(QTBPooledName::GetPoolSize(), before + 100000);
        for (int i = 0; i < 100000; ++i) {
            ASSERT_TRUE(QTBPooledName::Find("PooledNameTest." + std::to_string(i)) ==
                        names[static_cast<std::size_t>(i)]);
        }
    }
    EXPECT_EQ(QTBPooledName::GetPoolSize(), before);
}

} // namespace

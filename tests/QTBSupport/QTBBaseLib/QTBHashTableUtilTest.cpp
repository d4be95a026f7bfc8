#include "QTBHashTableUtil.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "CATError.h"
#include "QTBHashTableAttribute.h"
#include "QTBStringHash.h"

namespace {

int s_LiveEntries = 0;

// Entry with a number, so that entries of one key can be told apart.
class NumberedEntry : public QTBHashTableAttribute
{
public:
    NumberedEntry(const CATUnicodeString& usKey, int number) : QTBHashTableAttribute(usKey), m_Number(number)
    {
        ++s_LiveEntries;
    }
    ~NumberedEntry() override { --s_LiveEntries; }

    int GetNumber() const { return m_Number; }

private:
    int m_Number;
};

class HashTableUtil : public testing::Test
{
protected:
    ~HashTableUtil() override
    {
        m_pTable.reset();
        EXPECT_EQ(s_LiveEntries, 0);
    }

    HRESULT InsertOwned(const char* key, int number, unsigned char bReplaceExisting)
    {
        return QTBHashTableUtil::Insert(new NumberedEntry(key, number), m_pTable.get(), TRUE, bReplaceExisting);
    }

    // The number of the entry found, 0 when there is none.
    int Find(const char* key) const
    {
        NumberedEntry* pEntry = nullptr;
        const HRESULT hr = QTBHashTableUtil::Find(key, m_pTable.get(), &pEntry, TRUE);
        EXPECT_EQ(hr, pEntry != nullptr ? S_OK : E_FAIL);
        return pEntry != nullptr ? pEntry->GetNumber() : 0;
    }

    std::unique_ptr<CATHashTabQTBHashTableAttribute> m_pTable = std::make_unique<CATHashTabQTBHashTableAttribute>(
        &QTBHashTableAttribute::Hash, &QTBHashTableAttribute::Compare, 100);
};

TEST_F(HashTableUtil, EntriesAreFoundByTheirKey)
{
    EXPECT_EQ(InsertOwned("A", 1, FALSE), S_OK);
    EXPECT_EQ(InsertOwned("B", 2, TRUE), S_OK);
    EXPECT_EQ(InsertOwned("", 3, TRUE), S_OK);
    EXPECT_EQ(Find("A"), 1);
    EXPECT_EQ(Find("B"), 2);
    EXPECT_EQ(Find(""), 3);
    EXPECT_EQ(Find("a"), 0);
    EXPECT_EQ(m_pTable->Size(), 3);
}

TEST_F(HashTableUtil, TheKeyAndItsHashBelongToTheEntry)
{
    const QTBHashTableAttribute entry("Key");
    unsigned int hash = 0;
    hash %= CATUnicodeString("Key");
    EXPECT_EQ(entry.GetKey(), "Key");
    EXPECT_EQ(entry.GetHashKey(), hash);
    EXPECT_EQ(QTBHashTableAttribute::Hash(&entry), hash);
    const QTBHashTableAttribute same("Key");
    const QTBHashTableAttribute other("Yek");
    EXPECT_EQ(QTBHashTableAttribute::Compare(&entry, &same), 0);
    EXPECT_NE(QTBHashTableAttribute::Compare(&entry, &other), 0);
}

TEST_F(HashTableUtil, AnEntryHidesEarlierOnesOfItsKeyUntilItIsRemoved)
{
    EXPECT_EQ(InsertOwned("A", 1, FALSE), S_OK);
    EXPECT_EQ(InsertOwned("A", 2, FALSE), S_OK);
    EXPECT_EQ(InsertOwned("A", 3, FALSE), S_OK);
    EXPECT_EQ(m_pTable->Size(), 3);
    EXPECT_EQ(Find("A"), 3);
    EXPECT_EQ(QTBHashTableUtil::Remove("A", m_pTable.get(), TRUE, FALSE), S_OK);
    EXPECT_EQ(Find("A"), 2);
    EXPECT_EQ(QTBHashTableUtil::Remove("A", m_pTable.get(), TRUE, FALSE), S_OK);
    EXPECT_EQ(Find("A"), 1);
    EXPECT_EQ(QTBHashTableUtil::Remove("A", m_pTable.get(), TRUE, FALSE), S_OK);
    EXPECT_EQ(Find("A"), 0);
    EXPECT_EQ(QTBHashTableUtil::Remove("A", m_pTable.get(), TRUE, FALSE), E_FAIL);
    EXPECT_EQ(s_LiveEntries, 0);
}

TEST_F(HashTableUtil, AReplacingEntryRemovesAllEarlierOnes)
{
    NumberedEntry notOwned("A", 1);
    EXPECT_EQ(QTBHashTableUtil::Insert(&notOwned, m_pTable.get(), FALSE, FALSE), S_OK);
    EXPECT_EQ(InsertOwned("A", 2, FALSE), S_OK);
    EXPECT_EQ(InsertOwned("B", 3, FALSE), S_OK);
    EXPECT_EQ(InsertOwned("A", 4, TRUE), S_OK);
    EXPECT_EQ(m_pTable->Size(), 2);
    EXPECT_EQ(Find("A"), 4);
    EXPECT_EQ(Find("B"), 3);
    EXPECT_EQ(s_LiveEntries, 3);
    EXPECT_EQ(QTBHashTableUtil::Remove("A", m_pTable.get(), TRUE, FALSE), S_OK);
    EXPECT_EQ(Find("A"), 0);
}

TEST_F(HashTableUtil, AnEntryMayReplaceItself)
{
    NumberedEntry entry("A", 1);
    EXPECT_EQ(QTBHashTableUtil::Insert(&entry, m_pTable.get(), FALSE, FALSE), S_OK);
    EXPECT_EQ(QTBHashTableUtil::Insert(&entry, m_pTable.get(), FALSE, TRUE), S_OK);
    EXPECT_EQ(m_pTable->Size(), 1);
    EXPECT_EQ(Find("A"), 1);
    m_pTable->RemoveAll();
}

TEST_F(HashTableUtil, AnEntryOfATableIsNotTakenAgain)
{
    EXPECT_EQ(InsertOwned("A", 1, FALSE), S_OK);
    NumberedEntry* pEntry = nullptr;
    ASSERT_EQ(QTBHashTableUtil::Find("A", m_pTable.get(), &pEntry, TRUE), S_OK);
    EXPECT_EQ(QTBHashTableUtil::Insert(pEntry, m_pTable.get(), TRUE, TRUE), E_FAIL);
    EXPECT_EQ(QTBHashTableUtil::Insert(pEntry, m_pTable.get(), FALSE, FALSE), E_FAIL);
    EXPECT_EQ(m_pTable->Size(), 1);
    EXPECT_EQ(Find("A"), 1);
}

TEST_F(HashTableUtil, AllEntriesOfAKeyAreRemovedOnRequest)
{
    EXPECT_EQ(InsertOwned("A", 1, FALSE), S_OK);
    EXPECT_EQ(InsertOwned("A", 2, FALSE), S_OK);
    EXPECT_EQ(InsertOwned("B", 3, FALSE), S_OK);
    NumberedEntry* pEntry = nullptr;
    ASSERT_EQ(QTBHashTableUtil::Find("A", m_pTable.get(), &pEntry, TRUE), S_OK);
    // The key is that of an entry that goes.
    EXPECT_EQ(QTBHashTableUtil::Remove(pEntry->GetKey(), m_pTable.get(), TRUE, TRUE), S_OK);
    EXPECT_EQ(Find("A"), 0);
    EXPECT_EQ(m_pTable->Size(), 1);
    EXPECT_EQ(s_LiveEntries, 1);
}

TEST_F(HashTableUtil, AnEntryRemovedWithoutDeletionBecomesTheCallers)
{
    EXPECT_EQ(InsertOwned("A", 1, FALSE), S_OK);
    NumberedEntry* pEntry = nullptr;
    ASSERT_EQ(QTBHashTableUtil::Find("A", m_pTable.get(), &pEntry, TRUE), S_OK);
    EXPECT_EQ(QTBHashTableUtil::Remove("A", m_pTable.get(), FALSE, FALSE), S_OK);
    EXPECT_EQ(s_LiveEntries, 1);
    EXPECT_EQ(QTBHashTableUtil::Insert(pEntry, m_pTable.get(), FALSE, FALSE), S_OK);
    m_pTable->RemoveAll();
    EXPECT_EQ(s_LiveEntries, 1);
    delete pEntry;
}

TEST_F(HashTableUtil, TheTableDeletesOnlyWhatItOwns)
{
    NumberedEntry notOwned("A", 1);
    EXPECT_EQ(QTBHashTableUtil::Insert(&notOwned, m_pTable.get(), FALSE, FALSE), S_OK);
    EXPECT_EQ(InsertOwned("A", 2, FALSE), S_OK);
    EXPECT_EQ(InsertOwned("B", 3, FALSE), S_OK);
    EXPECT_EQ(QTBHashTableUtil::Remove("A", m_pTable.get(), TRUE, TRUE), S_OK);
    EXPECT_EQ(s_LiveEntries, 2);
    EXPECT_EQ(QTBHashTableUtil::Insert(&notOwned, m_pTable.get(), FALSE, FALSE), S_OK);
    m_pTable.reset();
    EXPECT_EQ(s_LiveEntries, 1);
}

TEST_F(HashTableUtil, AbsenceIsReportedWithAnErrorUnlessItIsExpected)
{
    NumberedEntry some("A", 1);
    NumberedEntry* pEntry = &some;
    const HRESULT hrExpected = QTBHashTableUtil::Find("A", m_pTable.get(), &pEntry, TRUE);
    EXPECT_EQ(hrExpected, E_FAIL);
    EXPECT_EQ(CATError::CATGetLastError(hrExpected, nullptr), nullptr);
    EXPECT_EQ(pEntry, nullptr);

    pEntry = &some;
    const HRESULT hrUnexpected = QTBHashTableUtil::Find("A", m_pTable.get(), &pEntry, FALSE);
    EXPECT_TRUE(FAILED(hrUnexpected));
    const CATError* pError = CATError::CATGetLastError(hrUnexpected, nullptr);
    ASSERT_NE(pError, nullptr);
    ASSERT_EQ(pError->GetNLSParameters().size(), 1U);
    EXPECT_EQ(pError->GetNLSParameters()[0], "A");
    EXPECT_EQ(pEntry, nullptr);
}

TEST_F(HashTableUtil, NullArgumentsAreRefused)
{
    NumberedEntry entry("A", 1);
    NumberedEntry* pEntry = nullptr;
    EXPECT_EQ(QTBHashTableUtil::Insert(nullptr, m_pTable.get(), FALSE, FALSE), E_POINTER);
    EXPECT_EQ(QTBHashTableUtil::Insert(&entry, nullptr, FALSE, FALSE), E_POINTER);
    EXPECT_EQ(QTBHashTableUtil::Find("A", nullptr, &pEntry, TRUE), E_POINTER);
    EXPECT_EQ(QTBHashTableUtil::Find<NumberedEntry>("A", m_pTable.get(), nullptr, TRUE), E_POINTER);
    EXPECT_EQ(QTBHashTableUtil::Remove("A", nullptr, TRUE, FALSE), E_POINTER);
}

TEST_F(HashTableUtil, ATableOfManyEntriesStaysFast)
{
    constexpr int COUNT = 200000;
    for (int i = 1; i <= COUNT; ++i) {
        ASSERT_EQ(InsertOwned(std::to_string(i).c_str(), i, TRUE), S_OK);
    }
    for (int i = 1; i <= COUNT; ++i) {
        ASSERT_EQ(Find(std::to_string(i).c_str()), i);
    }
    for (int i = 1; i <= COUNT; ++i) {
        ASSERT_EQ(QTBHashTableUtil::Remove(std::to_string(i).c_str(), m_pTable.get(), TRUE, FALSE), S_OK);
    }
    EXPECT_EQ(m_pTable->Size(), 0);
}

} // namespace

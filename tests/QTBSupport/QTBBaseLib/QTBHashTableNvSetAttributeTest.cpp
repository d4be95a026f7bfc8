#include "QTBHashTableNvSetAttribute.h"

#include <initializer_list>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "QTBDebugUtil.h"
#include "QTBListValues.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

CATListValCATUnicodeString ListOf(std::initializer_list<const char*> texts)
{
    CATListValCATUnicodeString List;
    for (const char* text : texts) {
        List.Append(text);
    }
    return List;
}

class HashTableNvSetAttribute : public testing::Test
{
protected:
    std::vector<CATUnicodeString> Names() const
    {
        CATListValCATUnicodeString Names;
        CATListValCATUnicodeString Values;
        EXPECT_EQ(m_Set.GetNvSet(&Names, &Values), S_OK);
        return ListValues(Names);
    }

    std::vector<CATUnicodeString> Values() const
    {
        CATListValCATUnicodeString Names;
        CATListValCATUnicodeString Values;
        EXPECT_EQ(m_Set.GetNvSet(&Names, &Values), S_OK);
        return ListValues(Values);
    }

    QTBHashTableNvSetAttribute m_Set{"Key"};
};

TEST_F(HashTableNvSetAttribute, IsEmptyAtFirst)
{
    EXPECT_EQ(m_Set.GetKey(), "Key");
    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_THAT(Values(), IsEmpty());
}

TEST_F(HashTableNvSetAttribute, ASetIsReplacedWhole)
{
    EXPECT_EQ(m_Set.SetNvSet(ListOf({"A", "B"}), ListOf({"1", ""})), S_OK);
    EXPECT_EQ(m_Set.SetNvSet(ListOf({"C", "A"}), ListOf({"3", "4"})), S_OK);
    EXPECT_THAT(Names(), ElementsAre("C", "A"));
    EXPECT_THAT(Values(), ElementsAre("3", "4"));
    EXPECT_EQ(m_Set.SetNvSet(ListOf({}), ListOf({})), S_OK);
    EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(HashTableNvSetAttribute, ANameThatOccursTwiceKeepsItsFirstPlaceAndItsLastValue)
{
    EXPECT_EQ(m_Set.SetNvSet(ListOf({"A", "B", "A"}), ListOf({"1", "2", "3"})), S_OK);
    EXPECT_THAT(Names(), ElementsAre("A", "B"));
    EXPECT_THAT(Values(), ElementsAre("3", "2"));
}

TEST_F(HashTableNvSetAttribute, AMalformedSetChangesNothing)
{
    ASSERT_EQ(m_Set.SetNvSet(ListOf({"A"}), ListOf({"1"})), S_OK);
    EXPECT_EQ(m_Set.SetNvSet(ListOf({"B", "C"}), ListOf({"2"})), E_FAIL);
    EXPECT_EQ(m_Set.SetNvSet(ListOf({"B"}), ListOf({"2", "3"})), E_FAIL);
    EXPECT_EQ(m_Set.SetNvSet(ListOf({"B", ""}), ListOf({"2", "3"})), E_FAIL);
    EXPECT_EQ(m_Set.SetNvValue("", "2"), E_FAIL);
    EXPECT_THAT(Names(), ElementsAre("A"));
    EXPECT_THAT(Values(), ElementsAre("1"));
}

TEST_F(HashTableNvSetAttribute, SingleValuesAreChangedAddedAndRead)
{
    EXPECT_EQ(m_Set.SetNvValue("A", "1"), S_OK);
    EXPECT_EQ(m_Set.SetNvValue("B", "2"), S_OK);
    EXPECT_EQ(m_Set.SetNvValue("A", "3"), S_OK);
    EXPECT_THAT(Names(), ElementsAre("A", "B"));
    EXPECT_THAT(Values(), ElementsAre("3", "2"));
    CATUnicodeString usValue;
    EXPECT_EQ(m_Set.GetNvValue("A", &usValue), S_OK);
    EXPECT_EQ(usValue, "3");
    usValue = "untouched";
    EXPECT_EQ(m_Set.GetNvValue("C", &usValue), E_FAIL);
    EXPECT_EQ(m_Set.GetNvValue("", &usValue), E_FAIL);
    EXPECT_EQ(usValue, "untouched");
}

TEST_F(HashTableNvSetAttribute, TheListsGivenOutAreTheCallers)
{
    ASSERT_EQ(m_Set.SetNvValue("A", "1"), S_OK);
    CATListValCATUnicodeString GivenNames;
    CATListValCATUnicodeString GivenValues;
    ASSERT_EQ(m_Set.GetNvSet(&GivenNames, &GivenValues), S_OK);
    GivenValues.Replace(1, "changed");
    EXPECT_THAT(Values(), ElementsAre("1"));
}

TEST_F(HashTableNvSetAttribute, NullPointersAreRefused)
{
    CATListValCATUnicodeString List;
    EXPECT_EQ(m_Set.GetNvSet(nullptr, &List), E_POINTER);
    EXPECT_EQ(m_Set.GetNvSet(&List, nullptr), E_POINTER);
    EXPECT_EQ(m_Set.GetNvValue("A", nullptr), E_POINTER);
}

TEST_F(HashTableNvSetAttribute, ValuesArePrintedOnlyWhenDebugOutputIsWanted)
{
    ASSERT_EQ(m_Set.SetNvSet(ListOf({"A", "B"}), ListOf({"1", ""})), S_OK);
    testing::internal::CaptureStdout();
    EXPECT_EQ(m_Set.PrintValues(), S_OK);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");

    QTBDebugUtil::s_bGlobalDebugStatus = TRUE;
    testing::internal::CaptureStdout();
    EXPECT_EQ(m_Set.PrintValues(), S_OK);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "  A = [1]\n  B = []\n");
    QTBDebugUtil::s_bGlobalDebugStatus = FALSE;
}

} // namespace

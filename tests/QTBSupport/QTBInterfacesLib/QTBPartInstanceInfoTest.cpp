#include "QTBPartInstanceInfo.h"

#include <gtest/gtest.h>

namespace {

CATListValCATUnicodeString Names(std::initializer_list<const char*> names)
{
    CATListValCATUnicodeString list;
    for (const char* name : names) {
        list.Append(name);
    }
    return list;
}

} // namespace

TEST(PartInstanceInfo, HoldsAPartNumberAndOneInstanceName)
{
    QTBPartInstanceInfo info;
    info.SetInstanceInfo("4711", "Bracket.1");
    CATUnicodeString partNumber;
    CATUnicodeString instanceName;
    ASSERT_EQ(info.GetInstanceInfo(&partNumber, &instanceName), S_OK);
    EXPECT_EQ(partNumber, "4711");
    EXPECT_EQ(instanceName, "Bracket.1");
}

TEST(PartInstanceInfo, OneNameReadsAsAListOfOneName)
{
    QTBPartInstanceInfo info;
    info.SetInstanceInfo("4711", "Bracket.1");
    CATUnicodeString partNumber;
    CATListValCATUnicodeString instanceNames = Names({"left over"});
    ASSERT_EQ(info.GetInstanceInfo(&partNumber, &instanceNames), S_OK);
    EXPECT_EQ(instanceNames, Names({"Bracket.1"}));
}

TEST(PartInstanceInfo, TheSingleNameOfSeveralIsTheFirst)
{
    QTBPartInstanceInfo info;
    info.SetInstanceInfo("4711", Names({"Bracket.1", "Bracket.2"}));
    CATUnicodeString partNumber;
    CATUnicodeString instanceName;
    CATListValCATUnicodeString instanceNames;
    ASSERT_EQ(info.GetInstanceInfo(&partNumber, &instanceName), S_OK);
    EXPECT_EQ(instanceName, "Bracket.1");
    ASSERT_EQ(info.GetInstanceInfo(&partNumber, &instanceNames), S_OK);
    EXPECT_EQ(instanceNames, Names({"Bracket.1", "Bracket.2"}));

    info.SetInstanceInfo("4712", Names({}));
    ASSERT_EQ(info.GetInstanceInfo(&partNumber, &instanceName), S_OK);
    EXPECT_EQ(partNumber, "4712");
    EXPECT_TRUE(instanceName.IsEmpty());
}

TEST(PartInstanceInfo, RefusesNullPointers)
{
    const QTBPartInstanceInfo info;
    CATUnicodeString text;
    CATListValCATUnicodeString list;
    EXPECT_EQ(info.GetInstanceInfo(nullptr, &text), E_POINTER);
    EXPECT_EQ(info.GetInstanceInfo(&text, static_cast<CATUnicodeString*>(nullptr)), E_POINTER);
    EXPECT_EQ(info.GetInstanceInfo(nullptr, &list), E_POINTER);
    EXPECT_EQ(info.GetInstanceInfo(&text, static_cast<CATListValCATUnicodeString*>(nullptr)), E_POINTER);
}

TEST(PartInstanceInfo, PathsKeepTheirOrder)
{
    CATListValQTBPartInstanceInfo path;
    for (const char* number : {"root", "middle", "leaf"}) {
        QTBPartInstanceInfo step;
        step.SetInstanceInfo(number, "Instance.1");
        path.Append(step);
    }
    ASSERT_EQ(path.Size(), 3);
    CATUnicodeString partNumber;
    CATUnicodeString instanceName;
    path[1].GetInstanceInfo(&partNumber, &instanceName);
    EXPECT_EQ(partNumber, "root");
    path.RemoveAll();
    EXPECT_EQ(path.Size(), 0);
}

#include "QTBNodeRelationInfo.h"

#include <gtest/gtest.h>

#include "QTBConstants.h"

TEST(NodeRelationInfo, IsEmptyAtFirst)
{
    const QTBNodeRelationInfo info;
    EXPECT_TRUE(info.GetRelationName().IsEmpty());
    EXPECT_TRUE(info.GetRelationDirection().IsEmpty());
}

TEST(NodeRelationInfo, IsEqualWhenNameAndDirectionAreEqual)
{
    const QTBNodeRelationInfo info("PartPart", usLEFT_TO_RIGHT);
    EXPECT_EQ(info, QTBNodeRelationInfo("PartPart", usLEFT_TO_RIGHT));
    EXPECT_NE(info, QTBNodeRelationInfo("PartFile", usLEFT_TO_RIGHT));
    EXPECT_NE(info, QTBNodeRelationInfo("PartPart", usRIGHT_TO_LEFT));
}

TEST(NodeRelationInfo, CopiesAreEqual)
{
    const QTBNodeRelationInfo info("PartPart", usRIGHT_TO_LEFT);
    QTBNodeRelationInfo copy(info);
    EXPECT_EQ(copy, info);
    copy = QTBNodeRelationInfo("PartFile", usLEFT_TO_RIGHT);
    EXPECT_EQ(copy.GetRelationName(), "PartFile");
    EXPECT_EQ(copy.GetRelationDirection(), usLEFT_TO_RIGHT);
    EXPECT_EQ(info.GetRelationName(), "PartPart");
}

TEST(NodeRelationInfo, ListsLocateByNameAndDirection)
{
    CATListValQTBNodeRelationInfo infos;
    infos.Append(QTBNodeRelationInfo("PartPart", usLEFT_TO_RIGHT));
    CATListValQTBNodeRelationInfo more;
    more.Append(QTBNodeRelationInfo("PartPart", usRIGHT_TO_LEFT));
    more.Append(QTBNodeRelationInfo("PartFile", usLEFT_TO_RIGHT));
    infos.Append(more);

    ASSERT_EQ(infos.Size(), 3);
    EXPECT_EQ(infos.Locate(QTBNodeRelationInfo("PartPart", usRIGHT_TO_LEFT)), 2);
    EXPECT_EQ(infos.Locate(QTBNodeRelationInfo("PartFile", usRIGHT_TO_LEFT)), 0);
    infos.RemovePosition(1);
    EXPECT_EQ(infos[1], QTBNodeRelationInfo("PartPart", usRIGHT_TO_LEFT));
    infos.RemoveAll();
    EXPECT_EQ(infos.Size(), 0);
}

#include "QTBContextMenuInfo.h"

#include <gtest/gtest.h>

TEST(ContextMenuInfo, HoldsWhatItWasMadeFrom)
{
    const QTBContextMenuInfo info(QTB_CTX_MNU_INFO_RELATION, "PartPart", "Consists of", "QTB_Ctx_Expand", TRUE);
    EXPECT_EQ(info.GetType(), QTB_CTX_MNU_INFO_RELATION);
    EXPECT_EQ(info.GetActionName(), "PartPart");
    EXPECT_EQ(info.GetTitle(), "Consists of");
    EXPECT_EQ(info.GetCommandName(), "QTB_Ctx_Expand");
    EXPECT_EQ(info.IsEnabled(), TRUE);
}

TEST(ContextMenuInfo, TypesAreCommandRelationAndSeparator)
{
    EXPECT_EQ(QTB_CTX_MNU_INFO_COMMAND, 0);
    EXPECT_EQ(QTB_CTX_MNU_INFO_RELATION, 1);
    EXPECT_EQ(QTB_CTX_MNU_INFO_SEPARATOR, 2);
}

TEST(ContextMenuInfo, IsADisabledCommandAtFirst)
{
    const QTBContextMenuInfo info;
    EXPECT_EQ(info.GetType(), QTB_CTX_MNU_INFO_COMMAND);
    EXPECT_TRUE(info.GetActionName().IsEmpty());
    EXPECT_EQ(info.IsEnabled(), FALSE);
}

TEST(ContextMenuInfo, CanBeDisabledInAList)
{
    CATListValQTBContextMenuInfo infos;
    infos.Append(QTBContextMenuInfo(QTB_CTX_MNU_INFO_COMMAND, "CheckIn", "Check In", "QTB_Ctx_CheckIn", TRUE));
    const CATListValQTBContextMenuInfo before = infos;
    QTBContextMenuInfo changed = infos[1];
    changed.SetEnabled(FALSE);
    infos.Replace(1, changed);
    EXPECT_EQ(infos[1].IsEnabled(), FALSE);
    EXPECT_EQ(before[1].IsEnabled(), TRUE);
    EXPECT_EQ(infos[1].GetActionName(), "CheckIn");
}

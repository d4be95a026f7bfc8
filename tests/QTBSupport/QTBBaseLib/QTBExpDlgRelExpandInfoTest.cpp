#include "QTBExpDlgRelExpandInfo.h"

#include "QTBSchemaFixture.h"

using ExpDlgRelExpandInfo = QTBSchemaFixture;

TEST_F(ExpDlgRelExpandInfo, HoldsARelationAndTheChoiceForIt)
{
    QTBSchemaRelation& relation = Relation("PartPart");
    const QTBExpDlgRelExpandInfo info(&relation, TRUE, FALSE, TRUE);
    EXPECT_EQ(info.GetSchemaRelationPtr(), &relation);
    EXPECT_EQ(info.IsLeftToRight(), TRUE);
    EXPECT_EQ(info.IsMultiExpand(), FALSE);
    EXPECT_EQ(info.IsSelected(), TRUE);
    EXPECT_NE(info, QTBExpDlgRelExpandInfo(&relation, FALSE, FALSE, TRUE));
    EXPECT_EQ(QTBExpDlgRelExpandInfo().GetSchemaRelationPtr(), nullptr);
}

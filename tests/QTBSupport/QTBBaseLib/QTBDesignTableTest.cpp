#include "QTBDesignTable.h"

#include <gtest/gtest.h>

TEST(DesignTable, HoldsNameAndFile)
{
    const QTBDesignTable table("Lengths", "/data/lengths.xls");
    EXPECT_EQ(table.GetName(), "Lengths");
    EXPECT_EQ(table.GetFilePath(), "/data/lengths.xls");
    CATListValQTBDesignTable tables;
    EXPECT_EQ(tables.Size(), 0);
    tables.Append(table);
    EXPECT_EQ(tables[1], table);
}

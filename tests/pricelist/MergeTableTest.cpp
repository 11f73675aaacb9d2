// Column starts and centred text starts of a table layout.
#include <gtest/gtest.h>

#include "pricelist/MergeTable.h"

namespace {

TEST(MergeTable, ColumnsAndCentredTextOfWidths10_20_30AtScale2) {
    const std::int32_t widths[] = {10, 20, 30};
    const MergeTable table(1.0, 2.0, widths, 3, 7);
    EXPECT_DOUBLE_EQ(table.TotalWidth(), 120.0);
    EXPECT_DOUBLE_EQ(table.ColumnStart(0), 0.0);
    EXPECT_DOUBLE_EQ(table.ColumnStart(-1), 0.0);
    EXPECT_DOUBLE_EQ(table.ColumnStart(2), 60.0);
    EXPECT_DOUBLE_EQ(table.ColumnStart(3), 120.0);
    EXPECT_DOUBLE_EQ(table.CentredTextStart(10, 1), 31.0);
}

TEST(MergeTable, TextWiderThanItsColumnStartsLeftOfIt) {
    const std::int32_t widths[] = {10, 5};
    const MergeTable table(1.0, 1.0, widths, 2, 0);
    EXPECT_LT(table.CentredTextStart(20, 1), table.ColumnStart(1));
    EXPECT_DOUBLE_EQ(table.CentredTextStart(20, 1), 10.0 + (5.0 - 18.0) * 0.5);
}

TEST(MergeTable, NoColumnsMeansNoWidth) {
    const MergeTable table(1.0, 3.0, nullptr, 0, 0);
    EXPECT_DOUBLE_EQ(table.TotalWidth(), 0.0);
    EXPECT_DOUBLE_EQ(table.ColumnStart(4), 0.0);
}

}  // namespace

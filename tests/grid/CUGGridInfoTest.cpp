// Sheet geometry: column counts, visible range, scroll limits, paging, hit tests.
#include <gtest/gtest.h>

#include "grid/CUGGridInfo.h"

namespace {

TEST(CUGGridInfo, ColumnCountKeepsOldWidthsAndBoundsItsArgument) {
    CUGGridInfo info;
    ASSERT_EQ(info.SetColCount(2), 0);
    info.m_colInfo[1].width = 10;
    info.m_defColWidth = 30;
    ASSERT_EQ(info.SetColCount(3), 0);
    EXPECT_EQ(info.GetColWidth(0), 75);
    EXPECT_EQ(info.GetColWidth(1), 10);
    EXPECT_EQ(info.GetColWidth(2), 30);
    EXPECT_EQ(info.GetColWidth(3), 0);
    EXPECT_EQ(info.SetColCount(-1), 1);
    EXPECT_EQ(info.m_numberCols, 3);
}

// Five columns of 50 pixels and 100 rows of 20, in a cell area of 120 by 95 pixels.
CUGGridInfo Sheet() {
    CUGGridInfo info;
    info.m_defColWidth = 50;
    info.SetColCount(5);
    info.SetRowCount(100);
    return info;
}

TEST(CUGGridInfo, VisibleRangeEndsAtTheLastFullyVisibleColumnAndRow) {
    CUGGridInfo info = Sheet();
    info.m_leftCol = 1;
    info.m_topRow = 10;
    info.ComputeVisibleRange(120, 95);
    EXPECT_EQ(info.m_rightCol, 3);    // columns 1 and 2 fit, 3 only in part
    EXPECT_EQ(info.m_bottomRow, 14);  // rows 10..13
    info.ComputeVisibleRange(10, 10);
    EXPECT_EQ(info.m_rightCol, 2);  // a column wider than the area still counts as visible
    EXPECT_EQ(info.m_bottomRow, 11);
}

TEST(CUGGridInfo, ScrollLimitsAndTheRowsThatShowACell) {
    CUGGridInfo info = Sheet();
    EXPECT_EQ(info.MaxTopRow(95), 96);
    EXPECT_EQ(info.MaxLeftCol(120), 3);
    EXPECT_EQ(info.TopRowShowing(50, 95), 47);
    EXPECT_EQ(info.LeftColShowing(4, 120), 3);
    info.m_rowHeights[49] = 90;
    EXPECT_EQ(info.TopRowShowing(50, 95), 50);
    info.SetRowCount(UG_UNIFORM_ROWS + 10);
    EXPECT_EQ(info.MaxTopRow(95), UG_UNIFORM_ROWS + 6);
}

TEST(CUGGridInfo, PagingMovesByTheRowsThatFitTheArea) {
    CUGGridInfo info = Sheet();
    info.m_topRow = 30;
    info.ComputeVisibleRange(120, 100);
    EXPECT_EQ(info.m_bottomRow, 35);
    EXPECT_EQ(info.PageUpRow(100), 25);
    EXPECT_EQ(info.PageDownRow(100), 39);
    info.m_topRow = 2;
    EXPECT_EQ(info.PageUpRow(100), -3);  // rows above the first count at the default height
}

TEST(CUGGridInfo, HitTestsAndPositionsCountFromTheVisibleOrigin) {
    CUGGridInfo info = Sheet();
    info.m_leftCol = 1;
    info.m_topRow = 10;
    EXPECT_EQ(info.ColFromX(0), 1);
    EXPECT_EQ(info.ColFromX(149), 3);
    EXPECT_EQ(info.ColFromX(200), -1);
    EXPECT_EQ(info.RowFromY(39, 95), 11);
    EXPECT_EQ(info.ColLeft(3), 100);
    EXPECT_EQ(info.ColLeft(0), -50);
    EXPECT_EQ(info.RowTop(12), 40);
    EXPECT_EQ(info.RowTop(9), -20);
}

}  // namespace

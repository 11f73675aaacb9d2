// The layout pass: which scroll bars a sheet needs and where the seven parts go.
#include <gtest/gtest.h>

#include "grid/UGLayout.h"

namespace {

// Three columns of 100 pixels and 10 rows of 20, scroll bars 16 pixels, headings 40 by 20.
CUGGridInfo Sheet() {
    CUGGridInfo info;
    info.m_defColWidth = 100;
    info.SetColCount(3);
    info.SetRowCount(10);
    info.m_vScrollWidth = 16;
    info.m_hScrollHeight = 16;
    return info;
}

TEST(UGLayout, ASheetThatFitsShowsNeitherScrollBar) {
    const CUGGridInfo info = Sheet();
    const UGLayout layout = UGComputeLayout(info, 400, 300);
    EXPECT_EQ(layout.vScroll.Width(), 0);
    EXPECT_EQ(layout.hScroll.Height(), 0);
    EXPECT_EQ(layout.grid, (UGRect{40, 20, 400, 300}));
    EXPECT_EQ(layout.topHdg, (UGRect{40, 0, 400, 20}));
    EXPECT_EQ(layout.sideHdg, (UGRect{0, 20, 40, 300}));
    EXPECT_EQ(layout.cnrBtn, (UGRect{0, 0, 40, 20}));
    EXPECT_EQ(info.m_vScrollWidth, 16);  // the stored sizes come back at the next pass
}

TEST(UGLayout, AWideColumnBringsTheHorizontalBarBack) {
    CUGGridInfo info = Sheet();
    info.m_colInfo[1].width = 400;
    const UGLayout layout = UGComputeLayout(info, 400, 300);
    EXPECT_EQ(layout.hScroll, (UGRect{0, 284, 400, 300}));
    EXPECT_EQ(layout.vScroll.Width(), 0);  // the rows still fit above the bar
    EXPECT_EQ(layout.grid, (UGRect{40, 20, 400, 284}));
}

TEST(UGLayout, TooManyRowsNeedTheVerticalBar) {
    CUGGridInfo info = Sheet();
    info.SetRowCount(100);
    const UGLayout layout = UGComputeLayout(info, 400, 300);
    EXPECT_EQ(layout.vScroll, (UGRect{384, 0, 400, 300}));
    EXPECT_EQ(layout.hScroll.Height(), 0);  // the columns still fit beside the bar
    EXPECT_EQ(layout.topHdg, (UGRect{40, 0, 384, 20}));
}

TEST(UGLayout, RowsThatFitOnlyWithoutTheHorizontalBarKeepTheVerticalOne) {
    CUGGridInfo info = Sheet();
    info.SetRowCount(13);  // 260 of 280 pixels, and still less than the 264 above the bar
    info.m_colInfo[2].width = 300;
    const UGLayout layout = UGComputeLayout(info, 400, 300);
    EXPECT_EQ(layout.hScroll.Height(), 16);
    EXPECT_EQ(layout.vScroll.Width(), 0);
    info.m_rowHeights[0] = 30;  // 270: fits the area, but not above the bar
    const UGLayout taller = UGComputeLayout(info, 400, 300);
    EXPECT_EQ(taller.vScroll.Width(), 16);
    EXPECT_EQ(taller.hScroll.Height(), 16);
}

TEST(UGLayout, TabsKeepTheHorizontalBarAndAreClampedToTheWidth) {
    CUGGridInfo info = Sheet();
    info.m_tabWidth = 1000;
    const UGLayout layout = UGComputeLayout(info, 400, 300);
    EXPECT_EQ(layout.tab, (UGRect{0, 284, 330, 300}));
    EXPECT_EQ(layout.hScroll, (UGRect{330, 284, 400, 300}));
    info.m_tabWidth = 1;
    EXPECT_EQ(UGComputeLayout(info, 400, 300).tab.Width(), 4);
}

}  // namespace

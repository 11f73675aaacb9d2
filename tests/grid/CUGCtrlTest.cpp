// The grid control's operations: counts and their bounds, rows and the uniform mode, moving the
// current cell, scroll bars at layout, the pop-up menu, and attaching to a dialog's placeholder.
#include <gtest/gtest.h>

#include <QDialog>
#include <QMenu>
#include <QTest>
#include <QVBoxLayout>

#include "RecordingGrid.h"
#include "grid/CUGHScroll.h"
#include "grid/CUGTopHdg.h"
#include "grid/CUGVScroll.h"

namespace {

TEST(CUGCtrl, CountsAndSizesRefuseArgumentsOutOfBounds) {
    RecordingGrid grid(3, 10);
    EXPECT_EQ(grid.SetStandardRowHeight(0), 1);
    EXPECT_EQ(grid.SetStandardRowHeight(1025), 1);
    EXPECT_EQ(grid.GetStandardRowHeight(), 20);
    EXPECT_EQ(grid.SetStandardRowHeight(1024), 0);
    EXPECT_EQ(grid.GetRowHeight(5), 1024);
    EXPECT_EQ(grid.SetNumberCols(32001), 1);
    EXPECT_EQ(grid.GetNumberCols(), 3);
    EXPECT_EQ(grid.SetNumberCols(32000), 0);
    EXPECT_EQ(grid.SetSideHdgWidth(1025), 1);
    EXPECT_EQ(grid.SetSideHdgWidth(1024), 0);
    EXPECT_EQ(grid.SetSideHdgWidth(0), 0);
    EXPECT_EQ(grid.GetSideHdgWidth(), 0);
    EXPECT_EQ(grid.SetNumberRows(-1), 1);
    EXPECT_EQ(grid.GetNumberRows(), 10);
    EXPECT_EQ(grid.GetColWidth(32000), 1);
    EXPECT_EQ(grid.GetColWidth(-1), 1);
}

TEST(CUGCtrl, SetColWidthHandsOtherColumnsToTheSideHeadingAndSaysOne) {
    RecordingGrid grid(3, 10);
    EXPECT_EQ(grid.SetColWidth(1, 60), 0);
    EXPECT_EQ(grid.GetColWidth(1), 60);
    EXPECT_EQ(grid.SetColWidth(-1, 30), 1);  // applied all the same
    EXPECT_EQ(grid.GetSideHdgWidth(), 30);
    EXPECT_EQ(grid.SetColWidth(3, 30), 1);
    EXPECT_EQ(grid.GetSideHdgWidth(), 30);
}

TEST(CUGCtrl, SixtyFourThousandAndOneRowsMakeEveryRowStandardForGood) {
    RecordingGrid grid(3, 10);
    EXPECT_EQ(grid.SetRowHeight(3, 45), 0);
    EXPECT_EQ(grid.GetRowHeight(3), 45);
    EXPECT_EQ(grid.SetNumberRows(64000), 0);
    EXPECT_EQ(grid.GetRowHeight(3), 45);  // still one height per row
    EXPECT_EQ(grid.SetNumberRows(64001), 0);
    EXPECT_EQ(grid.GetRowHeight(3), 20);
    EXPECT_EQ(grid.SetRowHeight(3, 45), 1);
    EXPECT_EQ(grid.SetNumberRows(10), 0);
    EXPECT_EQ(grid.GetRowHeight(3), 20);
    EXPECT_EQ(grid.SetRowHeight(3, 45), 1);
    EXPECT_EQ(grid.GetGridInfo()->m_uniformRowHeightFlag, 1);
}

TEST(CUGCtrl, ShrinkingMovesTheCurrentRowAndTheFirstRowBecomesCurrent) {
    RecordingGrid grid(3, 0);
    EXPECT_EQ(grid.GetCurrentRow(), -1);
    EXPECT_EQ(grid.SetNumberRows(1), 0);
    EXPECT_EQ(grid.GetCurrentRow(), 0);
    EXPECT_TRUE(grid.Logged("RowChange -1 0"));
    grid.SetNumberRows(10);
    ASSERT_EQ(grid.GotoCell(1, 8), 0);
    grid.SetNumberRows(5);
    EXPECT_EQ(grid.GetCurrentRow(), 4);
    EXPECT_EQ(grid.GetCurrentCol(), 1);
    grid.SetNumberRows(0);
    EXPECT_EQ(grid.GetCurrentRow(), -1);
    EXPECT_EQ(grid.GotoCell(0, 0), 1);
}

TEST(CUGCtrl, MoveCurrentRowCodes) {
    struct Step {
        int code, result;
        long row;
    };
    // 280 pixels of cells show 14 rows; a page down (3) goes a page past the last of them.
    const Step steps[] = {{6, 0, 0}, {1, 0, 1},  {0, 0, 0},  {0, 0, 0}, {3, 0, 27},
                          {2, 0, 0}, {5, 0, 99}, {1, 1, 99}, {4, 0, 0}};
    RecordingGrid grid(3, 100);
    for (const Step& step : steps) {
        SCOPED_TRACE(step.code);
        EXPECT_EQ(grid.MoveCurrentRow(step.code), step.result);
        EXPECT_EQ(grid.GetCurrentRow(), step.row);
    }
    RecordingGrid ten(3, 10);
    EXPECT_EQ(ten.MoveCurrentRow(5), 0);
    EXPECT_EQ(ten.GetCurrentRow(), 9);
}

TEST(CUGCtrl, GotoCellIsRefusedByOnCanMoveCellWhichSeesTheViewOrigin) {
    RecordingGrid grid(3, 100);
    ASSERT_EQ(grid.GotoCell(1, 30), 0);  // scrolls: row 30 at the bottom of 14 visible rows
    ASSERT_EQ(grid.GetTopRow(), 17);
    grid.Clear();
    grid.allowMove = 0;
    EXPECT_EQ(grid.GotoCell(2, 31), 2);
    EXPECT_EQ(grid.log, std::vector<std::string>{"CanMoveCell 0 17 2 31"});
    EXPECT_EQ(grid.GetCurrentCol(), 1);
    EXPECT_EQ(grid.GetCurrentRow(), 30);
}

TEST(CUGCtrl, AMoveOutOfViewAsksToScrollAndFiresTheChangesInOrder) {
    RecordingGrid grid(3, 100);
    grid.allowScroll = 0;
    EXPECT_EQ(grid.GotoCell(2, 50), 2);
    EXPECT_EQ(grid.GetCurrentRow(), 0);
    grid.allowScroll = 1;
    grid.Clear();
    EXPECT_EQ(grid.GotoCell(2, 50), 0);
    const std::vector<std::string> expected{"CanMoveCell 0 0 2 50", "CanScrollView 0 2 0 50",
                                            "ColChange 0 2",        "RowChange 0 50",
                                            "CellChange 0 2 0 50",  "TopRowChange 0 37"};
    EXPECT_EQ(grid.log, expected);
    EXPECT_EQ(grid.GotoCell(2, 50), 0);  // already there: nothing asked
    EXPECT_EQ(grid.log.size(), expected.size());
}

TEST(CUGCtrl, ScrollBarsAppearAndVanishAtLayout) {
    RecordingGrid grid(3, 10);
    EXPECT_FALSE(grid.GetVScrollWindow()->isVisible());
    EXPECT_FALSE(grid.GetHScrollWindow()->isVisible());
    grid.SetColWidth(1, 500);
    EXPECT_TRUE(grid.GetHScrollWindow()->isVisible());
    EXPECT_FALSE(grid.GetVScrollWindow()->isVisible());
    grid.SetNumberRows(200);
    EXPECT_TRUE(grid.GetVScrollWindow()->isVisible());
    EXPECT_EQ(grid.GetVScrollWindow()->maximum(), 200 - grid.GetBottomRow());
    grid.GetVScrollWindow()->setValue(40);  // moves the top row, not the current cell
    EXPECT_EQ(grid.GetTopRow(), 40);
    EXPECT_TRUE(grid.Logged("TopRowChange 0 40"));
    EXPECT_EQ(grid.GetCurrentRow(), 0);
    grid.SetColWidth(1, 100);
    grid.SetNumberRows(5);
    EXPECT_FALSE(grid.GetVScrollWindow()->isVisible());
    EXPECT_FALSE(grid.GetHScrollWindow()->isVisible());
    EXPECT_EQ(grid.GetGridWindow()->geometry(), QRect(0, 20, 400, 280));
}

TEST(CUGCtrl, OnlyMenuIdsFromOneThousandReachOnMenuCommand) {
    RecordingGrid grid(3, 10);
    grid.AddMenuItem(999, "Not a menu command");
    grid.AddMenuItem(1000, "Menu command");
    grid.EnableMenu(1);
    QTest::mouseClick(grid.GetGridWindow(), Qt::RightButton, {}, grid.CellCentre(2, 4));
    ASSERT_TRUE(grid.GetPopupMenu()->isVisible());
    const QList<QAction*> actions = grid.GetPopupMenu()->actions();
    actions[0]->trigger();
    EXPECT_FALSE(grid.Logged("MenuCommand 2 4 1 999"));
    actions[1]->trigger();
    EXPECT_TRUE(grid.Logged("MenuCommand 2 4 1 1000"));
    grid.Clear();
    grid.OnCommand(999);
    EXPECT_TRUE(grid.log.empty());
    grid.OnCommand(0x10000 + 1001);
    EXPECT_EQ(grid.log, std::vector<std::string>{"MenuCommand 2 4 1 1001"});
}

TEST(CUGCtrl, ClicksMoveTheCurrentCellAndHeadingClicksReportTheColumn) {
    RecordingGrid grid(3, 10);
    QTest::mouseClick(grid.GetGridWindow(), Qt::LeftButton, {}, grid.CellCentre(2, 3));
    EXPECT_EQ(grid.GetCurrentCol(), 2);
    EXPECT_EQ(grid.GetCurrentRow(), 3);
    EXPECT_TRUE(grid.Logged("CellLeftClick 2 3 1 0"));
    EXPECT_TRUE(grid.Logged("CellLeftClick 2 3 0 0"));
    QTest::mouseClick(grid.GetTopHdgWindow(), Qt::LeftButton, {}, QPoint(150, 10));
    EXPECT_TRUE(grid.Logged("TopHdgLeftClick 1 -1 1"));
    EXPECT_TRUE(grid.Logged("TopHdgLeftClick 1 -1 0"));
}

TEST(CUGCtrl, KeysMoveTheCurrentCell) {
    RecordingGrid grid(3, 10);
    QWidget* cells = grid.GetGridWindow();
    QTest::keyClick(cells, Qt::Key_Right);
    QTest::keyClick(cells, Qt::Key_Down);
    QTest::keyClick(cells, Qt::Key_Down);
    EXPECT_EQ(grid.GetCurrentCol(), 1);
    EXPECT_EQ(grid.GetCurrentRow(), 2);
    QTest::keyClick(cells, Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(grid.GetCurrentCol(), 2);
    EXPECT_EQ(grid.GetCurrentRow(), 9);
    QTest::keyClick(cells, Qt::Key_Home);
    EXPECT_EQ(grid.GetCurrentCol(), 0);
    EXPECT_EQ(grid.GetCurrentRow(), 9);
}

void Drag(QWidget* heading, int from, int to) {
    QTest::mousePress(heading, Qt::LeftButton, {}, QPoint(from, 10));
    QTest::mouseMove(heading, QPoint(to, 10));
    QTest::mouseRelease(heading, Qt::LeftButton, {}, QPoint(to, 10));
}

TEST(CUGCtrl, DraggingAHeadingDividerSizesTheColumnAsTheOwnerAllows) {
    RecordingGrid grid(3, 10);
    Drag(grid.GetTopHdgWindow(), 99, 140);  // the right edge of column 0
    EXPECT_EQ(grid.GetColWidth(0), 141);
    EXPECT_TRUE(grid.Logged("ColSizing 0"));
    EXPECT_TRUE(grid.Logged("ColSized 0 141"));
    EXPECT_FALSE(grid.Logged("TopHdgLeftClick 0 -1 1"));

    grid.fixedWidth = 80;  // the handler may hold the width
    Drag(grid.GetTopHdgWindow(), 240, 300);
    EXPECT_EQ(grid.GetColWidth(1), 80);

    grid.allowSizing = 0;  // or keep the divider fixed: the press is an ordinary click then
    Drag(grid.GetTopHdgWindow(), 320, 360);  // the right edge of column 2
    EXPECT_EQ(grid.GetColWidth(2), 100);
    EXPECT_TRUE(grid.Logged("TopHdgLeftClick 2 -1 1"));
}

TEST(CUGCtrl, SortByGoesThroughOnSortCompareWithMissingCells) {
    RecordingGrid grid(2, 4);
    grid.QuickSetText(0, 0, L"pear");
    grid.QuickSetText(0, 2, L"apple");
    grid.QuickSetText(0, 3, L"fig");
    grid.QuickSetText(1, 1, L"row 1 has no column 0");
    grid.Clear();
    EXPECT_EQ(grid.SortBy(0, 1), 0);
    EXPECT_TRUE(grid.Logged("SortCompare with a missing cell"));
    EXPECT_EQ(grid.QuickGetText(0, 0), nullptr);
    EXPECT_STREQ(grid.QuickGetText(1, 0), L"row 1 has no column 0");
    EXPECT_STREQ(grid.QuickGetText(0, 1), L"apple");
    EXPECT_STREQ(grid.QuickGetText(0, 3), L"pear");
    EXPECT_EQ(grid.SortBy(0, 2), 0);
    EXPECT_STREQ(grid.QuickGetText(0, 0), L"pear");
    EXPECT_EQ(grid.QuickGetText(0, 3), nullptr);
    EXPECT_EQ(grid.SortBy(0, 3), 1);
}

TEST(CUGCtrl, QuickOperationsKeepTheOtherPropertiesAndTellOnSetCell) {
    RecordingGrid grid(3, 10);
    grid.QuickSetCellType(1, 2, UGCT_DROPLIST);
    grid.QuickSetLabelText(1, 2, L"a\nb\n");
    grid.QuickSetText(1, 2, L"b");
    EXPECT_TRUE(grid.Logged("SetCell 1 2 b"));
    CUGCell cell;
    ASSERT_EQ(grid.GetCell(1, 2, &cell), 0);
    EXPECT_EQ(cell.GetCellType(), UGCT_DROPLIST);
    EXPECT_STREQ(cell.GetLabelText(), L"a\nb\n");
    std::wstring text = L"old";
    EXPECT_EQ(grid.QuickGetText(0, 0, &text), 0);
    EXPECT_EQ(text, L"");
    // The drawn cell lays the stored one over the sheet's and the column's defaults.
    CUGCell defaults;
    defaults.SetAlignment(UG_ALIGNRIGHT);
    defaults.SetText(L"-");
    grid.SetColDefault(1, &defaults);
    grid.GetCellIndirect(1, 2, &cell);
    EXPECT_STREQ(cell.GetText(), L"b");
    EXPECT_EQ(cell.GetAlignment(), UG_ALIGNRIGHT);
    grid.GetCellIndirect(1, 3, &cell);
    EXPECT_STREQ(cell.GetText(), L"-");
    grid.GetCellIndirect(1, -1, &cell);
    EXPECT_EQ(cell.GetBorder(), UG_BDR_RAISED);
    EXPECT_EQ(cell.GetAlignment(), 36);
}

TEST(CUGCtrl, AttachGridTakesThePlaceOfThePlaceholder) {
    QDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    auto* placeholder = new QWidget;
    placeholder->setObjectName("216");
    layout->addWidget(placeholder);
    dialog.resize(300, 200);
    dialog.show();
    const QRect place = placeholder->geometry();

    RecordingGrid grid(3, 10);
    grid.Clear();
    EXPECT_EQ(grid.AttachGrid(&dialog, 999), 0);
    EXPECT_EQ(grid.AttachGrid(&dialog, 216), 1);
    EXPECT_EQ(grid.parentWidget(), &dialog);
    EXPECT_EQ(grid.geometry(), place);
    EXPECT_EQ(grid.objectName(), "216");
    EXPECT_EQ(layout->indexOf(&grid), 0);
    EXPECT_TRUE(placeholder->isHidden());
    EXPECT_EQ(dialog.findChild<QWidget*>("216"), &grid);
    EXPECT_EQ(grid.log, (std::vector<std::string>{"GridSetup", "SheetSetup 0"}));
}

}  // namespace

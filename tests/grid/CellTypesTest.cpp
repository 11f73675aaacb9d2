// The numbered cell types: registration, the drop list with its list box, the check box, and the
// pictures they draw.
#include <gtest/gtest.h>

#include <QImage>
#include <QTest>

#include "RecordingGrid.h"
#include "grid/CUGCellType.h"
#include "grid/CUGLstBox.h"
#include "grid/CUGSortArrowType.h"
#include "grid/CUGTopHdg.h"

namespace {

TEST(CellTypes, TheBuiltInTypesComeFirstAndUserTypesFollowFromFour) {
    RecordingGrid grid(1, 1);
    EXPECT_NE(grid.GetCellType(UGCT_DROPLIST)->GetTypeId(), grid.GetCellType(UGCT_CHECKBOX)->GetTypeId());
    EXPECT_EQ(grid.AddCellType(nullptr), -1);
    CUGSortArrowType arrow;
    EXPECT_EQ(grid.AddCellType(&arrow), 4);
    EXPECT_EQ(grid.GetCellType(4), &arrow);
    EXPECT_EQ(grid.GetCellType(5), grid.GetCellType(UGCT_NORMAL));  // unknown: the normal type
}

// Column 0 rows 0..2 are drop lists offering alpha, beta and gamma.
class DropListGrid : public RecordingGrid {
public:
    DropListGrid() : RecordingGrid(2, 3) {
        for (long row = 0; row < 3; ++row) {
            QuickSetCellType(0, row, UGCT_DROPLIST);
            QuickSetLabelText(0, row, L"alpha\nbeta\ngamma\n");
        }
        GotoCell(0, 1);
        Clear();
    }
    CUGLstBox* List() const { return GetListBox(); }
};

TEST(CellTypes, CtrlDownOpensTheListAndASecondClickOnTheButtonClosesIt) {
    DropListGrid grid;
    QWidget* cells = grid.GetGridWindow();
    QTest::keyClick(cells, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_TRUE(grid.List()->isVisible());
    EXPECT_TRUE(grid.List()->IsOpenFor(0, 1));
    EXPECT_EQ(grid.GetCurrentRow(), 1);  // the key opened the list instead of moving
    EXPECT_EQ(grid.List()->count(), 3);

    QTest::mouseClick(cells, Qt::LeftButton, {}, grid.ButtonPoint(0, 1));
    EXPECT_FALSE(grid.List()->isVisible());
    EXPECT_TRUE(grid.Logged("CellLeftClick 0 1 1 1"));  // the type handled the press

    QTest::mouseClick(cells, Qt::LeftButton, {}, grid.ButtonPoint(0, 1));  // and the next opens it
    EXPECT_TRUE(grid.List()->IsOpenFor(0, 1));
    QTest::mouseClick(cells, Qt::LeftButton, {}, grid.ButtonPoint(0, 1));
    QTest::keyClick(cells, Qt::Key_Down);  // without Ctrl, Down moves as usual
    EXPECT_FALSE(grid.List()->isVisible());
    EXPECT_EQ(grid.GetCurrentRow(), 2);
}

TEST(CellTypes, AChoiceIsStoredOnceTheOwnerAllowsIt) {
    DropListGrid grid;
    QTest::keyClick(grid.GetGridWindow(), Qt::Key_Return);
    ASSERT_TRUE(grid.List()->isVisible());
    QTest::keyClick(grid.List(), Qt::Key_Down);
    QTest::keyClick(grid.List(), Qt::Key_Return);
    EXPECT_FALSE(grid.List()->isVisible());
    EXPECT_STREQ(grid.QuickGetText(0, 1), L"beta");
    EXPECT_TRUE(grid.Logged("CellTypeNotify 1 0 1 51 1"));

    grid.allowTypeNotify = 0;
    QTest::keyClick(grid.GetGridWindow(), Qt::Key_Return);
    QTest::keyClick(grid.List(), Qt::Key_Down);
    QTest::keyClick(grid.List(), Qt::Key_Return);
    EXPECT_STREQ(grid.QuickGetText(0, 1), L"beta");
}

TEST(CellTypes, ClickingAnotherCellClosesTheList) {
    DropListGrid grid;
    QTest::keyClick(grid.GetGridWindow(), Qt::Key_Return);
    ASSERT_TRUE(grid.List()->isVisible());
    QTest::mouseClick(grid.GetGridWindow(), Qt::LeftButton, {}, grid.CellCentre(1, 0));
    EXPECT_FALSE(grid.List()->isVisible());
    EXPECT_EQ(grid.GetCurrentCol(), 1);
}

// Regression: the list box kept the application's font whatever font the grid's cells are drawn in.
TEST(CellTypes, TheListShowsItsOptionsInTheCellsFont) {
    DropListGrid grid;
    QFont font(QStringLiteral("Liberation Mono"));
    font.setPointSize(17);
    grid.setFont(font);
    QTest::keyClick(grid.GetGridWindow(), Qt::Key_Return);
    ASSERT_TRUE(grid.List()->isVisible());
    EXPECT_EQ(grid.List()->font().pointSize(), 17);
    EXPECT_EQ(grid.List()->font().family(), grid.font().family());
}

TEST(CellTypes, SpaceOrAClickTogglesACheckBoxUnlessItIsReadOnly) {
    RecordingGrid grid(2, 3);
    grid.QuickSetCellType(1, 0, UGCT_CHECKBOX);
    grid.GotoCell(1, 0);
    grid.Clear();
    QTest::keyClick(grid.GetGridWindow(), Qt::Key_Space);
    CUGCell cell;
    ASSERT_EQ(grid.GetCell(1, 0, &cell), 0);
    EXPECT_TRUE(cell.GetBool());
    EXPECT_EQ(cell.GetCellType(), UGCT_CHECKBOX);
    EXPECT_TRUE(grid.Logged("CellTypeNotify 2 1 0 53 1"));
    QTest::keyClick(grid.GetGridWindow(), Qt::Key_Space);
    EXPECT_STREQ(grid.QuickGetText(1, 0), L"0");
    EXPECT_TRUE(grid.Logged("CellTypeNotify 2 1 0 53 0"));

    grid.GetCell(1, 0, &cell);
    cell.SetReadOnly(true);
    grid.SetCell(1, 0, &cell);
    grid.Clear();
    QTest::keyClick(grid.GetGridWindow(), Qt::Key_Space);
    EXPECT_STREQ(grid.QuickGetText(1, 0), L"0");
    EXPECT_FALSE(grid.Logged("CellTypeNotify 2 1 0 53 1"));

    grid.QuickSetCellType(1, 2, UGCT_CHECKBOX);  // a click toggles the box, beside it nothing
    const QRect rect = grid.GetCellRect(1, 2);
    QTest::mouseClick(grid.GetGridWindow(), Qt::LeftButton, {}, QPoint(rect.left() + 10, rect.center().y()));
    EXPECT_STREQ(grid.QuickGetText(1, 2), L"1");
    QTest::mouseClick(grid.GetGridWindow(), Qt::LeftButton, {}, QPoint(rect.right() - 5, rect.center().y()));
    EXPECT_STREQ(grid.QuickGetText(1, 2), L"1");
}

QImage Heading(RecordingGrid& grid) { return grid.GetTopHdgWindow()->grab().toImage(); }

TEST(CellTypes, TheSortArrowPointsTheWayItsStyleSays) {
    RecordingGrid grid(2, 1);
    CUGSortArrowType arrow;
    const int type = grid.AddCellType(&arrow);
    grid.QuickSetText(0, -1, L"Name");
    const QImage plain = Heading(grid);
    grid.QuickSetCellType(0, -1, type);
    EXPECT_EQ(Heading(grid), plain);  // neither direction: no arrow
    grid.QuickSetCellTypeEx(0, -1, UGCT_SORTARROWUP);
    const QImage up = Heading(grid);
    grid.QuickSetCellTypeEx(0, -1, UGCT_SORTARROWDOWN);
    const QImage down = Heading(grid);
    EXPECT_NE(up, plain);
    EXPECT_NE(down, plain);
    EXPECT_NE(up, down);
    // The arrow's area sits at the right end of the heading cell, and only there.
    EXPECT_EQ(up.copy(0, 0, 60, 20), down.copy(0, 0, 60, 20));
}

}  // namespace

// In-place editing with real keys: the base keystroke filter, finishing, cancelling, refusing and
// going on in the next cell.
#include <gtest/gtest.h>

#include <QTest>
#include <memory>

#include "RecordingGrid.h"
#include "grid/CUGEdit.h"
#include "grid/CUGMaskedEdit.h"
#include "grid/CUGTopHdg.h"

namespace {

TEST(CUGEdit, TypedKeysGoThroughTheColumnsFilter) {
    struct Case {
        int col;
        const char* keys;
        const char* held;
    };
    // The price column takes digits and one point; the separator is swallowed in columns 1 and 2.
    const Case cases[] = {
        {1, "12.5.a|3", "12.53"}, {2, "a|b.c", "ab.c"}, {3, "a|b", "a|b"}, {0, "x|y", "x|y"}};
    RecordingGrid grid(4, 3);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.col);
        ASSERT_EQ(grid.StartEdit(c.col, 0, 0), 0);
        QTest::keyClicks(grid.GetEditClass(), c.keys);
        EXPECT_EQ(grid.GetEditClass()->text(), c.held);
        QTest::keyClick(grid.GetEditClass(), Qt::Key_Escape);
    }
    // The first key of StartEdit is filtered like a typed one.
    ASSERT_EQ(grid.StartEdit(1, 0, 'x'), 0);
    EXPECT_EQ(grid.GetEditClass()->text(), "");
    QTest::keyClick(grid.GetEditClass(), Qt::Key_Escape);
    ASSERT_EQ(grid.StartEdit(1, 0, '4'), 0);
    EXPECT_EQ(grid.GetEditClass()->text(), "4");
    QTest::keyClick(grid.GetEditClass(), Qt::Key_Escape);
    // Alt with a letter is a mnemonic of the dialog: neither the editor nor the grid types it.
    ASSERT_EQ(grid.StartEdit(3, 0, 0), 0);
    QTest::keyClicks(grid.GetEditClass(), "ab");
    QTest::keyClick(grid.GetEditClass(), Qt::Key_N, Qt::AltModifier);
    EXPECT_EQ(grid.GetEditClass()->text(), "ab");
    QTest::keyClick(grid.GetEditClass(), Qt::Key_Escape);
    grid.Clear();
    QTest::keyClick(grid.GetGridWindow(), Qt::Key_Left, Qt::AltModifier);
    EXPECT_TRUE(grid.log.empty());
}

TEST(CUGEdit, EnterStoresTheTextAndEscapeDoesNot) {
    RecordingGrid grid(4, 3);
    grid.QuickSetText(0, 0, L"old");
    ASSERT_EQ(grid.StartEdit(0, 0, 0), 0);
    EXPECT_EQ(grid.GetEditClass()->text(), "old");
    QTest::keyClicks(grid.GetEditClass(), "new");  // typing replaces the selected old text
    QTest::keyClick(grid.GetEditClass(), Qt::Key_Return);
    EXPECT_FALSE(grid.IsEditing());
    EXPECT_STREQ(grid.QuickGetText(0, 0), L"new");
    EXPECT_TRUE(grid.Logged("EditFinish 0 0 new 0"));
    EXPECT_FALSE(grid.GetEditClass()->isVisible());

    ASSERT_EQ(grid.StartEdit(0, 0, 0), 0);
    QTest::keyClicks(grid.GetEditClass(), "lost");
    QTest::keyClick(grid.GetEditClass(), Qt::Key_Escape);
    EXPECT_TRUE(grid.Logged("EditFinish 0 0 lost 1"));
    EXPECT_STREQ(grid.QuickGetText(0, 0), L"new");
}

TEST(CUGEdit, ARefusedFinishKeepsTheEditorOpenAndStoresNothing) {
    RecordingGrid grid(4, 3);
    ASSERT_EQ(grid.StartEdit(0, 1, 0), 0);
    QTest::keyClicks(grid.GetEditClass(), "dup");
    grid.allowEditFinish = 0;
    QTest::keyClick(grid.GetEditClass(), Qt::Key_Return);
    EXPECT_TRUE(grid.IsEditing());
    EXPECT_TRUE(grid.GetEditClass()->isVisible());
    EXPECT_EQ(grid.QuickGetText(0, 1), nullptr);
    grid.allowEditFinish = 1;
    QTest::keyClick(grid.GetEditClass(), Qt::Key_Return);
    EXPECT_STREQ(grid.QuickGetText(0, 1), L"dup");
}

TEST(CUGEdit, TabGoesOnInTheNextCellAfterTheContinueNotification) {
    RecordingGrid grid(2, 3);
    ASSERT_EQ(grid.StartEdit(1, 0, 0), 0);
    QTest::keyClicks(grid.GetEditClass(), "7");
    QTest::keyClick(grid.GetEditClass(), Qt::Key_Tab);
    EXPECT_STREQ(grid.QuickGetText(1, 0), L"7");
    EXPECT_TRUE(grid.Logged("EditContinue 1 0 0 1"));
    EXPECT_TRUE(grid.IsEditing());
    EXPECT_EQ(grid.GetCurrentCol(), 0);
    EXPECT_EQ(grid.GetCurrentRow(), 1);
    QTest::keyClick(grid.GetEditClass(), Qt::Key_Up);
    EXPECT_EQ(grid.GetCurrentRow(), 0);
    EXPECT_TRUE(grid.IsEditing());
}

// Hands out its own masked editor, as the price-list grid does.
class MaskedGrid final : public RecordingGrid {
public:
    MaskedGrid() : RecordingGrid(3, 3), masked(new CUGMaskedEdit(this)) {}
    int OnEditStart(int, long, CUGEdit** edit) override {
        *edit = masked;
        return 1;
    }
    CUGMaskedEdit* masked;
};

TEST(CUGEdit, AHandlerMayHandOutItsOwnEditorWhichFollowsTheCellsMask) {
    MaskedGrid grid;
    CUGCell cell;
    cell.SetMask(L"00-00");
    grid.SetCell(0, 0, &cell);
    ASSERT_EQ(grid.StartEdit(0, 0, 0), 0);
    EXPECT_EQ(grid.GetEditClass(), grid.masked);
    QTest::keyClicks(grid.masked, "12a345");
    EXPECT_EQ(grid.masked->text(), "12-34");
    QTest::keyClick(grid.masked, Qt::Key_Return);
    EXPECT_STREQ(grid.QuickGetText(0, 0), L"12-34");
}

TEST(CUGEdit, ClickingAnotherCellEndsTheEditAndStoresIt) {
    RecordingGrid grid(3, 3);
    grid.GetGridWindow()->activateWindow();
    ASSERT_EQ(grid.StartEdit(0, 0, 0), 0);
    QTest::keyClicks(grid.GetEditClass(), "kept");
    QTest::mouseClick(grid.GetGridWindow(), Qt::LeftButton, {}, grid.CellCentre(2, 2));
    EXPECT_FALSE(grid.IsEditing());
    EXPECT_STREQ(grid.QuickGetText(0, 0), L"kept");
    EXPECT_EQ(grid.GetCurrentRow(), 2);
}

// Regression: a press on a heading left the editor open, so a sort moved the rows under it and its
// text was then stored in whichever row had come to stand there.
TEST(CUGEdit, APressOnAHeadingEndsTheEditBeforeTheHeadingIsTold) {
    RecordingGrid grid(3, 3);
    ASSERT_EQ(grid.StartEdit(2, 2, 0), 0);
    QTest::keyClicks(grid.GetEditClass(), "kept");
    grid.Clear();
    QTest::mouseClick(grid.GetTopHdgWindow(), Qt::LeftButton, {}, QPoint(150, 10));
    EXPECT_FALSE(grid.IsEditing());
    EXPECT_STREQ(grid.QuickGetText(2, 2), L"kept");
    EXPECT_EQ(grid.log,
              (std::vector<std::string>{"EditFinish 2 2 kept 0", "SetCell 2 2 kept",
                                        "TopHdgLeftClick 1 -1 1", "TopHdgLeftClick 1 -1 0"}));
}

TEST(CUGEdit, AHeadingPressIsNotReportedWhileTheOwnerKeepsTheEditOpen) {
    RecordingGrid grid(3, 3);
    ASSERT_EQ(grid.StartEdit(0, 0, 0), 0);
    grid.allowEditFinish = 0;
    grid.Clear();
    QTest::mouseClick(grid.GetTopHdgWindow(), Qt::LeftButton, {}, QPoint(150, 10));
    EXPECT_TRUE(grid.IsEditing());
    EXPECT_FALSE(grid.Logged("TopHdgLeftClick 1 -1 1"));
}

// Regression: rows inserted or deleted under an open editor left it on its old row index, so its
// text was stored in another row, or in a row that no longer existed.
TEST(CUGEdit, TheEditorFollowsItsRowWhenRowsComeAndGoBeforeIt) {
    RecordingGrid grid(3, 4);
    ASSERT_EQ(grid.StartEdit(2, 2, 0), 0);
    QTest::keyClicks(grid.GetEditClass(), "kept");
    grid.InsertRow(0);
    EXPECT_EQ(grid.GetEditClass()->geometry().top(), grid.GetCellRect(2, 3).top());
    grid.DeleteRow(1);
    grid.DeleteRow(0);
    EXPECT_EQ(grid.GetEditClass()->geometry().top(), grid.GetCellRect(2, 1).top());
    grid.InsertRow(3);  // after it: no move
    QTest::keyClick(grid.GetEditClass(), Qt::Key_Return);
    EXPECT_TRUE(grid.Logged("EditFinish 2 1 kept 0"));
    EXPECT_STREQ(grid.QuickGetText(2, 1), L"kept");
}

TEST(CUGEdit, DeletingTheEditedRowPutsItsEditorAwayUnheard) {
    RecordingGrid grid(3, 3);
    grid.QuickSetText(2, 2, L"below");
    ASSERT_EQ(grid.StartEdit(2, 1, 0), 0);
    QTest::keyClicks(grid.GetEditClass(), "lost");
    grid.Clear();
    grid.DeleteRow(1);
    EXPECT_FALSE(grid.IsEditing());
    EXPECT_FALSE(grid.GetEditClass()->isVisible());
    EXPECT_FALSE(grid.Logged("EditFinish 2 1 lost 0"));
    EXPECT_STREQ(grid.QuickGetText(2, 1), L"below");
}

TEST(CUGEdit, AGridGoesAwaySafelyWhileItsEditorHasTheFocus) {
    auto grid = std::make_unique<RecordingGrid>(3, 3);
    grid->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(grid.get()));
    ASSERT_EQ(grid->StartEdit(0, 0, 0), 0);
    ASSERT_TRUE(grid->GetEditClass()->hasFocus());
    grid.reset();
}

}  // namespace

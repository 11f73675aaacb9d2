// The calculation grid in its dialog, with real clicks and drags: the bill and its summary row,
// heading sorts that keep "Summary:" last, hidden prices and the column widths around them.
#include <QCheckBox>
#include <QTest>

#include "bom/CalcPriceState.h"
#include "grid/CUGCell.h"
#include "grid/CUGGrid.h"
#include "grid/CUGSortArrowType.h"
#include "resources/BomReportTemplate.h"
#include "resources/DialogBuilder.h"
#include "tests/ModalDialogs.h"
#include "tests/bom/CalcDialogFixture.h"

namespace {

using MyCug2Test = CalcDialogFixture;

std::vector<std::wstring> Names(std::initializer_list<const wchar_t*> names) {
    return {names.begin(), names.end()};
}

int HeadingArrow(MyCug2& grid, int col) {
    CUGCell cell;
    grid.GetCell(col, -1, &cell);
    return cell.GetCellTypeEx();
}

std::vector<int> Widths(MyCug2& grid) {
    std::vector<int> widths;
    for (int col = 0; col < kBomColumnCount; ++col) widths.push_back(grid.GetColWidth(col));
    return widths;
}

TEST_F(MyCug2Test, ShowsTheBillWithTheSummaryRowLastInColumnsSharingTheWidth) {
    const auto dialog = OpenDialog(kDoorsList, DoorsDrawing());
    MyCug2& grid = dialog->Grid();
    EXPECT_EQ(grid.ShownRows(), kDoorsBill);
    for (int col = 0; col < kBomColumnCount; ++col)
        EXPECT_EQ(grid.QuickGetText(col, -1),
                  std::wstring(BomColumnTitles[static_cast<std::size_t>(col)]));
    EXPECT_EQ(grid.GetSideHdgWidth(), 0);
    EXPECT_EQ(grid.GetStandardRowHeight(), QFontMetrics(grid.font()).height() + 3);
    EXPECT_EQ(HeadingArrow(grid, 0), UGCT_SORTARROWUP);
    // Without settings the five columns share the width.
    const int share = 4 * (grid.contentsRect().width() / 20);
    EXPECT_GT(share, 40);
    EXPECT_EQ(Widths(grid), std::vector<int>(5, share));
}

TEST_F(MyCug2Test, HeadingClicksSortAndKeepTheSummaryLast) {
    struct Click {
        int col;
        std::vector<std::wstring> names;
        int arrow;
    };
    const Click clicks[] = {
        {kQuantityColumn, Names({L"desk", L"chair", L"door", L"window", L"Summary:"}),
         UGCT_SORTARROWUP},
        {kQuantityColumn, Names({L"window", L"door", L"chair", L"desk", L"Summary:"}),
         UGCT_SORTARROWDOWN},
        {kQuantityColumn, Names({L"desk", L"chair", L"door", L"window", L"Summary:"}),
         UGCT_SORTARROWUP},
        // Empty descriptions go last either way; equal totals keep their order.
        {kDescriptionColumn, Names({L"door", L"desk", L"window", L"chair", L"Summary:"}),
         UGCT_SORTARROWUP},
        {kDescriptionColumn, Names({L"window", L"desk", L"door", L"chair", L"Summary:"}),
         UGCT_SORTARROWDOWN},
        {kTotalColumn, Names({L"desk", L"chair", L"door", L"window", L"Summary:"}),
         UGCT_SORTARROWUP},
        {kPriceColumn, Names({L"chair", L"desk", L"door", L"window", L"Summary:"}),
         UGCT_SORTARROWUP},
    };
    const auto dialog = OpenDialog(kDoorsList, DoorsDrawing());
    MyCug2& grid = dialog->Grid();
    int previous = kNameColumn;
    for (const Click& click : clicks) {
        SCOPED_TRACE(click.col);
        ClickHeading(grid, click.col);
        EXPECT_EQ(Column(grid, kNameColumn), click.names);
        EXPECT_EQ(HeadingArrow(grid, click.col), click.arrow);
        if (previous != click.col) {
            EXPECT_EQ(HeadingArrow(grid, previous), 0);
        }
        previous = click.col;
    }
    EXPECT_EQ(grid.ShownRows().back(), kDoorsBill.back());
}

TEST_F(MyCug2Test, TheNameColumnStartsAscendingSoItsFirstClickSortsDescending) {
    const auto dialog = OpenDialog(kDoorsList, DoorsDrawing());
    MyCug2& grid = dialog->Grid();
    ClickHeading(grid, kNameColumn);
    EXPECT_FALSE(grid.SortedAscending());
    EXPECT_EQ(Column(grid, kNameColumn),
              Names({L"window", L"door", L"desk", L"chair", L"Summary:"}));
    ClickHeading(grid, kNameColumn);
    EXPECT_EQ(Column(grid, kNameColumn),
              Names({L"chair", L"desk", L"door", L"window", L"Summary:"}));
}

TEST_F(MyCug2Test, AnEmptyBillHasNoSummaryRowButEveryClickAppendsTheStoredOneUntilTwoStand) {
    const auto dialog = OpenDialog("", {});
    MyCug2& grid = dialog->Grid();
    EXPECT_EQ(grid.GetNumberRows(), 0);
    const BomRow summary{L"Summary:", L"", L"", L"", L"0.00"};
    ClickHeading(grid, kQuantityColumn);
    EXPECT_EQ(grid.ShownRows(), std::vector<BomRow>{summary});
    ClickHeading(grid, kQuantityColumn);
    EXPECT_EQ(grid.ShownRows(), std::vector<BomRow>(2, summary));
    ClickHeading(grid, kTotalColumn);
    EXPECT_EQ(grid.ShownRows(), std::vector<BomRow>(2, summary));
}

TEST_F(MyCug2Test, HiddenPricesHoldEveryWidthUntilShownAgain) {
    const auto dialog = OpenDialog(kDoorsList, DoorsDrawing());
    MyCug2& grid = dialog->Grid();
    DragDivider(grid, kPriceColumn, -30);
    DragDivider(grid, kTotalColumn, 25);
    DragDivider(grid, kDescriptionColumn, 30);  // free while prices show
    const std::vector<int> before = Widths(grid);
    ASSERT_NE(before[kPriceColumn], before[kTotalColumn]);
    EXPECT_EQ(before[kDescriptionColumn], 4 * (grid.contentsRect().width() / 20) + 30);

    ASSERT_TRUE(ClickDlgItem(*dialog, IDC_REPORT_SHOW_PRICE));
    EXPECT_EQ(showPricesFlag, 0);
    const std::vector<int> hidden{before[0], 0, before[2], before[3], 0};
    EXPECT_EQ(Widths(grid), hidden);
    for (const int by : {20, -20}) {
        DragDivider(grid, kQuantityColumn, by);  // snaps back
        EXPECT_EQ(Widths(grid), hidden) << by;
    }
    // At the name column's edge the hidden price column is the one grabbed; it stays shut.
    DragDivider(grid, kNameColumn, 35);
    EXPECT_EQ(Widths(grid), hidden);

    ASSERT_TRUE(ClickDlgItem(*dialog, IDC_REPORT_SHOW_PRICE));
    EXPECT_EQ(showPricesFlag, 1);
    EXPECT_EQ(Widths(grid), before);
}

TEST_F(MyCug2Test, EscapeInTheGridSavesAndCloses) {
    const auto dialog = OpenDialog(kDoorsList, DoorsDrawing());
    QTest::keyClick(dialog->Grid().GetGridWindow(), Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), IDCANCEL);
    const int share = 4 * (dialog->Grid().contentsRect().width() / 20);
    const std::string width = std::to_string(share) + " ";
    EXPECT_EQ(Settings("tarnwick2.set"), width + width + width + width + width);
    EXPECT_EQ(Settings("filename.set"), m_folder.path("list.prc"));
}

}  // namespace

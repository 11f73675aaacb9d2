// The calculation grid: set-up, heading sort with the summary row kept last, hidden prices, and
// the rows it shows handed to the report and the table.
#include "bom/MyCug2.h"

#include <QFontMetrics>

#include "bom/BomSortCompare.h"
#include "bom/CalcPriceDialog.h"
#include "bom/CalcPriceState.h"
#include "bom/PriceTable.h"
#include "bom/Report.h"
#include "grid/CUGCell.h"
#include "grid/CUGDataSource.h"
#include "grid/UGKeys.h"

namespace {

bool IsPriceColumn(int col) { return col == kPriceColumn || col == kTotalColumn; }

bool IsNumberColumn(int col) { return IsPriceColumn(col) || col == kQuantityColumn; }

BomSortCell SortCellOf(const CUGCell* cell) {
    BomSortCell sortCell;
    if (cell == nullptr) return sortCell;
    if (const wchar_t* text = cell->GetText())
        sortCell.text = std::wstring_view(text, cell->GetTextLength());
    const short type = cell->GetDataType();
    sortCell.numeric = type == UGCELLDATA_NUMBER || type == UGCELLDATA_CURRENCY;
    return sortCell;
}

}  // namespace

MyCug2::MyCug2() = default;

int MyCug2::DefaultColumnWidth() const {
    // One fifth of the width beside the side heading, rounded down to a multiple of 4.
    return 4 * ((contentsRect().width() - GetSideHdgWidth()) / 20);
}

void MyCug2::OnGridSetup() {
    SetSideHdgWidth(0);
    SetStandardRowHeight(QFontMetrics(font()).height() + 3);
    const int defaultWidth = DefaultColumnWidth();
    if (m_savedWidths[kNameColumn] == -1) m_savedWidths.fill(defaultWidth);
    // A settings file cut short leaves the columns it did not reach to share the width too.
    for (int& width : m_savedWidths) {
        if (width < 0) width = defaultWidth;
    }

    SetNumberCols(m_numCols);
    for (int col = 0; col < m_numCols; ++col) {
        SetColWidth(col, m_savedWidths[static_cast<std::size_t>(col)]);
        QuickSetText(col, -1, BomColumnTitles[static_cast<std::size_t>(col)]);
        // Amounts and counts line up on their last digit, and every heading stands over its
        // column's text.
        if (IsNumberColumn(col)) {
            CUGCell defaults;
            defaults.SetAlignment(UG_ALIGNRIGHT);
            SetColDefault(col, &defaults);
        } else {
            QuickSetAlignment(col, -1, UG_ALIGNVCENTER);
        }
    }
    m_sortArrowIndex = AddCellType(&m_sortArrow);
    QuickSetCellType(kNameColumn, -1, m_sortArrowIndex);
    QuickSetCellTypeEx(kNameColumn, -1, UGCT_SORTARROWUP);
    ApplyShowPrices();
    RedrawAll();
}

void MyCug2::OnTopHdgLeftClick(int col, long, int updn, const QRect&, const QPoint&, int) {
    if (!updn || col < 0 || col >= m_numCols) return;
    if (GetNumberRows() > 1) DeleteRow(GetNumberRows() - 1);
    QuickSetCellType(m_sortCol, -1, UGCT_NORMAL);
    QuickSetCellTypeEx(m_sortCol, -1, 0);
    if (col != m_sortCol) {
        m_sortCol = col;
        m_ascending = true;
    } else {
        m_ascending = !m_ascending;
    }
    SortBy(col, m_ascending ? 1 : UG_SORT_DESCENDING);
    m_sorted = true;
    QuickSetCellType(col, -1, m_sortArrowIndex);
    QuickSetCellTypeEx(col, -1, m_ascending ? UGCT_SORTARROWUP : UGCT_SORTARROWDOWN);
    // Also on a grid without rows, as the summary row is stored, not computed.
    AddResultRow(m_summary, true);
    RedrawAll();
}

int MyCug2::OnSortCompare(const CUGCell* cell1, const CUGCell* cell2, int flags) {
    return EvaluateBomSort(SortCellOf(cell1), SortCellOf(cell2), m_sortCol,
                           (flags & UG_SORT_DESCENDING) == 0);
}

void MyCug2::OnGridKeyDown(int* vcKey, int) {
    if (*vcKey == VK_ESCAPE && calcPriceDialog != nullptr) calcPriceDialog->SaveAndClose();
}

void MyCug2::OnColSizing(int col, int* width) {
    if (showPricesFlag || col < 0 || col >= m_numCols) return;
    *width = IsPriceColumn(col) ? 0 : m_savedWidths[static_cast<std::size_t>(col)];
}

void MyCug2::SetRowTexts(long row, const BomRow& cells) {
    for (int col = 0; col < m_numCols; ++col)
        QuickSetText(col, row, cells[static_cast<std::size_t>(col)]);
}

void MyCug2::AddResultRow(const ResultString& row, bool summary) {
    AppendRow();
    SetRowTexts(GetNumberRows() - 1, ::AddResultRow(row, summary));
}

void MyCug2::RemoveAllRows() {
    // The data first, so that the grid lays itself out once for the new count.
    CUGDataSource* source = GetDataSource();
    for (long row = GetNumberRows() - 1; row >= 0; --row) source->DeleteRow(row);
    SetNumberRows(0, 0);
}

void MyCug2::FillFromResults(const std::vector<ResultString>& results) {
    RemoveAllRows();
    m_sorted = false;
    const DisplayedResults shown = ::FillFromResults(results, m_listOnlyPricedBlocks);
    m_summary = shown.summary;
    SetNumberRows(static_cast<long>(shown.rows.size()), 0);
    for (std::size_t row = 0; row < shown.rows.size(); ++row)
        SetRowTexts(static_cast<long>(row), shown.rows[row]);
    RedrawAll();
}

void MyCug2::SaveColumnWidths() {
    for (int col = 0; col < m_numCols; ++col) {
        const int width = GetColWidth(col);
        if (IsPriceColumn(col) && width == 0) continue;
        m_savedWidths[static_cast<std::size_t>(col)] = width;
    }
}

void MyCug2::ApplyShowPrices() {
    if (showPricesFlag) {
        SetColWidth(kPriceColumn, m_savedWidths[kPriceColumn]);
        SetColWidth(kTotalColumn, m_savedWidths[kTotalColumn]);
    } else {
        SaveColumnWidths();
        SetColWidth(kPriceColumn, 0);
        SetColWidth(kTotalColumn, 0);
    }
    RedrawAll();
}

std::vector<BomRow> MyCug2::ShownRows() {
    std::vector<BomRow> rows(static_cast<std::size_t>(GetNumberRows()));
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (int col = 0; col < m_numCols; ++col)
            QuickGetText(col, static_cast<long>(row), &rows[row][static_cast<std::size_t>(col)]);
    }
    return rows;
}

void MyCug2::ComputeColumnChars(std::int32_t* widths, int count) {
    ::ComputeColumnChars(ShownRows(), showPricesFlag != 0, widths, count);
}

int MyCug2::DrawPriceTable(const wchar_t* blockName, const wchar_t* styleName, double scale,
                           TableForm form) {
    PriceTableExtent extent;
    const int drawn = ::DrawPriceTable(ShownRows(), showPricesFlag != 0, blockName, styleName,
                                       scale, extent, form);
    if (drawn) {
        m_tableWidth = extent.width;
        m_tableHeight = extent.height;
    }
    return drawn;
}

int MyCug2::WriteReport(const std::wstring& path) {
    return ::WriteReport(ShownRows(), showPricesFlag != 0, path, m_reportFormat);
}

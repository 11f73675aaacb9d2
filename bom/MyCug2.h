// The calculation dialog's grid: the bill of materials with its summary row, sorted by a heading
// click, with the price columns hidden at will; it writes the report and draws the table from what
// it shows.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "bom/BomRows.h"
#include "bom/PriceTable.h"
#include "bom/ResultString.h"
#include "grid/CUGCtrl.h"
#include "grid/CUGSortArrowType.h"
#include "text/TextFile.h"

class MyCug2 final : public CUGCtrl {
public:
    MyCug2();

    // Notifications.
    void OnGridSetup() override;
    void OnTopHdgLeftClick(int col, long row, int updn, const QRect& rect, const QPoint& point,
                           int processed) override;
    int OnSortCompare(const CUGCell* cell1, const CUGCell* cell2, int flags) override;
    void OnGridKeyDown(int* vcKey, int processed) override;
    void OnColSizing(int col, int* width) override;

    // The rows in array order (the unsold ones left out when only priced blocks are listed), then
    // "Summary:" with the sum of their totals when there is any row.
    void FillFromResults(const std::vector<ResultString>& results);
    void RemoveAllRows();
    void AddResultRow(const ResultString& row, bool summary);
    // The current widths become the saved ones; a hidden price column keeps its saved width.
    void SaveColumnWidths();
    // The price columns at their saved widths, or 0 wide while prices are hidden.
    void ApplyShowPrices();
    void ComputeColumnChars(std::int32_t* widths, int count);
    // The table block from the rows as shown; 1 when drawn, with its size kept here.
    int DrawPriceTable(const wchar_t* blockName, const wchar_t* styleName, double scale,
                       TableForm form = TableForm::Attributes);
    // 1 when written; 0 after the alert.
    int WriteReport(const std::wstring& path);

    // The five texts of every row, as displayed.
    std::vector<BomRow> ShownRows();
    std::array<int, kBomColumnCount>& SavedWidths() { return m_savedWidths; }
    double TableWidth() const { return m_tableWidth; }
    double TableHeight() const { return m_tableHeight; }
    bool ListOnlyPricedBlocks() const { return m_listOnlyPricedBlocks; }
    int SortedColumn() const { return m_sortCol; }
    bool SortedAscending() const { return m_ascending; }
    // Whether a heading click has sorted the rows since they were filled.
    bool IsSorted() const { return m_sorted; }
    // How the report is encoded: as the price list was.
    void SetReportFormat(const TextFormat& format) { m_reportFormat = format; }

private:
    void SetRowTexts(long row, const BomRow& cells);
    int DefaultColumnWidth() const;

    // Pixels; -1 until the settings or the first set-up give them.
    std::array<int, kBomColumnCount> m_savedWidths{-1, -1, -1, -1, -1};
    int m_numCols = kBomColumnCount;
    double m_tableWidth = 0.0;
    double m_tableHeight = 0.0;
    bool m_listOnlyPricedBlocks = false;  // nothing sets it
    CUGSortArrowType m_sortArrow;
    int m_sortArrowIndex = -1;
    int m_sortCol = 0;
    bool m_ascending = true;
    bool m_sorted = false;
    ResultString m_summary;  // appended again after every sort
    TextFormat m_reportFormat;
};

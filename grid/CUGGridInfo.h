// The state of one sheet of the grid: counts, sizes, the current and visible cells, default cells
// and the data source; with the geometry that follows from them (row heights, visible range,
// scroll limits, paging, hit tests), all without a window.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "grid/CUGCell.h"
#include "grid/CUGMem.h"
#include "grid/CUGMultiSelect.h"
#include "grid/UGDefs.h"

// From this many rows on, no height is kept per row.
inline constexpr long UG_UNIFORM_ROWS = 64001;
inline constexpr int UG_MAX_COLS = 32000;
inline constexpr int UG_MAX_ROW_HEIGHT = 1024;
inline constexpr int UG_MAX_SIDEHDG_WIDTH = 1024;

struct CUGColInfo {
    int width = 0;
    std::unique_ptr<CUGCell> defaults;  // the column's default cell, once one was set
};

class CUGGridInfo final {
public:
    CUGGridInfo();

    int m_numberCols = 0;
    int m_currentCol = -1;
    long m_currentRow = -1;
    int m_lastCol = -1;  // before the last move
    long m_lastRow = -1;
    int m_requestedCol = -1;  // target of a pending move
    long m_requestedRow = -1;
    int m_leftCol = 0;
    long m_topRow = 0;
    int m_rightCol = 0;  // one past the last fully visible column
    long m_bottomRow = 0;
    int m_lastLeftCol = 0;  // as of the last layout
    long m_lastTopRow = 0;
    int m_defColWidth = 75;
    std::vector<CUGColInfo> m_colInfo;
    int m_defRowHeight = 20;
    int m_uniformRowHeightFlag = 0;
    std::vector<std::int32_t> m_rowHeights;
    long m_numberRows = 0;
    int m_topHdgHeight = 20;
    int m_sideHdgWidth = 40;
    int m_vScrollWidth = 0;  // the widget layer sets both from its style
    int m_hScrollHeight = 0;
    int m_tabWidth = 0;
    CUGCell m_gridDefaults;
    CUGCell m_hdgDefaults;
    int m_userSizingMode = 1;    // the user may size columns, rows and headings
    int m_highlightRowFlag = 0;  // the whole current row is drawn highlighted
    int m_multiSelectFlag = 0;
    COLORREF m_gridLineColor = RGB(220, 220, 220);
    CUGMultiSelect m_multiSelect;
    CUGMem m_ownDataSource;
    CUGDataSource* m_dataSource = &m_ownDataSource;

    int GetColWidth(int col) const;  // 0 outside the columns
    int GetRowHeight(long row) const;  // the default height for rows outside the sheet
    int SetColCount(int cols);
    // Row heights for a new count: uniform mode from UG_UNIFORM_ROWS on, for good; 1 if negative.
    int SetRowCount(long rows);
    // A current, previous or requested row at or past the count becomes the last row.
    void ClampRows();
    void ClampCols();

    // The visible range of a cell area of the given size, from the left column and top row.
    void ComputeVisibleRange(int width, int height);
    // The largest top row (left column) that still fills the cell area.
    long MaxTopRow(int height) const;
    int MaxLeftCol(int width) const;
    // The top row (left column) that makes the given one fully visible, scrolling as little as
    // possible.
    long TopRowShowing(long row, int height) const;
    int LeftColShowing(int col, int width) const;
    // The rows a page up or down from the visible range reaches; may lie outside the sheet.
    long PageUpRow(int height) const;
    long PageDownRow(int height) const;

    // Positions within the cell area, with the left column and top row at 0.
    int ColLeft(int col) const;
    long RowTop(long row) const;
    // The column (row) under a position of the cell area, -1 past the last one.
    int ColFromX(int x) const;
    long RowFromY(int y, int height) const;
};

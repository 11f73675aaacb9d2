// Geometry of a sheet: heights, widths, visible range, scroll limits, paging and hit tests.
#include "grid/CUGGridInfo.h"

#include <algorithm>

#include "grid/UGSysColor.h"

CUGGridInfo::CUGGridInfo() {
    m_hdgDefaults.SetBackColor(GetSysColor(COLOR_BTNFACE));
    m_hdgDefaults.SetBorder(UG_BDR_RAISED);
    m_hdgDefaults.SetAlignment(UG_ALIGNRIGHT | UG_ALIGNVCENTER);
}

int CUGGridInfo::GetColWidth(int col) const {
    return (col >= 0 && col < m_numberCols) ? m_colInfo[static_cast<std::size_t>(col)].width : 0;
}

int CUGGridInfo::GetRowHeight(long row) const {
    if (m_uniformRowHeightFlag || row < 0 || row >= static_cast<long>(m_rowHeights.size()))
        return m_defRowHeight;
    return m_rowHeights[static_cast<std::size_t>(row)];
}

int CUGGridInfo::SetColCount(int cols) {
    if (cols < 0 || cols > UG_MAX_COLS) return UG_ERROR;
    const auto oldCount = m_colInfo.size();
    m_colInfo.resize(static_cast<std::size_t>(cols));
    for (auto i = oldCount; i < m_colInfo.size(); ++i) m_colInfo[i].width = m_defColWidth;
    m_numberCols = cols;
    return UG_SUCCESS;
}

int CUGGridInfo::SetRowCount(long rows) {
    if (rows < 0) return UG_ERROR;
    if (rows >= UG_UNIFORM_ROWS && !m_uniformRowHeightFlag) {
        m_rowHeights = {};
        m_uniformRowHeightFlag = 1;
    }
    if (!m_uniformRowHeightFlag) m_rowHeights.resize(static_cast<std::size_t>(rows), m_defRowHeight);
    m_numberRows = rows;
    return UG_SUCCESS;
}

void CUGGridInfo::ClampRows() {
    const long last = m_numberRows - 1;
    for (long* row : {&m_currentRow, &m_lastRow, &m_requestedRow})
        if (*row > last) *row = last;
    m_topRow = std::clamp(m_topRow, 0L, std::max(0L, last));
}

void CUGGridInfo::ClampCols() {
    const int last = m_numberCols - 1;
    for (int* col : {&m_currentCol, &m_lastCol, &m_requestedCol})
        if (*col > last) *col = last;
    m_leftCol = std::clamp(m_leftCol, 0, std::max(0, last));
}

void CUGGridInfo::ComputeVisibleRange(int width, int height) {
    int col = m_leftCol;
    for (int x = 0; col < m_numberCols; ++col) {
        x += GetColWidth(col);
        if (x > width) break;
    }
    m_rightCol = (col == m_leftCol && col < m_numberCols) ? col + 1 : col;
    long row = m_topRow;
    for (long y = 0; row < m_numberRows; ++row) {
        y += GetRowHeight(row);
        if (y > height) break;
    }
    m_bottomRow = (row == m_topRow && row < m_numberRows) ? row + 1 : row;
}

long CUGGridInfo::MaxTopRow(int height) const {
    if (m_uniformRowHeightFlag && m_defRowHeight > 0)
        return std::max(0L, m_numberRows - std::max(1L, static_cast<long>(height / m_defRowHeight)));
    return TopRowShowing(m_numberRows - 1, height);
}

int CUGGridInfo::MaxLeftCol(int width) const { return LeftColShowing(m_numberCols - 1, width); }

long CUGGridInfo::TopRowShowing(long row, int height) const {
    if (row < 0) return 0;
    long top = row;
    for (long y = GetRowHeight(row); top > 0 && y + GetRowHeight(top - 1) <= height; --top)
        y += GetRowHeight(top - 1);
    return top;
}

int CUGGridInfo::LeftColShowing(int col, int width) const {
    if (col < 0) return 0;
    int left = col;
    for (int x = GetColWidth(col); left > 0 && x + GetColWidth(left - 1) <= width; --left)
        x += GetColWidth(left - 1);
    return left;
}

long CUGGridInfo::PageUpRow(int height) const {
    long row = m_topRow;
    for (int left = height; row > -height && GetRowHeight(row - 1) <= left; --row)
        left -= GetRowHeight(row - 1);
    return row;
}

long CUGGridInfo::PageDownRow(int height) const {
    long row = std::max(m_topRow, m_bottomRow - 1);
    for (int left = height; GetRowHeight(row + 1) <= left && row < m_numberRows + height; ++row)
        left -= GetRowHeight(row + 1);
    return row;
}

int CUGGridInfo::ColLeft(int col) const {
    int x = 0;
    for (int c = m_leftCol; c < col; ++c) x += GetColWidth(c);
    for (int c = col; c < m_leftCol; ++c) x -= GetColWidth(c);
    return x;
}

long CUGGridInfo::RowTop(long row) const {
    if (m_uniformRowHeightFlag) return (row - m_topRow) * m_defRowHeight;
    long y = 0;
    for (long r = m_topRow; r < row; ++r) y += GetRowHeight(r);
    for (long r = row; r < m_topRow; ++r) y -= GetRowHeight(r);
    return y;
}

int CUGGridInfo::ColFromX(int x) const {
    if (x < 0) return -1;
    for (int col = m_leftCol, right = 0; col < m_numberCols; ++col) {
        right += GetColWidth(col);
        if (x < right) return col;
    }
    return -1;
}

long CUGGridInfo::RowFromY(int y, int height) const {
    if (y < 0) return -1;
    for (long row = m_topRow, bottom = 0; row < m_numberRows && bottom <= height; ++row) {
        bottom += GetRowHeight(row);
        if (y < bottom) return row;
    }
    return -1;
}

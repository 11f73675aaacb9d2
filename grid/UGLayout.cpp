// The layout pass of the grid: fit test of columns and rows, dropped scroll bars, rectangles.
#include "grid/UGLayout.h"

#include <algorithm>

namespace {

// Sums from the first column (row) and stops as soon as the sum exceeds the limit, so the cost
// follows the visible extent, not the size of the sheet.
long SumColsUpTo(const CUGGridInfo& info, long limit) {
    long sum = 0;
    for (int col = 0; col < info.m_numberCols && sum <= limit; ++col) sum += info.GetColWidth(col);
    return sum;
}

long SumRowsUpTo(const CUGGridInfo& info, long limit) {
    if (info.m_uniformRowHeightFlag) {
        const long perRow = info.m_defRowHeight;
        const long rowsNeeded = perRow > 0 ? limit / perRow + 1 : info.m_numberRows;
        return perRow * std::min(info.m_numberRows, rowsNeeded);
    }
    long sum = 0;
    for (long row = 0; row < info.m_numberRows && sum <= limit; ++row) sum += info.GetRowHeight(row);
    return sum;
}

}  // namespace

UGLayout UGComputeLayout(const CUGGridInfo& info, int width, int height) {
    int vScroll = info.m_vScrollWidth;
    int hScroll = info.m_hScrollHeight;
    int tabs = info.m_tabWidth;
    const int available = width - info.m_sideHdgWidth;
    if (tabs > 0) tabs = std::max(4, std::min(tabs, available - 30));
    const int rowSpace = height - info.m_topHdgHeight;
    const long colSum = SumColsUpTo(info, available);
    const long rowSum = SumRowsUpTo(info, rowSpace);
    const bool colsFit = colSum < available;
    const bool rowsFit = rowSum < rowSpace;

    if (rowsFit) {
        if (!colsFit || tabs > 0) {
            if (rowSum < rowSpace - hScroll) vScroll = 0;
        } else {
            vScroll = 0;
        }
    }
    if (colsFit && tabs <= 0 && (rowsFit || colSum < available - vScroll)) hScroll = 0;

    const int w = info.m_sideHdgWidth;
    const int h = info.m_topHdgHeight;
    UGLayout layout;
    layout.vScroll = {width - vScroll, 0, width, height - hScroll};
    layout.hScroll = {tabs, height - hScroll, width - vScroll, height};
    layout.tab = {0, height - hScroll, tabs, height};
    layout.topHdg = {w, 0, width - vScroll, h};
    layout.sideHdg = {0, h, w, height - hScroll};
    layout.cnrBtn = {0, 0, w, h};
    layout.grid = {w, h, width - vScroll, height - hScroll};
    return layout;
}

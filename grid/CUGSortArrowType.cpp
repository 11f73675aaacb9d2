// The sort-arrow heading type.
#include "grid/CUGSortArrowType.h"

#include <QApplication>
#include <QStyle>
#include <algorithm>

#include "grid/CUGCell.h"
#include "grid/UGDraw.h"
#include "grid/UGPalette.h"

CUGSortArrowType::CUGSortArrowType()
    : m_arrowWidth(std::max(12, QApplication::style()->pixelMetric(QStyle::PM_ScrollBarExtent))) {}

void CUGSortArrowType::OnDraw(QPainter* dc, const QRect& rect, int col, long row, CUGCell* cell,
                              int selected, int current) {
    const QRect content = DrawBackground(dc, rect, col, row, cell, selected, current);
    const int style = cell->GetCellTypeEx();
    if (!(style & (UGCT_SORTARROWUP | UGCT_SORTARROWDOWN))) {
        DrawCellText(dc, content, col, row, cell, selected, current);
        return;
    }
    const int width = std::min(m_arrowWidth, content.width());
    DrawCellText(dc, content.adjusted(0, 0, -width, 0), col, row, cell, selected, current);
    const QRect area(content.right() - width + 1, content.top(), width, content.height());
    const QColor color = UGBlend(UGToQColor(cell->GetBackColor()), UGToQColor(cell->GetTextColor()), 0.75);
    UGDrawTriangle(dc, area, (style & UGCT_SORTARROWUP) ? UGArrow::Up : UGArrow::Down, color);
}

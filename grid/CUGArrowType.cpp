// The arrow cell type.
#include "grid/CUGArrowType.h"

#include "grid/CUGCell.h"
#include "grid/UGDraw.h"
#include "grid/UGPalette.h"

void CUGArrowType::OnDraw(QPainter* dc, const QRect& rect, int col, long row, CUGCell* cell,
                          int selected, int current) {
    const QRect content = DrawBackground(dc, rect, col, row, cell, selected, current);
    UGDrawTriangle(dc, content, UGArrow::Right, UGToQColor(cell->GetTextColor()));
}

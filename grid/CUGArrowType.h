// Cell type 3, the arrow: a normal cell with a small arrow pointing right, as a row marker.
#pragma once

#include "grid/CUGCellType.h"

class CUGArrowType final : public CUGCellType {
public:
    void OnDraw(QPainter* dc, const QRect& rect, int col, long row, CUGCell* cell, int selected,
                int current) override;
};

// A heading cell type: the normal heading with a small sort arrow at its right. Extended style 32
// shows the ascending arrow, 16 the descending one; the arrow's area is as wide as a vertical
// scroll bar.
#pragma once

#include "grid/CUGCellType.h"

inline constexpr int UGCT_SORTARROWDOWN = 16;
inline constexpr int UGCT_SORTARROWUP = 32;

class CUGSortArrowType final : public CUGCellType {
public:
    CUGSortArrowType();
    void OnDraw(QPainter* dc, const QRect& rect, int col, long row, CUGCell* cell, int selected,
                int current) override;

private:
    int m_arrowWidth;
};

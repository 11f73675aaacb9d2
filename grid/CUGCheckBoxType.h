// Cell type 2, the check box: shows the cell's boolean reading as a box; space or a click on the
// box toggles it (unless the cell is read-only) and reports OnCellTypeNotify(UGCT_CHECKBOXSET).
#pragma once

#include "grid/CUGCellType.h"

class CUGCheckBoxType final : public CUGCellType {
public:
    const wchar_t* GetName() override;
    const UGID* GetTypeId() override;
    int OnLClicked(int col, long row, int updn, const QRect& rect, const QPoint& point) override;
    int OnDClicked(int col, long row, const QRect& rect, const QPoint& point) override;
    int OnCharDown(int col, long row, int* vcKey) override;
    void OnDraw(QPainter* dc, const QRect& rect, int col, long row, CUGCell* cell, int selected,
                int current) override;

private:
    int Toggle(int col, long row);
    QRect BoxRect(const QRect& rect, const CUGCell& cell) const;
};

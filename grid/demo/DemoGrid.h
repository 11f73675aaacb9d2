// The demo's grid: a parts list of 1,000 rows with a drop-list column, a check-box column and
// headings that sort their column when clicked.
#pragma once

#include "grid/CUGCtrl.h"
#include "grid/CUGSortArrowType.h"

class DemoGrid final : public CUGCtrl {
public:
    void OnGridSetup() override;
    void OnTopHdgLeftClick(int col, long row, int updn, const QRect& rect, const QPoint& point,
                           int processed) override;
    void OnCellDoubleClick(int col, long row, const QRect& rect, const QPoint& point,
                           int processed) override;
    void OnGridKeyDown(int* vcKey, int processed) override;
    void OnGridCharDown(int* vcKey, int processed) override;
    int OnEditKeystroke(int col, long row, CUGEdit* edit, int* vcKey) override;

    // Sorts by a column; clicking the sorted column again reverses the order.
    void SortColumn(int col);

private:
    bool Editable(int col) const;

    CUGSortArrowType m_sortArrow;
    int m_sortArrowIndex = -1;
    int m_sortCol = -1;
    bool m_ascending = true;
};

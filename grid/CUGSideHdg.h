// The row heading of the grid: paints heading column -1 through the cell types, reports clicks,
// and sizes a row by dragging its lower divider or the heading by dragging its right edge.
#pragma once

#include <QWidget>

#include "grid/CUGCell.h"

class CUGCtrl;

class CUGSideHdg final : public QWidget {
    Q_OBJECT

public:
    explicit CUGSideHdg(CUGCtrl* ctrl);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    enum class Drag { None, Row, Width };

    long DividerAt(int y) const;  // the row whose lower edge is within reach, or -1
    long RowAt(int y) const;
    QRect CellRect(long row) const;
    void Click(long row, int updn, Qt::MouseButton button, const QPoint& point);

    CUGCtrl* m_ctrl;
    CUGCell m_cell;
    Drag m_drag = Drag::None;
    long m_dragRow = -1;
    long m_pressRow = -1;
};

// The column heading of the grid: paints heading row -1 through the cell types, reports clicks,
// and sizes a column by dragging its right divider or the heading by dragging its lower edge.
#pragma once

#include <QWidget>

#include "grid/CUGCell.h"

class CUGCtrl;

class CUGTopHdg final : public QWidget {
    Q_OBJECT

public:
    explicit CUGTopHdg(CUGCtrl* ctrl);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    enum class Drag { None, Column, Height };

    int DividerAt(int x) const;  // the column whose right edge is within reach, or -1
    QRect CellRect(int col) const;
    void Click(int col, int updn, Qt::MouseButton button, const QPoint& point);

    CUGCtrl* m_ctrl;
    CUGCell m_cell;
    Drag m_drag = Drag::None;
    int m_dragCol = -1;
    int m_pressCol = -1;
};

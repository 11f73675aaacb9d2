// The cell area of the grid control: paints the visible cells through their cell types and turns
// keys and mouse input into cell-type calls, notifications and moves of the current cell.
#pragma once

#include <QWidget>

#include "grid/CUGCell.h"

class CUGCellType;
class CUGCtrl;

class CUGGrid final : public QWidget {
    Q_OBJECT

public:
    explicit CUGGrid(CUGCtrl* ctrl);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    bool CellAt(const QPoint& point, int* col, long* row) const;
    CUGCellType* TypeOf(int col, long row);
    void Navigate(int vcKey, Qt::KeyboardModifiers modifiers);

    CUGCtrl* m_ctrl;
    CUGCell m_cell;  // scratch for drawing and type lookups
    int m_pressCol = -1;
    long m_pressRow = -1;
};

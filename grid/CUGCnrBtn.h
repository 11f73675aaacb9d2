// The corner button, top left between the two headings: paints heading cell (-1, -1), reports
// clicks, and sizes the side heading by its right edge and the top heading by its lower edge.
#pragma once

#include <QWidget>

#include "grid/CUGCell.h"

class CUGCtrl;

class CUGCnrBtn final : public QWidget {
    Q_OBJECT

public:
    explicit CUGCnrBtn(CUGCtrl* ctrl);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    enum class Drag { None, Width, Height };

    Drag EdgeAt(const QPoint& point) const;
    void Click(int updn, Qt::MouseButton button, const QPoint& point);

    CUGCtrl* m_ctrl;
    CUGCell m_cell;
    Drag m_drag = Drag::None;
    bool m_pressed = false;
};

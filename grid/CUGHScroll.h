// The horizontal scroll bar of the grid: its position is the left column.
#pragma once

#include <QScrollBar>

class CUGCtrl;

class CUGHScroll final : public QScrollBar {
    Q_OBJECT

public:
    explicit CUGHScroll(CUGCtrl* ctrl);
    // Range, page and position from the current sheet, without echoing back to the control.
    void Update();

private:
    CUGCtrl* m_ctrl;
};

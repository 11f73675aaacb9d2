// The vertical scroll bar of the grid: its position is the top row.
#pragma once

#include <QScrollBar>

class CUGCtrl;

class CUGVScroll final : public QScrollBar {
    Q_OBJECT

public:
    explicit CUGVScroll(CUGCtrl* ctrl);
    // Range, page and position from the current sheet, without echoing back to the control.
    void Update();

private:
    CUGCtrl* m_ctrl;
};

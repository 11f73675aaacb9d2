// The horizontal scroll bar.
#include "grid/CUGHScroll.h"

#include <QSignalBlocker>
#include <algorithm>

#include "grid/CUGCtrl.h"
#include "grid/CUGGrid.h"

CUGHScroll::CUGHScroll(CUGCtrl* ctrl) : QScrollBar(Qt::Horizontal, ctrl), m_ctrl(ctrl) {
    setFocusPolicy(Qt::NoFocus);
    connect(this, &QScrollBar::valueChanged, this, [this](int value) { m_ctrl->SetLeftCol(value); });
}

void CUGHScroll::Update() {
    const CUGGridInfo* gi = m_ctrl->GetGridInfo();
    const int last = std::max(gi->m_leftCol, gi->MaxLeftCol(m_ctrl->GetGridWindow()->width()));
    const QSignalBlocker blocker(this);
    setRange(0, last);
    setPageStep(std::max(1, gi->m_rightCol - gi->m_leftCol));
    setSingleStep(1);
    setValue(gi->m_leftCol);
}

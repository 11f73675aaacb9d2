// The vertical scroll bar.
#include "grid/CUGVScroll.h"

#include <QSignalBlocker>
#include <algorithm>

#include "grid/CUGCtrl.h"
#include "grid/CUGGrid.h"

CUGVScroll::CUGVScroll(CUGCtrl* ctrl) : QScrollBar(Qt::Vertical, ctrl), m_ctrl(ctrl) {
    setFocusPolicy(Qt::NoFocus);
    connect(this, &QScrollBar::valueChanged, this, [this](int value) { m_ctrl->SetTopRow(value); });
}

void CUGVScroll::Update() {
    const CUGGridInfo* gi = m_ctrl->GetGridInfo();
    const long last = std::max(gi->m_topRow, gi->MaxTopRow(m_ctrl->GetGridWindow()->height()));
    const QSignalBlocker blocker(this);
    setRange(0, static_cast<int>(last));
    setPageStep(static_cast<int>(std::max(1L, gi->m_bottomRow - gi->m_topRow)));
    setSingleStep(1);
    setValue(static_cast<int>(gi->m_topRow));
}

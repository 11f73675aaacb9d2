// The corner button.
#include "grid/CUGCnrBtn.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "grid/CUGCellType.h"
#include "grid/CUGCtrl.h"
#include "grid/UGPalette.h"

namespace {

constexpr int kReach = 3;

}  // namespace

CUGCnrBtn::CUGCnrBtn(CUGCtrl* ctrl) : QWidget(ctrl), m_ctrl(ctrl) {
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void CUGCnrBtn::paintEvent(QPaintEvent*) {
    QPainter dc(this);
    m_ctrl->OnPaintSetup(&dc, UG_CORNERBUTTON, 2);
    dc.fillRect(rect(), UGToQColor(m_ctrl->OnQueryBackColor(UG_CORNERBUTTON)));
    m_ctrl->GetCellIndirect(-1, -1, &m_cell);
    m_ctrl->GetCellType(m_cell.GetCellType())->OnDraw(&dc, rect(), -1, -1, &m_cell, 0, 0);
}

CUGCnrBtn::Drag CUGCnrBtn::EdgeAt(const QPoint& point) const {
    if (!m_ctrl->GetGridInfo()->m_userSizingMode) return Drag::None;
    if (point.x() >= width() - kReach && m_ctrl->OnCanSizeSideHdg()) return Drag::Width;
    if (point.y() >= height() - kReach && m_ctrl->OnCanSizeTopHdg()) return Drag::Height;
    return Drag::None;
}

void CUGCnrBtn::Click(int updn, Qt::MouseButton button, const QPoint& point) {
    if (button == Qt::RightButton) {
        m_ctrl->OnCornerRightClick(updn, rect(), point, 0);
        if (!updn) m_ctrl->StartMenu(-1, -1, UG_CORNERBUTTON, mapToGlobal(point));
        return;
    }
    m_ctrl->GetCellIndirect(-1, -1, &m_cell);
    const int processed = m_ctrl->GetCellType(m_cell.GetCellType())->OnLClicked(-1, -1, updn, rect(), point);
    m_ctrl->OnCornerLeftClick(updn, rect(), point, processed);
}

void CUGCnrBtn::mousePressEvent(QMouseEvent* event) {
    m_ctrl->SetKeyboardModifiers(event->modifiers());
    const QPoint point = event->position().toPoint();
    if (event->button() == Qt::LeftButton) m_drag = EdgeAt(point);
    if (m_drag != Drag::None) return;
    m_pressed = true;
    Click(1, event->button(), point);
}

void CUGCnrBtn::mouseMoveEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    if (m_drag == Drag::Width) {
        int width = std::max(0, point.x() + 1);
        if (m_ctrl->OnSideHdgSizing(&width)) m_ctrl->SetSideHdgWidth(width);
        return;
    }
    if (m_drag == Drag::Height) {
        int height = std::max(0, point.y() + 1);
        if (m_ctrl->OnTopHdgSizing(&height)) m_ctrl->SetTH_Height(height);
        return;
    }
    switch (EdgeAt(point)) {
        case Drag::Width:
            setCursor(Qt::SplitHCursor);
            break;
        case Drag::Height:
            setCursor(Qt::SplitVCursor);
            break;
        case Drag::None:
            unsetCursor();
            break;
    }
}

void CUGCnrBtn::mouseReleaseEvent(QMouseEvent* event) {
    const Drag drag = m_drag;
    m_drag = Drag::None;
    if (drag == Drag::Width) {
        int width = m_ctrl->GetSideHdgWidth();
        if (m_ctrl->OnSideHdgSized(&width)) m_ctrl->SetSideHdgWidth(width);
        return;
    }
    if (drag == Drag::Height) {
        int height = m_ctrl->GetTH_Height();
        if (m_ctrl->OnTopHdgSized(&height)) m_ctrl->SetTH_Height(height);
        return;
    }
    if (!m_pressed) return;
    m_pressed = false;
    Click(0, event->button(), event->position().toPoint());
}

void CUGCnrBtn::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const QPoint point = event->position().toPoint();
    m_ctrl->GetCellIndirect(-1, -1, &m_cell);
    const int processed = m_ctrl->GetCellType(m_cell.GetCellType())->OnDClicked(-1, -1, rect(), point);
    m_ctrl->OnCornerDoubleClick(rect(), point, processed);
}

// The column heading.
#include "grid/CUGTopHdg.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "grid/CUGCellType.h"
#include "grid/CUGCtrl.h"
#include "grid/UGPalette.h"
#include "grid/UGSysColor.h"

namespace {

constexpr int kReach = 3;  // pixels either side of a divider that grab it

}  // namespace

CUGTopHdg::CUGTopHdg(CUGCtrl* ctrl) : QWidget(ctrl), m_ctrl(ctrl) {
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QRect CUGTopHdg::CellRect(int col) const {
    const CUGGridInfo* gi = m_ctrl->GetGridInfo();
    return QRect(gi->ColLeft(col), 0, gi->GetColWidth(col), height());
}

int CUGTopHdg::DividerAt(int x) const {
    const CUGGridInfo* gi = m_ctrl->GetGridInfo();
    int found = -1;
    for (int col = gi->m_leftCol, edge = 0; col < gi->m_numberCols && edge <= x + kReach; ++col) {
        edge += gi->GetColWidth(col);
        // The last one in reach wins, so that a column of width 0 can be pulled open again.
        if (std::abs(edge - 1 - x) <= kReach) found = col;
    }
    return found;
}

void CUGTopHdg::paintEvent(QPaintEvent*) {
    QPainter dc(this);
    m_ctrl->OnPaintSetup(&dc, UG_TOPHEADING, 2);
    const QColor back = UGToQColor(m_ctrl->OnQueryBackColor(UG_TOPHEADING));
    dc.fillRect(rect(), back);
    dc.fillRect(QRect(0, height() - 1, width(), 1),
                UGBlend(back, UGToQColor(GetSysColor(COLOR_BTNSHADOW)), 0.55));
    const CUGGridInfo* gi = m_ctrl->GetGridInfo();
    for (int col = gi->m_leftCol, x = 0; col < gi->m_numberCols && x < width(); ++col) {
        const int w = gi->GetColWidth(col);
        if (w > 0) {
            m_ctrl->GetCellIndirect(col, -1, &m_cell);
            m_ctrl->GetCellType(m_cell.GetCellType())
                ->OnDraw(&dc, QRect(x, 0, w, height()), col, -1, &m_cell, 0, col == gi->m_currentCol);
        }
        x += w;
    }
}

void CUGTopHdg::Click(int col, int updn, Qt::MouseButton button, const QPoint& point) {
    const QRect rect = CellRect(col);
    if (button == Qt::RightButton) {
        m_ctrl->OnTopHdgRightClick(col, -1, updn, rect, point, 0);
        if (!updn) m_ctrl->StartMenu(col, -1, UG_TOPHEADING, mapToGlobal(point));
        return;
    }
    m_ctrl->GetCellIndirect(col, -1, &m_cell);
    const int processed = m_ctrl->GetCellType(m_cell.GetCellType())->OnLClicked(col, -1, updn, rect, point);
    m_ctrl->OnTopHdgLeftClick(col, -1, updn, rect, point, processed);
}

void CUGTopHdg::mousePressEvent(QMouseEvent* event) {
    m_ctrl->SetKeyboardModifiers(event->modifiers());
    if (!m_ctrl->FinishEditForPress()) return;
    const QPoint point = event->position().toPoint();
    const CUGGridInfo* gi = m_ctrl->GetGridInfo();
    if (event->button() == Qt::LeftButton && gi->m_userSizingMode) {
        const int divider = DividerAt(point.x());
        if (divider >= 0 && m_ctrl->OnCanSizeCol(divider)) {
            m_drag = Drag::Column;
            m_dragCol = divider;
            return;
        }
        if (point.y() >= height() - kReach && m_ctrl->OnCanSizeTopHdg()) {
            m_drag = Drag::Height;
            return;
        }
    }
    const int col = gi->ColFromX(point.x());
    if (col < 0) return;
    if (event->button() == Qt::LeftButton && !m_ctrl->OnTopHdgPress(col)) return;
    m_pressCol = col;
    Click(col, 1, event->button(), point);
}

void CUGTopHdg::mouseMoveEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    if (m_drag == Drag::Column) {
        int width = std::max(0, point.x() - m_ctrl->GetGridInfo()->ColLeft(m_dragCol) + 1);
        m_ctrl->OnColSizing(m_dragCol, &width);
        m_ctrl->SetColWidth(m_dragCol, width);
        return;
    }
    if (m_drag == Drag::Height) {
        int height = std::max(0, point.y() + 1);
        if (m_ctrl->OnTopHdgSizing(&height)) m_ctrl->SetTH_Height(height);
        return;
    }
    const CUGGridInfo* gi = m_ctrl->GetGridInfo();
    const int divider = gi->m_userSizingMode ? DividerAt(point.x()) : -1;
    if (divider >= 0 && m_ctrl->OnCanSizeCol(divider))
        setCursor(Qt::SplitHCursor);
    else if (gi->m_userSizingMode && point.y() >= height() - kReach && m_ctrl->OnCanSizeTopHdg())
        setCursor(Qt::SplitVCursor);
    else
        unsetCursor();
}

void CUGTopHdg::mouseReleaseEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    if (m_drag == Drag::Column) {
        m_drag = Drag::None;
        int width = m_ctrl->GetColWidth(m_dragCol);
        m_ctrl->OnColSized(m_dragCol, &width);
        m_ctrl->SetColWidth(m_dragCol, width);
        m_ctrl->AdjustComponentSizes();
        return;
    }
    if (m_drag == Drag::Height) {
        m_drag = Drag::None;
        int height = m_ctrl->GetTH_Height();
        if (m_ctrl->OnTopHdgSized(&height)) m_ctrl->SetTH_Height(height);
        return;
    }
    const int col = m_pressCol;
    m_pressCol = -1;
    if (col < 0) return;
    const int releaseCol = m_ctrl->GetGridInfo()->ColFromX(point.x());
    if (event->button() == Qt::LeftButton && !m_ctrl->OnTopHdgRelease(col, releaseCol)) return;
    Click(col, 0, event->button(), point);
}

void CUGTopHdg::mouseDoubleClickEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    const int col = m_ctrl->GetGridInfo()->ColFromX(point.x());
    if (event->button() != Qt::LeftButton || col < 0 || DividerAt(point.x()) >= 0) return;
    const QRect rect = CellRect(col);
    m_ctrl->GetCellIndirect(col, -1, &m_cell);
    const int processed = m_ctrl->GetCellType(m_cell.GetCellType())->OnDClicked(col, -1, rect, point);
    m_ctrl->OnTopHdgDoubleClick(col, -1, rect, point, processed);
}

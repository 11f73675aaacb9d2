// The row heading.
#include "grid/CUGSideHdg.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cstdlib>

#include "grid/CUGCellType.h"
#include "grid/CUGCtrl.h"
#include "grid/UGPalette.h"
#include "grid/UGSysColor.h"

namespace {

constexpr int kReach = 3;

}  // namespace

CUGSideHdg::CUGSideHdg(CUGCtrl* ctrl) : QWidget(ctrl), m_ctrl(ctrl) {
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QRect CUGSideHdg::CellRect(long row) const {
    const CUGGridInfo* gi = m_ctrl->GetGridInfo();
    return QRect(0, static_cast<int>(gi->RowTop(row)), width(), gi->GetRowHeight(row));
}

long CUGSideHdg::RowAt(int y) const { return m_ctrl->GetGridInfo()->RowFromY(y, height()); }

long CUGSideHdg::DividerAt(int y) const {
    const CUGGridInfo* gi = m_ctrl->GetGridInfo();
    long found = -1;
    long edge = 0;
    for (long row = gi->m_topRow; row < gi->m_numberRows && edge <= y + kReach; ++row) {
        edge += gi->GetRowHeight(row);
        if (std::labs(edge - 1 - y) <= kReach) found = row;
    }
    return found;
}

void CUGSideHdg::paintEvent(QPaintEvent*) {
    QPainter dc(this);
    m_ctrl->OnPaintSetup(&dc, UG_SIDEHEADING, 2);
    const QColor back = UGToQColor(m_ctrl->OnQueryBackColor(UG_SIDEHEADING));
    dc.fillRect(rect(), back);
    dc.fillRect(QRect(width() - 1, 0, 1, height()),
                UGBlend(back, UGToQColor(GetSysColor(COLOR_BTNSHADOW)), 0.55));
    const CUGGridInfo* gi = m_ctrl->GetGridInfo();
    int y = 0;
    for (long row = gi->m_topRow; row < gi->m_numberRows && y < height(); ++row) {
        const int h = gi->GetRowHeight(row);
        if (h > 0) {
            m_ctrl->GetCellIndirect(-1, row, &m_cell);
            m_ctrl->GetCellType(m_cell.GetCellType())
                ->OnDraw(&dc, QRect(0, y, width(), h), -1, row, &m_cell, 0, row == gi->m_currentRow);
        }
        y += h;
    }
}

void CUGSideHdg::Click(long row, int updn, Qt::MouseButton button, const QPoint& point) {
    const QRect rect = CellRect(row);
    if (button == Qt::RightButton) {
        m_ctrl->OnSideHdgRightClick(-1, row, updn, rect, point, 0);
        if (!updn) m_ctrl->StartMenu(-1, row, UG_SIDEHEADING, mapToGlobal(point));
        return;
    }
    m_ctrl->GetCellIndirect(-1, row, &m_cell);
    const int processed = m_ctrl->GetCellType(m_cell.GetCellType())->OnLClicked(-1, row, updn, rect, point);
    m_ctrl->OnSideHdgLeftClick(-1, row, updn, rect, point, processed);
}

void CUGSideHdg::mousePressEvent(QMouseEvent* event) {
    m_ctrl->SetKeyboardModifiers(event->modifiers());
    if (!m_ctrl->FinishEditForPress()) return;
    const QPoint point = event->position().toPoint();
    const CUGGridInfo* gi = m_ctrl->GetGridInfo();
    if (event->button() == Qt::LeftButton && gi->m_userSizingMode) {
        const long divider = DividerAt(point.y());
        if (divider >= 0 && m_ctrl->OnCanSizeRow(divider)) {
            m_drag = Drag::Row;
            m_dragRow = divider;
            return;
        }
        if (point.x() >= width() - kReach && m_ctrl->OnCanSizeSideHdg()) {
            m_drag = Drag::Width;
            return;
        }
    }
    const long row = RowAt(point.y());
    if (row < 0) return;
    m_pressRow = row;
    Click(row, 1, event->button(), point);
}

void CUGSideHdg::mouseMoveEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    const CUGGridInfo* gi = m_ctrl->GetGridInfo();
    if (m_drag == Drag::Row) {
        int height = std::max(1, point.y() - static_cast<int>(gi->RowTop(m_dragRow)) + 1);
        m_ctrl->OnRowSizing(m_dragRow, &height);
        if (m_ctrl->SetRowHeight(m_dragRow, height) != 0) m_ctrl->SetStandardRowHeight(height);
        return;
    }
    if (m_drag == Drag::Width) {
        int width = std::max(0, point.x() + 1);
        if (m_ctrl->OnSideHdgSizing(&width)) m_ctrl->SetSideHdgWidth(width);
        return;
    }
    const long divider = gi->m_userSizingMode ? DividerAt(point.y()) : -1;
    if (divider >= 0 && m_ctrl->OnCanSizeRow(divider))
        setCursor(Qt::SplitVCursor);
    else if (gi->m_userSizingMode && point.x() >= width() - kReach && m_ctrl->OnCanSizeSideHdg())
        setCursor(Qt::SplitHCursor);
    else
        unsetCursor();
}

void CUGSideHdg::mouseReleaseEvent(QMouseEvent* event) {
    if (m_drag == Drag::Row) {
        m_drag = Drag::None;
        int height = m_ctrl->GetRowHeight(m_dragRow);
        m_ctrl->OnRowSized(m_dragRow, &height);
        if (m_ctrl->SetRowHeight(m_dragRow, height) != 0) m_ctrl->SetStandardRowHeight(height);
        m_ctrl->AdjustComponentSizes();
        return;
    }
    if (m_drag == Drag::Width) {
        m_drag = Drag::None;
        int width = m_ctrl->GetSideHdgWidth();
        if (m_ctrl->OnSideHdgSized(&width)) m_ctrl->SetSideHdgWidth(width);
        return;
    }
    const long row = m_pressRow;
    m_pressRow = -1;
    if (row >= 0) Click(row, 0, event->button(), event->position().toPoint());
}

void CUGSideHdg::mouseDoubleClickEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    const long row = RowAt(point.y());
    if (event->button() != Qt::LeftButton || row < 0 || DividerAt(point.y()) >= 0) return;
    const QRect rect = CellRect(row);
    m_ctrl->GetCellIndirect(-1, row, &m_cell);
    const int processed = m_ctrl->GetCellType(m_cell.GetCellType())->OnDClicked(-1, row, rect, point);
    m_ctrl->OnSideHdgDoubleClick(-1, row, rect, point, processed);
}

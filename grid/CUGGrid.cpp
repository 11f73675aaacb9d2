// The cell area: painting, keyboard and mouse.
#include "grid/CUGGrid.h"

#include <QDragEnterEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "grid/CUGCellType.h"
#include "grid/CUGCtrl.h"
#include "grid/CUGLstBox.h"
#include "grid/UGKeyMap.h"
#include "grid/UGKeys.h"
#include "grid/UGPalette.h"

CUGGrid::CUGGrid(CUGCtrl* ctrl) : QWidget(ctrl), m_ctrl(ctrl) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAcceptDrops(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

bool CUGGrid::CellAt(const QPoint& point, int* col, long* row) const {
    const CUGGridInfo* gi = m_ctrl->GetGridInfo();
    *col = gi->ColFromX(point.x());
    *row = gi->RowFromY(point.y(), height());
    return *col >= 0 && *row >= 0;
}

CUGCellType* CUGGrid::TypeOf(int col, long row) {
    m_ctrl->GetCellIndirect(col, row, &m_cell);
    return m_ctrl->GetCellType(m_cell.GetCellType());
}

void CUGGrid::paintEvent(QPaintEvent* event) {
    QPainter dc(this);
    m_ctrl->OnPaintSetup(&dc, UG_GRID, 1);
    dc.fillRect(rect(), UGToQColor(m_ctrl->OnQueryBackColor(UG_GRID)));
    const CUGGridInfo* gi = m_ctrl->GetGridInfo();
    const QRect dirty = event->rect();
    int right = 0;
    long bottom = 0;
    int y = 0;
    for (long row = gi->m_topRow; row < gi->m_numberRows && y < height(); ++row) {
        const int h = gi->GetRowHeight(row);
        int x = 0;
        for (int col = gi->m_leftCol; col < gi->m_numberCols && x < width(); ++col) {
            const int w = gi->GetColWidth(col);
            const QRect cellRect(x, y, w - 1, h - 1);
            if (w > 1 && h > 1 && cellRect.intersects(dirty)) {
                m_ctrl->GetCellIndirect(col, row, &m_cell);
                const bool current = col == gi->m_currentCol && row == gi->m_currentRow;
                const bool selected = m_ctrl->IsSelected(col, row) ||
                                      (gi->m_highlightRowFlag && row == gi->m_currentRow);
                m_ctrl->GetCellType(m_cell.GetCellType())
                    ->OnDraw(&dc, cellRect, col, row, &m_cell, selected, current);
            }
            x += w;
        }
        right = x;
        y += h;
        bottom = y;
    }

    // Grid lines below and right of every cell, over the extent the cells cover.
    dc.setPen(UGToQColor(gi->m_gridLineColor));
    y = 0;
    for (long row = gi->m_topRow; row < gi->m_numberRows && y < height(); ++row) {
        y += gi->GetRowHeight(row);
        dc.drawLine(0, y - 1, right - 1, y - 1);
    }
    int x = 0;
    for (int col = gi->m_leftCol; col < gi->m_numberCols && x < width(); ++col) {
        x += gi->GetColWidth(col);
        dc.drawLine(x - 1, 0, x - 1, static_cast<int>(bottom) - 1);
    }

    const int col = gi->m_currentCol;
    const long row = gi->m_currentRow;
    if (col >= gi->m_leftCol && row >= gi->m_topRow && col < gi->m_numberCols &&
        row < gi->m_numberRows) {
        const QRect cell = m_ctrl->GetCellRect(col, row);
        if (cell.left() < width() && cell.top() < height()) {
            QRect focus = cell.adjusted(-1, -1, 2, 2);
            m_ctrl->OnDrawFocusRect(&dc, &focus);
        }
    }
}

void CUGGrid::keyPressEvent(QKeyEvent* event) {
    if (UGIsDialogKey(event)) {
        event->ignore();
        return;
    }
    m_ctrl->SetKeyboardModifiers(event->modifiers());
    const CUGGridInfo* gi = m_ctrl->GetGridInfo();
    int vcKey = UGVirtualKey(event);
    if (vcKey) {
        const int col = gi->m_currentCol;
        const long row = gi->m_currentRow;
        const int processed =
            (col >= 0 && row >= 0) ? TypeOf(col, row)->OnKeyDown(col, row, &vcKey) : 0;
        m_ctrl->OnGridKeyDown(&vcKey, processed);
        if (!processed && vcKey) Navigate(vcKey, event->modifiers());
    }
    int character = UGCharacter(event);
    if (character) {
        const int col = gi->m_currentCol;
        const long row = gi->m_currentRow;
        const int processed =
            (col >= 0 && row >= 0) ? TypeOf(col, row)->OnCharDown(col, row, &character) : 0;
        m_ctrl->OnGridCharDown(&character, processed);
    }
    event->accept();
}

void CUGGrid::Navigate(int vcKey, Qt::KeyboardModifiers modifiers) {
    const CUGGridInfo* gi = m_ctrl->GetGridInfo();
    const bool control = modifiers & Qt::ControlModifier;
    switch (vcKey) {
        case VK_LEFT:
            if (gi->m_currentCol > 0) m_ctrl->GotoCol(gi->m_currentCol - 1);
            break;
        case VK_RIGHT:
            if (gi->m_currentCol + 1 < gi->m_numberCols) m_ctrl->GotoCol(gi->m_currentCol + 1);
            break;
        case VK_UP:
            m_ctrl->MoveCurrentRow(0);
            break;
        case VK_DOWN:
            m_ctrl->MoveCurrentRow(1);
            break;
        case VK_PRIOR:
            m_ctrl->MoveCurrentRow(2);
            break;
        case VK_NEXT:
            m_ctrl->MoveCurrentRow(3);
            break;
        case VK_HOME:
            if (control) m_ctrl->MoveCurrentRow(4);
            m_ctrl->GotoCol(0);
            break;
        case VK_END:
            if (control) m_ctrl->MoveCurrentRow(5);
            m_ctrl->GotoCol(gi->m_numberCols - 1);
            break;
        default:
            break;
    }
}

void CUGGrid::mousePressEvent(QMouseEvent* event) {
    m_ctrl->SetKeyboardModifiers(event->modifiers());
    // A click elsewhere ends editing; an edit the owner will not let go of keeps the click.
    if (m_ctrl->IsEditing()) m_ctrl->EditFinished(CUGCtrl::EditEnd::FocusLost);
    if (m_ctrl->IsEditing()) return;
    setFocus(Qt::MouseFocusReason);
    int col = -1;
    long row = -1;
    const bool onCell = CellAt(event->position().toPoint(), &col, &row);
    CUGLstBox* list = m_ctrl->GetListBox();
    if (list->IsOpen() && !list->IsOpenFor(col, row)) list->Close();
    if (!onCell) return;
    m_pressCol = col;
    m_pressRow = row;
    const QRect before = m_ctrl->GetCellRect(col, row);
    m_ctrl->GotoCell(col, row);
    // The move may have scrolled the cell: the point goes with it.
    const QRect rect = m_ctrl->GetCellRect(col, row);
    const QPoint point = event->position().toPoint() + (rect.topLeft() - before.topLeft());
    const CUGGridInfo* gi = m_ctrl->GetGridInfo();
    const bool current = gi->m_currentCol == col && gi->m_currentRow == row;
    if (event->button() == Qt::LeftButton) {
        const int processed = current ? TypeOf(col, row)->OnLClicked(col, row, 1, rect, point) : 0;
        m_ctrl->OnCellLeftClick(col, row, 1, rect, point, processed);
    } else if (event->button() == Qt::RightButton) {
        m_ctrl->OnCellRightClick(col, row, 1, rect, point, 0);
    }
}

void CUGGrid::mouseReleaseEvent(QMouseEvent* event) {
    m_ctrl->SetKeyboardModifiers(event->modifiers());
    const QPoint point = event->position().toPoint();
    int col = m_pressCol;
    long row = m_pressRow;
    if (col < 0 && !CellAt(point, &col, &row)) return;
    m_pressCol = -1;
    m_pressRow = -1;
    const QRect rect = m_ctrl->GetCellRect(col, row);
    if (event->button() == Qt::LeftButton) {
        const int processed = TypeOf(col, row)->OnLClicked(col, row, 0, rect, point);
        m_ctrl->OnCellLeftClick(col, row, 0, rect, point, processed);
    } else if (event->button() == Qt::RightButton) {
        m_ctrl->OnCellRightClick(col, row, 0, rect, point, 0);
        m_ctrl->StartMenu(col, row, UG_GRID, mapToGlobal(point));
    }
}

void CUGGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    m_ctrl->SetKeyboardModifiers(event->modifiers());
    const QPoint point = event->position().toPoint();
    int col = -1;
    long row = -1;
    if (event->button() != Qt::LeftButton || !CellAt(point, &col, &row)) return;
    m_pressCol = col;
    m_pressRow = row;
    const QRect rect = m_ctrl->GetCellRect(col, row);
    const int processed = TypeOf(col, row)->OnDClicked(col, row, rect, point);
    m_ctrl->OnCellDoubleClick(col, row, rect, point, processed);
}

void CUGGrid::mouseMoveEvent(QMouseEvent* event) {
    m_ctrl->SetKeyboardModifiers(event->modifiers());
    const QPoint point = event->position().toPoint();
    const unsigned flags = UGMouseKeyFlags(event->buttons(), event->modifiers());
    int col = -1;
    long row = -1;
    const bool onCell = CellAt(point, &col, &row);
    int processed = 0;
    // While a button is held the pressed cell's type follows the mouse, wherever it goes.
    if ((event->buttons() & Qt::LeftButton) && m_pressCol >= 0)
        processed = TypeOf(m_pressCol, m_pressRow)->OnMouseMove(col, row, point, flags);
    else if (onCell)
        processed = TypeOf(col, row)->OnMouseMove(col, row, point, flags);
    m_ctrl->OnCellMouseMove(col, row, point, flags, processed);
}

void CUGGrid::wheelEvent(QWheelEvent* event) {
    const QPoint steps = event->angleDelta() / 120;
    if (steps.y()) m_ctrl->SetTopRow(m_ctrl->GetTopRow() - 3 * steps.y());
    if (steps.x()) m_ctrl->SetLeftCol(m_ctrl->GetLeftCol() - steps.x());
    event->accept();
}

void CUGGrid::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    m_ctrl->OnSectionSetFocus(UG_GRID);
    update();
}

void CUGGrid::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    m_ctrl->OnSectionKillFocus(UG_GRID);
    update();
}

bool CUGGrid::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    auto* help = static_cast<QHelpEvent*>(event);
    int col = -1;
    long row = -1;
    std::wstring tip;
    if (m_ctrl->IsHintsEnabled() && CellAt(help->pos(), &col, &row) &&
        m_ctrl->OnCellTip(col, row, UG_GRID, &tip))
        QToolTip::showText(help->globalPos(), QString::fromStdWString(tip), this);
    else
        QToolTip::hideText();
    return true;
}

void CUGGrid::dragEnterEvent(QDragEnterEvent* event) {
    if (m_ctrl->OnDragEnter(event->mimeData()))
        event->acceptProposedAction();
    else
        event->ignore();
}

void CUGGrid::dragMoveEvent(QDragMoveEvent* event) {
    int col = -1;
    long row = -1;
    CellAt(event->position().toPoint(), &col, &row);
    if (m_ctrl->OnDragOver(event->mimeData(), col, row))
        event->acceptProposedAction();
    else
        event->ignore();
}

void CUGGrid::dropEvent(QDropEvent* event) {
    int col = -1;
    long row = -1;
    CellAt(event->position().toPoint(), &col, &row);
    if (m_ctrl->OnDragDrop(event->mimeData(), col, row))
        event->acceptProposedAction();
    else
        event->ignore();
}

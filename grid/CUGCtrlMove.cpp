// The grid control: moving the current cell, scrolling, selection and redrawing.
#include <QGuiApplication>
#include <algorithm>

#include "grid/CUGCnrBtn.h"
#include "grid/CUGCtrl.h"
#include "grid/CUGEdit.h"
#include "grid/CUGGrid.h"
#include "grid/CUGHScroll.h"
#include "grid/CUGLstBox.h"
#include "grid/CUGSideHdg.h"
#include "grid/CUGTab.h"
#include "grid/CUGTopHdg.h"
#include "grid/CUGVScroll.h"

int CUGCtrl::GotoCell(int col, long row) {
    CUGGridInfo& gi = *m_GI;
    if (col == gi.m_currentCol && row == gi.m_currentRow) return UG_SUCCESS;
    const long rows = gi.m_numberRows;
    if (row >= rows) {
        long found = 0;
        gi.m_dataSource->OnHitBottom(rows, row - rows + 1, &found);
        OnHitBottom(rows, row - rows + 1, found);
        if (gi.m_requestedRow == rows - 1) return UG_ERROR;
        row = rows - 1;
    }
    row = std::max(0L, row);
    col = std::clamp(col, 0, std::max(0, gi.m_numberCols - 1));
    gi.m_requestedCol = col;
    gi.m_requestedRow = row;
    if (gi.m_multiSelectFlag) {
        if (!(m_modifiers & Qt::ControlModifier)) gi.m_multiSelect.ClearAll();
        gi.m_multiSelect.AddBlock(col, row, col, row);
    }
    if (gi.m_dataSource->OnCanMove(gi.m_currentCol, gi.m_currentRow, col, row) != 1) return UG_REFUSED;
    if (!OnCanMoveCell(gi.m_leftCol, gi.m_topRow, col, row)) return UG_REFUSED;

    gi.ComputeVisibleRange(CellAreaWidth(), CellAreaHeight());
    const bool visible = col >= gi.m_leftCol && col < gi.m_rightCol && row >= gi.m_topRow &&
                         row < gi.m_bottomRow;
    // A control that was never laid out has no view to scroll.
    const bool laidOut = CellAreaWidth() > 0 && CellAreaHeight() > 0;
    if (!visible && laidOut) {
        if (!OnCanScrollView(gi.m_leftCol, col, gi.m_topRow, row)) return UG_REFUSED;
        ScrollToShow(col, row);
    }

    const int oldCol = gi.m_currentCol;
    const long oldRow = gi.m_currentRow;
    gi.m_lastCol = oldCol;
    gi.m_lastRow = oldRow;
    gi.m_currentCol = col;
    gi.m_currentRow = row;
    if (col != oldCol) {
        gi.m_dataSource->OnColChange(oldCol, col);
        OnColChange(oldCol, col);
    }
    if (row != oldRow) {
        gi.m_dataSource->OnRowChange(oldRow, row);
        OnRowChange(oldRow, row);
    }
    if (col != oldCol || row != oldRow) OnCellChange(oldCol, col, oldRow, row);
    const bool scrolled = gi.m_topRow != gi.m_lastTopRow || gi.m_leftCol != gi.m_lastLeftCol;
    FireScrollChanges();
    UpdateScrollBars();
    if (scrolled || gi.m_highlightRowFlag || gi.m_multiSelectFlag) {
        RedrawAll();
    } else {
        RedrawCell(oldCol, oldRow);
        RedrawCell(col, row);
        if (m_enableUpdate) {
            m_CUGTopHdg->update();
            m_CUGSideHdg->update();
        }
    }
    return UG_SUCCESS;
}

void CUGCtrl::ScrollToShow(int col, long row) {
    CUGGridInfo& gi = *m_GI;
    if (row < gi.m_topRow)
        gi.m_topRow = row;
    else if (row >= gi.m_bottomRow)
        gi.m_topRow = gi.TopRowShowing(row, CellAreaHeight());
    if (col < gi.m_leftCol)
        gi.m_leftCol = col;
    else if (col >= gi.m_rightCol)
        gi.m_leftCol = gi.LeftColShowing(col, CellAreaWidth());
    gi.ComputeVisibleRange(CellAreaWidth(), CellAreaHeight());
}

void CUGCtrl::FireScrollChanges() {
    CUGGridInfo& gi = *m_GI;
    if (gi.m_leftCol != gi.m_lastLeftCol) {
        const int old = gi.m_lastLeftCol;
        gi.m_lastLeftCol = gi.m_leftCol;
        OnLeftColChange(old, gi.m_leftCol);
    }
    if (gi.m_topRow != gi.m_lastTopRow) {
        const long old = gi.m_lastTopRow;
        gi.m_lastTopRow = gi.m_topRow;
        OnTopRowChange(old, gi.m_topRow);
    }
}

int CUGCtrl::GotoRow(long row) { return GotoCell(m_GI->m_currentCol, row); }
int CUGCtrl::GotoCol(int col) { return GotoCell(col, m_GI->m_currentRow); }

int CUGCtrl::MoveCurrentRow(int code) {
    const long row = m_GI->m_currentRow;
    switch (code) {
        case 0:
            return GotoRow(row - 1);
        case 1:
            return GotoRow(row + 1);
        case 2:
            return GotoRow(m_GI->PageUpRow(CellAreaHeight()));
        case 3:
            return GotoRow(m_GI->PageDownRow(CellAreaHeight()));
        case 4:
            return GotoRow(0);
        case 5:
            return GotoRow(m_GI->m_numberRows - 1);
        default:
            return code > 5 ? UG_SUCCESS : UG_ERROR;
    }
}

int CUGCtrl::SetTopRow(long row) {
    CUGGridInfo& gi = *m_GI;
    row = std::clamp(row, 0L, std::max(gi.m_topRow, gi.MaxTopRow(CellAreaHeight())));
    if (row == gi.m_topRow) return UG_SUCCESS;
    if (m_editing) EditFinished(EditEnd::FocusLost);
    m_listBox->Close();
    gi.m_topRow = row;
    gi.ComputeVisibleRange(CellAreaWidth(), CellAreaHeight());
    FireScrollChanges();
    UpdateScrollBars();
    RedrawAll();
    return UG_SUCCESS;
}

int CUGCtrl::SetLeftCol(int col) {
    CUGGridInfo& gi = *m_GI;
    col = std::clamp(col, 0, std::max(gi.m_leftCol, gi.MaxLeftCol(CellAreaWidth())));
    if (col == gi.m_leftCol) return UG_SUCCESS;
    if (m_editing) EditFinished(EditEnd::FocusLost);
    m_listBox->Close();
    gi.m_leftCol = col;
    gi.ComputeVisibleRange(CellAreaWidth(), CellAreaHeight());
    FireScrollChanges();
    UpdateScrollBars();
    RedrawAll();
    return UG_SUCCESS;
}

QRect CUGCtrl::GetCellRect(int col, long row) const {
    return QRect(m_GI->ColLeft(col), static_cast<int>(m_GI->RowTop(row)), m_GI->GetColWidth(col) - 1,
                 m_GI->GetRowHeight(row) - 1);
}

// --- Redrawing -----------------------------------------------------------------------------

int CUGCtrl::RedrawAll() {
    if (!m_enableUpdate) return UG_SUCCESS;
    for (QWidget* child : std::initializer_list<QWidget*>{m_CUGGrid, m_CUGCnrBtn, m_CUGVScroll,
                                                          m_CUGHScroll, m_CUGTab, m_CUGTopHdg,
                                                          m_CUGSideHdg})
        child->update();
    return UG_SUCCESS;
}

int CUGCtrl::RedrawCell(int col, long row) {
    if (!m_enableUpdate || col < 0 || row < 0) return UG_SUCCESS;
    m_CUGGrid->update(GetCellRect(col, row).adjusted(-2, -2, 2, 2));
    return UG_SUCCESS;
}

int CUGCtrl::RedrawRow(long row) {
    if (!m_enableUpdate || row < 0) return UG_SUCCESS;
    m_CUGGrid->update(QRect(0, static_cast<int>(m_GI->RowTop(row)) - 2, m_CUGGrid->width(),
                            m_GI->GetRowHeight(row) + 4));
    return UG_SUCCESS;
}

int CUGCtrl::EnableUpdate(int flag) {
    m_enableUpdate = flag;
    return UG_SUCCESS;
}

// --- Selection and options -----------------------------------------------------------------

int CUGCtrl::Select(int col, long row) {
    m_GI->m_multiSelect.AddBlock(col, row, col, row);
    RedrawCell(col, row);
    return UG_SUCCESS;
}

int CUGCtrl::SelectRow(long row) {
    m_GI->m_multiSelect.AddBlock(0, row, std::max(0, m_GI->m_numberCols - 1), row);
    RedrawRow(row);
    return UG_SUCCESS;
}

int CUGCtrl::ClearSelections() {
    m_GI->m_multiSelect.ClearAll();
    RedrawAll();
    return UG_SUCCESS;
}

int CUGCtrl::IsSelected(int col, long row) const {
    return m_GI->m_multiSelect.IsSelected(col, row) ? 1 : 0;
}

int CUGCtrl::SetMultiSelectMode(int mode) {
    if (mode < 0 || mode > 2) return UG_ERROR;
    m_GI->m_multiSelectFlag = mode;
    return UG_SUCCESS;
}

int CUGCtrl::SetHighlightRow(int flag) {
    m_GI->m_highlightRowFlag = flag ? 1 : 0;
    RedrawAll();
    return UG_SUCCESS;
}

int CUGCtrl::SetUserSizingMode(int flag) {
    m_GI->m_userSizingMode = flag ? 1 : 0;
    return UG_SUCCESS;
}

int CUGCtrl::UseHints(int flag) {
    m_useHints = flag ? 1 : 0;
    return UG_SUCCESS;
}

int CUGCtrl::SetGridLineColor(COLORREF color) {
    m_GI->m_gridLineColor = color;
    RedrawAll();
    return UG_SUCCESS;
}

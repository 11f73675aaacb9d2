// The grid control: in-place editing from start to finish, and going on in the next cell.
#include "grid/CUGCellType.h"
#include "grid/CUGCtrl.h"
#include "grid/CUGEdit.h"
#include "grid/CUGGrid.h"
#include "grid/CUGLstBox.h"

int CUGCtrl::StartEdit() { return StartEdit(0); }

int CUGCtrl::StartEdit(int key) { return StartEdit(m_GI->m_currentCol, m_GI->m_currentRow, key); }

int CUGCtrl::StartEdit(int col, long row, int key) {
    // Asked from OnEditFinish: the request is carried out once that edit has ended.
    if (m_finishingEdit) {
        m_pendingEdit = std::make_unique<PendingEdit>(PendingEdit{col, row, key});
        return UG_SUCCESS;
    }
    if (m_editing) {
        EditFinished(EditEnd::FocusLost);
        if (m_editing) return UG_REFUSED;
    }
    if (col < 0 || row < 0 || row >= m_GI->m_numberRows || col >= m_GI->m_numberCols) return UG_ERROR;
    if (const int moved = GotoCell(col, row); moved != UG_SUCCESS) return moved;
    m_listBox->Close();

    CUGEdit* edit = m_defEdit;
    if (!OnEditStart(col, row, &edit) || !edit) return UG_REFUSED;
    CUGCell cell;
    GetCellIndirect(col, row, &cell);
    QRect area = GetCellRect(col, row);
    GetCellType(cell.GetCellType())->AdjustEditArea(&area);
    if (edit->parentWidget() != m_CUGGrid) edit->setParent(m_CUGGrid);
    if (edit != m_editCtrl && m_editCtrl) m_editCtrl->hide();
    m_editCtrl = edit;
    m_editCol = col;
    m_editRow = row;
    m_editing = true;
    edit->PrepareFor(this, cell);
    edit->setFont(GetFont(cell.GetFont()));
    edit->setGeometry(area);
    const wchar_t* text = cell.GetText();
    edit->setText(key ? QString() : QString::fromWCharArray(text ? text : L""));
    edit->show();
    edit->raise();
    edit->setFocus(Qt::OtherFocusReason);
    if (key)
        edit->SendCharacter(key);
    else
        edit->selectAll();
    return UG_SUCCESS;
}

bool CUGCtrl::FinishEditForPress() {
    if (m_editing) EditFinished(EditEnd::FocusLost);
    return !m_editing;
}

void CUGCtrl::KeepEditorOnItsRow(long row, long delta) {
    if (!m_editing || row > m_editRow) return;
    if (delta < 0 && row == m_editRow) {
        m_editing = false;  // first: hiding moves the focus, which would end the edit
        const bool hadFocus = m_editCtrl->hasFocus();
        m_editCtrl->hide();
        if (hadFocus) m_CUGGrid->setFocus(Qt::OtherFocusReason);
        return;
    }
    m_editRow += delta;
    CUGCell cell;
    GetCellIndirect(m_editCol, m_editRow, &cell);
    QRect area = GetCellRect(m_editCol, m_editRow);
    GetCellType(cell.GetCellType())->AdjustEditArea(&area);
    m_editCtrl->setGeometry(area);
}

bool CUGCtrl::NextEditCell(EditEnd how, int* col, long* row) const {
    switch (how) {
        case EditEnd::NextCol:
            ++*col;
            if (*col >= m_GI->m_numberCols) {
                *col = 0;
                ++*row;
            }
            break;
        case EditEnd::PrevCol:
            --*col;
            if (*col < 0) {
                *col = m_GI->m_numberCols - 1;
                --*row;
            }
            break;
        case EditEnd::PrevRow:
            --*row;
            break;
        case EditEnd::NextRow:
            ++*row;
            break;
        case EditEnd::Enter:
        case EditEnd::Cancel:
        case EditEnd::FocusLost:
            return false;
    }
    return *row >= 0 && *row < m_GI->m_numberRows && *col >= 0 && *col < m_GI->m_numberCols;
}

void CUGCtrl::EditFinished(EditEnd how) {
    if (!m_editing || m_finishingEdit) return;
    CUGEdit* edit = m_editCtrl;
    const int col = m_editCol;
    const long row = m_editRow;
    const bool cancel = how == EditEnd::Cancel;
    const std::wstring text = edit->text().toStdWString();
    m_finishingEdit = true;
    const int accepted = OnEditFinish(col, row, edit, text.c_str(), cancel ? 1 : 0);
    m_finishingEdit = false;
    std::unique_ptr<PendingEdit> pending = std::move(m_pendingEdit);
    if (!accepted) {
        if (how != EditEnd::FocusLost) edit->setFocus(Qt::OtherFocusReason);
        return;
    }
    m_editing = false;
    const bool hadFocus = edit->hasFocus();
    edit->hide();
    if (hadFocus) m_CUGGrid->setFocus(Qt::OtherFocusReason);
    if (!cancel) {
        QuickSetText(col, row, text);
        RedrawCell(col, row);
    }
    if (pending) {
        StartEdit(pending->col, pending->row, pending->key);
        return;
    }
    int nextCol = col;
    long nextRow = row;
    if (cancel || !NextEditCell(how, &nextCol, &nextRow)) return;
    if (m_GI->m_dataSource->OnCanContinueEdit(col, row, &nextCol, &nextRow) != 1) return;
    if (!OnEditContinue(col, row, &nextCol, &nextRow)) return;
    StartEdit(nextCol, nextRow, 0);
}

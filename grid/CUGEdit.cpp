// The in-place editor: keys that end editing, and the keystroke filter for every character.
#include "grid/CUGEdit.h"

#include <QKeyEvent>

#include "grid/CUGCtrl.h"
#include "grid/UGKeyMap.h"

CUGEdit::CUGEdit(QWidget* parent) : QLineEdit(parent) {
    hide();
    setFrame(false);
}

void CUGEdit::PrepareFor(CUGCtrl* ctrl, const CUGCell&) { m_ctrl = ctrl; }

bool CUGEdit::event(QEvent* event) {
    // Tab belongs to the grid while editing, not to the focus chain.
    if (event->type() == QEvent::KeyPress && m_ctrl) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) {
            keyPressEvent(key);
            return true;
        }
    }
    return QLineEdit::event(event);
}

void CUGEdit::keyPressEvent(QKeyEvent* event) {
    if (UGIsDialogKey(event)) {
        event->ignore();
        return;
    }
    if (!m_ctrl || !m_ctrl->IsEditing()) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    m_ctrl->SetKeyboardModifiers(event->modifiers());
    using End = CUGCtrl::EditEnd;
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            m_ctrl->EditFinished(End::Enter);
            return;
        case Qt::Key_Escape:
            m_ctrl->EditFinished(End::Cancel);
            return;
        case Qt::Key_Tab:
            m_ctrl->EditFinished((event->modifiers() & Qt::ShiftModifier) ? End::PrevCol
                                                                          : End::NextCol);
            return;
        case Qt::Key_Backtab:
            m_ctrl->EditFinished(End::PrevCol);
            return;
        case Qt::Key_Up:
            m_ctrl->EditFinished(End::PrevRow);
            return;
        case Qt::Key_Down:
            m_ctrl->EditFinished(End::NextRow);
            return;
        default:
            break;
    }
    const int typed = UGCharacter(event);
    if (!typed) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    int character = typed;
    if (!m_ctrl->OnEditKeystroke(m_ctrl->m_editCol, m_ctrl->m_editRow, this, &character)) return;
    // Backspace and control keys (copy, paste, select all) keep the line edit's own meaning.
    if (character == typed && character < 32)
        QLineEdit::keyPressEvent(event);
    else
        InsertCharacter(character);
}

void CUGEdit::SendCharacter(int character) {
    if (!m_ctrl || !m_ctrl->IsEditing()) return;
    if (!m_ctrl->OnEditKeystroke(m_ctrl->m_editCol, m_ctrl->m_editRow, this, &character)) return;
    InsertCharacter(character);
}

void CUGEdit::InsertCharacter(int character) {
    if (character == 8)
        backspace();
    else if (character >= 32 && character != 127)
        insert(QString::fromUcs4(reinterpret_cast<const char32_t*>(&character), 1));
}

void CUGEdit::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (m_ctrl && m_ctrl->IsEditing() && event->reason() != Qt::PopupFocusReason)
        m_ctrl->EditFinished(CUGCtrl::EditEnd::FocusLost);
}

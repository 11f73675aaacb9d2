// The decimal-number edit control.
#include "pricelist/CEditReal.h"

#include <QKeyEvent>

#include "grid/UGKeyMap.h"

CEditReal::CEditReal(QWidget* parent) : QLineEdit(parent) {}

bool CEditReal::AcceptsCharacter(std::wstring_view text, int character) {
    if (character >= '0' && character <= '9') return true;
    if (character == 8) return true;
    return character == '.' && text.find(L'.') == std::wstring_view::npos;
}

namespace {

// Tab, Enter and Escape belong to the dialog, which sees them before the control would.
bool IsDialogKey(int character) { return character == 9 || character == 13 || character == 27; }

}  // namespace

void CEditReal::keyPressEvent(QKeyEvent* event) {
    // Keys that type nothing (arrows, Delete, Home) are not characters and keep their meaning.
    const int character = UGCharacter(event);
    if (character != 0 && !IsDialogKey(character) &&
        !AcceptsCharacter(text().toStdWString(), character)) {
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

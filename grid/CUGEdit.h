// The in-place editor of the grid: a line edit over the cell being edited. Every character typed
// goes through the control's OnEditKeystroke; Enter ends editing, Escape cancels it, Tab and
// Shift+Tab, Up and Down end it and ask to go on in the neighbouring cell; leaving the editor ends
// it too.
#pragma once

#include <QLineEdit>

class CUGCell;
class CUGCtrl;

class CUGEdit : public QLineEdit {
    Q_OBJECT

public:
    explicit CUGEdit(QWidget* parent = nullptr);

    // A character that did not come from the keyboard (the first key handed to StartEdit): it is
    // filtered and typed like a keystroke.
    void SendCharacter(int character);

    // Called by the control when editing of a cell starts.
    virtual void PrepareFor(CUGCtrl* ctrl, const CUGCell& cell);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    // Types a character the filter accepted.
    virtual void InsertCharacter(int character);

    CUGCtrl* m_ctrl = nullptr;
};

// The list box of the drop-list cell type: a child of the control shown under (or above) the cell
// whose list is open. A click or Enter chooses; Escape, or the focus leaving for anything but the
// cell area, closes it.
#pragma once

#include <QListWidget>
#include <QStringList>

class CUGCtrl;
class CUGDropListType;

class CUGLstBox final : public QListWidget {
    Q_OBJECT

public:
    explicit CUGLstBox(CUGCtrl* ctrl);

    // cellRect is in the control's coordinates.
    void Open(CUGDropListType* owner, int col, long row, const QRect& cellRect,
              const QStringList& options, const QString& current);
    void Close();
    bool IsOpenFor(int col, long row) const;
    bool IsOpen() const { return m_owner != nullptr; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void Choose(int index);

    CUGCtrl* m_ctrl;
    CUGDropListType* m_owner = nullptr;
    int m_col = -1;
    long m_row = -1;
};

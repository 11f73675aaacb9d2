// The drop list's list box.
#include "grid/CUGLstBox.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>

#include "grid/CUGCtrl.h"
#include "grid/CUGDropListType.h"
#include "grid/CUGGrid.h"
#include "grid/UGKeyMap.h"

namespace {

constexpr int kVisibleItems = 8;

}  // namespace

CUGLstBox::CUGLstBox(CUGCtrl* ctrl) : QListWidget(ctrl), m_ctrl(ctrl) {
    hide();
    setFrameShape(QFrame::Box);
    setUniformItemSizes(true);
    setSpacing(0);
    // Made at run time: Qt's style caches may keep pieces of it after the grid's library, loaded
    // into a host as part of a module, is unloaded.
    setStyleSheet(
        QString::fromLatin1("QListWidget { border: 1px solid palette(mid); padding: 0px; }"
                            " QListWidget::item { padding-left: 2px; }"));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { Choose(row(item)); });
}

void CUGLstBox::Open(CUGDropListType* owner, int col, long row, const QRect& cellRect,
                     const QStringList& options, const QString& current) {
    Close();
    clear();
    addItems(options);
    // Options as tall as the grid's rows, so the list reads like the cells it fills.
    const int rowHeight =
        std::max(m_ctrl->GetGridInfo()->GetRowHeight(row), fontMetrics().height() + 4);
    for (int i = 0; i < count(); ++i) item(i)->setSizeHint(QSize(0, rowHeight));
    setCurrentRow(std::max(0, static_cast<int>(options.indexOf(current))));
    m_owner = owner;
    m_col = col;
    m_row = row;

    const int frame = 2 * frameWidth();
    const int itemHeight = std::max(1, sizeHintForRow(0));
    const int visible = std::min(kVisibleItems, static_cast<int>(options.size()));
    int height = visible * itemHeight + frame;
    const int scrollBar =
        options.size() > kVisibleItems ? verticalScrollBar()->sizeHint().width() : 0;
    const int width =
        std::min(m_ctrl->width(),
                 std::max(cellRect.width() + 1, sizeHintForColumn(0) + frame + scrollBar + 8));
    int top = cellRect.bottom() + 1;
    if (top + height > m_ctrl->height()) {
        if (cellRect.top() - height >= 0)
            top = cellRect.top() - height;
        else
            height = std::max(itemHeight + frame, m_ctrl->height() - top);
    }
    const int left = std::max(0, std::min(cellRect.left(), m_ctrl->width() - width));
    setGeometry(left, top, width, height);
    show();
    raise();
    setFocus(Qt::PopupFocusReason);
}

void CUGLstBox::Close() {
    CUGDropListType* owner = m_owner;
    if (!owner) return;
    m_owner = nullptr;  // first, as hiding moves the focus and comes back here
    const bool hadFocus = hasFocus();
    hide();
    if (hadFocus) m_ctrl->GetGridWindow()->setFocus(Qt::OtherFocusReason);
    const int col = m_col;
    const long row = m_row;
    m_col = -1;
    m_row = -1;
    owner->OnPopupClosed(col, row, 0);
}

bool CUGLstBox::IsOpenFor(int col, long row) const {
    return m_owner && m_col == col && m_row == row;
}

void CUGLstBox::Choose(int index) {
    if (!m_owner || index < 0 || index >= count()) return;
    CUGDropListType* owner = m_owner;
    const int col = m_col;
    const long row = m_row;
    const QString text = item(index)->text();
    Close();
    owner->OnListChoice(col, row, index, text);
}

void CUGLstBox::keyPressEvent(QKeyEvent* event) {
    if (UGIsDialogKey(event)) {
        event->ignore();
        return;
    }
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Choose(currentRow());
            return;
        case Qt::Key_Escape:
            Close();
            return;
        default:
            QListWidget::keyPressEvent(event);
    }
}

void CUGLstBox::focusOutEvent(QFocusEvent* event) {
    QListWidget::focusOutEvent(event);
    // A press in the cell area decides for itself: on the list's own button it closes the list.
    if (QApplication::focusWidget() != m_ctrl->GetGridWindow()) Close();
}

// The drop-list cell type.
#include "grid/CUGDropListType.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <algorithm>

#include "grid/CUGCell.h"
#include "grid/CUGCtrl.h"
#include "grid/CUGGrid.h"
#include "grid/CUGLstBox.h"
#include "grid/UGDraw.h"
#include "grid/UGKeys.h"
#include "grid/UGPalette.h"
#include "grid/UGSysColor.h"

namespace {

constexpr UGID kDropListId{{0x44, 0x72, 0x6f, 0x70, 0x4c, 0x69, 0x73, 0x74, 0x54, 0x79, 0x70, 0x65,
                            0x00, 0x00, 0x00, 0x01}};

}  // namespace

CUGDropListType::CUGDropListType()
    : m_btnWidth(std::max(16, QApplication::style()->pixelMetric(QStyle::PM_ScrollBarExtent))) {}

const wchar_t* CUGDropListType::GetName() { return L"Standard DropList"; }
const UGID* CUGDropListType::GetTypeId() { return &kDropListId; }

int CUGDropListType::AdjustEditArea(QRect* rect) {
    rect->setRight(rect->right() - (m_btnWidth + 1));
    return 1;
}

int CUGDropListType::OnLClicked(int col, long row, int updn, const QRect& rect, const QPoint& point) {
    if (!updn) {
        if (!m_btnDown) return 0;
        m_btnDown = false;
        m_ctrl->RedrawCell(m_btnCol, m_btnRow);
        return 1;
    }
    if (point.x() <= rect.right() - m_btnWidth) return 0;
    CUGLstBox* list = m_ctrl->GetListBox();
    if (list->IsOpenFor(col, row)) {
        list->Close();
        return 1;
    }
    m_btnRect = QRect(rect.right() - m_btnWidth + 1, rect.top(), m_btnWidth, rect.height());
    m_btnDown = true;
    OpenList(col, row);
    return 1;
}

int CUGDropListType::OnDClicked(int col, long row, const QRect& rect, const QPoint& point) {
    if (point.x() <= rect.right() - m_btnWidth) return 0;
    return OnLClicked(col, row, 1, rect, point);
}

int CUGDropListType::OnKeyDown(int col, long row, int* vcKey) {
    const bool ctrlHeld = m_ctrl->GetKeyboardModifiers() & Qt::ControlModifier;
    if (*vcKey != VK_RETURN && !(*vcKey == VK_DOWN && ctrlHeld)) return 0;
    *vcKey = 0;
    m_btnRect = QRect();
    OpenList(col, row);
    return 1;
}

int CUGDropListType::OnCharDown(int, long, int* vcKey) {
    return (*vcKey == VK_RETURN || *vcKey == VK_DOWN) ? 1 : 0;
}

int CUGDropListType::OnMouseMove(int, long, const QPoint& point, unsigned keyFlags) {
    if (!(keyFlags & MK_LBUTTON) || m_btnCol < 0 || m_btnRect.isNull()) return 0;
    const bool inside = m_btnRect.contains(point);
    if (inside != m_btnDown) {
        m_btnDown = inside;
        m_ctrl->RedrawCell(m_btnCol, m_btnRow);
    }
    return 0;
}

void CUGDropListType::OnPopupClosed(int col, long row, int) {
    m_btnCol = -1;
    m_btnRow = -1;
    m_btnDown = false;
    m_ctrl->RedrawCell(col, row);
}

void CUGDropListType::OnListChoice(int col, long row, int index, const QString& text) {
    if (!m_ctrl->OnCellTypeNotify(m_ID, col, row, UGCT_DROPLISTSELECT, index)) return;
    m_ctrl->QuickSetText(col, row, text.toStdWString());
    m_ctrl->RedrawCell(col, row);
}

void CUGDropListType::OpenList(int col, long row) {
    CUGCell cell;
    m_ctrl->GetCellIndirect(col, row, &cell);
    QStringList options = QString::fromWCharArray(cell.GetLabelText()).split(QLatin1Char('\n'));
    if (!options.isEmpty() && options.last().isEmpty()) options.removeLast();
    m_btnCol = col;
    m_btnRow = row;
    m_ctrl->RedrawCell(col, row);
    if (options.isEmpty()) return;
    const QRect cellRect = m_ctrl->GetCellRect(col, row);
    const QRect inCtrl(m_ctrl->GetGridWindow()->mapTo(m_ctrl, cellRect.topLeft()), cellRect.size());
    const wchar_t* text = cell.GetText();
    // The options read like the cell they fill: in its font.
    m_ctrl->GetListBox()->setFont(m_ctrl->GetFont(cell.GetFont()));
    m_ctrl->GetListBox()->Open(this, col, row, inCtrl, options,
                               text ? QString::fromWCharArray(text) : QString());
}

void CUGDropListType::OnDraw(QPainter* dc, const QRect& rect, int col, long row, CUGCell* cell,
                             int selected, int current) {
    if ((cell->GetCellTypeEx() & UGCT_DROPLISTHIDEBUTTON) && !current) {
        CUGCellType::OnDraw(dc, rect, col, row, cell, selected, current);
        return;
    }
    const QRect content = DrawBackground(dc, rect, col, row, cell, selected, current);
    const int width = std::min(m_btnWidth, content.width());
    DrawCellText(dc, content.adjusted(0, 0, -width, 0), col, row, cell, selected, current);

    const QRect button(content.right() - width + 1, content.top(), width, content.height());
    const bool open = m_ctrl->GetListBox()->IsOpenFor(col, row);
    const bool pressed = (m_btnDown && col == m_btnCol && row == m_btnRow) || open;
    const QColor back = UGToQColor(cell->GetBackColor());
    const QColor face = UGToQColor(GetSysColor(COLOR_BTNFACE));
    if (pressed)
        dc->fillRect(button, UGBlend(face, UGToQColor(GetSysColor(COLOR_BTNSHADOW)), 0.35));
    else if (current)
        dc->fillRect(button, UGBlend(back, face, 0.85));
    UGDrawChevron(dc, button, UGBlend(back, UGToQColor(cell->GetTextColor()), current ? 0.75 : 0.45));
}

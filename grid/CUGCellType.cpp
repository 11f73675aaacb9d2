// The normal cell type: background, borders and text; no input of its own.
#include "grid/CUGCellType.h"

#include <QPainter>
#include <QSize>

#include "grid/CUGCell.h"
#include "grid/CUGCtrl.h"
#include "grid/UGPalette.h"
#include "grid/UGSysColor.h"

namespace {

constexpr UGID kNormalId{{0x4e, 0x6f, 0x72, 0x6d, 0x61, 0x6c, 0x43, 0x65, 0x6c, 0x6c, 0x54, 0x79,
                          0x70, 0x65, 0x00, 0x00}};
constexpr int kIndent = 3;

bool IsHeading(int col, long row) { return col < 0 || row < 0; }

}  // namespace

const wchar_t* CUGCellType::GetName() { return L"Normal Cell Type (default)"; }
const UGID* CUGCellType::GetTypeId() { return &kNormalId; }
int CUGCellType::AdjustEditArea(QRect*) { return 0; }
int CUGCellType::OnHook8(long, long) { return -1; }
int CUGCellType::OnHook9(long, long) { return -1; }
int CUGCellType::OnHook10() { return 0; }
int CUGCellType::OnLClicked(int, long, int, const QRect&, const QPoint&) { return 0; }
int CUGCellType::OnHook12(long, long, long, long, long) { return 0; }
int CUGCellType::OnDClicked(int, long, const QRect&, const QPoint&) { return 0; }
int CUGCellType::OnKeyDown(int, long, int*) { return 0; }
int CUGCellType::OnCharDown(int, long, int*) { return 0; }
int CUGCellType::OnMouseMove(int, long, const QPoint&, unsigned) { return 0; }
void CUGCellType::OnHook19(long, long, long) {}
void CUGCellType::OnPopupClosed(int, long, int) {}

void CUGCellType::OnDraw(QPainter* dc, const QRect& rect, int col, long row, CUGCell* cell,
                         int selected, int current) {
    const QRect content = DrawBackground(dc, rect, col, row, cell, selected, current);
    DrawCellText(dc, content, col, row, cell, selected, current);
}

QRect CUGCellType::DrawBackground(QPainter* dc, const QRect& rect, int col, long row, CUGCell* cell,
                                  int selected, int current) {
    const bool heading = IsHeading(col, row);
    const QColor highlight = UGToQColor(cell->GetHBackColor());
    QColor back = UGToQColor(cell->GetBackColor());
    if (selected && cell->IsPropertySet(UGCELL_HBACKCOLOR_SET))
        back = highlight;
    else if (selected)
        back = UGBlend(back, highlight, 0.22);
    else if (heading && current)
        back = UGBlend(back, highlight, 0.16);
    dc->fillRect(rect, back);

    const short border = cell->GetBorder();
    if (border & (UG_BDR_LTHIN | UG_BDR_TTHIN | UG_BDR_RTHIN | UG_BDR_BTHIN)) {
        dc->setPen(m_ctrl->GetPen(cell->GetBorderColor()));
        if (border & UG_BDR_LTHIN) dc->drawLine(rect.topLeft(), rect.bottomLeft());
        if (border & UG_BDR_TTHIN) dc->drawLine(rect.topLeft(), rect.topRight());
        if (border & UG_BDR_RTHIN) dc->drawLine(rect.topRight(), rect.bottomRight());
        if (border & UG_BDR_BTHIN) dc->drawLine(rect.bottomLeft(), rect.bottomRight());
    }
    const QColor shadow = UGBlend(back, UGToQColor(GetSysColor(COLOR_BTNSHADOW)), 0.55);
    if (border & UG_BDR_RAISED) {
        // A flat heading: one separator line right and below, and an accent under the heading of
        // the current column (beside that of the current row).
        dc->fillRect(QRect(rect.right(), rect.top(), 1, rect.height()), shadow);
        dc->fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), shadow);
        if (heading && current && row < 0)
            dc->fillRect(QRect(rect.left(), rect.bottom() - 1, rect.width(), 2), highlight);
        else if (heading && current)
            dc->fillRect(QRect(rect.right() - 1, rect.top(), 2, rect.height()), highlight);
        return rect.adjusted(0, 0, -1, -1);
    }
    if (border & UG_BDR_RECESSED) {
        dc->fillRect(QRect(rect.left(), rect.top(), rect.width(), 1), shadow);
        dc->fillRect(QRect(rect.left(), rect.top(), 1, rect.height()), shadow);
        return rect.adjusted(1, 1, 0, 0);
    }
    return rect;
}

void CUGCellType::DrawCellText(QPainter* dc, const QRect& rect, int, long, CUGCell* cell,
                               int selected, int) {
    QRect area = rect.adjusted(kIndent, 0, -kIndent, 0);
    if (const QPixmap* bitmap = m_ctrl->GetBitmap(cell->GetBitmap())) {
        const int top = rect.top() + (rect.height() - bitmap->height()) / 2;
        dc->drawPixmap(area.left(), top, *bitmap);
        area.setLeft(area.left() + bitmap->width() + kIndent);
    }
    const wchar_t* text = cell->GetText();
    if (!text || !*text || area.width() <= 0) return;

    const short alignment = cell->GetAlignment();
    int flags = Qt::TextSingleLine;
    if (alignment & UG_ALIGNCENTER)
        flags |= Qt::AlignHCenter;
    else if (alignment & UG_ALIGNRIGHT)
        flags |= Qt::AlignRight;
    else
        flags |= Qt::AlignLeft;
    if (alignment & UG_ALIGNTOP)
        flags |= Qt::AlignTop;
    else if (alignment & UG_ALIGNBOTTOM)
        flags |= Qt::AlignBottom;
    else
        flags |= Qt::AlignVCenter;

    const bool ownHighlight = selected && cell->IsPropertySet(UGCELL_HBACKCOLOR_SET);
    dc->setPen(UGToQColor(ownHighlight ? cell->GetHTextColor() : cell->GetTextColor()));
    dc->setFont(m_ctrl->GetFont(cell->GetFont()));
    dc->drawText(area, flags, QString::fromWCharArray(text));
}

void CUGCellType::GetBestSize(QPainter* dc, QSize* size, CUGCell* cell) {
    const wchar_t* text = cell->GetText();
    const QFontMetrics metrics(m_ctrl->GetFont(cell->GetFont()), dc ? dc->device() : nullptr);
    const QString string = text ? QString::fromWCharArray(text) : QString();
    *size = QSize(metrics.horizontalAdvance(string) + 2 * kIndent + 1, metrics.height() + 4);
}

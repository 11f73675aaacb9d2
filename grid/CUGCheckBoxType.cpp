// The check-box cell type.
#include "grid/CUGCheckBoxType.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "grid/CUGCell.h"
#include "grid/CUGCtrl.h"
#include "grid/UGKeys.h"
#include "grid/UGPalette.h"
#include "grid/UGSysColor.h"

namespace {

constexpr UGID kCheckBoxId{{0x43, 0x68, 0x65, 0x63, 0x6b, 0x42, 0x6f, 0x78, 0x54, 0x79, 0x70, 0x65,
                            0x00, 0x00, 0x00, 0x02}};
constexpr int kHitMargin = 3;

}  // namespace

const wchar_t* CUGCheckBoxType::GetName() { return L"Standard CheckBox Type"; }
const UGID* CUGCheckBoxType::GetTypeId() { return &kCheckBoxId; }

QRect CUGCheckBoxType::BoxRect(const QRect& rect, const CUGCell& cell) const {
    const int size = std::max(6, std::min(14, rect.height() - 6));
    const short alignment = cell.GetAlignment();
    int left = rect.left() + 4;
    if (alignment & UG_ALIGNCENTER)
        left = rect.left() + (rect.width() - size) / 2;
    else if (alignment & UG_ALIGNRIGHT)
        left = rect.right() - 4 - size + 1;
    return QRect(left, rect.top() + (rect.height() - size) / 2, size, size);
}

int CUGCheckBoxType::OnLClicked(int col, long row, int updn, const QRect& rect, const QPoint& point) {
    if (!updn) return 0;
    CUGCell cell;
    m_ctrl->GetCellIndirect(col, row, &cell);
    if (!BoxRect(rect, cell).adjusted(-kHitMargin, -kHitMargin, kHitMargin, kHitMargin).contains(point))
        return 0;
    return Toggle(col, row);
}

int CUGCheckBoxType::OnDClicked(int col, long row, const QRect& rect, const QPoint& point) {
    return OnLClicked(col, row, 1, rect, point);
}

int CUGCheckBoxType::OnCharDown(int col, long row, int* vcKey) {
    if (*vcKey != VK_SPACE) return 0;
    return Toggle(col, row);
}

int CUGCheckBoxType::Toggle(int col, long row) {
    CUGCell display;
    m_ctrl->GetCellIndirect(col, row, &display);
    if (display.GetReadOnly()) return 0;
    const bool wasChecked = display.GetBool();
    CUGCell cell;
    m_ctrl->GetCell(col, row, &cell);
    cell.SetNumber(wasChecked ? 0.0 : 1.0);
    m_ctrl->SetCell(col, row, &cell);
    m_ctrl->RedrawCell(col, row);
    m_ctrl->OnCellTypeNotify(m_ID, col, row, UGCT_CHECKBOXSET, wasChecked ? 0 : 1);
    return 1;
}

void CUGCheckBoxType::OnDraw(QPainter* dc, const QRect& rect, int col, long row, CUGCell* cell,
                             int selected, int current) {
    const QRect content = DrawBackground(dc, rect, col, row, cell, selected, current);
    const QRectF box = QRectF(BoxRect(content, *cell)).adjusted(0.5, 0.5, -0.5, -0.5);
    const bool readOnly = cell->GetReadOnly();
    const QColor accent = UGToQColor(readOnly ? GetSysColor(COLOR_BTNSHADOW) : GetSysColor(COLOR_HIGHLIGHT));
    dc->save();
    dc->setRenderHint(QPainter::Antialiasing);
    if (cell->GetBool()) {
        dc->setPen(QPen(accent, 1));
        dc->setBrush(accent);
        dc->drawRoundedRect(box, 3, 3);
        QPainterPath tick;
        tick.moveTo(box.left() + box.width() * 0.24, box.top() + box.height() * 0.52);
        tick.lineTo(box.left() + box.width() * 0.43, box.top() + box.height() * 0.72);
        tick.lineTo(box.left() + box.width() * 0.78, box.top() + box.height() * 0.30);
        dc->setPen(QPen(UGToQColor(GetSysColor(COLOR_HIGHLIGHTTEXT)), 1.8, Qt::SolidLine,
                        Qt::RoundCap, Qt::RoundJoin));
        dc->setBrush(Qt::NoBrush);
        dc->drawPath(tick);
    } else {
        dc->setPen(QPen(UGToQColor(GetSysColor(COLOR_BTNSHADOW)), 1));
        dc->setBrush(UGToQColor(GetSysColor(COLOR_WINDOW)));
        dc->drawRoundedRect(box, 3, 3);
    }
    dc->restore();
}

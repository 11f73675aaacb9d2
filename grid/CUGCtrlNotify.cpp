// The grid control: the defaults of its notifications.
#include <QPainter>
#include <cwchar>

#include "grid/CUGCtrl.h"
#include "grid/CUGEdit.h"
#include "grid/UGDraw.h"
#include "grid/UGEditFilter.h"
#include "grid/UGPalette.h"
#include "grid/UGSysColor.h"

void CUGCtrl::OnSectionSetFocus(int) {}
void CUGCtrl::OnGridSetup() {}
void CUGCtrl::OnSheetSetup(int) {}
int CUGCtrl::OnCanMoveCell(int, long, int, long) { return 1; }
int CUGCtrl::OnCanScrollView(int, int, long, long) { return 1; }
void CUGCtrl::OnHitBottom(long, long, long) {}
void CUGCtrl::OnHook7(int, int) {}
int CUGCtrl::OnCanSizeCol(int) { return 1; }
void CUGCtrl::OnColSizing(int, int*) {}
void CUGCtrl::OnColSized(int, int*) {}
int CUGCtrl::OnCanSizeRow(long) { return 1; }
void CUGCtrl::OnRowSizing(long, int*) {}
void CUGCtrl::OnRowSized(long, int*) {}
int CUGCtrl::OnCanSizeTopHdg() { return 1; }
int CUGCtrl::OnCanSizeSideHdg() { return 1; }
int CUGCtrl::OnTopHdgSizing(int*) { return 1; }
int CUGCtrl::OnSideHdgSizing(int*) { return 1; }
int CUGCtrl::OnTopHdgSized(int*) { return 1; }
int CUGCtrl::OnSideHdgSized(int*) { return 1; }
void CUGCtrl::OnColChange(int, int) {}
void CUGCtrl::OnRowChange(long, long) {}
void CUGCtrl::OnCellChange(int, int, long, long) {}
void CUGCtrl::OnLeftColChange(int, int) {}
void CUGCtrl::OnTopRowChange(long, long) {}
void CUGCtrl::OnCellLeftClick(int, long, int, const QRect&, const QPoint&, int) {}
void CUGCtrl::OnCellRightClick(int, long, int, const QRect&, const QPoint&, int) {}
void CUGCtrl::OnCellDoubleClick(int, long, const QRect&, const QPoint&, int) {}
void CUGCtrl::OnCellMouseMove(int, long, const QPoint&, unsigned, int) {}
void CUGCtrl::OnTopHdgLeftClick(int, long, int, const QRect&, const QPoint&, int) {}
void CUGCtrl::OnTopHdgRightClick(int, long, int, const QRect&, const QPoint&, int) {}
void CUGCtrl::OnTopHdgDoubleClick(int, long, const QRect&, const QPoint&, int) {}
void CUGCtrl::OnSideHdgLeftClick(int, long, int, const QRect&, const QPoint&, int) {}
void CUGCtrl::OnSideHdgRightClick(int, long, int, const QRect&, const QPoint&, int) {}
void CUGCtrl::OnSideHdgDoubleClick(int, long, const QRect&, const QPoint&, int) {}
void CUGCtrl::OnCornerLeftClick(int, const QRect&, const QPoint&, int) {}
void CUGCtrl::OnCornerRightClick(int, const QRect&, const QPoint&, int) {}
void CUGCtrl::OnCornerDoubleClick(const QRect&, const QPoint&, int) {}
void CUGCtrl::OnGridKeyDown(int*, int) {}
void CUGCtrl::OnGridCharDown(int*, int) {}
void CUGCtrl::OnHook40(int, int, int) {}
void CUGCtrl::OnSetCell(int, long, CUGCell*) {}
void CUGCtrl::OnHook42(int, int, int) {}
int CUGCtrl::OnCellTypeNotify(long, int, long, long, long) { return 1; }
int CUGCtrl::OnEditStart(int, long, CUGEdit**) { return 1; }

int CUGCtrl::OnEditKeystroke(int col, long, CUGEdit* edit, int* vcKey) {
    return UGEditKeystrokeFilter(col, edit->text().toStdWString(), *vcKey);
}

int CUGCtrl::OnEditFinish(int, long, CUGEdit*, const wchar_t*, int) { return 1; }
int CUGCtrl::OnEditContinue(int, long, int*, long*) { return 1; }
void CUGCtrl::OnMenuCommand(int, long, int, int) {}
int CUGCtrl::OnMenuStart(int, long, int) { return 1; }

int CUGCtrl::OnCellTip(int col, long row, int, std::wstring* string) {
    wchar_t buffer[64];
    std::swprintf(buffer, 64, L"Col:%d Row:%ld", col, row);
    string->assign(buffer);
    return 1;
}

int CUGCtrl::OnHook51(int, int) { return 1; }
int CUGCtrl::OnHook52(int, int) { return 1; }
int CUGCtrl::OnDragEnter(const QMimeData*) { return 0; }
int CUGCtrl::OnDragOver(const QMimeData*, int, long) { return 0; }
int CUGCtrl::OnDragDrop(const QMimeData*, int, long) { return 0; }

int CUGCtrl::OnSortCompare(const CUGCell* cell1, const CUGCell* cell2, int flags) {
    return UGDefaultSortCompare(cell1, cell2, flags);
}

void CUGCtrl::OnPaintSetup(QPainter*, int, int) {}
void CUGCtrl::OnAdjustComponentSizes(QRect*, QRect*, QRect*, QRect*, QRect*, QRect*, QRect*) {}
void CUGCtrl::OnTabSelected(long) {}

COLORREF CUGCtrl::OnQueryBackColor(int section) {
    return GetSysColor(section == UG_GRID ? COLOR_WINDOW : COLOR_BTNFACE);
}

void CUGCtrl::OnDrawFocusRect(QPainter* dc, QRect* rect) {
    rect->adjust(0, 0, -1, -1);
    UGDrawFrame(dc, *rect, UGToQColor(GetSysColor(COLOR_HIGHLIGHT)), 2);
}

void CUGCtrl::OnSectionKillFocus(int) {}
int CUGCtrl::OnTopHdgPress(int) { return 1; }
int CUGCtrl::OnTopHdgRelease(int, int) { return 1; }
void CUGCtrl::OnTabsSizing(int, int) {}

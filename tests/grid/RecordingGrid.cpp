// The recording grid of the widget tests.
#include "RecordingGrid.h"

#include <QString>
#include <algorithm>

namespace {

std::string Text(const wchar_t* text) { return QString::fromWCharArray(text ? text : L"").toStdString(); }

}  // namespace

RecordingGrid::RecordingGrid(int cols, long rows) {
    CreateGrid(WS_VISIBLE, QRect(0, 0, 400, 300), nullptr, 100);
    SetSideHdgWidth(0);
    SetDefColWidth(100);
    SetNumberCols(cols);
    SetNumberRows(rows);
    Clear();
}

QPoint RecordingGrid::CellCentre(int col, long row) const { return GetCellRect(col, row).center(); }

QPoint RecordingGrid::ButtonPoint(int col, long row) const {
    const QRect rect = GetCellRect(col, row);
    return QPoint(rect.right() - 4, rect.center().y());
}

bool RecordingGrid::Logged(const std::string& entry) const {
    return std::find(log.begin(), log.end(), entry) != log.end();
}

int RecordingGrid::OnCanMoveCell(int oldcol, long oldrow, int newcol, long newrow) {
    log.push_back("CanMoveCell " + std::to_string(oldcol) + " " + std::to_string(oldrow) + " " +
                  std::to_string(newcol) + " " + std::to_string(newrow));
    return allowMove;
}

int RecordingGrid::OnCanScrollView(int oldcol, int newcol, long oldrow, long newrow) {
    log.push_back("CanScrollView " + std::to_string(oldcol) + " " + std::to_string(newcol) + " " +
                  std::to_string(oldrow) + " " + std::to_string(newrow));
    return allowScroll;
}

void RecordingGrid::OnHitBottom(long numRows, long rowsPastEnd, long rowsFound) {
    log.push_back("HitBottom " + std::to_string(numRows) + " " + std::to_string(rowsPastEnd) + " " +
                  std::to_string(rowsFound));
}

void RecordingGrid::OnColSizing(int col, int* width) {
    if (fixedWidth >= 0) *width = fixedWidth;
    log.push_back("ColSizing " + std::to_string(col));
}

void RecordingGrid::OnColSized(int col, int* width) {
    log.push_back("ColSized " + std::to_string(col) + " " + std::to_string(*width));
}

void RecordingGrid::OnColChange(int oldcol, int newcol) {
    log.push_back("ColChange " + std::to_string(oldcol) + " " + std::to_string(newcol));
}

void RecordingGrid::OnRowChange(long oldrow, long newrow) {
    log.push_back("RowChange " + std::to_string(oldrow) + " " + std::to_string(newrow));
}

void RecordingGrid::OnCellChange(int oldcol, int newcol, long oldrow, long newrow) {
    log.push_back("CellChange " + std::to_string(oldcol) + " " + std::to_string(newcol) + " " +
                  std::to_string(oldrow) + " " + std::to_string(newrow));
}

void RecordingGrid::OnTopRowChange(long oldrow, long newrow) {
    log.push_back("TopRowChange " + std::to_string(oldrow) + " " + std::to_string(newrow));
}

void RecordingGrid::OnCellLeftClick(int col, long row, int updn, const QRect&, const QPoint&,
                                    int processed) {
    log.push_back("CellLeftClick " + std::to_string(col) + " " + std::to_string(row) + " " +
                  std::to_string(updn) + " " + std::to_string(processed));
}

void RecordingGrid::OnTopHdgLeftClick(int col, long row, int updn, const QRect&, const QPoint&, int) {
    log.push_back("TopHdgLeftClick " + std::to_string(col) + " " + std::to_string(row) + " " +
                  std::to_string(updn));
}

void RecordingGrid::OnSetCell(int col, long row, CUGCell* cell) {
    log.push_back("SetCell " + std::to_string(col) + " " + std::to_string(row) + " " + Text(cell->GetText()));
}

int RecordingGrid::OnCellTypeNotify(long id, int col, long row, long msg, long param) {
    log.push_back("CellTypeNotify " + std::to_string(id) + " " + std::to_string(col) + " " +
                  std::to_string(row) + " " + std::to_string(msg) + " " + std::to_string(param));
    return allowTypeNotify;
}

int RecordingGrid::OnEditFinish(int col, long row, CUGEdit*, const wchar_t* string, int cancelFlag) {
    log.push_back("EditFinish " + std::to_string(col) + " " + std::to_string(row) + " " + Text(string) +
                  " " + std::to_string(cancelFlag));
    return allowEditFinish;
}

int RecordingGrid::OnEditContinue(int oldcol, long oldrow, int* newcol, long* newrow) {
    log.push_back("EditContinue " + std::to_string(oldcol) + " " + std::to_string(oldrow) + " " +
                  std::to_string(*newcol) + " " + std::to_string(*newrow));
    return 1;
}

void RecordingGrid::OnMenuCommand(int col, long row, int section, int item) {
    log.push_back("MenuCommand " + std::to_string(col) + " " + std::to_string(row) + " " +
                  std::to_string(section) + " " + std::to_string(item));
}

int RecordingGrid::OnSortCompare(const CUGCell* cell1, const CUGCell* cell2, int flags) {
    if (!cell1 || !cell2) log.push_back("SortCompare with a missing cell");
    return CUGCtrl::OnSortCompare(cell1, cell2, flags);
}

// The recording grid of the widget tests.
#include "RecordingGrid.h"

#include <QString>
#include <algorithm>

namespace {

std::string Text(const wchar_t* text) {
    return QString::fromWCharArray(text ? text : L"").toStdString();
}

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

void RecordingGrid::OnColSizing(int col, int* width) {
    if (fixedWidth >= 0) *width = fixedWidth;
    Log("ColSizing", col);
}

void RecordingGrid::OnSetCell(int col, long row, CUGCell* cell) {
    Log("SetCell", col, row, Text(cell->GetText()));
}

int RecordingGrid::OnEditFinish(int col, long row, CUGEdit*, const wchar_t* string,
                                int cancelFlag) {
    Log("EditFinish", col, row, Text(string), cancelFlag);
    return allowEditFinish;
}

int RecordingGrid::OnSortCompare(const CUGCell* cell1, const CUGCell* cell2, int flags) {
    if (!cell1 || !cell2) log.push_back("SortCompare with a missing cell");
    return CUGCtrl::OnSortCompare(cell1, cell2, flags);
}

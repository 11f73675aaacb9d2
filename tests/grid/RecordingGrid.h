// A grid for tests: records the notifications it receives and answers the may-I ones as told.
#pragma once

#include <string>
#include <vector>

#include "grid/CUGCtrl.h"
#include "grid/CUGGrid.h"

class RecordingGrid : public CUGCtrl {
public:
    // A visible 400 x 300 grid of `cols` columns of 100 pixels and `rows` rows of 20, no side heading.
    RecordingGrid(int cols, long rows);

    std::vector<std::string> log;
    int allowMove = 1;
    int allowScroll = 1;
    int allowEditFinish = 1;
    int allowTypeNotify = 1;
    int allowSizing = 1;
    int fixedWidth = -1;  // OnColSizing holds dragged columns at this width when not -1

    // The centre of a cell in cell-area coordinates, and of its drop button.
    QPoint CellCentre(int col, long row) const;
    QPoint ButtonPoint(int col, long row) const;
    void Clear() { log.clear(); }
    bool Logged(const std::string& entry) const;

    void OnGridSetup() override { log.push_back("GridSetup"); }
    void OnSheetSetup(int sheet) override { log.push_back("SheetSetup " + std::to_string(sheet)); }
    int OnCanMoveCell(int oldcol, long oldrow, int newcol, long newrow) override;
    int OnCanScrollView(int oldcol, int newcol, long oldrow, long newrow) override;
    void OnHitBottom(long numRows, long rowsPastEnd, long rowsFound) override;
    int OnCanSizeCol(int) override { return allowSizing; }
    void OnColSizing(int col, int* width) override;
    void OnColSized(int col, int* width) override;
    void OnColChange(int oldcol, int newcol) override;
    void OnRowChange(long oldrow, long newrow) override;
    void OnCellChange(int oldcol, int newcol, long oldrow, long newrow) override;
    void OnTopRowChange(long oldrow, long newrow) override;
    void OnCellLeftClick(int col, long row, int updn, const QRect& rect, const QPoint& point,
                         int processed) override;
    void OnTopHdgLeftClick(int col, long row, int updn, const QRect& rect, const QPoint& point,
                           int processed) override;
    void OnSetCell(int col, long row, CUGCell* cell) override;
    int OnCellTypeNotify(long id, int col, long row, long msg, long param) override;
    int OnEditFinish(int col, long row, CUGEdit* edit, const wchar_t* string, int cancelFlag) override;
    int OnEditContinue(int oldcol, long oldrow, int* newcol, long* newrow) override;
    void OnMenuCommand(int col, long row, int section, int item) override;
    int OnSortCompare(const CUGCell* cell1, const CUGCell* cell2, int flags) override;
};

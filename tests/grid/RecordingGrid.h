// A grid for tests: records the notifications it receives and answers the may-I ones as told.
#pragma once

#include <string>
#include <vector>

#include "grid/CUGCtrl.h"
#include "grid/CUGGrid.h"

class RecordingGrid : public CUGCtrl {
public:
    // A visible 400 x 300 grid of `cols` columns of 100 pixels and `rows` rows of 20, no side
    // heading.
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

    void OnGridSetup() override { Log("GridSetup"); }
    void OnSheetSetup(int sheet) override { Log("SheetSetup", sheet); }
    int OnCanMoveCell(int oldcol, long oldrow, int newcol, long newrow) override {
        Log("CanMoveCell", oldcol, oldrow, newcol, newrow);
        return allowMove;
    }
    int OnCanScrollView(int oldcol, int newcol, long oldrow, long newrow) override {
        Log("CanScrollView", oldcol, newcol, oldrow, newrow);
        return allowScroll;
    }
    int OnCanSizeCol(int) override { return allowSizing; }
    void OnColSizing(int col, int* width) override;
    void OnColSized(int col, int* width) override { Log("ColSized", col, *width); }
    void OnColChange(int oldcol, int newcol) override { Log("ColChange", oldcol, newcol); }
    void OnRowChange(long oldrow, long newrow) override { Log("RowChange", oldrow, newrow); }
    void OnCellChange(int oldcol, int newcol, long oldrow, long newrow) override {
        Log("CellChange", oldcol, newcol, oldrow, newrow);
    }
    void OnTopRowChange(long oldrow, long newrow) override { Log("TopRowChange", oldrow, newrow); }
    void OnCellLeftClick(int col, long row, int updn, const QRect&, const QPoint&,
                         int processed) override {
        Log("CellLeftClick", col, row, updn, processed);
    }
    void OnTopHdgLeftClick(int col, long row, int updn, const QRect&, const QPoint&, int) override {
        Log("TopHdgLeftClick", col, row, updn);
    }
    void OnSetCell(int col, long row, CUGCell* cell) override;
    int OnCellTypeNotify(long id, int col, long row, long msg, long param) override {
        Log("CellTypeNotify", id, col, row, msg, param);
        return allowTypeNotify;
    }
    int OnEditFinish(int col, long row, CUGEdit* edit, const wchar_t* string,
                     int cancelFlag) override;
    int OnEditContinue(int oldcol, long oldrow, int* newcol, long* newrow) override {
        Log("EditContinue", oldcol, oldrow, *newcol, *newrow);
        return 1;
    }
    void OnMenuCommand(int col, long row, int section, int item) override {
        Log("MenuCommand", col, row, section, item);
    }
    int OnSortCompare(const CUGCell* cell1, const CUGCell* cell2, int flags) override;

private:
    // Logs "NAME ARG ARG ...", numbers written in decimal.
    template <typename... Args>
    void Log(const std::string& name, const Args&... args) {
        std::string entry = name;
        ((entry += " " + Word(args)), ...);
        log.push_back(entry);
    }
    static std::string Word(long number) { return std::to_string(number); }
    static std::string Word(const std::string& text) { return text; }
};

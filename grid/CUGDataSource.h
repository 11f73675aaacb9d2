// The interface through which the grid stores and reads its cells by column and row. The base
// supports nothing: every query answers -1 (UG_NA) and every may-I question 1 (allow).
#pragma once

#include <string_view>

class CUGCell;
class CUGSortCompare;

// FindFirst/FindNext flags.
inline constexpr int UG_FIND_PARTIAL = 1;    // part of the cell text may match
inline constexpr int UG_FIND_CASEINSENSITIVE = 2;
inline constexpr int UG_FIND_UP = 4;         // backwards
inline constexpr int UG_FIND_ALLCOLUMNS = 8;  // along rows, column by column

class CUGDataSource {
public:
    virtual ~CUGDataSource() = default;

    virtual int AppendRow();
    virtual int InsertRow(long row);
    virtual int AppendCol();
    virtual int InsertCol(int col);
    virtual int DeleteRow(long row);
    virtual int DeleteCol(int col);
    virtual int DeleteCell(int col, long row);
    virtual int Empty();
    // 0 and the cell copied into `cell`; 1, with `cell` untouched, for a cell never written.
    virtual int GetCell(int col, long row, CUGCell* cell);
    virtual int SetCell(int col, long row, const CUGCell* cell);
    virtual int FindFirst(std::wstring_view text, int* col, long* row, long flags);
    virtual int FindNext(std::wstring_view text, int* col, long* row, long flags);
    virtual int SortBy(const int* cols, int count, int flags);
    virtual int SortBy(int col, int flags);

    // Asked when a move wants a row at or past the number of rows; may report in `rowsFound` how
    // many rows it could add.
    virtual int OnHitBottom(long numRows, long rowsPastEnd, long* rowsFound);
    virtual void OnRowChange(long oldRow, long newRow);
    virtual void OnColChange(int oldCol, int newCol);
    virtual int OnCanMove(int oldCol, long oldRow, int newCol, long newRow);
    // Asked after an edit was stored, before the control's OnEditContinue.
    virtual int OnCanContinueEdit(int col, long row, int* nextCol, long* nextRow);

    // The owner whose comparison a sort uses; without one the base comparison applies.
    void SetSortCompare(CUGSortCompare* owner) { m_sortCompare = owner; }

protected:
    int Compare(const CUGCell* cell1, const CUGCell* cell2, int flags) const;

private:
    CUGSortCompare* m_sortCompare = nullptr;
};

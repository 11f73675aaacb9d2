// The in-memory data source that every sheet of the grid creates for itself. Cells are stored
// sparsely: a row exists once a cell at or after it was written, and within a row a slot exists
// up to the last column written. Rows are kept in one array, the slots of a row in another, so a
// cell is reached in constant time and a sort moves whole rows.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "grid/CUGCell.h"
#include "grid/CUGDataSource.h"

class CUGMem : public CUGDataSource {
public:
    int AppendRow() override;  // 0: rows come into being when written
    int InsertRow(long row) override;
    int AppendCol() override;  // 0
    int InsertCol(int col) override;
    int DeleteRow(long row) override;
    int DeleteCol(int col) override;
    int DeleteCell(int col, long row) override;
    int Empty() override;
    int GetCell(int col, long row, CUGCell* cell) override;
    int SetCell(int col, long row, const CUGCell* cell) override;
    int FindFirst(std::wstring_view text, int* col, long* row, long flags) override;
    int FindNext(std::wstring_view text, int* col, long* row, long flags) override;
    // Stable: rows that compare equal keep their order, exactly as an adjacent-exchange sort leaves
    // them.
    int SortBy(const int* cols, int count, int flags) override;
    int SortBy(int col, int flags) override;

private:
    using Slot = std::optional<CUGCell>;
    struct Row {
        std::vector<Slot> cells;      // columns 0, 1, ...
        std::vector<Slot> sideCells;  // columns -1, -2, ... (the side heading)
    };

    Row* FindRow(long row);
    const CUGCell* FindCell(int col, long row);
    Slot& MakeSlot(int col, long row);
    bool Matches(const CUGCell* cell, std::wstring_view needle, long flags) const;
    int FindAlongRows(std::wstring_view needle, int* col, long* row, long flags);
    int FindDownColumn(std::wstring_view needle, int col, long* row, long flags);

    std::vector<Row> m_rows;         // rows 0, 1, ...
    std::vector<Row> m_headingRows;  // rows -1, -2, ... (the top heading)
    std::size_t m_widestRow = 0;      // slots of the widest row written so far
};

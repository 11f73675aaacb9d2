// The selection list of a sheet: blocks of cells added one at a time or a row at a time.
#pragma once

#include <vector>

class CUGMultiSelect final {
public:
    void AddBlock(int startCol, long startRow, int endCol, long endRow);
    void ClearAll() { m_blocks.clear(); }
    bool IsSelected(int col, long row) const;
    bool IsEmpty() const { return m_blocks.empty(); }

private:
    struct Block {
        int startCol;
        long startRow;
        int endCol;
        long endRow;
    };
    std::vector<Block> m_blocks;
};

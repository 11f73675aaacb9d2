// Blocks of selected cells.
#include "grid/CUGMultiSelect.h"

#include <algorithm>

void CUGMultiSelect::AddBlock(int startCol, long startRow, int endCol, long endRow) {
    m_blocks.push_back({std::min(startCol, endCol), std::min(startRow, endRow),
                        std::max(startCol, endCol), std::max(startRow, endRow)});
}

bool CUGMultiSelect::IsSelected(int col, long row) const {
    return std::any_of(m_blocks.begin(), m_blocks.end(), [&](const Block& b) {
        return col >= b.startCol && col <= b.endCol && row >= b.startRow && row <= b.endRow;
    });
}

// Sparse cell storage with insertion, deletion, find and a stable sort.
#include "grid/CUGMem.h"

#include <algorithm>
#include <string>

#include "grid/UGDefs.h"
#include "text/CaseRules.h"

namespace {

template <typename Vector>
void InsertAt(Vector& vector, std::size_t index) {
    if (index < vector.size()) vector.emplace(vector.begin() + static_cast<long>(index));
}

template <typename Vector>
void EraseAt(Vector& vector, std::size_t index) {
    if (index < vector.size()) vector.erase(vector.begin() + static_cast<long>(index));
}

// Index into the slots of one side: columns 0, 1, ... or -1, -2, ...
std::size_t SlotIndex(long index) {
    return static_cast<std::size_t>(index < 0 ? -index - 1 : index);
}

}  // namespace

int CUGMem::AppendRow() { return UG_SUCCESS; }
int CUGMem::AppendCol() { return UG_SUCCESS; }

int CUGMem::InsertRow(long row) {
    if (row < 0) return UG_ERROR;
    InsertAt(m_rows, static_cast<std::size_t>(row));
    return UG_SUCCESS;
}

int CUGMem::DeleteRow(long row) {
    if (row < 0) return UG_ERROR;
    EraseAt(m_rows, static_cast<std::size_t>(row));
    return UG_SUCCESS;
}

int CUGMem::InsertCol(int col) {
    if (col < 0) return UG_ERROR;
    for (auto* rows : {&m_rows, &m_headingRows})
        for (Row& r : *rows) InsertAt(r.cells, static_cast<std::size_t>(col));
    return UG_SUCCESS;
}

int CUGMem::DeleteCol(int col) {
    if (col < 0) return UG_ERROR;
    for (auto* rows : {&m_rows, &m_headingRows})
        for (Row& r : *rows) EraseAt(r.cells, static_cast<std::size_t>(col));
    return UG_SUCCESS;
}

int CUGMem::DeleteCell(int col, long row) {
    Row* r = FindRow(row);
    if (!r) return UG_SUCCESS;
    auto& slots = col < 0 ? r->sideCells : r->cells;
    if (SlotIndex(col) < slots.size()) slots[SlotIndex(col)].reset();
    return UG_SUCCESS;
}

int CUGMem::Empty() {
    m_rows.clear();
    m_headingRows.clear();
    return UG_SUCCESS;
}

CUGMem::Row* CUGMem::FindRow(long row) {
    auto& rows = row < 0 ? m_headingRows : m_rows;
    return SlotIndex(row) < rows.size() ? &rows[SlotIndex(row)] : nullptr;
}

const CUGCell* CUGMem::FindCell(int col, long row) {
    Row* r = FindRow(row);
    if (!r) return nullptr;
    const auto& slots = col < 0 ? r->sideCells : r->cells;
    const std::size_t index = SlotIndex(col);
    return (index < slots.size() && slots[index]) ? &*slots[index] : nullptr;
}

CUGMem::Slot& CUGMem::MakeSlot(int col, long row) {
    auto& rows = row < 0 ? m_headingRows : m_rows;
    if (SlotIndex(row) >= rows.size()) rows.resize(SlotIndex(row) + 1);
    Row& r = rows[SlotIndex(row)];
    auto& slots = col < 0 ? r.sideCells : r.cells;
    const std::size_t needed = SlotIndex(col) + 1;
    if (needed > slots.size()) {
        // Rows of a table tend to be as wide as each other: a new row gets the room of the widest
        // at once instead of growing by doubling, which would leave slots unused.
        if (col >= 0 && needed > slots.capacity()) slots.reserve(std::max(needed, m_widestRow));
        slots.resize(needed);
        if (col >= 0) m_widestRow = std::max(m_widestRow, needed);
    }
    return slots[SlotIndex(col)];
}

int CUGMem::GetCell(int col, long row, CUGCell* cell) {
    const CUGCell* stored = FindCell(col, row);
    if (!stored || !cell) return UG_ERROR;
    cell->CopyInfoFrom(*stored);
    return UG_SUCCESS;
}

int CUGMem::SetCell(int col, long row, const CUGCell* cell) {
    if (!cell) return UG_ERROR;
    Slot& slot = MakeSlot(col, row);
    if (slot)
        slot->CopyInfoFrom(*cell);
    else
        slot.emplace(*cell);
    return UG_SUCCESS;
}

bool CUGMem::Matches(const CUGCell* cell, std::wstring_view needle, long flags) const {
    const wchar_t* text = cell ? cell->GetText() : nullptr;
    if (!text) return false;
    const bool ignoreCase = flags & UG_FIND_CASEINSENSITIVE;
    if (flags & UG_FIND_PARTIAL) {
        const std::wstring haystack = ignoreCase ? MakeUpper(text) : std::wstring(text);
        return haystack.find(needle) != std::wstring::npos;
    }
    return ignoreCase ? CompareNoCase(text, needle) == 0 : needle == text;
}

int CUGMem::FindFirst(std::wstring_view text, int* col, long* row, long flags) {
    if (flags & UG_FIND_ALLCOLUMNS) {
        *col = -1;
        *row = 0;
    } else {
        *row = -1;
    }
    return FindNext(text, col, row, flags);
}

int CUGMem::FindNext(std::wstring_view text, int* col, long* row, long flags) {
    if (m_rows.empty() || !col || !row) return UG_ERROR;
    std::wstring needle(text);
    if ((flags & UG_FIND_CASEINSENSITIVE) && (flags & UG_FIND_PARTIAL)) needle = MakeUpper(needle);
    if (flags & UG_FIND_ALLCOLUMNS) return FindAlongRows(needle, col, row, flags);
    return FindDownColumn(needle, *col, row, flags);
}

int CUGMem::FindDownColumn(std::wstring_view needle, int col, long* row, long flags) {
    const long rows = static_cast<long>(m_rows.size());
    const long step = (flags & UG_FIND_UP) ? -1 : 1;
    long r = *row;
    for (long visited = 0; visited <= rows; ++visited) {
        r += step;
        if (r < 0 || r >= rows) r = step < 0 ? rows - 1 : 0;
        if (Matches(FindCell(col, r), needle, flags)) {
            *row = r;
            return UG_SUCCESS;
        }
    }
    return UG_ERROR;
}

int CUGMem::FindAlongRows(std::wstring_view needle, int* col, long* row, long flags) {
    const long rows = static_cast<long>(m_rows.size());
    const bool backwards = flags & UG_FIND_UP;
    auto width = [this](long r) { return static_cast<long>(m_rows[static_cast<std::size_t>(r)].cells.size()); };
    long r = *row;
    long c = *col;
    long rowsVisited = 0;  // the starting row is visited again last, after all the others
    for (;;) {
        c += backwards ? -1 : 1;
        const bool outside = r < 0 || r >= rows;
        if (!backwards && (outside || c >= width(r))) {
            r = (outside || r + 1 >= rows) ? 0 : r + 1;
            c = 0;
            if (++rowsVisited > rows) return UG_ERROR;
        } else if (backwards && (outside || c < 0)) {
            r = (outside || r - 1 < 0) ? rows - 1 : r - 1;
            c = width(r) - 1;
            if (++rowsVisited > rows) return UG_ERROR;
            if (c < 0) continue;
        }
        if (Matches(FindCell(static_cast<int>(c), r), needle, flags)) {
            *col = static_cast<int>(c);
            *row = r;
            return UG_SUCCESS;
        }
    }
}

int CUGMem::SortBy(const int* cols, int count, int flags) {
    if (m_rows.size() < 2 || !cols || count <= 0) return UG_SUCCESS;
    auto cellOf = [this](std::size_t row, int col) -> const CUGCell* {
        const std::size_t index = SlotIndex(col);
        const auto& slots = col < 0 ? m_rows[row].sideCells : m_rows[row].cells;
        return (index < slots.size() && slots[index]) ? &*slots[index] : nullptr;
    };
    // Rows are sorted as small keys holding the first sort column's cell, and moved into their
    // order at the end.
    struct Key {
        const CUGCell* first;
        std::size_t row;
    };
    std::vector<Key> keys(m_rows.size());
    for (std::size_t row = 0; row < keys.size(); ++row) keys[row] = {cellOf(row, cols[0]), row};
    // An exchange sort swaps an adjacent pair when the first sort column that does not compare
    // equal says the earlier row goes after the later one. The merge sort asks the same question,
    // always with the row that stands earlier as the first cell, and keeps equal rows in order.
    auto goesBefore = [&](const Key& later, const Key& earlier) {
        int result = Compare(earlier.first, later.first, flags);
        for (int k = 1; k < count && result == 0; ++k)
            result = Compare(cellOf(earlier.row, cols[k]), cellOf(later.row, cols[k]), flags);
        return result > 0;
    };
    std::stable_sort(keys.begin(), keys.end(), goesBefore);
    std::vector<Row> sorted;
    sorted.reserve(m_rows.size());
    for (const Key& key : keys) sorted.push_back(std::move(m_rows[key.row]));
    m_rows = std::move(sorted);
    return UG_SUCCESS;
}

int CUGMem::SortBy(int col, int flags) { return SortBy(&col, 1, flags); }

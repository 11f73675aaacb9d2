// How two cells compare when a data source sorts its rows: the owner of the source decides (the grid
// control, through its OnSortCompare notification), and the base rule below is its default.
#pragma once

class CUGCell;

// Sort flag: descending.
inline constexpr int UG_SORT_DESCENDING = 2;

class CUGSortCompare {
public:
    // Negative keeps cell1 before cell2, positive puts it after, zero asks the next sort column.
    // A missing cell is passed as null.
    virtual int OnSortCompare(const CUGCell* cell1, const CUGCell* cell2, int flags) = 0;

protected:
    ~CUGSortCompare() = default;
};

// The base order: nulls and cells without text first, then by the first cell's data type: numbers
// (types 2, 3, 5) by value, everything else by text, code unit by code unit.
int UGDefaultSortCompare(const CUGCell* cell1, const CUGCell* cell2, int flags);

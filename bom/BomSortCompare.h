// How the calculation grid orders two cells of a column when a heading is clicked.
#pragma once

#include <string_view>

struct BomSortCell {
    std::wstring_view text;
    bool numeric = false;  // the cell's data type is a number
};

// Negative keeps `a` before `b`, positive puts it after, for the direction given. Empty texts go
// last either way; columns 1, 2 and 4 (price, quantity, total) compare as numbers.
int EvaluateBomSort(const BomSortCell& a, const BomSortCell& b, int column, bool ascending);

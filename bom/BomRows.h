// The bill of materials as the calculation grid shows it: five texts a row and a closing summary row.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "bom/ResultString.h"

inline constexpr int kBomColumnCount = 5;
enum BomColumn { kNameColumn = 0, kPriceColumn = 1, kQuantityColumn = 2, kDescriptionColumn = 3, kTotalColumn = 4 };

// "Block name", "Item Price", "Quantity", "Description", "Total".
extern const std::array<const wchar_t*, kBomColumnCount> BomColumnTitles;
inline constexpr const wchar_t* kSummaryName = L"Summary:";

using BomRow = std::array<std::wstring, kBomColumnCount>;

std::wstring FormatMoney(double value);        // "%.2f"
std::wstring FormatQuantity(std::int32_t value);  // "%i"

// Whether the grid shows the row: every row, or only those with a count when only priced blocks are
// listed.
bool IsShown(const ResultString& row, bool listOnlyPricedBlocks);

// The cells of one grid row (`AddResultRow`); a summary row leaves price and quantity empty.
BomRow AddResultRow(const ResultString& row, bool summary);

struct DisplayedResults {
    std::vector<BomRow> rows;  // the grid's rows, the summary row last when there is any row
    ResultString summary;      // kept to be appended again after sorting
};

// What `FillFromResults` puts in the grid: rows in array order (without the unsold ones when only
// priced blocks are listed) and the summary row with the sum of their totals.
DisplayedResults FillFromResults(const std::vector<ResultString>& results, bool listOnlyPricedBlocks);

// Texts of the calculation grid's rows.
#include "bom/BomRows.h"

#include <charconv>

const std::array<const wchar_t*, kBomColumnCount> BomColumnTitles = {
    L"Block name", L"Item Price", L"Quantity", L"Description", L"Total"};

std::wstring FormatMoney(double value) {
    char buffer[400];  // the longest fixed form of a double, 2 decimals
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 2);
    return std::wstring(buffer, result.ptr);
}

std::wstring FormatQuantity(std::int32_t value) { return std::to_wstring(value); }

bool IsShown(const ResultString& row, bool listOnlyPricedBlocks) {
    return !listOnlyPricedBlocks || row.quantity != 0;
}

BomRow AddResultRow(const ResultString& row, bool summary) {
    BomRow cells;
    cells[kNameColumn] = row.name;
    if (!summary) {
        cells[kPriceColumn] = FormatMoney(row.price);
        cells[kQuantityColumn] = FormatQuantity(row.quantity);
    }
    cells[kDescriptionColumn] = row.description;
    cells[kTotalColumn] = FormatMoney(row.total);
    return cells;
}

DisplayedResults FillFromResults(const std::vector<ResultString>& results,
                                 bool listOnlyPricedBlocks) {
    DisplayedResults displayed;
    double sum = 0.0;
    for (const auto& row : results) {
        if (!IsShown(row, listOnlyPricedBlocks)) continue;
        displayed.rows.push_back(AddResultRow(row, false));
        sum += row.total;
    }
    displayed.summary = ResultString{kSummaryName, 0.0, 0, {}, sum};
    if (!displayed.rows.empty()) displayed.rows.push_back(AddResultRow(displayed.summary, true));
    return displayed;
}

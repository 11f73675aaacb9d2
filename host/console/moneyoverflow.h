// Money a double cannot hold: prices that read as infinite or as no number at all, and totals or a
// grand total that overflow. The module's figures stay what they are ("inf" in the report); these
// findings tell the user which line of the price list is to blame.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "pricelist/PriceListFile.h"

struct MoneyOverflow {
    const char* kind;                 // "price_overflow", "total_overflow", "grand_total_overflow"
    std::optional<std::size_t> line;  // of the price list; none for the grand total
    std::wstring name;                // the row's block name; empty for the grand total
    std::string message;
};

// The rows that count (the last of each name), with the quantities counted for each name by its
// key (lower-cased, then folded).
std::vector<MoneyOverflow> findMoneyOverflows(
    const std::vector<PriceListLine>& lines,
    const std::map<std::wstring, std::int64_t>& quantities);

// The key quantities are looked up by.
std::wstring moneyKeyOf(const std::wstring& name);

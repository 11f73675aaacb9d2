// Whether each price table of the working drawing still shows what its source counts to now, and
// the stale ones drawn again in place: the same block, its references where they stand.
#pragma once

#include <string>
#include <vector>

#include "bom/BomRows.h"
#include "bom/TableSource.h"

enum class TableState {
    Current,
    OutOfDate,
    ListMissing,    // its price list cannot be read
    NotCounted,     // the drawing could not count its references (a block it names is missing)
    SourceUnknown,  // no source recorded: drawn before tables kept it
};

struct PriceTableCheck {
    std::wstring name;
    AcDbObjectId block;
    TableState state = TableState::SourceUnknown;
    TableSource source;        // as recorded
    std::wstring priceList;    // the list counted against: the recorded one, or the one given
    std::string problem;       // why the list cannot be read
    std::vector<BomRow> rows;  // counted now, in the order the table shows them
    std::vector<std::wstring> changes;  // "chair 13 → 14": what differs from what the table shows
    bool listChanged = false;           // the list's bytes are not those the table was counted from
};

// Whether the references of a block count when a table is counted again: not those of the table
// itself nor of tables made after it (tables are numbered in the order they are made), which the
// drawing did not hold when the table was counted first.
bool IsCountedForTable(const std::wstring& block, const std::wstring& table);

// The tables are the blocks named as NextTableBlockName names them, in block table order. A list
// given is counted against instead of the recorded ones.
std::vector<PriceTableCheck> CheckPriceTables(const std::wstring& priceList = {});

// The table's rows as its attribute definitions hold them, in row order (the summary included).
std::vector<BomRow> ReadTableRows(const AcDbDatabase& database, AcDbObjectId block);

// What changed in an out-of-date table: "chair 13 → 14; door 450.00 → 470.00 (prices.prc
// changed)".
std::wstring DescribeTableChanges(const PriceTableCheck& check);
// "QTB0002 is out of date: " and its changes, or the line for a list that cannot be read or
// references that cannot be counted; empty for the others.
std::wstring DescribeTableCheck(const PriceTableCheck& check);

// Draws an out-of-date table again from the rows counted, in the block it had, and gives its
// references their new attributes; the source records the list counted against and the new rows.
// 1 when drawn, 0 after an alert.
int RefreshPriceTable(const PriceTableCheck& check);

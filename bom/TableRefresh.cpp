// Counting each price table's source again, naming what changed, and drawing it again in place.
#include "bom/TableRefresh.h"

#include <algorithm>
#include <climits>
#include <filesystem>
#include <map>

#include "bom/BomCalculation.h"
#include "bom/BomSortCompare.h"
#include "bom/PriceTable.h"
#include "text/Numbers.h"
#include "text/TextFile.h"

namespace {

// The column and row number a tag names ("QUANTITY12": 2 and 12); null for headings and others.
std::optional<std::pair<int, int>> CellOfTag(const std::wstring& tag) {
    for (int column = 0; column < kBomColumnCount; ++column) {
        const std::wstring_view prefix = kTableColumnTags[column];
        if (!tag.starts_with(prefix) || tag.size() == prefix.size()) continue;
        int row = 0;
        for (const wchar_t c : std::wstring_view(tag).substr(prefix.size())) {
            if (c < L'0' || c > L'9' || row > INT_MAX / 10 - 1) return std::nullopt;
            row = row * 10 + (c - L'0');
        }
        if (row > 0) return std::pair(column, row);
    }
    return std::nullopt;
}

// The grid's sort of a heading click: the summary row stays last, equal rows keep their order.
void SortRows(std::vector<BomRow>& rows, int column, bool ascending) {
    if (column < 0 || rows.size() < 2) return;
    const auto end = rows.back()[kNameColumn] == kSummaryName ? rows.end() - 1 : rows.end();
    std::stable_sort(rows.begin(), end, [&](const BomRow& a, const BomRow& b) {
        return EvaluateBomSort({b[static_cast<std::size_t>(column)]},
                               {a[static_cast<std::size_t>(column)]}, column, ascending) > 0;
    });
}

AcDbReferenceSelection SelectionOf(const AcDbDatabase& database, const TableSource& source) {
    AcDbReferenceSelection selection;
    switch (source.selection) {
        case TableSelection::ModelSpace:
            break;
        case TableSelection::Filtered:
            selection.window = source.window;
            selection.layers = source.layers;
            break;
        case TableSelection::Picked:
            selection.references = PickedReferences(database, source);
            break;
    }
    selection.nested = source.nested;
    selection.recordNames = source.recordNames;
    selection.arraysAsOne = source.arraysAsOne;
    selection.layouts = source.layouts;
    return selection;
}

// The rows the source counts to now, as the calculation shows them; null when the drawing cannot
// count them.
std::optional<std::vector<BomRow>> CountAgain(const AcDbDatabase& database,
                                              const std::wstring& table, const TableSource& source,
                                              const std::wstring& priceList) {
    BomCalculation calculation;
    calculation.SetListOnlyPricedBlocks(source.onlyPriced);
    if (!priceList.empty() && !calculation.LoadPriceList(priceList)) return std::nullopt;
    std::vector<AcDbBlockCount> counts;
    if (database.countBlockReferences(SelectionOf(database, source), counts) != Acad::eOk)
        return std::nullopt;
    calculation.BeginCounting();
    for (const AcDbBlockCount& count : counts) {
        if (source.countsTables ? !IsCountedForTable(count.name, table)
                                : IsPriceTableNamed(database, count.name))
            continue;
        calculation.CountBlock(count.name, static_cast<std::int32_t>(std::min<std::int64_t>(
                                               count.references, INT32_MAX)));
    }
    std::vector<BomRow> rows =
        FillFromResults(calculation.Results(), calculation.ListOnlyPricedBlocks()).rows;
    SortRows(rows, source.sortColumn, source.sortAscending);
    return rows;
}

std::wstring Quoted(const std::wstring& text) { return L"\"" + text + L"\""; }

// A row as a block that the list does not price shows it.
bool IsUnpriced(const BomRow& row, bool showPrices) {
    return row[kDescriptionColumn].empty() && (!showPrices || row[kPriceColumn] == L"0.00");
}

// What a reader of the table would see change, row by row: "chair 13 → 14".
std::vector<std::wstring> Changes(const std::vector<BomRow>& before,
                                  const std::vector<BomRow>& after, bool showPrices) {
    const std::vector<BomRow> old = ShownTableRows(before, showPrices);
    const std::vector<BomRow> now = ShownTableRows(after, showPrices);
    auto byName = [](const std::vector<BomRow>& rows) {
        std::map<std::wstring, const BomRow*> index;
        for (const BomRow& row : rows) index.try_emplace(row[kNameColumn], &row);
        return index;
    };
    const auto oldByName = byName(old);
    const auto nowByName = byName(now);
    std::vector<std::wstring> changes;
    auto change = [&](const std::wstring& name, const std::wstring& from, const std::wstring& to) {
        if (from != to) changes.push_back(name + L" " + from + L" \u2192 " + to);
    };
    for (const BomRow& row : now) {
        const std::wstring& name = row[kNameColumn];
        if (name == kSummaryName || nowByName.at(name) != &row) continue;
        const auto was = oldByName.find(name);
        if (was == oldByName.end()) {
            changes.push_back(name + L" added (" + row[kQuantityColumn] + L")");
            continue;
        }
        const BomRow& previous = *was->second;
        change(name, previous[kQuantityColumn], row[kQuantityColumn]);
        // A block whose line left the list keeps its row, at no price and without description.
        if (IsUnpriced(row, showPrices) && !IsUnpriced(previous, showPrices)) {
            changes.push_back(
                name +
                (showPrices ? L" " + previous[kPriceColumn] + L" \u2192 " + row[kPriceColumn] + L","
                            : std::wstring()) +
                L" no longer in the list");
            continue;
        }
        if (showPrices) change(name, previous[kPriceColumn], row[kPriceColumn]);
        if (previous[kDescriptionColumn] != row[kDescriptionColumn])
            change(name, Quoted(previous[kDescriptionColumn]), Quoted(row[kDescriptionColumn]));
    }
    for (const BomRow& row : old) {
        const std::wstring& name = row[kNameColumn];
        if (name != kSummaryName && !nowByName.contains(name))
            changes.push_back(name + L" removed");
    }
    if (changes.empty() && oldByName.contains(kSummaryName) && nowByName.contains(kSummaryName))
        change(kSummaryName, oldByName.at(kSummaryName)->at(kTotalColumn),
               nowByName.at(kSummaryName)->at(kTotalColumn));
    if (changes.empty()) changes.push_back(L"rows changed");
    return changes;
}

std::wstring FileName(const std::wstring& path) {
    return WidePath(std::filesystem::path(NativePath(path)).filename().string());
}

PriceTableCheck Check(const AcDbDatabase& database, AcDbObjectId block, std::wstring name,
                      const std::wstring& priceList) {
    PriceTableCheck check;
    check.name = std::move(name);
    check.block = block;
    const auto source = ReadTableSource(database, block);
    if (!source) return check;
    check.source = *source;
    check.priceList = priceList.empty() ? source->priceList : priceList;
    if (!check.priceList.empty()) {
        const auto hash = HashOfFile(check.priceList, check.problem);
        if (!hash) {
            check.state = TableState::ListMissing;
            return check;
        }
        check.listChanged = *hash != source->priceListHash;
    }
    auto rows = CountAgain(database, check.name, *source, check.priceList);
    if (!rows) {
        check.state = TableState::NotCounted;
        return check;
    }
    check.rows = std::move(*rows);
    if (DigestOfRows(check.rows, source->showPrices) == source->rowsDigest) {
        check.state = TableState::Current;
        return check;
    }
    check.state = TableState::OutOfDate;
    check.changes = Changes(ReadTableRows(database, block), check.rows, source->showPrices);
    return check;
}

}  // namespace

bool IsCountedForTable(const std::wstring& block, const std::wstring& table) {
    auto number = [](const std::wstring& name) { return WToI(std::wstring_view(name).substr(3)); };
    return !IsTableBlockName(block) || number(block) < number(table);
}

std::vector<PriceTableCheck> CheckPriceTables(const std::wstring& priceList) {
    std::vector<PriceTableCheck> checks;
    const AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    if (database == nullptr) return checks;
    for (const AcDbObjectId id : database->blockTableRecordIds()) {
        std::wstring name;
        if (database->getBlockTableRecordName(id, name) != Acad::eOk || !IsTableBlockName(name))
            continue;
        checks.push_back(Check(*database, id, std::move(name), priceList));
    }
    return checks;
}

std::vector<BomRow> ReadTableRows(const AcDbDatabase& database, AcDbObjectId block) {
    std::map<int, BomRow> rows;
    std::vector<AcDbObjectId> entities;
    database.getBlockEntityIds(block, entities);
    for (const AcDbObjectId id : entities) {
        std::wstring tag;
        std::wstring text;
        if (!TableCellOf(database, id, tag, text)) continue;
        if (const auto cell = CellOfTag(tag))
            rows[cell->second][static_cast<std::size_t>(cell->first)] = text;
    }
    std::vector<BomRow> ordered;
    for (auto& [number, row] : rows) ordered.push_back(std::move(row));
    return ordered;
}

std::wstring DescribeTableChanges(const PriceTableCheck& check) {
    std::wstring text;
    for (std::size_t i = 0; i < check.changes.size(); ++i)
        text += (i == 0 ? L"" : L"; ") + check.changes[i];
    if (check.listChanged) text += L" (" + FileName(check.priceList) + L" changed)";
    return text;
}

std::wstring DescribeTableCheck(const PriceTableCheck& check) {
    switch (check.state) {
        case TableState::OutOfDate:
            return check.name + L" is out of date: " + DescribeTableChanges(check);
        case TableState::ListMissing:
            return check.name + L": its price list " + check.priceList + L" cannot be read: " +
                   WidePath(check.problem);
        case TableState::NotCounted:
            return check.name + L": its references cannot be counted again";
        case TableState::Current:
        case TableState::SourceUnknown:
            break;
    }
    return {};
}

int RefreshPriceTable(const PriceTableCheck& check) {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    if (database == nullptr || check.state != TableState::OutOfDate) return 0;
    EnsureTableTextStyle();
    std::vector<AcDbObjectId> entities;
    database->getBlockEntityIds(check.block, entities);
    for (const AcDbObjectId id : entities) database->eraseEntity(id);
    PriceTableExtent extent;
    if (!DrawPriceTable(check.rows, check.source.showPrices, check.name.c_str(), kTableTextStyle,
                        check.source.scale, extent,
                        check.source.textForm ? TableForm::Texts : TableForm::Attributes))
        return 0;
    TableSource source = check.source;
    source.priceList = check.priceList;
    RecordTableSource(check.name, source, check.rows);
    std::vector<AcDbObjectId> references;
    database->getBlockReferenceIds(check.block, references);
    for (const AcDbObjectId id : references) database->syncBlockReferenceAttributes(id);
    return 1;
}

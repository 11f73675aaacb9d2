// The bill of materials being computed: the price list's rows and the references counted into them.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "bom/ResultString.h"
#include "bom/TableSource.h"
#include "host/api/adscodes.h"
#include "text/TextFile.h"

class BomCalculation {
public:
    // Replaces the rows by the price list's lines (quantity 0). False, after the alert, when the
    // file cannot be opened; nothing changes then.
    bool LoadPriceList(const std::wstring& path);
    // Asks for a selection of block references and counts them by lower-cased block name; blocks
    // without a row get one with price 0 unless only priced blocks are listed. False when the user
    // made no selection or an object could not be opened (after the alert).
    bool CountSelection();
    // The selection prompt, filtered to INSERT entities; true only on RTNORM.
    bool SelectBlockReferences(ads_name& selectionSet);

    // Counting for hosts that select and name the references themselves (several drawings at
    // once, a dynamic block under its own name, references nested in blocks): the rows, the name
    // index and the rules of CountSelection, without the prompt. BeginCounting builds the index
    // as CountSelection does first; CountBlock then counts `references` (> 0) references of the
    // block `name` and answers the index of the row that took them, or -1 when the block is left
    // out (not priced while only priced blocks are listed).
    void BeginCounting();
    int CountBlock(const std::wstring& name, std::int32_t references);

    const std::vector<ResultString>& Results() const { return m_results; }
    // What the last CountSelection counted, as a price table records it: the references picked,
    // or the whole space when the host selects all of it; counted under their records' names.
    // Null when more references were picked than a table records.
    std::optional<TableSource> CountedSource() const;
    // How the price list was encoded, for files written from these rows.
    const TextFormat& PriceListFormat() const { return m_priceListFormat; }

    bool ListOnlyPricedBlocks() const { return m_listOnlyPricedBlocks; }
    void SetListOnlyPricedBlocks(bool only) { m_listOnlyPricedBlocks = only; }

private:
    void RebuildNameIndex();

    std::vector<ResultString> m_results;
    std::vector<AcDbObjectId> m_counted;  // the references of the last selection, in its order
    bool m_countedWholeSpace = false;
    std::unordered_map<std::wstring, std::size_t> m_nameIndex;  // by case-folded name
    TextFormat m_priceListFormat;
    bool m_listOnlyPricedBlocks = false;
};

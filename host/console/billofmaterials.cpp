// Counting tallies into the module's rows.
#include "host/console/billofmaterials.h"

#include <algorithm>
#include <climits>
#include <unordered_map>

#include "bom/ShownMoney.h"
#include "text/CaseRules.h"
#include "text/TextFile.h"

namespace {

// What the console keeps a row beside the module's figures.
struct RowNotes {
    std::vector<std::int64_t> quantities;
    std::vector<std::wstring> variants;
    bool unlinked = false;
};

void note(RowNotes& notes, std::size_t drawing, std::size_t drawingCount,
          const TalliedBlock& block) {
    notes.quantities.resize(drawingCount, 0);
    notes.quantities[drawing] += block.references;
    for (const auto& variant : block.variants) {
        if (std::find(notes.variants.begin(), notes.variants.end(), variant) ==
            notes.variants.end())
            notes.variants.push_back(variant);
    }
    notes.unlinked = notes.unlinked || block.unlinked;
}

}  // namespace

DxfResult<BillOfMaterials> countBillOfMaterials(BomCalculation& calculation,
                                                const std::vector<CountedDrawing>& drawings) {
    calculation.BeginCounting();
    std::unordered_map<std::wstring, std::int64_t> counted;  // by the module's key of the name
    std::unordered_map<int, RowNotes> notes;                 // by row
    for (std::size_t d = 0; d < drawings.size(); ++d) {
        for (const TalliedBlock& block : drawings[d].tally.blocks) {
            std::int64_t& sum = counted[FoldCase(MakeLower(block.name))];
            if (block.references > INT32_MAX - sum)
                return DxfError(drawings[d].path + ": more than 2147483647 references of \"" +
                                EncodeText(block.name, TextFormat{}) + "\" to count");
            sum += block.references;
            const int row =
                calculation.CountBlock(block.name, static_cast<std::int32_t>(block.references));
            if (row >= 0) note(notes[row], d, drawings.size(), block);
        }
    }

    BillOfMaterials bill;
    for (const auto& drawing : drawings) bill.drawings.push_back(drawing.path);
    const bool onlyPriced = calculation.ListOnlyPricedBlocks();
    bill.shown = FillFromResults(calculation.Results(), onlyPriced);
    const auto& results = calculation.Results();
    std::vector<std::wstring> totals;
    for (std::size_t i = 0, k = 0; i < results.size(); ++i) {
        if (!IsShown(results[i], onlyPriced)) continue;
        RowNotes& row = notes[static_cast<int>(i)];
        row.quantities.resize(drawings.size(), 0);
        bill.lines.push_back(BomLine{bill.shown.rows[k++], std::move(row.quantities),
                                     std::move(row.variants), row.unlinked});
        totals.push_back(bill.lines.back().cells[kTotalColumn]);
    }
    bill.total = SumShownMoney(totals);
    return bill;
}

// Counting tallies into the module's rows.
#include "host/console/billofmaterials.h"

#include <algorithm>
#include <climits>
#include <optional>
#include <unordered_map>

#include "bom/ShownMoney.h"
#include "text/CaseRules.h"
#include "text/TextFile.h"

namespace {

// What the console keeps a row beside the module's figures.
struct RowNotes {
    std::vector<std::int64_t> quantities;
    std::vector<std::int64_t> spaceQuantities;
    std::vector<std::wstring> variants;
    bool unlinked = false;
    bool fromArrays = false;
};

// Where a count lands: its drawing, and its space among the bill's spaces when there are any.
struct CountPlace {
    std::size_t drawing = 0;
    std::size_t drawingCount = 1;
    std::optional<std::size_t> space;
    std::size_t spaceCount = 0;
};

void note(RowNotes& notes, const CountPlace& place, const TalliedBlock& block) {
    notes.quantities.resize(place.drawingCount, 0);
    notes.quantities[place.drawing] += block.references;
    if (place.space) {
        notes.spaceQuantities.resize(place.spaceCount, 0);
        notes.spaceQuantities[*place.space] += block.references;
    }
    for (const auto& variant : block.variants) {
        if (std::find(notes.variants.begin(), notes.variants.end(), variant) ==
            notes.variants.end())
            notes.variants.push_back(variant);
    }
    notes.unlinked = notes.unlinked || block.unlinked;
    notes.fromArrays = notes.fromArrays || block.fromArrays;
}

}  // namespace

DxfResult<BillOfMaterials> countBillOfMaterials(BomCalculation& calculation,
                                                const std::vector<CountedDrawing>& drawings) {
    BillOfMaterials bill;
    for (std::size_t d = 0; d < drawings.size(); ++d) {
        bill.drawings.push_back(drawings[d].path);
        for (const SpaceTally& space : drawings[d].spaces) bill.spaces.push_back({d, space.name});
    }
    calculation.BeginCounting();
    std::unordered_map<std::wstring, std::int64_t> counted;  // by the module's key of the name
    std::unordered_map<int, RowNotes> notes;                 // by row
    auto count = [&](const CountPlace& place, const DrawingTally& tally) -> DxfStatus {
        for (const TalliedBlock& block : tally.blocks) {
            std::int64_t& sum = counted[FoldCase(MakeLower(block.name))];
            if (block.references > INT32_MAX - sum)
                return DxfError(drawings[place.drawing].path +
                                ": more than 2147483647 references of \"" +
                                EncodeText(block.name, TextFormat{}) + "\" to count");
            sum += block.references;
            const int row =
                calculation.CountBlock(block.name, static_cast<std::int32_t>(block.references));
            if (row >= 0) note(notes[row], place, block);
        }
        return {};
    };
    std::size_t space = 0;
    for (std::size_t d = 0; d < drawings.size(); ++d) {
        CountPlace place{d, drawings.size(), std::nullopt, bill.spaces.size()};
        DxfStatus status;
        if (drawings[d].spaces.empty()) {
            status = count(place, drawings[d].tally);
        } else {
            for (const SpaceTally& tally : drawings[d].spaces) {
                place.space = space++;
                if (status = count(place, tally.tally); !status.isOk()) break;
            }
        }
        if (!status.isOk()) return status.error();
    }

    const bool onlyPriced = calculation.ListOnlyPricedBlocks();
    bill.shown = FillFromResults(calculation.Results(), onlyPriced);
    const auto& results = calculation.Results();
    std::vector<std::wstring> totals;
    for (std::size_t i = 0, k = 0; i < results.size(); ++i) {
        if (!IsShown(results[i], onlyPriced)) continue;
        RowNotes& row = notes[static_cast<int>(i)];
        row.quantities.resize(drawings.size(), 0);
        row.spaceQuantities.resize(bill.spaces.size(), 0);
        bill.lines.push_back(BomLine{bill.shown.rows[k++], std::move(row.quantities),
                                     std::move(row.variants), row.unlinked, row.fromArrays,
                                     std::move(row.spaceQuantities)});
        totals.push_back(bill.lines.back().cells[kTotalColumn]);
    }
    bill.total = SumShownMoney(totals);
    return bill;
}

// Orders the calculation grid gets from its sort evaluation, under the grid's swapping sort.
#include <gtest/gtest.h>

#include "bom/BomRows.h"
#include "bom/BomSortCompare.h"

namespace {

// The grid's row sort: adjacent rows change places while the evaluation says the first goes after.
std::vector<std::wstring> Sorted(std::vector<std::wstring> cells, int column, bool ascending) {
    for (bool swapped = true; swapped;) {
        swapped = false;
        for (std::size_t i = 0; i + 1 < cells.size(); ++i) {
            if (EvaluateBomSort({cells[i]}, {cells[i + 1]}, column, ascending) > 0) {
                std::swap(cells[i], cells[i + 1]);
                swapped = true;
            }
        }
    }
    return cells;
}

using Cells = std::vector<std::wstring>;

TEST(BomSort, NumericColumnsCompareAsNumbers) {
    const Cells quantities{L"10", L"9", L"", L"100", L"9"};
    EXPECT_EQ(Sorted(quantities, kQuantityColumn, true), (Cells{L"9", L"9", L"10", L"100", L""}));
    EXPECT_EQ(Sorted(quantities, kQuantityColumn, false), (Cells{L"100", L"10", L"9", L"9", L""}));
    EXPECT_EQ(Sorted({L"2.50", L"12.00", L"0.00"}, kPriceColumn, true),
              (Cells{L"0.00", L"2.50", L"12.00"}));
    EXPECT_EQ(Sorted({L"2.50", L"12.00", L"0.00"}, kTotalColumn, false),
              (Cells{L"12.00", L"2.50", L"0.00"}));
}

TEST(BomSort, TextColumnsIgnoreCaseAndPutEmptyCellsLast) {
    const Cells names{L"door", L"", L"Chair", L"apple", L"CHAIR"};
    EXPECT_EQ(Sorted(names, kNameColumn, true), (Cells{L"apple", L"Chair", L"CHAIR", L"door", L""}));
    EXPECT_EQ(Sorted(names, kNameColumn, false), (Cells{L"door", L"Chair", L"CHAIR", L"apple", L""}));
    // Texts of numbers in a text column compare as texts.
    EXPECT_EQ(Sorted({L"10", L"9"}, kDescriptionColumn, true), (Cells{L"10", L"9"}));
}

TEST(BomSort, NumericCellsOfATextColumnCompareAsNumbers) {
    EXPECT_GT(EvaluateBomSort({L"10", true}, {L"9", true}, kDescriptionColumn, true), 0);
    EXPECT_LT(EvaluateBomSort({L"10", false}, {L"9", false}, kDescriptionColumn, true), 0);
    EXPECT_EQ(EvaluateBomSort({L"", true}, {L"", false}, kNameColumn, false), 0);
}

}  // namespace

// The sort evaluation of the calculation grid.
#include "bom/BomSortCompare.h"

#include "bom/BomRows.h"
#include "text/CaseRules.h"
#include "text/Numbers.h"

namespace {

int CompareNumbers(std::wstring_view first, std::wstring_view second) {
    const double a = WToF(first);
    const double b = WToF(second);
    if (a > b) return -1;
    if (b > a) return 1;
    return 0;
}

}  // namespace

int EvaluateBomSort(const BomSortCell& a, const BomSortCell& b, int column, bool ascending) {
    // One comparison serves both directions: ascending looks at the pair the other way round.
    const BomSortCell& first = ascending ? b : a;
    const BomSortCell& second = ascending ? a : b;
    if (a.text.empty() != b.text.empty()) return a.text.empty() ? 1 : -1;
    if (CompareNoCase(first.text, second.text) == 0) return 0;
    if (column == kPriceColumn || column == kQuantityColumn || column == kTotalColumn)
        return CompareNumbers(first.text, second.text);
    if (first.numeric && second.numeric) return CompareNumbers(first.text, second.text);
    return CompareNoCase(second.text, first.text);
}

// The base comparison of two cells for sorting.
#include "grid/CUGSortCompare.h"

#include <cwchar>
#include <utility>

#include "grid/CUGCell.h"

int UGDefaultSortCompare(const CUGCell* cell1, const CUGCell* cell2, int flags) {
    if (flags & UG_SORT_DESCENDING) std::swap(cell1, cell2);
    if (!cell1) return cell2 ? -1 : 0;
    if (!cell2) return 1;
    // Lengths, not the texts, answer "empty?": a sort should touch the cell, not its text too.
    if (cell1->GetTextLength() == 0) return cell2->GetTextLength() > 0 ? -1 : 0;
    switch (cell1->GetDataType()) {
        case UGCELLDATA_NUMBER:
        case UGCELLDATA_BOOL:
        case UGCELLDATA_CURRENCY: {
            const double a = cell1->GetNumber();
            const double b = cell2->GetNumber();
            return a < b ? -1 : (a > b ? 1 : 0);
        }
        default: {
            const wchar_t* text2 = cell2->GetText();
            const int result = std::wcscmp(cell1->GetText(), text2 ? text2 : L"");
            return result < 0 ? -1 : (result > 0 ? 1 : 0);
        }
    }
}

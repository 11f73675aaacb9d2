// Keystroke filter of the in-place editors.
#include "grid/UGEditFilter.h"

namespace {

constexpr int kBackspace = 8;

bool IsDigit(int c) { return c >= '0' && c <= '9'; }

}  // namespace

int UGEditKeystrokeFilter(int col, std::wstring_view currentText, int character) {
    if (col == 1) {
        const bool firstPoint = character == '.' && currentText.find(L'.') == std::wstring_view::npos;
        if (character != kBackspace && !IsDigit(character) && !firstPoint) return 0;
    } else if (col != 2) {
        return 1;
    }
    return character == '|' ? 0 : 1;
}

// The process-wide table of system colours, as the desktop keeps one per session.
#include "grid/UGSysColor.h"

#include <array>

namespace {

constexpr int kColorCount = 31;

std::array<COLORREF, kColorCount>& Table() {
    static std::array<COLORREF, kColorCount> table = [] {
        std::array<COLORREF, kColorCount> t{};
        t[COLOR_WINDOW] = RGB(255, 255, 255);
        t[COLOR_WINDOWTEXT] = RGB(0, 0, 0);
        t[COLOR_HIGHLIGHT] = RGB(0, 120, 215);
        t[COLOR_HIGHLIGHTTEXT] = RGB(255, 255, 255);
        t[COLOR_BTNFACE] = RGB(240, 240, 240);
        t[COLOR_BTNSHADOW] = RGB(160, 160, 160);
        t[COLOR_GRAYTEXT] = RGB(109, 109, 109);
        t[COLOR_BTNTEXT] = RGB(0, 0, 0);
        t[COLOR_BTNHIGHLIGHT] = RGB(255, 255, 255);
        t[COLOR_3DDKSHADOW] = RGB(105, 105, 105);
        t[COLOR_3DLIGHT] = RGB(227, 227, 227);
        t[COLOR_INFOBK] = RGB(255, 255, 225);
        return t;
    }();
    return table;
}

bool Known(int index) { return index >= 0 && index < kColorCount; }

}  // namespace

COLORREF GetSysColor(int index) { return Known(index) ? Table()[index] : RGB(0, 0, 0); }

void SetSysColor(int index, COLORREF color) {
    if (Known(index)) Table()[index] = color;
}

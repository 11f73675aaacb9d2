// Where the seven parts of the grid go in its client area, and which scroll bars it needs: pure
// arithmetic over the sheet's sizes, so it runs without a window.
#pragma once

#include "grid/CUGGridInfo.h"

// left, top, right and bottom; right and bottom lie just outside.
struct UGRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    bool operator==(const UGRect&) const = default;
};

struct UGLayout {
    UGRect grid;
    UGRect topHdg;
    UGRect sideHdg;
    UGRect cnrBtn;
    UGRect vScroll;
    UGRect hScroll;
    UGRect tab;
};

// The rectangles for a client area of width by height. A scroll bar the sheet does not need gets
// zero size for this pass only: the sheet's stored sizes are left as they were.
UGLayout UGComputeLayout(const CUGGridInfo& info, int width, int height);

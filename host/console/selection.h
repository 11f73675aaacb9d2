// The console's form of the user's selection: the references whose insertion point lies in a
// window, on one of some layers, or both.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/dxf/dxfdocument.h"

struct SelectionWindow {
    double x1 = 0.0;
    double y1 = 0.0;
    double x2 = 0.0;
    double y2 = 0.0;
};

struct SelectionFilter {
    std::optional<SelectionWindow> window;  // corners in any order; the edges belong to it
    std::vector<std::wstring> layers;       // compared without regard to case; empty: any layer
};

// Reads of the reference only what the filter asks about: its layer, its insertion point.
bool isSelected(const DxfDocument& document, AcDbObjectId reference,
                const SelectionFilter& filter);

// A selection of block references without a user: those whose insertion point lies in a window, on
// one of some layers, or both, as the console takes them and price tables record them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/dxf/dxfdocument.h"

using SelectionWindow = AcDbSelectionWindow;

struct SelectionFilter {
    std::optional<SelectionWindow> window;  // corners in any order; the edges belong to it
    std::vector<std::wstring> layers;       // compared without regard to case; empty: any layer
};

// Reads of the reference only what the filter asks about: its layer, its insertion point.
bool isSelected(const DxfDocument& document, AcDbObjectId reference, const SelectionFilter& filter);

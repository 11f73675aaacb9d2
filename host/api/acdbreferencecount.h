// What a host counts when asked how many references a selection holds of each block: hand-picked
// references, or those of model space (and on request the layouts) that a window and layers let
// through; with arrays, dynamic blocks and nested references as the console counts them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/api/acdbobjectid.h"

// Corners in any order; a reference belongs to it when its insertion point does, edges included.
struct AcDbSelectionWindow {
    double x1 = 0.0;
    double y1 = 0.0;
    double x2 = 0.0;
    double y2 = 0.0;
    friend bool operator==(const AcDbSelectionWindow&, const AcDbSelectionWindow&) = default;
};

struct AcDbReferenceSelection {
    // Hand-picked references; ids that are no reference (any longer) are not counted. Without
    // them, every reference of model space that the window and the layers let through.
    std::optional<std::vector<AcDbObjectId>> references;
    std::optional<AcDbSelectionWindow> window;
    std::vector<std::wstring> layers;  // compared without regard to case; empty: any layer
    bool nested = false;               // the references inside counted blocks too, multiplied
    bool recordNames = false;          // a dynamic block's "*U" variants under their own names
    bool arraysAsOne = false;          // an array (MINSERT) once, not columns x rows times
    bool layouts = false;              // the paper-space layouts' references too
};

struct AcDbBlockCount {
    std::wstring name;
    std::int64_t references = 0;
    friend bool operator==(const AcDbBlockCount&, const AcDbBlockCount&) = default;
};

// A selection filter as the editor functions pass it (DXF group codes and values), in the form the
// hit tests use: entity types, layers and block names, each a list of wildcard patterns.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/api/adscodes.h"

struct SelectionFilter {
    std::vector<std::wstring> types;       // code 0, e.g. "INSERT" or "LINE,ARC"; empty: any
    std::vector<std::wstring> layers;      // code 8
    std::vector<std::wstring> blockNames;  // code 2

    bool acceptsType(std::wstring_view type) const;
    bool acceptsLayer(std::wstring_view layer) const;
    bool acceptsBlockName(std::wstring_view name) const;
    // Whether only block references can pass (a layer or name test on other entities needs data
    // the hit tests do not have).
    bool needsReferenceData() const { return !layers.empty() || !blockNames.empty(); }
};

// The filter, or the message saying which group code it cannot apply.
struct SelectionFilterResult {
    std::optional<SelectionFilter> filter;
    std::wstring error;
};
SelectionFilterResult makeSelectionFilter(const std::vector<resbuf>* items);

// The CAD programs' wildcards, ignoring case in every script: "*" any run, "?" one character, "#" a
// digit, "," between alternatives, "~" at the start negates.
bool matchesWildcard(std::wstring_view pattern, std::wstring_view text);

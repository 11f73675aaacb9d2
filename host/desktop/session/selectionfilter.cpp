// Selection filters and their wildcards.
#include "host/desktop/session/selectionfilter.h"

#include <algorithm>
#include <cwctype>

#include "text/CaseRules.h"

namespace {

// Block and layer names are the same name in either case, in every script.
wchar_t folded(wchar_t c) { return FoldCaseChar(c); }

bool matchesOne(std::wstring_view pattern, std::wstring_view text) {
    if (pattern.empty()) return text.empty();
    switch (pattern.front()) {
        case L'*':
            for (std::size_t skip = 0; skip <= text.size(); ++skip) {
                if (matchesOne(pattern.substr(1), text.substr(skip))) return true;
            }
            return false;
        case L'?':
            return !text.empty() && matchesOne(pattern.substr(1), text.substr(1));
        case L'#':
            return !text.empty() && std::iswdigit(static_cast<wint_t>(text.front())) &&
                   matchesOne(pattern.substr(1), text.substr(1));
        default:
            return !text.empty() && folded(pattern.front()) == folded(text.front()) &&
                   matchesOne(pattern.substr(1), text.substr(1));
    }
}

bool acceptedByAll(const std::vector<std::wstring>& patterns, std::wstring_view text) {
    return std::all_of(patterns.begin(), patterns.end(), [text](const std::wstring& pattern) {
        return matchesWildcard(pattern, text);
    });
}

}  // namespace

bool matchesWildcard(std::wstring_view pattern, std::wstring_view text) {
    bool negated = false;
    if (!pattern.empty() && pattern.front() == L'~') {
        negated = true;
        pattern.remove_prefix(1);
    }
    bool matched = false;
    for (;;) {
        const std::size_t comma = pattern.find(L',');
        if (matchesOne(pattern.substr(0, comma), text)) matched = true;
        if (matched || comma == std::wstring_view::npos) break;
        pattern.remove_prefix(comma + 1);
    }
    return matched != negated;
}

bool SelectionFilter::acceptsType(std::wstring_view type) const {
    return acceptedByAll(types, type);
}

bool SelectionFilter::acceptsLayer(std::wstring_view layer) const {
    return acceptedByAll(layers, layer);
}

bool SelectionFilter::acceptsBlockName(std::wstring_view name) const {
    return acceptedByAll(blockNames, name);
}

SelectionFilterResult makeSelectionFilter(const std::vector<resbuf>* items) {
    SelectionFilter filter;
    if (items == nullptr) return {filter, {}};
    for (const resbuf& item : *items) {
        switch (item.restype) {
            case 0:
                filter.types.push_back(item.resval.rstring);
                break;
            case 2:
                filter.blockNames.push_back(item.resval.rstring);
                break;
            case 8:
                filter.layers.push_back(item.resval.rstring);
                break;
            default:
                return {std::nullopt, L"selection filters on group code " +
                                          std::to_wstring(item.restype) + L" are not supported"};
        }
    }
    return {filter, {}};
}

// Selecting block references by window and layer.
#include "host/dxf/dxfselection.h"

#include <algorithm>

#include "text/CaseRules.h"

namespace {

bool inWindow(const AcGePoint3d& p, const SelectionWindow& w) {
    return p.x >= std::min(w.x1, w.x2) && p.x <= std::max(w.x1, w.x2) &&
           p.y >= std::min(w.y1, w.y2) && p.y <= std::max(w.y1, w.y2);
}

bool onLayer(std::wstring_view layer, const std::vector<std::wstring>& layers) {
    if (layers.empty()) return true;
    return std::any_of(layers.begin(), layers.end(),
                       [&](const std::wstring& name) { return CompareNoCase(name, layer) == 0; });
}

}  // namespace

bool isSelected(const DxfDocument& document, AcDbObjectId reference,
                const SelectionFilter& filter) {
    if (filter.window && !inWindow(document.referencePosition(reference), *filter.window))
        return false;
    return filter.layers.empty() || onLayer(document.referenceLayer(reference), filter.layers);
}

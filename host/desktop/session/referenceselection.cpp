// Selecting block references by their insertion points.
#include "host/desktop/session/referenceselection.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace {

bool passes(const DxfReference& reference, const SelectionFilter& filter) {
    return filter.acceptsType(L"INSERT") && filter.acceptsLayer(reference.layer) &&
           filter.acceptsBlockName(reference.blockName);
}

}  // namespace

std::vector<AcDbObjectId> referencesInWindow(const DxfDocument& document, const AcGePoint3d& a,
                                             const AcGePoint3d& b, const SelectionFilter& filter) {
    const double left = std::min(a.x, b.x);
    const double right = std::max(a.x, b.x);
    const double bottom = std::min(a.y, b.y);
    const double top = std::max(a.y, b.y);
    std::vector<AcDbObjectId> ids;
    for (const DxfReference& reference : document.blockReferences(DxfSpace::Model)) {
        const AcGePoint3d& p = reference.position;
        if (p.x >= left && p.x <= right && p.y >= bottom && p.y <= top && passes(reference, filter))
            ids.push_back(reference.id);
    }
    return ids;
}

std::optional<AcDbObjectId> nearestReference(const DxfDocument& document, const AcGePoint3d& at,
                                             double tolerance, const SelectionFilter& filter) {
    std::optional<AcDbObjectId> nearest;
    double best = tolerance;
    for (const DxfReference& reference : document.blockReferences(DxfSpace::Model)) {
        const double distance =
            std::hypot(reference.position.x - at.x, reference.position.y - at.y);
        if (distance <= best && passes(reference, filter)) {
            best = distance;
            nearest = reference.id;
        }
    }
    return nearest;
}

std::vector<AcDbObjectId> allReferences(const DxfDocument& document,
                                        const SelectionFilter& filter) {
    std::vector<AcDbObjectId> ids;
    for (const DxfReference& reference : document.blockReferences(DxfSpace::Model)) {
        if (passes(reference, filter)) ids.push_back(reference.id);
    }
    return ids;
}

std::vector<AcDbObjectId> applyReferenceTests(const DxfDocument& document,
                                              std::vector<AcDbObjectId> ids,
                                              const SelectionFilter& filter) {
    if (!filter.needsReferenceData()) return ids;
    std::unordered_map<AcDbObjectId, const DxfReference*> byId;
    const std::vector<DxfReference> references = document.blockReferences(DxfSpace::Model);
    for (const DxfReference& reference : references) byId.emplace(reference.id, &reference);
    std::erase_if(ids, [&](AcDbObjectId id) {
        const auto it = byId.find(id);
        return it == byId.end() || !passes(*it->second, filter);
    });
    return ids;
}

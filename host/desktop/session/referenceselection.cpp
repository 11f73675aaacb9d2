// The layer and block-name tests of a selection filter.
#include "host/desktop/session/referenceselection.h"

#include <unordered_map>

namespace {

bool passes(const DxfReference& reference, const SelectionFilter& filter) {
    return filter.acceptsType(L"INSERT") && filter.acceptsLayer(reference.layer) &&
           filter.acceptsBlockName(reference.blockName);
}

}  // namespace

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

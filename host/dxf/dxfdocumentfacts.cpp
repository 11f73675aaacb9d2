// The facts a drawing's summary reports: header values and the entities of each space.
#include <algorithm>

#include "host/dxf/dxfdocument.h"
#include "host/dxf/dxfnumber.h"
#include "host/dxf/dxfviews.h"

std::vector<DxfDocument::LayoutBlock> DxfDocument::otherPaperLayouts() const {
    std::vector<LayoutBlock> layouts;
    for (std::size_t block = 0; block < m_blockInfo.size(); ++block) {
        const BlockInfo& info = m_blockInfo[block];
        if (info.layout != Layout::OtherPaper || !info.definition) continue;
        const DxfBlockDefinition& definition = m_structure.blocks()[*info.definition];
        layouts.push_back({block, definition.begin, definition.end});
    }
    return layouts;
}

DxfFacts DxfDocument::facts() const {
    DxfFacts facts;
    facts.version = m_version;
    facts.codePage = std::string(dxfTrimmed(m_header.text(m_tags, "$DWGCODEPAGE")));
    facts.encoding = m_codec.charset();
    facts.handleSeed = std::string(dxfTrimmed(m_header.text(m_tags, "$HANDSEED")));
    auto isPart = [this](std::uint32_t record) {
        return m_records.kind(record) == DxfRecordKind::EntityPart;
    };
    if (const DxfSection* entities = m_structure.section("ENTITIES")) {
        for (std::uint32_t r = entities->begin + 1; r < entities->end; ++r) {
            if (!isPart(r)) ++(isInPaperSpace(r) ? facts.paperEntities : facts.modelEntities);
        }
    }
    for (const auto& [block, begin, end] : otherPaperLayouts()) {
        for (std::uint32_t r = begin + 1; r < end; ++r) {
            if (!isPart(r)) ++facts.paperEntities;
        }
    }
    return facts;
}

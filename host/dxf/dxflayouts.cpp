// The paper-space layouts one by one: their names, from the LAYOUT objects that point at their
// blocks, and the references each holds.
#include <unordered_map>

#include "host/dxf/dxfdocument.h"
#include "host/dxf/dxfnumber.h"
#include "host/dxf/dxfviews.h"

namespace {

// A LAYOUT object's name and block record: codes 1 and 330 of its AcDbLayout part (its
// AcDbPlotSettings part has a code 1 of its own, the page setup's name, and the 330 before the
// parts is the object's owner).
struct LayoutObject {
    std::string_view name;
    std::optional<std::uint64_t> blockRecord;
};

LayoutObject readLayoutObject(const DxfTagFile& tags, DxfTagRange record) {
    LayoutObject layout;
    bool inLayoutPart = false;
    for (const std::uint32_t tag : record) {
        const int code = tags.code(tag);
        if (code == 1001) break;
        if (code == 100) {
            inLayoutPart = dxfTrimmed(tags.value(tag)) == "AcDbLayout";
        } else if (inLayoutPart && code == 1 && layout.name.empty()) {
            layout.name = tags.value(tag);
        } else if (inLayoutPart && code == 330 && !layout.blockRecord) {
            layout.blockRecord = tags.handle(tag);
        }
    }
    return layout;
}

}  // namespace

std::vector<std::wstring> DxfDocument::layoutNames() const {
    // The blocks' names, by their records' handles, and which block is the active layout.
    std::unordered_map<std::uint64_t, std::size_t> blockByHandle;
    std::optional<std::size_t> active;
    for (std::size_t block = 0; block < m_blockInfo.size(); ++block) {
        if (m_blockInfo[block].layout == Layout::Paper) active = block;
        if (const auto handle = handleOf(m_blocks.record(block))) blockByHandle[*handle] = block;
    }
    std::unordered_map<std::size_t, std::wstring> layoutOfBlock;
    if (const DxfSection* objects = m_structure.section("OBJECTS")) {
        for (std::uint32_t r = objects->begin + 1; r < objects->end; ++r) {
            const DxfTagRange tags = m_records.tags(r);
            if (tags.size() == 0 || dxfTrimmed(m_tags.value(tags[0])) != "LAYOUT") continue;
            const LayoutObject layout = readLayoutObject(m_tags, tags);
            if (!layout.blockRecord || layout.name.empty()) continue;
            if (const auto block = blockByHandle.find(*layout.blockRecord);
                block != blockByHandle.end())
                layoutOfBlock.try_emplace(block->second, m_codec.decode(layout.name));
        }
    }
    auto nameOf = [&](std::optional<std::size_t> block, const wchar_t* fallback) {
        if (!block) return std::wstring(fallback);
        const auto named = layoutOfBlock.find(*block);
        return named != layoutOfBlock.end() ? named->second : m_blocks.name(*block);
    };
    std::vector<std::wstring> names{nameOf(active, L"*Paper_Space")};
    for (const LayoutBlock& layout : otherPaperLayouts())
        names.push_back(nameOf(layout.block, L""));
    return names;
}

void DxfDocument::forEachLayoutInsert(std::size_t layout,
                                      const std::function<void(std::uint32_t)>& visit) const {
    if (layout == 0) {
        for (const std::uint32_t record : m_paperInserts) visit(record);
        return;
    }
    const std::vector<LayoutBlock> others = otherPaperLayouts();
    if (layout > others.size()) return;
    const LayoutBlock& block = others[layout - 1];
    for (std::uint32_t r = block.begin + 1; r < block.end; ++r) {
        if (m_records.kind(r) == DxfRecordKind::Insert) visit(r);
    }
}

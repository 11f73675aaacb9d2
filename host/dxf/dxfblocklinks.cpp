// What block definitions say about other blocks: the dynamic block an anonymous variant was made
// from, and the references nested in a definition.
#include <cctype>
#include <unordered_map>

#include "host/dxf/dxfdocument.h"
#include "host/dxf/dxfviews.h"

namespace {

constexpr int kApplicationName = 1001;
constexpr int kExtendedHandle = 1005;
constexpr std::string_view kDynamicBlockLink = "AcDbBlockRepBTag";

// Application names compare without regard to (ASCII) case, as the CAD program registers them.
bool isLinkApplication(std::string_view name) {
    if (name.size() != kDynamicBlockLink.size()) return false;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const auto a = static_cast<unsigned char>(name[i]);
        const auto b = static_cast<unsigned char>(kDynamicBlockLink[i]);
        if (std::tolower(a) != std::tolower(b)) return false;
    }
    return true;
}

// The handle in the record's AcDbBlockRepBTag data: "1001 AcDbBlockRepBTag / 1070 1 / 1005 handle".
std::optional<std::uint64_t> linkedHandle(const DxfTagFile& tags, DxfTagRange record) {
    for (std::uint32_t i = 0; i < record.size(); ++i) {
        if (tags.code(record[i]) != kApplicationName || !isLinkApplication(tags.value(record[i])))
            continue;
        for (std::uint32_t j = i + 1; j < record.size(); ++j) {
            const int code = tags.code(record[j]);
            if (code == kApplicationName) break;
            if (code == kExtendedHandle) return tags.handle(record[j]);
        }
        return std::nullopt;
    }
    return std::nullopt;
}

}  // namespace

std::vector<DxfDynamicBlockLink> DxfDocument::dynamicBlockLinks() const {
    std::vector<DxfDynamicBlockLink> links;
    try {
        std::unordered_map<std::uint64_t, std::uint32_t> recordByHandle;
        for (std::size_t i = 0; i < m_blocks.size(); ++i) {
            if (const auto handle = handleOf(m_blocks.record(i)))
                recordByHandle.emplace(*handle, m_blocks.record(i));
        }
        for (std::size_t i = 0; i < m_blocks.size(); ++i) {
            const std::uint32_t record = m_blocks.record(i);
            const auto handle = linkedHandle(m_tags, m_records.tags(record));
            if (!handle) continue;
            const auto target = recordByHandle.find(*handle);
            links.push_back({idOf(record), target == recordByHandle.end() ? AcDbObjectId()
                                                                          : idOf(target->second)});
        }
    } catch (const std::exception&) {
        links.clear();
    }
    return links;
}

std::vector<DxfReference> DxfDocument::referencesInBlock(AcDbObjectId record) const {
    std::vector<DxfReference> references;
    const auto block = blockIndex(record);
    if (!block || !m_blockInfo[*block].definition) return references;
    const DxfBlockDefinition& definition = m_structure.blocks()[*m_blockInfo[*block].definition];
    try {
        for (std::uint32_t r = definition.begin + 1; r < definition.end; ++r) {
            if (m_records.kind(r) != DxfRecordKind::Insert) continue;
            const DxfInsertView view = readInsert(m_tags, m_records.tags(r));
            references.push_back(DxfReference{idOf(r), internedText(view.name),
                                              internedText(view.layer), view.position,
                                              instancesOf(r)});
        }
    } catch (const std::exception&) {
        references.clear();
    }
    return references;
}

// Header variables.
#include "host/dxf/dxfheader.h"

DxfHeader::DxfHeader(const DxfTagFile& tags, const DxfRecords& records, std::uint32_t record)
    : m_record(record), m_tags(records.tagList(record)) {
    for (std::size_t i = 0; i + 1 < m_tags.size(); ++i) {
        if (tags.code(m_tags[i]) == 9)
            m_positions.emplace(std::string(tags.value(m_tags[i])), i + 1);
    }
}

std::optional<std::uint32_t> DxfHeader::valueTag(std::string_view name) const {
    const auto it = m_positions.find(name);
    if (it == m_positions.end()) return std::nullopt;
    return m_tags[it->second];
}

std::string_view DxfHeader::text(const DxfTagFile& tags, std::string_view name) const {
    const auto tag = valueTag(name);
    return tag ? tags.value(*tag) : std::string_view();
}

std::optional<std::int64_t> DxfHeader::integer(const DxfTagFile& tags,
                                               std::string_view name) const {
    const auto tag = valueTag(name);
    return tag ? tags.integer(*tag) : std::nullopt;
}

void DxfHeader::setValue(DxfTagFile& tags, DxfRecords& records, std::string_view name,
                         std::uint32_t valueTag) {
    if (const auto it = m_positions.find(name); it != m_positions.end()) {
        m_tags[it->second] = valueTag;
    } else {
        m_tags.push_back(tags.appendString(9, name));
        m_tags.push_back(valueTag);
        m_positions.emplace(std::string(name), m_tags.size() - 1);
    }
    records.replace(*m_record, m_tags);
}

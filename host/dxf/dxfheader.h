// The HEADER section's variables ("9 $NAME" and the value tags after it): found by name, read, and
// changed in place.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/dxfrecords.h"

class DxfHeader {
public:
    DxfHeader() = default;  // a drawing without a HEADER section
    DxfHeader(const DxfTagFile& tags, const DxfRecords& records, std::uint32_t record);

    bool exists() const { return m_record.has_value(); }
    std::uint32_t record() const { return *m_record; }

    // The first value tag of the variable, when the header has it.
    std::optional<std::uint32_t> valueTag(std::string_view name) const;
    std::string_view text(const DxfTagFile& tags, std::string_view name) const;
    std::optional<std::int64_t> integer(const DxfTagFile& tags, std::string_view name) const;

    // Replaces the variable's first value, or adds the variable at the end of the header.
    void setValue(DxfTagFile& tags, DxfRecords& records, std::string_view name,
                  std::uint32_t valueTag);

private:
    std::optional<std::uint32_t> m_record;
    std::vector<std::uint32_t> m_tags;
    std::map<std::string, std::size_t, std::less<>> m_positions;  // name -> index of its value tag
};

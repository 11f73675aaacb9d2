// Builds the tags of a new record in the drawing's dialect: handles, owners and subclass markers
// are written only where the version has them, so callers list every tag of the newest form.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "host/api/acgepoint3d.h"
#include "host/dxf/dxfdialect.h"
#include "host/dxf/dxftagfile.h"

class DxfRecordBuilder {
public:
    DxfRecordBuilder(DxfTagFile& tags, const DxfDialect& dialect, std::string_view type);

    DxfRecordBuilder& handle(std::optional<std::uint64_t> handle);
    DxfRecordBuilder& owner(std::optional<std::uint64_t> owner);
    DxfRecordBuilder& subclass(std::string_view marker);
    DxfRecordBuilder& text(int code, std::string_view bytes);
    DxfRecordBuilder& real(int code, double value);
    DxfRecordBuilder& integer(int code, std::int64_t value);
    // x, y and z under code, code + 10 and code + 20.
    DxfRecordBuilder& point(int code, const AcGePoint3d& point);
    // Tags that only some versions write.
    DxfRecordBuilder& when(bool condition, void (*add)(DxfRecordBuilder&));

    const DxfDialect& dialect() const { return m_dialect; }
    std::vector<std::uint32_t> take() { return std::move(m_tags); }

private:
    DxfTagFile& m_file;
    DxfDialect m_dialect;
    std::vector<std::uint32_t> m_tags;
};

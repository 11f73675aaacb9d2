// Tags of new records.
#include "host/dxf/dxfrecordbuilder.h"

DxfRecordBuilder::DxfRecordBuilder(DxfTagFile& tags, const DxfDialect& dialect,
                                   std::string_view type)
    : m_file(tags), m_dialect(dialect) {
    m_tags.push_back(m_file.appendString(0, type));
}

DxfRecordBuilder& DxfRecordBuilder::handle(std::optional<std::uint64_t> handle) {
    if (m_dialect.handles && handle) m_tags.push_back(m_file.appendHandle(5, *handle));
    return *this;
}

DxfRecordBuilder& DxfRecordBuilder::owner(std::optional<std::uint64_t> owner) {
    if (m_dialect.subclasses) m_tags.push_back(m_file.appendHandle(330, owner.value_or(0)));
    return *this;
}

DxfRecordBuilder& DxfRecordBuilder::subclass(std::string_view marker) {
    if (m_dialect.subclasses) m_tags.push_back(m_file.appendString(100, marker));
    return *this;
}

DxfRecordBuilder& DxfRecordBuilder::text(int code, std::string_view bytes) {
    m_tags.push_back(m_file.appendString(code, bytes));
    return *this;
}

DxfRecordBuilder& DxfRecordBuilder::real(int code, double value) {
    m_tags.push_back(m_file.appendReal(code, value));
    return *this;
}

DxfRecordBuilder& DxfRecordBuilder::integer(int code, std::int64_t value) {
    m_tags.push_back(m_file.appendInteger(code, value));
    return *this;
}

DxfRecordBuilder& DxfRecordBuilder::point(int code, const AcGePoint3d& p) {
    real(code, p.x);
    real(code + 10, p.y);
    return real(code + 20, p.z);
}

DxfRecordBuilder& DxfRecordBuilder::when(bool condition, void (*add)(DxfRecordBuilder&)) {
    if (condition) add(*this);
    return *this;
}

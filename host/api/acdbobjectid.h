// The identity of a database object, as the database hands it out; 0 is the null id.
#pragma once

#include <cstdint>
#include <functional>

class AcDbObjectId {
public:
    AcDbObjectId() = default;
    explicit AcDbObjectId(std::uint64_t value) : m_value(value) {}

    bool isNull() const { return m_value == 0; }
    std::uint64_t value() const { return m_value; }

    friend bool operator==(AcDbObjectId, AcDbObjectId) = default;
    friend auto operator<=>(AcDbObjectId, AcDbObjectId) = default;

private:
    std::uint64_t m_value = 0;
};

template <>
struct std::hash<AcDbObjectId> {
    std::size_t operator()(AcDbObjectId id) const noexcept {
        return std::hash<std::uint64_t>{}(id.value());
    }
};

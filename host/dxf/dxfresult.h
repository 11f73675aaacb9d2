// Results of the DXF layer's fallible operations: a value, or the message that says what went
// wrong.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <variant>

// What kind of fault a message reports. Sections, tables and blocks that do not nest as they must
// are the faults a recovering read can mend.
enum class DxfErrorKind : std::uint8_t { Other, Structure };

// A message in the console's shape: `plan.dxf:1042: expected a group code, found "abc"`.
class DxfError {
public:
    explicit DxfError(std::string message, DxfErrorKind kind = DxfErrorKind::Other)
        : m_message(std::move(message)), m_kind(kind) {}
    const std::string& message() const { return m_message; }
    DxfErrorKind kind() const { return m_kind; }

private:
    std::string m_message;
    DxfErrorKind m_kind;
};

// value() and takeValue() are for results that isOk(); errorString() for the others.
template <typename T>
class [[nodiscard]] DxfResult {
public:
    DxfResult(T value) : m_state(std::in_place_index<0>, std::move(value)) {}
    DxfResult(DxfError error) : m_state(std::in_place_index<1>, std::move(error)) {}

    bool isOk() const { return m_state.index() == 0; }
    const T& value() const { return std::get<0>(m_state); }
    T& value() { return std::get<0>(m_state); }
    T takeValue() { return std::move(std::get<0>(m_state)); }
    const std::string& errorString() const { return std::get<1>(m_state).message(); }
    const DxfError& error() const { return std::get<1>(m_state); }

private:
    std::variant<T, DxfError> m_state;
};

// The result of an operation that has nothing to return but may fail.
class [[nodiscard]] DxfStatus {
public:
    DxfStatus() = default;
    DxfStatus(DxfError error) : m_error(std::move(error)), m_failed(true) {}

    bool isOk() const { return !m_failed; }
    const std::string& errorString() const { return m_error.message(); }
    const DxfError& error() const { return m_error; }

private:
    DxfError m_error{std::string()};
    bool m_failed = false;
};

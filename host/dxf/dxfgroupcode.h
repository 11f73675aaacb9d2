// The type of value that each DXF group code carries, as a lookup table.
#pragma once

#include <array>
#include <cstdint>

enum class DxfValueType : std::uint8_t {
    String,
    Handle,  // hexadecimal text; a string in binary files too
    Double,
    Int16,
    Int32,
    Int64,
    Bool,
    Chunk,  // binary data: hexadecimal text, or a length byte and the bytes in binary files
};

namespace DxfGroupCodes {

struct CodeRange {
    int first;
    int last;
    DxfValueType type;
};

// Later rows override earlier ones, so exceptions follow the ranges they cut into.
inline constexpr CodeRange kRanges[] = {
    {0, 9, DxfValueType::String},       {5, 5, DxfValueType::Handle},
    {10, 59, DxfValueType::Double},     {60, 79, DxfValueType::Int16},
    {90, 99, DxfValueType::Int32},      {100, 102, DxfValueType::String},
    {105, 105, DxfValueType::Handle},   {110, 149, DxfValueType::Double},
    {160, 169, DxfValueType::Int64},    {170, 179, DxfValueType::Int16},
    {210, 239, DxfValueType::Double},   {270, 289, DxfValueType::Int16},
    {290, 299, DxfValueType::Bool},     {300, 309, DxfValueType::String},
    {310, 319, DxfValueType::Chunk},    {320, 369, DxfValueType::Handle},
    {370, 389, DxfValueType::Int16},    {390, 399, DxfValueType::Handle},
    {400, 409, DxfValueType::Int16},    {410, 419, DxfValueType::String},
    {420, 429, DxfValueType::Int32},    {430, 439, DxfValueType::String},
    {440, 449, DxfValueType::Int32},    {450, 459, DxfValueType::Int32},
    {460, 469, DxfValueType::Double},   {470, 479, DxfValueType::String},
    {480, 481, DxfValueType::Handle},   {999, 999, DxfValueType::String},
    {1000, 1009, DxfValueType::String}, {1004, 1004, DxfValueType::Chunk},
    {1005, 1005, DxfValueType::Handle}, {1010, 1059, DxfValueType::Double},
    {1060, 1070, DxfValueType::Int16},  {1071, 1071, DxfValueType::Int32},
};

inline constexpr int kTableSize = 1072;

constexpr std::array<DxfValueType, kTableSize> makeTable() {
    std::array<DxfValueType, kTableSize> table{};
    for (auto& type : table) type = DxfValueType::String;
    for (const auto& range : kRanges) {
        for (int code = range.first; code <= range.last; ++code) table[code] = range.type;
    }
    return table;
}

inline constexpr std::array<DxfValueType, kTableSize> kTable = makeTable();

}  // namespace DxfGroupCodes

// Codes outside the known ranges carry strings. Inline: the readers ask once per tag.
inline DxfValueType dxfValueType(int code) {
    if (code < 0 || code >= DxfGroupCodes::kTableSize) return DxfValueType::String;
    return DxfGroupCodes::kTable[static_cast<std::size_t>(code)];
}

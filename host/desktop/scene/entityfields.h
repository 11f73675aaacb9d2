// The first tag of each group code in an entity record, found in one walk and read on demand:
// what the readers of simple entities need, without a pass per field.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "host/dxf/dxfrecords.h"
#include "host/dxf/dxftagfile.h"

// A tag's number. Plain decimals ("12.375", up to 19 digits) of ASCII files take a short path
// that lands within an ulp or so of the exact value, as near as a view needs; other texts go to
// the file's full reader.
double sceneReal(const DxfTagFile& file, std::uint32_t tag, double fallback);

class SceneFields {
public:
    SceneFields();

    // Notes the record's tags up to its extended data (1001).
    void read(const DxfTagFile& file, DxfTagRange record);

    bool has(int code) const { return tagOf(code).has_value(); }
    double real(int code, double fallback) const;
    std::int64_t integer(int code, std::int64_t fallback) const;
    std::string_view text(int code) const;

private:
    static constexpr int kCodes = 1001;
    std::optional<std::uint32_t> tagOf(int code) const {
        if (code < 0 || code >= kCodes) return std::nullopt;
        const Slot& slot = m_slots[static_cast<std::size_t>(code)];
        if (slot.generation != m_generation) return std::nullopt;
        return slot.tag;
    }

    // A slot is valid when it carries the current generation, so no walk clears the table.
    struct Slot {
        std::uint32_t generation = 0;
        std::uint32_t tag = 0;
    };
    const DxfTagFile* m_file = nullptr;
    std::vector<Slot> m_slots;
    std::uint32_t m_generation = 0;
};

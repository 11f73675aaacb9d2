// What a record is, told by its code-0 value: the kinds the structure and the database look for.
// Kept as one byte a record, found while the scanner has the bytes at hand.
#pragma once

#include <cstdint>
#include <string_view>

enum class DxfRecordKind : std::uint8_t {
    Other,
    Section,
    EndSection,
    Table,
    EndTable,
    Block,
    EndBlock,
    Insert,
    AttributeDefinition,
    EntityPart,  // ATTRIB, VERTEX, SEQEND: they belong to the entity before them
    Eof,
};

inline DxfRecordKind dxfRecordKind(std::string_view type) {
    struct Entry {
        std::string_view type;
        DxfRecordKind kind;
    };
    static constexpr Entry kKinds[] = {
        {"SECTION", DxfRecordKind::Section},   {"ENDSEC", DxfRecordKind::EndSection},
        {"TABLE", DxfRecordKind::Table},       {"ENDTAB", DxfRecordKind::EndTable},
        {"BLOCK", DxfRecordKind::Block},       {"ENDBLK", DxfRecordKind::EndBlock},
        {"INSERT", DxfRecordKind::Insert},     {"ATTDEF", DxfRecordKind::AttributeDefinition},
        {"EOF", DxfRecordKind::Eof},           {"ATTRIB", DxfRecordKind::EntityPart},
        {"VERTEX", DxfRecordKind::EntityPart}, {"SEQEND", DxfRecordKind::EntityPart},
    };
    for (const Entry& entry : kKinds) {
        if (entry.type == type) return entry.kind;
    }
    return DxfRecordKind::Other;
}

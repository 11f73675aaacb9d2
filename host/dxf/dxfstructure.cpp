// Finding and checking sections, tables and block definitions.
#include "host/dxf/dxfstructure.h"

#include <algorithm>

#include "host/dxf/dxfmessage.h"

namespace {

bool endsSection(DxfRecordKind kind) {
    return kind == DxfRecordKind::EndSection || kind == DxfRecordKind::Section ||
           kind == DxfRecordKind::Eof;
}

// Walks the file's records once, in order, with the look-ahead the shape of a DXF file needs.
class StructureReader {
public:
    StructureReader(const DxfTagFile& tags, const DxfRecords& records)
        : m_tags(tags), m_records(records) {}

    DxfStatus read(std::vector<DxfSection>& sections, std::vector<DxfTable>& tables,
                   std::vector<DxfBlockDefinition>& blocks, std::uint32_t& eof);

private:
    DxfRecordKind kind(std::uint32_t record) const { return m_records.kind(record); }
    bool atEnd() const { return m_next >= m_records.originalCount(); }
    DxfError unexpected(const std::string& expected) const;
    // The value of the record's first tag with this code, or an error naming what was missing.
    DxfResult<std::string> nameOf(std::uint32_t record, const std::string& what) const;
    DxfStatus readTables(std::vector<DxfTable>& tables);
    DxfStatus readBlocks(std::vector<DxfBlockDefinition>& blocks);
    DxfStatus skipToEndOfSection();

    const DxfTagFile& m_tags;
    const DxfRecords& m_records;
    std::uint32_t m_next = 0;
};

DxfError StructureReader::unexpected(const std::string& expected) const {
    if (atEnd())
        return DxfError(m_tags.endLocation() + ": expected " + expected +
                        ", found the end of the file");
    const std::uint32_t head = m_records.head(m_next);
    return DxfError(
        m_tags.location(head) + ": expected " + expected + ", found " +
        dxfQuoted(std::to_string(m_tags.code(head)) + " " + std::string(m_tags.value(head))));
}

DxfResult<std::string> StructureReader::nameOf(std::uint32_t record,
                                               const std::string& what) const {
    for (const std::uint32_t tag : m_records.tags(record)) {
        if (m_tags.code(tag) == 2) return std::string(m_tags.value(tag));
    }
    const std::uint32_t head = m_records.head(record);
    return DxfError(m_tags.location(head) + ": " + what + " has no name (group code 2)");
}

DxfStatus StructureReader::skipToEndOfSection() {
    while (!atEnd()) {
        const DxfRecordKind k = kind(m_next);
        if (k == DxfRecordKind::EndSection) return {};
        if (k == DxfRecordKind::Section || k == DxfRecordKind::Eof) break;
        ++m_next;
    }
    return unexpected("\"0 ENDSEC\"");
}

DxfStatus StructureReader::readTables(std::vector<DxfTable>& tables) {
    while (!atEnd() && kind(m_next) == DxfRecordKind::Table) {
        DxfResult<std::string> tableKind = nameOf(m_next, "TABLE");
        if (!tableKind.isOk()) return DxfError(tableKind.errorString());
        DxfTable table{tableKind.takeValue(), m_next, 0, {}};
        ++m_next;
        while (!atEnd()) {
            const DxfRecordKind k = kind(m_next);
            if (k == DxfRecordKind::EndTable || k == DxfRecordKind::Table || endsSection(k)) break;
            table.entries.push_back(m_next++);
        }
        if (atEnd() || kind(m_next) != DxfRecordKind::EndTable) return unexpected("\"0 ENDTAB\"");
        table.end = m_next++;
        tables.push_back(std::move(table));
    }
    if (atEnd() || kind(m_next) != DxfRecordKind::EndSection)
        return unexpected("\"0 TABLE\" or \"0 ENDSEC\"");
    return {};
}

DxfStatus StructureReader::readBlocks(std::vector<DxfBlockDefinition>& blocks) {
    while (!atEnd() && kind(m_next) == DxfRecordKind::Block) {
        if (DxfResult<std::string> name = nameOf(m_next, "BLOCK"); !name.isOk())
            return DxfError(name.errorString());
        DxfBlockDefinition block{m_next, 0};
        ++m_next;
        while (!atEnd()) {
            const DxfRecordKind k = kind(m_next);
            if (k == DxfRecordKind::EndBlock || k == DxfRecordKind::Block || endsSection(k)) break;
            ++m_next;
        }
        if (atEnd() || kind(m_next) != DxfRecordKind::EndBlock) return unexpected("\"0 ENDBLK\"");
        block.end = m_next++;
        blocks.push_back(block);
    }
    if (atEnd() || kind(m_next) != DxfRecordKind::EndSection)
        return unexpected("\"0 BLOCK\" or \"0 ENDSEC\"");
    return {};
}

DxfStatus StructureReader::read(std::vector<DxfSection>& sections, std::vector<DxfTable>& tables,
                                std::vector<DxfBlockDefinition>& blocks, std::uint32_t& eof) {
    if (!atEnd() && m_tags.code(m_records.head(0)) != 0) {
        for (const std::uint32_t tag : m_records.tags(0)) {
            if (m_tags.code(tag) != 999)
                return DxfError(m_tags.location(tag) +
                                ": expected \"0 SECTION\", found group code " +
                                std::to_string(m_tags.code(tag)));
        }
        m_next = 1;
    }
    while (!atEnd() && kind(m_next) == DxfRecordKind::Section) {
        const std::uint32_t begin = m_next;
        const DxfTagRange head = m_records.tags(begin);
        if (head.size() < 2 || m_tags.code(head[1]) != 2)
            return DxfError(m_tags.location(head[0]) +
                            ": expected the section's name (group code 2) after \"0 SECTION\"");
        std::string name(m_tags.value(head[1]));
        if (std::any_of(sections.begin(), sections.end(),
                        [&](const DxfSection& s) { return s.name == name; }))
            return DxfError(m_tags.location(head[0]) + ": a second " + name + " section");
        ++m_next;
        DxfStatus status = name == "TABLES"   ? readTables(tables)
                           : name == "BLOCKS" ? readBlocks(blocks)
                                              : skipToEndOfSection();
        if (!status.isOk()) return status;
        sections.push_back(DxfSection{std::move(name), begin, m_next++});
    }
    if (atEnd() || kind(m_next) != DxfRecordKind::Eof)
        return unexpected("\"0 SECTION\" or \"0 EOF\"");
    eof = m_next;
    return {};
}

}  // namespace

DxfResult<DxfStructure> DxfStructure::index(const DxfTagFile& tags, const DxfRecords& records) {
    DxfStructure structure;
    StructureReader reader(tags, records);
    DxfStatus status =
        reader.read(structure.m_sections, structure.m_tables, structure.m_blocks, structure.m_eof);
    if (!status.isOk()) return DxfError(status.errorString(), DxfErrorKind::Structure);
    return structure;
}

const DxfSection* DxfStructure::section(std::string_view name) const {
    for (const auto& s : m_sections) {
        if (s.name == name) return &s;
    }
    return nullptr;
}

DxfTable* DxfStructure::table(std::string_view kind) {
    for (auto& t : m_tables) {
        if (t.kind == kind) return &t;
    }
    return nullptr;
}

const DxfTable* DxfStructure::table(std::string_view kind) const {
    for (const auto& t : m_tables) {
        if (t.kind == kind) return &t;
    }
    return nullptr;
}

void DxfStructure::addSection(DxfSection section) { m_sections.push_back(std::move(section)); }

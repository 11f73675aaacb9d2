// The second layer over the records: sections, tables with their entries, block definitions with
// their entities, each found once when the file is read and checked for its shape.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/dxfrecords.h"
#include "host/dxf/dxfresult.h"

struct DxfSection {
    std::string name;
    std::uint32_t begin = 0;  // the SECTION record; in HEADER it holds every variable
    std::uint32_t end = 0;    // the ENDSEC record
};

struct DxfTable {
    std::string kind;         // LAYER, STYLE, BLOCK_RECORD, ...
    std::uint32_t begin = 0;  // the TABLE record
    std::uint32_t end = 0;    // the ENDTAB record
    std::vector<std::uint32_t> entries;
};

// The entities of a definition are the records between its BLOCK and ENDBLK.
struct DxfBlockDefinition {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
};

class DxfStructure {
public:
    // Refuses records that do not nest as a DXF file must, naming the place and what was expected.
    static DxfResult<DxfStructure> index(const DxfTagFile& tags, const DxfRecords& records);

    const std::vector<DxfSection>& sections() const { return m_sections; }
    const DxfSection* section(std::string_view name) const;
    std::vector<DxfTable>& tables() { return m_tables; }
    const std::vector<DxfTable>& tables() const { return m_tables; }
    DxfTable* table(std::string_view kind);
    const DxfTable* table(std::string_view kind) const;
    std::vector<DxfBlockDefinition>& blocks() { return m_blocks; }
    const std::vector<DxfBlockDefinition>& blocks() const { return m_blocks; }
    std::uint32_t eofRecord() const { return m_eof; }

    // Sections and tables that edits create take their place here.
    void addSection(DxfSection section);
    void addTable(DxfTable table) { m_tables.push_back(std::move(table)); }

private:
    std::vector<DxfSection> m_sections;
    std::vector<DxfTable> m_tables;
    std::vector<DxfBlockDefinition> m_blocks;
    std::uint32_t m_eof = 0;
};

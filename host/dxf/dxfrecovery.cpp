// Putting a damaged drawing's records back into sections, tables and blocks. A record out of
// place is taken into the section (table, block) before it, whose closing marker came too early;
// a marker that closes nothing is left out; a missing one is made in the file's own form.
#include "host/dxf/dxfrecovery.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>

namespace {

constexpr std::uint32_t kMade = UINT32_MAX;

// A record of the file, or one made here.
struct Piece {
    std::uint32_t record = kMade;
    std::string made;
};

struct Section {
    std::string name;
    Piece head;
    std::vector<std::uint32_t> content;
    std::optional<std::uint32_t> end;  // its ENDSEC; made when there is none
};

// What closes a table or a block, and what the messages call them.
struct Nesting {
    DxfRecordKind open;
    DxfRecordKind close;
    std::string_view openType;
    std::string_view closeType;
    std::string_view noun;
};

constexpr Nesting kTables{DxfRecordKind::Table, DxfRecordKind::EndTable, "TABLE", "ENDTAB",
                          "table"};
constexpr Nesting kBlocks{DxfRecordKind::Block, DxfRecordKind::EndBlock, "BLOCK", "ENDBLK",
                          "block"};

std::string quoted(std::string_view type) { return "\"0 " + std::string(type) + "\""; }

class Recovery {
public:
    Recovery(const DxfTagFile& tags, const DxfRecords& records)
        : m_tags(tags), m_records(records), m_count(records.originalCount()) {}

    DxfRecovery run() {
        readSections();
        std::vector<std::vector<Piece>> contents;
        for (const Section& section : m_sections) contents.push_back(contentOf(section));
        // Repairs in the order of the places they name; those at the end last.
        std::stable_sort(m_repairs.begin(), m_repairs.end(), [](const Repair& a, const Repair& b) {
            return std::pair(a.record, a.rank) < std::pair(b.record, b.rank);
        });
        for (Repair& repair : m_repairs) m_result.repairs.push_back(std::move(repair.text));
        std::string& out = m_result.bytes;
        out.reserve(m_tags.prefix().size() + m_tags.recordSpan(0, m_count).size() + 64);
        out.append(m_tags.prefix());
        if (m_prelude) append({0, {}});
        for (std::size_t i = 0; i < m_sections.size(); ++i) {
            const Section& section = m_sections[i];
            append(section.head);
            for (const Piece& piece : contents[i]) append(piece);
            append(section.end ? Piece{*section.end, {}} : made("ENDSEC"));
        }
        append(m_eof ? Piece{*m_eof, {}} : made("EOF"));
        if (m_eof) out.append(m_tags.trailer());
        return std::move(m_result);
    }

private:
    std::string where(std::uint32_t record) const {
        return record < m_count ? m_tags.location(m_records.head(record)) : m_tags.endLocation();
    }
    // `rank` orders repairs at one place: what closes a table or block before what closes its
    // section, and that before the end of the file.
    void repair(std::uint32_t record, const std::string& what, int rank = 0) {
        m_repairs.push_back({record, rank, where(record) + ": " + what});
    }
    Piece made(std::string_view type) const { return {kMade, m_tags.encodedString(0, type)}; }

    void append(const Piece& piece) {
        std::string& out = m_result.bytes;
        if (piece.record != kMade) {
            out.append(m_tags.recordSpan(piece.record, piece.record + 1));
            return;
        }
        // A file cut off in its last line gets the line's end before what is made.
        if (m_tags.format() == DxfFormat::Ascii && !out.empty() && out.back() != '\n')
            out.append(piece.made.ends_with("\r\n") ? "\r\n" : "\n");
        out.append(piece.made);
    }

    std::string nameOf(std::uint32_t record) const {
        for (const std::uint32_t tag : m_records.tags(record)) {
            if (m_tags.code(tag) == 2) return std::string(m_tags.value(tag));
        }
        return {};
    }

    std::optional<std::size_t> sectionNamed(const std::string& name) const {
        const auto it = std::find_if(m_sections.begin(), m_sections.end(),
                                     [&](const Section& s) { return s.name == name; });
        if (it == m_sections.end()) return std::nullopt;
        return static_cast<std::size_t>(it - m_sections.begin());
    }

    bool isPreludeOfComments() const {
        for (const std::uint32_t tag : m_records.tags(0)) {
            if (m_tags.code(tag) != 999) return false;
        }
        return true;
    }

    void readSections() {
        std::uint32_t r = 0;
        if (m_count > 0 && m_tags.code(m_records.head(0)) != 0) {
            if (isPreludeOfComments())
                m_prelude = true;
            else
                repair(0, "tags before the first record left out");
            r = 1;
        }
        std::optional<std::size_t> open;
        std::optional<std::size_t> last;
        for (; r < m_count; ++r) {
            switch (m_records.kind(r)) {
                case DxfRecordKind::Section:
                    if (open) {
                        repair(r, quoted("ENDSEC") + " added before this section");
                        last = open;
                        open.reset();
                    }
                    open = startSection(r);
                    break;
                case DxfRecordKind::EndSection:
                    if (open) {
                        m_sections[*open].end = r;
                        last = open;
                        open.reset();
                    } else {
                        repair(r, quoted("ENDSEC") + " outside a section left out");
                    }
                    break;
                case DxfRecordKind::Eof:
                    if (open) repair(r, quoted("ENDSEC") + " added before " + quoted("EOF"), 1);
                    m_eof = r;
                    return;
                case DxfRecordKind::Other:
                case DxfRecordKind::Table:
                case DxfRecordKind::EndTable:
                case DxfRecordKind::Block:
                case DxfRecordKind::EndBlock:
                case DxfRecordKind::Insert:
                case DxfRecordKind::AttributeDefinition:
                case DxfRecordKind::EntityPart:
                    if (!open) open = reopen(last, r);
                    m_sections[*open].content.push_back(r);
                    break;
            }
        }
        if (open)
            repair(m_count, quoted("ENDSEC") + " added at the end of " + m_sections[*open].name, 1);
        repair(m_count, quoted("EOF") + " added at the end of the file", 2);
    }

    // The section a SECTION record opens: its own, or the earlier one of its name.
    std::optional<std::size_t> startSection(std::uint32_t record) {
        const std::string name = nameOf(record);
        if (name.empty()) {
            repair(record, quoted("SECTION") + " without a name left out");
            return std::nullopt;
        }
        if (const auto same = sectionNamed(name)) {
            repair(record, "a second " + name + " section joined to the first");
            m_sections[*same].end.reset();
            return same;
        }
        m_sections.push_back({name, {record, {}}, {}, std::nullopt});
        return m_sections.size() - 1;
    }

    // A record outside any section belongs to the section before it, whose ENDSEC came too
    // early, when it is what that section holds; else to entities, where a file that lost a
    // section's head, or never had sections, keeps what it draws.
    std::size_t reopen(std::optional<std::size_t> last, std::uint32_t record) {
        if (last && holds(m_sections[*last], m_records.kind(record))) {
            Section& section = m_sections[*last];
            if (section.end)
                repair(*section.end, quoted("ENDSEC") + " inside " + section.name +
                                         " left out: the section goes on after it");
            section.end.reset();
            return *last;
        }
        if (const auto entities = sectionNamed("ENTITIES")) {
            repair(record, "records outside any section taken into ENTITIES");
            m_sections[*entities].end.reset();
            return *entities;
        }
        repair(record, "records outside any section put into a new ENTITIES section");
        Piece head = made("SECTION");
        head.made += m_tags.encodedString(2, "ENTITIES");
        m_sections.push_back({"ENTITIES", std::move(head), {}, std::nullopt});
        return m_sections.size() - 1;
    }

    // Whether a record can go on a section: tables and blocks hold their own records first.
    static bool holds(const Section& section, DxfRecordKind kind) {
        if (section.name == "TABLES") return kind == DxfRecordKind::Table;
        if (section.name == "BLOCKS") return kind == DxfRecordKind::Block;
        return true;
    }

    std::vector<Piece> contentOf(const Section& section) {
        if (section.name == "TABLES") return nested(section, kTables);
        if (section.name == "BLOCKS") return nested(section, kBlocks);
        std::vector<Piece> pieces;
        pieces.reserve(section.content.size());
        for (const std::uint32_t record : section.content) pieces.push_back({record, {}});
        return pieces;
    }

    // The records of TABLES or BLOCKS with every table or block closed once.
    std::vector<Piece> nested(const Section& section, const Nesting& nesting) {
        std::vector<Piece> out;
        bool inside = false;
        for (const std::uint32_t r : section.content) {
            const DxfRecordKind kind = m_records.kind(r);
            if (kind == nesting.open) {
                if (inside) {
                    repair(r, quoted(nesting.closeType) + " added before this " +
                                  std::string(nesting.noun));
                    out.push_back(made(nesting.closeType));
                }
                inside = true;
            } else if (kind == nesting.close) {
                if (!inside) {
                    repair(r, quoted(nesting.closeType) + " outside a " +
                                  std::string(nesting.noun) + " left out");
                    continue;
                }
                inside = false;
            } else if (!inside) {
                const std::string noun(nesting.noun);
                if (out.empty()) {
                    repair(r, "a record of " + section.name + " before its first " + noun +
                                  " left out");
                    continue;
                }
                // Outside, the last piece is the close of the one before: it came too early.
                repair(out.back().record, quoted(nesting.closeType) + " inside a " + noun +
                                              " left out: the " + noun + " goes on after it");
                out.pop_back();
                inside = true;
            }
            out.push_back({r, {}});
        }
        if (inside) {
            repair(section.end.value_or(m_eof.value_or(m_count)),
                   quoted(nesting.closeType) + " added at the end of " + section.name);
            out.push_back(made(nesting.closeType));
        }
        return out;
    }

    const DxfTagFile& m_tags;
    const DxfRecords& m_records;
    const std::uint32_t m_count;
    bool m_prelude = false;
    std::vector<Section> m_sections;
    std::optional<std::uint32_t> m_eof;
    struct Repair {
        std::uint32_t record;
        int rank;
        std::string text;
    };
    std::vector<Repair> m_repairs;
    DxfRecovery m_result;
};

}  // namespace

DxfRecovery recoverStructure(const DxfTagFile& tags, const DxfRecords& records) {
    return Recovery(tags, records).run();
}

// Read access for views of the drawing: the entities of a space or a block in writing order, the
// entries of a table, and the tags of any object.
#include "host/dxf/dxfdocument.h"
#include "host/dxf/dxfviews.h"

namespace {

template <typename Visit>
void visitInsertedBefore(const DxfRecords& records, std::uint32_t record, Visit& visit) {
    const std::vector<std::uint32_t>* inserted = records.insertedBefore(record);
    if (inserted == nullptr) return;
    for (const std::uint32_t r : *inserted) {
        visitInsertedBefore(records, r, visit);
        visit(r);
    }
}

// Calls `visit` for the records from `begin` up to but without `end` as they are written: the
// records edits inserted before a record come before it, those inserted before `end` last.
template <typename Visit>
void inWritingOrder(const DxfRecords& records, std::uint32_t begin, std::uint32_t end,
                    Visit visit) {
    for (std::uint32_t r = begin; r < end; ++r) {
        visitInsertedBefore(records, r, visit);
        if (!records.isWithdrawn(r)) visit(r);
    }
    visitInsertedBefore(records, end, visit);
}

// Whether the entity's code 67 puts it in paper space. The code belongs to the common entity
// data, which ends where the entity's own subclass (the second marker) begins.
bool inPaperSpace(const DxfTagFile& file, DxfTagRange tags) {
    int markers = 0;
    for (std::uint32_t i = 1; i < tags.size(); ++i) {
        const int code = file.code(tags[i]);
        if (code == 67) return file.integer(tags[i]).value_or(0) == 1;
        if (code == 100 && ++markers == 2) break;
        if (code >= 1000) break;
    }
    return false;
}

}  // namespace

std::vector<AcDbObjectId> DxfDocument::entityIds(DxfSpace space) const {
    std::vector<AcDbObjectId> ids;
    try {
        ids.reserve(m_records.count());
        if (const DxfSection* entities = m_structure.section("ENTITIES")) {
            const bool paper = space != DxfSpace::Model;
            // A sub-entity goes where its owner went; only owners carry the space flag.
            bool ownerTaken = false;
            inWritingOrder(m_records, entities->begin + 1, entities->end, [&](std::uint32_t r) {
                const DxfTagRange tags = m_records.tags(r);
                const std::string_view type = m_tags.value(tags[0]);
                if (type != "ATTRIB" && type != "VERTEX" && type != "SEQEND")
                    ownerTaken = inPaperSpace(m_tags, tags) == paper;
                if (ownerTaken) ids.push_back(idOf(r));
            });
        }
        if (space == DxfSpace::PaperLayouts) {
            for (const auto& [block, begin, end] : otherPaperLayouts()) {
                inWritingOrder(m_records, begin + 1, end,
                               [&](std::uint32_t r) { ids.push_back(idOf(r)); });
            }
        }
    } catch (const std::exception&) {
        ids.clear();
    }
    return ids;
}

std::vector<AcDbObjectId> DxfDocument::sectionEntityIds() const {
    std::vector<AcDbObjectId> ids;
    try {
        if (const DxfSection* entities = m_structure.section("ENTITIES")) {
            ids.reserve(entities->end - entities->begin);
            inWritingOrder(m_records, entities->begin + 1, entities->end,
                           [&](std::uint32_t r) { ids.push_back(idOf(r)); });
        }
    } catch (const std::exception&) {
        ids.clear();
    }
    return ids;
}

std::vector<AcDbObjectId> DxfDocument::entityParts(AcDbObjectId entity) const {
    // Parts follow their owner in writing order; an edit may write new attributes before a
    // reference's SEQEND, so the order is followed rather than the records' numbers.
    std::vector<AcDbObjectId> parts;
    const auto record = recordOf(entity);
    if (!record) return parts;
    try {
        for (auto r = m_records.next(*record); r; r = m_records.next(*r)) {
            const std::string_view type = m_tags.value(m_records.head(*r));
            if (type != "ATTRIB" && type != "VERTEX" && type != "SEQEND") break;
            parts.push_back(idOf(*r));
            if (type == "SEQEND") break;
        }
    } catch (const std::exception&) {
        parts.clear();
    }
    return parts;
}

std::vector<AcDbObjectId> DxfDocument::blockEntityIds(AcDbObjectId blockRecord) const {
    std::vector<AcDbObjectId> ids;
    const auto block = blockIndex(blockRecord);
    if (!block || !m_blockInfo[*block].definition) return ids;
    const DxfBlockDefinition& definition = m_structure.blocks()[*m_blockInfo[*block].definition];
    try {
        inWritingOrder(m_records, definition.begin + 1, definition.end,
                       [&](std::uint32_t r) { ids.push_back(idOf(r)); });
    } catch (const std::exception&) {
        ids.clear();
    }
    return ids;
}

AcDbObjectId DxfDocument::blockBeginId(AcDbObjectId blockRecord) const {
    const auto block = blockIndex(blockRecord);
    if (!block || !m_blockInfo[*block].definition) return {};
    return idOf(m_structure.blocks()[*m_blockInfo[*block].definition].begin);
}

std::vector<AcDbObjectId> DxfDocument::tableEntryIds(std::string_view kind) const {
    std::vector<AcDbObjectId> ids;
    if (const DxfTable* table = m_structure.table(kind)) {
        ids.reserve(table->entries.size());
        for (const std::uint32_t entry : table->entries) ids.push_back(idOf(entry));
    }
    return ids;
}

DxfTagRange DxfDocument::tagsOf(AcDbObjectId id) const {
    const auto record = recordOf(id);
    if (!record) return DxfTagRange(0, 0);
    return m_records.tags(*record);
}

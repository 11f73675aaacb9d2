// What redrawing a block in place needs of the drawing: its entities listed, read and erased, the
// references to it and their attributes made again; and the references a selection counts.
#include <algorithm>

#include "host/dxf/dxfblocktally.h"
#include "host/dxf/dxfdocument.h"
#include "host/dxf/dxfguarded.h"
#include "host/dxf/dxfnumber.h"
#include "host/dxf/dxfviews.h"

Acad::ErrorStatus DxfDocument::getBlockEntityIds(AcDbObjectId record,
                                                 std::vector<AcDbObjectId>& ids) const {
    return guarded([&] {
        const auto block = blockIndex(record);
        if (!block) return record.isNull() ? Acad::eNullObjectId : Acad::eWrongObjectType;
        switch (m_blockInfo[*block].layout) {
            case Layout::Model:
                ids = entityIds(DxfSpace::Model);
                break;
            case Layout::Paper:
                ids = entityIds(DxfSpace::Paper);
                break;
            case Layout::None:
            case Layout::OtherPaper:
                ids = blockEntityIds(record);
                break;
        }
        // Attributes, vertices and sequence ends belong to their entity, as in the CAD program.
        std::erase_if(ids, [this](AcDbObjectId id) {
            return m_records.kind(*recordOf(id)) == DxfRecordKind::EntityPart;
        });
        return Acad::eOk;
    });
}

Acad::ErrorStatus DxfDocument::getModelSpaceEntityIds(std::vector<AcDbObjectId>& ids) const {
    return guarded([&] {
        ids = entityIds(DxfSpace::Model);
        std::erase_if(ids, [this](AcDbObjectId id) {
            return m_records.kind(*recordOf(id)) == DxfRecordKind::EntityPart;
        });
        return Acad::eOk;
    });
}

Acad::ErrorStatus DxfDocument::openAttributeDefinition(AcDbObjectId entity,
                                                       AcDbAttributeDefinition& definition) const {
    return guarded([&] {
        const auto record = recordOf(entity);
        if (!record) return Acad::eNullObjectId;
        if (m_records.isWithdrawn(*record)) return Acad::eWasErased;
        if (m_records.kind(*record) != DxfRecordKind::AttributeDefinition)
            return Acad::eWrongObjectType;
        const DxfAttributeDefinitionView view =
            readAttributeDefinition(m_tags, m_records.tags(*record));
        const AcDbText text = textOf(view, view.vertical);
        definition = AcDbAttributeDefinition{};
        definition.position = text.position;
        definition.alignmentPoint = text.alignmentPoint;
        definition.height = text.height;
        definition.widthFactor = text.widthFactor;
        definition.textString = text.textString;
        definition.tag = m_codec.decode(view.tag);
        definition.prompt = m_codec.decode(view.prompt);
        definition.textStyle = text.textStyle;
        definition.horizontalMode = text.horizontalMode;
        definition.verticalMode = text.verticalMode;
        definition.invisible = (view.flags & 1) != 0;
        definition.constant = (view.flags & 2) != 0;
        definition.verifiable = (view.flags & 4) != 0;
        definition.preset = (view.flags & 8) != 0;
        return Acad::eOk;
    });
}

AcDbText DxfDocument::textOf(const DxfAttributeDefinitionView& view, std::int64_t vertical) const {
    AcDbText text;
    text.position = view.firstPoint;
    text.alignmentPoint = view.secondPoint;
    text.height = view.height;
    text.widthFactor = view.widthFactor;
    text.textString = m_codec.decode(view.text);
    if (const auto style = m_styles.find(internedText(view.style)))
        text.textStyle = idOf(m_styles.record(*style));
    text.horizontalMode = static_cast<AcDb::TextHorzMode>(view.horizontal);
    text.verticalMode = static_cast<AcDb::TextVertMode>(vertical);
    return text;
}

Acad::ErrorStatus DxfDocument::openText(AcDbObjectId entity, AcDbText& text) const {
    return guarded([&] {
        const auto record = recordOf(entity);
        if (!record) return Acad::eNullObjectId;
        if (m_records.isWithdrawn(*record)) return Acad::eWasErased;
        const DxfTagRange tags = m_records.tags(*record);
        if (tags.size() == 0 || dxfTrimmed(m_tags.value(tags[0])) != "TEXT")
            return Acad::eWrongObjectType;
        // A text's fields are an attribute definition's, but for its vertical alignment (73).
        const auto vertical = findTag(m_tags, tags, 73);
        text = textOf(readAttributeDefinition(m_tags, tags),
                      vertical ? m_tags.integer(tags[*vertical]).value_or(0) : 0);
        return Acad::eOk;
    });
}

void DxfDocument::withdrawEntity(std::uint32_t record) {
    switch (m_records.kind(record)) {
        case DxfRecordKind::Insert:
            for (const AcDbObjectId part : entityParts(idOf(record)))
                m_records.withdraw(*recordOf(part));
            std::erase(m_modelInserts, record);
            std::erase(m_paperInserts, record);
            break;
        case DxfRecordKind::AttributeDefinition:
            for (BlockInfo& info : m_blockInfo) std::erase(info.attributeDefinitions, record);
            break;
        default:
            break;
    }
    m_records.withdraw(record);
}

Acad::ErrorStatus DxfDocument::eraseEntity(AcDbObjectId entity) {
    return guarded([&] {
        const auto record = recordOf(entity);
        if (!record) return Acad::eNullObjectId;
        if (m_records.isWithdrawn(*record)) return Acad::eWasErased;
        // An entity lies in ENTITIES or in a block's definition; what an edit added there is
        // written before a record that lies there too.
        std::uint32_t place = *record;
        while (const auto anchor = m_records.anchorOf(place)) place = *anchor;
        auto within = [place](std::uint32_t begin, std::uint32_t end) {
            return place > begin && place <= end;
        };
        const DxfSection* entities = m_structure.section("ENTITIES");
        const bool isEntity = (entities != nullptr && within(entities->begin, entities->end)) ||
                              std::any_of(m_structure.blocks().begin(), m_structure.blocks().end(),
                                          [&](const DxfBlockDefinition& block) {
                                              return within(block.begin, block.end);
                                          });
        switch (m_records.kind(*record)) {
            case DxfRecordKind::Other:
            case DxfRecordKind::Insert:
            case DxfRecordKind::AttributeDefinition:
                break;
            default:
                return Acad::eWrongObjectType;  // structure, or a part of another entity
        }
        if (!isEntity) return Acad::eWrongObjectType;
        withdrawEntity(*record);
        return Acad::eOk;
    });
}

Acad::ErrorStatus DxfDocument::getBlockReferenceIds(AcDbObjectId record,
                                                    std::vector<AcDbObjectId>& ids) const {
    return guarded([&] {
        const auto block = blockIndex(record);
        if (!block) return record.isNull() ? Acad::eNullObjectId : Acad::eWrongObjectType;
        ids.clear();
        for (std::uint32_t r = 0; r < m_records.count(); ++r) {
            if (m_records.kind(r) != DxfRecordKind::Insert) continue;
            if (m_blocks.find(internedText(nameBytes(r))) == block) ids.push_back(idOf(r));
        }
        return Acad::eOk;
    });
}

Acad::ErrorStatus DxfDocument::syncBlockReferenceAttributes(AcDbObjectId reference) {
    return guarded([&] {
        AcDbBlockReference placement;
        if (const Acad::ErrorStatus status = openBlockReference(reference, placement);
            status != Acad::eOk)
            return status;
        const auto block = blockIndex(placement.blockTableRecord);
        if (!block) return Acad::eKeyNotFound;
        std::vector<PlacedAttribute> attributes;
        if (const Acad::ErrorStatus status = placeAttributes(*block, placement, attributes);
            status != Acad::eOk)
            return status;
        const std::uint32_t insert = *recordOf(reference);
        std::vector<std::uint32_t> old;
        std::optional<std::uint32_t> end;
        for (const AcDbObjectId part : entityParts(reference)) {
            const std::uint32_t r = *recordOf(part);
            if (m_tags.valueIs(m_records.head(r), "SEQEND")) {
                end = r;
            } else {
                old.push_back(r);
            }
        }
        // New attributes go before the sequence end; a reference that has none cannot take any.
        if (!end) return attributes.empty() ? Acad::eOk : Acad::eNotApplicable;
        for (const std::uint32_t r : old) m_records.withdraw(r);
        for (const PlacedAttribute& attribute : attributes)
            insertAttribute(*end, attribute, nullptr, handleOf(insert));
        return Acad::eOk;
    });
}

Acad::ErrorStatus DxfDocument::countBlockReferences(const AcDbReferenceSelection& selection,
                                                    std::vector<AcDbBlockCount>& counts) const {
    return guarded([&] {
        TallyOptions options;
        options.filter.window = selection.window;
        options.filter.layers = selection.layers;
        options.picked = selection.references;
        options.nested = selection.nested;
        options.recordNames = selection.recordNames;
        options.arraysAsOne = selection.arraysAsOne;
        DrawingTally tally;
        if (selection.layouts) {
            auto spaces = tallySpaces(*this, m_path.string(), options);
            if (!spaces.isOk()) return Acad::eKeyNotFound;
            tally = mergeTallies(spaces.value());
        } else {
            auto model = tallyDrawing(*this, m_path.string(), options);
            if (!model.isOk()) return Acad::eKeyNotFound;
            tally = model.takeValue();
        }
        counts.clear();
        for (const TalliedBlock& block : tally.blocks)
            counts.push_back(AcDbBlockCount{block.name, block.references});
        return Acad::eOk;
    });
}

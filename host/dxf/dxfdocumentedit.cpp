// The working database's calls on a DXF drawing: look-ups, and new records in the file's own form.
#include <cmath>
#include <numbers>

#include "host/dxf/dxfdocument.h"
#include "host/dxf/dxfguarded.h"
#include "host/dxf/dxfrecordbuilder.h"
#include "host/dxf/dxfviews.h"

namespace {

constexpr std::string_view kSectionOrder[] = {"HEADER",   "CLASSES", "TABLES",        "BLOCKS",
                                              "ENTITIES", "OBJECTS", "THUMBNAILIMAGE"};

constexpr std::int64_t kHasAttributeDefinitions = 2;
constexpr std::int64_t kConstantAttribute = 2;

AcGePoint3d placed(const AcGePoint3d& p, const AcGePoint3d& base, const AcDbBlockReference& r) {
    const double x = (p.x - base.x) * r.scaleFactors.sx;
    const double y = (p.y - base.y) * r.scaleFactors.sy;
    const double c = std::cos(r.rotation);
    const double s = std::sin(r.rotation);
    return {r.position.x + x * c - y * s, r.position.y + x * s + y * c,
            r.position.z + (p.z - base.z) * r.scaleFactors.sz};
}

double degrees(double radians) { return radians * 180.0 / std::numbers::pi; }

// DXF has no text for infinities or NaN; a call that would write one is refused before any change.
template <typename... Values>
bool finite(Values... values) {
    return (std::isfinite(values) && ...);
}

bool finite(const AcGePoint3d& p) { return finite(p.x, p.y, p.z); }

bool finite(const AcDbText& t) {
    return finite(t.position) && finite(t.alignmentPoint) && finite(t.height, t.widthFactor);
}

// What an attribute definition shows: its text, placed as a text is.
AcDbText textPartOf(const AcDbAttributeDefinition& d) {
    return {d.position,   d.alignmentPoint, d.height,         d.widthFactor,
            d.textString, d.textStyle,      d.horizontalMode, d.verticalMode};
}

}  // namespace

std::optional<std::uint64_t> DxfDocument::newHandle() {
    if (!m_dialect.handles) return std::nullopt;
    if (!m_nextHandle) {
        // $HANDSEED should exceed every handle; files that break the rule must not get duplicates.
        // The scan noted the file's highest; records edits made before now hold handles too.
        std::uint64_t highest = m_tags.highestHandle();
        for (std::uint32_t r = 0; r < m_records.count(); ++r) {
            if (!m_records.isOriginal(r)) highest = std::max(highest, handleOf(r).value_or(0));
        }
        std::uint64_t seed = 1;
        if (const auto tag = m_header.valueTag("$HANDSEED")) seed = m_tags.handle(*tag).value_or(1);
        m_nextHandle = std::max(seed, highest + 1);
    }
    const std::uint64_t handle = (*m_nextHandle)++;
    ensureHeader();
    m_header.setValue(m_tags, m_records, "$HANDSEED", m_tags.appendHandle(5, *m_nextHandle));
    return handle;
}

void DxfDocument::ensureHeader() {
    if (m_header.exists()) return;
    const std::uint32_t begin = ensureSection("HEADER").begin;
    m_header = DxfHeader(m_tags, m_records, begin);
}

const DxfSection& DxfDocument::ensureSection(std::string_view name) {
    if (const DxfSection* section = m_structure.section(name)) return *section;
    std::uint32_t anchor = m_structure.eofRecord();
    const auto* position = std::find(std::begin(kSectionOrder), std::end(kSectionOrder), name);
    for (const auto* later = position + 1; later < std::end(kSectionOrder); ++later) {
        if (const DxfSection* section = m_structure.section(*later)) {
            anchor = section->begin;
            break;
        }
    }
    const std::uint32_t begin = m_records.insertBefore(
        m_tags, anchor, {m_tags.appendString(0, "SECTION"), m_tags.appendString(2, name)});
    const std::uint32_t end =
        m_records.insertBefore(m_tags, anchor, {m_tags.appendString(0, "ENDSEC")});
    m_structure.addSection(DxfSection{std::string(name), begin, end});
    return *m_structure.section(name);
}

DxfTable& DxfDocument::ensureTable(std::string_view kind) {
    if (DxfTable* table = m_structure.table(kind)) return *table;
    const std::uint32_t anchor = ensureSection("TABLES").end;
    DxfRecordBuilder head(m_tags, m_dialect, "TABLE");
    head.text(2, kind).handle(newHandle()).owner(0).subclass("AcDbSymbolTable").integer(70, 0);
    const std::uint32_t begin = m_records.insertBefore(m_tags, anchor, head.take());
    const std::uint32_t end =
        m_records.insertBefore(m_tags, anchor, {m_tags.appendString(0, "ENDTAB")});
    m_structure.addTable(DxfTable{std::string(kind), begin, end, {}});
    return *m_structure.table(kind);
}

void DxfDocument::countTableEntry(DxfTable& table) {
    std::vector<std::uint32_t> tags = m_records.tagList(table.begin);
    const auto count = findTag(m_tags, m_records.tags(table.begin), 70);
    if (!count) return;
    tags[*count] = m_tags.appendInteger(70, m_tags.integer(tags[*count]).value_or(0) + 1);
    m_records.replace(table.begin, std::move(tags));
}

std::size_t DxfDocument::addBlockDefinition(std::wstring_view name,
                                            std::optional<std::uint64_t> recordHandle) {
    const std::string bytes = m_codec.encode(name);
    const std::uint32_t anchor = ensureSection("BLOCKS").end;
    DxfRecordBuilder begin(m_tags, m_dialect, "BLOCK");
    begin.handle(newHandle()).owner(recordHandle).subclass("AcDbEntity").text(8, "0");
    begin.subclass("AcDbBlockBegin")
        .text(2, bytes)
        .integer(70, 0)
        .point(10, {})
        .text(3, bytes)
        .text(1, "");
    const std::uint32_t beginRecord = m_records.insertBefore(m_tags, anchor, begin.take());
    DxfRecordBuilder end(m_tags, m_dialect, "ENDBLK");
    end.handle(newHandle())
        .owner(recordHandle)
        .subclass("AcDbEntity")
        .text(8, "0")
        .subclass("AcDbBlockEnd");
    const std::uint32_t endRecord = m_records.insertBefore(m_tags, anchor, end.take());
    m_structure.blocks().push_back(DxfBlockDefinition{beginRecord, endRecord});
    return m_structure.blocks().size() - 1;
}

std::size_t DxfDocument::definitionOf(std::size_t block) {
    BlockInfo& info = m_blockInfo[block];
    if (!info.definition)
        info.definition =
            addBlockDefinition(m_blocks.name(block), handleOf(m_blocks.record(block)));
    return *info.definition;
}

DxfDocument::Placement DxfDocument::placementIn(std::size_t block) {
    const BlockInfo& info = m_blockInfo[block];
    const std::optional<std::uint64_t> owner = handleOf(m_blocks.record(block));
    switch (info.layout) {
        case Layout::Model:
        case Layout::Paper:
            // Model space and the active layout keep their entities in ENTITIES.
            return {ensureSection("ENTITIES").end, owner, info.layout == Layout::Paper};
        case Layout::None:
        case Layout::OtherPaper:
            break;
    }
    return {m_structure.blocks()[definitionOf(block)].end, owner, false};
}

void DxfDocument::setBlockFlag(std::size_t definition, std::int64_t flag) {
    const std::uint32_t begin = m_structure.blocks()[definition].begin;
    std::vector<std::uint32_t> tags = m_records.tagList(begin);
    const DxfTagRange range = m_records.tags(begin);
    if (const auto flags = findTag(m_tags, range, 70)) {
        const std::int64_t value = m_tags.integer(tags[*flags]).value_or(0);
        if ((value & flag) == flag) return;
        tags[*flags] = m_tags.appendInteger(70, value | flag);
    } else {
        const auto name = findTag(m_tags, range, 2);
        tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(name.value_or(0) + 1),
                    m_tags.appendInteger(70, flag));
    }
    m_records.replace(begin, std::move(tags));
}

std::uint32_t DxfDocument::appendEntity(const Placement& placement,
                                        std::vector<std::uint32_t> tags) {
    return m_records.insertBefore(m_tags, placement.anchor, std::move(tags));
}

std::vector<AcDbObjectId> DxfDocument::blockTableRecordIds() const {
    std::vector<AcDbObjectId> ids;
    try {
        for (std::size_t i = 0; i < m_blocks.size(); ++i) ids.push_back(idOf(m_blocks.record(i)));
    } catch (const std::exception&) {
        ids.clear();
    }
    return ids;
}

Acad::ErrorStatus DxfDocument::getBlockTableRecordId(const std::wstring& name,
                                                     AcDbObjectId& id) const {
    return guarded([&] {
        const auto block = m_blocks.find(name);
        if (!block) return Acad::eKeyNotFound;
        id = idOf(m_blocks.record(*block));
        return Acad::eOk;
    });
}

Acad::ErrorStatus DxfDocument::addBlockTableRecord(const std::wstring& name, AcDbObjectId& id) {
    return guarded([&] {
        if (name.empty()) return Acad::eInvalidSymbolTableName;
        if (m_blocks.find(name)) return Acad::eDuplicateRecordName;
        if (!m_blockRecordTable) {
            // R12: the definition is the entry.
            const std::size_t definition = addBlockDefinition(name, std::nullopt);
            const std::uint32_t record = m_structure.blocks()[definition].begin;
            m_blocks.add(record, name);
            m_blockInfo.push_back(BlockInfo{Layout::None, definition, {}});
            id = idOf(record);
            return Acad::eOk;
        }
        DxfTable& table = *m_structure.table("BLOCK_RECORD");
        const std::optional<std::uint64_t> handle = newHandle();
        DxfRecordBuilder entry(m_tags, m_dialect, "BLOCK_RECORD");
        entry.handle(handle).owner(handleOf(table.begin)).subclass("AcDbSymbolTableRecord");
        entry.subclass("AcDbBlockTableRecord").text(2, m_codec.encode(name));
        entry.when(m_dialect.layouts, [](DxfRecordBuilder& b) { b.text(340, "0"); });
        entry.when(m_dialect.blockUnits,
                   [](DxfRecordBuilder& b) { b.integer(70, 0).integer(280, 1).integer(281, 0); });
        const std::uint32_t record = m_records.insertBefore(m_tags, table.end, entry.take());
        table.entries.push_back(record);
        countTableEntry(table);
        m_blocks.add(record, name);
        m_blockInfo.push_back(BlockInfo{Layout::None, addBlockDefinition(name, handle), {}});
        id = idOf(record);
        return Acad::eOk;
    });
}

Acad::ErrorStatus DxfDocument::getBlockTableRecordName(AcDbObjectId record,
                                                       std::wstring& name) const {
    return guarded([&] {
        if (record.isNull()) return Acad::eNullObjectId;
        const auto block = blockIndex(record);
        if (!block) return Acad::eWrongObjectType;
        name = m_blocks.name(*block);
        return Acad::eOk;
    });
}

Acad::ErrorStatus DxfDocument::setBlockTableRecordOrigin(AcDbObjectId record,
                                                         const AcGePoint3d& origin) {
    return guarded([&] {
        if (record.isNull()) return Acad::eNullObjectId;
        const auto block = blockIndex(record);
        if (!block) return Acad::eWrongObjectType;
        if (!finite(origin)) return Acad::eInvalidInput;
        const std::uint32_t begin = m_structure.blocks()[definitionOf(*block)].begin;
        std::vector<std::uint32_t> tags = m_records.tagList(begin);
        const double coordinates[] = {origin.x, origin.y, origin.z};
        for (int axis = 0; axis < 3; ++axis) {
            const int code = 10 + 10 * axis;
            const std::uint32_t tag = m_tags.appendReal(code, coordinates[axis]);
            if (const auto at = findTag(m_tags, DxfTagRange(tags), code)) {
                tags[*at] = tag;
            } else {
                tags.push_back(tag);
            }
        }
        m_records.replace(begin, std::move(tags));
        return Acad::eOk;
    });
}

Acad::ErrorStatus DxfDocument::appendLine(AcDbObjectId record, const AcDbLine& line,
                                          AcDbObjectId& id) {
    return guarded([&] {
        std::size_t block = 0;
        if (const Acad::ErrorStatus status = blockOfRecord(record, block); status != Acad::eOk)
            return status;
        if (!finite(line.startPoint) || !finite(line.endPoint)) return Acad::eInvalidInput;
        const Placement placement = placementIn(block);
        DxfRecordBuilder b(m_tags, m_dialect, "LINE");
        addEntityHead(b, placement);
        b.text(8, "0").subclass("AcDbLine").point(10, line.startPoint).point(11, line.endPoint);
        id = idOf(appendEntity(placement, b.take()));
        return Acad::eOk;
    });
}

Acad::ErrorStatus DxfDocument::blockOfRecord(AcDbObjectId record, std::size_t& block) const {
    if (record.isNull()) return Acad::eNullObjectId;
    const auto found = blockIndex(record);
    if (!found) return Acad::eWrongObjectType;
    block = *found;
    return Acad::eOk;
}

void DxfDocument::addEntityHead(DxfRecordBuilder& b, const Placement& placement) {
    b.handle(newHandle()).owner(placement.owner).subclass("AcDbEntity");
    if (placement.paperSpace) b.integer(67, 1);
}

std::string_view DxfDocument::styleNameOf(AcDbObjectId style) const {
    const auto record = recordOf(style);
    return record && m_styles.findRecord(*record) ? nameBytes(*record) : std::string_view();
}

void DxfDocument::addTextPart(DxfRecordBuilder& b, const AcDbText& text) const {
    // Centred and right-justified text hangs on its second point; the first is recomputed by
    // the CAD program, so both are written as the alignment point.
    const bool aligned =
        text.horizontalMode != AcDb::kTextLeft || text.verticalMode != AcDb::kTextBase;
    b.text(8, "0").subclass("AcDbText");
    b.point(10, aligned ? text.alignmentPoint : text.position);
    b.real(40, text.height).text(1, m_codec.encode(text.textString));
    b.real(41, text.widthFactor);
    if (const std::string_view style = styleNameOf(text.textStyle); !style.empty())
        b.text(7, style);
    b.integer(72, text.horizontalMode);
    if (aligned) b.point(11, text.alignmentPoint);
}

Acad::ErrorStatus DxfDocument::appendAttributeDefinition(AcDbObjectId record,
                                                         const AcDbAttributeDefinition& definition,
                                                         AcDbObjectId& id) {
    return guarded([&] {
        std::size_t block = 0;
        if (const Acad::ErrorStatus status = blockOfRecord(record, block); status != Acad::eOk)
            return status;
        if (!finite(textPartOf(definition))) return Acad::eInvalidInput;
        const std::int64_t flags = (definition.invisible ? 1 : 0) | (definition.constant ? 2 : 0) |
                                   (definition.verifiable ? 4 : 0) | (definition.preset ? 8 : 0);
        const Placement placement = placementIn(block);
        DxfRecordBuilder b(m_tags, m_dialect, "ATTDEF");
        addEntityHead(b, placement);
        addTextPart(b, textPartOf(definition));
        b.subclass("AcDbAttributeDefinition");
        if (m_dialect.attributeLock) b.integer(280, 0);
        b.text(3, m_codec.encode(definition.prompt)).text(2, m_codec.encode(definition.tag));
        b.integer(70, flags).integer(74, definition.verticalMode);
        if (m_dialect.attributeLock) b.integer(280, 0);
        const std::uint32_t entity = appendEntity(placement, b.take());
        BlockInfo& info = m_blockInfo[block];
        if (info.layout == Layout::None || info.layout == Layout::OtherPaper) {
            info.attributeDefinitions.push_back(entity);
            setBlockFlag(*info.definition, kHasAttributeDefinitions);
        }
        id = idOf(entity);
        return Acad::eOk;
    });
}

Acad::ErrorStatus DxfDocument::appendText(AcDbObjectId record, const AcDbText& text,
                                          AcDbObjectId& id) {
    return guarded([&] {
        std::size_t block = 0;
        if (const Acad::ErrorStatus status = blockOfRecord(record, block); status != Acad::eOk)
            return status;
        if (!finite(text)) return Acad::eInvalidInput;
        const Placement placement = placementIn(block);
        DxfRecordBuilder b(m_tags, m_dialect, "TEXT");
        addEntityHead(b, placement);
        addTextPart(b, text);
        b.subclass("AcDbText").integer(73, text.verticalMode);
        id = idOf(appendEntity(placement, b.take()));
        return Acad::eOk;
    });
}

Acad::ErrorStatus DxfDocument::getTextStyleId(const std::wstring& name, AcDbObjectId& id) const {
    return guarded([&] {
        const auto style = m_styles.find(name);
        if (!style) return Acad::eKeyNotFound;
        id = idOf(m_styles.record(*style));
        return Acad::eOk;
    });
}

Acad::ErrorStatus DxfDocument::addTextStyle(const AcDbTextStyleTableRecord& style,
                                            AcDbObjectId& id) {
    return guarded([&] {
        if (style.name.empty()) return Acad::eInvalidSymbolTableName;
        if (m_styles.find(style.name)) return Acad::eDuplicateRecordName;
        DxfTable& table = ensureTable("STYLE");
        DxfRecordBuilder b(m_tags, m_dialect, "STYLE");
        b.handle(newHandle()).owner(handleOf(table.begin)).subclass("AcDbSymbolTableRecord");
        b.subclass("AcDbTextStyleTableRecord").text(2, m_codec.encode(style.name)).integer(70, 0);
        b.real(40, 0.0).real(41, 1.0).real(50, 0.0).integer(71, 0).real(42, 2.5);
        b.text(3, m_codec.encode(style.fileName)).text(4, "");
        const std::uint32_t record = m_records.insertBefore(m_tags, table.end, b.take());
        table.entries.push_back(record);
        countTableEntry(table);
        m_styles.add(record, style.name);
        id = idOf(record);
        return Acad::eOk;
    });
}

Acad::ErrorStatus DxfDocument::openBlockReference(AcDbObjectId entity,
                                                  AcDbBlockReference& reference) const {
    return guarded([&] {
        if (entity.isNull()) return Acad::eNullObjectId;
        const auto record = recordOf(entity);
        if (record && m_records.isWithdrawn(*record)) return Acad::eWasErased;
        if (!record || m_records.kind(*record) != DxfRecordKind::Insert)
            return Acad::eWrongObjectType;
        const DxfInsertView view = readInsert(m_tags, m_records.tags(*record));
        const auto block = m_blocks.find(internedText(view.name));
        reference.blockTableRecord = block ? idOf(m_blocks.record(*block)) : AcDbObjectId();
        reference.position = view.position;
        reference.scaleFactors = AcGeScale3d{view.scaleX, view.scaleY, view.scaleZ};
        reference.rotation = view.rotation * std::numbers::pi / 180.0;
        return Acad::eOk;
    });
}

DxfDocument::PlacedAttribute DxfDocument::placeAttribute(std::uint32_t definition,
                                                         const AcDbBlockReference& reference,
                                                         const AcGePoint3d& basePoint) const {
    const DxfAttributeDefinitionView d =
        readAttributeDefinition(m_tags, m_records.tags(definition));
    const double sx = std::abs(reference.scaleFactors.sx);
    const double sy = std::abs(reference.scaleFactors.sy);
    return {definition,
            placed(d.firstPoint, basePoint, reference),
            placed(d.secondPoint, basePoint, reference),
            d.height * sy,
            d.rotation + degrees(reference.rotation),
            sy != 0.0 ? d.widthFactor * sx / sy : d.widthFactor};
}

void DxfDocument::insertAttribute(std::uint32_t anchor, const PlacedAttribute& attribute,
                                  const std::wstring* value, std::optional<std::uint64_t> owner) {
    const DxfAttributeDefinitionView d =
        readAttributeDefinition(m_tags, m_records.tags(attribute.definition));
    const bool aligned = d.horizontal != 0 || d.vertical != 0;
    const std::string text = value ? m_codec.encode(*value) : std::string(d.text);
    DxfRecordBuilder b(m_tags, m_dialect, "ATTRIB");
    b.handle(newHandle())
        .owner(owner)
        .subclass("AcDbEntity")
        .text(8, d.layer.empty() ? "0" : d.layer);
    b.subclass("AcDbText").point(10, attribute.firstPoint);
    b.real(40, attribute.height).text(1, text);
    if (attribute.rotation != 0.0) b.real(50, attribute.rotation);
    b.real(41, attribute.widthFactor);
    if (!d.style.empty()) b.text(7, d.style);
    b.integer(72, d.horizontal);
    if (aligned) b.point(11, attribute.secondPoint);
    b.subclass("AcDbAttribute");
    if (m_dialect.attributeLock) b.integer(280, 0);
    b.text(2, d.tag).integer(70, d.flags).integer(74, d.vertical);
    if (m_dialect.attributeLock) b.integer(280, 0);
    m_records.insertBefore(m_tags, anchor, b.take());
}

std::vector<DxfAttributePrompt> DxfDocument::attributePrompts(AcDbObjectId block) const {
    std::vector<DxfAttributePrompt> prompts;
    const auto index = blockIndex(block);
    if (!index || m_blockInfo[*index].layout != Layout::None) return prompts;
    try {
        for (const std::uint32_t definition : m_blockInfo[*index].attributeDefinitions) {
            const auto view = readAttributeDefinition(m_tags, m_records.tags(definition));
            if ((view.flags & kConstantAttribute) != 0) continue;
            prompts.push_back(
                {m_codec.decode(view.tag), m_codec.decode(view.prompt), m_codec.decode(view.text)});
        }
    } catch (const std::exception&) {
        prompts.clear();
    }
    return prompts;
}

Acad::ErrorStatus DxfDocument::placeAttributes(std::size_t block,
                                               const AcDbBlockReference& reference,
                                               std::vector<PlacedAttribute>& attributes) const {
    const BlockInfo& info = m_blockInfo[block];
    AcGePoint3d basePoint;
    if (info.definition) {
        const std::uint32_t begin = m_structure.blocks()[*info.definition].begin;
        basePoint = readBlockBegin(m_tags, m_records.tags(begin)).basePoint;
    }
    for (const std::uint32_t definition : info.attributeDefinitions) {
        const auto view = readAttributeDefinition(m_tags, m_records.tags(definition));
        if ((view.flags & kConstantAttribute) != 0) continue;
        attributes.push_back(placeAttribute(definition, reference, basePoint));
        const PlacedAttribute& a = attributes.back();
        if (!finite(a.firstPoint) || !finite(a.secondPoint) ||
            !finite(a.height, a.rotation, a.widthFactor))
            return Acad::eInvalidInput;
    }
    return Acad::eOk;
}

Acad::ErrorStatus DxfDocument::insertBlockReference(const AcDbBlockReference& reference,
                                                    AcDbObjectId& id) {
    return guarded([&] { return insertReference(reference, {}, id); });
}

Acad::ErrorStatus DxfDocument::insertBlockReference(const AcDbBlockReference& reference,
                                                    const std::vector<std::wstring>& values,
                                                    AcDbObjectId& id) {
    return guarded([&] { return insertReference(reference, values, id); });
}

Acad::ErrorStatus DxfDocument::insertReference(const AcDbBlockReference& reference,
                                               const std::vector<std::wstring>& values,
                                               AcDbObjectId& id) {
    const auto block = blockIndex(reference.blockTableRecord);
    if (!block) return Acad::eKeyNotFound;
    if (m_blockInfo[*block].layout != Layout::None) return Acad::eInvalidInput;
    std::vector<PlacedAttribute> attributes;
    if (const Acad::ErrorStatus status = placeAttributes(*block, reference, attributes);
        status != Acad::eOk)
        return status;
    const AcGeScale3d& scale = reference.scaleFactors;
    if (!finite(reference.position) || !finite(scale.sx, scale.sy, scale.sz) ||
        !finite(degrees(reference.rotation)))
        return Acad::eInvalidInput;
    std::optional<std::uint64_t> modelSpace;
    for (std::size_t i = 0; i < m_blocks.size(); ++i) {
        if (m_blockInfo[i].layout == Layout::Model) modelSpace = handleOf(m_blocks.record(i));
    }
    const std::string_view name = nameBytes(m_blocks.record(*block));

    InsertedReference undo;
    undo.handleBefore = m_nextHandle;
    if (m_header.exists()) undo.seedTagBefore = m_header.valueTag("$HANDSEED");
    const std::uint32_t anchor = ensureSection("ENTITIES").end;
    const std::optional<std::uint64_t> handle = newHandle();
    if (!undo.handleBefore) undo.handleBefore = handle;
    DxfRecordBuilder b(m_tags, m_dialect, "INSERT");
    b.handle(handle).owner(modelSpace).subclass("AcDbEntity").text(8, "0");
    b.subclass("AcDbBlockReference");
    if (!attributes.empty()) b.integer(66, 1);
    b.text(2, name).point(10, reference.position);
    if (reference.scaleFactors.sx != 1.0) b.real(41, reference.scaleFactors.sx);
    if (reference.scaleFactors.sy != 1.0) b.real(42, reference.scaleFactors.sy);
    if (reference.scaleFactors.sz != 1.0) b.real(43, reference.scaleFactors.sz);
    if (reference.rotation != 0.0) b.real(50, degrees(reference.rotation));
    const std::uint32_t insert = m_records.insertBefore(m_tags, anchor, b.take());
    undo.records.push_back(insert);
    for (std::size_t i = 0; i < attributes.size(); ++i) {
        insertAttribute(anchor, attributes[i], i < values.size() ? &values[i] : nullptr, handle);
        undo.records.push_back(m_records.count() - 1);
    }
    if (!attributes.empty()) {
        DxfRecordBuilder end(m_tags, m_dialect, "SEQEND");
        end.handle(newHandle()).owner(handle).subclass("AcDbEntity").text(8, "0");
        undo.records.push_back(m_records.insertBefore(m_tags, anchor, end.take()));
    }
    undo.handleAfter = m_nextHandle;
    m_modelInserts.push_back(insert);
    m_insertedReferences.push_back(std::move(undo));
    id = idOf(insert);
    return Acad::eOk;
}

Acad::ErrorStatus DxfDocument::eraseLastInsertedReference(AcDbObjectId& id) {
    return guarded([&] {
        if (m_insertedReferences.empty()) return Acad::eKeyNotFound;
        const InsertedReference undo = std::move(m_insertedReferences.back());
        m_insertedReferences.pop_back();
        const std::uint32_t insert = undo.records.front();
        std::erase(m_modelInserts, insert);
        for (const std::uint32_t record : undo.records) m_records.withdraw(record);
        // The seed returns only when no later edit has taken a handle after this insert's.
        if (m_dialect.handles && m_nextHandle == undo.handleAfter) {
            m_nextHandle = undo.handleBefore;
            if (undo.seedTagBefore)
                m_header.setValue(m_tags, m_records, "$HANDSEED", *undo.seedTagBefore);
        }
        id = idOf(insert);
        return Acad::eOk;
    });
}

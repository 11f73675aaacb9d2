// The reader's dispatch by entity type, the codes every entity shares (layer, colour, visibility,
// extrusion), and block references with their attributes.
#include "host/desktop/scene/entityreader.h"

#include <algorithm>
#include <numbers>

#include "host/desktop/scene/acipalette.h"
#include "host/desktop/scene/scenecurves.h"
#include "host/dxf/dxfdocument.h"

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;
constexpr std::int64_t kByBlock = 0;
constexpr std::int64_t kByLayer = 256;
// A MINSERT's grid is drawn up to this many references.
constexpr std::int64_t kMaxGridReferences = 65536;
// Layer names the reader remembers (views of the file's bytes, which stay put).
constexpr std::size_t kLayerCacheSize = 32;

}  // namespace

SceneArc mapArc(const SceneTransform& transform, const SceneArc& arc) {
    return {transform.map(arc.center), transform.mapVector(arc.u), transform.mapVector(arc.v),
            arc.start, arc.end};
}

void addBulgedPolyline(SceneShape& shape, std::span<const SceneBulgeVertex> vertices, bool closed,
                       const SceneTransform& transform, SceneColor color, bool inherits) {
    if (vertices.empty()) return;
    const std::size_t segments = closed ? vertices.size() : vertices.size() - 1;
    const bool bulged = std::any_of(vertices.begin(), vertices.begin() + segments,
                                    [](const SceneBulgeVertex& v) { return v.bulge != 0.0; });
    std::vector<ScenePoint> run;
    run.reserve(vertices.size() + 1);
    if (!bulged) {
        for (const SceneBulgeVertex& v : vertices) run.push_back(transform.map(v.point));
        if (vertices.size() == 1) {
            shape.addDot(run.front(), color, inherits);
        } else {
            shape.addPath(run, closed && vertices.size() > 2, color, inherits);
        }
        return;
    }
    auto flush = [&] {
        if (run.size() > 1) shape.addPath(run, false, color, inherits);
        run.clear();
    };
    for (std::size_t i = 0; i < segments; ++i) {
        const SceneBulgeVertex& from = vertices[i];
        const SceneBulgeVertex& to = vertices[(i + 1) % vertices.size()];
        if (from.bulge == 0.0 || from.point == to.point) {
            if (run.empty()) run.push_back(transform.map(from.point));
            run.push_back(transform.map(to.point));
            continue;
        }
        flush();
        shape.addArc(mapArc(transform, bulgeArc(from.point, to.point, from.bulge)), color,
                     inherits);
    }
    flush();
}

SceneEntityReader::SceneEntityReader(const DxfDocument& document, const SceneLayers& layers,
                                     SceneEntityTypes& types, SceneBlockSource& blocks)
    : m_document(document),
      m_file(document.tagFile()),
      m_layers(layers),
      m_types(types),
      m_blocks(blocks) {}

const SceneEntityReader::TypeInfo& SceneEntityReader::typeInfo(std::string_view type) {
    // The type last met first: entities come in runs of one type.
    if (m_lastType < m_typeCache.size() && m_typeCache[m_lastType].name == type)
        return m_typeCache[m_lastType];
    for (std::size_t i = 0; i < m_typeCache.size(); ++i) {
        if (m_typeCache[i].name == type) {
            m_lastType = i;
            return m_typeCache[i];
        }
    }
    const bool part = type == "SEQEND" || type == "VERTEX" || type == "ATTRIB";
    m_typeCache.push_back({std::string(type), m_types.intern(type), handlerFor(type), part});
    m_lastType = m_typeCache.size() - 1;
    return m_typeCache.back();
}

std::size_t SceneEntityReader::layerOf(std::string_view nameBytes) {
    for (const auto& [name, layer] : m_layerCache) {
        if (name == nameBytes) return layer;
    }
    const std::size_t layer = m_layers.find(nameBytes);
    if (m_layerCache.size() < kLayerCacheSize) m_layerCache.emplace_back(nameBytes, layer);
    return layer;
}

SceneEntityReader::Handler SceneEntityReader::handlerFor(std::string_view type) const {
    struct Entry {
        std::string_view type;
        Handler handler;
    };
    static constexpr Entry kHandlers[] = {
        {"INSERT", &SceneEntityReader::readInsert},
        {"LINE", &SceneEntityReader::readLine},
        {"TEXT", &SceneEntityReader::readText},
        {"CIRCLE", &SceneEntityReader::readCircle},
        {"LWPOLYLINE", &SceneEntityReader::readLwPolyline},
        {"ARC", &SceneEntityReader::readArc},
        {"MTEXT", &SceneEntityReader::readMText},
        {"POLYLINE", &SceneEntityReader::readPolyline},
        {"ATTDEF", &SceneEntityReader::readAttributeDefinition},
        {"ELLIPSE", &SceneEntityReader::readEllipse},
        {"HATCH", &SceneEntityReader::readHatch},
        {"SOLID", &SceneEntityReader::readSolid},
        {"TRACE", &SceneEntityReader::readSolid},
        {"3DFACE", &SceneEntityReader::readFace},
        {"SPLINE", &SceneEntityReader::readSpline},
        {"POINT", &SceneEntityReader::readPoint},
        {"DIMENSION", &SceneEntityReader::readDimension},
        {"LEADER", &SceneEntityReader::readLeader},
        {"IMAGE", &SceneEntityReader::readImage},
        {"WIPEOUT", &SceneEntityReader::readImage},
    };
    for (const Entry& entry : kHandlers) {
        if (entry.type == type) return entry.handler;
    }
    return nullptr;
}

DxfTagRange SceneEntityReader::tagsAt(const Entity& entity, std::size_t offset) const {
    return m_document.tagsOf(entity.ids[entity.at + offset]);
}

std::string_view SceneEntityReader::typeAt(const Entity& entity, std::size_t offset) const {
    if (entity.at + offset >= entity.ids.size()) return {};
    const DxfTagRange tags = tagsAt(entity, offset);
    return tags.size() == 0 ? std::string_view() : m_file.value(tags[0]);
}

SceneEntityRead SceneEntityReader::read(std::span<const AcDbObjectId> ids, std::size_t at,
                                        SceneShape& shape, bool inBlock,
                                        std::optional<bool> paperSpace) {
    SceneEntityRead result;
    if (at >= ids.size()) return result;
    const DxfTagRange tags = m_document.tagsOf(ids[at]);
    const std::string_view type = tags.size() == 0 ? std::string_view() : m_file.value(tags[0]);
    const TypeInfo& info = typeInfo(type);
    result.type = info.number;
    // Vertices and attributes belong to the entity before them; alone they are skipped.
    if (info.part) return result;
    Entity entity{ids, at, &shape, {}, {}, 1, inBlock};
    m_fields.read(m_file, tags);
    const Handler handler =
        paperSpace && (m_fields.integer(67, 0) == 1) != *paperSpace ? nullptr : info.handler;
    bool selectable = false;
    // The shape's box grows with each primitive added: here it measures this entity's alone.
    const SceneRect before = shape.bounds;
    shape.bounds = {};
    if (handler != nullptr && readStyle(entity, selectable)) (this->*handler)(entity);
    // A polyline not drawn still owns its vertices (stray parts would be passed over anyway).
    if (entity.records == 1 && type == "POLYLINE") entity.records = ownedRecords(entity);
    result.records = entity.records;
    result.bounds = shape.bounds;
    shape.bounds = before;
    shape.bounds.unite(result.bounds);
    result.selectable = selectable && !result.bounds.isEmpty();
    return result;
}

std::size_t SceneEntityReader::ownedRecords(const Entity& entity) const {
    std::size_t offset = 1;
    while (entity.at + offset < entity.ids.size()) {
        const std::string_view type = typeAt(entity, offset);
        if (type == "SEQEND") return offset + 1;
        if (type != "ATTRIB" && type != "VERTEX") break;
        ++offset;
    }
    return offset;
}

bool SceneEntityReader::readStyle(Entity& entity, bool& selectable) {
    if (m_fields.integer(60, 0) == 1) return false;  // invisible
    const std::size_t layerIndex = m_lastLayer = layerOf(m_fields.text(8));
    const SceneLayer& layer = m_layers.layer(layerIndex);
    const bool onZero = layerIndex == m_layers.layerZero();
    if (layer.frozen && !(entity.inBlock && onZero)) return false;
    if (layer.off && !(entity.inBlock && onZero)) {
        // A reference on a layer that is off still shows what its block holds on other layers.
        if (m_file.value(tagsAt(entity, 0)[0]) != "INSERT") return false;
    }
    selectable = layer.isShown();
    entity.style = styleOf(m_fields, layerIndex, entity.inBlock);
    if (m_fields.has(210) || m_fields.has(220) || m_fields.has(230))
        entity.ocs = SceneOcs(m_fields.real(210, 0), m_fields.real(220, 0), m_fields.real(230, 1));
    return true;
}

SceneEntityReader::Style SceneEntityReader::styleOf(const SceneFields& fields, std::size_t layer,
                                                    bool inBlock) const {
    Style style;
    const bool onZero = layer == m_layers.layerZero();
    style.inherits = inBlock && onZero;
    if (fields.has(420)) {
        style.color = {static_cast<SceneRgb>(fields.integer(420, 0) & 0xFFFFFF),
                       SceneColorSource::Fixed};
        return style;
    }
    const std::int64_t aci = fields.integer(62, kByLayer);
    if (aci == kByLayer) {
        style.color = style.inherits
                          ? SceneColor{kSceneForeground, SceneColorSource::ByLayer}
                          : SceneColor{m_layers.layer(layer).color, SceneColorSource::Fixed};
    } else if (aci == kByBlock) {
        style.color = {kSceneForeground,
                       inBlock ? SceneColorSource::ByBlock : SceneColorSource::Fixed};
    } else {
        style.color = {aciColor(static_cast<int>(std::abs(aci))), SceneColorSource::Fixed};
    }
    return style;
}

void SceneEntityReader::readPoint(Entity& entity) {
    entity.shape->addDot({m_fields.real(10, 0), m_fields.real(20, 0)}, entity.style.color,
                         entity.style.inherits);
}

void SceneEntityReader::readInsert(Entity& entity) {
    const std::optional<SceneBlockSource::Block> block = m_blocks.block(m_fields.text(2));
    const double sx = m_fields.real(41, 1);
    const double sy = m_fields.real(42, 1);
    const double rotation = m_fields.real(50, 0) * kDegree;
    const ScenePoint position{m_fields.real(10, 0), m_fields.real(20, 0)};
    // Heights only matter where the OCS is tilted or turned over.
    const double z = entity.ocs.isWorld() ? 0.0 : m_fields.real(30, 0);
    const std::int64_t columns = std::max<std::int64_t>(1, m_fields.integer(70, 1));
    const std::int64_t rows = std::max<std::int64_t>(1, m_fields.integer(71, 1));
    const double columnSpacing = m_fields.real(44, 0);
    const double rowSpacing = m_fields.real(45, 0);
    const Style style = entity.style;
    const std::size_t layerIndex = m_lastLayer;
    if (block) {
        const SceneTransform turn =
            rotation == 0.0 ? SceneTransform() : SceneTransform::rotation(rotation);
        // Most references are neither turned nor tilted: those products are left out.
        SceneTransform local = SceneTransform::translation(-block->basePoint.x, -block->basePoint.y)
                                   .then(SceneTransform::scaling(sx, sy));
        if (rotation != 0.0) local = local.then(turn);
        const bool world = entity.ocs.isWorld();
        const SceneTransform toWorld = entity.ocs.transform(z);
        std::int64_t placed = 0;
        for (std::int64_t row = 0; row < rows && placed < kMaxGridReferences; ++row) {
            for (std::int64_t column = 0; column < columns && placed < kMaxGridReferences;
                 ++column, ++placed) {
                const ScenePoint offset =
                    turn.mapVector({static_cast<double>(column) * columnSpacing,
                                    static_cast<double>(row) * rowSpacing});
                SceneReference reference;
                reference.shape = block->shape;
                reference.transform = local.then(SceneTransform::translation(
                    position.x + offset.x, position.y + offset.y));
                if (!world) reference.transform = reference.transform.then(toWorld);
                reference.layer = static_cast<std::uint16_t>(layerIndex);
                entity.shape->addReference(reference, style.color, style.inherits);
                entity.shape->bounds.unite(reference.transform.mapRect(block->bounds));
            }
        }
    }
    // Attributes follow only a reference that says so (66 1).
    if (m_fields.integer(66, 0) == 1) readAttributes(entity, style);
}

void SceneEntityReader::readAttributes(Entity& entity, const Style& referenceStyle) {
    std::size_t offset = 1;
    for (; entity.at + offset < entity.ids.size(); ++offset) {
        const std::string_view type = typeAt(entity, offset);
        if (type == "SEQEND") {
            ++offset;
            break;
        }
        if (type != "ATTRIB") break;
        m_fields.read(m_file, tagsAt(entity, offset));
        if ((m_fields.integer(70, 0) & 1) != 0 || m_fields.integer(60, 0) == 1) continue;
        const std::size_t layer = layerOf(m_fields.text(8));
        const SceneLayer& attributeLayer = m_layers.layer(layer);
        const bool onZero = layer == m_layers.layerZero();
        if (!attributeLayer.isShown() && !(entity.inBlock && onZero)) continue;
        Style style = styleOf(m_fields, layer, entity.inBlock);
        // BYBLOCK on an attribute means the colour of the reference it belongs to.
        if (!entity.inBlock && !m_fields.has(420) && m_fields.integer(62, kByLayer) == kByBlock)
            style.color = referenceStyle.color;
        const SceneOcs saved = entity.ocs;
        entity.ocs =
            (m_fields.has(210) || m_fields.has(230))
                ? SceneOcs(m_fields.real(210, 0), m_fields.real(220, 0), m_fields.real(230, 1))
                : SceneOcs();
        addTextRun(entity, entity.ids[entity.at + offset], style, 74, SceneTextContent::Value);
        entity.ocs = saved;
    }
    entity.records = offset;
}

void SceneEntityReader::readDimension(Entity& entity) {
    // The dimension's picture is an anonymous block drawn where it stands in the world.
    const std::optional<SceneBlockSource::Block> block = m_blocks.block(m_fields.text(2));
    if (!block) return;
    SceneReference reference;
    reference.shape = block->shape;
    reference.layer = static_cast<std::uint16_t>(m_lastLayer);
    entity.shape->addReference(reference, entity.style.color, entity.style.inherits);
    entity.shape->bounds.unite(block->bounds);
}

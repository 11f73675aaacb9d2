// Reads one entity of the drawing (with the attributes or vertices that belong to it) into the
// primitives of a shape: curves in the shape's space, colours resolved as far as the entity alone
// decides them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/api/acdbobjectid.h"
#include "host/desktop/scene/entityfields.h"
#include "host/desktop/scene/sceneentitytypes.h"
#include "host/desktop/scene/scenelayers.h"
#include "host/desktop/scene/sceneocs.h"
#include "host/desktop/scene/sceneshape.h"

class DxfDocument;

// The block definitions a reference can show, as the reader asks for them.
class SceneBlockSource {
public:
    struct Block {
        std::uint32_t shape = 0;
        ScenePoint basePoint;
        SceneRect bounds;  // in block space, nested references included
    };
    virtual ~SceneBlockSource() = default;
    // The block a reference names with the bytes of its code 2; none when the drawing lacks it
    // or it is one of the blocks now being built (a reference to itself, at any depth).
    virtual std::optional<Block> block(std::string_view nameBytes) = 0;
};

struct SceneEntityRead {
    std::size_t records = 1;  // the entity's own record and those that belong to it
    std::uint16_t type = 0;   // in SceneEntityTypes
    bool selectable = false;  // drawn, and on a layer that is on and thawed
    SceneRect bounds;         // of the primitives it added
};

class SceneEntityReader {
public:
    SceneEntityReader(const DxfDocument& document, const SceneLayers& layers,
                      SceneEntityTypes& types, SceneBlockSource& blocks);

    // Reads the entity at ids[at] into `shape`. Inside a block, entities on layer 0 and BYBLOCK
    // colours are left to the reference that shows them, and attribute definitions are not drawn.
    // With `paperSpace` given, an entity of the other space (code 67) is passed over.
    SceneEntityRead read(std::span<const AcDbObjectId> ids, std::size_t at, SceneShape& shape,
                         bool inBlock, std::optional<bool> paperSpace = std::nullopt);

private:
    // What the entity's common codes say: where it draws and in which colour.
    struct Style {
        SceneColor color;
        bool inherits = false;
    };
    struct Entity {
        std::span<const AcDbObjectId> ids;
        std::size_t at = 0;
        SceneShape* shape = nullptr;
        Style style;
        SceneOcs ocs;
        std::size_t records = 1;
        bool inBlock = false;
    };
    using Handler = void (SceneEntityReader::*)(Entity&);

    Handler handlerFor(std::string_view type) const;
    // The layer an entity names, from the reader's own list before the table.
    std::size_t layerOf(std::string_view nameBytes);
    // What the reader knows of a type: its number (from the reader's own list before the shared
    // one), its handler, and whether it is a part of the entity before it.
    struct TypeInfo {
        std::string name;
        std::uint16_t number = 0;
        Handler handler = nullptr;
        bool part = false;
    };
    const TypeInfo& typeInfo(std::string_view type);
    // Resolves layer visibility and colour; false when the entity is not drawn at all.
    bool readStyle(Entity& entity, bool& selectable);
    Style styleOf(const SceneFields& fields, std::size_t layer, bool inBlock) const;
    DxfTagRange tagsAt(const Entity& entity, std::size_t offset) const;
    // The entity's OCS at the height its code gives; in the world's axes heights do not show,
    // and are not read.
    SceneTransform ocsTransform(const Entity& entity, int heightCode) const {
        return entity.ocs.isWorld() ? SceneTransform()
                                    : entity.ocs.transform(m_fields.real(heightCode, 0));
    }
    std::string_view typeAt(const Entity& entity, std::size_t offset) const;
    // The records after a reference or polyline that belong to it: attributes or vertices and
    // the closing SEQEND, counted with the entity's own.
    std::size_t ownedRecords(const Entity& entity) const;

    // entityreader.cpp
    void readPoint(Entity& entity);
    void readInsert(Entity& entity);
    void readDimension(Entity& entity);
    void readAttributes(Entity& entity, const Style& referenceStyle);
    // entitycurves.cpp
    void readLine(Entity& entity);
    void readCircle(Entity& entity);
    void readArc(Entity& entity);
    void readEllipse(Entity& entity);
    void readLwPolyline(Entity& entity);
    void readPolyline(Entity& entity);
    void readSolid(Entity& entity);
    void readFace(Entity& entity);
    void readSpline(Entity& entity);
    void readLeader(Entity& entity);
    void readImage(Entity& entity);
    // entitytext.cpp
    void readText(Entity& entity);
    void readAttributeDefinition(Entity& entity);
    void readMText(Entity& entity);
    // A one-line run from the fields of TEXT, ATTRIB or ATTDEF (vertical alignment in 73 or 74).
    void addTextRun(Entity& entity, AcDbObjectId source, const Style& style, int verticalCode,
                    SceneTextContent content);
    // entityhatch.cpp
    void readHatch(Entity& entity);

    const DxfDocument& m_document;
    const DxfTagFile& m_file;
    const SceneLayers& m_layers;
    SceneEntityTypes& m_types;
    SceneBlockSource& m_blocks;
    SceneFields m_fields;
    SceneFields m_partFields;  // a polyline's vertices
    std::vector<std::pair<std::string_view, std::size_t>> m_layerCache;
    std::size_t m_lastLayer = 0;  // of the entity being read
    std::vector<TypeInfo> m_typeCache;
    std::size_t m_lastType = 0;
};

// A polyline's vertex with the bulge of the segment that starts at it.
struct SceneBulgeVertex {
    ScenePoint point;
    double bulge = 0.0;
};

// Adds the polyline as paths for its straight runs and arcs for its bulged segments, mapped by
// `transform` (its OCS). One closed path when nothing bulges.
void addBulgedPolyline(SceneShape& shape, std::span<const SceneBulgeVertex> vertices, bool closed,
                       const SceneTransform& transform, SceneColor color, bool inherits);

SceneArc mapArc(const SceneTransform& transform, const SceneArc& arc);

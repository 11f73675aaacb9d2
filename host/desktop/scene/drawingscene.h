// What a space of a drawing shows, ready to draw and to select from: its top-level entities with
// their primitives and boxes, the shapes of the block definitions they reference, the layers, the
// extents, and a spatial index for drawing a part of the space and for hit tests.
#pragma once

#include <atomic>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <unordered_map>
#include <vector>

#include "host/api/acdbobjectid.h"
#include "host/desktop/scene/sceneentitytypes.h"
#include "host/desktop/scene/scenegridindex.h"
#include "host/desktop/scene/scenelayers.h"
#include "host/desktop/scene/sceneshape.h"

class DxfDocument;
enum class DxfSpace;

struct SceneEntity {
    AcDbObjectId id;
    std::uint32_t firstPrimitive = 0;  // in the primitives of its part's shape
    std::uint32_t primitiveCount = 0;
    std::uint16_t type = 0;  // in DrawingScene::types()
    bool selectable = false;
    bool removed = false;
};

// A run of entities in drawing order with the pool of their primitives. A scene is read in a
// few parts side by side; what edits add goes into a part of its own.
struct ScenePart {
    SceneShape shape;
    std::vector<SceneEntity> entities;
    std::vector<SceneRect> bounds;  // parallel to entities
};

class DrawingScene {
public:
    // Builds the scene of a space. The document must outlive the scene: the characters of texts
    // are read from it when they are drawn. Reading uses `threads` threads; 0 leaves it to the
    // scene: one for small drawings, up to one a core for large ones.
    DrawingScene(const DxfDocument& document, DxfSpace space, unsigned threads = 0);
    ~DrawingScene();
    DrawingScene(const DrawingScene&) = delete;
    DrawingScene& operator=(const DrawingScene&) = delete;

    const DxfDocument& document() const { return m_document; }
    const SceneLayers& layers() const { return m_layers; }
    const SceneEntityTypes& types() const { return m_types; }
    const SceneShape& block(std::uint32_t shape) const { return m_blocks[shape]; }
    std::span<const SceneRect> blockBounds() const { return m_blockBounds; }

    // Entities by their place in drawing order (the file's, then what edits added). Removed ones
    // keep their place, marked.
    std::size_t entityCount() const { return m_partStart.back(); }
    const SceneEntity& entity(std::size_t index) const;
    const SceneRect& boundsOf(std::size_t index) const;
    const SceneShape& shapeOf(std::size_t index) const;
    std::optional<std::size_t> indexOf(AcDbObjectId id) const;
    // The parts in drawing order, for walking every entity fast; part p starts at partStart(p).
    std::size_t partCount() const { return m_parts.size(); }
    const ScenePart& part(std::size_t p) const { return m_parts[p]; }
    std::size_t partStart(std::size_t p) const { return m_partStart[p]; }

    // The box of what is drawn; empty for an empty space.
    SceneRect extents() const;
    // The entities (not removed) whose box meets the rectangle, by place in drawing order.
    void entitiesIn(const SceneRect& rect, std::vector<std::uint32_t>& out) const;
    // The spatial index is built when first asked for, which a picture of the whole space never
    // does. This builds it now on a thread of its own, so that it is ready, or nearly, when the
    // view first zooms in or the user first selects; asking sooner waits for it. Called from the
    // thread that owns the scene.
    void prepareIndex() const;
    bool indexBuilt() const;

    // Hit tests over entities that can be selected, narrowed to a DXF type name when one is given
    // ("INSERT", any case). A pick finds the entity nearest the point within the tolerance (the
    // last drawn of equals); a window the entities wholly inside the rectangle; a crossing those
    // inside it or crossing its edges. Lists are in drawing order.
    std::optional<AcDbObjectId> pick(ScenePoint point, double tolerance,
                                     std::string_view type = {}) const;
    std::vector<AcDbObjectId> windowSelect(const SceneRect& rect, std::string_view type = {}) const;
    std::vector<AcDbObjectId> crossingSelect(const SceneRect& rect,
                                             std::string_view type = {}) const;

    // After an edit of the document: shows an entity the space now holds (a new reference with
    // its attributes, say), or takes one away. False when the id is already shown, not in the
    // scene's space or draws nothing; for a removal, when the scene does not show it.
    bool addEntity(AcDbObjectId id);
    bool removeEntity(AcDbObjectId id);

    // The characters a text run shows, as lines separated by '\n'.
    std::wstring textOf(const SceneText& text) const;

private:
    class Blocks;
    class ThreadBlocks;

    std::pair<std::size_t, std::size_t> locate(std::size_t index) const;
    void readParts(std::span<const AcDbObjectId> ids, unsigned threads);
    void readPart(std::span<const AcDbObjectId> ids, ScenePart& part);
    SceneGridIndex::Boxes boxes() const;
    const SceneGridIndex& index() const;
    // Candidates of a hit test: selectable, not removed, of the type, box meeting the rectangle.
    std::vector<std::uint32_t> candidates(const SceneRect& rect, std::string_view type) const;

    const DxfDocument& m_document;
    DxfSpace m_space;
    SceneLayers m_layers;
    SceneEntityTypes m_types;
    std::deque<SceneShape> m_blocks;  // a deque keeps the shapes where they are as it grows
    std::vector<SceneRect> m_blockBounds;
    std::unique_ptr<Blocks> m_blockLibrary;
    std::vector<ScenePart> m_parts;
    std::vector<std::size_t> m_partStart;  // then the entity count
    bool m_editPart = false;               // whether the last part holds what edits added
    mutable std::unordered_map<AcDbObjectId, std::uint32_t> m_byId;  // made on first use
    mutable SceneGridIndex m_index;
    mutable std::once_flag m_indexOnce;
    mutable std::atomic<bool> m_indexBuilt = false;
    mutable std::jthread m_indexBuilder;  // joined first when the scene goes
    mutable SceneRect m_extents;
    mutable bool m_extentsValid = false;
};

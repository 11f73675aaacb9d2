// Building a space's scene: block shapes first (each once, nested ones before their holders, a
// reference to a block being built left out), then the entities in parts read side by side, then
// the index.
#include "host/desktop/scene/drawingscene.h"

#include <algorithm>
#include <bit>
#include <cwctype>
#include <mutex>
#include <thread>
#include <unordered_set>

#include "host/desktop/scene/entityreader.h"
#include "host/desktop/scene/scenehittest.h"
#include "host/desktop/scene/scenetextformat.h"
#include "host/dxf/dxfdocument.h"
#include "host/dxf/dxfviews.h"

namespace {

// Parts smaller than this are not worth a thread.
constexpr std::size_t kRecordsPerThread = 50000;

bool isLayoutName(const std::wstring& name) {
    std::wstring upper(name);
    for (wchar_t& c : upper) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
    return upper.starts_with(L"*MODEL_SPACE") || upper.starts_with(L"*PAPER_SPACE");
}

struct BytesHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view bytes) const noexcept {
        return std::hash<std::string_view>{}(bytes);
    }
};

using BlockAnswer = std::optional<SceneBlockSource::Block>;
using BlocksByName = std::unordered_map<std::string, BlockAnswer, BytesHash, std::equal_to<>>;

bool isPart(std::string_view type) {
    return type == "ATTRIB" || type == "VERTEX" || type == "SEQEND";
}

// Puts distinct places below `count` in order. Many of them are marked in a bitmap of all places
// and read back in order, much quicker than sorting them; a few are sorted.
void sortPlaces(std::vector<std::uint32_t>& places, std::size_t count) {
    if (places.size() * 16 < count / 64) {
        std::sort(places.begin(), places.end());
        return;
    }
    std::vector<std::uint64_t> marks((count + 63) / 64);
    for (const std::uint32_t place : places) marks[place >> 6] |= std::uint64_t{1} << (place & 63);
    places.clear();
    for (std::size_t word = 0; word < marks.size(); ++word) {
        for (std::uint64_t bits = marks[word]; bits != 0; bits &= bits - 1)
            places.push_back(static_cast<std::uint32_t>(word * 64 + std::countr_zero(bits)));
    }
}

}  // namespace

// The block shapes, found by the bytes a reference names them with. One lock guards it while
// parts are read side by side.
class DrawingScene::Blocks final : public SceneBlockSource {
public:
    explicit Blocks(DrawingScene& scene) : m_scene(scene) {}

    std::optional<Block> block(std::string_view nameBytes) override {
        const std::lock_guard lock(m_mutex);
        return blockLocked(nameBytes);
    }

    // Every block definition but the layouts', so that entities find their shapes ready.
    void buildAll() {
        const DxfDocument& document = m_scene.m_document;
        for (const AcDbObjectId record : document.blockTableRecordIds()) {
            const AcDbObjectId begin = document.blockBeginId(record);
            if (begin.isNull()) continue;
            block(readBlockBegin(document.tagFile(), document.tagsOf(begin)).name);
        }
    }

private:
    std::optional<Block> blockLocked(std::string_view nameBytes) {
        if (const auto it = m_byName.find(nameBytes); it != m_byName.end()) return it->second;
        const std::wstring name = m_scene.m_document.decodeText(nameBytes);
        AcDbObjectId record;
        if (m_scene.m_document.getBlockTableRecordId(name, record) != Acad::eOk) {
            m_byName.emplace(std::string(nameBytes), std::nullopt);
            return std::nullopt;
        }
        const auto [found, building] = build(record);
        // A block being built is no answer to keep: later references to it are fine.
        if (!building) m_byName.emplace(std::string(nameBytes), found);
        return found;
    }

    // Nested blocks are built by a reader of their own, which asks again through here.
    class Nested final : public SceneBlockSource {
    public:
        explicit Nested(Blocks& blocks) : m_blocks(blocks) {}
        std::optional<Block> block(std::string_view nameBytes) override {
            return m_blocks.blockLocked(nameBytes);
        }

    private:
        Blocks& m_blocks;
    };

    // The shape of the block record, and whether it is still being built (a cycle). The blocks it
    // holds are built first, innermost first, so that no build waits on another and nesting as
    // deep as a drawing likes needs no deeper stack.
    std::pair<BlockAnswer, bool> build(AcDbObjectId record) {
        if (const auto it = m_byRecord.find(record); it != m_byRecord.end())
            return {it->second, false};
        if (m_building.contains(record) || m_pending.contains(record)) return {std::nullopt, true};
        for (const AcDbObjectId inner : innermostFirst(record)) {
            m_pending.erase(inner);
            buildOne(inner);
        }
        return {m_byRecord.at(record), false};
    }

    // The record and the blocks it holds not built yet, each after those it holds, found by a
    // walk with a stack of its own. A block the walk is inside when it meets it again closes a
    // cycle: it stays pending while the blocks inside it are built, which leaves it out of them.
    std::vector<AcDbObjectId> innermostFirst(AcDbObjectId root) {
        const DxfDocument& document = m_scene.m_document;
        struct Level {
            AcDbObjectId record;
            std::vector<DxfReference> references;
            std::size_t next = 0;
        };
        std::vector<AcDbObjectId> order;
        std::vector<Level> levels;
        levels.push_back({root, document.referencesInBlock(root), 0});
        m_pending.insert(root);
        while (!levels.empty()) {
            Level& level = levels.back();
            if (level.next == level.references.size()) {
                order.push_back(level.record);
                levels.pop_back();
                continue;
            }
            const DxfReference& reference = level.references[level.next++];
            AcDbObjectId inner;
            if (document.getBlockTableRecordId(std::wstring(reference.blockName), inner) !=
                Acad::eOk)
                continue;
            if (m_byRecord.contains(inner) || m_building.contains(inner) ||
                m_pending.contains(inner))
                continue;
            m_pending.insert(inner);
            levels.push_back({inner, document.referencesInBlock(inner), 0});
        }
        return order;
    }

    void buildOne(AcDbObjectId record) {
        const DxfDocument& document = m_scene.m_document;
        std::wstring name;
        if (document.getBlockTableRecordName(record, name) != Acad::eOk || isLayoutName(name)) {
            m_byRecord.emplace(record, std::nullopt);
            return;
        }
        m_building.insert(record);
        const auto shape = static_cast<std::uint32_t>(m_scene.m_blocks.size());
        m_scene.m_blocks.emplace_back();
        m_scene.m_blockBounds.emplace_back();
        Block block;
        block.shape = shape;
        if (const AcDbObjectId begin = document.blockBeginId(record); !begin.isNull()) {
            const AcGePoint3d base =
                readBlockBegin(document.tagFile(), document.tagsOf(begin)).basePoint;
            block.basePoint = {base.x, base.y};
        }
        const std::vector<AcDbObjectId> ids = document.blockEntityIds(record);
        Nested nested(*this);
        SceneEntityReader reader(document, m_scene.m_layers, m_scene.m_types, nested);
        SceneShape& target = m_scene.m_blocks[shape];
        for (std::size_t i = 0; i < ids.size();) i += reader.read(ids, i, target, true).records;
        block.bounds = target.bounds;
        m_scene.m_blockBounds[shape] = target.bounds;
        m_building.erase(record);
        m_byRecord.emplace(record, block);
    }

    DrawingScene& m_scene;
    std::mutex m_mutex;
    BlocksByName m_byName;
    std::unordered_map<AcDbObjectId, BlockAnswer> m_byRecord;
    std::unordered_set<AcDbObjectId> m_building;
    std::unordered_set<AcDbObjectId> m_pending;  // found by a walk, not built yet
};

// A reader's own memory of the blocks it met, so that threads seldom wait for the shared one: a
// small open-addressing table, as a reference asks once for every entity it reads.
class DrawingScene::ThreadBlocks final : public SceneBlockSource {
public:
    explicit ThreadBlocks(Blocks& shared) : m_shared(shared), m_slots(64) {}
    std::optional<Block> block(std::string_view nameBytes) override {
        const std::uint64_t hash = hashOf(nameBytes);
        std::size_t i = hash & (m_slots.size() - 1);
        for (; m_slots[i].used; i = (i + 1) & (m_slots.size() - 1)) {
            if (m_slots[i].hash == hash && m_slots[i].name == nameBytes) return m_slots[i].answer;
        }
        const BlockAnswer answer = m_shared.block(nameBytes);
        m_slots[i] = {hash, std::string(nameBytes), answer, true};
        if (++m_count * 2 > m_slots.size()) grow();
        return answer;
    }

private:
    struct Slot {
        std::uint64_t hash = 0;
        std::string name;
        BlockAnswer answer;
        bool used = false;
    };
    // FNV-1a: names are short.
    static std::uint64_t hashOf(std::string_view bytes) {
        std::uint64_t hash = 14695981039346656037ull;
        for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ull;
        return hash;
    }
    void grow() {
        std::vector<Slot> old(m_slots.size() * 2);
        old.swap(m_slots);
        for (Slot& slot : old) {
            if (!slot.used) continue;
            std::size_t i = slot.hash & (m_slots.size() - 1);
            while (m_slots[i].used) i = (i + 1) & (m_slots.size() - 1);
            m_slots[i] = std::move(slot);
        }
    }

    Blocks& m_shared;
    std::vector<Slot> m_slots;  // a power of two, at most half full
    std::size_t m_count = 0;
};

DrawingScene::DrawingScene(const DxfDocument& document, DxfSpace space, unsigned threads)
    : m_document(document),
      m_space(space),
      m_layers(document),
      m_blockLibrary(std::make_unique<Blocks>(*this)),
      m_partStart{0} {
    m_blockLibrary->buildAll();
    // Model space and the active layout share the ENTITIES section; the reader tells them apart.
    const std::vector<AcDbObjectId> ids =
        space == DxfSpace::PaperLayouts ? document.entityIds(space) : document.sectionEntityIds();
    readParts(ids, threads);
    // Nothing is removed yet: the parts' boxes are the extents.
    for (const ScenePart& part : m_parts) m_extents.unite(part.shape.bounds);
    m_extentsValid = true;
}

DrawingScene::~DrawingScene() {
    if (m_indexBuilder.joinable()) m_indexBuilder.join();
}

const SceneGridIndex& DrawingScene::index() const {
    std::call_once(m_indexOnce, [this] {
        SceneRect all;
        for (const ScenePart& part : m_parts) all.unite(part.shape.bounds);
        m_index.build(boxes(), all, std::max(1u, std::thread::hardware_concurrency()));
        m_indexBuilt = true;
    });
    return m_index;
}

void DrawingScene::prepareIndex() const {
    if (m_indexBuilt || m_indexBuilder.joinable()) return;
    m_indexBuilder = std::jthread([this] { index(); });
}

bool DrawingScene::indexBuilt() const { return m_indexBuilt; }

void DrawingScene::readParts(std::span<const AcDbObjectId> ids, unsigned threads) {
    // Left to the scene, small drawings are read on one thread; a number asked for is used.
    const std::size_t wanted = threads == 0 ? ids.size() / kRecordsPerThread : threads;
    const unsigned cores = std::max(1u, std::thread::hardware_concurrency());
    const std::size_t count = std::clamp<std::size_t>(
        std::min(wanted, ids.size()), 1, threads == 0 ? cores : std::min(threads, 64u));
    // Each part starts at an entity of its own, not at an attribute or vertex of the one before.
    std::vector<std::size_t> starts{0};
    for (std::size_t p = 1; p < count; ++p) {
        std::size_t at = std::max(starts.back(), ids.size() * p / count);
        while (at < ids.size() && isPart(m_document.tagFile().value(m_document.tagsOf(ids[at])[0])))
            ++at;
        starts.push_back(at);
    }
    starts.push_back(ids.size());
    m_parts.resize(count);
    {
        std::vector<std::jthread> workers;
        for (std::size_t p = 1; p < count; ++p) {
            workers.emplace_back([this, ids, &starts, p] {
                readPart(ids.subspan(starts[p], starts[p + 1] - starts[p]), m_parts[p]);
            });
        }
        readPart(ids.subspan(0, starts[1]), m_parts[0]);
    }
    m_partStart.assign(1, 0);
    for (const ScenePart& part : m_parts)
        m_partStart.push_back(m_partStart.back() + part.entities.size());
}

void DrawingScene::readPart(std::span<const AcDbObjectId> ids, ScenePart& part) {
    const std::optional<bool> paperSpace = m_space == DxfSpace::PaperLayouts
                                               ? std::nullopt
                                               : std::optional<bool>(m_space == DxfSpace::Paper);
    ThreadBlocks blocks(*m_blockLibrary);
    SceneEntityReader reader(m_document, m_layers, m_types, blocks);
    // Room for the common case, one primitive an entity; pages never written cost nothing.
    part.entities.reserve(ids.size());
    part.bounds.reserve(ids.size());
    part.shape.primitives.reserve(ids.size());
    part.shape.references.reserve(ids.size());
    SceneShape& shape = part.shape;
    for (std::size_t i = 0; i < ids.size();) {
        const std::uint32_t first = shape.primitiveCount();
        const SceneEntityRead read = reader.read(ids, i, shape, false, paperSpace);
        if (shape.primitiveCount() > first) {
            part.entities.push_back(
                {ids[i], first, shape.primitiveCount() - first, read.type, read.selectable, false});
            part.bounds.push_back(read.bounds);
        }
        i += read.records;
    }
}

std::pair<std::size_t, std::size_t> DrawingScene::locate(std::size_t index) const {
    std::size_t p = m_parts.size() - 1;
    while (p > 0 && m_partStart[p] > index) --p;
    return {p, index - m_partStart[p]};
}

const SceneEntity& DrawingScene::entity(std::size_t index) const {
    const auto [p, i] = locate(index);
    return m_parts[p].entities[i];
}

const SceneRect& DrawingScene::boundsOf(std::size_t index) const {
    const auto [p, i] = locate(index);
    return m_parts[p].bounds[i];
}

const SceneShape& DrawingScene::shapeOf(std::size_t index) const {
    return m_parts[locate(index).first].shape;
}

SceneGridIndex::Boxes DrawingScene::boxes() const {
    SceneGridIndex::Boxes lists;
    for (const ScenePart& part : m_parts) lists.add(part.bounds);
    return lists;
}

std::optional<std::size_t> DrawingScene::indexOf(AcDbObjectId id) const {
    if (m_byId.empty()) {
        m_byId.reserve(entityCount());
        for (std::size_t p = 0; p < m_parts.size(); ++p) {
            const auto& entities = m_parts[p].entities;
            for (std::size_t i = 0; i < entities.size(); ++i)
                m_byId.emplace(entities[i].id, static_cast<std::uint32_t>(m_partStart[p] + i));
        }
    }
    const auto it = m_byId.find(id);
    if (it == m_byId.end()) return std::nullopt;
    return it->second;
}

SceneRect DrawingScene::extents() const {
    if (!m_extentsValid) {
        m_extents = {};
        for (const ScenePart& part : m_parts) {
            for (std::size_t i = 0; i < part.entities.size(); ++i) {
                if (!part.entities[i].removed) m_extents.unite(part.bounds[i]);
            }
        }
        m_extentsValid = true;
    }
    return m_extents;
}

void DrawingScene::entitiesIn(const SceneRect& rect, std::vector<std::uint32_t>& out) const {
    out.clear();
    index().query(rect, boxes(), out);
    std::erase_if(out, [this](std::uint32_t i) { return entity(i).removed; });
    sortPlaces(out, entityCount());
}

std::vector<std::uint32_t> DrawingScene::candidates(const SceneRect& rect,
                                                    std::string_view type) const {
    std::vector<std::uint32_t> found;
    std::optional<std::uint16_t> wanted;
    if (!type.empty()) {
        wanted = m_types.find(type);
        if (!wanted) return found;
    }
    entitiesIn(rect, found);
    std::erase_if(found, [&](std::uint32_t i) {
        const SceneEntity& e = entity(i);
        return !e.selectable || (wanted && e.type != *wanted);
    });
    return found;
}

std::optional<AcDbObjectId> DrawingScene::pick(ScenePoint point, double tolerance,
                                               std::string_view type) const {
    const SceneRect around{point.x - tolerance, point.y - tolerance, point.x + tolerance,
                           point.y + tolerance};
    std::optional<AcDbObjectId> best;
    double bestDistance = tolerance;
    for (const std::uint32_t i : candidates(around, type)) {
        const double distance = entityDistance(*this, i, point, 0.0);
        if (distance <= bestDistance) {
            bestDistance = distance;
            best = entity(i).id;
        }
    }
    return best;
}

std::vector<AcDbObjectId> DrawingScene::windowSelect(const SceneRect& rect,
                                                     std::string_view type) const {
    std::vector<AcDbObjectId> selected;
    for (const std::uint32_t i : candidates(rect, type)) {
        if (rect.contains(boundsOf(i))) selected.push_back(entity(i).id);
    }
    return selected;
}

std::vector<AcDbObjectId> DrawingScene::crossingSelect(const SceneRect& rect,
                                                       std::string_view type) const {
    std::vector<AcDbObjectId> selected;
    for (const std::uint32_t i : candidates(rect, type)) {
        if (rect.contains(boundsOf(i)) || entityMeets(*this, i, rect))
            selected.push_back(entity(i).id);
    }
    return selected;
}

bool DrawingScene::addEntity(AcDbObjectId id) {
    if (indexOf(id)) return false;
    const DxfTagRange tags = m_document.tagsOf(id);
    if (tags.size() == 0) return false;
    // Whether the entity lies in this scene's space, as the document lists the spaces.
    const auto flag = findTag(m_document.tagFile(), tags, 67);
    const bool paper = flag && m_document.tagFile().integer(tags[*flag]).value_or(0) == 1;
    if (paper != (m_space != DxfSpace::Model)) return false;
    std::vector<AcDbObjectId> ids{id};
    const std::vector<AcDbObjectId> parts = m_document.entityParts(id);
    ids.insert(ids.end(), parts.begin(), parts.end());
    // A builder at work reads the parts: it finishes before they change.
    index();
    if (!m_editPart) {
        m_parts.emplace_back();
        m_partStart.push_back(m_partStart.back());
        m_editPart = true;
    }
    ScenePart& part = m_parts.back();
    SceneEntityReader reader(m_document, m_layers, m_types, *m_blockLibrary);
    const std::uint32_t first = part.shape.primitiveCount();
    const SceneEntityRead read = reader.read(ids, 0, part.shape, false);
    if (part.shape.primitiveCount() == first) return false;
    const auto index = static_cast<std::uint32_t>(entityCount());
    part.entities.push_back(
        {id, first, part.shape.primitiveCount() - first, read.type, read.selectable, false});
    part.bounds.push_back(read.bounds);
    ++m_partStart.back();
    if (!m_byId.empty()) m_byId[id] = index;
    m_index.insert(index, read.bounds);
    if (m_extentsValid) m_extents.unite(read.bounds);
    return true;
}

bool DrawingScene::removeEntity(AcDbObjectId id) {
    const auto index = indexOf(id);
    if (!index) return false;
    const auto [p, i] = locate(*index);
    SceneEntity& entity = m_parts[p].entities[i];
    if (entity.removed) return false;
    entity.removed = true;
    m_extentsValid = false;
    return true;
}

std::wstring DrawingScene::textOf(const SceneText& text) const {
    const DxfTagFile& file = m_document.tagFile();
    const DxfTagRange tags = m_document.tagsOf(text.source);
    switch (text.content) {
        case SceneTextContent::Value:
        case SceneTextContent::Tag: {
            const auto tag = findTag(file, tags, text.content == SceneTextContent::Tag ? 2 : 1);
            if (!tag) return {};
            return plainText(m_document.decodeText(file.value(tags[*tag])));
        }
        case SceneTextContent::MText: {
            std::string bytes;
            for (std::uint32_t i = 1; i < tags.size(); ++i) {
                const int code = file.code(tags[i]);
                if (code >= 1000) break;
                if (code == 1 || code == 3) bytes += file.value(tags[i]);
            }
            return plainMText(m_document.decodeText(bytes));
        }
    }
    return {};
}

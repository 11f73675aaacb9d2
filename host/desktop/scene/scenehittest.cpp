// Walks what an entity draws as world segments (arcs in short chords, texts as their boxes) and
// measures them against a point or a rectangle.
#include "host/desktop/scene/scenehittest.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <vector>

namespace {

// Calls `segment(a, b)` for each piece of what the primitives draw, and `area(corners)` for text
// boxes, until one of them answers true.
class SegmentWalk {
public:
    using Segment = std::function<bool(ScenePoint, ScenePoint)>;
    using Area = std::function<bool(const ScenePoint (&)[4])>;

    SegmentWalk(const DrawingScene& scene, Segment segment, Area area)
        : m_scene(scene), m_segment(std::move(segment)), m_area(std::move(area)) {}

    // Blocks nest as deep as a drawing likes: their levels wait on a stack, not in recursion.
    bool walk(const SceneShape& shape, std::uint32_t first, std::uint32_t count,
              const SceneTransform& transform) {
        struct Level {
            const SceneShape* shape;
            std::uint32_t next;
            std::uint32_t end;
            SceneTransform transform;
        };
        std::vector<Level> levels{{&shape, first, first + count, transform}};
        while (!levels.empty()) {
            Level& level = levels.back();
            if (level.next == level.end) {
                levels.pop_back();
                continue;
            }
            const ScenePrimitive& at = level.shape->primitives[level.next++];
            if (at.kind == ScenePrimitiveKind::Reference) {
                const SceneReference& reference = level.shape->references[at.index];
                const SceneShape& block = m_scene.block(reference.shape);
                levels.push_back(
                    {&block, 0, block.primitiveCount(), reference.transform.then(level.transform)});
            } else if (primitive(*level.shape, at, level.transform)) {
                return true;
            }
        }
        return false;
    }

private:
    bool primitive(const SceneShape& shape, const ScenePrimitive& primitive,
                   const SceneTransform& transform) {
        switch (primitive.kind) {
            case ScenePrimitiveKind::Path: {
                const ScenePath& path = shape.paths[primitive.index];
                const ScenePoint* points = shape.points.data() + path.first;
                if (path.count == 1)
                    return m_segment(transform.map(points[0]), transform.map(points[0]));
                for (std::uint32_t i = 1; i < path.count; ++i) {
                    if (m_segment(transform.map(points[i - 1]), transform.map(points[i])))
                        return true;
                }
                return path.closed && path.count > 2 &&
                       m_segment(transform.map(points[path.count - 1]), transform.map(points[0]));
            }
            case ScenePrimitiveKind::Arc: {
                const SceneArc& arc = shape.arcs[primitive.index];
                const double sweep = arc.end - arc.start;
                const int steps = std::clamp(
                    static_cast<int>(std::ceil(sweep / (2 * std::numbers::pi) * 64)), 4, 64);
                ScenePoint previous = transform.map(arc.at(arc.start));
                for (int i = 1; i <= steps; ++i) {
                    const ScenePoint next = transform.map(arc.at(arc.start + sweep * i / steps));
                    if (m_segment(previous, next)) return true;
                    previous = next;
                }
                return false;
            }
            case ScenePrimitiveKind::Text: {
                const SceneText& text = shape.texts[primitive.index];
                const SceneRect box = text.estimatedBox();
                const SceneTransform frame = text.frame.then(transform);
                const ScenePoint corners[4] = {
                    frame.map({box.minX, box.minY}), frame.map({box.maxX, box.minY}),
                    frame.map({box.maxX, box.maxY}), frame.map({box.minX, box.maxY})};
                return m_area(corners);
            }
            case ScenePrimitiveKind::Dot: {
                const ScenePoint p = transform.map(shape.points[primitive.index]);
                return m_segment(p, p);
            }
            case ScenePrimitiveKind::Reference:
                return false;  // the walk goes into it
        }
        return false;
    }

    const DrawingScene& m_scene;
    Segment m_segment;
    Area m_area;
};

double segmentDistance(ScenePoint p, ScenePoint a, ScenePoint b) {
    const ScenePoint d = b - a;
    const double length2 = d.x * d.x + d.y * d.y;
    double t = length2 > 0 ? ((p.x - a.x) * d.x + (p.y - a.y) * d.y) / length2 : 0.0;
    t = std::clamp(t, 0.0, 1.0);
    return sceneDistance(p, a + d * t);
}

double cross(ScenePoint o, ScenePoint a, ScenePoint b) {
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

bool insideQuad(const ScenePoint (&q)[4], ScenePoint p) {
    bool positive = false;
    bool negative = false;
    for (int i = 0; i < 4; ++i) {
        const double c = cross(q[i], q[(i + 1) % 4], p);
        positive = positive || c > 0;
        negative = negative || c < 0;
    }
    return !(positive && negative);
}

bool segmentMeets(ScenePoint a, ScenePoint b, const SceneRect& r) {
    return clipSegment(a, b, r).has_value();
}

}  // namespace

double entityDistance(const DrawingScene& scene, std::size_t entity, ScenePoint point,
                      double enough) {
    double best = std::numeric_limits<double>::infinity();
    SegmentWalk walk(
        scene,
        [&](ScenePoint a, ScenePoint b) {
            best = std::min(best, segmentDistance(point, a, b));
            return best <= enough;
        },
        [&](const ScenePoint(&corners)[4]) {
            if (insideQuad(corners, point)) {
                best = 0.0;
                return true;
            }
            for (int i = 0; i < 4; ++i)
                best = std::min(best, segmentDistance(point, corners[i], corners[(i + 1) % 4]));
            return best <= enough;
        });
    walk.walk(scene.shapeOf(entity), scene.entity(entity).firstPrimitive,
              scene.entity(entity).primitiveCount, {});
    return best;
}

bool entityMeets(const DrawingScene& scene, std::size_t entity, const SceneRect& rect) {
    SegmentWalk walk(
        scene, [&](ScenePoint a, ScenePoint b) { return segmentMeets(a, b, rect); },
        [&](const ScenePoint(&corners)[4]) {
            for (int i = 0; i < 4; ++i) {
                if (segmentMeets(corners[i], corners[(i + 1) % 4], rect)) return true;
            }
            return insideQuad(corners, rect.center());
        });
    return walk.walk(scene.shapeOf(entity), scene.entity(entity).firstPrimitive,
                     scene.entity(entity).primitiveCount, {});
}

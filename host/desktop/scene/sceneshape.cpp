// Filling a shape's pools, and the boxes of its primitives.
#include "host/desktop/scene/sceneshape.h"

#include <numbers>

namespace {

constexpr double kAverageAdvance = 0.8;  // a character's width against a capital's height
constexpr double kDescent = 0.3;

// Whether the angle t lies on the arc, whichever turn it is given in.
bool onArc(double t, double start, double end) {
    constexpr double kTurn = 2 * std::numbers::pi;
    const double shifted = start + std::fmod(std::fmod(t - start, kTurn) + kTurn, kTurn);
    return shifted <= end;
}

}  // namespace

ScenePoint SceneArc::at(double t) const {
    const double c = std::cos(t);
    const double s = std::sin(t);
    return {center.x + u.x * c + v.x * s, center.y + u.y * c + v.y * s};
}

SceneRect SceneText::estimatedBox() const {
    const double width =
        horizontal == SceneHorizontal::Aligned || horizontal == SceneHorizontal::Fit ? fitWidth
        : wrapWidth > 0.0 ? std::min(wrapWidth, kAverageAdvance * longestLine)
                          : kAverageAdvance * longestLine;
    const double height = 1.0 + (lineCount > 1 ? (lineCount - 1) * lineSpacing : 0.0);
    double left = 0.0;
    switch (horizontal) {
        case SceneHorizontal::Center:
            left = -width / 2;
            break;
        case SceneHorizontal::Right:
            left = -width;
            break;
        case SceneHorizontal::Left:
        case SceneHorizontal::Aligned:
        case SceneHorizontal::Fit:
            break;
    }
    // The box from the top of the first line to the descent of the last, placed by the anchor.
    double top = 1.0;
    switch (vertical) {
        case SceneVertical::Baseline:
            top = 1.0;
            break;
        case SceneVertical::Bottom:
            top = height + kDescent;
            break;
        case SceneVertical::Middle:
            top = (height + kDescent) / 2;
            break;
        case SceneVertical::Top:
            top = 0.0;
            break;
    }
    return {left, top - height - kDescent, left + width, top};
}

void SceneShape::addPath(std::span<const ScenePoint> path, bool closed, SceneColor color,
                         bool inherits) {
    if (path.empty()) return;
    const auto first = static_cast<std::uint32_t>(points.size());
    points.insert(points.end(), path.begin(), path.end());
    primitives.push_back({static_cast<std::uint32_t>(paths.size()), color.rgb, color.source,
                          ScenePrimitiveKind::Path, inherits});
    paths.push_back({first, static_cast<std::uint32_t>(path.size()), closed});
    for (const ScenePoint& p : path) bounds.add(p);
}

void SceneShape::addArc(const SceneArc& arc, SceneColor color, bool inherits) {
    primitives.push_back({static_cast<std::uint32_t>(arcs.size()), color.rgb, color.source,
                          ScenePrimitiveKind::Arc, inherits});
    arcs.push_back(arc);
    bounds.unite(arcBounds(arc));
}

void SceneShape::addText(const SceneText& text, SceneColor color, bool inherits) {
    primitives.push_back({static_cast<std::uint32_t>(texts.size()), color.rgb, color.source,
                          ScenePrimitiveKind::Text, inherits});
    texts.push_back(text);
    bounds.unite(text.frame.mapRect(text.estimatedBox()));
}

void SceneShape::addDot(ScenePoint point, SceneColor color, bool inherits) {
    primitives.push_back({static_cast<std::uint32_t>(points.size()), color.rgb, color.source,
                          ScenePrimitiveKind::Dot, inherits});
    points.push_back(point);
    bounds.add(point);
}

void SceneShape::addReference(const SceneReference& reference, SceneColor color, bool inherits) {
    primitives.push_back({static_cast<std::uint32_t>(references.size()), color.rgb, color.source,
                          ScenePrimitiveKind::Reference, inherits});
    references.push_back(reference);
}

void SceneShape::clear() { *this = SceneShape(); }

SceneRect arcBounds(const SceneArc& arc) {
    SceneRect box;
    if (arc.end - arc.start >= 2 * std::numbers::pi) {
        // A whole ellipse reaches sqrt(u.x^2 + v.x^2) either side in x, likewise in y.
        const double rx = std::hypot(arc.u.x, arc.v.x);
        const double ry = std::hypot(arc.u.y, arc.v.y);
        return {arc.center.x - rx, arc.center.y - ry, arc.center.x + rx, arc.center.y + ry};
    }
    box.add(arc.at(arc.start));
    box.add(arc.at(arc.end));
    // Where x or y turn: the derivative -u sin t + v cos t is zero there.
    const double turns[] = {std::atan2(arc.v.x, arc.u.x), std::atan2(arc.v.y, arc.u.y)};
    for (const double t : turns) {
        for (const double candidate : {t, t + std::numbers::pi}) {
            if (onArc(candidate, arc.start, arc.end)) box.add(arc.at(candidate));
        }
    }
    return box;
}

SceneRect primitiveBounds(const SceneShape& shape, const ScenePrimitive& primitive,
                          std::span<const SceneRect> blockBounds) {
    SceneRect box;
    switch (primitive.kind) {
        case ScenePrimitiveKind::Path: {
            const ScenePath& path = shape.paths[primitive.index];
            for (std::uint32_t i = 0; i < path.count; ++i) box.add(shape.points[path.first + i]);
            break;
        }
        case ScenePrimitiveKind::Arc:
            box = arcBounds(shape.arcs[primitive.index]);
            break;
        case ScenePrimitiveKind::Text: {
            const SceneText& text = shape.texts[primitive.index];
            box = text.frame.mapRect(text.estimatedBox());
            break;
        }
        case ScenePrimitiveKind::Dot:
            box.add(shape.points[primitive.index]);
            break;
        case ScenePrimitiveKind::Reference: {
            const SceneReference& reference = shape.references[primitive.index];
            if (reference.shape < blockBounds.size())
                box = reference.transform.mapRect(blockBounds[reference.shape]);
            break;
        }
    }
    return box;
}

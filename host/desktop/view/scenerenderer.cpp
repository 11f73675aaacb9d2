// Rendering a scene: the entities in view are sorted into dots (written straight into the image)
// and the rest, whose primitives are mapped to the screen, cut to it and batched by colour.
#include "host/desktop/view/scenerenderer.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr int kMaxDepth = 32;        // nesting of block references followed
constexpr double kDotSize = 1.0;     // boxes smaller than this many pixels are one dot
constexpr double kClipMargin = 4.0;  // pixels beyond the image that segments keep
constexpr QRgb kOpaque = 0xFF000000u;

// Liang-Barsky: cuts the segment to the rectangle; false when nothing is left.
bool clipSegment(QPointF& a, QPointF& b, const QRectF& r) {
    double t0 = 0.0;
    double t1 = 1.0;
    const double dx = b.x() - a.x();
    const double dy = b.y() - a.y();
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {a.x() - r.left(), r.right() - a.x(), a.y() - r.top(), r.bottom() - a.y()};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0) {
            if (q[i] < 0) return false;
            continue;
        }
        const double t = q[i] / p[i];
        if (p[i] < 0) {
            t0 = std::max(t0, t);
        } else {
            t1 = std::min(t1, t);
        }
        if (t0 > t1) return false;
    }
    const QPointF start = a;
    if (t1 < 1.0) b = QPointF(start.x() + t1 * dx, start.y() + t1 * dy);
    if (t0 > 0.0) a = QPointF(start.x() + t0 * dx, start.y() + t0 * dy);
    return true;
}

bool meets(const SceneRect& box, const QRectF& r) {
    return box.minX <= r.right() && box.maxX >= r.left() && box.minY <= r.bottom() &&
           box.maxY >= r.top();
}

// Black on light backgrounds, white on dark ones.
QColor contrasting(QColor background) {
    return background.lightnessF() > 0.5 ? QColor(Qt::black) : QColor(Qt::white);
}

}  // namespace

SceneRenderer::SceneRenderer(const DrawingScene& scene)
    : m_scene(scene), m_font(QStringLiteral("DejaVu Sans")), m_metrics(m_font) {
    m_font.setPixelSize(100);
    m_font.setHintingPreference(QFont::PreferNoHinting);
    m_metrics = QFontMetricsF(m_font);
    m_capHeight = std::max(1.0, m_metrics.capHeight());
    setBackground(QColor(0x21, 0x28, 0x30));
}

void SceneRenderer::setBackground(QColor background) {
    m_background = background;
    m_foreground = contrasting(background);
}

QRgb SceneRenderer::shown(SceneRgb rgb) const {
    return rgb == kSceneForeground ? m_foreground.rgb() : (kOpaque | rgb);
}

SceneRgb SceneRenderer::resolved(const ScenePrimitive& primitive,
                                 const Inherited& inherited) const {
    switch (primitive.source) {
        case SceneColorSource::Fixed:
            return primitive.rgb;
        case SceneColorSource::ByBlock:
            return inherited.blockColor;
        case SceneColorSource::ByLayer:
            return inherited.layerColor;
    }
    return primitive.rgb;
}

QRgb SceneRenderer::entityColor(std::size_t index) const {
    const SceneEntity& entity = m_scene.entity(index);
    const SceneShape& shape = m_scene.shapeOf(index);
    return shown(shape.primitives[entity.firstPrimitive].rgb);
}

SceneRenderer::Batch& SceneRenderer::batchFor(QRgb color) {
    if (m_lastBatch < m_batches.size() && m_batches[m_lastBatch].color == color)
        return m_batches[m_lastBatch];
    for (std::size_t i = 0; i < m_batches.size(); ++i) {
        if (m_batches[i].color == color) {
            m_lastBatch = i;
            return m_batches[i];
        }
    }
    m_batches.push_back(Batch{color, {}, {}});
    m_lastBatch = m_batches.size() - 1;
    return m_batches.back();
}

void SceneRenderer::flush(QPainter& painter, Qt::PenStyle style, std::optional<QColor> color) {
    for (Batch& batch : m_batches) {
        if (batch.lines.empty() && batch.points.empty()) continue;
        QPen pen{color.value_or(QColor::fromRgba(batch.color)), 0, style};
        pen.setCosmetic(true);
        painter.setPen(pen);
        if (style != Qt::SolidLine && !batch.lines.empty()) {
            // Dashes run on along joined segments, so a dashed circle shows its gaps.
            QPainterPath path;
            for (const QLineF& line : batch.lines) {
                if (path.elementCount() == 0 || path.currentPosition() != line.p1())
                    path.moveTo(line.p1());
                path.lineTo(line.p2());
            }
            painter.drawPath(path);
        } else if (!batch.lines.empty()) {
            painter.drawLines(batch.lines.data(), static_cast<int>(batch.lines.size()));
        }
        if (!batch.points.empty())
            painter.drawPoints(batch.points.data(), static_cast<int>(batch.points.size()));
        batch.lines.clear();
        batch.points.clear();
    }
}

void SceneRenderer::beginFrame(const ViewTransform& view) {
    m_toScreen = view.worldToScreen();
    m_clip = QRectF(-kClipMargin, -kClipMargin, view.size().width() + 2 * kClipMargin,
                    view.size().height() + 2 * kClipMargin);
    m_counts = {};
}

void SceneRenderer::render(QImage& image, const ViewTransform& view) {
    image.fill(m_background);
    beginFrame(view);
    const SceneTransform toScreen = view.worldToScreen();
    const SceneRect visible = view.visibleWorld();
    const double scale = view.pixelsPerUnit();
    const int width = image.width();
    const int height = image.height();
    auto* bits = reinterpret_cast<QRgb*>(image.bits());
    const qsizetype stride = image.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb));

    // Sorting: dots go straight into the image, the rest waits for the painter.
    m_toDraw.clear();
    auto sort = [&](std::size_t index, const SceneRect& box) {
        const double x0 = box.minX * toScreen.m11 + toScreen.dx;
        const double x1 = box.maxX * toScreen.m11 + toScreen.dx;
        const double y0 = box.maxY * toScreen.m22 + toScreen.dy;
        const double y1 = box.minY * toScreen.m22 + toScreen.dy;
        if (x1 < 0 || y1 < 0 || x0 >= width || y0 >= height) return;
        ++m_counts.visited;
        if ((box.maxX - box.minX) * scale < kDotSize && (box.maxY - box.minY) * scale < kDotSize) {
            const auto x = static_cast<int>((x0 + x1) / 2);
            const auto y = static_cast<int>((y0 + y1) / 2);
            if (x >= 0 && y >= 0 && x < width && y < height) {
                bits[y * stride + x] = entityColor(index);
                ++m_counts.dots;
            }
            return;
        }
        m_toDraw.push_back(static_cast<std::uint32_t>(index));
    };
    const SceneRect extents = m_scene.extents();
    if (visible.contains(extents) || extents.isEmpty()) {
        // Everything is in view: walk the parts, no index needed.
        for (std::size_t p = 0; p < m_scene.partCount(); ++p) {
            const ScenePart& part = m_scene.part(p);
            const std::size_t start = m_scene.partStart(p);
            for (std::size_t i = 0; i < part.entities.size(); ++i) {
                if (!part.entities[i].removed) sort(start + i, part.bounds[i]);
            }
        }
    } else {
        m_counts.usedIndex = true;
        m_scene.entitiesIn(visible, m_found);
        for (const std::uint32_t index : m_found) sort(index, m_scene.boundsOf(index));
    }

    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, false);
    m_batches.clear();
    for (const std::uint32_t index : m_toDraw) drawEntity(painter, index);
    flush(painter, Qt::SolidLine);
    m_counts.drawn = m_toDraw.size();
}

void SceneRenderer::renderEntities(QPainter& painter, const ViewTransform& view,
                                   std::span<const std::uint32_t> entities, Qt::PenStyle style,
                                   std::optional<QColor> color) {
    beginFrame(view);
    m_batches.clear();
    m_textColor = color;
    for (const std::uint32_t index : entities) {
        if (index < m_scene.entityCount() && !m_scene.entity(index).removed)
            drawEntity(painter, index);
    }
    flush(painter, style, color);
    m_textColor.reset();
}

void SceneRenderer::drawEntity(QPainter& painter, std::size_t index) {
    const SceneEntity& entity = m_scene.entity(index);
    // Top-level colours are settled when the scene is built; nothing is inherited here.
    drawShape(painter, m_scene.shapeOf(index), entity.firstPrimitive, entity.primitiveCount,
              m_toScreen, Inherited{}, 0);
}

void SceneRenderer::drawShape(QPainter& painter, const SceneShape& shape, std::uint32_t first,
                              std::uint32_t count, const SceneTransform& toScreen,
                              const Inherited& inherited, int depth) {
    for (std::uint32_t p = first; p < first + count; ++p) {
        const ScenePrimitive& primitive = shape.primitives[p];
        if (primitive.inheritsLayer && !inherited.layerShown) continue;
        const SceneRgb rgb = resolved(primitive, inherited);
        switch (primitive.kind) {
            case ScenePrimitiveKind::Path:
                drawPath(shape, shape.paths[primitive.index], toScreen, shown(rgb));
                break;
            case ScenePrimitiveKind::Arc:
                drawArc(shape.arcs[primitive.index], toScreen, shown(rgb));
                break;
            case ScenePrimitiveKind::Text:
                drawText(painter, shape.texts[primitive.index], toScreen, shown(rgb));
                break;
            case ScenePrimitiveKind::Dot: {
                const ScenePoint point = toScreen.map(shape.points[primitive.index]);
                if (m_clip.contains(point.x, point.y))
                    batchFor(shown(rgb)).points.emplace_back(point.x, point.y);
                break;
            }
            case ScenePrimitiveKind::Reference: {
                if (depth >= kMaxDepth) break;
                const SceneReference& reference = shape.references[primitive.index];
                const SceneTransform transform = reference.transform.then(toScreen);
                const SceneRect box = transform.mapRect(m_scene.blockBounds()[reference.shape]);
                if (box.isEmpty() || !meets(box, m_clip)) break;
                if (box.width() < kDotSize && box.height() < kDotSize) {
                    const ScenePoint c = box.center();
                    batchFor(shown(rgb)).points.emplace_back(c.x, c.y);
                    break;
                }
                Inherited inner;
                inner.blockColor = rgb;
                if (primitive.inheritsLayer) {
                    inner.layerColor = inherited.layerColor;
                    inner.layerShown = inherited.layerShown;
                } else {
                    const SceneLayer& layer = m_scene.layers().layer(reference.layer);
                    inner.layerColor = layer.color;
                    inner.layerShown = !layer.off;
                }
                const SceneShape& block = m_scene.block(reference.shape);
                drawShape(painter, block, 0, block.primitiveCount(), transform, inner, depth + 1);
                break;
            }
        }
    }
}

void SceneRenderer::addSegment(QPointF a, QPointF b, QRgb color) {
    if (!(m_clip.contains(a) && m_clip.contains(b)) && !clipSegment(a, b, m_clip)) return;
    batchFor(color).lines.emplace_back(a, b);
}

void SceneRenderer::drawPath(const SceneShape& shape, const ScenePath& path,
                             const SceneTransform& toScreen, QRgb color) {
    const ScenePoint* points = shape.points.data() + path.first;
    auto at = [&](std::uint32_t i) {
        const ScenePoint p = toScreen.map(points[i]);
        return QPointF(p.x, p.y);
    };
    QPointF previous = at(0);
    if (path.count == 1) {
        if (m_clip.contains(previous)) batchFor(color).points.push_back(previous);
        return;
    }
    const QPointF start = previous;
    for (std::uint32_t i = 1; i < path.count; ++i) {
        const QPointF next = at(i);
        addSegment(previous, next, color);
        previous = next;
    }
    if (path.closed && path.count > 2) addSegment(previous, start, color);
}

void SceneRenderer::drawArc(const SceneArc& arc, const SceneTransform& toScreen, QRgb color) {
    const SceneArc screen{toScreen.map(arc.center), toScreen.mapVector(arc.u),
                          toScreen.mapVector(arc.v), arc.start, arc.end};
    const SceneRect box = arcBounds(screen);
    if (!meets(box, m_clip)) return;
    if (box.width() < kDotSize && box.height() < kDotSize) {
        const ScenePoint c = box.center();
        batchFor(color).points.emplace_back(c.x, c.y);
        return;
    }
    // Chords within a quarter pixel of the curve: the angle step is sqrt(2 / radius).
    const double radius =
        std::max(std::hypot(screen.u.x, screen.u.y), std::hypot(screen.v.x, screen.v.y));
    const double sweep = arc.end - arc.start;
    const int steps =
        std::clamp(static_cast<int>(std::ceil(sweep * std::sqrt(radius / 2))), 4, 4096);
    const double step = sweep / steps;
    const double cs = std::cos(step);
    const double sn = std::sin(step);
    double c = std::cos(arc.start);
    double s = std::sin(arc.start);
    auto point = [&] {
        return QPointF(screen.center.x + screen.u.x * c + screen.v.x * s,
                       screen.center.y + screen.u.y * c + screen.v.y * s);
    };
    QPointF previous = point();
    for (int i = 1; i <= steps; ++i) {
        const double nc = c * cs - s * sn;
        s = s * cs + c * sn;
        c = nc;
        const QPointF next = point();
        addSegment(previous, next, color);
        previous = next;
    }
}

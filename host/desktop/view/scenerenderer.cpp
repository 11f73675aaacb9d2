// Rendering a scene: the entities in view are sorted into dots and the rest, whose primitives
// are mapped to the screen, cut to it and gathered as one-pixel lines. A large frame is shared
// among threads, each with its own run of the entities; the lines are then written band by band
// in drawing order, and the texts painted after them.
#include "host/desktop/view/scenerenderer.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <thread>

#include "host/desktop/scene/scenegeometry.h"

namespace {

constexpr double kDotSize = 1.0;     // boxes smaller than this many pixels are one dot
constexpr double kClipMargin = 4.0;  // pixels beyond the image that segments keep at first
constexpr QRgb kOpaque = 0xFF000000u;
constexpr std::size_t kEntitiesPerThread = 8000;  // smaller frames are drawn on one thread
constexpr int kDashOn = 6;                        // pixels of a dash, then of a gap
constexpr int kDashPeriod = 10;

// Cuts the segment to the rectangle; false when nothing is left.
bool clipSegment(QPointF& a, QPointF& b, const QRectF& r) {
    const auto span = clipSegment({a.x(), a.y()}, {b.x(), b.y()},
                                  SceneRect{r.left(), r.top(), r.right(), r.bottom()});
    if (!span) return false;
    const QPointF start = a;
    const QPointF step = b - a;
    if (span->t1 < 1.0) b = start + span->t1 * step;
    if (span->t0 > 0.0) a = start + span->t0 * step;
    return true;
}

// QRectF::contains, without a call into the library for every end of every segment.
bool inside(QPointF p, const QRectF& r) {
    return p.x() >= r.left() && p.x() <= r.right() && p.y() >= r.top() && p.y() <= r.bottom();
}

bool meets(const SceneRect& box, const QRectF& r) {
    return box.minX <= r.right() && box.maxX >= r.left() && box.minY <= r.bottom() &&
           box.maxY >= r.top();
}

// Screen lengths are far from overflowing a square: no need for std::hypot's care (and time).
double length(double x, double y) { return std::sqrt(x * x + y * y); }

// Black on light backgrounds, white on dark ones.
QColor contrasting(QColor background) {
    return background.lightnessF() > 0.5 ? QColor(Qt::black) : QColor(Qt::white);
}

// A pixel index for a coordinate: the pixel that holds it (a floor without a library call;
// coordinates here are cut to the image first).
int pixel(double coordinate) {
    const auto truncated = static_cast<int>(coordinate);
    return truncated - (coordinate < truncated ? 1 : 0);
}

}  // namespace

SceneRenderer::SceneRenderer(const DrawingScene& scene)
    : m_scene(scene), m_font(QStringLiteral("DejaVu Sans")) {
    m_font.setPixelSize(100);
    m_font.setHintingPreference(QFont::PreferNoHinting);
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

SceneRenderer::Frame SceneRenderer::frameFor(QImage& image, const ViewTransform& view) const {
    Frame frame;
    frame.bits = reinterpret_cast<QRgb*>(image.bits());
    frame.stride = image.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb));
    frame.width = image.width();
    frame.height = image.height();
    frame.clip = QRectF(-kClipMargin, -kClipMargin, frame.width + 2 * kClipMargin,
                        frame.height + 2 * kClipMargin);
    frame.toScreen = view.worldToScreen();
    return frame;
}

unsigned SceneRenderer::threadsFor(std::size_t entities) const {
    const unsigned cores = m_threads != 0 ? m_threads : std::thread::hardware_concurrency();
    const std::size_t useful = entities / kEntitiesPerThread;
    return static_cast<unsigned>(std::clamp<std::size_t>(useful, 1, std::max(1u, cores)));
}

template <typename Draw>
void SceneRenderer::drawShared(QImage& image, const ViewTransform& view, std::size_t count,
                               Draw draw) {
    const unsigned threads = threadsFor(count);
    std::vector<Frame> frames(threads, frameFor(image, view));
    if (m_bands.size() < threads) m_bands.resize(threads);
    for (unsigned t = 0; t < threads; ++t) {
        m_bands[t].reset(image.height());
        frames[t].bands = &m_bands[t];
    }
    {
        std::vector<std::jthread> workers;
        for (unsigned t = 1; t < threads; ++t) {
            workers.emplace_back(
                [&, t] { draw(frames[t], count * t / threads, count * (t + 1) / threads); });
        }
        draw(frames[0], 0, count / threads);
    }
    writeBands(frames[0].bits, frames[0].stride, image.height(), std::span(m_bands).first(threads),
               threads);
    std::vector<DeferredText> texts;
    for (const Frame& frame : frames) {
        m_counts.visited += frame.counts.visited;
        m_counts.dots += frame.counts.dots;
        m_counts.drawn += frame.counts.drawn;
        texts.insert(texts.end(), frame.texts.begin(), frame.texts.end());
    }
    m_counts.threads = threads;
    paintTexts(image, texts, std::nullopt);
}

void SceneRenderer::render(QImage& image, const ViewTransform& view) {
    image.fill(m_background);
    m_counts = {};
    const SceneRect visible = view.visibleWorld();
    const SceneRect extents = m_scene.extents();
    if (visible.contains(extents) || extents.isEmpty()) {
        // Everything is in view: walk the entities in order, no index needed.
        drawShared(image, view, m_scene.entityCount(),
                   [this](Frame& frame, std::size_t begin, std::size_t end) {
                       drawRange(frame, begin, end);
                   });
        return;
    }
    m_counts.usedIndex = true;
    m_scene.entitiesIn(visible, m_found);
    drawShared(image, view, m_found.size(),
               [this](Frame& frame, std::size_t begin, std::size_t end) {
                   drawEntities(frame, std::span(m_found).subspan(begin, end - begin));
               });
}

void SceneRenderer::renderEntities(QImage& image, const ViewTransform& view,
                                   std::span<const std::uint32_t> entities, bool dashed,
                                   std::optional<QColor> color) {
    Frame frame = frameFor(image, view);
    frame.dashed = dashed;
    if (color) frame.color = color->rgba();
    for (const std::uint32_t index : entities) {
        if (index >= m_scene.entityCount()) continue;
        const SceneEntity& entity = m_scene.entity(index);
        if (entity.removed) continue;
        drawShape(frame, m_scene.shapeOf(index), entity.firstPrimitive, entity.primitiveCount,
                  frame.toScreen);
    }
    paintTexts(image, frame.texts, frame.color);
}

void SceneRenderer::drawRange(Frame& frame, std::size_t begin, std::size_t end) {
    for (std::size_t p = 0; p < m_scene.partCount() && begin < end; ++p) {
        const ScenePart& part = m_scene.part(p);
        const std::size_t start = m_scene.partStart(p);
        const std::size_t stop = start + part.entities.size();
        for (std::size_t i = std::max(begin, start); i < std::min(end, stop); ++i) {
            const SceneEntity& entity = part.entities[i - start];
            if (!entity.removed) sortEntity(frame, part.shape, entity, part.bounds[i - start]);
        }
    }
}

void SceneRenderer::drawEntities(Frame& frame, std::span<const std::uint32_t> entities) {
    // What a zoomed-in view meets lies scattered over the scene, and each step from an entity to
    // what it draws would wait for memory: every step is asked for some entities ahead.
    constexpr std::size_t kRecordsAhead = 16;
    constexpr std::size_t kPrimitivesAhead = 8;
    constexpr std::size_t kDataAhead = 4;
    constexpr std::size_t kPointsAhead = 2;
    const std::size_t count = entities.size();
    for (std::size_t k = 0; k < count; ++k) {
        if (k + kRecordsAhead < count) {
            const std::uint32_t index = entities[k + kRecordsAhead];
            __builtin_prefetch(&m_scene.entity(index));
            __builtin_prefetch(&m_scene.boundsOf(index));
        }
        if (k + kPrimitivesAhead < count) {
            const std::uint32_t index = entities[k + kPrimitivesAhead];
            __builtin_prefetch(
                &m_scene.shapeOf(index).primitives[m_scene.entity(index).firstPrimitive]);
        }
        if (k + kDataAhead < count) prefetchData(entities[k + kDataAhead], false);
        if (k + kPointsAhead < count) prefetchData(entities[k + kPointsAhead], true);
        const std::uint32_t index = entities[k];
        sortEntity(frame, m_scene.shapeOf(index), m_scene.entity(index), m_scene.boundsOf(index));
    }
}

void SceneRenderer::prefetchData(std::uint32_t index, bool points) const {
    const SceneShape& shape = m_scene.shapeOf(index);
    const ScenePrimitive& primitive = shape.primitives[m_scene.entity(index).firstPrimitive];
    switch (primitive.kind) {
        case ScenePrimitiveKind::Path:
            if (points) {
                __builtin_prefetch(&shape.points[shape.paths[primitive.index].first]);
            } else {
                __builtin_prefetch(&shape.paths[primitive.index]);
            }
            break;
        case ScenePrimitiveKind::Arc:
            if (!points) __builtin_prefetch(&shape.arcs[primitive.index]);
            break;
        case ScenePrimitiveKind::Text:
            if (!points) __builtin_prefetch(&shape.texts[primitive.index]);
            break;
        case ScenePrimitiveKind::Dot:
            if (!points) __builtin_prefetch(&shape.points[primitive.index]);
            break;
        case ScenePrimitiveKind::Reference:
            if (!points) __builtin_prefetch(&shape.references[primitive.index]);
            break;
    }
}

void SceneRenderer::sortEntity(Frame& frame, const SceneShape& shape, const SceneEntity& entity,
                               const SceneRect& box) {
    const SceneTransform& t = frame.toScreen;
    const double x0 = box.minX * t.m11 + t.dx;
    const double x1 = box.maxX * t.m11 + t.dx;
    const double y0 = box.maxY * t.m22 + t.dy;
    const double y1 = box.minY * t.m22 + t.dy;
    if (x1 < 0 || y1 < 0 || x0 >= frame.width || y0 >= frame.height) return;
    ++frame.counts.visited;
    if (x1 - x0 < kDotSize && y1 - y0 < kDotSize) {
        // Top-level colours are settled when the scene is built.
        addPoint(frame, (x0 + x1) / 2, (y0 + y1) / 2,
                 shown(shape.primitives[entity.firstPrimitive].rgb));
        ++frame.counts.dots;
        return;
    }
    ++frame.counts.drawn;
    drawShape(frame, shape, entity.firstPrimitive, entity.primitiveCount, frame.toScreen);
}

void SceneRenderer::drawShape(Frame& frame, const SceneShape& entityShape, std::uint32_t first,
                              std::uint32_t count, const SceneTransform& entityToScreen) {
    std::vector<BlockLevel>& levels = frame.levels;
    levels.clear();
    levels.push_back({&entityShape, first, first + count, entityToScreen, Inherited{}});
    while (!levels.empty()) {
        if (levels.back().next == levels.back().end) {
            levels.pop_back();
            continue;
        }
        // Valid until a block's level is pushed, the last thing a primitive does.
        BlockLevel& level = levels.back();
        const SceneShape& shape = *level.shape;
        const SceneTransform& toScreen = level.toScreen;
        const Inherited& inherited = level.inherited;
        const ScenePrimitive& primitive = shape.primitives[level.next++];
        if (primitive.inheritsLayer && !inherited.layerShown) continue;
        const SceneRgb rgb = resolved(primitive, inherited);
        switch (primitive.kind) {
            case ScenePrimitiveKind::Path:
                frame.dashPhase = 0;
                drawPath(frame, shape, shape.paths[primitive.index], toScreen, shown(rgb));
                break;
            case ScenePrimitiveKind::Arc:
                frame.dashPhase = 0;
                drawArc(frame, shape.arcs[primitive.index], toScreen, shown(rgb));
                break;
            case ScenePrimitiveKind::Text:
                drawText(frame, shape.texts[primitive.index], toScreen, shown(rgb));
                break;
            case ScenePrimitiveKind::Dot: {
                const ScenePoint point = toScreen.map(shape.points[primitive.index]);
                addPoint(frame, point.x, point.y, shown(rgb));
                break;
            }
            case ScenePrimitiveKind::Reference: {
                const SceneReference& reference = shape.references[primitive.index];
                const SceneTransform transform = reference.transform.then(toScreen);
                const SceneRect box = transform.mapRect(m_scene.blockBounds()[reference.shape]);
                if (box.isEmpty() || !meets(box, frame.clip)) break;
                if (box.width() < kDotSize && box.height() < kDotSize) {
                    const ScenePoint c = box.center();
                    addPoint(frame, c.x, c.y, shown(rgb));
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
                levels.push_back({&block, 0, block.primitiveCount(), transform, inner});
                break;
            }
        }
    }
}

void SceneRenderer::addPoint(Frame& frame, double x, double y, QRgb color) {
    if (!(x >= 0 && y >= 0 && x < frame.width && y < frame.height)) return;
    const auto px = static_cast<std::int16_t>(pixel(x));
    const auto py = static_cast<std::int16_t>(pixel(y));
    addLine(frame, {px, py, px, py, frame.color.value_or(color)});
}

void SceneRenderer::addLine(Frame& frame, const RasterLine& line) {
    if (frame.bands != nullptr) {
        frame.bands->add(line);
    } else {
        plotLine(frame.bits, frame.stride, line, 0, frame.height);
    }
}

void SceneRenderer::addSegment(Frame& frame, QPointF a, QPointF b, QRgb color) {
    // First to the image and its margin (no huge numbers past here), then to its pixels.
    if (!(inside(a, frame.clip) && inside(b, frame.clip))) {
        if (!(std::isfinite(a.x()) && std::isfinite(a.y()) && std::isfinite(b.x()) &&
              std::isfinite(b.y())) ||
            !clipSegment(a, b, frame.clip))
            return;
    }
    const QRectF pixels(0, 0, frame.width - 1e-9, frame.height - 1e-9);
    if (!(inside(a, pixels) && inside(b, pixels)) && !clipSegment(a, b, pixels)) return;
    const QRgb ink = frame.color.value_or(color);
    // From the pixel holding one end to the pixel holding the other. Rounding in the cut may
    // leave an end a hair outside: the pixels stay in the image.
    int x = std::clamp(pixel(a.x()), 0, frame.width - 1);
    int y = std::clamp(pixel(a.y()), 0, frame.height - 1);
    const int x1 = std::clamp(pixel(b.x()), 0, frame.width - 1);
    const int y1 = std::clamp(pixel(b.y()), 0, frame.height - 1);
    if (!frame.dashed) {
        addLine(frame, {static_cast<std::int16_t>(x), static_cast<std::int16_t>(y),
                        static_cast<std::int16_t>(x1), static_cast<std::int16_t>(y1), ink});
        return;
    }
    // Dashes run on along a path from segment to segment: Bresenham's walk, a pixel at a time.
    const int dx = std::abs(x1 - x);
    const int dy = std::abs(y1 - y);
    const qsizetype stepX = x < x1 ? 1 : -1;
    const qsizetype stepY = y < y1 ? frame.stride : -frame.stride;
    QRgb* at = frame.bits + y * frame.stride + x;
    const bool xMajor = dx >= dy;
    const int steps = xMajor ? dx : dy;
    const qsizetype major = xMajor ? stepX : stepY;
    const qsizetype minor = xMajor ? stepY : stepX;
    const int along = xMajor ? dx : dy;
    const int across = xMajor ? dy : dx;
    int error = along / 2;
    for (int i = 0;; ++i, ++frame.dashPhase) {
        if (frame.dashPhase % kDashPeriod < kDashOn) *at = ink;
        if (i == steps) break;
        at += major;
        error -= across;
        if (error < 0) {
            error += along;
            at += minor;
        }
    }
}

void SceneRenderer::drawPath(Frame& frame, const SceneShape& shape, const ScenePath& path,
                             const SceneTransform& toScreen, QRgb color) {
    const ScenePoint* points = shape.points.data() + path.first;
    auto at = [&](std::uint32_t i) {
        const ScenePoint p = toScreen.map(points[i]);
        return QPointF(p.x, p.y);
    };
    QPointF previous = at(0);
    if (path.count == 1) {
        addPoint(frame, previous.x(), previous.y(), color);
        return;
    }
    const QPointF start = previous;
    for (std::uint32_t i = 1; i < path.count; ++i) {
        const QPointF next = at(i);
        addSegment(frame, previous, next, color);
        previous = next;
    }
    if (path.closed && path.count > 2) addSegment(frame, previous, start, color);
}

void SceneRenderer::drawArc(Frame& frame, const SceneArc& arc, const SceneTransform& toScreen,
                            QRgb color) {
    const SceneArc screen{toScreen.map(arc.center), toScreen.mapVector(arc.u),
                          toScreen.mapVector(arc.v), arc.start, arc.end};
    // A box around the whole ellipse is enough to pass over what lies outside the view.
    const double rx = length(screen.u.x, screen.v.x);
    const double ry = length(screen.u.y, screen.v.y);
    const SceneRect box{screen.center.x - rx, screen.center.y - ry, screen.center.x + rx,
                        screen.center.y + ry};
    if (!meets(box, frame.clip)) return;
    if (box.width() < kDotSize && box.height() < kDotSize) {
        addPoint(frame, screen.center.x, screen.center.y, color);
        return;
    }
    // Chords within a quarter pixel of the curve: the angle step is sqrt(2 / radius).
    const double radius = std::max(length(screen.u.x, screen.u.y), length(screen.v.x, screen.v.y));
    const double sweep = arc.end - arc.start;
    const double wanted = std::ceil(sweep * std::sqrt(radius / 2));
    const int steps = !(wanted < 4096) ? 4096 : std::max(4, static_cast<int>(wanted));
    const double step = sweep / steps;
    const double cs = std::cos(step);
    const double sn = std::sin(step);
    // Circles start at 0.
    double c = arc.start == 0.0 ? 1.0 : std::cos(arc.start);
    double s = arc.start == 0.0 ? 0.0 : std::sin(arc.start);
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
        addSegment(frame, previous, next, color);
        previous = next;
    }
}

void SceneRenderer::paintTexts(QImage& image, const std::vector<DeferredText>& texts,
                               std::optional<QRgb> color) {
    if (texts.empty()) return;
    if (!m_metrics) {
        m_metrics.emplace(m_font);
        m_capHeight = std::max(1.0, m_metrics->capHeight());
    }
    QPainter painter(&image);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    painter.setFont(m_font);
    for (const DeferredText& text : texts) paintText(painter, text, color);
}

// The view's events and painting: the drawing is rendered into a canvas when the view moves or
// the scene changes; highlights, the selection rectangle and the editor's vectors are painted
// over the canvas on every paint, so the rubber band never redraws the drawing.
#include "host/desktop/view/drawingview.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <cmath>

#include "host/desktop/scene/acipalette.h"

namespace {

// One notch of the wheel (120 eighths of a degree) zooms by this much.
constexpr double kWheelStep = 1.25;

QPen cosmeticPen(QColor color, Qt::PenStyle style) {
    QPen pen(color, 0, style);
    pen.setCosmetic(true);
    return pen;
}

}  // namespace

DrawingView::DrawingView(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setCursor(Qt::CrossCursor);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(64, 64);
}

DrawingView::~DrawingView() = default;

void DrawingView::setScene(const DrawingScene* scene) {
    m_scene = scene;
    m_renderer = scene != nullptr ? std::make_unique<SceneRenderer>(*scene) : nullptr;
    if (m_renderer) m_renderer->setBackground(m_background);
    m_highlighted.clear();
    m_highlightedIndexes.clear();
    m_selection.reset();
    m_fitPending = true;
    zoomExtents();
}

void DrawingView::setBackground(QColor background) {
    m_background = background;
    if (m_renderer) m_renderer->setBackground(background);
    m_canvasValid = false;
    update();
}

void DrawingView::setViewTransform(const ViewTransform& view) {
    m_view = view;
    m_view.setSize(size());
    m_fitPending = false;
    viewMoved();
}

void DrawingView::viewMoved() {
    m_vectors.clear();
    m_canvasValid = false;
    update();
    emit viewChanged();
}

void DrawingView::zoomExtents() {
    m_view.setSize(size());
    if (m_scene != nullptr) m_view.fit(m_scene->extents());
    viewMoved();
}

void DrawingView::zoomAbout(QPointF pixel, double factor) {
    m_fitPending = false;
    m_view.zoomAbout(pixel, factor);
    viewMoved();
}

void DrawingView::zoomWindow(const SceneRect& world) {
    m_fitPending = false;
    m_view.fit(world, 0.0);
    viewMoved();
}

void DrawingView::panBy(QPointF pixels) {
    m_fitPending = false;
    m_view.panBy(pixels);
    viewMoved();
}

void DrawingView::regen() {
    if (m_scene != nullptr) setHighlighted(m_highlighted);
    m_vectors.clear();
    m_canvasValid = false;
    update();
}

void DrawingView::drawVector(ScenePoint from, ScenePoint to, int color, bool highlighted) {
    m_vectors.draw({from, to, color, highlighted});
    update();
}

void DrawingView::clearVectors() {
    m_vectors.clear();
    update();
}

void DrawingView::setSelectionRectangle(const SceneRect& world, bool crossing) {
    m_selection = world;
    m_crossing = crossing;
    update();
}

void DrawingView::clearSelectionRectangle() {
    m_selection.reset();
    update();
}

void DrawingView::setHighlighted(const std::vector<AcDbObjectId>& entities) {
    m_highlighted = entities;
    m_highlightedIndexes.clear();
    if (m_scene != nullptr) {
        for (const AcDbObjectId id : entities) {
            if (const auto index = m_scene->indexOf(id))
                m_highlightedIndexes.push_back(static_cast<std::uint32_t>(*index));
        }
    }
    m_highlightValid = false;
    update();
}

const SceneRenderer::Counts& DrawingView::lastRenderCounts() const { return m_counts; }

QImage DrawingView::renderImage() {
    ensureCanvas();
    return m_canvas;
}

void DrawingView::ensureCanvas() {
    if (m_canvasValid && m_canvas.size() == size()) return;
    m_view.setSize(size());
    if (m_canvas.size() != size()) m_canvas = QImage(size(), QImage::Format_ARGB32_Premultiplied);
    if (m_renderer) {
        m_renderer->render(m_canvas, m_view);
        m_counts = m_renderer->lastCounts();
        // The first picture shows everything without the index: it is built behind it.
        m_scene->prepareIndex();
    } else {
        m_canvas.fill(m_background);
        m_counts = {};
    }
    m_canvasValid = true;
    m_highlightValid = false;
}

void DrawingView::paintEvent(QPaintEvent*) {
    ensureCanvas();
    const bool highlighting = m_renderer && !m_highlightedIndexes.empty();
    if (highlighting && !m_highlightValid) {
        // The selected entities drawn over themselves: first in the background, then dashed.
        m_highlightCanvas = m_canvas.copy();
        m_renderer->renderEntities(m_highlightCanvas, m_view, m_highlightedIndexes, false,
                                   m_background);
        m_renderer->renderEntities(m_highlightCanvas, m_view, m_highlightedIndexes, true);
        m_highlightValid = true;
    }
    QPainter painter(this);
    painter.drawImage(QPointF(0, 0), highlighting ? m_highlightCanvas : m_canvas);
    paintOverlay(painter);
    m_fitPending = false;
}

void DrawingView::paintOverlay(QPainter& painter) {
    const QColor foreground = m_renderer ? m_renderer->foreground() : QColor(Qt::white);
    if (m_selection) {
        const QRectF rect = QRectF(toScreen({m_selection->minX, m_selection->maxY}),
                                   toScreen({m_selection->maxX, m_selection->minY}))
                                .normalized();
        // Window blue and solid, crossing green and dashed, as CAD programs tell them apart.
        const QColor tint =
            m_crossing ? QColor(0x40, 0xC0, 0x60, 60) : QColor(0x40, 0x80, 0xF0, 60);
        painter.fillRect(rect, tint);
        painter.setPen(cosmeticPen(foreground, m_crossing ? Qt::DashLine : Qt::SolidLine));
        painter.drawRect(rect);
    }
    for (const OverlayVector& vector : m_vectors.vectors()) {
        const bool exclusive = vector.color == -1;
        const SceneRgb rgb = exclusive ? 0xFFFFFF : aciColor(std::abs(vector.color));
        const QColor color = rgb == kSceneForeground ? foreground : QColor::fromRgb(rgb);
        painter.setCompositionMode(exclusive ? QPainter::RasterOp_SourceXorDestination
                                             : QPainter::CompositionMode_SourceOver);
        painter.setPen(cosmeticPen(color, vector.highlighted ? Qt::DashLine : Qt::SolidLine));
        painter.drawLine(toScreen(vector.from), toScreen(vector.to));
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void DrawingView::resizeEvent(QResizeEvent*) {
    m_view.setSize(size());
    m_canvasValid = false;
    // Until the view is first painted, its size is the layout's to settle: keep it whole.
    if (m_fitPending && m_scene != nullptr) m_view.fit(m_scene->extents());
}

void DrawingView::wheelEvent(QWheelEvent* event) {
    const double notches = event->angleDelta().y() / 120.0;
    if (notches == 0) return;
    zoomAbout(event->position(), std::pow(kWheelStep, notches));
    event->accept();
}

void DrawingView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton) {
        m_panFrom = event->position();
        event->accept();
        return;
    }
    if (event->button() == Qt::LeftButton || event->button() == Qt::RightButton) {
        const ScenePoint world = toWorld(event->position());
        emit pointClicked(QPointF(world.x, world.y), event->button(), event->modifiers());
        event->accept();
    }
}

void DrawingView::mouseMoveEvent(QMouseEvent* event) {
    if (m_panFrom && (event->buttons() & Qt::MiddleButton) != 0) {
        const QPointF delta = event->position() - *m_panFrom;
        m_panFrom = event->position();
        panBy(delta);
    }
    const ScenePoint world = toWorld(event->position());
    emit cursorMoved(QPointF(world.x, world.y));
}

void DrawingView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton) m_panFrom.reset();
}

void DrawingView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton) {
        zoomExtents();
        event->accept();
        return;
    }
    mousePressEvent(event);
}

// The placeholder drawing area.
#include "host/desktop/shell/placeholderview.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "host/desktop/session/referenceselection.h"
#include "host/dxf/dxfdocument.h"

namespace {

constexpr double kPickBox = 5.0;  // pixels
constexpr int kXorInk = -1;
constexpr double kMargin = 0.9;  // of the view that the extents fill

// The AutoCAD colour index's first seven, the ones editors draw with; white otherwise.
QColor inkOf(int color) {
    static const QColor kColors[] = {Qt::white, Qt::red,  Qt::yellow, Qt::green,
                                     Qt::cyan,  Qt::blue, Qt::magenta};
    return color >= 1 && color <= 7 ? kColors[color == 7 ? 0 : color] : QColor(Qt::white);
}

bool sameVector(const AcGePoint3d& a0, const AcGePoint3d& a1, const AcGePoint3d& b0,
                const AcGePoint3d& b1) {
    return (a0 == b0 && a1 == b1) || (a0 == b1 && a1 == b0);
}

}  // namespace

PlaceholderView::PlaceholderView(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::NoFocus);
    setAutoFillBackground(false);
    setMinimumSize(200, 150);
    setCursor(Qt::CrossCursor);
}

AcGePoint3d PlaceholderView::toDrawing(const QPointF& position) const {
    return {m_centre.x + (position.x() - width() / 2.0) / m_scale,
            m_centre.y - (position.y() - height() / 2.0) / m_scale, 0.0};
}

QPointF PlaceholderView::toWidget(const AcGePoint3d& point) const {
    return {width() / 2.0 + (point.x - m_centre.x) * m_scale,
            height() / 2.0 - (point.y - m_centre.y) * m_scale};
}

void PlaceholderView::setDocument(const DxfDocument* document) {
    m_document = document;
    m_vectors.clear();
    m_rectangle.reset();
    m_highlighted.clear();
    zoomExtents();
}

void PlaceholderView::entityAdded(AcDbObjectId) { update(); }

void PlaceholderView::entityRemoved(AcDbObjectId id) {
    std::erase(m_highlighted, id);
    update();
}

void PlaceholderView::drawVector(const AcGePoint3d& from, const AcGePoint3d& to, int color, bool) {
    if (color == kXorInk) {
        const auto same = std::find_if(m_vectors.begin(), m_vectors.end(), [&](const Vector& v) {
            return v.color == kXorInk && sameVector(v.from, v.to, from, to);
        });
        if (same != m_vectors.end()) {
            m_vectors.erase(same);
            update();
            return;
        }
    }
    m_vectors.push_back({from, to, color});
    update();
}

void PlaceholderView::clearVectors() {
    m_vectors.clear();
    update();
}

void PlaceholderView::showSelectionRectangle(const AcGePoint3d& a, const AcGePoint3d& b,
                                             bool crossing) {
    m_rectangle = Rectangle{a, b, crossing};
    update();
}

void PlaceholderView::hideSelectionRectangle() {
    m_rectangle.reset();
    update();
}

void PlaceholderView::setHighlighted(const std::vector<AcDbObjectId>& ids) {
    m_highlighted = ids;
    update();
}

void PlaceholderView::zoomExtents() {
    if (width() <= 0 || height() <= 0) {
        m_fitPending = true;
        return;
    }
    m_fitPending = false;
    const std::vector<DxfReference> references =
        m_document ? m_document->blockReferences(DxfSpace::Model) : std::vector<DxfReference>{};
    if (references.empty()) {
        zoomWindow({0, 0, 0}, {10, 10, 0});
        return;
    }
    AcGePoint3d low = references.front().position;
    AcGePoint3d high = low;
    for (const DxfReference& reference : references) {
        low.x = std::min(low.x, reference.position.x);
        low.y = std::min(low.y, reference.position.y);
        high.x = std::max(high.x, reference.position.x);
        high.y = std::max(high.y, reference.position.y);
    }
    zoomWindow(low, high);
}

void PlaceholderView::zoomWindow(const AcGePoint3d& a, const AcGePoint3d& b) {
    m_centre = {(a.x + b.x) / 2.0, (a.y + b.y) / 2.0, 0.0};
    const double w = std::max(std::fabs(a.x - b.x), 1e-9);
    const double h = std::max(std::fabs(a.y - b.y), 1e-9);
    m_scale = kMargin * std::min(width() / w, height() / h);
    m_vectors.clear();
    update();
}

void PlaceholderView::zoomFactor(double factor) {
    if (!(factor > 0.0) || !std::isfinite(factor)) return;
    m_scale *= factor;
    m_vectors.clear();
    update();
}

std::optional<AcDbObjectId> PlaceholderView::pick(const AcGePoint3d& at,
                                                  const SelectionFilter& filter) const {
    if (m_document == nullptr) return std::nullopt;
    return nearestReference(*m_document, at, kPickBox / m_scale, filter);
}

std::vector<AcDbObjectId> PlaceholderView::window(const AcGePoint3d& a, const AcGePoint3d& b,
                                                  const SelectionFilter& filter) const {
    return m_document ? referencesInWindow(*m_document, a, b, filter) : std::vector<AcDbObjectId>{};
}

// A point lies in a crossing exactly when it lies in the window.
std::vector<AcDbObjectId> PlaceholderView::crossing(const AcGePoint3d& a, const AcGePoint3d& b,
                                                    const SelectionFilter& filter) const {
    return window(a, b, filter);
}

std::vector<AcDbObjectId> PlaceholderView::all(const SelectionFilter& filter) const {
    return m_document ? allReferences(*m_document, filter) : std::vector<AcDbObjectId>{};
}

void PlaceholderView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(33, 40, 48));
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_document) {
        const QColor reference(150, 160, 170);
        const QColor highlighted(255, 200, 60);
        for (const DxfReference& r : m_document->blockReferences(DxfSpace::Model)) {
            const bool lit =
                std::find(m_highlighted.begin(), m_highlighted.end(), r.id) != m_highlighted.end();
            painter.setPen(QPen(lit ? highlighted : reference, lit ? 2.0 : 1.0));
            const QPointF p = toWidget(r.position);
            painter.drawLine(p + QPointF(-4, 0), p + QPointF(4, 0));
            painter.drawLine(p + QPointF(0, -4), p + QPointF(0, 4));
        }
    }
    if (m_rectangle) {
        const QRectF box = QRectF(toWidget(m_rectangle->a), toWidget(m_rectangle->b)).normalized();
        const QColor fill =
            m_rectangle->crossing ? QColor(60, 180, 90, 50) : QColor(70, 120, 220, 50);
        painter.fillRect(box, fill);
        painter.setPen(QPen(Qt::white, 1.0, m_rectangle->crossing ? Qt::DashLine : Qt::SolidLine));
        painter.drawRect(box);
    }
    for (const Vector& v : m_vectors) {
        painter.setPen(QPen(inkOf(v.color), 1.0));
        painter.drawLine(toWidget(v.from), toWidget(v.to));
    }
    painter.setPen(QColor(120, 130, 140));
    painter.drawText(rect().adjusted(8, 8, -8, -8), Qt::AlignLeft | Qt::AlignTop,
                     tr("Block references shown by their insertion points"));
}

void PlaceholderView::mouseMoveEvent(QMouseEvent* event) {
    const AcGePoint3d p = toDrawing(event->position());
    emit cursorMoved(QPointF(p.x, p.y));
}

void PlaceholderView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const AcGePoint3d p = toDrawing(event->position());
    emit pointClicked(QPointF(p.x, p.y));
}

void PlaceholderView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (m_fitPending) zoomExtents();
}

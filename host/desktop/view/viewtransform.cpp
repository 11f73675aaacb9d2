// Zooming, panning and fitting keep the scale within what doubles can show sharply.
#include "host/desktop/view/viewtransform.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kMinScale = 1e-12;
constexpr double kMaxScale = 1e12;

}  // namespace

ViewTransform::ViewTransform(ScenePoint center, double pixelsPerUnit, QSize size)
    : m_center(center), m_scale(std::clamp(pixelsPerUnit, kMinScale, kMaxScale)), m_size(size) {}

SceneTransform ViewTransform::worldToScreen() const {
    return {m_scale,
            0.0,
            0.0,
            -m_scale,
            m_size.width() / 2.0 - m_center.x * m_scale,
            m_size.height() / 2.0 + m_center.y * m_scale};
}

SceneRect ViewTransform::visibleWorld() const {
    return SceneRect::fromCorners(toWorld({0, 0}),
                                  toWorld(QPointF(m_size.width(), m_size.height())));
}

void ViewTransform::zoomAbout(QPointF anchor, double factor) {
    if (!(factor > 0) || !std::isfinite(factor)) return;
    const ScenePoint fixed = toWorld(anchor);
    m_scale = std::clamp(m_scale * factor, kMinScale, kMaxScale);
    // Put the fixed world point back under the anchor.
    const ScenePoint moved = toWorld(anchor);
    m_center = {m_center.x + fixed.x - moved.x, m_center.y + fixed.y - moved.y};
}

void ViewTransform::panBy(QPointF pixels) {
    m_center = {m_center.x - pixels.x() / m_scale, m_center.y + pixels.y() / m_scale};
}

void ViewTransform::fit(const SceneRect& world, double margin) {
    if (world.isEmpty()) return;
    m_center = world.center();
    const double usable = std::max(0.0, 1.0 - 2 * margin);
    const double width = std::max(1.0, m_size.width() * usable);
    const double height = std::max(1.0, m_size.height() * usable);
    double scale = 1.0;
    if (world.width() > 0 || world.height() > 0) {
        scale = std::min(world.width() > 0 ? width / world.width() : kMaxScale,
                         world.height() > 0 ? height / world.height() : kMaxScale);
    }
    m_scale = std::clamp(scale, kMinScale, kMaxScale);
}

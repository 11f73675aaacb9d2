// The mapping between the drawing's world (y up) and the pixels of a view (y down): a world point
// at the view's centre, a scale in pixels per drawing unit, and the view's size.
#pragma once

#include <QPointF>
#include <QSize>

#include "host/desktop/scene/scenegeometry.h"

class ViewTransform {
public:
    ViewTransform() = default;
    ViewTransform(ScenePoint center, double pixelsPerUnit, QSize size);

    ScenePoint center() const { return m_center; }
    double pixelsPerUnit() const { return m_scale; }
    QSize size() const { return m_size; }
    void setSize(QSize size) { m_size = size; }

    QPointF toScreen(ScenePoint world) const {
        return {(world.x - m_center.x) * m_scale + m_size.width() / 2.0,
                (m_center.y - world.y) * m_scale + m_size.height() / 2.0};
    }
    ScenePoint toWorld(QPointF screen) const {
        return {m_center.x + (screen.x() - m_size.width() / 2.0) / m_scale,
                m_center.y - (screen.y() - m_size.height() / 2.0) / m_scale};
    }
    // World to pixels as a scene transform, to compose with block transforms.
    SceneTransform worldToScreen() const;
    // The world rectangle the view shows.
    SceneRect visibleWorld() const;

    // Scales by `factor` (above 1 zooms in) keeping the world point under `anchor` in place.
    void zoomAbout(QPointF anchor, double factor);
    // Moves the drawing with the cursor: the world shifts by the pixels given.
    void panBy(QPointF pixels);
    // Shows the whole rectangle with `margin` (a fraction of the view) free around it. An empty
    // rectangle leaves the view as it is; a point or a line is shown at one unit a pixel across.
    void fit(const SceneRect& world, double margin = 0.05);

private:
    ScenePoint m_center;
    double m_scale = 1.0;
    QSize m_size{1, 1};
};

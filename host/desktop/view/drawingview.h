// The drawing view of the desktop host: shows a scene, zooms with the wheel about the cursor,
// pans with the middle button, and reports the cursor and clicks in drawing coordinates. Over the
// drawing it shows what editor code asks for: exclusive-or vectors, a selection rectangle and
// highlighted entities. It knows no commands.
#pragma once

#include <QImage>
#include <QPointF>
#include <QWidget>
#include <memory>
#include <optional>
#include <vector>

#include "host/api/acdbobjectid.h"
#include "host/desktop/scene/drawingscene.h"
#include "host/desktop/view/overlayvectors.h"
#include "host/desktop/view/scenerenderer.h"
#include "host/desktop/view/viewtransform.h"

class DrawingView final : public QWidget {
    Q_OBJECT

public:
    explicit DrawingView(QWidget* parent = nullptr);
    ~DrawingView() override;

    // The scene stays the caller's and must outlive its use here; null shows nothing. A new
    // scene is shown whole.
    void setScene(const DrawingScene* scene);
    const DrawingScene* scene() const { return m_scene; }
    void setBackground(QColor background);

    // Mapping between the widget's pixels and the drawing.
    const ViewTransform& viewTransform() const { return m_view; }
    void setViewTransform(const ViewTransform& view);
    ScenePoint toWorld(QPointF pixel) const { return m_view.toWorld(pixel); }
    QPointF toScreen(ScenePoint world) const { return m_view.toScreen(world); }
    // The drawing units one pixel spans: a pick box of n pixels is n times this.
    double unitsPerPixel() const { return 1.0 / m_view.pixelsPerUnit(); }

    // ZOOM: the whole drawing, a factor about a pixel (above 1 zooms in), a world window. Like
    // a CAD program's redraw, each clears the exclusive-or vectors.
    void zoomExtents();
    void zoomAbout(QPointF pixel, double factor);
    void zoomWindow(const SceneRect& world);
    void panBy(QPointF pixels);

    // The view draws the scene again (after the scene changed); regen clears the overlay, as
    // REGEN and REDRAW do.
    void regen();

    // grDraw: a vector in an ACI colour, or -1 for exclusive-or ink (the same vector again takes
    // it away); highlighted ones are dashed.
    void drawVector(ScenePoint from, ScenePoint to, int color, bool highlighted);
    void clearVectors();
    const OverlayVectors& vectors() const { return m_vectors; }

    // The rectangle of a window selection (solid) or a crossing one (dashed), in world units.
    void setSelectionRectangle(const SceneRect& world, bool crossing);
    void clearSelectionRectangle();
    // Selected entities, drawn dashed over the drawing.
    void setHighlighted(const std::vector<AcDbObjectId>& entities);
    const std::vector<AcDbObjectId>& highlighted() const { return m_highlighted; }

    // What the last repaint of the drawing did (tests and benchmarks).
    const SceneRenderer::Counts& lastRenderCounts() const;
    // Renders the drawing as the view shows it now (without overlay), at the view's size.
    QImage renderImage();

signals:
    void cursorMoved(QPointF world);
    // A left or right button pressed at a point of the drawing.
    void pointClicked(QPointF world, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
    // Zoom or pan changed what the view shows.
    void viewChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void viewMoved();
    void paintOverlay(QPainter& painter);
    void ensureCanvas();

    const DrawingScene* m_scene = nullptr;
    std::unique_ptr<SceneRenderer> m_renderer;
    QColor m_background{0x21, 0x28, 0x30};
    ViewTransform m_view;
    bool m_fitPending = false;  // zoom extents once the widget has its size
    QImage m_canvas;            // the drawing as last rendered
    bool m_canvasValid = false;
    QImage m_highlightCanvas;  // the canvas with the highlighted entities dashed
    bool m_highlightValid = false;
    SceneRenderer::Counts m_counts;
    OverlayVectors m_vectors;
    std::optional<SceneRect> m_selection;
    bool m_crossing = false;
    std::vector<AcDbObjectId> m_highlighted;
    std::vector<std::uint32_t> m_highlightedIndexes;
    std::optional<QPointF> m_panFrom;
};

// The drawing area until the drawing view is built: it shows where the block references are, the
// editor's vectors and the selection rectangle, turns mouse input into drawing coordinates, and
// selects references by their insertion points.
#pragma once

#include <QPointF>
#include <QWidget>
#include <optional>
#include <utility>
#include <vector>

#include "host/desktop/shell/drawingsurface.h"

class PlaceholderView final : public QWidget, public DrawingSurface {
    Q_OBJECT
public:
    explicit PlaceholderView(QWidget* parent = nullptr);

    // Drawing units at a widget position and back, at the present zoom.
    AcGePoint3d toDrawing(const QPointF& position) const;
    QPointF toWidget(const AcGePoint3d& point) const;
    // The exclusive-or vectors now showing, for tests and painting.
    std::size_t vectorCount() const { return m_vectors.size(); }
    bool selectionRectangleShown() const { return m_rectangle.has_value(); }

    // DrawingSurface
    void setDocument(const DxfDocument* document) override;
    void entityAdded(AcDbObjectId id) override;
    void entityRemoved(AcDbObjectId id) override;
    void drawVector(const AcGePoint3d& from, const AcGePoint3d& to, int color,
                    bool highlight) override;
    void clearVectors() override;
    void showSelectionRectangle(const AcGePoint3d& a, const AcGePoint3d& b, bool crossing) override;
    void hideSelectionRectangle() override;
    void setHighlighted(const std::vector<AcDbObjectId>& ids) override;
    void zoomExtents() override;
    void zoomWindow(const AcGePoint3d& a, const AcGePoint3d& b) override;
    void zoomFactor(double factor) override;
    std::optional<AcDbObjectId> pick(const AcGePoint3d& at,
                                     const SelectionFilter& filter) const override;
    std::vector<AcDbObjectId> window(const AcGePoint3d& a, const AcGePoint3d& b,
                                     const SelectionFilter& filter) const override;
    std::vector<AcDbObjectId> crossing(const AcGePoint3d& a, const AcGePoint3d& b,
                                       const SelectionFilter& filter) const override;
    std::vector<AcDbObjectId> all(const SelectionFilter& filter) const override;

signals:
    void cursorMoved(const QPointF& drawingPoint);
    void pointClicked(const QPointF& drawingPoint);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Vector {
        AcGePoint3d from;
        AcGePoint3d to;
        int color;
    };
    struct Rectangle {
        AcGePoint3d a;
        AcGePoint3d b;
        bool crossing;
    };

    const DxfDocument* m_document = nullptr;
    AcGePoint3d m_centre;
    double m_scale = 20.0;  // pixels per drawing unit
    bool m_fitPending = true;
    std::vector<Vector> m_vectors;
    std::optional<Rectangle> m_rectangle;
    std::vector<AcDbObjectId> m_highlighted;
};

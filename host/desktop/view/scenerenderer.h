// Paints a drawing scene with QPainter: the entities a view shows, each as much as its size on
// the screen asks (smaller than a pixel: one dot), in batches of one colour, with texts laid out
// in a sans-serif font.
#pragma once

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QLineF>
#include <QPainter>
#include <QPointF>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "host/desktop/scene/drawingscene.h"
#include "host/desktop/view/viewtransform.h"

class SceneRenderer {
public:
    // What the last render did, for tests and benchmarks.
    struct Counts {
        std::size_t visited = 0;  // entities whose box met the view
        std::size_t dots = 0;     // of those, drawn as one pixel
        std::size_t drawn = 0;    // drawn with their primitives
        bool usedIndex = false;   // whether the spatial index chose them
    };

    explicit SceneRenderer(const DrawingScene& scene);

    // The drawing's foreground (ACI 7) takes the colour that stands out against the background.
    void setBackground(QColor background);
    QColor background() const { return m_background; }
    QColor foreground() const { return m_foreground; }

    // Fills the image (ARGB32 premultiplied, the view's size) with the background and the
    // entities the view shows.
    void render(QImage& image, const ViewTransform& view);
    // Draws entities (places in drawing order) over what the painter holds, in a pen of this
    // style and, when one is given, of one colour; highlighted entities are drawn dashed this way
    // over themselves drawn in the background colour.
    void renderEntities(QPainter& painter, const ViewTransform& view,
                        std::span<const std::uint32_t> entities, Qt::PenStyle style,
                        std::optional<QColor> color = std::nullopt);

    const Counts& lastCounts() const { return m_counts; }

private:
    // What a block reference passes down to the block it shows.
    struct Inherited {
        SceneRgb blockColor = kSceneForeground;
        SceneRgb layerColor = kSceneForeground;
        bool layerShown = true;
    };
    // Lines and pixels of one colour, drawn in one call each.
    struct Batch {
        QRgb color = 0;
        std::vector<QLineF> lines;
        std::vector<QPointF> points;
    };

    Batch& batchFor(QRgb color);
    void flush(QPainter& painter, Qt::PenStyle style, std::optional<QColor> color = std::nullopt);
    void beginFrame(const ViewTransform& view);
    void drawEntity(QPainter& painter, std::size_t index);
    void drawShape(QPainter& painter, const SceneShape& shape, std::uint32_t first,
                   std::uint32_t count, const SceneTransform& toScreen, const Inherited& inherited,
                   int depth);
    void drawPath(const SceneShape& shape, const ScenePath& path, const SceneTransform& toScreen,
                  QRgb color);
    void drawArc(const SceneArc& arc, const SceneTransform& toScreen, QRgb color);
    void drawText(QPainter& painter, const SceneText& text, const SceneTransform& toScreen,
                  QRgb color);
    void addSegment(QPointF a, QPointF b, QRgb color);
    SceneRgb resolved(const ScenePrimitive& primitive, const Inherited& inherited) const;
    QRgb shown(SceneRgb rgb) const;
    QRgb entityColor(std::size_t index) const;

    const DrawingScene& m_scene;
    QColor m_background;
    QColor m_foreground;
    QFont m_font;
    QFontMetricsF m_metrics;
    double m_capHeight = 1.0;  // of m_font, in pixels
    Counts m_counts;
    // Per frame.
    SceneTransform m_toScreen;
    std::optional<QColor> m_textColor;  // instead of the texts' own, while highlighting
    QRectF m_clip;                      // the image grown by a margin: segments are cut to it
    std::vector<Batch> m_batches;
    std::size_t m_lastBatch = 0;
    std::vector<std::uint32_t> m_found;
    std::vector<std::uint32_t> m_toDraw;
};

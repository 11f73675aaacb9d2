// Paints a drawing scene into an image: the entities a view shows, each as much as its size on
// the screen asks (smaller than a pixel: one dot). Lines are written into the image's pixels by
// the renderer itself, gathered by several threads at once for large frames and written band by
// band; texts are laid out with QPainter in a sans-serif font.
#pragma once

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPointF>
#include <QRectF>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "host/desktop/scene/drawingscene.h"
#include "host/desktop/view/rasterbands.h"
#include "host/desktop/view/viewtransform.h"

class QPainter;

class SceneRenderer {
public:
    // What the last render did, for tests and benchmarks.
    struct Counts {
        std::size_t visited = 0;  // entities whose box met the view
        std::size_t dots = 0;     // of those, drawn as one pixel
        std::size_t drawn = 0;    // drawn with their primitives
        bool usedIndex = false;   // whether the spatial index chose them
        unsigned threads = 1;     // that drew them
    };

    explicit SceneRenderer(const DrawingScene& scene);

    // The drawing's foreground (ACI 7) takes the colour that stands out against the background.
    void setBackground(QColor background);
    QColor background() const { return m_background; }
    QColor foreground() const { return m_foreground; }
    // Threads a large frame may use; 0 (the default) is one a core.
    void setThreads(unsigned threads) { m_threads = threads; }

    // Fills the image (32 bits a pixel, the view's size) with the background and the entities
    // the view shows.
    void render(QImage& image, const ViewTransform& view);
    // Draws entities (places in drawing order) over what the image holds: in their colours or
    // all in one, solid or dashed. Highlights are drawn so: the entities in the background
    // colour, then dashed.
    void renderEntities(QImage& image, const ViewTransform& view,
                        std::span<const std::uint32_t> entities, bool dashed,
                        std::optional<QColor> color = std::nullopt);

    const Counts& lastCounts() const { return m_counts; }
    // The lines of the last frame (render's, not renderEntities'), a list a share, for
    // benchmarks that write them otherwise.
    std::span<const RasterBands> lastLines() const {
        return std::span(m_bands).first(std::min<std::size_t>(m_bands.size(), m_counts.threads));
    }

private:
    // What a block reference passes down to the block it shows.
    struct Inherited {
        SceneRgb blockColor = kSceneForeground;
        SceneRgb layerColor = kSceneForeground;
        bool layerShown = true;
    };
    // A text big enough to read, painted once the lines are drawn.
    struct DeferredText {
        const SceneText* text = nullptr;
        SceneTransform toScreen;
        QRgb color = 0;
    };
    // A block being drawn: its primitives still to draw and what its reference passes down.
    struct BlockLevel {
        const SceneShape* shape = nullptr;
        std::uint32_t next = 0;
        std::uint32_t end = 0;
        SceneTransform toScreen;
        Inherited inherited;
    };
    // One thread's drawing: where the pixels go and what it found.
    struct Frame {
        QRgb* bits = nullptr;
        qsizetype stride = 0;
        int width = 0;
        int height = 0;
        QRectF clip;  // the image grown by a margin: segments are first cut to it
        SceneTransform toScreen;
        RasterBands* bands = nullptr;  // where lines wait for the bands; none: written at once
        std::optional<QRgb> color;     // everything in this colour
        bool dashed = false;
        int dashPhase = 0;
        std::vector<DeferredText> texts;
        std::vector<BlockLevel> levels;  // blocks nest as deep as a drawing likes: no recursion
        Counts counts;
    };

    Frame frameFor(QImage& image, const ViewTransform& view) const;
    // Entities by place in drawing order: dots straight into the image, the rest drawn.
    void drawEntities(Frame& frame, std::span<const std::uint32_t> entities);
    void drawRange(Frame& frame, std::size_t begin, std::size_t end);
    // Asks memory for what an entity's first primitive draws (its points, with `points`).
    void prefetchData(std::uint32_t index, bool points) const;
    void sortEntity(Frame& frame, const SceneShape& shape, const SceneEntity& entity,
                    const SceneRect& box);
    void drawShape(Frame& frame, const SceneShape& shape, std::uint32_t first, std::uint32_t count,
                   const SceneTransform& toScreen);
    void drawPath(Frame& frame, const SceneShape& shape, const ScenePath& path,
                  const SceneTransform& toScreen, QRgb color);
    void drawArc(Frame& frame, const SceneArc& arc, const SceneTransform& toScreen, QRgb color);
    void drawText(Frame& frame, const SceneText& text, const SceneTransform& toScreen, QRgb color);
    void paintText(QPainter& painter, const DeferredText& deferred, std::optional<QRgb> color);
    void addSegment(Frame& frame, QPointF a, QPointF b, QRgb color);
    void addPoint(Frame& frame, double x, double y, QRgb color);
    void addLine(Frame& frame, const RasterLine& line);
    SceneRgb resolved(const ScenePrimitive& primitive, const Inherited& inherited) const;
    QRgb shown(SceneRgb rgb) const;
    unsigned threadsFor(std::size_t entities) const;
    // Runs `draw` on frames side by side over shares of [0, count); merges what they found.
    template <typename Draw>
    void drawShared(QImage& image, const ViewTransform& view, std::size_t count, Draw draw);
    void paintTexts(QImage& image, const std::vector<DeferredText>& texts,
                    std::optional<QRgb> color);

    const DrawingScene& m_scene;
    QColor m_background;
    QColor m_foreground;
    QFont m_font;
    // Measured when the first text is painted: the font database is slow to open, and a picture
    // of a whole drawing seldom shows a text large enough to read.
    std::optional<QFontMetricsF> m_metrics;
    double m_capHeight = 1.0;  // of m_font, in pixels
    unsigned m_threads = 0;
    Counts m_counts;
    std::vector<std::uint32_t> m_found;
    std::vector<RasterBands> m_bands;  // a share's each, kept from frame to frame
};

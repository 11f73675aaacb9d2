// Texts: laid out in glyph units (one unit is a capital's height) and placed by their frame, so
// rotation, width factor, obliqueness and mirroring come with the transform. Small texts are a
// stroke along their box, smaller ones a dot.
#include <QPainter>
#include <QString>
#include <QStringList>
#include <QTransform>

#include "host/desktop/view/scenerenderer.h"

namespace {

constexpr double kDotSize = 1.0;
constexpr double kReadableHeight = 3.0;  // pixels a capital needs before letters are drawn

// Paragraphs broken into lines no wider than `width` (in the units `advance` measures).
template <typename Advance>
QStringList wrapped(const QStringList& paragraphs, double width, Advance advance) {
    if (!(width > 0)) return paragraphs;
    QStringList lines;
    for (const QString& paragraph : paragraphs) {
        QString line;
        for (const QString& word : paragraph.split(QLatin1Char(' '))) {
            const QString candidate = line.isEmpty() ? word : line + QLatin1Char(' ') + word;
            if (!line.isEmpty() && advance(candidate) > width) {
                lines.push_back(line);
                line = word;
            } else {
                line = candidate;
            }
        }
        lines.push_back(line);
    }
    return lines;
}

}  // namespace

void SceneRenderer::drawText(Frame& frame, const SceneText& text, const SceneTransform& toScreen,
                             QRgb color) {
    const SceneTransform place = text.frame.then(toScreen);
    const SceneRect estimate = text.estimatedBox();
    const SceneRect box = place.mapRect(estimate);
    if (box.isEmpty() || box.maxX < frame.clip.left() || box.minX > frame.clip.right() ||
        box.maxY < frame.clip.top() || box.minY > frame.clip.bottom())
        return;
    if (box.width() < kDotSize && box.height() < kDotSize) {
        const ScenePoint c = box.center();
        addPoint(frame, c.x, c.y, color);
        return;
    }
    const double unit = std::hypot(place.m21, place.m22);  // pixels a glyph unit, upwards
    if (unit < kReadableHeight) {
        const double middle = (estimate.minY + estimate.maxY) / 2;
        const ScenePoint a = place.map({estimate.minX, middle});
        const ScenePoint b = place.map({estimate.maxX, middle});
        addSegment(frame, {a.x, a.y}, {b.x, b.y}, color);
        return;
    }
    frame.texts.push_back({&text, toScreen, color});
}

void SceneRenderer::paintText(QPainter& painter, const DeferredText& deferred,
                              std::optional<QRgb> color) {
    const SceneText& text = *deferred.text;
    const SceneTransform frame = text.frame.then(deferred.toScreen);
    const QString content = QString::fromStdWString(m_scene.textOf(text));
    if (content.trimmed().isEmpty()) return;
    const double k = 1.0 / m_capHeight;  // glyph units a font pixel
    auto advance = [&](const QString& line) { return m_metrics->horizontalAdvance(line) * k; };
    QString flat = content;
    flat.replace(QLatin1Char('\t'), QLatin1Char(' '));
    const QStringList lines = wrapped(flat.split(QLatin1Char('\n')), text.wrapWidth, advance);
    const auto count = static_cast<double>(lines.size());
    const double descent = m_metrics->descent() * k;
    const bool paragraphs = text.content == SceneTextContent::MText;
    const double height = 1.0 + (count - 1) * text.lineSpacing;
    double baseline = 0.0;  // of the first line, from the anchor
    switch (text.vertical) {
        case SceneVertical::Baseline:
            break;
        case SceneVertical::Bottom:
            baseline = (count - 1) * text.lineSpacing + descent;
            break;
        case SceneVertical::Middle:
            baseline = paragraphs ? height / 2 - 1.0 : -0.5;
            break;
        case SceneVertical::Top:
            baseline = -1.0;
            break;
    }

    painter.setPen(QColor::fromRgba(color.value_or(deferred.color)));
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString& line = lines[i];
        if (line.isEmpty()) continue;
        const double width = advance(line);
        double sx = 1.0;
        double sy = 1.0;
        double x = 0.0;
        switch (text.horizontal) {
            case SceneHorizontal::Left:
                break;
            case SceneHorizontal::Center:
                x = -width / 2;
                break;
            case SceneHorizontal::Right:
                x = -width;
                break;
            case SceneHorizontal::Aligned:
                sx = sy = width > 0 ? text.fitWidth / width : 1.0;
                break;
            case SceneHorizontal::Fit:
                sx = width > 0 ? text.fitWidth / width : 1.0;
                break;
        }
        const double y = baseline - static_cast<double>(i) * text.lineSpacing;
        // Font pixels (y down) to glyph units (y up), then the text's frame.
        const SceneTransform glyphs = SceneTransform{k * sx, 0, 0, -k * sy, x, y}.then(frame);
        painter.setTransform(
            QTransform(glyphs.m11, glyphs.m12, glyphs.m21, glyphs.m22, glyphs.dx, glyphs.dy));
        painter.drawText(QPointF(0, 0), line);
    }
    painter.setTransform(QTransform());
}

// The drawing view on the million-reference drawing: reading it alone, then reading it, building
// the scene and painting it once into a 1600 x 1000 image; then redrawing the built scene at
// zoom extents and zoomed in; and the lines of the picture at extents written by the renderer's
// own loop against QPainter.
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <vector>

#include "host/desktop/scene/drawingscene.h"
#include "host/desktop/view/scenerenderer.h"
#include "host/dxf/dxfdocument.h"

namespace {

const QSize kImage(1600, 1000);

std::filesystem::path drawingPath() {
    const char* path = std::getenv("TARNWICK_BENCH_DRAWING");
    return path != nullptr ? path : TARNWICK_BENCH_DRAWING;
}

double millisecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

std::unique_ptr<DxfDocument> readDrawing(benchmark::State& state) {
    auto document = DxfDocument::readFile(drawingPath());
    if (!document.isOk()) {
        state.SkipWithError(document.errorString().c_str());
        return nullptr;
    }
    return document.takeValue();
}

// The reader alone, as the comparison for the first paint.
void ReadDrawing(benchmark::State& state) {
    for (auto _ : state) {
        auto document = readDrawing(state);
        if (!document) return;
        benchmark::DoNotOptimize(document.get());
    }
}

// Open to first picture: read, build the scene (primitives, block shapes, index), paint at zoom
// extents. The counters split the time; `paint_over_read` is what the view adds to reading.
void OpenAndFirstPaint(benchmark::State& state) {
    double read = 0, scene = 0, paint = 0;
    std::size_t dots = 0, drawn = 0;
    for (auto _ : state) {
        auto start = std::chrono::steady_clock::now();
        auto document = readDrawing(state);
        if (!document) return;
        read += millisecondsSince(start);
        start = std::chrono::steady_clock::now();
        const DrawingScene built(*document, DxfSpace::Model);
        scene += millisecondsSince(start);
        start = std::chrono::steady_clock::now();
        SceneRenderer renderer(built);
        ViewTransform view({}, 1.0, kImage);
        view.fit(built.extents());
        QImage image(kImage, QImage::Format_ARGB32_Premultiplied);
        renderer.render(image, view);
        paint += millisecondsSince(start);
        dots = renderer.lastCounts().dots;
        drawn = renderer.lastCounts().drawn;
        state.PauseTiming();
        document.reset();
        state.ResumeTiming();
    }
    const double n = static_cast<double>(state.iterations());
    state.counters["read_ms"] = read / n;
    state.counters["scene_ms"] = scene / n;
    state.counters["paint_ms"] = paint / n;
    state.counters["paint_over_read"] = (scene + paint) / read;
    state.counters["open_to_paint_over_read"] = (read + scene + paint) / read;
    state.counters["dots"] = static_cast<double>(dots);
    state.counters["drawn"] = static_cast<double>(drawn);
}

// A scene built once for the redraws.
struct Built {
    std::unique_ptr<DxfDocument> document;
    std::unique_ptr<DrawingScene> scene;
};

Built& built(benchmark::State& state) {
    static Built b;
    if (!b.scene) {
        b.document = readDrawing(state);
        if (b.document) b.scene = std::make_unique<DrawingScene>(*b.document, DxfSpace::Model);
    }
    return b;
}

// Redraws at a share of the extents' width, about the centre of the drawing (1.0: extents).
void Redraw(benchmark::State& state, double share) {
    Built& b = built(state);
    if (!b.scene) {
        state.SkipWithError("no drawing");
        return;
    }
    SceneRenderer renderer(*b.scene);
    const SceneRect extents = b.scene->extents();
    const ScenePoint c = extents.center();
    const double w = extents.width() * share / 2;
    const double h = extents.height() * share / 2;
    ViewTransform view({}, 1.0, kImage);
    view.fit({c.x - w, c.y - h, c.x + w, c.y + h}, share < 1.0 ? 0.0 : 0.05);
    QImage image(kImage, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) renderer.render(image, view);
    state.counters["visited"] = static_cast<double>(renderer.lastCounts().visited);
    state.counters["dots"] = static_cast<double>(renderer.lastCounts().dots);
    state.counters["drawn"] = static_cast<double>(renderer.lastCounts().drawn);
}

// The lines of the picture at zoom extents, as the renderer gathers them, each once (a line is
// listed in every band it crosses; it is kept in the band of its first end).
std::vector<RasterLine> extentsLines(const DrawingScene& scene) {
    SceneRenderer renderer(scene);
    ViewTransform view({}, 1.0, kImage);
    view.fit(scene.extents());
    QImage image(kImage, QImage::Format_ARGB32_Premultiplied);
    renderer.render(image, view);
    std::vector<RasterLine> lines;
    for (const RasterBands& share : renderer.lastLines()) {
        for (int band = 0; band < share.bandCount(); ++band) {
            share.forEach(band, [&](const RasterLine& line) {
                if (line.y0 >> RasterBands::kBandShift == band) lines.push_back(line);
            });
        }
    }
    return lines;
}

// Those lines written by the renderer's own loop, band by band, on one thread.
void LinesOwnLoop(benchmark::State& state) {
    Built& b = built(state);
    if (!b.scene) {
        state.SkipWithError("no drawing");
        return;
    }
    const std::vector<RasterLine> lines = extentsLines(*b.scene);
    RasterBands bands;
    bands.reset(kImage.height());
    for (const RasterLine& line : lines) bands.add(line);
    QImage image(kImage, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        image.fill(Qt::black);
        writeBands(reinterpret_cast<QRgb*>(image.bits()), image.bytesPerLine() / 4,
                   image.height(), std::span(&bands, 1), 1);
    }
    state.counters["lines"] = static_cast<double>(lines.size());
}

// The same lines drawn with QPainter: a cosmetic one-pixel pen, no antialiasing, one drawLines
// (and one drawPoints for the dots) a colour, on one thread.
void LinesQPainter(benchmark::State& state) {
    Built& b = built(state);
    if (!b.scene) {
        state.SkipWithError("no drawing");
        return;
    }
    std::map<QRgb, std::pair<std::vector<QLine>, std::vector<QPoint>>> byColour;
    for (const RasterLine& line : extentsLines(*b.scene)) {
        auto& [segments, dots] = byColour[line.color];
        if (line.x0 == line.x1 && line.y0 == line.y1) {
            dots.emplace_back(line.x0, line.y0);
        } else {
            segments.emplace_back(line.x0, line.y0, line.x1, line.y1);
        }
    }
    QImage image(kImage, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        image.fill(Qt::black);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing, false);
        for (const auto& [colour, lists] : byColour) {
            QPen pen(QColor::fromRgba(colour));
            pen.setCosmetic(true);
            pen.setWidth(0);
            painter.setPen(pen);
            painter.drawLines(lists.first.data(), static_cast<int>(lists.first.size()));
            painter.drawPoints(lists.second.data(), static_cast<int>(lists.second.size()));
        }
    }
    state.counters["colours"] = static_cast<double>(byColour.size());
}

void RedrawExtents(benchmark::State& state) { Redraw(state, 1.0); }
void RedrawOnePercentWide(benchmark::State& state) { Redraw(state, 0.01); }
void RedrawOnePercentOfTheArea(benchmark::State& state) { Redraw(state, 0.1); }

}  // namespace

BENCHMARK(ReadDrawing)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(OpenAndFirstPaint)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(RedrawExtents)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(RedrawOnePercentWide)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(RedrawOnePercentOfTheArea)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(LinesOwnLoop)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(LinesQPainter)->Unit(benchmark::kMillisecond)->UseRealTime();

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

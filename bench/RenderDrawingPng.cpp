// Renders a drawing's model space to a PNG offscreen, as the desktop view shows it: for looking at
// the view's output and for pictures in the documentation.
//
// Usage: drawing_png DRAWING.dxf OUT.png [WIDTH HEIGHT] [--light] [--window X0 Y0 X1 Y1]
#include <QGuiApplication>
#include <QImage>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "host/desktop/scene/drawingscene.h"
#include "host/desktop/view/scenerenderer.h"
#include "host/dxf/dxfdocument.h"

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc < 3) {
        std::fprintf(stderr,
                     "usage: %s DRAWING.dxf OUT.png [WIDTH HEIGHT] [--light] "
                     "[--window X0 Y0 X1 Y1]\n",
                     argv[0]);
        return 2;
    }
    int width = 1600;
    int height = 1000;
    bool light = false;
    std::optional<SceneRect> window;
    for (int i = 3; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--light") {
            light = true;
        } else if (arg == "--window" && i + 4 < argc) {
            window = SceneRect::fromCorners({std::atof(argv[i + 1]), std::atof(argv[i + 2])},
                                            {std::atof(argv[i + 3]), std::atof(argv[i + 4])});
            i += 4;
        } else if (i + 1 < argc) {
            width = std::atoi(argv[i]);
            height = std::atoi(argv[++i]);
        }
    }
    auto document = DxfDocument::readFile(argv[1]);
    if (!document.isOk()) {
        std::fprintf(stderr, "%s\n", document.errorString().c_str());
        return 1;
    }
    DrawingScene scene(*document.value(), DxfSpace::Model);
    SceneRenderer renderer(scene);
    if (light) renderer.setBackground(Qt::white);
    ViewTransform view({}, 1.0, QSize(width, height));
    view.fit(window.value_or(scene.extents()), window ? 0.0 : 0.05);
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    renderer.render(image, view);
    const auto& counts = renderer.lastCounts();
    std::printf("%zu entities, %zu in view, %zu dots, %zu drawn\n", scene.entityCount(),
                counts.visited, counts.dots, counts.drawn);
    return image.save(QString::fromLocal8Bit(argv[2])) ? 0 : 1;
}

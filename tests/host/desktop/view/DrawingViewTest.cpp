// The drawing view as a widget, offscreen, driven by real mouse and wheel events: what it shows
// where, zoom and pan, the points it reports, and what it paints over the drawing.
#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include "host/desktop/view/drawingview.h"
#include "tests/host/desktop/SceneTestSupport.h"

namespace {

constexpr QRgb kBackground = 0xFF212830;
constexpr QRgb kRed = 0xFFFF0000;
constexpr QRgb kGreen = 0xFF00FF00;

// Block B holds a line on layer 0 (y = 0) and one by block (y = 2); it is shown on the green
// layer in red. A line on a frozen layer (y = 4) and a red one (y = 6) follow.
std::string colourDrawing() {
    return testDrawing({{"0"}, {"RED", 1, 0}, {"GREEN", 3, 0}, {"FROZEN", 5, 1}},
                       "0 BLOCK|8 0|2 B|70 0|10 0|20 0|30 0|0 LINE|8 0|10 0|20 0|11 10|21 0|"
                       "0 LINE|8 0|62 0|10 0|20 2|11 10|21 2|0 ENDBLK|8 0",
                       "0 INSERT|8 GREEN|62 1|2 B|10 0|20 0|0 LINE|8 FROZEN|10 0|20 4|11 10|21 4|"
                       "0 LINE|8 RED|10 0|20 6|11 10|21 6");
}

// How many pixels along a row of the image, between two columns, have this colour.
int countAlong(const QImage& image, int y, int x0, int x1, QRgb colour) {
    int count = 0;
    for (int x = x0; x <= x1; ++x) count += (image.pixel(x, y) | 0xFF000000u) == colour ? 1 : 0;
    return count;
}

// The row within two pixels of `near` where a horizontal line of this colour lies: lines land on
// whichever row the painter rounds them to.
int rowOf(const QImage& image, double near, int x0, int x1, QRgb colour) {
    const int guess = static_cast<int>(std::lround(near));
    int best = guess;
    for (int y = std::max(0, guess - 2); y <= std::min(image.height() - 1, guess + 2); ++y) {
        if (countAlong(image, y, x0, x1, colour) > countAlong(image, best, x0, x1, colour))
            best = y;
    }
    return best;
}

// The same for a vertical line near column `near`, looked for between two rows.
int columnOf(const QImage& image, double near, int y0, int y1, QRgb colour) {
    auto count = [&](int x) {
        int n = 0;
        for (int y = y0; y <= y1; ++y) n += (image.pixel(x, y) | 0xFF000000u) == colour ? 1 : 0;
        return n;
    };
    const int guess = static_cast<int>(std::lround(near));
    int best = guess;
    for (int x = std::max(0, guess - 2); x <= std::min(image.width() - 1, guess + 2); ++x) {
        if (count(x) > count(best)) best = x;
    }
    return best;
}

class DrawingViewTest : public ::testing::Test {
protected:
    void open(const std::string& bytes) {
        m_document = readTestDrawing(bytes);
        ASSERT_TRUE(m_document);
        m_scene = std::make_unique<DrawingScene>(*m_document, DxfSpace::Model);
        m_view.resize(200, 160);
        m_view.setScene(m_scene.get());
        m_view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_view));
    }

    QImage shot() { return m_view.grab().toImage().convertToFormat(QImage::Format_RGB32); }

    // The colours found within a pixel of where a world point shows.
    static std::set<QRgb> coloursNear(const QImage& image, QPointF pixel) {
        std::set<QRgb> colours;
        for (int dy = -1; dy <= 1; ++dy) {
            for (int dx = -1; dx <= 1; ++dx) {
                const QPoint p(static_cast<int>(std::lround(pixel.x())) + dx,
                               static_cast<int>(std::lround(pixel.y())) + dy);
                if (image.rect().contains(p)) colours.insert(image.pixel(p) | 0xFF000000u);
            }
        }
        return colours;
    }
    std::set<QRgb> coloursAt(const QImage& image, ScenePoint world) const {
        return coloursNear(image, m_view.toScreen(world));
    }

    std::unique_ptr<DxfDocument> m_document;
    std::unique_ptr<DrawingScene> m_scene;
    DrawingView m_view;
};

TEST_F(DrawingViewTest, ShowsTheWholeDrawingInItsColours) {
    open(colourDrawing());
    for (const ScenePoint corner : {ScenePoint{0, 0}, ScenePoint{10, 6}}) {
        const QPointF p = m_view.toScreen(corner);
        EXPECT_TRUE(QRectF(5, 5, 190, 150).contains(p)) << p.x() << "," << p.y();
    }
    const QImage image = shot();
    // Layer 0 inside the block takes the reference's layer; by block takes its colour.
    EXPECT_TRUE(coloursAt(image, {5, 0}).contains(kGreen));
    EXPECT_TRUE(coloursAt(image, {5, 2}).contains(kRed));
    EXPECT_EQ(coloursAt(image, {5, 4}), std::set<QRgb>{kBackground});
    EXPECT_TRUE(coloursAt(image, {5, 6}).contains(kRed));
}

TEST_F(DrawingViewTest, ALineAHundredThousandBlocksDeepIsDrawn) {
    open(testDrawing({{"0"}}, deepNesting(100'000), "0 INSERT|8 0|2 B0|10 0|20 0"));
    const QImage image = shot();
    EXPECT_NE(coloursAt(image, {5, 3}), std::set<QRgb>{kBackground});
    EXPECT_EQ(coloursAt(image, {5, 5}), std::set<QRgb>{kBackground});
}

TEST_F(DrawingViewTest, TheWheelZoomsAboutTheCursor) {
    open(colourDrawing());
    QSignalSpy changed(&m_view, &DrawingView::viewChanged);
    const QPointF cursor(50, 40);
    const ScenePoint before = m_view.toWorld(cursor);
    const double unitsBefore = m_view.unitsPerPixel();
    QWheelEvent wheel(cursor, m_view.mapToGlobal(cursor), QPoint(), QPoint(0, 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&m_view, &wheel);
    EXPECT_NEAR(m_view.unitsPerPixel(), unitsBefore / 1.25, 1e-12);
    EXPECT_NEAR(m_view.toWorld(cursor).x, before.x, 1e-9);
    EXPECT_NEAR(m_view.toWorld(cursor).y, before.y, 1e-9);
    EXPECT_EQ(changed.count(), 1);
    QWheelEvent back(cursor, m_view.mapToGlobal(cursor), QPoint(), QPoint(0, -240), Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&m_view, &back);
    EXPECT_NEAR(m_view.unitsPerPixel(), unitsBefore * 1.25, 1e-12);
}

TEST_F(DrawingViewTest, TheMiddleButtonPansAndItsDoubleClickShowsEverything) {
    open(colourDrawing());
    const ScenePoint grabbed = m_view.toWorld({100, 80});
    QTest::mousePress(&m_view, Qt::MiddleButton, {}, QPoint(100, 80));
    QTest::mouseMove(&m_view, QPoint(115, 70));
    QTest::mouseMove(&m_view, QPoint(130, 60));
    QTest::mouseRelease(&m_view, Qt::MiddleButton, {}, QPoint(130, 60));
    EXPECT_NEAR(m_view.toWorld({130, 60}).x, grabbed.x, 1e-9);
    EXPECT_NEAR(m_view.toWorld({130, 60}).y, grabbed.y, 1e-9);
    // Moving without the button does not pan.
    QTest::mouseMove(&m_view, QPoint(10, 10));
    EXPECT_NEAR(m_view.toWorld({130, 60}).x, grabbed.x, 1e-9);

    m_view.zoomAbout({0, 0}, 8.0);
    QTest::mouseDClick(&m_view, Qt::MiddleButton, {}, QPoint(20, 20));
    ViewTransform whole = m_view.viewTransform();
    whole.fit(m_scene->extents());
    EXPECT_DOUBLE_EQ(m_view.unitsPerPixel(), 1.0 / whole.pixelsPerUnit());
}

TEST_F(DrawingViewTest, ClicksAndTheCursorAreReportedInDrawingUnits) {
    open(colourDrawing());
    QSignalSpy clicked(&m_view, &DrawingView::pointClicked);
    QSignalSpy moved(&m_view, &DrawingView::cursorMoved);
    QTest::mouseClick(&m_view, Qt::LeftButton, Qt::ShiftModifier, QPoint(20, 30));
    QTest::mouseClick(&m_view, Qt::RightButton, {}, QPoint(150, 100));
    QTest::mouseMove(&m_view, QPoint(60, 70));
    ASSERT_EQ(clicked.count(), 2);
    const ScenePoint first = m_view.toWorld({20, 30});
    EXPECT_EQ(clicked[0][0].toPointF(), QPointF(first.x, first.y));
    EXPECT_EQ(clicked[0][1].value<Qt::MouseButton>(), Qt::LeftButton);
    EXPECT_EQ(clicked[0][2].value<Qt::KeyboardModifiers>(), Qt::ShiftModifier);
    EXPECT_EQ(clicked[1][1].value<Qt::MouseButton>(), Qt::RightButton);
    ASSERT_GE(moved.count(), 1);
    const ScenePoint last = m_view.toWorld({60, 70});
    EXPECT_EQ(moved.back()[0].toPointF(), QPointF(last.x, last.y));
}

TEST_F(DrawingViewTest, ExclusiveOrVectorsFlipPixelsAndFlipThemBack) {
    open(testDrawing({{"0"}}, "", "0 POINT|8 0|10 0|20 0|0 POINT|8 0|10 10|20 10"));
    const ScenePoint from{2, 5};
    const ScenePoint to{8, 5};
    const QImage before = shot();
    m_view.drawVector(from, to, -1, false);
    const QImage drawn = shot();
    const QPointF middle = m_view.toScreen({5, 5});
    EXPECT_TRUE(coloursNear(drawn, middle).contains(kBackground ^ 0x00FFFFFFu));
    // A second vector crossing the first: where both lie, the pixel flips back.
    const QRgb flipped = kBackground ^ 0x00FFFFFFu;
    const int row = rowOf(drawn, middle.y(), static_cast<int>(middle.x()) - 20,
                          static_cast<int>(middle.x()) - 5, flipped);
    m_view.drawVector({5, 2}, {5, 8}, -1, false);
    const QImage crossed = shot();
    const int column = columnOf(crossed, middle.x(), static_cast<int>(middle.y()) - 20,
                                static_cast<int>(middle.y()) - 5, flipped);
    EXPECT_EQ(crossed.pixel(column, row) | 0xFF000000u, kBackground);
    EXPECT_EQ(crossed.pixel(column, row - 8) | 0xFF000000u, flipped);
    EXPECT_EQ(crossed.pixel(column - 8, row) | 0xFF000000u, flipped);
    // Drawn again, each vector goes away.
    m_view.drawVector(to, from, -1, false);
    m_view.drawVector({5, 2}, {5, 8}, -1, false);
    EXPECT_TRUE(m_view.vectors().isEmpty());
    EXPECT_EQ(shot(), before);

    // Colour ink stays until the view is redrawn; zooming redraws.
    m_view.drawVector(from, to, 1, false);
    EXPECT_TRUE(coloursNear(shot(), middle).contains(kRed));
    m_view.regen();
    EXPECT_TRUE(m_view.vectors().isEmpty());
    m_view.drawVector(from, to, -1, false);
    m_view.zoomAbout({100, 80}, 2.0);
    EXPECT_TRUE(m_view.vectors().isEmpty());
}

TEST_F(DrawingViewTest, WindowsAreSolidCrossingsDashedHighlightsDashed) {
    open(colourDrawing());
    // The red line at y = 6, drawn solid, then dashed once selected.
    const QPointF a = m_view.toScreen({1, 6});
    const QPointF b = m_view.toScreen({9, 6});
    const int x0 = static_cast<int>(a.x());
    const int x1 = static_cast<int>(b.x());
    const int y = rowOf(shot(), a.y(), x0, x1, kRed);
    const int length = x1 - x0 + 1;
    EXPECT_EQ(countAlong(shot(), y, x0, x1, kRed), length);
    const AcDbObjectId redLine = m_scene->entity(1).id;
    m_view.setHighlighted({redLine});
    const int dashed = countAlong(shot(), y, x0, x1, kRed);
    EXPECT_GT(dashed, length / 4);
    EXPECT_LT(dashed, length - 4);
    m_view.setHighlighted({});
    EXPECT_EQ(countAlong(shot(), y, x0, x1, kRed), length);

    // The selection rectangle's lower edge, just below the drawing: solid for a window, gaps for a
    // crossing.
    const SceneRect rect{1, -0.5, 9, 6.5};
    const QPointF corner = m_view.toScreen({rect.minX, rect.minY});
    const int left = static_cast<int>(std::lround(corner.x())) + 2;
    const int right = static_cast<int>(std::lround(m_view.toScreen({rect.maxX, 0}).x())) - 2;
    m_view.setSelectionRectangle(rect, false);
    const QImage window = shot();
    const int edge = rowOf(window, corner.y(), left, right, 0xFFFFFFFFu);
    const int solid = countAlong(window, edge, left, right, 0xFFFFFFFFu);
    EXPECT_EQ(solid, right - left + 1);
    m_view.setSelectionRectangle(rect, true);
    const int gaps = countAlong(shot(), edge, left, right, 0xFFFFFFFFu);
    EXPECT_GT(gaps, 0);
    EXPECT_LT(gaps, solid - 4);
    m_view.clearSelectionRectangle();
    EXPECT_EQ(countAlong(shot(), edge, left, right, 0xFFFFFFFFu), 0);
}

TEST_F(DrawingViewTest, ZoomedInTheIndexChoosesWhatToDraw) {
    std::string entities;
    for (int i = 0; i < 30; ++i) {
        for (int j = 0; j < 30; ++j) {
            entities += (entities.empty() ? "" : "|") + std::string("0 CIRCLE|8 0|10 ") +
                        std::to_string(i * 10) + "|20 " + std::to_string(j * 10) + "|40 1";
        }
    }
    open(testDrawing({{"0"}}, "", entities));
    m_view.renderImage();
    EXPECT_FALSE(m_view.lastRenderCounts().usedIndex);
    EXPECT_EQ(m_view.lastRenderCounts().visited, 900u);
    m_view.zoomWindow({-5, -5, 25, 15});
    m_view.renderImage();
    const SceneRenderer::Counts& counts = m_view.lastRenderCounts();
    EXPECT_TRUE(counts.usedIndex);
    std::size_t inView = 0;
    for (std::size_t i = 0; i < m_scene->entityCount(); ++i)
        inView += m_scene->boundsOf(i).intersects(m_view.viewTransform().visibleWorld()) ? 1 : 0;
    EXPECT_EQ(counts.visited, inView);
    EXPECT_GE(inView, 4u);
    EXPECT_LT(inView, 20u);
    EXPECT_EQ(counts.dots, 0u);
    // Far out, the circles are single pixels.
    m_view.zoomAbout({100, 80}, 1.0 / 64);
    m_view.renderImage();
    EXPECT_EQ(m_view.lastRenderCounts().dots, 900u);
}

TEST_F(DrawingViewTest, AnAddedReferenceShowsAfterARegen) {
    open(colourDrawing());
    AcDbBlockReference reference;
    ASSERT_EQ(m_document->getBlockTableRecordId(L"B", reference.blockTableRecord), Acad::eOk);
    reference.position = {0, 5, 0};
    reference.scaleFactors = {0.5, 1, 1};
    AcDbObjectId id;
    ASSERT_EQ(m_document->insertBlockReference(reference, id), Acad::eOk);
    const QImage before = shot();
    EXPECT_EQ(coloursAt(before, {2, 5}), std::set<QRgb>{kBackground});
    ASSERT_TRUE(m_scene->addEntity(id));
    m_view.regen();
    // Its layer-0 line takes layer 0's colour: the foreground.
    EXPECT_TRUE(coloursAt(shot(), {2, 5}).contains(0xFFFFFFFFu));
    ASSERT_TRUE(m_scene->removeEntity(id));
    m_view.regen();
    EXPECT_EQ(coloursAt(shot(), {2, 5}), std::set<QRgb>{kBackground});
}

TEST_F(DrawingViewTest, TextIsDrawnInItsBox) {
    open(testDrawing({{"0"}, {"T", 2, 0}}, "",
                     "0 TEXT|8 T|10 0|20 0|40 2|1 HELLO|0 POINT|8 0|10 -1|20 -1|0 POINT|8 0|"
                     "10 11|20 3"));
    const QImage image = shot();
    // Yellow letters inside the text's box, none above it.
    int inside = 0;
    int above = 0;
    const QPointF topLeft = m_view.toScreen({0, 2});
    const QPointF bottomRight = m_view.toScreen({8, 0});
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if ((image.pixel(x, y) | 0xFF000000u) != 0xFFFFFF00u) continue;
            if (x >= topLeft.x() - 1 && x <= bottomRight.x() + 1 && y >= topLeft.y() - 1 &&
                y <= bottomRight.y() + 1) {
                ++inside;
            } else if (y < topLeft.y() - 2) {
                ++above;
            }
        }
    }
    EXPECT_GT(inside, 30);
    EXPECT_EQ(above, 0);
}

}  // namespace

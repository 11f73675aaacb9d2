// Lines written band by band: each band gets exactly the pixels the whole line has in its rows,
// those pixels are Bresenham's, later lines cover earlier ones, and a frame drawn by several
// threads is the one drawn by one.
#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>
#include <random>
#include <tuple>
#include <set>
#include <utility>

#include "host/desktop/scene/drawingscene.h"
#include "host/desktop/view/rasterbands.h"
#include "host/desktop/view/scenerenderer.h"
#include "tests/host/desktop/SceneTestSupport.h"

namespace {

using Pixels = std::set<std::pair<int, int>>;

// The textbook walk, one pixel a step along the longer axis.
Pixels bresenham(int x0, int y0, int x1, int y1) {
    Pixels pixels;
    const int dx = std::abs(x1 - x0);
    const int dy = std::abs(y1 - y0);
    const int sx = x0 < x1 ? 1 : -1;
    const int sy = y0 < y1 ? 1 : -1;
    const bool xMajor = dx >= dy;
    const int along = xMajor ? dx : dy;
    const int across = xMajor ? dy : dx;
    int error = along / 2;
    int x = x0;
    int y = y0;
    pixels.insert({x, y});
    for (int i = 0; i < along; ++i) {
        (xMajor ? x : y) += xMajor ? sx : sy;
        error -= across;
        if (error < 0) {
            error += along;
            (xMajor ? y : x) += xMajor ? sy : sx;
        }
        pixels.insert({x, y});
    }
    return pixels;
}

Pixels marked(const QImage& image, QRgb colour) {
    Pixels pixels;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) == colour) pixels.insert({x, y});
        }
    }
    return pixels;
}

constexpr QRgb kInk = 0xFFFFFFFF;

class PlotLineTest : public ::testing::TestWithParam<std::tuple<int, int, int, int>> {};

TEST_P(PlotLineTest, RowsWrittenApartMakeBresenhamsLine) {
    const auto [x0, y0, x1, y1] = GetParam();
    const RasterLine line{static_cast<std::int16_t>(x0), static_cast<std::int16_t>(y0),
                          static_cast<std::int16_t>(x1), static_cast<std::int16_t>(y1), kInk};
    QImage whole(64, 64, QImage::Format_ARGB32);
    whole.fill(0xFF000000u);
    plotLine(reinterpret_cast<QRgb*>(whole.bits()), whole.bytesPerLine() / 4, line, 0, 64);
    EXPECT_EQ(marked(whole, kInk), bresenham(x0, y0, x1, y1));
    // Bands of every height from one row up, each band written on its own.
    for (int rows = 1; rows <= 9; ++rows) {
        QImage banded(64, 64, QImage::Format_ARGB32);
        banded.fill(0xFF000000u);
        for (int top = 0; top < 64; top += rows) {
            plotLine(reinterpret_cast<QRgb*>(banded.bits()), banded.bytesPerLine() / 4, line, top,
                     std::min(64, top + rows));
        }
        EXPECT_EQ(marked(banded, kInk), marked(whole, kInk)) << "bands of " << rows << " rows";
    }
}

INSTANTIATE_TEST_SUITE_P(
    Slopes, PlotLineTest,
    ::testing::Values(std::tuple{5, 5, 5, 5}, std::tuple{0, 7, 63, 7}, std::tuple{9, 0, 9, 63},
                      std::tuple{0, 0, 63, 63}, std::tuple{63, 0, 0, 63},
                      std::tuple{2, 60, 61, 3}, std::tuple{10, 3, 57, 20},
                      std::tuple{57, 20, 10, 3}, std::tuple{3, 10, 20, 57},
                      std::tuple{20, 57, 3, 10}, std::tuple{0, 31, 63, 32},
                      std::tuple{31, 0, 32, 63}, std::tuple{1, 2, 4, 60}));

TEST(RasterBandsTest, RandomLinesInBandsMatchTheWholeWalk) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> coordinate(0, 299);
    for (int i = 0; i < 200; ++i) {
        const int x0 = coordinate(random), y0 = coordinate(random);
        const int x1 = coordinate(random), y1 = coordinate(random);
        const RasterLine line{static_cast<std::int16_t>(x0), static_cast<std::int16_t>(y0),
                              static_cast<std::int16_t>(x1), static_cast<std::int16_t>(y1), kInk};
        QImage image(300, 300, QImage::Format_ARGB32);
        image.fill(0xFF000000u);
        RasterBands bands;
        bands.reset(image.height());
        bands.add(line);
        writeBands(reinterpret_cast<QRgb*>(image.bits()), image.bytesPerLine() / 4,
                   image.height(), std::span(&bands, 1), 2);
        ASSERT_EQ(marked(image, kInk), bresenham(x0, y0, x1, y1))
            << x0 << "," << y0 << " to " << x1 << "," << y1;
    }
}

// Long lines, walked in fixed point, land on Bresenham's pixels whatever their slope, ties and
// near-ties included, whole or from any row on.
TEST(RasterBandsTest, LongLinesKeepBresenhamsPixels) {
    constexpr int kSize = 2048;
    std::mt19937 random(19);
    std::uniform_int_distribution<int> coordinate(0, kSize - 1);
    std::vector<std::tuple<int, int, int, int>> lines{
        {0, 0, kSize - 1, (kSize - 1) / 2}, {0, 0, kSize - 1, kSize / 2},
        {0, 0, kSize - 1, kSize - 2},       {kSize - 1, 5, 0, 6},
        {7, 0, 8, kSize - 1},               {100, 1500, 1999, 1},
        {0, 0, 3, kSize - 1},               {kSize - 1, kSize - 1, 0, 2047}};
    for (int i = 0; i < 40; ++i)
        lines.emplace_back(coordinate(random), coordinate(random), coordinate(random),
                           coordinate(random));
    std::vector<QRgb> pixels(static_cast<std::size_t>(kSize) * kSize);
    for (const auto& [x0, y0, x1, y1] : lines) {
        const RasterLine line{static_cast<std::int16_t>(x0), static_cast<std::int16_t>(y0),
                              static_cast<std::int16_t>(x1), static_cast<std::int16_t>(y1), kInk};
        const Pixels expected = bresenham(x0, y0, x1, y1);
        // The rows the line spans: nothing may be written outside them, nor beside its pixels.
        const auto from = pixels.begin() + static_cast<std::ptrdiff_t>(std::min(y0, y1)) * kSize;
        const auto to = pixels.begin() + static_cast<std::ptrdiff_t>(std::max(y0, y1) + 1) * kSize;
        for (const int rows : {kSize, 97}) {
            for (int top = 0; top < kSize; top += rows)
                plotLine(pixels.data(), kSize, line, top, std::min(kSize, top + rows));
            Pixels written;
            for (const auto& [x, y] : expected) {
                if (pixels[static_cast<std::size_t>(y) * kSize + x] == kInk) written.insert({x, y});
            }
            ASSERT_EQ(written, expected) << x0 << "," << y0 << " to " << x1 << "," << y1;
            ASSERT_EQ(static_cast<std::size_t>(std::count(pixels.begin(), pixels.end(), kInk)),
                      static_cast<std::size_t>(std::count(from, to, kInk)));
            ASSERT_EQ(static_cast<std::size_t>(std::count(from, to, kInk)), expected.size())
                << "bands of " << rows;
            std::fill(from, to, 0u);
        }
    }
}

TEST(RasterBandsTest, LaterLinesCoverEarlierOnesAcrossShares) {
    // Two and a half bands high, as wide: the diagonals cross three bands.
    const int size = (5 << RasterBands::kBandShift) / 2;
    const auto last = static_cast<std::int16_t>(size - 1);
    const auto middle = static_cast<std::int16_t>(size / 2);
    QImage image(size, size, QImage::Format_ARGB32);
    image.fill(0xFF000000u);
    std::vector<RasterBands> shares(2);
    for (RasterBands& share : shares) share.reset(image.height());
    // A red diagonal in the first share, a green one across it in the second, and a blue dot on
    // the red one, added last to the first share's lists but drawn before the second share.
    shares[0].add({0, 0, last, last, 0xFFFF0000u});
    shares[1].add({0, last, last, 0, 0xFF00FF00u});
    shares[0].add({middle, middle, middle, middle, 0xFF0000FFu});
    writeBands(reinterpret_cast<QRgb*>(image.bits()), image.bytesPerLine() / 4, image.height(),
               shares, 2);
    EXPECT_EQ(image.pixel(middle, middle - 1), 0xFF00FF00u);
    EXPECT_EQ(image.pixel(middle, middle), 0xFF0000FFu);
    EXPECT_EQ(image.pixel(10, 10), 0xFFFF0000u);
    EXPECT_EQ(image.pixel(10, size - 11), 0xFF00FF00u);
    EXPECT_EQ(shares[0].lineCount(), 4u);  // the diagonal lies in three bands, the dot in one
    EXPECT_EQ(shares[1].lineCount(), 3u);
}

TEST(RasterBandsTest, ListsKeepTheirChunksFromFrameToFrame) {
    const int rows = 1 << RasterBands::kBandShift;
    const auto inSecond = static_cast<std::int16_t>(rows + 3);
    RasterBands bands;
    bands.reset(2 * rows);
    for (int i = 0; i < 10000; ++i) bands.add({1, 1, 2, 2, kInk});
    EXPECT_EQ(bands.lineCount(), 10000u);
    bands.reset(2 * rows);
    EXPECT_EQ(bands.lineCount(), 0u);
    bands.add({1, inSecond, 2, inSecond, kInk});
    std::size_t seen = 0;
    bands.forEach(1, [&](const RasterLine& line) {
        EXPECT_EQ(line.y0, inSecond);
        ++seen;
    });
    EXPECT_EQ(seen, 1u);
}

// Many crossing lines, circles and references: the frame is the same on one thread and on two.
TEST(SceneRendererThreadsTest, OneThreadAndTwoPaintTheSamePicture) {
    std::string entities;
    std::mt19937 random(3);
    std::uniform_int_distribution<int> coordinate(0, 1000);
    for (int i = 0; i < 20000; ++i) {
        const auto c = [&] { return std::to_string(coordinate(random)); };
        entities += (entities.empty() ? "" : "|");
        switch (i % 3) {
            case 0:
                entities += "0 LINE|8 0|62 " + std::to_string(1 + i % 6) + "|10 " + c() +
                            "|20 " + c() + "|11 " + c() + "|21 " + c();
                break;
            case 1:
                entities += "0 CIRCLE|8 0|62 " + std::to_string(1 + i % 5) + "|10 " + c() +
                            "|20 " + c() + "|40 " + std::to_string(1 + i % 40);
                break;
            default:
                entities += "0 INSERT|8 0|62 " + std::to_string(1 + i % 7) + "|2 B|10 " + c() +
                            "|20 " + c();
                break;
        }
    }
    const auto document =
        readTestDrawing(testDrawing({{"0"}},
                                    "0 BLOCK|8 0|2 B|70 0|10 0|20 0|30 0|0 LINE|8 0|62 0|10 0|"
                                    "20 0|11 12|21 5|0 ENDBLK|8 0",
                                    entities));
    ASSERT_TRUE(document);
    const DrawingScene scene(*document, DxfSpace::Model);
    ViewTransform view({}, 1.0, QSize(640, 480));
    view.fit(scene.extents());
    QImage pictures[2];
    for (unsigned threads : {1u, 2u}) {
        SceneRenderer renderer(scene);
        renderer.setThreads(threads);
        QImage& image = pictures[threads - 1];
        image = QImage(640, 480, QImage::Format_ARGB32_Premultiplied);
        renderer.render(image, view);
        EXPECT_EQ(renderer.lastCounts().threads, threads);
    }
    EXPECT_EQ(pictures[0], pictures[1]);
}

}  // namespace

// The scene's small parts: plane geometry, the ACI palette, text codes, curves, the number
// reader and the spatial index.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <numbers>
#include <random>
#include <set>

#include "host/desktop/scene/acipalette.h"
#include "host/desktop/scene/entityfields.h"
#include "host/desktop/scene/scenecurves.h"
#include "host/desktop/scene/scenegridindex.h"
#include "host/desktop/scene/scenetextformat.h"
#include "host/dxf/dxftagfile.h"

namespace {

constexpr double kPi = std::numbers::pi;

void expectNear(ScenePoint actual, ScenePoint expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-9);
    EXPECT_NEAR(actual.y, expected.y, 1e-9);
}

TEST(SceneGeometry, TransformsComposeInOrderAndInvert) {
    // Scale, then turn a quarter, then move: (1, 0) -> (2, 0) -> (0, 2) -> (10, 12).
    const SceneTransform t = SceneTransform::scaling(2, 2)
                                 .then(SceneTransform::rotation(kPi / 2))
                                 .then(SceneTransform::translation(10, 10));
    expectNear(t.map({1, 0}), {10, 12});
    expectNear(t.mapVector({1, 0}), {0, 2});
    EXPECT_NEAR(t.scale(), 2.0, 1e-12);
    const auto inverse = t.inverted();
    ASSERT_TRUE(inverse);
    expectNear(inverse->map({10, 12}), {1, 0});
    EXPECT_FALSE(SceneTransform::scaling(0, 1).inverted());
    const SceneRect box = t.mapRect({0, 0, 1, 1});
    EXPECT_NEAR(box.minX, 8, 1e-9);
    EXPECT_NEAR(box.maxX, 10, 1e-9);
    EXPECT_NEAR(box.minY, 10, 1e-9);
    EXPECT_NEAR(box.maxY, 12, 1e-9);
}

TEST(SceneGeometry, RectanglesStartEmptyAndGrow) {
    SceneRect r;
    EXPECT_TRUE(r.isEmpty());
    EXPECT_FALSE(r.intersects({0, 0, 1, 1}));
    r.add({1, 2});
    EXPECT_FALSE(r.isEmpty());
    EXPECT_EQ(r.width(), 0.0);
    r.unite({-1, -1, 0, 0});
    EXPECT_EQ(r, (SceneRect{-1, -1, 1, 2}));
    EXPECT_TRUE(r.contains(SceneRect{0, 0, 1, 1}));
    EXPECT_FALSE(r.contains(SceneRect{0, 0, 1, 3}));
    EXPECT_FALSE(r.contains(SceneRect{}));
}

TEST(AciPalette, KnownColours) {
    struct Row {
        int index;
        SceneRgb rgb;
    };
    const Row rows[] = {
        {1, 0xFF0000},   {2, 0xFFFF00},   {3, 0x00FF00},   {4, 0x00FFFF},   {5, 0x0000FF},
        {6, 0xFF00FF},   {8, 0x808080},   {9, 0xC0C0C0},   {10, 0xFF0000},  {11, 0xFF7F7F},
        {12, 0xCC0000},  {13, 0xCC6666},  {19, 0x4C2626},  {20, 0xFF3F00},  {21, 0xFF9F7F},
        {30, 0xFF7F00},  {40, 0xFFBF00},  {50, 0xFFFF00},  {90, 0x00FF00},  {130, 0x00FFFF},
        {14, 0x990000},  {15, 0x994C4C},  {16, 0x7F0000},  {17, 0x7F3F3F},  {18, 0x4C0000},
        {140, 0x00BFFF}, {170, 0x0000FF}, {210, 0xFF00FF}, {250, 0x333333}, {251, 0x505050},
        {254, 0xBEBEBE}, {255, 0xFFFFFF},
    };
    for (const Row& row : rows) EXPECT_EQ(aciColor(row.index), row.rgb) << row.index;
    for (const int foreground : {0, 7, 256, -3, 300})
        EXPECT_EQ(aciColor(foreground), kSceneForeground);
}

TEST(SceneTextFormat, TextCodesAndMTextFormatting) {
    struct Row {
        const wchar_t* input;
        const wchar_t* expected;
    };
    const Row texts[] = {
        {L"plain", L"plain"},
        {L"45%%d", L"45\u00B0"},
        {L"%%C50 %%p0.1", L"\u230050 \u00B10.1"},
        {L"100%%%", L"100%"},
        {L"%%uunder%%u and %%Oover", L"under and over"},
        {L"%%065B", L"AB"},
        {L"50%", L"50%"},
    };
    for (const Row& row : texts) EXPECT_EQ(plainText(row.input), row.expected) << row.input;
    const Row mtexts[] = {
        {L"one\\Ptwo", L"one\ntwo"},
        {L"{\\fArial|b1|i0;Bold} text", L"Bold text"},
        {L"\\A1;\\H2.5x;big\\W0.8;narrow", L"bignarrow"},
        {L"\\C1;red \\c255;true", L"red true"},
        {L"\\S1/2; and \\S3^4;", L"1/2 and 3/4"},
        {L"a\\~b", L"a b"},
        {L"\\\\ \\{ \\}", L"\\ { }"},
        {L"\\Lunder\\l \\Oover\\o", L"under over"},
        {L"\\U+00E9t\\U+00E9", L"\u00E9t\u00E9"},
        {L"\\pxqc;centred", L"centred"},
        {L"20%%d", L"20\u00B0"},
    };
    for (const Row& row : mtexts) EXPECT_EQ(plainMText(row.input), row.expected) << row.input;
}

TEST(SceneCurves, BulgeOfOneIsAHalfCircleTurningLeft) {
    // From (0,0) to (2,0) counter-clockwise: round the centre (1,0) below the chord.
    const SceneArc arc = bulgeArc({0, 0}, {2, 0}, 1.0);
    expectNear(arc.center, {1, 0});
    EXPECT_NEAR(arc.end - arc.start, kPi, 1e-12);
    expectNear(arc.at(arc.start), {0, 0});
    expectNear(arc.at((arc.start + arc.end) / 2), {1, -1});
    // A negative bulge turns the other way, over the chord.
    const SceneArc other = bulgeArc({0, 0}, {2, 0}, -1.0);
    expectNear(other.at((other.start + other.end) / 2), {1, 1});
    EXPECT_LT(other.start, other.end);
}

TEST(SceneCurves, ArcBoundsMeetTheCurvesTurningPoints) {
    const SceneArc quarter{{0, 0}, {1, 0}, {0, 1}, kPi / 4, 3 * kPi / 4};
    const SceneRect box = arcBounds(quarter);
    EXPECT_NEAR(box.maxY, 1.0, 1e-12);  // passes the top
    EXPECT_NEAR(box.minX, -std::sqrt(0.5), 1e-12);
    EXPECT_NEAR(box.maxX, std::sqrt(0.5), 1e-12);
    EXPECT_NEAR(box.minY, std::sqrt(0.5), 1e-12);
}

TEST(SceneCurves, BSplines) {
    // Degree 1: the control polygon.
    const std::vector<ScenePoint> line = bsplinePoints(
        1, std::vector<double>{0, 0, 1, 1}, std::vector<ScenePoint>{{0, 0}, {4, 2}}, {}, 4);
    ASSERT_EQ(line.size(), 5u);
    expectNear(line[2], {2, 1});
    // A quadratic Bezier's middle lies halfway to the middle control point.
    const std::vector<ScenePoint> bezier =
        bsplinePoints(2, std::vector<double>{0, 0, 0, 1, 1, 1},
                      std::vector<ScenePoint>{{0, 0}, {1, 2}, {2, 0}}, {}, 2);
    ASSERT_EQ(bezier.size(), 3u);
    expectNear(bezier[1], {1, 1});
    expectNear(bezier[2], {2, 0});
    // Weights pull the rational curve towards their point.
    const std::vector<ScenePoint> rational = bsplinePoints(
        2, std::vector<double>{0, 0, 0, 1, 1, 1}, std::vector<ScenePoint>{{0, 0}, {1, 2}, {2, 0}},
        std::vector<double>{1, 3, 1}, 2);
    ASSERT_EQ(rational.size(), 3u);
    EXPECT_NEAR(rational[1].y, 1.5, 1e-12);
    // Knots that do not fit give nothing.
    EXPECT_TRUE(
        bsplinePoints(2, std::vector<double>{0, 1}, std::vector<ScenePoint>{{0, 0}, {1, 1}}, {}, 4)
            .empty());
}

TEST(SceneNumbers, PlainDecimalsReadWithinAnUlp) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> values(-1e6, 1e6);
    std::vector<std::string> numbers{"0.0", "-0.5",    "12",
                                     "5.",  ".25",     "  7.5\t",
                                     "1e3", "-1.5E-2", "123456789012345678901234.5",
                                     "-0.0", "100", "-7", "-.5", "12345678901234567.5",
                                     "1234567890123456789", "0.1234567890123456",
                                     "99999999.99999999", "-12345.678901234567"};
    for (int i = 0; i < 150; ++i) {
        char buffer[40];
        const auto end = std::to_chars(buffer, buffer + sizeof buffer, values(random)).ptr;
        numbers.emplace_back(buffer, end);
    }
    std::string file;
    for (const std::string& number : numbers) file += " 10\n" + number + "\n";
    file += "  0\nEOF\n";
    auto tags = DxfTagFile::parse("numbers.dxf", file);
    ASSERT_TRUE(tags.isOk()) << tags.errorString();
    for (std::uint32_t tag = 0; tag < numbers.size(); ++tag) {
        const double exact = tags.value().real(tag).value_or(-1);
        const double fast = sceneReal(tags.value(), tag, -1);
        EXPECT_LE(std::abs(fast - exact), std::abs(exact) * 4e-16) << numbers[tag];
        EXPECT_EQ(std::signbit(fast), std::signbit(exact)) << numbers[tag];
    }
}

// Queries over a whole scene against a look at every box: the scene index's tests.
TEST(SceneGridIndex, ItemsAddedLaterOutsideTheGridAreFound) {
    std::vector<SceneRect> boxes{{0, 0, 1, 1}, {10, 10, 11, 11}};
    SceneGridIndex index;
    SceneBoxLists lists;
    lists.add(boxes);
    index.build(lists, {0, 0, 11, 11});
    boxes.push_back({100, 100, 101, 101});  // far outside what the grid covers
    SceneBoxLists grown;
    grown.add(boxes);
    index.insert(2, boxes[2]);
    std::vector<std::uint32_t> found;
    index.query({50, 50, 200, 200}, grown, found);
    EXPECT_EQ(found, (std::vector<std::uint32_t>{2}));
    found.clear();
    index.query({-1, -1, 12, 12}, grown, found);
    EXPECT_EQ(std::set<std::uint32_t>(found.begin(), found.end()), (std::set<std::uint32_t>{0, 1}));
}

}  // namespace

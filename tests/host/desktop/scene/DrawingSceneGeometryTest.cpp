// What the scene makes of each kind of entity: its primitives and its box in the world, and block
// references nested with their transforms.
#include <gtest/gtest.h>

#include "host/desktop/scene/drawingscene.h"
#include "tests/host/TestName.h"
#include "tests/host/desktop/SceneTestSupport.h"

namespace {

// The kinds of an entity's primitives, one letter each: Path, Arc, Text, Dot, Reference.
std::string kindsOf(const DrawingScene& scene, std::size_t index) {
    const SceneEntity& entity = scene.entity(index);
    const SceneShape& shape = scene.shapeOf(index);
    std::string kinds;
    for (std::uint32_t p = 0; p < entity.primitiveCount; ++p) {
        kinds += "PATDR"[static_cast<int>(shape.primitives[entity.firstPrimitive + p].kind)];
    }
    return kinds;
}

::testing::AssertionResult near(const SceneRect& actual, const SceneRect& expected) {
    constexpr double kTolerance = 1e-6;
    if (std::abs(actual.minX - expected.minX) < kTolerance &&
        std::abs(actual.minY - expected.minY) < kTolerance &&
        std::abs(actual.maxX - expected.maxX) < kTolerance &&
        std::abs(actual.maxY - expected.maxY) < kTolerance)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << "box " << actual.minX << " " << actual.minY << " " << actual.maxX << " "
           << actual.maxY << ", expected " << expected.minX << " " << expected.minY << " "
           << expected.maxX << " " << expected.maxY;
}

struct GeometryRow {
    const char* name;
    const char* entity;  // tags
    SceneRect bounds;
    const char* kinds;
    const char* blocks = "";  // the block definitions the entity shows
};

// Block B: a line from its base point to (2,1).
constexpr const char* kBlockB =
    "0 BLOCK|8 0|2 B|70 0|10 0|20 0|30 0|0 LINE|8 0|10 0|20 0|11 2|21 1|0 ENDBLK|8 0";

const GeometryRow kGeometry[] = {
    {"line", "0 LINE|8 0|10 1|20 2|30 0|11 4|21 6|31 0", {1, 2, 4, 6}, "P"},
    {"circle", "0 CIRCLE|8 0|10 1|20 1|30 0|40 2", {-1, -1, 3, 3}, "A"},
    {"quarter arc", "0 ARC|8 0|10 0|20 0|40 1|50 0|51 90", {0, 0, 1, 1}, "A"},
    {"arc over angle zero", "0 ARC|8 0|10 0|20 0|40 1|50 270|51 90", {0, -1, 1, 1}, "A"},
    {"ellipse", "0 ELLIPSE|8 0|10 0|20 0|11 4|21 0|40 0.5", {-4, -2, 4, 2}, "A"},
    {"upright ellipse", "0 ELLIPSE|8 0|10 0|20 0|11 0|21 3|40 0.5", {-1.5, -3, 1.5, 3}, "A"},
    {"closed polyline",
     "0 LWPOLYLINE|8 0|90 4|70 1|10 0|20 0|10 2|20 0|10 2|20 2|10 0|20 2",
     {0, 0, 2, 2},
     "P"},
    {"bulged polyline", "0 LWPOLYLINE|8 0|90 2|70 0|10 0|20 0|42 1|10 2|20 0", {0, -1, 2, 0}, "A"},
    {"polyline with a bulge in between",
     "0 LWPOLYLINE|8 0|90 4|70 0|10 0|20 0|10 1|20 0|42 -1|10 3|20 0|10 4|20 0",
     {0, 0, 4, 1},
     "PAP"},
    {"mirrored polyline",
     "0 LWPOLYLINE|8 0|90 2|10 1|20 0|10 2|20 0|210 0|220 0|230 -1",
     {-2, 0, -1, 0},
     "P"},
    {"old polyline",
     "0 POLYLINE|8 0|66 1|70 1|10 0|20 0|30 0|0 VERTEX|8 0|10 0|20 0|0 VERTEX|8 0|10 3|20 0|"
     "0 VERTEX|8 0|10 3|20 1|0 SEQEND|8 0",
     {0, 0, 3, 1},
     "P"},
    {"3D polyline",
     "0 POLYLINE|8 0|66 1|70 8|0 VERTEX|8 0|10 0|20 0|30 5|70 32|0 VERTEX|8 0|10 1|20 2|30 7|"
     "70 32|0 SEQEND|8 0",
     {0, 0, 1, 2},
     "P"},
    {"polyface mesh",
     "0 POLYLINE|8 0|66 1|70 64|71 3|72 1|0 VERTEX|8 0|10 0|20 0|70 192|0 VERTEX|8 0|10 4|20 0|"
     "70 192|0 VERTEX|8 0|10 4|20 4|70 192|0 VERTEX|8 0|10 0|20 0|70 128|71 1|72 2|73 -3|"
     "0 SEQEND|8 0",
     {0, 0, 4, 4},
     "P"},
    {"solid", "0 SOLID|8 0|10 0|20 0|11 2|21 0|12 0|22 1|13 2|23 1", {0, 0, 2, 1}, "P"},
    {"3D face", "0 3DFACE|8 0|10 0|20 0|11 1|21 0|12 1|22 1|13 1|23 1", {0, 0, 1, 1}, "P"},
    {"point", "0 POINT|8 0|10 5|20 6", {5, 6, 5, 6}, "D"},
    {"spline of degree one",
     "0 SPLINE|8 0|70 8|71 1|72 4|73 2|40 0|40 0|40 1|40 1|10 0|20 0|10 4|20 2",
     {0, 0, 4, 2},
     "P"},
    {"quadratic spline",
     "0 SPLINE|8 0|70 8|71 2|72 6|73 3|40 0|40 0|40 0|40 1|40 1|40 1|10 0|20 0|10 1|20 2|10 2|"
     "20 0",
     {0, 0, 2, 1},
     "P"},
    {"text", "0 TEXT|8 0|10 1|20 1|40 2|1 AB", {1, 0.4, 4.2, 3}, "T"},
    {"centred text", "0 TEXT|8 0|10 0|20 0|40 1|1 ABCD|72 1|11 10|21 0", {8.4, -0.3, 11.6, 1}, "T"},
    {"top-left paragraphs",
     "0 MTEXT|8 0|10 0|20 10|40 2|71 1|1 AB\\PCDE",
     {0, 10 - 2 * (1 + 5.0 / 3 + 0.3), 4.8, 10},
     "T"},
    {"hatch with a polyline path",
     "0 HATCH|8 0|10 0|20 0|30 0|210 0|220 0|230 1|2 SOLID|70 1|71 0|91 1|92 2|72 0|73 1|93 3|"
     "10 0|20 0|10 4|20 0|10 4|20 3|97 0|75 0|76 1|98 0",
     {0, 0, 4, 3},
     "P"},
    {"hatch with line and arc edges",
     "0 HATCH|8 0|10 0|20 0|30 0|2 SOLID|70 1|71 0|91 1|92 1|93 2|72 1|10 0|20 0|11 2|21 0|"
     "72 2|10 1|20 0|40 1|50 0|51 180|73 1|97 0|75 0|76 1|98 0",
     {0, 0, 2, 1},
     "PA"},
    {"circle seen from below",
     "0 CIRCLE|8 0|10 5|20 0|40 1|210 0|220 0|230 -1",
     {-6, -1, -4, 1},
     "A"},
    {"image frame", "0 IMAGE|8 0|10 0|20 0|11 0.5|21 0|12 0|22 0.5|13 10|23 4", {0, 0, 5, 2}, "P"},
    {"leader", "0 LEADER|8 0|76 2|10 0|20 0|10 3|20 4", {0, 0, 3, 4}, "P"},
    {"mirrored and scaled reference",
     "0 INSERT|8 0|2 B|10 0|20 0|41 -1|42 3",
     {-2, 0, 0, 3},
     "R",
     kBlockB},
    {"grid of references",
     "0 INSERT|8 0|2 B|10 0|20 0|70 2|71 3|44 10|45 5",
     {0, 0, 12, 11},
     "RRRRRR",
     kBlockB},
};

class SceneGeometry : public ::testing::TestWithParam<GeometryRow> {};

TEST_P(SceneGeometry, EntityBecomesPrimitivesInItsBox) {
    const GeometryRow& row = GetParam();
    const auto document = readTestDrawing(testDrawing({{"0"}}, row.blocks, row.entity));
    ASSERT_TRUE(document);
    const DrawingScene scene(*document, DxfSpace::Model);
    ASSERT_EQ(scene.entityCount(), 1u);
    EXPECT_EQ(kindsOf(scene, 0), row.kinds);
    EXPECT_TRUE(near(scene.boundsOf(0), row.bounds));
    EXPECT_TRUE(near(scene.extents(), row.bounds));
    EXPECT_TRUE(scene.entity(0).selectable);
}

INSTANTIATE_TEST_SUITE_P(Entities, SceneGeometry, ::testing::ValuesIn(kGeometry),
                         [](const auto& info) { return testName(info.param.name); });

TEST(SceneGeometryEdges, WhatTheViewDoesNotDrawIsLeftOut) {
    const auto document = readTestDrawing(testDrawing(
        {{"0"}}, "",
        "0 XLINE|8 0|10 0|20 0|11 1|21 0|0 LINE|8 0|10 0|20 0|11 1|21 0|60 1|0 ATTDEF|8 0|10 0|"
        "20 0|40 1|1 default|2 TAG|3 prompt|70 0"));
    ASSERT_TRUE(document);
    const DrawingScene scene(*document, DxfSpace::Model);
    // An infinite line has no box; an invisible line (60 1) is not drawn; an attribute
    // definition outside a block shows its tag.
    ASSERT_EQ(scene.entityCount(), 1u);
    EXPECT_EQ(scene.types().name(scene.entity(0).type), "ATTDEF");
    EXPECT_EQ(scene.textOf(scene.shapeOf(0).texts[0]), L"TAG");
}

TEST(SceneReferences, NestedTransformsApplyInsideOut) {
    // INNER's line runs from its base point one unit right; OUTER shows INNER at (10,0) twice
    // as large and turned a quarter; the drawing shows OUTER at (100,100) turned half round.
    const auto document = readTestDrawing(testDrawing(
        {{"0"}},
        "0 BLOCK|8 0|2 INNER|70 0|10 1|20 1|30 0|0 LINE|8 0|10 1|20 1|11 2|21 1|0 ENDBLK|8 0|"
        "0 BLOCK|8 0|2 OUTER|70 0|10 0|20 0|30 0|0 INSERT|8 0|2 INNER|10 10|20 0|41 2|42 2|50 90|"
        "0 ENDBLK|8 0",
        "0 INSERT|8 0|2 OUTER|10 100|20 100|50 180"));
    ASSERT_TRUE(document);
    const DrawingScene scene(*document, DxfSpace::Model);
    ASSERT_EQ(scene.entityCount(), 1u);
    EXPECT_EQ(kindsOf(scene, 0), "R");
    EXPECT_TRUE(near(scene.boundsOf(0), {90, 98, 90, 100}));
    // The same line found through the hit test, which walks the references too.
    EXPECT_EQ(scene.pick({90, 99}, 0.01), scene.entity(0).id);
    EXPECT_FALSE(scene.pick({91, 99}, 0.5));
}

TEST(SceneReferences, ANestingAHundredThousandDeepIsBuiltAndWalkedToTheBottom) {
    const auto document =
        readTestDrawing(testDrawing({{"0"}}, deepNesting(100'000), "0 INSERT|8 0|2 B0|10 0|20 0"));
    ASSERT_TRUE(document);
    const DrawingScene scene(*document, DxfSpace::Model);
    ASSERT_EQ(scene.entityCount(), 1u);
    EXPECT_TRUE(near(scene.boundsOf(0), {0, 0, 10, 6}));
    EXPECT_EQ(scene.pick({5, 3}, 0.01), scene.entity(0).id);
    EXPECT_FALSE(scene.pick({5, 4}, 0.01));
}

TEST(SceneReferences, ABlockThatShowsItselfStopsThere) {
    // A shows a line and itself; B and C show each other.
    const auto document = readTestDrawing(testDrawing(
        {{"0"}},
        "0 BLOCK|8 0|2 A|70 0|10 0|20 0|30 0|0 LINE|8 0|10 0|20 0|11 1|21 0|0 INSERT|8 0|2 A|"
        "10 5|20 5|0 ENDBLK|8 0|0 BLOCK|8 0|2 B|70 0|10 0|20 0|30 0|0 INSERT|8 0|2 C|10 1|20 0|"
        "0 LINE|8 0|10 0|20 0|11 0|21 1|0 ENDBLK|8 0|0 BLOCK|8 0|2 C|70 0|10 0|20 0|30 0|"
        "0 INSERT|8 0|2 B|10 1|20 0|0 ENDBLK|8 0",
        "0 INSERT|8 0|2 A|10 0|20 0|0 INSERT|8 0|2 B|10 0|20 0|0 INSERT|8 0|2 MISSING|10 0|20 0"));
    ASSERT_TRUE(document);
    const DrawingScene scene(*document, DxfSpace::Model);
    // The reference to a block that is not there draws nothing and is left out.
    ASSERT_EQ(scene.entityCount(), 2u);
    EXPECT_TRUE(near(scene.boundsOf(0), {0, 0, 1, 0}));
    // B shows C, which would show B again: C is left empty and B keeps its own line.
    EXPECT_TRUE(near(scene.boundsOf(1), {0, 0, 0, 1}));
}

TEST(SceneReferences, AttributesBelongToTheirReference) {
    const auto document = readTestDrawing(testDrawing(
        {{"0"}},
        "0 BLOCK|8 0|2 B|70 2|10 0|20 0|30 0|0 LINE|8 0|10 0|20 0|11 1|21 0|0 ATTDEF|8 0|10 0|"
        "20 1|40 1|1 def|2 TAG|3 prompt|70 0|0 ENDBLK|8 0",
        "0 INSERT|8 0|66 1|2 B|10 0|20 0|0 ATTRIB|8 0|10 0|20 1|40 1|1 value|2 TAG|70 0|"
        "0 ATTRIB|8 0|10 0|20 3|40 1|1 hidden|2 OTHER|70 1|0 SEQEND|8 0|0 LINE|8 0|10 0|20 0|"
        "11 0|21 -5"));
    ASSERT_TRUE(document);
    const DrawingScene scene(*document, DxfSpace::Model);
    ASSERT_EQ(scene.entityCount(), 2u);
    // The reference and its one visible attribute; the definition is not drawn in the block.
    EXPECT_EQ(kindsOf(scene, 0), "RT");
    EXPECT_EQ(scene.textOf(scene.shapeOf(0).texts[scene.shapeOf(0).primitives[1].index]), L"value");
    EXPECT_EQ(scene.types().name(scene.entity(1).type), "LINE");
}

}  // namespace

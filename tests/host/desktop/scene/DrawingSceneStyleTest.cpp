// Colours and layers: BYLAYER, BYBLOCK, ACI and true colours, what blocks leave to the reference
// that shows them, and entities on frozen or switched-off layers.
#include <gtest/gtest.h>

#include "host/desktop/scene/drawingscene.h"
#include "tests/host/desktop/SceneTestSupport.h"

namespace {

const std::vector<TestLayer> kLayers = {
    {"0", 7, 0}, {"WALLS", 1, 0}, {"DOORS", 3, 0}, {"OFF", -5, 0}, {"FROZEN", 5, 1}};

// The colour of an entity's first primitive.
SceneColor firstColor(const DrawingScene& scene, std::size_t index) {
    return scene.shapeOf(index).primitives[scene.entity(index).firstPrimitive].color();
}

struct ColorRow {
    const char* name;
    const char* codes;  // after "0 LINE|"
    SceneColor color;
};

const ColorRow kTopLevel[] = {
    {"by layer", "8 WALLS", {0xFF0000, SceneColorSource::Fixed}},
    {"by layer, said so", "8 WALLS|62 256", {0xFF0000, SceneColorSource::Fixed}},
    {"layer 0", "8 0", {kSceneForeground, SceneColorSource::Fixed}},
    {"ACI", "8 WALLS|62 3", {0x00FF00, SceneColorSource::Fixed}},
    {"true colour", "8 WALLS|62 3|420 1193046", {0x123456, SceneColorSource::Fixed}},
    {"by block outside a block", "8 WALLS|62 0", {kSceneForeground, SceneColorSource::Fixed}},
    {"layer missing from the table", "8 NOWHERE", {kSceneForeground, SceneColorSource::Fixed}},
    {"layer in another case", "8 walls", {0xFF0000, SceneColorSource::Fixed}},
};

TEST(SceneColors, TopLevelColoursAreSettledWhenRead) {
    for (const ColorRow& row : kTopLevel) {
        const auto document = readTestDrawing(
            testDrawing(kLayers, "", std::string("0 LINE|") + row.codes + "|10 0|20 0|11 1|21 1"));
        ASSERT_TRUE(document);
        const DrawingScene scene(*document, DxfSpace::Model);
        ASSERT_EQ(scene.entityCount(), 1u) << row.name;
        EXPECT_EQ(firstColor(scene, 0), row.color) << row.name;
    }
}

TEST(SceneColors, BlocksLeaveLayerZeroAndByBlockToTheReference) {
    const auto document = readTestDrawing(
        testDrawing(kLayers,
                    "0 BLOCK|8 0|2 B|70 0|10 0|20 0|30 0|"
                    "0 LINE|8 0|10 0|20 0|11 1|21 0|"  // layer 0, by layer: the reference's layer
                    "0 LINE|8 0|62 0|10 0|20 1|11 1|21 1|"      // by block: the reference's colour
                    "0 LINE|8 WALLS|10 0|20 2|11 1|21 2|"       // its own layer's colour
                    "0 LINE|8 DOORS|62 0|10 0|20 3|11 1|21 3|"  // by block on its own layer
                    "0 LINE|8 FROZEN|10 0|20 4|11 1|21 4|"      // never shown
                    "0 LINE|8 OFF|10 0|20 5|11 1|21 5|"         // never shown
                    "0 ENDBLK|8 0",
                    "0 INSERT|8 DOORS|62 4|2 B|10 0|20 0"));
    ASSERT_TRUE(document);
    const DrawingScene scene(*document, DxfSpace::Model);
    ASSERT_EQ(scene.entityCount(), 1u);
    // The reference carries its own colour and its layer for what it shows.
    EXPECT_EQ(firstColor(scene, 0), (SceneColor{0x00FFFF, SceneColorSource::Fixed}));
    const SceneReference& reference = scene.shapeOf(0).references[0];
    EXPECT_EQ(scene.layers().layer(reference.layer).name, L"DOORS");
    const SceneShape& block = scene.block(reference.shape);
    ASSERT_EQ(block.primitives.size(), 4u);
    EXPECT_EQ(block.primitives[0].source, SceneColorSource::ByLayer);
    EXPECT_TRUE(block.primitives[0].inheritsLayer);
    EXPECT_EQ(block.primitives[1].source, SceneColorSource::ByBlock);
    EXPECT_TRUE(block.primitives[1].inheritsLayer);
    EXPECT_EQ(block.primitives[2].color(), (SceneColor{0xFF0000, SceneColorSource::Fixed}));
    EXPECT_FALSE(block.primitives[2].inheritsLayer);
    EXPECT_EQ(block.primitives[3].source, SceneColorSource::ByBlock);
    EXPECT_FALSE(block.primitives[3].inheritsLayer);
    EXPECT_TRUE(block.bounds.contains(SceneRect{0, 0, 1, 3}));
    EXPECT_EQ(block.bounds.maxY, 3.0);
}

TEST(SceneColors, AnAttributeByBlockTakesItsReferencesColour) {
    const auto document = readTestDrawing(testDrawing(
        kLayers, "0 BLOCK|8 0|2 B|70 2|10 0|20 0|30 0|0 ENDBLK|8 0",
        "0 INSERT|8 0|62 1|66 1|2 B|10 0|20 0|0 ATTRIB|8 0|62 0|10 0|20 0|40 1|1 v|2 T|70 0|"
        "0 ATTRIB|8 DOORS|10 0|20 2|40 1|1 w|2 U|70 0|0 SEQEND|8 0"));
    ASSERT_TRUE(document);
    const DrawingScene scene(*document, DxfSpace::Model);
    ASSERT_EQ(scene.entityCount(), 1u);
    const SceneShape& shape = scene.shapeOf(0);
    const SceneEntity& entity = scene.entity(0);
    // The empty block's reference draws nothing itself; its attributes do.
    ASSERT_EQ(entity.primitiveCount, 3u);
    EXPECT_EQ(shape.primitives[entity.firstPrimitive + 1].rgb, 0xFF0000u);
    EXPECT_EQ(shape.primitives[entity.firstPrimitive + 2].rgb, 0x00FF00u);
}

TEST(SceneLayers, FrozenAndSwitchedOffLayersHideTheirEntities) {
    const auto document = readTestDrawing(
        testDrawing(kLayers,
                    "0 BLOCK|8 0|2 B|70 0|10 0|20 0|30 0|0 LINE|8 WALLS|10 0|20 0|11 1|21 0|"
                    "0 LINE|8 0|10 0|20 1|11 1|21 1|0 ENDBLK|8 0",
                    "0 LINE|8 OFF|10 0|20 0|11 1|21 1|0 LINE|8 FROZEN|10 0|20 0|11 1|21 1|"
                    "0 INSERT|8 FROZEN|2 B|10 0|20 0|0 INSERT|8 OFF|2 B|10 5|20 0|"
                    "0 LINE|8 WALLS|10 0|20 0|11 1|21 1"));
    ASSERT_TRUE(document);
    const DrawingScene scene(*document, DxfSpace::Model);
    // Left: the reference on the layer that is off (what it shows on other layers stays) and
    // the line on WALLS.
    ASSERT_EQ(scene.entityCount(), 2u);
    EXPECT_EQ(scene.types().name(scene.entity(0).type), "INSERT");
    EXPECT_FALSE(scene.entity(0).selectable);
    EXPECT_TRUE(scene.entity(1).selectable);
    const SceneReference& reference = scene.shapeOf(0).references[0];
    EXPECT_TRUE(scene.layers().layer(reference.layer).off);
    // Nothing can pick the reference on the switched-off layer.
    EXPECT_FALSE(scene.pick({5.5, 0}, 0.1));
}

TEST(SceneLayers, TableStates) {
    const auto document = readTestDrawing(
        testDrawing({{"0", 7, 0}, {"A", -1, 0}, {"B", 250, 1}, {"C", -3, 1}}, "", ""));
    ASSERT_TRUE(document);
    const SceneLayers layers(*document);
    struct Row {
        const char* name;
        SceneRgb color;
        bool off;
        bool frozen;
    };
    const Row rows[] = {{"0", kSceneForeground, false, false},
                        {"A", 0xFF0000, true, false},
                        {"b", 0x333333, false, true},
                        {"C", 0x00FF00, true, true}};
    for (const Row& row : rows) {
        const SceneLayer& layer = layers.layer(layers.find(row.name));
        EXPECT_EQ(layer.color, row.color) << row.name;
        EXPECT_EQ(layer.off, row.off) << row.name;
        EXPECT_EQ(layer.frozen, row.frozen) << row.name;
    }
    EXPECT_EQ(layers.find(""), layers.layerZero());
    EXPECT_TRUE(layers.layer(layers.find("UNKNOWN")).isShown());
}

}  // namespace

// Hit tests (pick, window, crossing, narrowed by type), the entities an edit adds or takes away,
// the characters of texts and the spaces of a drawing.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/desktop/scene/drawingscene.h"
#include "tests/host/desktop/SceneTestSupport.h"

namespace {

// A line, a circle, a reference to a unit square, a text, and a line on a layer that is off.
class SceneSelection : public ::testing::Test {
protected:
    void SetUp() override {
        m_document = readTestDrawing(testDrawing(
            {{"0"}, {"OFF", -1, 0}},
            "0 BLOCK|8 0|2 BOX|70 0|10 0|20 0|30 0|0 LWPOLYLINE|8 0|90 4|70 1|10 0|20 0|10 1|"
            "20 0|10 1|20 1|10 0|20 1|0 ENDBLK|8 0",
            "0 LINE|8 0|10 0|20 0|11 10|21 0|0 CIRCLE|8 0|10 20|20 0|40 2|"
            "0 INSERT|8 0|2 BOX|10 30|20 0|41 2|42 2|0 TEXT|8 0|10 40|20 0|40 1|1 HELLO|"
            "0 LINE|8 OFF|10 0|20 -1|11 10|21 -1"));
        ASSERT_TRUE(m_document);
        m_scene = std::make_unique<DrawingScene>(*m_document, DxfSpace::Model);
        ASSERT_EQ(m_scene->entityCount(), 4u);
        for (std::size_t i = 0; i < 4; ++i) m_ids.push_back(m_scene->entity(i).id);
    }

    AcDbObjectId line() const { return m_ids[0]; }
    AcDbObjectId circle() const { return m_ids[1]; }
    AcDbObjectId box() const { return m_ids[2]; }
    AcDbObjectId text() const { return m_ids[3]; }

    std::unique_ptr<DxfDocument> m_document;
    std::unique_ptr<DrawingScene> m_scene;
    std::vector<AcDbObjectId> m_ids;
};

TEST_F(SceneSelection, PickFindsTheNearestEntityWithinTheTolerance) {
    struct Row {
        ScenePoint point;
        double tolerance;
        const char* type;
        std::optional<int> expected;  // 0 line, 1 circle, 2 box, 3 text
    };
    const Row rows[] = {
        {{5, 0.1}, 0.5, "", 0},
        {{5, 1}, 0.5, "", std::nullopt},
        {{22, 0}, 0.2, "", 1},
        {{20, 0}, 0.5, "", std::nullopt},  // the centre is two units from the circle
        {{31, 0.05}, 0.2, "INSERT", 2},
        {{31, 1}, 0.2, "", std::nullopt},  // inside the square, far from its edges
        {{5, 0}, 0.5, "INSERT", std::nullopt},
        {{5, 0}, 0.5, "line", 0},
        {{41, 0.5}, 0.1, "", 3},           // inside the text's box
        {{5, -1}, 0.5, "", std::nullopt},  // the line on the layer that is off
        {{5, 0}, 0.5, "SPLINE", std::nullopt},
        // The nearer of two wins: the square's lower edge, then the line's end or the circle.
        {{30.5, 0.3}, 1.0, "", 2},
        {{17.5, 0}, 8.0, "", 1},
        {{12.5, 0}, 8.0, "", 0},
    };
    for (const Row& row : rows) {
        const auto picked = m_scene->pick(row.point, row.tolerance, row.type);
        const std::optional<AcDbObjectId> expected =
            row.expected ? std::optional(m_ids[static_cast<std::size_t>(*row.expected)])
                         : std::nullopt;
        EXPECT_EQ(picked, expected) << row.point.x << "," << row.point.y << " " << row.type;
    }
}

TEST_F(SceneSelection, WindowTakesWhatIsInsideCrossingAlsoWhatCrossesItsEdges) {
    using Ids = std::vector<AcDbObjectId>;
    EXPECT_EQ(m_scene->windowSelect({-1, -1, 11, 1}), Ids{line()});
    EXPECT_EQ(m_scene->windowSelect({-1, -1, 5, 1}), Ids{});
    EXPECT_EQ(m_scene->crossingSelect({-1, -1, 5, 1}), Ids{line()});
    // Inside the circle without touching it.
    EXPECT_EQ(m_scene->crossingSelect({19.5, -0.5, 20.5, 0.5}), Ids{});
    // Over the square's corner.
    EXPECT_EQ(m_scene->crossingSelect({31.5, 1.5, 33, 3}), Ids{box()});
    // Over the text's box.
    EXPECT_EQ(m_scene->crossingSelect({40.5, 0.2, 40.6, 0.3}), Ids{text()});
    EXPECT_EQ(m_scene->windowSelect({-5, -5, 50, 5}), (Ids{line(), circle(), box(), text()}));
    EXPECT_EQ(m_scene->windowSelect({-5, -5, 50, 5}, "insert"), Ids{box()});
    EXPECT_EQ(m_scene->crossingSelect({-5, -5, 50, 5}, "CIRCLE"), Ids{circle()});
    EXPECT_EQ(m_scene->crossingSelect({-5, -5, 50, 5}, "SPLINE"), Ids{});
}

std::unique_ptr<DxfDocument> readTestData(const char* name) {
    std::ifstream in(std::filesystem::path(TARNWICK_TEST_DATA) / "dxf" / name, std::ios::binary);
    std::stringstream bytes;
    bytes << in.rdbuf();
    return readTestDrawing(bytes.str());
}

TEST(SceneEdits, AnInsertedReferenceAppearsAndCanBeTakenAway) {
    const auto document = readTestData("r2018-small.dxf");
    ASSERT_TRUE(document);
    DrawingScene scene(*document, DxfSpace::Model);
    const std::size_t before = scene.entityCount();
    AcDbBlockReference reference;
    ASSERT_EQ(document->getBlockTableRecordId(L"Door", reference.blockTableRecord), Acad::eOk);
    reference.position = {500, 500, 0};
    AcDbObjectId id;
    ASSERT_EQ(document->insertBlockReference(reference, id), Acad::eOk);

    ASSERT_TRUE(scene.addEntity(id));
    EXPECT_FALSE(scene.addEntity(id));
    EXPECT_EQ(scene.entityCount(), before + 1);
    const auto index = scene.indexOf(id);
    ASSERT_TRUE(index);
    EXPECT_EQ(scene.types().name(scene.entity(*index).type), "INSERT");
    // The reference shows its attribute with the definition's default value.
    const SceneShape& shape = scene.shapeOf(*index);
    const SceneEntity& entity = scene.entity(*index);
    bool sawText = false;
    for (std::uint32_t p = 0; p < entity.primitiveCount; ++p) {
        const ScenePrimitive& primitive = shape.primitives[entity.firstPrimitive + p];
        if (primitive.kind == ScenePrimitiveKind::Text) {
            EXPECT_EQ(scene.textOf(shape.texts[primitive.index]), L"90");
            sawText = true;
        }
    }
    EXPECT_TRUE(sawText);
    const SceneRect around{490, 490, 520, 520};
    EXPECT_EQ(scene.crossingSelect(around), std::vector<AcDbObjectId>{id});
    EXPECT_TRUE(scene.extents().contains(scene.boundsOf(*index)));

    EXPECT_TRUE(scene.removeEntity(id));
    EXPECT_FALSE(scene.removeEntity(id));
    EXPECT_TRUE(scene.crossingSelect(around).empty());
    EXPECT_FALSE(scene.extents().intersects(around));
    std::vector<std::uint32_t> found;
    scene.entitiesIn(around, found);
    EXPECT_TRUE(found.empty());
}

TEST(SceneEdits, OnlyEntitiesOfTheScenesSpaceAreAdded) {
    const auto document = readTestData("r12-layouts.dxf");
    ASSERT_TRUE(document);
    DrawingScene model(*document, DxfSpace::Model);
    const DrawingScene paper(*document, DxfSpace::Paper);
    ASSERT_EQ(paper.entityCount(), 1u);
    EXPECT_FALSE(model.addEntity(paper.entity(0).id));
    EXPECT_FALSE(model.addEntity(AcDbObjectId()));
    EXPECT_FALSE(model.removeEntity(paper.entity(0).id));
    // Model space: two references to DOOR and a line.
    EXPECT_EQ(model.entityCount(), 3u);
}

TEST(SceneTexts, CharactersComeFromTheDrawing) {
    const auto document = readTestDrawing(
        testDrawing({{"0"}}, "",
                    "0 TEXT|8 0|10 0|20 0|40 1|1 20%%dC %%p1|0 MTEXT|8 0|10 0|20 5|40 1|"
                    "3 {\\fArial;Bold} first line\\Psecond |1 line"));
    ASSERT_TRUE(document);
    const DrawingScene scene(*document, DxfSpace::Model);
    ASSERT_EQ(scene.entityCount(), 2u);
    EXPECT_EQ(scene.textOf(scene.shapeOf(0).texts[0]), L"20\u00B0C \u00B11");
    EXPECT_EQ(scene.textOf(scene.shapeOf(1).texts[1]), L"Bold first line\nsecond line");
    EXPECT_EQ(scene.shapeOf(1).texts[1].lineCount, 2u);
}

TEST(SceneThreads, PartsReadSideBySideGiveTheSameScene) {
    std::string entities;
    for (int i = 0; i < 2000; ++i) {
        const std::string x = std::to_string(i);
        entities += (i ? "|" : "") + std::string("0 INSERT|8 0|66 1|2 B|10 ") + x +
                    "|20 0|0 ATTRIB|8 0|10 0|20 0|40 1|1 v|2 T|70 0|0 SEQEND|8 0|0 LINE|8 0|10 " +
                    x + "|20 1|11 " + x + "|21 2";
    }
    const auto document = readTestDrawing(testDrawing(
        {{"0"}}, "0 BLOCK|8 0|2 B|70 0|10 0|20 0|30 0|0 CIRCLE|8 0|10 0|20 0|40 0.25|0 ENDBLK|8 0",
        entities));
    ASSERT_TRUE(document);
    const DrawingScene one(*document, DxfSpace::Model, 1);
    const DrawingScene several(*document, DxfSpace::Model, 7);
    ASSERT_EQ(one.entityCount(), 4000u);
    ASSERT_EQ(several.entityCount(), 4000u);
    for (std::size_t i = 0; i < one.entityCount(); ++i) {
        ASSERT_EQ(one.entity(i).id, several.entity(i).id) << i;
        ASSERT_EQ(one.boundsOf(i), several.boundsOf(i)) << i;
        ASSERT_EQ(one.entity(i).primitiveCount, several.entity(i).primitiveCount) << i;
    }
    // Every attribute stands at the origin: the references up to x = 10 and the lines fit.
    EXPECT_EQ(several.windowSelect({-1, -1, 10.5, 3}).size(), 22u);
}

}  // namespace

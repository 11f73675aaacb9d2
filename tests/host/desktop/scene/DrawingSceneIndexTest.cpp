// The scene's spatial index, built on first use or behind a first picture: not made before it is
// wanted, and once made it finds what a look at every entity's box finds, edits included.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "host/desktop/scene/drawingscene.h"
#include "tests/host/desktop/SceneTestSupport.h"

namespace {

// Lines and circles scattered over a square of 1000 units, some long, some tiny.
std::unique_ptr<DxfDocument> scatteredDrawing() {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> coordinate(0, 1000);
    std::string entities;
    for (int i = 0; i < 3000; ++i) {
        const auto c = [&] { return std::to_string(coordinate(random)); };
        entities += (entities.empty() ? "" : "|");
        if (i % 2 == 0) {
            const std::string x = c(), y = c();
            const bool tiny = i % 10 == 0;
            entities += "0 LINE|8 0|10 " + x + "|20 " + y + "|11 " + (tiny ? x : c()) + "|21 " +
                        (tiny ? y : c());
        } else {
            entities += "0 CIRCLE|8 0|10 " + c() + "|20 " + c() + "|40 " +
                        std::to_string(1 + i % 30);
        }
    }
    return readTestDrawing(testDrawing(
        {{"0"}}, "0 BLOCK|8 0|2 B|70 0|10 0|20 0|30 0|0 LINE|8 0|10 0|20 0|11 5|21 5|0 ENDBLK|8 0",
        entities));
}

std::vector<std::uint32_t> bruteForce(const DrawingScene& scene, const SceneRect& rect) {
    std::vector<std::uint32_t> found;
    for (std::size_t i = 0; i < scene.entityCount(); ++i) {
        if (!scene.entity(i).removed && scene.boundsOf(i).intersects(rect))
            found.push_back(static_cast<std::uint32_t>(i));
    }
    return found;
}

std::vector<SceneRect> someRectangles() {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> corner(-50, 1050);
    std::vector<SceneRect> rects{{-1e9, -1e9, 1e9, 1e9}, {400, 400, 400, 400}, {}};
    for (int i = 0; i < 60; ++i)
        rects.push_back(SceneRect::fromCorners({corner(random), corner(random)},
                                               {corner(random), corner(random)}));
    return rects;
}

TEST(SceneIndex, BuiltOnFirstUseItFindsWhatEveryBoxSays) {
    const auto document = scatteredDrawing();
    ASSERT_TRUE(document);
    const DrawingScene scene(*document, DxfSpace::Model, 2);
    EXPECT_FALSE(scene.extents().isEmpty());
    EXPECT_FALSE(scene.indexBuilt());
    std::vector<std::uint32_t> found;
    for (const SceneRect& rect : someRectangles()) {
        scene.entitiesIn(rect, found);
        ASSERT_EQ(found, bruteForce(scene, rect));
        EXPECT_TRUE(scene.indexBuilt());
    }
}

TEST(SceneIndex, BuiltBehindTheCallerItAnswersTheSame) {
    const auto document = scatteredDrawing();
    ASSERT_TRUE(document);
    const DrawingScene scene(*document, DxfSpace::Model, 2);
    scene.prepareIndex();
    scene.prepareIndex();  // once is enough; a second call changes nothing
    // Asked at once, the query waits for the builder.
    std::vector<std::uint32_t> found;
    const SceneRect middle{300, 300, 700, 700};
    scene.entitiesIn(middle, found);
    EXPECT_TRUE(scene.indexBuilt());
    EXPECT_EQ(found, bruteForce(scene, middle));
}

TEST(SceneIndex, AnEditWhileTheIndexIsBuiltWaitsAndIsFound) {
    const auto document = scatteredDrawing();
    ASSERT_TRUE(document);
    DrawingScene scene(*document, DxfSpace::Model, 2);
    scene.prepareIndex();
    // The first entity away, and an entity the document gains, while the builder may be at work.
    ASSERT_TRUE(scene.removeEntity(scene.entity(0).id));
    AcDbBlockReference reference;
    ASSERT_EQ(document->getBlockTableRecordId(L"B", reference.blockTableRecord), Acad::eOk);
    reference.position = {500, 500, 0};
    AcDbObjectId id;
    ASSERT_EQ(document->insertBlockReference(reference, id), Acad::eOk);
    ASSERT_TRUE(scene.addEntity(id));
    EXPECT_TRUE(scene.indexBuilt());
    std::vector<std::uint32_t> here;
    scene.entitiesIn({501, 501, 502, 502}, here);
    EXPECT_NE(std::find(here.begin(), here.end(), *scene.indexOf(id)), here.end());
    for (const SceneRect& rect : someRectangles()) {
        std::vector<std::uint32_t> found;
        scene.entitiesIn(rect, found);
        ASSERT_EQ(found, bruteForce(scene, rect));
    }
}

}  // namespace

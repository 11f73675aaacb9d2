// Several drawings read and counted on one thread or on several: the same tallies in the order
// given, and every drawing that fails named with its reason.
#include <gtest/gtest.h>

#include "host/console/drawingbatch.h"
#include "tests/TempFolder.h"
#include "tests/host/DrawingFixture.h"

namespace {

class DrawingBatchTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (int i = 0; i < 5; ++i) {
            FixtureDrawing drawing;
            drawing.blocks = {{"Chair", {}, ""}, {"Desk", {{"Chair", 0, 0}}, ""}};
            for (int k = 0; k <= i; ++k) drawing.references.push_back({k % 2 ? "Chair" : "Desk", 1.0 * k, 0});
            const std::string name = "plan" + std::to_string(i) + ".dxf";
            m_folder.write(name, fixtureBytes(drawing));
            m_paths.push_back(m_folder.path(name));
        }
    }

    static std::vector<std::vector<std::pair<std::wstring, std::int64_t>>> counts(
        const std::vector<CountedDrawing>& drawings) {
        std::vector<std::vector<std::pair<std::wstring, std::int64_t>>> out;
        for (const auto& drawing : drawings) {
            EXPECT_EQ(drawing.error, "");
            out.emplace_back();
            for (const auto& block : drawing.tally.blocks) out.back().emplace_back(block.name, block.references);
        }
        return out;
    }

    TempFolder m_folder;
    std::vector<std::string> m_paths;
};

TEST_F(DrawingBatchTest, AnyNumberOfThreadsGivesTheSameTalliesInOrderAndKeepsDocumentsOnRequest) {
    BatchOptions options;
    options.tally.nested = true;
    options.showProgress = false;
    const auto alone = countDrawings(m_paths, options);
    options.jobs = 3;
    const auto together = countDrawings(m_paths, options);
    EXPECT_EQ(counts(alone), counts(together));
    using Counts = std::vector<std::pair<std::wstring, std::int64_t>>;
    EXPECT_EQ(counts(together)[0], (Counts{{L"Desk", 1}, {L"Chair", 1}}));
    EXPECT_EQ(counts(together)[4], (Counts{{L"Desk", 3}, {L"Chair", 5}}));
    for (std::size_t i = 0; i < m_paths.size(); ++i) {
        EXPECT_EQ(together[i].path, m_paths[i]);
        EXPECT_FALSE(together[i].document);
    }
    // Kept when asked.
    options.keepDocuments = true;
    const auto kept = countDrawings({m_paths[1]}, options);
    ASSERT_TRUE(kept[0].document);
    EXPECT_EQ(kept[0].document->blockReferences(DxfSpace::Model).size(), 2u);
}

TEST_F(DrawingBatchTest, NamesEveryDrawingThatFailsAndCountsTheOthers) {
    m_folder.write("broken.dxf", "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\nnot a number\n");
    BatchOptions options;
    options.jobs = 2;
    options.showProgress = false;
    const auto drawings = countDrawings(
        {m_paths[0], m_folder.path("broken.dxf"), m_folder.path("none.dxf"), m_paths[1]}, options);
    EXPECT_EQ(drawings[0].error, "");
    EXPECT_TRUE(drawings[1].error.starts_with(m_folder.path("broken.dxf") + ":8: ")) << drawings[1].error;
    EXPECT_EQ(drawings[2].error, m_folder.path("none.dxf") + ": no such file or directory");
    EXPECT_EQ(drawings[3].error, "");
    EXPECT_EQ(drawings[3].tally.blocks.size(), 2u);
}

}  // namespace

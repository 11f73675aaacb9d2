// Counting one drawing's references by name: nested references multiplied along the nesting, the
// selection, the cycle guard, and references to blocks the drawing lacks.
#include <gtest/gtest.h>

#include "host/dxf/dxfblocktally.h"
#include "tests/host/DrawingFixture.h"
#include "tests/host/dxf/OpenDrawing.h"

namespace {

// A dynamic chair with linked variants, a variant whose link names nothing and one without any;
// a desk of two chairs and a linked variant; a room of two desks and a plant.
FixtureDrawing office() {
    FixtureDrawing drawing;
    drawing.blocks = {
        {"Chair", {}, ""},
        {"*U1", {}, "Chair"},
        {"*U2", {}, "Chair"},
        {"*U3", {}, "#FFFF"},
        {"*U4", {}, ""},
        {"*T5", {}, ""},
        {"Desk", {{"Chair", 0, 0}, {"*U2", 1, 0}}, ""},
        {"Plant", {}, ""},
        {"Room", {{"Desk", 0, 0}, {"Desk", 5, 0}, {"Plant", 2, 2}}, ""},
    };
    drawing.references = {{"*U1", 0, 0},  {"Desk", 10, 0, "FURNITURE"}, {"chair", 20, 0},
                          {"*U3", 30, 0}, {"*U4", 40, 0},               {"Room", 50, 0},
                          {"*T5", 60, 0}, {"*U2", 70, 0}};
    return drawing;
}

std::unique_ptr<DxfDocument> read(const FixtureDrawing& drawing) {
    return openDrawing("office.dxf", fixtureBytes(drawing));
}

struct Row {
    std::wstring name;
    std::int64_t references;
    std::vector<std::wstring> variants;
    bool unlinked;
    friend bool operator==(const Row&, const Row&) = default;
    friend void PrintTo(const Row& row, std::ostream* out) {
        *out << std::string(row.name.begin(), row.name.end()) << " x" << row.references
             << (row.unlinked ? " unlinked" : "") << " from " << row.variants.size();
    }
};

std::vector<Row> rows(const DrawingTally& tally) {
    std::vector<Row> out;
    for (const auto& block : tally.blocks)
        out.push_back({block.name, block.references, block.variants, block.unlinked});
    return out;
}

DrawingTally tallyOf(const FixtureDrawing& drawing, const TallyOptions& options) {
    const auto document = read(drawing);
    if (!document) return {};
    auto tally = tallyDrawing(*document, "office.dxf", options);
    EXPECT_TRUE(tally.isOk()) << tally.errorString();
    return tally.isOk() ? tally.takeValue() : DrawingTally{};
}

// Variants under their dynamic block, record names on request, a desk of chairs: the console's
// counting tests, through the program.
TEST(BlockTally, NestedCountsMultiplyAlongTheNestingVariantsUnderTheirDynamicBlock) {
    TallyOptions options;
    options.nested = true;
    const DrawingTally tally = tallyOf(office(), options);
    // Chair: *U1, the desk's two, the chair itself, the room's two desks of two each, *U2.
    EXPECT_EQ(rows(tally), (std::vector<Row>{{L"Chair", 9, {L"*U1", L"*U2"}, false},
                                             {L"Desk", 3, {}, false},
                                             {L"*U3", 1, {}, true},
                                             {L"*U4", 1, {}, true},
                                             {L"Room", 1, {}, false},
                                             {L"Plant", 1, {}, false},
                                             {L"*T5", 1, {}, false}}));
    EXPECT_EQ(tally.unlinkedReferences, 2);
    EXPECT_TRUE(tally.cycles.empty());
}

TEST(BlockTally, ACycleOfBlocksIsFollowedOnceAndNamed) {
    FixtureDrawing drawing;
    drawing.version = FixtureVersion::R12;
    drawing.blocks = {{"A", {{"B", 0, 0}}, ""},
                      {"B", {{"A", 0, 0}, {"C", 0, 0}}, ""},
                      {"C", {{"C", 0, 0}}, ""}};
    drawing.references = {{"A", 0, 0}, {"A", 1, 0}};
    TallyOptions options;
    options.nested = true;
    const DrawingTally tally = tallyOf(drawing, options);
    EXPECT_EQ(rows(tally), (std::vector<Row>{{L"A", 4, {}, false},
                                             {L"B", 2, {}, false},
                                             {L"C", 4, {}, false}}));
    EXPECT_EQ(tally.cycles, (std::vector<std::wstring>{L"A > B > A", L"C > C"}));
}

TEST(BlockTally, CountsOnlyTheSelection) {
    TallyOptions options;
    options.filter.layers = {L"furniture"};
    options.nested = true;
    EXPECT_EQ(rows(tallyOf(office(), options)),
              (std::vector<Row>{{L"Desk", 1, {}, false}, {L"Chair", 2, {L"*U2"}, false}}));
    options.filter = {};
    options.filter.window = SelectionWindow{-1, -1, 25, 1};
    options.nested = false;
    EXPECT_EQ(rows(tallyOf(office(), options)),
              (std::vector<Row>{{L"Chair", 2, {L"*U1"}, false}, {L"Desk", 1, {}, false}}));
}

TEST(BlockTally, AReferenceToABlockTheDrawingLacksIsAnError) {
    FixtureDrawing drawing;
    drawing.blocks = {{"Desk", {{"Lamp", 0, 0}}, ""}};
    drawing.references = {{"Desk", 0, 0}};
    const auto document = read(drawing);
    ASSERT_TRUE(document);
    EXPECT_TRUE(tallyDrawing(*document, "office.dxf", {}).isOk());
    TallyOptions options;
    options.nested = true;
    const auto nested = tallyDrawing(*document, "office.dxf", options);
    ASSERT_FALSE(nested.isOk());
    EXPECT_EQ(nested.errorString(),
              "office.dxf: a reference names the block \"Lamp\", which the drawing does not define");
    drawing.references.push_back({"Sofa", 0, 0});
    const auto top = read(drawing);
    ASSERT_TRUE(top);
    const auto missing = tallyDrawing(*top, "office.dxf", {});
    ASSERT_FALSE(missing.isOk());
    EXPECT_EQ(missing.errorString(),
              "office.dxf: a reference names the block \"Sofa\", which the drawing does not define");
}

TEST(BlockTally, TellsDynamicBlockVariantNames) {
    for (const wchar_t* name : {L"*U1", L"*u12", L"*U"}) EXPECT_TRUE(isDynamicVariantName(name)) << name;
    for (const wchar_t* name : {L"*T1", L"U1", L"*", L"", L"*X*U"}) EXPECT_FALSE(isDynamicVariantName(name));
}

}  // namespace

// What block definitions say about other blocks: dynamic-block links of anonymous variants and the
// references nested in a definition.
#include <gtest/gtest.h>

#include "tests/host/DrawingFixture.h"
#include "tests/host/dxf/OpenDrawing.h"

namespace {

// A dynamic block "Chair" with two variants, a variant whose link names no record, one without a
// link, and a desk that holds two chairs and a variant.
FixtureDrawing dynamicChairs(FixtureVersion version) {
    FixtureDrawing drawing;
    drawing.version = version;
    drawing.blocks = {
        {"Chair", {}, ""},
        {"*U1", {}, "Chair"},
        {"*U2", {}, "Chair"},
        {"*U3", {}, "#FFFF"},
        {"*U4", {}, ""},
        {"Desk", {{"Chair", 1, 0}, {"*U1", 2, 0, "FURNITURE"}, {"chair", 3, 0}}, ""},
    };
    drawing.references = {{"Desk", 0, 0}, {"*U1", 5, 5}};
    return drawing;
}

std::unique_ptr<DxfDocument> read(const FixtureDrawing& drawing) {
    return openDrawing("chairs.dxf", fixtureBytes(drawing));
}

std::wstring nameOf(const DxfDocument& document, AcDbObjectId record) {
    std::wstring name;
    if (document.getBlockTableRecordName(record, name) != Acad::eOk) return L"(none)";
    return name;
}

// R12 keeps no block records, so no links either.
class DxfDynamicBlockLinks : public ::testing::TestWithParam<FixtureVersion> {};

TEST_P(DxfDynamicBlockLinks, NameTheRecordTheVariantWasMadeFrom) {
    const auto document = read(dynamicChairs(GetParam()));
    ASSERT_TRUE(document);
    std::vector<std::pair<std::wstring, std::wstring>> links;
    for (const auto& link : document->dynamicBlockLinks())
        links.emplace_back(nameOf(*document, link.anonymous), nameOf(*document, link.dynamic));
    using Links = std::vector<std::pair<std::wstring, std::wstring>>;
    const Links expected{{L"*U1", L"Chair"}, {L"*U2", L"Chair"}, {L"*U3", L"(none)"}};
    EXPECT_EQ(links, GetParam() == FixtureVersion::R12 ? Links() : expected);
}

INSTANTIATE_TEST_SUITE_P(Versions, DxfDynamicBlockLinks,
                         ::testing::Values(FixtureVersion::R12, FixtureVersion::R2000,
                                           FixtureVersion::R2018));

TEST(DxfReferencesInBlock, ListTheDefinitionsReferencesInFileOrderAndNoneElse) {
    for (const auto version : {FixtureVersion::R12, FixtureVersion::R2000}) {
        const auto document = read(dynamicChairs(version));
        ASSERT_TRUE(document);
        const auto inside = document->referencesInBlock(blockIdOf(*document, L"desk"));
        ASSERT_EQ(inside.size(), 3u);
        EXPECT_EQ(inside[0].blockName, L"Chair");
        EXPECT_EQ(inside[1].blockName, L"*U1");
        EXPECT_EQ(inside[1].layer, L"FURNITURE");
        EXPECT_EQ(inside[1].position, (AcGePoint3d{2, 0, 0}));
        EXPECT_EQ(inside[2].blockName, L"chair");
        AcDbBlockReference reference;
        ASSERT_EQ(document->openBlockReference(inside[2].id, reference), Acad::eOk);
        EXPECT_EQ(reference.blockTableRecord, blockIdOf(*document, L"Chair"));
        // Nested references are not the drawing's own.
        EXPECT_EQ(document->blockReferences(DxfSpace::Model).size(), 2u);
    }
    // None for empty blocks and for ids that are no block.
    const auto document = read(dynamicChairs(FixtureVersion::R2000));
    ASSERT_TRUE(document);
    EXPECT_TRUE(document->referencesInBlock(blockIdOf(*document, L"Chair")).empty());
    EXPECT_TRUE(document->referencesInBlock(AcDbObjectId()).empty());
    EXPECT_TRUE(document->referencesInBlock(document->blockReferences(DxfSpace::Model)[0].id).empty());
    EXPECT_TRUE(document->referencesInBlock(AcDbObjectId(999999)).empty());
}

}  // namespace

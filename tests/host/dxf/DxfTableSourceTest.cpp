// A price table's source and its redrawing on DXF drawings of each version: extended data on the
// block record (the BLOCK in R12) beside other applications' data, picked references found again
// by handle or, without handles, by where they stand; a block drawn again with its reference's
// attributes in writing order; and a command's edits put back whole.
#include <gtest/gtest.h>

#include "bom/PriceTable.h"
#include "bom/TableRefresh.h"
#include "host/dxf/dxfdocument.h"
#include "host/dxf/dxfviews.h"
#include "host/scripted/scriptededitor.h"
#include "tests/host/DrawingFixture.h"
#include "tests/host/dxf/OpenDrawing.h"

namespace {

// A door and two chairs, and a chair block whose dynamic variant "*U1" carries the link data of
// another application.
FixtureDrawing plan(FixtureVersion version) {
    FixtureDrawing drawing;
    drawing.version = version;
    drawing.blocks = {{"Door", {}, ""}, {"Chair", {}, ""}, {"*U1", {}, "Chair"}};
    drawing.references = {{"Door", 0, 0}, {"Chair", 1, 0}, {"Chair", 2, 0}};
    return drawing;
}

resbuf text(std::wstring value) { return resbuf::groupCode(1000, std::move(value)); }

class DxfTableSourceTest : public ::testing::TestWithParam<FixtureVersion> {
protected:
    void SetUp() override {
        m_document = openDrawing("plan.dxf", fixtureBytes(plan(GetParam())));
        ASSERT_NE(m_document, nullptr);
        acdbHostApplicationServices()->setWorkingDatabase(m_document.get());
    }
    void TearDown() override { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    // The drawing saved and read again.
    void reread() {
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
        m_document = openDrawing("plan.dxf", m_document->toBytes());
        ASSERT_NE(m_document, nullptr);
        acdbHostApplicationServices()->setWorkingDatabase(m_document.get());
    }

    std::unique_ptr<DxfDocument> m_document;
    ScriptedEditor m_editor;
};

TEST_P(DxfTableSourceTest, ExtendedDataIsKeptBesideOtherApplicationsAndReadBackAfterASave) {
    DxfDocument& d = *m_document;
    const AcDbObjectId variant = blockIdOf(d, L"*U1");
    const std::vector<resbuf> data{text(L"PRICE TABLE"), resbuf::groupCode(1002, L"{"),
                                   resbuf::groupCode(1005, L"1F"), resbuf::groupCode(1002, L"}"),
                                   text(L"Stuhl für Büro")};
    EXPECT_EQ(d.setXData(variant, L"TARNWICK", data), Acad::eKeyNotFound);  // not registered
    ASSERT_EQ(d.registerApplication(L"TARNWICK"), Acad::eOk);
    const std::size_t applications = d.tableEntryIds("APPID").size();
    ASSERT_EQ(d.registerApplication(L"tarnwick"), Acad::eOk);
    EXPECT_EQ(d.tableEntryIds("APPID").size(), applications);
    EXPECT_EQ(d.setXData(variant, L"TARNWICK", {text(std::wstring(256, L'x'))}),
              Acad::eInvalidInput);
    ASSERT_EQ(d.setXData(variant, L"TARNWICK", data), Acad::eOk);
    ASSERT_EQ(d.setXData(variant, L"TARNWICK", data), Acad::eOk);  // replaced, not added
    reread();
    std::vector<resbuf> read;
    ASSERT_EQ(m_document->getXData(blockIdOf(*m_document, L"*U1"), L"Tarnwick", read), Acad::eOk);
    ASSERT_EQ(read.size(), data.size());
    for (std::size_t i = 0; i < data.size(); ++i) {
        EXPECT_EQ(read[i].restype, data[i].restype);
        EXPECT_EQ(read[i].resval.rstring, data[i].resval.rstring);
    }
    // The other application's link still names the chair (R12 keeps no such links).
    if (GetParam() != FixtureVersion::R12) {
        ASSERT_EQ(m_document->dynamicBlockLinks().size(), 1u);
        EXPECT_EQ(m_document->dynamicBlockLinks().front().dynamic,
                  blockIdOf(*m_document, L"Chair"));
    }
    EXPECT_EQ(m_document->getXData(blockIdOf(*m_document, L"Door"), L"TARNWICK", read),
              Acad::eKeyNotFound);
}

TEST_P(DxfTableSourceTest, PickedReferencesAreFoundByHandleOrWithoutHandlesWhereTheyStand) {
    const std::vector<DxfReference> references = m_document->blockReferences(DxfSpace::Model);
    const std::vector<AcDbObjectId> picked{references[0].id, references[2].id};
    TableSource source;
    ASSERT_TRUE(RecordPickedReferences(*m_document, picked, source));
    const bool handles = GetParam() != FixtureVersion::R12;
    EXPECT_EQ(source.handles.size(), handles ? 2u : 0u);
    EXPECT_EQ(source.points.size(), handles ? 0u : 2u);
    reread();
    std::vector<AcDbObjectId> found = PickedReferences(*m_document, source);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(m_document->referenceName(found[1]), L"Chair");
    // An erased reference is found no more.
    ASSERT_EQ(m_document->eraseEntity(found[0]), Acad::eOk);
    EXPECT_EQ(PickedReferences(*m_document, source), std::vector<AcDbObjectId>{found[1]});
    EXPECT_EQ(m_document->eraseEntity(found[0]), Acad::eWasErased);
    EXPECT_EQ(m_document->eraseEntity(blockIdOf(*m_document, L"Door")), Acad::eWrongObjectType);
}

TEST_P(DxfTableSourceTest, ABlockDrawnAgainGivesItsReferenceNewAttributesAndUndoesWhole) {
    DxfDocument& d = *m_document;
    const std::vector<BomRow> before{{L"door", L"10.00", L"1", L"front", L"10.00"},
                                     {L"Summary:", L"", L"", L"", L"10.00"}};
    EnsureTableTextStyle();
    PriceTableExtent extent;
    ASSERT_EQ(DrawPriceTable(before, true, L"QTB0001", kTableTextStyle, 1.0, extent), 1);
    AcDbBlockReference placement;
    placement.blockTableRecord = blockIdOf(d, L"QTB0001");
    placement.position = {0, -5, 0};
    AcDbObjectId table;
    ASSERT_EQ(d.insertBlockReference(placement, table), Acad::eOk);
    reread();  // the table is the file's own now, as in a drawing opened to be refreshed
    DxfDocument& drawing = *m_document;
    const std::string bytes = drawing.toBytes();
    const auto state = drawing.saveEditState();

    const AcDbObjectId block = blockIdOf(drawing, L"QTB0001");
    std::vector<AcDbObjectId> entities;
    ASSERT_EQ(drawing.getBlockEntityIds(block, entities), Acad::eOk);
    for (const AcDbObjectId id : entities) ASSERT_EQ(drawing.eraseEntity(id), Acad::eOk);
    const std::vector<BomRow> after{{L"door", L"10.00", L"2", L"front", L"20.00"},
                                    {L"chair", L"5.00", L"2", L"", L"10.00"},
                                    {L"Summary:", L"", L"", L"", L"30.00"}};
    ASSERT_EQ(DrawPriceTable(after, true, L"QTB0001", kTableTextStyle, 1.0, extent), 1);
    std::vector<AcDbObjectId> references;
    ASSERT_EQ(drawing.getBlockReferenceIds(block, references), Acad::eOk);
    ASSERT_EQ(references.size(), 1u);
    ASSERT_EQ(drawing.syncBlockReferenceAttributes(references[0]), Acad::eOk);
    EXPECT_EQ(ReadTableRows(drawing, block), after);

    // The attributes follow their reference and end with its SEQEND, in the drawing and in the
    // file written from it.
    auto attributeTexts = [](const DxfDocument& document, AcDbObjectId reference) {
        std::vector<std::string> texts;
        for (const AcDbObjectId part : document.entityParts(reference)) {
            const DxfTagRange tags = document.tagsOf(part);
            const auto value = findTag(document.tagFile(), tags, 1);
            texts.emplace_back(value ? document.tagFile().value(tags[*value])
                                     : document.tagFile().value(tags[0]));
        }
        return texts;
    };
    const std::vector<std::string> expected{
        "Block name", "Item Price", "Quantity", "Description", "Total", "door", "10.00", "2",
        "front",      "20.00",      "chair",    "5.00",        "2",     "",     "10.00", "Summary:",
        "",           "",           "",         "30.00",       "SEQEND"};
    EXPECT_EQ(attributeTexts(drawing, references[0]), expected);
    const std::unique_ptr<DxfDocument> written = openDrawing("plan.dxf", drawing.toBytes());
    ASSERT_NE(written, nullptr);
    EXPECT_EQ(attributeTexts(*written, written->blockReferences(DxfSpace::Model).back().id),
              expected);

    // Put back, the drawing is the one before the edits, and counts as changed.
    const std::uint64_t edits = drawing.editCount();
    drawing.restoreEditState(*state);
    EXPECT_EQ(drawing.toBytes(), bytes);
    EXPECT_GT(drawing.editCount(), edits);
    EXPECT_EQ(ReadTableRows(drawing, block), before);
}

INSTANTIATE_TEST_SUITE_P(Versions, DxfTableSourceTest,
                         ::testing::Values(FixtureVersion::R12, FixtureVersion::R2000,
                                           FixtureVersion::R2018),
                         [](const auto& info) {
                             return info.param == FixtureVersion::R12     ? "R12"
                                    : info.param == FixtureVersion::R2000 ? "R2000"
                                                                          : "R2018";
                         });

}  // namespace

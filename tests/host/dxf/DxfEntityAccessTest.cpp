// Read access for drawing views: entities of a space or block in writing order, edits included,
// table entries, and the tags behind an id.
#include <gtest/gtest.h>

#include "host/dxf/dxfviews.h"
#include "tests/host/dxf/OpenDrawing.h"

namespace {

// The entity type (code 0) of each id, and its name (code 2) when it has one.
std::vector<std::string> describe(const DxfDocument& document,
                                  const std::vector<AcDbObjectId>& ids) {
    std::vector<std::string> out;
    for (const AcDbObjectId id : ids) {
        const DxfTagRange tags = document.tagsOf(id);
        std::string text(document.tagFile().value(tags[0]));
        if (const auto name = findTag(document.tagFile(), tags, 2))
            text += " " + std::string(document.tagFile().value(tags[*name]));
        out.push_back(text);
    }
    return out;
}

TEST(DxfEntityAccess, SpacesBlocksAndTablesListTheirOwnEntriesInFileOrder) {
    const auto document = openFixture("r12-layouts.dxf");
    ASSERT_TRUE(document);
    EXPECT_EQ(describe(*document, document->entityIds(DxfSpace::Model)),
              (std::vector<std::string>{"INSERT DOOR", "INSERT door", "LINE"}));
    EXPECT_EQ(describe(*document, document->entityIds(DxfSpace::Paper)),
              (std::vector<std::string>{"INSERT DOOR"}));
    EXPECT_EQ(describe(*document, document->sectionEntityIds()),
              (std::vector<std::string>{"INSERT DOOR", "INSERT door", "LINE", "INSERT DOOR"}));
    // The references the selection hands out are the same objects.
    const auto model = document->entityIds(DxfSpace::Model);
    EXPECT_EQ(document->blockReferences(DxfSpace::Model)[1].id, model[1]);
    // A block lists its definition and has its begin.
    const AcDbObjectId door = blockIdOf(*document, L"DOOR");
    EXPECT_EQ(describe(*document, document->blockEntityIds(door)),
              (std::vector<std::string>{"LINE", "ATTDEF WIDTH", "ATTDEF MAKER"}));
    const DxfBlockBeginView begin =
        readBlockBegin(document->tagFile(), document->tagsOf(document->blockBeginId(door)));
    EXPECT_EQ(begin.name, "DOOR");
    EXPECT_EQ(begin.basePoint, (AcGePoint3d{1, 2, 0}));
    EXPECT_TRUE(document->blockEntityIds(AcDbObjectId()).empty());
    EXPECT_TRUE(document->blockBeginId(document->entityIds(DxfSpace::Model)[0]).isNull());
    EXPECT_EQ(describe(*document, document->tableEntryIds("LAYER")),
              (std::vector<std::string>{"LAYER 0", "LAYER WALLS"}));
    EXPECT_TRUE(document->tableEntryIds("UCS").empty());
    EXPECT_EQ(document->tagsOf(AcDbObjectId()).size(), 0u);
    EXPECT_EQ(document->tagsOf(AcDbObjectId(1u << 30)).size(), 0u);
}

TEST(DxfEntityAccess, EditsAppearWhereTheyAreWritten) {
    const auto document = openFixture("r2018-small.dxf");
    ASSERT_TRUE(document);
    EXPECT_EQ(document->decodeText("T\xFCr"), L"T\u00FCr");  // in the drawing's code page
    AcDbBlockReference reference;
    reference.blockTableRecord = blockIdOf(*document, L"Door");
    reference.position = {5, 6, 0};
    AcDbObjectId inserted;
    ASSERT_EQ(document->insertBlockReference(reference, inserted), Acad::eOk);
    const auto model = document->entityIds(DxfSpace::Model);
    EXPECT_EQ(describe(*document, model),
              (std::vector<std::string>{"INSERT Door", "INSERT Door", "ATTRIB WIDTH", "SEQEND"}));
    EXPECT_EQ(model[1], inserted);
    EXPECT_EQ(describe(*document, document->sectionEntityIds()),
              (std::vector<std::string>{"INSERT Door", "INSERT Door", "INSERT Door", "ATTRIB WIDTH",
                                        "SEQEND"}));
    EXPECT_EQ(document->entityParts(inserted), (std::vector<AcDbObjectId>{model[2], model[3]}));
    EXPECT_TRUE(document->entityParts(model[0]).empty());

    AcDbObjectId table;
    ASSERT_EQ(document->addBlockTableRecord(L"QTB0001", table), Acad::eOk);
    AcDbLine line;
    line.endPoint = {3, 0, 0};
    AcDbObjectId lineId;
    ASSERT_EQ(document->appendLine(table, line, lineId), Acad::eOk);
    ASSERT_EQ(document->appendLine(table, line, lineId), Acad::eOk);
    EXPECT_EQ(describe(*document, document->blockEntityIds(table)),
              (std::vector<std::string>{"LINE", "LINE"}));
    EXPECT_EQ(document->blockEntityIds(table).back(), lineId);
    EXPECT_EQ(describe(*document, {document->blockBeginId(table)}),
              (std::vector<std::string>{"BLOCK QTB0001"}));
}

TEST(DxfEntityAccess, PartsOfAPolylineInTheFile) {
    const std::string bytes =
        "  0\nSECTION\n  2\nENTITIES\n  0\nPOLYLINE\n  8\n0\n 66\n1\n  0\nVERTEX\n  8\n0\n"
        "  0\nVERTEX\n  8\n0\n  0\nSEQEND\n  8\n0\n  0\nLINE\n  8\n0\n  0\nENDSEC\n  0\nEOF\n";
    auto read = DxfDocument::readBytes("polyline.dxf", bytes);
    ASSERT_TRUE(read.isOk()) << read.errorString();
    const DxfDocument& document = *read.value();
    const auto model = document.entityIds(DxfSpace::Model);
    EXPECT_EQ(describe(document, model),
              (std::vector<std::string>{"POLYLINE", "VERTEX", "VERTEX", "SEQEND", "LINE"}));
    EXPECT_EQ(document.entityParts(model[0]),
              (std::vector<AcDbObjectId>{model[1], model[2], model[3]}));
    EXPECT_TRUE(document.entityParts(model[4]).empty());
    EXPECT_TRUE(document.entityParts(AcDbObjectId()).empty());
}

}  // namespace

// The working database over DXF drawings: what it reads, the records it writes in each version's
// form, selection and system variables. Fixtures: tests/data/dxf, written by hand.
#include <gtest/gtest.h>

#include <limits>
#include <numbers>

#include "tests/host/dxf/DxfTestSupport.h"
#include "tests/host/dxf/OpenDrawing.h"

namespace {

// ASCII DXF text, in the form the database writes new tags, for tags given as "code value" pairs
// separated by "|" (the value is all that follows the first space).
std::string dxf(std::string_view tags, const char* eol = "\n") {
    std::string out;
    while (!tags.empty()) {
        const std::size_t bar = std::min(tags.find('|'), tags.size());
        const std::string_view tag = tags.substr(0, bar);
        const std::size_t space = tag.find(' ');
        char head[16];
        std::snprintf(head, sizeof head, "%3d", std::stoi(std::string(tag.substr(0, space))));
        out += std::string(head) + eol + std::string(tag.substr(space + 1)) + eol;
        tags.remove_prefix(std::min(bar + 1, tags.size()));
    }
    return out;
}

// The R12 fixture with handles switched on.
std::string r12WithHandles() {
    std::string bytes = readBytes(kDxfData / "r12-layouts.dxf");
    const std::string version = "$ACADVER\n  1\nAC1009\n";
    bytes.insert(bytes.find(version) + version.size(),
                 "  9\n$HANDLING\n 70\n     1\n  9\n$HANDSEED\n  5\n30\n");
    return bytes;
}

// The R2018 fixture, claiming another version or handle seed.
std::string r2018As(const char* version, const char* seed = "100") {
    std::string bytes = readBytes(kDxfData / "r2018-small.dxf");
    bytes.replace(bytes.find("AC1032"), 6, version);
    bytes.replace(bytes.find("$HANDSEED\r\n  5\r\n100"), 19,
                  std::string("$HANDSEED\r\n  5\r\n") + seed);
    return bytes;
}

std::vector<std::wstring> blockNames(const DxfDocument& document) {
    std::vector<std::wstring> names;
    for (const AcDbObjectId id : document.blockTableRecordIds()) {
        std::wstring name;
        EXPECT_EQ(document.getBlockTableRecordName(id, name), Acad::eOk);
        names.push_back(name);
    }
    return names;
}

// Whether `text` holds `part`, with a readable failure.
::testing::AssertionResult holds(const std::string& text, const std::string& part) {
    if (text.find(part) != std::string::npos) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "missing:\n" << part;
}

TEST(DxfDocumentBlockTable, R12ShowsItsLayoutBlocksAsStarredRecords) {
    const auto document = openFixture("r12-layouts.dxf");
    ASSERT_TRUE(document);
    EXPECT_EQ(blockNames(*document),
              (std::vector<std::wstring>{L"*Model_Space", L"*Paper_Space", L"DOOR"}));
    EXPECT_EQ(blockIdOf(*document, L"*MODEL_SPACE"), document->blockTableRecordIds()[0]);
    AcDbObjectId id;
    EXPECT_EQ(document->getBlockTableRecordId(L"$MODEL_SPACE", id), Acad::eKeyNotFound);
}

TEST(DxfDocumentBlockTable, R2018ListsItsBlockRecordsInTableOrder) {
    const auto document = openFixture("r2018-small.dxf");
    ASSERT_TRUE(document);
    EXPECT_EQ(blockNames(*document),
              (std::vector<std::wstring>{L"*Model_Space", L"*Paper_Space", L"Door"}));
    EXPECT_EQ(blockIdOf(*document, L"DOOR"), blockIdOf(*document, L"door"));
    AcDbObjectId id;
    EXPECT_EQ(document->getBlockTableRecordId(L"Window", id), Acad::eKeyNotFound);
    std::wstring name;
    EXPECT_EQ(document->getBlockTableRecordName(AcDbObjectId(), name), Acad::eNullObjectId);
    EXPECT_EQ(
        document->getBlockTableRecordName(document->blockReferences(DxfSpace::Model)[0].id, name),
        Acad::eWrongObjectType);
    EXPECT_EQ(document->getBlockTableRecordName(AcDbObjectId(999999), name),
              Acad::eWrongObjectType);
}

TEST(DxfDocumentReferences, SelectionSeesTheSpacesApartAndOpensAsTheModuleDoes) {
    const auto document = openFixture("r12-layouts.dxf");
    ASSERT_TRUE(document);
    const auto model = document->blockReferences(DxfSpace::Model);
    ASSERT_EQ(model.size(), 2u);
    EXPECT_EQ(model[0].blockName, L"DOOR");
    EXPECT_EQ(model[0].layer, L"WALLS");
    EXPECT_EQ(model[0].position, (AcGePoint3d{10, 20, 0}));
    EXPECT_EQ(model[1].blockName, L"door");
    EXPECT_EQ(model[1].layer, L"0");
    EXPECT_EQ(model[1].position, (AcGePoint3d{30, 40, 0}));
    const auto paper = document->blockReferences(DxfSpace::Paper);
    ASSERT_EQ(paper.size(), 1u);
    EXPECT_EQ(paper[0].position, (AcGePoint3d{1, 1, 0}));
    // Opened as the module opens them.
    AcDbBlockReference reference;
    ASSERT_EQ(document->openBlockReference(model[1].id, reference), Acad::eOk);
    EXPECT_EQ(reference.blockTableRecord, blockIdOf(*document, L"DOOR"));
    EXPECT_EQ(reference.position, (AcGePoint3d{30, 40, 0}));
    EXPECT_EQ(reference.scaleFactors, (AcGeScale3d{2, 3, 1}));
    EXPECT_DOUBLE_EQ(reference.rotation, std::numbers::pi / 2);
    ASSERT_EQ(document->openBlockReference(model[0].id, reference), Acad::eOk);
    EXPECT_EQ(reference.scaleFactors, (AcGeScale3d{1, 1, 1}));
    EXPECT_EQ(reference.rotation, 0.0);

    EXPECT_EQ(document->openBlockReference(AcDbObjectId(), reference), Acad::eNullObjectId);
    EXPECT_EQ(document->openBlockReference(blockIdOf(*document, L"DOOR"), reference),
              Acad::eWrongObjectType);
    EXPECT_EQ(document->openBlockReference(AcDbObjectId(model[1].id.value() + 1), reference),
              Acad::eWrongObjectType);  // the LINE after it
}

TEST(DxfDocumentTextStyles, AddedInTheFormOfEachVersion) {
    struct Case {
        std::string input;
        std::string record;
        std::string count;
    };
    const Case cases[] = {
        {readBytes(kDxfData / "r2018-small.dxf"),
         dxf("0 STYLE|5 100|330 3|100 AcDbSymbolTableRecord|100 AcDbTextStyleTableRecord|2 "
             "QTBTABLE|70      0|40 0.0|41 1.0|50 0.0|71      0|42 2.5|3 simpheb.shx|4 |0 ENDTAB",
             "\r\n"),
         dxf("100 AcDbSymbolTable|70      2|0 STYLE", "\r\n")},
        {readBytes(kDxfData / "r12-layouts.dxf"),
         dxf("0 STYLE|2 QTBTABLE|70      0|40 0.0|41 1.0|50 0.0|71      0|42 2.5|3 simpheb.shx|4 "
             "|0 ENDTAB"),
         dxf("2 STYLE|70      2|0 STYLE")},
        {r12WithHandles(), dxf("0 STYLE|5 30|2 QTBTABLE|70      0"), dxf("9 $HANDSEED|5 31")},
    };
    for (const auto& c : cases) {
        const auto document = openDrawing("plan.dxf", c.input);
        ASSERT_TRUE(document);
        AcDbObjectId style;
        EXPECT_EQ(document->getTextStyleId(L"qtbtable", style), Acad::eKeyNotFound);
        ASSERT_EQ(document->addTextStyle({L"QTBTABLE", L"simpheb.shx"}, style), Acad::eOk);
        const std::string bytes = document->toBytes();
        EXPECT_TRUE(holds(bytes, c.record));
        EXPECT_TRUE(holds(bytes, c.count));
        AcDbObjectId found;
        ASSERT_EQ(document->getTextStyleId(L"qtbtable", found), Acad::eOk);
        EXPECT_EQ(found, style);
        EXPECT_EQ(document->addTextStyle({L"QTBTable", L"x.shx"}, found),
                  Acad::eDuplicateRecordName);
        EXPECT_EQ(document->addTextStyle({L"", L"x.shx"}, found), Acad::eInvalidSymbolTableName);
    }
}

TEST(DxfDocumentBlocks, R2018RecordAndDefinitionWithOwnersAndNewHandles) {
    const auto document = openFixture("r2018-small.dxf");
    ASSERT_TRUE(document);
    AcDbObjectId record;
    ASSERT_EQ(document->addBlockTableRecord(L"QTB0001", record), Acad::eOk);
    EXPECT_EQ(document->addBlockTableRecord(L"qtb0001", record), Acad::eDuplicateRecordName);
    EXPECT_EQ(document->addBlockTableRecord(L"", record), Acad::eInvalidSymbolTableName);
    ASSERT_EQ(document->setBlockTableRecordOrigin(record, {0, 2, 0}), Acad::eOk);
    AcDbObjectId line;
    ASSERT_EQ(document->appendLine(record, {{58.8, 2, 0}, {0, 2, 0}}, line), Acad::eOk);

    const std::string bytes = document->toBytes();
    const char* eol = "\r\n";
    EXPECT_TRUE(holds(
        bytes, dxf("0 BLOCK_RECORD|5 100|330 1|100 AcDbSymbolTableRecord|100 "
                   "AcDbBlockTableRecord|2 QTB0001|340 0|70      0|280      1|281      0|0 ENDTAB",
                   eol)));
    EXPECT_TRUE(holds(bytes, dxf("100 AcDbSymbolTable|70      4|0 BLOCK_RECORD", eol)));
    EXPECT_TRUE(
        holds(bytes, dxf("0 BLOCK|5 101|330 100|100 AcDbEntity|8 0|100 AcDbBlockBegin|2 QTB0001|70 "
                         "     0|10 0.0|20 2.0|30 0.0|3 QTB0001|1 |0 LINE|5 103|330 100|100 "
                         "AcDbEntity|8 0|100 AcDbLine|10 58.8|20 2.0|30 0.0|11 0.0|21 2.0|31 0.0|0 "
                         "ENDBLK|5 102|330 100|100 AcDbEntity|8 0|100 AcDbBlockEnd|0 ENDSEC",
                         eol)));
    EXPECT_TRUE(holds(bytes, dxf("9 $HANDSEED|5 104", eol)));
    EXPECT_EQ(blockNames(*document).back(), L"QTB0001");
}

TEST(DxfDocumentBlocks, R12DefinitionWithoutHandlesOwnersOrMarkersAndAnOrigin) {
    const auto document = openFixture("r12-layouts.dxf");
    ASSERT_TRUE(document);
    AcDbObjectId record;
    ASSERT_EQ(document->addBlockTableRecord(L"QTB0001", record), Acad::eOk);
    AcDbAttributeDefinition definition;
    definition.position = {1, 0, 0};
    definition.alignmentPoint = {0, 0, 0};
    definition.textString = L"Block name";
    definition.tag = definition.prompt = L"BLOCKNAME";
    AcDbObjectId style;
    ASSERT_EQ(document->getTextStyleId(L"STANDARD", style), Acad::eOk);
    definition.textStyle = style;
    AcDbObjectId attribute;
    ASSERT_EQ(document->appendAttributeDefinition(record, definition, attribute), Acad::eOk);
    EXPECT_TRUE(
        holds(document->toBytes(),
              dxf("0 BLOCK|8 0|2 QTB0001|70      2|10 0.0|20 0.0|30 0.0|3 QTB0001|1 |0 ATTDEF|8 "
                  "0|10 1.0|20 0.0|30 0.0|40 1.0|1 Block name|41 1.0|7 STANDARD|72      0|3 "
                  "BLOCKNAME|2 BLOCKNAME|70      0|74      0|0 ENDBLK|8 0|0 ENDSEC")));
    EXPECT_EQ(blockNames(*document).back(), L"QTB0001");
    EXPECT_EQ(blockIdOf(*document, L"QTB0001"), record);
    // An origin replaces the base point.
    ASSERT_EQ(document->setBlockTableRecordOrigin(blockIdOf(*document, L"DOOR"), {-1.5, 3, 0.25}),
              Acad::eOk);
    EXPECT_TRUE(holds(document->toBytes(), dxf("2 DOOR|70      2|10 -1.5|20 3.0|30 0.25|3 DOOR")));
    EXPECT_EQ(document->setBlockTableRecordOrigin(AcDbObjectId(), {}), Acad::eNullObjectId);
}

TEST(DxfDocumentBlocks, AttributeDefinitionsOfR2010OnCarryVersionAndLock) {
    for (const char* version : {"AC1024", "AC1021", "AC1014"}) {
        const auto document = openDrawing("plan.dxf", r2018As(version));
        ASSERT_TRUE(document);
        AcDbObjectId record;
        ASSERT_EQ(document->addBlockTableRecord(L"T", record), Acad::eOk);
        AcDbAttributeDefinition definition;
        definition.position = {1, 0, 0};
        definition.alignmentPoint = {6.6, 0, 0};
        definition.horizontalMode = AcDb::kTextCenter;
        definition.textString = L"Item Price";
        definition.tag = definition.prompt = L"PRICE";
        definition.invisible = definition.preset = true;
        AcDbObjectId id;
        ASSERT_EQ(document->appendAttributeDefinition(record, definition, id), Acad::eOk);
        const std::string bytes = document->toBytes();
        const bool lock = std::string_view(version) >= "AC1024";
        const char* eol = "\r\n";
        const std::string head =
            dxf("10 6.6|20 0.0|30 0.0|40 1.0|1 Item Price|41 1.0|72      1|11 6.6|21 0.0|31 "
                "0.0|100 AcDbAttributeDefinition",
                eol);
        const std::string tail = dxf("3 PRICE|2 PRICE|70      9|74      0", eol);
        const std::string locked = dxf("280      0", eol);
        EXPECT_TRUE(holds(bytes, head + (lock ? locked : "") + tail + (lock ? locked : "") +
                                     dxf("0 ENDBLK", eol)))
            << version;
        const bool units = std::string_view(version) >= "AC1021";
        EXPECT_EQ(bytes.find(dxf("2 T|340 0|70      0|280      1", eol)) != std::string::npos,
                  units)
            << version;
        EXPECT_TRUE(holds(bytes, std::string("$ACADVER\r\n  1\r\n") + version))
            << "no silent upgrade";
    }
}

TEST(DxfDocumentBlocks, NewHandlesPassEveryHandleOfTheFile) {
    const auto document =
        openDrawing("plan.dxf", r2018As("AC1032", "20"));  // the seed lies below 51
    ASSERT_TRUE(document);
    AcDbObjectId style;
    ASSERT_EQ(document->addTextStyle({L"QTBTABLE", L"simpheb.shx"}, style), Acad::eOk);
    const std::string bytes = document->toBytes();
    EXPECT_TRUE(holds(bytes, dxf("0 STYLE|5 52", "\r\n")));
    EXPECT_TRUE(holds(bytes, dxf("9 $HANDSEED|5 53", "\r\n")));
}

TEST(DxfDocumentBlocks, LayoutEntitiesGoToTheEntitiesSection) {
    const auto document = openFixture("r2018-small.dxf");
    ASSERT_TRUE(document);
    AcDbObjectId line;
    ASSERT_EQ(
        document->appendLine(blockIdOf(*document, L"*Model_Space"), {{0, 0, 0}, {1, 1, 0}}, line),
        Acad::eOk);
    ASSERT_EQ(
        document->appendLine(blockIdOf(*document, L"*Paper_Space"), {{0, 0, 0}, {2, 2, 0}}, line),
        Acad::eOk);
    const char* eol = "\r\n";
    EXPECT_TRUE(holds(
        document->toBytes(),
        dxf("30 0.0|0 LINE|5 100|330 1F|100 AcDbEntity|8 0|100 AcDbLine|10 0.0|20 0.0|30 0.0|11 "
            "1.0|21 1.0|31 0.0|0 LINE|5 101|330 1E|100 AcDbEntity|67      1|8 0|100 AcDbLine",
            eol) +
            dxf("10 0.0|20 0.0|30 0.0|11 2.0|21 2.0|31 0.0|0 ENDSEC|0 EOF", eol)));
}

TEST(DxfDocumentInsert, R12ReferenceWithItsAttributesPlacedAndPrompted) {
    const auto document = openFixture("r12-layouts.dxf");
    ASSERT_TRUE(document);
    AcDbBlockReference reference;
    reference.blockTableRecord = blockIdOf(*document, L"DOOR");
    reference.position = {10, 20, 0};
    reference.scaleFactors = {2, 2, 1};
    reference.rotation = std::numbers::pi / 2;
    AcDbObjectId id;
    ASSERT_EQ(document->insertBlockReference(reference, id), Acad::eOk);
    // WIDTH stands at (5, 2), base point (1, 2): 4 units right of it, twice as far once scaled,
    // then turned a quarter: 8 units up from the insertion point. MAKER is constant: no attribute.
    EXPECT_TRUE(holds(document->toBytes(),
                      dxf("0 INSERT|8 0|66      1|2 DOOR|10 10.0|20 20.0|30 0.0|41 2.0|42 2.0|50 "
                          "90.0|0 ATTRIB|8 0|10 10.0|20 28.0|30 0.0|40 1.0|1 90|50 90.0|41 1.0|72  "
                          "    0|2 WIDTH|70      0|74      0|0 SEQEND|8 0|0 ENDSEC")));
    AcDbBlockReference opened;
    ASSERT_EQ(document->openBlockReference(id, opened), Acad::eOk);
    EXPECT_EQ(opened.blockTableRecord, reference.blockTableRecord);
    EXPECT_EQ(opened.position, reference.position);
    EXPECT_EQ(document->blockReferences(DxfSpace::Model).back().id, id);

    reference.blockTableRecord = blockIdOf(*document, L"*Model_Space");
    EXPECT_EQ(document->insertBlockReference(reference, id), Acad::eInvalidInput);
    reference.blockTableRecord = AcDbObjectId();
    EXPECT_EQ(document->insertBlockReference(reference, id), Acad::eKeyNotFound);
    // The prompts leave MAKER out.
    const auto prompts = document->attributePrompts(blockIdOf(*document, L"DOOR"));
    ASSERT_EQ(prompts.size(), 1u);
    EXPECT_EQ(prompts[0].tag, L"WIDTH");
    EXPECT_EQ(prompts[0].defaultValue, L"90");
    EXPECT_TRUE(document->attributePrompts(blockIdOf(*document, L"*Model_Space")).empty());
    EXPECT_TRUE(document->attributePrompts(AcDbObjectId()).empty());
}

TEST(DxfDocumentInsert, R2018ReferenceOwnedByModelSpaceAndOwningItsAttributes) {
    const auto document = openFixture("r2018-small.dxf");
    ASSERT_TRUE(document);
    AcDbBlockReference reference;
    reference.blockTableRecord = blockIdOf(*document, L"Door");
    reference.position = {1, 2, 0};
    AcDbObjectId id;
    ASSERT_EQ(document->insertBlockReference(reference, id), Acad::eOk);
    // The definition is centred, so both points follow the alignment point (5, 2) less the base (1,
    // 2).
    EXPECT_TRUE(
        holds(document->toBytes(),
              dxf("0 INSERT|5 100|330 1F|100 AcDbEntity|8 0|100 AcDbBlockReference|66      1|2 "
                  "Door|10 1.0|20 2.0|30 0.0|0 ATTRIB|5 101|330 100|100 AcDbEntity|8 0|100 "
                  "AcDbText|10 5.0|20 2.0|30 0.0|40 0.5|1 90|41 1.0|7 Standard|72      1|11 5.0|21 "
                  "2.0|31 0.0|100 AcDbAttribute|280      0|2 WIDTH|70      0|74      0|280      "
                  "0|0 SEQEND|5 102|330 100|100 AcDbEntity|8 0|0 ENDSEC",
                  "\r\n")));
    // Given values replace the defaults.
    ASSERT_EQ(document->insertBlockReference(reference, {L"Breite \u00e4"}, id), Acad::eOk);
    EXPECT_TRUE(holds(document->toBytes(), dxf("40 0.5|1 Breite \xc3\xa4|41 1.0", "\r\n")));
}

TEST(DxfDocumentInsert, NumbersDxfCannotHoldAreRefusedBeforeAnyChange) {
    const auto document = openFixture("r12-layouts.dxf");
    ASSERT_TRUE(document);
    const double huge = std::numeric_limits<double>::max();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const AcDbObjectId door = blockIdOf(*document, L"DOOR");
    AcDbBlockReference reference;
    reference.blockTableRecord = door;
    reference.scaleFactors = {huge, huge,
                              1};  // the attribute's offset from the base point overflows
    AcDbObjectId id;
    EXPECT_EQ(document->insertBlockReference(reference, id), Acad::eInvalidInput);
    EXPECT_EQ(document->appendLine(door, {{nan, 0, 0}, {1, 1, 0}}, id), Acad::eInvalidInput);
    AcDbAttributeDefinition definition;
    definition.height = std::numeric_limits<double>::infinity();
    EXPECT_EQ(document->appendAttributeDefinition(door, definition, id), Acad::eInvalidInput);
    EXPECT_EQ(document->setBlockTableRecordOrigin(door, {0, nan, 0}), Acad::eInvalidInput);
    EXPECT_EQ(document->toBytes(), readBytes(kDxfData / "r12-layouts.dxf"));
}

TEST(DxfDocumentUndo, TakingBackTheOnlyInsertGivesTheFilesOwnBytesAndCountsAsAnEdit) {
    for (const char* name : {"r12-layouts.dxf", "r2018-small.dxf"}) {
        SCOPED_TRACE(name);
        const auto document = openFixture(name);
        ASSERT_TRUE(document);
        const std::string before = document->toBytes();
        AcDbBlockReference reference;
        reference.blockTableRecord = document->blockReferences(DxfSpace::Model).empty()
                                         ? blockIdOf(*document, L"DOOR")
                                         : blockIdOf(*document, L"Door");
        EXPECT_EQ(document->editCount(), 0u);
        AcDbObjectId inserted;
        ASSERT_EQ(document->insertBlockReference(reference, inserted), Acad::eOk);
        ASSERT_NE(document->toBytes(), before);
        const auto afterInsert = document->editCount();
        EXPECT_GT(afterInsert, 0u);
        AcDbObjectId erased;
        ASSERT_EQ(document->eraseLastInsertedReference(erased), Acad::eOk);
        // Taking back is an edit too; reading a variable is none.
        EXPECT_GT(document->editCount(), afterInsert);
        const auto afterErase = document->editCount();
        resbuf value;
        ASSERT_EQ(document->getVar(L"DWGNAME", value), RTNORM);
        EXPECT_EQ(document->editCount(), afterErase);
        EXPECT_EQ(erased, inserted);
        EXPECT_EQ(document->toBytes(), before);
        AcDbBlockReference opened;
        EXPECT_EQ(document->openBlockReference(erased, opened), Acad::eWasErased);
        EXPECT_EQ(document->eraseLastInsertedReference(erased), Acad::eKeyNotFound);
    }
}

TEST(DxfDocumentUndo, R12WithHandlesGetsItsSeedBack) {
    const auto document = openDrawing("r12-handles.dxf", r12WithHandles());
    ASSERT_TRUE(document);
    const std::string before = document->toBytes();
    AcDbBlockReference reference;
    reference.blockTableRecord = blockIdOf(*document, L"DOOR");
    AcDbObjectId id;
    ASSERT_EQ(document->insertBlockReference(reference, id), Acad::eOk);
    ASSERT_EQ(document->eraseLastInsertedReference(id), Acad::eOk);
    EXPECT_EQ(document->toBytes(), before);
    // The next insert takes the same handle the taken-back one had.
    ASSERT_EQ(document->insertBlockReference(reference, id), Acad::eOk);
    EXPECT_TRUE(holds(document->toBytes(), dxf("0 INSERT|5 30|8 0")));
}

TEST(DxfDocumentUndo, InsertsComeBackLastFirstAndLeaveOtherEditsAlone) {
    const auto document = openFixture("r2018-small.dxf");
    ASSERT_TRUE(document);
    const std::size_t references = document->blockReferences(DxfSpace::Model).size();
    AcDbBlockReference reference;
    reference.blockTableRecord = blockIdOf(*document, L"Door");
    AcDbObjectId first;
    AcDbObjectId second;
    ASSERT_EQ(document->insertBlockReference(reference, first), Acad::eOk);
    reference.position = {7, 7, 0};
    ASSERT_EQ(document->insertBlockReference(reference, second), Acad::eOk);
    AcDbObjectId style;
    ASSERT_EQ(document->addTextStyle({L"QTBTABLE", L"simpheb.shx"}, style), Acad::eOk);

    AcDbObjectId erased;
    ASSERT_EQ(document->eraseLastInsertedReference(erased), Acad::eOk);
    EXPECT_EQ(erased, second);
    const std::string bytes = document->toBytes();
    // The style took a handle after the insert: the seed stays where the style left it.
    EXPECT_TRUE(holds(bytes, dxf("9 $HANDSEED|5 107", "\r\n")));
    EXPECT_TRUE(holds(bytes, dxf("2 QTBTABLE", "\r\n")));
    EXPECT_TRUE(holds(bytes, dxf("2 Door|10 0.0|20 0.0|30 0.0", "\r\n")));
    EXPECT_FALSE(holds(bytes, dxf("2 Door|10 7.0", "\r\n")));
    EXPECT_EQ(document->blockReferences(DxfSpace::Model).size(), references + 1);

    ASSERT_EQ(document->eraseLastInsertedReference(erased), Acad::eOk);
    EXPECT_EQ(erased, first);
    EXPECT_EQ(document->blockReferences(DxfSpace::Model).size(), references);
}

TEST(DxfDocumentFile, SectionsAndTablesAreMadeWhenTheFileLacksThem) {
    const auto document =
        openDrawing("tiny.dxf", "  0\nSECTION\n  2\nENTITIES\n  0\nENDSEC\n  0\nEOF\n");
    ASSERT_TRUE(document);
    AcDbObjectId style;
    ASSERT_EQ(document->addTextStyle({L"QTBTABLE", L"simpheb.shx"}, style), Acad::eOk);
    AcDbObjectId record;
    ASSERT_EQ(document->addBlockTableRecord(L"QTB0001", record), Acad::eOk);
    EXPECT_EQ(document->toBytes(),
              dxf("0 SECTION|2 TABLES|0 TABLE|2 STYLE|70      1|0 STYLE|2 QTBTABLE|70      0|40 "
                  "0.0|41 1.0|50 0.0|71      0|42 2.5|3 simpheb.shx|4 |0 ENDTAB|0 ENDSEC|0 "
                  "SECTION|2 BLOCKS|0 BLOCK|8 0|2 QTB0001|70      0|10 0.0|20 0.0|30 0.0|3 "
                  "QTB0001|1 |0 ENDBLK|8 0|0 ENDSEC|0 SECTION|2 ENTITIES|0 ENDSEC|0 EOF"));
}

TEST(DxfDocumentFile, UnchangedDrawingsWriteTheirOwnBytesAndTellTheirForm) {
    for (const char* name : {"r12-layouts.dxf", "r2018-small.dxf"}) {
        const auto document = openFixture(name);
        ASSERT_TRUE(document);
        EXPECT_EQ(document->toBytes(), readBytes(kDxfData / name)) << name;
        EXPECT_FALSE(document->isBinary());
    }
    EXPECT_EQ(openFixture("r12-layouts.dxf")->version(), "AC1009");
    EXPECT_EQ(openDrawing("tiny.dxf", "  0\nEOF\n")->version(), "");
}

TEST(DxfDocumentVariables, R12KeepsThemInItsHeader) {
    const auto document = openFixture("r12-layouts.dxf");
    ASSERT_TRUE(document);
    resbuf value;
    ASSERT_EQ(document->getVar(L"OSMODE", value), RTNORM);
    EXPECT_EQ(value.restype, RTSHORT);
    EXPECT_EQ(value.resval.rint, 37);
    ASSERT_EQ(document->getVar(L"attreq", value), RTNORM);
    EXPECT_EQ(value.resval.rint, 1);
    EXPECT_EQ(document->setVar(L"OSMODE", resbuf::shortValue(0)), RTNORM);
    EXPECT_EQ(document->setVar(L"ATTREQ", resbuf::shortValue(0)), RTNORM);
    ASSERT_EQ(document->getVar(L"OSMODE", value), RTNORM);
    EXPECT_EQ(value.resval.rint, 0);
    EXPECT_TRUE(holds(document->toBytes(),
                      dxf("9 $ATTREQ|70      0|9 $SNAPMODE|70      0|9 $OSMODE|70      0")));
    ASSERT_EQ(document->getVar(L"DWGNAME", value), RTNORM);
    EXPECT_EQ(value.restype, RTSTR);
    EXPECT_EQ(value.resval.rstring, L"r12-layouts.dxf");
    EXPECT_EQ(document->setVar(L"DWGNAME", resbuf::stringValue(L"x.dxf")), RTERROR);
    EXPECT_EQ(document->setVar(L"SNAPMODE", resbuf::realValue(1.0)), RTERROR);
    EXPECT_EQ(document->getVar(L"CMDECHO", value), RTERROR);
}

TEST(DxfDocumentVariables, R12WithoutThemGainsThemInItsHeader) {
    const auto document =
        openDrawing("tiny.dxf", "  0\nSECTION\n  2\nENTITIES\n  0\nENDSEC\n  0\nEOF\n");
    ASSERT_TRUE(document);
    resbuf value;
    ASSERT_EQ(document->getVar(L"ATTREQ", value), RTNORM);
    EXPECT_EQ(value.resval.rint, 1);
    ASSERT_EQ(document->setVar(L"SNAPMODE", resbuf::shortValue(1)), RTNORM);
    EXPECT_EQ(document->toBytes(), dxf("0 SECTION|2 HEADER|9 $SNAPMODE|70      1|0 ENDSEC|0 "
                                       "SECTION|2 ENTITIES|0 ENDSEC|0 EOF"));
}

TEST(DxfDocumentVariables, FromR2000OnTheyLiveInTheSession) {
    const auto document = openFixture("r2018-small.dxf");
    ASSERT_TRUE(document);
    resbuf value;
    ASSERT_EQ(document->getVar(L"ATTREQ", value), RTNORM);
    EXPECT_EQ(value.resval.rint, 1);
    ASSERT_EQ(document->setVar(L"ATTREQ", resbuf::shortValue(0)), RTNORM);
    ASSERT_EQ(document->getVar(L"ATTREQ", value), RTNORM);
    EXPECT_EQ(value.resval.rint, 0);
    EXPECT_EQ(document->toBytes(), readBytes(kDxfData / "r2018-small.dxf"));
}

}  // namespace

// The module's price table drawn into real drawings of every version through the DXF database, then
// read back by Debian's ezdxf: the block, its lines and attribute definitions, and the reference
// with its attributes must be what the in-memory database of the module's tests records for the
// same calls; the source the table records reads back as it was written, ASCII and binary.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <numbers>

#include "bom/PriceTable.h"
#include "bom/TableSource.h"
#include "host/dxf/dxfdocument.h"
#include "host/scripted/memorydatabase.h"
#include "host/scripted/scriptededitor.h"
#include "tests/TempFolder.h"
#include "tests/host/TestName.h"
#include "tests/host/dxf/DxfTestSupport.h"

namespace {

const std::vector<BomRow> kRows{{L"door", L"10.00", L"3", L"front door", L"30.00"},
                                {L"tür", L"12.50", L"2", L"Tür aus Eiche", L"25.00"},
                                {L"window", L"7.25", L"4", L"\u05d7\u05dc\u05d5\u05df", L"29.00"},
                                {L"Summary:", L"", L"", L"", L"84.00"}};

struct Case {
    const char* file;
    AcGePoint3d corner;
    double scale;
    double rotationDegrees;
};

void PrintTo(const Case& c, std::ostream* out) { *out << c.file; }

std::string number(double value) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.17g", value);
    return buffer;
}

std::string textRow(const char* kind, const AcDbAttributeDefinition& a) {
    const AcGePoint3d& at = a.horizontalMode == AcDb::kTextLeft ? a.position : a.alignmentPoint;
    return std::string(kind) + "\t" + utf8(a.tag) + "\t" + std::to_string(a.horizontalMode) + "\t" +
           utf8(a.textString) + "\t" + number(at.x) + "\t" + number(at.y) + "\n";
}

// What the calculation command does: the style, the next table block, the table, and ".INSERT".
std::wstring drawAndInsert(AcDbDatabase& database, const AcDbBlockReference& placement) {
    acdbHostApplicationServices()->setWorkingDatabase(&database);
    EnsureTableTextStyle();
    std::wstring name;
    PriceTableExtent extent;
    AcDbBlockReference reference = placement;
    AcDbObjectId id;
    const bool done =
        NextTableBlockName(name) &&
        DrawPriceTable(kRows, true, name.c_str(), kTableTextStyle, 1.0, extent) == 1 &&
        database.getBlockTableRecordId(name, reference.blockTableRecord) == Acad::eOk &&
        database.insertBlockReference(reference, id) == Acad::eOk;
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    return done ? name : L"";
}

// The expected reading, from the in-memory database given the same calls.
std::string expectations(const MemoryDatabase& memory, const std::wstring& name) {
    std::string out = "block\t" + utf8(name) + "\n";
    const MemoryDatabase::BlockRecord* block = memory.recordNamed(name);
    for (const auto& entity : block->entities) {
        if (const auto* line = std::get_if<AcDbLine>(&entity)) {
            out += "line\t" + number(line->startPoint.x) + "\t" + number(line->startPoint.y) +
                   "\t" + number(line->endPoint.x) + "\t" + number(line->endPoint.y) + "\n";
        }
    }
    for (const auto& entity : block->entities) {
        if (const auto* definition = std::get_if<AcDbAttributeDefinition>(&entity))
            out += textRow("attdef", *definition);
    }
    const std::vector<MemoryDatabase::Reference> references = memory.modelSpaceReferences();
    const MemoryDatabase::Reference& reference = references.back();
    const AcDbBlockReference& r = reference.reference;
    out += "insert\t" + utf8(name) + "\t" + number(r.position.x) + "\t" + number(r.position.y) +
           "\t" + number(r.scaleFactors.sx) + "\t" + number(r.scaleFactors.sy) + "\t" +
           number(r.rotation * 180.0 / std::numbers::pi) + "\n";
    for (const auto& attribute : reference.attributes) out += textRow("attrib", attribute);
    return out;
}

class DxfPriceTableTest : public ::testing::TestWithParam<Case> {
protected:
    void SetUp() override {
        if (corpusFolder().empty()) GTEST_SKIP() << "the corpus ../shared/corpus is not there";
        if (!haveEzdxf())
            GTEST_SKIP() << "/usr/bin/python3 cannot import ezdxf (Debian python3-ezdxf)";
    }

    ScriptedEditor m_editor;
    TempFolder m_folder;
};

TEST_P(DxfPriceTableTest, EzdxfReadsTheTableAndItsReferenceAsDrawn) {
    const Case& c = GetParam();
    const std::filesystem::path input = corpusFolder() / "files" / c.file;
    AcDbBlockReference placement;
    placement.position = c.corner;
    placement.scaleFactors = AcGeScale3d{c.scale, c.scale, 1.0};
    placement.rotation = c.rotationDegrees * std::numbers::pi / 180.0;

    auto read = DxfDocument::readFile(input);
    ASSERT_TRUE(read.isOk()) << read.errorString();
    DxfDocument& document = *read.value();
    const std::wstring name = drawAndInsert(document, placement);
    ASSERT_EQ(name, L"QTB0001");
    MemoryDatabase memory;
    ASSERT_EQ(drawAndInsert(memory, placement), name);
    EXPECT_TRUE(m_editor.calls().empty());

    // What the table was counted from, in every text and number form the extended data has.
    TableSource source;
    source.selection = TableSelection::Filtered;
    source.window = AcDbSelectionWindow{-1.5, 0, 1e6, 2.25};
    source.layers = {L"0", L"Möbel " + std::wstring(40, L'x')};
    source.showPrices = false;
    source.scale = c.scale;
    source.sortColumn = 2;
    acdbHostApplicationServices()->setWorkingDatabase(&document);
    ASSERT_TRUE(RecordTableSource(name, source, kRows));
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    source.rowsDigest = DigestOfRows(kRows, false);

    const std::string written = m_folder.path("written.dxf");
    const DxfStatus saved = document.saveAs(written);
    ASSERT_TRUE(saved.isOk()) << saved.errorString();
    m_folder.write("expected.tsv", expectations(memory, name));

    auto reread = DxfDocument::readFile(written);
    ASSERT_TRUE(reread.isOk()) << reread.errorString();
    EXPECT_EQ(reread.value()->version(), document.version());
    EXPECT_EQ(reread.value()->isBinary(), document.isBinary());
    AcDbObjectId block;
    ASSERT_EQ(reread.value()->getBlockTableRecordId(name, block), Acad::eOk);
    EXPECT_EQ(ReadTableSource(*reread.value(), block), source);

    const ProcessResult check = runPython(
        std::filesystem::path(TARNWICK_SOURCE_DIR) / "tests/host/dxf/check_price_table.py",
        {input.string(), written, m_folder.path("expected.tsv")});
    EXPECT_EQ(check.exitCode, 0) << check.out << check.err;
    EXPECT_EQ(check.out, "ok\n");
}

INSTANTIATE_TEST_SUITE_P(
    Versions, DxfPriceTableTest,
    ::testing::Values(Case{"acadsharp-sample-r12-ascii.dxf", {100, 200, 0}, 2.0, 0},
                      Case{"libredwg-example-r12.dxf", {-50, 10, 0}, 1.0, 0},
                      Case{"ezdxf-minimal-ac1009.dxf", {0, 0, 0}, 1.0, 0},
                      Case{"libredwg-example-r14.dxf", {1000, 2000, 0}, 0.5, 0},
                      Case{"libredwg-example-2000.dxf", {3, 4, 0}, 1.5, 0},
                      Case{"libredwg-example-2007.dxf", {10, 20, 0}, 1.0, 30},
                      Case{"libredwg-example-2018.dxf", {7.25, -3.5, 0}, 3.0, 0},
                      Case{"acadsharp-sample-r2004-binary.dxf", {1, 1, 0}, 1.0, 0},
                      Case{"netdxf-sample-binary.dxf", {5, 5, 0}, 2.0, 90}),
    [](const auto& info) { return testName(info.param.file); });

}  // namespace

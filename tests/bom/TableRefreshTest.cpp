// Price tables that record their source: the source kept as extended data and read back, each
// change to the drawing or the list named when the table is checked, the table drawn again in
// place, and tables that recorded nothing or whose list is gone.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "bom/BomCalculation.h"
#include "bom/PriceTable.h"
#include "bom/TableRefresh.h"
#include "host/scripted/memorydatabase.h"
#include "host/scripted/scriptededitor.h"
#include "tests/TempFolder.h"

namespace {

constexpr const char* kList =
    "Door|450|Interior door\n"
    "Chair|145|Swivel chair\n"
    "Lamp|30|Desk lamp\n";

class TableRefreshTest : public ::testing::Test {
protected:
    void SetUp() override {
        acdbHostApplicationServices()->setWorkingDatabase(&m_database);
        m_folder.write("prices.prc", kList);
        for (int i = 0; i < 3; ++i)
            m_doors.push_back(m_database.addReference(L"Door", {1.0 * i, 0, 0}));
        for (int i = 0; i < 2; ++i)
            m_chairs.push_back(m_database.addReference(L"Chair", {1.0 * i, 5, 0}, L"FURNITURE"));
    }
    void TearDown() override { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    // A table made as the calculation's "Insert" makes it: the references selected are counted
    // against the list, drawn, the source recorded; then the table is placed away from the plan.
    // `adjust` turns the source into one the console records (a window, hidden prices).
    void MakeTable(bool wholeSpace, bool showPrices = true,
                   const std::function<void(TableSource&)>& adjust = {}) {
        BomCalculation calculation;
        ASSERT_TRUE(calculation.LoadPriceList(m_folder.wpath("prices.prc")));
        // The whole space is what tarnwick-calc selects; by hand the doors and the chairs.
        std::vector<AcDbObjectId> selected = m_doors;
        selected.insert(selected.end(), m_chairs.begin(), m_chairs.end());
        if (wholeSpace) {
            ASSERT_EQ(m_database.getModelSpaceEntityIds(selected), Acad::eOk);
        }
        m_editor.selectWholeSpace(wholeSpace);
        m_editor.answerSelection(RTNORM, selected);
        ASSERT_TRUE(calculation.CountSelection());
        const std::vector<BomRow> rows = FillFromResults(calculation.Results(), false).rows;
        EnsureTableTextStyle();
        std::wstring name;
        ASSERT_TRUE(NextTableBlockName(name));
        PriceTableExtent extent;
        ASSERT_EQ(DrawPriceTable(rows, showPrices, name.c_str(), kTableTextStyle, 1.0, extent), 1);
        TableSource source = *calculation.CountedSource();
        source.priceList = m_folder.wpath("prices.prc");
        source.showPrices = showPrices;
        if (adjust) adjust(source);
        ASSERT_TRUE(RecordTableSource(name, source, rows));
        m_table = m_database.addReference(name, {50, 0, 0});
    }

    // The check of the one table, as a line (empty when current).
    std::wstring Check() {
        const std::vector<PriceTableCheck> checks = CheckPriceTables();
        EXPECT_EQ(checks.size(), 1u);
        return checks.empty() ? L"none" : DescribeTableCheck(checks.front());
    }

    // Draws the table again and checks that it then shows what was counted, reference included.
    void Refresh() {
        const PriceTableCheck check = CheckPriceTables().front();
        ASSERT_EQ(RefreshPriceTable(check), 1);
        EXPECT_EQ(Check(), L"");
        EXPECT_EQ(ReadTableRows(m_database, check.block),
                  ShownTableRows(check.rows, check.source.showPrices));
        const auto* block = m_database.record(check.block);
        std::size_t definitions = 0;
        for (const auto& entity : block->entities)
            definitions += std::holds_alternative<AcDbAttributeDefinition>(entity) ? 1 : 0;
        for (const auto& reference : m_database.modelSpaceReferences()) {
            if (reference.reference.blockTableRecord == check.block) {
                EXPECT_EQ(reference.attributes.size(), definitions);
            }
        }
    }

    MemoryDatabase m_database;
    ScriptedEditor m_editor;
    TempFolder m_folder;
    std::vector<AcDbObjectId> m_doors;
    std::vector<AcDbObjectId> m_chairs;
    AcDbObjectId m_table;
};

TEST_F(TableRefreshTest, TheSourceIsKeptAsExtendedDataAndReadBackWhole) {
    TableSource source;
    source.priceList = L"/plans/" + std::wstring(70, L'p') + L"/prices.prc";  // several pieces
    source.priceListHash = L"0123456789abcdef";
    source.selection = TableSelection::Picked;
    source.window = AcDbSelectionWindow{0, -1.5, 20, 12};
    source.layers = {L"FURNITURE", L"Ébauche " + std::wstring(40, L'x')};
    source.handles = {L"1F", L"2A0"};
    source.points = {{1, 2, 0}, {1, 2, 0}};
    source.showPrices = false;
    source.scale = 0.25;
    source.nested = true;
    source.recordNames = true;
    source.onlyPriced = true;
    source.sortColumn = 2;
    source.sortAscending = false;
    source.rowsDigest = L"fedcba9876543210";
    const std::vector<resbuf> items = TableSourceXData(source);
    EXPECT_EQ(ReadTableSourceXData(items), source);
    for (const resbuf& item : items) {
        if (item.restype == 1000) {
            EXPECT_LE(item.resval.rstring.size(), 30u);
        }
    }

    // Data that is not a source in this form is no source at all.
    const std::vector<std::function<void(std::vector<resbuf>&)>> breakages = {
        [](std::vector<resbuf>& d) { d.front().resval.rint = 2; },        // another format
        [](std::vector<resbuf>& d) { d[1].resval.rstring = L"COLOUR"; },  // an unknown key
        [](std::vector<resbuf>& d) { d.pop_back(); },                     // a key without value
        [](std::vector<resbuf>& d) { d.erase(d.begin() + 2); },           // a text without "{"
        [](std::vector<resbuf>& d) { d.clear(); },
    };
    for (std::size_t i = 0; i < breakages.size(); ++i) {
        std::vector<resbuf> broken = items;
        breakages[i](broken);
        EXPECT_EQ(ReadTableSourceXData(broken), std::nullopt) << i;
    }
}

// What an edit reaches: the drawing, the folder of the list, the chairs of the plan.
struct Plan {
    MemoryDatabase& database;
    TempFolder& folder;
    const std::vector<AcDbObjectId>& chairs;
};

struct ChangeCase {
    const char* name;
    bool wholeSpace;  // else the references are picked
    std::function<void(Plan)> edit;
    const wchar_t* line;  // empty: the table stays current
};

const ChangeCase kChanges[] = {
    {"DoorAdded", true,
     [](Plan p) {
         p.database.addReference(L"DOOR", {9, 9, 0});
     },
     L"QTB0001 is out of date: door 3 \u2192 4"},
    {"PickedChairErased", false, [](Plan p) { p.database.eraseEntity(p.chairs[0]); },
     L"QTB0001 is out of date: chair 2 \u2192 1"},
    {"BlockNeverPriced", true, [](Plan p) { p.database.addReference(L"Plant"); },
     L"QTB0001 is out of date: plant added (1)"},
    {"PriceChanged", false,
     [](Plan p) {
         p.folder.write("prices.prc",
                        "Door|470|Interior door\nChair|145|Swivel chair\nLamp|30|Desk lamp\n");
     },
     L"QTB0001 is out of date: door 450.00 \u2192 470.00 (prices.prc changed)"},
    {"LineRemoved", false,
     [](Plan p) { p.folder.write("prices.prc", "Door|450|Interior door\nLamp|30|Desk lamp\n"); },
     L"QTB0001 is out of date: chair 145.00 \u2192 0.00, no longer in the list (prices.prc "
     L"changed)"},
    {"UnusedLineRemoved", false,
     [](Plan p) {
         p.folder.write("prices.prc", "Door|450|Interior door\nChair|145|Swivel chair\n");
     },
     L"QTB0001 is out of date: lamp removed (prices.prc changed)"},
    {"DescriptionChangedAndDoorAdded", true,
     [](Plan p) {
         p.folder.write("prices.prc",
                        "Door|450|Oak door\nChair|145|Swivel chair\nLamp|30|Desk lamp\n");
         p.database.addReference(L"Door");
     },
     L"QTB0001 is out of date: door 3 \u2192 4; door \"Interior door\" \u2192 \"Oak door\" "
     L"(prices.prc changed)"},
    // Picked references are the table's: one added beside them is not.
    {"DoorAddedBesideThePicked", false, [](Plan p) { p.database.addReference(L"Door"); }, L""},
    // A list saved again with the same bytes is the same list.
    {"ListWrittenAgain", false, [](Plan p) { p.folder.write("prices.prc", kList); }, L""},
};

class TableChangeTest : public TableRefreshTest,
                        public ::testing::WithParamInterface<ChangeCase> {};

TEST_P(TableChangeTest, IsNamedWhenCheckedAndGoneWhenRefreshed) {
    const ChangeCase& change = GetParam();
    MakeTable(change.wholeSpace);
    EXPECT_EQ(Check(), L"");
    change.edit(Plan{m_database, m_folder, m_chairs});
    EXPECT_EQ(Check(), change.line);
    if (*change.line != L'\0') Refresh();
}

INSTANTIATE_TEST_SUITE_P(Changes, TableChangeTest, ::testing::ValuesIn(kChanges),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(TableRefreshTest, AReferenceMovedOutOfTheRecordedWindowOrOffTheLayersLeavesTheCount) {
    MakeTable(false, true, [](TableSource& source) {
        source.selection = TableSelection::Filtered;
        source.window = AcDbSelectionWindow{-1, -1, 10, 10};
        source.layers = {L"0", L"furniture"};
        source.handles.clear();
    });
    EXPECT_EQ(Check(), L"");
    m_database.moveReference(m_doors[1], {30, 30, 0});
    m_database.addReference(L"Chair", {2, 2, 0}, L"ELECTRICAL");
    EXPECT_EQ(Check(), L"QTB0001 is out of date: door 3 \u2192 2");
    Refresh();
}

TEST_F(TableRefreshTest, WithPricesHiddenOnlyWhatTheTableShowsCounts) {
    MakeTable(true, false);
    m_folder.write("prices.prc",
                   "Door|470|Interior door\nChair|145|Swivel chair\nLamp|30|Desk lamp\n");
    EXPECT_EQ(Check(), L"");
    m_database.addReference(L"Door");
    EXPECT_EQ(Check(), L"QTB0001 is out of date: door 3 \u2192 4 (prices.prc changed)");
    Refresh();
    for (const BomRow& row : ReadTableRows(m_database, CheckPriceTables().front().block)) {
        EXPECT_EQ(row[kPriceColumn], L"");
        EXPECT_EQ(row[kTotalColumn], L"");
    }
}

TEST_F(TableRefreshTest, ATableFromBeforeOrWithoutItsListIsSaidSoAndLeftAsItIs) {
    EnsureTableTextStyle();
    PriceTableExtent extent;
    ASSERT_EQ(DrawPriceTable({}, true, L"QTB0001", kTableTextStyle, 1.0, extent), 1);
    MakeTable(true);
    std::filesystem::remove(m_folder.path("prices.prc"));
    const std::vector<PriceTableCheck> checks = CheckPriceTables();
    ASSERT_EQ(checks.size(), 2u);
    EXPECT_EQ(checks[0].name, L"QTB0001");
    EXPECT_EQ(checks[0].state, TableState::SourceUnknown);
    EXPECT_EQ(DescribeTableCheck(checks[0]), L"");
    EXPECT_EQ(checks[1].state, TableState::ListMissing);
    EXPECT_EQ(DescribeTableCheck(checks[1]), L"QTB0002: its price list " +
                                                 m_folder.wpath("prices.prc") +
                                                 L" cannot be read: no such file or directory");
    EXPECT_EQ(RefreshPriceTable(checks[0]), 0);
    EXPECT_EQ(RefreshPriceTable(checks[1]), 0);
    // A list given in its place is counted against, and the table records it once redrawn.
    m_folder.write("other.prc", "Door|500|Interior door\n");
    const PriceTableCheck check = CheckPriceTables(m_folder.wpath("other.prc"))[1];
    EXPECT_EQ(DescribeTableCheck(check),
              L"QTB0002 is out of date: door 450.00 \u2192 500.00; chair 145.00 \u2192 0.00, no "
              L"longer in the list; lamp removed (other.prc changed)");
    ASSERT_EQ(RefreshPriceTable(check), 1);
    EXPECT_EQ(CheckPriceTables()[1].state, TableState::Current);
}

// Tables are numbered as they are made: a later table's reference was not there to be counted.
TEST_F(TableRefreshTest, ATableDoesNotCountItselfNorLaterTables) {
    MakeTable(true);
    MakeTable(true);
    const std::vector<PriceTableCheck> checks = CheckPriceTables();
    ASSERT_EQ(checks.size(), 2u);
    EXPECT_EQ(checks[0].state, TableState::Current);
    EXPECT_EQ(checks[1].state, TableState::Current);
    EXPECT_TRUE(IsCountedForTable(L"qtb0001", L"QTB0002"));
    EXPECT_FALSE(IsCountedForTable(L"qtb0002", L"QTB0002"));
}

}  // namespace

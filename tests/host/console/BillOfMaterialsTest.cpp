// Tallies of several drawings counted through the module into one bill of materials: each
// drawing's quantity, the variants behind a row, and the grand total as the sum of shown totals.
#include <gtest/gtest.h>

#include "host/console/billofmaterials.h"
#include "host/scripted/scriptededitor.h"
#include "tests/TempFolder.h"

namespace {

using Tallies = std::vector<std::pair<std::string, std::vector<TalliedBlock>>>;

// Counted drawings (which own their documents, so cannot be copied out of a list) from tallies.
std::vector<CountedDrawing> drawings(Tallies tallies) {
    std::vector<CountedDrawing> counted(tallies.size());
    for (std::size_t i = 0; i < tallies.size(); ++i) {
        counted[i].path = tallies[i].first;
        counted[i].tally.blocks = std::move(tallies[i].second);
    }
    return counted;
}

class BillOfMaterialsTest : public ::testing::Test {
protected:
    BillOfMaterials count(const std::string& list, Tallies tallies) {
        m_folder.write("list.prc", list);
        BomCalculation calculation;
        EXPECT_TRUE(calculation.LoadPriceList(m_folder.wpath("list.prc")));
        auto bill = countBillOfMaterials(calculation, drawings(std::move(tallies)));
        EXPECT_TRUE(bill.isOk()) << bill.errorString();
        return bill.isOk() ? bill.takeValue() : BillOfMaterials{};
    }

    ScriptedEditor m_editor;
    TempFolder m_folder;
};

TEST_F(BillOfMaterialsTest, KeepsEachDrawingsQuantityBesideTheTotal) {
    const BillOfMaterials bill =
        count("Chair|10.10|oak\nDesk|100|\n",
              {{"a.dxf", {{L"CHAIR", 2, {L"*U1"}, false}, {L"Lamp", 1, {}, false}}},
               {"b.dxf", {{L"Lamp", 4, {}, false}, {L"chair", 3, {L"*U7", L"*U1"}, false},
                                 {L"*U9", 1, {}, true}}}});
    EXPECT_EQ(bill.drawings, (std::vector<std::string>{"a.dxf", "b.dxf"}));
    ASSERT_EQ(bill.lines.size(), 4u);
    EXPECT_EQ(bill.lines[0].cells, (BomRow{L"chair", L"10.10", L"5", L"oak", L"50.50"}));
    EXPECT_EQ(bill.lines[0].quantities, (std::vector<std::int64_t>{2, 3}));
    EXPECT_EQ(bill.lines[0].variants, (std::vector<std::wstring>{L"*U1", L"*U7"}));
    EXPECT_EQ(bill.lines[1].cells, (BomRow{L"desk", L"100.00", L"0", L"", L"0.00"}));
    EXPECT_EQ(bill.lines[1].quantities, (std::vector<std::int64_t>{0, 0}));
    EXPECT_EQ(bill.lines[2].cells, (BomRow{L"lamp", L"0.00", L"5", L"", L"0.00"}));
    EXPECT_EQ(bill.lines[2].quantities, (std::vector<std::int64_t>{1, 4}));
    EXPECT_EQ(bill.lines[3].cells[kNameColumn], L"*u9");
    EXPECT_TRUE(bill.lines[3].unlinked);
    EXPECT_FALSE(bill.lines[0].unlinked);
    EXPECT_EQ(bill.shown.rows.back(), (BomRow{L"Summary:", L"", L"", L"", L"50.50"}));
    EXPECT_EQ(bill.total, L"50.50");
}

TEST_F(BillOfMaterialsTest, TheTotalIsTheSumOfTheTotalsAsShown) {
    // Each row's total shows 0.01; the module's summary of the unrounded totals shows 0.01 too.
    const BillOfMaterials bill = count("A|0.005|\nB|0.005|\nC|0.005|\n",
                                       {{"a.dxf", {{L"a", 1, {}, false}, {L"b", 1, {}, false},
                                                          {L"c", 1, {}, false}}}});
    EXPECT_EQ(bill.shown.rows.back()[kTotalColumn], L"0.01");
    EXPECT_EQ(bill.total, L"0.03");
}

TEST_F(BillOfMaterialsTest, ALaterListRowTakesTheCountsOfEveryDrawing) {
    const BillOfMaterials bill = count("Door|10|front\nDOOR|12|back\n",
                                       {{"a.dxf", {{L"door", 2, {}, false}}},
                                        {"b.dxf", {{L"Door", 1, {}, false}}}});
    ASSERT_EQ(bill.lines.size(), 2u);
    EXPECT_EQ(bill.lines[0].quantities, (std::vector<std::int64_t>{0, 0}));
    EXPECT_EQ(bill.lines[1].quantities, (std::vector<std::int64_t>{2, 1}));
    EXPECT_EQ(bill.lines[1].cells[kTotalColumn], L"36.00");
}

TEST_F(BillOfMaterialsTest, MoreReferencesThanTheModuleCountsAreAnError) {
    m_folder.write("list.prc", "Chair|1|\n");
    BomCalculation calculation;
    ASSERT_TRUE(calculation.LoadPriceList(m_folder.wpath("list.prc")));
    const auto bill = countBillOfMaterials(
        calculation, drawings({{"a.dxf", {{L"Door", 2147483000, {}, false}}},
                      {"b.dxf", {{L"DOOR", 648, {}, false}}}}));
    ASSERT_FALSE(bill.isOk());
    EXPECT_EQ(bill.errorString(), "b.dxf: more than 2147483647 references of \"DOOR\" to count");
}

}  // namespace

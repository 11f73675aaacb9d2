// Loading a price list and counting selected block references against it.
#include <gtest/gtest.h>

#include "bom/BomCalculation.h"
#include "bom/BomRows.h"
#include "host/scripted/memorydatabase.h"
#include "host/scripted/scriptededitor.h"
#include "tests/TempFolder.h"

namespace {

class BomCalculationTest : public ::testing::Test {
protected:
    void SetUp() override { acdbHostApplicationServices()->setWorkingDatabase(&m_database); }
    void TearDown() override { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    void LoadList(const std::string& text) {
        m_folder.write("list.prc", text);
        ASSERT_TRUE(m_calculation.LoadPriceList(m_folder.wpath("list.prc")));
    }

    std::vector<AcDbObjectId> References(const std::wstring& block, int count) {
        std::vector<AcDbObjectId> ids;
        for (int i = 0; i < count; ++i) ids.push_back(m_database.addReference(block, {1.0 * i, 0, 0}));
        return ids;
    }

    bool CountThese(std::vector<AcDbObjectId> ids) {
        m_editor.answerSelection(RTNORM, std::move(ids));
        return m_calculation.CountSelection();
    }

    MemoryDatabase m_database;
    ScriptedEditor m_editor;
    TempFolder m_folder;
    BomCalculation m_calculation;
};

TEST_F(BomCalculationTest, CountsTheSelectedReferencesAgainstTheList) {
    struct Case {
        const char* list;
        std::vector<std::pair<const wchar_t*, int>> references;  // in the order selected
        std::vector<ResultString> results;
    };
    const Case cases[] = {
        {"Door|10|front\n", {{L"DOOR", 3}}, {{L"door", 10.0, 3, L"front", 30.0}}},
        // Unknown blocks get a row without price in the order first met.
        {"Door|10|front\n",
         {{L"Chair", 1}, {L"desk", 1}, {L"Chair", 1}},
         {{L"door", 10.0, 0, L"front", 0.0},
          {L"chair", 0.0, 2, L"", 0.0},
          {L"desk", 0.0, 1, L"", 0.0}}},
        // A later row of the same name takes every count.
        {"Door|10|front\nDOOR|12|back\n",
         {{L"Door", 2}},
         {{L"door", 10.0, 0, L"front", 0.0}, {L"door", 12.0, 2, L"back", 24.0}}},
        {"Door|ten|front\n", {{L"Door", 2}}, {{L"door", 0.0, 2, L"front", 0.0}}},
        {"Door|10|front\n", {}, {{L"door", 10.0, 0, L"front", 0.0}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.list);
        LoadList(c.list);
        std::vector<AcDbObjectId> ids;
        for (const auto& [block, count] : c.references) {
            const auto more = References(block, count);
            ids.insert(ids.end(), more.begin(), more.end());
        }
        m_editor.clearCalls();
        ASSERT_TRUE(CountThese(ids));
        EXPECT_EQ(m_editor.calls(),
                  (std::vector<RecordedCall>{{L"acedSSGet", {L"(null)", L"0=INSERT"}}}));
        EXPECT_EQ(m_calculation.Results(), c.results);
    }
}

TEST_F(BomCalculationTest, ListingOnlyPricedBlocksIgnoresUnknownOnes) {
    LoadList("Door|10|front\nWindow|20|\n");
    m_calculation.SetListOnlyPricedBlocks(true);
    auto ids = References(L"Chair", 2);
    const auto doors = References(L"door", 1);
    ids.insert(ids.end(), doors.begin(), doors.end());
    ASSERT_TRUE(CountThese(ids));
    ASSERT_EQ(m_calculation.Results().size(), 2u);
    const auto shown = FillFromResults(m_calculation.Results(), true);
    EXPECT_EQ(shown.rows, (std::vector<BomRow>{{L"door", L"10.00", L"1", L"front", L"10.00"},
                                                {L"Summary:", L"", L"", L"", L"10.00"}}));
}

TEST_F(BomCalculationTest, ACancelledSelectionCountsNothing) {
    LoadList("Door|10|front\n");
    m_editor.answerSelection(RTCAN);
    EXPECT_FALSE(m_calculation.CountSelection());
    EXPECT_EQ(m_calculation.Results()[0].quantity, 0);
}

TEST_F(BomCalculationTest, AnEntityThatIsNoReferenceStopsTheCountWithAnAlert) {
    LoadList("Door|10|front\n");
    auto ids = References(L"Door", 1);
    ids.push_back(AcDbObjectId(999999));
    ids.push_back(References(L"Door", 1).front());
    EXPECT_FALSE(CountThese(ids));
    EXPECT_EQ(m_editor.callsOf(L"acedAlert"),
              (std::vector<RecordedCall>{{L"acedAlert", {L"\nCannot open the object INSERT"}}}));
    EXPECT_EQ(m_calculation.Results()[0].quantity, 1);
}

TEST_F(BomCalculationTest, ADefinitionThatCannotBeOpenedStopsTheCountWithAnAlert) {
    LoadList("Door|10|front\n");
    const auto ids = References(L"Door", 1);
    AcDbObjectId door;
    ASSERT_EQ(m_database.getBlockTableRecordId(L"Door", door), Acad::eOk);
    m_database.makeUnopenable(door);
    EXPECT_FALSE(CountThese(ids));
    EXPECT_EQ(m_editor.callsOf(L"acedAlert"),
              (std::vector<RecordedCall>{{L"acedAlert", {L"\nCannot open the object BlockTableRecord"}}}));
}

TEST_F(BomCalculationTest, CountingByNameGivesWhatCountingTheSelectionGives) {
    LoadList("Door|0.1|front\nChair|5|oak\nDOOR|0.1|back\n");
    auto ids = References(L"door", 7);
    const auto stools = References(L"Stool", 2);
    const auto chairs = References(L"CHAIR", 1);
    ids.insert(ids.begin() + 3, stools.begin(), stools.end());
    ids.insert(ids.end(), chairs.begin(), chairs.end());
    ASSERT_TRUE(CountThese(ids));

    BomCalculation byName;
    ASSERT_TRUE(byName.LoadPriceList(m_folder.wpath("list.prc")));
    byName.BeginCounting();
    EXPECT_EQ(byName.CountBlock(L"DOOR", 3), 2);
    EXPECT_EQ(byName.CountBlock(L"Stool", 2), 3);
    EXPECT_EQ(byName.CountBlock(L"Door", 4), 2);
    EXPECT_EQ(byName.CountBlock(L"chair", 1), 1);
    EXPECT_EQ(byName.Results(), m_calculation.Results());
    EXPECT_EQ(byName.Results()[3], (ResultString{L"stool", 0.0, 2, L"", 0.0}));
}

TEST_F(BomCalculationTest, CountingByNameLeavesOutWhatTheRulesLeaveOut) {
    LoadList("Door|10|front\n");
    m_calculation.SetListOnlyPricedBlocks(true);
    m_calculation.BeginCounting();
    EXPECT_EQ(m_calculation.CountBlock(L"Chair", 4), -1);
    EXPECT_EQ(m_calculation.CountBlock(L"door", 0), -1);
    EXPECT_EQ(m_calculation.CountBlock(L"door", -2), -1);
    EXPECT_EQ(m_calculation.Results(), (std::vector<ResultString>{{L"door", 10.0, 0, L"front", 0.0}}));
}

}  // namespace

// Placing the table: the prompts, the rubber band's scale, the ".INSERT" and the held variables.
#include <gtest/gtest.h>

#include "frame/TablePlacement.h"
#include "host/scripted/memorydatabase.h"
#include "host/scripted/scriptededitor.h"

namespace {

resbuf Cursor(double x, double y) { return resbuf::pointValue({x, y, 0.0}); }
resbuf Key(short code) { return resbuf::shortValue(code); }

constexpr int kMove = 5;
constexpr int kPick = 3;
constexpr int kKey = 2;

class TablePlacementTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_editor.setVariable(L"ATTREQ", resbuf::shortValue(1));
        m_editor.setVariable(L"CMDECHO", resbuf::shortValue(1));
        m_editor.setVariable(L"SNAPMODE", resbuf::shortValue(1));
        m_editor.setVariable(L"OSMODE", resbuf::shortValue(37));
    }

    std::vector<RecordedCall> Calls(const std::wstring& function) { return m_editor.callsOf(function); }

    ScriptedEditor m_editor;
};

TEST_F(TablePlacementTest, DraggingSetsTheScaleOfTheInsertedTable) {
    m_editor.answerPoint(RTNORM, {10, 20, 0});
    // Width 40, height 10: ratio 4. The cursor 20 right and 3 down gives width 20, then a pick.
    m_editor.answerGrRead(RTNORM, kMove, Cursor(30, 17));
    m_editor.answerGrRead(RTNORM, kPick, Cursor(99, 99));
    PlaceTable(L"QTB0001", 40.0, 10.0);

    EXPECT_EQ(Calls(L"acedInitGet"), (std::vector<RecordedCall>{{L"acedInitGet", {L"1", L""}}}));
    EXPECT_EQ(Calls(L"acedGetPoint"),
              (std::vector<RecordedCall>{{L"acedGetPoint", {L"(null)", L"\nUpper left corner of table: "}}}));
    EXPECT_EQ(m_editor.printed(), L"\nLower right corner (or RETURN): ");
    EXPECT_EQ(Calls(L"acedCommandS"),
              (std::vector<RecordedCall>{
                  {L"acedCommandS", {L".INSERT", L"QTB0001", L"(10,20,0)", L"0.5", L"0.5", L"0"}}}));
    // One frame drawn while dragging, drawn again at the pick to remove it.
    const auto vectors = Calls(L"acedGrDraw");
    ASSERT_EQ(vectors.size(), 8u);
    EXPECT_EQ(vectors[0], (RecordedCall{L"acedGrDraw", {L"(10,15,0)", L"(30,15,0)", L"-1", L"1"}}));
    EXPECT_EQ(vectors[1], (RecordedCall{L"acedGrDraw", {L"(30,15,0)", L"(30,20,0)", L"-1", L"1"}}));
    EXPECT_EQ(vectors[2], (RecordedCall{L"acedGrDraw", {L"(30,20,0)", L"(10,20,0)", L"-1", L"1"}}));
    EXPECT_EQ(vectors[3], (RecordedCall{L"acedGrDraw", {L"(10,20,0)", L"(10,15,0)", L"-1", L"1"}}));
    EXPECT_TRUE(std::equal(vectors.begin(), vectors.begin() + 4, vectors.begin() + 4));
    EXPECT_EQ(Calls(L"acedGrRead").front(), (RecordedCall{L"acedGrRead", {L"9"}}));
}

TEST_F(TablePlacementTest, VariablesAreZeroWhileItRunsAndOsmodeComesBackAsSnapmode) {
    m_editor.answerPoint(RTNORM, {0, 0, 0});
    m_editor.answerGrRead(RTNORM, kKey, Key(13));
    PlaceTable(L"QTB0001", 40.0, 10.0);
    const auto sets = Calls(L"acedSetVar");
    EXPECT_EQ(sets, (std::vector<RecordedCall>{{L"acedSetVar", {L"ATTREQ", L"0"}},
                                               {L"acedSetVar", {L"CMDECHO", L"0"}},
                                               {L"acedSetVar", {L"SNAPMODE", L"0"}},
                                               {L"acedSetVar", {L"OSMODE", L"0"}},
                                               {L"acedSetVar", {L"ATTREQ", L"1"}},
                                               {L"acedSetVar", {L"CMDECHO", L"1"}},
                                               {L"acedSetVar", {L"SNAPMODE", L"1"}},
                                               {L"acedSetVar", {L"OSMODE", L"1"}}}));
}

TEST_F(TablePlacementTest, CancelAtTheCornerInsertsNothingButRestores) {
    m_editor.answerPoint(RTCAN);
    PlaceTable(L"QTB0001", 40.0, 10.0);
    EXPECT_TRUE(Calls(L"acedCommandS").empty());
    EXPECT_TRUE(Calls(L"acedGrRead").empty());
    EXPECT_EQ(m_editor.variable(L"OSMODE")->resval.rint, 1);
    EXPECT_EQ(m_editor.variable(L"ATTREQ")->resval.rint, 1);
}

TEST_F(TablePlacementTest, EscapeWhileDraggingInsertsAtScaleOne) {
    m_editor.answerPoint(RTNORM, {0, 0, 0});
    m_editor.answerGrRead(RTNORM, kMove, Cursor(80, -1));
    m_editor.answerGrRead(RTCAN, 0);
    PlaceTable(L"QTB0002", 40.0, 10.0);
    EXPECT_EQ(m_editor.printed(), L"\nLower right corner (or RETURN): \n*CANCEL*\n");
    EXPECT_EQ(Calls(L"acedCommandS").front().args[3], L"1");
}

TEST(TableScale, ReturnEscapeOrAPickFirstGiveScaleOne) {
    ScriptedEditor editor;
    editor.answerGrRead(RTNORM, kKey, Key(13));
    ads_point p1{40, -10, 0};
    EXPECT_DOUBLE_EQ(TrackTableScale({0, 0, 0}, p1), 1.0);
    EXPECT_EQ(editor.callsOf(L"acedGrDraw").size(), 4u);
    EXPECT_EQ(editor.printed(), L"");

    editor.answerGrRead(RTCAN, 0);
    EXPECT_DOUBLE_EQ(TrackTableScale({0, 0, 0}, p1), 1.0);
    EXPECT_EQ(editor.printed(), L"\n*CANCEL*\n");

    editor.answerGrRead(RTNORM, kPick, Cursor(100, 100));  // a pick before any movement
    EXPECT_DOUBLE_EQ(ScaledFrameCorner({5, 5, 0}, 40, 10), 1.0);
}

TEST(TableScale, TheFrameKeepsTheTablesProportionsOnEitherSideOfTheCorner) {
    ScriptedEditor editor;
    const ads_point p0{0, 0, 0};
    // Width 40, height 10. Mostly vertical motion sets the height; the frame extends to the right.
    editor.answerGrRead(RTNORM, kMove, Cursor(-3, 20));
    editor.answerGrRead(RTNORM, kPick, Cursor(0, 0));
    ads_point p1{40, -10, 0};
    EXPECT_DOUBLE_EQ(TrackTableScale(p0, p1), 2.0);
    EXPECT_EQ(p1, (ads_point{80, 20, 0}));

    // A diagonal drag (dy equal to dx) follows the X distance, and the frame extends downwards.
    editor.answerGrRead(RTNORM, kMove, Cursor(-8, 8));
    editor.answerGrRead(RTNORM, kPick, Cursor(0, 0));
    p1 = {40, -10, 0};
    EXPECT_DOUBLE_EQ(TrackTableScale(p0, p1), 0.2);
    EXPECT_EQ(p1, (ads_point{-8, -2, 0}));
}

TEST(InsertPoint, ReadsTheReferencePositionOrReports) {
    MemoryDatabase database;
    acdbHostApplicationServices()->setWorkingDatabase(&database);
    ScriptedEditor editor;
    ads_name entity;
    acdbGetAdsName(entity, database.addReference(L"Door", {3, 4, 5}));
    ads_point point{9, 9, 9};
    EXPECT_TRUE(GetInsertPoint(entity, point));
    EXPECT_EQ(point, (ads_point{3, 4, 0}));

    acdbGetAdsName(entity, AcDbObjectId(12345));
    EXPECT_FALSE(GetInsertPoint(entity, point));
    EXPECT_EQ(editor.calls(),
              (std::vector<RecordedCall>{{L"acedAlert", {L"\nGetInsertPoint:Cannot open an object"}}}));
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

}  // namespace

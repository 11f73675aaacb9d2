// `tarnwick check` run as a user runs it: what it finds in a drawing and a price list, with line
// numbers, its exit status, and the same as JSON.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/host/DrawingFixture.h"
#include "tests/host/console/ConsoleFixture.h"

namespace {


// One line for each thing the check looks for; the last line lacks its line break.
const char* const kTroubledList =
    "Door|450|Interior door\n"
    "Chair|12,50|Swivel chair\n"
    "\n"
    "Sofa|890|Two-seat sofa\n"
    "DOOR|460|Interior door, new price\n"
    "Window|\n"
    "|5|nameless\n"
    "Desk|380|Office desk|old\n"
    "Cabinet|210|Filing cabinet";

class ConsoleCheckTest : public ConsoleTest {
protected:
    void SetUp() override {
        ConsoleTest::SetUp();
        m_folder.write("troubled.prc", kTroubledList);
    }
    ProcessResult check(const std::string& drawing, const std::string& list,
                        std::vector<std::string> more = {}) const {
        more.insert(more.begin(), {"check", "@" + drawing, "--prices", "@" + list});
        return tarnwick(more);
    }
};

TEST_F(ConsoleCheckTest, ListsWhatItFoundWithLineNumbersAndExitsThree) {
    const ProcessResult result = check("floorplan.dxf", "troubled.prc");
    EXPECT_EQ(result.exitCode, 3) << result.err;
    const std::string plan = m_folder.path("floorplan.dxf");
    const std::string list = m_folder.path("troubled.prc");
    EXPECT_EQ(result.out,
              plan + ": \"WINDOW\" has no price (10 references)\n" +
              plan + ": \"MEETING_TABLE\" has no price (1 reference)\n" +
              plan + ": \"CABINET\" has no price (6 references)\n" +
              plan + ": \"PLANT\" has no price (4 references)\n" +
              plan + ": \"NORTH_ARROW\" has no price (1 reference)\n" +
              list + ":4: \"Sofa\" has a price, but the drawing defines no such block\n" +
              list + ":1: \"Door\" is listed again on line 5 as \"DOOR\"; line 5 wins\n" +
              list + ":2: the price \"12,50\" of \"Chair\" is not a number; it counts as 12.00\n" +
              list + ":3: an empty line, skipped\n" +
              list + ":6: no price for \"Window\", line skipped\n" +
              list + ":7: no block name, line skipped\n" +
              list + ":8: the text after the third \"|\" is not read\n" +
              list + ":9: the last line has no line break and is not read\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(ConsoleCheckTest, ACleanDrawingAndListSayNothingAndExitZero) {
    m_folder.write("clean.prc",
                   "door|1|\nwindow|2|\ndesk|3|\nchair|4|\ncabinet|5|\nmeeting_table|6|\nplant|7|\n"
                   "North_Arrow|8|\n");
    const ProcessResult result = check("floorplan.dxf", "clean.prc");
    EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
    EXPECT_EQ(result.out, "");
    const ProcessResult json = check("floorplan.dxf", "clean.prc", {"--json"});
    EXPECT_EQ(json.exitCode, 0);
    EXPECT_TRUE(json.out.ends_with("  \"findings\": [],\n  \"tables\": []\n}\n")) << json.out;
}

TEST_F(ConsoleCheckTest, JsonGivesEachFindingsKindLineAndMessage) {
    const ProcessResult result = check("floorplan.dxf", "troubled.prc", {"--json"});
    EXPECT_EQ(result.exitCode, 3);
    const std::string list = m_folder.path("troubled.prc");
    EXPECT_NE(result.out.find("    {\n"
                              "      \"kind\": \"listed_twice\",\n"
                              "      \"file\": \"" + list + "\",\n"
                              "      \"line\": 1,\n"
                              "      \"block\": \"Door\",\n"
                              "      \"winning_line\": 5,\n"
                              "      \"message\": \"" + list +
                              ":1: \\\"Door\\\" is listed again on line 5 as \\\"DOOR\\\"; line 5 wins\"\n"
                              "    },\n"),
              std::string::npos)
        << result.out;
    EXPECT_NE(result.out.find("      \"kind\": \"no_price\",\n"
                              "      \"file\": \"" + m_folder.path("floorplan.dxf") + "\",\n"
                              "      \"line\": null,\n"
                              "      \"block\": \"PLANT\",\n"
                              "      \"references\": 4,\n"),
              std::string::npos)
        << result.out;
    for (const char* kind : {"not_in_drawing", "not_a_number", "skipped_line", "fields_ignored"})
        EXPECT_NE(result.out.find(std::string("\"kind\": \"") + kind + "\""), std::string::npos) << kind;
}

TEST_F(ConsoleCheckTest, NamesDynamicBlockVariantsWithoutALinkAndLongLines) {
    FixtureDrawing drawing;
    drawing.blocks = {{"Chair", {}, ""}, {"*U1", {}, "Chair"}, {"*U2", {}, ""}};
    drawing.references = {{"*U1", 0, 0}, {"*U2", 1, 0}, {"*U2", 2, 0}};
    m_folder.write("dynamic.dxf", fixtureBytes(drawing));
    m_folder.write("long.prc", "chair|10|" + std::string(1200, 'x') + "\n");
    const ProcessResult result = check("dynamic.dxf", "long.prc");
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out, m_folder.path("long.prc") + ":1: longer than 999 characters: read as several lines\n" +
                              m_folder.path("long.prc") + ":1: no price for \"" + std::string(210, 'x') +
                              "\", line skipped\n" + m_folder.path("dynamic.dxf") +
                              ": \"*U2\" (2 references) has no link to its dynamic block\n");
    EXPECT_EQ(check("dynamic.dxf", "long.prc", {"--record-names"}).out.find("no link"), std::string::npos);
}

TEST_F(ConsoleCheckTest, BadInputGetsOneLine) {
    ProcessResult result = check("floorplan.dxf", "none.prc");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, m_folder.path("none.prc") + ": no such file or directory\n");
    result = tarnwick({"check", "@floorplan.dxf", "--list-encoding", "CP1251"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "tarnwick: --list-encoding goes with --prices\nTry 'tarnwick --help'.\n");
    result = tarnwick({"check", "a.dxf", "b.dxf", "--prices", "p.prc"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "tarnwick: check takes one drawing\nTry 'tarnwick --help'.\n");
}

}  // namespace

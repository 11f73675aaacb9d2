// `tarnwick bom` run as a user runs it: on the example, its output, the files it writes, and its errors.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/host/TestName.h"
#include "tests/host/console/ConsoleFixture.h"

namespace {

const char* const kExampleReport =
    "Block name Item Price   Quantity          Description      Total\n"
    "      door     450.00          4  Interior door 90 cm    1800.00\n"
    "    window     620.00         10 Double-glazed window 120 cm    6200.00\n"
    "      desk     380.00          7 Office desk 160 x 80    2660.00\n"
    "     chair     145.00         13         Swivel chair    1885.00\n"
    "   cabinet     210.00          6 Filing cabinet, 4 drawers    1260.00\n"
    "      sofa     890.00          0        Two-seat sofa       0.00\n"
    "meeting_table       0.00          1                            0.00\n"
    "     plant       0.00          4                            0.00\n"
    "north_arrow       0.00          1                            0.00\n"
    "  Summary:                                              13805.00\n";

class ConsoleBomTest : public ConsoleTest {
protected:
    ProcessResult bom(const std::vector<std::string>& more) const {
        return ConsoleTest::bom({"floorplan.dxf"}, more);
    }
};

TEST_F(ConsoleBomTest, PrintsTheReportOfTheExampleOrWritesIt) {
    const ProcessResult result = bom({});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, kExampleReport);
    EXPECT_EQ(result.err, "");
    // The same written under the proposed name, or under a name given.
    ASSERT_EQ(bom({"--report"}).exitCode, 0);
    EXPECT_EQ(m_folder.read("prices-floorplan.txt"), kExampleReport);
    ASSERT_EQ(bom({"--report", "@named.txt", "--hide-prices"}).exitCode, 0);
    EXPECT_EQ(m_folder.read("named.txt").substr(0, 43), "Block name   Quantity          Description\n");
}

TEST_F(ConsoleBomTest, JsonHoldsTheGridsRowsWithMoneyAsShown) {
    const ProcessResult result = bom({"--json", "--only-priced", "--layer", "furniture"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out,
              "{\n"
              "  \"drawings\": [\n"
              "    \"" + m_folder.path("floorplan.dxf") + "\"\n"
              "  ],\n"
              "  \"rows\": [\n"
              "    {\n"
              "      \"name\": \"desk\",\n"
              "      \"price\": 380.00,\n"
              "      \"quantity\": 7,\n"
              "      \"quantities\": [\n"
              "        7\n"
              "      ],\n"
              "      \"description\": \"Office desk 160 x 80\",\n"
              "      \"total\": 2660.00\n"
              "    },\n"
              "    {\n"
              "      \"name\": \"chair\",\n"
              "      \"price\": 145.00,\n"
              "      \"quantity\": 13,\n"
              "      \"quantities\": [\n"
              "        13\n"
              "      ],\n"
              "      \"description\": \"Swivel chair\",\n"
              "      \"total\": 1885.00\n"
              "    },\n"
              "    {\n"
              "      \"name\": \"cabinet\",\n"
              "      \"price\": 210.00,\n"
              "      \"quantity\": 6,\n"
              "      \"quantities\": [\n"
              "        6\n"
              "      ],\n"
              "      \"description\": \"Filing cabinet, 4 drawers\",\n"
              "      \"total\": 1260.00\n"
              "    }\n"
              "  ],\n"
              "  \"total\": 5805.00,\n"
              "  \"tables\": []\n"
              "}\n");
}

TEST_F(ConsoleBomTest, AWindowSelectsByInsertionPoint) {
    // The meeting room: its table, six chairs, a plant, a window, and its door on the window's edge.
    const ProcessResult result = bom({"--window", "20,6,12,12", "--hide-prices"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out,
              "Block name   Quantity          Description\n"
              "      door          1  Interior door 90 cm\n"
              "    window          1 Double-glazed window 120 cm\n"
              "      desk          0 Office desk 160 x 80\n"
              "     chair          6         Swivel chair\n"
              "   cabinet          0 Filing cabinet, 4 drawers\n"
              "      sofa          0        Two-seat sofa\n"
              "meeting_table          1                     \n"
              "     plant          1                     \n");
}

TEST_F(ConsoleBomTest, DrawsTheTableIntoACopyAndASecondRunNumbersOn) {
    const std::string original = m_folder.read("floorplan.dxf");
    ProcessResult result = bom({"--table-at", "21,9", "--scale", "0.2"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(m_folder.read("floorplan.dxf"), original);
    result = checkDrawing("floorplan-bom.dxf", {"QTB0001", "--", "QTB0001", "21", "9", "0.2"});
    EXPECT_EQ(result.exitCode, 0) << result.out << result.err;

    result = ConsoleTest::bom({"floorplan-bom.dxf"}, {"--table-at", "-10,12", "-o", "@second.dxf"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    result = checkDrawing("second.dxf", {"QTB0001", "QTB0002", "--", "QTB0001", "21", "9", "0.2",
                                         "QTB0002", "-10", "12", "1"});
    EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
}

struct ErrorCase {
    const char* what;
    std::vector<std::string> args;  // a leading "@" stands for the test's folder
    int exitCode;
    std::string firstWords;  // how the single error line starts, "@" again the folder
};

class ConsoleErrors : public ConsoleTest, public ::testing::WithParamInterface<ErrorCase> {};

TEST_P(ConsoleErrors, GiveOneLineAndLeaveTheInputAlone) {
    const std::string original = m_folder.read("floorplan.dxf");
    const ProcessResult result = tarnwick(GetParam().args);
    EXPECT_EQ(result.exitCode, GetParam().exitCode);
    EXPECT_TRUE(result.err.starts_with(at(GetParam().firstWords))) << result.err;
    if (GetParam().exitCode == 1) {
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    }
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(m_folder.read("floorplan.dxf"), original);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ConsoleErrors,
    ::testing::Values(
        ErrorCase{"missing drawing",
                  {"bom", "@none.dxf", "--prices", "@prices.prc"},
                  1,
                  "@none.dxf: no such file or directory"},
        ErrorCase{"missing list",
                  {"bom", "@floorplan.dxf", "--prices", "@none.prc"},
                  1,
                  "@none.prc: no such file or directory"},
        ErrorCase{"unknown option",
                  {"bom", "@floorplan.dxf", "--price", "x"},
                  2,
                  "tarnwick: unknown option --price"},
        ErrorCase{"no list", {"bom", "@floorplan.dxf"}, 2, "tarnwick: bom needs --prices LIST"},
        ErrorCase{"bad corner",
                  {"bom", "@floorplan.dxf", "--prices", "@prices.prc", "--table-at", "1;2"},
                  2,
                  "tarnwick: --table-at wants X,Y"}),
    [](const auto& info) { return testName(info.param.what); });

TEST(ConsoleUsage, HelpAndVersionExitZeroAndNothingExitsTwo) {
    ProcessResult result = runProcess(TARNWICK_EXECUTABLE, {"--help"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(result.out.starts_with("Usage: tarnwick COMMAND")) << result.out;
    result = runProcess(TARNWICK_EXECUTABLE, {"--version"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(result.out.starts_with("tarnwick ")) << result.out;
    result = runProcess(TARNWICK_EXECUTABLE, {});
    EXPECT_EQ(result.exitCode, 2);
    result = runProcess(TARNWICK_EXECUTABLE, {"frobnicate"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(result.err.starts_with("tarnwick: unknown command \"frobnicate\"")) << result.err;
}

}  // namespace

// `tarnwick bom` writing CSV and XLSX from the report's rows, and counting several drawings in one
// run: a column a drawing, the total, and nothing written when a drawing cannot be read.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "tests/host/console/ConsoleFixture.h"

namespace {

const std::string kReader = std::string(TARNWICK_SOURCE_DIR) + "/tests/host/console/read_xlsx.py";

const char* const kExampleCsv =
    "\xEF\xBB\xBF"
    "Block name,Item Price,Quantity,Description,Total\r\n"
    "door,450.00,4,Interior door 90 cm,1800.00\r\n"
    "window,620.00,10,Double-glazed window 120 cm,6200.00\r\n"
    "desk,380.00,7,Office desk 160 x 80,2660.00\r\n"
    "chair,145.00,13,Swivel chair,1885.00\r\n"
    "cabinet,210.00,6,\"Filing cabinet, 4 drawers\",1260.00\r\n"
    "sofa,890.00,0,Two-seat sofa,0.00\r\n"
    "meeting_table,0.00,1,,0.00\r\n"
    "plant,0.00,4,,0.00\r\n"
    "north_arrow,0.00,1,,0.00\r\n"
    "Summary:,,,,13805.00\r\n";

class ConsoleExportTest : public ConsoleTest {
protected:
    void SetUp() override {
        ConsoleTest::SetUp();
        std::filesystem::copy_file(m_folder.path("floorplan.dxf"), m_folder.path("annex.dxf"));
        m_folder.write("broken.dxf", "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\nnot a number\n");
    }
};

TEST_F(ConsoleExportTest, WritesCsvAndXlsxFromTheReportsRows) {
    const ProcessResult result = bom({"floorplan.dxf"}, {"--csv", "@bom.csv", "--xlsx", "@bom.xlsx"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(m_folder.read("bom.csv"), kExampleCsv);
    const ProcessResult sheet = runProcess("/usr/bin/python3", {kReader, m_folder.path("bom.xlsx")});
    ASSERT_EQ(sheet.exitCode, 0) << sheet.err;
    EXPECT_TRUE(sheet.out.starts_with("sheet Bill of materials, frozen at A2\n"
                                      "widths A=14.7109 B=11.7109 C=11.7109 D=28.7109 E=11.7109\n"
                                      "s:Block name|s:Item Price|s:Quantity|s:Description|s:Total\n"))
        << sheet.out;
    EXPECT_NE(sheet.out.find("s:cabinet|n:210:\"$\"#,##0.00_);(\"$\"#,##0.00)|n:6:General|"
                             "s:Filing cabinet, 4 drawers|n:1260:"),
              std::string::npos)
        << sheet.out;
    EXPECT_NE(sheet.out.find("s:Summary:||||f:=SUM(E2:E10)=13805:"), std::string::npos) << sheet.out;
}

TEST_F(ConsoleExportTest, SeveralDrawingsGetAColumnEachAndTheTotal) {
    const ProcessResult result = bom({"floorplan.dxf", "annex.dxf"}, {"--csv", "@bom.csv", "--jobs", "2"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    const std::string csv = m_folder.read("bom.csv");
    EXPECT_TRUE(csv.starts_with("\xEF\xBB\xBF"
                                "Block name,Item Price,floorplan.dxf,annex.dxf,Quantity,Description,Total\r\n"
                                "door,450.00,4,4,8,Interior door 90 cm,3600.00\r\n"))
        << csv;
    EXPECT_TRUE(csv.ends_with("north_arrow,0.00,1,1,2,,0.00\r\nSummary:,,,,,,27610.00\r\n")) << csv;
    EXPECT_NE(result.out.find("      door     450.00          8  Interior door 90 cm    3600.00\n"),
              std::string::npos)
        << result.out;

    const ProcessResult json = bom({"floorplan.dxf", "annex.dxf"}, {"--json", "--only-priced"});
    ASSERT_EQ(json.exitCode, 0) << json.err;
    EXPECT_NE(json.out.find("  \"drawings\": [\n    \"" + m_folder.path("floorplan.dxf") + "\",\n    \"" +
                            m_folder.path("annex.dxf") + "\"\n  ],"),
              std::string::npos)
        << json.out;
    EXPECT_NE(json.out.find("\"quantity\": 26,\n      \"quantities\": [\n        13,\n        13\n      ],"),
              std::string::npos)
        << json.out;
    EXPECT_TRUE(json.out.ends_with("  \"total\": 27610.00,\n  \"tables\": []\n}\n")) << json.out;
}

TEST_F(ConsoleExportTest, ADrawingThatFailsInABatchIsNamedAndNothingIsWritten) {
    const auto before = m_folder.entries();
    const ProcessResult result = bom({"floorplan.dxf", "broken.dxf", "annex.dxf"},
                                     {"--csv", "@bom.csv", "--xlsx", "@bom.xlsx", "--report", "@bom.txt"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.err.starts_with(m_folder.path("broken.dxf") + ":8: ")) << result.err;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(m_folder.entries(), before);
}

struct UsageCase {
    const char* what;
    std::vector<std::string> args;
    std::string message;
};

class ConsoleExportUsage : public ConsoleExportTest, public ::testing::WithParamInterface<UsageCase> {};

TEST_P(ConsoleExportUsage, IsRefusedWithOneLine) {
    const ProcessResult result = bom({"floorplan.dxf", "annex.dxf"}, GetParam().args);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "tarnwick: " + GetParam().message + "\nTry 'tarnwick --help'.\n");
    EXPECT_EQ(result.out, "");
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ConsoleExportUsage,
    ::testing::Values(UsageCase{"table", {"--table-at", "1,2"}, "--table-at takes one drawing"},
                      UsageCase{"report", {"--report"}, "--report needs a FILE with several drawings"},
                      UsageCase{"jobs", {"--jobs", "0"}, "--jobs wants a whole number from 1 to 256, not \"0\""},
                      UsageCase{"jobs_fraction", {"--jobs", "1.5"},
                                "--jobs wants a whole number from 1 to 256, not \"1.5\""},
                      UsageCase{"csv", {"--csv"}, "--csv needs a value"}),
    [](const ::testing::TestParamInfo<UsageCase>& info) { return std::string(info.param.what); });

}  // namespace

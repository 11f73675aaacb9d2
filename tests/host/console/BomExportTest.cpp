// The exports' layout, the CSV text, and the spreadsheet as openpyxl reads it back. (Targets that
// cannot be written and a column a drawing: the console's tests.)
#include <gtest/gtest.h>


#include "host/console/bomexport.h"
#include "host/console/xlsxexport.h"
#include "tests/RunProcess.h"
#include "tests/TempFolder.h"

namespace {

const std::string kReader = std::string(TARNWICK_SOURCE_DIR) + "/tests/host/console/read_xlsx.py";

BillOfMaterials bill(std::vector<std::string> drawings) {
    BillOfMaterials bill;
    bill.drawings = std::move(drawings);
    const std::size_t n = bill.drawings.size();
    bill.lines = {
        {{L"door", L"450.00", L"4", L"Interior door, 90 cm", L"1800.00"}, std::vector<std::int64_t>(n, 0), {}, false, false, {}},
        {{L"chair", L"1032.30", L"3", L"Say \"cheese\"", L"3096.90"}, std::vector<std::int64_t>(n, 0), {}, false, false, {}},
        {{L"\u0441\u0442\u0443\u043b", L"0.00", L"1", L"", L"0.00"}, std::vector<std::int64_t>(n, 0), {}, false, false, {}},
    };
    for (std::size_t i = 0; i < n; ++i) {
        bill.lines[0].quantities[i] = i == 0 ? 4 : 0;
        bill.lines[1].quantities[i] = i == 0 ? 1 : 2;
        bill.lines[2].quantities[i] = i + 1 == n ? 1 : 0;
    }
    bill.total = L"4896.90";
    return bill;
}

std::vector<std::wstring> titles(const ExportTable& table) {
    std::vector<std::wstring> out;
    for (const auto& column : table.columns) out.push_back(column.title);
    return out;
}

TEST(BomExportTable, HasTheReportsColumnsAndTheSummaryOfShownTotals) {
    const ExportTable table = exportTable(bill({"plan.dxf"}), true);
    EXPECT_EQ(titles(table), (std::vector<std::wstring>{L"Block name", L"Item Price", L"Quantity",
                                                        L"Description", L"Total"}));
    std::vector<std::size_t> widths;
    for (const auto& column : table.columns) widths.push_back(column.width);
    EXPECT_EQ(widths, (std::vector<std::size_t>{10, 10, 10, 20, 10}));
    EXPECT_EQ(table.rows[1], (std::vector<std::wstring>{L"chair", L"1032.30", L"3", L"Say \"cheese\"", L"3096.90"}));
    ASSERT_TRUE(table.summary);
    EXPECT_EQ(*table.summary, (std::vector<std::wstring>{L"Summary:", L"", L"", L"", L"4896.90"}));
    // Drawings of the same file name are told apart by their paths.
    EXPECT_EQ(titles(exportTable(bill({"a/plan.dxf", "b/plan.dxf"}), true))[2], L"a/plan.dxf");
}

TEST(BomExportTable, HidingPricesDropsPriceTotalAndSummary) {
    const ExportTable table = exportTable(bill({"plan.dxf"}), false);
    EXPECT_EQ(titles(table), (std::vector<std::wstring>{L"Block name", L"Quantity", L"Description"}));
    EXPECT_EQ(table.rows[0], (std::vector<std::wstring>{L"door", L"4", L"Interior door, 90 cm"}));
    EXPECT_FALSE(table.summary);
    BillOfMaterials empty = bill({"plan.dxf"});
    empty.lines.clear();
    EXPECT_FALSE(exportTable(empty, true).summary);
}

TEST(BomExportCsv, IsRfc4180InUtf8AfterAByteOrderMark) {
    EXPECT_EQ(csvBytes(exportTable(bill({"plan.dxf"}), true)),
              "\xEF\xBB\xBF"
              "Block name,Item Price,Quantity,Description,Total\r\n"
              "door,450.00,4,\"Interior door, 90 cm\",1800.00\r\n"
              "chair,1032.30,3,\"Say \"\"cheese\"\"\",3096.90\r\n"
              "\xD1\x81\xD1\x82\xD1\x83\xD0\xBB,0.00,1,,0.00\r\n"
              "Summary:,,,,4896.90\r\n");
}

TEST(BomExportCsv, ReplacesTheTarget) {
    TempFolder folder;
    folder.write("bom.csv", "old");
    ASSERT_TRUE(writeCsv(folder.path("bom.csv"), exportTable(bill({"plan.dxf"}), false)).isOk());
    EXPECT_EQ(folder.read("bom.csv"),
              "\xEF\xBB\xBF" "Block name,Quantity,Description\r\ndoor,4,\"Interior door, 90 cm\"\r\n"
              "chair,3,\"Say \"\"cheese\"\"\"\r\n\xD1\x81\xD1\x82\xD1\x83\xD0\xBB,1,\r\n");
}

TEST(BomExportXlsx, HoldsTypedNumbersACurrencyFormatAndTheSummarysSum) {
    TempFolder folder;
    ASSERT_TRUE(writeXlsx(folder.path("bom.xlsx"), exportTable(bill({"a.dxf", "b.dxf"}), true)).isOk());
    const ProcessResult read = runProcess("/usr/bin/python3", {kReader, folder.path("bom.xlsx")});
    ASSERT_EQ(read.exitCode, 0) << read.err;
    const std::string money = "\"$\"#,##0.00_);(\"$\"#,##0.00)";
    EXPECT_EQ(read.out,
              "sheet Bill of materials, frozen at A2\n"
              "widths A=11.7109 B=11.7109 C=11.7109 D=11.7109 E=11.7109 F=21.7109 G=11.7109\n"
              "s:Block name|s:Item Price|s:a.dxf|s:b.dxf|s:Quantity|s:Description|s:Total\n"
              "s:door|n:450:" + money + "|n:4:General|n:0:General|n:4:General|s:Interior door, 90 cm|n:1800:" + money + "\n"
              "s:chair|n:1032.3:" + money + "|n:1:General|n:2:General|n:3:General|s:Say \"cheese\"|n:3096.9:" + money + "\n"
              "s:\xD1\x81\xD1\x82\xD1\x83\xD0\xBB|n:0:" + money + "|n:0:General|n:1:General|n:1:General||n:0:" + money + "\n"
              "s:Summary:||||||f:=SUM(G2:G4)=4896.9:" + money + "\n"
              "heading bold True\n");
}

}  // namespace

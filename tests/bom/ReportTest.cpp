// The text report: its lines, the file and the proposed name.
#include <gtest/gtest.h>

#include "bom/Report.h"
#include "host/scripted/scriptededitor.h"
#include "tests/TempFolder.h"

namespace {

const std::vector<BomRow> kRows{{L"door", L"10.00", L"3", L"front", L"30.00"},
                                {L"a-very-long-block-name", L"1.50", L"2", L"", L"3.00"},
                                {L"Summary:", L"", L"", L"", L"33.00"}};

TEST(ReportLines, WithPricesEveryRowHasFiveRightAlignedFields) {
    EXPECT_EQ(ReportLines(kRows, true),
              (std::vector<std::wstring>{
                  L"Block name Item Price   Quantity          Description      Total",
                  L"      door      10.00          3                front      30.00",
                  L"a-very-long-block-name       1.50          2                            3.00",
                  L"  Summary:                                                 33.00"}));
}

TEST(ReportFile, IsWrittenWithLineFeedsAndReplacesAnOldOne) {
    TempFolder folder;
    ScriptedEditor editor;
    folder.write("bom.txt", "an older and longer report\n\n\n");
    ASSERT_EQ(WriteReport({kRows[0]}, false, folder.wpath("bom.txt"), TextFormat{}), 1);
    EXPECT_EQ(folder.read("bom.txt"),
              "Block name   Quantity          Description\n"
              "      door          3                front\n");
    EXPECT_TRUE(editor.calls().empty());
}

TEST(ReportName, JoinsThePriceListAndTheDrawingName) {
    EXPECT_EQ(ProposeReportName(L"C:\\lists\\doors.prc", L"plan.dwg"), L"C:\\lists\\doors-plan.txt");
    EXPECT_EQ(ProposeReportName(L"/lists/doors.prc", L"plan.dxf"), L"/lists/doors-plan.txt");
    EXPECT_EQ(ProposeReportName(L"", L"plan.dwg"), L"plan.txt");
    // The last four characters go whatever they are.
    EXPECT_EQ(ProposeReportName(L"", L"drawing"), L"dra.txt");
    EXPECT_EQ(ProposeReportName(L"", L"ab"), L".txt");
}

}  // namespace

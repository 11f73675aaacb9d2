// tarnwick-prices as a user runs it: its usage, its one-line errors for drawings it cannot read,
// and the floor plan's blocks offered by the editor it opens.
#include <gtest/gtest.h>

#include <QPushButton>
#include <QTest>
#include <cstdlib>
#include <memory>

#include "host/dxf/dxfdocument.h"
#include "host/scripted/scriptededitor.h"
#include "pricelist/BlockPriceDialog.h"
#include "resources/BomTemplate.h"
#include "resources/DialogBuilder.h"
#include "resources/ModulePath.h"
#include "tests/RunProcess.h"
#include "tests/TempFolder.h"

namespace {

const std::string kTool = TARNWICK_PRICES_TOOL;

ProcessResult RunTool(const std::vector<std::string>& arguments) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    return runProcess(kTool, arguments);
}

TEST(PricesTool, ADrawingThatCannotBeReadIsToldInOneLine) {
    TempFolder folder;
    folder.write("broken.dxf", "0\nSECTION\n2\nENTITIES\n0\nLINE\n10\nabc\n");
    const struct {
        std::string path;
        std::string message;
    } cases[] = {
        {folder.path("missing.dxf"),
         folder.path("missing.dxf") + ": cannot open the file: no such file or directory\n"},
        {folder.path("broken.dxf"),
         folder.path("broken.dxf") + ":8: expected a number for group code 10, found \"abc\"\n"},
        {folder.path(""), folder.path("") + ": not a regular file\n"},
    };
    for (const auto& [path, message] : cases) {
        const ProcessResult result = RunTool({"--drawing", path});
        EXPECT_EQ(result.exitCode, 1) << path;
        EXPECT_EQ(result.err, message);
        EXPECT_EQ(result.out, "");
    }
}

TEST(PricesTool, HelpAndBadUsageTellTheUsage) {
    const ProcessResult help = RunTool({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.out.starts_with("Usage: tarnwick-prices [LIST.prc] [--drawing PLAN.dxf]\n"));
    const struct {
        std::vector<std::string> arguments;
        std::string firstLine;
    } cases[] = {
        {{"a.prc", "b.prc"}, "tarnwick-prices: unexpected argument \"b.prc\"\n"},
        {{"--colour"}, "tarnwick-prices: unexpected argument \"--colour\"\n"},
        {{"--drawing"}, "tarnwick-prices: --drawing needs the drawing's file name\n"},
        {{"--drawing", "a.dxf", "--drawing", "b.dxf"}, "tarnwick-prices: only one drawing can be given\n"},
    };
    for (const auto& [arguments, firstLine] : cases) {
        const ProcessResult result = RunTool(arguments);
        EXPECT_EQ(result.exitCode, 2) << firstLine;
        EXPECT_TRUE(result.err.starts_with(firstLine + "Usage: tarnwick-prices")) << result.err;
    }
}

// What the tool does with --drawing: the drawing becomes the working database, and a new row of
// the example list offers the plan's blocks that the list does not price.
TEST(PricesTool, TheFloorPlansUnpricedBlocksAreOffered) {
    auto read = DxfDocument::readFile(TARNWICK_SOURCE_DIR "/examples/floorplan.dxf");
    ASSERT_TRUE(read.isOk()) << read.errorString();
    std::unique_ptr<DxfDocument> drawing = read.takeValue();
    acdbHostApplicationServices()->setWorkingDatabase(drawing.get());
    TempFolder folder;
    modulePath = folder.wpath("tarnwick-prices");
    ScriptedEditor editor;
    {
        BlockPriceDialog dialog;
        dialog.show();
        ASSERT_TRUE(dialog.OpenList(TARNWICK_SOURCE_DIR L"/examples/prices.prc"));
        EXPECT_EQ(dialog.Grid().GetNumberRows(), 6);
        QTest::mouseClick(qobject_cast<QPushButton*>(GetDlgItem(dialog, IDC_PRICE_INSERT_ROW)),
                          Qt::LeftButton);
        EXPECT_EQ(dialog.Grid().ChoiceList(), L"MEETING_TABLE\nNORTH_ARROW\nPLANT\n");
    }
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    modulePath.clear();
}

}  // namespace
